// Json: the text of what a file holds, for the reader that checks it.
//
//   tests::Json json;
//   json.open('[').text("signed").integer(4).close();
//   json.save("example.bin");  // example.bin.json
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

class Json {
 public:
  // A list '[' or an object '{'; close() ends the innermost.
  Json& open(char bracket) {
    separate();
    text_ += bracket;
    open_.push_back(bracket);
    first_ = true;
    return *this;
  }
  Json& close() {
    text_ += open_.back() == '[' ? ']' : '}';
    open_.pop_back();
    first_ = false;
    return *this;
  }
  // The name of the next value of an object.
  Json& key(std::string_view name) {
    text(name);
    text_ += ':';
    first_ = true;
    return *this;
  }

  // Each byte as the character of that number.
  Json& text(std::string_view bytes) {
    begin();
    for (const char byte : bytes) put(static_cast<uint8_t>(byte));
    return end();
  }
  Json& text(std::u16string_view units) {
    begin();
    for (const char16_t unit : units) put(unit);
    return end();
  }
  template <std::integral T>
  Json& integer(T value) {
    separate();
    text_ += std::to_string(value);
    return *this;
  }
  Json& null() {
    separate();
    text_ += "null";
    return *this;
  }
  // A value that is complete by itself.
  Json& json(const Json& value) {
    separate();
    text_ += value.text_;
    return *this;
  }
  // As a text, for JSON has no infinities and no zero with a sign.
  Json& number(double value) {
    char digits[40];
    const auto made = std::to_chars(digits, digits + sizeof digits, value);
    return text(std::string_view(digits, static_cast<size_t>(made.ptr - digits)));
  }

  // Beside the file, in a file of its own.
  void save(const std::filesystem::path& file) const {
    std::ofstream(file.string() + ".json", std::ios::binary) << text_ << '\n';
  }

 private:
  void separate() {
    if (!first_) text_ += ',';
    first_ = false;
  }
  void begin() {
    separate();
    text_ += '"';
  }
  Json& end() {
    text_ += '"';
    return *this;
  }
  void put(char16_t unit) {
    if (unit >= u' ' && unit <= u'~' && unit != u'"' && unit != u'\\') {
      text_ += static_cast<char>(unit);
      return;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
    text_ += escape;
  }

  std::string text_;
  std::string open_;   // the brackets that are open
  bool first_ = true;  // nothing stands in the innermost yet
};

}  // namespace tests
