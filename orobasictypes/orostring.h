// OroString: wide text (UTF-16 code units) for everything that a user sees, for settings values and
// file names. Names of the program are KelCString.
//
//   static constinit OroString title(u"Open File", "Open File");  // a literal pair: no allocation
//   OroString name = OroString::fromUtf8(bytes);
//   name.append(u'!');
//
// It owns its text or borrows one that outlives it, and keeps two narrow forms that are made when
// asked for. Copies of an owned text have a buffer of their own. Null and empty are alike but for
// isNull. A plain value with one owner at a time: also toNarrow and toUtf8 write to it.
// Arguments may lie inside the own buffer. Indexes and counts out of range are clipped.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <iosfwd>
#include <string_view>

class BinInput;
class BinOutput;
class KelCString;
class OroStringArray;
class OroStringFormat;

class OroString {
 public:
  constexpr OroString() noexcept = default;
  // A literal pair; `narrow` is what toNarrow gives from then on, or null for none.
  // Requires: both outlive the string and its copies.
  constexpr OroString(const char16_t* text, const char* narrow) noexcept
      : text_(const_cast<char16_t*>(text)), narrow_(const_cast<char*>(narrow)) {}

  // Each byte widened with its sign (0x80 becomes 0xFF80): no code page, no UTF-8.
  explicit OroString(const char* text, int count = -1);
  explicit OroString(const KelCString& text);
  // A copy; below 0 measures, 0 borrows the whole text.
  explicit OroString(const char16_t* text, int count = -1);
  explicit OroString(char character);
  explicit OroString(char16_t unit);
  explicit OroString(int value);
  explicit OroString(unsigned value);
  explicit OroString(long value);
  explicit OroString(unsigned long value);
  explicit OroString(long long value);
  explicit OroString(unsigned long long value);
  explicit OroString(double value);  // "%f"; "%e" above 1e10
  explicit OroString(bool) = delete;
  explicit OroString(wchar_t) = delete;
  OroString(int value, const OroStringFormat& format);
  OroString(long value, const OroStringFormat& format);
  OroString(long long value, const OroStringFormat& format);
  OroString(double value, const OroStringFormat& format);
  // Decodes UTF-8 of up to three bytes a unit. Any error (four-byte forms, overlong forms, an end
  // inside a sequence) gives the empty text. Not for names of the operating system.
  static OroString fromUtf8(const char* text);
  // The shared empty string: not null.
  static const OroString& empty();

  // A borrowed narrow form is shared, an owned one is not copied.
  OroString(const OroString& other);
  constexpr OroString(OroString&& other) noexcept { takeFields(other); }
  // Replaces the text alone: the narrow forms stay as they were, a borrowed one for ever.
  OroString& operator=(const OroString& other);
  OroString& operator=(OroString&& other) noexcept;
  constexpr ~OroString() {
    if (textCapacity_ > 0 || narrowCapacity_ > 0 || utf8Capacity_ > 0) freeBuffers();
  }

  // A borrowed narrow form, or what the text service gives, or the units below 128. Owned by the
  // string, valid until the next call; never null.
  const char* toNarrow() const;
  // Each unit by itself: a surrogate pair gives six bytes. Owned by the string, valid until the
  // next call; never null.
  const char* toUtf8() const;
  // Makes the UTF-8 form and hands its buffer over, which the caller gives to kelPoolFree.
  char* takeUtf8(int32_t& capacity) const;

  int32_t length() const;  // units, measured at every call
  constexpr bool isNull() const noexcept { return text_ == nullptr; }
  constexpr bool isEmpty() const noexcept { return text_ == nullptr || *text_ == 0; }
  constexpr const char16_t* text() const noexcept { return text_; }  // may be null
  constexpr const char16_t* wideText() const noexcept { return text_ != nullptr ? text_ : u""; }
  // Bytes of the own buffer; below 1 means borrowed.
  constexpr int32_t textCapacity() const noexcept { return textCapacity_; }
  char16_t at(int index) const;  // 0 outside
  void setAt(int index, char16_t unit);
  bool isDigit(int index) const;  // false outside
  bool isSpace(int index) const;

  friend bool operator==(const OroString& left, const OroString& right) {
    return left.equals(right);
  }
  // Bytes are widened with their sign.
  friend bool operator==(const OroString& left, const char* right) { return left.equals(right); }
  // In the order of the text service when there is one, else as compareOrdinal.
  friend bool operator<(const OroString& left, const OroString& right) {
    return left.compare(right) < 0;
  }
  friend bool operator>(const OroString& left, const OroString& right) {
    return left.compare(right) > 0;
  }
  int compareOrdinal(const OroString& other) const;  // -1, 0, 1 by unsigned units
  // True when both have `count` units and these agree; a count below 1 is true.
  bool startsWith(const OroString& other, int count) const;
  // Without the text service the last possible position is not tried; callers rely on it.
  bool contains(const OroString& part, bool caseSensitive) const;
  uint32_t hash() const;  // the sum of the units

