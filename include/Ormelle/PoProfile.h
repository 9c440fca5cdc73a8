#ifndef ORMELLE_POPROFILE_H
#define ORMELLE_POPROFILE_H

#include <Ormelle/PoNode.h>

/// Root of the nodes that give the kits behind them the outline they sweep along a path; puts itself in
/// PoProfileElement.
/// @code
/// auto* profile = new PoCircularProfile;
/// profile->radius = 0.1f;
/// separator->addChild(profile);
/// separator->addChild(bars);
/// @endcode
class ORMELLE_API PoProfile : public PoNode {
  PO_NODE_ABSTRACT_HEADER(PoProfile, PoNode);

 public:
  void doAction(SoAction* action) override;

 protected:
  PoProfile();
  ~PoProfile() override;
};

#endif
