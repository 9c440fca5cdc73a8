#include "ToolRun.h"

#include <png.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

std::array<int, 4> Png::at(int x, int y) const {
  const std::size_t i =
      4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
  return {rgba[i], rgba[i + 1], rgba[i + 2], rgba[i + 3]};
}

ToolTest::ToolTest() {
  std::string pattern = (std::filesystem::temp_directory_path() / "ormelle-tool-XXXXXX").string();
  m_folder = mkdtemp(pattern.data());
}

ToolTest::~ToolTest() { std::filesystem::remove_all(m_folder); }

std::string ToolTest::writeFile(const std::string& name, const std::string& bytes) const {
  std::ofstream(path(name), std::ios::binary) << bytes;
  return path(name);
}

std::string ToolTest::writeScene(const std::string& name, const std::string& nodes) const {
  return writeFile(name, "#Inventor V2.1 ascii\n" + nodes + "\n");
}

std::string ToolTest::readFile(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::size_t ToolTest::countFiles() const {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_folder), {}));
}

ToolRun ToolTest::run(const std::string& arguments, const std::string& environment) const {
  // The output goes to files outside the folder that the tests look at.
  const std::string capture = m_folder.string() + ".capture";
  const std::string command = "cd '" + m_folder.string() + "' && " + environment + " '" ORMELLE_TOOL "' " + arguments +
                              " >'" + capture + ".out' 2>'" + capture + ".err'";
  const int status = std::system(command.c_str());
  ToolRun run{WIFEXITED(status) && WEXITSTATUS(status) < 128 ? WEXITSTATUS(status) : -1, readFile(capture + ".out"),
              readFile(capture + ".err")};
  std::filesystem::remove(capture + ".out");
  std::filesystem::remove(capture + ".err");
  return run;
}

ToolRun ToolTest::runWell(const std::string& arguments) const {
  ToolRun result = run(arguments);
  EXPECT_EQ(result.status, 0) << arguments << "\n" << result.err;
  EXPECT_EQ(result.err, "") << arguments;
  return result;
}

void ToolTest::runBadly(const std::string& arguments, const std::string& part, const std::string& environment) const {
  const ToolRun result = run(arguments, environment);
  EXPECT_EQ(result.status, 1) << arguments << "\n" << result.err;
  EXPECT_EQ(result.out, "") << arguments;
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  EXPECT_EQ(result.err.rfind("ormelle: ", 0), 0u) << result.err;
  EXPECT_NE(result.err.find(part), std::string::npos) << result.err;
}

Png ToolTest::readPng(const std::string& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  Png png;
  if (!png_image_begin_read_from_file(&image, file.c_str())) {
    ADD_FAILURE() << file << ": " << image.message;
    return png;
  }
  png.width = static_cast<int>(image.width);
  png.height = static_cast<int>(image.height);
  png.hasAlpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  image.format = PNG_FORMAT_RGBA;
  png.rgba.resize(PNG_IMAGE_SIZE(image));
  EXPECT_TRUE(png_image_finish_read(&image, nullptr, png.rgba.data(), 0, nullptr)) << image.message;
  return png;
}

namespace {

// Takes the numbers of a PLY body one after the other, whichever form it has.
class PlyBody {
 public:
  PlyBody(std::string bytes, bool isBinary)
      : m_bytes(std::move(bytes)), m_isBinary(isBinary), m_text(isBinary ? "" : m_bytes) {}

  template <class Stored, class Number>
  Number next() {
    if (!m_isBinary) {
      double number = 0.0;
      EXPECT_TRUE(m_text >> number);
      return static_cast<Number>(number);
    }
    Stored stored{};
    if (m_position + sizeof(stored) <= m_bytes.size())
      std::memcpy(&stored, m_bytes.data() + m_position, sizeof(stored));
    else
      ADD_FAILURE() << "the file breaks off";
    m_position += sizeof(stored);
    return static_cast<Number>(stored);
  }
  bool isAtEnd() { return m_isBinary ? m_position == m_bytes.size() : (m_text >> std::ws).eof(); }

 private:
  std::string m_bytes;
  bool m_isBinary;
  std::istringstream m_text;
  std::size_t m_position = 0;
};

std::size_t countIn(const std::string& header, const std::string& element) {
  const std::size_t start = header.find("element " + element + " ");
  EXPECT_NE(start, std::string::npos) << header;
  return start == std::string::npos ? 0 : std::stoul(header.substr(start + 9 + element.size()));
}

}  // namespace

Ply ToolTest::readPly(const std::string& file) {
  const std::string bytes = readFile(file);
  const std::string mark = "end_header\n";
  const std::size_t end = bytes.find(mark);
  Ply ply;
  if (end == std::string::npos) {
    ADD_FAILURE() << file << " has no PLY header";
    return ply;
  }
  ply.header = bytes.substr(0, end + mark.size());
  PlyBody body(bytes.substr(end + mark.size()),
               ply.header.find("format binary_little_endian 1.0\n") != std::string::npos);
  ply.vertices.resize(countIn(ply.header, "vertex"));
  ply.faces.resize(countIn(ply.header, "face"));
  ply.edges.resize(countIn(ply.header, "edge"));
  for (Ply::Vertex& vertex : ply.vertices) {
    for (float& coordinate : vertex.position) coordinate = body.next<float, float>();
    for (int& channel : vertex.color) channel = body.next<uint8_t, int>();
  }
  const int count = static_cast<int>(ply.vertices.size());
  std::vector<bool> used(ply.vertices.size());
  const auto index = [&] {
    const int i = body.next<int32_t, int>();
    EXPECT_TRUE(i >= 0 && i < count) << i;
    return std::clamp(i, 0, count - 1);
  };
  for (auto& face : ply.faces) {
    EXPECT_EQ((body.next<uint8_t, int>()), 3);
    for (int& corner : face) corner = index();
  }
  for (auto& edge : ply.edges)
    for (int& corner : edge) corner = index();
  EXPECT_TRUE(body.isAtEnd());
  return ply;
}
