// The executable on a display: its message box, the progress window of a run without a user
// interface, and the question whether to end that a click on its close box asks.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <thread>

#include "platform/progresswindow.h"
#include "platform/win32/win32gate.h"
#include "tests/blackbox/bareprogram.h"
#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/win32/screenshot.h"
#include "tests/tempfolder.h"

namespace {

constexpr const wchar_t* kWindowClass = L"msctls_progress32";
constexpr const wchar_t* kBoxClass = L"#32770";
constexpr UINT kFrameButton = 161;
constexpr WPARAM kCloseBox = 20;

// Null when there is none after so long.
HWND waitForWindow(const wchar_t* windowClass, const wchar_t* title) {
  for (int i = 0; i < 6000; ++i) {
    const HWND window = FindWindowW(windowClass, title);
    if (window != nullptr && IsWindowVisible(window)) return window;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return nullptr;
}

tests::Area placeOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
          static_cast<int>(place.bottom)};
}

// A window is drawn some time after it is there.
tests::Screenshot shotOf(HWND window, const std::string& name, int colours) {
  for (int i = 0; i < 10; ++i) {
    const tests::Screenshot shot(name);
    if (shot.width() == 0 || shot.countColours(placeOf(window)) >= colours) return shot;
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
  }
  return tests::Screenshot(name);
}

std::string textOf(HWND window) {
  wchar_t text[500] = {};
  SendMessageTimeoutW(window, WM_GETTEXT, 500, reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 5000,
                      nullptr);
  std::string narrow;
  for (const wchar_t* unit = text; *unit != 0; ++unit) narrow += static_cast<char>(*unit);
  return narrow;
}

// The text of a message box.
std::string questionOf(HWND box) {
  constexpr int textControl = 0xFFFF;
  return textOf(GetDlgItem(box, textControl));
}

void press(HWND box, int button) {
  PostMessageW(GetDlgItem(box, button), BM_CLICK, 0, 0);
  for (int i = 0; i < 1000 && IsWindow(box); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_FALSE(IsWindow(box));
}

tests::Child onDisplay(tests::Child child) {
  const char* const display = std::getenv("DISPLAY");
  child.environment.push_back({"DISPLAY", display != nullptr ? display : ""});
  child.seconds = 120;
  return child;
}

TEST(Display, AnErrorIsShownInABox) {
  tests::BareProgram bare("lonely");  // which has no library to start with
  auto run = std::async(std::launch::async, [&] {
    return tests::runChild(onDisplay({bare.program(), {}, {}, bare.folder()}));
  });
  const HWND box = waitForWindow(kBoxClass, L"lonely.exe");
  ASSERT_NE(box, nullptr);
  const tests::Screenshot shot = shotOf(box, "error", 3);
  EXPECT_EQ(shot.width(), 1024);
  EXPECT_GE(shot.countColours(placeOf(box)), 3) << "frame, ground and letters";
  EXPECT_TRUE(questionOf(box).starts_with("ERROR:\n")) << questionOf(box);
  press(box, IDOK);
  const tests::ChildResult result = run.get();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "") << "what a box shows is not written as well";
}

// A run with a window, whose close box is clicked as soon as it is there.
class ClosingQuestion : public testing::Test {
 protected:
  ClosingQuestion() {
    std::ofstream points(folder_.file("in.xyz"), std::ios::binary);
    constexpr int longEnough = 600000;  // for the window to be seen on a busy machine
    for (int i = 0; i < longEnough; ++i) points << i << " 1 2\n";
    points.close();
    run_ = std::async(std::launch::async, [this] {
      return tests::runChild(
          onDisplay({tests::cowlProgram(),
                     {"-input", "in.xyz", "-output", "out.xyz", "-progress", "on"},
                     {},
                     folder_.path()}));
    });
  }

  // The box, or null.
  HWND ask() {
    window_ = waitForWindow(kWindowClass, L"cowl.exe");
    if (window_ == nullptr) return nullptr;
    PostMessageW(window_, kFrameButton, kCloseBox, 0);
    return waitForWindow(kBoxClass, L"Exiting...");
  }

  tests::TempFolder folder_;
  std::future<tests::ChildResult> run_;
  HWND window_ = nullptr;
};

TEST_F(ClosingQuestion, YesEndsTheProcessOnTheSpot) {
  const HWND box = ask();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(questionOf(box), "Are sure sure you want to exit?");
  const tests::Screenshot shot = shotOf(box, "question", 3);
  EXPECT_EQ(shot.width(), 1024);
  EXPECT_GE(shot.countColours(placeOf(box)), 3);
  press(box, IDYES);
  EXPECT_EQ(run_.get().exitCode, 0) << "and not 1, that of a run that came to its end";
  EXPECT_FALSE(std::filesystem::exists(folder_.file("out.xyz")));
}

// Each step of the run takes one message of the window and waits for it; a person moves the mouse.
TEST_F(ClosingQuestion, NoLetsTheRunGoOnToItsEnd) {
  const HWND box = ask();
  ASSERT_NE(box, nullptr);
  press(box, IDNO);
  while (run_.wait_for(std::chrono::milliseconds(10)) != std::future_status::ready) {
    PostMessageW(window_, WM_MOUSEMOVE, 0, 0);
  }
  EXPECT_EQ(run_.get().exitCode, 1);
  EXPECT_TRUE(std::filesystem::exists(folder_.file("out.xyz")));
}

// Halfway down a control, at a part of its width.
std::uint32_t colourIn(const tests::Screenshot& shot, const tests::Area& place, int percent) {
  return shot.colourAt(place.left + (place.right - place.left) * percent / 100,
                       (place.top + place.bottom) / 2);
}

TEST(Display, TheProgressWindowShowsWhatIsDoneAndHowFarItIs) {
  platform::ProgressWindow progress;
  ASSERT_TRUE(progress.create());
  const HWND window = waitForWindow(kWindowClass, L"test_blackbox_display.exe");
  ASSERT_NE(window, nullptr);
  for (int percent = 0; percent <= 60; ++percent) {
    PostMessageW(window, WM_MOUSEMOVE, 0, 0);
    progress.pump();
    progress.setCommandText(u"Saving terrain.xyz");
    progress.setActionText(u"Writing points");
    progress.setPercent(percent);
  }
  const tests::Area place = placeOf(window);
  EXPECT_EQ(place.left, (1024 - 600) / 2);
  EXPECT_EQ(place.top, (768 - 130) / 2);
  EXPECT_EQ(place.right - place.left, 600);
  EXPECT_EQ(place.bottom - place.top, 130);
  const tests::Screenshot shot = shotOf(window, "window", 4);
  const HWND bar = FindWindowExW(window, nullptr, kWindowClass, nullptr);
  ASSERT_NE(bar, nullptr);
  const tests::Area barPlace = placeOf(bar);
  EXPECT_EQ(colourIn(shot, barPlace, 10), colourIn(shot, barPlace, 55));
  EXPECT_NE(colourIn(shot, barPlace, 10), colourIn(shot, barPlace, 65));
  EXPECT_EQ(colourIn(shot, barPlace, 65), colourIn(shot, barPlace, 95));
  HWND text = nullptr;
  for (const char* expected : {"Saving terrain.xyz", "Writing points"}) {
    text = FindWindowExW(window, text, L"Static", nullptr);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(textOf(text), expected);
    EXPECT_GE(shot.countColours(placeOf(text)), 2) << "ground and letters";
  }
}

}  // namespace
