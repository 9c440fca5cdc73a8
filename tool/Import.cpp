#include "Import.h"

#include <Inventor/SoDB.h>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/sysinfo.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include "Failure.h"
#include "Program.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace tool {

namespace {

constexpr int kSceneDescriptor = 3;

std::string importProgram() {
  if (const char* named = std::getenv("ORMELLE_IMPORT"); named && *named) return named;
  std::string program = findProgram("ormelle_import");
  if (program.empty())
    throw Failure(
        "this is not a scene file, and ormelle_import, which reads files of other programs, is not installed");
  return program;
}

class Descriptor {
 public:
  explicit Descriptor(int number = -1) : m_number(number) {}
  Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
  }
  ~Descriptor() { close(); }
  void close() {
    if (m_number >= 0) ::close(m_number);
    m_number = -1;
  }
  int number() const { return m_number; }

 private:
  int m_number;
};

struct Pipe {
  Descriptor from, to;

  Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw Failure(std::strerror(errno));
    from = Descriptor(ends[0]);
    to = Descriptor(ends[1]);
  }
};

struct SpawnActions {
  posix_spawn_file_actions_t actions{};

  SpawnActions() { posix_spawn_file_actions_init(&actions); }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
};

// What the child said and how it ended.
struct Told {
  std::string out, err;
  int status = 0;
  bool isLate = false;
};

