#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoDebugError.h>

#include <pybind11/stl.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "Callbacks.h"
#include "Failure.h"
#include "SceneCheck.h"
#include "SceneFile.h"
#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"
#include "out/SceneFiles.h"

namespace python {

namespace {

using namespace pybind11::literals;

/// Collects what toolkit and library complain of, and makes warnings of Python of it.
class Complaints {
 public:
  Complaints() {
    install<SoDebugError>(0);
    install<SoMemoryError>(1);
    install<PoDebugError>(2);
  }
  ~Complaints() { restore(); }
  Complaints(const Complaints&) = delete;
  Complaints& operator=(const Complaints&) = delete;

  /// Throws if the application turned warnings into exceptions.
  void warn() {
    restore();
    for (const std::string& text : m_texts)
      if (PyErr_WarnEx(PyExc_RuntimeWarning, text.c_str(), 1) != 0) throw py::error_already_set();
  }

 private:
  static constexpr std::size_t kMost = 20;

  struct Handler {
    SoErrorCB* function = nullptr;
    void* data = nullptr;
  };

  static void note(const SoError* error, void* self) {
    auto& texts = static_cast<Complaints*>(self)->m_texts;
    std::string text = error->getDebugString().getString();
    while (!text.empty() && text.back() == '\n') text.pop_back();
    if (texts.size() < kMost && std::find(texts.begin(), texts.end(), text) == texts.end())
      texts.push_back(std::move(text));
  }
  template <class Error>
  void install(std::size_t place) {
    m_handlers[place] = {Error::getHandlerCallback(), Error::getHandlerData()};
    Error::setHandlerCallback(note, this);
  }
  void restore() {
    if (!std::exchange(m_isListening, false)) return;
    SoDebugError::setHandlerCallback(m_handlers[0].function, m_handlers[0].data);
    SoMemoryError::setHandlerCallback(m_handlers[1].function, m_handlers[1].data);
    PoDebugError::setHandlerCallback(m_handlers[2].function, m_handlers[2].data);
  }

  Handler m_handlers[3];
  bool m_isListening = true;
  std::vector<std::string> m_texts;
};

/// Holds a reference to a node for as long as a function runs.
class HeldNode {
 public:
  explicit HeldNode(SoNode* node) : m_node(node) { m_node->ref(); }
  ~HeldNode() { m_node->unref(); }
  HeldNode(const HeldNode&) = delete;
  HeldNode& operator=(const HeldNode&) = delete;

