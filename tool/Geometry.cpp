#include "Commands.h"
#include "Failure.h"
#include "Import.h"
#include "PlyFile.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace tool {

void geometry(const std::string& sceneFile, const std::string& file, bool isBinary) {
  startLibrary();
  const Scene scene = readAnyScene(sceneFile);
  PlyMesh mesh;
  WalkWishes wishes;
  wishes.colors = true;
  walkScene(scene.root.get(), sceneFile, wishes, mesh);
  if (!mesh.fits()) throw Failure(sceneFile + ": more vertices or faces than a PLY file can number");

  PiWholeFile out(file);
  if (out.stream()) mesh.write(out.stream(), isBinary);
  const std::string problem = out.close();
  if (!problem.empty()) throw Failure(file + ": " + problem);
}

}  // namespace tool
