#ifndef ORMELLE_PIMESH1DCODECS_H
#define ORMELLE_PIMESH1DCODECS_H

#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PbRegularMesh1D.h>

#include "nodes/field/PiMeshCodec.h"

template <>
struct PiMeshCodec<PbRegularMesh1D> {
  static PiMeshGeometry of(const PbRegularMesh1D& mesh) {
    PiMeshGeometry g;
    mesh.getGeometry(g.numNodes, g.xMin, g.xMax);
    return g;
  }
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("size", g.numNodes) && g.numNodes >= 0 &&
           form.line("xmin and xmax coordinates of mesh nodes", g.xMin, g.xMax);
  }
  static void apply(const PiMeshGeometry& g, PbRegularMesh1D& mesh) { mesh.setGeometry(g.numNodes, g.xMin, g.xMax); }
};

template <>
struct PiMeshCodec<PbIrregularMesh1D> {
  static PiMeshGeometry of(const PbIrregularMesh1D& mesh) {
    PiMeshGeometry g;
    mesh.getGeometry(g.numNodes, g.x.written);
    return g;
  }
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("size", g.numNodes) && g.numNodes >= 0 &&
           form.block("x coordinates of mesh nodes", g.numNodes, g.x);
  }
  static void apply(const PiMeshGeometry& g, PbIrregularMesh1D& mesh) { mesh.setGeometry(g.numNodes, g.x.get()); }
};

#endif
