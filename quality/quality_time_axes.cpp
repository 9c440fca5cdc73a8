// Random time axes: whether their texts can be read, and say when. The calendar here is that of the standard library.

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoDateFormatMapping.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoMiscTextAttr.h>
#include <Ormelle/PoTimeAxis.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "Quality.h"
#include "SceneTexts.h"
#include "graph/format/PiDate.h"

namespace {

using std::chrono::days;
using std::chrono::year_month_day;

// Times are seconds from 1970.
double toSeconds(year_month_day ymd) {
  return static_cast<double>(std::chrono::sys_days(ymd).time_since_epoch().count()) * 86400;
}

struct Clock {
  int year, month, day, hour, minute;
  double second;

  explicit Clock(double time) {
    const double dayNumber = std::floor(time / 86400);
    const year_month_day ymd(std::chrono::sys_days(days(static_cast<int>(dayNumber))));
    year = int{ymd.year()};
    month = static_cast<int>(unsigned{ymd.month()});
    day = static_cast<int>(unsigned{ymd.day()});
    const double rest = time - dayNumber * 86400;
    hour = std::min(23, static_cast<int>(rest / 3600));
    minute = std::min(59, static_cast<int>((rest - hour * 3600) / 60));
    second = rest - hour * 3600.0 - minute * 60.0;
  }

  std::string text() const {
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%d-%d-%04d %d:%02d:%09.6f", day, month, year, hour, minute, second);
    return buffer;
  }
};

// The unit of the level next to the axis: 1 seconds to 6 years.
int finestUnit(double span) {
  const double limits[] = {360, 21600, 6 * 86400.0, 151 * 86400.0, 1826 * 86400.0};
  return 1 + static_cast<int>(std::upper_bound(std::begin(limits), std::end(limits), span) - std::begin(limits));
}

// The beginnings of units at and around a time.
std::vector<double> boundaries(double time, int unit) {
  const double seconds[] = {0, 1, 60, 3600, 86400};
  if (unit <= 4) {
    const double first = std::floor(time / seconds[unit]) * seconds[unit];
    return {first, first + seconds[unit]};
  }
  const Clock clock(time);
  using std::chrono::year;
  if (unit == 6) return {toSeconds(year{clock.year} / 1 / 1), toSeconds(year{clock.year + 1} / 1 / 1)};
  const year_month_day first = year{clock.year} / clock.month / 1;
  return {toSeconds(first), toSeconds(first + std::chrono::months(1))};
}

bool takeNumber(const char*& text, int number) {
  const std::string digits = std::to_string(number);
  if (std::strncmp(text, digits.c_str(), digits.size()) != 0) return false;
  text += digits.size();
  return *text < '0' || *text > '9';
}

bool take(const char*& text, const char* what) {
  const std::size_t length = std::strlen(what);
  if (std::strncmp(text, what, length) != 0) return false;
  text += length;
  return true;
}

// At least three letters of the month and of no other.
bool takeMonth(const char*& text, int month, int language) {
  std::size_t length = 0;
  while (text[length] >= 'A' && text[length] <= 'Z') ++length;
  if (length < 3) return false;
  for (int other = 1; other <= 12; ++other) {
    const char* name = PiDate::getMonths(static_cast<PiDate::Language>(language))[other];
    if ((std::strncmp(name, text, length) == 0) != (other == month)) return false;
  }
  text += length;
  return true;
}

// Whether the text of a level says the beginning of its unit at `time`; seconds within half of their last digit.
bool says(const char* text, int finest, int level, double time, int language) {
  const Clock clock(time);
  switch (finest * 10 + level) {
    case 20:
      return takeNumber(text, clock.minute) && take(text, "'") && !*text;
    case 30:
      return takeNumber(text, clock.hour) && take(text, "h") && !*text;
    case 40:
      return takeNumber(text, clock.day) && !*text;
    case 50:
      return takeMonth(text, clock.month, language) && !*text;
    case 60:
    case 51:
      return takeNumber(text, clock.year) && !*text;
    case 11:
      return takeNumber(text, clock.hour) && take(text, "h ") && takeNumber(text, clock.minute) && take(text, "'") &&
             !*text;
    case 21:
      return takeNumber(text, clock.day) && take(text, " ") && takeNumber(text, clock.hour) && take(text, "h") &&
             !*text;
    case 31:
      if (language == PoTimeAxis::ENGLISH)
        return takeMonth(text, clock.month, language) && take(text, " ") && takeNumber(text, clock.day) &&
               take(text, " ") && takeNumber(text, clock.year) && !*text;
      return takeNumber(text, clock.day) && take(text, " ") && takeMonth(text, clock.month, language) &&
             take(text, " ") && takeNumber(text, clock.year) && !*text;
    case 41:
      return takeMonth(text, clock.month, language) && take(text, " ") && takeNumber(text, clock.year) && !*text;
    default:
      return false;
  }
}

bool saysSecond(const char* text, double time, double tolerance) {
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  if (std::strcmp(end, "\"") != 0) return false;
  const char* point = std::strchr(text, '.');
  const double half = point ? 0.5 * std::pow(0.1, end - point - 1) : 0.5;
  const double second = time - std::floor(time / 60) * 60;
  const double apart = std::abs(value - second);
  constexpr double quantum = 4e-6;  // of a float below 60
  return std::min(apart, 60 - apart) <= half + tolerance + quantum;
}

/// One random axis in a domain of its own, in a scene that owns it.
class RandomAxis {
 public:
  explicit RandomAxis(int index) {
    QualityRandom random(73, index);
    chooseDates(random);
    chooseCoords(random);
    m_scene = new SoSeparator;
    m_scene->ref();
    auto* mapping = new PoDateFormatMapping;
    m_scene->addChild(mapping);
    mapping->format = "dmYh'\"";
    mapping->date1 = Clock(m_start).text().c_str();
    mapping->date2 = Clock(m_end).text().c_str();
    mapping->coord1 = m_coord1;
    mapping->coord2 = m_coord2;
    addAxis(random, addDomain(random));
  }
  ~RandomAxis() { m_scene->unref(); }
  RandomAxis(const RandomAxis&) = delete;
  RandomAxis& operator=(const RandomAxis&) = delete;

