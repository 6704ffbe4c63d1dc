#include "platform/progresswindow.h"

#include "platform/messagebox.h"
#include "platform/process.h"

namespace platform {
namespace {

// Numbers of the messages that end a window, and of a click on its close box.
constexpr unsigned destroyMessage = 2;
constexpr unsigned closeMessage = 16;
constexpr unsigned quitMessage = 18;
constexpr unsigned frameDestroyMessage = 130;
constexpr unsigned frameButtonMessage = 161;
constexpr std::uintptr_t closeBox = 20;

}  // namespace

WindowMessage judgeWindowMessage(int result, unsigned message, std::uintptr_t wParam) {
  if (result == 0 || result == -1) return WindowMessage::endProcess;
  switch (message) {
    case destroyMessage:
    case closeMessage:
    case quitMessage:
    case frameDestroyMessage:
      return WindowMessage::endProcess;
    case frameButtonMessage:
      return wParam == closeBox ? WindowMessage::askToEnd : WindowMessage::goOn;
    default:
      return WindowMessage::goOn;
  }
}

void obeyWindowMessage(int result, unsigned message, std::uintptr_t wParam) {
  switch (judgeWindowMessage(result, message, wParam)) {
    case WindowMessage::goOn:
      return;
    case WindowMessage::endProcess:
      endProcess(result);
    case WindowMessage::askToEnd:
      // People know the question as it is written here.
      if (messageBox(u"Exiting...", u"Are sure sure you want to exit?",
                     boxYesNo | boxInformationIcon) == answerYes) {
        endProcess(0);
      }
  }
}

}  // namespace platform
