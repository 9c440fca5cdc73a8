#include <Inventor/SbName.h>
#include <Inventor/fields/SoMField.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/lists/SoTypeList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodekits/SoNodekitCatalog.h>

#include <pybind11/stl.h>

#include <algorithm>
#include <utility>

#include "Arguments.h"

namespace python {

namespace {

using namespace pybind11::literals;

bool isOurs(const std::string& name) {
  // The toolkit leaves "So" away, so that PointLight and its like come along; none has a capital there.
  return name.size() > 2 && name.rfind("Po", 0) == 0 && name[2] >= 'A' && name[2] <= 'Z';
}

// Pairs of class and parent: our nodes that a scene may hold.
std::vector<std::pair<std::string, std::string>> nodeClasses() {
  SoTypeList types;
  SoType::getAllDerivedFrom(SoNode::getClassTypeId(), types);
  std::vector<std::pair<std::string, std::string>> classes;
  for (int t = 0; t < types.getLength(); ++t) {
    const std::string name = types[t].getName().getString();
    if (isOurs(name)) classes.emplace_back(name, types[t].getParent().getName().getString());
  }
  return classes;
}

// The nearest class of ours that a node is of; empty if there is none.
std::string classNameOf(py::handle object) {
  for (SoType type = nodeOf(object, "the node")->getTypeId(); !type.isBad(); type = type.getParent())
    if (isOurs(type.getName().getString())) return type.getName().getString();
  return "";
}

// Objects of all classes that can be made and are, or are derived from, this one.
std::vector<SoNode*> samplesOf(SoType type) {
  std::vector<SoNode*> samples;
  SoTypeList types;
  SoType::getAllDerivedFrom(type, types);
  if (type.canCreateInstance()) {
    types.truncate(0);
    types.append(type);
  }
  for (int t = 0; t < types.getLength(); ++t)
    if (types[t].canCreateInstance())
      if (auto* node = static_cast<SoNode*>(types[t].createInstance())) {
        node->ref();
        samples.push_back(node);
      }
  return samples;
}

// What the fields and parts of a class are. Those of an abstract class are what all classes derived from it share.
py::dict describe(const std::string& className) {
  const SoType type = SoType::fromName(className.c_str());
  if (type.isBad() || !type.isDerivedFrom(SoNode::getClassTypeId()))
    throw py::key_error("there is no class of nodes called " + className);
  const std::vector<SoNode*> samples = samplesOf(type);
  py::dict fields, parts;
  if (!samples.empty()) {
    SoNode* first = samples.front();
    const SoNodekitCatalog* catalog =
        first->isOfType(SoBaseKit::getClassTypeId()) ? static_cast<SoBaseKit*>(first)->getNodekitCatalog() : nullptr;
    SoFieldList all;
    first->getFields(all);
    for (int f = 0; f < all.getLength(); ++f) {
      SbName name;
      if (!first->getFieldName(all[f], name)) continue;
      if (!std::all_of(samples.begin(), samples.end(), [&](SoNode* node) { return node->getField(name); })) continue;
      const int part = catalog ? catalog->getPartNumber(name) : SO_CATALOG_NAME_NOT_FOUND;
      if (part != SO_CATALOG_NAME_NOT_FOUND) {
        if (catalog->isPublic(part)) parts[name.getString()] = catalog->getType(part).getName().getString();
        continue;
      }
      SbString text;
      if (!all[f]->isOfType(SoSFNode::getClassTypeId())) all[f]->get(text);
      fields[name.getString()] =
          py::make_tuple(all[f]->getTypeId().getName().getString(), text.getString(), enumOf(*all[f]));
    }
  }
  for (SoNode* node : samples) node->unref();
  py::dict description;
  description["fields"] = fields;
  description["parts"] = parts;
  description["isAbstract"] = !type.canCreateInstance();
  return description;
}

// The fields that aren't at their defaults, with their values as short texts.
py::dict changedFields(py::handle object) {
  constexpr int kLongest = 40;
  const SoNode* node = nodeOf(object, "the node");
  py::dict changed;
  SoFieldList all;
  node->getFields(all);
  for (int f = 0; f < all.getLength(); ++f) {
    SbName name;
    if (all[f]->isDefault() || all[f]->isOfType(SoSFNode::getClassTypeId()) || !node->getFieldName(all[f], name))
      continue;
    const bool isLong = all[f]->isOfType(SoMField::getClassTypeId()) && static_cast<SoMField*>(all[f])->getNum() > 4;
    SbString text;
    if (!isLong) all[f]->get(text);
    changed[name.getString()] = isLong || text.getLength() > kLongest ? "..." : text.getString();
  }
  return changed;
}

py::object makeNode(const std::string& className) {
  const SoType type = SoType::fromName(className.c_str());
  if (type.isBad() || !type.canCreateInstance())
    throw py::type_error(className + " is an abstract class: make a node of a class derived from it");
  auto* node = static_cast<SoNode*>(type.createInstance());
  if (!node) throw std::bad_alloc();
  return proxyOf(node);
}

}  // namespace

void addNodes(py::module_& module) {
  module.def("node_classes", &nodeClasses);
  module.def("class_name", &classNameOf, "node"_a);
  module.def("describe", &describe, "class_name"_a);
  module.def("changed_fields", &changedFields, "node"_a);
  module.def("make_node", &makeNode, "class_name"_a);
  module.def(
      "make_proxy", [](py::handle node) { return proxyOf(nodeOf(node, "the node")); }, "node"_a);
}

}  // namespace python
