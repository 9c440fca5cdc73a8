#include <Inventor/SbName.h>
#include <Inventor/fields/SoFields.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/lists/SoTypeList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodekits/SoNodekitCatalog.h>
#include <Inventor/sensors/SoNodeSensor.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoHistogram.h>
#include <Ormelle/PoLegend.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoMesh2D.h>
#include <Ormelle/PoMesh3D.h>
#include <Ormelle/PoMeshContouring.h>
#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoPieChart.h>
#include <Ormelle/PoTimeAxis.h>
#include <Ormelle/PoValueLegend.h>

#include <pybind11/stl.h>

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

#include "Arguments.h"

namespace python {

namespace {

using py::literals::operator""_a;

// ---- Data objects of nodes ------------------------------------------------------------------------------------------

/// Keeps the data objects that nodes were given alive for as long as the nodes live.
class GivenData {
 public:
  static GivenData& instance() {
    static auto* all = new GivenData;  // never destroyed: the interpreter may be gone by then
    return *all;
  }

  void keep(SoNode* node, const std::string& slot, py::object data) {
    Entry& entry = m_nodes[node];
    if (!entry.sensor) {
      entry.sensor = std::make_unique<SoNodeSensor>();
      entry.sensor->setPriority(0);
      entry.sensor->setDeleteCallback(&nodeDies, nullptr);
      entry.sensor->attach(node);
    }
    std::swap(entry.data[slot], data);
  }
  py::object find(SoNode* node, const std::string& slot) const {
    const auto entry = m_nodes.find(node);
    if (entry == m_nodes.end()) return py::none();
    const auto data = entry->second.data.find(slot);
    return data == entry->second.data.end() ? py::object(py::none()) : data->second;
  }
  /// How many nodes have data.
  std::size_t count() const { return m_nodes.size(); }

 private:
  struct Entry {
    std::unique_ptr<SoNodeSensor> sensor;
    std::map<std::string, py::object> data;
  };

  // The node is still whole, and would answer the end of its data; the sensor is in use. Both go a moment later.
  static void nodeDies(void*, SoSensor* sensor) {
    if (!Py_IsInitialized()) return;
    const py::gil_scoped_acquire locked;
    GivenData& all = instance();
    const auto entry = all.m_nodes.find(static_cast<SoNodeSensor*>(sensor)->getAttachedNode());
    if (entry == all.m_nodes.end()) return;
    all.m_leftovers.push_back(std::move(entry->second));
    all.m_nodes.erase(entry);
    if (all.m_isClearing) return;
    all.m_isClearing = Py_AddPendingCall(&clearLeftovers, nullptr) == 0;
  }
  static int clearLeftovers(void*) {
    GivenData& all = instance();
    all.m_isClearing = false;
    const std::vector<Entry> gone = std::exchange(all.m_leftovers, {});
    return 0;
  }

