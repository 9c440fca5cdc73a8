#ifndef ORMELLE_POBASESAVEDFLAGS_H
#define ORMELLE_POBASESAVEDFLAGS_H

#include <Inventor/fields/SoField.h>
#include <Inventor/fields/SoFieldContainer.h>
#include <Ormelle/PoBase.h>

#include <vector>

/// The default flags that a write has set to keep fields out of the file or in it, to be put back behind it. Otherwise
/// a kit written as geometry and then as fields would have lost its input fields.
class PoBase::SavedFlags {
 public:
  explicit SavedFlags(PoBase& kit) : m_kit(kit) {}
  ~SavedFlags() { restore(); }
  SavedFlags(const SavedFlags&) = delete;
  SavedFlags& operator=(const SavedFlags&) = delete;

  void setDefault(SoField& field, SbBool isDefault) {
    // A nested kit may be gone before its flags come back.
    SoFieldContainer* owner = field.getContainer();
    if (owner && owner != &m_kit) owner->ref();
    m_flags.push_back({&field, owner, field.isDefault()});
    field.setDefault(isDefault);
  }

  void restore() {
    // Backwards, so that a field that was saved twice ends as it was first.
    for (auto flag = m_flags.rbegin(); flag != m_flags.rend(); ++flag) {
      flag->field->setDefault(flag->wasDefault);
      if (flag->owner && flag->owner != &m_kit) flag->owner->unref();
    }
    m_flags.clear();
  }

 private:
  struct Flag {
    SoField* field;
    SoFieldContainer* owner;
    SbBool wasDefault;
  };
  PoBase& m_kit;
  std::vector<Flag> m_flags;
};

#endif
