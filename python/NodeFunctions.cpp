#include <Inventor/SbName.h>
#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoShape.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoHistogram.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLogAxis.h>
#include <Ormelle/PoMesh.h>
#include <Ormelle/PoMeshCrossSection.h>
#include <Ormelle/PoPieChart.h>

#include <pybind11/stl.h>

#include <utility>

#include "Arguments.h"

// Functions of nodes that are no setters of data objects. Python's classes of nodes take them over by their name.

namespace python {

namespace {

using namespace pybind11::literals;

/// What one class of nodes has, and those derived from it.
class Members {
 public:
  Members(py::module_& module, py::dict& all, const char* className) : m_module(module) { all[className] = m_members; }

  /// `call` takes the node first, and has `arguments` behind it.
  template <class Node, class Result, class... Arguments, class... Extra>
  Members& function(const char* name, Result (*call)(Node&, Arguments...), const Extra&... extra) {
    const auto ofNode = [name, call](py::handle self, Arguments... arguments) -> Result {
      SoNode* node = nodeOf(self, "self");
      if (!node->isOfType(Node::getClassTypeId()))
        throw py::type_error(std::string(node->getTypeId().getName().getString()) + " has no " + name);
      return call(static_cast<Node&>(*node), std::forward<Arguments>(arguments)...);
    };
    m_members[name] = py::cpp_function(ofNode, py::name(name), py::is_method(m_module), extra...);
    return *this;
  }
  Members& value(const char* name, int number) {
    m_members[name] = number;
    return *this;
  }

