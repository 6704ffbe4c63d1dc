// What a reader or writer of point files has to say: the one problem that ended it, and notes on
// what was lost. Plain values; the texts are keys of pointtexts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "orobasictypes/orostring.h"

struct PointProblem {
  const char* key = nullptr;  // null while there is none
  OroString argument;         // its %1
  bool isLine = false;        // `place` is a line, from 1, or else a byte, from 0
  int64_t place = 0;
};

// A warning about the file, which is its %1.
struct PointNote {
  const char* key;
  OroString first;   // its %2
  OroString second;  // its %3
};

using PointNotes = std::vector<PointNote>;

// Text of a file for people to read: UTF-8 where it is that, without control characters, at most a
// line of it.
OroString pointText(std::string_view text);
// A size for people, to three digits.
std::string pointFigure(double value);
