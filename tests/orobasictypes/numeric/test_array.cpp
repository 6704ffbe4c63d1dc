#include "orobasictypes/array.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/assertionlist.h"
#include "tests/support/countingmanager.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

using OroMM::IntArray;
using OroMM::IOroMManager;
using OroMM::VectorArray;
using OroMM::WordArray;
using testing::ElementsAre;
using testing::IsEmpty;

class SplitArray : public testing::Test {
 protected:
  std::vector<std::string> log() { return memory_.manager->takeLog(); }

  tests::ManagedMemory memory_;
};

// An array that keeps the size that it was made with.
class RawArray : public OroMM::ArrayBase {
 public:
  explicit RawArray(int32_t size) : ArrayBase(size, 4, 2048, 8192) {}
  void set(int32_t i, int32_t value) {
    static_cast<int32_t*>(MakeBlock(i / 2048))[i % 2048] = value;
  }
  int32_t at(int32_t i) const { return static_cast<const int32_t*>(RawBlock(i / 2048))[i % 2048]; }
};

TEST(IOroMManager, HasItsOperationsInTheirPlaces) {
  EXPECT_EQ(tests::slotNumber(&IOroMManager::AllocBlock), 1);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::FreeBlock), 2);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::ReleaseMemory), 4);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::CoreLimit), 11);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::SwapLimit), 12);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::SwapPages), 13);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::CorePages), 18);
}

TEST_F(SplitArray, HasItsFieldsInOrder) {
  static_assert(sizeof(OroMM::ArrayBase) == 48 && sizeof(IntArray) == 48);
  RawArray array(5000);
  const char* const bytes = reinterpret_cast<const char*>(&array);
  const auto fieldAt = [&](size_t offset) {
    int32_t value = 0;
    std::memcpy(&value, bytes + offset, sizeof value);
    return value;
  };
  void* manager = nullptr;
  std::memcpy(&manager, bytes + 8, sizeof manager);
  EXPECT_EQ(manager, static_cast<IOroMManager*>(memory_.manager.get()));
  EXPECT_EQ(fieldAt(16), 5000);  // size
  EXPECT_EQ(fieldAt(20), 4);     // element size
  EXPECT_EQ(fieldAt(24), 2048);  // per block
  EXPECT_EQ(fieldAt(28), 8192);  // block bytes
  EXPECT_EQ(fieldAt(40), 3);     // table entries
  EXPECT_EQ(fieldAt(44), 3);     // table capacity
}

TEST_F(SplitArray, OfSizeZeroHasATableOfOneNullEntry) {
  const IntArray array;
  EXPECT_EQ(array.Size(), 0);
  EXPECT_EQ(array.NumBlocks(), 0);
  EXPECT_EQ(array.Table().count, 0);
  EXPECT_EQ(array.Table().capacity, 1);
  EXPECT_EQ(array.Table().blocks[0], nullptr);
  EXPECT_TRUE(array.IsDense());
}

TEST_F(SplitArray, HasASizeOfWholeBlocks) {
  EXPECT_EQ(VectorArray(1).Size(), 1024);
  EXPECT_EQ(IntArray(1).Size(), 2048);
  EXPECT_EQ(WordArray(1).Size(), 2048);
  EXPECT_EQ(VectorArray(1024).Size(), 1024);
  EXPECT_EQ(VectorArray(1025).Size(), 2048);
  EXPECT_EQ(VectorArray::blockBytes, 24576);
  EXPECT_EQ(IntArray::blockBytes, 8192);
  EXPECT_EQ(IntArray(-5).Size(), 0);
  EXPECT_EQ(RawArray(5).Size(), 5) << "as given, until InitBlocks";
}

TEST_F(SplitArray, OfIntegersCanBeMadeForALargestIndex) {
  EXPECT_EQ(IntArray(OroMM::LargestIndex{2047}).Size(), 2048);
  EXPECT_EQ(IntArray(OroMM::LargestIndex{2048}).Size(), 4096);
  EXPECT_EQ(IntArray(2048).Size(), 2048);
  EXPECT_EQ(IntArray(OroMM::LargestIndex{-1}).Size(), 0);
  tests::AssertionList assertions;
  EXPECT_EQ(IntArray(OroMM::LargestIndex{INT32_MAX}).Size(), 0);
  EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/arraybase"));
}

