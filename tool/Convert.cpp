#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>

#include <Ormelle/PoBase.h>

#include <filesystem>

#include "Commands.h"
#include "Failure.h"
#include "FileKind.h"
#include "Import.h"
#include "Notes.h"
#include "SceneFile.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"
#include "out/SceneFiles.h"

namespace tool {

namespace {

// Writes a scene.
void write(const Scene& scene, const ConvertOptions& options) {
  // What is VRML already stays as it is.
  if (isModelFile(options.to) && !(scene.isVrml2 && hasEnding(options.to, ".wrl"))) {
    Notes notes;
    notes.add(writeModel(scene.root.get(), scene.file, options.to));
    return notes.tell(options.to);
  }
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
  if (file.stream()) importScene(from, file.stream(), options.isBinary, options.limits, ImportReport::All);
  const std::string problem = file.close();
  if (!problem.empty()) throw Failure(to + ": " + problem);
}

}  // namespace

void convert(const ConvertOptions& options) {
  startLibrary();
  if (isSceneFile(options.from)) return write(readScene(options.from), options);
  std::error_code ignored;
  if (std::filesystem::equivalent(options.from, options.to, ignored))
    throw Failure(options.to + ": the scene would replace the file that it is made from");
  if (!options.isGeometry && !isModelFile(options.to)) return importFile(options.from, options.to, options);
  write(readAnyScene(options.from, options.limits, ImportReport::All), options);
}

}  // namespace tool