  std::unordered_map<SoNode*, Entry> m_nodes;
  std::vector<Entry> m_leftovers;
  bool m_isClearing = false;
};

/// A data object that nodes of a class take and give.
struct DataSlot {
  SoType (*nodeClass)();
  const char* name;    // of the functions, without "set" and "get"
  const char* wanted;  // class of data
  bool (*set)(SoNode*, PbBase*);
  py::object (*get)(SoNode*);
};

template <class>
struct SetterTypes;
template <class N, class D>
struct SetterTypes<void (N::*)(D*)> {
  using Node = N;
  using Data = D;
};

template <auto setter>
bool setData(SoNode* node, PbBase* object) {
  using Types = SetterTypes<decltype(setter)>;
  auto* data = dynamic_cast<typename Types::Data*>(object);
  if (object && !data) return false;
  (static_cast<typename Types::Node*>(node)->*setter)(data);
  return true;
}

template <class Node, auto getter>
py::object getData(SoNode* node) {
  auto* data = (static_cast<Node*>(node)->*getter)();
  if (!data) return py::none();
  using Data = std::remove_const_t<std::remove_pointer_t<decltype(data)>>;
  // What the node itself holds goes with it; of small objects a copy is as good.
  if constexpr (std::is_copy_constructible_v<Data>) {
    return py::cast(*data, py::return_value_policy::copy);
  } else {
    py::object object = py::cast(data, py::return_value_policy::reference);
    py::detail::keep_alive_impl(object, referenceTo(node));
    return object;
  }
}

#define ORMELLE_DATA_SLOT(Node, Slot, Data) \
  { &Node::getClassTypeId, #Slot, #Data, &setData<&Node::set##Slot>, &getData<Node, &Node::get##Slot> }

// Derived classes first.
const DataSlot kSlots[] = {
    ORMELLE_DATA_SLOT(PoMesh2D, Mesh, PbMesh2D),
    ORMELLE_DATA_SLOT(PoMesh3D, Mesh, PbMesh3D),
    ORMELLE_DATA_SLOT(PoMesh, Mesh, PbMesh),
    ORMELLE_DATA_SLOT(PoMesh, DataMapping, PbDataMapping),
    ORMELLE_DATA_SLOT(PoMesh, ModuleDataMapping, PbDataMapping),
    ORMELLE_DATA_SLOT(PoMesh, IsovaluesList, PbIsovaluesList),
    ORMELLE_DATA_SLOT(PoMeshContouring, Format, PbNumericDisplayFormat),
    ORMELLE_DATA_SLOT(PoMeshContouring, MiscTextAttr, PbMiscTextAttr),
    ORMELLE_DATA_SLOT(PoValueLegend, DataMapping, PbDataMapping),
    ORMELLE_DATA_SLOT(PoValueLegend, IsovaluesList, PbIsovaluesList),
    ORMELLE_DATA_SLOT(PoValueLegend, Format, PbNumericDisplayFormat),
    ORMELLE_DATA_SLOT(PoLegend, MiscTextAttr, PbMiscTextAttr),
    ORMELLE_DATA_SLOT(PoHistogram, DataMapping, PbDataMapping),
    ORMELLE_DATA_SLOT(PoHistogram, MiscTextAttr, PbMiscTextAttr),
    ORMELLE_DATA_SLOT(PoHistogram, Format, PbNumericDisplayFormat),
    ORMELLE_DATA_SLOT(PoPieChart, MiscTextAttr, PbMiscTextAttr),
    ORMELLE_DATA_SLOT(PoPieChart, Format, PbNumericDisplayFormat),
    ORMELLE_DATA_SLOT(PoLinearAxis, Format, PbNumericDisplayFormat),
    ORMELLE_DATA_SLOT(PoTimeAxis, DateFormatMapping, PbDateFormatMapping),
    ORMELLE_DATA_SLOT(PoAxis, MiscTextAttr, PbMiscTextAttr),
    ORMELLE_DATA_SLOT(PoBase, Domain, PbDomain),
};

#undef ORMELLE_DATA_SLOT

const DataSlot& slotOf(const SoNode* node, const std::string& name) {
  const auto* slot = std::find_if(std::begin(kSlots), std::end(kSlots), [&](const DataSlot& each) {
    return name == each.name && node->isOfType(each.nodeClass());
  });
  if (slot == std::end(kSlots))
    throw py::attribute_error(std::string(node->getTypeId().getName().getString()) + " takes no " + name);
  return *slot;
}

void setDataOf(py::handle object, const std::string& name, const py::object& data) {
  SoNode* node = nodeOf(object, "self");
  const DataSlot& slot = slotOf(node, name);
  const std::string wish = std::string(node->getTypeId().getName().getString()) + ".set" + name + " wants a " +
                           slot.wanted + " or None, not " + kindOf(data);
  if (!data.is_none() && !py::isinstance<PbBase>(data)) throw py::type_error(wish);
  if (!slot.set(node, data.is_none() ? nullptr : py::cast<PbBase*>(data))) throw py::type_error(wish);
  GivenData::instance().keep(node, name, data);
}

py::object dataOf(py::handle object, const std::string& name) {
  SoNode* node = nodeOf(object, "self");
  const DataSlot& slot = slotOf(node, name);
  py::object given = GivenData::instance().find(node, name);
  return given.is_none() ? slot.get(node) : given;
}

py::object givenDataOf(py::handle object, const std::string& name) {
  return GivenData::instance().find(nodeOf(object, "self"), name);
}

// The names of the data that nodes of a class take, with the classes of these data.
py::dict slotsOf(const std::string& className) {
  const SoType type = SoType::fromName(className.c_str());
  py::dict slots;
  for (const DataSlot& slot : kSlots)
    if (type.isDerivedFrom(slot.nodeClass()) && !slots.contains(slot.name)) slots[slot.name] = slot.wanted;
  return slots;
}

py::object meshOf(py::handle object) {
  SoNode* node = nodeOf(object, "self");
  if (!node->isOfType(PoMeshProperty::getClassTypeId()))
    throw py::type_error(std::string(node->getTypeId().getName().getString()) + " holds no mesh");
  py::object mesh = py::cast(static_cast<PoMeshProperty*>(node)->getMesh(), py::return_value_policy::reference);
  py::detail::keep_alive_impl(mesh, referenceTo(node));
  return mesh;
}

// ---- Classes of nodes, as the toolkit knows them --------------------------------------------------------------------

// Pairs of class and parent: our nodes that a scene may hold.
std::vector<std::pair<std::string, std::string>> nodeClasses() {
  SoTypeList types;
  SoType::getAllDerivedFrom(SoNode::getClassTypeId(), types);
  std::vector<std::pair<std::string, std::string>> classes;
  for (int t = 0; t < types.getLength(); ++t) {
    const std::string name = types[t].getName().getString();
    // The toolkit leaves "So" away, so that PointLight and its like come along; none has a capital there.
    if (name.size() > 2 && name.rfind("Po", 0) == 0 && name[2] >= 'A' && name[2] <= 'Z')
      classes.emplace_back(name, types[t].getParent().getName().getString());
  }
  return classes;
}

std::string classNameOf(py::handle object) { return nodeOf(object, "the node")->getTypeId().getName().getString(); }

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

// What the fields and parts of a class are. Those of an abstract class are what all classes derived from it share.
py::dict describe(const std::string& className) {
  const SoType type = SoType::fromName(className.c_str());
  if (type.isBad()) throw py::key_error("there is no class of nodes called " + className);
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

py::object makeNode(const std::string& className) {
  const SoType type = SoType::fromName(className.c_str());
  if (type.isBad() || !type.canCreateInstance())
    throw py::type_error(className + " is an abstract class: make a node of a class derived from it");
  auto* node = static_cast<SoNode*>(type.createInstance());
  if (!node) throw std::bad_alloc();
  return proxyOf(node);
}

// ---- Fields ---------------------------------------------------------------------------------------------------------

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
           setColors() || setStrings();
  }

 private:
  template <class Field>
  Field* as() const {
    return m_field.isOfType(Field::getClassTypeId()) ? static_cast<Field*>(&m_field) : nullptr;
  }
  [[noreturn]] void refuse(const std::string& wanted) const {
    throw py::type_error(m_name + " wants " + wanted + ", not " + kindOf(m_value));
  }
  std::string shown() const { return py::cast<std::string>(py::repr(m_value)); }

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
    field->setValue(py::cast<std::string>(m_value).c_str());
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
    const IntArray numbers(given);
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
      texts.emplace_back(py::cast<std::string>(m_value).c_str());
    } else {
      if (!py::isinstance<py::sequence>(m_value)) refuse("a list of texts");
      for (const py::handle text : m_value) {
        if (!py::isinstance<py::str>(text)) throw py::type_error(m_name + " wants texts, not " + kindOf(text));
        texts.emplace_back(py::cast<std::string>(text).c_str());
      }
    }
    replaceAll(*field, static_cast<int>(texts.size()), texts.data());
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

// ---- Functions of kits ----------------------------------------------------------------------------------------------

template <class Node>
Node* nodeAs(py::handle object, const char* function) {
  SoNode* node = nodeOf(object, "self");
  if (!node->isOfType(Node::getClassTypeId()))
    throw py::type_error(std::string(node->getTypeId().getName().getString()) + " has no " + function);
  return static_cast<Node*>(node);
}

void addKitFunctions(py::module_& module) {
  py::module_ kits = module.def_submodule("kit_functions", "Functions of all kits, which take the kit first.");
  kits.def(
      "rebuild", [](py::handle kit) { nodeAs<PoBase>(kit, "rebuild")->rebuild(); },
      "Makes the parts from the current inputs, without attribute nodes of a scene.");
  kits.def("touchKit", [](py::handle kit) { nodeAs<PoBase>(kit, "touchKit")->touchKit(); });
  kits.def("isModified", [](py::handle kit) { return nodeAs<PoBase>(kit, "isModified")->isModified() != 0; });
  kits.def("isBuilt", [](py::handle kit) { return nodeAs<PoBase>(kit, "isBuilt")->isBuilt() != 0; });
  kits.def("enableDomainTransform", [](py::handle kit, bool enabled) {
    nodeAs<PoBase>(kit, "enableDomainTransform")->enableDomainTransform(enabled);
  });
  kits.def("setUpdateMethod", [](py::handle kit, bool atTraversal) {
    nodeAs<PoBase>(kit, "setUpdateMethod")
        ->setUpdateMethod(atTraversal ? PoBase::UPDATE_AT_TRAVERSAL : PoBase::UPDATE_IMMEDIATE);
  });
}

}  // namespace

void addNodes(py::module_& module) {
  module.def("node_classes", &nodeClasses);
  module.def("class_name", &classNameOf, "node"_a);
  module.def("describe", &describe, "class_name"_a);
  module.def("make_node", &makeNode, "class_name"_a);
  module.def("data_slots", &slotsOf, "class_name"_a);
  module.def("set_data", &setDataOf, "node"_a, "name"_a, "data"_a);
  module.def("get_data", &dataOf, "node"_a, "name"_a);
  module.def("get_given_data", &givenDataOf, "node"_a, "name"_a);
  module.def(
      "make_proxy", [](py::handle node) { return proxyOf(nodeOf(node, "the node")); }, "node"_a);
  module.def("get_mesh", &meshOf, "node"_a);
  module.def("set_field", &setField, "node"_a, "name"_a, "value"_a);
  module.def("num_nodes_with_data", [] { return GivenData::instance().count(); });
  module.def("set_num_threads", &PoBase::setNumThreads, "num"_a, "How many threads a rebuild may use; 0: one a core.");
  module.def("get_num_threads", &PoBase::getNumThreads);
  addKitFunctions(module);
}

}  // namespace python
