// Tables in text. What a table shows is told by its columns: dates or rising numbers in the first make curves, x and y
// beside values a surface, words bars.

#include <Ormelle/PbTriangleMesh2D.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <numeric>
#include <optional>
#include <set>

#include "Chart.h"
#include "CsvTable.h"
#include "Readers.h"

namespace importer {

namespace {

using Column = CsvTable::Column;

std::vector<float> floatsOf(const std::vector<double>& numbers) {
  std::vector<float> values;
  values.reserve(numbers.size());
  for (const double number : numbers) values.push_back(toFloat(number));
  return values;
}

// The word of a name without its unit: "Lon (deg)" is "lon".
std::string wordOf(const std::string& name) {
  std::string word;
  for (const char c : name) {
    if (c == '(' || c == '[') break;
    if (c != ' ' && c != '_') word += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return word;
}

// ---- Coordinates ----------------------------------------------------------------------------------------------------

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// Which columns hold x, y and z.
struct Places {
  std::array<std::size_t, 3> column{kNowhere, kNowhere, kNowhere};
};

std::optional<Places> placesOf(const CsvTable& table) {
  static const std::array<std::set<std::string>, 3> words{
      std::set<std::string>{"x", "lon", "long", "longitude", "easting", "east", "xcoord", "coordx", "px"},
      std::set<std::string>{"y", "lat", "latitude", "northing", "north", "ycoord", "coordy", "py"},
      std::set<std::string>{"z", "depth", "level", "lev", "altitude", "zcoord", "coordz", "pz"}};
  Places places;
  std::size_t numNumbers = 0;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (table.columns[i].kind != CsvTable::Kind::NUMBERS) continue;
    ++numNumbers;
    const std::string word = wordOf(table.columns[i].name);
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (places.column[axis] == kNowhere && words[axis].count(word) > 0) places.column[axis] = i;
  }
  if (places.column[0] == kNowhere || places.column[1] == kNowhere || numNumbers < 3) return std::nullopt;
  return places;
}

// ---- Grids ----------------------------------------------------------------------------------------------------------

// The different values of a column in rising order. Those that differ by rounding alone are one.
std::vector<double> distinct(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const double least = 1e-7 * std::max(std::abs(values.front()), std::abs(values.back()));
  const double span = 1e-6 * (values.back() - values.front());
  std::vector<double> result;
  for (const double value : values)
    if (result.empty() || value - result.back() > std::min(least, span)) result.push_back(value);
  return result;
}

std::size_t placeIn(const std::vector<double>& axis, double value) {
  const auto above = std::lower_bound(axis.begin(), axis.end(), value);
  if (above == axis.begin()) return 0;
  if (above == axis.end()) return axis.size() - 1;
  const auto index = static_cast<std::size_t>(above - axis.begin());
  return value - axis[index - 1] < *above - value ? index - 1 : index;
}

// A grid, if the points fill one: as good as every node has one point, and none has two.
std::optional<Piece> gridOf(const CsvTable& table, const std::vector<std::size_t>& places,
                            const std::vector<std::size_t>& rows, std::vector<std::size_t>& nodes) {
  Piece piece;
  piece.kind = PieceKind::RECTILINEAR_GRID;
  std::size_t numNodes = 1;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    piece.axes[axis] = {0.0};
    if (axis >= places.size()) continue;
    std::vector<double> values;
    values.reserve(rows.size());
    for (const std::size_t row : rows) values.push_back(table.columns[places[axis]].numbers[row]);
    piece.axes[axis] = distinct(std::move(values));
    piece.dims[axis] = static_cast<int>(piece.axes[axis].size());
    if (piece.axes[axis].size() < 2) return std::nullopt;
    if (numNodes > 4 * rows.size() / piece.axes[axis].size()) return std::nullopt;
    numNodes *= piece.axes[axis].size();
  }
  constexpr double kFilled = 0.6;
  if (static_cast<double>(rows.size()) < kFilled * static_cast<double>(numNodes)) return std::nullopt;
  std::vector<bool> isTaken(numNodes);
  nodes.clear();
  for (const std::size_t row : rows) {
    std::size_t node = 0;
    for (std::size_t axis = places.size(); axis-- > 0;)
      node = node * piece.axes[axis].size() + placeIn(piece.axes[axis], table.columns[places[axis]].numbers[row]);
    if (isTaken[node]) return std::nullopt;
    isTaken[node] = true;
    nodes.push_back(node);
  }
  return piece;
}

// ---- Scattered points -----------------------------------------------------------------------------------------------

// Triangles between points of the plane, or the points alone where there are none.
Piece scatterOf(const CsvTable& table, const std::vector<std::size_t>& places, const std::vector<std::size_t>& rows,
                Dataset& data) {
  Piece piece;
  for (const std::size_t row : rows) {
    Point point{0, 0, 0};
    for (std::size_t axis = 0; axis < places.size(); ++axis) point[axis] = table.columns[places[axis]].numbers[row];
    piece.points.push_back(point);
  }
  if (places.size() == 2 && piece.points.size() > 2) {
    Point low = piece.points[0], high = low;
    for (const Point& point : piece.points)
      for (std::size_t axis = 0; axis < 2; ++axis) {
        low[axis] = std::min(low[axis], point[axis]);
        high[axis] = std::max(high[axis], point[axis]);
      }
    // Relative to the box, so that floats tell points far from 0 apart.
    std::vector<float> x, y;
    const double scale = std::max({high[0] - low[0], high[1] - low[1], 1e-300});
    for (const Point& point : piece.points) {
      x.push_back(static_cast<float>((point[0] - low[0]) / scale));
      y.push_back(static_cast<float>((point[1] - low[1]) / scale));
    }
    PbTriangleMesh2D mesh(0);
    mesh.setGeometry(static_cast<int>(x.size()), x.data(), y.data());
    for (int cell = 0; cell < mesh.getNumCells(); ++cell) {
      int numNodes = 0;
      piece.addCell(CellKind::TRIANGLE, mesh.getNodes(cell, numNodes));
    }
  }
  if (piece.cellKinds.empty()) {
    data.note(places.size() == 2 ? "its points could not be joined to triangles and are shown by themselves"
                                 : "its points in space make no grid and are shown by themselves");
    for (int i = 0; i < static_cast<int>(piece.points.size()); ++i) piece.addCell(CellKind::VERTEX, &i);
  }
  return piece;
}

// ---- What a table becomes -------------------------------------------------------------------------------------------

class TableReader {
 public:
  TableReader(const std::string& file, CsvTable table)
      : m_title(std::filesystem::path(file).stem().string()), m_table(std::move(table)) {
    for (const std::string& note : m_table.notes) m_data.note(note);
    for (std::size_t i = 0; i < m_table.columns.size(); ++i) {
      switch (m_table.columns[i].kind) {
        case CsvTable::Kind::NUMBERS:
          m_numbers.push_back(i);
          break;
        case CsvTable::Kind::TEXTS:
          m_texts.push_back(i);
          break;
        case CsvTable::Kind::DATES:
          m_dates.push_back(i);
          break;
        case CsvTable::Kind::EMPTY:
          m_data.note("the column " + column(i).name + " is empty");
          break;
      }
    }
  }

