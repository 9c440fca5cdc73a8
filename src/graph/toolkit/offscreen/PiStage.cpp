#include "graph/toolkit/offscreen/PiStage.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText2.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace {

constexpr float kHalfAngle = 0.26f;  // radians: a calm perspective, 30 degrees in all

bool isUsable(const SbVec3f& v) { return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]); }

struct DepthLimits {
  float nearDistance;
  float farDistance;
};

// Planes round depths `nearest` to `farthest` in front of the camera. A perspective needs the near one away from the
// eye, or depth loses its precision.
DepthLimits limitsRound(float nearest, float farthest, bool isPerspective) {
  const float slack = 0.01f * std::max({farthest - nearest, std::abs(farthest) * 0.01f, 1e-6f});
  DepthLimits limits{nearest - slack, farthest + slack};
  if (isPerspective) {
    limits.farDistance = std::max(limits.farDistance, 1e-5f);
    limits.nearDistance = std::max(limits.nearDistance, limits.farDistance * 5e-4f);
  }
  return limits;
}

SoDirectionalLight* makeLight(float intensity, const SbVec3f& direction) {
  auto* light = new SoDirectionalLight;
  light->intensity = intensity;
  light->direction = direction;
  return light;
}

}  // namespace

// Axes of a camera in world coordinates; it looks along -back.
struct PiStage::Frame {
  SbVec3f right, up, back;

  explicit Frame(const PiViewpoint& viewpoint) {
    back = -viewpoint.direction;
    if (!isUsable(back) || back.normalize() == 0.0f) back.setValue(0.0f, 0.0f, 1.0f);
    SbVec3f upwards = viewpoint.up;
    if (!isUsable(upwards) || upwards.normalize() == 0.0f) upwards.setValue(0.0f, 1.0f, 0.0f);
    right = upwards.cross(back);
    if (right.length() < 1e-4f) {
      // Looking along the upward axis. Seen from above, what was in front is then at the bottom of the picture.
      const bool yIsUp = std::abs(upwards[1]) > 0.5f;
      const SbVec3f substitute =
          yIsUp ? SbVec3f(0.0f, 0.0f, back.dot(upwards) > 0.0f ? -1.0f : 1.0f) : SbVec3f(0.0f, 1.0f, 0.0f);
      right = substitute.cross(back);
    }
    right.normalize();
    up = back.cross(right);
  }

  SbVec3f toCamera(const SbVec3f& p) const { return SbVec3f(right.dot(p), up.dot(p), back.dot(p)); }
  SbVec3f toWorld(const SbVec3f& p) const { return right * p[0] + up * p[1] + back * p[2]; }
  SbRotation rotation() const {
    return SbRotation(SbMatrix(right[0], right[1], right[2], 0.0f, up[0], up[1], up[2], 0.0f, back[0], back[1], back[2],
                               0.0f, 0.0f, 0.0f, 0.0f, 1.0f));
  }
};

// How far things reach from an origin, in the axes of a camera and widened by their depth as perspective does: the
// largest values of these six decide how close the camera can be.
struct PiStage::Extents {
  Frame frame;
  SbVec3f origin;
  float slopeX = 0.0f;  // half the width of what is seen, at distance 1; 0 without perspective
  float slopeY = 0.0f;
  float usableX = 1.0f;  // which part of that is to be used, sidewards, above and below the middle
  float usableTop = 1.0f;
  float usableBottom = 1.0f;
  float right = kNone, left = kNone, top = kNone, bottom = kNone, front = kNone, rear = kNone;

  bool isEmpty() const { return right == kNone; }
  void add(const SbVec3f& point) {
    const SbVec3f p = frame.toCamera(point - origin);
    right = std::max(right, p[0] + p[2] * slopeX * usableX);
    left = std::max(left, -p[0] + p[2] * slopeX * usableX);
    top = std::max(top, p[1] + p[2] * slopeY * usableTop);
    bottom = std::max(bottom, -p[1] + p[2] * slopeY * usableBottom);
    front = std::max(front, p[2]);
    rear = std::max(rear, -p[2]);
  }

 private:
  static constexpr float kNone = std::numeric_limits<float>::lowest();
};

