#ifndef ORMELLE_PICOLORWRITER_H
#define ORMELLE_PICOLORWRITER_H

#include <Inventor/SbColor.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbDataMapping.h>

/// Fills a material with the colours of values, in the memory of its fields, which it closes when it dies.
///
/// There is a transparency for each colour if the mapping has transparency enabled. A value without a colour gets
/// transparency 1, so that PoBase::deleteTransparencyParts() removes what has it, and then all entries get one.
class PiColorWriter {
 public:
  /// Sizes the fields of `material` for `count` entries, of which each must be written once.
  PiColorWriter(const PbDataMapping& mapping, SoMaterial& material, int count);
  ~PiColorWriter();
  PiColorWriter(const PiColorWriter&) = delete;
  PiColorWriter& operator=(const PiColorWriter&) = delete;

  void set(int entry, float value) {
    float transparency = 0;
    const SbColor* color =
        m_isTransparencyEnabled ? m_mapping.getRGBColor(value, transparency) : m_mapping.getRGBColor(value);
    if (!color) {
      setNoColor(entry);
      return;
    }
    m_colors[entry] = *color;
    if (m_transparencies) m_transparencies[entry] = transparency;
  }
  /// The same as an entry that has been written.
  void setLike(int entry, int written) {
    m_colors[entry] = m_colors[written];
    if (m_transparencies) m_transparencies[entry] = m_transparencies[written];
  }
  /// An entry that nothing drawn refers to.
  void setUnused(int entry) {
    m_colors[entry].setValue(0, 0, 0);
    if (m_transparencies) m_transparencies[entry] = 0;
  }

 private:
  void setNoColor(int entry);
  void startTransparencies();

  const PbDataMapping& m_mapping;
  SoMaterial& m_material;
  const bool m_isTransparencyEnabled;
  SbColor* m_colors = nullptr;
  float* m_transparencies = nullptr;
};

#endif
