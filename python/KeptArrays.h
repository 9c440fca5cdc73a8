#ifndef ORMELLE_PYTHON_KEPTARRAYS_H
#define ORMELLE_PYTHON_KEPTARRAYS_H

#include <Ormelle/PbMesh2D.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Arguments.h"

namespace python {

/// How to give a mesh its nodes and cells, and the arrays that this takes.
template <class Mesh>
struct Geometry {
  std::function<void(Mesh&)> apply;
  std::vector<py::object> arrays;
};

/// What a mesh that was made in Python keeps alive: the arrays that it borrows.
class KeptArrays {
 public:
  virtual ~KeptArrays() = default;
  /// Gives the nodes and cells to a mesh, which must be of the class of this one.
  virtual void applyTo(PbMesh& mesh) const = 0;
  virtual const std::type_info& meshClass() const = 0;
  /// The same cells without heights, to search in seen from above. Valid until the geometry changes.
  virtual const PbMesh& flat() = 0;

  std::map<std::string, py::object> arrays;  ///< those of the data sets
  bool copies = false;                       ///< whether even arrays that could be shared are copied
};

/// A mesh that was made in Python. The mesh goes before what it borrows.
template <class Mesh>
class KeepingMesh : public KeptArrays, public Mesh {
 public:
  KeepingMesh() : Mesh(empty()) {}

  void store(Geometry<Mesh> geometry) {
    const int nodes = this->getNumNodes();
    const int cells = this->getNumCells();
    m_flat.reset();
    geometry.apply(*this);
    std::swap(m_geometry, geometry);
    if (this->getNumNodes() == nodes && this->getNumCells() == cells) return;
    this->removeAllValuesSet();
    this->removeAllVecsSet();
    this->removeAllStringsSet();
    arrays.clear();
  }
  void applyTo(PbMesh& mesh) const override {
    if (m_geometry.apply) m_geometry.apply(static_cast<Mesh&>(mesh));
  }
  const PbMesh& flat() override {
    if (!m_flat || m_flatId != this->getGeometryId()) {
      m_flat = std::make_unique<Mesh>(empty());
      applyTo(*m_flat);
      // It has no set of values that heights could be taken from, so none are left.
      if constexpr (std::is_base_of_v<PbMesh2D, Mesh>) m_flat->pushZCoord(0);
      m_flatId = this->getGeometryId();
    }
    return *m_flat;
  }
  const std::type_info& meshClass() const override { return typeid(Mesh); }

 private:
  // A mesh that borrows; the one-dimensional ones copy.
  static Mesh empty() {
    if constexpr (std::is_constructible_v<Mesh, int>)
      return Mesh(0);
    else
      return Mesh();
  }

  Geometry<Mesh> m_geometry;
  std::unique_ptr<Mesh> m_flat;
  unsigned m_flatId = 0;
};

/// Gives nodes, cells and data sets of a mesh to that of a mesh node of the same kind, which copies all of it.
void copyTo(const PbMesh& mesh, py::handle node);

}  // namespace python

#endif