  SoSeparator* scene() const { return m_scene; }
  PoTimeAxis* axis() const { return m_axis; }
  bool isFit() const { return m_axis->gradFit.getValue() == PoTimeAxis::GRAD_FIT; }
  int language() const { return m_axis->language.getValue(); }
  /// Of the part of the axis that bears gradations, in seconds.
  double gradSpan() const { return (1 - m_marginStart - m_marginEnd) * (m_end - m_start); }
  double gradStart() const {
    return m_isBackwards ? m_end - m_marginStart * (m_end - m_start) : m_start + m_marginStart * (m_end - m_start);
  }
  double gradMiddle() const { return (m_isBackwards ? -0.5 : 0.5) * gradSpan() + gradStart(); }
  double timeAt(double coord) const {
    return m_start + (coord - m_coord1) / (double{m_coord2} - m_coord1) * (m_end - m_start);
  }
  /// What a coordinate leaves open of a time, being a float.
  double resolution() const {
    const double step = std::max(std::abs(m_coord1), std::abs(m_coord2)) * 0x1p-23;
    const double ofDouble = std::abs(m_end) * 0x1p-51;
    return step / (double{m_coord2} - m_coord1) * (m_end - m_start) + 2e-7 * (m_end - m_start) + ofDouble;
  }
  /// The place of a text along the axis, as a time.
  double timeOf(const SceneText& text) const {
    return timeAt(isAlongX() ? text.center()[0] : text.center()[1] / m_scale);
  }
  /// So much of the length of a text's letters, as a time.
  double timeOfLength(double length) const {
    return length / (isAlongX() ? 1 : m_scale) / (double{m_coord2} - m_coord1) * (m_end - m_start);
  }
  /// How far a text reaches from the line of the axis, in reference lengths.
  double distance(const SceneText& text) const {
    double farthest = 0;
    for (const SbVec2f& corner : text.corners) {
      const double across =
          isAlongX() ? corner[1] - m_axis->coord.getValue() * m_scale : corner[0] - m_axis->coord.getValue();
      farthest = std::max(farthest, std::abs(across) / m_length);
    }
    return farthest;
  }

