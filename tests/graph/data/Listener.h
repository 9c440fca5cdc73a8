#ifndef ORMELLE_TESTS_LISTENER_H
#define ORMELLE_TESTS_LISTENER_H

#include <Ormelle/PbBase.h>
#include <Ormelle/PoBase.h>

#include <functional>
#include <vector>

/// A kit that shows nothing and notes what the data objects that it is connected to tell.
class Listener : public PoBase {
  PO_KIT_HEADER(Listener, PoBase);

 public:
  Listener();
  void rebuild() override {}
  void basicObjectChange(PbBase* object) override;

  std::vector<PbBase::ChangeType> changes;
  /// Called at each change.
  std::function<void(PbBase*)> react;

 protected:
  ~Listener() override = default;
};

#endif
