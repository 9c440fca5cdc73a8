#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoDebugError.h>

#include <utility>

#include "Callbacks.h"

namespace python {

using namespace pybind11::literals;

/// One truth for each cell, the very array that was given if it is in C order.
using MaskArray = py::array_t<bool, py::array::c_style>;

/// A filter by a mask or by a function of Python. All cells pass one that has neither.
///
/// The library asks filters on the thread of the traversal alone. A mask is read without the interpreter's lock.
class PythonCellFilter final : public PoCellFilter {
  PO_NODE_HEADER(PythonCellFilter, PoCellFilter);

 public:
  PythonCellFilter() {
    PO_NODE_CONSTRUCTOR(PythonCellFilter);
    PO_NODE_CONSTRUCTED(PythonCellFilter);
  }

  void setCells(py::object cells) {
    MaskArray mask;
    const bool isMask = !cells.is_none() && PyCallable_Check(cells.ptr()) == 0;
    if (isMask) cells = mask = maskOf(cells);
    m_hasMask = isMask;
    m_truths = mask.data();
    m_numTruths = mask.size();
    m_cells = std::move(cells);
    touch();
  }
  py::object cells() const { return m_cells; }

  int acceptCell(int cell, float value) const override {
    if (m_hasMask) return cell < m_numTruths ? m_truths[cell] : refuseBeyondMask(cell);
    return m_cells.is_none() || askFunction(cell, value);
  }

  void doAction(SoAction* action) override {
    m_hasFailed = m_hasWarned = false;
    inherited::doAction(action);
  }
  void write(SoWriteAction* action) override {
    PoDebugError::postWarning("PoCellFilter::write",
                              "A mask or a function of Python can't be written, so the file "
                              "shows all cells.");
    inherited::write(action);
  }

 protected:
  // In binary form, where it can't be left out, it stands as a node that means nothing.
  const char* getFileFormatName() const override { return "Info"; }
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override {
    const py::gil_scoped_acquire locked;
    inherited::copyContents(from, copyConnections);
    setCells(static_cast<const PythonCellFilter*>(from)->m_cells);
  }
  ~PythonCellFilter() override {
    PyObject* cells = m_cells.release().ptr();
    if (!Py_IsInitialized()) return;
    const PyGILState_STATE state = PyGILState_Ensure();
    Py_DECREF(cells);
    PyGILState_Release(state);
  }

 private:
  static MaskArray maskOf(const py::object& cells) {
    py::object given = cells;
    if (py::hasattr(cells, "filled")) given = cells.attr("filled")(false);  // of a masked array
    const py::array array = py::array::ensure(given);
    if (!array || array.dtype().kind() != 'b')
      throw py::value_error(
          "cells must be an array of True and False, one for each cell, or a function of a cell's "
          "index and value, not " +
          (array ? "an array of " + py::cast<std::string>(py::str(array.dtype())) : kindOf(cells)));
    return MaskArray(array);
  }

  int refuseBeyondMask(int cell) const {
    if (!std::exchange(m_hasWarned, true))
      PoDebugError::postWarning("PoCellFilter::acceptCell",
                                "Cell %d of a mesh was asked for, but the mask has only %d entries; cells beyond it "
                                "aren't shown.",
                                cell, static_cast<int>(m_numTruths));
    return 0;
  }

  // A function that fails isn't asked again until the next traversal: there may be millions of cells.
  bool askFunction(int cell, float value) const {
    if (m_hasFailed) return false;
    const py::gil_scoped_acquire locked;
    try {
      const int truth = PyObject_IsTrue(m_cells(cell, value).ptr());
      if (truth < 0) throw py::error_already_set();
      return truth != 0;
    } catch (...) {
      m_hasFailed = true;
      noteException(m_cells, proxyOf(const_cast<PythonCellFilter*>(this)));
    }
    return false;
  }

  py::object m_cells = py::none();
  const bool* m_truths = nullptr;
  py::ssize_t m_numTruths = 0;
  bool m_hasMask = false;
  mutable bool m_hasFailed = false, m_hasWarned = false;
};

PO_NODE_SOURCE(PythonCellFilter)

namespace {

PythonCellFilter& filterOf(py::handle object) {
  SoNode* node = nodeOf(object, "self");
  if (!node->isOfType(PythonCellFilter::getClassTypeId()))
    throw py::type_error(std::string(node->getTypeId().getName().getString()) +
                         " has a rule of its own, and takes no cells: use PoCellFilter");
  return static_cast<PythonCellFilter&>(*node);
}

}  // namespace

void addCellFilter(py::module_& module) {
  PythonCellFilter::initClass();
  module.def(
      "set_cells", [](py::handle filter, py::object cells) { filterOf(filter).setCells(std::move(cells)); }, "filter"_a,
      "cells"_a.none(true));
  module.def(
      "get_cells", [](py::handle filter) { return filterOf(filter).cells(); }, "filter"_a);
}

}  // namespace python
