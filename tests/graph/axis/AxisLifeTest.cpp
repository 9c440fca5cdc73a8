// What makes an axis rebuild itself, and what of it goes into files.

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoGenAxis.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLogAxis.h>
#include <Ormelle/PoMiscTextAttr.h>
#include <Ormelle/PoNumericDisplayFormat.h>
#include <gtest/gtest.h>

#include <malloc.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

void traverse(SoNode* scene) { SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(scene); }

class Rebuilds {
 public:
  explicit Rebuilds(PoBase* kit) { kit->addPostRebuildCallback(&Rebuilds::add, this); }
  int take() { return std::exchange(m_count, 0); }

 private:
  static void add(void* count, PoBase*) { ++static_cast<Rebuilds*>(count)->m_count; }
  int m_count = 0;
};

std::string fontNameOf(const PoAxis& axis) {
  PoAxis::Visibility visibility;
  PoAxis::GradPosition position;
  PoAxis::TextPath path;
  SbString font, added;
  float size, distance;
  int isAdded;
  axis.getGrad(visibility, position, path, font, size, distance, isAdded, added);
  return font.getString();
}

std::string binaryOf(SoNode* node) {
  SoOutput out;
  out.setBinary(TRUE);
  out.setBuffer(std::malloc(1), 1, std::realloc);
  SoWriteAction(&out).apply(node);
  void* buffer = nullptr;
  size_t size = 0;
  out.getBuffer(buffer, size);
  std::string bytes(static_cast<char*>(buffer), size);
  std::free(buffer);
  return bytes;
}

NodePtr<SoSeparator> sceneWith(SoNode* axis) {
  NodePtr<SoSeparator> scene(new SoSeparator);
  scene->addChild(axis);
  return scene;
}

PoLinearAxis* newLinear() {
  auto* axis = new PoLinearAxis(SbVec3f(1, 2, 3), 25, PoCartesianAxis::YZ, 2.5F);
  axis->gradFit = PoLinearAxis::GRAD_FIT;
  axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_EXTR;
  axis->titleString = "Title";
  axis->titleVisibility = PoAxis::VISIBILITY_ON;
  axis->gradAddStringVisibility = TRUE;
  axis->tickSubDef = PoAxis::NUM_SUB_TICK;
  axis->tickNumOrPeriod = 3;
  return axis;
}

PoLogAxis* newLog() {
  const unsigned short digits[] = {2, 5};
  auto* axis = new PoLogAxis(SbVec3f(-1, 0, 0), 2, PoCartesianAxis::XZ, PoLogAxis::DECADE_LIST_NON_AUTO, digits, 2);
  axis->decadeRep = PoLogAxis::DECADE_AS_TEN_POWER;
  axis->tenPowerRep = PoLogAxis::TEN_POWER_AUTO;
  axis->decadeFontSize = 0.02F;
  return axis;
}

PoGenAxis* newGeneralized() {
  const char* texts[] = {"one", "two words", ""};
  return new PoGenAxis(SbVec3f(0, 0, 0), 3, PoCartesianAxis::ZX, texts, 3);
}

using NewAxis = PoCartesianAxis* (*)();
const NewAxis kNewAxes[] = {[]() -> PoCartesianAxis* { return newLinear(); },
                            []() -> PoCartesianAxis* { return newLog(); },
                            []() -> PoCartesianAxis* { return newGeneralized(); }};

}  // namespace

TEST(AxisLife, RebuildsOnceForWhatItDependsOn) {
  auto* axis = new PoLinearAxis;
  auto* domain = new PoDomain;
  auto* font = new PoMiscTextAttr;
  auto* format = new PoNumericDisplayFormat;
  NodePtr<SoSeparator> scene(new SoSeparator);
  for (SoNode* node : {static_cast<SoNode*>(domain), static_cast<SoNode*>(font), static_cast<SoNode*>(format)})
    scene->addChild(node);
  auto* cached = new SoSeparator;
  cached->boundingBoxCaching = SoSeparator::ON;
  cached->addChild(axis);
  scene->addChild(cached);
  Rebuilds rebuilds(axis);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 0);

  axis->end = 2;
  axis->titleString = "T";
  axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_START;
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1) << "three fields, one rebuild";
  font->fontName = "Another";
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  EXPECT_EQ(fontNameOf(*axis), "Another");
  format->formatType = PoNumericDisplayFormat::FLOAT_FORMAT;
  format->numDecimal = 4;
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  domain->max = SbVec3f(7, 8, 9);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  axis->setGradLegibility(PoAxis::LEGIBILITY_OFF);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 0);
}

TEST(AxisLife, FollowsItsDataObjectsToTheirEnd) {
  auto* axis = new PoLinearAxis;
  const auto scene = sceneWith(axis);
  auto attributes = std::make_unique<PbMiscTextAttr>();
  auto format = std::make_unique<PbNumericDisplayFormat>(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 4);
  attributes->setFontName("First");
  axis->setMiscTextAttr(attributes.get());
  axis->setFormat(format.get());
  EXPECT_EQ(axis->getFormat(), format.get());
  traverse(scene.get());
  EXPECT_EQ(fontNameOf(*axis), "First");
  Rebuilds rebuilds(axis);
  attributes->setFontName("Second");
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  EXPECT_EQ(fontNameOf(*axis), "Second");
  format->setFormat(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 2);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  attributes.reset();
  format.reset();
  EXPECT_EQ(axis->getFormat(), nullptr);
  EXPECT_NE(axis->getMiscTextAttr(), nullptr);
  traverse(scene.get());
  EXPECT_EQ(rebuilds.take(), 1);
  EXPECT_EQ(fontNameOf(*axis), "defaultFont");

  const auto kept = std::make_unique<PbMiscTextAttr>();
  axis->setMiscTextAttr(kept.get());
  axis->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
  rebuilds.take();
  kept->setFontName("Third");
  EXPECT_EQ(rebuilds.take(), 1);
  EXPECT_EQ(fontNameOf(*axis), "Third");
}

