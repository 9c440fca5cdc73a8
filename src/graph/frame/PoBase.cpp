#include <Ormelle/PoBase.h>

#include <algorithm>

#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/elements/SoTextOutlineEnabledElement.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/sensors/SoFieldSensor.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>

#include "graph/frame/PiLibrary.h"
#include "graph/frame/PiParallel.h"
#include "graph/frame/PoBaseSavedFlags.h"

PO_KIT_ABSTRACT_SOURCE(PoBase)

PoBase::NodeWriteFormat PoBase::m_nodeWriteFormat = PoBase::WRITE_FIELDS;
PoBase::TextType PoBase::m_textType = PoBase::TEXT_ANNOTATION;
int PoBase::m_isVRML2Mode = 0;

/// Holds the kit's notification back: parts that a traversal replaces are no news to anybody.
class PoBase::Quiet {
 public:
  explicit Quiet(PoBase& kit) : m_kit(kit), m_wasEnabled(kit.enableNotify(FALSE)) {}
  ~Quiet() { m_kit.enableNotify(m_wasEnabled); }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  PoBase& m_kit;
  SbBool m_wasEnabled;
};

// --- the library as a whole -----------------------------------------------------------------------------------------

void PoBase::init() { PiLibrary::init(); }
int PoBase::isInitialized() { return PiLibrary::isInitialized(); }
void PoBase::finish() { PiLibrary::finish(); }

void PoBase::setNumThreads(int num) { PiParallel::setNumThreads(num); }
int PoBase::getNumThreads() { return PiParallel::numThreads(); }

void* PoBase::operator new(std::size_t size) {
  PiLibrary::retain();
  return ::operator new(size);
}

void PoBase::operator delete(void* memory) {
  ::operator delete(memory);
  PiLibrary::release();
}

// --- life -----------------------------------------------------------------------------------------------------------

