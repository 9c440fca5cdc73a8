#ifndef ORMELLE_PBMISCTEXTATTR_H
#define ORMELLE_PBMISCTEXTATTR_H

#include <Inventor/SbString.h>

#include <Ormelle/PbBase.h>

/// The look of generated text: font, breaking of long titles into lines, profile and outline of solid text.
///
/// Read by axes, legends, pies and contour labels; carried by `PoMiscTextAttr`. Each setter stores and announces
/// `OBJECT_CHANGE`.
class ORMELLE_API PbMiscTextAttr : public PbBase {
 public:
  /// Font "defaultFont", no line breaking, no profile, the predefined profile, outlining on.
  PbMiscTextAttr() = default;
  PbMiscTextAttr(const PbMiscTextAttr& other) = default;
  /// Announces `OBJECT_CHANGE` once the values are in.
  PbMiscTextAttr& operator=(const PbMiscTextAttr& other);

  /// The font of texts whose owner names none. "defaultFont" is the toolkit's built-in one.
  void setFontName(const SbString& fontName);
  const SbString& getFontName() const { return m_fontName; }

  /// Where texts that may have several lines are broken: at `endLineChar`, into lines of at most `length` characters.
  /// A length of 0, the default, or below never breaks.
  void setLineLength(char endLineChar, int length);
  void getLineLength(char& endLineChar, int& length) const;

  /// Whether solid text (PoBase::TEXT_3D) has depth. Without the predefined profile it takes the one of the state.
  void enableProfile(int enabled);
  int isProfileEnabled() const { return m_isProfileEnabled; }
  /// Whether that profile is a bevelled one, 0.15 font sizes deep and 0.025 wide.
  void enablePredefinedProfile(int enabled);
  int isPredefinedProfileEnabled() const { return m_isPredefinedProfileEnabled; }

  /// Whether text is outlined, as far as the toolkit's text nodes honour `SoTextOutlineEnabledElement`.
  void enableOutlining(int enabled);
  int isOutliningEnabled() const { return m_isOutliningEnabled; }

 private:
  char m_endLineChar = ' ';
  int m_lineLength = 0;
  SbString m_fontName = "defaultFont";
  int m_isProfileEnabled = 0;
  int m_isPredefinedProfileEnabled = 1;
  int m_isOutliningEnabled = 1;
};

#endif
