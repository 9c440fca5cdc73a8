#include "quillane/stream/PiStreamStrip.h"

#include <algorithm>
#include <cstddef>

void PiStreamStrip::join(std::span<const SbVec3f> left, int firstLeft, std::span<const SbVec3f> right, int firstRight,
                         std::vector<int>& triangles) {
  if (left.size() < 2 || right.size() < 2) return;
  const float first = (right[0] - left[0]).length();
  std::size_t l = 0, r = 0;
  while (l + 1 < left.size() && r + 1 < right.size()) {
    const SbVec3f stepLeft = left[l + 1] - left[l], stepRight = right[r + 1] - right[r];
    const float limit = kParting * std::max({first, stepLeft.length(), stepRight.length()});
    const float diagonalLeft = (left[l + 1] - right[r]).length(), diagonalRight = (right[r + 1] - left[l]).length();
    // Written so that what is undefined ends the strip.
    if (!(std::min(diagonalLeft, diagonalRight) <= limit) || !(stepLeft.dot(stepRight) >= 0)) return;
    const int leftIndex = firstLeft + static_cast<int>(l), rightIndex = firstRight + static_cast<int>(r);
    if (diagonalLeft <= diagonalRight) {
      triangles.insert(triangles.end(), {leftIndex, rightIndex, leftIndex + 1});
      ++l;
    } else {
      triangles.insert(triangles.end(), {leftIndex, rightIndex, rightIndex + 1});
      ++r;
    }
  }
  // Lines of equal length end with one point over, which closes the last quadrangle.
  const bool isLeftOver = l + 2 == left.size(), isRightOver = r + 2 == right.size();
  if (isLeftOver == isRightOver) return;
  const int leftIndex = firstLeft + static_cast<int>(l), rightIndex = firstRight + static_cast<int>(r);
  const SbVec3f over = isLeftOver ? left[l + 1] - left[l] : right[r + 1] - right[r];
  const SbVec3f diagonal = isLeftOver ? left[l + 1] - right[r] : right[r + 1] - left[l];
  if (diagonal.length() <= kParting * std::max(first, over.length()))
    triangles.insert(triangles.end(), {leftIndex, rightIndex, isLeftOver ? leftIndex + 1 : rightIndex + 1});
}

std::vector<SbVec3f> PiStreamStrip::normalsOf(std::span<const SbVec3f> points, std::span<const int> triangles) {
  std::vector<SbVec3f> normals(points.size(), SbVec3f(0, 0, 0));
  for (std::size_t t = 0; t + 2 < triangles.size(); t += 3) {
    const SbVec3f& origin = points[static_cast<std::size_t>(triangles[t])];
    const SbVec3f normal = (points[static_cast<std::size_t>(triangles[t + 1])] - origin)
                               .cross(points[static_cast<std::size_t>(triangles[t + 2])] - origin);
    for (std::size_t corner = t; corner < t + 3; ++corner)
      normals[static_cast<std::size_t>(triangles[corner])] += normal;
  }
  for (SbVec3f& normal : normals) {
    const float length = normal.length();
    if (length > 0)
      normal /= length;
    else
      normal.setValue(0, 0, 1);
  }
  return normals;
}
