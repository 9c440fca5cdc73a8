#ifndef ORMELLE_PITEXTURECONTOURING_H
#define ORMELLE_PITEXTURECONTOURING_H

#include <Inventor/SbVec2f.h>

#include <vector>

class PbDataMapping;
class PbIsovaluesList;
class SoTexture2;
class SoTextureCoordinate2;

/// Bands between isovalues by a texture of one row, so that no cell need be cut: a texel is a band, and the renderer's
/// interpolation of the texture coordinate across a cell draws the edges of the bands.
///
/// Texel 0 has the colour below all isovalues and texel k + 1 that of isovalue k, up to the next one. The texture is
/// as long as the next power of two, of which the last band takes what is left. Both ends of the texture go on for
/// ever (its wrap mode is `CLAMP`, which in the toolkit means clamping to the edge), so coordinates are not bounded.
///
/// A kit keeps one. List and mapping stay those of others: what the kit has found in each rebuild is to be set again.
class PiTextureContouring {
 public:
  PiTextureContouring() = default;
  ~PiTextureContouring();
  PiTextureContouring(const PiTextureContouring&) = delete;
  PiTextureContouring& operator=(const PiTextureContouring&) = delete;

  void setDataMapping(const PbDataMapping* mapping) { m_dataMapping = mapping; }
  void setIsovaluesList(const PbIsovaluesList* list);

  /// Replaces the texture by a new one; without a list or a mapping nothing happens. A texel has a fourth component, 1
  /// minus the transparency, where the mapping has transparency enabled or a band has no colour: such a band is a hole.
  void buildTexture();
  /// The texture built last, null before; referenced here until the next is built.
  SoTexture2* getTexture() const { return m_texture; }

  /// Whether the texture has bands that aren't to be seen: without a colour, or as transparent as parts are that the
  /// mapping wants deleted.
  bool hasHoles() const { return !m_numShown.empty(); }
  /// Whether a cell whose nodes have these of `values` lies in such bands alone. Then it need not be drawn, and nobody
  /// can pick it.
  bool isHole(const float* values, const int* nodes, int num) const;

  /// Where `value` stands on the texture. Isovalue k is on the left edge of texel k + 1. Between the isovalues of an
  /// irregular list each band has the same length on the texture, whatever its width in values.
  float getTextureCoord(float value) const;
  /// (getTextureCoord(value), 0) for each of `num` values.
  void getTextureCoords(int num, const float* values, SbVec2f* coords) const;

  /// Gives `node` a coordinate for each of `num` values, ready to be drawn: finite, also for values that aren't and
  /// for those far away from all isovalues; and for a value that is an isovalue a trace beyond the edge of its texel,
  /// or a level area would flicker between two bands.
  void fill(SoTextureCoordinate2& node, int num, const float* values) const;

 private:
  float valueOfBand(int band) const;
  void findHoles();
  float drawnCoord(float value) const;
  float linearCoord(float value) const { return m_firstCoord + (value - m_minIso) * m_scale; }

  const PbIsovaluesList* m_isovaluesList = nullptr;
  const PbDataMapping* m_dataMapping = nullptr;
  float m_scale = 1;  // texture length a unit of value
  int m_numIso = 0;
  float m_minIso = 0;
  float m_maxIso = 0;
  float m_range = 0;
  const float* m_isoValues = nullptr;
  int m_isRegular = 1;
  float m_firstCoord = 1;
  float m_lastCoord = 1;
  float m_spanCoord = 0;
  float m_stepCoord = 0;
  SoTexture2* m_texture = nullptr;
  int m_size = 1;               // texels
  std::vector<int> m_numShown;  // bands before each band, and of all; empty if all are
};

#endif
