#ifndef ORMELLE_TOOL_OUT_PAGESCENE_H
#define ORMELLE_TOOL_OUT_PAGESCENE_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbPlane.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "SceneWalk.h"
#include "ShapeColors.h"
#include "out/Canvas.h"
#include "out/ShapeLight.h"

namespace tool {

/// A vertex as the page shows it.
struct PageVertex {
  float x = 0.0f;  ///< in page pixels
  float y = 0.0f;
  float s = 0.0f;  ///< in the texture
  float t = 0.0f;
  double z = 0.0;      ///< depth, -1 (near) to 1 (far)
  uint32_t color = 0;  ///< as lit, without the texture
  PagePoint place() const { return {static_cast<double>(x), static_cast<double>(y)}; }
};

/// What one shape shows of one kind.
struct PageBatch {
  enum Kind { TRIANGLES, LINES, POINTS, TEXTS };

  Kind kind = TRIANGLES;
  bool isOverlay = false;      ///< drawn over everything that isn't
  bool isSetBack = false;      ///< drawn behind what has the same depth, by a polygon offset
  bool isSmooth = false;       ///< some triangle has corners of different colours, or there is a texture
  bool isTransparent = false;  ///< some vertex is
  double nearest = 2.0;        ///< the range of its depths
  double farthest = -2.0;
  std::vector<PageVertex> vertices;  ///< three a triangle, two a segment, one a point
  std::optional<ShapeTexture> texture;
  LineStyle style;  ///< of lines; for points the width is their size
  std::vector<TextRun> texts;
  std::vector<PageVertex> anchors;  ///< a place on each text, for its depth
};

/// Collects what a scene shows as a camera sees it, projected onto the page, lit and clipped.
class PageScene : public SceneVisitor {
 public:
  PageScene(int width, int height) : m_width(width), m_height(height) {}

  void beginShape(SoCallbackAction& action) override;
  void triangle(const std::array<Vertex, 3>& corners) override;
  void line(const std::array<Vertex, 2>& ends) override;
  void point(const Vertex& vertex) override;
  void text(SoCallbackAction& action) override;

  /// In the order of traversal; none is empty.
  std::vector<PageBatch> takeBatches();
  int width() const { return m_width; }
  int height() const { return m_height; }
  /// Texts whose sides or backs were left out.
  bool hasSolidText() const { return m_hasSolidText; }
  /// Markers, which are drawn as points.
  bool hasMarkers() const { return m_hasMarkers; }

 private:
  // A vertex in the clipping space of OpenGL, and in the world for the scene's own planes.
  struct ClipVertex {
    std::array<double, 4> at{};
    std::array<double, 2> texture{};
    std::array<double, 4> color{};
    std::array<double, 3> world{};
  };

  void readState(SoCallbackAction& action);
  ClipVertex clipVertex(const Vertex& vertex, uint32_t color) const;
  uint32_t colorOf(const Vertex& vertex, bool seesBack) const;
  std::vector<ClipVertex> clipped(std::vector<ClipVertex> polygon, bool isClosed) const;
  PageVertex onPage(const ClipVertex& vertex) const;
  PageBatch& batch(PageBatch::Kind kind);
  void append(PageBatch& batch, const PageVertex& vertex) const;
  double widthOf(const std::string& line, const std::string& font, double size);
  void addRun(PageBatch& out, TextRun run, const PageVertex& anchor) const;

  int m_width;
  int m_height;
  std::vector<PageBatch> m_batches;
  std::array<int, 3> m_current{-1, -1, -1};  // the batch of each kind that the shape has begun
  bool m_hasSolidText = false;
  bool m_hasMarkers = false;

  // The state of the shape.
  SbMatrix m_viewProjection;
  SbMatrix m_model;
  std::vector<SbPlane> m_planes;
  bool m_isOverlay = false;
  bool m_isSetBack = false;
  bool m_cullsBack = false;
  bool m_isClockwise = false;
  bool m_showsEdges = false;  // faces are shown as their sides
  bool m_showsCorners = false;
  LineStyle m_style;
  double m_pointSize = 1.0;
  std::optional<ShapeColors> m_colors;
  std::optional<ShapeTexture> m_texture;
  std::optional<ShapeLight> m_light;

  std::map<std::string, double> m_widths;  // of lines of text in fonts of size 1
  std::optional<SoGetBoundingBoxAction> m_measuring;
};

}  // namespace tool

#endif
