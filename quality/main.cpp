#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>

#include <Ormelle/PoOrmelle.h>
#include <CLI/CLI.hpp>

#include "Quality.h"

QualityRun::QualityRun(std::string name, std::string title, Run function)
    : m_name(std::move(name)), m_title(std::move(title)), m_run(function) {
  registered().push_back(this);
}

std::vector<const QualityRun*>& QualityRun::registered() {
  static std::vector<const QualityRun*> runs;
  return runs;
}

const std::vector<const QualityRun*>& QualityRun::all() { return registered(); }

int main(int argc, char** argv) {
  CLI::App app("Counts the faults in thousands of random pictures.");
  std::vector<std::string> names;
  std::string out;
  QualityOptions options;
  app.add_option("runs", names, "the runs to make; all without one");
  app.add_option("--out", out, "the file that the summary goes to, as JSON");
  app.add_option("--scale", options.scale, "the number of cases, as a share of the usual one")
      ->check(CLI::PositiveNumber);
  CLI11_PARSE(app, argc, argv);

  for (const std::string& name : names) {
    bool known = false;
    for (const QualityRun* run : QualityRun::all()) known = known || run->name() == name;
    if (!known) {
      std::cerr << "there is no run called " << name << "; there are:\n";
      for (const QualityRun* run : QualityRun::all()) std::cerr << "  " << run->name() << ": " << run->title() << '\n';
      return 2;
    }
  }

  PoOrmelle::init();
  nlohmann::ordered_json summaries;
  bool good = true;
  for (const QualityRun* run : QualityRun::all()) {
    if (!names.empty() && std::find(names.begin(), names.end(), run->name()) == names.end()) continue;
    const auto start = std::chrono::steady_clock::now();
    nlohmann::json summary;
    const bool passed = run->run(options, summary);
    summary["seconds"] = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    summary["passed"] = passed;
    good = good && passed;
    std::cout << run->name() << " (" << run->title() << "): " << summary.dump(2) << std::endl;
    summaries[run->name()] = std::move(summary);
  }
  PoOrmelle::finish();

  if (!out.empty()) {
    std::ofstream file(out);
    file << summaries.dump(2) << '\n';
    if (!file) {
      std::cerr << "cannot write " << out << '\n';
      return 2;
    }
  }
  return good ? 0 : 1;
}
