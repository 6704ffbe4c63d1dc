#pragma once

// The small window of a run without a user interface: two lines of text and a progress bar.
// On Linux it is never made, and all operations do nothing.
// The window belongs to the thread that made it; all calls come from there.

#include <cstdint>
#include <string_view>

namespace platform {

class ProgressWindow {
 public:
  ProgressWindow() = default;
  ~ProgressWindow() { destroy(); }
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  /// Shows the window in the middle of the screen, titled with the executable's file name.
  /// False if the system has no windows.
  bool create();
  bool exists() const { return state_ != nullptr; }
  void destroy();

  void setCommandText(std::u16string_view text);
  void setActionText(std::u16string_view text);
  /// Percent from 0 to 100; the bar clips.
  void setPercent(int percent);

  /// Takes one message of the window, and waits until there is one. A message that closes the
  /// window ends the process. Nothing is dispatched.
  void pump();

 private:
  struct State;
  State* state_ = nullptr;  // owned; null without a window
};

/// What one message means for the process, see ProgressWindow::pump. Apart from the window so
/// that its table can be tested: result is that of the system's message call.
enum class WindowMessage { goOn, endProcess, askToEnd };
WindowMessage judgeWindowMessage(int result, unsigned message, std::uintptr_t wParam);

/// Acts on the judgement: ends the process with the result, or asks and ends it with 0 on "yes".
void obeyWindowMessage(int result, unsigned message, std::uintptr_t wParam);

}  // namespace platform
