#include "graph/data/ArrayBase.h"

#include <gtest/gtest.h>

#include <vector>

#include "graph/frame/PoException.h"

namespace {

std::vector<float> contents(const Vertex2Array& array) {
  std::vector<float> values;
  for (int i = 0; i < array.getNum(); ++i) values.push_back(array[i][0]);
  return values;
}

void appendCounting(Vertex2Array& array, int n) {
  for (int i = 0; i < n; ++i) array.append(SbVec2f(static_cast<float>(i), 0));
}

TEST(ArrayBase, GrowsByDoublingWithinItsMargins) {
  Vertex2Array array;
  array.append(SbVec2f(0, 0));
  EXPECT_EQ(array.getCapacity(), 2);  // one needed, and the least margin
  appendCounting(array, 2);
  EXPECT_EQ(array.getCapacity(), 4);
  Vertex3Array bounded(10, 20);
  bounded.append(SbVec3f(1, 1, 1));
  EXPECT_EQ(bounded.getCapacity(), 11);
  for (int i = 0; i < 100; ++i) bounded.append(SbVec3f(2, 2, 2));
  EXPECT_LE(bounded.getCapacity() - bounded.getNum(), 20);
  EXPECT_EQ(bounded.find(SbVec3f(2, 2, 2)), 1);
}

TEST(ArrayBase, InsertsAndRemoves) {
  Vertex2Array array;
  appendCounting(array, 4);
  array.insert(1, SbVec2f(9, 0));
  EXPECT_EQ(contents(array), (std::vector<float>{0, 9, 1, 2, 3}));
  array.insert(2, array);
  EXPECT_EQ(contents(array), (std::vector<float>{0, 9, 0, 9, 1, 2, 3, 1, 2, 3}));
  array.append(array[1]);
  array.remove(2, 6);
  EXPECT_EQ(contents(array), (std::vector<float>{0, 9, 2, 3, 9}));
  array.remove(-1, 2);
  array.remove(0, 0);
  array.remove(7, 1);
  array.insert(-1, SbVec2f(5, 0));
  EXPECT_EQ(array.getNum(), 5);
  array.remove(3, 100);
  EXPECT_EQ(contents(array), (std::vector<float>{0, 9, 2}));

  const SbVec2f filler(7, 7);
  Vertex2Array filled(1, 10, &filler);
  filled.insert(2, SbVec2f(1, 1));
  EXPECT_EQ(contents(filled), (std::vector<float>{7, 7, 1}));
}

TEST(ArrayBase, RemovesListedElementsAndIgnoresOthers) {
  Vertex2Array array;
  appendCounting(array, 20);
  const int indices[] = {19, 3, -1, 3, 0, 20, 8, 7, 2147483647};
  array.removeAll(9, indices);
  EXPECT_EQ(contents(array), (std::vector<float>{1, 2, 4, 5, 6, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
}

TEST(ArrayBase, RaisesWhenNothingIsFound) {
  ColorArray array;
  array.append(SbColor(1, 0, 0));
  EXPECT_EQ(array.find(SbColor(1, 0, 0)), 0);
  static int s_caught;
  s_caught = 0;
  PoException::push();
  if (setjmp(PoException::getTopBuffer()) == 0) {
    array.find(SbColor(1, 0, 0), 1);
    PoException::endBlock(0);
  } else {
    PoException::pop();
    s_caught = PoException::getInFlight()->isOfType("ElementNotFound");
    PoException::endBlock(1);
  }
  EXPECT_EQ(s_caught, 1);
}

}  // namespace
