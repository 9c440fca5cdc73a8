#include "ShownScene.h"

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/lists/SbStringList.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoTexture2.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "Failure.h"
#include "IdleKits.h"
#include "Import.h"
#include "SceneCheck.h"

namespace view {

namespace {

template <class Node>
std::vector<Node*> findAll(SoNode* root) {
  SoSearchAction search;
  search.setType(Node::getClassTypeId());
  search.setInterest(SoSearchAction::ALL);
  search.setSearchingAll(TRUE);
  search.apply(root);
  std::vector<Node*> found;
  found.reserve(static_cast<std::size_t>(search.getPaths().getLength()));
  for (int i = 0; i < search.getPaths().getLength(); ++i)
    found.push_back(static_cast<Node*>(search.getPaths()[i]->getTail()));
  return found;
}

// The fields of a camera as text; they are few.
std::string textOf(SoCamera* camera) {
  std::vector<char> text(16384, '\0');
  SoOutput out;
  out.setBuffer(text.data(), text.size(), nullptr);
  SoWriteAction write(&out);
  write.apply(camera);
  return text.data();
}

SbBox3f boxOf(SoNode* root, const SbViewportRegion& viewport) {
  SoGetBoundingBoxAction measure(viewport);
  measure.apply(root);
  return measure.getBoundingBox();
}

bool isFlatBox(const SbBox3f& box) {
  if (box.isEmpty()) return false;
  const SbVec3f size = box.getMax() - box.getMin();
  return size[2] <= 4e-3f * std::max(size[0], size[1]);  // as PiStage has it
}

std::vector<std::string> filesOf(const std::string& file, SoNode* root) {
  std::vector<std::string> files = {file};
  const auto add = [&files](const SbString& name) {
    if (name.getLength() == 0) return;
    const SbString found = SoInput::searchForFile(name, SoInput::getDirectories(), SbStringList());
    const std::string text = (found.getLength() > 0 ? found : name).getString();
    if (std::find(files.begin(), files.end(), text) == files.end()) files.push_back(text);
  };
  for (const SoFile* node : findAll<SoFile>(root)) add(node->getFullName());
  for (const SoTexture2* node : findAll<SoTexture2>(root)) add(node->filename.getValue());
  return files;
}

}  // namespace

ShownScene::ShownScene(const std::string& file, const SbViewportRegion& viewport) : m_scene(tool::readAnyScene(file)) {
  SoNode* scene = m_scene.root.get();
  tool::checkScene(scene, file);
  m_origin = tool::findOrigin(scene);
  m_files = filesOf(file, scene);
  m_stage = std::make_unique<PiStage>(scene, viewport);
  if (!m_stage->hasLight()) m_stage->addLights();
  m_isFlat = isFlatBox(boxOf(scene, viewport));
  if (m_stage->hasCamera()) {
    m_camera = m_stage->firstCamera();
  } else {
    PiViewpoint viewpoint = m_stage->usualViewpoint();
    viewpoint.isOrthographic = viewpoint.isOrthographic || m_isFlat;
    m_stage->addCamera(viewpoint);
    m_camera = m_stage->camera();
  }
  // Texts of a fixed size on the screen have one in the scene only now that there is a camera.
  if (boxOf(m_stage->root(), viewport).isEmpty()) throw tool::Failure(file + ": there is nothing to draw");
  tool::tellIdleKits(m_stage->root(), file);
  if (m_camera && m_stage->hasCamera()) m_cameraInFile = textOf(m_camera);
}

void ShownScene::keepCamera(const ShownScene& before, const SoCamera* current) {
  if (!m_camera || !current || m_cameraInFile != before.m_cameraInFile) return;
  if (m_camera->getTypeId() == current->getTypeId()) m_camera->copyFieldValues(current);
}

std::string stateOf(const std::vector<std::string>& files) {
  std::string state;
  for (const std::string& file : files) {
    struct stat now {};
    if (stat(file.c_str(), &now) != 0) now = {};
    for (const long long part :
         {static_cast<long long>(now.st_ino), static_cast<long long>(now.st_size),
          static_cast<long long>(now.st_mtim.tv_sec), static_cast<long long>(now.st_mtim.tv_nsec)})
      state += std::to_string(part) + " ";
  }
  return state;
}

}  // namespace view
