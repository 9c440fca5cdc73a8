#ifndef ORMELLE_TOOL_IMPORT_READERS_H
#define ORMELLE_TOOL_IMPORT_READERS_H

#include <span>
#include <string>
#include <string_view>

#include "Dataset.h"

namespace importer {

/// A format that files are read from. The table of them stands in Readers.cpp, a row each.
struct Reader {
  const char* name;        ///< of the format, as in "VTK XML file"
  const char* extensions;  ///< in lower case with their points, separated by spaces: ".vtu .vtp"
  /// Whether a file that begins with `head` (4 KiB of it, or all) is surely of this format; null if no beginning tells.
  bool (*sniff)(std::string_view head);
  /// Reads a file or throws Failure; null if this program was built without.
  Dataset (*read)(const std::string& file);
  const char* needs;  ///< the build option without which `read` is null: "ORMELLE_IMPORT_VTK"; else null
};

/// What the user asked for, which the readers of some formats heed.
struct ReadOptions {
  int step = 0;  ///< which time step to take, from 0; a file with fewer gives its last
};
ReadOptions& readOptions();

std::span<const Reader> readers();

/// The reader for a file: the one that knows its beginning, else one for its extension. Throws Failure if there is
/// none, or this program was built without it.
const Reader& readerFor(const std::string& file);

/// A file as a whole. Throws Failure.
std::string readWhole(const std::string& file);

// read_vtk.cpp
bool isVtkLegacy(std::string_view head);
bool isVtkXml(std::string_view head);
Dataset readVtkLegacy(const std::string& file);
Dataset readVtkXml(const std::string& file);

// read_gmsh.cpp
bool isGmsh(std::string_view head);
Dataset readGmsh(const std::string& file);

// read_netcdf.cpp
bool isNetcdf(std::string_view head);
Dataset readNetcdf(const std::string& file);

// read_ply.cpp
bool isPly(std::string_view head);
Dataset readPly(const std::string& file);

// read_stl.cpp
Dataset readStl(const std::string& file);

// read_obj.cpp
Dataset readObj(const std::string& file);

// read_csv.cpp
Dataset readCsv(const std::string& file);

}  // namespace importer

#endif
