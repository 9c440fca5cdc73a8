#ifndef ORMELLE_PIMESHCLASSES_H
#define ORMELLE_PIMESHCLASSES_H

/// The mesh classes that have a node and a field, in the order in which those are registered: `DO(CartesianGrid3D)` and
/// so on. A new mesh class needs its headers, a PiMeshCodec and a line here; `setGeometry` of its node is in
/// PoMeshNodes.cpp.
#define PI_FOR_EACH_MESH_CLASS(DO) \
  DO(CartesianGrid3D)              \
  DO(ParalCartesianGrid3D)         \
  DO(RegularCartesianGrid3D)       \
  DO(IndexedMesh3D)                \
  DO(HexahedronMesh3D)             \
  DO(TetrahedronMesh3D)            \
  DO(CartesianGrid2D)              \
  DO(ParalCartesianGrid2D)         \
  DO(RegularCartesianGrid2D)       \
  DO(PolarGrid2D)                  \
  DO(IndexedMesh2D)                \
  DO(TriangleMesh2D)               \
  DO(QuadrangleMesh2D)             \
  DO(IrregularMesh1D)              \
  DO(RegularMesh1D)

#endif
