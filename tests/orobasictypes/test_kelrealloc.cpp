#include "orobasictypes/kelrealloc.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "interfaces/IOroAssertHandlerCB.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/testaccess.h"
#include "platform/hooks.h"
#include "platform/process.h"
#include "tests/support/fakebroker.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::FakeHeap;
using Sizes = std::vector<size_t>;

// What the end of the process becomes in a test.
struct Ended {
  int status;
};

class KelReallocTest : public testing::Test {
 protected:
  KelReallocTest() {
    kelSetAssertCallback(
        [](void* context, const char* expression, const char* file, int32_t line) {
          static_cast<KelReallocTest*>(context)->asserted_.push_back(
              std::string(expression) + "|" + file + "|" + std::to_string(line));
        },
        this);
  }
  ~KelReallocTest() override {
    kelFree(block_);
    testaccess::resetModule();
  }

  // A block of `count` elements of 4 bytes, all bytes 0xAA.
  void fill(int32_t count) {
    kelMalloc(block_, 4, count);
    std::memset(block_, 0xAA, static_cast<size_t>(count) * 4);
  }
  int32_t reallocate(int32_t curSize, int32_t minNewSize, int32_t maxNewSize) {
    return kelRealloc(block_, 4, curSize, minNewSize, maxNewSize);
  }
  void expectGrown(int32_t oldCount, int32_t newCount) {
    for (int32_t i = 0; i < oldCount; ++i) ASSERT_EQ(block_[i], 0xAAAAAAAA) << i;
    for (int32_t i = oldCount; i < newCount; ++i) ASSERT_EQ(block_[i], 0u) << i;
  }
  template <class Action>
  static int endStatus(const Action& action) {
    const platform::HookGuard guard(
        platform::endProcessHook, +[](int status) { throw Ended{status}; });
    try {
      action();
    } catch (const Ended& ended) {
      return ended.status;
    }
    return 0;
  }

  std::vector<std::string> asserted_;
  uint32_t* block_ = nullptr;
};
using Asserted = std::vector<std::string>;

TEST_F(KelReallocTest, MallocMakesABlockOfTheProduct) {
  FakeHeap heap;
  EXPECT_EQ(kelMalloc(block_, 4, 10), 10);
  EXPECT_EQ(heap.sizes, Sizes{40});
  EXPECT_EQ(kelFree(block_), 1);
  EXPECT_EQ(heap.frees, 1);
  block_ = nullptr;
  EXPECT_EQ(kelFree(nullptr), 1);
}

TEST_F(KelReallocTest, MallocOfNothingSucceedsWithWhateverTheHeapGives) {
  EXPECT_EQ(kelMalloc(block_, 4, 0), 0);
  FakeHeap heap;
  heap.refuseAbove = 0;
  kelFree(block_);
  kelHeapCalls.allocate = [](size_t) -> void* { return nullptr; };
  EXPECT_EQ(kelMalloc(block_, 0, 100), 100);
  EXPECT_EQ(block_, nullptr);
}

TEST_F(KelReallocTest, EqualSizesReturnAtOnceWhateverTheMaximum) {
  fill(5);
  FakeHeap heap;
  uint32_t* const before = block_;
  EXPECT_EQ(reallocate(5, 5, 2), 5);
  EXPECT_EQ(reallocate(5, 5, 100), 5);
  EXPECT_EQ(block_, before);
  EXPECT_TRUE(heap.sizes.empty());
  EXPECT_EQ(asserted_, Asserted());
}

TEST_F(KelReallocTest, NullAndZeroStayNothing) {
  FakeHeap heap;
  EXPECT_EQ(reallocate(0, 0, 100), 0);
  EXPECT_EQ(block_, nullptr);
  EXPECT_TRUE(heap.sizes.empty());
}

TEST_F(KelReallocTest, FreshBlockHasTheMinimumAndIgnoresTheMaximum) {
  FakeHeap heap;
  EXPECT_EQ(reallocate(0, 3, 100), 3);
  EXPECT_EQ(reallocate(5, 5, 100), 5);
  EXPECT_EQ(heap.allocations, 1);
  EXPECT_EQ(heap.sizes, Sizes{12});
  uint32_t* null = nullptr;
  EXPECT_EQ(kelRealloc(null, 4, 7, 3, -1), 3) << "a null pointer has no elements, whatever is said";
  kelFree(null);
}

