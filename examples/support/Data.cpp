#include <bit>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "Gallery.h"

namespace gallery {

namespace {

static_assert(std::endian::native == std::endian::little, "the data files are little-endian");

std::string readWhole(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  if (!in || !(text << in.rdbuf())) throw std::runtime_error(file + " can't be read");
  return text.str();
}

template <class Number>
std::vector<Number> readRaw(const std::string& file) {
  const std::string bytes = readWhole(file);
  if (bytes.size() % sizeof(Number) != 0) throw std::runtime_error(file + " breaks off within a number");
  std::vector<Number> numbers(bytes.size() / sizeof(Number));
  std::memcpy(numbers.data(), bytes.data(), bytes.size());
  return numbers;
}

// One line of comma-separated text; a cell in double quotes may hold commas, and a doubled quote for a quote.
std::vector<std::string> cellsOf(const std::string& line) {
  std::vector<std::string> cells(1);
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"')
      cells.back() += line[++i];
    else if (c == '"')
      isQuoted = !isQuoted;
    else if (c == ',' && !isQuoted)
      cells.emplace_back();
    else if (c != '\r')
      cells.back() += c;
  }
  return cells;
}

std::size_t columnOf(const Table& table, const std::string& name) {
  for (std::size_t i = 0; i < table.names.size(); ++i)
    if (table.names[i] == name) return i;
  throw std::runtime_error("the table has no column \"" + name + "\"");
}

}  // namespace

std::vector<std::string> Table::texts(const std::string& column) const {
  const std::size_t index = columnOf(*this, column);
  std::vector<std::string> texts;
  for (const auto& row : rows) texts.push_back(row[index]);
  return texts;
}

std::vector<float> Table::numbers(const std::string& column) const {
  std::vector<float> numbers;
  for (const std::string& text : texts(column)) {
    float number = std::numeric_limits<float>::quiet_NaN();
    const char* end = text.data() + text.size();
    if (!text.empty() && std::from_chars(text.data(), end, number).ptr != end)
      throw std::runtime_error("\"" + text + "\" in column \"" + column + "\" is no number");
    numbers.push_back(number);
  }
  return numbers;
}

DataSet::DataSet(const std::string& name) : m_name(name) {
  const char* folder = std::getenv("ORMELLE_DATA_DIR");
  m_folder = std::string(folder && *folder ? folder : ORMELLE_SOURCE_DATA_DIR) + "/" + name;
  const auto json = nlohmann::json::parse(readWhole(m_folder + "/" + name + ".json"));
  m_title = json.value("title", "");
  m_source = json.value("source", "");
  m_licence = json.value("licence", "");
  m_dims = json.value("dims", std::vector<int>());
  m_origin = json.value("origin", std::vector<float>());
  m_spacing = json.value("spacing", std::vector<float>());
}

std::vector<float> DataSet::floats(const std::string& file) const {
  return readRaw<float>(m_folder + "/" + file + ".raw");
}

std::vector<int32_t> DataSet::ints(const std::string& file) const {
  return readRaw<int32_t>(m_folder + "/" + file + ".raw");
}

Table DataSet::table() const {
  const std::string file = m_folder + "/" + m_name + ".csv";
  std::istringstream lines(readWhole(file));
  Table table;
  std::string line;
  if (std::getline(lines, line)) table.names = cellsOf(line);
  while (std::getline(lines, line)) {
    if (line.empty() || line == "\r") continue;
    table.rows.push_back(cellsOf(line));
    if (table.rows.back().size() != table.names.size())
      throw std::runtime_error(file + ": line " + std::to_string(table.rows.size() + 1) +
                               " has too many or too few cells");
  }
  return table;
}

std::vector<float> lastIndexFastest(const std::vector<float>& values, int numX, int numY, int numZ, int components) {
  const auto x = static_cast<std::size_t>(numX), y = static_cast<std::size_t>(numY), z = static_cast<std::size_t>(numZ);
  const auto c = static_cast<std::size_t>(components);
  if (values.size() != x * y * z * c) throw std::runtime_error("the number of values isn't that of the grid");
  std::vector<float> turned;
  turned.reserve(values.size());
  for (std::size_t i = 0; i < x; ++i)
    for (std::size_t j = 0; j < y; ++j)
      for (std::size_t k = 0; k < z; ++k) {
        const auto first = values.begin() + static_cast<std::ptrdiff_t>(((k * y + j) * x + i) * c);
        turned.insert(turned.end(), first, first + components);
      }
  return turned;
}

}  // namespace gallery
