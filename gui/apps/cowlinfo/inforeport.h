// InfoReport: what cowlinfo has to say of one file.
//
// `lines` goes to standard output as it stands, at the end or, before a step that may end the
// process, so far as it goes; each problem is a line of its own behind it, on standard error.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct InfoReport {
  std::string lines;                  // UTF-8, each with its line feed; what is not shown yet
  std::vector<std::string> problems;  // translated, without line feed

  bool good() const { return problems.empty(); }
  bool hasLines() const { return shown || !lines.empty(); }
  void line(size_t indent, const std::string& text) {
    lines.append(indent * 2, ' ').append(text).append("\n");
  }
  void showLines();

  // Writes to standard output.
  static void print(std::string_view text);
  // Why standard output did not take something; empty when it took all.
  static const std::string& outputProblem();

  bool shown = false;  // some lines were
};
