#ifndef ORMELLE_POGENAXIS_H
#define ORMELLE_POGENAXIS_H

#include <Inventor/fields/SoMFString.h>

#include <Ormelle/PoCartesianAxis.h>

/// An axis whose gradations are texts of the application: names of months, places, classes.
///
/// @code
/// const char* quarters[] = {"Winter", "Spring", "Summer", "Autumn"};
/// PoGenAxis* x = new PoGenAxis(SbVec3f(0, 0, 0), 3, PoCartesianAxis::XY, quarters, 4);
/// @endcode
class ORMELLE_API PoGenAxis : public PoCartesianAxis {
  PO_KIT_HEADER(PoGenAxis, PoCartesianAxis);

 public:
  /// One text for each gradation, spread evenly between the margins; a single one stands at the start. One empty text
  /// by default. Texts are cut after 99 bytes, and no more than 10,000 are used.
  SoMFString gradList;

  PoGenAxis();
  /// `end` is the coordinate of the end along the axis; the `num` texts of `list` are copied.
  PoGenAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type, const char** list, short num);
  /// Copies fields and data objects, not what was built.
  PoGenAxis(const PoGenAxis& other);
  PoGenAxis& operator=(const PoGenAxis& other);

  void rebuild() override;

 protected:
  ~PoGenAxis() override;

 private:
  void chooseGradations(float axisStart, float axisEnd);
};

#endif
