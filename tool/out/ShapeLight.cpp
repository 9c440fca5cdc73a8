#include "out/ShapeLight.h"

#include <Inventor/SbColor.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoEnvironmentElement.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoLightElement.h>
#include <Inventor/lists/SoNodeList.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>

#include <algorithm>
#include <cmath>

#include "out/ShapeState.h"

namespace tool {

namespace {

constexpr int kMostLamps = 8;  // as many as OpenGL has

SbVec3f times(const SbVec3f& a, const SbVec3f& b) { return SbVec3f(a[0] * b[0], a[1] * b[1], a[2] * b[2]); }

// A vector of length 1, or of length 0 if there is no direction in it.
SbVec3f unit(SbVec3f v) {
  const float length = v.length();
  return length > 0.0f && std::isfinite(length) ? v / length : SbVec3f(0.0f, 0.0f, 0.0f);
}

}  // namespace

ShapeLight::ShapeLight(SoCallbackAction& action) {
  SoState* state = action.getState();
  m_isOn = SoLazyElement::getLightModel(state) != SoLazyElement::BASE_COLOR;
  if (!m_isOn) return;
  m_isTwoSided = shapeSidesOf(action).isTwoSided;

  m_toEye = action.getModelMatrix() * action.getViewingMatrix();
  m_normalToEye = m_toEye.det4() != 0.0f ? m_toEye.inverse().transpose() : m_toEye;

  const SbColor& ambient = SoLazyElement::getAmbient(state);
  const SbColor& surrounding = SoEnvironmentElement::getAmbientColor(state);
  m_base = SoLazyElement::getEmissive(state) +
           times(ambient, surrounding) * SoEnvironmentElement::getAmbientIntensity(state);
  m_specular = SoLazyElement::getSpecular(state);
  m_shininess = SoLazyElement::getShininess(state) * 128.0f;

  const SoNodeList& lights = SoLightElement::getLights(state);
  for (int i = 0; i < lights.getLength(); ++i) {
    const auto* light = static_cast<const SoLight*>(lights[i]);
    if (!light->on.getValue() || m_lamps.size() >= kMostLamps) continue;
    const SbMatrix& toEye = SoLightElement::getMatrix(state, i);
    Lamp lamp;
    lamp.color = light->color.getValue() * light->intensity.getValue();
    lamp.attenuation = SoEnvironmentElement::getLightAttenuation(state);
    if (light->isOfType(SoDirectionalLight::getClassTypeId())) {
      toEye.multDirMatrix(-static_cast<const SoDirectionalLight*>(light)->direction.getValue(), lamp.towards);
      lamp.towards = unit(lamp.towards);
    } else if (light->isOfType(SoSpotLight::getClassTypeId())) {
      const auto* spot = static_cast<const SoSpotLight*>(light);
      lamp.kind = Lamp::SPOT;
      toEye.multVecMatrix(spot->location.getValue(), lamp.position);
      toEye.multDirMatrix(spot->direction.getValue(), lamp.axis);
      lamp.axis = unit(lamp.axis);
      lamp.cutOffCosine = std::cos(spot->cutOffAngle.getValue());
      lamp.exponent = spot->dropOffRate.getValue() * 128.0f;
    } else if (light->isOfType(SoPointLight::getClassTypeId())) {
      lamp.kind = Lamp::POINT;
      toEye.multVecMatrix(static_cast<const SoPointLight*>(light)->location.getValue(), lamp.position);
    } else {
      continue;
    }
    m_lamps.push_back(lamp);
  }
}

uint32_t ShapeLight::lit(uint32_t color, const SbVec3f& point, const SbVec3f& normal, bool seesBack) const {
  if (!m_isOn) return color;
  SbVec3f n;
  m_normalToEye.multDirMatrix(normal, n);
  n = unit(n);
  if (seesBack && m_isTwoSided) n = -n;
  SbVec3f eye;
  m_toEye.multVecMatrix(point, eye);
  const SbVec3f diffuse(static_cast<float>(color >> 24 & 255) / 255.0f, static_cast<float>(color >> 16 & 255) / 255.0f,
                        static_cast<float>(color >> 8 & 255) / 255.0f);
  SbVec3f sum = m_base;
  for (const Lamp& lamp : m_lamps) {
    SbVec3f towards = lamp.towards;
    float strength = 1.0f;
    if (lamp.kind != Lamp::DIRECTIONAL) {
      const SbVec3f way = lamp.position - eye;
      const float distance = way.length();
      towards = unit(way);
      const float weakening =
          lamp.attenuation[2] + lamp.attenuation[1] * distance + lamp.attenuation[0] * distance * distance;
      strength = weakening > 0.0f ? 1.0f / weakening : 1.0f;
      if (lamp.kind == Lamp::SPOT) {
        const float cosine = -towards.dot(lamp.axis);
        strength *= cosine < lamp.cutOffCosine ? 0.0f : std::pow(std::max(cosine, 0.0f), lamp.exponent);
      }
    }
    const float facing = n.dot(towards);
    if (!(facing > 0.0f)) continue;
    sum += times(diffuse, lamp.color) * (facing * strength);
    const SbVec3f half = unit(towards + SbVec3f(0.0f, 0.0f, 1.0f));
    const float glance = n.dot(half);
    if (glance > 0.0f) sum += times(m_specular, lamp.color) * (std::pow(glance, m_shininess) * strength);
  }
  uint32_t out = 0;
  for (int c = 0; c < 3; ++c) {
    const float channel = std::isfinite(sum[c]) ? std::clamp(sum[c], 0.0f, 1.0f) : 0.0f;
    out = out << 8 | static_cast<uint32_t>(channel * 255.0f + 0.5f);
  }
  return out << 8 | (color & 255);
}

}  // namespace tool
