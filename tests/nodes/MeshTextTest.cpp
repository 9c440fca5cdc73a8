#include <Inventor/SoInput.h>
#include <Ormelle/PoCartesianGrid2D.h>
#include <Ormelle/PoIndexedMesh2D.h>
#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoRegularCartesianGrid2D.h>
#include <Ormelle/PoTriangleMesh2D.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <locale>
#include <random>
#include <vector>

#include "MeshNodeKinds.h"
#include "nodes/field/PiNumberText.h"
#include "nodes/field/PiTextScanner.h"

namespace {

std::string textOf(float number) {
  char text[PiNumberText::kMaxLength];
  return std::string(text, PiNumberText::write(text, number));
}

float numberOf(const std::string& text) {
  float number = 0;
  const char* const end = text.data() + text.size();
  return PiNumberText::read(text.data(), end, number) == end ? number : 12345;
}

template <class Field>
bool isRead(const std::string& value) {
  PoOrmelle::init();
  Field field;
  return field.set(value.c_str());
}

// The values of a regular grid of 2 by 3 nodes, with two cells, whose data sets are told by the text.
std::string describe(const std::string& dataSets) {
  PoOrmelle::init();
  PoSFRegularCartesianGrid2D field;
  return field.set(("2 3 0 0 1 1 0 " + dataSets).c_str()) ? describeSets(field.getValue()) : "unreadable";
}

}  // namespace

TEST(NumberText, EveryFloatReadsBackFromTheFewestDigitsOfTwoChoices) {
  std::mt19937 random(3);
  for (int i = 0; i < 300000; ++i) {
    const float number = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (std::isnan(number)) continue;
    const std::string text = textOf(number);
    ASSERT_EQ(std::bit_cast<std::uint32_t>(numberOf(text)), std::bit_cast<std::uint32_t>(number)) << text;
    char eight[32], nine[32];
    std::snprintf(eight, sizeof(eight), "%.8g", static_cast<double>(number));
    std::snprintf(nine, sizeof(nine), "%.9g", static_cast<double>(number));
    ASSERT_EQ(text, std::strtof(eight, nullptr) == number ? eight : nine);
  }
  EXPECT_TRUE(std::isnan(numberOf(textOf(std::nanf("")))));
}

TEST(NumberText, ReadsWhatPeopleAndOtherProgramsWrite) {
  const float infinity = std::numeric_limits<float>::infinity();
  const std::pair<const char*, float> kTexts[] = {{"+1.5", 1.5F},
                                                  {".5", 0.5F},
                                                  {"1.", 1},
                                                  {"1E2", 100},
                                                  {"-0", -0.0F},
                                                  {"1e39", infinity},
                                                  {"1e400", infinity},
                                                  {"-1e400", -infinity},
                                                  {"1e-50", 0},
                                                  {"-1e-400", -0.0F},
                                                  {"inf", infinity},
                                                  {"-Infinity", -infinity},
                                                  {"0.1000000000000000055511151231257827", 0.1F}};
  for (const auto& [text, number] : kTexts)
    EXPECT_EQ(std::bit_cast<std::uint32_t>(numberOf(text)), std::bit_cast<std::uint32_t>(number)) << text;
  for (const char* text : {"", "+", "-", "+-1", ".", "e5", "1,5", "0x10", "abc"})
    EXPECT_EQ(numberOf(text), 12345) << text;
}

namespace {

// What the toolkit still has when a block of numbers or strings was read from the front of a text; "failed" if it
// wasn't read as expected.
std::string restOf(const std::string& text, const std::vector<float>& numbers) {
  SoInput in;
  in.setBuffer(text.data(), text.size());
  PiTextScanner scanner(in);
  std::vector<float> read;
  if (!scanner.read(numbers.size(), read) || read != numbers) return "failed";
  std::string rest;
  for (char c; in.get(c);) rest += c;
  return rest;
}
std::string restOf(const std::string& text, const std::vector<std::string>& strings) {
  SoInput in;
  in.setBuffer(text.data(), text.size());
  PiTextScanner scanner(in);
  PiStringList read;
  if (!scanner.read(strings.size(), read) || read.get<std::string>(strings.size()) != strings) return "failed";
  std::string rest;
  for (char c; in.get(c);) rest += c;
  return rest;
}

}  // namespace

