#ifndef ORMELLE_POMESHPROPERTY_H
#define ORMELLE_POMESHPROPERTY_H

#include <Ormelle/PbMesh.h>
#include <Ormelle/PoNode.h>

class PoSFMesh;

/// Root of the nodes that put a mesh in PoMeshElement for the representations behind them.
///
/// Each subclass has one field, `mesh`, which owns a mesh of its class; a copy of the node has a mesh of its own. While
/// the field is ignored, the mesh in force stays the one before the node.
/// @code
/// auto* grid = new PoRegularCartesianGrid2D;
/// grid->setGeometry(11, 21, 0, 0, 1, 2);
/// grid->addValuesSet(0, heat, "Heat");  // 231 floats
/// separator->addChild(grid);
/// separator->addChild(new PoMeshFilled);
/// @endcode
class ORMELLE_API PoMeshProperty : public PoNode {
  PO_NODE_ABSTRACT_HEADER(PoMeshProperty, PoNode);

 public:
  /// The mesh, which belongs to the node, also for changes; see PoSFMesh::getMesh(). It is the same object for the
  /// whole life of the node.
  virtual PbMesh* getMesh() const = 0;

  /// @name Data sets
  /// As the functions of PbMesh with the same names. They touch the field.
  /// @{
  void addValuesSet(int set_index, const float* val, const SbString& set_name);
  void addValuesSet(int set_index, const float* val, PbMesh::DataBinding binding, const SbString& set_name);
  void addStringsSet(int set_index, const SbString* val, const SbString& set_name);
  void addVecsSet(int set_index, const SbVec3f* val, const SbString& set_name);
  void addVecsSet(int set_index, const SbVec3f* val, PbMesh::DataBinding binding, const SbString& set_name);
  /// @}

 protected:
  PoMeshProperty();
  ~PoMeshProperty() override;

  /// The field of the subclass.
  virtual PoSFMesh& getMeshField() = 0;
};

#endif
