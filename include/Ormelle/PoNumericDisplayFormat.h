#ifndef ORMELLE_PONUMERICDISPLAYFORMAT_H
#define ORMELLE_PONUMERICDISPLAYFORMAT_H

#include <memory>

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFShort.h>

#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoNode.h>

class PiFieldWatch;

/// Says how the kits behind it write numbers; puts a PbNumericDisplayFormat of its own in
/// PoNumericDisplayFormatElement.
/// @code
/// auto* format = new PoNumericDisplayFormat;
/// format->formatType = PoNumericDisplayFormat::FLOAT_FORMAT;
/// format->numDecimal = 2;
/// separator->addChild(format);
/// separator->addChild(axis);
/// @endcode
class ORMELLE_API PoNumericDisplayFormat : public PoNode {
  PO_NODE_HEADER(PoNumericDisplayFormat, PoNode);

 public:
  enum FormatType {
    AUTO_FORMAT = PbNumericDisplayFormat::AUTO_FORMAT,       ///< chosen from the values; the other fields aren't used
    FLOAT_FORMAT = PbNumericDisplayFormat::FLOAT_FORMAT,     ///< by the other fields
    INTEGER_FORMAT = PbNumericDisplayFormat::INTEGER_FORMAT  ///< by `tenPower`, rounded to whole numbers
  };

  SoSFEnum formatType;   ///< a FormatType, `AUTO_FORMAT` by default
  SoSFShort numDecimal;  ///< decimals shown, 0 by default
  SoSFShort tenPower;    ///< numbers are divided by ten to this power, 0 by default

  PoNumericDisplayFormat();

  void doAction(SoAction* action) override;

 protected:
  ~PoNumericDisplayFormat() override;

 private:
  PbNumericDisplayFormat m_format;
  std::unique_ptr<PiFieldWatch> m_watch;
};

#endif
