#include "Arguments.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoNode.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "ColorNames.h"

namespace python {

namespace {

// An object of Python that lives to the end of the process: the interpreter may be gone when statics end.
const py::object& lasting(py::object object) { return *new py::object(std::move(object)); }

const py::object& numpy() {
  static const py::object& module = lasting(py::module_::import("numpy"));
  return module;
}

const py::object& pivy() {
  static const py::object& module = lasting(py::module_::import("pivy.coin"));
  return module;
}

std::string wordsFor(const std::vector<py::ssize_t>& shape) {
  std::string text;
  for (const py::ssize_t length : shape) text += (text.empty() ? "" : " x ") + std::to_string(length);
  return text.empty() ? "a single number" : text;
}

std::string wordsFor(py::handle object) { return py::cast<std::string>(py::str(object)); }

std::vector<py::ssize_t> shapeOf(const py::array& array) { return {array.shape(), array.shape() + array.ndim()}; }

// Any numbers as an array, not yet of our type.
py::array numbersOf(py::handle numbers, const char* what) {
  if (numbers.is_none()) throw py::type_error(std::string(what) + " must be numbers, not None");
  if (py::isinstance(numbers, numpy().attr("ma").attr("MaskedArray")))
    return numbers.attr("astype")("float32").attr("filled")(std::numeric_limits<float>::quiet_NaN());
  py::array array = py::array::ensure(numbers);
  if (!array) throw py::value_error(std::string(what) + " must be an array of numbers, not " + kindOf(numbers));
  if (std::string("biuf").find(array.dtype().kind()) == std::string::npos)
    throw py::value_error(std::string(what) + " must be numbers, not an array of " + wordsFor(array.dtype()));
  return array;
}

// The array itself or a copy, in our type, in C order, and aligned.
template <class Array>
Array converted(const py::array& numbers, const char* what, bool copies) {
  const bool isAligned = py::cast<bool>(numbers.attr("flags").attr("aligned"));
  Array array = Array::ensure(isAligned ? py::object(numbers) : py::object(numbers.attr("copy")()));
  if (!array) throw py::value_error(std::string(what) + " can't be converted to numbers of 4 bytes");
  if (copies && array.data() == numbers.data()) array = Array(array.attr("copy")());
  return array;
}

}  // namespace

std::string kindOf(py::handle object) {
  return object.is_none() ? "None" : "a " + py::cast<std::string>(py::type::of(object).attr("__name__"));
}

std::string textOf(py::handle text, const char* what) {
  py::ssize_t length = 0;
  const char* characters = PyUnicode_AsUTF8AndSize(text.ptr(), &length);
  if (characters) return {characters, static_cast<std::size_t>(length)};
  PyErr_Clear();
  throw py::value_error(std::string(what) + " can't be a text with half a character in it");
}

FloatArray floatsOf(py::handle numbers, const char* what, bool copies) {
  return converted<FloatArray>(numbersOf(numbers, what), what, copies);
}

FloatArray floatsOf(py::handle numbers, const char* what, const std::vector<py::ssize_t>& shape, bool copies) {
  const py::array given = numbersOf(numbers, what);
  const std::vector<py::ssize_t> found = shapeOf(given);
  py::ssize_t count = 1;
  for (const py::ssize_t length : shape) count *= length;
  if (found != shape && found != std::vector<py::ssize_t>{count}) {
    std::string sentence = std::string(what) + " must be " + wordsFor(shape) + " numbers, not " + wordsFor(found);
    if (found.size() > 1 && std::equal(found.begin(), found.end(), shape.rbegin(), shape.rend()))
      sentence += ": transpose them, the first index of a grid counts along x";
    throw py::value_error(sentence);
  }
  return converted<FloatArray>(given, what, copies);
}

FloatArray rowOf(py::handle numbers, const char* what, bool copies) {
  const py::array given = numbersOf(numbers, what);
  if (given.ndim() != 1 || given.size() == 0)
    throw py::value_error(std::string(what) + " must be one row of numbers, not " + wordsFor(shapeOf(given)));
  countOf(given.size(), what);
  return converted<FloatArray>(given, what, copies);
}

IntArray indicesOf(py::handle numbers, const char* what, py::ssize_t end, bool copies) {
  const py::array given = numbersOf(numbers, what);
  if (given.size() == 0) return IntArray(given.attr("astype")("int32"));
  if (given.dtype().kind() == 'f' || given.dtype().kind() == 'b')
    throw py::value_error(std::string(what) + " must be whole numbers, not of type " + wordsFor(given.dtype()));
  countOf(given.size(), what);
  const py::int_ least = given.attr("min")();
  const py::int_ greatest = given.attr("max")();
  if (least < py::int_(0) || greatest >= py::int_(end))
    throw py::index_error(std::string(what) + " go from " + wordsFor(least) + " to " + wordsFor(greatest) +
                          ", but there are only 0 to " + std::to_string(end - 1));
  return converted<IntArray>(given, what, copies);
}

SbVec3f pointOf(py::handle point, const char* what) {
  const FloatArray numbers = rowOf(point, what);
  if (numbers.size() != 2 && numbers.size() != 3)
    throw py::value_error(std::string(what) + " must be two or three numbers, not " + std::to_string(numbers.size()));
  return SbVec3f(numbers.at(0), numbers.at(1), numbers.size() == 3 ? numbers.at(2) : 0.0F);
}

SbColor colorOf(py::handle color, const char* what, float* opacity) {
  tool::Background found{SbColor(0, 0, 0), 1};
  if (py::isinstance<py::str>(color)) {
    const auto text = textOf(color, what);
    const auto named = tool::namedColor(text);
    if (!named)
      throw py::value_error(
          std::string(what) + " can't be \"" + text +
          "\": write a name such as navy or steelblue, a text like \"#1f77b4\", or three numbers from "
          "0 to 1");
    found = *named;
  } else {
    const FloatArray numbers = rowOf(color, what);
    const float* first = numbers.data();
    const auto isChannel = [](float number) { return number >= 0 && number <= 1; };
    const bool fits = numbers.size() == 3 || numbers.size() == 4;
    if (!fits || !std::all_of(first, first + numbers.size(), isChannel))
      throw py::value_error(std::string(what) + " must be three numbers from 0 to 1" +
                            (fits && *std::max_element(first, first + 3) > 1 ? "; divide those up to 255 by 255" : ""));
    found = {SbColor(first), numbers.size() == 4 ? first[3] : 1};
  }
  if (opacity)
    *opacity = found.opacity;
  else if (found.opacity != 1)
    throw py::value_error(std::string(what) + " has no opacity of its own here: give three numbers, or six digits");
  return found.color;
}

std::vector<SbColor> colorsOf(py::handle colors, const char* what) {
  if (py::isinstance<py::str>(colors) || !py::isinstance<py::sequence>(colors))
    throw py::value_error(std::string(what) + " must be a list of colours, not " + kindOf(colors));
  std::vector<SbColor> all;
  // Objects, not handles: the rows of an array are made as they are asked for.
  for (const py::object color : py::reinterpret_borrow<py::sequence>(colors)) all.push_back(colorOf(color, what));
  return all;
}

double numberOf(py::handle number, const char* what) {
  const double value = py::isinstance<py::str>(number) ? -1 : PyFloat_AsDouble(number.ptr());
  if (PyErr_Occurred() || py::isinstance<py::str>(number)) {
    PyErr_Clear();
    throw py::type_error(std::string(what) + " must be a number, not " + kindOf(number));
  }
  return value;
}

float finite(double number, const char* what) {
  const auto single = static_cast<float>(number);
  if (!std::isfinite(single)) throw py::value_error(std::string(what) + " must be a finite number");
  return single;
}

int countOf(py::ssize_t count, const char* what, int least) {
  if (count < least || count > std::numeric_limits<int>::max())
    throw py::value_error(std::string(what) + " can't be " + std::to_string(count) + " in number: from " +
                          std::to_string(least) + " to 2147483647 is possible");
  return static_cast<int>(count);
}

py::tuple tupleOf(const SbColor& color) { return py::make_tuple(color[0], color[1], color[2]); }
py::tuple tupleOf(const SbVec3f& vector) { return py::make_tuple(vector[0], vector[1], vector[2]); }

// ---- Nodes: objects of Pivy hold the address of their node, which int() tells ---------------------------------------

void* addressOf(py::handle object, const char* pivyClass, const char* what) {
  if (!py::isinstance(object, pivy().attr(pivyClass)))
    throw py::type_error(std::string(what) + " must be Pivy's " + pivyClass + ", not " + kindOf(object));
  const py::object pointer = py::getattr(object, "this", py::none());
  void* address = pointer.is_none() ? nullptr : PyLong_AsVoidPtr(py::int_(pointer).ptr());
  if (!address) throw py::type_error(std::string(what) + " is empty: its constructor didn't come to its end");
  return address;
}

SoNode* nodeOf(py::handle object, const char* what) {
  static const py::object& nodeClass = lasting(pivy().attr("SoNode"));
  if (!py::isinstance(object, nodeClass))
    throw py::type_error(std::string(what) + " must be a node of Pivy or Ormelle, not " + kindOf(object));
  return pointerOf<SoNode>(object, "SoNode", what);
}

// Pivy makes the object that suits the class of a node when it hands out the child of a group. That object holds no
// reference; to make it an owner afterwards, by own(), would upset the reference count of SWIG's table of types
// (SWIG 4.1), so it gets a reference of ours along.
py::object proxyOf(SoNode* node) {
  if (!node) return py::none();
  static const py::object& courier = lasting(pivy().attr("SoGroup")());
  auto* group = static_cast<SoGroup*>(nodeOf(courier, "the courier"));
  group->addChild(node);
  py::object proxy;
  try {
    proxy = courier.attr("getChild")(0);
    proxy.attr("__dict__")["_reference"] = referenceTo(node);
  } catch (...) {
    group->removeAllChildren();
    throw;
  }
  group->removeAllChildren();
  return proxy;
}

py::capsule referenceTo(SoNode* node) {
  node->ref();
  return py::capsule(node, [](void* held) { static_cast<SoNode*>(held)->unref(); });
}

}  // namespace python
