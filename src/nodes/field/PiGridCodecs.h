#ifndef ORMELLE_PIGRIDCODECS_H
#define ORMELLE_PIGRIDCODECS_H

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

#include "nodes/field/PiMeshCodec.h"
#include "nodes/field/PiZPart.h"

/// What surface grids with arrays of coordinates have in common.
template <class Mesh>
struct PiGrid2DCodec {
  static PiMeshGeometry of(const Mesh& mesh) {
    PiMeshGeometry g;
    const float* z;
    mesh.getGeometry(g.numX, g.numY, g.x.written, g.y.written, z);
    g.countNodes();
    g.setZ(z);
    return g;
  }
  static void apply(const PiMeshGeometry& g, Mesh& mesh) {
    mesh.setGeometry(g.numX, g.numY, g.x.get(), g.y.get(), g.getZ());
  }
};

template <>
struct PiMeshCodec<PbCartesianGrid2D> : PiGrid2DCodec<PbCartesianGrid2D> {
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_x, num_y", g.numX, g.numY) && g.countNodes() &&
           form.block("x coordinates of mesh nodes", g.numNodes, g.x) &&
           form.block("y coordinates of mesh nodes", g.numNodes, g.y) &&
           PiZPart::pass(form, "z coordinates of mesh nodes", g);
  }
};

template <>
struct PiMeshCodec<PbParalCartesianGrid2D> : PiGrid2DCodec<PbParalCartesianGrid2D> {
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_x, num_y", g.numX, g.numY) && g.countNodes() &&
           form.block("x coordinates of mesh", g.numX, g.x) && form.block("y coordinates of mesh", g.numY, g.y) &&
           PiZPart::pass(form, "z coordinates of mesh", g);
  }
};

template <>
struct PiMeshCodec<PbPolarGrid2D> : PiGrid2DCodec<PbPolarGrid2D> {
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_r, num_t", g.numX, g.numY) && g.countNodes() &&
           form.block("r coordinates of mesh nodes", g.numX, g.x) &&
           form.block("t coordinates of mesh nodes", g.numY, g.y) &&
           PiZPart::pass(form, "z coordinates of mesh nodes", g);
  }
};

template <>
struct PiMeshCodec<PbRegularCartesianGrid2D> {
  static PiMeshGeometry of(const PbRegularCartesianGrid2D& mesh) {
    PiMeshGeometry g;
    const float* z;
    mesh.getGeometry(g.numX, g.numY, g.xMin, g.yMin, g.xMax, g.yMax, z);
    g.countNodes();
    g.setZ(z);
    return g;
  }
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_x, num_y", g.numX, g.numY) && g.countNodes() && form.line("x_min, y_min", g.xMin, g.yMin) &&
           form.line("x_max, y_max", g.xMax, g.yMax) && PiZPart::pass(form, "z coordinates of mesh", g);
  }
  static void apply(const PiMeshGeometry& g, PbRegularCartesianGrid2D& mesh) {
    mesh.setGeometry(g.numX, g.numY, g.xMin, g.yMin, g.xMax, g.yMax, g.getZ());
  }
};

/// What volume grids with arrays of coordinates have in common.
template <class Mesh>
struct PiGrid3DCodec {
  static PiMeshGeometry of(const Mesh& mesh) {
    PiMeshGeometry g;
    mesh.getGeometry(g.numX, g.numY, g.numZ, g.x.written, g.y.written, g.z.written);
    g.countNodes(g.numZ);
    return g;
  }
  static void apply(const PiMeshGeometry& g, Mesh& mesh) {
    mesh.setGeometry(g.numX, g.numY, g.numZ, g.x.get(), g.y.get(), g.z.get());
  }
};

template <>
struct PiMeshCodec<PbCartesianGrid3D> : PiGrid3DCodec<PbCartesianGrid3D> {
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_x, num_y, num_z", g.numX, g.numY, g.numZ) && g.countNodes(g.numZ) &&
           form.block("x coordinates of mesh nodes", g.numNodes, g.x) &&
           form.block("y coordinates of mesh nodes", g.numNodes, g.y) &&
           form.block("z coordinates of mesh nodes", g.numNodes, g.z);
  }
};

template <>
struct PiMeshCodec<PbParalCartesianGrid3D> : PiGrid3DCodec<PbParalCartesianGrid3D> {
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_x, num_y, num_z", g.numX, g.numY, g.numZ) && g.countNodes(g.numZ) &&
           form.block("x coordinates of mesh", g.numX, g.x) && form.block("y coordinates of mesh", g.numY, g.y) &&
           form.block("z coordinates of mesh", g.numZ, g.z);
  }
};

template <>
struct PiMeshCodec<PbRegularCartesianGrid3D> {
  static PiMeshGeometry of(const PbRegularCartesianGrid3D& mesh) {
    PiMeshGeometry g;
    mesh.getGeometry(g.numX, g.numY, g.numZ, g.xMin, g.yMin, g.zMin, g.xMax, g.yMax, g.zMax);
    g.countNodes(g.numZ);
    return g;
  }
  template <class Form>
  static bool pass(Form& form, PiMeshGeometry& g) {
    return form.line("num_x, num_y, num_z", g.numX, g.numY, g.numZ) && g.countNodes(g.numZ) &&
           form.line("x_min, y_min, z_min", g.xMin, g.yMin, g.zMin) &&
           form.line("x_max, y_max, z_max", g.xMax, g.yMax, g.zMax);
  }
  static void apply(const PiMeshGeometry& g, PbRegularCartesianGrid3D& mesh) {
    mesh.setGeometry(g.numX, g.numY, g.numZ, g.xMin, g.yMin, g.zMin, g.xMax, g.yMax, g.zMax);
  }
};

#endif
