#ifndef ORMELLE_QUALITY_H
#define ORMELLE_QUALITY_H

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// A quality run makes many random pictures of one kind and counts the faults in what the kits built: in the nodes
/// themselves, not in the records of those who made them. Each stands in a source quality_<topic>.cpp, with a static
/// object of this class.
///
///     static bool runLabels(const QualityOptions& options, nlohmann::json& summary) { ... }
///     static const QualityRun labels("labels", "labels of isolines", runLabels);
struct QualityOptions {
  /// How many cases a run makes, as a share of its usual number.
  double scale = 1;

  /// A run's usual number of cases, scaled; at least 1.
  int cases(int usual) const { return usual * scale < 1 ? 1 : static_cast<int>(usual * scale); }
};

class QualityRun {
 public:
  /// Puts counts and shares into the summary; returns whether all that must be 0 is 0.
  using Run = bool (*)(const QualityOptions& options, nlohmann::json& summary);

  QualityRun(std::string name, std::string title, Run function);

  static const std::vector<const QualityRun*>& all();

  const std::string& name() const { return m_name; }
  const std::string& title() const { return m_title; }
  bool run(const QualityOptions& options, nlohmann::json& summary) const { return m_run(options, summary); }

 private:
  static std::vector<const QualityRun*>& registered();

  std::string m_name;
  std::string m_title;
  Run m_run;
};

/// Random numbers of case `index` of a run: each case can be made again by itself. (The distributions of the standard
/// library differ between libraries; these don't.)
class QualityRandom {
 public:
  QualityRandom(std::uint32_t run, int index)
      : m_engine((static_cast<std::uint64_t>(run) << 32) + static_cast<unsigned>(index)) {}

  /// From low up to, not including, high.
  double uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine() >> 11) * 0x1p-53);
  }
  /// From 0 to num - 1.
  int index(int num) { return static_cast<int>(uniform(0, num)); }
  bool chance(double share) { return uniform(0, 1) < share; }

 private:
  std::mt19937_64 m_engine;
};

#endif
