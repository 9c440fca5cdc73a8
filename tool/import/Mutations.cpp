// How readers take damaged files: many of them, quickly. The libraries are loaded once, and each file is read in a
// child of its own, which costs about as much as reading it.

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include "Dataset.h"
#include "Job.h"
#include "Readers.h"

namespace importer {

namespace {

constexpr unsigned long kMegabytes = 1024;
constexpr unsigned long kSeconds = 2;
constexpr int kMilliseconds = 20000;

class Mutator {
 public:
  explicit Mutator(unsigned seed) : m_random(seed) {}

  std::string mutated(const std::string& good) {
    std::string bad = good;
    const int changes = 1 + below(4);
    for (int i = 0; i < changes && !bad.empty(); ++i) change(bad, good);
    return bad;
  }

 private:
  int below(std::size_t count) { return static_cast<int>(m_random() % std::max<std::size_t>(count, 1)); }
  std::size_t placeIn(const std::string& bytes) { return static_cast<std::size_t>(below(bytes.size())); }

  void change(std::string& bad, const std::string& good) {
    static const std::array<const char*, 14> texts{"0",          "-1",    "2147483647", "4294967295", "99999999999999",
                                                   "1e308",      "-1e39", "nan",        "inf",        "1e-320",
                                                   "2147483648", "\n",    "\"",         ">"};
    const std::size_t at = placeIn(bad);
    switch (below(9)) {
      case 0:  // a bit
        bad[at] = static_cast<char>(bad[at] ^ (1 << below(8)));
        break;
      case 1:  // a byte
        bad[at] = static_cast<char>(below(256));
        break;
      case 2:  // the end
        bad.resize(at);
        break;
      case 3:  // a stretch taken out
        bad.erase(at, static_cast<std::size_t>(1 + below(40)));
        break;
      case 4:  // a stretch twice
        bad.insert(at, good.substr(placeIn(good), static_cast<std::size_t>(1 + below(60))));
        break;
      case 5: {  // a binary number that lies
        static const std::array<std::uint32_t, 6> lies{0, 0xffffffffU, 0x7fffffffU, 0x80000000U, 0x10000000U, 0xffU};
        const std::uint32_t lie = lies[static_cast<std::size_t>(below(lies.size()))];
        for (std::size_t i = 0; i < 4 && at + i < bad.size(); ++i)
          bad[at + i] = static_cast<char>(lie >> (8 * i) & 255);
        break;
      }
      default: {  // a number of a text that lies
        const std::size_t start = bad.find_first_of("0123456789", at);
        if (start == std::string::npos) break;
        std::size_t end = bad.find_first_not_of("0123456789.eE+-", start);
        if (end == std::string::npos) end = bad.size();
        bad.replace(start, end - start, texts[static_cast<std::size_t>(below(texts.size()))]);
        break;
      }
    }
  }