TEST_F(KelReallocTest, BlockOfNoElementsIsNotFreedForAFreshOne) {
  kelMalloc(block_, 4, 0);
  uint32_t* const old = block_;
  FakeHeap heap;
  EXPECT_EQ(reallocate(0, 3, -1), 3);
  EXPECT_NE(block_, old);
  EXPECT_EQ(heap.frees, 0);
  kelFree(old);
}

TEST_F(KelReallocTest, ShrinksToTheMaximum) {
  fill(5);
  FakeHeap heap;
  EXPECT_EQ(reallocate(5, 3, -1), 3);
  EXPECT_EQ(heap.sizes, Sizes{12});
  expectGrown(3, 3);
  EXPECT_EQ(reallocate(3, 1, 2), 2);
  EXPECT_EQ(heap.sizes, (Sizes{12, 8}));
}

TEST_F(KelReallocTest, RefusedShrinkingLeavesANullPointerAndTheTarget) {
  fill(5);
  uint32_t* const old = block_;
  FakeHeap heap;
  heap.refuseAbove = 0;
  EXPECT_EQ(reallocate(5, 3, -1), 3);
  EXPECT_EQ(block_, nullptr);
  EXPECT_EQ(heap.sizes, Sizes{12}) << "no second attempt, and no end of the process";
  EXPECT_EQ(heap.frees, 0);
  kelFree(old);
}

TEST_F(KelReallocTest, FreshBlockIsNotCleared) {
  const FakeHeap heap;
  kelHeapCalls.allocate = [](size_t bytes) { return std::memset(std::malloc(bytes), 0xAA, bytes); };
  EXPECT_EQ(reallocate(0, 3, 100), 3);
  expectGrown(3, 3);
}

TEST_F(KelReallocTest, SmallerMinimumWithALargerMaximumKeepsTheBlock) {
  fill(5);
  FakeHeap heap;
  EXPECT_EQ(reallocate(5, 3, 10), 5);
  EXPECT_EQ(reallocate(5, 3, 5), 5);
  EXPECT_TRUE(heap.sizes.empty());
  expectGrown(5, 5);
}

TEST_F(KelReallocTest, MaximumOfZeroFrees) {
  fill(5);
  FakeHeap heap;
  EXPECT_EQ(reallocate(5, 0, 0), 0);
  EXPECT_EQ(block_, nullptr);
  EXPECT_EQ(heap.frees, 1);
  EXPECT_TRUE(heap.sizes.empty());
}

TEST_F(KelReallocTest, GrowthIsZeroAndTakesTheMaximum) {
  fill(5);
  FakeHeap heap;
  EXPECT_EQ(reallocate(5, 6, 40), 40);
  EXPECT_EQ(heap.sizes, Sizes{160});
  expectGrown(5, 40);
  EXPECT_EQ(reallocate(40, 50, -1), 50);
  EXPECT_EQ(heap.sizes, (Sizes{160, 200}));
}

TEST_F(KelReallocTest, MaximumBelowTheMinimumIsAssertedAndTaken) {
  fill(5);
  EXPECT_EQ(reallocate(5, 4, 2), 2);
  EXPECT_EQ(asserted_, Asserted{"maxNewSize >= minNewSize|orobasictypes/kelrealloc|421"});
  asserted_.clear();
  EXPECT_EQ(reallocate(2, 10, 7), 7);
  EXPECT_EQ(
      asserted_,
      (Asserted{"maxNewSize >= minNewSize|orobasictypes/kelrealloc|421",
                "minNewSize > curSize && maxNewSize >= minNewSize|orobasictypes/kelrealloc|454"}));
  expectGrown(2, 7);
}

TEST_F(KelReallocTest, RefusedGrowthHalvesTheWayDownToTheMinimum) {
  fill(10);
  FakeHeap heap;
  heap.refuseAbove = 400;
  EXPECT_EQ(reallocate(10, 100, 1000), 100);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300, 848, 624, 512, 456, 428, 400}));
  expectGrown(10, 100);
}

TEST_F(KelReallocTest, RefusedGrowthStopsAtTheFirstSizeThatFits) {
  fill(10);
  FakeHeap heap;
  heap.refuseAbove = 1500;
  EXPECT_EQ(reallocate(10, 100, 1000), 325);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300}));
  expectGrown(10, 325);
}

TEST_F(KelReallocTest, RefusalForGoodEndsTheProcess) {
  FakeHeap heap;
  fill(10);
  heap.refuseAbove = 100;
  heap.sizes.clear();
  uint32_t* fresh = nullptr;
  EXPECT_EQ(endStatus([&] { kelMalloc(fresh, 4, 100); }), -1);
  EXPECT_EQ(heap.sizes, Sizes{400});
  heap.sizes.clear();
  EXPECT_EQ(endStatus([&] { reallocate(10, 100, -1); }), -1);
  EXPECT_EQ(heap.sizes, Sizes{400}) << "with nothing to give up there is one attempt";
  expectGrown(10, 10);
}

