#include <Ormelle/PoOrmelle.h>

#include "Arguments.h"
#include "graph/toolkit/offscreen/PiFonts.h"

PYBIND11_MODULE(_core, module) {
  // Pivy starts the toolkit and makes the objects of nodes; without it there's nothing to do.
  useInstalledFonts();
  pybind11::module_::import("pivy.coin");
  PoOrmelle::init();
  module.doc() = "The part of ormelle that is written in C++.";
  module.attr("version") = PoOrmelle::getVersion();
  python::addData(module);
  python::addMeshes(module);
  python::addMeshClasses(module);
  python::addNodes(module);
  python::addNodeData(module);
  python::addNodeFunctions(module);
  python::addFields(module);
  python::addCellFilter(module);
  python::addScenes(module);
}
