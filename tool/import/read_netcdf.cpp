// Grids of NetCDF files, by netCDF's own library, with the conventions that most of them keep: coordinates are
// variables named as their dimension, or are named by an attribute; units, missing values and packed numbers are told
// by attributes. A piece holds all variables over the same dimensions.

#include <date/date.h>
#include <netcdf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "Fields.h"
#include "Readers.h"

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

bool isOneOf(const std::string& word, std::initializer_list<const char*> words) {
  return std::any_of(words.begin(), words.end(), [&](const char* other) { return word == other; });
}

// ---- What a file has ------------------------------------------------------------------------------------------------

class OpenGrid {
 public:
  explicit OpenGrid(const std::string& file) {
    // As an absolute path: the library takes other names for addresses in the network.
    require(nc_open(std::filesystem::absolute(file).c_str(), NC_NOWRITE, &m_id));
  }
  ~OpenGrid() { nc_close(m_id); }
  OpenGrid(const OpenGrid&) = delete;
  OpenGrid& operator=(const OpenGrid&) = delete;
  int id() const { return m_id; }

 private:
  int m_id = -1;
};

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

struct Dimension {
  std::string name;
  std::size_t length = 0;
};

struct Variable {
  int id = -1;
  std::string name;
  nc_type type = NC_NAT;
  std::vector<int> dimensions;
  std::string units, standardName, longName;
  bool isCoordinate = false;

  /// What people call it: its name with the unit.
  std::string title() const {
    const std::string word = longName.empty() ? name : longName;
    return units.empty() || units == "1" ? word : word + " (" + units + ")";
  }
};

bool isNumber(nc_type type) {
  return type == NC_BYTE || type == NC_UBYTE || type == NC_SHORT || type == NC_USHORT || type == NC_INT ||
         type == NC_UINT || type == NC_INT64 || type == NC_UINT64 || type == NC_FLOAT || type == NC_DOUBLE;
}

// ---- Values ---------------------------------------------------------------------------------------------------------

