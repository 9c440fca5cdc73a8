// Grids of NetCDF files, by netCDF's own library, with the conventions that most of them keep: coordinates are
// variables named as their dimension, or are named by an attribute; units, missing values and packed numbers are told
// by attributes. A piece holds all variables over the same dimensions.

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "Readers.h"
#include "read_netcdf_axes.h"
#include "read_netcdf_file.h"
#include "read_netcdf_vectors.h"

namespace importer {

namespace {

using Variable = NetcdfVariable;
using Role = NetcdfRole;

class GridReader {
 public:
  GridReader(const std::string& file, int timeStep)
      : m_file(file, m_data), m_title(std::filesystem::path(file).stem().string()), m_timeStep(timeStep) {}

  Dataset read() {
    m_axes = takeNetcdfAxes(m_file);
    takeFields();
    for (auto& [key, part] : m_pieces) {
      addNetcdfVectors(part.piece, part.variables);
      m_data.pieces.push_back(std::move(part.piece));
    }
    if (m_data.pieces.empty()) throw Failure("there is no variable in it that makes a grid or a series");
    return std::move(m_data);
  }

 private:
  struct Part {
    Piece piece;
    std::vector<const Variable*> variables;  // of each scalar set
  };

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
      const auto length = m_file.lengthOf(variable.dimensions[static_cast<std::size_t>(other)]);
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
        numTimes = std::max(numTimes, m_file.lengthOf(dimension));
    }
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) {
        const auto place = static_cast<std::size_t>(layout.place[axis]);
        layout.count[place] = m_file.lengthOf(variable.dimensions[place]);
        if (layout.count[place] > 1) ++layout.numShown;
      }
    if (layout.numShown > 0)
      for (std::size_t i = 0; i < rank; ++i) {
        const int dimension = variable.dimensions[i];
        if (m_axes[static_cast<std::size_t>(dimension)].role != Role::TIME || m_file.lengthOf(dimension) < 2) continue;
        const std::size_t step = std::min(static_cast<std::size_t>(m_timeStep), m_file.lengthOf(dimension) - 1);
        layout.start[i] = step;
        noteChoice(dimension, step);
      }
    return layout;
  }

  void noteChoice(int dimension, std::size_t step) {
    const NetcdfAxis& axis = m_axes[static_cast<std::size_t>(dimension)];
    const std::string& name = m_file.nameOf(dimension);
    std::string text = "of the " + std::to_string(m_file.lengthOf(dimension)) + " steps of " + name + " number " +
                       std::to_string(step + 1) + " was taken";
    if (axis.variable && step < axis.values.size()) text += " (" + netcdfValueText(m_file, axis, step) + ")";
    m_data.note(text);
  }

  void takeFields() {
    findMemberNames();
    for (const Variable& variable : m_file.variables()) {
      if (variable.isCoordinate) continue;
      if (!variable.isNumber()) {
        const auto names = variable.isTexts() ? m_memberNames.find(variable.dimensions[0]) : m_memberNames.end();
        if (names != m_memberNames.end() && names->second == &variable) continue;
        m_data.note("the variable \"" + variable.name + "\" holds no numbers and was left out");
        continue;
      }
      if (variable.dimensions.empty()) {
        m_data.note("the variable \"" + variable.name + "\" is a single number and was left out");
        continue;
      }
      m_file.checkSize(variable);
      if (std::any_of(variable.dimensions.begin(), variable.dimensions.end(),
                      [&](int d) { return m_file.lengthOf(d) == 0; })) {
        m_data.note("the variable \"" + variable.name + "\" has no values");
        continue;
      }
      takeField(variable);
    }
  }

  void takeField(const Variable& variable) {
    if (const std::optional<Members> members = membersOf(variable)) {
      takeMembers(variable, *members);
      return;
    }
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
    // Where each dimension of the file goes.
    std::array<std::size_t, 3> lengths{1, 1, 1};
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) lengths[axis] = layout.count[static_cast<std::size_t>(layout.place[axis])];
    std::vector<std::size_t> strides(layout.count.size(), 0);
    const std::array<std::size_t, 3> steps{1, lengths[0], lengths[0] * lengths[1]};
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (layout.place[axis] >= 0) strides[static_cast<std::size_t>(layout.place[axis])] = steps[axis];

    return m_file.partOf(variable, layout.start, layout.count, strides);
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
        m_data.note("the values of " + m_file.nameOf(key[axis]) + " count downwards: its coordinates are negative");
      }
      part.piece.dims[axis] = static_cast<int>(part.piece.axes[axis].size());
    }
    if (key[2] >= 0 && m_axes[static_cast<std::size_t>(key[2])].role == Role::Z) m_data.hasOwnHeights = true;
    part.piece.kind = PieceKind::RECTILINEAR_GRID;
    if (x && y) bend(part.piece, *x, *y);
    return part;
  }

  std::vector<double> coordinatesOf(int dimension) {
    const NetcdfAxis& axis = m_axes[static_cast<std::size_t>(dimension)];
    if (axis.values.size() == m_file.lengthOf(dimension)) return axis.values;
    m_data.note("the dimension " + m_file.nameOf(dimension) + " has no coordinates and counts from 0");
    std::vector<double> values(m_file.lengthOf(dimension));
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i);
    return values;
  }

  // Two variables over y and x that the attribute "coordinates" names.
  std::pair<const Variable*, const Variable*> curvedCoordinates(const Variable& variable,
                                                                const std::array<int, 3>& key) {
    std::pair<const Variable*, const Variable*> result{nullptr, nullptr};
    const std::string words = " " + m_file.text(variable, "coordinates") + " ";
    for (const Variable& other : m_file.variables()) {
      if (other.dimensions.size() != 2 || !other.isNumber() || words.find(" " + other.name + " ") == std::string::npos)
        continue;
      const std::set<int> own(other.dimensions.begin(), other.dimensions.end());
      if (own != std::set<int>{key[0], key[1]}) continue;
      const Role role = netcdfRoleOf(m_file, other.name, &other);
      if (role == Role::X) result.first = &other;
      if (role == Role::Y) result.second = &other;
    }
    if (!result.first || !result.second) return {nullptr, nullptr};
    return result;
  }

  void bend(Piece& piece, const Variable& x, const Variable& y) {
    const auto take = [&](const Variable& variable) {
      Layout layout = layoutOf(variable);
      std::vector<double> numbers = m_file.numbersOf(variable);
      const auto width = static_cast<std::size_t>(piece.dims[0]), height = static_cast<std::size_t>(piece.dims[1]);
      if (layout.place[0] == 1 || m_file.lengthOf(variable.dimensions[1]) == width) return numbers;
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
      if (m_file.lengthOf(variable.dimensions[i]) > 1) {
        Layout layout;
        layout.start.assign(variable.dimensions.size(), 0);
        layout.count.assign(variable.dimensions.size(), 1);
        layout.count[i] = m_file.lengthOf(variable.dimensions[i]);
        layout.place[0] = static_cast<int>(i);
        takeSeries(variable, layout);
        return;
      }
    m_data.note("the variable \"" + variable.name + "\" is a single number and was left out");
  }

  // Series of several members over one time, as those of stations are kept: the places of these two among the
  // dimensions.
  struct Members {
    std::size_t time, member;
  };

  std::optional<Members> membersOf(const Variable& variable) const {
    std::optional<std::size_t> time, member;
    for (std::size_t i = 0; i < variable.dimensions.size(); ++i) {
      if (m_file.lengthOf(variable.dimensions[i]) < 2) continue;
      const Role role = m_axes[static_cast<std::size_t>(variable.dimensions[i])].role;
      std::optional<std::size_t>& place = role == Role::TIME ? time : member;
      if (place || (role != Role::TIME && role != Role::OTHER)) return std::nullopt;
      place = i;
    }
    return time && member ? std::optional(Members{*time, *member}) : std::nullopt;
  }

  void findMemberNames() {
    std::set<int> dimensions;
    for (const Variable& variable : m_file.variables())
      if (const auto places = variable.isNumber() && !variable.isCoordinate ? membersOf(variable) : std::nullopt)
        dimensions.insert(variable.dimensions[places->member]);
    for (const Variable& variable : m_file.variables())
      if (variable.isTexts() && dimensions.count(variable.dimensions[0]) > 0)
        m_memberNames.try_emplace(variable.dimensions[0], &variable);
  }

  void takeMembers(const Variable& variable, const Members& places) {
    constexpr std::size_t kMostMembers = 32;
    const int dimension = variable.dimensions[places.member];
    const std::size_t count = m_file.lengthOf(dimension), numTaken = std::min(count, kMostMembers);
    if (numTaken < count)
      m_data.note("of the " + std::to_string(count) + " series over " + m_file.nameOf(dimension) + " the first " +
                  std::to_string(numTaken) + " were taken");
    const auto names = m_memberNames.find(dimension);
    std::vector<std::string> texts(numTaken);
    if (names != m_memberNames.end()) texts = m_file.textsOf(*names->second, numTaken);
    for (std::size_t member = 0; member < numTaken; ++member) {
      Layout layout;
      layout.start.assign(variable.dimensions.size(), 0);
      layout.count.assign(variable.dimensions.size(), 1);
      layout.start[places.member] = member;
      layout.count[places.time] = m_file.lengthOf(variable.dimensions[places.time]);
      layout.place[0] = static_cast<int>(places.time);
      takeSeries(variable, layout,
                 !texts[member].empty() ? texts[member] : m_file.nameOf(dimension) + " " + std::to_string(member + 1));
    }
  }

  void takeSeries(const Variable& variable, Layout layout, const std::string& member = {}) {
    int along = -1;
    for (const int place : layout.place)
      if (place >= 0 && layout.count[static_cast<std::size_t>(place)] > 1) along = place;
    layout.place = {along, -1, -1};
    const int dimension = variable.dimensions[static_cast<std::size_t>(along)];
    const auto [found, isNew] = m_pieces.try_emplace({dimension, -2, -2, -1});
    Part& part = found->second;
    if (isNew) {
      const NetcdfAxis& axis = m_axes[static_cast<std::size_t>(dimension)];
      part.piece.kind = PieceKind::SERIES;
      part.piece.name = m_title;
      part.piece.axisName = axis.variable ? axis.variable->title() : m_file.nameOf(dimension);
      part.piece.axes[0] = coordinatesOf(dimension);
      part.piece.days = daysOf(axis);
    }
    part.piece.scalars.push_back({variable.title(member), Binding::NODE, valuesOf(variable, layout)});
    part.variables.push_back(&variable);
  }

  // Times as days, where all of them are of the usual calendar.
  std::vector<double> daysOf(const NetcdfAxis& axis) const {
    std::vector<double> days;
    if (axis.role != Role::TIME || !axis.variable) return days;
    for (const double value : axis.values) {
      const std::optional<double> day = netcdfDayOf(m_file, axis, value);
      if (!day) return {};
      days.push_back(*day);
    }
    return days;
  }

  Dataset m_data;
  NetcdfFile m_file;
  std::string m_title;
  int m_timeStep;
  std::vector<NetcdfAxis> m_axes;
  std::map<int, const Variable*> m_memberNames;  // by the dimension of the members
  std::map<std::array<int, 4>, Part> m_pieces;
};

}  // namespace

Dataset readNetcdf(const std::string& file) { return GridReader(file, readOptions().step).read(); }

}  // namespace importer