 private:
  bool isAlongX() const { return m_axis->type.getValue() == PoTimeAxis::X; }

  void chooseDates(QualityRandom& random) {
    // From a hundredth of a second to nine thousand years, in whole seconds from ten seconds on.
    const double least = toSeconds(std::chrono::year{1} / 1 / 1), most = toSeconds(std::chrono::year{9999} / 12 / 31);
    double span = std::exp(random.uniform(std::log(0.01), std::log(2.8e11)));
    if (span > 10) span = std::floor(span);
    const bool isOfOurTime = random.chance(0.7) && span < 3e9;
    const double first = isOfOurTime ? toSeconds(std::chrono::year{1900} / 1 / 1) : least;
    const double last = (isOfOurTime ? toSeconds(std::chrono::year{2100} / 1 / 1) : most) - span;
    m_start = std::floor(random.uniform(first, std::max(first, last)));
    if (random.chance(0.3)) m_start = std::floor(m_start / 86400) * 86400;
    if (random.chance(0.1)) m_start = boundaries(m_start, 5)[0];
    m_end = m_start + span;
  }

  void chooseCoords(QualityRandom& random) {
    const double span = m_end - m_start;
    const int kind = random.index(4);
    m_coord1 = 0;
    m_coord2 = 1;
    if (kind == 1) m_coord2 = static_cast<float>(span / 86400);
    if (kind == 2) m_coord2 = static_cast<float>(span);
    if (kind == 3 && span > 30 * 86400.0 && std::abs(m_start) < 4e9) {  // seconds since 1970
      m_coord1 = static_cast<float>(m_start);
      m_coord2 = static_cast<float>(m_end);
    }
  }

  PoDomain* addDomain(QualityRandom& random) {
    auto* domain = new PoDomain;
    m_scene->addChild(domain);
    // Mostly the axis spans the domain, now and then only a part of it.
    const double most = random.chance(0.2) ? 3 : 0.2;
    const double length = double{m_coord2} - m_coord1;
    const double before = random.uniform(0, most) * length, after = random.uniform(0, most) * length;
    const auto across = static_cast<float>(std::exp(random.uniform(-3, 6)));
    m_isX = random.chance(0.7);
    const auto low = static_cast<float>(m_coord1 - before), high = static_cast<float>(m_coord2 + after);
    domain->min.setValue(m_isX ? low : -across, m_isX ? -across : low, 0);
    domain->max.setValue(m_isX ? high : across, m_isX ? across : high, 1);
    m_length = domain->max.getValue()[0] - domain->min.getValue()[0];
    m_scale = m_length / (domain->max.getValue()[1] - domain->min.getValue()[1]);
    return domain;
  }