  Dataset read() {
    if (!m_dates.empty() && !m_numbers.empty() && (m_texts.empty() || m_dates.front() < m_texts.front())) {
      readTime();
    } else if (const std::optional<Places> places = placesOf(m_table)) {
      readPlaces(*places);
    } else if (m_numbers.size() > 1 && m_numbers.front() == 0) {
      readCurves();
    } else if (!m_texts.empty()) {
      readBars();
    } else if (!m_numbers.empty()) {
      readOneColumn();
    } else {
      throw Failure("there is no column of numbers in it");
    }
    return std::move(m_data);
  }

 private:
  const Column& column(std::size_t i) const { return m_table.columns[i]; }

  void noteLeftOut(const std::vector<std::size_t>& columns, std::size_t except = kNowhere) {
    for (const std::size_t i : columns)
      if (i != except)
        m_data.note("the column " + column(i).name + (column(i).kind == CsvTable::Kind::DATES ? ", of dates," : "") +
                    " is not kept");
  }

  // Columns over x, whose rows are put in the order of x.
  void addOverX(Chart& chart, const std::vector<double>& x, std::size_t except) {
    std::vector<std::size_t> rows = rowsInOrder(x);
    if (rows.empty()) throw Failure("there is no value in its first column");
    if (rows.size() < x.size())
      m_data.note(counted(x.size() - rows.size(), "row has", "rows have") + " no " + chart.xTitle + " and " +
                  (x.size() - rows.size() == 1 ? "was" : "were") + " left out");
    if (chart.kind != Chart::Kind::CURVES) std::sort(rows.begin(), rows.end());
    for (const std::size_t row : rows) chart.x.push_back(x[row]);
    for (const std::size_t i : m_numbers) {
      if (i == except) continue;
      Chart::Column series{column(i).name, {}};
      series.values.reserve(rows.size());
      for (const std::size_t row : rows) series.values.push_back(toFloat(column(i).numbers[row]));
      chart.columns.push_back(std::move(series));
    }
  }

