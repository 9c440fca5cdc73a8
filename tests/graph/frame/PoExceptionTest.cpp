#include "graph/frame/PoException.h"

#include <Inventor/SbString.h>
#include <gtest/gtest.h>

namespace {

int s_alive;

class Counted : public PoException {
 public:
  Counted() { ++s_alive; }
  ~Counted() override { --s_alive; }
};

TEST(PoException, AnswersForItsNameAndItsParents) {
  EXPECT_TRUE(ElementNotFound().isOfType("ElementNotFound"));
  EXPECT_TRUE(ElementNotFound().isOfType("PoException"));
  EXPECT_FALSE(ElementNotFound().isOfType("Other"));
  EXPECT_FALSE(PoException().isOfType("ElementNotFound"));
}

TEST(PoException, ABlockThatRunsThroughPopsItsFrame) {
  PoException::Frame outer;
  PoException::push(outer);
  PoException::push();
  EXPECT_NE(&PoException::getTopBuffer(), &outer.buffer);
  PoException::endBlock(0);
  EXPECT_EQ(&PoException::getTopBuffer(), &outer.buffer);
  PoException::endBlock(0);
  PoException::pop();
}

// An inner block handles one exception and lets it go on; in the outer one another takes its place.
TEST(PoException, GoesFromBlockToBlockAndIsFreed) {
  static int s_handled;
  s_handled = 0;
  PoException::Frame outer;
  PoException::push(outer);
  if (setjmp(PoException::getTopBuffer()) == 0) {
    PoException::push();
    if (setjmp(PoException::getTopBuffer()) == 0) {
      PoException::raise(new Counted);
    } else {
      PoException::pop();
      s_handled += 1;
      PoException::raiseAgain();
    }
  } else {
    PoException::pop();
    s_handled += 10;
    EXPECT_EQ(s_alive, 1);
    PoException::Frame last;
    PoException::push(last);
    if (setjmp(PoException::getTopBuffer()) == 0) {
      PoException::raise(new Counted);
    } else {
      PoException::pop();
      EXPECT_EQ(s_alive, 1);
      PoException::endBlock(1);
    }
  }
  EXPECT_EQ(s_handled, 11);
  EXPECT_EQ(s_alive, 0);
  EXPECT_EQ(PoException::getInFlight(), nullptr);
}

TEST(PoExceptionDeathTest, EndsTheProgramWithoutABlock) {
  EXPECT_EXIT(PoException::raise(new ElementNotFound), ::testing::ExitedWithCode(255), "");
  EXPECT_EXIT(PoException::raiseAgain(), ::testing::ExitedWithCode(255), "");
}

}  // namespace
