// Drawing without a display.
