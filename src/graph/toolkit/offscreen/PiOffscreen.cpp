#include "graph/toolkit/offscreen/PiOffscreen.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/system/gl.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

#include "graph/toolkit/offscreen/PiGlContext.h"
#include "graph/toolkit/offscreen/PiPictureAction.h"

namespace {

constexpr int kLargest = 32767;  // what the toolkit can count pixels to

// The toolkit remarks on each new context that GLX knows nothing of it. That is as it should be: drop the remark.
class WithoutGlxRemark {
 public:
  WithoutGlxRemark() : m_old{SoDebugError::getHandlerCallback(), SoDebugError::getHandlerData()} {
    SoDebugError::setHandlerCallback(filter, &m_old);
  }
  ~WithoutGlxRemark() { SoDebugError::setHandlerCallback(m_old.function, m_old.data); }
  WithoutGlxRemark(const WithoutGlxRemark&) = delete;
  WithoutGlxRemark& operator=(const WithoutGlxRemark&) = delete;

 private:
  struct Handler {
    SoErrorCB* function;
    void* data;
  };
  static void filter(const SoError* error, void* old) {
    const auto* handler = static_cast<const Handler*>(old);
    if (!std::strstr(error->getDebugString().getString(), "glxglue_isdirect")) handler->function(error, handler->data);
  }

  Handler m_old;
};

class CurrentContext {
 public:
  explicit CurrentContext(PiGlContext& context) : m_context(context), m_isCurrent(context.makeCurrent()) {}
  ~CurrentContext() {
    if (m_isCurrent) m_context.release();
  }
  CurrentContext(const CurrentContext&) = delete;
  CurrentContext& operator=(const CurrentContext&) = delete;

  bool isCurrent() const { return m_isCurrent; }

 private:
  PiGlContext& m_context;
  bool m_isCurrent;
};

// A render cache round a camera would keep the shift of the sample, or the tile, that made it: none may be used or made
// then.
class WithoutRenderCaches {
 public:
  explicit WithoutRenderCaches(bool isNeeded) : m_number(SoSeparator::getNumRenderCaches()) {
    if (isNeeded) SoSeparator::setNumRenderCaches(0);
  }
  ~WithoutRenderCaches() { SoSeparator::setNumRenderCaches(m_number); }
  WithoutRenderCaches(const WithoutRenderCaches&) = delete;
  WithoutRenderCaches& operator=(const WithoutRenderCaches&) = delete;

 private:
  int m_number;
};

// Sample `index` of `count` in a pixel, -0.5 to 0.5: a Hammersley set, whose points all differ in x and in y, so that
// near-vertical and near-horizontal edges get as many shades as there are samples.
SbVec2f samplePosition(int index, int count) {
  float y = 0.0f;
  float digit = 0.5f;
  for (int bits = index; bits > 0; bits >>= 1, digit *= 0.5f)
    if (bits & 1) y += digit;
  const float half = 0.5f / static_cast<float>(count);
  return SbVec2f(static_cast<float>(index) / static_cast<float>(count) + half - 0.5f, y + half - 0.5f);
}

uint8_t toByte(float value) { return static_cast<uint8_t>(std::clamp(value * 255.0f + 0.5f, 0.0f, 255.0f)); }

}  // namespace

// The sum of the samples of every pixel, bottom row first, as OpenGL gives it.
struct PiOffscreen::Sums {
  std::vector<uint32_t> rgba;
};

PiOffscreen::PiOffscreen(int width, int height, int largestTile)
    : m_width(width),
      m_height(height),
      m_tiles(std::max(width, height) > kLargest ? 1 : (std::max(width, height) - 1) / std::max(largestTile, 1) + 1),
      m_tileWidth((width - 1) / m_tiles + 1),
      m_tileHeight((height - 1) / m_tiles + 1),
      m_context(std::make_unique<PiGlContext>(m_tileWidth, m_tileHeight)) {
  m_error = m_context->error();
  if (!m_context->isValid()) return;
  PiGlContext::installForToolkit();
  PiPictureAction::initClass();
  const SbViewportRegion viewport(static_cast<short>(m_tileWidth), static_cast<short>(m_tileHeight));
  m_action = std::make_unique<PiPictureAction>(viewport);
  m_action->setCacheContext(m_context->cacheContext());
  m_action->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
}

PiOffscreen::~PiOffscreen() = default;

void PiOffscreen::setBackground(const SbColor& color, float opacity) {
  m_background = color;
  m_opacity = std::clamp(opacity, 0.0f, 1.0f);
}

void PiOffscreen::setSamples(int samples) { m_samples = std::clamp(samples, 1, 4096); }

void PiOffscreen::setSizeFactor(float factor) { m_sizeFactor = std::clamp(factor, 0.01f, 100.0f); }

void PiOffscreen::setLineSmoothing(bool on) {
  if (m_action) m_action->setSmoothing(on ? TRUE : FALSE);
}

void PiOffscreen::setTransparencyType(SoGLRenderAction::TransparencyType type) {
  if (m_action) m_action->setTransparencyType(type);
}

bool PiOffscreen::draw(SoNode* scene) {
  m_picture = PiPicture();
  if (!m_context->isValid()) return false;
  m_error.clear();
  scene->ref();
  try {
    drawStaged(scene);
  } catch (const std::bad_alloc&) {
    m_error = "not enough memory for the picture";
  }
  scene->unrefNoDelete();
  if (!m_error.empty()) m_picture = PiPicture();
  return m_error.empty();
}

