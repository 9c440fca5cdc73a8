#ifndef ORMELLE_POCIRCULARPROFILE_H
#define ORMELLE_POCIRCULARPROFILE_H

#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoProfile.h>

/// A circle about the path.
/// @code
/// auto* profile = new PoCircularProfile;
/// profile->radius = 0.1f;
/// separator->addChild(profile);
/// separator->addChild(bars);
/// @endcode
class ORMELLE_API PoCircularProfile : public PoProfile {
  PO_NODE_HEADER(PoCircularProfile, PoProfile);

 public:
  SoSFFloat radius;  ///< 1 by default

  PoCircularProfile();

 protected:
  ~PoCircularProfile() override;
};

#endif
