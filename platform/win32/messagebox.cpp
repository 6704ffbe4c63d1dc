#include "platform/messagebox.h"

#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {

int showSystemBox(const std::u16string& title, const std::u16string& text, unsigned style) {
  return MessageBoxW(nullptr, toWide(text).c_str(), toWide(title).c_str(), style);
}

}  // namespace platform
