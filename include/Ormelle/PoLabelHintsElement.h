#ifndef ORMELLE_POLABELHINTSELEMENT_H
#define ORMELLE_POLABELHINTSELEMENT_H

#include <Inventor/SbString.h>

#include <Ormelle/PoLabelHints.h>
#include <Ormelle/PoSubElement.h>

/// How labels are written, set by PoLabelHints; where there is none, its defaults.
class ORMELLE_API PoLabelHintsElement : public SoReplacedElement {
  PO_ELEMENT_HEADER(PoLabelHintsElement);

 public:
  /// With `isStringKept`, the string in force stays and `addString` isn't looked at; a null `addString` is "".
  /// @{
  static void set(SoState* state, SoNode* node, PoLabelHints::LabelPath labelPath,
                  PoLabelHints::Justification justification, const char* addString, int isStringKept,
                  int isLabelLineVisible);
  static void set(SoState* state, SoNode* node, PoLabelHints::LabelPath labelPath,
                  PoLabelHints::Justification justification, const SbString& addString, int isStringKept,
                  int isLabelLineVisible);
  /// @}
  static void get(SoState* state, PoLabelHints::LabelPath& labelPath, PoLabelHints::Justification& justification,
                  SbString& addString, int& isLabelLineVisible);

  void push(SoState* state) override;
  /// A kept string comes from another node, so the strings are compared too.
  SbBool matches(const SoElement* element) const override;
  SoElement* copyMatchInfo() const override;

 private:
  PoLabelHints::LabelPath m_labelPath = PoLabelHints::PATH_DEPEND;
  PoLabelHints::Justification m_justification = PoLabelHints::DEPEND;
  SbString m_addString;
  int m_isLabelLineVisible = 0;
};

#endif
