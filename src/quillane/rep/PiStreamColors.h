#ifndef ORMELLE_PISTREAMCOLORS_H
#define ORMELLE_PISTREAMCOLORS_H

#include <algorithm>
#include <vector>

#include <Inventor/SbColor.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PbDataMapping.h>

/// The colours of the points of paths: of a mapping, else of their paths, else none.
class PiStreamColors {
 public:
  PiStreamColors(const PbDataMapping* mapping, const SoMFColor& ofPaths) : m_mapping(mapping), m_ofPaths(ofPaths) {}

  bool areMapped() const { return m_mapping != nullptr; }
  bool areOfPaths() const { return !m_mapping && m_ofPaths.getNum() > 0; }

  /// The colour of a path, null if there are none.
  const SbColor* ofPath(int path) const {
    const int num = m_ofPaths.getNum();
    return num > 0 ? m_ofPaths.getValues(std::min(path, num - 1)) : nullptr;
  }
  /// Returns false if the value has no colour. `color` is good until the next call.
  bool find(int path, float value, const SbColor*& color) const {
    color = m_mapping ? m_mapping->getRGBColor(value) : ofPath(path);
    return color || !m_mapping;
  }

  /// Appends the mapped colour of a value, with its transparency where the mapping has such. False, and nothing
  /// appended, if it has none.
  bool append(float value) {
    float transparency = 0;
    const SbColor* color = m_mapping->getRGBColor(value, transparency);
    if (!color) return false;
    m_colors.push_back(*color);
    if (m_mapping->isTransparencyEnabled()) m_transparencies.push_back(transparency);
    return true;
  }
  void append(const SbColor& color) {
    m_colors.push_back(color);
    if (m_mapping && m_mapping->isTransparencyEnabled()) m_transparencies.push_back(0);
  }
  /// Adds a material of what was appended and its binding to a group.
  void addTo(SoGroup* group, SoMaterialBinding::Binding binding) const {
    auto* material = new SoMaterial;
    group->addChild(material);
    material->diffuseColor.setValues(0, static_cast<int>(m_colors.size()), m_colors.data());
    if (!m_transparencies.empty())
      material->transparency.setValues(0, static_cast<int>(m_transparencies.size()), m_transparencies.data());
    auto* materialBinding = new SoMaterialBinding;
    group->addChild(materialBinding);
    materialBinding->value = binding;
  }

 private:
  const PbDataMapping* m_mapping;
  const SoMFColor& m_ofPaths;
  std::vector<SbColor> m_colors;
  std::vector<float> m_transparencies;
};

#endif
