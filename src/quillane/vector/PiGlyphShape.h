#ifndef ORMELLE_PIGLYPHSHAPE_H
#define ORMELLE_PIGLYPHSHAPE_H

#include <vector>

#include <Inventor/SbVec3f.h>

/// What a glyph looks like: along x from 0 to 1, across within a radius of 1 (y in the plane of flat shapes). A glyph
/// is a copy, stretched along its vector to a height and across it to a radius.
struct PiGlyphShape {
  enum Kind { POINTS, LINES, FACES };

  Kind kind = FACES;
  std::vector<SbVec3f> points;
  std::vector<SbVec3f> normals;  ///< one a point of faces
  std::vector<int> indices;      ///< lines and faces, each closed by -1; faces run clockwise as seen from outside

  /// `radiusOfHeight` is the ratio of radius to height that normals are for; `isReversed` turns the shape end to end.
  static PiGlyphShape point();
  static PiGlyphShape line();
  static PiGlyphShape chevron(bool isReversed);
  static PiGlyphShape triangle(bool isReversed);
  static PiGlyphShape rectangle();
  static PiGlyphShape cylinder(int numSides);
  static PiGlyphShape cone(int numSides, float radiusOfHeight, bool isReversed);
  /// The same of a third of the points, shared by sides and base, for glyphs that are small in the picture.
  static PiGlyphShape coarseCone(int numSides, float radiusOfHeight, bool isReversed);
  /// About the origin, of radius 1 in all directions: stretched to equal height and radius.
  static PiGlyphShape sphere(int numSides);

  int numParts() const;

 private:
  void addFace(std::initializer_list<int> counterclockwise);
  void reverse();
};

#endif