pid_t start(const std::vector<std::string>& command, int scene, Pipe& out, Pipe& err) {
  SpawnActions spawn;
  posix_spawn_file_actions_addopen(&spawn.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&spawn.actions, out.to.number(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&spawn.actions, err.to.number(), STDERR_FILENO);
  posix_spawn_file_actions_adddup2(&spawn.actions, scene, kSceneDescriptor);
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_t child = 0;
  if (const int problem = posix_spawn(&child, arguments[0], &spawn.actions, nullptr, arguments.data(), environ))
    throw Failure("its reader " + command[0] + " can't be run: " + std::strerror(problem));
  out.to.close();
  err.to.close();
  return child;
}

// Reads what is there; returns whether there may be more. What exceeds a text that anybody would read is dropped.
bool readSome(int descriptor, std::string& text) {
  constexpr std::size_t kMost = 1 << 20;
  std::array<char, 4096> buffer{};
  const ssize_t count = read(descriptor, buffer.data(), buffer.size());
  if (count < 0) return errno == EINTR;
  text.append(buffer.data(), std::min(static_cast<std::size_t>(count), kMost - std::min(kMost, text.size())));
  return count > 0;
}

Told listen(pid_t child, Pipe& out, Pipe& err, unsigned seconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(seconds);
  Told told;
  std::array<pollfd, 2> pipes{pollfd{out.from.number(), POLLIN, 0}, pollfd{err.from.number(), POLLIN, 0}};
  while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) {
      told.isLate = true;
      kill(child, SIGKILL);
      break;
    }
    if (poll(pipes.data(), pipes.size(), static_cast<int>(std::min<long long>(left, 60'000))) < 0 && errno != EINTR)
      break;
    for (std::size_t i = 0; i < pipes.size(); ++i)
      if (pipes[i].fd >= 0 && pipes[i].revents != 0 && !readSome(pipes[i].fd, i == 0 ? told.out : told.err))
        pipes[i].fd = -1;
  }
  while (waitpid(child, &told.status, 0) < 0 && errno == EINTR) {
  }
  return told;
}

// The last line of a text with something in it.
std::string lastLine(const std::string& text) {
  std::istringstream lines(text);
  std::string line, last;
  while (std::getline(lines, line))
    if (!line.empty()) last = line;
  for (char& c : last)
    if (static_cast<unsigned char>(c) < 32 || static_cast<unsigned char>(c) > 126) c = '?';
  while (!last.empty() && last.back() == '.') last.pop_back();
  return last;
}

std::string limitSentence(unsigned seconds) {
  return "reading it took longer than " + std::to_string(seconds) +
         " seconds (\"ormelle convert --time-limit\" allows more)";
}

// Throws Failure unless all went well. Prints what there is to say.
void judge(const Told& told, const ImportLimits& limits, ImportReport report) {
  if (told.isLate) throw Failure(limitSentence(limits.seconds));
  if (WIFSIGNALED(told.status)) {
    const int signal = WTERMSIG(told.status);
    throw Failure(std::string("its reader crashed (") + strsignal(signal) + ")");
  }
  const int status = WEXITSTATUS(told.status);
  constexpr std::string_view failure = "failure ";
  if (told.out.starts_with(failure))
    throw Failure(told.out.substr(failure.size(), told.out.find('\n') - failure.size()));
  if (status != 0) {
    const std::string said = lastLine(told.err);
    throw Failure("its reader ended with status " + std::to_string(status) + (said.empty() ? "" : ": " + said));
  }
  const bool isAll = report == ImportReport::All;
  std::istringstream lines(told.out);
  for (std::string line; std::getline(lines, line);) {
    if (isAll && line.starts_with("mesh ")) std::printf("%s.\n", line.c_str() + 5);
    if (line.starts_with("note ")) std::fprintf(isAll ? stdout : stderr, "Note: %s.\n", line.c_str() + 5);
  }
}

// A folder of one's own, removed at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ormelle-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw Failure(pattern + ": " + std::strerror(errno));
    m_path = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

// Megabytes of memory that the machine has: what needs more would come to nothing anyhow.
unsigned long long memoryOfMachine() {
  struct sysinfo machine {};
  if (sysinfo(&machine) != 0) return 0;  // no limit
  return (static_cast<unsigned long long>(machine.totalram) + machine.totalswap) * machine.mem_unit >> 20;
}

}  // namespace

bool isSceneFile(const std::string& file) {
  std::error_code problem;
  if (!std::filesystem::is_regular_file(file, problem)) return true;
  std::string extension = std::filesystem::path(file).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  for (const char* known : {".iv", ".wrl", ".vrml"})
    if (extension == known) return true;
  std::ifstream in(file, std::ios::binary);
  std::array<char, 80> head{};
  if (!in.read(head.data(), head.size() - 1) && in.gcount() == 0) return !in.is_open();
  std::string line(head.data());
  line.erase(std::min(line.find_first_of("\r\n"), line.size()));
  return line.starts_with("#") && SoDB::isValidHeader(line.c_str());
}

void importScene(const std::string& file, std::FILE* out, bool isBinary, const ImportLimits& limits,
                 ImportReport report) {
  try {
    const unsigned long long megabytes = limits.gigabytes > 0
                                             ? std::max(static_cast<unsigned long long>(limits.gigabytes * 1024), 1ULL)
                                             : memoryOfMachine();
    std::vector<std::string> command = {importProgram(), "--memory", std::to_string(megabytes), "--step",
                                        std::to_string(limits.timeStep - 1)};
    if (isBinary) command.emplace_back("--binary");
    command.push_back(file.starts_with('-') ? "./" + file : file);
    Pipe answers, errors;
    const pid_t child = start(command, fileno(out), answers, errors);
    judge(listen(child, answers, errors, limits.seconds), limits, report);
  } catch (const Failure& failure) {
    throw Failure(file + ": " + failure.what());
  }
}

Scene readAnyScene(const std::string& file, const ImportLimits& limits, ImportReport report) {
  if (isSceneFile(file)) return readScene(file);
  const TemporaryFolder folder;
  const std::string made = (folder.path() / "scene.iv").string();
  PiWholeFile out(made);
  if (out.stream()) importScene(file, out.stream(), true, limits, report);
  const std::string problem = out.close();
  if (!problem.empty()) throw Failure(made + ": " + problem);
  Scene scene = readScene(made);
  scene.file = file;
  return scene;
}

}  // namespace tool
