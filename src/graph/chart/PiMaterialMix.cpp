#include "graph/chart/PiMaterialMix.h"

#include <Inventor/SbColor.h>
#include <Inventor/nodes/SoMaterial.h>

namespace {

SbColor mix(const SbColor& first, const SbColor& second, float t) { return SbColor(first * (1 - t) + second * t); }

float mix(float first, float second, float t) { return first * (1 - t) + second * t; }

int wrap(int entry, int num) { return entry < num ? entry : entry % num; }

template <class Field>
void mixList(const Field& source, std::span<const PiMaterialMix> mixes, Field& out) {
  const int num = source.getNum();
  if (num == 0) return;
  const auto* from = source.getValues(0);
  if (num == 1) {
    out.setValue(from[0]);
    return;
  }
  out.setNum(static_cast<int>(mixes.size()));
  auto* to = out.startEditing();
  for (const PiMaterialMix& entry : mixes) {
    const auto& first = from[wrap(entry.first, num)];
    *to++ = entry.t == 0 ? first : mix(first, from[wrap(entry.second, num)], entry.t);
  }
  out.finishEditing();
}

}  // namespace

SoMaterial* mixMaterial(const SoMaterial& source, std::span<const PiMaterialMix> mixes) {
  auto* material = new SoMaterial;
  mixList(source.ambientColor, mixes, material->ambientColor);
  mixList(source.diffuseColor, mixes, material->diffuseColor);
  mixList(source.specularColor, mixes, material->specularColor);
  mixList(source.emissiveColor, mixes, material->emissiveColor);
  mixList(source.shininess, mixes, material->shininess);
  mixList(source.transparency, mixes, material->transparency);
  return material;
}
