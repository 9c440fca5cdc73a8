#include "IdleKits.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoBaseStreamLine.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoMesh2D.h>
#include <Ormelle/PoMesh2DVec.h>
#include <Ormelle/PoMesh3D.h>
#include <Ormelle/PoMesh3DVec.h>
#include <Ormelle/PoMeshContouring.h>
#include <Ormelle/PoMeshCrossContour.h>
#include <Ormelle/PoMeshCrossSection.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoMeshLevelSurf.h>

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

constexpr std::size_t kMostSentences = 5;

template <class Class>
bool isA(const PoBase& kit) {
  return kit.isOfType(Class::getClassTypeId()) != FALSE;
}

std::string written(float value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", static_cast<double>(value));
  return text;
}

std::string nameOf(const SbString* name) {
  return name && name->getLength() > 0 ? std::string(" \"") + name->getString() + "\"" : "";
}

// Which sets there are where one isn't: "the mesh has no set of values 3, only 0 "height"".
std::string noSet(const PbMesh& mesh, const char* kind, int wanted, bool areVectors) {
  std::string text = std::string("the mesh has no set of ") + kind + " " + std::to_string(wanted);
  const int count = areVectors ? mesh.getNumVecsSet() : mesh.getNumValuesSet();
  int told = 0;
  for (int index = 0; told < std::min(count, 5) && index < 100; ++index) {
    if (areVectors ? !mesh.getVecsSet(index) : !mesh.getValuesSet(index)) continue;
    text += (told++ == 0 ? ", only " : ", ") + std::to_string(index) +
            nameOf(areVectors ? mesh.getVecsSetName(index) : mesh.getValuesSetName(index));
  }
  return text + (told < count && told > 0 ? " ..." : "");
}

// What a kit of a mesh needs, and what of it isn't there; empty if nothing is missing.
class Needs {
 public:
  Needs(const PoMesh& kit, SoState* state)
      : m_kit(kit),
        m_mesh(kit.getMesh() ? kit.getMesh() : PoMeshElement::getMesh(state)),
        m_mapping(kit.getDataMapping() ? kit.getDataMapping() : PoDataMappingElement::get(state)),
        m_isovalues(kit.getIsovaluesList() ? kit.getIsovaluesList() : PoIsovaluesListElement::get(state)) {}

  std::string ofColors() const {
    const int coloring = m_kit.coloringType.getValue();
    if (!m_mesh || coloring == PoMesh::COLOR_INHERITED) return "";
    if (!m_mapping) return "there is no data mapping before it";
    const int index = m_kit.valuesIndex.getValue();
    if (!m_mesh->getValuesSet(index)) return noSet(*m_mesh, "values", index, false);
    const bool areBands = coloring == PoMesh::COLOR_CONTOURING || coloring == PoMesh::COLOR_TEXTURE_CONTOURING;
    return areBands ? ofIsovalues(index) : "";
  }

  std::string ofAll() const {
    if (!m_mesh) return "there is no mesh before it";
    if (isA<PoMesh3D>(m_kit) && !dynamic_cast<const PbMesh3D*>(m_mesh))
      return "it is for volumes, and the mesh is none";
    if (isA<PoMesh2D>(m_kit) && !dynamic_cast<const PbMesh2D*>(m_mesh))
      return "it is for surfaces, and the mesh is none";
    if (isA<PoMesh2DVec>(m_kit) || isA<PoMesh3DVec>(m_kit)) {
      const int index = m_kit.vecsIndex.getValue();
      return m_mesh->getVecsSet(index) ? "" : noSet(*m_mesh, "vectors", index, true);
    }
    if (isA<PoMeshLevelSurf>(m_kit)) return ofLevel(static_cast<const PoMeshLevelSurf&>(m_kit));
    if (isA<PoMeshContouring>(m_kit) || isA<PoMeshCrossContour>(m_kit)) {
      const int index = m_kit.valuesIndex.getValue();
      if (!m_mesh->getValuesSet(index)) return noSet(*m_mesh, "values", index, false);
      std::string problem = ofIsovalues(index);
      if (!problem.empty()) return problem;
    }
    const std::string ofItsColors = ofColors();
    return ofItsColors.empty() && isA<PoMeshCrossSection>(m_kit) ? "its plane meets no cell of the mesh" : ofItsColors;
  }

 private:
  std::string ofLevel(const PoMeshLevelSurf& surface) const {
    const int own = surface.valuesIndexForLevel.getValue();
    const int index = own == -1 ? surface.valuesIndex.getValue() : own;
    if (!m_mesh->getValuesSet(index)) return noSet(*m_mesh, "values", index, false);
    const float level = surface.levelValue.getValue();
    return isBetween(index, level, level) ? ""
                                          : "its levelValue " + written(level) + " lies outside " + valuesOf(index);
  }

