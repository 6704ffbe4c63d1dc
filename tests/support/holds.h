// Whether a text has a part in it; what it says of a failure shows the text's beginning.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace tests {

inline testing::AssertionResult holds(const std::string& text, const std::string& part) {
  if (text.find(part) != text.npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "no '" << part << "' in: " << text.substr(0, 4000);
}

}  // namespace tests
