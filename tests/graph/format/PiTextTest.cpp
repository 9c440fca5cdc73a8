#include "graph/format/PiText.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOutput.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLinearProfile.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoBase.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "graph/format/PiTextLines.h"
#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "support/NodePtr.h"

namespace {

using Lines = std::vector<std::string>;

// Restores what the library keeps for all texts.
class PiTextTest : public testing::Test {
 protected:
  PiTextTest() {
    PoBase::init();
    PoBase::setTextType(PoBase::TEXT_3D);
  }
  ~PiTextTest() override {
    PoBase::setTextType(PoBase::TEXT_ANNOTATION);
    PoBase::setVRML2Mode(0);
    m_root.reset();
    PoBase::finish();
  }

  // An empty root in which `text` builds.
  SoSeparator* root(PiText& text) {
    m_root.reset(new SoSeparator);
    text.setGroup(m_root.get());
    return m_root.get();
  }

  // The box of what is drawn: of the triangles, not of what the text nodes say.
  static SbBox3f drawnBox(SoNode* node) {
    SbBox3f box;
    SoCallbackAction action;
    action.addTriangleCallback(
        SoShape::getClassTypeId(),
        [](void* data, SoCallbackAction* a, const SoPrimitiveVertex* v1, const SoPrimitiveVertex* v2,
           const SoPrimitiveVertex* v3) {
          for (const SoPrimitiveVertex* v : {v1, v2, v3}) {
            SbVec3f point;
            a->getModelMatrix().multVecMatrix(v->getPoint(), point);
            static_cast<SbBox3f*>(data)->extendBy(point);
          }
        },
        &box);
    action.apply(node);
    return box;
  }

  template <class Node>
  static Node* find(SoNode* root) {
    SoSearchAction search;
    search.setType(Node::getClassTypeId());
    search.apply(root);
    return search.getPath() ? static_cast<Node*>(search.getPath()->getTail()) : nullptr;
  }

  NodePtr<SoSeparator> m_root;
};

void expectNear(const SbBox3f& box, const SbBox3f& expected, float tolerance, const std::string& what) {
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_NEAR(box.getMin()[axis], expected.getMin()[axis], tolerance) << what << ", axis " << axis;
    EXPECT_NEAR(box.getMax()[axis], expected.getMax()[axis], tolerance) << what << ", axis " << axis;
  }
}

}  // namespace

