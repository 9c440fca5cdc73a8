// Two logarithmic axes: the spectrum of the carbon dioxide record over three decades of frequency and six of power.

#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoLogAxis.h>
#include <Ormelle/PoMiscTextAttr.h>

#include <cmath>
#include <cstdio>
#include <numbers>
#include <vector>

#include "Gallery.h"
#include "Ink.h"

namespace {

// Exponents at the edges of the picture.
const float kLowX = std::log10(0.05f), kHighX = std::log10(26.0f), kLowY = -5, kHighY = 1.35f;
// The picture is as high as this part of its width.
constexpr float kAspect = 0.62f;

struct Record {
  std::vector<double> years, ppmv;  // without the missing weeks, and without the trend

  explicit Record(const gallery::Table& table) {
    const std::vector<std::string> dates = table.texts("date");
    const std::vector<float> values = table.numbers("co2_ppmv");
    for (std::size_t i = 0; i < values.size(); ++i) {
      int year, month, day;
      if (std::isnan(values[i]) || std::sscanf(dates[i].c_str(), "%d-%d-%d", &year, &month, &day) != 3) continue;
      years.push_back(year + (month - 1) / 12.0 + (day - 1) / 365.25 - 1980);
      ppmv.push_back(values[i]);
    }
    removeTrend();
  }

  // Takes away the parabola that fits best.
  void removeTrend() {
    double m[3][4] = {};
    for (std::size_t i = 0; i < years.size(); ++i) {
      const double powers[] = {1, years[i], years[i] * years[i]};
      for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) m[r][c] += powers[r] * powers[c];
        m[r][3] += powers[r] * ppmv[i];
      }
    }
    for (int r = 0; r < 3; ++r)
      for (int k = 0; k < 3; ++k)
        if (k != r)
          for (int c = 3; c >= r; --c) m[k][c] -= m[k][r] / m[r][r] * m[r][c];
    for (std::size_t i = 0; i < years.size(); ++i)
      ppmv[i] -= m[0][3] / m[0][0] + years[i] * (m[1][3] / m[1][1] + years[i] * m[2][3] / m[2][2]);
  }

  // The squared amplitude of the wave of this frequency that fits best (the periodogram of Lomb, 1976, which doesn't
  // mind missing weeks).
  double squaredAmplitude(double frequency) const {
    const double omega = 2 * std::numbers::pi * frequency;
    double sumSin = 0, sumCos = 0;
    for (const double t : years) {
      sumSin += std::sin(2 * omega * t);
      sumCos += std::cos(2 * omega * t);
    }
    const double tau = std::atan2(sumSin, sumCos) / 2;
    double yc = 0, ys = 0, cc = 0, ss = 0;
    for (std::size_t i = 0; i < years.size(); ++i) {
      const double c = std::cos(omega * years[i] - tau), s = std::sin(omega * years[i] - tau);
      yc += ppmv[i] * c;
      ys += ppmv[i] * s;
      cc += c * c;
      ss += s * s;
    }
    return (yc * yc) / (cc * cc) + (ys * ys) / (ss * ss);
  }
};

PoCurve* curve(const std::vector<SbVec2f>& points) {
  return new PoCurve(static_cast<int>(points.size()), points.data());
}

void style(PoLogAxis* axis, float gridLength) {
  axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
  axis->gradFontSize = 0.02f;
  axis->tickMainLength = 0.012f;
  axis->tickSubLength = 0.006f;
  axis->gridVisibility = PoAxis::VISIBILITY_ON;
  axis->gridLengthGradOtherSide = gridLength;
  axis->titleVisibility = PoAxis::VISIBILITY_ON;
  axis->titlePosition = PoAxis::TITLE_MIDDLE;
  axis->titleFontSize = 0.022f;
  axis->set("mainGradGridApp.material { diffuseColor 0.78 0.79 0.81 } mainGradGridApp.drawStyle { lineWidth 1.6 }");
  axis->set("subGradGridApp.material { diffuseColor 0.91 0.92 0.93 } subGradGridApp.drawStyle { lineWidth 1 }");
}

