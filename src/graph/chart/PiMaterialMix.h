#ifndef ORMELLE_PIMATERIALMIX_H
#define ORMELLE_PIMATERIALMIX_H

#include <span>

class SoMaterial;

/// Where a point of a curve has its material from: two entries of another material, `first` at `t` = 0 and `second` at
/// `t` = 1. Both are at least 0.
struct PiMaterialMix {
  static PiMaterialMix of(int entry) { return {entry, entry, 0}; }

  int first;
  int second;
  float t;
};

/// A new material, without a reference, that has an entry for each mix in every list of which `source` has several
/// elements, and the one element of the other lists. Entries beyond the end of a list start over at its begin.
SoMaterial* mixMaterial(const SoMaterial& source, std::span<const PiMaterialMix> mixes);

#endif
