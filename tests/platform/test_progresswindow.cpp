#include "platform/progresswindow.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/hooks.h"
#include "platform/messagebox.h"
#include "platform/process.h"

namespace {

using platform::judgeWindowMessage;
using platform::WindowMessage;

struct WindowEnded {
  int status;
};

std::u16string question;
int answer = 0;

int answerQuestion(const std::u16string& title, const std::u16string& text, unsigned style) {
  question = title + u"|" + text + u"|";
  question += style == 68 ? u"68" : u"other style";
  return answer;
}

/// The status with which a message ends the process, or -100 if it goes on.
int obey(int result, unsigned message, std::uintptr_t wParam, int boxAnswer = 0) {
  constexpr int wentOn = -100;
  platform::HookGuard end(platform::endProcessHook, [](int status) { throw WindowEnded{status}; });
  platform::HookGuard box(platform::messageBoxHook, answerQuestion);
  answer = boxAnswer;
  question.clear();
  try {
    platform::obeyWindowMessage(result, message, wParam);
  } catch (const WindowEnded& ended) {
    return ended.status;
  }
  return wentOn;
}

TEST(ProgressWindow, MessagesAreJudgedByTable) {
  const struct {
    int result;
    unsigned message;
    std::uintptr_t wParam;
    WindowMessage meaning;
  } rows[] = {
      {0, 0, 0, WindowMessage::endProcess},    {-1, 0, 0, WindowMessage::endProcess},
      {0, 161, 20, WindowMessage::endProcess}, {1, 2, 0, WindowMessage::endProcess},
      {1, 16, 0, WindowMessage::endProcess},   {1, 18, 0, WindowMessage::endProcess},
      {1, 130, 0, WindowMessage::endProcess},  {1, 161, 20, WindowMessage::askToEnd},
      {1, 161, 2, WindowMessage::goOn},        {1, 161, 21, WindowMessage::goOn},
      {1, 0, 20, WindowMessage::goOn},         {1, 15, 0, WindowMessage::goOn},
      {1, 17, 0, WindowMessage::goOn},         {1, 129, 0, WindowMessage::goOn},
      {1, 162, 20, WindowMessage::goOn},       {-2, 15, 0, WindowMessage::goOn},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(judgeWindowMessage(row.result, row.message, row.wParam), row.meaning)
        << row.result << " " << row.message << " " << row.wParam;
  }
}

TEST(ProgressWindow, ProcessEndsWithTheResultOfTheMessageCall) {
  EXPECT_EQ(obey(0, 0, 0), 0);
  EXPECT_EQ(obey(-1, 0, 0), -1);
  EXPECT_EQ(obey(1, 16, 0), 1);
  EXPECT_EQ(obey(1, 15, 0), -100);
  EXPECT_EQ(question, u"");
}

TEST(ProgressWindow, ClickOnTheCloseBoxAsks) {
  EXPECT_EQ(obey(1, 161, 20, platform::answerYes), 0);
  EXPECT_EQ(question, u"Exiting...|Are sure sure you want to exit?|68");
  EXPECT_EQ(obey(1, 161, 20, platform::answerNo), -100);
  EXPECT_EQ(obey(1, 161, 20, platform::answerOk), -100);
}

TEST(ProgressWindow, IsNotThereWithoutADisplay) {
  platform::ProgressWindow window;
  EXPECT_FALSE(window.create());
  EXPECT_FALSE(window.exists());
  window.setCommandText(u"command");
  window.setActionText(u"action");
  window.setPercent(50);
  window.pump();  // would wait for ever if there were a window
  window.destroy();
  EXPECT_FALSE(window.exists());
}

}  // namespace