 private:
  SoNode* m_node;
};

/// The latest size drawn, so that the toolkit's caches serve for the next picture of the same scene.
struct Studio {
  std::unique_ptr<PiOffscreen> offscreen;
  std::pair<int, int> size;
};

Studio& studio() {
  static auto* all = new Studio;  // emptied before the interpreter ends
  return *all;
}

PiOffscreen& offscreenOf(int width, int height) {
  Studio& all = studio();
  if (!all.offscreen || all.size != std::pair(width, height)) {
    all.offscreen.reset();
    all.offscreen = std::make_unique<PiOffscreen>(width, height);
    all.size = {width, height};
  }
  if (!all.offscreen->error().empty()) {
    const std::string error = all.offscreen->error();
    all.offscreen.reset();
    throw py::value_error(error);
  }
  return *all.offscreen;
}

// ---- Pictures -------------------------------------------------------------------------------------------------------

PiViewpoint viewpointOf(py::handle direction, py::handle up, bool isOrthographic, float margin, float headroom) {
  PiViewpoint viewpoint;
  viewpoint.direction = pointOf(direction, "direction");
  viewpoint.up = pointOf(up, "up");
  viewpoint.isOrthographic = isOrthographic;
  viewpoint.margin = finite(margin, "margin");
  viewpoint.headroom = finite(headroom, "headroom");
  for (const SbVec3f* vector : {&viewpoint.direction, &viewpoint.up}) {
    for (int axis = 0; axis < 3; ++axis) finite((*vector)[axis], "a direction");
    if (vector->length() == 0) throw py::value_error("a direction must be longer than 0");
  }
  return viewpoint;
}

py::array_t<uint8_t> arrayOf(const PiPicture& picture) {
  auto pixels = std::make_unique<std::vector<uint8_t>>(picture.rgba);
  const uint8_t* data = pixels->data();
  const py::capsule owner(pixels.release(), [](void* held) { delete static_cast<std::vector<uint8_t>*>(held); });
  return py::array_t<uint8_t>(std::vector<py::ssize_t>{picture.height, picture.width, 4}, data, owner);
}

// None is a transparent background.
tool::Background backgroundOf(py::handle background) {
  tool::Background found{SbColor(1, 1, 1), 0};
  if (!background.is_none()) found.color = colorOf(background, "the background", &found.opacity);
  return found;
}

void checkSize(py::ssize_t width, py::ssize_t height) {
  if (width < 1 || height < 1 || width > 32767 || height > 32767)
    throw py::value_error("a picture can't have " + std::to_string(width) + " x " + std::to_string(height) + " pixels");
}

py::array_t<uint8_t> render(py::handle scene, py::ssize_t width, py::ssize_t height, py::handle background, int samples,
                            const std::optional<PiViewpoint>& viewpoint) {
  SoNode* node = nodeOf(scene, "the scene");
  const HeldNode held(node);
  checkSize(width, height);
  if (samples < 1 || samples > 4096)
    throw py::value_error("there can be 1 to 4096 samples, not " + std::to_string(samples));
  const tool::Background behind = backgroundOf(background);
  PiOffscreen& offscreen = offscreenOf(static_cast<int>(width), static_cast<int>(height));
  offscreen.setBackground(behind.color, behind.opacity);
  offscreen.setSamples(samples);
  offscreen.setViewpoint(viewpoint);

  Complaints complaints;
  RaisedInside raised;
  tool::checkScene(node, "the scene");
  if (!offscreen.draw(node)) throw std::runtime_error(offscreen.error());
  raised.raise();
  complaints.warn();
  return arrayOf(offscreen.picture());
}

void releaseStudio() { studio().offscreen.reset(); }

// ---- Files ----------------------------------------------------------------------------------------------------------

py::object readScene(const std::string& file) {
  Complaints complaints;
  const tool::Scene scene = tool::readScene(file);
  complaints.warn();
  return proxyOf(scene.root.get());
}

void writeScene(py::handle scene, const std::string& file, bool isBinary) {
  SoNode* node = nodeOf(scene, "the scene");
  const HeldNode held(node);
  Complaints complaints;
  PiWholeFile whole(file);
  if (whole.stream()) {
    SoOutput out;
    out.setFilePointer(whole.stream());
    out.setBinary(isBinary ? TRUE : FALSE);
    SoWriteAction(&out).apply(node);
  }
  const std::string problem = whole.close();
  if (!problem.empty()) throw tool::Failure(file + ": " + problem);
  complaints.warn();
}

// Writes a vector picture or a model, as the file's name says. Returns what it holds otherwise than one may expect.
std::string saveScene(py::handle scene, const std::string& file, py::ssize_t width, py::ssize_t height,
                      py::handle background, double dpi, const std::optional<PiViewpoint>& viewpoint) {
  SoNode* node = nodeOf(scene, "the scene");
  const HeldNode held(node);
  checkSize(width, height);
  if (!(dpi >= 1 && dpi <= 1e6)) throw py::value_error("an inch can't have " + std::to_string(dpi) + " pixels");
  Complaints complaints;
  RaisedInside raised;
  std::string note;
  if (tool::isModelFile(file))
    note = tool::writeModel(node, "the scene", file);
  else
    note = tool::writeVectorPicture(
        node, "the scene",
        {static_cast<int>(width), static_cast<int>(height), dpi, backgroundOf(background), viewpoint}, file);
  raised.raise();
  complaints.warn();
  return note;
}

bool hasCamera(py::handle scene) {
  SoSearchAction search;
  search.setType(SoCamera::getClassTypeId());
  search.setInterest(SoSearchAction::FIRST);
  search.apply(nodeOf(scene, "the scene"));
  return search.getPath() != nullptr;
}

}  // namespace

void addScenes(py::module_& module) {
  py::register_exception<tool::Failure>(module, "SceneError", PyExc_OSError);
  py::class_<PiViewpoint>(module, "Viewpoint")
      .def(py::init(&viewpointOf), "direction"_a, "up"_a, "orthographic"_a, "margin"_a, "headroom"_a);
  module.def("render", &render, "scene"_a, "width"_a, "height"_a, "background"_a, "samples"_a,
             "viewpoint"_a.none(true));
  module.def("save", &saveScene, "scene"_a, "file"_a, "width"_a, "height"_a, "background"_a, "dpi"_a,
             "viewpoint"_a.none(true));
  module.def("release_pictures", &releaseStudio, "Gives back what drawing keeps for the next picture.");
  module.def("read", &readScene, "file"_a);
  module.def("write", &writeScene, "scene"_a, "file"_a, "binary"_a);
  module.def("has_camera", &hasCamera, "scene"_a);
}

}  // namespace python
