#include "platform/messagebox.h"

#include "platform/streams.h"
#include "platform/systempart.h"
#include "platform/text.h"

namespace platform {
namespace {

int answerWithoutBox(const std::u16string& text, unsigned style) {
  constexpr unsigned buttonBits = 0xF;
  writeStandardError(toUtf8Lossy(text) + "\n");
  return (style & buttonBits) == boxYesNo ? answerNo : answerOk;
}

}  // namespace

int (*messageBoxHook)(const std::u16string&, const std::u16string&, unsigned) = nullptr;

int messageBox(const std::u16string& title, const std::u16string& text, unsigned style) {
  if (messageBoxHook != nullptr) return messageBoxHook(title, text, style);
  const int answer = showSystemBox(title, text, style);
  return answer > 0 ? answer : answerWithoutBox(text, style);
}

}  // namespace platform