  void addAxis(QualityRandom& random, const PoDomain* domain) {
    m_isBackwards = random.chance(0.1);
    const std::string start = Clock(m_start).text(), end = Clock(m_end).text();
    const float low = domain->min.getValue()[m_isX ? 1 : 0];
    m_axis = new PoTimeAxis((m_isBackwards ? end : start).c_str(), (m_isBackwards ? start : end).c_str(),
                            random.chance(0.5) ? low : 0, m_isX ? PoTimeAxis::X : PoTimeAxis::Y);
    m_scene->addChild(m_axis);
    m_axis->language = random.index(4);
    m_axis->gradFit = random.chance(0.2) ? PoTimeAxis::GRAD_FIT : PoTimeAxis::GRAD_UNFIT;
    m_axis->gradPosition = random.index(3);
    m_axis->gradPath = random.chance(0.7) ? int{PoAxis::PATH_DEPEND} : random.index(4);
    m_axis->tickPosition = random.index(3);
    if (random.chance(0.3)) {
      m_marginStart = static_cast<float>(random.uniform(0, 0.4));
      m_marginEnd = static_cast<float>(random.uniform(0, 0.4));
      m_axis->marginStart = m_marginStart;
      m_axis->marginEnd = m_marginEnd;
    }
    if (random.chance(0.4)) {
      m_axis->titleVisibility = PoAxis::VISIBILITY_ON;
      m_axis->titleString = "Date of the measurement";
      m_axis->titlePosition = random.index(3);
    }
  }

  SoSeparator* m_scene = nullptr;
  PoTimeAxis* m_axis = nullptr;
  double m_start = 0, m_end = 0;  // seconds from 1970, the earlier first
  float m_coord1 = 0, m_coord2 = 1;
  bool m_isX = true, m_isBackwards = false;
  float m_length = 1;  // the reference length, and what y is scaled by, as the scene is drawn
  float m_scale = 1;
  float m_marginStart = 0, m_marginEnd = 0;
};

/// The texts of the scene by what they belong to: the title, and the levels from fine to coarse.
struct AxisTexts {
  std::vector<SceneText> all;
  std::vector<std::vector<SceneText>> levels;

  explicit AxisTexts(const RandomAxis& random) : all(textsOf(random.scene())) {
    const auto* group = static_cast<const SoGroup*>(random.axis()->getPart("mainGradText", FALSE));
    if (!group) return;
    // A text of the finest level is a child of the group; each other level is a separator behind a font.
    std::vector<std::size_t> counts(1);
    std::size_t count = 0;
    for (int i = 0; i < group->getNumChildren(); ++i) {
      const auto* child = static_cast<const SoGroup*>(group->getChild(i));
      if (child->getNumChildren() > 0 && child->getChild(0)->isOfType(SoFont::getClassTypeId())) {
        counts.push_back(static_cast<std::size_t>(child->getNumChildren() - 1));
        count += counts.back();
      } else {
        ++counts[0];
        ++count;
      }
    }
    auto text = all.end() - static_cast<std::ptrdiff_t>(std::min(count, all.size()));
    for (const std::size_t num : counts) {
      const auto end = text + std::min<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(num), all.end() - text);
      levels.emplace_back(text, end);
      text = end;
    }
  }
};

std::vector<float> tickCoords(const PoTimeAxis* axis) {
  SoNode* ticks = const_cast<PoTimeAxis*>(axis)->getPart("mainGradTick", FALSE);
  std::vector<float> coords;
  if (!ticks) return coords;
  SoSearchAction search;
  search.setType(SoCoordinate3::getClassTypeId());
  search.apply(ticks);
  if (!search.getPath()) return coords;
  const auto& points = static_cast<SoCoordinate3*>(search.getPath()->getTail())->point;
  const auto* transform = static_cast<SoMatrixTransform*>(const_cast<PoTimeAxis*>(axis)->getPart("transform", FALSE));
  const float origin = transform->matrix.getValue()[3][axis->type.getValue() == PoTimeAxis::X ? 0 : 1];
  for (int i = 0; i < points.getNum(); i += 2) coords.push_back(origin + points[i][0]);
  return coords;
}

bool saysTime(const SceneText& text, int finest, int level, double time, double tolerance, int language) {
  if (finest == 1 && level == 0) return saysSecond(text.text.c_str(), time, tolerance);
  for (const double at : {time - tolerance, time, time + tolerance})
    if (says(text.text.c_str(), finest, level, at, language)) return true;
  return false;
}

