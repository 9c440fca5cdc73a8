#ifndef ORMELLE_PIFONTS_H
#define ORMELLE_PIFONTS_H

/// Lets the toolkit find the font libraries where they are installed without their development files, whose names it
/// looks for. Call it before the toolkit starts. What the environment says already stays as it is.
void useInstalledFonts();

#endif
