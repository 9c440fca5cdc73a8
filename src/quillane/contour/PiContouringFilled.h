#ifndef ORMELLE_PICONTOURINGFILLED_H
#define ORMELLE_PICONTOURINGFILLED_H

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

  /// Appends to `group` the binding, the points (those of the surface first) and a SoIndexedFaceSet of the bands, and
  /// gives `material` a colour for each polygon, and a transparency where the mapping has one or has no colour.
  /// `values` holds one for each point of the surface. `binding` becomes `PER_FACE`; null makes one. Does nothing
  /// without values or a mapping.
  void fillSurf(const float* values, SoGroup* group, SoMaterial* material, SoMaterialBinding* binding);

 private:
  const PbDataMapping* m_mapping = nullptr;
};

#endif
