#include "orobasictypes/orovectorarray.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interfaces/IRealPArrayFactory.h"
#include "orobasictypes/bininputfile.h"
#include "orobasictypes/binoutputfile.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oromatrix.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/vertexarrayrpa.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/orobasictypes/numeric/notfinite.h"
#include "tests/orobasictypes/numeric/plainpoints.h"
#include "tests/support/assertionlist.h"
#include "tests/support/countingmanager.h"
#include "tests/tempfolder.h"

namespace {

using OroMM::IntArray;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::bitsOf;
using tests::MemoryInput;
using tests::MemoryOutput;
using tests::setBits;

using Points = std::vector<OroVector>;

using tests::nan;

class VectorArrayTest : public testing::Test {
 protected:
  std::vector<std::string> log() { return memory_.manager->takeLog(); }
  // Points (1, 0, 0), (2, 0, 0) and so on.
  static IPtr<OroVectorArray> numbered(int32_t count) {
    IPtr<OroVectorArray> made(new OroVectorArray);
    for (int32_t i = 1; i <= count; ++i) made->Add(i, 0, 0);
    return made;
  }
  static std::vector<double> numbersOf(const OroVectorArray& array) {
    std::vector<double> numbers;
    for (int32_t i = 1; i <= array.GetCount(); ++i) numbers.push_back(array.GetVector(i).x);
    return numbers;
  }

