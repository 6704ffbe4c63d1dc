// What kelMalloc and kelRealloc try, size by size, on a heap that refuses.

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/kelpool.h"
#include "orobasictypes/kelrealloc.h"
#include "platform/descriptor.h"
#include "platform/temporaryfile.h"
#include "tests/orobasictypes/memoryworld.h"
#include "tests/support/testdisk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Sizes = std::vector<size_t>;

constexpr size_t kManagerPage = 24576;

class Exhaustion : public tests::MemoryWorld {
 protected:
  Exhaustion() { forget(); }
  ~Exhaustion() override {
    heap.onAllocate = nullptr;
    kelFree(block_);
  }

  // A block of `count` elements of 4 bytes, all bytes 0xAA.
  void fill(int32_t count) {
    kelMalloc(block_, 4, count);
    std::memset(block_, 0xAA, static_cast<size_t>(count) * 4);
    forget();
  }
  int32_t reallocate(int32_t curSize, int32_t minNewSize, int32_t maxNewSize) {
    // The pointer is stored also when the process ends.
    struct Store {
      uint32_t*& to;
      void* block;
      ~Store() { to = static_cast<uint32_t*>(block); }
    } store{block_, block_};
    return kelRealloc(store.block, 4, curSize, minNewSize, maxNewSize);
  }
  void expectGrown(int32_t oldCount, int32_t newCount) {
    for (int32_t i = 0; i < oldCount; ++i) ASSERT_EQ(block_[i], 0xAAAAAAAA) << i;
    for (int32_t i = oldCount; i < newCount; ++i) ASSERT_EQ(block_[i], 0u) << i;
  }

  uint32_t* block_ = nullptr;
};

// --- A fresh block

TEST_F(Exhaustion, FreshBlockIsTriedOnceWithoutAManager) {
  heap.refuseAbove = 100;
  EXPECT_EQ(end([&] { kelMalloc(block_, 4, 100); }), -1);
  EXPECT_THAT(tried(), ElementsAre(400));
  EXPECT_EQ(block_, nullptr);
}

TEST_F(Exhaustion, FreshBlockIsTriedAgainAfterEachRelease) {
  auto& manager = addManager(3);
  heap.refuseAbove = 100;
  EXPECT_EQ(end([&] { kelMalloc(block_, 4, 100); }), -1);
  EXPECT_THAT(tried(), ElementsAre(400, 400, 400, 400)) << "none after the refusal";
  EXPECT_EQ(manager.asked, 4);
}

TEST_F(Exhaustion, FreshBlockIsHadWhenTheReleaseSuffices) {
  auto& manager = addManager(100);
  heap.refuseUpToCall = heap.sizes.size() + 3;
  EXPECT_EQ(kelMalloc(block_, 4, 100), 100);
  EXPECT_EQ(manager.asked, 3);
  EXPECT_EQ(heap.sizes.back(), 400u);
}

TEST_F(Exhaustion, ManagerThatRefusesIsNotFollowedByARequest) {
  addManager(0);
  heap.refuseAbove = 100;
  EXPECT_EQ(end([&] { kelMalloc(block_, 4, 100); }), -1);
  EXPECT_THAT(tried(), ElementsAre(400));
}

TEST_F(Exhaustion, ManagerIsLookedUpOnceAlsoWhenAbsent) {
  heap.refuseAbove = 100;
  EXPECT_EQ(end([&] { kelMalloc(block_, 4, 100); }), -1);
  auto& late = addManager(5);
  heap.refuseAbove = 100;
  EXPECT_EQ(end([&] { kelMalloc(block_, 4, 100); }), -1);
  EXPECT_EQ(late.asked, 0);
}

TEST_F(Exhaustion, ImpossibleSizesGoThroughTheWholeProcedure) {
  auto& manager = addManager(2);
  heap.refuseAbove = 1 << 20;
  for (const int32_t count : {0x20000000, 0x40000000, 0x40000001, INT32_MAX, -1}) {
    forget();
    manager.asked = 0;
    heap.refuseAbove = 1 << 20;
    EXPECT_EQ(end([&] { kelMalloc(block_, 4, count); }), -1) << count;
    ASSERT_EQ(tried().size(), 3u);
    EXPECT_THAT(tried(), testing::Each(testing::Gt(size_t{INT32_MAX})))
        << "no product is cut to a small block";
  }
  forget();
  manager.asked = 2;
  heap.refuseAbove = 1 << 20;
  EXPECT_EQ(end([&] { kelMalloc(block_, 4, 0x1FFFFFFF); }), -1);
  EXPECT_THAT(tried(), ElementsAre(0x7FFFFFFC));
  EXPECT_EQ(record().substr(0, 31), "attempted:        2147483644b\n\n");
}

