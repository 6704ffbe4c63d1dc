#include "platform/nationaltext.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>

namespace platform {
namespace {

// Used until the process ends; null when the system has no order of words. A user without a
// language ("C", "POSIX") has the order that most languages share, not that of the numbers.
UCollator* userCollator() {
  static UCollator* const collator = [] {
    const std::string_view locale = uloc_getDefault();
    UErrorCode error = U_ZERO_ERROR;
    UCollator* const opened = ucol_open(locale.ends_with("_POSIX") ? "" : locale.data(), &error);
    return U_SUCCESS(error) ? opened : nullptr;
  }();
  return collator;
}

int32_t sizeOf(std::u16string_view text) { return static_cast<int32_t>(text.size()); }

// A letter whose other form has another length in units stays as it is.
std::u16string mapped(std::u16string_view text, UChar32 (*map)(UChar32)) {
  std::u16string out(text);
  const int32_t size = sizeOf(text);
  for (int32_t at = 0; at < size;) {
    int32_t to = at;
    UChar32 character = 0;
    U16_NEXT(text.data(), at, size, character);
    const UChar32 other = map(character);
    if (U16_LENGTH(other) == at - to) U16_APPEND_UNSAFE(out.data(), to, other);
  }
  return out;
}

}  // namespace

int compareNational(std::u16string_view left, std::u16string_view right) {
  const UCollator* const collator = userCollator();
  if (collator == nullptr) return left.compare(right);
  return ucol_strcoll(collator, left.data(), sizeOf(left), right.data(), sizeOf(right));
}

bool isBlank(char16_t unit) { return u_isUWhiteSpace(unit); }

bool isDigit(char16_t unit) { return u_isdigit(unit); }

std::u16string smallLetters(std::u16string_view text) { return mapped(text, u_tolower); }

std::u16string capitalLetters(std::u16string_view text) { return mapped(text, u_toupper); }

std::u16string composed(std::u16string_view text) {
  UErrorCode error = U_ZERO_ERROR;
  const UNormalizer2* const form = unorm2_getNFCInstance(&error);
  std::u16string out(text.size(), u'\0');
  const auto normalize = [&] {
    error = U_ZERO_ERROR;
    return unorm2_normalize(form, text.data(), sizeOf(text), out.data(), sizeOf(out), &error);
  };
  if (U_FAILURE(error)) return std::u16string(text);
  int32_t size = normalize();
  if (error == U_BUFFER_OVERFLOW_ERROR) {  // a few characters are longer when they are composed
    out.resize(static_cast<std::size_t>(size));
    size = normalize();
  }
  if (U_FAILURE(error)) return std::u16string(text);
  out.resize(static_cast<std::size_t>(size));
  return out;
}

std::string userLanguageTag() {
  char tag[ULOC_FULLNAME_CAPACITY] = {};
  UErrorCode error = U_ZERO_ERROR;
  const int32_t size = uloc_toLanguageTag(uloc_getDefault(), tag, sizeof tag, false, &error);
  if (U_FAILURE(error)) return {};
  return {tag, static_cast<std::size_t>(std::clamp(size, 0, ULOC_FULLNAME_CAPACITY))};
}

}  // namespace platform