PiStage::PiStage(SoNode* scene, const SbViewportRegion& viewport)
    : m_scene(scene), m_viewport(viewport), m_root(new SoSeparator) {
  m_root->ref();
  m_root->renderCaching = SoSeparator::OFF;
  m_root->addChild(scene);

  SoCallbackAction look(viewport);
  look.addPreCallback(
      SoCamera::getClassTypeId(),
      [](void* self, SoCallbackAction* action, const SoNode* node) {
        static_cast<PiStage*>(self)->noteCamera(action, const_cast<SoCamera*>(static_cast<const SoCamera*>(node)));
        return SoCallbackAction::CONTINUE;
      },
      this);
  look.addPreCallback(
      SoLight::getClassTypeId(),
      [](void* self, SoCallbackAction*, const SoNode*) {
        static_cast<PiStage*>(self)->m_hasLight = true;
        return SoCallbackAction::CONTINUE;
      },
      this);
  look.addPreCallback(
      SoText2::getClassTypeId(),
      [](void* self, SoCallbackAction* action, const SoNode*) {
        SbVec3f origin(0.0f, 0.0f, 0.0f);
        action->getModelMatrix().multVecMatrix(origin, origin);
        static_cast<PiStage*>(self)->m_screenTexts.push_back(origin);
        return SoCallbackAction::CONTINUE;
      },
      this);
  look.apply(m_root);
}

PiStage::~PiStage() {
  if (m_oldLimits) {
    const SbBool notified = m_oldLimits->camera->enableNotify(FALSE);
    m_oldLimits->camera->nearDistance = m_oldLimits->nearDistance;
    m_oldLimits->camera->farDistance = m_oldLimits->farDistance;
    m_oldLimits->camera->enableNotify(notified);
  }
  m_hidden.clear();
  m_root->unref();
}

void PiStage::noteCamera(SoCallbackAction* action, SoCamera* camera) {
  const auto* path = static_cast<const SoFullPath*>(action->getCurPath());
  for (int i = 1; i < path->getLength(); ++i)
    if (path->getNode(i)->isOfType(SoAnnotation::getClassTypeId())) {
      m_overlays.push_back({path->getNode(i), path->getNode(i - 1)});
      return;
    }
  SoNode* parent = path->getLength() > 1 ? path->getNodeFromTail(1) : nullptr;
  m_cameras.push_back({camera, parent, action->getModelMatrix()});
}

// A node taken out of its group or kit; goes back there in the end.
class PiStage::HiddenNode {
 public:
  HiddenNode(SoNode* node, SoNode* parent) : m_node(node), m_parent(parent) {
    m_node->ref();
    m_parent->ref();
    if (m_parent->isOfType(SoBaseKit::getClassTypeId())) {
      m_part = static_cast<SoBaseKit*>(m_parent)->getPartString(m_node);
      if (m_part.getLength() > 0) static_cast<SoBaseKit*>(m_parent)->setPart(m_part.getString(), nullptr);
    } else if (m_parent->isOfType(SoGroup::getClassTypeId())) {
      auto* group = static_cast<SoGroup*>(m_parent);
      for (int i = 0; i < group->getNumChildren(); ++i) {
        if (group->getChild(i) != m_node) continue;
        group->replaceChild(i, new SoInfo);  // keeps the places of its neighbours, which a switch may count
        m_places.push_back(i);
      }
    }
  }
  ~HiddenNode() {
    if (m_part.getLength() > 0) static_cast<SoBaseKit*>(m_parent)->setPart(m_part.getString(), m_node);
    for (const int place : m_places) static_cast<SoGroup*>(m_parent)->replaceChild(place, m_node);
    m_parent->unref();
    m_node->unrefNoDelete();
  }
  HiddenNode(const HiddenNode&) = delete;
  HiddenNode& operator=(const HiddenNode&) = delete;

 private:
  SoNode* m_node;
  SoNode* m_parent;
  SbString m_part;
  std::vector<int> m_places;
};

void PiStage::hideCameras() {
  for (const SceneCamera& camera : m_cameras)
    if (camera.parent) m_hidden.push_back(std::make_unique<HiddenNode>(camera.camera, camera.parent));
}

std::vector<std::unique_ptr<PiStage::HiddenNode>> PiStage::hideOverlays() const {
  std::vector<std::unique_ptr<HiddenNode>> hidden;
  for (const Overlay& overlay : m_overlays)
    hidden.push_back(std::make_unique<HiddenNode>(overlay.node, overlay.parent));
  return hidden;
}

SoNode* PiStage::root() const { return m_root; }

void PiStage::addLights() {
  m_root->insertChild(makeLight(0.38f, SbVec3f(0.0f, 0.0f, -1.0f)), 0);
  m_root->insertChild(makeLight(0.50f, SbVec3f(0.45f, -0.55f, -1.0f)), 1);
  m_root->insertChild(makeLight(0.30f, SbVec3f(-1.0f, -0.1f, -0.45f)), 2);
  m_root->insertChild(makeLight(0.30f, SbVec3f(0.1f, 0.1f, 1.0f)), 3);
  m_root->insertChild(makeLight(0.25f, SbVec3f(0.0f, 1.0f, -0.25f)), 4);  // surfaces are seen from below, too
}

