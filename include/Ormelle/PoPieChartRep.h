#ifndef ORMELLE_POPIECHARTREP_H
#define ORMELLE_POPIECHARTREP_H

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoChart.h>

class PbMesh1D;

/// The values of a one-dimensional mesh as the slices of a pie or a ring about the origin, flat or solid.
///
/// Each node of the mesh whose value (of the set `yValuesIndex`) is positive has a slice, counterclockwise from the x
/// axis; values that aren't finite or negative count as 0. A slice reaches from `radiusMin` to `radiusMax`. Its colour
/// is that of its node, as in all charts; its name is its string in the mesh's first set of strings.
///
/// Annotations stand beyond the pie, make room for each other, and are left out where there is none; at a distance
/// within the pie they stand in their slices, as far as they fit. Percentages are rounded so that they sum to 100.
///
/// Reads from the state: the mesh, the data mapping, the filter of meshes, PbMiscTextAttr (the font). Sizes are
/// fractions of the reference length, the width of the domain.
///
/// Catalog, behind the parts of PoBase: the group `slice`, and for each of `annotation` and `annotationLine` a triple
/// `<name>Sep` (SoSeparator), `<name>App` (SoAppearanceKit, to style it) and `<name>` (SoGroup).
///
/// @code
/// PbRegularMesh1D mesh(4, 0, 3);
/// mesh.addValuesSet(0, values, "share");
/// root->addChild(meshNode);
/// auto* pie = new PoPieChartRep;
/// pie->radiusMin = 0.25f;
/// root->addChild(pie);
/// @endcode
class ORMELLE_API PoPieChartRep : public PoChart {
  PO_KIT_HEADER(PoPieChartRep, PoChart);
  PO_KIT_CATALOG_ENTRY_HEADER(slice);
  PO_KIT_TRIPLE_HEADER(annotation);
  PO_KIT_TRIPLE_HEADER(annotationLine);

 public:
  SoSFFloat radiusMin;               ///< 0 by default: slices reach to the centre
  SoSFFloat radiusMax;               ///< 0.5 by default; not greater than the other: there is no pie
  SoSFFloat height;                  ///< of solid slices above z = 0; 0, by default: slices are flat
  SoMFFloat sliceToTranslateRadius;  ///< how far each slice is pulled out, one a node; those without stay
  SoSFBool isNameVisible;            ///< what annotations hold; nothing by default
  SoSFBool isValueVisible;
  SoSFBool isPercentageVisible;
  SoSFFloat annoDistToCenter;     ///< where annotations begin, in coordinates; 0, by default: a quarter beyond the pie
  SoSFFloat annoHeightFromSlice;  ///< of annotations above their slices, in coordinates; 0 by default
  SoSFBool isAnnoSliceColor;      ///< whether an annotation has the colour of its slice; not by default
  SoSFFloat annoFontSize;         ///< 0, by default: 0.1 radii

  PoPieChartRep();

  void rebuild() override;

 protected:
  ~PoPieChartRep() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

 private:
  void draw(const PbMesh1D& mesh, const float* values);
};

#endif
