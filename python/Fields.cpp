#include <Inventor/SbName.h>
#include <Inventor/fields/SoFields.h>
#include <Inventor/nodes/SoNode.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "Arguments.h"

namespace python {

py::dict enumOf(const SoField& field) {
  py::dict values;
  const auto read = [&values](const auto& enumeration) {
    for (int i = 0; i < enumeration.getNumEnums(); ++i) {
      SbName name;
      const int value = enumeration.getEnum(i, name);
      values[name.getString()] = value;
    }
  };
  if (field.isOfType(SoSFEnum::getClassTypeId()))
    read(static_cast<const SoSFEnum&>(field));
  else if (field.isOfType(SoMFEnum::getClassTypeId()))
    read(static_cast<const SoMFEnum&>(field));
  return values;
}

namespace {

using namespace pybind11::literals;

/// One try to give a field a value: true if the field is of the class tried.
class FieldSetter {
 public:
  FieldSetter(SoField& field, std::string name, py::handle value)
      : m_field(field), m_name(std::move(name)), m_value(value) {}

  bool set() {
    return setEnum() || setNumber<SoSFBool, bool>() || setNumber<SoSFInt32, int32_t>() ||
           setNumber<SoSFUInt32, uint32_t>() || setNumber<SoSFShort, short>() ||
           setNumber<SoSFUShort, unsigned short>() || setNumber<SoSFFloat, float>() ||
           setNumber<SoSFDouble, double>() || setString() || setNode() || setVector<SoSFVec2f, SbVec2f, 2>() ||
           setVector<SoSFVec3f, SbVec3f, 3>() || setVector<SoSFVec4f, SbVec4f, 4>() || setColor() ||
           setNumbers<SoMFFloat, FloatArray, float, 1>() || setNumbers<SoMFInt32, IntArray, int32_t, 1>() ||
           setNumbers<SoMFVec2f, FloatArray, SbVec2f, 2>() || setNumbers<SoMFVec3f, FloatArray, SbVec3f, 3>() ||
           setColors() || setStrings() || setPlane() || setShorts();
  }

 private:
  template <class Field>
  Field* as() const {
    return m_field.isOfType(Field::getClassTypeId()) ? static_cast<Field*>(&m_field) : nullptr;
  }
  [[noreturn]] void refuse(const std::string& wanted) const {
    throw py::type_error(m_name + " wants " + wanted + ", not " + kindOf(m_value));
  }
  std::string shown() const {
    const py::object text = py::reinterpret_steal<py::object>(PyObject_ASCII(m_value.ptr()));
    if (!text) throw py::error_already_set();
    const auto whole = py::cast<std::string>(text);
    return whole.size() > 60 ? whole.substr(0, 57) + "..." : whole;
  }

  bool setEnum() {
    auto* field = as<SoSFEnum>();
    if (!field) return false;
    const py::dict names = enumOf(*field);
    if (py::isinstance<py::str>(m_value)) {
      if (!names.contains(m_value))
        throw py::value_error(m_name + " can't be " + shown() + "; it knows " +
                              py::cast<std::string>(py::str(", ").attr("join")(names)));
      field->setValue(py::cast<int>(names[m_value]));
      return true;
    }
    const int value = whole<int>();
    const bool isKnown = std::any_of(names.begin(), names.end(),
                                     [value](const auto& each) { return py::cast<int>(each.second) == value; });
    if (!isKnown)
      throw py::value_error(m_name + " can't be " + shown() + "; it knows " + py::cast<std::string>(py::repr(names)));
    field->setValue(value);
    return true;
  }

