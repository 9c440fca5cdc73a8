#ifndef ORMELLE_TESTS_TOOLRUN_H
#define ORMELLE_TESTS_TOOLRUN_H

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// What a run of the tool gave.
struct ToolRun {
  int status;  ///< exit status; negative if a signal ended it
  std::string out;
  std::string err;
};

/// A PNG picture; four bytes a pixel, top row first.
struct Png {
  int width = 0;
  int height = 0;
  bool hasAlpha = false;
  std::vector<uint8_t> rgba;

  std::array<int, 4> at(int x, int y) const;
};

struct Ply {
  struct Vertex {
    std::array<float, 3> position;
    std::array<int, 4> color;
  };
  std::string header;
  std::vector<Vertex> vertices;
  std::vector<std::array<int, 3>> faces;
  std::vector<std::array<int, 2>> edges;
};

/// Gives each test a folder of its own, removed at its end.
class ToolTest : public testing::Test {
 protected:
  ToolTest();
  ~ToolTest() override;

  std::string path(const std::string& name) const { return (m_folder / name).string(); }
  /// Writes a file of the folder; a scene gets the header of a text scene file first.
  std::string writeFile(const std::string& name, const std::string& bytes) const;
  std::string writeScene(const std::string& name, const std::string& nodes) const;
  static std::string readFile(const std::string& file);
  /// Number of files in the folder.
  std::size_t countFiles() const;

  /// Runs the tool; `arguments` as for a shell, which `environment` may precede ("NAME=value").
  ToolRun run(const std::string& arguments, const std::string& environment = "") const;
  /// The same, and expects exit status 0 and no message.
  ToolRun runWell(const std::string& arguments) const;
  /// The same, and expects `status` and one sentence on the error output, which contains `part`.
  void runBadly(const std::string& arguments, const std::string& part, const std::string& environment = "") const;

  static Png readPng(const std::string& file);
  static Ply readPly(const std::string& file);

 private:
  std::filesystem::path m_folder;
};

#endif