/// Whether a text says a time at which it stands: for the finest level that of a tick.
bool isTrue(const RandomAxis& random, const std::vector<float>& ticks, const SceneText& text, int level, bool isAlone,
            int finest) {
  const double tolerance = random.resolution();
  const double place = random.timeOf(text), slack = random.timeOfLength(0.35 * text.height()) + tolerance;
  if (isAlone && std::abs(place - random.gradMiddle()) <= slack &&
      saysTime(text, finest, level, random.gradStart(), tolerance, random.language()))
    return true;
  if (level == 0) {
    return std::any_of(ticks.begin(), ticks.end(), [&](float coord) {
      const double time = random.timeAt(coord);
      return std::abs(time - place) <= slack && saysTime(text, finest, 0, time, tolerance, random.language());
    });
  }
  if (random.isFit()) return saysTime(text, finest, level, place, slack, random.language());
  double time = place - slack;
  for (int i = 0; i < 200 && time <= place + slack; ++i) {
    for (const double boundary : boundaries(time, finest + level))
      if (std::abs(boundary - place) <= slack && saysTime(text, finest, level, boundary, 0, random.language()))
        return true;
    time = boundaries(time, finest + level)[1];
  }
  return false;
}

struct Faults {
  int overlapping = 0, equalNeighbours = 0, untrue = 0, fewGradations = 0, farTexts = 0, tooSmall = 0;
  long texts = 0, overlaps = 0;
  std::map<std::string, std::vector<int>> examples;

  void add(const char* kind, int& counter, int index) {
    ++counter;
    if (examples[kind].size() < 5) examples[kind].push_back(index);
  }

  nlohmann::json summary() const {
    return {{"texts", texts},
            {"axes_with_overlapping_texts", overlapping},
            {"overlapping_texts", overlaps},
            {"axes_with_equal_neighbours", equalNeighbours},
            {"axes_with_a_text_that_is_not_its_date", untrue},
            {"axes_with_fewer_than_two_gradations", fewGradations},
            {"axes_with_a_text_beyond_half_a_reference_length", farTexts},
            {"axes_with_texts_below_0.007_reference_lengths", tooSmall},
            {"examples", examples}};
  }
};

void count(int index, const RandomAxis& random, Faults& faults) {
  const AxisTexts texts(random);
  const std::vector<float> ticks = tickCoords(random.axis());
  faults.texts += static_cast<long>(texts.all.size());
  const int overlaps = countOverlaps(texts.all, texts.all.empty() ? 0 : 0.02F * texts.all.back().height());
  faults.overlaps += overlaps;
  if (overlaps > 0) faults.add("overlapping", faults.overlapping, index);
  if (ticks.size() < 2) faults.add("few gradations", faults.fewGradations, index);

  bool isUntrue = false, isFar = false, hasEqual = false, isSmall = false;
  for (std::size_t level = 0; level < texts.levels.size(); ++level) {
    const std::vector<SceneText>& line = texts.levels[level];
    for (std::size_t i = 0; i < line.size(); ++i) {
      // At the limits between two units, floats decide.
      bool isRight = false;
      for (const double factor : {1.0, 1 - 1e-5, 1 + 1e-5})
        isRight = isRight || isTrue(random, ticks, line[i], static_cast<int>(level), line.size() == 1,
                                    finestUnit(random.gradSpan() * factor));
      if (!isRight && !isUntrue && std::getenv("ORMELLE_QUALITY_VERBOSE"))
        std::fprintf(stderr, "%d: level %d: \"%s\" at %s +- %g, start %s, span %g\n", index, static_cast<int>(level),
                     line[i].text.c_str(), Clock(random.timeOf(line[i])).text().c_str(), random.resolution(),
                     Clock(random.gradStart()).text().c_str(), random.gradSpan());
      isUntrue = isUntrue || !isRight;
      isFar = isFar || random.distance(line[i]) > 0.5 + 1e-4;
      const bool isEqual = i > 0 && line[i].text == line[i - 1].text;
      if (isEqual && !hasEqual && std::getenv("ORMELLE_QUALITY_VERBOSE"))
        std::fprintf(stderr, "%d: level %d: \"%s\" twice, start %s, span %g\n", index, static_cast<int>(level),
                     line[i].text.c_str(), Clock(random.gradStart()).text().c_str(), random.gradSpan());
      hasEqual = hasEqual || isEqual;
    }
  }
  PoAxis::Visibility visibility;
  PoAxis::GradPosition position;
  PoAxis::TextPath path;
  SbString name, added;
  float size, distance;
  int isAdded;
  random.axis()->getGrad(visibility, position, path, name, size, distance, isAdded, added);
  isSmall = size < 0.007F;
  if (isUntrue) faults.add("untrue", faults.untrue, index);
  if (isFar) faults.add("far", faults.farTexts, index);
  if (hasEqual) faults.add("equal neighbours", faults.equalNeighbours, index);
  if (isSmall) faults.add("small", faults.tooSmall, index);
}

