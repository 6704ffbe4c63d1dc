// The ids of the staged application description, so that tests load libraries as it names them.
//
//   const GUID component = tests::describedId("component xmldom ");
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "orobasictypes/oroguid.h"
#include "tests/testpaths.h"

namespace tests {

// The id that stands behind the words; fails the test where there is none.
inline GUID describedId(const std::string& words) {
  std::ifstream in(stageDir() / "cowl.description");
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  const size_t line = text.find(words);
  const size_t begin = text.find('{', line);
  GUID id;
  EXPECT_TRUE(line != text.npos && oroParseGuid(text.substr(begin, 38), id)) << words;
  return id;
}

}  // namespace tests
