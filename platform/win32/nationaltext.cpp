#include "platform/nationaltext.h"

#include <algorithm>

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

int sizeOf(const std::wstring& text) { return static_cast<int>(text.size()); }

bool hasType(char16_t unit, WORD wanted) {
  const auto wide = static_cast<wchar_t>(unit);
  WORD types = 0;
  return GetStringTypeW(CT_CTYPE1, &wide, 1, &types) != 0 && (types & wanted) != 0;
}

// The length stays by what these mappings are.
std::u16string mapped(std::u16string_view text, DWORD mapping) {
  if (text.empty()) return {};
  const std::wstring wide = toWide(text);
  std::wstring out(wide.size(), L'\0');
  const int units = LCMapStringEx(LOCALE_NAME_INVARIANT, mapping, wide.data(), sizeOf(wide),
                                  out.data(), sizeOf(out), nullptr, nullptr, 0);
  return units == sizeOf(wide) ? fromWide(out) : std::u16string(text);
}

}  // namespace

int compareNational(std::u16string_view left, std::u16string_view right) {
  const std::wstring first = toWide(left);
  const std::wstring second = toWide(right);
  const int order = CompareStringEx(LOCALE_NAME_USER_DEFAULT, 0, first.data(), sizeOf(first),
                                    second.data(), sizeOf(second), nullptr, nullptr, 0);
  return order != 0 ? order - CSTR_EQUAL : left.compare(right);
}

bool isBlank(char16_t unit) { return hasType(unit, C1_SPACE); }

bool isDigit(char16_t unit) { return hasType(unit, C1_DIGIT); }

std::u16string smallLetters(std::u16string_view text) { return mapped(text, LCMAP_LOWERCASE); }

std::u16string capitalLetters(std::u16string_view text) { return mapped(text, LCMAP_UPPERCASE); }

std::u16string composed(std::u16string_view text) {
  if (text.empty()) return {};
  const std::wstring wide = toWide(text);
  // What the system guesses first can be too little; it then tells a better guess.
  int room = NormalizeString(NormalizationC, wide.data(), sizeOf(wide), nullptr, 0);
  for (int attempts = 0; room > 0 && attempts < 10; ++attempts) {
    std::wstring out(static_cast<std::size_t>(room), L'\0');
    const int units = NormalizeString(NormalizationC, wide.data(), sizeOf(wide), out.data(), room);
    if (units > 0) return fromWide(std::wstring_view(out).substr(0, units));
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) break;
    room = std::max(-units, room * 2);
  }
  return std::u16string(text);
}

std::string userLanguageTag() {
  wchar_t tag[LOCALE_NAME_MAX_LENGTH] = {};
  if (GetUserDefaultLocaleName(tag, LOCALE_NAME_MAX_LENGTH) == 0) return {};
  const std::wstring_view wide(tag);
  return {wide.begin(), wide.end()};
}

}  // namespace platform
