// The examples that the reference shows of kits and their roots; compiled, so that they stay right. Each stands between
// two marks with the name of its class.

#include <cstdio>

#include <Inventor/SoPickedPoint.h>
#include <Inventor/errors/SoError.h>
#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PbCell.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoAutoValueLegend.h>
#include <Ormelle/PoCurveLine.h>
#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoIntervalCellFilter.h>
#include <Ormelle/PoLibOrmelleP.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoMesh2DVec.h>
#include <Ormelle/PoMesh3DVecGridCrossSection.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshSkin.h>
#include <Ormelle/PoNonLinearValueLegend1.h>
#include <Ormelle/PoNonLinearValueLegend2.h>
#include <Ormelle/PoNonLinearValueLegend3.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoPieChart2D.h>
#include <Ormelle/PoSingleHistogram.h>
#include <Ormelle/PoStreamParticleMotion.h>

namespace docs {

void examplePoOrmelle() {
  //! [PoOrmelle]
  PoOrmelle::init();  // optional: the first node does it
  std::printf("%s %s\n", PoOrmelle::getProductName(), PoOrmelle::getVersion());
  SoSeparator* root = new SoSeparator;
  root->ref();
  root->addChild(new PoMeshFilled);
  root->unref();
  PoOrmelle::finish();
  //! [PoOrmelle]
}

void examplePoDebugError() {
  //! [PoDebugError]
  PoDebugError::setHandlerCallback(
      [](const SoError* error, void*) { std::fprintf(stderr, "%s\n", error->getDebugString().getString()); }, nullptr);
  PoDebugError::postWarning("MyReader::read", "%d cells have no volume", 3);
  // Ormelle warning in MyReader::read(): 3 cells have no volume
  //! [PoDebugError]
}

void examplePoLibOrmelleP() {
  //! [PoLibOrmelleP]
  PoLibOrmelleP::setWindowSystem(PoLibOrmelleP::WINDOW_SYSTEM_QT);
  if (PoLibOrmelleP::instance()) {  // null, after an error was posted, without that library
    std::printf("views are available\n");
    PoLibOrmelleP::finish();
  }
  //! [PoLibOrmelleP]
}

void examplePoNode(SoSeparator* root) {
  //! [PoNode]
  auto* filter = new PoIntervalCellFilter;  // an attribute of all kits behind it
  filter->min = 10;
  filter->max = 20;
  root->insertChild(filter, 0);
  //! [PoNode]
}

void examplePoQuillane(SoSeparator* root, PbMesh2D* mesh) {
  //! [PoQuillane]
  auto* kit = new PoMeshFilled;  // any representation of a mesh
  kit->setMesh(mesh);
  root->addChild(kit);
  const bool isMeshKit = kit->isOfType(PoQuillane::getClassTypeId());
  std::printf("%d\n", isMeshKit);
  //! [PoQuillane]
}

void examplePoMesh(PoMesh* kit, PbMesh* mesh, PbDataMapping* colours) {
  //! [PoMesh]
  kit->setMesh(mesh);
  kit->setDataMapping(colours);
  kit->valuesIndex = 0;
  kit->coloringType = PoMesh::COLOR_MAPPING;
  kit->creaseAngle = 0.5f;  // smooth where facets meet at less than that
  //! [PoMesh]
}

void examplePoMesh2D(PoMesh2D* kit, PbMesh2D* mesh) {
  //! [PoMesh2D]
  kit->setMesh(mesh);
  kit->zValuesIndex = 1;  // raised by set 1 ...
  kit->valuesIndex = 0;   // ... and coloured by set 0
  kit->coloringType = PoMesh::COLOR_MAPPING;
  //! [PoMesh2D]
}

void examplePoMesh3D(PoMesh3D* kit, PbMesh3D* mesh, PbIsovaluesList* levels) {
  //! [PoMesh3D]
  kit->setMesh(mesh);
  kit->setIsovaluesList(levels);
  kit->valuesIndex = 0;
  kit->coloringType = PoMesh::COLOR_CONTOURING;
  //! [PoMesh3D]
}

void examplePoVectorGlyphs(PoMesh2DVec* kit, PbMesh2D* mesh) {
  //! [PoVectorGlyphs]
  kit->setMesh(mesh);
  kit->vecsIndex = 0;
  kit->density = 4;  // every fourth vector
  kit->endArrowShape = PoVectorGlyphs::CONE;
  kit->bodyColoringType = PoVectorGlyphs::MODULE_MAPPING_COLOR;
  //! [PoVectorGlyphs]
}

void examplePoBaseStreamLine(PoBaseStreamLine* kit, PbMesh* mesh) {
  //! [PoBaseStreamLine]
  const SbVec3f starts[] = {SbVec3f(0, 0, 1), SbVec3f(0, 0, 2)};
  kit->setMesh(mesh);
  kit->vecsIndex = 0;
  kit->startPoints.setValues(0, 2, starts);
  kit->maxLength = 50;
  //! [PoBaseStreamLine]
}

void examplePoStreamParticleMotion(PoStreamParticleMotion* kit) {
  //! [PoStreamParticleMotion]
  kit->timeStep = 0.5f;     // from frame to frame
  kit->pulseFrequency = 8;  // frames, until the next particle is where the first one was
  kit->isBlinking = FALSE;  // stands ...
  kit->viewFrame = 3;       // ... at this frame
  //! [PoStreamParticleMotion]
}

void examplePoMesh3DVecGridCrossSection(SoSeparator* root, PbMesh3D* mesh) {
  //! [PoMesh3DVecGridCrossSection]
  auto* arrows = new PoMesh3DVecGridCrossSection;
  arrows->setMesh(mesh);
  arrows->vecsIndex = 0;
  arrows->plane = SbPlane(SbVec3f(0, 0, 1), 0.5f);  // z = 0.5
  arrows->gridSpacing.setValue(0.1f, 0.1f);
  root->addChild(arrows);
  //! [PoMesh3DVecGridCrossSection]
}

void examplePoTavernel(SoSeparator* root) {
  //! [PoTavernel]
  auto* axis = new PoLinearAxis;  // any axis, legend or chart
  axis->set("mainGradTextApp.material", "diffuseColor 0.2 0.2 0.2");
  axis->set("bodyApp.drawStyle", "lineWidth 2");
  root->addChild(axis);
  //! [PoTavernel]
}

void examplePoChart(SoSeparator* root) {
  //! [PoChart]
  auto* line = new PoCurveLine;  // of the one-dimensional mesh on the state
  line->yValuesIndex = 0;
  line->colorValuesIndex = 1;
  line->colorBinding = PoChart::PER_VERTEX;
  root->addChild(line);
  //! [PoChart]
}

void examplePoBaseAxis(const SoNode* node) {
  //! [PoBaseAxis]
  if (node->isOfType(PoBaseAxis::getClassTypeId())) std::printf("an axis\n");
  //! [PoBaseAxis]
}

void examplePoCartesianAxis(SoSeparator* root) {
  //! [PoCartesianAxis]
  auto* axis = new PoLinearAxis;
  axis->start.setValue(0, 0, 0);
  axis->end = 250;
  axis->type = PoCartesianAxis::YX;  // along y, texts towards x
  root->addChild(axis);
  //! [PoCartesianAxis]
}

void examplePoValueLegend(PoValueLegend* legend, PbDataMapping* colours) {
  //! [PoValueLegend]
  legend->setDataMapping(colours);
  legend->periodValue = 2;  // every other value
  legend->upperUndefString = "too hot";
  //! [PoValueLegend]
}

void examplePoAutoValueLegend(PoAutoValueLegend* legend, PbIsovaluesList* levels) {
  //! [PoAutoValueLegend]
  legend->setIsovaluesList(levels);  // what the boxes show
  legend->start.setValue(0.8f, 0.1f);
  legend->end.setValue(0.95f, 0.9f);
  legend->titleString = "Height in m";
  //! [PoAutoValueLegend]
}

void examplePoNonLinearValueLegend1(SoSeparator* root) {
  //! [PoNonLinearValueLegend1]
  auto* legend = new PoNonLinearValueLegend1(SbVec2f(0.8f, 0.1f), SbVec2f(0.95f, 0.9f));
  legend->valueSeparatorString = " to ";
  legend->lessLevelString = "below ";
  legend->greaterLevelString = "above ";
  root->addChild(legend);  // finds mapping and isovalues on the state
  //! [PoNonLinearValueLegend1]
}

void examplePoNonLinearValueLegend2(SoSeparator* root) {
  //! [PoNonLinearValueLegend2]
  auto* legend = new PoNonLinearValueLegend2(SbVec2f(0.1f, 0.02f), SbVec2f(0.9f, 0.08f));
  legend->titleString = "Oxygen in %";
  root->addChild(legend);  // finds mapping and isovalues on the state
  //! [PoNonLinearValueLegend2]
}

void examplePoNonLinearValueLegend3(SoSeparator* root) {
  //! [PoNonLinearValueLegend3]
  auto* legend = new PoNonLinearValueLegend3(SbVec2f(0.85f, 0.1f), SbVec2f(0.95f, 0.9f));
  legend->maxValueSize = 0.5f;
  legend->lowerUpperBoxes = FALSE;
  root->addChild(legend);  // finds mapping and isovalues on the state
  //! [PoNonLinearValueLegend3]
}

void examplePoHistogram(SoSeparator* root) {
  //! [PoHistogram]
  const float counts[] = {122, 203, 118, 212};
  auto* bars = new PoSingleHistogram;
  bars->value.setValues(0, 4, counts);
  bars->end = 4;
  bars->valuePosition = PoHistogram::POS_TOP_OUT;
  root->addChild(bars);
  //! [PoHistogram]
}

void examplePoPieChart(PoPieChart* pie) {
  //! [PoPieChart]
  const float counts[] = {122, 203, 118, 212};
  pie->sliceValue.setValues(0, 4, counts);
  pie->extAnnotTextVisibility = PoAxis::VISIBILITY_ON;
  pie->intAnnotPercentVisibility = PoAxis::VISIBILITY_ON;
  pie->setSliceToTranslate(2, 0.1f);  // pulled out
  //! [PoPieChart]
}

}  // namespace docs
