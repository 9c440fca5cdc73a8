// Writes the samples of the formats that the tool imports into a folder.

#include <cstdio>
#include <fstream>

#include "ImportSamples.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: write_import_samples FOLDER\n");
    return 2;
  }
  for (const ImportSample& sample : importSamples())
    std::ofstream(std::string(argv[1]) + "/" + sample.name, std::ios::binary) << sample.bytes;
  return 0;
}
