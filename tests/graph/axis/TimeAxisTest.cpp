#include <Ormelle/PoTimeAxis.h>

#include <gtest/gtest.h>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoDateFormatMapping.h>
#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoMiscTextAttr.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "graph/toolkit/SoAnnoText3.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"

namespace {

// Texts of a part, in the order of the graph: the finest level first.
std::vector<std::string> textsOf(SoNode* root) {
  SoSearchAction search;
  search.setType(SoAnnoText3::getClassTypeId());
  search.setInterest(SoSearchAction::ALL);
  search.apply(root);
  std::vector<std::string> texts;
  for (int i = 0; i < search.getPaths().getLength(); ++i) {
    const auto* text = static_cast<SoAnnoText3*>(search.getPaths()[i]->getTail());
    texts.emplace_back(text->string[0].getString());
  }
  return texts;
}

std::string joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return all;
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

class TimeAxis : public testing::Test {
 protected:
  TimeAxis() {
    PoDebugError::setHandlerCallback(
        [](const SoError* error, void* test) {
          static_cast<TimeAxis*>(test)->messages.emplace_back(error->getDebugString().getString());
        },
        this);
    root->addChild(axis.get());
  }
  ~TimeAxis() override { PoDebugError::setHandlerCallback(nullptr, nullptr); }

  void traverse() {
    SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
    action.apply(root.get());
    box = action.getBoundingBox();
  }

  std::string texts() {
    traverse();
    SoNode* group = axis->getPart("mainGradText", FALSE);
    return group ? joined(textsOf(group)) : "none";
  }

  // A mapping by day, month, four-digit year and time.
  void setDates(const char* start, const char* end, float coord1 = 0, float coord2 = 1) {
    mapping.setFormat("dmYh'\"");
    mapping.setDateMapping(start, end, coord1, coord2);
    axis->setDateFormatMapping(&mapping);
    axis->startDate = start;
    axis->endDate = end;
  }

  std::vector<std::string> messages;
  PbDateFormatMapping mapping;               // before the axis, which it outlives
  NodePtr<PoTimeAxis> axis{new PoTimeAxis};  // starts the toolkit
  NodePtr<SoSeparator> root{new SoSeparator};
  SbBox3f box;
};

}  // namespace

