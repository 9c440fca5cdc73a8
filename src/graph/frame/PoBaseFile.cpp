// What a kit does when it is written, read, searched or copied. A write rebuilds nothing here: what is stale is rebuilt
// before the write begins, see PiWritePreparation.h.

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Ormelle/PoBase.h>

#include <algorithm>

#include "graph/frame/PoBaseSavedFlags.h"

void PoBase::search(SoSearchAction* action) {
  // The toolkit hides a kit's children from searches, so the part that looks for changes isn't reached.
  if (!action->isSearchingAll()) catchAction(action);
  SoBaseKit::search(action);
}

void PoBase::write(SoWriteAction* action) {
  // Of a class that isn't its own, the toolkit puts every field into a binary file, due or not, and can't read those
  // back that hold no node. As one of its own, a kit is written with the fields that are due.
  isBuiltIn = action->getOutput()->isBinary();
  SoBaseKit::write(action);
  isBuiltIn = FALSE;
  if (action->getOutput()->getStage() == SoOutput::WRITE) m_savedFlags.reset();
}

void PoBase::setDefaultOnNonWritingFields() {
  m_savedFlags = std::make_unique<SavedFlags>(*this);
  // The toolkit flags parts that hold others, too. It copies no field that is flagged, and then misses the part.
  SoFieldList all;
  getFields(all);
  for (int i = 0; i < all.getLength(); ++i) m_savedFlags->setDefault(*all[i], all[i]->isDefault());
  SoBaseKit::setDefaultOnNonWritingFields();
  leaveOutOfFile(callbackList);
  leaveOutOfFile(catchActionLevel2Callback);
  leaveOutOfFile(catchActionCallback);
  if (m_nodeWriteFormat == WRITE_FIELDS) {
    leaveOutOfFile(alternateRep);
    leaveStyleOutOfFile(appearance, m_generatedAppearance);
  } else {
    // The toolkit leaves out a separator whose own fields are untouched. It has to be there: it tells a reader that the
    // generated parts are in the file.
    m_savedFlags->setDefault(alternateRep, FALSE);
  }
  setListFieldsDefault(m_nodeWriteFormat == WRITE_FIELDS ? m_ownParts : m_watchedFields);
}

void PoBase::leaveOutOfFile(SoField& field) {
  if (!m_savedFlags) return;
  m_savedFlags->setDefault(field, TRUE);
  if (!field.isOfType(SoSFNode::getClassTypeId())) return;
  // A kit inside forces itself into the file while any field of its own wants to be written.
  SoNode* node = static_cast<SoSFNode&>(field).getValue();
  if (!node || !node->isOfType(SoBaseKit::getClassTypeId())) return;
  SoFieldList inner;
  node->getFields(inner);
  for (int i = 0; i < inner.getLength(); ++i) leaveOutOfFile(*inner[i]);
}

void PoBase::setListFieldsDefault(const SoFieldList& fields) {
  for (int i = 0; i < fields.getLength(); ++i) leaveOutOfFile(*fields[i]);
}

void PoBase::addGeneratedAppearance(const SbName& part) { m_generatedAppearance.push_back(part); }

void PoBase::leaveStyleOutOfFile(SoSFNode& style, const std::vector<SbName>& generated) {
  SoNode* kit = style.getValue();
  if (!kit) return;
  SoFieldList inner;
  kit->getFields(inner);
  bool isStyledByUser = false;
  for (int i = 0; i < inner.getLength(); ++i) {
    SbName name;
    kit->getFieldName(inner[i], name);
    if (std::find(generated.begin(), generated.end(), name) != generated.end())
      leaveOutOfFile(*inner[i]);
    else if (!inner[i]->isDefault())
      isStyledByUser = true;
  }
  if (!isStyledByUser) leaveOutOfFile(style);
}

SbBool PoBase::readInstance(SoInput* in, unsigned short flags) {
  const SoNode* const before = alternateRep.getValue();
  const SbBool isRead = SoBaseKit::readInstance(in, flags);
  if (isRead && alternateRep.getValue() != before) {
    // The generated parts came from the file and their inputs didn't: they stay until an input changes.
    m_isGeometryFromFile = 1;
    m_isBuilt = 1;
    m_isModified = 0;
  }
  return isRead;
}

void PoBase::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  SoBaseKit::copyContents(from, copyConnections);
  const auto* source = static_cast<const PoBase*>(from);
  m_updateMethod = source->m_updateMethod;
  m_isDomainTransformEnabled = source->m_isDomainTransformEnabled;
  m_isGeometryFromFile = source->m_isGeometryFromFile;
  m_isBuilt = source->m_isBuilt;
  if (m_isGeometryFromFile) m_isModified = 0;
  PbDomain* domain = source->m_domain == &source->m_defaultDomain ? &m_defaultDomain : source->m_domain;
  changeConnection(m_domain, domain == &m_defaultDomain ? nullptr : domain);
  m_domain = domain;
  // The copied callback parts still name the source kit.
  connectCallbackParts();
}

SoNode* PoBase::copy(SbBool copyConnections) const {
  SoNode* node = SoBaseKit::copy(copyConnections);
  auto* kit = static_cast<PoBase*>(node);
  if (m_updateMethod == UPDATE_AT_TRAVERSAL && !m_isGeometryFromFile) {
    kit->ref();
    kit->rebuildNow();
    kit->unrefNoDelete();
  }
  return node;
}
