#include "platform/registrytext.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/osregistry.h"
#include "platform/text.h"

namespace platform {
namespace {

constexpr std::u16string_view header = u"cowl-registry 1";
constexpr std::u16string_view footer = u"end";
constexpr std::u16string_view blanks = u" \t";

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Whether the surrogate at the index has no partner.
bool isLone(std::u16string_view text, std::size_t i) {
  if (isHigh(text[i])) return i + 1 == text.size() || !isLow(text[i + 1]);
  return isLow(text[i]) && (i == 0 || !isHigh(text[i - 1]));
}

bool hasLone(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isLone(text, i)) return true;
  }
  return false;
}

int hexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  return -1;
}

// --- Writing

constexpr char hexDigits[] = "0123456789abcdef";

void appendHex(std::string& out, unsigned value, int digits) {
  while (digits-- > 0) out += hexDigits[value >> (4 * digits) & 15];
}

// `special` are the units that stand behind "\" beside "\" itself.
void appendEscaped(std::string& out, std::u16string_view text, std::u16string_view special) {
  std::u16string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool byNumber = unit < 0x20 || unit == 0x7F || isLone(text, i);
    if (unit == u'\\' || special.find(unit) != special.npos) plain += u'\\';
    if (!byNumber) {
      plain += unit;
      continue;
    }
    out += toSystem(plain) + "\\u";
    plain.clear();
    appendHex(out, unit, 4);
  }
  out += toSystem(plain);
}

void appendQuoted(std::string& out, std::u16string_view text) {
  out += '"';
  appendEscaped(out, text, u"\"");
  out += '"';
}

// The text of a value, if it is a plain one: whole units, a zero at the end and none before.
std::optional<std::u16string> plainText(const RegistryValue& value) {
  if (value.type != registryTypeText || value.data.empty() || value.data.size() % 2 != 0) {
    return std::nullopt;
  }
  std::u16string text(value.data.size() / 2, u'\0');
  std::memcpy(text.data(), value.data.data(), value.data.size());
  if (text.find(u'\0') != text.size() - 1) return std::nullopt;
  text.pop_back();
  return text;
}

void appendValue(std::string& out, const RegistryValue& value) {
  appendQuoted(out, value.name);
  if (value.type == registryTypeDword && value.data.size() == sizeof(std::uint32_t)) {
    std::uint32_t number = 0;
    std::memcpy(&number, value.data.data(), sizeof number);
    out += " = number " + std::to_string(number);
  } else if (const auto text = plainText(value)) {
    out += " = text ";
    appendQuoted(out, *text);
  } else {
    out += " = bytes " + std::to_string(value.type);
    for (const char byte : value.data) {
      out += ' ';
      appendHex(out, static_cast<unsigned char>(byte), 2);
    }
  }
  out += '\n';
}

// Ends behind the limit of what can be read: names that are deep and long come again in each key.
void appendKeys(std::string& out, const RegistryNode& node, const std::string& path) {
  for (const auto& [folded, value] : node.values) appendValue(out, value);
  for (const auto& [folded, child] : node.keys) {
    if (out.size() > largestRegistryText) return;
    std::string below = path.empty() ? path : path + '/';
    appendEscaped(below, child->name, u"/]");
    out += "\n[" + below + "]\n";
    appendKeys(out, *child, below);
  }
}

std::size_t keyCount(const RegistryNode& node) {
  std::size_t count = 0;
  for (const auto& [folded, child] : node.keys) count += 1 + keyCount(*child);
  return count;
}

// --- Reading

// What stands in one line, taken from its front. A failure leaves nothing sensible.
class Line {
 public:
  explicit Line(std::u16string_view text) : rest_(text) { skipBlanks(); }

  bool isEmpty() const { return rest_.empty(); }
  char16_t front() const { return rest_.empty() ? u'\0' : rest_.front(); }

  void skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size()));
  }
  bool take(char16_t unit) {
    if (front() != unit || rest_.empty()) return false;
    rest_.remove_prefix(1);
    return true;
  }
  // The word, which ends in a blank or the line, and the blanks behind it.
  std::u16string_view word() {
    const std::u16string_view found = rest_.substr(0, rest_.find_first_of(blanks));
    rest_.remove_prefix(found.size());
    skipBlanks();
    return found;
  }
  // Appends text up to one of the ends, which is not taken.
  bool escapedUntil(std::u16string_view ends, std::u16string& out) {
    while (!rest_.empty() && ends.find(front()) == ends.npos) {
      if (take(u'\\')) {
        if (!escape(out)) return false;
      } else {
        out += front();
        rest_.remove_prefix(1);
      }
    }
    return !rest_.empty();
  }
  bool quoted(std::u16string& out) { return take(u'"') && escapedUntil(u"\"", out) && take(u'"'); }

 private:
  bool escape(std::u16string& out) {
    if (rest_.empty()) return false;
    if (!take(u'u')) {
      out += front();
      rest_.remove_prefix(1);
      return std::u16string_view(u"\\\"/]").find(out.back()) != std::u16string_view::npos;
    }
    unsigned unit = 0;
    for (int i = 0; i < 4; ++i) {
      const int digit = hexDigit(front());
      if (digit < 0) return false;
      unit = unit * 16 + static_cast<unsigned>(digit);
      rest_.remove_prefix(1);
    }
    out += static_cast<char16_t>(unit);
    return true;
  }

  std::u16string_view rest_;
};