TEST(PiTextLines, BreaksIntoLines) {
  const struct {
    const char* text;
    char endLineChar;
    int length;
    Lines lines;
  } rows[] = {
      {"mean wind speed", ' ', 0, {"mean wind speed"}},
      {"mean wind speed", ' ', 9, {"mean wind", "speed"}},
      {"mean wind speed", ' ', 10, {"mean wind", "speed"}},
      {"mean wind speed", ' ', 8, {"mean", "wind", "speed"}},
      {"mean   wind", ' ', 6, {"mean", "wind"}},
      {"temperature", ' ', 5, {"tempe", "ratur", "e"}},
      {"a temperature", ' ', 5, {"a", "tempe", "ratur", "e"}},
      {"Pressure|MPa", '|', 20, {"Pressure", "MPa"}},
      {"mean pressure|MPa", '|', 9, {"mean", "pressure", "MPa"}},
      {"a||b|", '|', 9, {"a", "", "b"}},
      {"    ", ' ', 2, {"  "}},
      {"\xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9", ' ', 4, {"\xC3\xA9t\xC3\xA9", "\xC3\xA9t\xC3\xA9"}},
      {"\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC", ' ', 2, {"\xE2\x82\xAC\xE2\x82\xAC", "\xE2\x82\xAC"}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(PiTextLines::split(row.text, row.endLineChar, row.length), row.lines) << row.text;
}

TEST(PiTextLines, TakesOtherTextForLatin1) {
  EXPECT_EQ(PiTextLines::toUtf8("20 \xC2\xB0"
                                "C"),
            "20 \xC2\xB0"
            "C");
  for (const char* latin1 : {"20 \xB0"
                             "C",
                             "\xE9", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82"}) {
    const std::string converted = PiTextLines::toUtf8(latin1);
    EXPECT_NE(converted, latin1);
    EXPECT_EQ(PiTextLines::toUtf8(converted), converted) << "is UTF-8 now";
  }
  EXPECT_EQ(PiTextLines::toUtf8("20 \xB0"
                                "C"),
            "20 \xC2\xB0"
            "C");
}

TEST_F(PiTextTest, BuildsTheTextOfTheMode) {
  PiText text;
  SoSeparator* scene = root(text);
  EXPECT_EQ(text.build("one"), 1);
  EXPECT_EQ(find<SoText3>(scene)->getTypeId(), SoText3::getClassTypeId());
  EXPECT_EQ(find<SoFont>(scene)->name.getValue(), SbName("default"));

  PoBase::setTextType(PoBase::TEXT_ANNOTATION);
  scene = root(text);
  text.setFont("", 1);
  text.build("one");
  EXPECT_EQ(find<SoText3>(scene)->getTypeId().getName(), SbName("SoAnnoText3"));
  EXPECT_EQ(find<SoFont>(scene), nullptr) << "an empty name leaves the font to the state";

  PoBase::setVRML2Mode(1);
  scene = root(text);
  text.build("one");
  EXPECT_NE(find<SoAsciiText>(scene), nullptr);
  EXPECT_EQ(find<SoText3>(scene), nullptr);
}

TEST_F(PiTextTest, WrapsWhenBothAskForIt) {
  PbMiscTextAttr attributes;
  attributes.setLineLength(' ', 5);
  PiText text;
  SoSeparator* scene = root(text);
  text.setAttributes(&attributes);
  EXPECT_EQ(text.build("mean wind", 0), 1);
  scene = root(text);
  EXPECT_EQ(text.build("mean wind", 1), 2);
  ASSERT_EQ(find<SoText3>(scene)->string.getNum(), 2);
  EXPECT_EQ(find<SoText3>(scene)->string[1], SbString("wind"));
  text.setAttributes(nullptr);
  EXPECT_EQ(text.build("mean wind", 1), 1);
}

// Whatever the alignment, direction, number of lines and turn: the measured box holds all that is drawn and, where the
// text lies along the axes, is not much larger.
TEST_F(PiTextTest, MeasuresWhatItDraws) {
  const SbVec3f vectors[][2] = {
      {{1, 0, 0}, {0, 1, 0}}, {{0, 1, 0}, {-1, 0, 0}}, {{0, 0, -3}, {5, 9, 0}}, {{1, 1, 0}, {0, 1, 0}}};
  PbMiscTextAttr attributes;
  attributes.setLineLength('|', 40);
  for (const auto type : {PoBase::TEXT_3D, PoBase::TEXT_ANNOTATION})
    for (const auto& [direction, up] : vectors)
      for (int horizontal = 0; horizontal <= 2; ++horizontal)
        for (int vertical = 0; vertical <= 4; ++vertical)
          for (int turn = 0; turn <= 1; ++turn)
            for (const char* string : {"Wgk7", "Tjf|aa|Wider line"}) {
              PoBase::setTextType(type);
              PiText text;
              text.setAttributes(&attributes);
              text.setFont("defaultFont", 2);
              text.setPosition(SbVec3f(10, 20, 30));
              text.setDirection(direction, up);
              text.setAlignment(horizontal, vertical);
              text.setHalfTurn(turn);
              SoSeparator* scene = root(text);
              const SbBox3f measured = text.measure(string, 1);
              text.build(string, 1);
              const std::string what = std::string(string) + " " + std::to_string(horizontal) +
                                       std::to_string(vertical) + std::to_string(turn) + " along " +
                                       direction.toString().getString();
              const SbBox3f drawn = drawnBox(scene);
              ASSERT_FALSE(drawn.isEmpty());
              SbBox3f both = measured;
              both.extendBy(drawn);
              expectNear(both, measured, 0.1f, what);
              if (direction != SbVec3f(1, 1, 0)) expectNear(drawn, measured, 0.6f, what);
            }
}

TEST_F(PiTextTest, AlignsAtThePosition) {
  PiText text;
  text.setFont("defaultFont", 10);
  const auto drawn = [&](int horizontal, int vertical, const char* string) {
    SoSeparator* scene = root(text);
    text.setAlignment(horizontal, vertical);
    text.build(string, 1);
    return drawnBox(scene);
  };
  EXPECT_NEAR(drawn(PiText::LEFT, PiText::BASE, "HHH").getMin()[0], 0, 1);
  EXPECT_NEAR(drawn(PiText::RIGHT, PiText::BASE, "HHH").getMax()[0], 0, 1);
  EXPECT_NEAR(drawn(PiText::CENTER, PiText::BASE, "HHH").getCenter()[0], 0, 0.5);
  EXPECT_NEAR(drawn(0, PiText::TOP, "H").getMax()[1], 0, 1);
  EXPECT_NEAR(drawn(0, PiText::UPPER, "H").getMax()[1], 0, 1);
  EXPECT_NEAR(drawn(0, PiText::HALF, "H").getCenter()[1], 0, 0.5);
  EXPECT_NEAR(drawn(0, PiText::BASE, "H").getMin()[1], 0, 0.1);
  EXPECT_NEAR(drawn(0, PiText::BOTTOM, "p").getMin()[1], 0, 1);
  EXPECT_NEAR(drawn(0, 99, "H").getMin()[1], 0, 0.1);

  PbMiscTextAttr attributes;
  attributes.setLineLength('|', 9);
  text.setAttributes(&attributes);
  EXPECT_NEAR(drawn(0, PiText::HALF, "H|H|H").getCenter()[1], 0, 0.5);
  EXPECT_NEAR(drawn(0, PiText::BASE, "H|H|H").getMin()[1], 0, 0.1);
  EXPECT_NEAR(drawn(0, PiText::TOP, "H|H|H").getMax()[1], 0, 1);
}

TEST_F(PiTextTest, HalfTurnKeepsThePlace) {
  PiText text;
  text.setFont("defaultFont", 10);
  for (const int horizontal : {PiText::LEFT, PiText::RIGHT, PiText::CENTER}) {
    text.setAlignment(horizontal, PiText::BASE);
    text.setHalfTurn(0);
    SoSeparator* scene = root(text);
    text.build("HiH");
    const SbBox3f plain = drawnBox(scene);
    text.setHalfTurn(1);
    scene = root(text);
    text.build("HiH");
    expectNear(drawnBox(scene), plain, 1, "alignment " + std::to_string(horizontal));
  }
}

TEST_F(PiTextTest, HasAProfileOfItsSize) {
  PbMiscTextAttr attributes;
  attributes.enableProfile(1);
  PiText text;
  text.setAttributes(&attributes);
  text.setFont("defaultFont", 2);
  SoSeparator* scene = root(text);
  text.build("H");
  const SbBox3f box = drawnBox(scene);
  EXPECT_NEAR(box.getMax()[2], 0, 1e-5);
  EXPECT_NEAR(box.getMin()[2], -0.3, 1e-5);
  const SbBox3f measured = text.measure("H");
  EXPECT_NEAR(measured.getMin()[2], -0.3, 1e-5);

  attributes.enablePredefinedProfile(0);
  text.setAttributes(&attributes);
  scene = root(text);
  text.build("H");
  EXPECT_EQ(find<SoLinearProfile>(scene), nullptr);
}

TEST_F(PiTextTest, BuildsNothingFromNothing) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();
  PiText text;
  EXPECT_TRUE(text.getBoundingBox().isEmpty());
  SoSeparator* scene = root(text);
  EXPECT_EQ(text.build(nullptr), 0);
  EXPECT_EQ(text.build(""), 0);
  for (const float size : {0.f, -1.f, nan, inf}) {
    text.setFontSize(size);
    EXPECT_EQ(text.build("text"), 0) << size;
    EXPECT_TRUE(text.measure("text").isEmpty()) << size;
  }
  text.setFontSize(1);
  text.setPosition(SbVec3f(0, nan, 0));
  EXPECT_EQ(text.build("text"), 0);
  EXPECT_EQ(scene->getNumChildren(), 0);
  text.setPosition(SbVec3f(0, 0, 0));
  text.setGroup(nullptr);
  EXPECT_EQ(text.build("text"), 0);
  EXPECT_FALSE(text.measure("text").isEmpty());
}

TEST_F(PiTextTest, FindsAFrameForAnyVectors) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const SbVec3f vectors[] = {{0, 0, 0}, {nan, 0, 0}, {0, 1, 0}, {3e38f, 3e38f, 0}, {1e-40f, 0, 0}, {-1, 0, 0}};
  PiText text;
  text.setFont("defaultFont", 10);
  for (const SbVec3f& direction : vectors)
    for (const SbVec3f& up : vectors) {
      text.setDirection(direction, up);
      const SbBox3f box = text.measure("HH");
      const SbVec3f size = box.getMax() - box.getMin();
      const std::string what = std::string(direction.toString().getString()) + " up " + up.toString().getString();
      EXPECT_GT(size.length(), 10) << what;
      EXPECT_LT(size.length(), 40) << what;
    }
}

TEST_F(PiTextTest, DrawsTextOfAnyBytes) {
  PiText text;
  text.setFont("defaultFont", 10);
  SoSeparator* scene = root(text);
  EXPECT_EQ(text.build("\xFF\xFE\x80 20 \xB0"
                       "C \xC3"),
            1);
  EXPECT_FALSE(drawnBox(scene).isEmpty());
  EXPECT_EQ(text.build(std::string(20000, 'x').c_str()), 1);
}

TEST_F(PiTextTest, AnnotationTextIsWrittenAndRead) {
  PoBase::setTextType(PoBase::TEXT_ANNOTATION);
  PiText text;
  SoSeparator* scene = root(text);
  text.build("12.5");
  std::vector<char> buffer(10000);
  SoOutput out;
  out.setBuffer(buffer.data(), buffer.size(), nullptr);
  SoWriteAction(&out).apply(scene);
  void* written = nullptr;
  size_t size = 0;
  out.getBuffer(written, size);
  SoInput in;
  in.setBuffer(written, size);
  const NodePtr<SoSeparator> read(SoDB::readAll(&in));
  ASSERT_TRUE(read);
  ASSERT_NE(find<SoText3>(read.get()), nullptr);
  EXPECT_EQ(find<SoText3>(read.get())->getTypeId().getName(), SbName("SoAnnoText3"));
  EXPECT_EQ(find<SoText3>(read.get())->string[0], SbString("12.5"));
}

// The pixels of the text, from in front and from behind, with and without a surface in its plane: always the same.
TEST_F(PiTextTest, AnnotationTextStaysLegible) {
  PoBase::setTextType(PoBase::TEXT_ANNOTATION);
  const auto inkOf = [&](bool isBehind, bool hasSurface) {
    PiText text;
    SoSeparator* scene = root(text);
    auto* red = new SoBaseColor;
    scene->addChild(red);
    red->rgb.setValue(1, 0, 0);
    text.setFont("defaultFont", 6);
    text.setAlignment(PiText::CENTER, PiText::HALF);
    text.build("F4");
    auto* surface = new SoSeparator;
    scene->addChild(surface);  // last: of two equal depths the later one would show
    auto* color = new SoBaseColor;
    surface->addChild(color);
    color->rgb.setValue(hasSurface ? SbColor(1, 1, 1) : SbColor(0, 0, 0));
    auto* corners = new SoCoordinate3;
    surface->addChild(corners);
    const float z = hasSurface ? 0.f : isBehind ? 1.f : -1.f;  // always there, so that the picture is of the same place
    const SbVec3f points[] = {{-10, -10, z}, {10, -10, z}, {10, 10, z}, {-10, 10, z}};
    corners->point.setValues(0, 4, points);
    surface->addChild(new SoFaceSet);

    PiOffscreen offscreen(100, 100);
    PiViewpoint viewpoint;
    viewpoint.direction.setValue(0, 0, isBehind ? 1.f : -1.f);
    viewpoint.isOrthographic = true;
    offscreen.setViewpoint(viewpoint);
    EXPECT_TRUE(offscreen.draw(scene)) << offscreen.error();
    std::vector<bool> ink;
    const PiPicture& picture = offscreen.picture();
    for (int y = 0; y < picture.height; ++y)
      for (int x = 0; x < picture.width; ++x) {
        const uint8_t* pixel = picture.pixel(x, y);
        ink.push_back(pixel[0] > 200 && pixel[1] < 50);
      }
    return ink;
  };
  const std::vector<bool> front = inkOf(false, false);
  EXPECT_GT(std::count(front.begin(), front.end(), true), 100);
  for (const auto& [isBehind, hasSurface] : {std::pair(false, true), {true, false}, {true, true}}) {
    const std::vector<bool> other = inkOf(isBehind, hasSurface);
    int numDifferent = 0;
    for (size_t i = 0; i < front.size(); ++i) numDifferent += front[i] != other[i];
    EXPECT_LT(numDifferent, 20) << "from behind: " << isBehind << ", on a surface: " << hasSurface;
  }
}
