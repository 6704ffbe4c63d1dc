#include "orobasictypes/kelcstring.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <istream>
#include <ostream>
#include <sstream>
#include <string_view>

#include "orobasictypes/kelexactprint.h"
#include "orobasictypes/kelhash.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orounits.h"

namespace {

constexpr char kelcstringSource[] = "orobasictypes/kelcstring";
constinit const KelCString emptyNarrow = KelCString::borrow("");

// A text that may be null, as its bytes.
std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// At most `count` bytes of a text; fewer if it ends before.
std::string_view viewOf(const char* text, int count) {
  return {text, count > 0 ? strnlen(text, static_cast<size_t>(count)) : 0};
}

// A terminated block of the pool with room for `length` bytes.
char* newBlock(size_t length, int32_t& capacity) {
  if (length >= INT32_MAX) kelOutOfMemory(static_cast<int64_t>(length) + 1);
  char* const block = static_cast<char*>(kelPoolAlloc(static_cast<int32_t>(length) + 1, capacity));
  block[length] = '\0';
  return block;
}

char* copyOf(std::string_view text, char* to) {
  if (!text.empty()) std::memcpy(to, text.data(), text.size());
  return to + text.size();
}

template <class... Views>
char* joined(int32_t& capacity, Views... parts) {
  char* const block = newBlock((parts.size() + ...), capacity);
  char* to = block;
  ((to = copyOf(parts, to)), ...);
  return block;
}

size_t listLength(const char* const* list) {
  size_t length = 0;
  for (; list != nullptr && *list != nullptr; ++list) length += std::strlen(*list);
  return length;
}

void copyList(const char* const* list, char* to) {
  for (; *list != nullptr; ++list) to = copyOf(viewOf(*list), to);
}

bool isSpace(char character) { return oronumbers::isBlank(static_cast<unsigned char>(character)); }

int sign(int order) { return order < 0 ? -1 : order > 0; }

int position(const char* text, const char* hit) {
  return hit != nullptr ? static_cast<int>(hit - text) : -1;
}

int clippedToLength(int value, size_t length) {
  return static_cast<int>(std::min(static_cast<size_t>(std::max(value, 0)), length));
}

}  // namespace

// Making and freeing.

const KelCString& KelCString::empty() { return emptyNarrow; }

void KelCString::freeOwned(char* text, int32_t capacity) noexcept { kelPoolFree(capacity, text); }

void KelCString::reset() noexcept { adopt(nullptr, 0); }

void KelCString::adopt(char* text, int32_t capacity) noexcept {
  if (capacity_ > 0) freeOwned(text_, capacity_);
  text_ = text;
  capacity_ = capacity;
}

bool KelCString::holds(const char* text) const noexcept {
  return capacity_ > 0 && !std::less<>()(text, text_) && std::less<>()(text, text_ + capacity_);
}

KelCString::KelCString(const char* text) {
  if (text != nullptr) text_ = joined(capacity_, viewOf(text));
}

KelCString::KelCString(const char* text, int count) {
  if (text != nullptr) text_ = joined(capacity_, viewOf(text, count));
}

KelCString::KelCString(const char* text, int start, int count) {
  if (text == nullptr) return;
  text += viewOf(text, start).size();
  text_ = joined(capacity_, viewOf(text, count));
}

KelCString::KelCString(const char* first, const char* second)
    : KelCString(first, second, nullptr) {}

KelCString::KelCString(const char* first, const char* second, const char* third) {
  const std::string_view a = viewOf(first), b = viewOf(second), c = viewOf(third);
  if (a.size() + b.size() + c.size() > 0) text_ = joined(capacity_, a, b, c);
}

KelCString KelCString::fromList(const char* const* list) {
  KelCString whole;
  whole.assignList(list);
  return whole;
}

KelCString KelCString::fromTextAndInt(const char* text, int value) {
  oronumbers::Buffer buffer;
  KelCString whole;
  whole.text_ = joined(whole.capacity_, viewOf(text), oronumbers::printInt(value, buffer));
  return whole;
}

KelCString::KelCString(char character) {
  text_ = joined(capacity_, std::string_view(&character, 1));
}

