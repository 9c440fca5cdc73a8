// Surfaces for printers in STL files, by VTK's reader.

#include <vtkSTLReader.h>
#include <vtkSmartPointer.h>

#include <algorithm>
#include <cstring>

#include "Readers.h"
#include "read_vtk.h"

namespace importer {

namespace {

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
  for (Piece& piece : data.pieces) {
    for (ScalarSet& set : piece.scalars)
      if (set.name == "STLSolidLabeling") set.name = "solid";
    // One solid needs no number.
    std::erase_if(piece.scalars, [](const ScalarSet& set) {
      return set.name == "solid" && std::all_of(set.values.begin(), set.values.end(), [](float v) { return v == 0; });
    });
  }
  if (hasAttributes) data.note("the attributes of its facets, which may be colours, were left out");
  return data;
}

}  // namespace importer
