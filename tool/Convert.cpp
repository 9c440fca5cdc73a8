#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>

#include <Ormelle/PoBase.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "Commands.h"
#include "Failure.h"
#include "Import.h"
#include "SceneFile.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace tool {

namespace {

// Writes a scene.
void write(const Scene& scene, const ConvertOptions& options) {
  PoBase::setNodeWriteFormat(options.isGeometry ? PoBase::WRITE_GEOMETRY : PoBase::WRITE_FIELDS);
  PiWholeFile file(options.to);
  if (file.stream()) {
    SoOutput out;
    out.setFilePointer(file.stream());
    out.setBinary(options.isBinary ? TRUE : FALSE);
    if (scene.isVrml2) out.setHeaderString("#VRML V2.0 utf8");
    SoWriteAction write(&out);
    write.apply(scene.root.get());
  }
  const std::string problem = file.close();
  if (!problem.empty()) throw Failure(options.to + ": " + problem);
}

void importFile(const std::string& from, const std::string& to, const ConvertOptions& options) {
  PiWholeFile file(to);
  if (file.stream()) importScene(from, file.stream(), options.isBinary, options.limits);
  const std::string problem = file.close();
  if (!problem.empty()) throw Failure(to + ": " + problem);
}

// A folder of one's own, removed at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ormelle-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw Failure(pattern + ": " + std::strerror(errno));
    m_path = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace

void convert(const ConvertOptions& options) {
  startLibrary();
  if (isSceneFile(options.from)) return write(readScene(options.from), options);
  std::error_code ignored;
  if (std::filesystem::equivalent(options.from, options.to, ignored))
    throw Failure(options.to + ": the scene would replace the file that it is made from");
  if (!options.isGeometry) return importFile(options.from, options.to, options);
  const TemporaryFolder folder;
  const std::string scene = (folder.path() / "scene.iv").string();
  importFile(options.from, scene, options);
  write(readScene(scene), options);
}

}  // namespace tool