KelCString::KelCString(int value) {
  oronumbers::Buffer buffer;
  text_ = joined(capacity_, oronumbers::printInt(value, buffer));
}

KelCString::KelCString(float value, bool exact) {
  oronumbers::Buffer buffer;
  text_ = joined(capacity_, exact ? kelExactPrint(value, buffer)
                                  : oronumbers::printFixed(static_cast<double>(value), buffer));
}

KelCString::KelCString(double value, bool exact) {
  oronumbers::Buffer buffer;
  text_ = joined(capacity_,
                 exact ? kelExactPrint(value, buffer) : oronumbers::printFixed(value, buffer));
}

KelCString::KelCString(const std::ostringstream& stream) {
  text_ = joined(capacity_, stream.view());
}

KelCString::KelCString(const KelCString& other) : text_(other.text_) {
  if (other.capacity_ > 0 && text_ != nullptr) text_ = joined(capacity_, viewOf(text_));
}

// Assignment. A new buffer is filled before the old one is freed, since arguments may lie in it.

KelCString& KelCString::operator=(const KelCString& other) {
  if (this != &other) *this = KelCString(other);
  return *this;
}

KelCString& KelCString::operator=(KelCString&& other) noexcept {
  if (this == &other) return *this;
  if (holds(other.text_)) return *this = KelCString(other.text());  // it borrows what is freed here
  adopt(other.text_, other.capacity_);
  other.text_ = nullptr;
  other.capacity_ = 0;
  return *this;
}

KelCString& KelCString::operator=(const char* text) {
  return text == text_ ? *this : *this = KelCString(text);
}

KelCString& KelCString::operator=(char character) { return *this = KelCString(character); }

KelCString& KelCString::operator=(const OroString& text) {
  int32_t capacity = 0;
  char* const utf8 = text.takeUtf8(capacity);
  adopt(utf8, capacity);
  return *this;
}

KelCString& KelCString::assign(const char* text, int count) {
  const std::string_view source = text == nullptr || count < 0 ? viewOf(text) : viewOf(text, count);
  if (source.empty()) {
    reset();
  } else if (capacity_ > 0 && source.size() == static_cast<size_t>(length())) {
    std::memmove(text_, source.data(), source.size());
  } else {
    int32_t capacity = 0;
    char* const block = joined(capacity, source);
    adopt(block, capacity);
  }
  return *this;
}

KelCString& KelCString::assign(const char16_t* text, int count) {
  const size_t limit = count < 0 ? SIZE_MAX : static_cast<size_t>(count);
  const size_t units = text != nullptr ? orounits::length(text, limit) : 0;
  if (units == 0) {
    reset();
    return *this;
  }
  if (capacity_ < 1 || static_cast<size_t>(capacity_) <= units) {
    int32_t capacity = 0;
    char* const block = newBlock(units, capacity);
    adopt(block, capacity);
  }
  std::transform(text, text + units, text_, [](char16_t unit) { return static_cast<char>(unit); });
  text_[units] = '\0';
  return *this;
}

KelCString& KelCString::assignList(const char* const* list) {
  const size_t size = listLength(list);
  if (size == 0) {
    reset();
    return *this;
  }
  bool reuse = capacity_ > 0 && size == static_cast<size_t>(length());
  for (const char* const* part = list; reuse && *part != nullptr; ++part) reuse = !holds(*part);
  if (reuse) {
    copyList(list, text_);
  } else {
    int32_t capacity = 0;
    char* const block = newBlock(size, capacity);
    copyList(list, block);
    adopt(block, capacity);
  }
  return *this;
}

// Access.

int32_t KelCString::length() const {
  return static_cast<int32_t>(std::min(viewOf(text_).size(), size_t{INT32_MAX}));
}

int KelCString::toInt() const {
  int32_t value = 0;
  oronumbers::parseDecimal(viewOf(text_), value);
  return value;
}

float KelCString::toFloat() const { return text_ != nullptr ? kelParseFloat(viewOf(text_)) : 0; }

double KelCString::toDouble() const { return text_ != nullptr ? kelParseDouble(viewOf(text_)) : 0; }

