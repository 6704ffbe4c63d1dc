#include "platform/messagebox.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/hooks.h"

namespace {

std::u16string shownTitle;
std::u16string shownText;
unsigned shownStyle = 0;

int answerYes(const std::u16string& title, const std::u16string& text, unsigned style) {
  shownTitle = title;
  shownText = text;
  shownStyle = style;
  return platform::answerYes;
}

struct Shown {
  int answer;
  std::string errors;
};

// The tests run without a display.
Shown show(const std::u16string& text, unsigned style) {
  testing::internal::CaptureStderr();
  const int answer = platform::messageBox(u"title", text, style);
  return {answer, testing::internal::GetCapturedStderr()};
}

TEST(MessageBox, HookGetsAllAndAnswers) {
  platform::HookGuard guard(platform::messageBoxHook, answerYes);
  EXPECT_EQ(platform::messageBox(u"Exiting...", u"Sure?", 68), platform::answerYes);
  EXPECT_EQ(shownTitle, u"Exiting...");
  EXPECT_EQ(shownText, u"Sure?");
  EXPECT_EQ(shownStyle, 68u);
}

TEST(MessageBox, WithoutADisplayTheTextGoesToStandardErrorWithoutItsTitle) {
  const Shown shown = show(u"ERROR:\nFatal error: %s", platform::boxErrorIcon);
  EXPECT_EQ(shown.answer, platform::answerOk);
  EXPECT_EQ(shown.errors, "ERROR:\nFatal error: %s\n");
}

TEST(MessageBox, WithoutADisplayAQuestionIsAnsweredNo) {
  const Shown shown = show(u"Sure?", 68);
  EXPECT_EQ(shown.answer, platform::answerNo);
  EXPECT_EQ(shown.errors, "Sure?\n");
}

TEST(MessageBox, TextOnStandardErrorIsValidUtf8) {
  EXPECT_EQ(show({u'\u00E9', 0xD83D, 0xDE00, 0xD800}, 0).errors,
            "\xC3\xA9\xF0\x9F\x98\x80\xEF\xBF\xBD\n");
}

}  // namespace
