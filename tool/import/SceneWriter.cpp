#include "SceneWriter.h"

#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <sstream>

#include "ColorScale.h"
#include "MeshBuilder.h"
#include "MeshCut.h"
#include "MeshSets.h"
#include "SceneText.h"

namespace importer {

namespace {

constexpr const char* kStretchName = "OrmelleStretch";

// ---- Text of a scene ------------------------------------------------------------------------------------------------

// A name for DEF: letters, digits and underscores.
std::string nodeNameOf(const std::string& text) {
  std::string name;
  for (const char c : text) name += std::isalnum(static_cast<unsigned char>(c)) && c > 0 ? c : '_';
  if (!name.empty() && std::isdigit(static_cast<unsigned char>(name[0]))) name.insert(0, "_");
  return name;
}

// ---- Cameras --------------------------------------------------------------------------------------------------------

struct Box {
  Origin low{}, high{};
  bool isEmpty = true;

  void add(const BuiltMesh& mesh) {
    if (mesh.isEmpty) return;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      low[axis] = isEmpty ? mesh.low[axis] : std::min(low[axis], mesh.low[axis]);
      high[axis] = isEmpty ? mesh.high[axis] : std::max(high[axis], mesh.high[axis]);
    }
    isEmpty = false;
  }
  double extent(std::size_t axis) const { return high[axis] - low[axis]; }
  double diagonal() const { return std::hypot(extent(0), extent(1), extent(2)); }
  SbVec3f center() const {
    const auto middle = [&](std::size_t axis) { return static_cast<float>((low[axis] + high[axis]) / 2); };
    return SbVec3f(middle(0), middle(1), middle(2));
  }
};

// Pictures are commonly that much wider than high; the legend below takes part of the height.
constexpr double kAspect = 4.0 / 3.0;
constexpr double kRoomForLegend = 1.2;
constexpr double kMargin = 1.06;

// A length that stays in the range of float when it is multiplied a few times.
double lengthInRange(double length) { return std::clamp(length, 1e-30, 1e36); }

bool isFlat(const Box& box) { return box.extent(2) <= 1e-3 * box.diagonal(); }

// How many times as high heights are drawn that have no measure in common with lengths: 1 if they can be seen as they
// are, else so that the box is about a third as high as it is long. One digit, which users read as a number.
double stretchOf(const Box& box) {
  const double length = std::max(box.extent(0), box.extent(1)), height = box.extent(2);
  if (!(height > 0 && length > 0) || (height > length / 20 && height < length)) return 1;
  const double exact = length / 3 / height, power = std::pow(10.0, std::floor(std::log10(exact)));
  const double factor = std::round(exact / power) * power;
  return factor > 1e-30 && factor < 1e30 ? factor : 1;
}

// Straight onto a flat scene.
SoCamera* makeFlatCamera(const Box& box) {
  auto* camera = new SoOrthographicCamera;
  const double height = lengthInRange(std::max(box.extent(1), box.extent(0) / kAspect) * kMargin * kRoomForLegend);
  const double distance = lengthInRange(box.diagonal());
  SbVec3f position = box.center();
  position[1] -= static_cast<float>(height * (1 - 1 / kRoomForLegend) / 2);
  position[2] = static_cast<float>(box.high[2] + distance);
  camera->position = position;
  camera->height = static_cast<float>(height);
  camera->nearDistance = static_cast<float>(distance / 10);
  camera->farDistance = static_cast<float>(distance * 2);
  camera->focalDistance = static_cast<float>(distance);
  return camera;
}

// From the front, the right and above, so that the whole box is seen.
SoCamera* makeSolidCamera(const Box& box, int upAxis) {
  auto* camera = new SoPerspectiveCamera;
  constexpr double kAngle = 0.5;
  const SbVec3f up = upAxis == 1 ? SbVec3f(0, 1, 0) : SbVec3f(0, 0, 1);
  const SbVec3f front = upAxis == 1 ? SbVec3f(0, 0, 1) : SbVec3f(0, -1, 0);
  SbVec3f back = front + SbVec3f(1, 0, 0) * 0.75F + up * 0.75F;  // from the scene to the viewer
  back.normalize();
  SbVec3f right = up.cross(back);
  right.normalize();
  const SbVec3f top = back.cross(right);
  const double tangent = std::tan(kAngle / 2);
  double distance = 0;
  for (unsigned corner = 0; corner < 8; ++corner) {
    SbVec3f half;
    for (unsigned axis = 0; axis < 3; ++axis)
      half[static_cast<int>(axis)] = static_cast<float>((corner >> axis & 1 ? 0.5 : -0.5) * box.extent(axis));
    const double height = std::abs(static_cast<double>(half.dot(top))) * kRoomForLegend * kMargin;
    const double side = std::abs(static_cast<double>(half.dot(right))) / kAspect * kMargin;
    distance = std::max(distance, static_cast<double>(half.dot(back)) + std::max(height, side) / tangent);
  }
  distance = lengthInRange(distance);
  // A little lower than the middle, for the legend.
  const auto drop = static_cast<float>(distance * tangent * (kRoomForLegend - 1) / 2);
  camera->heightAngle = static_cast<float>(kAngle);
  camera->position = box.center() + back * static_cast<float>(distance) - top * drop;
  camera->pointAt(box.center() - top * drop, up);
  camera->nearDistance = static_cast<float>(distance / 100);
  camera->farDistance = static_cast<float>(distance * 3);
  camera->focalDistance = static_cast<float>(distance);
  return camera;
}

// ---- Meshes ---------------------------------------------------------------------------------------------------------

std::string representationText(const BuiltMesh& mesh) {
  std::string coloring;
  if (mesh.shown) coloring = " valuesIndex " + std::to_string(mesh.shown->index) + " coloringType COLOR_MAPPING";
  if (mesh.dimension == 2) return "PoMeshFilled { creaseAngle 0.6" + coloring + " }\n";
  std::string filter;
  if (mesh.cells) {
    filter = (mesh.cells->name.empty() ? "" : "DEF " + mesh.cells->name + " ") + "PoIntervalCellFilter { min " +
             numberText(mesh.cells->low) + " max " + numberText(mesh.cells->high) + " }\n";
    coloring += " valuesIndexForCellFilter " + std::to_string(mesh.cells->index);
  }
  return filter + "PolygonOffset {}\nPoMeshSkin { creaseAngle 0.6" + coloring + " }\n";
}

// All meshes, coloured by the first set of the first that has one; those that have the same set share the scale.
void addMeshes(SoSeparator* root, std::span<BuiltMesh> meshes, Dataset& data) {
  Box box;
  const BuiltMesh::Shown* shown = nullptr;
  for (const BuiltMesh& mesh : meshes) {
    box.add(mesh);
    if (!shown && mesh.shown) shown = &*mesh.shown;
  }
  if (box.isEmpty) throw Failure("none of its coordinates is a finite number that a float holds");
  const double stretch = data.hasOwnHeights ? stretchOf(box) : 1;
  box.low[2] *= stretch;
  box.high[2] *= stretch;
  root->addChild(isFlat(box) ? makeFlatCamera(box) : makeSolidCamera(box, data.upAxis));

  std::optional<ColorScale> scale;
  std::size_t numBeyond = 0;
  if (shown) {
    double low = shown->low, high = shown->high;
    for (const BuiltMesh& mesh : meshes)
      if (mesh.shown && mesh.shown->name == shown->name) {
        low = std::min(low, static_cast<double>(mesh.shown->low));
        high = std::max(high, static_cast<double>(mesh.shown->high));
        numBeyond += mesh.shown->numBeyond;
      }
    scale.emplace(low, high);
    addNodes(root, scale->mappingText(numBeyond > 0));
    if (numBeyond > 0) {
      std::ostringstream range;
      range << low << " to " << high;
      data.note(counted(numBeyond, "value", "values") + " of \"" + shown->name + "\" far from the others " +
                (numBeyond == 1 ? "is" : "are") + " grey; the colours are those from " + range.str());
    }
  }
  SoSeparator* drawn = root;
  if (stretch != 1) {
    // Above the kits, so that their coordinates remain those of the file; not above the legend.
    root->addChild(drawn = new SoSeparator);
    addNodes(drawn, "DEF " + std::string(kStretchName) + " Scale { scaleFactor 1 1 " + numberText(stretch) + " }\n");
    data.note("heights are drawn " + numberText(stretch) + " times as high, by the node " + kStretchName +
              "; the coordinates are those of the file");
  }
  for (BuiltMesh& mesh : meshes) {
    auto* group = new SoSeparator;
    drawn->addChild(group);
    if (mesh.shown && mesh.shown->name != shown->name) mesh.shown.reset();
    const bool isPlain = isFlat(box) || mesh.dimension == 0;
    if (isPlain) addNodes(group, "LightModel { model BASE_COLOR }\n");
    addNodes(group, mesh.dimension == 0 ? "BaseColor { rgb 0.18 0.20 0.24 }\nDrawStyle { lineWidth 2 pointSize 3 }\n"
                    : isPlain           ? "BaseColor { rgb 0.60 0.68 0.78 }\n"
                                        : "Material { diffuseColor 0.60 0.68 0.78 specularColor 0.1 0.1 0.1 }\n");
    group->addChild(mesh.node);
    if (mesh.dimension > 0) addNodes(group, representationText(mesh));
  }
  if (shown) addNodes(root, scale->legendText(shown->name, numBeyond > 0));
}

// ---- Summaries ------------------------------------------------------------------------------------------------------

std::string joined(const char* what, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? std::string("; ") + what + ": " : ", ") + name;
  return text;
}

