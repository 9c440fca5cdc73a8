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
#include <vector>

namespace {

struct Entry {
  std::string name;
  nlohmann::json about;
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

// The descriptions that have a picture, in the order of their names.
std::vector<Entry> readEntries(const std::filesystem::path& folder) {
  std::vector<Entry> entries;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() != ".json") continue;
    std::filesystem::path picture = file.path();
    if (!std::filesystem::exists(picture.replace_extension(".png"))) continue;
    std::ifstream in(file.path());
    auto about = nlohmann::json::parse(in, nullptr, false);
    if (about.is_object()) entries.push_back({file.path().stem().string(), std::move(about)});
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

void writeEntry(std::ostream& out, const Entry& entry) {
  const auto text = [&entry](const char* key) {
    const auto found = entry.about.find(key);
    return found != entry.about.end() && found->is_string() ? found->get<std::string>() : std::string();
  };
  const auto number = [&entry](const char* key) {
    const auto found = entry.about.find(key);
    return found != entry.about.end() && found->is_number() ? found->get<double>() : 0.0;
  };
  const std::string title = text("title").empty() ? entry.name : text("title");
  const std::string picture = escaped(entry.name) + ".png";
  out << "<article id=\"" << escaped(entry.name) << "\">\n<a href=\"" << picture << "\"><img src=\"" << picture
      << "\" loading=\"lazy\" alt=\"" << escaped(title) << '"';
  if (number("width") > 0 && number("height") > 0)
    out << " width=\"" << fixed(number("width"), 0) << "\" height=\"" << fixed(number("height"), 0) << '"';
  out << "></a>\n<div class=\"text\">\n<h2>" << escaped(title) << "</h2>\n<p>" << escaped(text("caption"))
      << "</p>\n<dl>\n";
  writeRow(out, "Data", text("source").empty() ? "computed" : text("source"));
  writeRow(out, "Licence", text("licence"));
  writeRow(out, "Time",
           fixed(number("seconds"), 2) + " s in all, of these " + fixed(1000.0 * number("build_seconds"), 1) +
               " ms for the representations; " + fixed(number("samples"), 0) + " samples a pixel");
  out << "<dt>Program</dt><dd><code>examples/" << escaped(entry.name)
      << ".cpp</code></dd>\n</dl>\n</div>\n</article>\n";
}

void writePage(const std::filesystem::path& folder) {
  const std::vector<Entry> entries = readEntries(folder);
  std::ostringstream page;
  page << kHead << "<header>\n<h1>Ormelle gallery</h1>\n<p>" << entries.size()
       << " pictures, each drawn by one short program. Click a picture for its full size.</p>\n</header>\n<main>\n";
  for (const Entry& entry : entries) writeEntry(page, entry);
  page << "</main>\n<footer>\n<p>Notices and licences of the data are in <code>data/README.md</code>.</p>\n"
          "</footer>\n</body>\n</html>\n";
  const std::filesystem::path file = folder / "index.html";
  std::ofstream out(file, std::ios::binary);
  if (!(out << page.str()) || !out.flush()) throw std::runtime_error(file.string() + " can't be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gallery_index FOLDER\n");
    return 2;
  }
  try {
    writePage(argv[1]);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s.\n", problem.what());
    return 1;
  }
  return 0;
}
