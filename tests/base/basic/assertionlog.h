// AssertionLog: collects failed assertions for the life of this object, instead of the process's
// end.
//
//   tests::AssertionLog assertions;
//   item.IsReceiverBlocked(&unknown);
//   EXPECT_THAT(assertions.files, ElementsAre("base/basic/keldata"));
#pragma once

#include <string>
#include <vector>

#include "orobasictypes/kelrealloc.h"

namespace tests {

class AssertionLog {
 public:
  AssertionLog() {
    kelSetAssertCallback(
        [](void* self, const char*, const char* file, int32_t) {
          static_cast<AssertionLog*>(self)->files.emplace_back(file);
        },
        this);
  }
  ~AssertionLog() { kelSetAssertCallback(nullptr, nullptr); }
  AssertionLog(const AssertionLog&) = delete;
  AssertionLog& operator=(const AssertionLog&) = delete;

  std::vector<std::string> files;  // the source that each one named
};

}  // namespace tests
