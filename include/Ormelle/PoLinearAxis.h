#ifndef ORMELLE_POLINEARAXIS_H
#define ORMELLE_POLINEARAXIS_H

#include <Ormelle/PoCartesianAxis.h>

class PbNumericDisplayFormat;
struct PiLinearAxisState;

/// An axis with gradations at equal steps, written as numbers.
///
/// @code
/// PoLinearAxis* x = new PoLinearAxis(SbVec3f(0, 0, 0), 12, PoCartesianAxis::XY, 0);
/// x->titleVisibility = PoAxis::VISIBILITY_ON;
/// x->titleString = "Month";
/// root->addChild(x);
/// @endcode
///
/// The numeric format comes from setFormat() or the traversal state; by default it is chosen so that all values are
/// written with the same decimals and, where they are very large or small, a common power of ten. That power stands
/// once beyond an end of the axis, as a multiplier, or behind each number.
///
/// Added to the catalog of PoAxis:
/// @code
/// alternateRep
///   multFactor   the multiplier "x 10" with its exponent; a triple
/// @endcode
class ORMELLE_API PoLinearAxis : public PoCartesianAxis {
  PO_KIT_HEADER(PoLinearAxis, PoCartesianAxis);
  PO_KIT_TRIPLE_HEADER(multFactor);

 public:
  enum GradFit {
    GRAD_FIT = 0,   ///< gradations start at the start of the axis
    GRAD_UNFIT = 1  ///< gradations are multiples of the step
  };
  enum MultFactorPosition {
    MULT_FACTOR_START = 0,  ///< the multiplier stands beyond the start
    MULT_FACTOR_END = 1,    ///< beyond the end
    MULT_FACTOR_EXTR = 2,   ///< beyond both
    MULT_FACTOR_GRAD = 3    ///< "E3" stands behind each number
  };

  SoSFFloat step;                ///< between gradations; 0, by default, chooses one. No more than 10,000 are drawn
  SoSFEnum gradFit;              ///< a GradFit, `GRAD_UNFIT` by default
  SoSFEnum multFactorPosition;   ///< a MultFactorPosition, `MULT_FACTOR_END` by default
  SoSFFloat multFactorDistAxis;  ///< of the multiplier from the end, fraction of the reference length; 0: automatic

  PoLinearAxis();
  /// `end` is the coordinate of the end along the axis.
  PoLinearAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type, float step);
  /// Copies fields and data objects, not what was built.
  PoLinearAxis(const PoLinearAxis& other);
  PoLinearAxis& operator=(const PoLinearAxis& other);

  /// The numeric format to use instead of that on the traversal state; null goes back to that. Not owned.
  void setFormat(PbNumericDisplayFormat* format);
  /// What was set, else during a traversal that on the state, else null: automatic.
  const PbNumericDisplayFormat* getFormat() const;

  /// What the last rebuild chose; the fields until the first.
  /// @{
  float getStep() const;
  void getMultFactor(MultFactorPosition& position, float& distAxis) const;
  /// @}

  /// @name The choice of round steps
  /// @{
  /// A step for about ten gradations over `delta`: 1, 2, 3, 4 or 5 times a power of ten; a `step` that isn't 0 on entry
  /// is kept. It gets the sign of `delta`. A `delta` of 0, or one that isn't finite, leaves `step` as it is.
  static void getLinGradStep(float delta, float& step);
  /// The first of the gradations from `start` to `end`, and their number; none if `end` equals `start` or the step
  /// leads away from it.
  static void getLinGradFirstGrad(GradFit fit, float start, float end, float step, float& first, int& num);
  /// Both of them: getLinGradStep() over `end` - `start`, then getLinGradFirstGrad().
  static void getLinGrads(GradFit fit, float start, float end, float& step, float& first, int& num);
  /// @}

  void rebuild() override;

 protected:
  ~PoLinearAxis() override;

  void saveAxisAttr() override;
  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  void chooseGradations(float gradStart, float gradEnd);
  void writeGradations(float gradStart, float gradEnd);

  std::unique_ptr<PiLinearAxisState> m_linear;
};

#endif
