// Writes first inputs for the fuzz targets into a folder for each, below the folder that is the argument.

#include <filesystem>
#include <fstream>
#include <iostream>

#include "MeshFields.h"

namespace {

constexpr float kX[] = {0, 0.1F, 0.2F, 3, 4e10F, 5, 6, 7};
constexpr int kCells[] = {0, 1, 2, 3, 4, 5, 6, 7};
constexpr int kTypes[] = {4, 4};

void setGeometry(PoSFMesh& field, bool hasZ) {
  const float* z = hasZ ? kX : nullptr;
  if (auto* f = dynamic_cast<PoSFCartesianGrid2D*>(&field)) f->getMesh()->setGeometry(2, 3, kX, kX, z);
  if (auto* f = dynamic_cast<PoSFParalCartesianGrid2D*>(&field)) f->getMesh()->setGeometry(2, 3, kX, kX, z);
  if (auto* f = dynamic_cast<PoSFPolarGrid2D*>(&field)) f->getMesh()->setGeometry(2, 3, kX, kX, z);
  if (auto* f = dynamic_cast<PoSFRegularCartesianGrid2D*>(&field)) f->getMesh()->setGeometry(2, 3, 0, 0, 1, 1, z);
  if (auto* f = dynamic_cast<PoSFCartesianGrid3D*>(&field)) f->getMesh()->setGeometry(2, 2, 2, kX, kX, kX);
  if (auto* f = dynamic_cast<PoSFParalCartesianGrid3D*>(&field)) f->getMesh()->setGeometry(2, 2, 2, kX, kX, kX);
  if (auto* f = dynamic_cast<PoSFRegularCartesianGrid3D*>(&field)) f->getMesh()->setGeometry(2, 2, 2, 0, 0, 0, 1, 1, 1);
  if (auto* f = dynamic_cast<PoSFIndexedMesh2D*>(&field)) f->getMesh()->setGeometry(8, kX, kX, z, 2, kCells, kTypes);
  if (auto* f = dynamic_cast<PoSFTriangleMesh2D*>(&field)) f->getMesh()->setGeometry(8, kX, kX, z, 2, kCells);
  if (auto* f = dynamic_cast<PoSFQuadrangleMesh2D*>(&field)) f->getMesh()->setGeometry(8, kX, kX, z, 2, kCells);
  if (auto* f = dynamic_cast<PoSFIndexedMesh3D*>(&field)) f->getMesh()->setGeometry(8, kX, kX, kX, 2, kCells, kTypes);
  if (auto* f = dynamic_cast<PoSFTetrahedronMesh3D*>(&field)) f->getMesh()->setGeometry(8, kX, kX, kX, 2, kCells);
  if (auto* f = dynamic_cast<PoSFHexahedronMesh3D*>(&field)) f->getMesh()->setGeometry(8, kX, kX, kX, 1, kCells);
  if (auto* f = dynamic_cast<PoSFRegularMesh1D*>(&field)) f->getMesh()->setGeometry(5, 0, 1);
  if (auto* f = dynamic_cast<PoSFIrregularMesh1D*>(&field)) f->getMesh()->setGeometry(5, kX);
}

void addSets(PbMesh& mesh) {
  const SbString strings[8] = {"a", "b c", "\"", "\\", "", "f", "g", "h"};
  const SbVec3f vecs[8];
  mesh.addValuesSet(0, kX, "Heat");
  mesh.addValuesSet(1, kX, PbMesh::PER_CELL, "Cells");
  mesh.addStringsSet(0, strings, "Names");
  mesh.addVecsSet(0, vecs, "Wind");
  mesh.addVecsSet(1, vecs, PbMesh::PER_CELL, "Flow");
}

bool writeSeed(const std::filesystem::path& folder, const std::string& name, const std::string& bytes) {
  std::filesystem::create_directories(folder);
  std::ofstream file(folder / name, std::ios::binary);
  file << bytes;
  if (file.flush()) return true;
  std::cerr << "write_seeds: cannot write into " << folder << '\n';
  return false;
}

bool writeAxisLanguageSeeds(const std::filesystem::path& folder) {
  const char* const reps[] = {"",
                              "1 DAY D '/' M '/' Y",
                              "6 HOU H 'h' | 1 DAY 3 D ' ' D | 1 MON 3 M",
                              "|",
                              ".5 SEC 'it''s ' s | | YEA",
                              "3 MON 3 M ' ' Y | -1e3 YEA Y",
                              "DAY | MON | YEA"};
  const char* const lists[] = {"YEA", "1 DAY 3 MON 1.5 YEA", "MIN HOU -2 DAY", ".5E1SEC+7 MIN"};
  int number = 0;
  for (const char* rep : reps) {
    const std::string bytes = std::string("|") + static_cast<char>(7 * number) + rep;
    if (!writeSeed(folder / "fuzz_axis_rep", std::to_string(number++), bytes)) return false;
  }
  for (const char* list : lists)
    if (!writeSeed(folder / "fuzz_date_list", std::to_string(number++), list)) return false;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: write_seeds FOLDER\n";
    return 1;
  }
  PoOrmelle::init();
  if (!writeAxisLanguageSeeds(argv[1])) return 1;
  for (const bool isBinary : {false, true}) {
    const auto folder = std::filesystem::path(argv[1]) / (isBinary ? "fuzz_mesh_binary" : "fuzz_mesh_text");
    for (unsigned number = 0; number < MeshFields::kNum; ++number)
      for (const int kind : {0, 1, 2}) {
        const std::unique_ptr<PoSFMesh> field = MeshFields::make(number);
        if (kind > 0) setGeometry(*field, kind == 2);
        if (kind == 2) addSets(*field->getMesh());
        const std::string text = MeshFields::write(*field, isBinary);
        if (!writeSeed(folder, std::to_string(number) + "-" + std::to_string(kind),
                       static_cast<char>(number) + text.substr(text.find('\n') + 1)))
          return 1;
      }
  }
  return 0;
}