TEST_F(Exhaustion, BlockOfThePoolBeyondAllSizesIsARefusedRequestToo) {
  auto& manager = addManager(2);
  kelPoolInstance();
  heap.refuseAbove = 1 << 20;
  int32_t actual = 0;
  EXPECT_EQ(end([&] { kelPoolAlloc(INT32_MAX, actual); }), -1);
  EXPECT_EQ(manager.asked, 3);
  EXPECT_EQ(record().substr(0, 41), "attempted:        18446744071562067976b\n\n");
}

// --- A buffer that grows

TEST_F(Exhaustion, GrowthHalvesTheWayDownToTheMinimum) {
  fill(10);
  heap.refuseAbove = 400;
  EXPECT_EQ(reallocate(10, 100, 1000), 100);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300, 848, 624, 512, 456, 428, 400}));
  expectGrown(10, 100);
}

TEST_F(Exhaustion, GrowthStopsAtTheFirstSizeThatFits) {
  fill(10);
  heap.refuseAbove = 1500;
  EXPECT_EQ(reallocate(10, 100, 1000), 325);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300}));
  expectGrown(10, 325);
}

TEST_F(Exhaustion, GrowthStopsAtTheFirstCallThatSucceeds) {
  const Sizes all{4000, 2200, 1300, 848, 624, 512, 456, 428, 400};
  const int32_t counts[] = {1000, 550, 325, 212, 156, 128, 114, 107, 100};
  for (size_t refused = 0; refused < all.size(); ++refused) {
    fill(10);
    heap.refuseUpToCall = refused;
    EXPECT_EQ(reallocate(10, 100, 1000), counts[refused]);
    EXPECT_EQ(heap.sizes, Sizes(all.begin(), all.begin() + static_cast<int>(refused) + 1));
    expectGrown(10, counts[refused]);
    heap.refuseUpToCall = 0;
    kelFree(block_);
    block_ = nullptr;
  }
}

TEST_F(Exhaustion, TargetThatHasReachedTheMinimumLeavesAtOnce) {
  fill(10);
  heap.refuseGrowth = true;
  EXPECT_EQ(reallocate(10, 100, 102), 100);
  // 101 and 100 are tried, then the way through the file.
  EXPECT_EQ(heap.sizes.size(), heap.reallocations + size_t(heap.allocations));
  EXPECT_THAT(Sizes(heap.sizes.begin(), heap.sizes.begin() + 3), ElementsAre(408, 404, 400));
  EXPECT_EQ(heap.reallocations, 3);
}

TEST_F(Exhaustion, EqualMaximumAndMinimumMeanOneTryAndTheFile) {
  auto& manager = addManager(1);
  fill(10);
  heap.refuseAbove = 300;
  EXPECT_EQ(end([&] { reallocate(10, 100, 100); }), -1);
  EXPECT_EQ(heap.reallocations, 1);
  EXPECT_EQ(heap.sizes.front(), 400u);
  EXPECT_EQ(manager.asked, 2) << "a manager that was not asked before is asked behind the file";
  EXPECT_EQ(tried().back(), 400u);
}

TEST_F(Exhaustion, ManagerIsLeftAloneAfterItsRefusal) {
  auto& manager = addManager(0);
  fill(10);
  heap.refuseGrowth = true;
  EXPECT_EQ(reallocate(10, 100, 1000), 100);
  EXPECT_EQ(manager.asked, 1) << "nor is it asked behind the file";
  EXPECT_EQ(heap.reallocations, 10) << "one more after the refusal";
  EXPECT_THAT(Sizes(heap.sizes.begin(), heap.sizes.begin() + 10),
              ElementsAre(4000, 2200, 1300, 848, 848, 624, 512, 456, 428, 400));
}

TEST_F(Exhaustion, ManagerIsAskedFromTheThirdPassOn) {
  addManager(3);
  fill(10);
  heap.refuseGrowth = true;
  EXPECT_EQ(reallocate(10, 100, 1000), 100);
  // Two attempts a pass for so little: the fourth request is the one that is refused.
  EXPECT_THAT(Sizes(heap.sizes.begin(), heap.sizes.begin() + heap.reallocations),
              ElementsAre(4000, 2200, 1300,  //
                          848, 848, 848,     //
                          624, 624, 624,     //
                          512, 456, 428, 400));
}

