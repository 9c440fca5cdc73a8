#ifndef ORMELLE_TOOL_OUT_SHAPELIGHT_H
#define ORMELLE_TOOL_OUT_SHAPELIGHT_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>

#include <cstdint>
#include <vector>

class SoCallbackAction;

namespace tool {

/// The light on one shape, by the formulas of OpenGL's fixed pipeline, with the viewer far away as the toolkit has it.
class ShapeLight {
 public:
  /// Reads the traversal state of `action`, in which a primitive of the shape is being told.
  explicit ShapeLight(SoCallbackAction& action);

  /// Whether light changes colours at all (else the shape is drawn in base colours).
  bool isOn() const { return m_isOn; }
  /// The colour, 0xrrggbbaa, that a vertex shows. Point and normal are those of the shape.
  uint32_t lit(uint32_t color, const SbVec3f& point, const SbVec3f& normal, bool seesBack) const;
  /// Whether the sides that face away are lit as if turned round.
  bool isTwoSided() const { return m_isTwoSided; }

 private:
  struct Lamp {
    enum Kind { DIRECTIONAL, POINT, SPOT } kind = DIRECTIONAL;
    SbVec3f color;
    SbVec3f towards;   // unit vector to a directional light, in the eye's space
    SbVec3f position;  // of the others
    SbVec3f axis;      // of a spot's beam
    float cutOffCosine = -1.0f;
    float exponent = 0.0f;
    SbVec3f attenuation;  // quadratic, linear, constant
  };

  bool m_isOn = false;
  bool m_isTwoSided = false;
  SbMatrix m_toEye;
  SbMatrix m_normalToEye;
  SbVec3f m_base;  // what is there without any light
  SbVec3f m_specular;
  float m_shininess = 0.0f;
  std::vector<Lamp> m_lamps;
};

}  // namespace tool

#endif
