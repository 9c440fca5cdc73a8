// What VTK's readers believe, and had better not.

#include "read_vtk_guard.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

#include "Dataset.h"

namespace importer {

namespace {

// Counts in the elements of an XML file, and the most that each may be; 0: as many as the file can hold.
struct Count {
  std::string_view attribute;
  std::uintmax_t most;
};
constexpr std::uintmax_t kMostComponents = 10'000;
constexpr std::array kCounts{Count{" NumberOfComponents=\"", kMostComponents},
                             Count{" NumberOfPoints=\"", 0},
                             Count{" NumberOfCells=\"", 0},
                             Count{" NumberOfVerts=\"", 0},
                             Count{" NumberOfLines=\"", 0},
                             Count{" NumberOfStrips=\"", 0},
                             Count{" NumberOfPolys=\"", 0},
                             Count{" NumberOfTuples=\"", 0}};

// No packing of the formats makes a byte out of less than a thousandth.
constexpr std::uintmax_t kMostPacked = 1000;

void refuseLies(std::string_view text, std::uintmax_t fileSize) {
  constexpr std::string_view start = " NumberOf";
  for (std::size_t at = text.find(start); at != std::string_view::npos; at = text.find(start, at + start.size())) {
    const std::string_view rest = text.substr(at);
    for (const Count& count : kCounts) {
      if (!rest.starts_with(count.attribute)) continue;
      const std::string_view value = rest.substr(count.attribute.size());
      const std::string_view digits = value.substr(0, value.find('"'));
      std::uintmax_t number = 0;
      const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
      const std::uintmax_t most = count.most > 0 ? count.most : fileSize * kMostPacked;
      if (result.ec != std::errc() || result.ptr != digits.data() + digits.size() || number > most)
        throw Failure("its" + std::string(count.attribute) + std::string(digits) + "\" can't be true");
    }
  }
}

}  // namespace

void refuseLies(const std::string& file) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(std::fopen(file.c_str(), "rb"), &std::fclose);
  if (!in) return;  // which the reader will tell
  const std::uintmax_t size = std::filesystem::file_size(file);
  constexpr std::size_t kOverlap = 256;
  std::string text;
  std::array<char, 1 << 16> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), in.get())) {
    text.append(buffer.data(), count);
    const std::size_t appended = text.find("<AppendedData");
    refuseLies(std::string_view(text).substr(0, appended), size);
    if (appended != std::string::npos) return;
    if (text.size() > kOverlap) text.erase(0, text.size() - kOverlap);
  }
}

}  // namespace importer
