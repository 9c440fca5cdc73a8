#ifndef ORMELLE_POPROFILECOORDINATE2_H
#define ORMELLE_POPROFILECOORDINATE2_H

#include <Inventor/fields/SoMFVec2f.h>

#include <Ormelle/PoProfile.h>

/// A polygon round the path, which is the origin of its points.
/// @code
/// auto* profile = new PoProfileCoordinate2;
/// profile->point.setValues(0, 5, corners);
/// separator->addChild(profile);
/// separator->addChild(bars);
/// @endcode
class ORMELLE_API PoProfileCoordinate2 : public PoProfile {
  PO_NODE_HEADER(PoProfileCoordinate2, PoProfile);

 public:
  SoMFVec2f point;  ///< the corners in order, the last joined to the first; empty by default

  PoProfileCoordinate2();

 protected:
  ~PoProfileCoordinate2() override;
};

#endif
