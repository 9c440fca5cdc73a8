#ifndef ORMELLE_PBREGULARMESH1D_H
#define ORMELLE_PBREGULARMESH1D_H

#include <Ormelle/PbMesh1D.h>

/// Nodes at equal distances. The first and the last lie exactly on the limits; the begin may be above the end.
/// @code
/// PbRegularMesh1D mesh(13, 0, 12);
/// mesh.addValuesSet(0, rain, "rain");
/// @endcode
class ORMELLE_API PbRegularMesh1D : public PbMesh1D {
 public:
  /// An empty mesh.
  PbRegularMesh1D();
  /// A `num_x` below 1 leaves the mesh empty; a single node lies at `x_begin`.
  PbRegularMesh1D(int num_x, float x_begin, float x_end);
  PbRegularMesh1D(const PbRegularMesh1D& other);
  PbRegularMesh1D& operator=(const PbRegularMesh1D& other);
  ~PbRegularMesh1D() override;

  /// Replaces the nodes. Data sets go when the number of nodes changes.
  void setGeometry(int num_x, float x_begin, float x_end);
  void getGeometry(int& num_x, float& x_begin, float& x_end) const;

  float getXCoord(int node) const override;
  void print(FILE* file) const override;

 protected:
  void updateBoundingBox() const override;

 private:
  float m_xBegin = 0;
  float m_xEnd = 0;
};

#endif