TEST_F(KelReallocTest, BlocksEndBelowTwoGigabytes) {
  FakeHeap heap;
  heap.refuseAbove = 1 << 20;
  for (const int32_t count : {0x20000000, 0x40000000, 0x40000001, INT32_MAX, -1}) {
    heap.sizes.clear();
    EXPECT_EQ(endStatus([&] { kelMalloc(block_, 4, count); }), -1) << count;
    ASSERT_EQ(heap.sizes.size(), 1u);
    EXPECT_GT(heap.sizes[0], size_t{INT32_MAX}) << "no product is cut to a small block";
  }
  heap.sizes.clear();
  EXPECT_EQ(endStatus([&] { kelMalloc(block_, 4, 0x1FFFFFFF); }), -1);
  EXPECT_EQ(heap.sizes, Sizes{0x7FFFFFFC});
}

TEST_F(KelReallocTest, ExhaustionIsToldWithWhatWasAskedLast) {
  FakeHeap heap;
  fill(10);
  heap.refuseAbove = 1000;
  const auto told = [](const auto& action) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(endStatus(action), -1);
    return testing::internal::GetCapturedStderr();
  };
  uint32_t* fresh = nullptr;
  EXPECT_EQ(told([&] { kelMalloc(fresh, 4, 300); }), "Out of memory: 1200 bytes were refused.\n");
  EXPECT_EQ(told([&] { kelMalloc(fresh, 4, 0x40000000); }),
            "Out of memory: 4294967296 bytes were refused.\n");
  EXPECT_EQ(told([&] { reallocate(10, 300, 400); }), "Out of memory: 1200 bytes were refused.\n");
}

TEST_F(KelReallocTest, TraceTellsEachRequest) {
  fill(5);
  testing::internal::CaptureStdout();
  kelTraceAllocations = true;
  uint32_t* other = nullptr;
  kelMalloc(other, 4, 7);
  kelFree(other);
  other = nullptr;
  kelRealloc(other, 8, 0, 2, 9);
  reallocate(5, 5, 9);
  reallocate(5, 6, 9);
  reallocate(9, 4, -1);
  kelTraceAllocations = false;
  kelFree(other);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "kelMalloc: 4 : 7 : 28\n"
            "kelMalloc: 8 : 2 : 16\n"
            "kelRealloc: 4 : 5 : 9 : 36\n"
            "kelRealloc: 4 : 9 : 4 : 16\n");
}

// Remembers what it was told.
class Handler : public IOroAssertHandlerCB {
 public:
  static constexpr const char* className() { return "Handler"; }
  using Offers = OroOffers<Handler, IOroAssertHandlerCB>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void assertionFailed(const char* expression, const char* file, int32_t line) override {
    told = std::string(expression) + "|" + file + "|" + std::to_string(line);
  }
  std::string told;
};

class KelAssertFailTest : public KelReallocTest {
 protected:
  KelAssertFailTest() {
    handler_.addRef();
    broker_.registerService(KelCString::borrow("IOroAssertHandlerCB"), &handler_);
  }

  Handler handler_;
  tests::FakeBroker broker_;
};

TEST_F(KelAssertFailTest, CallbackComesBeforeTheService) {
  kelAssertFail("a == b", "folder/file", 12);
  EXPECT_EQ(asserted_, Asserted{"a == b|folder/file|12"});
  EXPECT_EQ(handler_.told, "");
}

TEST_F(KelAssertFailTest, ServiceHearsWithoutACallback) {
  kelSetAssertCallback(nullptr, nullptr);
  kelAssertFail("", "folder/file", 13);
  EXPECT_EQ(handler_.told, "|folder/file|13");
}

TEST_F(KelAssertFailTest, HandlerIsToldByItsFirstOperation) {
  EXPECT_EQ(tests::slotNumber(&IOroAssertHandlerCB::assertionFailed), 1);
}

TEST_F(KelReallocTest, AssertionThatNobodyHearsEndsTheProcess) {
  kelSetAssertCallback(nullptr, nullptr);
  EXPECT_EQ(endStatus([] { kelAssertFail("a", "b", 1); }), 255);
  tests::FakeBroker broker;
  EXPECT_EQ(endStatus([] { kelAssertFail("a", "b", 1); }), 255);
}

}  // namespace
