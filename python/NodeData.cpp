#include <Inventor/SbName.h>
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

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

#include "Arguments.h"

namespace python {

namespace {

using namespace pybind11::literals;

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

}  // namespace

void addNodeData(py::module_& module) {
  module.def("data_slots", &slotsOf, "class_name"_a);
  module.def("set_data", &setDataOf, "node"_a, "name"_a, "data"_a);
  module.def("get_data", &dataOf, "node"_a, "name"_a);
  module.def("get_given_data", &givenDataOf, "node"_a, "name"_a);
  module.def("get_mesh", &meshOf, "node"_a);
  module.def("num_nodes_with_data", [] { return GivenData::instance().count(); });
}

}  // namespace python
