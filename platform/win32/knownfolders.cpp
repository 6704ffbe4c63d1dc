#include "platform/knownfolders.h"

#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {

std::u16string systemKnownFolder(KnownFolder folder) {
  wchar_t path[MAX_PATH] = L"";
  const HRESULT result =
      SHGetFolderPathW(nullptr, static_cast<int>(folder), nullptr, SHGFP_TYPE_CURRENT, path);
  return result == S_OK ? fromWide(path) : std::u16string();
}

}  // namespace platform
