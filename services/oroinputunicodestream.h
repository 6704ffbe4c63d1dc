// OroInputUnicodeStream: reads a text file line by line, in 16-bit units or in bytes.
//
//   OroInputUnicodeStream file(path);
//   for (OroString line; file.readLine(line, OroString("\n"));) use(line);
//
// A file that begins with the mark FF FE has units of 16 bits, low byte first; every other file has
// bytes, which are widened with their sign, and no encoding. Lines end in CR LF: a file with bare
// line feeds is one long line. It owns the file. One thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orobasictypes/oroifstream.h"

class OroPath;

class OroInputUnicodeStream {
 public:
  // The longest line in units. A file with a longer one is not read any further.
  static constexpr size_t kMostUnits = size_t{1} << 22;

  OroInputUnicodeStream();  // without a file
  explicit OroInputUnicodeStream(const OroPath& path);
  OroInputUnicodeStream(const OroInputUnicodeStream&) = delete;
  OroInputUnicodeStream& operator=(const OroInputUnicodeStream&) = delete;

  // False without a file and after a read that came to its end or failed.
  bool isOpen() const { return file_ != nullptr && !file_->fail(); }
  // Whether all of the file was read.
  bool atEnd() const { return file_ != nullptr && file_->eof() && !file_->bad(); }
  // Bytes when it was opened; 0 without a file.
  int64_t size() const { return size_; }
  // Whether the texts of the language are kept in files of bytes, which a new file would follow.
  bool isNarrow() const { return narrowFile_; }

  // Reads up to the delimiter, which is not stored; "\n" stands for CR LF. The file's end is one
  // too, and an empty delimiter stands nowhere in the file. A unit 0 ends what is stored of a line.
  // True when the delimiter or at least one unit was read.
  bool readLine(OroString& out, const OroString& delimiter);

 private:
  void start();
  bool readUnit(char16_t& unit);
  bool readUnits(std::u16string& units, std::u16string_view delimiter);

  bool started_ = false;     // the front of the file was looked at
  bool narrowFile_ = false;  // bytes rather than units
  bool wideFile_ = false;    // the file has the mark
  int64_t size_ = 0;
  std::unique_ptr<OroIfstream> file_;
};
