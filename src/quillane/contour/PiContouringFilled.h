#ifndef ORMELLE_PICONTOURINGFILLED_H
#define ORMELLE_PICONTOURINGFILLED_H

#include <span>

#include "quillane/contour/PiContouring.h"

class PbDataMapping;
class SoGroup;
class SoMaterial;
class SoMaterialBinding;

/// Cuts a surface into bands between neighbouring isovalues: polygons of one colour each, that of the isovalue below.
///
/// The bands of neighbouring cells share their points, so that there are no cracks. A cell that no level crosses is one
/// polygon. In a quadrangle that a level crosses on all four edges the bands are those between the isolines.
///
///     PiContouringFilled worker;
///     worker.setIsovaluesList(&list);
///     worker.setDataMapping(&mapping);
///     worker.setMesh(grid, heights);  // or initGeometry(), setPoints(), addElems()
///     worker.fillSurf(values, group, material, binding);
class PiContouringFilled : public PiContouring {
 public:
  PiContouringFilled();
  ~PiContouringFilled();

  /// What colours the bands. If it has a threshold behind which parts are left out, so are the corners of cells that
  /// lie there: otherwise bands would rise like walls towards values that aren't shown. Not owned.
  void setDataMapping(const PbDataMapping* mapping) { m_mapping = mapping; }

  /// @name Cutting
  /// Cuts the surface by `values`, one for each of its points, all levels in one pass; null leaves no polygons. Takes
  /// time and memory as PiContouringLines::extract() does. The results are valid until the next call.
  /// @{
  void cut(const float* values);
  /// The corners of each polygon in the order of its cell, and a -1: points of the surface, and from the number of
  /// these on the cut points.
  std::span<const int> coordIndex() const;
  /// For each polygon the index in the list of the isovalue below it, -1 if it is the lowest band.
  std::span<const int> lowerIsovalues() const;
  std::span<const SbVec3f> cutPoints() const;
  /// @}

  /// Cuts the surface, appends to `group` the binding, the points and a SoIndexedFaceSet of the bands, and gives
  /// `material` a colour for each polygon, and a transparency where the mapping has one or has no colour. `binding`
  /// becomes `PER_FACE`; null makes one. Does nothing without values, a mapping, a group or a material.
  ///
  /// The polygons' memory goes to the shape, so that the next call makes it anew.
  void fillSurf(const float* values, SoGroup* group, SoMaterial* material, SoMaterialBinding* binding);

  std::size_t memorySize() const;

 private:
  struct Work;

  const PbDataMapping* m_mapping = nullptr;
  std::unique_ptr<Work> m_work;
};

#endif
