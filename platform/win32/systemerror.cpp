#include "platform/systemerror.h"

#include <iterator>

#include "platform/win32/win32gate.h"

namespace platform {

void clearSystemError() { SetLastError(ERROR_SUCCESS); }

std::u16string systemErrorText() {
  const DWORD number = GetLastError();
  if (number == ERROR_SUCCESS) return {};
  wchar_t text[512] = L"";
  const DWORD units =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, number, 0,
                     text, static_cast<DWORD>(std::size(text)), nullptr);
  std::u16string words = fromWide({text, units});
  // A sentence with its line end becomes a part of the caller's sentence.
  words.erase(words.find_last_not_of(u" .\r\n") + 1);
  return words;
}

}  // namespace platform
