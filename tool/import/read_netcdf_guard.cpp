// What netCDF's library believes of the header of a classic file, and had better not.

#include "read_netcdf_guard.h"

#include <netcdf.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "Dataset.h"

namespace importer {

namespace {

// Follows a header as the format's specification lays it out: all numbers with the highest byte first, all lists with
// their kind and length in front.
class ClassicHeader {
 public:
  explicit ClassicHeader(const std::string& file)
      : m_in(std::fopen(file.c_str(), "rb"), &std::fclose), m_size(std::filesystem::file_size(file)) {}

  void check() {
    if (!m_in || number(3) != 0x434446) return;  // "CDF"
    const std::uint64_t version = number(1);
    m_lengthOfCount = version == 5 ? 8 : 4;
    m_lengthOfPlace = version == 1 ? 4 : 8;
    skip(m_lengthOfCount);  // records
    for (std::uint64_t left = list(); left > 0; --left) {
      checkName();
      skip(m_lengthOfCount);
    }
    checkAttributes();
    for (std::uint64_t left = list(); left > 0; --left) {
      checkName();
      skip(count() * m_lengthOfCount);
      checkAttributes();
      skip(4 + m_lengthOfCount + m_lengthOfPlace);  // type, size, place
    }
  }

 private:
  std::uint64_t number(std::uint64_t numBytes) {
    std::uint64_t number = 0;
    for (std::uint64_t i = 0; i < numBytes; ++i) {
      const int byte = std::getc(m_in.get());
      if (byte == EOF) throw Failure("its header breaks off");
      number = number << 8 | static_cast<std::uint64_t>(byte);
    }
    m_at += numBytes;
    return number;
  }

  // Of things that take a byte of the file at least.
  std::uint64_t count() {
    const std::uint64_t count = number(m_lengthOfCount);
    if (count > m_size) throw Failure("a count in its header can't be true");
    return count;
  }
  std::uint64_t list() {
    skip(4);
    return count();
  }

  void skip(std::uint64_t numBytes) {
    m_at += numBytes;
    if (m_at > m_size || std::fseek(m_in.get(), static_cast<long>(numBytes), SEEK_CUR) != 0)
      throw Failure("its header breaks off");
  }
  void skipPadded(std::uint64_t numBytes) { skip((numBytes + 3) / 4 * 4); }

  // The library copies names of any length into the room for one of NC_MAX_NAME.
  void checkName() {
    const std::uint64_t length = count();
    if (length > NC_MAX_NAME) throw Failure("a name in its header is longer than the format allows");
    skipPadded(length);
  }

  void checkAttributes() {
    for (std::uint64_t left = list(); left > 0; --left) {
      checkName();
      static constexpr std::array<std::uint64_t, 12> kSizes{0, 1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};
      const std::uint64_t type = number(4);
      if (type == 0 || type >= kSizes.size()) throw Failure("its header has a type that there isn't");
      skipPadded(count() * kSizes[type]);
    }
  }

  std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_in;
  std::uint64_t m_size, m_at = 0, m_lengthOfCount = 4, m_lengthOfPlace = 4;
};

}  // namespace

void refuseBrokenNetcdf(const std::string& file) { ClassicHeader(file).check(); }

}  // namespace importer
