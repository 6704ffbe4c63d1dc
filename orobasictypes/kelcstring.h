// KelCString: narrow text for the names of the program: interfaces, classes, components, registry
// keys, settings paths. Text that a user sees is OroString; file names are OroPath.
//
//   constexpr KelCString kName = KelCString::borrow("IOroRegistry");  // allocates nothing
//   KelCString key("MAIN_ARGV/");                                     // owns a copy
//   key.append("1");
//
// It owns its buffer or borrows a text that outlives it. Copies of an owned text have a buffer of
// their own, copies of a borrowed one share the pointer. Null and "" are two keys (equals, hash)
// but alike in all else. The bytes have no encoding. A plain value: borrowed literals may be read
// by any thread, an object is changed by one at a time.
// Arguments may lie inside the own buffer. Indexes and counts out of range are clipped.
#pragma once

#include <cstdint>
#include <iosfwd>

class OroString;

class KelCString {
 public:
  constexpr KelCString() noexcept = default;
  // Holds the pointer itself. Requires: `literal` (or null) outlives the string and its copies.
  static constexpr KelCString borrow(const char* literal) noexcept {
    KelCString borrowed;
    borrowed.text_ = const_cast<char*>(literal);  // capacity 0: never written
    return borrowed;
  }
  // The shared empty string: borrowed, not null.
  static const KelCString& empty();

  explicit KelCString(const char* text);    // null gives the null string, "" does not
  KelCString(const char* text, int count);  // at most count bytes; below 1 gives ""
  KelCString(const char* text, char) = delete;
  KelCString(const char* text, int start, int count);
  // Joined texts; each may be null. Null if the whole is empty.
  KelCString(const char* first, const char* second);
  KelCString(const char* first, const char* second, const char* third);
  static KelCString fromList(const char* const* list);  // ends with a null
  static KelCString fromTextAndInt(const char* text, int value);

  explicit KelCString(char character);
  explicit KelCString(int value);
  explicit KelCString(float value, bool exact = false);   // exact: the shortest text that reads
  explicit KelCString(double value, bool exact = false);  // back to the value; else "%f"
  explicit KelCString(bool) = delete;
  explicit KelCString(wchar_t) = delete;
  explicit KelCString(const std::ostringstream& stream);

  KelCString(const KelCString& other);
  constexpr KelCString(KelCString&& other) noexcept
      : text_(other.text_), capacity_(other.capacity_) {
    other.text_ = nullptr;
    other.capacity_ = 0;
  }
  constexpr ~KelCString() {
    if (capacity_ > 0) [[unlikely]]
      freeOwned(text_, capacity_);
  }

  KelCString& operator=(const KelCString& other);
  KelCString& operator=(KelCString&& other) noexcept;
  KelCString& operator=(const char* text);  // the pointer already held: nothing happens
  KelCString& operator=(char character);
  KelCString& operator=(int) = delete;
  // Takes the UTF-8 form of the text; its UTF-8 buffer changes hands. Never null afterwards.
  KelCString& operator=(const OroString& text);
  // A negative or too large count means the whole text; an empty one gives null.
  KelCString& assign(const char* text, int count);
  // The low byte of each unit; a negative count measures, 0 gives null.
  KelCString& assign(const char16_t* text, int count);
  KelCString& assignList(const char* const* list);

  constexpr const char* text() const noexcept { return text_; }  // may be null
  constexpr const char* c_str() const noexcept { return text_ != nullptr ? text_ : ""; }
  // Bytes of the own buffer; below 1 means borrowed.
  constexpr int32_t capacity() const noexcept { return capacity_; }
  int32_t length() const;  // measured at every call
  constexpr bool isNull() const noexcept { return text_ == nullptr; }
  constexpr bool isEmpty() const noexcept { return text_ == nullptr || *text_ == '\0'; }

  // The decimal number at the front, 0 when there is none.
  int toInt() const;
  // Null gives 0. Throw std::invalid_argument without a number and std::out_of_range when the
  // value does not fit; no module border may be crossed by them.
  float toFloat() const;
  double toDouble() const;
  // Reads a line without its newline. False, and null, at a failed read or a line above 4095 bytes.
  bool readLine(std::istream& stream);

  // All by unsigned bytes, except compareList.
  bool equals(const KelCString& other) const { return equals(other.text_); }
  bool equals(const char* other) const;
  bool less(const char* other) const;  // null before everything but null
  bool lessOrEqual(const char* other) const;
  int compare(const KelCString& other) const;      // -1, 0, 1
  int compareList(const char* const* list) const;  // against the joined texts, signed bytes
  uint32_t hash() const;                           // null 0, "" 5381
  static uint32_t hashList(const char* const* list);

  // Positions, -1 for not found.
  int find(char character, int start = 0) const;
  int find(const char* part, int start = 0) const;  // a negative start is asserted against
  int findLast(char character) const;
  int findLast(const char* part) const;

  void append(char character);
  void append(const char* text);
  KelCString concat(char character) const;
  KelCString concat(const char* text) const;
  void replaceChar(char from, char to);  // leaves a borrowed text as it is
  KelCString& replace(const char* from, const char* to);
  void splice(int start, int count, const char* insert);
  void toLower();
  void toUpper();
  void reverse();
  KelCString trim() const;
  KelCString simplify(char separator) const;  // runs of white space become one separator
  // At most maxLength bytes with `dots` full stops: where 0 keeps the head, 1 the tail, 2 both.
  KelCString elide(int maxLength, int where, int dots) const;
  // Turns a borrowed text into an owned copy; gives the bytes to write to, null for null.
  char* writableText();

 private:
  // Takes values, so that a borrowed string need not live in memory.
  static void freeOwned(char* text, int32_t capacity) noexcept;
  void reset() noexcept;                        // frees and nulls
  bool holds(const char* text) const noexcept;  // in the own buffer
  void adopt(char* text, int32_t capacity) noexcept;

  char* text_ = nullptr;  // terminated; never written while capacity_ is below 1
  int32_t capacity_ = 0;  // bytes, as the pool reported them
};

inline bool operator==(const KelCString& left, const KelCString& right) {
  return left.equals(right);
}
inline bool operator==(const KelCString& left, const char* right) { return left.equals(right); }

std::ostream& operator<<(std::ostream& stream, const KelCString& text);
