#ifndef ORMELLE_PBIRREGULARMESH1D_H
#define ORMELLE_PBIRREGULARMESH1D_H

#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PbMeshArray.h>

/// Nodes at any places, in the order in which they are joined; they may go back.
/// @code
/// const float x[] = {0, 1, 4, 9};
/// PbIrregularMesh1D mesh(4, x);
/// mesh.addValuesSet(0, y, "y");
/// @endcode
class ORMELLE_API PbIrregularMesh1D : public PbMesh1D {
 public:
  /// An empty mesh.
  PbIrregularMesh1D();
  /// Copies `num_x` floats. A null `x`, or a `num_x` below 1, leaves the mesh empty.
  PbIrregularMesh1D(int num_x, const float* x);
  PbIrregularMesh1D(const PbIrregularMesh1D& other);
  PbIrregularMesh1D& operator=(const PbIrregularMesh1D& other);
  ~PbIrregularMesh1D() override;

  /// Replaces the nodes. Data sets go when the number of nodes changes.
  void setGeometry(int num_x, const float* x);
  /// `x` gets the mesh's own array, valid until the geometry changes; null if the mesh is empty.
  void getGeometry(int& num_x, const float*& x) const;

  float getXCoord(int node) const override;
  void print(FILE* file) const override;

 private:
  PbMeshArray<float> m_x;
};

#endif
