// Reads a file of another program and writes a scene: run by `ormelle convert`, as a process of its own, so that what
// goes wrong inside the libraries of others ends nothing but it.
//
//     ormelle_import [--binary] [--memory MEGABYTES] [--step N] FILE
//
// The scene goes to descriptor 3. The standard output gets a line for each thing to tell, "mesh ..." or "note ...", or
// as the only one "failure ...", with exit status 1.
//
//     ormelle_import --check-mutations N SEED FILES...
//
// reads N damaged copies of each file, see Job.h.

#include <sys/prctl.h>
#include <unistd.h>
#include <csignal>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Job.h"
#include "Readers.h"

namespace {

constexpr int kSceneDescriptor = 3;
constexpr int kFailed = 1, kMisused = 2;

bool parse(const char* text, unsigned long& number) {
  const char* end = text + std::strlen(text);
  const std::from_chars_result result = std::from_chars(text, end, number);
  return result.ec == std::errc() && result.ptr == end && end != text;
}

int misused() {
  std::fprintf(stderr, "ormelle_import: this program is run by \"ormelle convert\".\n");
  return kMisused;
}

void tell(const char* what, std::string sentence) {
  for (char& c : sentence)
    if (static_cast<unsigned char>(c) < 32) c = ' ';
  std::printf("%s %s\n", what, sentence.c_str());
}

int check(const std::vector<std::string>& arguments) {
  unsigned long count = 0, seed = 0;
  if (arguments.size() < 3 || !parse(arguments[0].c_str(), count) || !parse(arguments[1].c_str(), seed))
    return misused();
  return importer::checkMutations(static_cast<int>(count), static_cast<unsigned>(seed),
                                  {arguments.begin() + 2, arguments.end()})
             ? 0
             : kFailed;
}

int import_(const std::string& file, bool isBinary) {
  std::FILE* out = fdopen(kSceneDescriptor, "wb");
  if (!out) return misused();
  try {
    const importer::Outcome outcome = importer::importFile(file, out, isBinary);
    if (std::fflush(out) != 0 || std::ferror(out)) {
      tell("failure", std::string("the scene can't be written: ") + std::strerror(errno));
      return kFailed;
    }
    for (const std::string& summary : outcome.summaries) tell("mesh", summary);
    for (const std::string& note : outcome.notes) tell("note", note);
    return 0;
  } catch (...) {
    tell("failure", importer::currentProblem());
    return kFailed;
  }
}

int runWith(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  bool isBinary = false;
  unsigned long megabytes = 0, step = 0;
  std::size_t i = 0;
  for (; i < arguments.size() && arguments[i].starts_with("--"); ++i) {
    if (arguments[i] == "--check-mutations") {
      importer::startImporting();
      const int status = check({arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1, arguments.end()});
      std::fflush(stdout);
      _exit(status);
    }
    if (arguments[i] == "--binary")
      isBinary = true;
    else if (i + 1 >= arguments.size() || !(arguments[i] == "--memory" ? parse(arguments[i + 1].c_str(), megabytes)
                                            : arguments[i] == "--step" ? parse(arguments[i + 1].c_str(), step)
                                                                       : false))
      return misused();
    else
      ++i;
  }
  if (i + 1 != arguments.size()) return misused();
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  importer::limitProcess(megabytes, 0);  // time is looked after by who runs it
  importer::startImporting();
  importer::readOptions().step = static_cast<int>(std::min(step, 1000000000UL));
  const int status = import_(arguments[i], isBinary);
  // Libraries may end badly too; the scene is written, and nothing else matters.
  std::fflush(stdout);
  _exit(status);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return runWith(argc, argv);
  } catch (...) {  // of the arguments themselves: files have their own answers
    std::fputs("ormelle_import: memory is short.\n", stderr);
    return kFailed;
  }
}
