#ifndef ORMELLE_PIMITRE_H
#define ORMELLE_PIMITRE_H

#include <Inventor/SbVec2f.h>

#include <span>
#include <vector>

/// How far from a curve its left side is: for each point the vector to it, so that strips of width 2 beside each other
/// meet at a bend.
///
/// Lengths are those of the picture, which is `stretch` times as wide and high as the coordinates are: the strip is
/// as wide there in every direction. At a bend so sharp that the corner of the strip would be more than twice as far
/// away as its sides, it is cut short. Points on top of each other share a direction; a run without any goes along x.
std::vector<SbVec2f> mitresOf(std::span<const SbVec2f> run, const SbVec2f& stretch);

#endif