// What stands for numbers in a variable: packing and missing values.
class Unpacker {
 public:
  Unpacker(int file, const Variable& variable) : m_isFloat(variable.type == NC_FLOAT) {
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

// Days since 1970-01-01 of a time counted as "hours since 1990-01-01 00:00"; none for other calendars and words.
std::optional<double> dayOf(double time, const std::string& units, const std::string& calendar) {
  if (!isOneOf(lowered(calendar), {"", "standard", "gregorian", "proleptic_gregorian"}) || !std::isfinite(time))
    return {};
  std::array<char, 32> word{};
  int year = 0;
  unsigned month = 1, day = 1, hour = 0, minute = 0;
  if (std::sscanf(units.c_str(), "%31s since %d-%u-%u%*1[ T]%u:%u", word.data(), &year, &month, &day, &hour, &minute) <
      4)
    return {};
  const std::string unit = lowered(word.data());
  const double length = unit.starts_with("day") || unit == "d"                    ? 1.0
                        : unit.starts_with("hour") || unit == "h" || unit == "hr" ? 1.0 / 24
                        : unit.starts_with("min")                                 ? 1.0 / 1440
                        : unit.starts_with("sec") || unit == "s"                  ? 1.0 / 86400
                                                                                  : 0.0;
  const date::year_month_day start{date::year(year), date::month(month), date::day(day)};
  if (length == 0 || !start.ok()) return {};
  const double days = date::sys_days(start).time_since_epoch().count() + (hour + minute / 60.0) / 24 + time * length;
  return std::abs(days) < 3e6 ? std::optional(days) : std::nullopt;
}

// ---- Dimensions and what they mean ----------------------------------------------------------------------------------

enum class Role { X, Y, Z, TIME, OTHER };

struct Axis {
  Role role = Role::OTHER;
  std::vector<double> values;  ///< of the coordinate variable; empty if there is none
  const Variable* variable = nullptr;
  bool isDown = false;  ///< values count downwards
};

class GridReader {
 public:
  GridReader(const std::string& file, int timeStep)
      : m_file(file), m_title(std::filesystem::path(file).stem().string()), m_timeStep(timeStep) {
    std::error_code error;
    m_numBytes = std::filesystem::file_size(file, error);
    int format = 0;
    require(nc_inq_format(m_file.id(), &format));
    m_isClassic = format != NC_FORMAT_NETCDF4 && format != NC_FORMAT_NETCDF4_CLASSIC;
  }

  Dataset read() {
    takeInventory();
    takeAxes();
    takeFields();
    for (auto& [key, piece] : m_pieces) {
      addVectors(piece);
      m_data.pieces.push_back(std::move(piece.piece));
    }
    if (m_data.pieces.empty()) throw Failure("there is no variable in it that makes a grid or a series");
    return std::move(m_data);
  }

 private:
  struct Part {
    Piece piece;
    std::vector<const Variable*> variables;  // of each scalar set
  };

  // ---- Inventory

  void takeInventory() {
    int numGroups = 0;
    if (nc_inq_grps(m_file.id(), &numGroups, nullptr) == NC_NOERR && numGroups > 0)
      m_data.note(counted(static_cast<std::size_t>(numGroups), "group", "groups") + " below the root " +
                  (numGroups == 1 ? "was" : "were") + " left out");
    int numDimensions = 0, numVariables = 0, numAttributes = 0;
    require(nc_inq(m_file.id(), &numDimensions, &numVariables, &numAttributes, nullptr));
    std::array<char, NC_MAX_NAME + 1> name{};
    for (int i = 0; i < numDimensions; ++i) {
      Dimension& dimension = m_dimensions.emplace_back();
      require(nc_inq_dim(m_file.id(), i, name.data(), &dimension.length));
      dimension.name = name.data();
    }
    for (int i = 0; i < numVariables; ++i) {
      Variable variable;
      int rank = 0, attributes = 0;
      require(nc_inq_varndims(m_file.id(), i, &rank));
      variable.dimensions.resize(static_cast<std::size_t>(std::max(rank, 0)));
      require(
          nc_inq_var(m_file.id(), i, name.data(), &variable.type, nullptr, variable.dimensions.data(), &attributes));
      variable.id = i;
      variable.name = name.data();
      variable.units = textAttribute(m_file.id(), i, "units");
      variable.standardName = textAttribute(m_file.id(), i, "standard_name");
      variable.longName = textAttribute(m_file.id(), i, "long_name").substr(0, 100);
      for (const int dimension : variable.dimensions)
        if (dimension < 0 || static_cast<std::size_t>(dimension) >= m_dimensions.size())
          throw Failure("a variable of it has a dimension that isn't there");
      m_variables.push_back(std::move(variable));
    }
    noteAttributes(numAttributes);
  }

  void noteAttributes(int count) {
    std::string names;
    std::array<char, NC_MAX_NAME + 1> name{};
    int kept = 0;
    for (int i = 0; i < count; ++i) {
      if (nc_inq_attname(m_file.id(), NC_GLOBAL, i, name.data()) != NC_NOERR) continue;
      if (name[0] == '_' || std::string(name.data()) == "Conventions") continue;
      if (++kept <= 5) names += (names.empty() ? "" : ", ") + std::string(name.data());
    }
    if (kept > 0) m_data.note("attributes of the whole are not kept: " + names + (kept > 5 ? " ..." : ""));
  }

  std::size_t lengthOf(int dimension) const { return m_dimensions[static_cast<std::size_t>(dimension)].length; }

  const Variable* variableNamed(const std::string& name) const {
    for (const Variable& variable : m_variables)
      if (variable.name == name) return &variable;
    return nullptr;
  }

  // All values of a variable, as numbers; those of a field only at the chosen places of dimensions that it doesn't
  // show.
  std::vector<double> numbersOf(const Variable& variable) {
    std::size_t count = 1;
    for (const int dimension : variable.dimensions) count = times(count, lengthOf(dimension));
    checkSize(variable, count);
    std::vector<double> numbers(count);
    if (count > 0) require(nc_get_var_double(m_file.id(), variable.id, numbers.data()));
    const Unpacker unpack(m_file.id(), variable);
    for (double& number : numbers) number = unpack(number);
    return numbers;
  }

  static std::size_t times(std::size_t a, std::size_t b) {
    if (b > 0 && a > kMostNodes / b) throw Failure("one of its variables has more than a thousand million values");
    return a * b;
  }

  // A file without compression holds what it promises.
  void checkSize(const Variable& variable, std::size_t count) const {
    std::size_t size = 0;
    require(nc_inq_type(m_file.id(), variable.type, nullptr, &size));
    if (m_isClassic && count * size > m_numBytes)
      throw Failure("its variable \"" + variable.name + "\" has more values than the file holds");
  }

  // ---- Axes

  Role roleOf(const std::string& name, const Variable* variable) const {
    if (variable) {
      const std::string axis = lowered(textAttribute(m_file.id(), variable->id, "axis"));
      if (axis == "x") return Role::X;
      if (axis == "y") return Role::Y;
      if (axis == "z") return Role::Z;
      if (axis == "t") return Role::TIME;
      const std::string units = lowered(variable->units), standard = variable->standardName;
      if (units.find(" since ") != std::string::npos || standard == "time") return Role::TIME;
      if (isOneOf(units, {"degrees_east", "degree_east", "degrees_e", "degree_e", "degreese", "degreee"}))
        return Role::X;
      if (isOneOf(units, {"degrees_north", "degree_north", "degrees_n", "degree_n", "degreesn", "degreen"}))
        return Role::Y;
      if (isOneOf(standard, {"longitude", "projection_x_coordinate", "grid_longitude"})) return Role::X;
      if (isOneOf(standard, {"latitude", "projection_y_coordinate", "grid_latitude"})) return Role::Y;
      if (isOneOf(standard, {"depth", "height", "altitude", "air_pressure", "model_level_number"}) ||
          !textAttribute(m_file.id(), variable->id, "positive").empty())
        return Role::Z;
    }
    const std::string word = lowered(name);
    if (word.starts_with("lon") || isOneOf(word, {"x", "xc", "easting", "i", "ni", "nx", "rlon", "nav_lon"}))
      return Role::X;
    if (word.starts_with("lat") || isOneOf(word, {"y", "yc", "northing", "j", "nj", "ny", "rlat", "nav_lat"}))
      return Role::Y;
    if (word.starts_with("lev") || word.starts_with("depth") || word.starts_with("plev") ||
        isOneOf(word, {"z", "zc", "height", "alt", "altitude", "pressure", "k", "nz", "isobaric", "sigma"}))
      return Role::Z;
    if (word.starts_with("time") || isOneOf(word, {"t", "date"})) return Role::TIME;
    return Role::OTHER;
  }

  void takeAxes() {
    for (std::size_t i = 0; i < m_dimensions.size(); ++i) {
      Axis axis;
      for (Variable& variable : m_variables) {
        if (variable.name != m_dimensions[i].name || variable.dimensions != std::vector<int>{static_cast<int>(i)})
          continue;
        variable.isCoordinate = true;
        axis.variable = &variable;
      }
      if (axis.variable && isNumber(axis.variable->type)) axis.values = numbersOf(*axis.variable);
      axis.role = roleOf(m_dimensions[i].name, axis.variable);
      axis.isDown = axis.role == Role::Z && axis.variable && countsDown(*axis.variable);
      m_axes.push_back(std::move(axis));
    }
    // Bounds of coordinates, and coordinates that others name.
    for (const Variable& variable : m_variables) {
      for (const char* attribute : {"bounds", "climatology", "grid_mapping", "cell_measures", "ancillary_variables"})
        markHelpers(textAttribute(m_file.id(), variable.id, attribute), attribute);
      markHelpers(textAttribute(m_file.id(), variable.id, "coordinates"), "coordinates");
    }
  }

  void markHelpers(const std::string& words, const std::string& attribute) {
    std::size_t at = 0;
    while (at < words.size()) {
      const std::size_t end = std::min(words.find(' ', at), words.size());
      for (Variable& variable : m_variables)
        if (variable.name == words.substr(at, end - at) && attribute != "ancillary_variables" &&
            attribute != "cell_measures")
          variable.isCoordinate = true;
      at = end + 1;
    }
  }

  bool countsDown(const Variable& variable) const {
    const std::string positive = lowered(textAttribute(m_file.id(), variable.id, "positive"));
    if (!positive.empty()) return positive == "down";
    const std::string units = lowered(variable.units);
    return variable.standardName == "depth" || variable.standardName == "air_pressure" ||
           lowered(variable.name).starts_with("depth") ||
           isOneOf(units, {"hpa", "pa", "mb", "mbar", "millibar", "millibars", "dbar", "decibar"});
  }

  // ---- Fields

  // Which of a variable's dimensions lie along x, y and z; -1 where none does.
  struct Layout {
    std::array<int, 3> place{-1, -1, -1};   // among the dimensions of the variable
    std::vector<std::size_t> start, count;  // what is read
    int numShown = 0;
  };

  Layout layoutOf(const Variable& variable) {
    Layout layout;
    const std::size_t rank = variable.dimensions.size();
    layout.start.assign(rank, 0);
    layout.count.assign(rank, 1);
    std::vector<int> others;
    for (std::size_t i = rank; i-- > 0;) {
      const Role role = m_axes[static_cast<std::size_t>(variable.dimensions[i])].role;
      const auto axis = static_cast<std::size_t>(role);
      if (role == Role::TIME) continue;
      if (role != Role::OTHER && layout.place[axis] < 0)
        layout.place[axis] = static_cast<int>(i);
      else
        others.push_back(static_cast<int>(i));
    }
    // A dimension that says nothing of itself takes a free direction, the last dimension first x.
    const bool hasPlane = layout.place[0] >= 0 && layout.place[1] >= 0;
    for (const int other : others) {
      const auto length = lengthOf(variable.dimensions[static_cast<std::size_t>(other)]);
      const auto free = std::find(layout.place.begin(), layout.place.end(), -1);
      // Beside a map, an unknown dimension is one of members or bands rather than of height.
      if (free != layout.place.end() && !hasPlane && length > 1)
        *free = other;
      else if (length > 1)
        noteChoice(variable.dimensions[static_cast<std::size_t>(other)], 0);
    }
    std::size_t numTimes = 0;
    for (std::size_t i = 0; i < rank; ++i) {
      const int dimension = variable.dimensions[i];
      if (m_axes[static_cast<std::size_t>(dimension)].role == Role::TIME)
        numTimes = std::max(numTimes, lengthOf(dimension));
    }
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) {
        const auto place = static_cast<std::size_t>(layout.place[axis]);
        layout.count[place] = lengthOf(variable.dimensions[place]);
        if (layout.count[place] > 1) ++layout.numShown;
      }
    if (layout.numShown > 0)
      for (std::size_t i = 0; i < rank; ++i) {
        const int dimension = variable.dimensions[i];
        if (m_axes[static_cast<std::size_t>(dimension)].role != Role::TIME || lengthOf(dimension) < 2) continue;
        const std::size_t step = std::min(static_cast<std::size_t>(m_timeStep), lengthOf(dimension) - 1);
        layout.start[i] = step;
        noteChoice(dimension, step);
      }
    return layout;
  }

  void noteChoice(int dimension, std::size_t step) {
    const Axis& axis = m_axes[static_cast<std::size_t>(dimension)];
    const std::string& name = m_dimensions[static_cast<std::size_t>(dimension)].name;
    std::string text = "of the " + std::to_string(lengthOf(dimension)) + " steps of " + name + " number " +
                       std::to_string(step + 1) + " was taken";
    if (axis.variable && step < axis.values.size()) text += " (" + timeText(axis, step) + ")";
    m_data.note(text);
  }

  std::string timeText(const Axis& axis, std::size_t step) const {
    const double value = axis.values[step];
    if (const auto day = dayOf(value, axis.variable->units, textAttribute(m_file.id(), axis.variable->id, "calendar")))
      return dateText(*day, *day != std::floor(*day));
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return std::string(text.data()) + (axis.variable->units.empty() ? "" : " " + axis.variable->units);
  }

  void takeFields() {
    for (const Variable& variable : m_variables) {
      if (variable.isCoordinate) continue;
      if (!isNumber(variable.type)) {
        m_data.note("the variable \"" + variable.name + "\" holds no numbers and was left out");
        continue;
      }
      if (variable.dimensions.empty()) {
        m_data.note("the variable \"" + variable.name + "\" is a single number and was left out");
        continue;
      }
      std::size_t whole = 1;
      for (const int dimension : variable.dimensions)
        whole = times(whole, std::max<std::size_t>(lengthOf(dimension), 1));
      checkSize(variable, whole);
      if (std::any_of(variable.dimensions.begin(), variable.dimensions.end(),
                      [&](int d) { return lengthOf(d) == 0; })) {
        m_data.note("the variable \"" + variable.name + "\" has no values");
        continue;
      }
      takeField(variable);
    }
  }

  void takeField(const Variable& variable) {
    const Layout layout = layoutOf(variable);
    if (layout.numShown == 0) {
      takeSeries(variable);
      return;
    }
    if (layout.numShown == 1) {
      takeSeries(variable, layout);
      return;
    }
    Part& part = partFor(variable, layout);
    part.piece.scalars.push_back({variable.title(), Binding::NODE, valuesOf(variable, layout)});
    part.variables.push_back(&variable);
  }

  // The values with x fastest.
  std::vector<float> valuesOf(const Variable& variable, const Layout& layout) {
    std::size_t count = 1;
    for (const std::size_t length : layout.count) count = times(count, length);
    // Where each dimension of the file goes.
    std::array<std::size_t, 3> lengths{1, 1, 1};
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) lengths[axis] = layout.count[static_cast<std::size_t>(layout.place[axis])];
    std::vector<std::size_t> strides(layout.count.size(), 0);
    const std::array<std::size_t, 3> steps{1, lengths[0], lengths[0] * lengths[1]};
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) strides[static_cast<std::size_t>(layout.place[axis])] = steps[axis];

