// StoreTest: a fixture with an empty store and short names for its commonest questions.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "base/basic/keldatastore.h"
#include "orobasictypes/orocommandlineflag.h"
#include "orobasictypes/orostring.h"
#include "tests/base/basic/recordingreceiver.h"

namespace tests {

class StoreTest : public testing::Test {
 protected:
  StoreTest() : store(true, 50, 3000) {}
  ~StoreTest() override { oroCommandLineFlag() = 0; }

  // An integer with the full range, in a directory of its own.
  void makeInt(const char* path, int32_t value = 0, uint32_t flags = 0) {
    const std::string text(path);
    const size_t slash = text.rfind('/');
    if (slash != std::string::npos) store.CreateDirectory(text.substr(0, slash).c_str());
    ASSERT_TRUE(store.CreateInt(path, value, INT32_MIN, INT32_MAX, flags));
  }

  int32_t kindOf(const char* path) {
    int32_t kind = -1;
    return store.GetType(path, kind) ? kind : -1;
  }

  std::vector<std::string> pathsIn(const char* path) {
    OroArray<const char*> list;
    store.CollectPaths(path, list);
    return {list.begin(), list.end()};
  }

  KelDataStore store;
};

}  // namespace tests
