#ifndef ORMELLE_PICELLBOX_H
#define ORMELLE_PICELLBOX_H

#include "quillane/search/PiBoxTree.h"

class PiPlainCell;

/// Box round all points that the location in a cell accepts with the given tolerance, rounding included. Surface cells
/// also accept points off the surface: any z if all nodes have one z, else what is near along the normal. False for a
/// cell that accepts no point, since a coordinate isn't finite.
bool findCellBox(const PiPlainCell& cell, double tolerance, PiBoxTree::Box& box);

#endif
