#include "quillane/marching/PiBaseCases.h"

namespace {

constexpr PiBaseCase kCubeRows[] = {
    {0, "", "", ""},
    {1, "0 8 3", "", "Z,ZZ,Z3,X,XZ,XZZ,XZ3"},
    {9, "11 2 8 0", "", "Y,YY,Y3,Z,ZY,ZYY,ZY3,X2,X2Y,X2YY,X2Y3"},
    {5, "0 8 3 -1 1 2 10", "0 2 4 3", "X,XX,X3,Z,ZX,ZXX,ZX3,Y,YX,Y3,Y3X"},
    {65, "0 8 3 -1 5 10 6", "", "Y,YY,Y3"},
    {152, "3 8 2 4 6", "", "Y,YY,Y3,Z,ZX,ZXX,ZX3,Z2,Z2Y,Z2YY,Z2Y3,Z3,Z3X,Z3XX,Z3X3,X,XZ,XZZ,XZ3,X3,X3Z,X3ZZ,X3Z3"},
    {73, "11 2 8 0 -1 5 10 6", "6 5 1 0",
     "X,XX,X3,Z,ZY,ZYY,ZY3,Z2,Z2X,Z2XX,Z2X3,Z3,Z3Y,Z3YY,Z3Y3,Y,YZ,YZZ,YZ3,Y3,Y3Z,Y3ZZ,Y3Z3"},
    {74, "2 3 11 -1 1 9 0 -1 5 10 6", "5 1 0 3 -1 3 7 6 4 -1 0 2 8 7", "Y,YY,Y3,X,XY,XYY,XY3"},
    {153, "4 6 0 2", "", "X,XY"},
    {177, "11 3 6 0 5 9", "", "X,XY,XYZ"},
    {195, "1 9 3 8 -1 5 10 7 11", "2 3 6 7 -1 0 5 4 1", "Z,X"},
    {209, "11 3 10 0 5 4", "", "X,Y,YZ,Z,ZY"},
    {154, "1 9 0 -1 3 8 2 4 6", "2 1 6 4", "Y,YY,Y3,Z,ZX,ZXX,ZX3,X,XZ,XZZ,XZ3", "0 2 3 5"},
    {165, "0 8 3 -1 1 2 10 -1 9 5 4 -1 6 11 7", "0 2 4 3 -1 0 6 8 1 -1 2 1 11 10 -1 3 5 7 6 -1 4 10 9 5 -1 8 7 9 11",
     ""},
    {184, "2 3 6 8 5 9", "", "X,Y,YZ,Z,ZY"},
};

constexpr PiBaseCase kTetraRows[] = {
    {0, "", "", ""},
    {2, "0 1 4", "", "X,XX,XY"},
    {3, "1 4 2 3", "", "X,XX"},
};

constexpr PiBaseCase kWedgeRows[] = {
    {0, "", "", ""},
    {1, "0 6 2", "", "Z,ZZ,ZZY,ZZYZ,ZZYZZ"},
    {3, "1 7 2 6", "", "Z,ZZ,ZZY,ZZYZ,ZZYZZ"},
    {9, "0 3 2 5", "", "Z,ZZ"},
    {33, "0 6 2 -1 4 8 5", "2 1 5 4", "Z,ZZ"},
    {12, "1 2 8 -1 3 5 6", "1 5 4 2", "Z,ZZ"},
    {7, "6 8 7", "", ""},
    {35, "1 7 2 6 -1 4 8 5", "2 3 6 5", "Z,ZZ", "1 0 5 4"},
    {11, "1 7 2 3 5", "", "Z,ZZ"},
    {19, "1 4 2 3 6", "", "Z,ZZ"},
};

constexpr PiBaseCase kPyramidRows[] = {
    {0, "", "", ""},
    {1, "0 4 3", "", "X,XX,X3"},
    {16, "4 5 7 6", "", ""},
    {3, "1 5 3 4", "", "X,XX,X3"},
    {5, "0 4 3 -1 2 6 1", "0 2 3 5", "X"},
    {14, "0 3 5 7 6", "", "X,XX,X3"},
};

}  // namespace

const std::span<const PiBaseCase> PiBaseCases::kCube = kCubeRows;
const std::span<const PiBaseCase> PiBaseCases::kTetra = kTetraRows;
const std::span<const PiBaseCase> PiBaseCases::kWedge = kWedgeRows;
const std::span<const PiBaseCase> PiBaseCases::kPyramid = kPyramidRows;
