// Writes the gallery's page: index.html, over the pictures and their descriptions in one folder.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Gallery.h"

namespace {

struct Entry {
  std::string name;
  nlohmann::json about;
  bool isScene = false;
  nlohmann::json counts = {};  // what the tool tells of a scene
};

std::string escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string fixed(double value, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << value;
  return text.str();
}

// What the file holds, discarded if that isn't JSON.
nlohmann::json readJson(const std::filesystem::path& file) {
  std::ifstream in(file);
  return nlohmann::json::parse(in, nullptr, false);
}

std::string textOf(const nlohmann::json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

double numberOf(const nlohmann::json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_number() ? found->get<double>() : 0.0;
}

// The pictures that have a description, in the order of their names. A scene is described beside it, by the set of data
// that it draws.
std::vector<Entry> readEntries(const std::filesystem::path& folder) {
  std::vector<Entry> entries;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() != ".png") continue;
    Entry entry{file.path().stem().string(), {}};
    const std::filesystem::path scene = folder / "scenes" / entry.name;
    entry.isScene = std::filesystem::exists(scene.string() + ".iv");
    entry.about = readJson((entry.isScene ? scene : folder / entry.name).string() + ".json");
    if (!entry.about.is_object()) continue;
    if (entry.isScene) {
      entry.counts = readJson((folder / entry.name).string() + ".info.json");
      const std::string set = textOf(entry.about, "data");
      if (!set.empty()) {
        const gallery::DataSet data(set);
        entry.about["source"] = data.source();
        entry.about["licence"] = data.licence();
      }
    }
    entries.push_back(std::move(entry));
  }
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.name < b.name; });
  return entries;
}

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Ormelle: gallery</title>
<style>
:root { --ink: #20262e; --soft: #5d6875; --line: #dde2e8; --page: #f5f7f9; --card: #ffffff; --accent: #1f6feb; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e7ebf0; --soft: #9aa5b1; --line: #2f3740; --page: #14181d; --card: #1c2229; --accent: #6cb0ff; }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 16px/1.55 system-ui, -apple-system, "Segoe UI", Roboto, "DejaVu Sans", sans-serif; }
header, footer { max-width: 84rem; margin: 0 auto; padding: 2.5rem 1.5rem 1rem; }
h1 { margin: 0 0 .4rem; font-size: 2rem; letter-spacing: -.01em; }
header p { margin: 0; color: var(--soft); max-width: 46rem; }
main { max-width: 84rem; margin: 0 auto; padding: 1rem 1.5rem 2rem; display: grid; gap: 1.5rem;
  grid-template-columns: repeat(auto-fill, minmax(min(24rem, 100%), 1fr)); }
article { background: var(--card); border: 1px solid var(--line); border-radius: 10px; overflow: hidden;
  display: flex; flex-direction: column; }
article > a { display: block; background: #fff; border-bottom: 1px solid var(--line); }
article img { display: block; width: 100%; height: auto; }
.text { padding: 1rem 1.2rem 1.1rem; display: flex; flex-direction: column; flex: 1; }
h2 { margin: 0 0 .35rem; font-size: 1.12rem; line-height: 1.3; }
.text p { margin: 0 0 .9rem; }
dl { margin: auto 0 0; padding-top: .7rem; border-top: 1px solid var(--line); display: grid;
  grid-template-columns: auto 1fr; gap: .15rem .9rem; font-size: .84rem; color: var(--soft); }
dt { font-weight: 600; }
dd { margin: 0; overflow-wrap: anywhere; }
code { font-size: .95em; }
footer { padding-top: 0; padding-bottom: 3rem; color: var(--soft); font-size: .9rem; }
a { color: var(--accent); }
</style>
</head>
<body>
)";

void writeRow(std::ostream& out, const char* term, const std::string& text) {
  if (!text.empty()) out << "<dt>" << term << "</dt><dd>" << escaped(text) << "</dd>\n";
}

// Width and height of a PNG picture as attributes of an image, so that the page keeps its place while pictures load.
std::string sizeOf(const std::filesystem::path& picture) {
  std::ifstream in(picture, std::ios::binary);
  unsigned char head[24] = {};
  in.read(reinterpret_cast<char*>(head), sizeof(head));
  const auto number = [&head](int at) {
    return std::to_string(head[at] << 24 | head[at + 1] << 16 | head[at + 2] << 8 | head[at + 3]);
  };
  return " width=\"" + number(16) + "\" height=\"" + number(20) + "\"";
}

// How much of what the representations made, from the figures of `ormelle info`.
std::string countsOf(const nlohmann::json& counts) {
  const auto found = counts.find("total");
  if (found == counts.end() || !found->is_object()) return "";
  std::string text;
  for (const char* shape : {"triangles", "lines", "points"}) {
    const double number = numberOf(*found, shape);
    if (number > 0) text += (text.empty() ? "" : ", ") + fixed(number, 0) + " " + shape;
  }
  return text + ", rebuilt in " + fixed(numberOf(*found, "rebuild_ms"), 1) + " ms";
}

void writeEntry(std::ostream& out, const Entry& entry, const std::filesystem::path& folder) {
  const std::string title = textOf(entry.about, "title").empty() ? entry.name : textOf(entry.about, "title");
  const std::string picture = escaped(entry.name) + ".png";
  out << "<article id=\"" << escaped(entry.name) << "\">\n<a href=\"" << picture << "\"><img src=\"" << picture
      << "\" loading=\"lazy\" alt=\"" << escaped(title) << '"' << sizeOf(folder / (entry.name + ".png"))
      << "></a>\n<div class=\"text\">\n<h2>" << escaped(title) << "</h2>\n<p>"
      << escaped(textOf(entry.about, "caption")) << "</p>\n<dl>\n";
  const std::string source = textOf(entry.about, "source");
  writeRow(out, "Data", source.empty() ? "computed" : source);
  writeRow(out, "Licence", textOf(entry.about, "licence"));
  if (entry.isScene) {
    writeRow(out, "Shapes", countsOf(entry.counts));
    const std::string scene = "scenes/" + escaped(entry.name) + ".iv";
    out << "<dt>Scene</dt><dd><a href=\"" << scene << "\"><code>examples/" << scene << "</code></a></dd>\n";
  } else {
    writeRow(out, "Time",
             fixed(numberOf(entry.about, "seconds"), 2) + " s in all, of these " +
                 fixed(1000.0 * numberOf(entry.about, "build_seconds"), 1) + " ms for the representations");
    out << "<dt>Program</dt><dd><code>examples/" << escaped(textOf(entry.about, "program")) << "</code></dd>\n";
  }
  out << "</dl>\n</div>\n</article>\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gallery_index FOLDER\n");
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    const std::vector<Entry> entries = readEntries(folder);
    std::ostringstream page;
    page << kHead << "<header>\n<h1>Ormelle gallery</h1>\n<p>" << entries.size()
         << " pictures, each drawn from a short scene file or by a short program. Click a picture for its full "
            "size.</p>\n"
            "</header>\n<main>\n";
    for (const Entry& entry : entries) writeEntry(page, entry, folder);
    page << "</main>\n<footer>\n<p>Notices and licences of the data are in <code>data/README.md</code>.</p>\n"
            "</footer>\n</body>\n</html>\n";
    std::ofstream out(folder / "index.html", std::ios::binary);
    if (!(out << page.str()) || !out.flush())
      throw std::runtime_error((folder / "index.html").string() + " can't be written");
    return 0;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s.\n", problem.what());
    return 1;
  }
}
