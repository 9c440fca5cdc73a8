#ifndef ORMELLE_GALLERY_COLORBAR_H
#define ORMELLE_GALLERY_COLORBAR_H

#include <Inventor/SbBox2f.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLimit.h>

#include <cstdio>
#include <vector>

#include "Ink.h"

namespace gallery {

/// An upright bar of colours beside a flat scene, with a number at each of some values. It is a mesh like any other,
/// and must live as long as the scene.
class ColorBar {
 public:
  /// A bar from the value `low` to the value `high` within `place`. Without a mapping it takes the one in force where
  /// node() stands in the scene.
  ColorBar(float low, float high, const std::vector<float>& ticks, const SbBox2f& place,
           PbDataMapping* mapping = nullptr)
      : m_mesh(2, numSteps + 1, place.getMin()[0], place.getMin()[1], place.getMax()[0], place.getMax()[1], 1) {
    std::vector<float> values;
    for (int row = 0; row < 2; ++row)
      for (int i = 0; i <= numSteps; ++i) values.push_back(low + (high - low) * static_cast<float>(i) / numSteps);
    m_mesh.addValuesSet(0, values.data(), "value");

    auto* filled = new PoMeshFilled;
    filled->setMesh(&m_mesh);
    filled->setDataMapping(mapping);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_AVERAGE;
    m_node->addChild(filled);

    const float height = place.getMax()[1] - place.getMin()[1];
    SoSeparator* ink = inked(SbColor(0.18f, 0.20f, 0.24f), 1.5f);
    auto* frame = new PoMeshLimit;
    frame->setMesh(&m_mesh);
    ink->addChild(frame);
    auto* font = new SoFont;
    font->name = "DejaVu Sans";
    font->size = 0.045f * height;
    ink->addChild(font);
    for (const float tick : ticks) {
      auto* label = new SoSeparator;
      auto* at = new SoTranslation;
      at->translation.setValue(place.getMax()[0] + 0.02f * height,
                               place.getMin()[1] + height * (tick - low) / (high - low) - 0.016f * height, 0);
      label->addChild(at);
      char number[32];
      std::snprintf(number, sizeof(number), "%g", static_cast<double>(tick));
      auto* text = new SoAsciiText;
      text->string = number;
      label->addChild(text);
      ink->addChild(label);
    }
    m_node->addChild(ink);
  }

  SoSeparator* node() const { return m_node; }

 private:
  static constexpr int numSteps = 200;

  PbRegularCartesianGrid2D m_mesh;
  SoSeparator* m_node = unlit();
};

}  // namespace gallery

#endif
