// Binary streams that are made in one module and used in another, as when an object of a component
// saves itself. Each module has a scrambler of its own; a stream keeps to that of its maker.
#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "platform/sharedlibrary.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/testpaths.h"

namespace {

using tests::FlipScrambler;
using tests::MemoryInput;
using tests::MemoryOutput;

class BinModules : public testing::Test {
 protected:
  BinModules() {
    const std::u16string leaf = std::u16string(u"othermodule") + platform::librarySuffix();
    library_ = platform::openLibrary(tests::textOf(tests::testLibsDir() / leaf).wideText(),
                                     platform::LibrarySearch::alteredPath);
    find(write_, "otherWrite");
    find(readBack_, "otherReadBack");
    find(read_, "otherRead");
    find(scramble_, "otherScramble");
    std::iota(values_.begin(), values_.end(), -1000);
  }
  ~BinModules() override { platform::closeLibrary(library_); }
  void SetUp() override { ASSERT_NE(scramble_, nullptr); }

  // Writes in turns, here and there, so that both modules come to flush the buffer.
  std::string written() {
    MemoryOutput output;
    for (size_t i = 0; i < values_.size(); i += 50) {
      const bool here = i % 100 == 0;
      EXPECT_TRUE(here ? output.Write(&values_[i], 50) : write_(&output, &values_[i], 50));
    }
    EXPECT_TRUE(output.SeekFlushed(4, true));
    char back[4] = {};
    EXPECT_EQ(readBack_(&output, back, 4), 4);
    EXPECT_EQ(std::string(back, 4), plain().substr(4, 4));
    return output.bytes;
  }
  std::vector<int32_t> read(const std::string& bytes) {
    MemoryInput input(bytes);
    std::vector<int32_t> values(values_.size());
    EXPECT_TRUE(input.Read(values.data(), 700));
    EXPECT_TRUE(read_(&input, values.data() + 700, 1300));
    return values;
  }
  std::string plain() const {
    std::string bytes;
    for (const int32_t value : values_) {
      for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    }
    return bytes;
  }

  std::vector<int32_t> values_ = std::vector<int32_t>(2000);
  bool (*write_)(BinOutput*, const int32_t*, int64_t) = nullptr;
  int64_t (*readBack_)(BinOutput*, void*, int64_t) = nullptr;
  bool (*read_)(BinInput*, int32_t*, int64_t) = nullptr;
  void (*scramble_)(bool) = nullptr;

 private:
  template <class Function>
  void find(Function*& function, const char* name) {
    if (library_ == nullptr) return;
    function = reinterpret_cast<Function*>(platform::librarySymbol(library_, name));
  }

  void* library_ = nullptr;
};

TEST_F(BinModules, WhatTheMakerInstalledScramblesInEveryModule) {
  const tests::ScramblerGuard guard(new FlipScrambler);
  const std::string bytes = written();
  EXPECT_TRUE(FlipScrambler::flipped(bytes) == plain());
  EXPECT_TRUE(read(bytes) == values_);
}

TEST_F(BinModules, WhatAnotherModuleInstalledScramblesNothing) {
  scramble_(true);
  EXPECT_TRUE(written() == plain());
  EXPECT_TRUE(read(plain()) == values_);
  scramble_(false);
}

}  // namespace