/// Levels as an application may write them, fine for the span or not.
std::string randomRep(QualityRandom& random) {
  static const char* const kPeriods[] = {"SEC", "MIN", "HOU", "DAY", "MON", "YEA"};
  static const char* const kElements[] = {"s", "m", "H 'h'", "D", "3 D", "M", "9 M ' '", "Y"};
  std::string rep;
  const int numLevels = 1 + random.index(3);
  int unit = random.index(6);
  for (int level = 0; level < numLevels; ++level) {
    if (level > 0) rep += " | ";
    rep += random.chance(0.5) ? std::string() : std::to_string(1 + random.index(20)) + " ";
    rep += kPeriods[unit];
    unit = std::min(5, unit + 1);
    for (int i = random.index(4); i > 0; --i) rep += std::string(" ") + kElements[random.index(8)];
  }
  return rep;
}

/// Axes whose levels are written by hand: with the last pass nothing overlaps, however fine they are.
int countOverlapsByHand(int numCases, nlohmann::json& summary) {
  int overlapping = 0, empty = 0;
  long texts = 0;
  for (int i = 0; i < numCases; ++i) {
    const RandomAxis random(i);
    QualityRandom more(74, i);
    auto* attributes = new PoMiscTextAttr;
    random.scene()->insertChild(attributes, 0);
    attributes->endLineChar = '|';
    random.axis()->gradRep = randomRep(more).c_str();
    random.axis()->setGradLegibility(PoAxis::LEGIBILITY_ON);
    const std::vector<SceneText> all = textsOf(random.scene());
    overlapping += !all.empty() && countOverlaps(all, 0.02F * all.back().height()) > 0;
    empty += all.empty();
    texts += static_cast<long>(all.size());
  }
  summary["by_hand_with_the_last_pass"] = {{"axes", numCases},
                                           {"axes_with_overlapping_texts", overlapping},
                                           {"axes_without_a_text", empty},
                                           {"texts", texts}};
  return overlapping + empty;
}

/// Automatic axes of all spans, places and directions, without the last pass over texts and with it.
bool runTimeAxes(const QualityOptions& options, nlohmann::json& summary) {
  const int numCases = options.cases(10000);
  Faults without, with;
  for (int i = 0; i < numCases; ++i) {
    const RandomAxis random(i);
    random.axis()->setGradLegibility(PoAxis::LEGIBILITY_OFF);
    count(i, random, without);
    random.axis()->setGradLegibility(PoAxis::LEGIBILITY_DEPEND);
    count(i, random, with);
  }
  summary["axes"] = numCases;
  summary["by_the_formulas"] = without.summary();
  summary["with_the_last_pass"] = with.summary();
  const int numByHand = countOverlapsByHand(options.cases(2000), summary);
  return numByHand == 0 && with.overlapping == 0 && with.equalNeighbours == 0 && with.untrue == 0 &&
         with.fewGradations == 0 && with.farTexts == 0;
}

const QualityRun timeAxes("time_axes", "automatic time axes", runTimeAxes);

}  // namespace
