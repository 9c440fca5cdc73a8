#include "graph/chart/PiChartColors.h"

SbColor PiChartColors::of(const SoMFColor& colors, int index) {
  if (colors.getNum() > 0) return colors[index < 0 ? colors.getNum() - 1 : index % colors.getNum()];
  // Eight hues of like lightness that stay apart for the colour-blind as well as eight can.
  static const float kColors[8][3] = {{0.23f, 0.44f, 0.71f}, {0.90f, 0.55f, 0.20f}, {0.33f, 0.62f, 0.36f},
                                      {0.76f, 0.31f, 0.32f}, {0.50f, 0.42f, 0.68f}, {0.55f, 0.40f, 0.30f},
                                      {0.84f, 0.53f, 0.70f}, {0.50f, 0.55f, 0.60f}};
  return SbColor(kColors[index < 0 ? 7 : index % 8]);
}
