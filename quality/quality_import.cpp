// Damaged files of other programs: the program that reads them must end each with a scene or a sentence, whatever its
// libraries do.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "ImportSamples.h"
#include "Quality.h"

namespace {

// What a run of the program printed; empty with `isWell` false if it could not be run to its end.
std::string printedBy(const std::string& command, bool& isWell) {
  std::string text;
  std::FILE* out = popen(command.c_str(), "r");
  if (!out) return text;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), out)) text.append(buffer.data(), count);
  isWell = pclose(out) == 0;
  return text;
}

// 10,000 of each format, spread over the samples of it.
bool runImport(const QualityOptions& options, nlohmann::json& summary) {
  constexpr int kOfEachFormat = 10000;
  std::string pattern = (std::filesystem::temp_directory_path() / "ormelle-samples-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(pattern.data());
  std::map<std::string, std::vector<std::string>> formats;
  for (const ImportSample& sample : importSamples()) {
#ifndef ORMELLE_IMPORT_HAS_VTK
    if (sample.isReadByVtk) continue;
#endif
    std::ofstream(folder / sample.name, std::ios::binary) << sample.bytes;
    formats[std::filesystem::path(sample.name).extension().string()].push_back(sample.name);
  }
  bool isWell = true;
  for (const auto& [format, samples] : formats) {
    const auto count = options.cases(kOfEachFormat) / static_cast<int>(samples.size()) + 1;
    for (const std::string& sample : samples) {
      bool isSampleWell = false;
      const std::string told = printedBy("'" ORMELLE_IMPORT_PROGRAM "' --check-mutations " + std::to_string(count) +
                                             " 1 '" + (folder / sample).string() + "'",
                                         isSampleWell);
      summary[format][sample] = told.substr(0, told.find('\n'));
      isWell = isWell && isSampleWell;
    }
  }
  std::filesystem::remove_all(folder);
  return isWell;
}

const QualityRun importing("import", "damaged files of other programs", runImport);

}  // namespace
