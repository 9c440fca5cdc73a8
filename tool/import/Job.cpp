#include "Job.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PoOrmelle.h>

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <new>

#include "Readers.h"
#include "SceneWriter.h"

namespace importer {

namespace {

void dropError(const SoError*, void*) {}

// A limit may be lowered, not raised.
void limit(__rlimit_resource_t what, rlim_t value) {
  rlimit limits{};
  if (getrlimit(what, &limits) != 0) return;
  if (limits.rlim_max != RLIM_INFINITY && value > limits.rlim_max) return;
  limits.rlim_cur = value;
  if (what == RLIMIT_AS || what == RLIMIT_CORE) limits.rlim_max = value;
  (void)setrlimit(what, &limits);
}

// Address space that libraries and this program take before any file is read.
[[maybe_unused]] rlim_t bytesMapped() {
  unsigned long long pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

void startImporting() {
  PoOrmelle::init();
  SoReadError::setHandlerCallback(dropError, nullptr);
  SoDebugError::setHandlerCallback(dropError, nullptr);
  SoMemoryError::setHandlerCallback(dropError, nullptr);
}

Outcome importFile(const std::string& file, std::FILE* out, bool isBinary) {
  Dataset data = readerFor(file).read(file);
  check(data);
  const ImportedScene scene = makeScene(data);
  scene.root->ref();
  {
    SoOutput output;
    output.setFilePointer(out);
    output.setBinary(isBinary ? TRUE : FALSE);
    SoWriteAction write(&output);
    write.apply(scene.root);
  }
  scene.root->unref();
  return {scene.summaries, data.notes};
}

std::string currentProblem() {
  std::string text = "its reader failed";
  try {
    throw;
  } catch (const std::bad_alloc&) {
    text = "there is not enough memory to read it";
  } catch (const std::exception& problem) {
    text = problem.what();
  } catch (...) {  // which has nothing to say
  }
  for (char& c : text)  // names that damaged files hold
    if (static_cast<unsigned char>(c) < 32 || c == 127) c = '?';
  return text;
}

void limitProcess([[maybe_unused]] unsigned long megabytes, unsigned long seconds) {
  limit(RLIMIT_CORE, 0);
#ifndef ORMELLE_IMPORT_SANITIZED  // those map more than any memory
  if (megabytes > 0) limit(RLIMIT_AS, (static_cast<rlim_t>(megabytes) << 20) + bytesMapped());
#endif
  if (seconds > 0) limit(RLIMIT_CPU, seconds);
}

}  // namespace importer
