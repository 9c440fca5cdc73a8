#ifndef ORMELLE_PIOFFSCREEN_H
#define ORMELLE_PIOFFSCREEN_H

#include <Inventor/SbColor.h>
#include <Inventor/actions/SoGLRenderAction.h>

#include <memory>
#include <optional>
#include <string>

#include "graph/toolkit/offscreen/PiPicture.h"
#include "graph/toolkit/offscreen/PiStage.h"

class PiGlContext;
class PiPictureAction;

/// Draws scenes into pictures, without a screen.
///
/// @code
/// PiOffscreen offscreen(1600, 1200);
/// offscreen.setSamples(16);
/// if (!offscreen.draw(scene)) std::cerr << offscreen.error();
/// offscreen.picture().writePng("scene.png");
/// @endcode
///
/// The toolkit must have been started. One object may draw many scenes, or one scene again after a change; the
/// toolkit's render caches then serve for all of them. Delete it before the toolkit is ended.
class PiOffscreen {
 public:
  /// Pictures of that size. One that is wider or higher than `largestTile` is drawn in equal tiles, which OpenGL's own
  /// limits then bound instead of it.
  PiOffscreen(int width, int height, int largestTile = 4096);
  ~PiOffscreen();
  PiOffscreen(const PiOffscreen&) = delete;
  PiOffscreen& operator=(const PiOffscreen&) = delete;

  /// What is behind the scene; white at first. `opacity` 0 gives a transparent picture whose pixels have the colour
  /// and the opacity of what is drawn there (which costs a second drawing).
  void setBackground(const SbColor& color, float opacity = 1.0f);
  /// From where to look at scenes. Without it, a scene's own camera counts, else PiStage::usualViewpoint().
  void setViewpoint(const std::optional<PiViewpoint>& viewpoint) { m_viewpoint = viewpoint; }
  /// The mean of how many drawings, each shifted by another part of a pixel, makes the picture: 1 at first, 16 is good.
  /// Sizes in pixels (lines, points, markers, bitmap text) stay what they are; bitmap text and markers stay sharp.
  void setSamples(int samples);
  /// Enlarges all that is measured in pixels (lines, points, bitmap text; markers aren't), and sees as much of the
  /// scene as a picture so many times as small: the same picture, only finer.
  void setSizeFactor(float factor);
  /// Whether OpenGL itself softens the edges of lines and points, for pictures of one sample.
  void setLineSmoothing(bool on);
  void setTransparencyType(SoGLRenderAction::TransparencyType type);

  /// Draws `scene`, which may have a camera and lights or not; see PiStage. On failure the picture is empty and
  /// error() tells why.
  bool draw(SoNode* scene);
  const PiPicture& picture() const { return m_picture; }
  /// A sentence without a final stop; empty after a success.
  const std::string& error() const { return m_error; }

 private:
  struct Sums;

  void drawStaged(SoNode* scene);
  void drawTile(SoNode* root, int column, int row);
  void drawOnto(const SbColor& background, SoNode* root, Sums& sums);
  uint8_t* placeInPicture(int column, int row, int x, int y);
  void developOpaque(const Sums& sums, int column, int row);
  void developTransparent(const Sums& onBlack, const Sums& onWhite, int column, int row);

  int m_width;
  int m_height;
  int m_tiles;  ///< so many across and down
  int m_tileWidth;
  int m_tileHeight;
  float m_sizeFactor = 1.0f;
  int m_samples = 1;
  SbColor m_background{1.0f, 1.0f, 1.0f};
  float m_opacity = 1.0f;
  std::optional<PiViewpoint> m_viewpoint;
  std::unique_ptr<PiGlContext> m_context;
  std::unique_ptr<PiPictureAction> m_action;
  PiPicture m_picture;
  std::string m_error;
};

#endif
