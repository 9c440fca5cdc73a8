#ifndef ORMELLE_PIELEMENTFONT_H
#define ORMELLE_PIELEMENTFONT_H

#include <string>

#include <Inventor/SbName.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoFont.h>

/// The font of an element of a kit, in its part `<element>App.font`.
namespace PiElementFont {

inline void set(SoBaseKit& kit, const std::string& element, const SbName& name, float size) {
  auto* font = new SoFont;
  kit.setPart(SbName((element + "App.font").c_str()), font);
  font->name = name;
  font->size = size;
}

/// Leaves the part alone where it isn't there: taking it away would make its parents.
inline void remove(SoBaseKit& kit, const std::string& element) {
  const SbName part((element + "App.font").c_str());
  if (kit.getPart(part, FALSE)) kit.setPart(part, nullptr);
}

}  // namespace PiElementFont

#endif