  std::mt19937 m_random;
};

// How a child ended, told by its exit status or the signal that ended it.
enum Ending { SCENE = 0, SENTENCE = 1, UNREADABLE = 2, NO_SENTENCE = 3, CRASHED = 4, HUNG = 5 };

// Whether the toolkit can read what was written.
bool isReadable(const std::string& scene) {
  SoInput in;
  return in.openFile(scene.c_str(), TRUE) && SoDB::readAll(&in) != nullptr;
}

[[noreturn]] void readInChild(const std::string& file, const std::string& scene) {
  limitProcess(kMegabytes, kSeconds);
  if (!std::freopen("/dev/null", "w", stderr)) _exit(NO_SENTENCE);
  int ending = SENTENCE;
  try {
    std::FILE* out = std::fopen(scene.c_str(), "wb");
    if (!out) _exit(NO_SENTENCE);
    importFile(file, out, false);
    ending = std::fclose(out) == 0 && isReadable(scene) ? SCENE : UNREADABLE;
  } catch (...) {
    if (currentProblem().empty()) ending = NO_SENTENCE;
  }
  _exit(ending);
}

Ending waitFor(pid_t child, int alive, int& signal) {
  pollfd end{alive, 0, 0};
  const bool isOver = poll(&end, 1, kMilliseconds) > 0;
  if (!isOver) kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  if (!isOver) return HUNG;
  if (WIFSIGNALED(status)) {
    signal = WTERMSIG(status);
    return signal == SIGXCPU || signal == SIGKILL ? HUNG : CRASHED;
  }
  return static_cast<Ending>(WEXITSTATUS(status));
}

Ending readMutation(const std::string& file, const std::string& scene, int& signal) {
  std::array<int, 2> pipe{};
  if (::pipe(pipe.data()) != 0) return NO_SENTENCE;
  const pid_t child = fork();
  if (child == 0) {
    close(pipe[0]);
    readInChild(file, scene);
  }
  close(pipe[1]);  // the child holds the other end until it is over
  Ending ending = NO_SENTENCE;
  if (child > 0) ending = waitFor(child, pipe[0], signal);
  close(pipe[0]);
  return ending;
}

// Imports a file that a child has imported well, so that children find loaded what libraries load when they are first
// used: other libraries, fonts, tables.
void warmUp(const std::string& file, const std::string& scene) {
  std::FILE* out = std::fopen(scene.c_str(), "wb");
  if (!out) return;
  try {
    importFile(file, out, false);
  } catch (...) {  // which a child will tell
  }
  std::fclose(out);
  (void)isReadable(scene);
}

// Keeps a file that ended badly, for a look at it, if the environment names a folder for them.
void keep(const std::string& bytes, const std::string& name, const std::string& ending, int number) {
  const char* folder = std::getenv("ORMELLE_MUTATIONS_KEEP");
  if (folder)
    std::ofstream(std::string(folder) + "/" + ending + "-" + std::to_string(number) + "-" + name, std::ios::binary)
        << bytes;
}

}  // namespace

bool checkMutations(int count, unsigned seed, const std::vector<std::string>& files) {
  static const std::array<const char*, 6> names{"scene", "sentence", "unreadable", "no-sentence", "crashed", "hung"};
  std::string pattern = (std::filesystem::temp_directory_path() / "ormelle-mutations-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(pattern.data());
  bool isWell = true;
  for (const std::string& file : files) {
    const std::string good = readWhole(file);
    const std::string name = std::filesystem::path(file).filename().string();
    const std::string bad = (folder / name).string(), scene = (folder / "scene.iv").string();
    Mutator mutator(seed);
    std::array<int, 6> endings{};
    std::map<int, int> signals;
    for (int i = 0; i < count; ++i) {
      const std::string bytes = i == 0 ? good : mutator.mutated(good);  // the first as it is: it must make a scene
      std::ofstream(bad, std::ios::binary) << bytes;
      int signal = 0;
      const Ending ending = readMutation(bad, scene, signal);
      ++endings[ending];
      if (signal != 0) ++signals[signal];
      if (ending > SENTENCE) keep(bytes, name, names[ending], i);
      if (i == 0 && ending != SCENE) {
        std::printf("%s makes no scene as it is\n", name.c_str());
        isWell = false;
      } else if (i == 0) {
        warmUp(bad, scene);
      }
    }
    std::printf("%-28s %6d: %d scenes, %d sentences, %d crashes isolated, %d stopped by a limit, %d faults",
                name.c_str(), count, endings[SCENE], endings[SENTENCE], endings[CRASHED], endings[HUNG],
                endings[UNREADABLE] + endings[NO_SENTENCE]);
    for (const auto& [signal, times] : signals) std::printf("; signal %d: %d", signal, times);
    std::printf("\n");
    std::fflush(stdout);
    isWell = isWell && endings[UNREADABLE] + endings[NO_SENTENCE] == 0;
  }
  std::filesystem::remove_all(folder);
  return isWell;
}

}  // namespace importer
