#include <Inventor/SbXfBox3f.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/lists/SoPathList.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText2.h>

#include <Ormelle/PoBase.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <limits>
#include <vector>

#include "Commands.h"
#include "Import.h"
#include "Origin.h"
#include "SceneFile.h"
#include "SceneWalk.h"
#include "TextNode.h"
#include "graph/toolkit/offscreen/PiStage.h"

namespace tool {

namespace {

using Point = std::array<double, 3>;
using Clock = std::chrono::steady_clock;

Point minus(const Point& a, const Point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double lengthOf(const Point& v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }
Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// The box round points; those with a coordinate that isn't finite are passed over.
struct Box {
  Point low{kNone, kNone, kNone};
  Point high{-kNone, -kNone, -kNone};

  void add(const Point& p) {
    if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2])) return;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], p[axis]);
      high[axis] = std::max(high[axis], p[axis]);
    }
  }
  void add(const Box& other) {
    if (other.isEmpty()) return;
    add(other.low);
    add(other.high);
  }
  bool isEmpty() const { return low[0] > high[0]; }

 private:
  static constexpr double kNone = std::numeric_limits<double>::infinity();
};

struct Text {
  std::string text;
  std::array<Point, 4> corners{};
};

struct Sums {
  long long triangles = 0;
  long long lines = 0;
  long long points = 0;
  long long texts = 0;
  double area = 0.0;
  double length = 0.0;
  double rebuildMs = 0.0;
  Box box;

  void add(const Sums& other) {
    triangles += other.triangles;
    lines += other.lines;
    points += other.points;
    texts += other.texts;
    area += other.area;
    length += other.length;
    rebuildMs += other.rebuildMs;
    box.add(other.box);
  }
};

struct Kit {
  std::string type;
  std::string name;
  Sums sums;
  std::vector<Text> texts;
  Clock::time_point start;
};

// The end of a path, inside kits too.
const SoNode* tailOf(const SoPath* path) { return static_cast<const SoFullPath*>(path)->getTail(); }

// The lines of text of a node, joined by line ends.
std::string stringsOf(const SoNode* node) {
  std::string all;
  bool isFirst = true;
  for (const std::string& line : linesOf(node)) {
    if (!isFirst) all += '\n';
    isFirst = false;
    all += line;
  }
  return all;
}

class Census : public SceneVisitor {
 public:
  void beginKit(PoBase* kit) override {
    m_inside.push_back(m_kits.size());
    Kit& entry = m_kits.emplace_back();
    entry.type = kit->getTypeId().getName().getString();
    entry.name = kit->getName().getString();
    kit->addPreRebuildCallback(startClock, this);
    kit->addPostRebuildCallback(stopClock, this);
    m_live.push_back(kit);
  }

  void endKit(PoBase* kit) override {
    kit->removePreRebuildCallback(startClock, this);
    kit->removePostRebuildCallback(stopClock, this);
    m_inside.pop_back();
    m_live.pop_back();
  }

  void triangle(const std::array<Vertex, 3>& c) override {
    Sums& sums = current();
    ++sums.triangles;
    const double area = 0.5 * lengthOf(cross(minus(c[1].position, c[0].position), minus(c[2].position, c[0].position)));
    if (std::isfinite(area)) sums.area += area;
    for (const Vertex& vertex : c) sums.box.add(vertex.position);
  }

  void line(const std::array<Vertex, 2>& ends) override {
    Sums& sums = current();
    ++sums.lines;
    const double length = lengthOf(minus(ends[1].position, ends[0].position));
    if (std::isfinite(length)) sums.length += length;
    for (const Vertex& vertex : ends) sums.box.add(vertex.position);
  }

  void point(const Vertex& vertex) override {
    Sums& sums = current();
    ++sums.points;
    sums.box.add(vertex.position);
  }

  void text(SoCallbackAction& action) override {
    const SoPath* path = action.getCurPath();
    const std::string strings = stringsOf(tailOf(path));
    if (strings.find_first_not_of(" \t\n") == std::string::npos) return;
    ++current().texts;
    if (m_inside.empty()) return;
    m_textPaths.append(path->copy());
    m_textKits.push_back(m_inside.back());
    m_hasScreenText = m_hasScreenText || tailOf(path)->isOfType(SoText2::getClassTypeId());
  }

  // Measures the texts met. Bitmap text has a size in space only as a camera sees it: the scene's own, or, with
  // `holder` on top of all paths, one that sees the whole scene.
  void measureTexts(SoSeparator* holder) {
    const SbViewportRegion viewport(RenderOptions().size.width, RenderOptions().size.height);
    if (m_hasScreenText) {
      PiStage stage(holder->getChild(0), viewport);
      if (!stage.hasCamera()) {
        stage.addCamera(stage.usualViewpoint());
        holder->insertChild(stage.camera()->copy(), 0);
      }
    }
    SoGetBoundingBoxAction measure(viewport);
    for (int i = 0; i < m_textPaths.getLength(); ++i) {
      const SoPath* path = m_textPaths[i];
      measure.apply(const_cast<SoPath*>(path));
      Text text{stringsOf(tailOf(path)), {}};
      const SbXfBox3f& box = measure.getXfBoundingBox();
      if (!box.isEmpty()) text.corners = frontOf(box);
      m_kits[m_textKits[static_cast<std::size_t>(i)]].texts.push_back(text);
    }
  }