  // Positions, -1 for not found.
  int find(const OroString& part, int start = 0) const;
  int find(char16_t unit, int start = 0) const;
  int findLast(const OroString& part, int limit = -1) const;  // the last hit at or before limit

  void append(const OroString& other);
  void append(const char* text, int count = -1);
  void append(char16_t unit);
  void appendAt(const OroString& other, int index);   // that one unit
  void assign(const OroString& other);                // as operator=
  void assign(const char16_t* text, int count = -1);  // as the constructor; null frees and nulls
  void truncateAt(int index);                         // leaves a borrowed text as it is
  void erase(int start, int count);
  void replaceAll(const OroString& from, const OroString& to);
  void swap(OroString& other) noexcept;
  // Replaces "%1" to "%9" and "%:" (the tenth) by the arguments: ten slots, null for none. Each
  // number may occur once. A borrowed text is left as it is.
  void substitute(const OroString* const* arguments);

  // `start` up to but not including `end` replaced.
  OroString splice(int start, int end, const OroString& insert) const;
  OroString left(int count) const;
  OroString mid(int start) const;
  OroString mid(int start, int count) const;  // null if nothing is left of it
  OroString toLower() const;                  // A to Z alone without the text service
  OroString toUpper() const;
  OroString stripSpace() const;  // removes white space everywhere
  OroString normalize(char16_t replacement) const;
  // At most maxLength units with `dots` full stops: where 0 keeps the head, 1 the tail, 2 both.
  OroString elide(int maxLength, int where, int dots) const;

  // The number at the front; *ok tells whether there is one. toInt takes 0x and 0 prefixes.
  double toDouble(bool* ok = nullptr) const;
  int toInt(bool* ok = nullptr) const;

  // The list encoding: each text behind its length and a blank.
  void appendCounted(const OroString& text);
  void appendList(const OroStringArray& list);  // the last element is left out; readers rely on it
  void parseList(OroStringArray& out) const;

  // The units alone in a binary file, without a length: they fill what they stand in. Reads all
  // that the input still has, or so many bytes of it (an odd last one is left); the first unit 0
  // ends the text. False, with the text as it was, when they do not come or are more than a text
  // holds.
  bool write(BinOutput& output) const;
  bool read(BinInput& input);
  bool read(BinInput& input, int64_t bytes);

 protected:
  char16_t* makeOwned();  // for edits in place; null for null

 private:
  bool equals(const OroString& other) const;
  bool equals(const char* other) const;
  int compare(const OroString& other) const;
  constexpr void takeFields(OroString& other) noexcept {
    text_ = other.text_;
    textCapacity_ = other.textCapacity_;
    narrow_ = other.narrow_;
    narrowCapacity_ = other.narrowCapacity_;
    utf8_ = other.utf8_;
    utf8Capacity_ = other.utf8Capacity_;
    other.text_ = nullptr;
    other.textCapacity_ = 0;
    other.narrow_ = nullptr;
    other.narrowCapacity_ = 0;
    other.utf8_ = nullptr;
    other.utf8Capacity_ = 0;
  }
  void freeBuffers() noexcept;
  void adopt(char16_t* text, int32_t capacity) noexcept;
  void assignJoined(std::initializer_list<std::u16string_view> parts);
  void appendUnits(std::u16string_view units);
  void appendBytes(std::string_view bytes);
  char16_t* growBy(size_t units);
  char* newNarrow(size_t bytes) const;
  bool isInside(int index) const;
  bool holds(const char16_t* text) const;  // in the own buffer

  char16_t* text_ = nullptr;            // terminated, or null
  int32_t textCapacity_ = 0;            // bytes as the pool reported them; below 1: borrowed
  mutable char* narrow_ = nullptr;      // null until asked for, or a borrowed literal
  mutable int32_t narrowCapacity_ = 0;  // bytes; 0 with a text: borrowed, never made anew
  mutable char* utf8_ = nullptr;        // null until asked for
  mutable int32_t utf8Capacity_ = 0;    // bytes
};

std::ostream& operator<<(std::ostream& stream, const OroString& text);  // writes toNarrow

// Frees what the shared strings hold; they are made anew when used again. For the process's end.
void oroStringCleanup();
