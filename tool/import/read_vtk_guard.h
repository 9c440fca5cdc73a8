#ifndef ORMELLE_TOOL_IMPORT_READ_VTK_GUARD_H
#define ORMELLE_TOOL_IMPORT_READ_VTK_GUARD_H

#include <string>

namespace importer {

/// Throws Failure if an XML file of VTK announces what it can't hold: VTK's reader would make room for it, or count up
/// to it, for minutes.
void refuseLies(const std::string& file);

/// Throws Failure if a legacy file has fewer numbers than it announces, or as text other things in their place, which
/// VTK's reader would take for zeros, or read beyond. What it doesn't know it leaves to that reader.
void refuseBrokenLegacy(const std::string& file);

}  // namespace importer

#endif
