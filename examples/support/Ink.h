#ifndef ORMELLE_GALLERY_INK_H
#define ORMELLE_GALLERY_INK_H

#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoSeparator.h>

namespace gallery {

/// A group whose lines have this colour and width in pixels, and no light.

inline SoSeparator* inked(const SbColor& color, float width) {
  auto* group = new SoSeparator;
  auto* unlit = new SoLightModel;
  unlit->model = SoLightModel::BASE_COLOR;
  group->addChild(unlit);
  auto* ink = new SoBaseColor;
  ink->rgb.setValue(color);
  group->addChild(ink);
  auto* pen = new SoDrawStyle;
  pen->lineWidth = width;
  group->addChild(pen);
  return group;
}

/// A group without light, for maps and sections whose colours shall be those of the data.
inline SoSeparator* unlit() { return inked(SbColor(0.6f, 0.6f, 0.6f), 1.0f); }

}  // namespace gallery

#endif
