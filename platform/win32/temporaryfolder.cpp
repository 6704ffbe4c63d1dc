#include "platform/temporaryfolder.h"

#include "platform/win32/win32gate.h"

namespace platform {

std::u16string temporaryFolder() {
  wchar_t path[MAX_PATH + 1];
  DWORD length = GetTempPathW(MAX_PATH + 1, path);
  if (length == 0 || length > MAX_PATH) return u".";
  while (length > 1 && path[length - 1] == L'\\') --length;
  return fromWide({path, length});
}

void nameTemporaryFolder() {}  // each session has both

}  // namespace platform
