// PointTextReader: reads points from lines of text.
//
// A line holds x y z, or x y z r g b with colours from 0 to 255, separated by blanks, tabs, a comma
// or a semicolon. "#" begins a comment, empty lines are passed over, lines end in LF or CR LF. Any
// other line is an error.
//
// Derived classes read files whose columns mean something else. Memory beyond a block of points is
// one line. One thread.
#pragma once

#include <vector>

#include "components/points/formats/pointdecimals.h"
#include "components/points/formats/pointformatreader.h"
#include "components/points/formats/pointtextline.h"

class PointTextReader : public PointFormatReader {
 public:
  // A longer line is no point: the whole of a binary file must not be gathered as one.
  static constexpr size_t kLongestLine = 4096;

  bool read(PointInputBuffer& bytes, PointSink& sink) override;

 protected:
  // Takes a line that is neither empty nor a comment, and goes to where it is over. `bytes` stands
  // in front of it.
  virtual bool takeLine(PointTextLine& line, PointInputBuffer& bytes);
  // At the end of the file, before its last cloud is closed.
  virtual bool finish() { return true; }

  bool takePoint(PointTextLine& line);
  bool takeCoordinate(PointTextLine& line, double& value);
  bool takeColor(PointTextLine& line, PointColor& color);
  // Hands a point on with those of its block; the first of a cloud decides whether it has colours.
  bool append(const double* xyz, const PointColor* color);
  // Closes the cloud, if any point or count has begun one.
  bool endCloud();

  bool failHere(const char* key) { return failAtLine(line_, key); }

  int64_t announced_ = -1;  // points of the cloud that is to come or being read, -1 for not known
  int64_t appended_ = 0;    // points of the cloud so far

 private:
  static constexpr size_t kBlock = 1024;

  bool readLines(PointInputBuffer& bytes);
  bool readLine(PointInputBuffer& bytes, const char* end);
  bool isBegun() const { return appended_ > 0 || announced_ >= 0; }
  bool begin();
  bool flush();

  PointSink* sink_ = nullptr;  // during read()
  PointDecimals decimals_;
  size_t gathered_ = 0;  // points that the sink has not got yet
  std::vector<double> xyz_ = std::vector<double>(3 * kBlock);
  std::vector<PointColor> colors_ = std::vector<PointColor>(kBlock);
  bool hasColors_ = false;
  bool told_ = false;  // the sink knows of the cloud
};
