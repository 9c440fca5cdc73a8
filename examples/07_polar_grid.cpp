// A polar grid: the northern winter seen from above the pole, radius by latitude and angle by longitude.

#include <Inventor/nodes/SoPolygonOffset.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLines.h>

#include "Atmosphere.h"
#include "ColorBar.h"
#include "Ink.h"

int main() {
  return gallery::run([] {
    constexpr float radiansPerDegree = 0.0174532925f;
    constexpr int level850 = 1;
    const gallery::Atmosphere air;

    // From 20 degrees north to the pole, and once round to the first meridian again.
    std::vector<int> parallels;
    for (int j = air.numLatitudes() - 1; j >= 0 && air.latitudes()[static_cast<std::size_t>(j)] > 20; --j)
      parallels.push_back(j);
    std::vector<float> radii = {0};
    for (const int j : parallels) radii.push_back(90 - air.latitudes()[static_cast<std::size_t>(j)]);
    std::vector<float> angles;
    for (const float longitude : air.longitudes()) angles.push_back((longitude - 90) * radiansPerDegree);
    angles.push_back(angles.front() + 360 * radiansPerDegree);
    // The pole itself is one point, with the mean of the ring round it.
    float pole = 0;
    for (int i = 0; i < air.numLongitudes(); ++i)
      pole += (air.temperature(level850, i, parallels.front()) - 273.15f) / static_cast<float>(air.numLongitudes());
    std::vector<float> celsius(angles.size(), pole);
    for (const int j : parallels)
      for (int i = 0; i <= air.numLongitudes(); ++i)
        celsius.push_back(air.temperature(level850, i % air.numLongitudes(), j) - 273.15f);

    PbPolarGrid2D polar(static_cast<int>(radii.size()), static_cast<int>(angles.size()), radii.data(), angles.data(),
                        0);
    polar.addValuesSet(0, celsius.data(), "temperature in degrees Celsius");
    const float levels[] = {-35, -25, -15, -5, 0, 5, 15, 22};
    const SbColor tints[] = {{0.16f, 0.13f, 0.40f}, {0.20f, 0.32f, 0.65f}, {0.33f, 0.58f, 0.80f},
                             {0.67f, 0.84f, 0.92f}, {0.96f, 0.96f, 0.90f}, {0.99f, 0.87f, 0.62f},
                             {0.93f, 0.53f, 0.32f}, {0.69f, 0.15f, 0.18f}};
    PbNonLinearDataMapping2 colors;
    colors.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 8, levels, tints);

    // Every 10 degrees of longitude and of latitude.
    std::vector<float> rings;
    for (int ring = 10; ring <= 70; ring += 10) rings.push_back(static_cast<float>(ring));
    std::vector<float> spokes;
    for (int spoke = 0; spoke <= 36; ++spoke) spokes.push_back(static_cast<float>(spoke) * 10 * radiansPerDegree);
    PbPolarGrid2D ringGrid(static_cast<int>(rings.size()), static_cast<int>(spokes.size()), rings.data(), spokes.data(),
                           0);

    SoSeparator* root = gallery::unlit();
    root->ref();
    auto* offset = new SoPolygonOffset;
    root->addChild(offset);
    auto* filled = new PoMeshFilled;
    filled->setMesh(&polar);
    filled->setDataMapping(&colors);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_MAPPING;
    root->addChild(filled);
    SoSeparator* net = gallery::inked(SbColor(0.22f, 0.24f, 0.30f), 1.0f);
    auto* lines = new PoMeshLines;
    lines->setMesh(&ringGrid);
    net->addChild(lines);
    root->addChild(net);

    const gallery::ColorBar bar(-35, 22, {-30, -20, -10, 0, 10, 20}, SbBox2f(82, -60, 88, 60), &colors);
    root->addChild(bar.node());

    gallery::render(
        root, "07_polar_grid",
        {.title = "January temperature at 850 hPa, 20 degrees north to the pole (\u00b0C)",
         .caption = "PbPolarGrid2D: latitude gives the radius and longitude the angle, in degrees. A line every 10 "
                    "degrees.",
         .source = air.data().source(),
         .licence = air.data().licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true});
    root->unref();
  });
}
