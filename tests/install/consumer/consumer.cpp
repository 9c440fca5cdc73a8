// A small application of the installed library: draws no picture, but asks a scene what it would draw.
//
// usage: consumer VERSION     fails unless the library is that version and its kits build what they should

#include <cstdio>
#include <cstring>
#include <vector>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoOrmelle.h>

// A surface that is coloured by the first set of values of its grid, from blue at 0 to red at 1. Grid and colours stay
// the caller's: change them at any time, and the next frame shows it.
PoMeshFilled* makeSurface(PbRegularCartesianGrid2D& grid, PbLinearDataMapping& colours) {
  colours.setValues(0, SbColor(0, 0, 1), 1, SbColor(1, 0, 0));
  PoMeshFilled* surface = new PoMeshFilled;
  surface->setMesh(&grid);
  surface->setDataMapping(&colours);
  surface->valuesIndex = 0;
  surface->coloringType = PoMesh::COLOR_MAPPING;
  return surface;
}

int main(int argc, char** argv) {
  if (argc != 2 || std::strcmp(PoOrmelle::getVersion(), argv[1]) != 0) {
    std::fprintf(stderr, "This is version %s.\n", PoOrmelle::getVersion());
    return 1;
  }
  PoOrmelle::init();
  SoSeparator* root = new SoSeparator;
  root->ref();

  std::vector<float> heights = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  PbRegularCartesianGrid2D grid(4, 3, 0, 0, 1, 1, heights.data(), 1);
  grid.addValuesSet(0, heights.data(), "height");
  PbLinearDataMapping colours;
  root->addChild(makeSurface(grid, colours));

  SoGetBoundingBoxAction box{SbViewportRegion()};
  box.apply(root);
  const float top = box.getBoundingBox().getMax()[2];

  int triangles = 0;
  SoCallbackAction count;
  count.addTriangleCallback(
      SoNode::getClassTypeId(),
      [](void* sum, SoCallbackAction*, const SoPrimitiveVertex*, const SoPrimitiveVertex*, const SoPrimitiveVertex*) {
        ++*static_cast<int*>(sum);
      },
      &triangles);
  count.apply(root);
  root->unref();
  PoOrmelle::finish();

  if (top == 11 && triangles == 12) return 0;
  std::fprintf(stderr, "The surface has %d triangles and reaches up to %g.\n", triangles, top);
  return 1;
}
