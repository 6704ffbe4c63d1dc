// PointTextLine: takes the numbers of a line of text, one after the other.
//
// Numbers stand apart by blanks and tabs, with at most one comma or semicolon among them; "#"
// begins a comment. Borrows the line; one thread.
#pragma once

#include <string_view>

#include "components/points/formats/pointcloudhead.h"

class PointTextLine {
 public:
  // The line that begins at `begin`; the text behind it, up to `end`, is not looked at.
  PointTextLine(const char* begin, const char* end) : at_(begin), end_(end) { skipBlanks(); }
  explicit PointTextLine(std::string_view line)
      : PointTextLine(line.data(), line.data() + line.size()) {}

  // Whether nothing more of the line counts: its end, or a comment.
  bool isOver() const {
    if (at_ == end_ || *at_ == '\n' || *at_ == '#') return true;
    return *at_ == '\r' && (at_ + 1 == end_ || at_[1] == '\n');
  }
  // Passes over one separator. False where there is none, so that "1 2 3x" or "1,,2" is no point.
  bool skipSeparator() {
    const char* const before = at_;
    skipBlanks();
    if (at_ != end_ && (*at_ == ',' || *at_ == ';')) {
      ++at_;
      skipBlanks();
    }
    return at_ != before;
  }
  void skipBlanks() {
    while (at_ != end_ && (*at_ == ' ' || *at_ == '\t')) ++at_;
  }

  // A finite number; nothing moves where there is none.
  bool takeReal(double& value);
  // A whole number from 0 to 255.
  bool takeChannel(uint8_t& value) {
    unsigned number = 0;
    const char* at = at_;
    for (; at != end_ && *at >= '0' && *at <= '9'; ++at) {
      number = number * 10 + static_cast<unsigned>(*at - '0');
      if (number > 255) return false;
    }
    if (at == at_) return false;
    at_ = at;
    value = static_cast<uint8_t>(number);
    return true;
  }
  bool takeWhole(int64_t& value);

  const char* at() const { return at_; }
  void goTo(const char* at) { at_ = at; }
  // What is left of the line, comments included, without the line end.
  std::string_view rest() const;
  // The line feed, or the end of the text.
  const char* lineEnd() const;

 private:
  const char* at_;
  const char* end_;  // of the text
};