TEST_F(SplitArray, MakesNoBlockWhenItIsMadeOrRead) {
  VectorArray array(5000, true);
  EXPECT_EQ(array.Get(4999), OroVector());
  EXPECT_EQ(array.Get(5120), OroVector());
  EXPECT_EQ(array.Get(-1), OroVector());
  EXPECT_EQ(array.Get(INT32_MIN), OroVector());
  EXPECT_EQ(&array.Get(1), &array.Get(9999)) << "one default element";
  EXPECT_EQ(&array.Get(1), &VectorArray().Get(0)) << "for all arrays of the type";
  EXPECT_FALSE(array.IsDense());
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(SplitArray, MakesNoBlockForADefaultValue) {
  VectorArray vectors(2000);
  vectors.Set(3, OroVector(-0.0, 0, 0));
  IntArray numbers(2000);
  numbers.Set(5, 0);
  EXPECT_THAT(log(), IsEmpty());
  EXPECT_FALSE(numbers.IsDense());
  vectors.Set(3, OroVector(std::nan(""), 0, 0));
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero")) << "no number is not the default";
}

TEST_F(SplitArray, MakesAZeroedBlockForAnyOtherValue) {
  IntArray array(10000);
  array.Set(2050, 7);
  EXPECT_THAT(log(), ElementsAre("alloc 1 8192 zero"));
  for (int32_t i = 0; i < array.Size(); ++i) ASSERT_EQ(array.Get(i), i == 2050 ? 7 : 0);
  EXPECT_EQ(array.Block(0), nullptr);
  EXPECT_NE(array.Block(1), nullptr);
  EXPECT_EQ(array.Block(99), nullptr);
}

TEST_F(SplitArray, StoresADefaultValueInAnExistingBlock) {
  VectorArray array(10);
  array.Set(3, OroVector(1, 2, 3));
  array.Set(3, OroVector(-0.0, 0, 0));
  EXPECT_TRUE(std::signbit(array.Get(3).x)) << "as it is";
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero")) << "the block stays";
}

TEST_F(SplitArray, HidesWhatWasWrittenBeyondTheSize) {
  IntArray array(10);
  array.Set(5000, 7);
  EXPECT_EQ(array.Size(), 2048);
  EXPECT_EQ(array.Table().count, 3);
  EXPECT_EQ(array.Get(5000), 0);
  array.Set(9000, 0);
  EXPECT_EQ(array.Table().count, 5) << "the table grows for a default value too";
}

TEST_F(SplitArray, GivesTheElementItself) {
  IntArray array;
  array.At(5000) = 7;
  EXPECT_THAT(log(), ElementsAre("alloc 1 8192 zero"));
  EXPECT_EQ(array.Size(), 0);
  array.Resize(6000, false);
  EXPECT_EQ(array.At(5000), 7);
  EXPECT_EQ(array.At(5001), 0);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(SplitArray, GrowsItsTableByOneThenByTwoFifths) {
  IntArray array;
  const auto capacityFor = [&](int32_t blocks) {
    array.Set((blocks - 1) * 2048, 0);
    EXPECT_EQ(array.Table().count, blocks);
    return array.Table().capacity;
  };
  EXPECT_EQ(capacityFor(1), 1);
  EXPECT_EQ(capacityFor(2), 2);
  EXPECT_EQ(capacityFor(3), 3);
  EXPECT_EQ(capacityFor(4), 4);
  EXPECT_EQ(capacityFor(5), 5);
  EXPECT_EQ(capacityFor(6), 7);
  EXPECT_EQ(capacityFor(8), 9);
  EXPECT_EQ(capacityFor(10), 12);
  EXPECT_EQ(capacityFor(30), 30);
  IntArray tens(10 * 2048);
  tens.Set(10 * 2048, 0);
  EXPECT_EQ(tens.Table().capacity, 14);
  IntArray five;
  five.Set(4 * 2048, 0);
  EXPECT_EQ(five.Table().capacity, 5);
}

TEST_F(SplitArray, SettlesForNoSmallerTable) {
  IntArray array(10 * 2048);
  array.Set(5, 7);
  {
    tests::FakeHeap heap;
    heap.refuseUpToCall = 1;
    array.Set(10 * 2048, 0);
    EXPECT_EQ(heap.sizes.front(), 14 * sizeof(void*));
  }
  EXPECT_EQ(array.Table().count, 11);
  EXPECT_EQ(array.Table().capacity, 14);
  EXPECT_EQ(array.Get(5), 7);
  for (int32_t i = 1; i < 14; ++i) EXPECT_EQ(array.Table().blocks[i], nullptr);
  testaccess::resetMemoryServices();
}

TEST_F(SplitArray, ResizesToWholeBlocksAndGivesBlocksBackInOrder) {
  IntArray array(5 * 2048);
  for (const int32_t block : {0, 2, 4}) array.Set(block * 2048, 1);
  log();
  array.Resize(2049, false);
  EXPECT_EQ(array.Size(), 2 * 2048);
  EXPECT_THAT(log(), ElementsAre("free 2", "free null", "free 3"));
  array.Resize(4096, false);
  EXPECT_THAT(log(), IsEmpty());
  array.Resize(4097, false);
  EXPECT_EQ(array.Size(), 3 * 2048);
  EXPECT_EQ(array.Get(2 * 2048), 0);
  EXPECT_EQ(array.Get(0), 1);
}

TEST_F(SplitArray, ResizedToNothingKeepsItsTable) {
  IntArray array(5 * 2048);
  array.Set(2048, 1);
  log();
  array.Resize(0, false);
  EXPECT_EQ(array.Size(), 0);
  EXPECT_EQ(array.Table().count, 0);
  EXPECT_EQ(array.Table().capacity, 5);
  EXPECT_THAT(log(), ElementsAre("free null", "free 1", "free null", "free null", "free null"));
  for (int32_t i = 0; i < 5; ++i) EXPECT_EQ(array.Table().blocks[i], nullptr);
}

TEST_F(SplitArray, OfSizeZeroKeepsWhatWasWrittenBeforehand) {
  IntArray array;
  array.Set(2048, 7);
  array.Resize(4000, false);
  EXPECT_EQ(array.Get(2048), 7);
}

TEST_F(SplitArray, LosesWhatWasWrittenBeyondItsSizeWhenItGrows) {
  IntArray array(2048);
  array.Set(2048, 7);
  log();
  array.Resize(2048, false);
  EXPECT_EQ(array.Table().count, 2) << "as long as it does not grow, the block stays";
  array.Resize(4096, false);
  EXPECT_EQ(array.Get(2048), 0);
  EXPECT_THAT(log(), IsEmpty()) << "and does not go back to the manager";
}

TEST_F(SplitArray, LeavesNoEntryBehindTheOnesInUse) {
  IntArray array(3 * 2048);
  for (const int32_t block : {0, 1, 2, 5}) array.Set(block * 2048, 1);
  array.Resize(2048, false);
  for (int32_t i = 1; i < array.Table().capacity; ++i) EXPECT_EQ(array.Table().blocks[i], nullptr);
}

TEST_F(SplitArray, GivesBackWhatWasWrittenBeyondItsSizeWhenItShrinks) {
  IntArray array(2048);
  array.Set(0, 1);
  array.Set(5 * 2048, 2);
  log();
  array.Resize(0, false);
  EXPECT_THAT(log(), ElementsAre("free 1", "free 2"));
  array.Set(3 * 2048, 3);
  log();
  array.Resize(2048, false);
  EXPECT_THAT(log(), ElementsAre("free 3")) << "of an array without a size too";
  array.Resize(0, false);
  EXPECT_THAT(log(), ElementsAre("free null"));
}

TEST_F(SplitArray, ClearsTheTailOfALastBlockThatWasNotWhole) {
  for (const int32_t newSize : {1010, 2048, 9000}) {
    RawArray array(1000);
    for (int32_t i = 0; i < 2048; ++i) array.set(i, i + 1);
    array.Resize(newSize, true);
    const int32_t cleared = std::min(newSize, 2048);
    for (int32_t i = 0; i < 2048; ++i) {
      ASSERT_EQ(array.at(i), i >= 1000 && i < cleared ? 0 : i + 1) << newSize << " " << i;
    }
  }
}

TEST_F(SplitArray, ClearsNoTailUnasked) {
  RawArray kept(1000);
  kept.set(1500, 5);
  kept.Resize(2048, false);
  EXPECT_EQ(kept.at(1500), 5);
  RawArray shrunk(1000);
  shrunk.set(999, 5);
  shrunk.Resize(500, true);
  EXPECT_EQ(shrunk.at(999), 5);
  RawArray absent(1000);
  absent.Resize(2000, true);
  EXPECT_EQ(absent.RawBlock(0), nullptr);
}

TEST_F(SplitArray, AssignsWholeBlocks) {
  IntArray source(3 * 2048);
  source.Set(0, 1);
  source.Set(2 * 2048 + 5, 2);
  IntArray target(4 * 2048);
  target.Set(2048, 3);
  target.Set(2 * 2048, 4);
  target.Set(3 * 2048, 5);
  log();
  target.Assign(source, source.Size());
  EXPECT_THAT(log(), ElementsAre("free 5", "alloc 6 8192 raw", "free 3"));
  EXPECT_EQ(target.Size(), source.Size());
  for (int32_t i = 0; i < target.Size(); ++i) ASSERT_EQ(target.Get(i), source.Get(i)) << i;
}

TEST_F(SplitArray, AssignsAPartOfAnother) {
  IntArray source(3 * 2048);
  for (int32_t block = 0; block < 3; ++block) source.Set(block * 2048, block + 1);
  IntArray target;
  target.Assign(source, 2049);
  EXPECT_EQ(target.Size(), 4096);
  EXPECT_EQ(target.Get(2048), 2);
  target.Assign(source, 5 * 2048);
  EXPECT_EQ(target.Size(), 5 * 2048);
  EXPECT_EQ(target.Get(2 * 2048), 3);
  EXPECT_EQ(target.Block(4), nullptr) << "beyond the other's table there is nothing";
}

TEST_F(SplitArray, AssignedToItselfIsOnlyResized) {
  IntArray array(3 * 2048);
  array.Set(0, 1);
  array.Set(2 * 2048, 2);
  log();
  array.Assign(array, 2048);
  EXPECT_EQ(array.Size(), 2048);
  EXPECT_EQ(array.Get(0), 1);
  EXPECT_THAT(log(), ElementsAre("free null", "free 2"));
}

TEST_F(SplitArray, IsCopied) {
  IntArray source(2 * 2048);
  source.Set(3000, 7);
  const IntArray copy(source);
  EXPECT_EQ(copy.Size(), source.Size());
  EXPECT_EQ(copy.Get(3000), 7);
  EXPECT_EQ(copy.Block(0), nullptr);
}

TEST_F(SplitArray, MakesItselfDense) {
  IntArray array(3 * 2048);
  array.Set(2048, 7);
  log();
  array.Materialize(true);
  EXPECT_THAT(log(), ElementsAre("alloc 2 8192 zero", "alloc 3 8192 zero"));
  EXPECT_TRUE(array.IsDense());
  EXPECT_EQ(array.Get(0), 0);
  array.Resize(4 * 2048, false);
  EXPECT_FALSE(array.IsDense());
  array.Materialize(false);
  EXPECT_THAT(log(), ElementsAre("alloc 4 8192 raw"));
}

TEST_F(SplitArray, ClearsFromTheStartOfABlock) {
  IntArray array(3 * 2048);
  array.Materialize(true);
  for (int32_t i = 0; i < array.Size(); ++i) array.Set(i, 1);
  array.ClearRange(2048 + 100, 2048 + 150);
  for (int32_t i = 0; i < array.Size(); ++i) {
    ASSERT_EQ(array.Get(i), i >= 2048 && i < 2048 + 50 ? 0 : 1) << i;
  }
  array.ClearRange(2048, 3 * 2048 + 100);
  for (int32_t i = 0; i < array.Size(); ++i) ASSERT_EQ(array.Get(i), i >= 2048 ? 0 : 1) << i;
}

TEST_F(SplitArray, CountsAMissingBlockAsClearedWhole) {
  IntArray array(3 * 2048);
  for (int32_t i = 2048; i < array.Size(); ++i) array.Set(i, 1);
  log();
  array.ClearRange(0, 2048 + 100);
  EXPECT_EQ(array.Get(2048 + 99), 0);
  EXPECT_EQ(array.Get(2048 + 100), 1);
  EXPECT_EQ(array.Block(0), nullptr);
  array.ClearRange(500, 400);
  array.ClearRange(5 * 2048, 6 * 2048);
  array.ClearRange(-5, 0);
  EXPECT_EQ(array.Get(2048 + 100), 1);
}

TEST_F(SplitArray, ClearsFromItsStartOnWhenTheRangeBeginsBeforeIt) {
  IntArray array(10);
  for (int32_t i = 0; i < 10; ++i) array.Set(i, 1);
  array.ClearRange(-5, 3);
  for (int32_t i = 0; i < 10; ++i) EXPECT_EQ(array.Get(i), i < 3 ? 0 : 1) << i;
}

TEST_F(SplitArray, SwapsTables) {
  IntArray a(2048);
  a.Set(1, 5);
  IntArray b(3 * 2048);
  b.Set(5000, 6);
  OroMM::ArrayBase::BlockTable table = b.Table();
  a.SwapBlocks(table);
  EXPECT_EQ(a.Table().count, 3);
  EXPECT_EQ(table.count, 1);
  EXPECT_EQ(a.Size(), 2048) << "the size does not follow";
  a.SwapBlocks(table);
  a.SwapContents(b);
  EXPECT_EQ(a.Size(), 3 * 2048);
  EXPECT_EQ(a.Get(5000), 6);
  EXPECT_EQ(b.Get(1), 5);
}

TEST_F(SplitArray, GivesItsBlocksBackFromTheLastToTheFirst) {
  {
    IntArray array(3 * 2048);
    array.Set(0, 1);
    array.Set(2 * 2048, 1);
    array.Set(4 * 2048, 1);  // beyond the size
    log();
  }
  EXPECT_THAT(log(), ElementsAre("free 3", "free null", "free 2", "free null", "free 1"));
  EXPECT_EQ(memory_.manager->living(), 0);
}

TEST_F(SplitArray, RefusesASizeThatItsBlocksWouldPass) {
  tests::AssertionList assertions;
  EXPECT_EQ(IntArray(INT32_MAX - 2047).Size(), 0);
  EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/arraybase"));
  IntArray array(10);
  array.Resize(INT32_MAX, false);
  EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/arraybase"));
  EXPECT_EQ(array.Size(), 2048);
  array.Resize(INT32_MAX - 2048, false);
  EXPECT_EQ(array.Size(), INT32_MAX - 2047);
  EXPECT_EQ(array.Get(INT32_MAX - 2048), 0);
  array.Set(INT32_MAX - 2048, 9);
  EXPECT_EQ(array.Get(INT32_MAX - 2048), 9);
  EXPECT_THAT(assertions.take(), IsEmpty());
}

TEST_F(SplitArray, CountsBlocks) {
  const IntArray array(10);
  EXPECT_EQ(array.BlockCount(0), 0);
  EXPECT_EQ(array.BlockCount(-3), 0);
  EXPECT_EQ(array.BlockCount(2048), 1);
  EXPECT_EQ(array.BlockCount(2049), 2);
  EXPECT_EQ(array.BlockCount(INT32_MAX), 1048576);
}

TEST_F(SplitArray, AsksForTheManagerOnceAndKeepsIt) {
  const int32_t before = memory_.manager->refCount();
  const IntArray first(1);
  const int requests = memory_.broker.serviceRequests;
  EXPECT_EQ(memory_.manager->refCount(), before + 1);
  const IntArray second(1);
  EXPECT_EQ(OroMM::arrayManager(), memory_.manager.get());
  EXPECT_EQ(memory_.broker.serviceRequests, requests);
  EXPECT_EQ(memory_.manager->refCount(), before + 1);
}

TEST_F(SplitArray, FillsItsTableThroughTheHeapOfTheSystem) {
  tests::FakeHeap heap;
  const IntArray array(5 * 2048);
  EXPECT_THAT(heap.sizes, ElementsAre(5 * sizeof(void*)));
}

TEST(SplitArrayWithoutManager, CanBeMadeResizedReadAndDestroyed) {
  const tests::UnmanagedMemory memory;
  EXPECT_EQ(OroMM::arrayManager(), nullptr);
  IntArray array(5000);
  array.Set(1, 0);
  array.Resize(100, true);
  array.Resize(9000, true);
  array.Assign(IntArray(3000), 3000);
  EXPECT_EQ(array.Get(7), 0);
  EXPECT_EQ(array.Size(), 4096);
}

TEST(SplitArrayWithoutManager, SeesAManagerThatComesLate) {
  const tests::UnmanagedMemory none;
  const IntArray early(10);
  const tests::ManagedMemory memory;
  IntArray late(10);
  late.Set(1, 5);
  EXPECT_EQ(memory.manager->allocations, 1);
}

TEST(SplitArrayWithoutManager, SwapsTheManagerWithTheBlocks) {
  const tests::UnmanagedMemory none;
  auto early = std::make_unique<IntArray>(10);
  const tests::ManagedMemory memory;
  IntArray managed(10);
  managed.Set(1, 5);
  early->SwapContents(managed);
  EXPECT_EQ(early->Get(1), 5);
  early->Set(2048, 6);
  EXPECT_EQ(memory.manager->living(), 2);
  early.reset();
  EXPECT_EQ(memory.manager->living(), 0);
}

TEST(SplitArrayWithoutManagerDeathTest, EndsTheProcessAtTheFirstBlock) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        const tests::UnmanagedMemory memory;
        kelSetAssertCallback(
            [](void*, const char* text, const char* source, int32_t) {
              std::fprintf(stderr, "assertion '%s' in %s\n", text, source);
            },
            nullptr);
        IntArray array(10);
        array.Set(1, 5);
      },
      "assertion '' in orobasictypes/arraybase");
}