    const Unpacker unpack(m_file.id(), variable);
    std::vector<float> values(count);
    // Slice by slice along the first dimension that is shown, so that doubles take little room.
    std::size_t sliced = 0;
    while (sliced + 1 < layout.count.size() && layout.count[sliced] == 1) ++sliced;
    std::vector<std::size_t> start = layout.start, lengthsRead = layout.count;
    const std::size_t rest = count / layout.count[sliced];
    const std::size_t atOnce =
        std::clamp<std::size_t>((1U << 20) / std::max<std::size_t>(rest, 1), 1, layout.count[sliced]);
    std::vector<double> raw(rest * atOnce);
    for (std::size_t from = 0; from < layout.count[sliced]; from += atOnce) {
      start[sliced] = layout.start[sliced] + from;
      lengthsRead[sliced] = std::min(atOnce, layout.count[sliced] - from);
      require(nc_get_vara_double(m_file.id(), variable.id, start.data(), lengthsRead.data(), raw.data()));
      std::vector<std::size_t> index(layout.count.size(), 0);
      const std::size_t numRead = rest * lengthsRead[sliced];
      std::size_t node = from * strides[sliced];
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

  // ---- Pieces

  Part& partFor(const Variable& variable, const Layout& layout) {
    std::array<int, 3> key{-1, -1, -1};
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) key[axis] = variable.dimensions[static_cast<std::size_t>(layout.place[axis])];
    const auto [x, y] = curvedCoordinates(variable, key);
    const auto [found, isNew] = m_pieces.try_emplace({key[0], key[1], key[2], x ? x->id : -1});
    Part& part = found->second;
    if (!isNew) return part;
    part.piece.name = m_title;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      part.piece.axes[axis] = key[axis] < 0 ? std::vector<double>{0.0} : coordinatesOf(key[axis]);
      if (key[axis] >= 0 && m_axes[static_cast<std::size_t>(key[axis])].isDown) {
        for (double& value : part.piece.axes[axis]) value = -value;
        m_data.note("the values of " + m_dimensions[static_cast<std::size_t>(key[axis])].name +
                    " count downwards: its coordinates are negative");
      }
      part.piece.dims[axis] = static_cast<int>(part.piece.axes[axis].size());
    }
    part.piece.kind = PieceKind::RECTILINEAR_GRID;
    if (x && y) bend(part.piece, *x, *y);
    return part;
  }

  std::vector<double> coordinatesOf(int dimension) {
    const Axis& axis = m_axes[static_cast<std::size_t>(dimension)];
    if (axis.values.size() == lengthOf(dimension)) return axis.values;
    m_data.note("the dimension " + m_dimensions[static_cast<std::size_t>(dimension)].name +
                " has no coordinates and counts from 0");
    std::vector<double> values(lengthOf(dimension));
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i);
    return values;
  }

  // Two variables over y and x that the attribute "coordinates" names.
  std::pair<const Variable*, const Variable*> curvedCoordinates(const Variable& variable,
                                                                const std::array<int, 3>& key) {
    std::pair<const Variable*, const Variable*> result{nullptr, nullptr};
    const std::string words = " " + textAttribute(m_file.id(), variable.id, "coordinates") + " ";
    for (const Variable& other : m_variables) {
      if (other.dimensions.size() != 2 || !isNumber(other.type) ||
          words.find(" " + other.name + " ") == std::string::npos)
        continue;
      const std::set<int> own(other.dimensions.begin(), other.dimensions.end());
      if (own != std::set<int>{key[0], key[1]}) continue;
      const Role role = roleOf(other.name, &other);
      if (role == Role::X) result.first = &other;
      if (role == Role::Y) result.second = &other;
    }
    if (!result.first || !result.second) return {nullptr, nullptr};
    return result;
  }

  void bend(Piece& piece, const Variable& x, const Variable& y) {
    const auto take = [&](const Variable& variable) {
      Layout layout = layoutOf(variable);
      std::vector<double> numbers = numbersOf(variable);
      const auto width = static_cast<std::size_t>(piece.dims[0]), height = static_cast<std::size_t>(piece.dims[1]);
      if (layout.place[0] == 1 || lengthOf(variable.dimensions[1]) == width) return numbers;
      std::vector<double> turned(numbers.size());
      for (std::size_t i = 0; i < width; ++i)
        for (std::size_t j = 0; j < height; ++j) turned[i + width * j] = numbers[i * height + j];
      return turned;
    };
    const std::vector<double> xs = take(x), ys = take(y);
    piece.kind = PieceKind::CURVILINEAR_GRID;
    for (const double z : piece.axes[2])
      for (std::size_t i = 0; i < xs.size(); ++i) piece.points.push_back({xs[i], ys[i], z});
  }

  // ---- Series

  void takeSeries(const Variable& variable) {
    for (std::size_t i = 0; i < variable.dimensions.size(); ++i)
      if (lengthOf(variable.dimensions[i]) > 1) {
        Layout layout;
        layout.start.assign(variable.dimensions.size(), 0);
        layout.count.assign(variable.dimensions.size(), 1);
        layout.count[i] = lengthOf(variable.dimensions[i]);
        layout.place[0] = static_cast<int>(i);
        takeSeries(variable, layout);
        return;
      }
    m_data.note("the variable \"" + variable.name + "\" is a single number and was left out");
  }

  void takeSeries(const Variable& variable, Layout layout) {
    int along = -1;
    for (const int place : layout.place)
      if (place >= 0 && layout.count[static_cast<std::size_t>(place)] > 1) along = place;
    layout.place = {along, -1, -1};
    const int dimension = variable.dimensions[static_cast<std::size_t>(along)];
    const auto [found, isNew] = m_pieces.try_emplace({dimension, -2, -2, -1});
    Part& part = found->second;
    if (isNew) {
      const Axis& axis = m_axes[static_cast<std::size_t>(dimension)];
      part.piece.kind = PieceKind::SERIES;
      part.piece.name = axis.variable ? axis.variable->title() : m_dimensions[static_cast<std::size_t>(dimension)].name;
      part.piece.axes[0] = coordinatesOf(dimension);
    }
    part.piece.scalars.push_back({variable.title(), Binding::NODE, valuesOf(variable, layout)});
    part.variables.push_back(&variable);
  }

  // ---- Vectors

  // The names of the second and third component of a vector whose first has this name; empty if it is no first one.
  static std::array<std::string, 2> partnersOf(const std::string& name, bool isStandard) {
    static constexpr std::array<std::array<const char*, 3>, 3> kStandard{
        {{"eastward_", "northward_", "upward_"}, {"x_", "y_", "z_"}, {"_x_", "_y_", "_z_"}}};
    if (isStandard) {
      for (const auto& words : kStandard) {
        const std::size_t at = name.find(words[0]);
        if (at == std::string::npos || (words[0][0] != '_' && at != 0 && name[at - 1] != '_')) continue;
        std::array<std::string, 2> result{name, name};
        for (std::size_t i = 0; i < 2; ++i)
          result[i].replace(at, std::char_traits<char>::length(words[0]), words[i + 1]);
        return result;
      }
      return {};
    }
    // The letter u first, or alone between underscores.
    for (std::size_t at = 0; at < name.size(); ++at) {
      if (name[at] != 'u' && name[at] != 'U') continue;
      const bool isLast = at + 1 == name.size() || name[at + 1] == '_' || (name[at + 1] >= '0' && name[at + 1] <= '9');
      if (at != 0 && !(name[at - 1] == '_' && isLast)) continue;
      std::array<std::string, 2> result{name, name};
      result[0][at] = static_cast<char>(name[at] + 1);
      result[1][at] = static_cast<char>(name[at] + 2);
      return result;
    }
    return {};
  }

  void addVectors(Part& part) {
    if (part.piece.kind == PieceKind::SERIES) return;
    const auto find = [&](const std::string& name, bool isStandard, const Variable& like) {
      for (std::size_t i = 0; i < part.variables.size(); ++i) {
        const Variable& other = *part.variables[i];
        if (!name.empty() && (isStandard ? other.standardName : other.name) == name && other.units == like.units)
          return static_cast<int>(i);
      }
      return -1;
    };
    for (std::size_t i = 0; i < part.variables.size(); ++i) {
      const Variable& first = *part.variables[i];
      for (const bool isStandard : {true, false}) {
        const std::array<std::string, 2> names = partnersOf(isStandard ? first.standardName : first.name, isStandard);
        const int second = find(names[0], isStandard, first), third = find(names[1], isStandard, first);
        if (second < 0) continue;
        addVector(part.piece, i, second, third, part, isStandard);
        break;
      }
    }
  }

  void addVector(Piece& piece, std::size_t first, int second, int third, const Part& part, bool isStandard) {
    const Variable& variable = *part.variables[first];
    const Variable& other = *part.variables[static_cast<std::size_t>(second)];
    std::string name = variable.name + ", " + other.name;
    if (third >= 0) name += ", " + part.variables[static_cast<std::size_t>(third)]->name;
    // What the standard names have in common: "eastward_wind" is wind.
    const std::size_t cut = isStandard ? variable.standardName.find("eastward_") : std::string::npos;
    if (cut == 0) {
      name = variable.standardName.substr(9);
      std::replace(name.begin(), name.end(), '_', ' ');
    }
    if (!variable.units.empty()) name += " (" + variable.units + ")";
    VectorSet set{name, Binding::NODE, {}};
    const std::vector<float>& x = piece.scalars[first].values;
    const std::vector<float>& y = piece.scalars[static_cast<std::size_t>(second)].values;
    set.values.reserve(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
      set.values.push_back({x[i], y[i], third < 0 ? 0.0F : piece.scalars[static_cast<std::size_t>(third)].values[i]});
    piece.vectors.push_back(std::move(set));
  }

  OpenGrid m_file;
  std::string m_title;
  int m_timeStep;
  std::uintmax_t m_numBytes = 0;
  bool m_isClassic = true;
  Dataset m_data;
  std::vector<Dimension> m_dimensions;
  std::vector<Variable> m_variables;
  std::vector<Axis> m_axes;
  std::map<std::array<int, 4>, Part> m_pieces;
};

}  // namespace

Dataset readNetcdf(const std::string& file) { return GridReader(file, readOptions().step).read(); }

}  // namespace importer
