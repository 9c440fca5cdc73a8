#ifndef ORMELLE_PIMESHGEOMETRY_H
#define ORMELLE_PIMESHGEOMETRY_H

#include <initializer_list>
#include <vector>

/// An array that belongs to a mesh which is written, or that is being read.
template <class T>
struct PiMeshBlock {
  PiMeshBlock() = default;
  PiMeshBlock(const T* data) : written(data) {}

  const T* get() const { return written ? written : read.data(); }

  const T* written = nullptr;
  std::vector<T> read;
};

/// What the codecs of the mesh classes move between a mesh and a stream; each uses the members that its class has.
struct PiMeshGeometry {
  int numX = 0, numY = 0, numZ = 0;
  float xMin = 0, yMin = 0, zMin = 0;
  float xMax = 0, yMax = 0, zMax = 0;
  int numNodes = 0;
  int numCells = 0;
  int numIndices = 0;
  PiMeshBlock<float> x, y, z;
  PiMeshBlock<int> cellTypes;
  PiMeshBlock<int> cellIndices;

  /// z of a surface mesh: null for a flat one.
  int hasZ = 0;
  void setZ(const float* coordinates) {
    hasZ = coordinates != nullptr;
    z = coordinates;
  }
  const float* getZ() const { return hasZ ? z.get() : nullptr; }

  /// Sets the number of nodes of a grid. Returns false for dimensions below 0 and for more nodes than an int can count.
  bool countNodes(int num_z = 1);
  /// Sets the number of indices by the cell types that were read, or by the one size that all cells have. Returns false
  /// for a type that is none of `sizes`, and for more indices than an int can count. Leaves a mesh that is written
  /// alone.
  bool countIndices(std::initializer_list<int> sizes);
  /// Whether all indices that were read are nodes.
  bool areIndicesValid() const;
};

#endif
