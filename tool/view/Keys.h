#ifndef ORMELLE_TOOL_VIEW_KEYS_H
#define ORMELLE_TOOL_VIEW_KEYS_H

namespace view {

/// What a key or a button of the mouse does, as users read it.
struct Key {
  const char* keys;
  const char* meaning;
};

constexpr Key kKeys[] = {
    {"left button", "turn; move a flat scene"},
    {"middle button, Shift + left", "move"},
    {"wheel", "nearer and farther"},
    {"click", "tell what is there: cell, node, values, coordinates"},
    {"S, then click", "go to a point"},
    {"A", "see the whole scene"},
    {"Home", "look as at first"},
    {"O", "with or without perspective"},
    {"F, F11", "the whole screen, or the window again"},
    {"Esc", "leave the whole screen; else let the scene have the mouse, or the viewer again"},
    {"R", "read the file again (which also happens when it changes)"},
    {"P", "save the picture"},
    {"F1", "list the keys"},
    {"Q", "end"},
};

}  // namespace view

#endif
