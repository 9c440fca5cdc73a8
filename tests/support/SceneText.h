#ifndef ORMELLE_TESTS_SCENETEXT_H
#define ORMELLE_TESTS_SCENETEXT_H

#include <Inventor/nodes/SoSeparator.h>

#include <string>

#include "support/NodePtr.h"

/// The text that the node is written as.
std::string textOf(SoNode* node);
/// The scene that the text holds; null if it can't be read.
NodePtr<SoSeparator> sceneOf(const std::string& text);

#endif
