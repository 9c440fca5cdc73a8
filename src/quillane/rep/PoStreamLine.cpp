#include <Ormelle/PoStreamLine.h>

#include "quillane/rep/PiMotionNodes.h"
#include "quillane/rep/PiStreamColors.h"
#include "quillane/stream/PiStreamPath.h"

PO_KIT_SOURCE(PoStreamLine)

PoStreamLine::PoStreamLine() {
  PO_KIT_CONSTRUCTOR(PoStreamLine);
  PO_KIT_ADD_CATALOG_ENTRY(groupStreamLine, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(lineWidth, (2.0F));
  PO_KIT_CONSTRUCTED(PoStreamLine);
  watchField(lineWidth);
  ownPart(groupStreamLine);
  beginWatching();
}

PoStreamLine::~PoStreamLine() = default;

void PoStreamLine::rebuild() {
  preRebuild();
  const std::vector<PiStreamPath>& paths = integratePaths();
  PiStreamColors colorOf(m_currentDataMapping, colors);
  std::vector<SbVec3f> points;
  std::vector<int32_t> sizes;
  for (std::size_t path = 0; path < paths.size(); ++path) {
    const int num = paths[path].getNumPoints();
    std::size_t first = points.size();
    // What has no colour parts the line; a single point is none.
    const auto endLine = [&] {
      const std::size_t size = points.size() - first;
      if (size > 0) sizes.push_back(static_cast<int32_t>(size));
      if (size > 0 && colorOf.areOfPaths()) colorOf.append(*colorOf.ofPath(static_cast<int>(path)));
      first = points.size();
    };
    for (int i = 0; num > 1 && i < num; ++i) {
      if (!colorOf.areMapped() || colorOf.append(paths[path].getValues()[i]))
        points.push_back(paths[path].getPoints()[i]);
      else
        endLine();
    }
    endLine();
  }

  auto* group = new SoGroup;
  if (!sizes.empty()) {
    PiMotionNodes::add<SoDrawStyle>(group)->lineWidth = PiMotionNodes::widthOf(lineWidth.getValue());
    PiMotionNodes::addPoints(group, points);
    if (colorOf.areMapped()) colorOf.addTo(group, SoMaterialBinding::PER_VERTEX);
    if (colorOf.areOfPaths()) colorOf.addTo(group, SoMaterialBinding::PER_FACE);  // a polyline each
    PiMotionNodes::add<SoLineSet>(group)->numVertices.setValues(0, static_cast<int>(sizes.size()), sizes.data());
  }
  setPart("groupStreamLine", group);
  postRebuild();
}