TEST_F(Exhaustion, ManagerIsAskedByThePagesOfTheGrowthAndTwo) {
  auto& manager = addManager(1000000);
  constexpr int32_t perPage = kManagerPage / 4;
  fill(perPage);
  heap.refuseGrowth = true;
  EXPECT_EQ(end([&] { EXPECT_EQ(reallocate(perPage, 5 * perPage, 133 * perPage), 5 * perPage); }),
            0);
  // Targets in pages: 133, then 69, 37, 21, 13, 9, 7, 6, 5; the growth is one page less.
  const std::vector<int> pages = {133, 69, 37, 21, 13, 9, 7, 6, 5};
  Sizes expected;
  int64_t asked = 0;
  for (size_t pass = 0; pass < pages.size(); ++pass) {
    const size_t bytes = static_cast<size_t>(pages[pass]) * kManagerPage;
    const size_t attempts = pass < 3 ? 0 : static_cast<size_t>(pages[pass]) - 1 + 2;
    expected.insert(expected.end(), attempts + 1, bytes);
    asked += static_cast<int64_t>(attempts);
  }
  EXPECT_EQ(Sizes(heap.sizes.begin(), heap.sizes.begin() + heap.reallocations), expected);
  EXPECT_EQ(manager.asked, asked);
}

TEST_F(Exhaustion, GrowthOfLessThanAPageHasOneAttemptLess) {
  auto& manager = addManager(1000000);
  constexpr int32_t perPage = kManagerPage / 4;
  fill(perPage);
  heap.refuseGrowth = true;
  EXPECT_EQ(reallocate(perPage, 2 * perPage - 1, 2 * perPage), 2 * perPage - 1);
  EXPECT_EQ(manager.asked, 0) << "one pass, the first";
  heap.refuseGrowth = false;
}

TEST_F(Exhaustion, ReleaseThatSufficesEndsTheProcedure) {
  auto& manager = addManager(1000000);
  fill(10);
  heap.refuseGrowth = true;
  manager.onRelease = [&] { heap.refuseGrowth = manager.asked < 2; };
  EXPECT_EQ(reallocate(10, 100, 1000), 212);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300, 848, 848, 848}));
  EXPECT_EQ(manager.asked, 2);
  expectGrown(10, 212);
}

TEST_F(Exhaustion, TargetsBeyondFourGigabytesAreHalvedWithoutOverflow) {
  fill(10);
  heap.refuseAbove = 400;
  EXPECT_EQ(reallocate(10, 100, INT32_MAX), 100) << "by the file, as the passes end far above";
  ASSERT_GE(heap.sizes.size(), 9u);
  EXPECT_GT(heap.sizes[0], size_t{INT32_MAX});
  EXPECT_EQ(heap.sizes[8], 400u);
  EXPECT_EQ(heap.sizes[7], ((int64_t{INT32_MAX} - 100) / 128 + 100) * 4);
  expectGrown(10, 100);
}

TEST_F(Exhaustion, MaximumBelowTheMinimumGoesStraightToTheFile) {
  kelSetAssertCallback([](void*, const char*, const char*, int32_t) {}, nullptr);
  fill(2);
  heap.refuseGrowth = true;
  EXPECT_EQ(reallocate(2, 10, 7), 7);
  EXPECT_EQ(heap.reallocations, 1);
  expectGrown(2, 7);
}

// --- The way through a file

class ThroughFile : public Exhaustion {
 protected:
  ThroughFile() { opened_ = {}; }

  // Remembers the name of the file, and opens it where `real` says so.
  static int openAndRemember(std::u16string_view path) {
    opened_.emplace_back(path);
    platform::temporaryFileHook = nullptr;
    const int descriptor = platform::openTemporaryDescriptor(path);
    platform::temporaryFileHook = openAndRemember;
    return descriptor;
  }
  // One that can be found and cut by a test.
  static int openPlain(std::u16string_view path) {
    opened_.emplace_back(path);
    return platform::openDescriptor(
        path, platform::openRead | platform::openWrite | platform::openCreate);
  }

  static inline std::vector<std::u16string> opened_;
};

TEST_F(ThroughFile, BlockArrivesWholeAndLargerAndTheFileIsGone) {
  const platform::HookGuard guard(platform::temporaryFileHook, openAndRemember);
  constexpr int32_t count = 300000;
  kelMalloc(block_, 4, count);
  for (int32_t i = 0; i < count; ++i) block_[i] = static_cast<uint32_t>(i) * 2654435761u;
  forget();
  heap.refuseGrowth = true;
  EXPECT_EQ(reallocate(count, 2 * count, -1), 2 * count);
  for (int32_t i = 0; i < count; ++i) ASSERT_EQ(block_[i], static_cast<uint32_t>(i) * 2654435761u);
  for (int32_t i = count; i < 2 * count; ++i) ASSERT_EQ(block_[i], 0u);
  ASSERT_EQ(opened_.size(), 1u);
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(record(), "<absent>");
}

