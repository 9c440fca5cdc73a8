#include "SceneFile.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoOrmelle.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>

#include "Failure.h"
#include "graph/toolkit/offscreen/PiFonts.h"

namespace tool {

namespace {

// The first complaint of the toolkit while it reads is the one that explains the rest.
std::string g_firstReadError;

void noteReadError(const SoError* error, void*) {
  if (g_firstReadError.empty()) g_firstReadError = error->getDebugString().getString();
}

void dropError(const SoError*, void*) {}

// Listens to the toolkit's complaints while a scene is read.
class ReadErrors {
 public:
  ReadErrors() : m_handler(SoReadError::getHandlerCallback()), m_data(SoReadError::getHandlerData()) {
    g_firstReadError.clear();
    SoReadError::setHandlerCallback(noteReadError, nullptr);
  }
  ~ReadErrors() { SoReadError::setHandlerCallback(m_handler, m_data); }
  ReadErrors(const ReadErrors&) = delete;
  ReadErrors& operator=(const ReadErrors&) = delete;

 private:
  SoErrorCB* m_handler;
  void* m_data;
};

// "Coin read error: Expected '}'\n\tOccurred at line   3 in x.iv" as part of one of our sentences.
std::string condensed(const std::string& message) {
  std::string text;
  for (const char c : message) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isspace(byte)) {
      if (!text.empty() && text.back() != ' ') text += ' ';
    } else {
      text += byte < 32 || byte > 126 ? '?' : c;
    }
  }
  for (const char* prefix : {"Coin read error: ", "Coin error in "})
    if (text.rfind(prefix, 0) == 0) text.erase(0, std::strlen(prefix));
  std::string where;
  const std::size_t occurred = text.find(" Occurred at ");
  if (occurred != std::string::npos) {
    where = text.substr(occurred + std::strlen(" Occurred at "));
    where = where.substr(0, where.find(" in "));
    text.erase(occurred);
  }
  const std::size_t note = text.find(" This message will only be shown once");
  if (note != std::string::npos) text.erase(note);
  while (!text.empty() && (text.back() == ' ' || text.back() == '.')) text.pop_back();
  const std::size_t quoted = text.find("``");
  const std::size_t unknown = text.find("'' not recognized");
  if (quoted != std::string::npos && unknown != std::string::npos && quoted < unknown)
    text = "unknown node " + text.substr(quoted + 2, unknown - quoted - 2);
  return where.empty() ? text : text + " (" + where + ")";
}

// The toolkit reads groups by recursion: a file of nothing but opening braces would exhaust the stack. Text files
// that people or programs write for a purpose stay far below this. Binary files have no braces.
constexpr int kDeepest = 5000;

void checkNesting(const std::string& file) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(std::fopen(file.c_str(), "rb"), &std::fclose);
  if (!in) throw Failure(file + ": " + std::strerror(errno));
  int depth = 0;
  bool inString = false;
  bool inComment = false;
  bool escaped = false;
  char buffer[1 << 16];
  bool isFirst = true;
  while (const std::size_t count = std::fread(buffer, 1, sizeof(buffer), in.get())) {
    const std::string_view bytes(buffer, count);
    if (isFirst && bytes.starts_with("#Inventor") && bytes.substr(0, bytes.find('\n')).find(" binary") != bytes.npos)
      return;
    isFirst = false;
    for (std::size_t i = 0; i < count; ++i) {
      const char c = buffer[i];
      if (inComment) {
        inComment = c != '\n' && c != '\r';
      } else if (inString) {
        if (!escaped && c == '"') inString = false;
        escaped = !escaped && c == '\\';
      } else if (c == '"') {
        inString = true;
      } else if (c == '#') {
        inComment = true;
      } else if (c == '{') {
        if (++depth > kDeepest)
          throw Failure(file + ": its groups are nested deeper than " + std::to_string(kDeepest) + " levels");
      } else if (c == '}' && depth > 0) {
        --depth;
      }
    }
  }
  if (std::ferror(in.get())) throw Failure(file + ": " + std::strerror(errno));
}