// The array beside a plain vector that is always as large as whole blocks.
template <class Array>
class ArrayModel {
 public:
  using Value = typename Array::Value;

  void resize(int32_t size) {
    array_.Resize(size, true);
    values_.resize(static_cast<size_t>((size + block - 1) / block * block));
  }
  void set(int32_t i, int32_t value) {
    array_.Set(i, Array::make(value));
    values_[static_cast<size_t>(i)] = value;
  }
  bool agreesAt(int32_t i) const {
    const bool inside = i >= 0 && i < static_cast<int32_t>(values_.size());
    return array_.Get(i) == Array::make(inside ? values_[static_cast<size_t>(i)] : 0);
  }
  void clearBlocks(int32_t from, int32_t blocks) {
    array_.ClearRange(from * block, (from + blocks) * block);
    for (int32_t i = from * block; i < std::min((from + blocks) * block, size()); ++i) {
      values_[static_cast<size_t>(i)] = 0;
    }
  }
  void assign(const ArrayModel& other, int32_t size) {
    array_.Assign(other.array_, size);
    values_ = other.values_;
    values_.resize(static_cast<size_t>((size + block - 1) / block * block));
  }
  void swap(ArrayModel& other) {
    array_.SwapContents(other.array_);
    values_.swap(other.values_);
  }
  int32_t size() const { return static_cast<int32_t>(values_.size()); }
  int32_t arraySize() const { return array_.Size(); }
  bool agrees() const {
    for (int32_t i = 0; i < size(); ++i) {
      if (!agreesAt(i)) return false;
    }
    return size() == arraySize();
  }

