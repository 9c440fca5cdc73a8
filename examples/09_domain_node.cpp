// PoDomain scales what stands behind it: degrees along one axis and metres along the other make one picture.

#include <Inventor/nodes/SoDepthBuffer.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLimit.h>

#include "Ink.h"
#include "Ocean.h"

int main() {
  return gallery::run([] {
    const gallery::Ocean ocean;
    constexpr int latitude = 70;  // 50.5 degrees north

    std::vector<float> heights;
    for (const float depth : ocean.depths()) heights.push_back(-depth);
    const std::vector<float> longitudes = ocean.longitudes();
    const std::vector<float> oxygen = ocean.section(latitude);
    PbParalCartesianGrid2D section(static_cast<int>(longitudes.size()), static_cast<int>(heights.size()),
                                   longitudes.data(), heights.data(), 0);
    section.addValuesSet(0, oxygen.data(), "oxygen saturation in percent");
    PbNonLinearDataMapping2 colors = gallery::Ocean::colors();

    SoSeparator* root = gallery::unlit();
    root->ref();
    // 5500 metres shall be as high as half of the 358 degrees are wide.
    auto* domain = new PoDomain;
    domain->setValues(SbVec2f(-179.5f, -11000.0f), SbVec2f(178.5f, 0.0f), PbDomain::BOX_AS_GIVEN);
    domain->transformType = PbDomain::SCALE_X_FIXED;
    root->addChild(domain);
    SoSeparator* land = gallery::inked(SbColor(0.86f, 0.85f, 0.83f), 1.0f);
    auto* ground = new PoMeshFilled;  // without values it draws every cell
    ground->setMesh(&section);
    land->addChild(ground);
    root->addChild(land);
    auto* above = new SoDepthBuffer;  // what follows covers it
    above->function = SoDepthBuffer::LEQUAL;
    root->addChild(above);
    auto* filled = new PoMeshFilled;
    filled->setMesh(&section);
    filled->setDataMapping(&colors);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_MAPPING;
    root->addChild(filled);
    SoSeparator* frame = gallery::inked(SbColor(0.3f, 0.3f, 0.34f), 2.0f);
    auto* limit = new PoMeshLimit;
    limit->setMesh(&section);
    frame->addChild(limit);
    root->addChild(frame);

    gallery::render(
        root, "09_domain_node",
        {.title = "Oxygen saturation along 50.5 degrees north, true depths (percent)",
         .caption = "The coordinates stay degrees and metres; a PoDomain node before the kits scales both axes to "
                    "the same unit for the picture.",
         .source = ocean.data().source(),
         .licence = ocean.data().licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true,
         .width = 1800,
         .height = 1100});
    root->unref();
  });
}
