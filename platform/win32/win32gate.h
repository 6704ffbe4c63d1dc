#pragma once

// The only header that includes the system's own headers on Windows; only the sources of this
// folder and their tests include it. Also turns text from char16_t to wchar_t and back, which
// are one size here.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef UNICODE
#define UNICODE
#endif
// Before windows.h, which has an older one of its own.
#include <winsock2.h>

#include <windows.h>

#include <iphlpapi.h>

#include <commctrl.h>
#include <fcntl.h>
#include <icmpapi.h>
#include <io.h>
#include <malloc.h>
#include <psapi.h>
#include <share.h>
#include <shellapi.h>
#include <shlobj.h>
#include <sys/stat.h>

#include <string>
#include <string_view>

namespace platform {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

/// A terminated copy in the system's type.
inline std::wstring toWide(std::u16string_view text) { return {text.begin(), text.end()}; }

/// A path in the system's type; empty, which names nothing, if a unit 0 would cut it.
inline std::wstring toWidePath(std::u16string_view path) {
  if (path.find(u'\0') != path.npos) return {};
  return toWide(path);
}

inline std::u16string fromWide(std::wstring_view text) { return {text.begin(), text.end()}; }

}  // namespace platform
