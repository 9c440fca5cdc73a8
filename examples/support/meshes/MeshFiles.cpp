#include "MeshFiles.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoNode.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace gallery {

namespace {

std::filesystem::path g_folder;

}  // namespace

void setMeshFolder(const std::string& folder) {
  g_folder = folder;
  std::filesystem::create_directories(g_folder);
}

void writeMesh(const std::string& name, SoNode* mesh) {
  mesh->ref();
  const std::string file = (g_folder / (name + ".iv")).string();
  PiWholeFile whole(file);
  if (whole.stream()) {
    SoOutput out;
    out.setFilePointer(whole.stream());
    SoWriteAction(&out).apply(mesh);
  }
  const std::string problem = whole.close();
  mesh->unref();
  if (!problem.empty()) throw std::runtime_error(file + ": " + problem);
}

}  // namespace gallery

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gallery_meshes FOLDER\n");
    return 2;
  }
  return gallery::run([argv] {
    gallery::setMeshFolder(argv[1]);
    gallery::writeTerrain();
    gallery::writeAtmosphere();
    gallery::writeOcean();
    gallery::writeLand();
    gallery::writeCarbonDioxide();
    gallery::writeUnstructured();
  });
}