// The corners of the box round the scene, in world coordinates.
std::vector<SbVec3f> PiStage::corners() const {
  const auto hidden = hideOverlays();
  SoGetBoundingBoxAction action(m_viewport);
  action.apply(m_root);
  SbBox3f box = action.getBoundingBox();
  for (const SbVec3f& origin : m_screenTexts) box.extendBy(origin);  // without a camera that is all of a bitmap text
  SbVec3f low = box.getMin();
  SbVec3f high = box.getMax();
  if (box.isEmpty() || !isUsable(low) || !isUsable(high)) {
    low.setValue(-1.0f, -1.0f, -1.0f);
    high.setValue(1.0f, 1.0f, 1.0f);
  }
  std::vector<SbVec3f> all(8);
  for (int i = 0; i < 8; ++i)
    all[static_cast<std::size_t>(i)].setValue((i & 1) ? high[0] : low[0], (i & 2) ? high[1] : low[1],
                                              (i & 4) ? high[2] : low[2]);
  return all;
}

PiViewpoint PiStage::usualViewpoint() const {
  const std::vector<SbVec3f> all = corners();
  const SbVec3f size = all[7] - all[0];
  const float flat = 4e-3f * size.length();  // bar charts lift their texts by 2 thousandths
  PiViewpoint viewpoint;
  if (size[2] <= flat)
    viewpoint.direction.setValue(0.0f, 0.0f, -1.0f);
  else if (size[1] <= flat)
    viewpoint.direction.setValue(0.0f, -1.0f, 0.0f);
  else if (size[0] <= flat)
    viewpoint.direction.setValue(-1.0f, 0.0f, 0.0f);
  else
    viewpoint.direction.setValue(-1.0f, -1.0f, -1.0f);
  return viewpoint;
}

void PiStage::addCamera(const PiViewpoint& viewpoint) {
  hideCameras();
  const std::vector<SbVec3f> box = corners();
  m_ownCamera = viewpoint.isOrthographic ? static_cast<SoCamera*>(new SoOrthographicCamera) : new SoPerspectiveCamera;
  m_root->insertChild(m_ownCamera, m_root->getNumChildren() - 1);
  Extents extents = extentsFor(viewpoint, (box.front() + box.back()) * 0.5f);
  leaveRoomForOverlays(extents);
  const auto hidden = hideOverlays();
  const bool boxCounts = !m_screenTexts.empty() || !addPrimitives(extents);
  if (boxCounts)
    for (const SbVec3f& corner : box) extents.add(corner);
  aim(viewpoint, extents);
  if (m_screenTexts.empty()) return;
  // Bitmap text keeps its size in pixels, so the room it takes in space is known only once the camera stands.
  for (int round = 0; round < 3; ++round) {
    for (const SbVec3f& corner : corners()) extents.add(corner);
    aim(viewpoint, extents);
  }
}

PiStage::Extents PiStage::extentsFor(const PiViewpoint& viewpoint, const SbVec3f& origin) const {
  Extents extents{Frame(viewpoint), origin};
  const float aspect = m_viewport.getViewportAspectRatio();
  extents.slopeY = viewpoint.isOrthographic ? 0.0f : std::tan(kHalfAngle) * std::max(1.0f, 1.0f / aspect);
  extents.slopeX = extents.slopeY * aspect;
  extents.usableX = 1.0f - 2.0f * std::clamp(viewpoint.margin, 0.0f, 0.4f);
  extents.usableBottom = extents.usableX;
  extents.usableTop = extents.usableX - 2.0f * std::clamp(viewpoint.headroom, 0.0f, 0.4f);
  return extents;
}

// Calls `visit(action, vertex)` for every vertex that is shown.
template <class Visit>
void PiStage::forEachVertex(Visit visit) const {
  SoCallbackAction action(m_viewport);
  static constexpr auto visitAll = [](void* data, SoCallbackAction* current,
                                      std::initializer_list<const SoPrimitiveVertex*> vertices) {
    for (const SoPrimitiveVertex* vertex : vertices) (*static_cast<Visit*>(data))(*current, vertex->getPoint());
  };
  const SoType shape = SoShape::getClassTypeId();
  action.addTriangleCallback(
      shape,
      [](void* data, SoCallbackAction* current, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b,
         const SoPrimitiveVertex* c) {
        visitAll(data, current, {a, b, c});
      },
      &visit);
  action.addLineSegmentCallback(
      shape,
      [](void* data, SoCallbackAction* current, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b) {
        visitAll(data, current, {a, b});
      },
      &visit);
  action.addPointCallback(
      shape, [](void* data, SoCallbackAction* current, const SoPrimitiveVertex* a) { visitAll(data, current, {a}); },
      &visit);
  action.apply(m_root);
}

