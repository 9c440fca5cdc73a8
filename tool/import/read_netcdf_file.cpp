#include "read_netcdf_file.h"

#include <netcdf.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>

#include "Fields.h"
#include "read_netcdf_guard.h"

namespace importer {

namespace {

constexpr double kMissingValue = std::numeric_limits<double>::quiet_NaN();
// A grid of more nodes has no room in memory, and its sets no index.
constexpr std::size_t kMostNodes = 1U << 30;

void require(int status) {
  if (status == NC_NOERR) return;
  if (status == NC_ENOMEM) throw std::bad_alloc();
  throw Failure(std::string("netCDF can't read it: ") + nc_strerror(status));
}

std::string textAttribute(int file, int variable, const char* name) {
  nc_type type = NC_NAT;
  std::size_t length = 0;
  if (nc_inq_att(file, variable, name, &type, &length) != NC_NOERR || length == 0) return {};
  constexpr std::size_t kLongest = 4096;
  if (type == NC_STRING) {
    if (length > kLongest) return {};
    std::vector<char*> texts(length, nullptr);
    if (nc_get_att_string(file, variable, name, texts.data()) != NC_NOERR) return {};
    std::string text = texts[0] ? texts[0] : "";
    nc_free_string(length, texts.data());
    return text.substr(0, kLongest);
  }
  if (type != NC_CHAR || length > (1U << 20)) return {};
  std::string text(length, '\0');
  if (nc_get_att_text(file, variable, name, text.data()) != NC_NOERR) return {};
  text.resize(std::min(text.find('\0'), text.size()));
  while (!text.empty() && (text.back() == ' ' || text.back() == '\n')) text.pop_back();
  for (char& c : text)
    if (static_cast<unsigned char>(c) < 32) c = ' ';
  return text.substr(0, kLongest);
}

std::vector<double> numberAttribute(int file, int variable, const char* name) {
  nc_type type = NC_NAT;
  std::size_t length = 0;
  if (nc_inq_att(file, variable, name, &type, &length) != NC_NOERR || length == 0 || length > 1024) return {};
  if (type == NC_CHAR || type >= NC_STRING) return {};
  std::vector<double> numbers(length);
  if (nc_get_att_double(file, variable, name, numbers.data()) != NC_NOERR) return {};
  return numbers;
}

// What stands for numbers in a variable: packing and missing values.
class Unpacker {
 public:
  Unpacker(int file, const NetcdfVariable& variable) : m_isFloat(variable.type == NC_FLOAT) {
    for (const char* name : {"_FillValue", "missing_value"})
      for (const double number : numberAttribute(file, variable.id, name)) m_missing.push_back(number);
    if (m_missing.empty()) addDefaultFill(variable.type);
    const auto one = [&](const char* name, double other) {
      const std::vector<double> numbers = numberAttribute(file, variable.id, name);
      return numbers.empty() ? other : numbers[0];
    };
    m_scale = one("scale_factor", 1);
    m_offset = one("add_offset", 0);
    m_least = one("valid_min", -std::numeric_limits<double>::infinity());
    m_most = one("valid_max", std::numeric_limits<double>::infinity());
    const std::vector<double> range = numberAttribute(file, variable.id, "valid_range");
    if (range.size() == 2) {
      m_least = range[0];
      m_most = range[1];
    }
    if (lowered(textAttribute(file, variable.id, "_Unsigned")) == "true")
      m_wrap = variable.type == NC_BYTE ? 256 : variable.type == NC_SHORT ? 65536 : 0;
    if (m_wrap > 0)
      for (double& missing : m_missing) missing += missing < 0 ? m_wrap : 0;
  }

  double operator()(double raw) const {
    if (m_wrap > 0 && raw < 0) raw += m_wrap;
    for (const double missing : m_missing)
      if (raw == missing || (m_isFloat && static_cast<float>(raw) == static_cast<float>(missing))) return kMissingValue;
    if (raw < m_least || raw > m_most) return kMissingValue;
    return raw * m_scale + m_offset;
  }

 private:
  void addDefaultFill(nc_type type) {
    if (type == NC_FLOAT) m_missing.push_back(static_cast<double>(NC_FILL_FLOAT));
    if (type == NC_DOUBLE) m_missing.push_back(NC_FILL_DOUBLE);
    if (type == NC_SHORT) m_missing.push_back(NC_FILL_SHORT);
    if (type == NC_INT) m_missing.push_back(NC_FILL_INT);
  }