  // Whole numbers of Python and NumPy, and enumerations, but no fractions.
  template <class Number>
  Number whole() const {
    if (PyFloat_Check(m_value.ptr()) || py::isinstance<py::str>(m_value)) refuse("a whole number");
    try {
      return py::cast<Number>(py::isinstance<py::int_>(m_value) ? py::int_(py::reinterpret_borrow<py::object>(m_value))
                                                                : py::int_(m_value.attr("__index__")()));
    } catch (const py::cast_error&) {
      throw py::value_error(m_name + " can't hold " + shown());
    } catch (const py::error_already_set&) {
      if (py::hasattr(m_value, "__int__") && !py::hasattr(m_value, "shape")) {
        try {
          return py::cast<Number>(py::int_(m_value.attr("__int__")()));
        } catch (const py::cast_error&) {
          throw py::value_error(m_name + " can't hold " + shown());
        }
      }
      refuse("a whole number");
    }
  }

  template <class Field, class Number>
  bool setNumber() {
    auto* field = as<Field>();
    if (!field) return false;
    if constexpr (std::is_same_v<Number, bool>) {
      const int truth = py::isinstance<py::str>(m_value) || m_value.is_none() ? -1 : PyObject_IsTrue(m_value.ptr());
      if (PyErr_Occurred()) PyErr_Clear();
      if (truth < 0) refuse("True or False");
      field->setValue(truth != 0);
    } else if constexpr (std::is_integral_v<Number>) {
      field->setValue(whole<Number>());
    } else {
      if (py::isinstance<py::str>(m_value)) refuse("a number");
      const double value = PyFloat_AsDouble(m_value.ptr());
      if (PyErr_Occurred()) {
        PyErr_Clear();
        refuse("a number");
      }
      field->setValue(static_cast<Number>(value));
    }
    return true;
  }

  bool setString() {
    auto* field = as<SoSFString>();
    if (!field) return false;
    if (!py::isinstance<py::str>(m_value)) refuse("a text");
    field->setValue(textOf(m_value, m_name.c_str()).c_str());
    return true;
  }

  bool setNode() {
    auto* field = as<SoSFNode>();
    if (!field) return false;
    field->setValue(m_value.is_none() ? nullptr : nodeOf(m_value, m_name.c_str()));
    return true;
  }

  template <class Field, class Vector, int size>
  bool setVector() {
    auto* field = as<Field>();
    if (!field) return false;
    const FloatArray numbers = floatsOf(m_value, m_name.c_str(), std::vector<py::ssize_t>{size});
    field->setValue(Vector(numbers.data()));
    return true;
  }

  bool setColor() {
    auto* field = as<SoSFColor>();
    if (!field) return false;
    field->setValue(colorOf(m_value, m_name.c_str()));
    return true;
  }

  template <class Field, class Array, class Element, int size>
  bool setNumbers() {
    auto* field = as<Field>();
    if (!field) return false;
    Array numbers;
    if constexpr (std::is_same_v<Array, IntArray>) {
      numbers = wholeNumbers();
    } else {
      numbers = floatsOf(m_value, m_name.c_str());
    }
    if (numbers.size() % size != 0 || (size > 1 && numbers.ndim() > 1 && numbers.shape(numbers.ndim() - 1) != size))
      throw py::value_error(m_name + " wants rows of " + std::to_string(size) + " numbers");
    const int num = countOf(numbers.size() / size, m_name.c_str());
    replaceAll(*field, num, reinterpret_cast<const Element*>(numbers.data()));
    return true;
  }

  IntArray wholeNumbers() const {
    const py::array given = py::array::ensure(m_value);
    if (!given || (given.size() > 0 && given.dtype().kind() != 'i' && given.dtype().kind() != 'u'))
      refuse("whole numbers");
    IntArray numbers(given);
    if (given.size() > 0 && !py::cast<bool>(py::module_::import("numpy").attr("array_equal")(numbers, given)))
      throw py::value_error(m_name + " has numbers that are too large for it");
    return numbers;
  }

  template <class Field, class Element>
  static void replaceAll(Field& field, int num, const Element* elements) {
    const SbBool wasOn = field.enableNotify(FALSE);
    field.setNum(num);
    if (num > 0) field.setValues(0, num, elements);
    field.enableNotify(wasOn);
    field.setDefault(FALSE);
    field.touch();
  }

