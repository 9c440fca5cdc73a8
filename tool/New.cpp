#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "Commands.h"
#include "Failure.h"
#include "Templates.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace tool {

namespace {

// The first sentence of the first comment behind the header line.
std::string summaryOf(std::string_view scene) {
  std::string_view rest = scene.substr(std::min(scene.find("\n# "), scene.size()));
  std::string text;
  while (rest.starts_with("\n# ")) {
    rest.remove_prefix(3);
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    if (!text.empty()) text += ' ';
    text += rest.substr(0, end);
    rest.remove_prefix(end);
  }
  const std::size_t stop = text.find(". ");
  if (stop != std::string::npos) text.erase(stop);
  while (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}

const Template& findTemplate(const std::string& kind) {
  std::string known;
  for (const Template& each : templates()) {
    if (each.kind == kind) return each;
    known += (known.empty() ? "" : ", ") + std::string(each.kind);
  }
  throw Failure("there is no kind of scene called " + kind + "; there are " + known);
}

}  // namespace

void listKinds() {
  for (const Template& each : templates())
    std::printf("%-10s %s\n", std::string(each.kind).c_str(), summaryOf(each.scene).c_str());
}

void newScene(const std::string& kind, const std::string& file, bool isForced) {
  const std::string_view scene = findTemplate(kind).scene;
  if (file.empty()) {
    std::fwrite(scene.data(), 1, scene.size(), stdout);
    return;
  }
  if (!isForced && std::filesystem::exists(std::filesystem::symlink_status(file)))
    throw Failure(file + ": this file is there already; --force writes over it");
  PiWholeFile out(file);
  if (out.stream()) std::fwrite(scene.data(), 1, scene.size(), out.stream());
  const std::string problem = out.close();
  if (!problem.empty()) throw Failure(file + ": " + problem);
}

}  // namespace tool
