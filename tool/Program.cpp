#include "Program.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace tool {

std::string findProgram(const std::string& name) {
  std::error_code problem;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", problem).parent_path();
  for (const char* place : {".", ORMELLE_PROGRAMS_PLACE}) {
    const std::filesystem::path program = own / place / name;
    if (access(program.c_str(), X_OK) == 0) return program.lexically_normal().string();
  }
  return {};
}

}  // namespace tool
