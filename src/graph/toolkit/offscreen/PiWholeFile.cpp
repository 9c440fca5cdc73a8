#include "graph/toolkit/offscreen/PiWholeFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// mkstemp makes files that only their owner may read; give them what a plain open would have given.
void giveUsualPermissions(int descriptor) {
  const mode_t mask = umask(0);
  umask(mask);
  (void)fchmod(descriptor, 0666 & ~mask);
}

}  // namespace

PiWholeFile::PiWholeFile(const std::string& name) : m_name(name) {
  std::error_code ignored;
  const std::filesystem::file_status status = std::filesystem::status(name, ignored);
  if (std::filesystem::is_directory(status)) {
    m_error = std::strerror(EISDIR);
    return;
  }
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    m_stream = std::fopen(name.c_str(), "wb");
    if (!m_stream) m_error = std::strerror(errno);
    return;
  }
  // Replace what a link points to, not the link.
  const std::filesystem::path target = std::filesystem::weakly_canonical(name, ignored);
  if (!ignored && !target.empty()) m_name = target.string();
  std::string pattern = m_name + ".XXXXXX";
  const int descriptor = mkstemp(pattern.data());
  if (descriptor < 0) {
    m_error = std::strerror(errno);
    return;
  }
  m_temporary = pattern;
  giveUsualPermissions(descriptor);
  m_stream = fdopen(descriptor, "wb");
  if (!m_stream) {
    m_error = std::strerror(errno);
    ::close(descriptor);
  }
}

PiWholeFile::~PiWholeFile() {
  if (m_stream) std::fclose(m_stream);
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

std::string PiWholeFile::close() {
  if (!m_stream) return m_error;
  const bool failedBefore = std::ferror(m_stream) != 0;
  const bool failedNow = std::fclose(m_stream) != 0;
  m_stream = nullptr;
  if (failedBefore || failedNow)
    m_error = std::strerror(errno ? errno : EIO);
  else if (!m_temporary.empty() && std::rename(m_temporary.c_str(), m_name.c_str()) != 0)
    m_error = std::strerror(errno);
  else
    m_temporary.clear();
  return m_error;
}
