#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNonLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbNumericDisplayFormat.h>

#include <pybind11/stl.h>

#include <array>
#include <cmath>
#include <memory>
#include <optional>

#include "Callbacks.h"

namespace python {

namespace {

using namespace pybind11::literals;

// ---- Colours --------------------------------------------------------------------------------------------------------

// Red, green, blue and opacity; all 0 for a value that has no colour.
std::array<float, 4> rgbaOf(const PbDataMapping& mapping, float value) {
  float transparency = 0;
  const SbColor* color = mapping.getRGBColor(value, transparency);
  if (!color) return {0, 0, 0, 0};
  return {(*color)[0], (*color)[1], (*color)[2], mapping.isTransparencyEnabled() ? 1 - transparency : 1};
}

py::object colorOfValues(const PbDataMapping& mapping, py::handle values) {
  const FloatArray numbers = floatsOf(values, "values");
  RaisedInside raised;
  if (numbers.ndim() == 0) {
    const float value = *numbers.data();
    const bool isColored = mapping.getRGBColor(value) != nullptr;
    const std::array<float, 4> rgba = rgbaOf(mapping, value);
    raised.raise();
    if (!isColored) return py::none();
    return py::make_tuple(rgba[0], rgba[1], rgba[2], rgba[3]);
  }
  std::vector<py::ssize_t> shape(numbers.shape(), numbers.shape() + numbers.ndim());
  shape.push_back(4);
  FloatArray colors(shape);
  float* out = colors.mutable_data();
  for (py::ssize_t i = 0; i < numbers.size(); ++i)
    for (const float channel : rgbaOf(mapping, numbers.data()[i])) *out++ = channel;
  raised.raise();
  return colors;
}

py::object rgbOf(const PbDataMapping& mapping, float value) {
  RaisedInside raised;
  const SbColor* color = mapping.getRGBColor(value);
  raised.raise();
  return color ? py::object(tupleOf(*color)) : py::none();
}

float transparencyOf(double transparency) {
  if (!(transparency >= 0 && transparency <= 1)) throw py::value_error("a transparency must be from 0 to 1");
  return static_cast<float>(transparency);
}

template <class Set, class SetWithColor>
void setThreshold(Set set, SetWithColor setWithColor, double value, py::handle color, double transparency) {
  const float threshold = finite(value, "the threshold");
  if (color.is_none())
    set(threshold);
  else
    setWithColor(threshold, colorOf(color, "the colour"), transparencyOf(transparency));
}

void setRamp(PbLinearDataMapping& mapping, double value1, py::handle color1, double value2, py::handle color2,
             double transparency1, double transparency2) {
  mapping.setValues(finite(value1, "value1"), colorOf(color1, "color1"), transparencyOf(transparency1),
                    finite(value2, "value2"), colorOf(color2, "color2"), transparencyOf(transparency2));
}

void setTable(PbNonLinearDataMapping2& mapping, std::optional<PbNonLinearDataMapping2::Type> type, py::handle values,
              py::handle colors, py::handle transparencies) {
  const FloatArray levels = rowOf(values, "values");
  const std::vector<SbColor> all = colorsOf(colors, "colors");
  const auto num = static_cast<py::ssize_t>(all.size());
  const bool isPerLevel = type ? *type == PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL : num == levels.size() + 1;
  if (num != levels.size() + (isPerLevel ? 1 : 0))
    throw py::value_error(std::to_string(levels.size()) +
                          " levels want as many colours, or one more for colours that are "
                          "constant between levels, not " +
                          std::to_string(num));
  for (py::ssize_t i = 0; i < levels.size(); ++i) finite(levels.data()[i], "a level");
  FloatArray transparency;
  if (!transparencies.is_none())
    transparency = floatsOf(transparencies, "transparencies", std::vector<py::ssize_t>{num});
  mapping.setValues(
      isPerLevel ? PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL : PbNonLinearDataMapping2::LINEAR_PER_LEVEL,
      static_cast<int>(levels.size()), levels.data(), all.data(),
      transparency.size() > 0 ? transparency.data() : nullptr);
}

/// A mapping by functions of Python. One that raises gives no colour; see noteException().
class FunctionMapping : public PbNonLinearDataMapping {
 public:
  void setColors(py::object function) {
    m_color = std::move(function);
    if (m_color.is_none())
      setRGBFunction(static_cast<RGBDataFunction*>(nullptr), nullptr);
    else
      setRGBFunction(&askColor, this);
  }
  void setTransparencies(py::object function) {
    m_transparency = std::move(function);
    if (m_transparency.is_none())
      setTransparencyFunction(static_cast<TransparencyDataFunction*>(nullptr), nullptr);
    else
      setTransparencyFunction(&askTransparency, this);
  }