// Blocks of any length near the places where the scanner changes its way of reading take exactly what is theirs, also
// if they are as short as they can be.
TEST(TextScanner, TakesNothingOfWhatComesBehindABlock) {
  PoOrmelle::init();
  std::mt19937 random(5);
  for (const std::size_t num : {1, 2, 511, 512, 513, 514, 515, 600, 2000, 33000, 66000, 100000})
    for (const bool isShortest : {true, false}) {
      std::string numberText, stringText, wordText;
      std::vector<float> numbers;
      std::vector<std::string> strings, words;
      for (std::size_t i = 0; i < num; ++i) {
        const bool isShort = isShortest || random() % 3 == 0;
        numbers.push_back(static_cast<float>(random() % (isShort ? 10 : 100000000)));
        numberText += (i == 0 ? "" : isShort ? " " : "\n  # 7 8\n\t") + textOf(numbers.back());
        strings.emplace_back(isShort ? "" : "a\" b");
        stringText += isShort ? "\"\"" : " \"a\\\" b\"";
        words.emplace_back(isShort ? "a" : "\\word");
        wordText += (i == 0 ? "" : " ") + words.back();
      }
      for (const std::string rest : {"~", "# comment\n~", "=~", "}~~~~~~~"}) {
        ASSERT_EQ(restOf(numberText + rest, numbers), rest) << num;
        ASSERT_EQ(restOf(stringText + rest, strings), rest) << num;
        ASSERT_EQ(restOf(wordText + "\n" + rest, words), "\n" + rest) << num;
      }
    }
}

TEST(MeshText, FifteenNumbersALine) {
  PoOrmelle::init();
  PoSFIrregularMesh1D field;
  std::vector<float> x(31, 1);
  const auto linesOf = [&](int num) {
    field.getMesh()->setGeometry(num, x.data());
    std::string lengths;
    const std::string text = fileOf(field, false);
    std::size_t begin = text.find("nodes\n") + 6;
    for (std::size_t end; text[begin + 2] == '1'; begin = end + 1) {
      end = text.find('\n', begin);
      lengths += std::to_string((end - begin - 2) / 2) + " ";
    }
    return lengths;
  };
  EXPECT_EQ(linesOf(1), "1 ");
  EXPECT_EQ(linesOf(15), "15 ");
  EXPECT_EQ(linesOf(16), "15 1 ");
  EXPECT_EQ(linesOf(31), "15 15 1 ");
}

TEST(MeshText, CommentsTellTheFormAndTheBindings) {
  const char* const kNew = "1 # number of string data-set\n 0 0 \"s\" a b c d e f";
  EXPECT_EQ(describe(kNew), "strings s; ");
  EXPECT_EQ(describe("1 \t #number of string data-set  \r\n 0 0 \"s\" a b c d e f"), "strings s; ");
  // Without just that comment the first count is that of scalars, and there are no string sets.
  EXPECT_EQ(describe("1 # number of scalar data-set\n 0 s 1 2 3 4 5 6"), "values s; ");
  EXPECT_EQ(describe("1 0 s 1 2 3 4 5 6"), "values s; ");
  EXPECT_EQ(describe("1\n# number of string data-set\n 0 s 1 2 3 4 5 6"), "values s; ");
  EXPECT_EQ(describe("0 # number of string data-set, more or less\n 1 v 1 2 3 1 2 3 1 2 3 1 2 3 1 2 3 1 2 3"),
            "vecs v; ");

  EXPECT_EQ(describe("2 0 # any per cell will do\n a 1 2\n# per node\n b 1 2 3 4 5 6"), "values/cell a; values b; ");
  EXPECT_EQ(describe("1 0 a # per cell\n 1 2 3 4 5 6"), "values a; ");
  EXPECT_EQ(describe("1 0 \"per cell\" 1 2 3 4 5 6"), "values per cell; ");
  EXPECT_EQ(describe("0 1\n# set of vectors, index 0, binding per cell\n v 1 2 3 4 5 6"), "vecs/cell v; ");
}

TEST(MeshText, CommentsAndBlanksMayStandAnywhere) {
  const NodePtr<PoMeshProperty> node = meshNodeKind("PoIndexedMesh2D").make();
  std::string text = fileOf(fieldOf(*node), false).substr(kTextHeader.size()), odd;
  bool isComment = false;
  for (const char c : text) {
    isComment = c == '#' || (isComment && c != '\n');
    odd += c;
    if (!isComment && c == ' ') odd += "# 17 \"x\" {\r\n\t\v";
  }
  const NodePtr<PoMeshProperty> other(static_cast<PoMeshProperty*>(node->getTypeId().createInstance()));
  ASSERT_TRUE(fieldOf(*other).set(odd.c_str()));
  EXPECT_TRUE(fieldOf(*other).isSame(fieldOf(*node)));
}

// What a string keeps in text, and the one thing that is changed.
TEST(MeshText, StringsOfAnyKind) {
  PoOrmelle::init();
  const SbString strings[] = {"plain", "a b",    "\"", "\\", "\\\\",   "\\\"", "\"\\",
                              "x\ny",  "x\\\ny", "\r", "#",  "a\"\nb", ""};
  constexpr int kNum = static_cast<int>(std::size(strings));
  PoSFIrregularMesh1D field, again;
  const std::vector<float> x(kNum);
  field.getMesh()->setGeometry(kNum, x.data());
  for (int i = 0; i < kNum; ++i) field.getMesh()->addStringsSet(i, strings, strings[i]);
  ASSERT_TRUE(readFile(again, fileOf(field, false)));
  for (int i = 0; i < kNum; ++i) {
    const SbString expected = strings[i] == "a\"\nb" ? "a\" \nb" : strings[i];
    EXPECT_EQ(again.getValue().getStringsSet(3)[i], expected);
    EXPECT_EQ(*again.getValue().getStringsSetName(i), expected);
  }
  // Binary keeps all, also what is longer than the toolkit reads.
  const SbString longName = std::string(100000, 'x').c_str();
  field.getMesh()->addStringsSet(0, strings, longName);
  ASSERT_TRUE(readFile(again, fileOf(field, true)));
  EXPECT_TRUE(again.isSame(field));
}

