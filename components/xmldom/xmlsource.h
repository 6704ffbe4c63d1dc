// XmlSource: the text of a document as the parser takes it: UTF-8 without a mark in front, with a
// line feed behind it.
//
//   XmlSource source;
//   const char* problem = source.readFile(path);
//
// Owns the bytes; the parser changes them in place. One thread at a time.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

class OroFileReader;
class OroPath;
class OroString;

// Counted from 1; columns are characters.
struct XmlPosition {
  int line = 1;
  int column = 1;
};

class XmlSource {
 public:
  // No document is larger; a file that is gets refused before it is read whole.
  static constexpr size_t kMostBytes = size_t{1} << 30;

  // Both return null, or the English text for what went wrong. "%1" in it is the file.
  const char* readFile(const OroPath& path);
  const char* readText(const OroString& text);

  char* begin() { return begin_; }
  size_t size() const { return size_; }  // bytes without the one behind
  std::string_view text() const { return {begin_, size_}; }

  // Requires: the parser has not changed the bytes yet.
  XmlPosition positionOf(size_t offset) const;

 private:
  const char* readAll(OroFileReader& file);
  const char* takeUnits(std::u16string_view units);
  const char* fromUtf16(bool bigEndian);

  std::unique_ptr<char[]> bytes_;
  char* begin_ = nullptr;
  size_t size_ = 0;
};
