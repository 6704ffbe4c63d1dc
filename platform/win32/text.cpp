#include "platform/text.h"

#include <algorithm>

#include "platform/win32/win32gate.h"

namespace platform {

std::string toSystemPath(std::u16string_view path) {
  if (path.find(u'\0') != path.npos) return {};
  return toSystem(path);
}

std::u16string fromSystemPath(std::string_view path) {
  std::u16string out = fromSystem(path);
  std::replace(out.begin(), out.end(), u'/', u'\\');
  return out;
}

std::u16string fromCodePage(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int units = MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(std::max(units, 0)));
  return fromWide(wide);
}

std::string toCodePage(std::u16string_view text) {
  const std::wstring wide = toWide(text);
  const int units = static_cast<int>(wide.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(std::max(size, 0)), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), units, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

}  // namespace platform
