#ifndef ORMELLE_PIWHOLEFILE_H
#define ORMELLE_PIWHOLEFILE_H

#include <cstdio>
#include <string>

/// An output file that appears under its name complete or not at all.
///
/// What is written goes to a temporary file beside it; close() puts that in place of an earlier file. Without a
/// successful close() the temporary file is removed and an earlier file stays as it was. A name that isn't that of a
/// regular file (a pipe, a device) is written directly.
class PiWholeFile {
 public:
  explicit PiWholeFile(const std::string& name);
  ~PiWholeFile();
  PiWholeFile(const PiWholeFile&) = delete;
  PiWholeFile& operator=(const PiWholeFile&) = delete;

  /// Where to write; null if the file can't be made. close() then says why.
  std::FILE* stream() const { return m_stream; }
  /// Returns what went wrong since the start, without the name of the file; empty if the file is in its place.
  std::string close();

 private:
  std::string m_name;
  std::string m_temporary;
  std::FILE* m_stream = nullptr;
  std::string m_error;
};

#endif
