#include <Ormelle/PoAutoValueLegend.h>
#include <Ormelle/PoAxis.h>
#include <Ormelle/PoBaseAxis.h>
#include <Ormelle/PoCartesianAxis.h>
#include <Ormelle/PoChart.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoCurve3.h>
#include <Ormelle/PoCurveFilling.h>
#include <Ormelle/PoCurveLine.h>
#include <Ormelle/PoGenAxis.h>
#include <Ormelle/PoHistogram.h>
#include <Ormelle/PoLegend.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLinearValueLegend.h>
#include <Ormelle/PoLogAxis.h>
#include <Ormelle/PoMultipleHistogram.h>
#include <Ormelle/PoNonLinearValueLegend1.h>
#include <Ormelle/PoNonLinearValueLegend2.h>
#include <Ormelle/PoNonLinearValueLegend3.h>
#include <Ormelle/PoPieChart.h>
#include <Ormelle/PoPieChart2D.h>
#include <Ormelle/PoPieChart3D.h>
#include <Ormelle/PoPieChartRep.h>
#include <Ormelle/PoRibbon.h>
#include <Ormelle/PoSingleHistogram.h>
#include <Ormelle/PoTavernel.h>
#include <Ormelle/PoTimeAxis.h>
#include <Ormelle/PoTube.h>
#include <Ormelle/PoValueLegend.h>

#include "graph/frame/PiClassTable.h"

PO_KIT_ABSTRACT_SOURCE(PoTavernel)

namespace {

// clang-format off
constexpr PiClassEntry kClasses[] = {
    PI_CLASS(PoTavernel),
    PI_CLASS(PoCurve),
    PI_CLASS(PoCurve3),
    PI_CLASS(PoBaseAxis),
    PI_CLASS(PoAxis),
    PI_CLASS(PoCartesianAxis),
    PI_CLASS(PoLinearAxis),
    PI_CLASS(PoGenAxis),
    PI_CLASS(PoLogAxis),
    PI_CLASS(PoTimeAxis), PI_CLASS(PoLegend), PI_CLASS(PoValueLegend), PI_CLASS(PoAutoValueLegend), PI_CLASS(PoLinearValueLegend), PI_CLASS(PoNonLinearValueLegend1), PI_CLASS(PoNonLinearValueLegend2), PI_CLASS(PoNonLinearValueLegend3),
    PI_CLASS(PoHistogram),
    PI_CLASS(PoSingleHistogram),
    PI_CLASS(PoMultipleHistogram),
    PI_CLASS(PoPieChart),
    PI_CLASS(PoPieChart2D),
    PI_CLASS(PoPieChart3D),
    PI_CLASS(PoChart),
    PI_CLASS(PoCurveLine),
    PI_CLASS(PoRibbon),
    PI_CLASS(PoTube),
    PI_CLASS(PoCurveFilling),
    PI_CLASS(PoPieChartRep),
};
// clang-format on

}  // namespace

PoTavernel::PoTavernel(void (*catchActionFunction)(void*, SoAction*)) : PoBase(catchActionFunction) {
  PO_KIT_CONSTRUCTOR(PoTavernel);
  PO_KIT_CONSTRUCTED(PoTavernel);
}

PoTavernel::~PoTavernel() = default;

void PoTavernel::initClasses() { piInitClasses(kClasses); }

void PoTavernel::exitClasses() { piExitClasses(kClasses); }

void PoTavernel::copyWatchedFields(const PoTavernel& other) {
  for (int i = 0; i < watchedFields().getLength() && i < other.watchedFields().getLength(); ++i) {
    watchedFields()[i]->copyFrom(*other.watchedFields()[i]);
    watchedFields()[i]->setDefault(other.watchedFields()[i]->isDefault());
  }
}

void PoTavernel::ownTriple(SoSFNode& separator, SoSFNode& appearanceOfTriple, SoSFNode& group) {
  ownPart(separator);
  m_styles.push_back(&appearanceOfTriple);
  ownPart(group);
}

void PoTavernel::setDefaultOnNonWritingFields() {
  inherited::setDefaultOnNonWritingFields();
  if (getNodeWriteFormat() == WRITE_GEOMETRY) return;
  for (SoSFNode* style : m_styles) leaveStyleOutOfFile(*style, {"font"});
}
