#include "orobasictypes/orostring.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <cwctype>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string_view>

#include "interfaces/IOroStrSupport.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oroasciihead.h"
#include "orobasictypes/oronumbertext.h"
#include "orobasictypes/orostringarray.h"
#include "orobasictypes/orostrsupport.h"
#include "orobasictypes/orotextview.h"
#include "orobasictypes/orounits.h"

namespace {

using orotext::stringOf;
using orotext::viewOf;

constexpr int argumentSlots = 10;
constexpr size_t placeholderUnits = 2;

// The shared empty string. No destructor runs: it is used until the process ends.
union EmptyString {
  constexpr EmptyString() : text(u"", nullptr) {}
  ~EmptyString() {}
  OroString text;
};
constinit EmptyString emptyString;

size_t narrowLength(const char* text, int count) {
  return count < 0 ? std::strlen(text) : strnlen(text, static_cast<size_t>(count));
}

void* newBytes(size_t bytes, int32_t& capacity) {
  if (bytes > INT32_MAX) kelOutOfMemory(static_cast<int64_t>(bytes));
  return kelPoolAlloc(static_cast<int32_t>(bytes), capacity);
}

// A terminated block of the pool with room for `length` units.
char16_t* newUnits(size_t length, int32_t& capacity) {
  auto* const block = static_cast<char16_t*>(newBytes((length + 1) * sizeof(char16_t), capacity));
  block[length] = 0;
  return block;
}

char16_t* copyOf(std::u16string_view text, char16_t* to) {
  std::copy(text.begin(), text.end(), to);
  return to + text.size();
}

char16_t* joined(std::initializer_list<std::u16string_view> parts, int32_t& capacity) {
  size_t length = 0;
  for (const auto part : parts) length += part.size();
  char16_t* const block = newUnits(length, capacity);
  char16_t* to = block;
  for (const auto part : parts) to = copyOf(part, to);
  return block;
}

char16_t lowered(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

char16_t raised(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

bool sameIgnoringCase(char16_t left, char16_t right) { return lowered(left) == lowered(right); }

int clipped(int value, size_t length) {
  return static_cast<int>(std::min(static_cast<size_t>(std::max(value, 0)), length));
}

int position(size_t hit) { return hit == std::u16string_view::npos ? -1 : static_cast<int>(hit); }

char16_t widened(char character) {
  return static_cast<char16_t>(static_cast<signed char>(character));
}

struct Placeholder {
  size_t at;     // of its "%"
  int argument;  // from 0
};

// The placeholders of a text in the order of their places; returns how many there are.
size_t findPlaceholders(std::u16string_view units, std::array<Placeholder, argumentSlots>& found) {
  // Of a number that stands twice the later place counts.
  std::array<size_t, argumentSlots> places;
  places.fill(units.npos);
  for (size_t i = 0; i + 1 < units.size(); ++i) {
    if (units[i] != u'%') continue;
    ++i;  // whatever follows the "%" belongs to it
    if (units[i] >= u'1' && units[i] <= u':') places[units[i] - u'1'] = i - 1;
  }
  size_t count = 0;
  for (int slot = 0; slot < argumentSlots; ++slot) {
    if (places[slot] != units.npos) found[count++] = {places[slot], slot};
  }
  std::sort(found.begin(), found.begin() + count,
            [](const Placeholder& a, const Placeholder& b) { return a.at < b.at; });
  return count;
}

}  // namespace

// Making and freeing.

const OroString& OroString::empty() { return emptyString.text; }

void oroStringCleanup() { emptyString.text = OroString(u"", nullptr); }

void OroString::freeBuffers() noexcept {
  if (narrowCapacity_ > 0) kelPoolFree(narrowCapacity_, narrow_);
  if (utf8Capacity_ > 0) kelPoolFree(utf8Capacity_, utf8_);
  if (textCapacity_ > 0) kelPoolFree(textCapacity_, text_);
}

void OroString::adopt(char16_t* text, int32_t capacity) noexcept {
  if (textCapacity_ > 0) kelPoolFree(textCapacity_, text_);
  text_ = text;
  textCapacity_ = capacity;
}

void OroString::assignJoined(std::initializer_list<std::u16string_view> parts) {
  int32_t capacity = 0;
  char16_t* const block = joined(parts, capacity);
  adopt(block, capacity);
}

OroString::OroString(const char* text, int count) {
  if (text == nullptr) return;
  const size_t length = narrowLength(text, count);
  text_ = newUnits(length, textCapacity_);
  orounits::widen(text, length, text_);
}

OroString::OroString(const KelCString& text) : OroString(text.text()) {}

OroString::OroString(const char16_t* text, int count) { assign(text, count); }

OroString::OroString(char character) : OroString(widened(character)) {}

OroString::OroString(char16_t unit) { assignJoined({{&unit, 1}}); }

OroString::OroString(int value) : OroString(static_cast<long long>(value)) {}
OroString::OroString(long value) : OroString(static_cast<long long>(value)) {}
OroString::OroString(unsigned value) : OroString(static_cast<unsigned long long>(value)) {}
OroString::OroString(unsigned long value) : OroString(static_cast<unsigned long long>(value)) {}

OroString::OroString(long long value) {
  oronumbers::Buffer buffer;
  appendBytes(oronumbers::printInt(value, buffer));
}

OroString::OroString(unsigned long long value) {
  oronumbers::Buffer buffer;
  appendBytes(oronumbers::printUnsigned(value, buffer));
}

OroString::OroString(double value) {
  oronumbers::Buffer buffer;
  appendBytes(std::abs(value) > 1e10 ? oronumbers::printScientific(value, buffer)
                                     : oronumbers::printFixed(value, buffer));
}

OroString OroString::fromUtf8(const char* text) {
  if (text == nullptr || *text == '\0') return empty();
  const size_t bytes = std::strlen(text);
  OroString decoded;
  decoded.text_ = newUnits(bytes, decoded.textCapacity_);
  const ptrdiff_t units = orounits::decodeUtf8(text, bytes, decoded.text_);
  if (units < 0) return empty();
  decoded.text_[units] = 0;
  // Text of three bytes a unit would hold three times what it needs for as long as it lives.
  if (static_cast<size_t>(units) < bytes / 2) {
    decoded.assignJoined({{decoded.text_, static_cast<size_t>(units)}});
  }
  return decoded;
}

OroString::OroString(const OroString& other) : text_(other.text_) {
  if (other.textCapacity_ > 0) text_ = joined({viewOf(other)}, textCapacity_);
  if (other.narrowCapacity_ < 1) narrow_ = other.narrow_;
}

OroString& OroString::operator=(const OroString& other) {
  if (this == &other) return *this;
  if (other.textCapacity_ > 0) {
    assignJoined({viewOf(other)});
  } else {
    assign(other.text_, 0);
  }
  return *this;
}

OroString& OroString::operator=(OroString&& other) noexcept {
  if (this == &other) return *this;
  if (holds(other.text_)) other.makeOwned();  // what it borrows from is freed here
  freeBuffers();
  takeFields(other);
  return *this;
}

void OroString::assign(const OroString& other) { *this = other; }

bool OroString::holds(const char16_t* text) const {
  return textCapacity_ > 0 && !std::less<>()(text, text_) &&
         std::less<>()(text, text_ + static_cast<size_t>(textCapacity_) / sizeof(char16_t));
}

// Borrows, but not from the own buffer, which is freed here.
void OroString::assign(const char16_t* text, int count) {
  if (text == nullptr || (count == 0 && !holds(text))) {
    adopt(const_cast<char16_t*>(text), 0);
  } else {
    const size_t limit = count < 1 ? SIZE_MAX : static_cast<size_t>(count);
    assignJoined({{text, orounits::length(text, limit)}});
  }
}

char16_t* OroString::makeOwned() {
  if (text_ != nullptr && textCapacity_ < 1) assignJoined({viewOf(*this)});
  return text_;
}

// The narrow forms.

char* OroString::newNarrow(size_t bytes) const {
  if (narrowCapacity_ > 0) {
    if (static_cast<size_t>(narrowCapacity_) >= bytes) return narrow_;
    kelPoolFree(narrowCapacity_, narrow_);
    narrow_ = nullptr;
    narrowCapacity_ = 0;
  }
  narrow_ = static_cast<char*>(newBytes(bytes, narrowCapacity_));
  return narrow_;
}

const char* OroString::toNarrow() const {
  if (narrow_ != nullptr && narrowCapacity_ < 1) return narrow_;
  IOroStrSupport* const support = isNull() ? nullptr : oroStrSupport();
  if (support != nullptr) {
    KelCString narrow;
    support->toNarrow(narrow, *this);
    const size_t bytes = std::strlen(narrow.c_str()) + 1;
    std::memcpy(newNarrow(bytes), narrow.c_str(), bytes);
    return narrow_;
  }
  const std::u16string_view units = viewOf(*this);
  char* const out = newNarrow(units.size() + 1);
  out[orounits::dropToAscii(units.data(), units.size(), out)] = '\0';
  return narrow_;
}

const char* OroString::toUtf8() const {
  if (utf8Capacity_ > 0) kelPoolFree(utf8Capacity_, utf8_);
  utf8_ = nullptr;
  utf8Capacity_ = 0;
  const std::u16string_view units = viewOf(*this);
  utf8_ = static_cast<char*>(newBytes(4 * units.size() + 1, utf8Capacity_));
  utf8_[orounits::encodeUtf8(units.data(), units.size(), utf8_)] = '\0';
  return utf8_;
}

char* OroString::takeUtf8(int32_t& capacity) const {
  toUtf8();
  char* const taken = utf8_;
  capacity = utf8Capacity_;
  utf8_ = nullptr;
  utf8Capacity_ = 0;
  return taken;
}

std::ostream& operator<<(std::ostream& stream, const OroString& text) {
  return stream << text.toNarrow();
}

// Access.

int32_t OroString::length() const {
  return static_cast<int32_t>(std::min(viewOf(*this).size(), size_t{INT32_MAX}));
}

// Only the units in front of the index are looked at.
bool OroString::isInside(int index) const {
  if (text_ == nullptr || index < 0) return false;
  const size_t needed = static_cast<size_t>(index) + 1;
  return orounits::length(text_, needed) == needed;
}

char16_t OroString::at(int index) const { return isInside(index) ? text_[index] : u'\0'; }

void OroString::setAt(int index, char16_t unit) {
  if (isInside(index)) makeOwned()[index] = unit;
}

bool OroString::isDigit(int index) const {
  if (!isInside(index)) return false;
  IOroStrSupport* const support = oroStrSupport();
  return support != nullptr ? support->isDigit(text_[index])
                            : std::iswdigit(static_cast<wint_t>(text_[index])) != 0;
}

bool OroString::isSpace(int index) const {
  if (!isInside(index)) return false;
  IOroStrSupport* const support = oroStrSupport();
  return support != nullptr ? support->isSpace(text_[index])
                            : std::iswspace(static_cast<wint_t>(text_[index])) != 0;
}

// Comparison.

bool OroString::equals(const OroString& other) const { return viewOf(*this) == viewOf(other); }

bool OroString::equals(const char* other) const {
  const char16_t* own = wideText();
  if (other == nullptr) return *own == 0;
  for (; *other != '\0'; ++own, ++other) {
    if (*own != widened(*other)) return false;
  }
  return *own == 0;
}

int OroString::compare(const OroString& other) const {
  IOroStrSupport* const support = oroStrSupport();
  return support != nullptr ? support->compare(*this, other) : compareOrdinal(other);
}

int OroString::compareOrdinal(const OroString& other) const {
  const char16_t* own = wideText();
  const char16_t* theirs = other.wideText();
  for (; *own == *theirs; ++own, ++theirs) {
    if (*own == 0) return 0;
  }
  return *own < *theirs ? -1 : 1;
}

bool OroString::startsWith(const OroString& other, int count) const {
  const char16_t* own = wideText();
  const char16_t* theirs = other.wideText();
  for (; count > 0; --count, ++own, ++theirs) {
    if (*own == 0 || *own != *theirs) return false;
  }
  return true;
}

bool OroString::contains(const OroString& part, bool caseSensitive) const {
  if (IOroStrSupport* const support = oroStrSupport()) {
    return support->contains(*this, part, caseSensitive);
  }
  std::u16string_view units = viewOf(*this);
  const std::u16string_view wanted = viewOf(part);
  if (wanted.empty() || units.empty()) return false;
  units.remove_suffix(1);  // the last possible position is not tried; callers rely on it
  if (caseSensitive) return units.find(wanted) != units.npos;
  return std::search(units.begin(), units.end(), wanted.begin(), wanted.end(), sameIgnoringCase) !=
         units.end();
}

uint32_t OroString::hash() const {
  uint32_t sum = 0;
  for (const char16_t unit : viewOf(*this)) sum += unit;
  return sum;
}

// Search.

int OroString::find(const OroString& part, int start) const {
  const std::u16string_view units = viewOf(*this);
  const std::u16string_view wanted = viewOf(part);
  if (wanted.size() > units.size()) return -1;
  if (wanted.empty()) return 0;
  if (start < 0) return -1;
  return position(units.find(wanted, static_cast<size_t>(start)));
}

int OroString::find(char16_t unit, int start) const {
  if (start < 0) return -1;
  return position(viewOf(*this).find(unit, static_cast<size_t>(start)));
}

int OroString::findLast(const OroString& part, int limit) const {
  const std::u16string_view units = viewOf(*this);
  const std::u16string_view wanted = viewOf(part);
  if (wanted.empty()) return -1;
  return position(units.rfind(wanted, limit < 0 ? units.npos : static_cast<size_t>(limit)));
}

// Editing. A new buffer is filled before the old one is freed, since arguments may lie in it.

char16_t* OroString::growBy(size_t units) {
  const std::u16string_view old = viewOf(*this);
  const size_t bytes = (old.size() + units + 1) * sizeof(char16_t);
  if (textCapacity_ > 0 && static_cast<size_t>(textCapacity_) >= bytes) {
    text_[old.size() + units] = 0;
  } else {
    int32_t capacity = 0;
    char16_t* const block = newUnits(old.size() + units, capacity);
    copyOf(old, block);
    adopt(block, capacity);
  }
  return text_ + old.size();
}

void OroString::appendUnits(std::u16string_view units) {
  if (units.empty()) return;
  const std::u16string_view old = viewOf(*this);
  const size_t bytes = (old.size() + units.size() + 1) * sizeof(char16_t);
  if (textCapacity_ < 1 || static_cast<size_t>(textCapacity_) < bytes) {
    assignJoined({old, units});
    return;
  }
  std::memmove(text_ + old.size(), units.data(), units.size() * sizeof(char16_t));
  text_[old.size() + units.size()] = 0;
}

void OroString::appendBytes(std::string_view bytes) {
  if (!bytes.empty()) orounits::widen(bytes.data(), bytes.size(), growBy(bytes.size()));
}

void OroString::append(const OroString& other) { appendUnits(viewOf(other)); }

void OroString::append(const char* text, int count) {
  if (text != nullptr) appendBytes(std::string_view(text, narrowLength(text, count)));
}

void OroString::append(char16_t unit) {
  if (unit != 0) appendUnits(std::u16string_view(&unit, 1));
}

void OroString::appendAt(const OroString& other, int index) { append(other.at(index)); }

void OroString::truncateAt(int index) {
  if (text_ == nullptr || textCapacity_ <= index || index < 0) return;
  const int room = textCapacity_ / static_cast<int>(sizeof(char16_t));
  if (index < room) text_[index] = 0;
}

void OroString::erase(int start, int count) {
  const std::u16string_view old = viewOf(*this);
  const int from = clipped(start, old.size());
  const int cut = clipped(count, old.size() - static_cast<size_t>(from));
  if (cut == 0) return;
  const size_t tail = old.size() - static_cast<size_t>(from + cut) + 1;
  char16_t* const text = makeOwned();
  std::memmove(text + from, text + from + cut, tail * sizeof(char16_t));
}

void OroString::replaceAll(const OroString& from, const OroString& to) {
  const std::u16string_view wanted = viewOf(from);
  const std::u16string_view inserted = viewOf(to);
  if (wanted.empty() || wanted == inserted) return;
  const std::u16string_view old = viewOf(*this);
  size_t hits = 0;
  for (size_t at = 0; (at = old.find(wanted, at)) != old.npos; at += wanted.size()) ++hits;
  if (hits == 0) return;
  int32_t capacity = 0;
  char16_t* const block =
      newUnits(old.size() - hits * wanted.size() + hits * inserted.size(), capacity);
  char16_t* end = block;
  size_t copied = 0;
  for (size_t at = 0; (at = old.find(wanted, at)) != old.npos; at += wanted.size()) {
    end = copyOf(inserted, copyOf(old.substr(copied, at - copied), end));
    copied = at + wanted.size();
  }
  copyOf(old.substr(copied), end);
  adopt(block, capacity);
}

void OroString::swap(OroString& other) noexcept {
  std::swap(text_, other.text_);
  std::swap(textCapacity_, other.textCapacity_);
  std::swap(narrow_, other.narrow_);
  std::swap(narrowCapacity_, other.narrowCapacity_);
  std::swap(utf8_, other.utf8_);
  std::swap(utf8Capacity_, other.utf8Capacity_);
}

void OroString::substitute(const OroString* const* arguments) {
  if (arguments == nullptr || textCapacity_ < 1) return;
  const std::u16string_view units =
      viewOf(*this).substr(0, static_cast<size_t>(textCapacity_) / sizeof(char16_t));
  std::array<Placeholder, argumentSlots> found;
  const size_t count = findPlaceholders(units, found);
  if (count == 0) return;
  std::array<std::u16string_view, argumentSlots> inserted;
  size_t size = units.size();
  for (size_t i = 0; i < count; ++i) {
    const OroString* const argument = arguments[found[i].argument];
    if (argument != nullptr) inserted[i] = viewOf(*argument);
    size += inserted[i].size() - placeholderUnits;
  }
  int32_t capacity = 0;
  char16_t* const block = newUnits(size, capacity);
  char16_t* end = block;
  size_t copied = 0;
  for (size_t i = 0; i < count; ++i) {
    end = copyOf(inserted[i], copyOf(units.substr(copied, found[i].at - copied), end));
    copied = found[i].at + placeholderUnits;
  }
  copyOf(units.substr(copied), end);
  adopt(block, capacity);
}

// New strings made from this one.

OroString OroString::splice(int start, int end, const OroString& insert) const {
  const std::u16string_view old = viewOf(*this);
  const auto from = static_cast<size_t>(clipped(start, old.size()));
  const auto behind = std::max(from, static_cast<size_t>(clipped(end, old.size())));
  const std::u16string_view inserted = viewOf(insert);
  if (from + inserted.size() + old.size() - behind == 0) return empty();
  OroString result;
  result.assignJoined({old.substr(0, from), inserted, old.substr(behind)});
  return result;
}

OroString OroString::left(int count) const {
  const std::u16string_view old = viewOf(*this);
  const auto kept = static_cast<size_t>(std::max(count, 0));
  return kept < old.size() ? stringOf(old.substr(0, kept)) : *this;
}

OroString OroString::mid(int start) const { return mid(start, INT32_MAX); }

OroString OroString::mid(int start, int count) const {
  const std::u16string_view old = viewOf(*this);
  if (start < 0 || count < 1 || static_cast<size_t>(start) >= old.size()) return OroString();
  return stringOf(old.substr(static_cast<size_t>(start), static_cast<size_t>(count)));
}

OroString OroString::toLower() const {
  if (isNull()) return empty();
  OroString result(text());
  if (IOroStrSupport* const support = oroStrSupport()) {
    support->toLower(result);
  } else {
    std::transform(result.text_, result.text_ + result.length(), result.text_, lowered);
  }
  return result;
}

OroString OroString::toUpper() const {
  if (isNull()) return empty();
  OroString result(text());
  if (IOroStrSupport* const support = oroStrSupport()) {
    support->toUpper(result);
  } else {
    std::transform(result.text_, result.text_ + result.length(), result.text_, raised);
  }
  return result;
}

OroString OroString::stripSpace() const {
  OroString result(text());
  if (result.isNull()) return result;
  if (IOroStrSupport* const support = oroStrSupport()) {
    support->stripSpace(result);
    return result;
  }
  const std::u16string_view units = viewOf(result);
  char16_t* const end = std::remove_if(result.text_, result.text_ + units.size(),
                                       [](char16_t unit) { return oronumbers::isBlank(unit); });
  *end = 0;
  return result;
}

OroString OroString::normalize(char16_t replacement) const {
  IOroStrSupport* const support = isNull() ? nullptr : oroStrSupport();
  if (support == nullptr) return *this;
  OroString result(text());
  support->normalize(result);
  if (replacement == u' ' || result.isNull()) return result;
  for (char16_t* at = result.makeOwned(); *at != 0; ++at) {
    if (support->isSpace(*at)) *at = replacement;
  }
  return result;
}

OroString OroString::elide(int maxLength, int where, int dots) const {
  maxLength = std::max(maxLength, 0);
  dots = std::clamp(dots, 0, maxLength);
  const std::u16string_view old = viewOf(*this);
  if (old.size() <= static_cast<size_t>(maxLength)) return *this;
  if (maxLength == 0) return empty();
  const bool onlyDots = dots == maxLength;
  if (!onlyDots && (where < 0 || where > 2)) return *this;
  const auto kept = static_cast<size_t>(maxLength - dots);
  const size_t head = where == 0 ? kept : where == 1 ? 0 : kept / 2;
  OroString result;
  result.text_ = newUnits(static_cast<size_t>(maxLength), result.textCapacity_);
  char16_t* const dotted = copyOf(old.substr(0, head), result.text_);
  std::fill_n(dotted, dots, u'.');
  copyOf(old.substr(old.size() - (kept - head)), dotted + dots);
  return result;
}

// Numbers at the front.

double OroString::toDouble(bool* ok) const {
  double value = 0;
  const OroAsciiHead head(viewOf(*this));
  const bool found = oronumbers::parseReal(head.text(), value) != oronumbers::Parsed::noNumber;
  if (ok != nullptr) *ok = found;
  return value;
}

int OroString::toInt(bool* ok) const {
  int32_t value = 0;
  const OroAsciiHead head(viewOf(*this));
  const bool found = oronumbers::parseInt(head.text(), value);
  if (ok != nullptr) *ok = found;
  return value;
}

// The list encoding.

void OroString::appendCounted(const OroString& text) {
  const std::u16string_view counted = viewOf(text);
  oronumbers::Buffer buffer;
  OroString encoded;
  encoded.appendBytes(oronumbers::printUnsigned(counted.size(), buffer));
  encoded.append(u' ');
  encoded.appendUnits(counted);
  append(encoded);
}

void OroString::appendList(const OroStringArray& list) {
  for (int i = 1; i < list.lastIndex(); ++i) appendCounted(list[i]);
}

void OroString::parseList(OroStringArray& out) const {
  const OroString whole(*this);  // this may be one of the texts that are written over
  const std::u16string_view units = viewOf(whole);
  out.setLastIndex(0);
  for (size_t at = 0; at < units.size();) {
    const size_t blank = units.find(u' ', at);
    if (blank == units.npos) return;
    int32_t count = 0;
    const OroAsciiHead head(units.substr(at, blank - at));
    if (!oronumbers::parseInt(head.text(), count) || count < 1) {
      out.append(whole);
      return;
    }
    const std::u16string_view text = units.substr(blank + 1, static_cast<size_t>(count));
    out.append(text.empty() ? OroString() : stringOf(text));
    at = blank + 1 + static_cast<size_t>(count);
  }
}
