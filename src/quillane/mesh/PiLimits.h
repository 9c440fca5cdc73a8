#ifndef ORMELLE_PILIMITS_H
#define ORMELLE_PILIMITS_H

class PbArrayOfInt;
class PiConnectivity;

/// Fills in the boundary of a surface as PbIndexedMesh2D::getLimitIndices() tells it.
void findLimits(const PiConnectivity& cells, PbArrayOfInt& sizes, PbArrayOfInt& indices);

#endif
