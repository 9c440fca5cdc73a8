#include "graph/frame/PiMemory.h"

#include <Inventor/SoDB.h>
#include <Inventor/errors/SoMemoryError.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

int s_failures;  // requests that fail from now on
bool s_canMakeSpace;
std::vector<std::size_t> s_asked;
std::vector<std::string> s_reports;

/// A source whose first requests fail.
class PiMemoryTest : public ::testing::Test {
 protected:
  PiMemoryTest() {
    s_failures = 0;
    s_canMakeSpace = false;
    s_asked.clear();
    s_reports.clear();
    PiMemory::Source source;
    source.allocate = [](std::size_t size) { return s_failures-- > 0 ? nullptr : std::malloc(size); };
    source.reallocate = [](void* memory, std::size_t size) {
      return s_failures-- > 0 ? nullptr : std::realloc(memory, size);
    };
    source.getMemorySpace = [](std::size_t size) {
      s_asked.push_back(size);
      return s_canMakeSpace;
    };
    source.post = [](const char* text) { s_reports.push_back(text); };
    m_previous = PiMemory::setSource(source);
  }
  ~PiMemoryTest() override { PiMemory::setSource(m_previous); }

  PiMemory::Source m_previous;
};

using Reports = std::vector<std::string>;

TEST_F(PiMemoryTest, TriesOnceMoreIfSpaceWasMade) {
  s_failures = 1;
  s_canMakeSpace = true;
  void* memory = PiMemory::allocate(100);
  EXPECT_NE(memory, nullptr);
  EXPECT_EQ(s_asked, (std::vector<std::size_t>{100}));
  EXPECT_TRUE(s_reports.empty());
  PiMemory::free(memory);
  PiMemory::free(nullptr);
}

TEST_F(PiMemoryTest, ReportsWhatFailedAndWhere) {
  s_failures = 1;
  EXPECT_EQ(PiMemory::allocate(10), nullptr);
  EXPECT_EQ(s_failures, 0);  // no second try without space
  s_failures = 2;
  s_canMakeSpace = true;
  EXPECT_EQ(PiMemory::allocate("file.cpp", 12, 10), nullptr);
  char* memory = static_cast<char*>(PiMemory::allocate(2));
  memory[1] = 'x';
  s_failures = 4;
  EXPECT_EQ(PiMemory::reallocate(nullptr, 0, memory, 20), nullptr);
  EXPECT_EQ(PiMemory::reallocate("file.cpp", 13, memory, 20), nullptr);
  EXPECT_EQ(memory[1], 'x');
  PiMemory::free("file.cpp", 14, memory);
  EXPECT_EQ(s_reports, (Reports{"Memory allocation error\n", "Memory allocation error at: file.cpp:12\n",
                                "Memory re-allocation error\n", "Memory re-allocation error at: file.cpp:13\n"}));
}

TEST_F(PiMemoryTest, CutsAReportThatIsTooLong) {
  s_failures = 1;
  EXPECT_EQ(PiMemory::allocate(std::string(2000, 'f').c_str(), 1, 10), nullptr);
  EXPECT_EQ(s_reports[0].size(), 511u);
}

TEST_F(PiMemoryTest, ReportsOnlyOnceIfReportingFailsToo) {
  PiMemory::Source source = PiMemory::setSource(PiMemory::defaultSource());
  source.post = [](const char* text) {
    s_reports.push_back(text);
    s_failures = 1;
    EXPECT_EQ(PiMemory::allocate(1), nullptr);
  };
  PiMemory::setSource(source);
  s_failures = 1;
  EXPECT_EQ(PiMemory::allocate(1), nullptr);
  s_failures = 1;
  EXPECT_EQ(PiMemory::allocate(1), nullptr);
  EXPECT_EQ(s_reports.size(), 2u);
}

TEST_F(PiMemoryTest, TheToolkitsHandlerGetsTheText) {
  SoDB::init();
  SoMemoryError::setHandlerCallback(
      [](const SoError* error, void*) {
        if (error->isOfType(SoMemoryError::getClassTypeId())) s_reports.push_back(error->getDebugString().getString());
      },
      nullptr);
  PiMemory::Source source = PiMemory::defaultSource();
  source.allocate = [](std::size_t) -> void* { return nullptr; };
  PiMemory::setSource(source);
  EXPECT_EQ(PiMemory::allocate(0), nullptr);
  EXPECT_EQ(s_reports, Reports{"Memory allocation error\n"});
}

}  // namespace
