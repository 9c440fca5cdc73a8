#ifndef ORMELLE_TESTS_TESTCHART_H
#define ORMELLE_TESTS_TESTCHART_H

#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PoChart.h>
#include <Ormelle/PoMesh1DHints.h>

#include <functional>
#include <vector>

#include "support/NodePtr.h"

/// The smallest chart: it draws nothing and counts its rebuilds.
class TestChart : public PoChart {
  PO_KIT_HEADER(TestChart, PoChart);

 public:
  TestChart();
  void rebuild() override;

  int rebuilds = 0;

 protected:
  ~TestChart() override;
};

/// What a mesh answered, owned.
struct TestCurve {
  std::vector<float> x, y;
  std::vector<int> index;
  std::vector<int> added;
  std::vector<float> positions, directions;
  NodePtr<SoMaterial> material;

  size_t num() const { return x.size(); }
};

/// Asks a mesh for curves the way a chart does: in a traversal, behind attribute nodes.
class CurveAsker {
 public:
  CurveAsker();

  TestCurve drawn(const PbMesh1D& mesh, int wantsIndex = 1) const;
  TestCurve filtered(const PbMesh1D& mesh, bool wantsParameters = false) const;
  TestCurve cut(const PbMesh1D& mesh, int axis, float threshold) const;

  NodePtr<TestChart> chart;
  NodePtr<PoMesh1DHints> hints;
  NodePtr<SoNode> filter, mapping;  ///< null for none

 private:
  void ask(const std::function<void(SoState*)>& question) const;
};

#endif