  bool setColors() {
    auto* field = as<SoMFColor>();
    if (!field) return false;
    if (py::isinstance<py::array>(m_value)) {
      const FloatArray numbers = floatsOf(m_value, m_name.c_str());
      if (numbers.ndim() == 2 && numbers.shape(1) == 3) {
        replaceAll(*field, countOf(numbers.shape(0), m_name.c_str()), reinterpret_cast<const SbColor*>(numbers.data()));
        return true;
      }
    }
    std::vector<SbColor> colors;
    if (isSingleColor())
      colors.push_back(colorOf(m_value, m_name.c_str()));
    else
      colors = colorsOf(m_value, m_name.c_str());
    replaceAll(*field, static_cast<int>(colors.size()), colors.data());
    return true;
  }
  bool isSingleColor() const {
    if (py::isinstance<py::str>(m_value)) return true;
    return py::isinstance<py::sequence>(m_value) && py::len(m_value) == 3 &&
           PyNumber_Check(py::object(m_value[py::int_(0)]).ptr());
  }

  bool setStrings() {
    auto* field = as<SoMFString>();
    if (!field) return false;
    std::vector<SbString> texts;
    if (py::isinstance<py::str>(m_value)) {
      texts.emplace_back(textOf(m_value, m_name.c_str()).c_str());
    } else {
      if (!py::isinstance<py::sequence>(m_value)) refuse("a list of texts");
      for (const py::handle text : m_value) {
        if (!py::isinstance<py::str>(text)) throw py::type_error(m_name + " wants texts, not " + kindOf(text));
        texts.emplace_back(textOf(text, m_name.c_str()).c_str());
      }
    }
    replaceAll(*field, static_cast<int>(texts.size()), texts.data());
    return true;
  }

  // Normal and distance from the origin.
  bool setPlane() {
    auto* field = as<SoSFPlane>();
    if (!field) return false;
    const FloatArray numbers = floatsOf(m_value, m_name.c_str(), std::vector<py::ssize_t>{4});
    const SbVec3f normal(numbers.data());
    if (!(normal.length() > 0) || !std::isfinite(normal.length()))
      throw py::value_error(m_name + " wants a normal that is longer than 0, and the distance from the origin");
    field->setValue(SbPlane(normal, finite(numbers.data()[3], m_name.c_str())));
    return true;
  }

  bool setShorts() {
    auto* field = as<SoMFUShort>();
    if (!field) return false;
    const IntArray numbers = wholeNumbers();
    std::vector<unsigned short> shorts;
    for (py::ssize_t n = 0; n < numbers.size(); ++n) {
      if (numbers.data()[n] < 0 || numbers.data()[n] > 65535)
        throw py::value_error(m_name + " wants numbers from 0 to 65535, not " + std::to_string(numbers.data()[n]));
      shorts.push_back(static_cast<unsigned short>(numbers.data()[n]));
    }
    replaceAll(*field, countOf(numbers.size(), m_name.c_str()), shorts.data());
    return true;
  }

  SoField& m_field;
  std::string m_name;
  py::handle m_value;
};

// Gives a field a value; false if only Pivy can: its own objects, and classes of fields that are rare.
bool setField(py::handle object, const std::string& name, const py::object& value) {
  SoNode* node = nodeOf(object, "self");
  SoField* field = node->getField(name.c_str());
  if (!field) throw py::attribute_error(name);
  if (!field->isOfType(SoSFNode::getClassTypeId()) && py::hasattr(value, "this")) return false;
  return FieldSetter(*field, std::string(node->getTypeId().getName().getString()) + "." + name, value).set();
}

}  // namespace

void addFields(py::module_& module) { module.def("set_field", &setField, "node"_a, "name"_a, "value"_a); }

}  // namespace python
