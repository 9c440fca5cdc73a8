#include "Readers.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace importer {

namespace {

// A format whose reader this program may have been built without.
#ifdef ORMELLE_IMPORT_HAS_VTK
#define IMPORT_WITH_VTK(read) read
#else
#define IMPORT_WITH_VTK(read) nullptr
#endif
#ifdef ORMELLE_IMPORT_HAS_TINYOBJ
#define IMPORT_WITH_TINYOBJ(read) read
#else
#define IMPORT_WITH_TINYOBJ(read) nullptr
#endif
#ifdef ORMELLE_IMPORT_HAS_GMSH
#define IMPORT_WITH_GMSH(read) read
#else
#define IMPORT_WITH_GMSH(read) nullptr
#endif
#ifdef ORMELLE_IMPORT_HAS_NETCDF
#define IMPORT_WITH_NETCDF(read) read
#else
#define IMPORT_WITH_NETCDF(read) nullptr
#endif

constexpr const char* kVtk = "ORMELLE_IMPORT_VTK";

constexpr std::array kReaders{
    Reader{"legacy VTK file", ".vtk", isVtkLegacy, IMPORT_WITH_VTK(readVtkLegacy), kVtk},
    Reader{"VTK XML file", ".vtu .vtp .vti .vtr .vts .vtm .pvtu .pvtp .pvti .pvtr .pvts", isVtkXml,
           IMPORT_WITH_VTK(readVtkXml), kVtk},
    Reader{"Gmsh file", ".msh", isGmsh, IMPORT_WITH_GMSH(readGmsh), "ORMELLE_IMPORT_GMSH"},
    Reader{"NetCDF file", ".nc .nc4 .cdf", isNetcdf, IMPORT_WITH_NETCDF(readNetcdf), "ORMELLE_IMPORT_NETCDF"},
    Reader{"PLY file", ".ply", isPly, readPly, nullptr},
    Reader{"OBJ file", ".obj", nullptr, IMPORT_WITH_TINYOBJ(readObj), "ORMELLE_IMPORT_TINYOBJ"},
    Reader{"STL file", ".stl", nullptr, IMPORT_WITH_VTK(readStl), kVtk},
    Reader{"table", ".csv .tsv", nullptr, readCsv, nullptr},
};

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File openFile(const std::string& name) {
  File file(std::fopen(name.c_str(), "rb"), &std::fclose);
  if (!file) throw Failure(std::strerror(errno));
  return file;
}

std::string extensionOf(const std::string& file) {
  std::string extension = std::filesystem::path(file).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

bool hasExtension(const Reader& reader, const std::string& extension) {
  return !extension.empty() &&
         (" " + std::string(reader.extensions) + " ").find(" " + extension + " ") != std::string::npos;
}

}  // namespace

bool isVtkLegacy(std::string_view head) { return head.starts_with("# vtk DataFile Version"); }

bool isVtkXml(std::string_view head) {
  const std::size_t start = head.find('<');
  return start != std::string_view::npos && head.find_first_not_of(" \t\r\n\xef\xbb\xbf") == start &&
         head.find("<VTKFile") != std::string_view::npos;
}

bool isGmsh(std::string_view head) { return head.starts_with("$MeshFormat"); }

bool isNetcdf(std::string_view head) {
  return head.starts_with("CDF\x01") || head.starts_with("CDF\x02") || head.starts_with("CDF\x05") ||
         head.starts_with("\x89HDF\r\n\x1a\n");
}

bool isPly(std::string_view head) { return head.starts_with("ply\n") || head.starts_with("ply\r"); }

ReadOptions& readOptions() {
  static ReadOptions options;
  return options;
}

std::span<const Reader> readers() { return kReaders; }

const Reader& readerFor(const std::string& file) {
  std::string head(4096, '\0');
  {
    const File in = openFile(file);
    head.resize(std::fread(head.data(), 1, head.size(), in.get()));
    if (std::ferror(in.get())) throw Failure(std::strerror(errno));
  }
  if (head.empty()) throw Failure("this file is empty");
  const std::string extension = extensionOf(file);
  const Reader* found = nullptr;
  for (const Reader& reader : kReaders) {
    if (reader.sniff && reader.sniff(head)) {
      found = &reader;
      break;
    }
    if (!found && hasExtension(reader, extension)) found = &reader;
  }
  if (!found) {
    std::string known;
    for (const Reader& reader : kReaders) known += (known.empty() ? "" : " ") + std::string(reader.extensions);
    throw Failure("this is neither a scene file of the toolkit nor one of the files that can be imported (" + known +
                  ")");
  }
  if (!found->read)
    throw Failure("this is a " + std::string(found->name) + ", which this program was built without (" + found->needs +
                  ")");
  return *found;
}

std::string readWhole(const std::string& file) {
  const File in = openFile(file);
  std::string bytes;
  std::array<char, 1 << 16> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), in.get()))
    bytes.append(buffer.data(), count);
  if (std::ferror(in.get())) throw Failure(std::strerror(errno));
  return bytes;
}

}  // namespace importer
