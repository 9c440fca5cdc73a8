#ifndef ORMELLE_POSINGLEHISTOGRAM_H
#define ORMELLE_POSINGLEHISTOGRAM_H

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>

#include <Ormelle/PoHistogram.h>

/// One row of bars.
///
/// @code
/// auto* bars = new PoSingleHistogram;
/// const float values[] = {325, 285, 706, 885};
/// bars->value.setValues(0, 4, values);
/// bars->end = 4;
/// root->addChild(bars);
/// @endcode
class ORMELLE_API PoSingleHistogram : public PoHistogram {
  PO_KIT_HEADER(PoSingleHistogram, PoHistogram);

 public:
  SoMFFloat value;  ///< one a bar; none by default
  SoMFString name;  ///< one a bar; a bar without one has no name

  PoSingleHistogram();

  void rebuild() override;

 protected:
  ~PoSingleHistogram() override;
};

#endif
