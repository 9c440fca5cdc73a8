#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>

#include <Ormelle/PoBase.h>

#include "Commands.h"
#include "Failure.h"
#include "SceneFile.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace tool {

void convert(const ConvertOptions& options) {
  startLibrary();
  const Scene scene = readScene(options.from);
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

}  // namespace tool
