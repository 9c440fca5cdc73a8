#include "Callbacks.h"

#include <algorithm>
#include <utility>

namespace python {

namespace {

RaisedInside*& innermost() {
  static RaisedInside* waiting = nullptr;
  return waiting;
}

}  // namespace

RaisedInside::RaisedInside() : m_outer(std::exchange(innermost(), this)) {}

RaisedInside::~RaisedInside() { innermost() = m_outer; }

void RaisedInside::raise() {
  if (!m_first) return;
  for (const py::object& owner : m_owners) owner.attr("touch")();
  throw py::error_already_set(*m_first);
}

void noteException(py::handle function, const py::object& owner) {
  try {
    throw;
  } catch (py::error_already_set& error) {
    error.restore();
  } catch (const py::builtin_exception& error) {
    error.set_error();
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_ValueError, error.what());
  }
  RaisedInside* waiting = innermost();
  if (!waiting) {
    PyErr_WriteUnraisable(function.ptr());
    return;
  }
  if (waiting->m_first)
    PyErr_Clear();
  else
    waiting->m_first.emplace();
  std::vector<py::object>& owners = waiting->m_owners;
  if (std::none_of(owners.begin(), owners.end(), [&owner](const py::object& each) { return each.is(owner); }))
    owners.push_back(owner);
}

py::object checkedFunction(py::object function, const char* what) {
  if (!function.is_none() && PyCallable_Check(function.ptr()) == 0)
    throw py::type_error(std::string(what) + " is wanted, not " + kindOf(function));
  return function;
}

}  // namespace python