TEST_F(TimeAxis, DefaultsShowTheFirstDayOf1970) {
  EXPECT_EQ(texts(), "0h, 2h, 4h, 6h, 8h, 10h, 12h, 14h, 16h, 18h, 20h, 22h, 0h, JAN 1 1970, JAN 2 1970");
  const float* coords = nullptr;
  ASSERT_EQ(axis->getMainGradCoords(coords), 13);
  for (int i = 0; i < 13; ++i) EXPECT_FLOAT_EQ(coords[i], static_cast<float>(i) / 12);
  EXPECT_EQ(axis->getSubGradCoords(coords), 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(TimeAxis, LevelsStandBeyondEachOther) {
  PbMiscTextAttr attributes;
  attributes.setLineLength('|', 0);
  axis->setMiscTextAttr(&attributes);
  axis->gradRep = "6 HOU H | 12 HOU H 'h' | 1 DAY D";
  EXPECT_EQ(texts(), "0, 6, 12, 18, 0, 0h, 12h, 0h, 1, 2");

  for (const auto position : {PoAxis::GRAD_BELOW, PoAxis::GRAD_ABOVE}) {
    axis->gradPosition = position;
    traverse();
    auto* group = static_cast<SoGroup*>(axis->getPart("mainGradText", FALSE));
    std::vector<SbBox3f> lines;
    // The finest level stands in the group itself, each other one in a separator behind a font of its own.
    for (int i = 0; i < group->getNumChildren(); ++i) {
      const NodePtr<SoSeparator> alone(new SoSeparator);
      alone->addChild(axis->getPart("mainGradTextApp.font", FALSE));
      alone->addChild(group->getChild(i));
      SoGetBoundingBoxAction measure(SbViewportRegion(100, 100));
      measure.apply(alone.get());
      if (i >= 1 && i <= 4)
        lines.back().extendBy(measure.getBoundingBox());
      else
        lines.push_back(measure.getBoundingBox());
    }
    ASSERT_EQ(lines.size(), 3U);
    for (size_t i = 1; i < lines.size(); ++i) {
      if (position == PoAxis::GRAD_BELOW)
        EXPECT_LT(lines[i].getMax()[1], lines[i - 1].getMin()[1]);
      else
        EXPECT_GT(lines[i].getMin()[1], lines[i - 1].getMax()[1]);
    }
  }
  axis->gradVisibility = PoAxis::VISIBILITY_OFF;
  EXPECT_EQ(texts(), "");
  axis->setMiscTextAttr(nullptr);
}

TEST_F(TimeAxis, TicksAndTextsFollowTheFieldsOnTicks) {
  axis->gradRep = "2 HOU H";
  axis->tickNumOrPeriod = 3;
  EXPECT_EQ(texts(), "0, 6, 12, 18, 0");
  const float* coords = nullptr;
  EXPECT_EQ(axis->getMainGradCoords(coords), 5);
  EXPECT_EQ(axis->getSubGradCoords(coords), 8);
  axis->gradAddStringVisibility = TRUE;
  axis->gradAddString = " o'clock";
  EXPECT_EQ(texts(), "0 o'clock, 6 o'clock, 12 o'clock, 18 o'clock, 0 o'clock");
}

TEST_F(TimeAxis, MarginsLeaveDatesOut) {
  axis->gradRep = "2 HOU H";
  axis->marginType = PoAxis::FIXED_MARGIN;
  axis->marginStart = 0.25F;
  axis->marginEnd = 0.3F;
  EXPECT_EQ(texts(), "6, 8, 10, 12, 14, 16");
  axis->gradFit = PoTimeAxis::GRAD_FIT;
  axis->marginStart = 0.26F;  // 6:14:24
  axis->gradRep = "2 HOU H ':' m";
  EXPECT_EQ(texts(), "6:14, 8:14, 10:14, 12:14, 14:14, 16:14");
  axis->marginEnd = 5;
  EXPECT_EQ(texts().find(','), std::string::npos) << texts();  // all collapses to one
}

// What was wrong leaves what was in force.
TEST_F(TimeAxis, ErrorsInTheLanguagesChangeNothing) {
  axis->gradRep = "6 HOU H";
  const std::string former = "0, 6, 12, 18, 0";
  EXPECT_EQ(texts(), former);
  axis->gradRep = "x";
  EXPECT_EQ(texts(), former);
  EXPECT_EQ(messages.size(), 1U);
  axis->coord = 1;  // nothing is read again
  EXPECT_EQ(texts(), former);
  EXPECT_EQ(messages.size(), 1U);

  const SbString reps[] = {"8 HOU H", "1 DAY D"};
  axis->gradRep.setValues(0, 2, reps);
  axis->timesPeriod = "1 DAY 2 DAY";  // one too many
  EXPECT_EQ(texts(), former);
  axis->timesPeriod = "1 DAI";
  EXPECT_EQ(texts(), former);
  EXPECT_EQ(messages.size(), 3U);
  axis->timesPeriod = "1 DAY";
  EXPECT_EQ(texts(), "0, 8, 16, 0");
  axis->timesPeriod = "23 HOU";
  EXPECT_EQ(texts(), "1, 2");

  axis->gradRep.set1Value(0, "");
  EXPECT_EQ(texts().substr(0, 8), "0h, 2h, ");  // automatic
  EXPECT_EQ(messages.size(), 3U);
}

TEST_F(TimeAxis, TheSeparatorIsPartOfTheLanguage) {
  axis->gradRep = "12 HOU H / 1 DAY D";
  EXPECT_EQ(texts().substr(0, 8), "0h, 2h, ");  // wrong while blanks separate, so automatic
  auto* attributes = new PoMiscTextAttr;
  attributes->endLineChar = '/';
  root->insertChild(attributes, 0);
  EXPECT_EQ(texts(), "0, 12, 0, 1, 2");
}

TEST_F(TimeAxis, BadDatesChangeNoPart) {
  const std::string former = texts();
  const auto geometry = [this] {
    PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
    const std::string text = textOf(root.get());
    PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
    return text;
  };
  const std::string parts = geometry();
  axis->endDate = "nonsense";
  EXPECT_EQ(texts(), former);
  EXPECT_EQ(messages.size(), 1U);
  axis->endDate = axis->startDate.getValue();
  EXPECT_EQ(texts(), former);
  axis->endDate = "2-01-70";
  EXPECT_EQ(texts(), former);
  EXPECT_EQ(geometry(), parts);
}

TEST_F(TimeAxis, MappingsComeFromTheApplicationOrTheState) {
  auto* node = new PoDateFormatMapping;
  node->date2 = "3-01-70";
  root->insertChild(node, 0);
  traverse();
  const float* coords = nullptr;
  int num = axis->getMainGradCoords(coords);
  EXPECT_FLOAT_EQ(coords[num - 1], 0.5F);  // a day is half of two
  node->coord2 = 10;
  traverse();
  num = axis->getMainGradCoords(coords);
  EXPECT_FLOAT_EQ(coords[num - 1], 5);

  {
    PbDateFormatMapping own("1-01-70", "2-01-70", 100, 200, "dmy");
    axis->setDateFormatMapping(&own);
    EXPECT_EQ(axis->getDateFormatMapping(), &own);
    traverse();
    axis->getMainGradCoords(coords);
    EXPECT_FLOAT_EQ(coords[0], 100);
    own.setDateMapping("1-01-70", "2-01-70", 0, 50);
    traverse();
    num = axis->getMainGradCoords(coords);
    EXPECT_FLOAT_EQ(coords[num - 1], 50);

    NodePtr<PoTimeAxis> copied(static_cast<PoTimeAxis*>(axis->copy()));
    EXPECT_EQ(copied->getDateFormatMapping(), &own);
  }
  traverse();  // dead: the state's again
  num = axis->getMainGradCoords(coords);
  EXPECT_FLOAT_EQ(coords[num - 1], 5);
}

TEST_F(TimeAxis, RunsAlongYAndBackwards) {
  axis->type = PoTimeAxis::Y;
  axis->coord = 3;
  axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
  axis->gradVisibility = PoAxis::VISIBILITY_OFF;
  traverse();
  // From (3, 0) to (3, 1), ticks to the left, where texts stand.
  EXPECT_NEAR(box.getMax()[0], 3, 1e-5);
  EXPECT_NEAR(box.getMin()[0], 3 - 0.016, 1e-5);
  EXPECT_NEAR(box.getMin()[1], 0, 1e-5);
  EXPECT_NEAR(box.getMax()[1], 1, 1e-5);

  setDates("3-01-2004 00:00:00", "1-01-2004 00:00:00");
  axis->gradRep = "1 DAY D";
  axis->gradVisibility = PoAxis::VISIBILITY_ON;
  EXPECT_EQ(texts(), "3, 2, 1");
  const float* coords = nullptr;
  ASSERT_EQ(axis->getMainGradCoords(coords), 3);
  EXPECT_GT(coords[0], coords[2]);
}

TEST_F(TimeAxis, LongSpansStandWhereTheirDatesAre) {
  setDates("29-03-1958 00:00:00", "29-12-2001 00:00:00", 0, 15981);  // in days
  EXPECT_EQ(texts(), "1960, 1964, 1968, 1972, 1976, 1980, 1984, 1988, 1992, 1996, 2000");
  const float* coords = nullptr;
  ASSERT_EQ(axis->getMainGradCoords(coords), 11);
  EXPECT_NEAR(coords[0], 643, 1e-2);
  EXPECT_NEAR(coords[10], 15253, 1e-2);
  setDates("01-01-0001 00:00:00", "31-12-9999 23:59:59");
  EXPECT_EQ(texts(), "834, 1668, 2502, 3336, 4170, 5004, 5838, 6672, 7506, 8340, 9174");
}

// Seconds since 1970: nodes count from the start, answers don't.
TEST_F(TimeAxis, FarFromZeroNodesCountFromTheStart) {
  for (const auto type : {PoTimeAxis::X, PoTimeAxis::Y}) {
    setDates("1-01-2026 00:00:00", "4-01-2026 00:00:00", 1767225600, 1767225600 + 3 * 86400);
    axis->type = type;
    axis->gradVisibility = PoAxis::VISIBILITY_OFF;
    traverse();
    const auto* transform = static_cast<SoMatrixTransform*>(axis->getPart("transform", FALSE));
    EXPECT_EQ(transform->matrix.getValue()[3][type == PoTimeAxis::X ? 0 : 1], 1767225600.0F);
    const float* coords = nullptr;
    const int num = axis->getMainGradCoords(coords);
    ASSERT_GT(num, 1);
    EXPECT_EQ(coords[0], 1767225600.0F);
    EXPECT_NEAR(box.getMin()[type == PoTimeAxis::X ? 0 : 1], 1767225600.0F, 256);
  }
}

TEST_F(TimeAxis, TextAndBinaryFilesComeBack) {
  const SbString reps[] = {"8 HOU H 'it''s'", "1 DAY D"};
  axis->gradRep.setValues(0, 2, reps);
  axis->timesPeriod = "20 HOU";
  axis->language = PoTimeAxis::DEUTSCH;
  axis->type = PoTimeAxis::Y;
  axis->coord = 0.1F;
  axis->startDate = "31-12-69";
  const std::string former = texts();
  for (const auto& write : {&textOf, &binaryOf}) {
    const std::string written = write(root.get());
    const NodePtr<SoSeparator> read = sceneOf(written);
    ASSERT_TRUE(read);
    EXPECT_EQ(write(read.get()), written);
    auto* back = static_cast<PoTimeAxis*>(read->getChild(0));
    EXPECT_EQ(back->gradRep, axis->gradRep);
    EXPECT_EQ(back->language.getValue(), PoTimeAxis::DEUTSCH);
    SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(read.get());
    EXPECT_EQ(joined(textsOf(back->getPart("mainGradText", FALSE))), former);
  }
}

TEST_F(TimeAxis, ValuesThatAreNoneCountAsDefaults) {
  const std::string former = texts();
  axis->language = 7;
  axis->gradFit = -3;
  axis->type = 12;
  axis->coord = std::nanf("");
  EXPECT_EQ(texts(), former);
  EXPECT_TRUE(std::isfinite(box.getMin()[1]));
  axis->gradRep.setNum(0);
  EXPECT_EQ(texts(), former);
}

TEST(TimeAxisStructures, AreParsedCopiedAndFreed) {
  PoTimeAxis::Tdate_axis_rep rep, copy;
  int error = -1;
  PoTimeAxis::parseAxisRep("2 DAY 'on ' 3 D ', ' M | Y", '|', &rep, &error);
  EXPECT_EQ(error, 0);
  PoTimeAxis::copyDateRep(&rep, &copy);
  PoTimeAxis::freeDateAxisRep(&rep);
  EXPECT_EQ(rep.numLevel, 0);
  ASSERT_EQ(copy.numLevel, 2);
  EXPECT_EQ(copy.levels[0].step, PoTimeAxis::STEP_DAY);
  EXPECT_EQ(copy.levels[0].numStep, 2);
  EXPECT_STREQ(copy.levels[0].string, "on ");
  ASSERT_EQ(copy.levels[0].numElem, 2);
  EXPECT_EQ(copy.levels[0].elems[0].form, PoTimeAxis::FORM_DAY_NAME);
  EXPECT_EQ(copy.levels[0].elems[0].count, 3);
  EXPECT_STREQ(copy.levels[0].elems[0].text, ", ");
  EXPECT_EQ(copy.levels[0].elems[1].text, nullptr);
  EXPECT_EQ(copy.levels[1].step, PoTimeAxis::STEP_UNSET);
  EXPECT_EQ(copy.levels[1].string, nullptr);
  PoTimeAxis::freeDateAxisRep(&copy);

  PoTimeAxis::parseAxisRep("2 DAY 'on", '|', &rep, &error);
  EXPECT_NE(error, 0);
  EXPECT_EQ(rep.numLevel, 0);
  PoTimeAxis::parseAxisRep(nullptr, '|', &rep, &error);
  EXPECT_EQ(error, 0);
  PoTimeAxis::freeDateAxisRep(&rep);

  auto* reps = new PoTimeAxis::Tdate_axis_rep[2];
  PoTimeAxis::parseAxisRep("D 'a'", '|', &reps[0], &error);
  PoTimeAxis::parseAxisRep("D 'b'", '|', &reps[1], &error);
  PoTimeAxis::freeDateAxisRepList(2, reps);

  PoTimeAxis::Tdate_list list;
  PoTimeAxis::parseDateList("YEA -2 MON", &list, &error);
  EXPECT_EQ(error, 0);
  ASSERT_EQ(list.numDate, 2);
  EXPECT_EQ(list.dates[0].value, 1);
  EXPECT_EQ(list.dates[1].value, -2);
  EXPECT_EQ(list.dates[1].unit, PoTimeAxis::STEP_MONTH);
  PoTimeAxis::freeDateList(&list);
}