  const std::vector<Kit>& kits() const { return m_kits; }
  const Sums& outside() const { return m_outside; }

 private:
  Sums& current() { return m_inside.empty() ? m_outside : m_kits[m_inside.back()].sums; }

  // The front side of a text's own box: lower left, lower right, upper right, upper left.
  static std::array<Point, 4> frontOf(const SbXfBox3f& box) {
    const SbBox3f& own = box;  // without the transform
    const SbVec3f low = own.getMin();
    const SbVec3f high = own.getMax();
    std::array<Point, 4> corners{};
    for (std::size_t i = 0; i < 4; ++i) {
      const SbVec3f local(i == 1 || i == 2 ? high[0] : low[0], i >= 2 ? high[1] : low[1], high[2]);
      SbVec3f world;
      box.getTransform().multVecMatrix(local, world);
      corners[i] = {world[0], world[1], world[2]};
    }
    return corners;
  }

  // A kit rebuilds while it is the innermost one of the walk. A rebuild within a rebuild belongs to its own entry.
  static void startClock(void* self, PoBase* kit) {
    if (Kit* entry = static_cast<Census*>(self)->entryOf(kit)) entry->start = Clock::now();
  }
  static void stopClock(void* self, PoBase* kit) {
    if (Kit* entry = static_cast<Census*>(self)->entryOf(kit))
      entry->sums.rebuildMs += std::chrono::duration<double, std::milli>(Clock::now() - entry->start).count();
  }
  Kit* entryOf(const PoBase* kit) {
    for (std::size_t i = m_live.size(); i-- > 0;)
      if (m_live[i] == kit) return &m_kits[m_inside[i]];
    return nullptr;
  }

  std::vector<Kit> m_kits;
  std::vector<std::size_t> m_inside;
  std::vector<const PoBase*> m_live;
  Sums m_outside;
  SoPathList m_textPaths;
  std::vector<std::size_t> m_textKits;
  bool m_hasScreenText = false;
};

nlohmann::ordered_json jsonOf(const Sums& sums) {
  nlohmann::ordered_json json;
  json["triangles"] = sums.triangles;
  json["lines"] = sums.lines;
  json["points"] = sums.points;
  json["texts"] = sums.texts;
  json["area"] = sums.area;
  json["length"] = sums.length;
  if (sums.box.isEmpty()) {
    json["bbox"] = nullptr;
  } else {
    const Box& b = sums.box;
    json["bbox"] = {b.low[0], b.low[1], b.low[2], b.high[0], b.high[1], b.high[2]};
  }
  json["rebuild_ms"] = sums.rebuildMs;
  return json;
}

nlohmann::ordered_json jsonOf(const Kit& kit) {
  nlohmann::ordered_json json;
  json["type"] = kit.type;
  json["name"] = kit.name;
  json.update(jsonOf(kit.sums));
  auto texts = nlohmann::ordered_json::array();
  for (const Text& text : kit.texts) texts.push_back({{"text", text.text}, {"corners", text.corners}});
  json["texts"] = texts;
  return json;
}

void printRow(const std::string& what, const Sums& sums) {
  std::printf("%-40s %12lld %12lld %10lld %8lld %14.6g %14.6g %10.2f", what.c_str(), sums.triangles, sums.lines,
              sums.points, sums.texts, sums.area, sums.length, sums.rebuildMs);
  if (sums.box.isEmpty())
    std::printf("  nothing\n");
  else
    std::printf("  %g %g %g to %g %g %g\n", sums.box.low[0], sums.box.low[1], sums.box.low[2], sums.box.high[0],
                sums.box.high[1], sums.box.high[2]);
}

}  // namespace

void info(const std::string& file, bool asJson) {
  startLibrary();
  const Scene scene = readAnyScene(file);
  auto* holder = new SoSeparator;
  const NodePtr held(holder);
  holder->addChild(scene.root.get());

  Census census;
  walkScene(holder, file, WalkWishes(), census);
  census.measureTexts(holder);

  Sums total;
  for (const Kit& kit : census.kits()) total.add(kit.sums);
  const std::optional<Origin> origin = findOrigin(scene.root.get());
  if (asJson) {
    nlohmann::ordered_json json;
    if (origin) json["origin"] = *origin;
    json["kits"] = nlohmann::ordered_json::array();
    for (const Kit& kit : census.kits()) json["kits"].push_back(jsonOf(kit));
    json["total"] = jsonOf(total);
    json["outside"] = jsonOf(census.outside());
    std::cout << json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    return;
  }
  std::printf("%-40s %12s %12s %10s %8s %14s %14s %10s  %s\n", "kit", "triangles", "lines", "points", "texts", "area",
              "length", "rebuild ms", "box");
  for (const Kit& kit : census.kits()) printRow(kit.name.empty() ? kit.type : kit.type + " " + kit.name, kit.sums);
  printRow("all kits", total);
  printRow("outside kits", census.outside());
  if (origin) std::printf("coordinates are counted from the %s\n", textOf(*origin).c_str());
}

}  // namespace tool
