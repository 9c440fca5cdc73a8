#ifndef ORMELLE_POISOVALUESLIST_H
#define ORMELLE_POISOVALUESLIST_H

#include <memory>

#include <Inventor/fields/SoMFFloat.h>

#include <Ormelle/PoNode.h>

class PbIsovaluesList;
class PiFieldWatch;

/// Gives the kits behind it their contour levels; puts a PbIsovaluesList of its own in PoIsovaluesListElement.
///
/// The levels may be given in any order. Those that aren't finite are left out; if none remains, the former list stays
/// in force.
/// @code
/// auto* levels = new PoIsovaluesList;
/// levels->setRegularIsoList(0.f, 100.f, 11);
/// separator->addChild(levels);
/// separator->addChild(contours);
/// @endcode
class ORMELLE_API PoIsovaluesList : public PoNode {
  PO_NODE_HEADER(PoIsovaluesList, PoNode);

 public:
  SoMFFloat isovaluesList;  ///< the levels; 1, 2, ... 10 by default

  PoIsovaluesList();

  /// Set the field to evenly spaced levels; each does what the form of PbIsovaluesList with these arguments does to the
  /// list that the field holds.
  /// @{
  void setRegularIsoList(float min, float max, int num);
  void setRegularIsoList(float min, float max);
  void setRegularIsoList(int num);
  void setRegularIsoList(int n, const float* values);
  void setRegularIsoList(int n, const float* values, int num);
  void setRegularIsoList(int num, float start, float step);
  /// @}

  /// The levels in ascending order, their number, ends and step, and whether they are evenly spaced; null if there are
  /// none. The array belongs to the node and is valid until the field changes.
  const float* getIsoList(int& num, float& min, float& max, float& step, int& isRegular);

  void doAction(SoAction* action) override;

 protected:
  ~PoIsovaluesList() override;

 private:
  void updateIsoList();
  void setField();
  template <class... Arguments>
  void setRegular(Arguments... arguments);

  std::unique_ptr<PbIsovaluesList> m_list;
  std::unique_ptr<PiFieldWatch> m_watch;
};

#endif
