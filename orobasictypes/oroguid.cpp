#include "orobasictypes/oroguid.h"

#include <cstdio>

#include "orobasictypes/kelcstring.h"

namespace {

// Takes a text apart from the front. The first thing that does not fit makes it fail for good.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool succeeded() const { return good_ && rest_.empty(); }
  bool startsWith(char c) const { return !rest_.empty() && rest_.front() == c; }

  void expect(std::string_view literal) {
    good_ = good_ && rest_.size() >= literal.size();
    for (size_t i = 0; good_ && i < literal.size(); ++i) good_ = lower(rest_[i]) == literal[i];
    if (good_) rest_.remove_prefix(literal.size());
  }

  // At least `minimum` and at most `maximum` hexadecimal digits.
  uint32_t hex(int minimum, int maximum) {
    uint32_t value = 0;
    int digits = 0;
    for (; digits < maximum && !rest_.empty(); ++digits, rest_.remove_prefix(1)) {
      const int digit = hexDigit(lower(rest_.front()));
      if (digit < 0) break;
      value = value * 16 + static_cast<uint32_t>(digit);
    }
    good_ = good_ && digits >= minimum;
    return value;
  }

 private:
  static char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
  static int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
  }

  std::string_view rest_;
  bool good_ = true;
};

GUID scanGrouped(Scanner& text) {
  GUID id;
  const bool braces = text.startsWith('{');
  if (braces) text.expect("{");
  id.data1 = text.hex(8, 8);
  text.expect("-");
  id.data2 = static_cast<uint16_t>(text.hex(4, 4));
  text.expect("-");
  id.data3 = static_cast<uint16_t>(text.hex(4, 4));
  text.expect("-");
  for (int i = 0; i < 8; ++i) {
    if (i == 2) text.expect("-");
    id.data4[i] = static_cast<uint8_t>(text.hex(2, 2));
  }
  if (braces) text.expect("}");
  return id;
}

GUID scanValues(Scanner& text) {
  GUID id;
  text.expect("0x");
  id.data1 = text.hex(1, 8);
  text.expect(", 0x");
  id.data2 = static_cast<uint16_t>(text.hex(1, 4));
  text.expect(", 0x");
  id.data3 = static_cast<uint16_t>(text.hex(1, 4));
  for (uint8_t& byte : id.data4) {
    text.expect(", 0x");
    byte = static_cast<uint8_t>(text.hex(1, 2));
  }
  return id;
}

}  // namespace

KelCString oroGuidText(const GUID& id) {
  char text[80];
  const uint8_t* b = id.data4;
  std::snprintf(text, sizeof text,
                "0x%x, 0x%x, 0x%x, 0x%x, 0x%x, 0x%x, 0x%x, 0x%x, 0x%x, 0x%x, 0x%x", id.data1,
                id.data2, id.data3, b[0], b[1], b[2], b[3], b[4], b[5], b[6], b[7]);
  return KelCString(text);
}

bool oroParseGuid(std::string_view text, GUID& id) {
  for (const auto scan : {scanGrouped, scanValues}) {
    Scanner scanner(text);
    const GUID read = scan(scanner);
    if (!scanner.succeeded()) continue;
    id = read;
    return true;
  }
  return false;
}
