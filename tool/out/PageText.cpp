// Texts of a scene as lines of text on the page.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>

#include <algorithm>
#include <cmath>

#include "TextNode.h"
#include "out/PageScene.h"

namespace tool {

namespace {

// What a file may hold: whole UTF-8 sequences and no control characters.
std::string cleaned(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const std::size_t length = byte < 0x80                   ? 1
                               : byte >= 0xc2 && byte < 0xe0 ? 2
                               : byte >= 0xe0 && byte < 0xf0 ? 3
                               : byte >= 0xf0 && byte < 0xf5 ? 4
                                                             : 0;
    bool isWhole = length > 0 && i + length <= text.size() && (byte >= 0x20) && byte != 0x7f;
    uint32_t code = length > 1 ? byte & (0x7fu >> length) : byte;
    for (std::size_t k = 1; isWhole && k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      isWhole = (next & 0xc0) == 0x80;
      code = code << 6 | (next & 0x3fu);
    }
    // Overlong forms, halves of surrogates, C1 controls and what no document may hold.
    if (isWhole && ((length == 3 && code < 0x800) || (length == 4 && (code < 0x10000 || code > 0x10ffff)) ||
                    (code >= 0xd800 && code < 0xe000) || (code >= 0x80 && code < 0xa0) || (code & 0xfffe) == 0xfffe))
      isWhole = false;
    if (isWhole)
      out += text.substr(i, length);
    else if (byte == '\t')
      out += ' ';
    i += isWhole ? length : 1;
  }
  return out;
}

bool isBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

std::string lowered(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

// "DejaVu Sans:Bold Italic", as the toolkit names fonts.
void setFont(TextRun& run, const std::string& name) {
  const std::size_t colon = name.find(':');
  const std::string style = colon == std::string::npos ? "" : lowered(name.substr(colon + 1));
  run.family = cleaned(name.substr(0, colon));
  while (!run.family.empty() && run.family.back() == ' ') run.family.pop_back();
  const std::string kind = lowered(run.family);
  if (kind.empty() || kind == "defaultfont" || kind == "sans")
    run.family = "sans-serif";
  else if (kind == "serif")
    run.family = "serif";
  else if (kind == "typewriter")
    run.family = "monospace";
  run.isBold = style.find("bold") != std::string::npos;
  run.isItalic = style.find("italic") != std::string::npos || style.find("oblique") != std::string::npos;
}

}  // namespace

// How far a line advances, measured by the toolkit, so that the text takes the room that the scene gave it.
double PageScene::widthOf(const std::string& line, const std::string& font, double size) {
  const auto known = m_widths.find(font + '\n' + line);
  if (known != m_widths.end()) return known->second * size;
  auto* group = new SoSeparator;
  group->ref();
  auto* fontNode = new SoFont;
  group->addChild(fontNode);
  fontNode->name = font.c_str();
  fontNode->size = 1.0f;
  auto* text = new SoText3;
  group->addChild(text);
  text->string = line.c_str();
  if (!m_measuring) m_measuring.emplace(SbViewportRegion(100, 100));
  m_measuring->apply(group);
  const SbBox3f box = m_measuring->getBoundingBox();
  group->unref();
  const double width = box.isEmpty() ? 0.0 : static_cast<double>(box.getMax()[0]);
  m_widths[font + '\n' + line] = width;
  return width * size;
}

// Adds a run whose matrix stands, if any of it can be seen.
void PageScene::addRun(PageBatch& out, TextRun run, const PageVertex& anchor) const {
  for (const double entry : run.matrix)
    if (!std::isfinite(entry)) return;
  const double reach = std::max(run.width, run.size) + run.size;
  const double farX = std::hypot(run.matrix[0], run.matrix[1]) * reach;
  const double farY = std::hypot(run.matrix[2], run.matrix[3]) * run.size;
  const double far = farX + farY;
  if (run.matrix[4] < -far || run.matrix[4] > m_width + far || run.matrix[5] < -far || run.matrix[5] > m_height + far)
    return;
  out.nearest = std::min(out.nearest, anchor.z);
  out.farthest = std::max(out.farthest, anchor.z);
  out.anchors.push_back(anchor);
  out.texts.push_back(std::move(run));
}

void PageScene::text(SoCallbackAction& action) {
  const TextNode node = textNodeOf(action);
  SoState* state = action.getState();
  readState(action);
  m_current = {-1, -1, -1};
  m_texture.reset();
  const std::string& font = node.font;
  const double size = node.size;
  if (!(size > 0.0) || !std::isfinite(size)) return;

  TextRun run;
  setFont(run, font);
  run.size = size;
  const float transparency = std::clamp(SoLazyElement::getTransparency(state, 0), 0.0f, 1.0f);
  run.color = SoLazyElement::getDiffuse(state, 0).getPackedValue(transparency);
  if (m_showsEdges) run.outline = m_style.width;

  const auto project = [&](double x, double y, ClipVertex& out) {
    Vertex vertex;
    for (std::size_t c = 0; c < 3; ++c) {
      const int column = static_cast<int>(c);
      vertex.position[c] = x * static_cast<double>(m_model[0][column]) + y * static_cast<double>(m_model[1][column]) +
                           static_cast<double>(m_model[3][column]);
    }
    out = clipVertex(vertex, run.color);
    return std::isfinite(out.at[0] + out.at[1] + out.at[2] + out.at[3]) && out.at[3] > 1e-30;
  };

  PageBatch out;
  out.kind = PageBatch::TEXTS;
  out.isOverlay = m_isOverlay;
  out.isTransparent = (run.color & 255) < 255;
  const std::vector<std::string>& lines = node.lines;
  if (node.isOnScreen) {
    ClipVertex origin;
    if (!project(0.0, 0.0, origin) || clipped({origin}, false).empty()) return;
    const PageVertex anchor = onPage(origin);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      run.text = cleaned(lines[i]);
      if (isBlank(run.text)) continue;
      run.width = widthOf(run.text, font, size);
      run.matrix[4] = static_cast<double>(anchor.x) + node.startOf(run.width);
      run.matrix[5] = static_cast<double>(anchor.y) + static_cast<double>(i) * std::floor(size) * node.spacing;
      addRun(out, run, anchor);
    }
  } else {
    m_hasSolidText = m_hasSolidText || node.isSolid;
    if (!node.isAnnotation)
      run.color = ShapeLight(action).lit(run.color, SbVec3f(0.0f, 0.0f, 0.0f), SbVec3f(0.0f, 0.0f, 1.0f), false);

    double widest = 0.0;
    for (const std::string& line : lines) widest = std::max(widest, widthOf(cleaned(line), font, size));
    const double low = node.startOf(widest);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      run.text = cleaned(lines[i]);
      if (isBlank(run.text)) continue;
      run.width = widthOf(run.text, font, size);
      if (!(run.width > 0.0)) continue;
      double x = node.startOf(run.width);
      double direction = 1.0;
      const double y = -static_cast<double>(i) * size * node.spacing;
      for (int attempt = 0; attempt < 2; ++attempt) {
        ClipVertex start, end, below, middle;
        if (!project(x, y, start) || !project(x + direction * run.width, y, end) || !project(x, y - size, below) ||
            !project(x + direction * run.width / 2, y + size / 3, middle))
          break;
        const PageVertex s = onPage(start);
        const PageVertex e = onPage(end);
        const PageVertex b = onPage(below);
        run.matrix = {static_cast<double>(e.x - s.x) / run.width,
                      static_cast<double>(e.y - s.y) / run.width,
                      static_cast<double>(b.x - s.x) / size,
                      static_cast<double>(b.y - s.y) / size,
                      static_cast<double>(s.x),
                      static_cast<double>(s.y)};
        // Annotation never reads mirrored: seen from behind, it is turned about the middle of its box.
        if (attempt == 0 && node.isAnnotation && run.matrix[0] * run.matrix[3] - run.matrix[1] * run.matrix[2] < 0.0) {
          x = 2.0 * low + widest - x;
          direction = -1.0;
          continue;
        }
        if (!clipped({middle}, false).empty()) addRun(out, run, onPage(middle));
        break;
      }
    }
  }
  if (!out.texts.empty()) m_batches.push_back(std::move(out));
}

}  // namespace tool
