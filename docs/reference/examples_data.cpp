// The examples that the reference shows of data objects and roots of classes; compiled, so that they stay right. Each
// stands between two marks with the name of its class.

#include <cmath>
#include <cstdio>

#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbArrayOfLong.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbCellFilterIterator.h>
#include <Ormelle/PbDefinedValue.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbGrid2D.h>
#include <Ormelle/PbGrid3D.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PbMeshArray.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNonLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshSkin.h>

namespace docs {

void examplePbArray() {
  //! [PbArray]
  PbArrayOfInt cells(100, 50);  // room for 100, grows by 50
  cells += 7;
  cells.set(3, 9);
  for (int i = 0; i < cells.getNum(); ++i) std::printf("%d\n", cells.get(i));
  cells.empty();  // keeps the memory
  //! [PbArray]
}

void examplePbArrayOfInt(const PbMesh& mesh) {
  //! [PbArrayOfInt]
  PbArrayOfInt cells;
  mesh.getNodeOwnerCellsInd(12, cells);  // the cells round node 12
  for (int i = 0; i < cells.getNum(); ++i) std::printf("cell %d\n", cells.get(i));
  if (cells.find(3) >= 0) std::printf("cell 3 is one of them\n");
  //! [PbArrayOfInt]
}

void examplePbArrayOfLong() {
  //! [PbArrayOfLong]
  PbArrayOfLong sizes;
  sizes += 1L << 20;
  sizes += 1L << 10;
  sizes.increasingSort();
  if (sizes.get(0) == 1L << 10) std::printf("the smaller one comes first\n");
  //! [PbArrayOfLong]
}

void examplePbArrayOfFloat(const PbCell& cell, const SbPlane& plane) {
  //! [PbArrayOfFloat]
  PbArrayOfInt nodes, edges;
  PbArrayOfFloat cuts;
  cell.getEdgesCrossingPlane(plane, nodes, edges, &cuts);
  for (int i = 0; i < edges.getNum(); ++i) std::printf("edge %d at %g\n", edges.get(i), cuts.get(i));
  //! [PbArrayOfFloat]
}

void examplePbBase(PbLinearDataMapping& mapping, PoMeshFilled& kit) {
  //! [PbBase]
  kit.setDataMapping(&mapping);  // the kit is connected to it now
  mapping.enableConnection(0);   // says nothing meanwhile
  mapping.setValues(0, SbColor(0, 0, 1), 100, SbColor(1, 0, 0));
  mapping.enableConnection(1);
  mapping.touch();  // the kit rebuilds at the next traversal
  //! [PbBase]
}

//! [PbDefinedValue]
class NoLand : public PbDefinedValue {
  int operator()(float value, int, int) override { return value > -9990; }  // -9999 stands for land
  float getUndef(int) override { return -9999; }
};
//! [PbDefinedValue]

int exampleDefined() {
  NoLand isWater;
  PbDefinedValue& defined = isWater;
  return defined(-9999, 0, 0);
}

void examplePbCellFilterIterator(const PbMesh& mesh, const PoCellFilter* filter) {
  //! [PbCellFilterIterator]
  float volume = 0;
  PbCellFilterIterator cells(&mesh, filter, 0);  // the filter is asked with set 0
  for (cells.first(); cells.notDone(); cells.next())
    if (const PbCell* cell = cells.getCell()) volume += cell->getVolume();
  std::printf("%g\n", volume);
  //! [PbCellFilterIterator]
}

void examplePbDataMapping(const PbDataMapping& mapping, float value) {
  //! [PbDataMapping]
  float transparency = 0;
  const SbColor* color = mapping.getRGBColor(value, transparency);
  if (color)
    std::printf("%g %g %g, transparency %g\n", (*color)[0], (*color)[1], (*color)[2], transparency);
  else
    std::printf("nothing is drawn there\n");
  //! [PbDataMapping]
}

void examplePbLinearDataMapping(PoMeshFilled& kit) {
  //! [PbLinearDataMapping]
  PbLinearDataMapping mapping;
  mapping.setValues(0, SbColor(0.1f, 0.2f, 0.6f), 100, SbColor(0.9f, 0.2f, 0.1f));
  kit.setDataMapping(&mapping);  // must outlive its use, or be deleted: then the kit goes without
  kit.valuesIndex = 0;
  kit.coloringType = PoMesh::COLOR_MAPPING;
  //! [PbLinearDataMapping]
  kit.setDataMapping(nullptr);
}

void examplePbNonLinearDataMapping() {
  //! [PbNonLinearDataMapping]
  PbNonLinearDataMapping mapping;
  mapping.setRGBFunction([](float value) -> const SbColor* {
    static SbColor color;
    color.setHSVValue(0.7f - 0.7f * std::log10(value) / 6, 0.8f, 0.9f);  // decades from 1 to a million
    return &color;
  });
  //! [PbNonLinearDataMapping]
}

void examplePbNonLinearDataMapping2() {
  //! [PbNonLinearDataMapping2]
  const float levels[] = {0, 10, 20, 30};
  const SbColor colors[] = {SbColor(0, 0, 0.6f), SbColor(0, 0.6f, 0.6f), SbColor(0.9f, 0.9f, 0.3f),
                            SbColor(0.8f, 0, 0)};
  PbNonLinearDataMapping2 mapping;
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 4, levels, colors);
  mapping.setMinThreshold(-9990);  // no colour: what is below isn't drawn
  mapping.enableThresholds(1, 0);
  //! [PbNonLinearDataMapping2]
}

