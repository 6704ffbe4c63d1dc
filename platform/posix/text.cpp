#include "platform/text.h"

#include <algorithm>

namespace platform {
namespace {

bool beginsWithDrive(std::u16string_view path) {
  const auto isLetter = [](char16_t c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return path.size() >= 2 && path[1] == ':' && isLetter(path[0]);
}

}  // namespace

std::string toSystemPath(std::u16string_view path) {
  if (beginsWithDrive(path) || path.find(u'\0') != path.npos) return {};
  std::string out = toSystem(path);
  std::replace(out.begin(), out.end(), '\\', '/');
  return out;
}

std::u16string fromSystemPath(std::string_view path) {
  std::u16string out = fromSystem(path);
  std::replace(out.begin(), out.end(), u'/', u'\\');
  return out;
}

std::u16string fromCodePage(std::string_view text) { return fromSystem(text); }

std::string toCodePage(std::u16string_view text) { return toSystem(text); }

}  // namespace platform
