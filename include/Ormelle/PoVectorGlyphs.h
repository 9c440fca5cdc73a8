#ifndef ORMELLE_POVECTORGLYPHS_H
#define ORMELLE_POVECTORGLYPHS_H

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/OrmelleExport.h>

/// The fields of kits that draw vectors: which vectors, and how their glyphs look. A glyph is a body from the start of
/// its vector to its end, with an arrow at each end.
///
/// Lengths are in coordinates of the mesh. A size that was never set is automatic (setting it to its default makes it a
/// size like any other): a body then is as long as nodes lie apart where the vector is longest, and an arrow a third of
/// its body.
///
/// Filled arrows (TRIANGLE, RECTANGLE, CONE and their INDIRECT twins) end where the body ends, and the body leaves
/// their place free. An INDIRECT shape points against its vector. Flat shapes lie in the plane of the vector that is
/// level with z = 0.
class ORMELLE_API PoVectorGlyphs {
 public:
  enum EliminationStatus {
    NONE = 0,
    TOO_SMALL = 1,         ///< leaves out vectors shorter than `minLength`
    TOO_LONG = 2,          ///< leaves out vectors longer than `maxLength`
    TOO_SMALL_OR_LONG = 3  ///< both
  };
  enum BodyShape { NO_BODY = 0, LINE = 1, CYLINDER = 2 };
  enum BodyLengthType {
    CONSTANT_LENGTH = 0,  ///< the factor is the length
    RELATIVE_LENGTH = 1   ///< the factor times the module of the vector
  };
  enum BodyRadiusType {
    CONSTANT_RADIUS = 0,  ///< the factor is the radius
    RELATIVE_RADIUS = 1   ///< the factor times the drawn length
  };
  enum BodyColoringType {
    CONSTANT_COLOR = 0,        ///< inherited
    MODULE_MAPPING_COLOR = 1,  ///< the data mapping's colour of the module
    SCALAR_MAPPING_COLOR = 2   ///< that of the node's value in the set `valuesIndex`
  };
  /// There is no 6.
  enum StartArrowShape {
    NO_SHAPE = 0,
    POINT = 1,
    CHEVRON = 2,
    TRIANGLE = 3,
    RECTANGLE = 4,
    CONE = 5,
    SPHERE = 7,
    INDIRECT_CHEVRON = 8,
    INDIRECT_TRIANGLE = 9,
    INDIRECT_CONE = 10
  };
  enum StartArrowHeightType {
    CONSTANT_HEIGHT = 0,  ///< the factor is the height
    RELATIVE_HEIGHT = 1   ///< the factor times the drawn length
  };
  using EndArrowShape = StartArrowShape;
  using EndArrowHeightType = StartArrowHeightType;
  using StartArrowColoringType = BodyColoringType;
  using EndArrowColoringType = BodyColoringType;

  SoSFInt32 density;                 ///< one vector of so many is drawn; 1 by default, and at least
  SoSFEnum eliminationStatus;        ///< an EliminationStatus; `NONE` by default
  SoSFFloat minLength;               ///< of the module; 0 by default
  SoSFFloat maxLength;               ///< of the module; 0 by default
  SoSFEnum bodyShape;                ///< a BodyShape; `LINE` by default
  SoSFEnum bodyLengthType;           ///< a BodyLengthType; `RELATIVE_LENGTH` by default
  SoSFFloat bodyLengthFactor;        ///< 1; until set automatic. 0 and below: nothing is drawn
  SoSFEnum bodyRadiusType;           ///< of cylinders, a BodyRadiusType; `RELATIVE_RADIUS` by default
  SoSFFloat bodyRadiusFactor;        ///< 0.04 by default; if constant, until set automatic
  SoSFEnum bodyColoringType;         ///< a BodyColoringType; `CONSTANT_COLOR` by default
  SoSFEnum startArrowShape;          ///< a StartArrowShape; `NO_SHAPE` by default
  SoSFEnum endArrowShape;            ///< a StartArrowShape; `CHEVRON` by default
  SoSFEnum startArrowHeightType;     ///< a StartArrowHeightType; `RELATIVE_HEIGHT` by default
  SoSFEnum endArrowHeightType;       ///< the same
  SoSFFloat startArrowHeightFactor;  ///< 0.3 by default; if constant, until set automatic
  SoSFFloat startArrowRadiusFactor;  ///< of the height; 0.4 by default
  SoSFFloat endArrowHeightFactor;    ///< as those of the start
  SoSFFloat endArrowRadiusFactor;
  SoSFEnum startArrowColoringType;  ///< a BodyColoringType; `CONSTANT_COLOR` by default
  SoSFEnum endArrowColoringType;

 protected:
  PoVectorGlyphs();
  ~PoVectorGlyphs();
};

#endif