  void readTime() {
    Chart chart;
    const std::size_t time = m_dates.front();
    chart.title = m_title;
    chart.xTitle = column(time).name;
    chart.isTime = true;
    addOverX(chart, column(time).numbers, kNowhere);
    chart.firstDay = std::floor(chart.x.front());
    for (double& x : chart.x) x -= chart.firstDay;
    noteLeftOut(m_dates, time);
    noteLeftOut(m_texts);
    m_data.chart = std::move(chart);
  }

  void readCurves() {
    Chart chart;
    chart.title = m_title;
    chart.xTitle = column(0).name;
    const std::vector<double>& x = column(0).numbers;
    std::vector<double> known;
    std::copy_if(x.begin(), x.end(), std::back_inserter(known), [](double value) { return std::isfinite(value); });
    const bool isOrdered = std::is_sorted(known.begin(), known.end()) || std::is_sorted(known.rbegin(), known.rend());
    if (!isOrdered) {
      chart.kind = Chart::Kind::POINTS;
      m_data.note("the column " + column(0).name + " neither rises nor falls: its rows are shown as marks");
    }
    addOverX(chart, x, 0);
    noteLeftOut(m_dates);
    noteLeftOut(m_texts);
    m_data.chart = std::move(chart);
  }

  // One column of numbers is a series over its own rows.
  void readOneColumn() {
    Chart chart;
    chart.title = m_title;
    chart.xTitle = "row";
    std::vector<double> rows(m_table.numRows);
    std::iota(rows.begin(), rows.end(), 1.0);
    addOverX(chart, rows, kNowhere);
    noteLeftOut(m_dates);
    m_data.chart = std::move(chart);
  }

  void readPlaces(const Places& found) {
    std::vector<std::size_t> places{found.column[0], found.column[1]};
    // Without another column of values, z is the value.
    const std::size_t z = found.column[2];
    if (z != kNowhere && m_numbers.size() > 3) places.push_back(z);
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < m_table.numRows; ++row)
      if (std::all_of(places.begin(), places.end(),
                      [&](std::size_t place) { return std::isfinite(column(place).numbers[row]); }))
        rows.push_back(row);
    if (rows.empty()) throw Failure("none of its rows has a place");
    if (rows.size() < m_table.numRows)
      m_data.note(counted(m_table.numRows - rows.size(), "row has no place and was", "rows have no place and were") +
                  " left out");

    std::vector<std::size_t> nodes;
    std::optional<Piece> piece = gridOf(m_table, places, rows, nodes);
    if (!piece && places.size() == 3 && isFunctionOfPlane(rows, places)) {
      places.pop_back();  // a surface: z becomes a value
      piece = gridOf(m_table, places, rows, nodes);
    }
    if (!piece) {
      piece = scatterOf(m_table, places, rows, m_data);
      nodes.resize(rows.size());
      std::iota(nodes.begin(), nodes.end(), std::size_t{0});
    }
    piece->name = m_title;
    const std::size_t numNodes = piece->kind == PieceKind::CELLS
                                     ? piece->points.size()
                                     : piece->axes[0].size() * piece->axes[1].size() * piece->axes[2].size();
    for (const std::size_t i : m_numbers) {
      if (std::find(places.begin(), places.end(), i) != places.end()) continue;
      ScalarSet set{column(i).name, Binding::NODE, std::vector<float>(numNodes, std::nanf(""))};
      for (std::size_t row = 0; row < rows.size(); ++row)
        set.values[nodes[row]] = toFloat(column(i).numbers[rows[row]]);
      piece->scalars.push_back(std::move(set));
    }
    for (const std::size_t i : m_texts) {
      StringSet set{column(i).name, std::vector<std::string>(numNodes)};
      for (std::size_t row = 0; row < rows.size(); ++row) set.values[nodes[row]] = column(i).texts[rows[row]];
      piece->strings.push_back(std::move(set));
    }
    noteLeftOut(m_dates);
    m_data.pieces.push_back(std::move(*piece));
  }