bool parseNumber(std::u16string_view word, std::uint32_t& out) {
  std::uint64_t number = 0;
  if (word.empty() || word.size() > 10) return false;
  for (const char16_t unit : word) {
    if (unit < u'0' || unit > u'9') return false;
    number = number * 10 + (unit - u'0');
  }
  out = static_cast<std::uint32_t>(number);
  return number <= UINT32_MAX;
}

std::string bytesOf(const void* data, std::size_t size) {
  return {static_cast<const char*>(data), size};
}

class Parser {
 public:
  bool line(std::u16string_view text) {
    Line line(text);
    if (line.isEmpty() || line.front() == u'#') return true;
    if (ended_) return false;
    if (!begun_)
      return begun_ = line.word() == header.substr(0, header.find(u' ')) &&
                      line.word() == header.substr(header.find(u' ') + 1) && line.isEmpty();
    if (line.front() == u'[') return key(line);
    if (line.front() == u'"') return value(line);
    ended_ = line.word() == footer && line.isEmpty();
    return ended_;
  }
  bool isWhole() const { return ended_; }
  RegistryNode take() { return std::move(root_); }

 private:
  bool key(Line& line) {
    line.take(u'[');
    current_ = &root_;
    std::size_t level = 0;
    if (line.take(u']')) return rest(line);
    do {
      std::u16string name;
      if (!line.escapedUntil(u"/]", name) || !isKeyName(name)) return false;
      if (++level > deepestRegistryLevel) return false;
      if (current_->child(name) == nullptr && ++keyCount_ > mostRegistryKeys) return false;
      current_ = &current_->childMade(name);
    } while (line.take(u'/'));
    return line.take(u']') && rest(line);
  }
  static bool isKeyName(std::u16string_view name) {
    return !name.empty() && name.size() <= longestRegistryKeyName && name.find(u'\\') == name.npos;
  }

  bool value(Line& line) {
    std::u16string name;
    if (!line.quoted(name) || name.size() > longestRegistryValueName) return false;
    line.skipBlanks();
    if (!line.take(u'=')) return false;
    line.skipBlanks();
    const std::u16string_view kind = line.word();
    if (kind == u"number") return number(line, name);
    if (kind == u"text") return text(line, name);
    return kind == u"bytes" && bytes(line, name);
  }
  bool number(Line& line, std::u16string_view name) {
    std::uint32_t number = 0;
    if (!parseNumber(line.word(), number)) return false;
    current_->set(name, registryTypeDword, bytesOf(&number, sizeof number));
    return rest(line);
  }
  bool text(Line& line, std::u16string_view name) {
    std::u16string text;
    if (!line.quoted(text)) return false;
    current_->set(name, registryTypeText,
                  bytesOf(text.c_str(), (text.size() + 1) * sizeof(char16_t)));
    return rest(line);
  }
  bool bytes(Line& line, std::u16string_view name) {
    std::uint32_t type = 0;
    if (!parseNumber(line.word(), type)) return false;
    std::string data;
    while (!line.isEmpty()) {
      const std::u16string_view pair = line.word();
      if (pair.size() != 2 || hexDigit(pair[0]) < 0 || hexDigit(pair[1]) < 0) return false;
      data += static_cast<char>(hexDigit(pair[0]) * 16 + hexDigit(pair[1]));
    }
    current_->set(name, type, data);
    return true;
  }
  static bool rest(Line& line) {
    line.skipBlanks();
    return line.isEmpty();
  }

  RegistryNode root_;
  RegistryNode* current_ = &root_;  // of the last key line
  std::size_t keyCount_ = 0;
  bool begun_ = false;
  bool ended_ = false;
};

}  // namespace

std::optional<RegistryNode> parseRegistryText(std::string_view text) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (text.size() > largestRegistryText || text.find('\0') != text.npos) return std::nullopt;
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  Parser parser;
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::u16string units = fromSystem(line);
    if (hasLone(units) || !parser.line(units)) return std::nullopt;  // a lone one: not UTF-8
  }
  if (!parser.isWhole()) return std::nullopt;
  return parser.take();
}

std::string writeRegistryText(const RegistryNode& root) {
  std::string out = toSystem(header) + '\n';
  appendKeys(out, root, {});
  out += '\n' + toSystem(footer) + '\n';
  return out;
}

bool isReadableRegistryText(std::string_view text, const RegistryNode& root) {
  return text.size() <= largestRegistryText && keyCount(root) <= mostRegistryKeys;
}

}  // namespace platform