bool KelCString::readLine(std::istream& stream) {
  reset();
  char line[4096];
  if (!stream.getline(line, sizeof line)) return false;
  text_ = joined(capacity_, viewOf(line));
  return true;
}

char* KelCString::writableText() {
  if (text_ != nullptr && capacity_ < 1) *this = KelCString(text());
  return text_;
}

std::ostream& operator<<(std::ostream& stream, const KelCString& text) {
  return text.isNull() ? stream : stream << text.text();
}

// Comparison.

bool KelCString::equals(const char* other) const {
  if (text_ == nullptr || other == nullptr) return text_ == other;
  return std::strcmp(text_, other) == 0;
}

bool KelCString::less(const char* other) const {
  if (other == nullptr) return false;
  return text_ == nullptr || std::strcmp(text_, other) < 0;
}

bool KelCString::lessOrEqual(const char* other) const {
  if (other == nullptr) return text_ == nullptr;
  return text_ == nullptr || std::strcmp(text_, other) <= 0;
}

int KelCString::compare(const KelCString& other) const {
  if (text_ == nullptr || other.text_ == nullptr) {
    return (text_ != nullptr) - (other.text_ != nullptr);
  }
  return sign(std::strcmp(text_, other.text_));
}

// Signed here and nowhere else: lists are kept in this order.
int KelCString::compareList(const char* const* list) const {
  const char* own = c_str();
  for (; list != nullptr && *list != nullptr; ++list) {
    for (const char* other = *list; *other != '\0'; ++own, ++other) {
      if (*own != *other) {
        return static_cast<signed char>(*own) < static_cast<signed char>(*other) ? -1 : 1;
      }
    }
  }
  return sign(static_cast<signed char>(*own));
}

uint32_t KelCString::hash() const { return kelHashText(text_); }

uint32_t KelCString::hashList(const char* const* list) { return kelHashList(list); }

// Search.

int KelCString::find(char character, int start) const {
  if (character == '\0' || start < 0 || start >= length()) return -1;
  return position(text_, std::strchr(text_ + start, character));
}

int KelCString::find(const char* part, int start) const {
  const size_t size = viewOf(text_).size();
  const size_t wanted = viewOf(part).size();
  if (wanted > size) return -1;
  if (wanted == 0) return 0;
  if (start < 0) {
    kelAssertFail("start >= 0", kelcstringSource, __LINE__);
    return -1;
  }
  if (static_cast<size_t>(start) > size - wanted) return -1;
  return position(text_, std::strstr(text_ + start, part));
}

int KelCString::findLast(char character) const {
  if (isEmpty() || character == '\0') return -1;
  return position(text_, std::strrchr(text_, character));
}

int KelCString::findLast(const char* part) const {
  const size_t hit = viewOf(text_).rfind(viewOf(part));
  return hit == std::string_view::npos ? -1 : static_cast<int>(hit);
}

// Editing.

void KelCString::append(char character) {
  const char text[] = {character, '\0'};
  append(text);
}

void KelCString::append(const char* text) {
  const std::string_view added = viewOf(text);
  if (added.empty()) return;
  const std::string_view old = viewOf(text_);
  if (capacity_ > 0 && old.size() + added.size() < static_cast<size_t>(capacity_)) {
    std::memmove(text_ + old.size(), added.data(), added.size());
    text_[old.size() + added.size()] = '\0';
    return;
  }
  int32_t capacity = 0;
  char* const block = joined(capacity, old, added);
  adopt(block, capacity);
}

KelCString KelCString::concat(char character) const {
  const char text[] = {character, '\0'};
  return concat(text);
}

KelCString KelCString::concat(const char* text) const {
  const std::string_view added = viewOf(text);
  if (added.empty()) return *this;
  KelCString whole;
  whole.text_ = joined(whole.capacity_, viewOf(text_), added);
  return whole;
}

void KelCString::replaceChar(char from, char to) {
  if (capacity_ < 1) return;  // a literal is never written
  for (char* at = text_; *at != '\0'; ++at) {
    if (*at == from) *at = to;
  }
}