  std::string ofIsovalues(int index) const {
    int num = 0;
    int isRegular = 0;
    float min = 0;
    float max = 0;
    float step = 0;
    if (!m_isovalues || !m_isovalues->getIsoList(num, min, max, step, isRegular))
      return "there is no list of isovalues before it";
    return isBetween(index, min, max)
               ? ""
               : "the isovalues, " + written(min) + " to " + written(max) + ", lie outside " + valuesOf(index);
  }

  bool isBetween(int index, float low, float high) const {
    float min = 0;
    float max = 0;
    if (!m_mesh->getMinValuesSet(index, min) || !m_mesh->getMaxValuesSet(index, max)) return true;
    return std::max(low, high) >= min && std::min(low, high) <= max;
  }

  std::string valuesOf(int index) const {
    float min = 0;
    float max = 0;
    m_mesh->getMinValuesSet(index, min);
    m_mesh->getMaxValuesSet(index, max);
    return "the values" + nameOf(m_mesh->getValuesSetName(index)) + ", " + written(min) + " to " + written(max);
  }

  const PoMesh& m_kit;
  const PbMesh* m_mesh;
  const PbDataMapping* m_mapping;
  const PbIsovaluesList* m_isovalues;
};

std::string needsOfStream(const PoBaseStreamLine& stream, SoState* state) {
  const PbMesh* mesh = stream.getMesh() ? stream.getMesh() : PoMeshElement::getMesh(state);
  if (!mesh) return "there is no mesh before it";
  const int index = stream.vecsIndex.getValue();
  if (!mesh->getVecsSet(index)) return noSet(*mesh, "vectors", index, true);
  if (stream.startPoints.getNum() == 0) return "it has no startPoints";
  return "nothing flows from its startPoints inside the mesh, with this maxLength and this length of a step";
}

class Look {
 public:
  explicit Look(SoNode* scene) {
    SoCallbackAction action;
    action.addPreCallback(PoBase::getClassTypeId(), call<&Look::begin>, this);
    action.addPostCallback(PoBase::getClassTypeId(), call<&Look::end>, this);
    action.addPreCallback(SoShape::getClassTypeId(), call<&Look::shape>, this);
    action.apply(scene);
  }

  std::vector<std::string> sentences;

 private:
  struct Kit {
    bool isEmpty = true;
    std::string missing;
    std::string missingColors;
  };

  template <SoCallbackAction::Response (Look::*method)(SoState*, const SoNode&)>
  static SoCallbackAction::Response call(void* self, SoCallbackAction* action, const SoNode* node) {
    return (static_cast<Look*>(self)->*method)(action->getState(), *node);
  }

  SoCallbackAction::Response begin(SoState* state, const SoNode& node) {
    Kit& kit = m_inside.emplace_back();
    const auto& base = static_cast<const PoBase&>(node);
    if (isA<PoBaseStreamLine>(base)) {
      kit.missing = needsOfStream(static_cast<const PoBaseStreamLine&>(base), state);
    } else if (isA<PoMesh>(base)) {
      const Needs needs(static_cast<const PoMesh&>(base), state);
      kit.missing = needs.ofAll();
      kit.missingColors = needs.ofColors();
    }
    return SoCallbackAction::CONTINUE;
  }

  SoCallbackAction::Response end(SoState*, const SoNode& node) {
    const Kit kit = m_inside.back();
    m_inside.pop_back();
    if (!kit.isEmpty && !m_inside.empty()) m_inside.back().isEmpty = false;
    std::string text = node.getTypeId().getName().getString();
    if (kit.isEmpty)
      text += " shows nothing" + (kit.missing.empty() ? "" : ": " + kit.missing);
    else if (!kit.missingColors.empty())
      text += " has no colours of its own: " + kit.missingColors;
    else
      return SoCallbackAction::CONTINUE;
    if (std::find(sentences.begin(), sentences.end(), text) == sentences.end()) sentences.push_back(text);
    return SoCallbackAction::CONTINUE;
  }

  // Shapes are not walked into: that there is one is enough.
  SoCallbackAction::Response shape(SoState*, const SoNode& node) {
    const bool isIndexed = node.isOfType(SoIndexedShape::getClassTypeId()) != FALSE;
    if (!m_inside.empty() && !(isIndexed && static_cast<const SoIndexedShape&>(node).coordIndex.getNum() < 2))
      m_inside.back().isEmpty = false;
    return SoCallbackAction::PRUNE;
  }

  std::vector<Kit> m_inside;
};

}  // namespace

std::vector<std::string> idleKits(SoNode* scene) { return Look(scene).sentences; }

void tellIdleKits(SoNode* scene, const std::string& file) {
  const std::vector<std::string> sentences = idleKits(scene);
  const std::size_t told = std::min(sentences.size(), kMostSentences);
  for (std::size_t i = 0; i < told; ++i) std::fprintf(stderr, "ormelle: %s: %s.\n", file.c_str(), sentences[i].c_str());
  if (told < sentences.size())
    std::fprintf(stderr, "ormelle: %s: %zu more show nothing.\n", file.c_str(), sentences.size() - told);
}

}  // namespace tool
