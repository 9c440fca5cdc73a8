#ifndef ORMELLE_PIGLYPHEMITTER_H
#define ORMELLE_PIGLYPHEMITTER_H

#include <cstddef>
#include <functional>
#include <vector>

#include <Inventor/SbVec3f.h>

#include "quillane/vector/PiGlyphShape.h"
#include "quillane/vector/PiVectorField.h"

class PbDataMapping;
class SoGroup;
class SoMaterial;

/// Turns all glyphs of one kind into one shape of the toolkit with its coordinates, normals and materials.
class PiGlyphEmitter {
 public:
  /// A length that depends on the length of the vector as it is drawn.
  struct Length {
    float ofVector = 0;
    float fixed = 0;

    float of(float length) const { return ofVector * length + fixed; }
    Length operator*(float factor) const { return {ofVector * factor, fixed * factor}; }
    Length operator-(const Length& other) const { return {ofVector - other.ofVector, fixed - other.fixed}; }
  };

  /// How the copies of a shape lie on their vectors.
  struct Size {
    Length origin;  ///< where x = 0 of the shape lies, from the start of the vector
    Length height;  ///< along the vector; what comes out negative is 0
    Length radius;  ///< across
  };

  /// Which vectors are drawn, and in which colours.
  struct Colors {
    std::vector<int> drawn;  ///< places in the field; used only if isSelected
    bool isSelected = false;
    SoMaterial* material = nullptr;  ///< one entry for each that is drawn; null: inherited
  };

  /// Colours of one number a vector; those without a colour, or as transparent as what is to be deleted, aren't drawn.
  static Colors color(const std::vector<PiVectorField::Vector>& vectors, const PbDataMapping& mapping,
                      const std::function<float(const PiVectorField::Vector&)>& valueOf);

  /// Appends the material with its binding, coordinates, normals and the shape to the group; nothing without a glyph. A
  /// vector without length has no direction and gets no glyph.
  static void emit(const PiGlyphShape& shape, const Size& size, const std::vector<PiVectorField::Vector>& vectors,
                   const Colors& colors, SoGroup* group);
};

#endif
