#include "orobasictypes/kelrealloc.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "interfaces/IOroAssertHandlerCB.h"
#include "orobasictypes/orooffers.h"
#include "tests/orobasictypes/memoryworld.h"
#include "tests/support/slotnumber.h"

namespace {

using Sizes = std::vector<size_t>;

class KelReallocTest : public tests::MemoryWorld {
 protected:
  KelReallocTest() {
    forget();
    kelSetAssertCallback(
        [](void* context, const char* expression, const char* file, int32_t line) {
          static_cast<KelReallocTest*>(context)->asserted_.push_back(
              std::string(expression) + "|" + file + "|" + std::to_string(line));
        },
        this);
  }
  ~KelReallocTest() override { kelFree(block_); }

  // A block of `count` elements of 4 bytes, all bytes 0xAA.
  void fill(int32_t count) {
    kelMalloc(block_, 4, count);
    std::memset(block_, 0xAA, static_cast<size_t>(count) * 4);
    forget();
  }
  int32_t reallocate(int32_t curSize, int32_t minNewSize, int32_t maxNewSize) {
    return kelRealloc(block_, 4, curSize, minNewSize, maxNewSize);
  }
  void expectGrown(int32_t oldCount, int32_t newCount) {
    for (int32_t i = 0; i < oldCount; ++i) ASSERT_EQ(block_[i], 0xAAAAAAAA) << i;
    for (int32_t i = oldCount; i < newCount; ++i) ASSERT_EQ(block_[i], 0u) << i;
  }
  std::vector<std::string> asserted_;
  uint32_t* block_ = nullptr;
};
using Asserted = std::vector<std::string>;

TEST_F(KelReallocTest, MallocMakesABlockOfTheProduct) {
  EXPECT_EQ(kelMalloc(block_, 4, 10), 10);
  EXPECT_EQ(heap.sizes, Sizes{40});
  EXPECT_EQ(kelFree(block_), 1);
  EXPECT_EQ(heap.frees, 1);
  block_ = nullptr;
  EXPECT_EQ(kelFree(nullptr), 1);
}

TEST_F(KelReallocTest, MallocOfNothingSucceedsWithWhateverTheHeapGives) {
  EXPECT_EQ(kelMalloc(block_, 4, 0), 0);
  kelFree(block_);
  kelHeapCalls.allocate = [](size_t) -> void* { return nullptr; };
  EXPECT_EQ(kelMalloc(block_, 0, 100), 100);
  EXPECT_EQ(block_, nullptr);
  block_ = reinterpret_cast<uint32_t*>(this);
  EXPECT_EQ(kelMalloc(block_, 100, 0), 0);
  EXPECT_EQ(block_, nullptr);
}

TEST_F(KelReallocTest, EqualSizesReturnAtOnceWhateverTheMaximum) {
  fill(5);
  uint32_t* const before = block_;
  EXPECT_EQ(reallocate(5, 5, 2), 5);
  EXPECT_EQ(reallocate(5, 5, 100), 5);
  EXPECT_EQ(block_, before);
  EXPECT_TRUE(heap.sizes.empty());
  EXPECT_EQ(asserted_, Asserted());
}

TEST_F(KelReallocTest, NullAndZeroStayNothing) {
  EXPECT_EQ(reallocate(0, 0, 100), 0);
  EXPECT_EQ(block_, nullptr);
  EXPECT_TRUE(heap.sizes.empty());
}

TEST_F(KelReallocTest, FreshBlockHasTheMinimumAndIgnoresTheMaximum) {
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
  forget();
  EXPECT_EQ(reallocate(0, 3, -1), 3);
  EXPECT_NE(block_, old);
  EXPECT_EQ(heap.frees, 0);
  kelFree(old);
}

TEST_F(KelReallocTest, ShrinksToTheMaximum) {
  fill(5);
  EXPECT_EQ(reallocate(5, 3, -1), 3);
  EXPECT_EQ(heap.sizes, Sizes{12});
  expectGrown(3, 3);
  EXPECT_EQ(reallocate(3, 1, 2), 2);
  EXPECT_EQ(heap.sizes, (Sizes{12, 8}));
}

TEST_F(KelReallocTest, RefusedShrinkingLeavesANullPointerAndTheTarget) {
  fill(5);
  uint32_t* const old = block_;
  heap.refuseAbove = 0;
  EXPECT_EQ(reallocate(5, 3, -1), 3);
  EXPECT_EQ(block_, nullptr);
  EXPECT_EQ(heap.sizes, Sizes{12}) << "no second attempt, and no end of the process";
  EXPECT_EQ(heap.frees, 0);
  kelFree(old);
}

TEST_F(KelReallocTest, FreshBlockIsNotCleared) {
  kelHeapCalls.allocate = [](size_t bytes) { return std::memset(std::malloc(bytes), 0xAA, bytes); };
  EXPECT_EQ(reallocate(0, 3, 100), 3);
  expectGrown(3, 3);
}

TEST_F(KelReallocTest, SmallerMinimumWithALargerMaximumKeepsTheBlock) {
  fill(5);
  EXPECT_EQ(reallocate(5, 3, 10), 5);
  EXPECT_EQ(reallocate(5, 3, 5), 5);
  EXPECT_TRUE(heap.sizes.empty());
  expectGrown(5, 5);
}

TEST_F(KelReallocTest, MaximumOfZeroFrees) {
  fill(5);
  EXPECT_EQ(reallocate(5, 0, 0), 0);
  EXPECT_EQ(block_, nullptr);
  EXPECT_EQ(heap.frees, 1);
  EXPECT_TRUE(heap.sizes.empty());
}

TEST_F(KelReallocTest, GrowthIsZeroAndTakesTheMaximum) {
  fill(5);
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
  heap.refuseAbove = 400;
  EXPECT_EQ(reallocate(10, 100, 1000), 100);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300, 848, 624, 512, 456, 428, 400}));
  expectGrown(10, 100);
}