KelCString& KelCString::replace(const char* from, const char* to) {
  const std::string_view wanted = viewOf(from);
  const std::string_view inserted = viewOf(to);
  if (wanted.empty() || to == nullptr || wanted == inserted) return *this;
  const std::string_view old = viewOf(text_);
  size_t hits = 0;
  for (size_t at = 0; (at = old.find(wanted, at)) != old.npos; at += wanted.size()) ++hits;
  if (hits == 0) return *this;
  int32_t capacity = 0;
  char* const block =
      newBlock(old.size() - hits * wanted.size() + hits * inserted.size(), capacity);
  char* end = block;
  size_t copied = 0;
  for (size_t at = 0; (at = old.find(wanted, at)) != old.npos; at += wanted.size()) {
    end = copyOf(inserted, copyOf(old.substr(copied, at - copied), end));
    copied = at + wanted.size();
  }
  copyOf(old.substr(copied), end);
  adopt(block, capacity);
  return *this;
}

void KelCString::splice(int start, int count, const char* insert) {
  const std::string_view old = viewOf(text_);
  const std::string_view inserted = viewOf(insert);
  const auto from = static_cast<size_t>(clippedToLength(start, old.size()));
  const auto cut = static_cast<size_t>(clippedToLength(count, old.size() - from));
  if (cut == inserted.size()) {
    if (cut > 0) std::memmove(writableText() + from, inserted.data(), cut);
    return;
  }
  int32_t capacity = 0;
  char* const block = joined(capacity, old.substr(0, from), inserted, old.substr(from + cut));
  adopt(block, capacity);
}

void KelCString::toLower() {
  char* at = writableText();
  for (; at != nullptr && *at != '\0'; ++at) {
    if (*at >= 'A' && *at <= 'Z') *at = static_cast<char>(*at + ('a' - 'A'));
  }
}

void KelCString::toUpper() {
  char* at = writableText();
  for (; at != nullptr && *at != '\0'; ++at) {
    if (*at >= 'a' && *at <= 'z') *at = static_cast<char>(*at - ('a' - 'A'));
  }
}

void KelCString::reverse() {
  char* const text = writableText();
  if (text != nullptr) std::reverse(text, text + length());
}

KelCString KelCString::trim() const {
  if (text_ == nullptr) return KelCString();
  std::string_view rest = viewOf(text_);
  while (!rest.empty() && isSpace(rest.front())) rest.remove_prefix(1);
  while (!rest.empty() && isSpace(rest.back())) rest.remove_suffix(1);
  KelCString trimmed;
  trimmed.text_ = joined(trimmed.capacity_, rest);
  return trimmed;
}

// The last separator goes even if it was ordinary text: stored texts were made so.
KelCString KelCString::simplify(char separator) const {
  if (text_ == nullptr) return empty();
  KelCString simple;
  simple.text_ = newBlock(viewOf(text_).size(), simple.capacity_);
  char* end = simple.text_;
  for (const char* at = text_; *at != '\0'; ++at) {
    if (!isSpace(*at)) {
      *end++ = *at;
    } else if (!isSpace(at[1]) && end != simple.text_) {
      *end++ = separator;
    }
  }
  if (end != simple.text_ && end[-1] == separator) --end;
  *end = '\0';
  return simple;
}

KelCString KelCString::elide(int maxLength, int where, int dots) const {
  maxLength = std::max(maxLength, 0);
  dots = std::clamp(dots, 0, maxLength);
  const std::string_view old = viewOf(text_);
  if (old.size() <= static_cast<size_t>(maxLength)) return *this;
  const bool onlyDots = dots == maxLength;
  if (!onlyDots && (where < 0 || where > 2)) {
    kelAssertFail("", kelcstringSource, __LINE__);
    return *this;
  }
  const auto kept = static_cast<size_t>(maxLength - dots);
  const size_t head = where == 0 ? kept : where == 1 ? 0 : kept / 2;
  KelCString cut;
  cut.text_ = newBlock(static_cast<size_t>(maxLength), cut.capacity_);
  char* const dotted = copyOf(old.substr(0, head), cut.text_);
  std::memset(dotted, '.', static_cast<size_t>(dots));
  copyOf(old.substr(old.size() - (kept - head)), dotted + dots);
  return cut;
}
