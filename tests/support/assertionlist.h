// AssertionList: collects failed assertions for the life of this object, instead of the process's
// end. Each is its expression and its source: "bo_ orobasictypes/orofile".
//
//   tests::AssertionList assertions;
//   writer.WriteInt32(1);
//   EXPECT_THAT(assertions.take(), ElementsAre("bo_ orobasictypes/orofile"));
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "orobasictypes/kelrealloc.h"

namespace tests {

class AssertionList {
 public:
  AssertionList() {
    kelSetAssertCallback(
        [](void* self, const char* expression, const char* file, int32_t) {
          static_cast<AssertionList*>(self)->texts_.push_back(std::string(expression) + " " + file);
        },
        this);
  }
  ~AssertionList() { kelSetAssertCallback(nullptr, nullptr); }
  AssertionList(const AssertionList&) = delete;
  AssertionList& operator=(const AssertionList&) = delete;

  // What failed since the last call.
  std::vector<std::string> take() { return std::exchange(texts_, {}); }

 private:
  std::vector<std::string> texts_;
};

}  // namespace tests