// Adds every vertex that the scene shows. False if it shows none.
bool PiStage::addPrimitives(Extents& extents) const {
  forEachVertex([&](SoCallbackAction& action, const SbVec3f& point) {
    SbVec3f world;
    action.getModelMatrix().multVecMatrix(point, world);
    if (isUsable(world)) extents.add(world);
  });
  return !extents.isEmpty();
}

// What overlays show in the upper and in the lower third of the picture is to stay clear of the scene.
void PiStage::leaveRoomForOverlays(Extents& extents) const {
  if (m_overlays.empty()) return;
  constexpr float third = 1.0f / 3.0f;
  constexpr float gap = 0.04f;
  float top = extents.usableTop, bottom = extents.usableBottom;
  forEachVertex([&](SoCallbackAction& action, const SbVec3f& point) {
    const auto* path = static_cast<const SoFullPath*>(action.getCurPath());
    const bool isInOverlay = std::any_of(m_overlays.begin(), m_overlays.end(),
                                         [&](const Overlay& overlay) { return path->containsNode(overlay.node); });
    if (!isInOverlay) return;
    SbVec3f seen;
    (action.getModelMatrix() * action.getViewingMatrix() * action.getProjectionMatrix()).multVecMatrix(point, seen);
    if (!isUsable(seen) || std::abs(seen[1]) > 1.0f) return;
    if (seen[1] > third) top = std::min(top, seen[1] - gap);
    if (seen[1] < -third) bottom = std::min(bottom, -seen[1] - gap);
  });
  extents.usableTop = top;
  extents.usableBottom = bottom;
}

// The closest camera that has everything within the usable part of the picture.
void PiStage::aim(const PiViewpoint& viewpoint, const Extents& e) {
  const float aspect = m_viewport.getViewportAspectRatio();
  const float size = std::max({e.right + e.left, e.top + e.bottom, e.front + e.rear, 1e-6f});
  const float width = std::max(e.right + e.left, 1e-4f * size) / (2.0f * e.usableX);
  const float height = std::max(e.top + e.bottom, 1e-4f * size) / std::max(e.usableTop + e.usableBottom, 0.1f);

  m_ownCamera->viewportMapping = SoCamera::LEAVE_ALONE;
  m_ownCamera->aspectRatio = aspect;
  m_ownCamera->orientation = e.frame.rotation();
  float distance;
  float halfHeight;  // of what is seen, where the origin is
  if (viewpoint.isOrthographic) {
    halfHeight = std::max(height, width / aspect);
    distance = e.front + size;
    static_cast<SoOrthographicCamera*>(m_ownCamera)->height = 2.0f * halfHeight;
  } else {
    distance = std::max({width / e.slopeX, height / e.slopeY, e.front + 0.05f * size});
    halfHeight = distance * e.slopeY;
    static_cast<SoPerspectiveCamera*>(m_ownCamera)->heightAngle = 2.0f * std::atan(e.slopeY);
  }
  const float x = 0.5f * (e.right - e.left);
  const float y = 0.5f * ((e.top - halfHeight * e.usableTop) + (halfHeight * e.usableBottom - e.bottom));
  m_ownCamera->position = e.origin + e.frame.toWorld(SbVec3f(x, y, distance));
  m_ownCamera->focalDistance = distance;
  const DepthLimits limits = limitsRound(distance - e.front, distance + e.rear, !viewpoint.isOrthographic);
  m_ownCamera->nearDistance = limits.nearDistance;
  m_ownCamera->farDistance = limits.farDistance;
}

void PiStage::setDepthLimits() {
  if (m_cameras.size() != 1) return;
  SoCamera* camera = m_cameras.front().camera;
  SbMatrix toWorld;
  toWorld.setRotate(camera->orientation.getValue());
  SbMatrix position;
  position.setTranslate(camera->position.getValue());
  toWorld.multRight(position);
  toWorld.multRight(m_cameras.front().toWorld);
  if (toWorld.det4() == 0.0f) return;
  const SbMatrix toCamera = toWorld.inverse();

  constexpr float kFar = std::numeric_limits<float>::max();
  float nearest = kFar;
  float farthest = -kFar;
  for (const SbVec3f& corner : corners()) {
    SbVec3f p;
    toCamera.multVecMatrix(corner, p);
    nearest = std::min(nearest, -p[2]);
    farthest = std::max(farthest, -p[2]);
  }
  if (!std::isfinite(nearest) || !std::isfinite(farthest)) return;
  m_oldLimits = OldLimits{camera, camera->nearDistance.getValue(), camera->farDistance.getValue()};
  const DepthLimits limits =
      limitsRound(nearest, farthest, camera->isOfType(SoPerspectiveCamera::getClassTypeId()) != FALSE);
  const SbBool notified = camera->enableNotify(FALSE);
  camera->nearDistance = limits.nearDistance;
  camera->farDistance = limits.farDistance;
  camera->enableNotify(notified);
}
