// PointTextParser: turns the text of a point file into a PointCloud, block by block.
//
//   PointTextParser parser(cloud);
//   while (size_t n = file.read(block, sizeof block)) {
//     if (!parser.feed(block, n)) break;
//   }
//   if (!parser.finish()) report(parser.line(), parser.problem());
//
// A line holds x y z, or x y z r g b with colours from 0 to 255, separated by blanks, tabs, a comma
// or a semicolon. "#" begins a comment, empty lines are passed over, lines end in LF or CR LF.
// The first line that is anything else ends the parsing; the cloud then holds the points before it
// and must not be taken for the file. Memory beyond the points is one line. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "components/points/pointcloud.h"

class PointTextParser {
 public:
  // A longer line is no point: the whole of a binary file must not be gathered as one.
  static constexpr size_t kLongestLine = 4096;
  explicit PointTextParser(PointCloud& cloud) : cloud_(cloud) {}

  // False once a line was bad; further text is then ignored.
  bool feed(const char* text, size_t size);
  // Takes a last line that has no line end. False if any line was bad.
  bool finish();

  // The number of the bad line, from 1, and what is wrong with it as an English key.
  int64_t line() const { return line_; }
  const char* problem() const { return problem_; }

 private:
  bool parseLines(const char* at, const char* end);
  bool parsePoint(const char*& at, const char* end);
  bool parseColor(const char*& at, const char* end, PointColor& color);
  bool append(const double* position, const PointColor* color);
  bool handOver();  // what was gathered
  void noteDecimals(const char* text, const char* end);
  bool failLong();  // for a line whose end is not in sight
  bool fail(const char* problem);

  static constexpr int32_t kGathered = 256;

  PointCloud& cloud_;
  double positions_[3 * kGathered];  // points that the cloud has not got yet
  PointColor colors_[kGathered];
  int32_t gathered_ = 0;
  bool isFirst_ = true;            // no point was seen
  bool hasColors_ = false;         // as the first point
  std::string rest_;               // the beginning of a line whose end has not been fed yet
  int64_t line_ = 0;               // lines seen
  size_t decimalsSeen_ = 0;        // coordinates that decimals_ was taken from
  bool decimalsFixed_ = true;      // none of them was in exponent form
  const char* problem_ = nullptr;  // set by the first bad line
};
