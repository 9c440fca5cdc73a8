#include <Ormelle/PbMiscTextAttr.h>

PbMiscTextAttr& PbMiscTextAttr::operator=(const PbMiscTextAttr& other) {
  if (this == &other) return *this;
  m_endLineChar = other.m_endLineChar;
  m_lineLength = other.m_lineLength;
  m_fontName = other.m_fontName;
  m_isProfileEnabled = other.m_isProfileEnabled;
  m_isPredefinedProfileEnabled = other.m_isPredefinedProfileEnabled;
  m_isOutliningEnabled = other.m_isOutliningEnabled;
  PbBase::operator=(other);
  return *this;
}

void PbMiscTextAttr::setFontName(const SbString& fontName) {
  if (&fontName != &m_fontName) m_fontName = fontName;  // SbString loses text when assigned to itself
  touch();
}

void PbMiscTextAttr::setLineLength(char endLineChar, int length) {
  m_endLineChar = endLineChar;
  m_lineLength = length;
  touch();
}

void PbMiscTextAttr::getLineLength(char& endLineChar, int& length) const {
  endLineChar = m_endLineChar;
  length = m_lineLength;
}

void PbMiscTextAttr::enableProfile(int enabled) {
  m_isProfileEnabled = enabled;
  touch();
}

void PbMiscTextAttr::enablePredefinedProfile(int enabled) {
  m_isPredefinedProfileEnabled = enabled;
  touch();
}

void PbMiscTextAttr::enableOutlining(int enabled) {
  m_isOutliningEnabled = enabled;
  touch();
}
