// The marching tables of the solids: one for each kind, hexahedra and voxels sharing theirs.

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>

#include "quillane/marching/PiMarchingCases.h"
#include "quillane/marching/PiMarchingTable.h"

PiMarchingTable PbHexahedronCell::c_MarchingLookup;
int PbHexahedronCell::c_numInit = 0;

int PbHexahedronCell::init() {
  ++c_numInit;
  c_MarchingLookup.build<PiMarchingCubeCase>(PiBaseCases::kCube);
  return 1;
}

void PbHexahedronCell::finish() {
  if (c_numInit > 0 && --c_numInit == 0) c_MarchingLookup.clear();
}

PiMarchingCase* PbHexahedronCell::getMCcase(unsigned char caseId) const { return c_MarchingLookup.at(caseId); }

PiMarchingCase* PbVoxelCell::getMCcase(unsigned char caseId) const {
  return PbHexahedronCell::c_MarchingLookup.at(caseId);
}

PiMarchingTable PbTetrahedronCell::c_MarchingLookup;

int PbTetrahedronCell::init() {
  c_MarchingLookup.build<PiMarchingTetraCase>(PiBaseCases::kTetra);
  return 1;
}

void PbTetrahedronCell::finish() { c_MarchingLookup.clear(); }

PiMarchingCase* PbTetrahedronCell::getMCcase(unsigned char caseId) const { return c_MarchingLookup.at(caseId); }

PiMarchingTable PbWedgeCell::c_MarchingLookup;

int PbWedgeCell::init() {
  c_MarchingLookup.build<PiMarchingWedgeCase>(PiBaseCases::kWedge);
  return 1;
}

void PbWedgeCell::finish() { c_MarchingLookup.clear(); }

PiMarchingCase* PbWedgeCell::getMCcase(unsigned char caseId) const { return c_MarchingLookup.at(caseId); }

PiMarchingTable PbPyramidCell::c_MarchingLookup;

int PbPyramidCell::init() {
  c_MarchingLookup.build<PiMarchingPyraCase>(PiBaseCases::kPyramid);
  return 1;
}

void PbPyramidCell::finish() { c_MarchingLookup.clear(); }

PiMarchingCase* PbPyramidCell::getMCcase(unsigned char caseId) const { return c_MarchingLookup.at(caseId); }
