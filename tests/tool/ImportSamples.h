#ifndef ORMELLE_TESTS_IMPORTSAMPLES_H
#define ORMELLE_TESTS_IMPORTSAMPLES_H

#include <string>
#include <vector>

/// A small file of a format that the tool imports.
struct ImportSample {
  std::string name;
  std::string bytes;
  bool isReadByVtk;  ///< only where VTK's readers are built in
};

/// One for each form that files of a format have: as text, in binary, packed, with all kinds of cells.
std::vector<ImportSample> importSamples();

/// @name What some of them hold
/// A grid of 3 by 2 by 2 nodes, from (1, 2, 3) in steps of (0.5, 1, 2). The set "sum of indices" has i + 10 j + 100 k
/// at node (i, j, k), "flow" the vectors (i, j, k); the set "cell number" counts the two cells.
/// @{
std::string sampleGridXml(const std::string& type);  ///< "ImageData", "RectilinearGrid" or "StructuredGrid", as text
std::string sampleGridLegacy(bool isBinary);
/// @}

#endif