std::string summaryOf(const BuiltMesh& mesh) {
  const char* kinds[] = {"lines or points", "series", "surface", "volume"};
  std::string text = mesh.name.empty() ? "" : mesh.name + ": ";
  text += std::string(kinds[mesh.dimension]) + " of " + counted(mesh.numNodes, "node", "nodes");
  if (mesh.dimension != 1) text += " and " + counted(mesh.numCells, "cell", "cells");
  return text + joined("values", mesh.scalars) + joined("values of cells", mesh.cellScalars) +
         joined("vectors", mesh.vectors) + joined("texts", mesh.strings);
}

// ---- Series ---------------------------------------------------------------------------------------------------------

Chart chartOf(const Piece& series) {
  Chart chart;
  chart.title = cleaned(series.name);
  chart.xTitle = cleaned(series.axisName);
  chart.isTime = !series.days.empty();
  const std::vector<double>& x = chart.isTime ? series.days : series.axes[0];
  const std::vector<std::size_t> rows = rowsInOrder(x);
  if (chart.isTime) {
    chart.xTitle.resize(std::min(chart.xTitle.find(" ("), chart.xTitle.size()));  // dates need no unit
    chart.firstDay = std::floor(x[rows.front()]);
  }
  for (const std::size_t row : rows) chart.x.push_back(x[row] - chart.firstDay);
  for (const ScalarSet& set : series.scalars) {
    Chart::Column& column = chart.columns.emplace_back(Chart::Column{cleaned(set.name), {}});
    for (const std::size_t row : rows) column.values.push_back(set.values[row]);
  }
  return chart;
}