void PiOffscreen::drawStaged(SoNode* scene) {
  const WithoutGlxRemark quiet;
  const auto unenlarged = [this](int size) {
    return static_cast<short>(std::max(1.0f, static_cast<float>(size) / m_sizeFactor + 0.5f));
  };
  PiStage stage(scene, SbViewportRegion(unenlarged(m_width), unenlarged(m_height)));
  if (!stage.hasLight()) stage.addLights();
  if (m_viewpoint || !stage.hasCamera())
    stage.addCamera(m_viewpoint ? *m_viewpoint : stage.usualViewpoint());
  else
    stage.setDepthLimits();

  const CurrentContext current(*m_context);
  if (!current.isCurrent()) {
    m_error = "the OpenGL context was lost";
    return;
  }
  const WithoutRenderCaches caching((m_samples > 1 || m_tiles > 1) && !stage.camera());
  PiPixelScale::set(m_sizeFactor);
  m_picture = {m_width, m_height,
               std::vector<uint8_t>(4 * static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height))};
  for (int row = 0; row < m_tiles; ++row)
    for (int column = 0; column < m_tiles; ++column) drawTile(stage.root(), column, row);
  PiShiftedProjectionElement::setTile(0, 0, 1);
  PiPixelScale::set(1.0f);
}

void PiOffscreen::drawTile(SoNode* root, int column, int row) {
  PiShiftedProjectionElement::setTile(column, row, m_tiles);
  Sums first;
  if (m_opacity < 1.0f) {
    Sums second;
    drawOnto(SbColor(0.0f, 0.0f, 0.0f), root, first);
    drawOnto(SbColor(1.0f, 1.0f, 1.0f), root, second);
    developTransparent(first, second, column, row);
  } else {
    drawOnto(m_background, root, first);
    developOpaque(first, column, row);
  }
}

// Where pixel (x, y), from the lower left of a tile, goes; null if it is outside. Tiles together may be some pixels
// larger than the picture, which then is their middle.
uint8_t* PiOffscreen::placeInPicture(int column, int row, int x, int y) {
  const int left = column * m_tileWidth + x - (m_tiles * m_tileWidth - m_width) / 2;
  const int bottom = row * m_tileHeight + y - (m_tiles * m_tileHeight - m_height) / 2;
  if (left < 0 || left >= m_width || bottom < 0 || bottom >= m_height) return nullptr;
  return m_picture.rgba.data() +
         4 * (static_cast<std::size_t>(m_height - 1 - bottom) * static_cast<std::size_t>(m_width) +
              static_cast<std::size_t>(left));
}

void PiOffscreen::drawOnto(const SbColor& background, SoNode* root, Sums& sums) {
  const std::size_t size = 4 * static_cast<std::size_t>(m_tileWidth) * static_cast<std::size_t>(m_tileHeight);
  sums.rgba.assign(size, 0);
  std::vector<uint8_t> pixels(size);
  for (int sample = 0; sample < m_samples; ++sample) {
    const SbVec2f position = m_samples > 1 ? samplePosition(sample, m_samples) : SbVec2f(0.0f, 0.0f);
    PiShiftedProjectionElement::setShift(SbVec2f(2.0f * position[0] / static_cast<float>(m_tileWidth),
                                                 2.0f * position[1] / static_cast<float>(m_tileHeight)));
    glEnable(GL_DEPTH_TEST);
    glLineWidth(m_sizeFactor);
    glPointSize(m_sizeFactor);
    glClearColor(background[0], background[1], background[2], 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    m_action->apply(root);
    glFinish();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, m_tileWidth, m_tileHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    for (std::size_t i = 0; i < size; ++i) sums.rgba[i] += pixels[i];
  }
  PiShiftedProjectionElement::setShift(SbVec2f(0.0f, 0.0f));
}

void PiOffscreen::developOpaque(const Sums& sums, int column, int row) {
  const auto samples = static_cast<uint32_t>(m_samples);
  const uint32_t* in = sums.rgba.data();
  for (int y = 0; y < m_tileHeight; ++y)
    for (int x = 0; x < m_tileWidth; ++x, in += 4) {
      uint8_t* out = placeInPicture(column, row, x, y);
      if (!out) continue;
      for (std::size_t c = 0; c < 3; ++c) out[c] = static_cast<uint8_t>((in[c] + samples / 2) / samples);
      out[3] = 255;
    }
}

// What shows the same on black and on white is opaque; where the two differ by all, there is nothing. This holds
// however the scene blends its parts, which the alpha channel of the buffer doesn't.
void PiOffscreen::developTransparent(const Sums& onBlack, const Sums& onWhite, int column, int row) {
  const float full = 255.0f * static_cast<float>(m_samples);
  std::size_t i = 0;
  for (int y = 0; y < m_tileHeight; ++y)
    for (int x = 0; x < m_tileWidth; ++x, i += 4) {
      uint8_t* out = placeInPicture(column, row, x, y);
      if (!out) continue;
      float difference = 0.0f;
      for (std::size_t c = i; c < i + 3; ++c)
        difference += static_cast<float>(onWhite.rgba[c]) - static_cast<float>(onBlack.rgba[c]);
      const float drawn = std::clamp(1.0f - difference / (3.0f * full), 0.0f, 1.0f);
      const float opacity = drawn + (1.0f - drawn) * m_opacity;
      for (std::size_t c = 0; c < 3; ++c) {
        const float behind = (1.0f - drawn) * m_opacity * m_background[static_cast<int>(c)];
        const float color = static_cast<float>(onBlack.rgba[i + c]) / full + behind;
        out[c] = opacity > 0.0f ? toByte(color / opacity) : uint8_t{0};
      }
      out[3] = toByte(opacity);
    }
}