 private:
  static const SbColor* askColor(void* self, float value) {
    auto* mapping = static_cast<FunctionMapping*>(self);
    const py::gil_scoped_acquire locked;
    try {
      const py::object color = mapping->m_color(value);
      if (color.is_none()) return nullptr;
      mapping->m_answer = python::colorOf(color, "what the colour function returns");
      return &mapping->m_answer;
    } catch (...) {
      noteException(mapping->m_color, mapping->self());
    }
    return nullptr;
  }
  static float askTransparency(void* self, float value) {
    auto* mapping = static_cast<FunctionMapping*>(self);
    const py::gil_scoped_acquire locked;
    try {
      return transparencyOf(numberOf(mapping->m_transparency(value), "what the transparency function returns"));
    } catch (...) {
      noteException(mapping->m_transparency, mapping->self());
    }
    return 0;
  }

  py::object self() { return py::cast(static_cast<PbNonLinearDataMapping*>(this), py::return_value_policy::reference); }

  py::object m_color = py::none();
  py::object m_transparency = py::none();
  SbColor m_answer;
};

// ---- Isovalues, domain, formats -------------------------------------------------------------------------------------

void setRegular(PbIsovaluesList& list, double min, double max, py::ssize_t num) {
  if (num < 1 || num > PbIsovaluesList::MAX_REGULAR_ISOVALUES)
    throw py::value_error("there can be 1 to 16777216 isovalues, not " + std::to_string(num));
  list.setRegularIsoList(finite(min, "min"), finite(max, "max"), static_cast<int>(num));
}

void setIrregular(PbIsovaluesList& list, py::handle values) {
  const FloatArray levels = rowOf(values, "isovalues");
  for (py::ssize_t i = 0; i < levels.size(); ++i) finite(levels.data()[i], "an isovalue");
  list.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
}

FloatArray levelsOf(const PbIsovaluesList& list) {
  int num, isRegular;
  float min, max, step;
  const float* levels = list.getIsoList(num, min, max, step, isRegular);
  return FloatArray(levels ? num : 0, levels);
}

void setBox(PbDomain& domain, const std::vector<double>& box, PbDomain::BoundingBoxType type) {
  if (box.size() != 4 && box.size() != 6)
    throw py::value_error("a domain is xmin, ymin, xmax, ymax, or xmin, ymin, zmin, xmax, ymax, zmax");
  const std::size_t axes = box.size() / 2;
  std::array<float, 6> sides = {0, 0, 0, 0, 0, 1};
  for (std::size_t axis = 0; axis < axes; ++axis) {
    sides[axis] = finite(box[axis], "a side of the domain");
    sides[axis + 3] = finite(box[axis + axes], "a side of the domain");
    if (!(sides[axis] < sides[axis + 3]))
      throw py::value_error("the minimum of a domain must be below its maximum in each direction");
  }
  if (axes == 2)
    domain.setDomain(sides[0], sides[1], sides[3], sides[4], type);
  else
    domain.setDomain(sides[0], sides[1], sides[2], sides[3], sides[4], sides[5], type);
}

py::tuple limitsOf(const PbDomain& domain) {
  float xmin, ymin, zmin, xmax, ymax, zmax;
  domain.getDomain(xmin, ymin, zmin, xmax, ymax, zmax);
  return py::make_tuple(xmin, ymin, zmin, xmax, ymax, zmax);
}

void setDateFormat(PbDateFormatMapping& mapping, const std::string& format) {
  const int wrong = mapping.setFormat(format.c_str());
  if (wrong != 0)
    throw py::value_error("character " + std::to_string(wrong) + " of the date format \"" + format +
                          "\" can't stand there");
}

void setDates(PbDateFormatMapping& mapping, const std::string& date1, const std::string& date2, double coord1,
              double coord2) {
  if (mapping.setDateMapping(date1.c_str(), date2.c_str(), finite(coord1, "coord1"), finite(coord2, "coord2")) == 0)
    throw py::value_error("\"" + date1 + "\" and \"" + date2 + "\" can't both be read as dates in the format \"" +
                          mapping.getFormat().getString() + "\"");
}

float dateCoordinateOf(const PbDateFormatMapping& mapping, const std::string& date) {
  float coordinate;
  if (mapping.getCoordinate(date.c_str(), coordinate) == 0)
    throw py::value_error("\"" + date + "\" can't be read as a date in the format \"" +
                          mapping.getFormat().getString() + "\"");
  return coordinate;
}

// ---- Classes --------------------------------------------------------------------------------------------------------

void addMappings(py::module_& module) {
  py::class_<PbDataMapping, PbBase>(module, "PbDataMapping", "Turns values into colours and transparencies.")
      .def("color", &colorOfValues, "values"_a,
           "Red, green, blue and opacity of a value, None if it has no colour; or an array of shape (..., 4) of many, "
           "in "
           "which values without a colour have the opacity 0.")
      .def("getRGBColor", &rgbOf, "value"_a, "Red, green and blue; None of a value that has no colour.")
      .def(
          "setMinThreshold",
          [](PbDataMapping& self, double value, py::handle color, double transparency) {
            setThreshold([&](float v) { self.setMinThreshold(v); },
                         [&](float v, const SbColor& c, float t) { self.setMinThreshold(v, c, t); }, value, color,
                         transparency);
          },
          "value"_a, "color"_a = py::none(), "transparency"_a = 0.0,
          "Values at or below get the colour; without one they are cut off. See enableThresholds().")
      .def(
          "setMaxThreshold",
          [](PbDataMapping& self, double value, py::handle color, double transparency) {
            setThreshold([&](float v) { self.setMaxThreshold(v); },
                         [&](float v, const SbColor& c, float t) { self.setMaxThreshold(v, c, t); }, value, color,
                         transparency);
          },
          "value"_a, "color"_a = py::none(), "transparency"_a = 0.0)
      .def(
          "enableThresholds", [](PbDataMapping& self, bool min, bool max) { self.enableThresholds(min, max); }, "min"_a,
          "max"_a)
      .def(
          "enableTransparency", [](PbDataMapping& self, bool on) { self.enableTransparency(on); }, "enabled"_a)
      .def("isTransparencyEnabled", [](const PbDataMapping& self) { return self.isTransparencyEnabled() != 0; });

  py::class_<PbLinearDataMapping, PbDataMapping>(module, "PbLinearDataMapping")
      .def(py::init<>())
      .def(py::init([](double value1, py::handle color1, double value2, py::handle color2, double transparency1,
                       double transparency2) {
             auto mapping = std::make_unique<PbLinearDataMapping>();
             setRamp(*mapping, value1, color1, value2, color2, transparency1, transparency2);
             return mapping.release();
           }),
           "value1"_a, "color1"_a, "value2"_a, "color2"_a, "transparency1"_a = 0.0, "transparency2"_a = 0.0)
      .def("setValues", &setRamp, "value1"_a, "color1"_a, "value2"_a, "color2"_a, "transparency1"_a = 0.0,
           "transparency2"_a = 0.0)
      .def("getValues", [](const PbLinearDataMapping& self) {
        float value1, value2;
        SbColor color1, color2;
        self.getValues(value1, color1, value2, color2);
        return py::make_tuple(value1, tupleOf(color1), value2, tupleOf(color2));
      });

  py::class_<PbNonLinearDataMapping, PbDataMapping, FunctionMapping>(module, "PbNonLinearDataMapping")
      .def(py::init([](py::object function) {
             auto mapping = std::make_unique<FunctionMapping>();
             if (!function.is_none()) mapping->setColors(checkedFunction(std::move(function), "a function of a value"));
             return mapping.release();
           }),
           "function"_a = py::none(), "A function that gives the colour of a value, or None if it has no colour.")
      .def(
          "setRGBFunction",
          [](PbNonLinearDataMapping& self, py::object function) {
            static_cast<FunctionMapping&>(self).setColors(
                checkedFunction(std::move(function), "a function of a value"));
          },
          "function"_a)
      .def(
          "setTransparencyFunction",
          [](PbNonLinearDataMapping& self, py::object function) {
            static_cast<FunctionMapping&>(self).setTransparencies(
                checkedFunction(std::move(function), "a function of a value"));
          },
          "function"_a);

  py::class_<PbNonLinearDataMapping2, PbDataMapping> table(module, "PbNonLinearDataMapping2");
  py::enum_<PbNonLinearDataMapping2::Type>(table, "Type")
      .value("NON_LINEAR_PER_LEVEL", PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL)
      .value("LINEAR_PER_LEVEL", PbNonLinearDataMapping2::LINEAR_PER_LEVEL)
      .export_values();
  table.def(py::init<>())
      .def(py::init([](py::handle values, py::handle colors, py::handle transparencies) {
             auto mapping = std::make_unique<PbNonLinearDataMapping2>();
             setTable(*mapping, std::nullopt, values, colors, transparencies);
             return mapping.release();
           }),
           "values"_a, "colors"_a, "transparencies"_a = py::none(),
           "A colour for each level, interpolated between them; with one colour more than levels, constant between "
           "them.")
      .def(
          "setValues",
          [](PbNonLinearDataMapping2& self, PbNonLinearDataMapping2::Type type, py::handle values, py::handle colors,
             py::handle transparencies) { setTable(self, type, values, colors, transparencies); },
          "type"_a, "values"_a, "colors"_a, "transparencies"_a = py::none())
      .def("getType", &PbNonLinearDataMapping2::getType)
      .def("getValuesList",
           [](const PbNonLinearDataMapping2& self) {
             int num;
             const float* values = self.getValuesList(num);
             return FloatArray(num, values);
           })
      .def(
          "getRGBColorsList",
          [](const PbNonLinearDataMapping2& self) {
            int num;
            const SbColor* colors = self.getRGBColorsList(num);
            return FloatArray(std::vector<py::ssize_t>{num, 3}, num > 0 ? colors->getValue() : nullptr);
          },
          "The colours as an array of shape (colours, 3).");
}

void addIsovalues(py::module_& module) {
  py::class_<PbIsovaluesList, PbBase>(module, "PbIsovaluesList", "The levels of contours and legends.")
      .def(py::init<>())
      .def(py::init([](py::handle values) {
             auto list = std::make_unique<PbIsovaluesList>();
             setIrregular(*list, values);
             return list.release();
           }),
           "values"_a)
      .def(py::init([](double min, double max, py::ssize_t num) {
             auto list = std::make_unique<PbIsovaluesList>();
             setRegular(*list, min, max, num);
             return list.release();
           }),
           "min"_a, "max"_a, "num"_a)
      .def("setRegularIsoList", &setRegular, "min"_a, "max"_a, "num"_a)
      .def("setIrregularIsoList", &setIrregular, "values"_a)
      .def("getIsoList", &levelsOf)
      .def("getLowerIsovalue", &PbIsovaluesList::getLowerIsovalue, "value"_a)
      .def("getUpperIsovalue", &PbIsovaluesList::getUpperIsovalue, "value"_a)
      .def("getIndex", &PbIsovaluesList::getIndex, "value"_a)
      .def("__len__", [](const PbIsovaluesList& self) { return levelsOf(self).size(); })
      .def("__iter__", [](const PbIsovaluesList& self) { return py::iter(levelsOf(self)); });
}

void addDomain(py::module_& module) {
  py::class_<PbDomain, PbBase> domain(module, "PbDomain", "The box of user coordinates, and how it is scaled.");
  py::enum_<PbDomain::TransformType>(domain, "TransformType")
      .value("TRANSFORM_01", PbDomain::TRANSFORM_01)
      .value("SCALE_X_FIXED", PbDomain::SCALE_X_FIXED)
      .value("SCALE_Y_FIXED", PbDomain::SCALE_Y_FIXED)
      .value("SCALE_Z_FIXED", PbDomain::SCALE_Z_FIXED)
      .value("SCALE_MAX_XYZ_FIXED", PbDomain::SCALE_MAX_XYZ_FIXED)
      .export_values();
  py::enum_<PbDomain::BoundingBoxType>(domain, "BoundingBoxType")
      .value("BOX_AS_GIVEN", PbDomain::BOX_AS_GIVEN)
      .value("BOX_LARGEST_SIDE", PbDomain::BOX_LARGEST_SIDE)
      .value("BOX_SMALLEST_SIDE", PbDomain::BOX_SMALLEST_SIDE)
      .export_values();
  const auto sidesOf = [](const py::args& sides) {
    // Either the numbers one by one, or two corners as getBoundingBox() of a mesh gives them.
    std::vector<double> box;
    for (const py::handle side : sides) {
      if (py::isinstance<py::sequence>(side) && !py::isinstance<py::str>(side))
        for (const py::handle number : side) box.push_back(numberOf(number, "a side of the domain"));
      else
        box.push_back(numberOf(side, "a side of the domain"));
    }
    return box;
  };
  domain
      .def(py::init([sidesOf](const py::args& sides, PbDomain::BoundingBoxType type) {
             auto made = std::make_unique<PbDomain>();
             if (!sides.empty()) setBox(*made, sidesOf(sides), type);
             return made.release();
           }),
           "type"_a = PbDomain::BOX_AS_GIVEN, "xmin, ymin, xmax, ymax, or the same with z, or two corners.")
      .def(
          "setDomain",
          [sidesOf](PbDomain& self, const py::args& sides, PbDomain::BoundingBoxType type) {
            setBox(self, sidesOf(sides), type);
          },
          "type"_a = PbDomain::BOX_AS_GIVEN)
      .def("getDomain", &limitsOf, "xmin, ymin, zmin, xmax, ymax, zmax.")
      .def("getTransformType", &PbDomain::getTransformType)
      .def("setTransformType", &PbDomain::setTransformType, "type"_a);
}

void addFormats(py::module_& module) {
  py::class_<PbNumericDisplayFormat, PbBase> format(module, "PbNumericDisplayFormat", "How numbers are written.");
  py::enum_<PbNumericDisplayFormat::FormatType>(format, "FormatType")
      .value("AUTO_FORMAT", PbNumericDisplayFormat::AUTO_FORMAT)
      .value("FLOAT_FORMAT", PbNumericDisplayFormat::FLOAT_FORMAT)
      .value("INTEGER_FORMAT", PbNumericDisplayFormat::INTEGER_FORMAT)
      .export_values();
  format.def(py::init<>())
      .def(py::init<PbNumericDisplayFormat::FormatType, int, int>(), "type"_a, "tenPower"_a = 0, "numDecimal"_a = 0)
      .def("setFormat", &PbNumericDisplayFormat::setFormat, "type"_a, "tenPower"_a = 0, "numDecimal"_a = 0)
      .def("getFormat", [](const PbNumericDisplayFormat& self) {
        PbNumericDisplayFormat::FormatType type;
        int tenPower, numDecimal;
        self.getFormat(type, tenPower, numDecimal);
        return py::make_tuple(type, tenPower, numDecimal);
      });

  py::class_<PbDateFormatMapping, PbBase>(module, "PbDateFormatMapping",
                                          "How dates are written, and which coordinate each of them stands at.")
      .def(py::init<>())
      .def(py::init([](const std::string& date1, const std::string& date2, double coord1, double coord2,
                       const std::string& dateFormat) {
             auto mapping = std::make_unique<PbDateFormatMapping>();
             setDateFormat(*mapping, dateFormat);
             setDates(*mapping, date1, date2, coord1, coord2);
             return mapping.release();
           }),
           "date1"_a, "date2"_a, "coord1"_a, "coord2"_a, "format"_a)
      .def("setDateMapping", &setDates, "date1"_a, "date2"_a, "coord1"_a, "coord2"_a)
      .def("getDateMapping",
           [](const PbDateFormatMapping& self) {
             SbString date1, date2;
             float coord1, coord2;
             self.getDateMapping(date1, date2, coord1, coord2);
             return py::make_tuple(date1.getString(), date2.getString(), coord1, coord2);
           })
      .def("setFormat", &setDateFormat, "format"_a)
      .def("getFormat", [](const PbDateFormatMapping& self) { return std::string(self.getFormat().getString()); })
      .def("getCoordinate", &dateCoordinateOf, "date"_a);

  py::class_<PbMiscTextAttr, PbBase>(module, "PbMiscTextAttr", "The look of generated text.")
      .def(py::init([](const std::string& fontName) {
             auto attributes = std::make_unique<PbMiscTextAttr>();
             if (!fontName.empty()) attributes->setFontName(fontName.c_str());
             return attributes.release();
           }),
           "fontName"_a = "")
      .def(
          "setFontName", [](PbMiscTextAttr& self, const std::string& name) { self.setFontName(name.c_str()); },
          "name"_a)
      .def("getFontName", [](const PbMiscTextAttr& self) { return std::string(self.getFontName().getString()); })
      .def("setLineLength", &PbMiscTextAttr::setLineLength, "endLineChar"_a, "length"_a)
      .def(
          "enableProfile", [](PbMiscTextAttr& self, bool on) { self.enableProfile(on); }, "enabled"_a)
      .def(
          "enablePredefinedProfile", [](PbMiscTextAttr& self, bool on) { self.enablePredefinedProfile(on); },
          "enabled"_a)
      .def(
          "enableOutlining", [](PbMiscTextAttr& self, bool on) { self.enableOutlining(on); }, "enabled"_a);
}

}  // namespace

void addData(py::module_& module) {
  module.def(
      "rgb", [](py::handle color) { return tupleOf(colorOf(color, "a colour")); }, "colour"_a);
  py::class_<PbBase>(module, "PbBase", "Root of the data objects. Kits that use one see its changes by themselves.")
      .def("touch", &PbBase::touch, "Says that what the object depends on has changed.");
  addMappings(module);
  addIsovalues(module);
  addDomain(module);
  addFormats(module);
}

}  // namespace python
