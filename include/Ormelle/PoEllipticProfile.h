#ifndef ORMELLE_POELLIPTICPROFILE_H
#define ORMELLE_POELLIPTICPROFILE_H

#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoProfile.h>

/// An ellipse about the path.
/// @code
/// auto* profile = new PoEllipticProfile;
/// profile->xRadius = 0.1f;
/// profile->yRadius = 0.2f;
/// separator->addChild(profile);
/// separator->addChild(bars);
/// @endcode
class ORMELLE_API PoEllipticProfile : public PoProfile {
  PO_NODE_HEADER(PoEllipticProfile, PoProfile);

 public:
  SoSFFloat xRadius;  ///< half its width, 1 by default
  SoSFFloat yRadius;  ///< half its height, 1 by default

  PoEllipticProfile();

 protected:
  ~PoEllipticProfile() override;
};

#endif
