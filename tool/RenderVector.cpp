#include "Commands.h"
#include "IdleKits.h"
#include "Import.h"
#include "Notes.h"
#include "out/SceneFiles.h"

namespace tool {

void renderVector(const RenderOptions& options) {
  PageFormat format;
  format.width = options.size.width;
  format.height = options.size.height;
  if (options.dpi > 0.0) format.dpi = options.dpi;
  format.background = options.background;
  if (options.view) format.viewpoint = viewpointOf(options);

  startLibrary();
  const Scene scene = readAnyScene(options.scene);
  Notes notes;
  notes.add(writeVectorPicture(scene.root.get(), scene.file, format, options.picture));
  tellIdleKits(scene.root.get(), scene.file);
  notes.tell(options.picture);
}

}  // namespace tool
