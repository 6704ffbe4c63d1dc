// InfoReport: what cowlinfo has to say of one file.
//
// A plain value. `lines` is shown as it stands; each problem is a line of its own behind it, on
// standard error.
#pragma once

#include <string>
#include <vector>

struct InfoReport {
  std::string lines;                  // UTF-8, each with its line feed
  std::vector<std::string> problems;  // translated, without line feed

  bool good() const { return problems.empty(); }
  void line(size_t indent, const std::string& text) {
    lines.append(indent * 2, ' ').append(text).append("\n");
  }
};
