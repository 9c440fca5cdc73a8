#ifndef ORMELLE_TOOL_IMPORT_READ_VTK_H
#define ORMELLE_TOOL_IMPORT_READ_VTK_H

#include <string>

#include "Dataset.h"

class vtkAlgorithm;

namespace importer {

/// Runs one of VTK's readers, which has been given its file, and takes what it read. Throws Failure with the first
/// thing that VTK complains about.
Dataset readByVtk(vtkAlgorithm& reader, const std::string& file);

}  // namespace importer

#endif
