#ifndef ORMELLE_POLOGAXIS_H
#define ORMELLE_POLOGAXIS_H

#include <Inventor/fields/SoMFUShort.h>

#include <Ormelle/PoCartesianAxis.h>

struct PiLogAxisState;

/// An axis of decades. Its coordinates are exponents: 2 stands for 100, and data is drawn at its logarithm.
///
/// @code
/// // from 1 to 1000, with texts at 2, 4, 6, 8 in each decade
/// PoLogAxis* x = new PoLogAxis(SbVec3f(0, 0, 0), 3, PoCartesianAxis::XY, PoLogAxis::DECADE_LIST_AUTO, nullptr, 0);
/// x->decadeRep = PoLogAxis::DECADE_AUTO;
/// @endcode
///
/// Main gradations are the powers of ten, sub-gradations the digits inside the decades. How many digits there are
/// depends on the number of decades: all from 2 to 9 on one or two, none on more than 32. An axis within one decade,
/// which has no text by its formulas, gets some in the last pass: digits, or where too few are in range, values in
/// between.
///
/// Added to the catalog of PoAxis, two triples:
/// @code
/// alternateRep
///   multFactor   the multiplier "x 10" with its exponent, of an axis without a power of ten
///   decadeText   texts of digit gradations; their font is decadeTextApp.font
/// @endcode
class ORMELLE_API PoLogAxis : public PoCartesianAxis {
  PO_KIT_HEADER(PoLogAxis, PoCartesianAxis);
  PO_KIT_TRIPLE_HEADER(multFactor);
  PO_KIT_TRIPLE_HEADER(decadeText);

 public:
  /// How powers of ten are written.
  enum TenPowGradRep {
    TEN_POWER_POW10 = 0,    ///< 10 with a raised exponent
    TEN_POWER_DECIMAL = 1,  ///< 0.01
    TEN_POWER_AUTO = 2      ///< as numbers from 0.0001 to 10000, else with exponents
  };
  /// How digits inside a decade are written.
  enum DecadeRep {
    DECADE_NONE = 0,          ///< not at all
    DECADE_AS_TEN_POWER = 1,  ///< like the powers, and on one line with them: 2.10 with a raised exponent
    DECADE_DECIMAL = 2,       ///< 0.02
    DECADE_DIGIT = 3,         ///< 2
    DECADE_AUTO = 4           ///< as numbers on short axes of moderate values, else as digits
  };
  /// Where the list of digits comes from.
  enum DecadeListDef {
    DECADE_LIST_AUTO = 0,     ///< by the number of decades
    DECADE_LIST_NON_AUTO = 1  ///< `decadeList`
  };
  enum MultFactorPosition {
    MULT_FACTOR_START = 0,  ///< the multiplier stands beyond the start
    MULT_FACTOR_END = 1,    ///< beyond the end
    MULT_FACTOR_EXTR = 2,   ///< beyond both
    MULT_FACTOR_GRAD = 3    ///< nowhere
  };
  /// The most digits of a list that are read.
  enum { MAX_DECADE_LIST = 8 };

  SoMFUShort decadeList;         ///< digits from 2 to 9, others are passed over; empty by default
  SoSFEnum decadeListDef;        ///< a DecadeListDef, `DECADE_LIST_AUTO` by default
  SoSFEnum tenPowerRep;          ///< a TenPowGradRep, `TEN_POWER_POW10` by default
  SoSFEnum decadeRep;            ///< a DecadeRep, `DECADE_NONE` by default
  SoSFString decadeFontName;     ///< empty, by default: that of the PbMiscTextAttr
  SoSFFloat decadeFontSize;      ///< fraction of the reference length; 0 or below, by default: automatic
  SoSFEnum multFactorPosition;   ///< a MultFactorPosition, `MULT_FACTOR_END` by default
  SoSFFloat multFactorDistAxis;  ///< of the multiplier from the end, fraction of the reference length; 0: automatic

  PoLogAxis();
  /// `end` is the exponent at the end of the axis; the first 8 of the `num` digits of `list` are copied.
  PoLogAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type, DecadeListDef def, const unsigned short* list,
            short num);
  /// Copies fields and data objects, not what was built.
  PoLogAxis(const PoLogAxis& other);
  PoLogAxis& operator=(const PoLogAxis& other);

  /// What the last rebuild chose; the fields until the first.
  /// @{
  /// `list`, with room for 8 values, gets the `num` digits that are gradated.
  void getLogGrad(unsigned short& num, unsigned short* list, TenPowGradRep& powerRep, DecadeRep& digitRep,
                  SbString& fontName, float& fontSize) const;
  void getMultFactor(MultFactorPosition& position, float& distAxis) const;
  /// @}

  void rebuild() override;

 protected:
  ~PoLogAxis() override;

  void saveAxisAttr() override;
  void computeTickLen(int numMainGrads, float& mainLen, float& subLen) override;

 private:
  void chooseGradations(float low, float high);
  void chooseTexts(float low, float high);
  void buildTexts();
  class TextLine;
  void fitTogether(TextLine& powerTexts, TextLine& digitTexts);
  void fitApart(TextLine& powerTexts, TextLine& digitTexts);

  std::unique_ptr<PiLogAxisState> m_log;
};

#endif
