#ifndef ORMELLE_POMESH1DFILTER_H
#define ORMELLE_POMESH1DFILTER_H

#include <Ormelle/PoNode.h>

class PbArrayOfFloat;
class PbArrayOfInt;

/// Root of the nodes that say at which points of a curve the charts behind them put something; puts itself in
/// PoMesh1DFilterElement.
///
/// A filter either picks nodes of the mesh by their index, or picks places along an axis, where points are put on the
/// drawn curve.
/// @code
/// auto* filter = new PoPeriodIndexFilter;
/// filter->period = 10;  // a label at every tenth node
/// separator->addChild(meshNode);
/// separator->addChild(filter);
/// separator->addChild(labels);
/// @endcode
class ORMELLE_API PoMesh1DFilter : public PoNode {
  PO_NODE_ABSTRACT_HEADER(PoMesh1DFilter, PoNode);

 public:
  enum Axis { X, Y };

  /// Whether the filter picks nodes, with getIndices(); if not it picks places, with getAxis() and getCoordinates().
  virtual int isIndexFilter() const = 0;
  /// Fills `indices` with the nodes picked of a mesh of `numNodes` nodes, each from 0 to numNodes - 1, in the order in
  /// which they are used.
  virtual void getIndices(int numNodes, PbArrayOfInt& indices) const;
  /// The axis along which places are picked.
  virtual Axis getAxis() const;
  /// Fills `coordinates` with the places picked of a curve that goes from `min` to `max` on that axis, both included.
  virtual void getCoordinates(float min, float max, PbArrayOfFloat& coordinates) const;

  void doAction(SoAction* action) override;

 protected:
  PoMesh1DFilter();
  ~PoMesh1DFilter() override;
};

#endif