TEST_F(KelReallocTest, RefusedGrowthStopsAtTheFirstSizeThatFits) {
  fill(10);
  heap.refuseAbove = 1500;
  EXPECT_EQ(reallocate(10, 100, 1000), 325);
  EXPECT_EQ(heap.sizes, (Sizes{4000, 2200, 1300}));
  expectGrown(10, 325);
}

TEST_F(KelReallocTest, NullPointerAndTargetOfZeroStayNothing) {
  EXPECT_EQ(reallocate(5, 0, 0), 0);
  EXPECT_EQ(block_, nullptr);
  EXPECT_EQ(heap.frees, 0);
  EXPECT_EQ(reallocate(5, 0, -1), 0);
  EXPECT_TRUE(heap.sizes.empty());
}

TEST_F(KelReallocTest, NegativeTargetIsARefusedShrinking) {
  fill(5);
  uint32_t* const old = block_;
  EXPECT_EQ(reallocate(5, -3, -3), -3);
  EXPECT_EQ(block_, nullptr);
  ASSERT_EQ(heap.sizes.size(), 1u);
  EXPECT_GT(heap.sizes[0], size_t{INT32_MAX});
  EXPECT_EQ(record(), "<absent>");
  kelFree(old);
}

TEST_F(KelReallocTest, TraceTellsEachRequest) {
  fill(5);
  heap.refuseAbove = 1 << 20;
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

TEST_F(KelReallocTest, TraceTellsImpossibleSizesAsTheyWereAskedFor) {
  struct Row {
    int32_t count;
    const char* line;
  };
  heap.refuseAbove = 1 << 20;
  for (const Row& row : {Row{0x20000000, "kelMalloc: 4 : 536870912 : 18446744071562067968\n"},
                         {0x3FFFFFFF, "kelMalloc: 4 : 1073741823 : 18446744073709551612\n"},
                         {0x40000000, "kelMalloc: 4 : 1073741824 : 4294967296\n"},
                         {0x40000001, "kelMalloc: 4 : 1073741825 : 4294967300\n"},
                         {-1, "kelMalloc: 4 : -1 : 18446744073709551612\n"}}) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(end([&] {
                struct TraceOn {
                  TraceOn() { kelTraceAllocations = true; }
                  ~TraceOn() { kelTraceAllocations = false; }
                } trace;
                kelMalloc(block_, 4, row.count);
              }),
              -1);
    const std::string lines = testing::internal::GetCapturedStdout();
    EXPECT_EQ(lines.substr(0, lines.find('\n') + 1), row.line);
  }
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
    handler_->addRef();
    publish("IOroAssertHandlerCB", handler_);
  }
  ~KelAssertFailTest() override { handler_->release(); }

  Handler* const handler_ = new Handler;
};

TEST_F(KelAssertFailTest, CallbackComesBeforeTheService) {
  kelAssertFail("a == b", "folder/file", 12);
  EXPECT_EQ(asserted_, Asserted{"a == b|folder/file|12"});
  EXPECT_EQ(handler_->told, "");
}

TEST_F(KelAssertFailTest, ServiceHearsWithoutACallback) {
  kelSetAssertCallback(nullptr, nullptr);
  kelAssertFail("", "folder/file", 13);
  EXPECT_EQ(handler_->told, "|folder/file|13");
}

TEST_F(KelAssertFailTest, HandlerIsToldByItsFirstOperation) {
  EXPECT_EQ(tests::slotNumber(&IOroAssertHandlerCB::assertionFailed), 1);
}

TEST_F(KelReallocTest, AssertionThatNobodyHearsEndsTheProcess) {
  kelSetAssertCallback(nullptr, nullptr);
  EXPECT_EQ(end([] { kelAssertFail("a", "b", 1); }), 255) << "a broker without the service";
  oroSetBroker(nullptr);
  EXPECT_EQ(end([] { kelAssertFail("a", "b", 1); }), 255) << "no broker";
}

}  // namespace