 private:
  py::module_& m_module;
  py::dict m_members;
};

// ---- All kits -------------------------------------------------------------------------------------------------------

void addTexts(SoNode& node, std::vector<std::string>& texts) {
  if (const auto* strings = dynamic_cast<SoMFString*>(node.getField("string"));
      strings && node.isOfType(SoShape::getClassTypeId())) {
    std::string text;
    for (int line = 0; line < strings->getNum(); ++line)
      text += (line > 0 ? "\n" : "") + std::string((*strings)[line].getString());
    texts.push_back(std::move(text));
  }
  const SoChildList* children = node.getChildren();
  for (int c = 0; children && c < children->getLength(); ++c) addTexts(*(*children)[c], texts);
}

std::vector<std::string> textsOf(PoBase& kit, const std::string& part) {
  std::vector<std::string> texts;
  if (part.empty()) {
    addTexts(kit, texts);
  } else {
    if (kit.getNodekitCatalog()->getPartNumber(part.c_str()) == SO_CATALOG_NAME_NOT_FOUND)
      throw py::value_error(std::string(kit.getTypeId().getName().getString()) + " has no part called \"" + part +
                            "\"");
    if (SoNode* node = kit.getPart(part.c_str(), FALSE)) addTexts(*node, texts);
  }
  return texts;
}

void addKits(py::module_& module, py::dict& all) {
  Members(module, all, "PoBase")
      .value("UPDATE_IMMEDIATE", PoBase::UPDATE_IMMEDIATE)
      .value("UPDATE_AT_TRAVERSAL", PoBase::UPDATE_AT_TRAVERSAL)
      .function(
          "rebuild", +[](PoBase& kit) { kit.rebuild(); },
          "Makes the parts from the current inputs, without attribute nodes of a scene.")
      .function(
          "touchKit", +[](PoBase& kit) { kit.touchKit(); }, "Says that what the kit depends on has changed.")
      .function(
          "isModified", +[](PoBase& kit) { return kit.isModified() != 0; }, "Whether a rebuild is pending.")
      .function(
          "isBuilt", +[](PoBase& kit) { return kit.isBuilt() != 0; }, "Whether a rebuild has completed once.")
      .function(
          "enableDomainTransform", +[](PoBase& kit, bool enabled) { kit.enableDomainTransform(enabled); }, "enabled"_a,
          "Whether the kit keeps its part `domainTransform` up to date; on at first.")
      .function(
          "setUpdateMethod",
          +[](PoBase& kit, int method) {
            if (method != PoBase::UPDATE_IMMEDIATE && method != PoBase::UPDATE_AT_TRAVERSAL)
              throw py::value_error("an update method is UPDATE_IMMEDIATE or UPDATE_AT_TRAVERSAL");
            kit.setUpdateMethod(static_cast<PoBase::UpdateMethodType>(method));
          },
          "method"_a, "UPDATE_AT_TRAVERSAL, the default, or UPDATE_IMMEDIATE: at each change.")
      .function(
          "getUpdateMethod", +[](PoBase& kit) { return static_cast<int>(kit.getUpdateMethod()); })
      .function("texts", &textsOf, "part"_a = "",
                "All texts that the last rebuild wrote, or those in one part, such as \"mainGradText\" of an axis.");

  Members(module, all, "PoMesh")
      .function(
          "getMemorySize", +[](PoMesh& kit) { return kit.getMemorySize(); },
          "Bytes of the buffers that the kit keeps from one rebuild to the next.");
  Members(module, all, "PoMeshCrossSection")
      .value("AUTOMATIC", PoMeshCrossSection::AUTOMATIC)
      .value("ISOSURFACE", PoMeshCrossSection::ISOSURFACE)
      .value("INTERSECTION", PoMeshCrossSection::INTERSECTION)
      .function(
          "setCrossSectionMethod",
          +[](PoMeshCrossSection& kit, int method) {
            if (method < PoMeshCrossSection::AUTOMATIC || method > PoMeshCrossSection::INTERSECTION)
              throw py::value_error("a method of sections is AUTOMATIC, ISOSURFACE or INTERSECTION");
            kit.setCrossSectionMethod(static_cast<PoMeshCrossSection::CrossSectionMethod>(method));
          },
          "method"_a, "Which method is used, from the next rebuild on.")
      .function(
          "getCrossSectionMethod",
          +[](PoMeshCrossSection& kit) { return static_cast<int>(kit.getCrossSectionMethod()); });
  Members(module, all, "PoCellFilter")
      .function(
          "acceptCell",
          +[](PoCellFilter& filter, int cell, float value) { return filter.acceptCell(cell, value) != 0; }, "cell"_a,
          "value"_a = 0.0F, "Whether a cell with this value is shown.");
}

// ---- Axes -----------------------------------------------------------------------------------------------------------

FloatArray coordsOf(int num, const float* coords) { return FloatArray(coords ? num : 0, coords); }

py::dict gradOf(PoAxis& axis) {
  PoAxis::Visibility visibility;
  PoAxis::GradPosition position;
  PoAxis::TextPath path;
  SbString fontName, addString;
  float fontSize, distAxis;
  int addStringVisibility;
  axis.getGrad(visibility, position, path, fontName, fontSize, distAxis, addStringVisibility, addString);
  return py::dict("visibility"_a = static_cast<int>(visibility), "position"_a = static_cast<int>(position),
                  "path"_a = static_cast<int>(path), "fontName"_a = fontName.getString(), "fontSize"_a = fontSize,
                  "distAxis"_a = distAxis, "addStringVisibility"_a = addStringVisibility != 0,
                  "addString"_a = addString.getString());
}

py::dict titleOf(PoAxis& axis) {
  PoAxis::Visibility visibility;
  PoAxis::TitlePosition position;
  PoAxis::TextPath path;
  SbString fontName, title;
  float fontSize, distAxis;
  axis.getTitle(visibility, position, path, fontName, fontSize, distAxis, title);
  return py::dict("visibility"_a = static_cast<int>(visibility), "position"_a = static_cast<int>(position),
                  "path"_a = static_cast<int>(path), "fontName"_a = fontName.getString(), "fontSize"_a = fontSize,
                  "distAxis"_a = distAxis, "string"_a = title.getString());
}

py::dict marginOf(PoAxis& axis) {
  PoAxis::MarginType type;
  float start, end;
  axis.getMargin(type, start, end);
  return py::dict("type"_a = static_cast<int>(type), "start"_a = start, "end"_a = end);
}

py::dict gridOf(PoAxis& axis) {
  PoAxis::Visibility visibility;
  float gradSide, otherSide;
  axis.getGrid(visibility, gradSide, otherSide);
  return py::dict("visibility"_a = static_cast<int>(visibility), "lengthGradSide"_a = gradSide,
                  "lengthGradOtherSide"_a = otherSide);
}

py::dict arrowOf(PoAxis& axis) {
  PoAxis::Visibility visibility;
  float height, length;
  axis.getArrow(visibility, height, length);
  return py::dict("visibility"_a = static_cast<int>(visibility), "height"_a = height, "length"_a = length);
}

py::dict tickOf(PoAxis& axis) {
  PoAxis::Visibility visibility;
  PoAxis::TickPosition position;
  PoAxis::TickSubDef subDef;
  float mainLength, subLength;
  unsigned short numOrPeriod, first, last;
  axis.getTick(visibility, position, mainLength, subLength, subDef, numOrPeriod, first, last);
  return py::dict("visibility"_a = static_cast<int>(visibility), "position"_a = static_cast<int>(position),
                  "mainLength"_a = mainLength, "subLength"_a = subLength, "subDef"_a = static_cast<int>(subDef),
                  "numOrPeriod"_a = numOrPeriod, "firstGrad"_a = first, "lastGrad"_a = last);
}

template <class Axis>
py::dict multFactorOf(Axis& axis) {
  typename Axis::MultFactorPosition position;
  float distAxis;
  axis.getMultFactor(position, distAxis);
  return py::dict("position"_a = static_cast<int>(position), "distAxis"_a = distAxis);
}

py::dict logGradOf(PoLogAxis& axis) {
  unsigned short num, list[PoLogAxis::MAX_DECADE_LIST];
  PoLogAxis::TenPowGradRep powerRep;
  PoLogAxis::DecadeRep digitRep;
  SbString fontName;
  float fontSize;
  axis.getLogGrad(num, list, powerRep, digitRep, fontName, fontSize);
  return py::dict("digits"_a = std::vector<int>(list, list + num), "tenPowerRep"_a = static_cast<int>(powerRep),
                  "decadeRep"_a = static_cast<int>(digitRep), "fontName"_a = fontName.getString(),
                  "fontSize"_a = fontSize);
}

void addAxes(py::module_& module, py::dict& all) {
  Members(module, all, "PoAxis")
      .value("LEGIBILITY_OFF", PoAxis::LEGIBILITY_OFF)
      .value("LEGIBILITY_ON", PoAxis::LEGIBILITY_ON)
      .value("LEGIBILITY_DEPEND", PoAxis::LEGIBILITY_DEPEND)
      .function(
          "setGradLegibility",
          +[](PoAxis& axis, int legibility) {
            if (legibility < PoAxis::LEGIBILITY_OFF || legibility > PoAxis::LEGIBILITY_DEPEND)
              throw py::value_error("a legibility is LEGIBILITY_OFF, LEGIBILITY_ON or LEGIBILITY_DEPEND");
            axis.setGradLegibility(static_cast<PoAxis::GradLegibility>(legibility));
          },
          "legibility"_a, "Whether texts that would overlap are thinned out and shrunk.")
      .function(
          "getGradLegibility", +[](PoAxis& axis) { return static_cast<int>(axis.getGradLegibility()); })
      .function("getGrad", &gradOf, "What the last rebuild chose for gradation texts, by name.")
      .function("getTitle", &titleOf, "What the last rebuild chose for the title, by name.")
      .function("getMargin", &marginOf, "What the last rebuild chose for margins, by name.")
      .function("getGrid", &gridOf, "What the last rebuild chose for grid lines, by name.")
      .function("getArrow", &arrowOf, "What the last rebuild chose for the arrow, by name.")
      .function("getTick", &tickOf, "What the last rebuild chose for ticks, by name.")
      .function(
          "getReverseFlag", +[](PoAxis& axis) { return static_cast<int>(axis.getReverseFlag()); })
      .function(
          "getMainGradCoords",
          +[](PoAxis& axis) {
            const float* coords;
            const int num = axis.getMainGradCoords(coords);
            return coordsOf(num, coords);
          },
          "The coordinates of the main gradations of the last rebuild, along the axis; their texts are "
          "texts(\"mainGradText\").")
      .function(
          "getSubGradCoords",
          +[](PoAxis& axis) {
            const float* coords;
            const int num = axis.getSubGradCoords(coords);
            return coordsOf(num, coords);
          },
          "The coordinates of the gradations in between.");
  Members(module, all, "PoLinearAxis")
      .function(
          "getStep", +[](PoLinearAxis& axis) { return axis.getStep(); }, "The step between gradations.")
      .function("getMultFactor", &multFactorOf<PoLinearAxis>, "What was chosen for the multiplier, by name.");
  Members(module, all, "PoLogAxis")
      .function("getLogGrad", &logGradOf, "What was chosen for digits in decades, by name.")
      .function("getMultFactor", &multFactorOf<PoLogAxis>, "What was chosen for the multiplier, by name.");
}

// ---- Charts ---------------------------------------------------------------------------------------------------------

void addCharts(py::module_& module, py::dict& all) {
  Members(module, all, "PoHistogram")
      .function(
          "getPickedBarNumber",
          +[](PoHistogram& bars, py::handle point) -> py::object {
            int number;
            const auto* picked = pointerOf<SoPickedPoint>(point, "SoPickedPoint", "the point");
            return bars.getPickedBarNumber(picked, number) ? py::object(py::int_(number)) : py::none();
          },
          "point"_a, "The index of the bar that Pivy's SoPickedPoint is on; None if it is on none.");
  Members(module, all, "PoPieChart")
      .function(
          "getPickedSliceNumber",
          +[](PoPieChart& pie, py::handle path) -> py::object {
            int number;
            const auto* picked = pointerOf<SoPath>(path, "SoPath", "the path");
            return pie.getPickedSliceNumber(picked, number) ? py::object(py::int_(number)) : py::none();
          },
          "path"_a, "The number of the slice that a picked path leads to, -1 for the group; None if to none.")
      .function(
          "setSliceToTranslate",
          +[](PoPieChart& pie, int number, double distance) {
            pie.setSliceToTranslate(number, finite(distance, "the distance"));
          },
          "number"_a, "distance"_a, "Pulls a slice out by a distance, or puts it back with 0.")
      .function(
          "getSliceToTranslate", +[](PoPieChart& pie, int number) { return pie.getSliceToTranslate(number); },
          "number"_a, "How far a slice is pulled out.");
}

}  // namespace

void addNodeFunctions(py::module_& module) {
  py::dict all;
  addKits(module, all);
  addAxes(module, all);
  addCharts(module, all);
  module.attr("node_members") = all;
  module.def("set_num_threads", &PoBase::setNumThreads, "num"_a, "How many threads a rebuild may use; 0: one a core.");
  module.def("get_num_threads", &PoBase::getNumThreads);
}

}  // namespace python