void examplePbDomain(PoMeshFilled& kit) {
  //! [PbDomain]
  PbDomain domain(0, -0.001f, 5000, 0.001f, PbDomain::BOX_AS_GIVEN);  // Pa over metres
  domain.setTransformType(PbDomain::TRANSFORM_01);
  kit.setDomain(&domain);  // now as high as it is wide
  //! [PbDomain]
  kit.setDomain(nullptr);
}

void examplePbIsovaluesList(PoMeshFilled& kit) {
  //! [PbIsovaluesList]
  PbIsovaluesList levels(0, 100, 11);  // 0, 10, ... 100
  const float own[] = {1, 2, 5, 10, 20, 50, 100};
  levels.setIrregularIsoList(7, own);
  kit.setIsovaluesList(&levels);
  kit.coloringType = PoMesh::COLOR_CONTOURING;
  //! [PbIsovaluesList]
  kit.setIsovaluesList(nullptr);
}

void examplePbMesh(PbMesh& mesh, const float* heat, const SbVec3f* wind, const SbVec3f& point) {
  //! [PbMesh]
  mesh.addValuesSet(0, heat, "heat");  // one a node
  mesh.addVecsSet(0, wind, "wind");
  SbVec3f pcoord;
  if (const PbCell* cell = mesh.findContainingCell(point, 0, pcoord))
    std::printf("heat %g in cell %d\n", cell->getValue(pcoord, mesh.getValuesSet(0)), cell->getIndex());
  //! [PbMesh]
}

void examplePbMesh2D(const PbMesh2D& mesh) {
  //! [PbMesh2D]
  float least = 0, greatest = 0;
  mesh.getMinValuesSet(0, least);
  mesh.getMaxValuesSet(0, greatest);
  std::printf("%d cells, area %g, values %g to %g\n", mesh.getNumCells(), mesh.getArea(), least, greatest);
  //! [PbMesh2D]
}

void examplePbMesh3D(const PbMesh3D& mesh) {
  //! [PbMesh3D]
  const SbBox3f box = mesh.getBoundingBox();
  const SbVec3f low = box.getMin(), high = box.getMax();
  std::printf("%d cells, volume %g\n", mesh.getNumCells(), mesh.getVolume());
  std::printf("x from %g to %g\n", low[0], high[0]);
  //! [PbMesh3D]
}

void examplePbGrid2D(const PbGrid2D& grid, const float* values, int numY) {
  //! [PbGrid2D]
  const int i = 3, j = 4;
  const SbVec3f place = grid.getNodeCoord(i, j);
  const float value = values[i * numY + j];  // j runs first
  std::printf("%g at %g %g\n", value, place[0], place[1]);
  //! [PbGrid2D]
}

void examplePbGrid3D(const PbGrid3D& grid, const float* values, int numY, int numZ) {
  //! [PbGrid3D]
  const int i = 3, j = 4, k = 5;
  const SbVec3f place = grid.getNodeCoord(i, j, k);
  const float value = values[(i * numY + j) * numZ + k];  // k runs first
  std::printf("%g at %g %g %g\n", value, place[0], place[1], place[2]);
  //! [PbGrid3D]
}

void examplePbMeshArray(const float* values, int num) {
  //! [PbMeshArray]
  PbMeshArray<float> x;
  x.set(values, num, 1);  // 1: a copy
  x.set(values, num, 0);  // 0: borrowed, and never freed
  for (int i = 0; i < x.getNum(); ++i) std::printf("%g\n", x[i]);
  //! [PbMeshArray]
}

void examplePbMiscTextAttr() {
  //! [PbMiscTextAttr]
  PbMiscTextAttr text;
  text.setFontName("DejaVu Sans:Bold");
  text.setLineLength(' ', 20);  // long titles get a new line at a space
  //! [PbMiscTextAttr]
}

void examplePbNumericDisplayFormat() {
  //! [PbNumericDisplayFormat]
  PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 3, 1);
  // 1500 reads "1.5", and the axis says "x 10^3"
  format.setFormat(PbNumericDisplayFormat::INTEGER_FORMAT, 0, 0);  // 1500 reads "1500"
  //! [PbNumericDisplayFormat]
}

}  // namespace docs
