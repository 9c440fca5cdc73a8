// The smallest application of the library: fails if what is installed can't be compiled, linked or run.
#include <Ormelle/PbBase.h>

namespace {
class Reading : public PbBase {
 public:
  void set() { touch(); }
};
}  // namespace

int main() {
  Reading reading;
  reading.enableConnection(0);
  reading.set();
  return reading.isConnectionEnabled() == 0 && reading.getChangeType() == PbBase::OBJECT_CHANGE ? 0 : 1;
}
