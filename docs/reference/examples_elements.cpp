// The examples that the reference shows of the traversal elements; compiled, so that they stay right. Each stands
// between two marks with the name of its class.

#include <cstdio>

#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoBevelEdgeElement.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoLabelHintsElement.h>
#include <Ormelle/PoMesh1DFilter.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMesh1DHintsElement.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>
#include <Ormelle/PoProfile.h>
#include <Ormelle/PoProfileElement.h>

namespace docs {

void examplePoCellFilterElement(SoState* state) {
  //! [PoCellFilterElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PoCellFilter* filter = PoCellFilterElement::get(state);  // null if no node set one
  if (!filter || filter->acceptCell(0, 0.5f)) std::printf("cell 0 is shown\n");
  //! [PoCellFilterElement]
}

void examplePoDataMappingElement(SoState* state) {
  //! [PoDataMappingElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PbDataMapping* mapping = PoDataMappingElement::get(state);  // null if no node set one
  if (const SbColor* color = mapping ? mapping->getRGBColor(20) : nullptr) std::printf("20 is %g red\n", (*color)[0]);
  //! [PoDataMappingElement]
}

void examplePoDateFormatMappingElement(SoState* state) {
  //! [PoDateFormatMappingElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  PbDateFormatMapping* format = PoDateFormatMappingElement::get(state);  // null if no node set one
  if (!format) std::printf("dates are written by default\n");
  //! [PoDateFormatMappingElement]
}

void examplePoDomainElement(SoState* state) {
  //! [PoDomainElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PbDomain* domain = PoDomainElement::get(state);  // null if no node set one
  if (domain) std::printf("%g wide\n", domain->getDeltaX());
  //! [PoDomainElement]
}

void examplePoIsovaluesListElement(SoState* state) {
  //! [PoIsovaluesListElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PbIsovaluesList* levels = PoIsovaluesListElement::get(state);  // null if no node set one
  if (levels) std::printf("the level above 20 is %g\n", levels->getUpperIsovalue(20));
  //! [PoIsovaluesListElement]
}

void examplePoMesh1DFilterElement(SoState* state) {
  //! [PoMesh1DFilterElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PoMesh1DFilter* filter = PoMesh1DFilterElement::get(state);  // null if no node set one
  if (!filter) std::printf("all nodes are used\n");
  //! [PoMesh1DFilterElement]
}

void examplePoMiscTextAttrElement(SoState* state) {
  //! [PoMiscTextAttrElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PbMiscTextAttr* text = PoMiscTextAttrElement::get(state);  // null if no node set one
  if (text) std::printf("the font is %s\n", text->getFontName().getString());
  //! [PoMiscTextAttrElement]
}

void examplePoNumericDisplayFormatElement(SoState* state) {
  //! [PoNumericDisplayFormatElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PbNumericDisplayFormat* format = PoNumericDisplayFormatElement::get(state);  // null if no node set one
  if (!format) std::printf("numbers are written as their kit thinks best\n");
  //! [PoNumericDisplayFormatElement]
}

void examplePoProfileElement(SoState* state) {
  //! [PoProfileElement]
  // In doAction() of a node, or addElementsAllCaches() of a kit:
  const PoProfile* profile = PoProfileElement::get(state);  // null if no node set one
  if (!profile) std::printf("tubes are round\n");
  //! [PoProfileElement]
}

void examplePoMeshElement(SoState* state) {
  //! [PoMeshElement]
  if (PbMesh* mesh = PoMeshElement::getMesh(state)) std::printf("%d nodes\n", mesh->getNumNodes());
  if (PbMesh3D* volume = PoMeshElement::getMesh3D(state)) std::printf("%d cells in space\n", volume->getNumCells());
  //! [PoMeshElement]
}

void examplePoBevelEdgeElement(SoState* state) {
  //! [PoBevelEdgeElement]
  float radius = 0, angle = 0;
  PoBevelEdge::RadiusFlag flag;
  if (PoBevelEdgeElement::get(state, radius, flag, angle)) std::printf("edges are rounded off by %g\n", radius);
  //! [PoBevelEdgeElement]
}

void examplePoLabelHintsElement(SoState* state) {
  //! [PoLabelHintsElement]
  PoLabelHints::LabelPath path;
  PoLabelHints::Justification justification;
  SbString text;
  int isLineVisible = 0;
  PoLabelHintsElement::get(state, path, justification, text, isLineVisible);
  //! [PoLabelHintsElement]
}

void examplePoMesh1DHintsElement(SoState* state) {
  //! [PoMesh1DHintsElement]
  if (PoMesh1DHintsElement::get(state) == PoMesh1DHints::SMOOTH) std::printf("points are joined by a spline\n");
  //! [PoMesh1DHintsElement]
}

}  // namespace docs