// Guards the toolkit against counts of binary files that lie: it makes room for them before it reads, and beyond some
// 130 million values it loops for ever or writes past that room.
class GuardedInput : public SoInput {
 public:
  explicit GuardedInput(std::uintmax_t fileSize)
      : m_most(static_cast<int>(std::clamp<std::uintmax_t>(fileSize, 1 << 24, 130'000'000))) {}

  using SoInput::read;
  SbBool read(int& number) override { return SoInput::read(number) && (!isBinary() || number <= m_most); }

 private:
  int m_most;  // no count is larger than the file, and small files may hold larger numbers that are no counts
};

SoNode* findFirst(SoNode* root, SoType type) {
  SoSearchAction search;
  search.setType(type);
  search.setInterest(SoSearchAction::FIRST);
  search.setSearchingAll(TRUE);
  const SbBool before = SoBaseKit::isSearchingChildren();
  SoBaseKit::setSearchingChildren(TRUE);
  search.apply(root);
  SoBaseKit::setSearchingChildren(before);
  return search.getPath() ? search.getPath()->getTail() : nullptr;
}

// The class name that an unknown node was read under; only its written form tells.
std::string nameOfUnknown(SoNode* node) {
  SoOutput out;
  std::string text(4096, '\0');
  out.setBuffer(text.data(), text.size(), nullptr);
  SoWriteAction write(&out);
  write.apply(node);
  const auto isNamePart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
  std::size_t end = text.find('{');
  if (end == std::string::npos) return "of an unreadable name";
  while (end > 0 && !isNamePart(text[end - 1])) --end;
  std::size_t start = end;
  while (start > 0 && isNamePart(text[start - 1])) --start;
  return text.substr(start, end - start);
}

}  // namespace

NodePtr::NodePtr(SoNode* node) : m_node(node) {
  if (m_node) m_node->ref();
}

NodePtr& NodePtr::operator=(NodePtr&& other) noexcept {
  std::swap(m_node, other.m_node);
  return *this;
}

NodePtr::~NodePtr() {
  if (m_node) m_node->unref();
}

void startLibrary() {
  useInstalledFonts();
  PoOrmelle::init();
  SoReadError::setHandlerCallback(dropError, nullptr);
  SoDebugError::setHandlerCallback(dropError, nullptr);
  SoMemoryError::setHandlerCallback(dropError, nullptr);
}

Scene readScene(const std::string& file) {
  std::error_code problem;
  const std::filesystem::file_status status = std::filesystem::status(file, problem);
  if (!std::filesystem::exists(status)) throw Failure(file + ": there is no such file");
  if (std::filesystem::is_directory(status)) throw Failure(file + ": this is a directory, not a scene file");
  if (std::filesystem::is_regular_file(status)) checkNesting(file);

  const std::uintmax_t size = std::filesystem::file_size(file, problem);
  GuardedInput in(problem ? 0 : size);
  const ReadErrors listening;
  if (!in.openFile(file.c_str(), TRUE)) throw Failure(file + ": " + std::strerror(errno ? errno : EACCES));
  if (!in.isValidFile()) throw Failure(file + ": this is not a scene file of the toolkit");
  const std::string directory = std::filesystem::path(file).parent_path().string();
  if (!directory.empty()) SoInput::addDirectoryFirst(directory.c_str());

  Scene scene;
  scene.file = file;
  scene.isVrml2 = in.isFileVRML2() != FALSE;
  scene.root = NodePtr(SoDB::readAll(&in));
  if (!g_firstReadError.empty()) throw Failure(file + ": " + condensed(g_firstReadError));
  if (!scene.root.get()) throw Failure(file + ": the toolkit can't read this file");
  if (SoNode* unknown = findFirst(scene.root.get(), SoType::fromName("UnknownNode")))
    throw Failure(file + ": unknown node " + nameOfUnknown(unknown));
  return scene;
}

}  // namespace tool
