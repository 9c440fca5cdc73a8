#ifndef ORMELLE_PIVECTORREP_H
#define ORMELLE_PIVECTORREP_H

#include <cstddef>

#include <Ormelle/PoVectorGlyphs.h>

#include "quillane/vector/PiGlyphEmitter.h"
#include "quillane/vector/PiVectorField.h"

class PbDataMapping;
class SbBox3f;
class SoGroup;

/// What the kits of vectors share: from the fields and a mesh to groups of glyphs. Keeps its memory between rebuilds.
class PiVectorRep {
 public:
  /// Takes the fields over for one rebuild; then every vector is added. Automatic sizes go by how far vectors lie
  /// apart, and by the longest of those given.
  void start(const PoVectorGlyphs& fields, float spacing, int numVectors, const SbVec3f* vectors);
  /// How far places of vectors lie apart if they are spread evenly in the box and one of `density` is drawn.
  static float spacingOf(const SbBox3f& box, int num, int density);
  void add(const SbVec3f& point, const SbVec3f& vector) { m_field.add(point, vector); }

  /// Adds the glyphs of what was added behind what the groups hold. `scalars` has a value for each vector added, or is
  /// null; without a mapping colours are inherited.
  void buildBodies(const PbDataMapping* mapping, const float* scalars, SoGroup* group);
  void buildArrows(bool isAtEnd, const PbDataMapping* mapping, const float* scalars, SoGroup* group);

  std::size_t getMemorySize() const { return m_field.capacityInBytes(); }

 private:
  struct Arrow {
    int shape = PoVectorGlyphs::NO_SHAPE;
    PiGlyphEmitter::Length height;
    float radiusOfHeight = 0;
    int coloring = PoVectorGlyphs::CONSTANT_COLOR;
    bool isFilled() const;
  };

  PiGlyphEmitter::Colors colors(int coloring, const PbDataMapping* mapping, const float* scalars) const;
  /// The more glyphs there are, the smaller each is drawn.
  int numSides() const;
  bool isCoarse() const { return numSides() < 10; }

  PiVectorField m_field;
  int m_bodyShape = PoVectorGlyphs::LINE;
  PiGlyphEmitter::Length m_bodyRadius;
  int m_bodyColoring = PoVectorGlyphs::CONSTANT_COLOR;
  Arrow m_arrows[2];
};

#endif