  std::vector<double> m_missing;
  double m_scale = 1, m_offset = 0, m_least = 0, m_most = 0, m_wrap = 0;
  bool m_isFloat;
};

}  // namespace

bool isOneOf(const std::string& word, std::initializer_list<const char*> words) {
  return std::any_of(words.begin(), words.end(), [&](const char* other) { return word == other; });
}

std::string NetcdfVariable::title(const std::string& member) const {
  const std::string word = (longName.empty() ? name : longName) + (member.empty() ? "" : ", " + member);
  return units.empty() || units == "1" ? word : word + " (" + units + ")";
}

bool NetcdfVariable::isNumber() const {
  return type == NC_BYTE || type == NC_UBYTE || type == NC_SHORT || type == NC_USHORT || type == NC_INT ||
         type == NC_UINT || type == NC_INT64 || type == NC_UINT64 || type == NC_FLOAT || type == NC_DOUBLE;
}

bool NetcdfVariable::isTexts() const {
  return (type == NC_STRING && dimensions.size() == 1) || (type == NC_CHAR && dimensions.size() == 2);
}

// ---- The inventory --------------------------------------------------------------------------------------------------

NetcdfFile::NetcdfFile(const std::string& name, Dataset& data) {
  refuseBrokenNetcdf(name);
  // As an absolute path: the library takes other names for addresses in the network.
  require(nc_open(std::filesystem::absolute(name).c_str(), NC_NOWRITE, &m_id));
  try {
    std::error_code error;
    m_numBytes = std::filesystem::file_size(name, error);
    int format = 0;
    require(nc_inq_format(m_id, &format));
    m_isClassic = format != NC_FORMAT_NETCDF4 && format != NC_FORMAT_NETCDF4_CLASSIC;
    takeInventory(data);
  } catch (...) {
    nc_close(m_id);
    throw;
  }
}

NetcdfFile::~NetcdfFile() { nc_close(m_id); }

void NetcdfFile::takeInventory(Dataset& data) {
  int numGroups = 0;
  if (nc_inq_grps(m_id, &numGroups, nullptr) == NC_NOERR && numGroups > 0)
    data.note(counted(static_cast<std::size_t>(numGroups), "group", "groups") + " below the root " +
              (numGroups == 1 ? "was" : "were") + " left out");
  int numDimensions = 0, numVariables = 0, numAttributes = 0;
  require(nc_inq(m_id, &numDimensions, &numVariables, &numAttributes, nullptr));
  std::array<char, NC_MAX_NAME + 1> name{};
  for (int i = 0; i < numDimensions; ++i) {
    NetcdfDimension& dimension = m_dimensions.emplace_back();
    require(nc_inq_dim(m_id, i, name.data(), &dimension.length));
    dimension.name = name.data();
  }
  for (int i = 0; i < numVariables; ++i) {
    NetcdfVariable variable;
    int rank = 0, attributes = 0;
    require(nc_inq_varndims(m_id, i, &rank));
    variable.dimensions.resize(static_cast<std::size_t>(std::max(rank, 0)));
    require(nc_inq_var(m_id, i, name.data(), &variable.type, nullptr, variable.dimensions.data(), &attributes));
    variable.id = i;
    variable.name = name.data();
    variable.units = textAttribute(m_id, i, "units");
    variable.standardName = textAttribute(m_id, i, "standard_name");
    variable.longName = textAttribute(m_id, i, "long_name").substr(0, 100);
    for (const int dimension : variable.dimensions)
      if (dimension < 0 || static_cast<std::size_t>(dimension) >= m_dimensions.size())
        throw Failure("a variable of it has a dimension that isn't there");
    m_variables.push_back(std::move(variable));
  }
  noteAttributes(numAttributes, data);
}

void NetcdfFile::noteAttributes(int count, Dataset& data) const {
  std::string names;
  std::array<char, NC_MAX_NAME + 1> name{};
  int kept = 0;
  for (int i = 0; i < count; ++i) {
    if (nc_inq_attname(m_id, NC_GLOBAL, i, name.data()) != NC_NOERR) continue;
    if (name[0] == '_' || std::string(name.data()) == "Conventions") continue;
    if (++kept <= 5) names += (names.empty() ? "" : ", ") + std::string(name.data());
  }
  if (kept > 0) data.note("attributes of the whole are not kept: " + names + (kept > 5 ? " ..." : ""));
}

std::string NetcdfFile::text(const NetcdfVariable& variable, const char* attribute) const {
  return textAttribute(m_id, variable.id, attribute);
}

std::vector<std::string> NetcdfFile::textsOf(const NetcdfVariable& variable, std::size_t atMost) const {
  constexpr std::size_t kLongest = 1024;
  const std::size_t count = std::min(lengthOf(variable.dimensions[0]), atMost);
  std::vector<std::string> texts(count);
  const std::array<std::size_t, 2> start{0, 0};
  if (variable.type == NC_STRING) {
    std::vector<char*> pointers(count, nullptr);
    require(nc_get_vara_string(m_id, variable.id, start.data(), &count, pointers.data()));
    for (std::size_t i = 0; i < count; ++i) texts[i] = std::string(pointers[i] ? pointers[i] : "").substr(0, kLongest);
    nc_free_string(count, pointers.data());
    return texts;
  }
  const std::size_t length = std::min(lengthOf(variable.dimensions[1]), kLongest);
  const std::array<std::size_t, 2> counts{count, length};
  std::string bytes(count * length, '\0');
  require(nc_get_vara_text(m_id, variable.id, start.data(), counts.data(), bytes.data()));
  for (std::size_t i = 0; i < count; ++i) {
    const std::string text = bytes.substr(i * length, length);
    texts[i] = trimmed(std::string_view(text).substr(0, text.find('\0')));
  }
  return texts;
}

// ---- Numbers --------------------------------------------------------------------------------------------------------

void NetcdfFile::checkSize(const NetcdfVariable& variable) const {
  std::size_t count = 1, size = 0;
  for (const int dimension : variable.dimensions) {
    const std::size_t length = std::max<std::size_t>(lengthOf(dimension), 1);
    if (count > kMostNodes / length) throw Failure("one of its variables has more than a thousand million values");
    count *= length;
  }
  require(nc_inq_type(m_id, variable.type, nullptr, &size));
  if (m_isClassic && count * size > m_numBytes)
    throw Failure("its variable \"" + variable.name + "\" has more values than the file holds");
}

std::vector<double> NetcdfFile::numbersOf(const NetcdfVariable& variable) const {
  std::size_t count = 1;
  for (const int dimension : variable.dimensions) count *= lengthOf(dimension);
  if (count > 0) checkSize(variable);
  std::vector<double> numbers(count);
  if (count > 0) require(nc_get_var_double(m_id, variable.id, numbers.data()));
  const Unpacker unpack(m_id, variable);
  for (double& number : numbers) number = unpack(number);
  return numbers;
}

std::vector<float> NetcdfFile::partOf(const NetcdfVariable& variable, const std::vector<std::size_t>& start,
                                      const std::vector<std::size_t>& count,
                                      const std::vector<std::size_t>& strides) const {
  std::size_t all = 1;
  for (const std::size_t length : count) all *= length;
  const Unpacker unpack(m_id, variable);
  std::vector<float> values(all);
  // Slice by slice along the first dimension that is shown, so that doubles take little room.
  std::size_t sliced = 0;
  while (sliced + 1 < count.size() && count[sliced] == 1) ++sliced;
  std::vector<std::size_t> from = start, lengthsRead = count;
  const std::size_t rest = all / count[sliced];
  const std::size_t atOnce = std::clamp<std::size_t>((1U << 20) / std::max<std::size_t>(rest, 1), 1, count[sliced]);
  std::vector<double> raw(rest * atOnce);
  for (std::size_t first = 0; first < count[sliced]; first += atOnce) {
    from[sliced] = start[sliced] + first;
    lengthsRead[sliced] = std::min(atOnce, count[sliced] - first);
    require(nc_get_vara_double(m_id, variable.id, from.data(), lengthsRead.data(), raw.data()));
    std::vector<std::size_t> index(count.size(), 0);
    const std::size_t numRead = rest * lengthsRead[sliced];
    std::size_t node = first * strides[sliced];
    for (std::size_t i = 0; i < numRead; ++i) {
      values[node] = toFloat(unpack(raw[i]));
      for (std::size_t d = index.size(); d-- > 0;) {
        node += strides[d];
        if (++index[d] < lengthsRead[d]) break;
        node -= strides[d] * lengthsRead[d];
        index[d] = 0;
      }
    }
  }
  return values;
}

}  // namespace importer