TEST_F(ThroughFile, FileLiesInTheTemporaryDirectoryUnderANameOfTheProcess) {
  const platform::HookGuard guard(platform::temporaryFileHook, openAndRemember);
  fill(10);
  heap.refuseGrowth = true;
  reallocate(10, 20, -1);
  reallocate(20, 30, -1);
  ASSERT_EQ(opened_.size(), 2u);
  EXPECT_NE(opened_[0], opened_[1]) << "the name is made afresh";
  for (const std::u16string& path : opened_) {
    char leaf[32];
    std::snprintf(leaf, sizeof leaf, "\\oro-%08x-", platform::processId());
    const std::u16string begin =
        platform::fromSystemPath(folder_.path().string()) + platform::fromSystem(leaf);
    EXPECT_EQ(path.substr(0, begin.size()), begin);
    const std::string end = platform::toUtf8Lossy(path.substr(begin.size()));
    EXPECT_EQ(end.find_first_not_of("0123456789abcdef"), 8u) << end;
    EXPECT_EQ(end.substr(8), "-temp");
  }
}

TEST_F(ThroughFile, OldBlockIsFreedBeforeTheNewOneIsAskedFor) {
  fill(10);
  heap.refuseGrowth = true;
  int freesBefore = -1;
  heap.onAllocate = [&] { freesBefore = heap.frees; };
  EXPECT_EQ(reallocate(10, 20, -1), 20);
  EXPECT_GE(freesBefore, 1);
  EXPECT_EQ(heap.sizes.back(), 80u);
}

TEST_F(ThroughFile, FolderThatIsNotThereEndsTheProcess) {
  setFolder("Directories/Temp Directory", folder_.file("absent"));
  fill(10);
  heap.refuseGrowth = true;
  EXPECT_EQ(end([&] { reallocate(10, 20, 40); }), -1);
  EXPECT_THAT(events, ElementsAre("box", "end"));
  EXPECT_EQ(record().substr(0, 29), "attempted:             80b\n\ns");
  expectGrown(10, 10);
}

TEST_F(ThroughFile, DiskThatFillsEndsTheProcessWithTheBlockAsItWas) {
  fill(1000);
  heap.refuseGrowth = true;
  {
    tests::TestDisk disk;
    disk.refuseFrom(0, 1234);
    // The record meets the full disk as well.
    EXPECT_EQ(end([&] { reallocate(1000, 2000, -1); }), -1);
    ASSERT_GE(disk.writes.size(), 2u);
    EXPECT_EQ(disk.writes[0], 4000u);
    EXPECT_EQ(disk.writes[1], 4000u - 1234) << "what did not fit is tried once more";
  }
  EXPECT_THAT(events, ElementsAre("box", "end"));
  expectGrown(1000, 1000);
  EXPECT_THAT(files(), ElementsAre("memory.log"));
}

TEST_F(ThroughFile, FileCutShortEndsTheProcess) {
  const platform::HookGuard guard(platform::temporaryFileHook, openPlain);
  fill(1000);
  heap.refuseGrowth = true;
  heap.onAllocate = [&] {
    if (opened_.empty()) return;  // something that the process makes once, before the file
    const std::u16string path = opened_[0];
    heap.onAllocate = nullptr;
    std::filesystem::resize_file(platform::toSystemPath(path), 3999);
  };
  EXPECT_EQ(end([&] { reallocate(1000, 2000, -1); }), -1);
  EXPECT_EQ(block_, nullptr);
  EXPECT_THAT(events, ElementsAre("box", "end"));
  EXPECT_EQ(record().substr(0, 29), "attempted:           8000b\n\ns");
}

TEST_F(ThroughFile, HeapThatStillRefusesEndsTheProcess) {
  auto& manager = addManager(2);
  fill(1000);
  heap.refuseAbove = 4000;
  EXPECT_EQ(end([&] { reallocate(1000, 2000, -1); }), -1);
  EXPECT_EQ(block_, nullptr);
  EXPECT_EQ(manager.asked, 3);
  const Sizes sizes = tried();
  ASSERT_GE(sizes.size(), 4u);
  EXPECT_EQ(Sizes(sizes.end() - 3, sizes.end()), Sizes(3, 8000));
  EXPECT_THAT(files(), ElementsAre("memory.log"));
  EXPECT_EQ(record().substr(0, 29), "attempted:           8000b\n\ns");
}

TEST_F(ThroughFile, RecordHasTheSizeTriedLast) {
  setFolder("Directories/Temp Directory", folder_.file("absent"));
  fill(10);
  heap.refuseGrowth = true;
  EXPECT_EQ(end([&] { reallocate(10, 100, 1000); }), -1);
  EXPECT_EQ(record().substr(0, 29), "attempted:            400b\n\ns");
}

}  // namespace
