#ifndef ORMELLE_PIMARCHINGCASES_H
#define ORMELLE_PIMARCHINGCASES_H

#include "quillane/marching/PiMarchingCase.h"

// The four kinds of marching cases. Each class holds the symmetries of its cell as tables, in which entry n is the
// image of node, or edge, n under one turn, and the two ends of each edge. The edge numbers are those of the strips;
// the ends of an edge may stand the other way round in the cell classes.

/// Implements the operations of a case from the tables of `Case`.
template <class Case>
class PiMarchingCaseOf : public PiMarchingCase {
 public:
  std::unique_ptr<PiMarchingCase> getRotX(int count) const override {
    return rotated(count, Case::c_NodeRotX, Case::c_EdgeRotX);
  }
  std::unique_ptr<PiMarchingCase> getRotY(int count) const override {
    return rotated(count, Case::c_NodeRotY, Case::c_EdgeRotY);
  }
  std::unique_ptr<PiMarchingCase> getRotZ(int count) const override {
    return rotated(count, Case::c_NodeRotZ, Case::c_EdgeRotZ);
  }
  std::unique_ptr<PiMarchingCase> getReverse() const override {
    auto reverse = copy();
    reverse->revert();
    return reverse;
  }
  int getNumNodes() const override { return Case::kNumNodes; }
  int getEdgeNode0(int edge) const override { return Case::c_EdgeNod0[edge]; }
  int getEdgeNode1(int edge) const override { return Case::c_EdgeNod1[edge]; }
  unsigned char getRevertId() const override {
    return static_cast<unsigned char>(~getId() & ((1u << Case::kNumNodes) - 1));
  }

 protected:
  using PiMarchingCase::PiMarchingCase;

 private:
  std::unique_ptr<PiMarchingCaseOf> copy() const { return std::make_unique<Case>(static_cast<const Case&>(*this)); }
  std::unique_ptr<PiMarchingCase> rotated(int count, const int* nodeRot, const int* edgeRot) const {
    if (!nodeRot) return nullptr;
    auto result = copy();
    result->rot(count, nodeRot, edgeRot);
    return result;
  }
};

class PiMarchingCubeCase : public PiMarchingCaseOf<PiMarchingCubeCase> {
 public:
  PiMarchingCubeCase(unsigned char type, unsigned char id) : PiMarchingCaseOf(type, id) {}

  static constexpr int kNumNodes = 8;
  static constexpr int c_NodeRotX[] = {4, 0, 3, 7, 5, 1, 2, 6};
  static constexpr int c_NodeRotY[] = {3, 2, 6, 7, 0, 1, 5, 4};
  static constexpr int c_NodeRotZ[] = {3, 0, 1, 2, 7, 4, 5, 6};
  static constexpr int c_EdgeRotX[] = {8, 3, 11, 7, 9, 1, 10, 5, 4, 0, 2, 6};
  static constexpr int c_EdgeRotY[] = {2, 10, 6, 11, 0, 9, 4, 8, 3, 1, 5, 7};
  static constexpr int c_EdgeRotZ[] = {3, 0, 1, 2, 7, 4, 5, 6, 11, 8, 9, 10};
  static constexpr int c_EdgeNod0[] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3};
  static constexpr int c_EdgeNod1[] = {1, 2, 3, 0, 5, 6, 7, 4, 4, 5, 6, 7};
};

class PiMarchingTetraCase : public PiMarchingCaseOf<PiMarchingTetraCase> {
 public:
  PiMarchingTetraCase(unsigned char type, unsigned char id) : PiMarchingCaseOf(type, id) {}

  static constexpr int kNumNodes = 4;
  static constexpr int c_NodeRotX[] = {0, 3, 1, 2};
  static constexpr int c_NodeRotY[] = {2, 1, 3, 0};
  static constexpr int c_NodeRotZ[] = {3, 0, 2, 1};
  static constexpr int c_EdgeRotX[] = {3, 4, 0, 2, 5, 1};
  static constexpr int c_EdgeRotY[] = {1, 4, 5, 2, 0, 3};
  static constexpr int c_EdgeRotZ[] = {3, 2, 5, 4, 0, 1};
  static constexpr int c_EdgeNod0[] = {0, 1, 0, 0, 1, 2};
  static constexpr int c_EdgeNod1[] = {1, 2, 2, 3, 3, 3};
};

class PiMarchingWedgeCase : public PiMarchingCaseOf<PiMarchingWedgeCase> {
 public:
  PiMarchingWedgeCase(unsigned char type, unsigned char id) : PiMarchingCaseOf(type, id) {}

  static constexpr int kNumNodes = 6;
  static constexpr const int* c_NodeRotX = nullptr;
  static constexpr int c_NodeRotY[] = {4, 3, 5, 1, 0, 2};
  static constexpr int c_NodeRotZ[] = {1, 2, 0, 4, 5, 3};
  static constexpr const int* c_EdgeRotX = nullptr;
  static constexpr int c_EdgeRotY[] = {3, 5, 4, 0, 2, 1, 7, 6, 8};
  static constexpr int c_EdgeRotZ[] = {1, 2, 0, 4, 5, 3, 7, 8, 6};
  static constexpr int c_EdgeNod0[] = {0, 1, 2, 3, 4, 5, 0, 1, 2};
  static constexpr int c_EdgeNod1[] = {1, 2, 0, 4, 5, 3, 3, 4, 5};
};

class PiMarchingPyraCase : public PiMarchingCaseOf<PiMarchingPyraCase> {
 public:
  PiMarchingPyraCase(unsigned char type, unsigned char id) : PiMarchingCaseOf(type, id) {}

  static constexpr int kNumNodes = 5;
  static constexpr int c_NodeRotX[] = {1, 2, 3, 0, 4};
  static constexpr const int* c_NodeRotY = nullptr;
  static constexpr const int* c_NodeRotZ = nullptr;
  static constexpr int c_EdgeRotX[] = {1, 2, 3, 0, 5, 6, 7, 4};
  static constexpr const int* c_EdgeRotY = nullptr;
  static constexpr const int* c_EdgeRotZ = nullptr;
  static constexpr int c_EdgeNod0[] = {0, 1, 2, 3, 0, 1, 2, 3};
  static constexpr int c_EdgeNod1[] = {1, 2, 3, 0, 4, 4, 4, 4};
};

#endif