  // Whether no two rows share x and y.
  bool isFunctionOfPlane(const std::vector<std::size_t>& rows, const std::vector<std::size_t>& places) const {
    std::set<std::pair<double, double>> seen;
    for (const std::size_t row : rows)
      if (!seen.emplace(column(places[0]).numbers[row], column(places[1]).numbers[row]).second) return false;
    return true;
  }

  void readBars() {
    Chart chart;
    chart.kind = Chart::Kind::BARS;
    chart.title = m_title;
    const std::size_t names = m_texts.front();
    chart.xTitle = column(names).name;
    const std::set<std::string> different(column(names).texts.begin(), column(names).texts.end());
    if (different.size() == m_table.numRows && !m_numbers.empty()) {
      chart.rowNames = column(names).texts;
      for (const std::size_t i : m_numbers) chart.columns.push_back({column(i).name, floatsOf(column(i).numbers)});
      noteLeftOut(m_texts, names);
    } else {
      sumUp(chart, names);
    }
    noteLeftOut(m_dates);
    m_data.chart = std::move(chart);
  }

  // Names that come again: a bar for each, in groups by another column of words, with the sum of the numbers; of words
  // alone, with the number of rows.
  void sumUp(Chart& chart, std::size_t names) {
    constexpr std::size_t kMostGroups = 8;
    std::size_t groups = kNowhere, numGroups = kMostGroups + 1;
    for (const std::size_t i : m_texts) {
      if (i == names || m_numbers.size() > 1) continue;
      const std::set<std::string> different(column(i).texts.begin(), column(i).texts.end());
      // The last of the coarsest: tables name their outcome last.
      if (different.size() > 1 && different.size() <= numGroups) {
        groups = i;
        numGroups = different.size();
      }
    }
    std::map<std::string, std::size_t> rowOf;
    const auto rowIndex = [&](std::size_t row) {
      const auto [found, isNew] = rowOf.emplace(column(names).texts[row], rowOf.size());
      if (isNew) chart.rowNames.push_back(found->first.empty() ? "-" : found->first);
      return found->second;
    };
    for (std::size_t row = 0; row < m_table.numRows; ++row) rowIndex(row);
    std::map<std::string, std::size_t> columnOf;
    const auto add = [&](const std::string& name, std::size_t row, double value) {
      const auto [found, isNew] = columnOf.emplace(name, columnOf.size());
      if (isNew) chart.columns.push_back({name, std::vector<float>(chart.rowNames.size(), 0.0F)});
      if (std::isfinite(value)) chart.columns[found->second].values[rowIndex(row)] += static_cast<float>(value);
    };
    const std::string what = m_numbers.empty() ? "rows" : column(m_numbers.front()).name;
    for (std::size_t row = 0; row < m_table.numRows; ++row) {
      const std::string group = groups == kNowhere ? "" : column(groups).name + ": " + column(groups).texts[row];
      if (m_numbers.empty()) add(group.empty() ? "rows" : group, row, 1);
      for (const std::size_t i : m_numbers) add(group.empty() ? column(i).name : group, row, column(i).numbers[row]);
    }
    chart.title += ": " + what + " by " + column(names).name;
    std::string over;
    for (const std::size_t i : m_texts)
      if (i != names && i != groups) over += (over.empty() ? "" : ", ") + column(i).name;
    m_data.note((m_numbers.empty() ? "rows are counted" : what + " is summed") + " for each " + column(names).name +
                (groups == kNowhere ? "" : " and " + column(groups).name) +
                (over.empty() ? "" : "; not kept: " + over));
  }

  std::string m_title;
  CsvTable m_table;
  Dataset m_data;
  std::vector<std::size_t> m_numbers, m_texts, m_dates;
};

}  // namespace

Dataset readCsv(const std::string& file) { return TableReader(file, parseCsv(readWhole(file))).read(); }

}  // namespace importer
