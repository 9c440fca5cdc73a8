#ifndef ORMELLE_PYTHON_CALLBACKS_H
#define ORMELLE_PYTHON_CALLBACKS_H

#include <optional>

#include "Arguments.h"

namespace python {

/// Waits for what functions of Python raise inside the library, which no exception may pass, to raise it afterwards.
class RaisedInside {
 public:
  RaisedInside();
  ~RaisedInside();
  RaisedInside(const RaisedInside&) = delete;
  RaisedInside& operator=(const RaisedInside&) = delete;

  /// Throws the first exception that was noted, if there was one. What was built with answers that are missing is built
  /// anew the next time.
  void raise();

 private:
  friend void noteException(py::handle function, const py::object& owner);

  RaisedInside* m_outer;
  std::optional<py::error_already_set> m_first;
  std::vector<py::object> m_owners;
};

/// Call it in a `catch (...)` round a call of `function`, with the interpreter's lock. Hands the exception to the
/// innermost RaisedInside; if nobody waits, sys.unraisablehook gets it. `owner`, a node or a data object, has the
/// function.
void noteException(py::handle function, const py::object& owner);

/// A callable or None.
py::object checkedFunction(py::object function, const char* what);

}  // namespace python

#endif
