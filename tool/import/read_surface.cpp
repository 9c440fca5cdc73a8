// Surfaces of scanners and printers, by VTK's readers: PLY and STL. What those readers pass over is found by a
// look at the file itself.

#include <vtkPLYReader.h>
#include <vtkSTLReader.h>
#include <vtkSmartPointer.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <sstream>

#include "Readers.h"
#include "read_vtk.h"

namespace importer {

namespace {

void renameSets(Dataset& data, const std::string& from, const std::string& to) {
  for (Piece& piece : data.pieces) {
    for (ScalarSet& set : piece.scalars)
      if (set.name.starts_with(from)) set.name.replace(0, from.size(), to);
    for (VectorSet& set : piece.vectors)
      if (set.name == from) set.name = to;
  }
}

// ---- PLY ------------------------------------------------------------------------------------------------------------

// What the header promises.
struct PlyHeader {
  struct Element {
    std::string name;
    unsigned long long count = 0;
    std::size_t leastSize = 0;  ///< of one of them, in bytes
    std::vector<std::string> properties;
  };
  std::vector<Element> elements;
  std::size_t size = 0;
  bool isText = false;
};

std::size_t sizeOfType(const std::string& type) {
  static const std::map<std::string, std::size_t> sizes{{"char", 1},  {"uchar", 1},   {"int8", 1},   {"uint8", 1},
                                                        {"short", 2}, {"ushort", 2},  {"int16", 2},  {"uint16", 2},
                                                        {"int", 4},   {"uint", 4},    {"int32", 4},  {"uint32", 4},
                                                        {"float", 4}, {"float32", 4}, {"double", 8}, {"float64", 8}};
  const auto found = sizes.find(type);
  return found == sizes.end() ? 0 : found->second;
}

PlyHeader parsePlyHeader(std::string_view bytes) {
  PlyHeader header;
  bool isOver = false;
  std::string_view rest = bytes;
  while (!rest.empty() && !isOver) {
    const std::size_t end = rest.find_first_of("\n\r");
    std::istringstream line(std::string(rest.substr(0, end)));
    std::string word;
    line >> word;
    if (word == "format") {
      line >> word;
      header.isText = word == "ascii";
    } else if (word == "element") {
      PlyHeader::Element& element = header.elements.emplace_back();
      if (!(line >> element.name >> element.count)) throw Failure("an element of its header has no number");
    } else if (word == "property" && !header.elements.empty()) {
      std::string type, name;
      line >> type;
      const bool isList = type == "list";
      if (isList) line >> type >> word;
      line >> name;
      const std::size_t size = sizeOfType(type);
      if (size == 0 || (isList && sizeOfType(word) == 0))
        throw Failure("its header names a type that there isn't: " + type.substr(0, 30));
      header.elements.back().leastSize += header.isText ? 2 : size;
      header.elements.back().properties.push_back(name);
    } else if (word == "end_header") {
      isOver = true;
    }
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  if (!isOver) throw Failure("its header has no end");
  header.size = bytes.size() - rest.size();
  unsigned long long promised = 0;
  for (const PlyHeader::Element& element : header.elements) {
    if (element.count > bytes.size()) throw Failure("its header promises more than the file holds");
    promised += element.count * element.leastSize;
  }
  // The last line of a text may go without its end.
  if (promised > rest.size() + 1) throw Failure("its header promises more than the file holds");
  return header;
}

// ---- STL ------------------------------------------------------------------------------------------------------------

constexpr std::size_t kStlHead = 84, kStlFacet = 50;

// A binary file says how many facets follow its 80 bytes of anything.
bool isBinaryStl(std::string_view bytes, std::uint32_t& numFacets) {
  if (bytes.size() < kStlHead) return false;
  std::memcpy(&numFacets, bytes.data() + 80, 4);
  const std::size_t promised = kStlHead + kStlFacet * std::size_t{numFacets};
  if (bytes.size() == promised) return true;
  return !bytes.starts_with("solid") || bytes.substr(0, 4096).find('\0') != std::string_view::npos;
}

}  // namespace

Dataset readPly(const std::string& file) {
  PlyHeader header;
  {
    const std::string bytes = readWhole(file);
    header = parsePlyHeader(bytes);
  }
  const auto reader = vtkSmartPointer<vtkPLYReader>::New();
  reader->SetFileName(file.c_str());
  Dataset data = readByVtk(*reader, file);
  renameSets(data, "RGBA", "colour");
  renameSets(data, "RGB", "colour");
  renameSets(data, "Normals", "normal");
  renameSets(data, "TCoords", "texture coordinates");
  static const std::array<std::string_view, 21> known{
      "x",        "y", "z",   "nx",    "ny",   "nz",    "u",         "v",           "texture_u",     "texture_v",
      "s",        "t", "red", "green", "blue", "alpha", "intensity", "diffuse_red", "diffuse_green", "diffuse_blue",
      "texnumber"};
  for (const PlyHeader::Element& element : header.elements) {
    const bool isVertex = element.name == "vertex", isFace = element.name == "face";
    if (!isVertex && !isFace) {
      if (element.count > 0)
        data.note(counted(static_cast<std::size_t>(element.count), "element", "elements") + " \"" + element.name +
                  (element.count == 1 ? "\" was left out" : "\" were left out"));
      continue;
    }
    for (const std::string& property : element.properties) {
      if (property == "vertex_indices" || property == "vertex_index") continue;
      if (std::find(known.begin(), known.end(), property) == known.end())
        data.note("the property \"" + property + (isVertex ? "\" of vertices" : "\" of faces") + " was left out");
    }
  }
  return data;
}

Dataset readStl(const std::string& file) {
  bool hasAttributes = false;
  {
    const std::string bytes = readWhole(file);
    std::uint32_t numFacets = 0;
    if (isBinaryStl(bytes, numFacets)) {
      if (bytes.size() < kStlHead + kStlFacet * std::size_t{numFacets})
        throw Failure("it promises " + std::to_string(numFacets) + " facets and breaks off");
      for (std::size_t facet = 0; facet < numFacets && !hasAttributes; ++facet) {
        const std::size_t at = kStlHead + kStlFacet * facet + 48;
        hasAttributes = bytes[at] != 0 || bytes[at + 1] != 0;
      }
    } else if (bytes.find("endsolid") == std::string::npos) {
      throw Failure("it has no \"endsolid\" at its end");
    }
  }
  const auto reader = vtkSmartPointer<vtkSTLReader>::New();
  reader->SetFileName(file.c_str());
  reader->MergingOn();
  reader->ScalarTagsOn();
  Dataset data = readByVtk(*reader, file);
  renameSets(data, "STLSolidLabeling", "solid");
  // One solid needs no number.
  for (Piece& piece : data.pieces)
    std::erase_if(piece.scalars, [](const ScalarSet& set) {
      return set.name == "solid" && std::all_of(set.values.begin(), set.values.end(), [](float v) { return v == 0; });
    });
  if (hasAttributes) data.note("the attributes of its facets, which may be colours, were left out");
  return data;
}

}  // namespace importer
