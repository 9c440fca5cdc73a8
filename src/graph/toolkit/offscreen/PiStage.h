#ifndef ORMELLE_PISTAGE_H
#define ORMELLE_PISTAGE_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/SbViewportRegion.h>

#include <memory>
#include <optional>
#include <vector>

class SoCallbackAction;
class SoCamera;
class SoNode;
class SoSeparator;

/// From where to look at a scene.
struct PiViewpoint {
  SbVec3f direction = SbVec3f(0.0f, 0.0f, -1.0f);  ///< the direction of looking, of any length above 0
  SbVec3f up = SbVec3f(0.0f, 1.0f, 0.0f);          ///< what shall point upwards in the picture, as far as it can
  bool isOrthographic = false;
  float margin = 0.04f;   ///< the part of the picture's width and height left free on each side
  float headroom = 0.0f;  ///< the part of its height left free above that, for a title
};

/// Gives a scene what it needs to be seen: lights and a camera where it has none, and depth limits that hold all of it.
///
/// The lights are a soft one from the viewer, a stronger one from the upper left, a weak one from the right that lights
/// up the sides in shade, and one from behind that keeps surfaces with an averted normal from turning black. They stand
/// before every camera, hence they follow each camera.
///
/// An annotation with a camera of its own (a title, a legend) stands before the picture and not in the scene: its
/// camera isn't the scene's and stays, what it shows isn't part of the scene's extent, and a camera that is made leaves
/// the room free that it takes at the top and at the bottom of the picture.
class PiStage {
 public:
  /// Looks at `scene` for pictures of the given size. Kits rebuild themselves meanwhile.
  PiStage(SoNode* scene, const SbViewportRegion& viewport);
  /// Gives the scene back as it was.
  ~PiStage();
  PiStage(const PiStage&) = delete;
  PiStage& operator=(const PiStage&) = delete;

  bool hasCamera() const { return !m_cameras.empty(); }
  /// The first of the scene's own cameras; null if there is none.
  SoCamera* firstCamera() const { return m_cameras.empty() ? nullptr : m_cameras.front().camera; }
  bool hasLight() const { return m_hasLight; }

  /// Adds a camera that sees the whole scene from there. The scene's own cameras are taken out of it for the time
  /// being.
  void addCamera(const PiViewpoint& viewpoint);
  /// The face of a flat scene, else a view from the upper right in front, with y upwards.
  PiViewpoint usualViewpoint() const;
  void addLights();
  /// Moves the near and the far plane of the scene's only camera to hold the whole scene, as viewers do. Does nothing
  /// when there are several cameras: they may look at different parts.
  void setDepthLimits();

  /// What to draw: lights and camera, then the scene.
  SoNode* root() const;
  /// The camera added; null if there is none.
  SoCamera* camera() const { return m_ownCamera; }

 private:
  struct SceneCamera {
    SoCamera* camera;
    SoNode* parent;  // null for the scene itself
    SbMatrix toWorld;
  };
  class HiddenNode;
  struct Frame;
  struct Extents;
  struct Overlay {
    SoNode* node;
    SoNode* parent;
  };
  struct OldLimits {
    SoCamera* camera;
    float nearDistance;
    float farDistance;
  };

  void noteCamera(SoCallbackAction* action, SoCamera* camera);
  void hideCameras();
  std::vector<std::unique_ptr<HiddenNode>> hideOverlays() const;
  void leaveRoomForOverlays(Extents& extents) const;
  std::vector<SbVec3f> corners() const;
  Extents extentsFor(const PiViewpoint& viewpoint, const SbVec3f& origin) const;
  template <class Visit>
  void forEachVertex(Visit visit) const;
  bool addPrimitives(Extents& extents) const;
  void aim(const PiViewpoint& viewpoint, const Extents& extents);

  SoNode* m_scene;
  SbViewportRegion m_viewport;
  SoSeparator* m_root;
  SoCamera* m_ownCamera = nullptr;
  std::vector<SceneCamera> m_cameras;
  std::vector<SbVec3f> m_screenTexts;
  bool m_hasLight = false;
  std::optional<OldLimits> m_oldLimits;
  std::vector<Overlay> m_overlays;
  std::vector<std::unique_ptr<HiddenNode>> m_hidden;
};

#endif
