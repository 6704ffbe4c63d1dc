#include "headless/kelactionstack.h"

#include <gtest/gtest.h>

namespace {

class ActionStack : public testing::Test {
 protected:
  void push(const int& id, const char* text) { stack_.push(&id, OroString(text)); }

  KelActionStack stack_;
  int a_ = 0;
  int b_ = 0;
  int unknown_ = 0;
};

TEST_F(ActionStack, ShowsTheNewestText) {
  EXPECT_TRUE(stack_.isEmpty());
  EXPECT_TRUE(stack_.top().isEmpty());
  push(a_, "first");
  push(b_, "second");
  EXPECT_TRUE(stack_.top() == "second");
  EXPECT_FALSE(stack_.isEmpty());
}

TEST_F(ActionStack, TakesTheNewestEntryOfAnIdAndClosesTheGap) {
  push(a_, "a1");
  push(b_, "b");
  push(a_, "a2");
  push(b_, "b2");
  EXPECT_TRUE(stack_.take(&a_) == "a2");
  EXPECT_TRUE(stack_.top() == "b2");
  EXPECT_TRUE(stack_.take(&b_) == "b2");
  EXPECT_TRUE(stack_.take(&b_) == "b");
  EXPECT_TRUE(stack_.take(&a_) == "a1");
  EXPECT_TRUE(stack_.isEmpty());
}

TEST_F(ActionStack, TakingAnUnknownIdGivesEmptyTextAndChangesNothing) {
  push(a_, "a");
  EXPECT_TRUE(stack_.take(&unknown_).isEmpty());
  EXPECT_TRUE(stack_.top() == "a");
}

TEST_F(ActionStack, ReplacesTheNewestTextOfAnId) {
  push(a_, "a1");
  push(a_, "a2");
  push(b_, "b");
  stack_.replace(&a_, OroString("new"));
  EXPECT_TRUE(stack_.take(&a_) == "new");
  EXPECT_TRUE(stack_.take(&a_) == "a1");
}

TEST_F(ActionStack, ReplacingAnUnknownIdOrTheTopOfNothingChangesNothing) {
  stack_.replaceTop(OroString("x"));
  EXPECT_TRUE(stack_.isEmpty());
  push(a_, "a");
  stack_.replace(&unknown_, OroString("x"));
  EXPECT_TRUE(stack_.top() == "a");
  stack_.replaceTop(OroString("top"));
  EXPECT_TRUE(stack_.take(&a_) == "top");
}

TEST_F(ActionStack, NullIsAnIdLikeAnyOther) {
  stack_.push(nullptr, OroString("none"));
  push(a_, "a");
  EXPECT_TRUE(stack_.take(nullptr) == "none");
}

}  // namespace
