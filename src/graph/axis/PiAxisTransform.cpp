#include "graph/axis/PiAxisTransform.h"

#include <cmath>

namespace {

/// What the x and the y axis of an axis become. The third axis makes a right-handed system of them, so that texts
/// aren't mirrored.
struct Frame {
  int direction;
  int offset;
  float sign;  ///< of the offset
};

constexpr Frame kFrames[] = {
    {0, 1, 1},   // XY
    {0, 2, 1},   // XZ: a quarter turn about x
    {1, 0, -1},  // YX: a quarter turn about z, so that texts above stand left of a y axis
    {1, 2, 1},   // YZ
    {2, 0, 1},   // ZX
    {2, 1, 1},   // ZY
};

const Frame& frameOf(PoCartesianAxis::Type type) {
  return kFrames[type >= PoCartesianAxis::XY && type <= PoCartesianAxis::ZY ? type : PoCartesianAxis::XY];
}

}  // namespace

int PiAxisTransform::direction(PoCartesianAxis::Type type) { return frameOf(type).direction; }

PiAxisTransform PiAxisTransform::make(PoCartesianAxis::Type type, const SbVec3f& start, const SbVec3f& deltas) {
  const Frame& frame = frameOf(type);
  PiAxisTransform transform;
  transform.along = deltas[frame.direction];
  transform.across = deltas[frame.offset];

  SbVec3f x(0, 0, 0), y(0, 0, 0);
  x[frame.direction] = 1;
  y[frame.offset] = frame.sign;
  const SbVec3f z = x.cross(y);
  y *= transform.across / transform.along;
  SbVec3f origin = start;
  origin[frame.direction] = 0;                      // x is a coordinate, not a distance from the start
  transform.matrix = SbMatrix(x[0], x[1], x[2], 0,  //
                              y[0], y[1], y[2], 0,  //
                              z[0], z[1], z[2], 0,  //
                              origin[0], origin[1], origin[2], 1);
  return transform;
}

float PiAxisTransform::moveOrigin(PoCartesianAxis::Type type, float start, float end, SbMatrix& matrix) {
  // From so many times its own length, 14 binary digits of a float are left for an axis.
  constexpr float far = 1024;
  const float origin = std::abs(start) > far * std::abs(end - start) ? start : 0;
  matrix[3][direction(type)] += origin;
  return origin;
}
