#ifndef ORMELLE_PYTHON_ARGUMENTS_H
#define ORMELLE_PYTHON_ARGUMENTS_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <Inventor/SbColor.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>

#include <string>
#include <vector>

class SoField;
class SoNode;

/// The Python module: what comes from Python is checked here, before the library sees it, and answered with an
/// exception that says in a sentence what is wrong.
namespace python {

namespace py = pybind11;

/// "a str", "a PbDomain": what a sentence calls an object of the wrong type.
std::string kindOf(py::handle object);

/// A text of Python; a ValueError answers one that UTF-8 can't hold.
std::string textOf(py::handle text, const char* what);

// ---- Arrays ---------------------------------------------------------------------------------------------------------

/// A row of numbers in memory, in C order: the very array that was given if it is so already, else a converted copy.
using FloatArray = py::array_t<float, py::array::c_style | py::array::forcecast>;
using IntArray = py::array_t<int, py::array::c_style | py::array::forcecast>;

/// Takes numbers of any type and layout; `what` names them in sentences. NaN and infinities pass; masked elements of a
/// masked array become NaN. Text, complex numbers and objects are refused with a ValueError. `copies` makes a copy even
/// of what could be shared.
FloatArray floatsOf(py::handle numbers, const char* what, bool copies = false);
/// One number in each place of `shape`, either in that shape or in one row; else a ValueError.
FloatArray floatsOf(py::handle numbers, const char* what, const std::vector<py::ssize_t>& shape, bool copies = false);
/// The same in one row, which must not be empty.
FloatArray rowOf(py::handle numbers, const char* what, bool copies = false);
/// Whole numbers from 0 up to but not including `end`, else an IndexError.
IntArray indicesOf(py::handle numbers, const char* what, py::ssize_t end, bool copies = false);

/// Two or three finite or non-finite numbers; a missing z is 0.
SbVec3f pointOf(py::handle point, const char* what);
/// Three numbers from 0 to 1, or a text: a name of the web's style sheets or "#1f77b4". With `opacity`, also four
/// numbers or "#1f77b480"; without it a colour that isn't opaque is refused.
SbColor colorOf(py::handle color, const char* what, float* opacity = nullptr);
std::vector<SbColor> colorsOf(py::handle colors, const char* what);
/// A number that is neither NaN nor infinite as a float, else a ValueError.
float finite(double number, const char* what);
/// Any real number; a TypeError answers what is none.
double numberOf(py::handle number, const char* what);
/// A count that an int can hold, at least `least`; else a ValueError.
int countOf(py::ssize_t count, const char* what, int least = 0);

py::tuple tupleOf(const SbColor& color);
py::tuple tupleOf(const SbVec3f& vector);

// ---- Nodes ----------------------------------------------------------------------------------------------------------

/// The node behind an object of Pivy or of ours; `what` names the argument in the TypeError that answers anything else.
SoNode* nodeOf(py::handle object, const char* what);
/// The same for other objects of Pivy, of which `pivyClass` names the class, the counterpart of Class.
void* addressOf(py::handle object, const char* pivyClass, const char* what);
template <class Class>
Class* pointerOf(py::handle object, const char* pivyClass, const char* what) {
  return static_cast<Class*>(addressOf(object, pivyClass, what));
}
/// An object of Pivy for a node, which has a reference of its own to it and gives it back when it goes. Null is None.
py::object proxyOf(SoNode* node);
/// An object that only keeps a node alive.
py::capsule referenceTo(SoNode* node);
/// The values of the enumeration of a field by their names; empty of other fields.
py::dict enumOf(const SoField& field);

// ---- What each source adds to the module ----------------------------------------------------------------------------

void addCellFilter(py::module_& module);
void addData(py::module_& module);
void addFields(py::module_& module);
void addMeshes(py::module_& module);
void addMeshClasses(py::module_& module);
void addNodeData(py::module_& module);
void addNodeFunctions(py::module_& module);
void addNodes(py::module_& module);
void addScenes(py::module_& module);

}  // namespace python

#endif
