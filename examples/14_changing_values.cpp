// A mesh that borrows the arrays of the application, and pictures of it as these change: waves through two slits.

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>

#include <cmath>
#include <limits>

#include "Gallery.h"

namespace {

/// Shallow water in a basin of square cells, with a wall across it that has no water.
class Basin {
 public:
  static constexpr int kSize = 361;

  Basin() : m_now(kSize * kSize), m_before(kSize * kSize), m_next(kSize * kSize) {
    for (int j = 0; j < kSize; ++j) {
      const int fromMiddle = std::abs(j - kSize / 2);
      if (fromMiddle >= 28 && fromMiddle <= 36) continue;  // the slits
      for (int i = 118; i <= 121; ++i) m_now[at(i, j)] = std::numeric_limits<float>::quiet_NaN();
    }
    m_next = m_before = m_now;
  }

  /// The height of the water at each node, the second index fastest; NaN in the wall.
  const std::vector<float>& heights() const { return m_now; }

  /// The wave equation by finite differences, with a board that swings along one side.
  void step() {
    constexpr float courant2 = 0.3f;
    for (int i = 1; i < kSize - 1; ++i) {
      for (int j = 1; j < kSize - 1; ++j) {
        const float here = m_now[at(i, j)];
        float slope = -4 * here;
        for (const float neighbour :
             {m_now[at(i - 1, j)], m_now[at(i + 1, j)], m_now[at(i, j - 1)], m_now[at(i, j + 1)]})
          slope += std::isnan(neighbour) ? here : neighbour;  // the wall throws waves back
        m_next[at(i, j)] = 2 * here - m_before[at(i, j)] + courant2 * slope;
      }
    }
    ++m_numSteps;
    for (int k = 0; k < kSize; ++k) {
      m_next[at(0, k)] = std::sin(0.25f * static_cast<float>(m_numSteps));
      m_next[at(k, 0)] = m_next[at(k, 1)];
      m_next[at(k, kSize - 1)] = m_next[at(k, kSize - 2)];
    }
    m_before.swap(m_now);
    m_now.swap(m_next);
  }

 private:
  static std::size_t at(int i, int j) { return static_cast<std::size_t>(i * kSize + j); }

  std::vector<float> m_now;
  std::vector<float> m_before;
  std::vector<float> m_next;
  int m_numSteps = 0;
};

}  // namespace

int main() {
  return gallery::run([] {
    Basin basin;
    PbRegularCartesianGrid2D mesh(Basin::kSize, Basin::kSize, 0, 0, 100, 100, 0);  // 0: it borrows arrays
    mesh.addValuesSet(0, basin.heights().data(), "height");
    PbLinearDataMapping colors;
    colors.setValues(-1, SbColor(0.05f, 0.16f, 0.36f), 1, SbColor(0.85f, 0.97f, 0.98f));

    auto* root = new SoSeparator;
    root->ref();
    auto* water = new PoMeshFilled;
    water->setMesh(&mesh);
    water->setDataMapping(&colors);
    water->valuesIndex = 0;
    water->zValuesIndex = 0;
    water->coloringType = PoMesh::COLOR_MAPPING;
    water->creaseAngle = 1.5f;
    root->addChild(water);

    const auto draw = [&](const std::string& name, const std::string& title) {
      gallery::render(
          root, name,
          {.title = title,
           .caption = "The application computes waves in arrays that the mesh borrows. It hands the newest one "
                      "to PbMesh::addValuesSet, and the kit rebuilds when the next picture is drawn. Nodes "
                      "without a value make the wall.",
           .view = SbVec3f(0.62f, 0.45f, -0.8f),
           .up = SbVec3f(0, 0, 1)});
    };
    const auto advance = [&](int numSteps) {
      for (int i = 0; i < numSteps; ++i) basin.step();
      mesh.addValuesSet(0, basin.heights().data(), "height");
    };
    advance(330);
    draw("14_changing_values_a", "Waves reach the wall");
    advance(500);
    draw("14_changing_values_b", "Later, behind two slits");
    root->unref();
  });
}
