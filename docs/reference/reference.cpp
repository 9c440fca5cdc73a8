// Writes what the reference shows of a class beside its docstring: the picture, the fields with their defaults, the
// parts of a kit, and an example. Fields and parts come from the classes themselves, pictures from the gallery, and
// examples from the compiled files beside this one.
//
// usage: class_reference SOURCE_TREE GALLERY OUT.dox    fails if a public class lacks a picture or an example

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <Inventor/fields/SoField.h>
#include <Inventor/fields/SoFieldContainer.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodekits/SoNodekitCatalog.h>
#include <Inventor/nodes/SoNode.h>

#include <Ormelle/PoOrmelle.h>

namespace {

namespace fs = std::filesystem;

std::string textOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.string() + " can't be read");
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

struct Class {
  std::string name;
  std::string parent;  // the first public base, empty if there is none
  bool hasExample = false;
};

// The public classes with a docstring of their own, by name, from the headers of a folder.
std::map<std::string, Class> readClasses(const fs::path& headers) {
  static const std::regex kHead(R"((?:^|\n)class ORMELLE_API (\w+)(?: final)?(?: : public (\w+))?)");
  static const std::regex kTemplate(R"(\ntemplate <[^>]*>\nclass (?:ORMELLE_API )?(\w+)(?: : public (\w+))?)");
  std::map<std::string, Class> classes;
  for (const auto& file : fs::directory_iterator(headers)) {
    if (file.path().extension() != ".h") continue;
    const std::string text = textOf(file.path());
    for (const std::regex& head : {kHead, kTemplate})
      for (auto it = std::sregex_iterator(text.begin(), text.end(), head); it != std::sregex_iterator(); ++it) {
        Class found{(*it)[1].str(), (*it)[2].str()};
        const std::string before = text.substr(0, static_cast<std::size_t>(it->position()) + 1);
        const std::size_t docs = before.rfind("\n\n");  // the docstring has no empty line
        found.hasExample = before.find("/// @code", docs) != std::string::npos ||
                           std::regex_search(before.substr(docs), std::regex(R"(\n///     \w)"));
        classes[found.name] = found;
      }
  }
  return classes;
}

// Names between //! [Name] marks, and the file that holds each.
std::map<std::string, std::string> readExamples(const fs::path& folder) {
  static const std::regex kMark(R"(//! \[(\w+)\])");
  std::map<std::string, std::string> examples;
  for (const auto& file : fs::directory_iterator(folder)) {
    if (file.path().extension() != ".cpp" || file.path().filename() == "reference.cpp") continue;
    const std::string text = textOf(file.path());
    for (auto it = std::sregex_iterator(text.begin(), text.end(), kMark); it != std::sregex_iterator(); ++it)
      examples[(*it)[1].str()] = file.path().filename().string();
  }
  return examples;
}

struct Picture {
  std::string name, title, caption;
  std::set<std::string> words;  // of its scene or program
};

std::set<std::string> wordsOf(const std::string& text) {
  static const std::regex kName(R"(\bP[bo][A-Z]\w+)");
  std::set<std::string> words;
  for (auto it = std::sregex_iterator(text.begin(), text.end(), kName); it != std::sregex_iterator(); ++it)
    words.insert(it->str());
  return words;
}