TEST(MeshText, NonsenseIsRefusedAndTakesNoMemory) {
  rusage before, after;
  getrusage(RUSAGE_SELF, &before);
  for (const char* value : {"",
                            "2",
                            "2 -3",
                            "-2 -3 1 2 3 4 5 6",
                            "2147483647 2147483647",
                            "65536 65536",
                            "2147483647 1",
                            "1 2147483647 1 2 3",
                            "3.5 2 1 2 3",
                            "2 x",
                            "1 1 1.2.3 0 0",
                            "1 1 1 2 2 0",
                            "1 1 1 2 -1 0 0 0",
                            "1 1 1 2 1",
                            "99999999999 1",
                            "1 1 0 0 0 -1 0",
                            "1 1 0 0 0 0 -1",
                            "1 1 0 0 0 2147483647 0 a 1 b 2",
                            "1 1 0 0 0 1 0 \"a 1",
                            "1 1 0 0 0 1 0 {",
                            "1 1 0 0 0 1 # number of string data-set\n 2147483647 2147483647",
                            "#",
                            "# 1 1",
                            "\"1\" 1",
                            "~",
                            "1 1, 0 0 0 0 0"})
    EXPECT_FALSE(isRead<PoSFCartesianGrid2D>(value)) << value;
  EXPECT_TRUE(isRead<PoSFCartesianGrid2D>("1 1 7 8 0 0 0"));

  const std::string nodes2D = "4 0 1 1 0 0 0 1 1 0 ", nodes3D = "4 0 1 1 0 0 0 1 1 0 0 0 1 ", none = " 0 0";
  for (const char* cells : {"-1", "2147483647", "2147483647 3 3 3", "1 5 0 1 2 3 0", "1 2 0 1", "1 0", "1 -3",
                            "1 3 0 1 4", "1 3 0 1 -1", "1 2147483647 0 1 2", "2 3 4 0 1 2 3 0"})
    EXPECT_FALSE(isRead<PoSFIndexedMesh2D>(nodes2D + cells + none)) << cells;
  EXPECT_TRUE(isRead<PoSFIndexedMesh2D>(nodes2D + "2 3 4 0 1 2 3 0 1 2" + none));
  for (const char* cells : {"1 3 0 1 2", "1 7 0 1 2 3 0 1 2", "1 9 0 1 2 3 0 1 2 3 0"})
    EXPECT_FALSE(isRead<PoSFIndexedMesh3D>(nodes3D + cells + none)) << cells;
  for (const char* cells : {"2147483647 0 1 2", "1 0 1 4", "1 0 1 -2147483648"})
    EXPECT_FALSE(isRead<PoSFTriangleMesh2D>(nodes2D + cells + none)) << cells;

  // The same counts in binary, where the largest promises the most.
  PoSFIndexedMesh2D field;
  const std::string empty = fileOf(field, true);
  for (std::size_t word = empty.find('\n') + 1; word < empty.size(); word += 4)
    for (const char* count : {"\x7F\xFF\xFF\xFF", "\xFF\xFF\xFF\xFF", "\x80\0\0\0"})
      EXPECT_FALSE(readFile(field, std::string(empty).replace(word, 4, count, 4) + std::string(64, '\0'))) << word;
  getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 32 * 1024);
}

namespace {

// Writes numbers as much of the world does.
struct CommaFacet : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

}  // namespace

TEST(MeshText, TheLocaleDoesNotMatter) {
  const NodePtr<PoMeshProperty> node = meshNodeKind("PoCartesianGrid2D").make();
  addSets(*node);
  const std::string file = fileOf(fieldOf(*node), false);
  std::locale::global(std::locale(std::locale(), new CommaFacet));
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "C.UTF-8"})
    if (std::setlocale(LC_ALL, name)) break;
  EXPECT_EQ(fileOf(fieldOf(*node), false), file);
  const NodePtr<PoMeshProperty> other(static_cast<PoMeshProperty*>(node->getTypeId().createInstance()));
  ASSERT_TRUE(readFile(fieldOf(*other), file));
  EXPECT_TRUE(fieldOf(*other).isSame(fieldOf(*node)));
  std::setlocale(LC_ALL, "C");
  std::locale::global(std::locale::classic());
}
