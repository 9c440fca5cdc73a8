#ifndef ORMELLE_PIINDEXEDCODECS_H
#define ORMELLE_PIINDEXEDCODECS_H

#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>

#include <initializer_list>
#include <type_traits>

#include "nodes/field/PiMeshCodec.h"
#include "nodes/field/PiZPart.h"
#include "quillane/mesh/PiConnectivity.h"

/// The layout of all indexed meshes, surfaces and solids: nodes, then cells. `kSizes` are the numbers of nodes that a
/// cell may have; if there are several, the file says it for each cell.
template <class Mesh, int... kSizes>
struct PiIndexedCodec {
  static constexpr bool kIsSurface = std::is_base_of_v<PbMesh2D, Mesh>;
  static constexpr bool kIsMixed = sizeof...(kSizes) > 1;

  static PiMeshGeometry of(const Mesh& mesh) {
    PiMeshGeometry g;
    const float* z;
    mesh.getGeometry(g.numNodes, g.x.written, g.y.written, z, g.numCells, g.cellIndices.written, g.cellTypes.written);
    g.setZ(z);
    g.numIndices = mesh.getConnectivity().numIndices();
    return g;
  }

  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num nodes", g.numNodes) && g.numNodes >= 0 &&
           form.block("x coordinates of mesh nodes", g.numNodes, g.x) &&
           form.block("y coordinates of mesh nodes", g.numNodes, g.y) && passZ(form, g) &&
           form.line("num cells", g.numCells) && passTypes(form, g) &&
           form.block("cell's indices", g.numIndices, g.cellIndices) && g.areIndicesValid();
  }

  static void apply(const PiMeshGeometry& g, Mesh& mesh) {
    const float* z = kIsSurface ? g.getZ() : g.z.get();
    if constexpr (kIsMixed)
      mesh.setGeometry(g.numNodes, g.x.get(), g.y.get(), z, g.numCells, g.cellIndices.get(), g.cellTypes.get());
    else
      mesh.setGeometry(g.numNodes, g.x.get(), g.y.get(), z, g.numCells, g.cellIndices.get());
  }

 private:
  template <class Form>
  static bool passZ(Form& form, PiMeshGeometry& g) {
    if constexpr (kIsSurface)
      return PiZPart::pass(form, "z coordinates of mesh nodes", g);
    else
      return form.block("z coordinates of mesh nodes", g.numNodes, g.z);
  }
  template <class Form>
  static bool passTypes(Form& form, PiMeshGeometry& g) {
    if (g.numCells < 0) return false;
    if constexpr (kIsMixed) {
      return form.block("cell's type", g.numCells, g.cellTypes) && g.countIndices({kSizes...});
    } else {
      return g.countIndices({kSizes...});
    }
  }
};

template <>
struct PiMeshCodec<PbIndexedMesh2D> : PiIndexedCodec<PbIndexedMesh2D, 3, 4> {};
template <>
struct PiMeshCodec<PbTriangleMesh2D> : PiIndexedCodec<PbTriangleMesh2D, 3> {};
template <>
struct PiMeshCodec<PbQuadrangleMesh2D> : PiIndexedCodec<PbQuadrangleMesh2D, 4> {};
template <>
struct PiMeshCodec<PbIndexedMesh3D> : PiIndexedCodec<PbIndexedMesh3D, 4, 5, 6, 8> {};
template <>
struct PiMeshCodec<PbTetrahedronMesh3D> : PiIndexedCodec<PbTetrahedronMesh3D, 4> {};
template <>
struct PiMeshCodec<PbHexahedronMesh3D> : PiIndexedCodec<PbHexahedronMesh3D, 8> {};

#endif