 private:
  static constexpr int32_t block = Array::Storage::perBlock;
  typename Array::Storage array_;
  std::vector<int32_t> values_;
};

struct Integers {
  using Storage = IntArray;
  using Value = int;
  static int make(int32_t value) { return value; }
};
struct Vectors {
  using Storage = VectorArray;
  using Value = OroVector;
  static OroVector make(int32_t value) {
    return OroVector(value, value == 0 ? 0 : value + 0.5, value == 0 ? 0 : -value);
  }
};

template <class Array>
void runRandomSteps(uint32_t seed) {
  std::mt19937 random(seed);
  const auto upTo = [&](int32_t limit) {
    return static_cast<int32_t>(random() % static_cast<uint32_t>(limit));
  };
  ArrayModel<Array> models[2];
  for (int step = 0; step < 1000000; ++step) {
    ArrayModel<Array>& model = models[random() & 1];
    const int32_t choice = upTo(10000);
    if (choice < 3) {
      model.resize(upTo(9000));
    } else if (choice < 5) {
      model.assign(models[random() & 1], upTo(9000));
    } else if (choice < 6) {
      model.swap(models[1]);
    } else if (choice < 8) {
      model.clearBlocks(upTo(5), upTo(3));
    } else if (choice < 6000 && model.size() > 0) {
      model.set(upTo(model.size()), upTo(4) == 0 ? 0 : upTo(1000));
    } else {
      ASSERT_TRUE(model.agreesAt(upTo(10000) - 100)) << "step " << step;
    }
    if (step % 100000 == 0) {
      ASSERT_TRUE(model.agrees()) << "step " << step;
    }
  }
  EXPECT_TRUE(models[0].agrees());
  EXPECT_TRUE(models[1].agrees());
}

TEST_F(SplitArray, OfIntegersBehavesLikeAPlainOne) {
  memory_.manager->logs = false;
  runRandomSteps<Integers>(1);
  EXPECT_EQ(memory_.manager->living(), 0);
}

TEST_F(SplitArray, OfVectorsBehavesLikeAPlainOne) {
  memory_.manager->logs = false;
  runRandomSteps<Vectors>(2);
  EXPECT_EQ(memory_.manager->living(), 0);
}

}  // namespace
