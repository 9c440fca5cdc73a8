#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "Commands.h"
#include "Failure.h"
#include "Program.h"

namespace tool {

void view(const std::vector<std::string>& arguments) {
  const std::string program = findProgram("ormelle_view");
  if (program.empty()) throw Failure("ormelle_view, which shows windows, is not installed");
  std::vector<char*> words = {const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  execv(program.c_str(), words.data());
  throw Failure(program + ": " + std::strerror(errno));
}

}  // namespace tool