  tests::ManagedMemory memory_;
};

TEST_F(VectorArrayTest, BeginsEmptyAndWithoutRoom) {
  const IPtr<OroVectorArray> array(new OroVectorArray);
  EXPECT_EQ(array->GetCount(), 0);
  EXPECT_EQ(array->GetCapacity(), 0);
  const IPtr<OroVectorArray> sized(new OroVectorArray(1500));
  EXPECT_EQ(sized->GetCount(), 0);
  EXPECT_EQ(sized->GetCapacity(), 2048);
  EXPECT_EQ(IPtr<OroVectorArray>(new OroVectorArray(-3))->GetCapacity(), 0);
  EXPECT_THAT(log(), IsEmpty());
}

// Tells what is reserved.
class Reserving : public OroVectorArray {
 public:
  bool Reserve(int32_t n) override {
    reserved.push_back(n);
    return OroVectorArray::Reserve(n);
  }
  std::vector<int32_t> reserved;
};

TEST_F(VectorArrayTest, ReservesSixteenForTheFirstPointAndThenTwiceTheRoom) {
  Reserving array;
  EXPECT_EQ(array.Add(1, 2, 3), 1);
  EXPECT_THAT(array.reserved, ElementsAre(16));
  EXPECT_EQ(array.GetCapacity(), 1024) << "whole blocks";
  for (int32_t i = 2; i <= 16; ++i) EXPECT_EQ(array.Add(i, 0, 0), i);
  EXPECT_EQ(array.GetCapacity(), 1024);
  for (int32_t i = 17; i <= 1023; ++i) array.Add(i, 0, 0);
  EXPECT_THAT(array.reserved, ElementsAre(16));
  EXPECT_EQ(array.Add(1024, 0, 0), 1024);
  EXPECT_THAT(array.reserved, ElementsAre(16, 2048)) << "before the index no longer fits";
  EXPECT_EQ(array.GetCapacity(), 2048);
  EXPECT_EQ(array.GetVector(1024), OroVector(1024, 0, 0));
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero", "alloc 2 24576 zero"));
}

TEST_F(VectorArrayTest, ReservesRoomForWhatIsSetOrReadAndNoneWhenItIsCleared) {
  Reserving array;
  array.Set(2000, 1, 2, 3);
  array.Clear();
  MemoryInput input(std::string("\x0B\x91\x6B\0\0\0\0\0", 8));
  EXPECT_TRUE(array.Read(input));
  EXPECT_THAT(array.reserved, ElementsAre(2001, 0, 0, 1));
}

TEST_F(VectorArrayTest, AddsPointsInSeveralForms) {
  const IPtr<OroVectorArray> array(new OroVectorArray);
  const double position[3] = {1, 2, 3};
  EXPECT_EQ(array->AddD(position), 1);
  EXPECT_EQ(array->AddD(nullptr), 2);
  EXPECT_EQ(array->Add(OroVector(7, 8, 9)), 3);
  EXPECT_EQ(array->GetVector(1), OroVector(1, 2, 3));
  EXPECT_EQ(array->GetVector(2), OroVector());
  EXPECT_EQ(array->GetVector(3), OroVector(7, 8, 9));
  tests::AssertionList assertions;
  const float floats[3] = {1, 2, 3};
  EXPECT_EQ(array->AddF(floats), 0);
  EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/realparray"));
  EXPECT_EQ(array->GetCount(), 3);
  EXPECT_TRUE(array->SetF(2, floats));
  EXPECT_EQ(array->GetVector(2), OroVector(1, 2, 3));
  EXPECT_FALSE(array->Write(*std::make_unique<MemoryOutput>(), BitVector()));
  EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/realparray"));
}

TEST_F(VectorArrayTest, AddsManyPointsAsOneByOne) {
  std::mt19937 random(5);
  const IPtr<OroVectorArray> many(new OroVectorArray);
  const IPtr<OroVectorArray> single(new OroVectorArray);
  std::vector<std::string> bySingle;
  for (const int32_t n : {0, 1, 15, 16, 1007, 1, 3000, 5000}) {
    Points points(static_cast<size_t>(n));
    for (OroVector& point : points) point.x = random() % 3 == 0 ? 0 : random();
    for (const OroVector& point : points) single->Add(point);
    EXPECT_EQ(many->AddAll(points.data(), n), single->GetCount());
    EXPECT_EQ(many->GetCapacity(), single->GetCapacity());
    EXPECT_TRUE(*many == *single);
  }
  const Points origins(3000);
  log();
  EXPECT_EQ(many->AddAll(origins.data(), 3000), single->GetCount() + 3000);
  EXPECT_THAT(log(), IsEmpty()) << "origins take no blocks";
}

TEST_F(VectorArrayTest, AddsAPointOfItsOwn) {
  const IPtr<OroVectorArray> array = numbered(1023);
  array->Add(array->Points().Get(5));
  EXPECT_EQ(array->GetVector(1024).x, 5);
}

TEST_F(VectorArrayTest, NeverShrinksByReserving) {
  const IPtr<OroVectorArray> array = numbered(100);
  EXPECT_TRUE(array->Reserve(5));
  EXPECT_EQ(array->GetCount(), 100);
  EXPECT_TRUE(array->Reserve(-1));
  EXPECT_TRUE(array->Reserve(1024));
  EXPECT_EQ(array->GetCapacity(), 1024);
  EXPECT_TRUE(array->Reserve(1025));
  EXPECT_EQ(array->GetCapacity(), 2048);
  EXPECT_EQ(array->GetCount(), 100);
  array->SetCount(5000);
  EXPECT_TRUE(array->Reserve(3000));
  EXPECT_EQ(array->GetCount(), 3000) << "the smaller of the two";
}

TEST_F(VectorArrayTest, RefusesRoomThatCannotBeCounted) {
  tests::AssertionList assertions;
  const IPtr<OroVectorArray> array = numbered(3);
  EXPECT_FALSE(array->Reserve(INT32_MAX));
  EXPECT_FALSE(array->Set(INT32_MAX, 1, 2, 3));
  EXPECT_FALSE(array->Set(-1, 1, 2, 3));
  EXPECT_FALSE(array->SetExisting(-1, OroVector(1, 2, 3)));
  EXPECT_THAT(numbersOf(*array), ElementsAre(1, 2, 3));
  array->SetCount(INT32_MAX);
  EXPECT_EQ(array->Add(1, 2, 3), 0);
  array->SetCount(5000);
  EXPECT_EQ(array->Add(1, 2, 3), 2048) << "a count that nobody checked ends where the room does";
}

TEST_F(VectorArrayTest, SetsBehindTheLastPointAndGrows) {
  const IPtr<OroVectorArray> array(new OroVectorArray);
  EXPECT_TRUE(array->Set(5, 1, 2, 3));
  EXPECT_EQ(array->GetCount(), 5);
  EXPECT_EQ(array->GetCapacity(), 1024);
  EXPECT_EQ(array->GetVector(4), OroVector());
  EXPECT_EQ(array->GetVector(5), OroVector(1, 2, 3));
  EXPECT_TRUE(array->Set(3, 7, 7, 7));
  EXPECT_EQ(array->GetCount(), 5);
  EXPECT_TRUE(array->Set(1024, 4, 5, 6));
  EXPECT_EQ(array->GetCount(), 1024);
  EXPECT_EQ(array->GetCapacity(), 2048) << "room for the index";
  array->SetCount(2048);
  EXPECT_TRUE(array->Set(2048, 1, 1, 1)) << "at the count as behind it";
  EXPECT_EQ(array->GetCapacity(), 3072);
}

TEST_F(VectorArrayTest, SetsExistingPointsWithTheirBlocks) {
  const IPtr<OroVectorArray> array(new OroVectorArray(3000));
  EXPECT_TRUE(array->SetExisting(2000, OroVector()));
  EXPECT_EQ(array->GetCount(), 0) << "the count is not touched";
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero")) << "even for the origin";
  array->Set(10, OroVector());
  EXPECT_THAT(log(), IsEmpty()) << "which Set does not store";
}

TEST_F(VectorArrayTest, ReadsWhatIsAbsentAsTheOrigin) {
  const IPtr<OroVectorArray> array = numbered(3);
  log();
  EXPECT_EQ(array->GetVector(1000), OroVector());
  EXPECT_EQ(array->GetVector(100000), OroVector());
  EXPECT_EQ(array->GetVector(-1), OroVector());
  OroVector out(9, 9, 9);
  EXPECT_FALSE(array->GetChecked(0, out));
  EXPECT_FALSE(array->GetChecked(4, out));
  EXPECT_EQ(out, OroVector(9, 9, 9));
  EXPECT_TRUE(array->GetChecked(3, out));
  EXPECT_EQ(out, OroVector(3, 0, 0));
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(VectorArrayTest, KeepsBlocksWhenItIsCleared) {
  const IPtr<OroVectorArray> array = numbered(2000);
  log();
  array->Clear();
  EXPECT_EQ(array->GetCount(), 0);
  EXPECT_EQ(array->GetCapacity(), 2048);
  EXPECT_THAT(log(), IsEmpty());
  array->SetCount(3);
  EXPECT_THAT(numbersOf(*array), ElementsAre(1, 2, 3)) << "stale points come back";
  array->ClearAll();
  EXPECT_EQ(array->GetCount(), 0);
  EXPECT_EQ(array->GetCapacity(), 0);
  EXPECT_THAT(log(), ElementsAre("free 1", "free 2"));
}

TEST_F(VectorArrayTest, GivesBackThePointsBeyondItsRoomWhenAllIsCleared) {
  for (const int32_t room : {0, 1000}) {
    const IPtr<OroVectorArray> array(new OroVectorArray(room));
    array->SetExisting(5000, OroVector(1, 2, 3));
    ASSERT_EQ(memory_.manager->living(), 1) << room;
    array->ClearAll();
    EXPECT_EQ(memory_.manager->living(), 0) << room;
    EXPECT_EQ(array->GetCapacity(), 0);
  }
}

TEST_F(VectorArrayTest, StaysSoundAtACountThatNobodyChecked) {
  const IPtr<OroVectorArray> array = numbered(3);
  array->SetCount(INT32_MIN);
  array->Compress(bitsOf({1, 2}));
  EXPECT_EQ(array->GetCount(), 0);
  array->SetCount(INT32_MIN);
  EXPECT_EQ(array->Add(1, 2, 3), 0);
  EXPECT_EQ(array->GetCount(), INT32_MIN);
  array->SetCount(INT32_MAX);
  const IPtr<VertexArrayRPA> vertices(new VertexArrayRPA(*array));
  EXPECT_EQ(vertices->Limit(), INT32_MAX);
  EXPECT_TRUE(array->Remove(INT32_MAX));
  EXPECT_EQ(array->GetCount(), INT32_MAX - 1);
  EXPECT_TRUE(array->Remove(INT32_MAX - 1));
  EXPECT_EQ(array->GetCount(), INT32_MAX - 2);
  EXPECT_FALSE(array->Remove(INT32_MAX));
  array->SetCount(3);
  EXPECT_THAT(numbersOf(*array), ElementsAre(1, 2, 3));
}

TEST_F(VectorArrayTest, InsertsAndRemovesPoints) {
  const IPtr<OroVectorArray> array = numbered(3);
  EXPECT_TRUE(array->Insert(4, OroVector(4, 0, 0)));
  EXPECT_TRUE(array->Insert(1, OroVector(9, 0, 0)));
  EXPECT_TRUE(array->Insert(3, OroVector(8, 0, 0)));
  EXPECT_THAT(numbersOf(*array), ElementsAre(9, 1, 8, 2, 3, 4));
  EXPECT_FALSE(array->Insert(0, OroVector()));
  EXPECT_FALSE(array->Insert(8, OroVector()));
  EXPECT_TRUE(array->Remove(1));
  EXPECT_TRUE(array->Remove(5));
  EXPECT_TRUE(array->Remove(2));
  EXPECT_THAT(numbersOf(*array), ElementsAre(1, 2, 3));
  EXPECT_FALSE(array->Remove(0));
  EXPECT_FALSE(array->Remove(4));
  EXPECT_TRUE(array->RemoveLast(2));
  EXPECT_THAT(numbersOf(*array), ElementsAre(1));
  EXPECT_TRUE(array->RemoveLast(5));
  EXPECT_EQ(array->GetCount(), 0);
  array->SetCount(2);
  EXPECT_THAT(numbersOf(*array), ElementsAre(1, 2)) << "the storage was not touched";
}

TEST_F(VectorArrayTest, RemovesByCopyingWhatStandsBehindTheLastPoint) {
  const IPtr<OroVectorArray> array = numbered(5);
  array->SetCount(3);
  array->Remove(1);
  array->SetCount(3);
  EXPECT_THAT(numbersOf(*array), ElementsAre(2, 3, 4));
}

TEST_F(VectorArrayTest, MovesOriginsWithoutMakingBlocks) {
  const IPtr<OroVectorArray> array(new OroVectorArray(3000));
  array->SetCount(2500);
  EXPECT_TRUE(array->Insert(1, OroVector()));
  EXPECT_THAT(log(), IsEmpty());
  EXPECT_TRUE(array->Insert(1, OroVector(1, 0, 0)));
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero", "alloc 2 24576 zero"))
      << "the point that is added, and where it goes";
}

TEST_F(VectorArrayTest, IsReversedInPlace) {
  const IPtr<OroVectorArray> array = numbered(5);
  array->Reverse();
  EXPECT_THAT(numbersOf(*array), ElementsAre(5, 4, 3, 2, 1));
  const IPtr<OroVectorArray> even = numbered(4);
  even->Reverse();
  EXPECT_THAT(numbersOf(*even), ElementsAre(4, 3, 2, 1));
}

TEST_F(VectorArrayTest, MaterializesItsBlocks) {
  const IPtr<OroVectorArray> array(new OroVectorArray(2048));
  EXPECT_TRUE(array->Materialize());
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero", "alloc 2 24576 zero"));
  EXPECT_TRUE(array->Blocks()->IsDense());
}

TEST_F(VectorArrayTest, SwapsStorageAndColours) {
  const IPtr<OroVectorArray> a = numbered(3);
  const IPtr<OroVectorArray> b = numbered(2000);
  a->SetScale(2);
  log();
  a->Swap(*b);
  EXPECT_EQ(a->GetCount(), 2000);
  EXPECT_EQ(a->GetCapacity(), 2048);
  EXPECT_THAT(numbersOf(*b), ElementsAre(1, 2, 3));
  EXPECT_EQ(b->GetCapacity(), 1024);
  EXPECT_EQ(b->GetScale(), 2);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(VectorArrayTest, IsCopiedBlockByBlock) {
  const IPtr<OroVectorArray> array = numbered(3);
  array->Set(3000, 7, 0, 0);
  log();
  const IPtr<OroVectorArray> copy(new OroVectorArray(*array));
  EXPECT_TRUE(*copy == *array);
  EXPECT_EQ(copy->GetCapacity(), array->GetCapacity());
  EXPECT_THAT(log(), ElementsAre("alloc 3 24576 raw", "free null", "alloc 4 24576 raw"));
  const IPtr<RealPArray> fresh(array->NewArray(5));
  EXPECT_EQ(fresh->GetCount(), 0);
  EXPECT_EQ(fresh->GetCapacity(), 1024);
  EXPECT_STREQ(fresh->getClassName(), "OroVectorArray");
}

TEST_F(VectorArrayTest, StaysAbsentWhereATransformLeavesOrigins) {
  const IPtr<OroVectorArray> array(new OroVectorArray(3000));
  array->SetCount(2500);
  OroMatrix matrix;
  matrix.m[0] = 2;
  array->Transform(matrix);
  EXPECT_THAT(log(), IsEmpty());
  matrix.m[3] = 1;
  array->Transform(matrix);
  EXPECT_EQ(memory_.manager->allocations, 3);
  EXPECT_EQ(array->GetVector(2500), OroVector(1, 0, 0));
  EXPECT_EQ(array->GetVector(2501), OroVector()) << "no point";
  EXPECT_EQ(array->GetVector(0), OroVector()) << "no point either";
}

TEST_F(VectorArrayTest, CountsAnAbsentBlockAsOneOrigin) {
  const IPtr<OroVectorArray> array(new OroVectorArray(3000));
  array->Set(2500, 5, 6, 7);
  OroVector min;
  OroVector max;
  array->GetBounds(min, max);
  EXPECT_EQ(min, OroVector());
  EXPECT_EQ(max, OroVector(5, 6, 7));
  array->GetBounds(min, max, bitsOf({2500}));
  EXPECT_EQ(min, OroVector(5, 6, 7));
  array->GetBounds(min, max, bitsOf({1, 2500}));
  EXPECT_EQ(min, OroVector());
  EXPECT_EQ(array->AbsoluteMaximum(), 7);
  EXPECT_EQ(memory_.manager->allocations, 1);
}

TEST_F(VectorArrayTest, CompressesAbsentBlocksToNothing) {
  const IPtr<OroVectorArray> array(new OroVectorArray(5000));
  array->Set(4500, 5, 6, 7);
  array->SetCount(4501);
  log();
  BitVector mask;
  mask.SetAll(4500);
  mask.ClearRange(1, 3000);
  array->Compress(mask);
  EXPECT_EQ(array->GetCount(), 1500);
  EXPECT_EQ(array->GetVector(1500), OroVector(5, 6, 7));
  EXPECT_THAT(log(), ElementsAre("alloc 2 24576 zero"));
}

// Three of the blocks are absent; the masks have one point in `every`.
TEST_F(VectorArrayTest, TakesMasksOfAnyDensityLikeAPlainLoop) {
  constexpr int32_t count = 20000;
  std::mt19937 random(3);
  const IPtr<OroVectorArray> array(new OroVectorArray(count + 1));
  for (int32_t i = 1; i <= count; ++i) {
    const int32_t block = i / 1024;
    const bool isAbsent = block == 3 || block == 4 || block == 11;
    array->Set(i, isAbsent ? OroVector() : OroVector(i, random() % 1000, 0.5));
  }
  array->SetCount(count);
  for (const uint32_t every : {1U, 2U, 15U, 17U, 100U, 700U, 100000U}) {
    BitVector mask;
    for (int32_t i = 0; i <= count + 50; ++i) {
      if (random() % every == 0) mask.Set(i);
    }
    OroVector low(1e42, 1e42, 1e42);
    OroVector high = -low;
    Points kept;
    for (int32_t i = 1; i <= count; ++i) {
      if (!mask.Test(i)) continue;
      const OroVector point = array->GetVector(i);
      low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
      high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
      if (i < count) kept.push_back(point);
    }
    OroVector min;
    OroVector max;
    array->GetBounds(min, max, mask);
    EXPECT_EQ(min, low) << every;
    EXPECT_EQ(max, high) << every;
    const IPtr<OroVectorArray> copy(new OroVectorArray(*array));
    copy->Compress(mask);
    ASSERT_EQ(copy->GetCount(), static_cast<int32_t>(kept.size())) << every;
    for (int32_t i = 1; i <= copy->GetCount(); ++i) {
      ASSERT_EQ(copy->GetVector(i), kept[static_cast<size_t>(i) - 1]) << every << " " << i;
    }
  }
}

TEST_F(VectorArrayTest, MovesPointsFarDown) {
  constexpr int32_t count = 1500000;
  memory_.manager->logs = false;
  const IPtr<OroVectorArray> array = numbered(count);
  BitVector mask(count);
  for (int32_t i = 1; i < count; i += i % 8 == 0 ? 3 : 5) mask.Set(i);
  const int32_t kept = mask.CountSet();
  array->Compress(mask);
  ASSERT_EQ(array->GetCount(), kept);
  int32_t at = 0;
  for (int32_t b = mask.NextSet(0); b > 0; b = mask.NextSet(b)) {
    ASSERT_EQ(array->GetVector(++at), OroVector(b, 0, 0));
  }
}

TEST_F(VectorArrayTest, MakesTheBlocksOfPointsThatTheSortMoves) {
  const IPtr<OroVectorArray> array(new OroVectorArray(3000));
  array->SetCount(2500);
  array->Set(1, -1, 0, 0);
  log();
  array->Sort(false, nullptr, nullptr);
  EXPECT_EQ(array->GetVector(2500), OroVector(-1, 0, 0));
  EXPECT_TRUE(array->Blocks()->Block(2) != nullptr);
  EXPECT_TRUE(array->Blocks()->IsDense()) << "the sort's own order moves the points between";
}

TEST(VectorArrayWithoutManager, HoldsOriginsAlone) {
  const tests::UnmanagedMemory none;
  const IPtr<OroVectorArray> array(new OroVectorArray);
  for (int32_t i = 1; i <= 2000; ++i) EXPECT_EQ(array->Add(OroVector()), i);
  OroVector min(1, 1, 1);
  OroVector max;
  array->GetBounds(min, max);
  EXPECT_EQ(min, OroVector());
  EXPECT_TRUE(array->Insert(1, OroVector()));
  EXPECT_TRUE(array->Remove(5));
  OroMatrix matrix;
  matrix.m[0] = 2;
  array->Transform(matrix);
  EXPECT_TRUE(*IPtr<OroVectorArray>(new OroVectorArray(*array)) == *array);
  array->ClearAll();
  EXPECT_EQ(array->GetCapacity(), 0);
}

// ---------------------------------------------------------------------------------------------

IntArray mapOf(const std::vector<int32_t>& entries) {
  IntArray map;
  map.Resize(static_cast<int32_t>(entries.size()), false);
  for (size_t i = 0; i < entries.size(); ++i) map.Set(static_cast<int32_t>(i), entries[i]);
  return map;
}

TEST_F(VectorArrayTest, MovesPointsToWhereAMapSays) {
  const IPtr<OroVectorArray> array = numbered(5);
  array->Permute(mapOf({0, 2, 3, 1, 5, 4}), -1);
  EXPECT_THAT(numbersOf(*array), ElementsAre(3, 1, 2, 5, 4));
  array->Permute(mapOf({0, 2, 3, 1, 5, 4}), 0);
  EXPECT_THAT(numbersOf(*array), ElementsAre(3, 1, 2, 5, 4)) << "no points, no change";
  array->Permute(mapOf({4, 1, 2, 3, 4, 5}), 5);
  EXPECT_EQ(array->GetVector(0), OroVector()) << "no point";
  EXPECT_THAT(numbersOf(*array), ElementsAre(3, 1, 2, 5, 4));
}

TEST_F(VectorArrayTest, LeavesPointsOutThatAMapHasNoPlaceFor) {
  IPtr<OroVectorArray> array = numbered(5);
  array->Permute(mapOf({0, 0, 1, 0, 2, 3}), -1);
  EXPECT_THAT(numbersOf(*array), ElementsAre(2, 4, 5, 4, 5)) << "the rest keeps its own";
  EXPECT_EQ(array->GetCount(), 5);
  array = numbered(4);
  array->Permute(mapOf({0, 2, 1, 4, 3}), 2);
  EXPECT_THAT(numbersOf(*array), ElementsAre(2, 1, 3, 4)) << "only the first two";
  array = numbered(3);
  array->Permute(mapOf({0, 2, 1}), 9);
  EXPECT_THAT(numbersOf(*array), ElementsAre(2, 1, 3)) << "what the map has not is left out";
  array->Permute(mapOf({0, 99, -5, 3}), -1);
  EXPECT_THAT(numbersOf(*array), ElementsAre(2, 1, 3));
}

TEST_F(VectorArrayTest, PermutesLikeAPlainCopy) {
  std::mt19937 random(11);
  for (int round = 0; round < 200; ++round) {
    const auto count = static_cast<int32_t>(1 + random() % 40);
    std::vector<int32_t> entries(static_cast<size_t>(count) + 1);
    for (int32_t i = 1; i <= count; ++i) entries[static_cast<size_t>(i)] = i;
    std::shuffle(entries.begin() + 1, entries.end(), random);
    for (int32_t& entry : entries) entry = random() % 4 == 0 ? 0 : entry;
    const IPtr<OroVectorArray> array = numbered(count);
    std::vector<double> expected = numbersOf(*array);
    for (int32_t i = 1; i <= count; ++i) {
      const int32_t to = entries[static_cast<size_t>(i)];
      if (to > 0) expected[static_cast<size_t>(to) - 1] = i;
    }
    array->Permute(mapOf(entries), -1);
    ASSERT_EQ(numbersOf(*array), expected) << round;
  }
}

// ---------------------------------------------------------------------------------------------

std::string number(uint64_t value, int bytes) {
  std::string text;
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
    text += static_cast<char>(value >> shift & 0xFF);
  }
  return text;
}

std::string real(double value) {
  uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return number(bits, 8);
}

class VectorChunk : public VectorArrayTest {
 protected:
  static std::string written(OroVectorArray& array) {
    MemoryOutput output;
    EXPECT_TRUE(array.Write(output));
    EXPECT_TRUE(output.FlushBuffer());
    return output.bytes;
  }
};

TEST_F(VectorChunk, IsTagCountAndPoints) {
  const IPtr<OroVectorArray> array(new OroVectorArray);
  EXPECT_EQ(written(*array), number(0x0B916B00, 4) + number(0, 4));
  array->Add(1, -2, 0.5);
  array->Add(3, 4, 5);
  EXPECT_EQ(written(*array), number(0x0B916B00, 4) + number(2, 4) + real(1) + real(-2) + real(0.5) +
                                 real(3) + real(4) + real(5));
}

TEST_F(VectorChunk, IsFlushedPointByPoint) {
  const IPtr<OroVectorArray> array = numbered(100);
  MemoryOutput output;
  EXPECT_TRUE(array->Write(output));
  EXPECT_THAT(output.written, ElementsAre(776, 792, 792));
}

TEST_F(VectorChunk, MakesAbsentBlocksWhenItIsWritten) {
  const IPtr<OroVectorArray> array(new OroVectorArray(3000));
  array->SetCount(1500);
  EXPECT_EQ(written(*array).size(), 8U + 1500 * 24);
  EXPECT_THAT(log(), ElementsAre("alloc 1 24576 zero", "alloc 2 24576 zero"));
}

TEST_F(VectorChunk, IsReadBack) {
  for (const int32_t count : {0, 1, 3, 1023, 1024, 1025, 2048, 5000}) {
    const IPtr<OroVectorArray> array = numbered(count);
    MemoryInput input(written(*array));
    const IPtr<OroVectorArray> read = numbered(7);
    EXPECT_TRUE(read->Read(input)) << count;
    EXPECT_TRUE(*read == *array) << count;
    EXPECT_GT(read->GetCapacity(), count) << "room above the count";
  }
}

TEST_F(VectorChunk, IsAskedForPointByPoint) {
  const IPtr<OroVectorArray> array = numbered(3);
  MemoryInput input(written(*array));
  EXPECT_TRUE(array->Read(input));
  EXPECT_THAT(input.asked, ElementsAre(4, 4, 24, 24, 24));
}

TEST_F(VectorChunk, MakesBlocksForOriginsWhenItIsRead) {
  const IPtr<OroVectorArray> array(new OroVectorArray(10));
  array->SetCount(5);
  MemoryInput input(written(*array));
  const IPtr<OroVectorArray> read(new OroVectorArray);
  log();
  EXPECT_TRUE(read->Read(input));
  EXPECT_THAT(log(), ElementsAre("alloc 2 24576 zero"));
}

TEST_F(VectorChunk, OfAnotherKindLeavesAnEmptyArray) {
  for (const std::string& header :
       {number(0x0B916B01, 4), number(0x0B916C00, 4), number(0x000B916B, 4), std::string()}) {
    MemoryInput input(header + number(1, 4) + real(1) + real(2) + real(3));
    const IPtr<OroVectorArray> array = numbered(3);
    EXPECT_FALSE(array->Read(input));
    EXPECT_EQ(array->GetCount(), 0);
    EXPECT_GT(array->GetCapacity(), 0);
  }
}

TEST_F(VectorChunk, WithAnImpossibleCountIsRefused) {
  tests::AssertionList assertions;
  for (const uint32_t count : {0xFFFFFFFFU, 0x80000000U, 0x7FFFFFFFU, 0x7FFFFC00U, 0x7FFFFBFFU}) {
    MemoryInput input(number(0x0B916B00, 4) + number(count, 4));
    const IPtr<OroVectorArray> array = numbered(3);
    EXPECT_FALSE(array->Read(input)) << count;
    EXPECT_EQ(array->GetCount(), 0);
    EXPECT_EQ(array->GetCapacity(), 1024);
  }
  EXPECT_THAT(assertions.take(), IsEmpty());
}

TEST_F(VectorChunk, ThatEndsEarlyIsNoGoodOne) {
  const std::string whole = written(*numbered(2));
  for (size_t size = 0; size < whole.size(); ++size) {
    MemoryInput input(whole.substr(0, size));
    EXPECT_FALSE(IPtr<OroVectorArray>(new OroVectorArray)->Read(input)) << size;
  }
  MemoryInput failing(whole);
  failing.good = false;
  EXPECT_FALSE(IPtr<OroVectorArray>(new OroVectorArray)->Read(failing));
}

// A file of a gigabyte that is a few bytes: only what comes takes memory.
TEST_F(VectorChunk, ThatPromisesTooMuchTakesLittle) {
  MemoryInput input(number(0x0B916B00, 4) + number(40000000, 4) + real(1) + real(2));
  const IPtr<OroVectorArray> array(new OroVectorArray);
  EXPECT_FALSE(array->Read(input));
  EXPECT_LE(memory_.manager->allocations, 1);
}

TEST_F(VectorChunk, ToAMediumThatIsFullIsNoGoodOne) {
  const IPtr<OroVectorArray> array = numbered(1000);
  MemoryOutput output;
  output.takes = false;
  EXPECT_FALSE(array->Write(output));
}

TEST_F(VectorChunk, HasATagThatIsKnown) {
  EXPECT_TRUE(OroVectorArray::IsVectorArrayTag(0xB916B));
  EXPECT_TRUE(OroVectorArray::IsVectorArrayTag(758123));
  EXPECT_FALSE(OroVectorArray::IsVectorArrayTag(0xB916C));
}

TEST_F(VectorChunk, IsTheSameInAFile) {
  const tests::TempFolder folder;
  const OroPath path{OroString(folder.file("points").u16string().c_str())};
  for (const int32_t count : {0, 1, 100, 5000, 20000}) {
    const IPtr<OroVectorArray> array = numbered(count);
    {
      BinOutputFile file(path);
      const int32_t before = 7;
      EXPECT_TRUE(file.Write(&before, 1));
      EXPECT_TRUE(array->Write(file));
      EXPECT_TRUE(array->Write(file));
      EXPECT_TRUE(file.FlushAndClose());
    }
    EXPECT_EQ(folder.read("points"), number(7, 4) + written(*array) + written(*array));
    BinInputFile file(path);
    int32_t before = 0;
    EXPECT_TRUE(file.Read(&before, 1));
    const IPtr<OroVectorArray> read(new OroVectorArray);
    for (int i = 0; i < 2; ++i) {
      EXPECT_TRUE(read->Read(file));
      EXPECT_TRUE(*read == *array);
    }
    EXPECT_FALSE(read->Read(file));
  }
}

// A scrambler that depends on the place sees the same flushes in a file as elsewhere.
TEST_F(VectorChunk, IsScrambledPointByPoint) {
  std::vector<tests::FlipScrambler::Call> calls;
  const tests::ScramblerGuard guard(new tests::FlipScrambler(&calls));
  const tests::TempFolder folder;
  const OroPath path{OroString(folder.file("points").u16string().c_str())};
  const IPtr<OroVectorArray> array = numbered(500);
  MemoryOutput output;
  EXPECT_TRUE(array->Write(output));
  EXPECT_TRUE(output.FlushBuffer());
  const std::vector<tests::FlipScrambler::Call> expected = std::exchange(calls, {});
  {
    BinOutputFile file(path);
    EXPECT_TRUE(array->Write(file));
    EXPECT_TRUE(file.FlushAndClose());
  }
  EXPECT_EQ(calls, expected);
  EXPECT_EQ(folder.read("points"), output.bytes);
  BinInputFile file(path);
  const IPtr<OroVectorArray> read(new OroVectorArray);
  EXPECT_TRUE(read->Read(file));
  EXPECT_TRUE(*read == *array);
}

class FakeFactory : public IRealPArrayFactory {
 public:
  static constexpr const char* className() { return "FakeFactory"; }
  using Offers = OroOffers<FakeFactory, IRealPArrayFactory>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IRealPArray* MakeFromChunk(int32_t tag, int32_t size) override {
    asked = {tag, size};
    return new OroVectorArray(size);
  }
  std::vector<int32_t> asked;
};

TEST_F(VectorChunk, GetsItsArrayFromAFactory) {
  EXPECT_EQ(oroMakePointArray(BinMagic(0xB916B, 0)), nullptr) << "nobody makes any";
  const IPtr<FakeFactory> factory(new FakeFactory);
  memory_.broker.registerService(KelCString::borrow("IRealPArrayFactory"), factory.get());
  const IPtr<IRealPArray> made(oroMakePointArray(BinMagic(0xB916B, 0)));
  ASSERT_TRUE(static_cast<bool>(made));
  EXPECT_THAT(factory->asked, ElementsAre(0x0B916B00, 1024));
}

}  // namespace