std::vector<Picture> readPictures(const fs::path& gallery, const fs::path& examples) {
  std::vector<Picture> pictures;
  for (const auto& file : fs::directory_iterator(gallery)) {
    if (file.path().extension() != ".png") continue;
    Picture picture{file.path().stem().string(), "", "", {}};
    const fs::path scene = gallery / "scenes" / picture.name;
    const bool isScene = fs::exists(scene.string() + ".iv");
    const std::string about = (isScene ? scene : gallery / picture.name).string() + ".json";
    const auto json = fs::exists(about) ? nlohmann::json::parse(textOf(about), nullptr, false) : nlohmann::json();
    if (!json.is_object()) continue;
    picture.title = json.value("title", picture.name);
    picture.caption = json.value("caption", "");
    std::string source =
        textOf(isScene ? fs::path(scene.string() + ".iv") : examples / json.value("program", picture.name + ".cpp"));
    static const std::regex kFile(R"re("(meshes/\w+\.iv)")re");  // the mesh node stands in a file of its own
    std::string meshes;
    for (auto it = std::sregex_iterator(source.begin(), source.end(), kFile); it != std::sregex_iterator(); ++it) {
      std::ifstream mesh(gallery / "scenes" / (*it)[1].str(), std::ios::binary);
      std::string head(400, ' ');
      mesh.read(head.data(), static_cast<std::streamsize>(head.size()));
      meshes += head;
    }
    picture.words = wordsOf(source + meshes);
    pictures.push_back(std::move(picture));
  }
  std::sort(pictures.begin(), pictures.end(), [](const Picture& a, const Picture& b) { return a.name < b.name; });
  return pictures;
}

// The picture of one class: the first whose caption names it, else the first whose scene or program uses it.
const Picture* pictureOf(const std::string& name, const std::vector<Picture>& pictures) {
  for (const Picture& picture : pictures)
    if (wordsOf(picture.caption).count(name)) return &picture;
  for (const Picture& picture : pictures)
    if (picture.words.count(name)) return &picture;
  return nullptr;
}

// What shows a class that no scene names itself: the node of a data object, of its field or of its element; a mesh of
// such cells; then its parents and what derives from it.
std::vector<std::string> standInsOf(const std::string& name) {
  static const std::map<std::string, std::string> kCells = {
      {"PbPixelCell", "PoRegularCartesianGrid2D"},  {"PbVoxelCell", "PoRegularCartesianGrid3D"},
      {"PbTriangleCell", "PoTriangleMesh2D"},       {"PbQuadrangleCell", "PoQuadrangleMesh2D"},
      {"PbTetrahedronCell", "PoTetrahedronMesh3D"}, {"PbHexahedronCell", "PoHexahedronMesh3D"},
      {"PbWedgeCell", "PoIndexedMesh3D"},           {"PbPyramidCell", "PoIndexedMesh3D"}};
  const auto cell = kCells.find(name);
  if (cell != kCells.end()) return {cell->second, "PoMeshSkin"};
  std::vector<std::string> names;
  if (name.rfind("PoSF", 0) == 0) names = {"Po" + name.substr(4)};
  if (name.rfind("Pb", 0) == 0) names = {"Po" + name.substr(2)};
  if (name.size() > 7 && name.rfind("Element") == name.size() - 7) names = {name.substr(0, name.size() - 7)};
  if (name == "PoMeshElement" || name.find("Array") != std::string::npos) names = {"PoMeshFilled"};
  if (name.find("Profile") != std::string::npos) names = {"PoTube"};
  return names;
}

const Picture* findPicture(const Class& wanted, const std::map<std::string, Class>& classes,
                           const std::vector<Picture>& pictures) {
  if (const Picture* own = pictureOf(wanted.name, pictures)) return own;
  for (const std::string& name : standInsOf(wanted.name))
    if (const Picture* other = pictureOf(name, pictures)) return other;
  for (const auto& [name, derived] : classes)
    if (derived.parent == wanted.name)
      if (const Picture* other = findPicture(derived, classes, pictures)) return other;
  for (auto parent = classes.find(wanted.parent); parent != classes.end(); parent = classes.find(parent->second.parent))
    if (const Picture* other = pictureOf(parent->first, pictures)) return other;
  for (const Picture& picture : pictures)  // what every scene stands on
    if (picture.words.count("PoMeshFilled")) return &picture;
  return nullptr;
}

std::string valueOf(const SoField& field) {
  SbString text;
  const_cast<SoField&>(field).get(text);
  std::string value = text.getString();
  std::replace(value.begin(), value.end(), '\n', ' ');
  if (value.size() > 60) value = value.substr(0, 57) + "...";
  return value.empty() || value == "[  ]" ? "empty" : value;
}

