#ifndef ORMELLE_POTAVERNEL_H
#define ORMELLE_POTAVERNEL_H

#include <vector>

#include <Ormelle/PoBase.h>

/// Declares the three parts of one element of a chart: `<name>Sep`, `<name>App` and `<name>`. Goes behind the header
/// macro of the kit.
#define PO_KIT_TRIPLE_HEADER(name)        \
  PO_KIT_CATALOG_ENTRY_HEADER(name##Sep); \
  PO_KIT_CATALOG_ENTRY_HEADER(name##App); \
  PO_KIT_CATALOG_ENTRY_HEADER(name)

/// Adds such a triple: an SoSeparator below `alternateRep`, in it an SoAppearanceKit, which is the application's to
/// style the element with, and an SoGroup, which a rebuild fills.
#define PO_KIT_ADD_TRIPLE(name)                                    \
  PO_KIT_ADD_CATALOG_ENTRY(name##Sep, SoSeparator, alternateRep);  \
  PO_KIT_ADD_CATALOG_ENTRY(name##App, SoAppearanceKit, name##Sep); \
  PO_KIT_ADD_CATALOG_ENTRY(name, SoGroup, name##Sep);              \
  this->ownTriple(name##Sep, name##App, name)

/// Root of axes, legends, charts and plain shapes. It adds no field and no part to PoBase.
class ORMELLE_API PoTavernel : public PoBase {
  PO_KIT_ABSTRACT_HEADER(PoTavernel, PoBase);

 public:
  /// Registers the axes, legends, charts and shapes in their fixed order; exitClasses() undoes it. Called by the
  /// library's start and stop.
  static void initClasses();
  static void exitClasses();

 protected:
  explicit PoTavernel(void (*catchAction)(void* kit, SoAction* action) = nullptr);
  ~PoTavernel() override;

  /// The parts of a triple. A file of fields holds of them what the application styled: the appearance without the
  /// font, which a rebuild sets.
  void ownTriple(SoSFNode& separator, SoSFNode& appearance, SoSFNode& group);
  /// Copies the watched fields of a kit of the same class.
  void copyWatchedFields(const PoTavernel& other);

  void setDefaultOnNonWritingFields() override;

 private:
  std::vector<SoSFNode*> m_styles;
};

#endif