// If the file has series alone, the first with values becomes a chart.
void takeSeriesAsChart(Dataset& data) {
  std::vector<Piece> all;
  for (const Piece& piece : data.pieces) {
    std::optional<Piece> series = seriesOf(piece);
    if (!series) return;
    all.push_back(std::move(*series));
  }
  const auto hasValues = [](const Piece& series) {
    return std::any_of(series.scalars.begin(), series.scalars.end(), [](const ScalarSet& set) {
      return std::any_of(set.values.begin(), set.values.end(), [](float value) { return std::isfinite(value); });
    });
  };
  const auto first = std::find_if(all.begin(), all.end(), hasValues);
  if (first == all.end()) throw Failure("there is no number in its series");
  data.chart = chartOf(*first);
  for (auto series = all.begin(); series != all.end(); ++series) {
    std::size_t numLeft = series->vectors.size() + series->strings.size();
    if (series != first) numLeft += series->scalars.size();
    if (numLeft > 0)
      data.note(counted(numLeft, "set", "sets") + (series != first ? " over " + cleaned(series->axisName) : "") +
                (numLeft == 1 ? " was" : " were") + " left out beside the chart");
  }
}

}  // namespace

ImportedScene makeScene(Dataset& data) {
  if (!data.chart) takeSeriesAsChart(data);
  if (data.chart) {
    const ChartScene chart = makeChartScene(*data.chart);
    for (const std::string& note : chart.notes) data.note(note);
    return {chart.root, {chart.summary}};
  }
  const Origin origin = originFor(data);
  ImportedScene scene;
  scene.root = new SoSeparator;
  std::vector<BuiltMesh> meshes;
  const std::vector<Piece> pieces = std::move(data.pieces);
  for (const Piece& piece : pieces)
    for (BuiltMesh& mesh : buildMeshes(piece, origin, data)) {
      mesh.node->ref();  // until the scene is made, or ever if it can't be: the program ends then
      if (mesh.dimension > 0 && !mesh.name.empty()) mesh.node->setName(nodeNameOf(mesh.name).c_str());
      scene.summaries.push_back(summaryOf(mesh));
      meshes.push_back(std::move(mesh));
    }
  if (meshes.empty()) throw Failure("there is nothing in it that makes a mesh");
  if (meshes.size() == 1) cutOpen(meshes[0], data);
  if (origin != Origin{}) {
    scene.root->addChild(tool::makeOriginNode(origin));
    std::string text = tool::textOf(origin).substr(7);
    std::replace(text.begin(), text.end(), ' ', ',');
    data.note("coordinates are counted from " + text + ", which the node " + tool::kOriginName + " keeps");
  }
  // Beside meshes series aren't drawn, which share no space with them.
  const auto firstSeries =
      std::stable_partition(meshes.begin(), meshes.end(), [](const BuiltMesh& mesh) { return mesh.dimension != 1; });
  addMeshes(scene.root, {meshes.begin(), firstSeries}, data);
  for (auto mesh = firstSeries; mesh != meshes.end(); ++mesh) scene.root->addChild(mesh->node);
  for (const BuiltMesh& mesh : meshes) mesh.node->unref();
  return scene;
}

}  // namespace importer