// A text beside a peak, in the coordinates of the domain.
void label(SoSeparator* root, float frequency, float power, const char* text) {
  const float scale = kAspect * (kHighX - kLowX) / (kHighY - kLowY);
  SoSeparator* group = gallery::inked(SbColor(0.13f, 0.15f, 0.18f), 1);
  root->addChild(group);
  auto* place = new SoTranslation;
  group->addChild(place);
  place->translation.setValue(std::log10(frequency) + 0.015f, std::log10(power) * scale, 0.01f);
  auto* font = new SoFont;
  group->addChild(font);
  font->name = "DejaVu Sans:Bold";
  font->size = 0.05f;
  auto* letters = new SoText3;
  group->addChild(letters);
  letters->string = text;
}

}  // namespace

int main() {
  return gallery::run([] {
    const gallery::DataSet data("mauna_loa_co2_weekly");
    const Record record(data.table());

    std::vector<SbVec2f> spectrum, means;
    constexpr double step = 1 / (4 * 43.8);  // a quarter of what the length of the record tells apart
    double sum = 0, next = kLowX + 0.125;
    int num = 0;
    double f = 0.05;
    while (f < 26) {
      const auto x = static_cast<float>(std::log10(f)), y = static_cast<float>(std::log10(record.squaredAmplitude(f)));
      spectrum.emplace_back(x, std::max(y, kLowY));
      if (x > next) {
        if (num > 0) means.emplace_back(static_cast<float>(next - 0.0625), static_cast<float>(sum / num));
        while (x > next) next += 0.125;
        sum = num = 0;
      }
      sum += y;
      ++num;
      f += std::min(step, f / 100);
    }

    auto* root = new SoSeparator;
    root->ref();
    auto* chart = new SoSeparator;
    root->addChild(chart);
    auto* domain = new PoDomain;  // lets y be as long as x in the picture; what is above stays empty
    chart->addChild(domain);
    domain->setValues(SbVec2f(kLowX, kLowY), SbVec2f(kHighX, kLowY + (kHighY - kLowY) / kAspect),
                      PbDomain::BOX_AS_GIVEN);
    auto* text = new PoMiscTextAttr;
    chart->addChild(text);
    text->fontName = "DejaVu Sans";

    SoSeparator* ink = gallery::inked(SbColor(0.18f, 0.20f, 0.24f), 2);
    chart->addChild(ink);
    const unsigned short digits[] = {2, 5};
    auto* x = new PoLogAxis(SbVec3f(kLowX, kLowY, 0), kHighX, PoCartesianAxis::XY, PoLogAxis::DECADE_LIST_NON_AUTO,
                            digits, 2);
    style(x, kHighY - kLowY);
    x->tenPowerRep = PoLogAxis::TEN_POWER_DECIMAL;
    x->decadeRep = PoLogAxis::DECADE_AS_TEN_POWER;
    x->titleString = "Frequency (cycles a year)";
    auto* y =
        new PoLogAxis(SbVec3f(kLowX, kLowY, 0), kHighY, PoCartesianAxis::YX, PoLogAxis::DECADE_LIST_AUTO, nullptr, 0);
    style(y, kHighX - kLowX);
    y->titlePath = PoAxis::PATH_RIGHT;
    y->titleString = "Squared amplitude (ppmv\xC2\xB2)";
    ink->addChild(y);
    ink->addChild(x);
    // Each axis is crossed by the grid of the other: their lines come once more, on top.
    for (const PoLogAxis* axis : {x, y}) {
      auto* line = new PoLogAxis(*axis);
      line->gradVisibility = line->titleVisibility = line->tickVisibility = line->gridVisibility =
          PoAxis::VISIBILITY_OFF;
      ink->addChild(line);
    }

    SoSeparator* thin = gallery::inked(SbColor(0.55f, 0.68f, 0.80f), 1.4f);
    chart->addChild(thin);
    thin->addChild(curve(spectrum));
    SoSeparator* bold = gallery::inked(SbColor(0.10f, 0.30f, 0.50f), 4);
    chart->addChild(bold);
    bold->addChild(curve(means));
    label(root, 1, 7, "one year");
    label(root, 2, 0.5f, "half a year");
    label(root, 3, 0.0105f, "a third");

    gallery::render(
        root, "54_log_spectrum",
        {.title = "How fast carbon dioxide at Mauna Loa swings",
         .caption = "Two PoLogAxis: one with numbers and two digits in each decade, one with powers of ten. "
                    "Curves (PoCurve) of the spectrum of the weekly record without its trend, and of its "
                    "geometric mean in bands.",
         .source = data.source(),
         .licence = data.licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true,
         .width = 1600,
         .height = 1150});
    root->unref();
  });
}