// The fields of a node with their defaults; the parts of a kit are told apart.
std::string fieldsOf(const SoFieldContainer& object) {
  SoFieldList fields;
  object.getFields(fields);
  const SoNodekitCatalog* catalog = object.isOfType(SoBaseKit::getClassTypeId())
                                        ? static_cast<const SoBaseKit&>(object).getNodekitCatalog()
                                        : nullptr;
  std::ostringstream out;
  for (int i = 0; i < fields.getLength(); ++i) {
    SbName name;
    if (!object.getFieldName(fields[i], name) || name == "callbackList") continue;
    if (catalog && catalog->getPartNumber(name) != SO_CATALOG_NAME_NOT_FOUND) continue;
    const std::string type = fields[i]->getTypeId().getName().getString();
    const std::string value = type.find("Mesh") == std::string::npos && type.find("Grid") == std::string::npos
                                  ? valueOf(*fields[i])
                                  : "an empty mesh";
    out << " * <tr><td>\\c " << name.getString() << "<td>\\c %" << type << "<td><code>" << value << "</code>\n";
  }
  if (out.str().empty()) return "";
  return " * \\par Fields and their defaults\n * <table><tr><th>Field<th>Type<th>Default\n" + out.str() +
         " * </table>\n";
}

void writeParts(std::ostream& out, const SoNodekitCatalog& catalog, int parent, int depth) {
  for (int i = 1; i < catalog.getNumEntries(); ++i) {
    if (catalog.getParentPartNumber(i) != parent || catalog.getName(i) == "callbackList") continue;
    out << " * " << std::string(static_cast<std::size_t>(2 * depth), ' ') << catalog.getName(i).getString() << "  "
        << catalog.getType(i).getName().getString() << '\n';
    writeParts(out, catalog, i, depth + 1);
  }
}

void writeClass(std::ostream& out, const Class& about, const Picture& picture, const std::string& exampleFile) {
  out << "/** \\class " << about.name << "\n *\n * \\image html " << picture.name << ".png \"" << picture.title
      << "\" width=640px\n *\n";
  const SoType type = SoType::fromName(about.name.c_str());
  if (!type.isBad() && type.isDerivedFrom(SoNode::getClassTypeId())) {
    if (type.canCreateInstance()) {
      auto* node = static_cast<SoNode*>(type.createInstance());
      node->ref();
      out << fieldsOf(*node) << " *\n";
      if (node->isOfType(SoBaseKit::getClassTypeId())) {
        out << " * \\par Parts\n * @code{.unparsed}\n";
        writeParts(out, *static_cast<SoBaseKit*>(node)->getNodekitCatalog(), 0, 0);
        out << " * @endcode\n *\n";
      }
      node->unref();
    }
  }
  if (!about.hasExample) out << " * \\par Example\n * \\snippet " << exampleFile << ' ' << about.name << "\n *\n";
  out << " */\n\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: class_reference SOURCE_TREE GALLERY OUT.dox\n");
    return 2;
  }
  int missing = 0;
  try {
    const fs::path tree = argv[1];
    const auto classes = readClasses(tree / "include/Ormelle");
    const auto examples = readExamples(tree / "docs/reference");
    const auto pictures = readPictures(argv[2], tree / "examples");
    PoOrmelle::init();
    std::ostringstream dox;
    for (const auto& [name, about] : classes) {
      const Picture* picture = findPicture(about, classes, pictures);
      const auto example = examples.find(name);
      if (!picture) std::fprintf(stderr, "%s has no picture.\n", name.c_str());
      if (!about.hasExample && example == examples.end()) std::fprintf(stderr, "%s has no example.\n", name.c_str());
      if (picture && (about.hasExample || example != examples.end()))
        writeClass(dox, about, *picture, example == examples.end() ? "" : example->second);
      else
        ++missing;
    }
    PoOrmelle::finish();
    std::ofstream out(argv[3], std::ios::binary);
    if (!(out << dox.str()) || !out.flush()) throw std::runtime_error(std::string(argv[3]) + " can't be written");
    std::printf("%zu classes, %zu pictures\n", classes.size(), pictures.size());
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s.\n", problem.what());
    return 1;
  }
  return missing ? 1 : 0;
}
