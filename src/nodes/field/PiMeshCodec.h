#ifndef ORMELLE_PIMESHCODEC_H
#define ORMELLE_PIMESHCODEC_H

#include "nodes/field/PiMeshGeometry.h"

/// The layout of the geometry of one mesh class in a file, told once for all forms and for both directions.
///
/// A specialisation has three functions:
/// - `of(mesh)` gives the geometry of a mesh, pointing to the arrays of the mesh;
/// - `pass(form, geometry)` leads the members through a form (PiTextMeshWriter, PiBinaryMeshReader ...) in the order of
///   the file. It returns false if the form couldn't read, or if what was read makes no mesh;
/// - `apply(geometry, mesh)` gives a mesh the geometry that was read.
template <class Mesh>
struct PiMeshCodec;

#endif
