// OroUnicodeStream: writes a text file in the form that OroInputUnicodeStream reads.
//
//   OroUnicodeStream file(path);
//   file.writeLine(OroString("first line"));
//
// In a language that is marked as one of wide files, by the translation "yes" of the key
// "kel:unicode", the file has the mark FF FE and units of 16 bits, low byte first; else it has the
// low bytes alone, without a mark. The file is made or replaced, empty until the first text. It
// owns the file and closes it when it goes. One thread at a time.
#pragma once

#include <memory>

#include "orobasictypes/oroofstream.h"

class OroPath;

class OroUnicodeStream {
 public:
  OroUnicodeStream();  // without a file
  explicit OroUnicodeStream(const OroPath& path);
  OroUnicodeStream(const OroUnicodeStream&) = delete;
  OroUnicodeStream& operator=(const OroUnicodeStream&) = delete;

  // False without a file and after a text that could not be written.
  bool isOpen() const { return file_ != nullptr && !file_->fail(); }
  bool isNarrow() const { return narrowFile_; }

  void write(const OroString& text);
  // The text and CR LF.
  void writeLine(const OroString& text);

 private:
  bool started_ = false;     // the mark is written where there is one
  bool narrowFile_ = false;  // low bytes alone
  std::unique_ptr<OroOfstream> file_;
};

// Whether the language in force has files of bytes: its texts do not have "yes" for "kel:unicode".
bool oroLanguageIsNarrow();
