#include "support/SceneText.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>

#include <cstdlib>

std::string textOf(SoNode* node) {
  SoOutput out;
  out.setBuffer(std::malloc(1), 1, std::realloc);
  SoWriteAction action(&out);
  action.apply(node);
  void* buffer = nullptr;
  size_t size = 0;
  out.getBuffer(buffer, size);
  std::string text(static_cast<char*>(buffer), size);
  std::free(buffer);
  return text;
}

NodePtr<SoSeparator> sceneOf(const std::string& text) {
  SoInput in;
  in.setBuffer(const_cast<char*>(text.data()), text.size());
  return NodePtr<SoSeparator>(SoDB::readAll(&in));
}