PoBase::PoBase(void (*catchActionFunction)(void*, SoAction*)) : m_customCatchActionCB(catchActionFunction) {
  PO_KIT_CONSTRUCTOR(PoBase);
  PO_KIT_ADD_CATALOG_ENTRY(catchActionCallback, SoCallback, this);
  PO_KIT_ADD_CATALOG_ENTRY(alternateRep, SoSeparator, this);
  PO_KIT_ADD_CATALOG_ENTRY(catchActionLevel2Callback, SoCallback, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(appearance, SoAppearanceKit, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(domainTransform, SoMatrixTransform, alternateRep);
  PO_KIT_CONSTRUCTED(PoBase);
  // This makes alternateRep too. It must stand before any traversal: one that is already under way doesn't see a child
  // that the rebuild adds to the kit itself.
  connectCallbackParts();
}

PoBase::~PoBase() {
  deleteFieldSensorList(&m_watchSensors);
  setPart("catchActionCallback", nullptr);
  setPart("catchActionLevel2Callback", nullptr);
  m_domain->removeConnection(this);
  if (m_allCache) m_allCache->unref();
  if (m_domainCache) m_domainCache->unref();
}

void PoBase::connectCallbackParts() {
  setPart("catchActionCallback", nullptr);
  setPart("catchActionLevel2Callback", nullptr);
  auto* first = static_cast<SoCallback*>(getAnyPart("catchActionCallback", TRUE));
  first->setCallback(m_customCatchActionCB ? m_customCatchActionCB : &PoBase::catchActionCB, this);
  auto* second = static_cast<SoCallback*>(getAnyPart("catchActionLevel2Callback", TRUE));
  second->setCallback(&PoBase::catchActionLevel2CB, nullptr);
}

// An application may put a node of its own in place of a part that holds others, with setPart() or through the field.
// The toolkit still counts those as parts, and removes or inserts at place -1 of a group that hasn't got them.
void PoBase::dropStrayParts(int parentNumber) {
  const SoNodekitCatalog& catalog = *getNodekitCatalog();
  if (parentNumber > 0) dropStrayParts(catalog.getParentPartNumber(parentNumber));
  const auto partAt = [&](int number) { return static_cast<SoSFNode*>(getField(catalog.getName(number))); };
  SoNode* parent = parentNumber > 0 ? partAt(parentNumber)->getValue() : this;
  const SoChildList* present = parent ? parent->getChildren() : nullptr;
  for (int number = 1; number < catalog.getNumEntries(); ++number) {
    SoSFNode* part = catalog.getParentPartNumber(number) == parentNumber ? partAt(number) : nullptr;
    if (!part || !part->getValue() || (present && present->find(part->getValue()) >= 0)) continue;
    const Quiet quiet(*this);
    part->setValue(nullptr);
  }
}

SbBool PoBase::setPart(int partNumber, SoNode* node) {
  const int parentNumber = getNodekitCatalog()->getParentPartNumber(partNumber);
  if (parentNumber >= 0) dropStrayParts(parentNumber);
  return SoBaseKit::setPart(partNumber, node);
}

SbBool PoBase::setUpConnections(SbBool onOff, SbBool doItAlways) {
  if (!doItAlways && onOff == connectionsSetUp) return onOff;
  SoBaseKit::setUpConnections(onOff, doItAlways);
  if (onOff) {
    m_isAnyFieldsHasChanged = 1;
    noteChange(nullptr);
    rebuildOrMark();
    if (m_watchSensors.count != m_watchedFields.getLength()) {
      deleteFieldSensorList(&m_watchSensors);
      createFieldSensorList(m_watchedFields.getLength(), &m_watchSensors);
    }
    attachFieldSensorList(m_watchSensors, m_watchedFields);
  } else {
    detachFieldSensorList(m_watchSensors);
  }
  connectionsSetUp = onOff;
  return !onOff;
}

// --- the rebuild cycle ----------------------------------------------------------------------------------------------

void PoBase::catchActionCB(void* kit, SoAction* action) { static_cast<PoBase*>(kit)->lookForChanges(action); }

void PoBase::catchAction(SoAction* action) {
  (m_customCatchActionCB ? m_customCatchActionCB : &PoBase::catchActionCB)(this, action);
}

void PoBase::lookForChanges(SoAction* action) {
  if (action->isOfType(SoSearchAction::getClassTypeId()) && static_cast<SoSearchAction*>(action)->isSearchingAll())
    return;

  SbThreadAutoLock lock(&classMutex);
  setState(action);
  addElementsAllCaches();
  if (!m_isGeometryFromFile || m_isModified) rebuildIfStale();
  m_isStateValid = 0;
  m_state = nullptr;
}

void PoBase::rebuildIfStale() {
  m_isCacheValid = m_allCache && m_allCache->isValid(m_state);
  const bool isDomainCurrent = m_domainCache && m_domainCache->isValid(m_state);
  if (!m_isModified && m_isCacheValid && isDomainCurrent) return;

  if (!isDomainCurrent) {
    refreshDomainTransform();
    if (!m_isDomainUsedForRebuild && !m_isModified && m_isCacheValid) return;
  }
  if (!m_isCacheValid || m_isCacheAlwaysRebuild) {
    rebuildCache(&m_allCache);
    m_isCacheValid = 0;
  }
  Quiet quiet(*this);
  rebuildNow();
  m_isCacheValid = 1;
}

void PoBase::refreshDomainTransform() {
  Quiet quiet(*this);
  setDomainTransform(getDomain());
  rebuildCache(&m_domainCache);
  m_domainCache->addElement(m_state->getConstElement(PoDomainElement::getClassStackIndex()));
}

void PoBase::rebuildCache(SoCache** cache) {
  // The cache leaves out elements that were set at its own depth or below: hence a depth of its own.
  m_state->push();
  if (*cache) (*cache)->unref();
  *cache = new SoCache(m_state);
  (*cache)->ref();
  m_state->pop();
}

void PoBase::setState(SoAction* action) {
  m_state = action->getState();
  m_isStateValid = 1;
}

void PoBase::rebuildNow() {
  rebuild();
  m_isModified = 0;
  m_isGeometryFromFile = 0;
}

void PoBase::rebuildOrMark() {
  if (m_updateMethod == UPDATE_IMMEDIATE)
    rebuildNow();
  else
    m_isModified = 1;
}

void PoBase::touchKit() {
  noteChange(nullptr);
  rebuildOrMark();
  if (m_isModified) touch();
}

void PoBase::rebuild() {}

void PoBase::preRebuild() {
  if (m_preRebuildCB) m_preRebuildCB(m_preRebuildData, this);
}

void PoBase::postRebuild() {
  m_isBuilt = 1;
  m_isModified = 0;
  m_isAnyFieldsHasChanged = 0;
  if (m_postRebuildCB) m_postRebuildCB(m_postRebuildData, this);
}

void PoBase::addElementsAllCaches() { PoDomainElement::get(m_state); }

void PoBase::addPreRebuildCallback(RebuildCallback* function, void* data) {
  m_preRebuildCB = function;
  m_preRebuildData = data;
}

void PoBase::addPostRebuildCallback(RebuildCallback* function, void* data) {
  m_postRebuildCB = function;
  m_postRebuildData = data;
}

void PoBase::removePreRebuildCallback(RebuildCallback* function, void* data) {
  if (m_preRebuildCB == function && m_preRebuildData == data) addPreRebuildCallback(nullptr, nullptr);
}

void PoBase::removePostRebuildCallback(RebuildCallback* function, void* data) {
  if (m_postRebuildCB == function && m_postRebuildData == data) addPostRebuildCallback(nullptr, nullptr);
}

// --- watched fields -------------------------------------------------------------------------------------------------

void PoBase::fieldSensorCB(void* kitPointer, SoSensor* sensor) {
  auto* kit = static_cast<PoBase*>(kitPointer);
  if (sensor) kit->noteChange(static_cast<SoFieldSensor*>(sensor)->getAttachedField());
  kit->m_isAnyFieldsHasChanged = 1;
  // No touch: the field has notified the kit already.
  kit->rebuildOrMark();
}

void PoBase::noteChange(SoField* field) {
  if (m_storeFieldsChanged && m_listFieldsChanged.find(field) < 0) m_listFieldsChanged.append(field);
}

void PoBase::createFieldSensorList(int count, FieldSensorList* list) {
  list->count = count;
  list->sensors = new SoFieldSensor*[static_cast<std::size_t>(count)];
  for (int i = 0; i < count; ++i) {
    list->sensors[i] = new SoFieldSensor(&PoBase::fieldSensorCB, this);
    list->sensors[i]->setPriority(0);
  }
}

void PoBase::deleteFieldSensorList(FieldSensorList* list) {
  for (int i = 0; i < list->count; ++i) delete list->sensors[i];
  delete[] list->sensors;
  *list = FieldSensorList();
}

void PoBase::attachFieldSensorList(const FieldSensorList& list, const SoFieldList& fields) {
  for (int i = 0; i < list.count && i < fields.getLength(); ++i) list.sensors[i]->attach(fields[i]);
}

void PoBase::detachFieldSensorList(const FieldSensorList& list) {
  for (int i = 0; i < list.count; ++i)
    if (list.sensors[i]->getAttachedField()) list.sensors[i]->detach();
}

int PoBase::isFieldHasChanged(const SoField* field) const {
  return m_listFieldsChanged.find(const_cast<SoField*>(field)) >= 0;
}

int PoBase::haveOnlyFieldsChanged(std::initializer_list<const SoField*> fields) const {
  for (int i = 0; i < m_listFieldsChanged.getLength(); ++i)
    if (std::find(fields.begin(), fields.end(), m_listFieldsChanged[i]) == fields.end()) return 0;
  return m_listFieldsChanged.getLength() > 0;
}

// --- data objects ---------------------------------------------------------------------------------------------------

void PoBase::changeConnection(PbBase* oldObject, PbBase* newObject) {
  if (oldObject) oldObject->removeConnection(this);
  if (newObject) newObject->addConnection(this);
}

void PoBase::manageBasicObjectChange(PbBase* object, PbBase** held) {
  if (object->getChangeType() == PbBase::OBJECT_DELETED) {
    if (!*held) return;
    *held = nullptr;
  }
  touchKit();
}

void PoBase::basicObjectChange(PbBase* object) {
  if (object != m_domain) return;
  const PbBase::ChangeType change = object->getChangeType();
  if (change == PbBase::OBJECT_DELETED) {
    // Only the address of the object is still good: the kit is on its default domain before anything is rebuilt.
    m_domain = &m_defaultDomain;
    if (m_isDomainTransformEnabled) setPart("domainTransform", nullptr);
  } else {
    setDomainTransform(m_domain);
  }
  if (change == PbBase::DOMAIN_TRANSFORM_TYPE_CHANGE || !m_isDomainUsedForRebuild) return;
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

// --- domain ---------------------------------------------------------------------------------------------------------

const PbDomain* PoBase::getDomain() const {
  if (m_domain != &m_defaultDomain || !m_isStateValid) return m_domain;
  const PbDomain* domain = PoDomainElement::get(m_state);
  return domain ? domain : &m_defaultDomain;
}

void PoBase::setDomain(PbDomain* domain) {
  changeConnection(m_domain, domain);
  setDomainTransform(domain);
  if (m_isDomainUsedForRebuild) touchKit();
  m_domain = domain ? domain : &m_defaultDomain;
}

void PoBase::setDomainTransform(const PbDomain* domain) {
  if (!m_isDomainTransformEnabled) return;
  const bool isIdentity = !domain || (domain->isHomogeneous() && domain->getTransformType() != PbDomain::TRANSFORM_01);
  setPart("domainTransform", isIdentity ? nullptr : domain->getMatrixTransform());
}

// --- small helpers --------------------------------------------------------------------------------------------------

void PoBase::setLightModel(SoLightModel::Model model) {
  auto* lightModel = new SoLightModel;
  lightModel->model = model;
  setPart("appearance.lightModel", lightModel);
}

void PoBase::setDrawStyleAK(const SbString& partName, SoDrawStyle::Style style) {
  auto* drawStyle = new SoDrawStyle;
  drawStyle->style = style;
  SbString name(partName);
  name += ".drawStyle";
  setPart(name.getString(), drawStyle);
}

void PoBase::catchActionLevel2CB(void*, SoAction* action) {
  if (!action->isOfType(SoGLRenderAction::getClassTypeId())) return;
  SoState* state = action->getState();
  if (const PbMiscTextAttr* attributes = PoMiscTextAttrElement::get(state))
    SoTextOutlineEnabledElement::set(state, attributes->isOutliningEnabled());
}
