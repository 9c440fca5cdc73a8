#ifndef ORMELLE_POSQUAREPROFILE_H
#define ORMELLE_POSQUAREPROFILE_H

#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoProfile.h>

/// A rectangle centred on the path.
/// @code
/// auto* profile = new PoSquareProfile;
/// profile->width = 0.1f;
/// profile->height = 0.2f;
/// separator->addChild(profile);
/// separator->addChild(bars);
/// @endcode
class ORMELLE_API PoSquareProfile : public PoProfile {
  PO_NODE_HEADER(PoSquareProfile, PoProfile);

 public:
  SoSFFloat width;   ///< 1 by default
  SoSFFloat height;  ///< 1 by default

  PoSquareProfile();

 protected:
  ~PoSquareProfile() override;
};

#endif
