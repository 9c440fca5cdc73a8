#include <Ormelle/PbNumericDisplayFormat.h>

PbNumericDisplayFormat::PbNumericDisplayFormat(FormatType type, int tenPower, int numDecimal)
    : m_formatType(type), m_tenPower(tenPower), m_numDecimal(numDecimal) {}

PbNumericDisplayFormat& PbNumericDisplayFormat::operator=(const PbNumericDisplayFormat& other) {
  if (this == &other) return *this;
  m_formatType = other.m_formatType;
  m_tenPower = other.m_tenPower;
  m_numDecimal = other.m_numDecimal;
  PbBase::operator=(other);
  return *this;
}

void PbNumericDisplayFormat::setFormat(FormatType type, int tenPower, int numDecimal) {
  m_formatType = type;
  m_tenPower = tenPower;
  m_numDecimal = numDecimal;
  touch();
}

void PbNumericDisplayFormat::getFormat(FormatType& type, int& tenPower, int& numDecimal) const {
  type = m_formatType;
  tenPower = m_tenPower;
  numDecimal = m_numDecimal;
}
