#ifndef ORMELLE_TOOL_IMPORT_JOB_H
#define ORMELLE_TOOL_IMPORT_JOB_H

#include <cstdio>
#include <string>
#include <vector>

namespace importer {

/// What importing one file told.
struct Outcome {
  std::vector<std::string> summaries;
  std::vector<std::string> notes;
};

/// Reads a file with the reader for it and writes the scene to `out`. Throws Failure, and whatever libraries throw.
Outcome importFile(const std::string& file, std::FILE* out, bool isBinary);

/// Starts toolkit and library, quietly.
void startImporting();

/// What went wrong, for a sentence: the text of the exception that is being handled.
std::string currentProblem();

/// Keeps this process from taking `megabytes` of memory more than it has now and `seconds` of processor time; 0 is no
/// limit.
void limitProcess(unsigned long megabytes, unsigned long seconds);

/// Changes each of `files` `count` times at random and reads what came of it, each in a child that this process forks.
/// Prints how they ended. Returns whether each ended by itself with a scene or a sentence, or was isolated as it
/// crashed; false if one wasn't told apart, or made a scene that can't be read again.
bool checkMutations(int count, unsigned seed, const std::vector<std::string>& files);

}  // namespace importer

#endif
