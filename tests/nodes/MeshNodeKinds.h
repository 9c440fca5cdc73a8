#ifndef ORMELLE_TESTS_MESHNODEKINDS_H
#define ORMELLE_TESTS_MESHNODEKINDS_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFMesh.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "support/NodePtr.h"

/// Each mesh node with a small mesh of awkward numbers. A new mesh class joins by a line in MeshNodeKinds.cpp.
struct MeshNodeKind {
  std::string name;  ///< of the node class
  std::function<NodePtr<PoMeshProperty>()> make;
  std::string geometryText;  ///< what its geometry is written as, without the indent
};

const std::vector<MeshNodeKind>& meshNodeKinds();
/// The kind with this name.
const MeshNodeKind& meshNodeKind(const std::string& name);
inline std::ostream& operator<<(std::ostream& out, const MeshNodeKind& kind) { return out << kind.name; }

/// Name of a parameterised test.
struct MeshNodeKindName {
  template <class Info>
  std::string operator()(const Info& info) const {
    return info.param.name + std::to_string(info.index);
  }
};

/// Adds sets of every kind and binding under sparse indices.
void addSets(PoMeshProperty& node);
/// The names of the sets under the indices 0, 1, 2 ..., with their binding, for each kind of sets.
std::string describeSets(const PbMesh& mesh);

/// The field `mesh`.
PoSFMesh& fieldOf(PoMeshProperty& node);
/// The file that holds the value of a field and nothing else.
std::string fileOf(PoSFMesh& field, bool isBinary);
bool readFile(PoSFMesh& field, const std::string& file);
inline const std::string kTextHeader = "#Inventor V2.1 ascii\n\n";

#endif