TEST(AxisLife, CopiesCarryInputs) {
  PbMiscTextAttr attributes;
  attributes.setFontName("Given");
  PbNumericDisplayFormat format(PbNumericDisplayFormat::INTEGER_FORMAT, 0, 0);
  NodePtr<PoLinearAxis> axis(newLinear());
  axis->setMiscTextAttr(&attributes);
  axis->setFormat(&format);
  axis->rebuild();
  const std::string text = textOf(axis.get());
  NodePtr<PoLinearAxis> constructed(new PoLinearAxis(*axis)), assigned(new PoLinearAxis);
  *assigned = *axis;
  NodePtr<PoLinearAxis> copied(static_cast<PoLinearAxis*>(axis->copy()));
  for (PoLinearAxis* copy : {constructed.get(), assigned.get(), copied.get()}) {
    EXPECT_EQ(textOf(copy), text);
    EXPECT_EQ(copy->getFormat(), &format);
    EXPECT_EQ(copy->getMiscTextAttr(), &attributes);
    copy->rebuild();
    EXPECT_EQ(fontNameOf(*copy), "Given");
  }
  NodePtr<PoLogAxis> log(newLog());
  NodePtr<PoLogAxis> logCopy(new PoLogAxis(*log));
  EXPECT_EQ(textOf(logCopy.get()), textOf(log.get()));
  NodePtr<PoGenAxis> generalized(newGeneralized());
  NodePtr<PoGenAxis> generalizedCopy(new PoGenAxis(*generalized));
  EXPECT_EQ(textOf(generalizedCopy.get()), textOf(generalized.get()));
}

TEST(AxisFile, FieldsComeBackAsTextAndInBinary) {
  for (const NewAxis newAxis : kNewAxes) {
    const auto scene = sceneWith(newAxis());
    traverse(scene.get());
    const std::string text = textOf(scene.get());
    EXPECT_EQ(text.find("bodySep Sep"), text.npos) << "generated parts stay out";
    EXPECT_EQ(text.find("AppearanceKit {"), text.npos) << text;
    const auto read = sceneOf(text);
    ASSERT_TRUE(read);
    traverse(read.get());
    EXPECT_EQ(textOf(read.get()), text);
    const std::string bytes = binaryOf(scene.get());
    const auto readBytes = sceneOf(bytes);
    ASSERT_TRUE(readBytes);
    EXPECT_EQ(textOf(readBytes.get()), text);
    EXPECT_NEAR(Soup::of(read.get()).area(), Soup::of(scene.get()).area(), 1e-6);
  }
}

TEST(AxisFile, KeepsTheStyleOfElements) {
  auto* axis = new PoLinearAxis;
  axis->set("mainGradTickApp.material { diffuseColor 1 0 0 }");
  axis->set("mainGradTextApp.material { diffuseColor 0 0 1 }");
  const auto scene = sceneWith(axis);
  traverse(scene.get());
  EXPECT_NE(axis->getPart("mainGradTextApp.font", FALSE), nullptr);
  const std::string text = textOf(scene.get());
  EXPECT_EQ(text.find("Font {"), text.npos) << "the font is the axis's own";
  const auto read = sceneOf(text);
  ASSERT_TRUE(read);
  traverse(read.get());
  auto* back = static_cast<PoLinearAxis*>(read->getChild(0));
  auto* ticks = static_cast<SoMaterial*>(back->getPart("mainGradTickApp.material", FALSE));
  auto* texts = static_cast<SoMaterial*>(back->getPart("mainGradTextApp.material", FALSE));
  ASSERT_TRUE(ticks && texts);
  EXPECT_EQ(ticks->diffuseColor[0], SbColor(1, 0, 0));
  EXPECT_EQ(texts->diffuseColor[0], SbColor(0, 0, 1));
  EXPECT_NE(back->getPart("mainGradTextApp.font", FALSE), nullptr) << "and is there again";
  EXPECT_EQ(textOf(read.get()), text);
}

TEST(AxisFile, GeometryStandsOnItsOwn) {
  for (const NewAxis newAxis : kNewAxes) {
    const auto scene = sceneWith(newAxis());
    const Soup drawn = Soup::of(scene.get());
    PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
    const std::string text = textOf(scene.get());
    const auto read = sceneOf(text);
    ASSERT_TRUE(read);
    const Soup back = Soup::of(read.get());
    PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
    EXPECT_EQ(text.find("titleString \""), text.npos) << "inputs stay out";
    EXPECT_EQ(back.triangles.size(), drawn.triangles.size());
    EXPECT_EQ(back.segments.size(), drawn.segments.size());
    EXPECT_NEAR(back.area(), drawn.area(), 1e-4 * drawn.area());
  }
}

TEST(AxisMemory, DoesNotGrowOverTenThousandRebuilds) {
#if defined(__SANITIZE_ADDRESS__)
  constexpr int kRebuilds = 200;
#else
  constexpr int kRebuilds = 10000;
#endif
  for (const NewAxis newAxis : kNewAxes) {
    NodePtr<PoCartesianAxis> axis(newAxis());
    const auto rebuildFor = [&](int count) {
      for (int i = 0; i < count; ++i) axis->rebuild();
      return mallinfo2().uordblks;
    };
    const size_t before = rebuildFor(100);
    const size_t after = rebuildFor(kRebuilds);
    EXPECT_LE(after, before + 4096) << axis->getTypeId().getName().getString();
  }
}
