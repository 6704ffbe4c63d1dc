#include "orobasictypes/applyorder.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "tests/support/countingmanager.h"
#include "tests/support/slotnumber.h"

namespace {

using OroMM::IntArray;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// Moves letters or numbers and tells each call.
class Mover : public QuickSort_Assign {
 public:
  explicit Mover(std::vector<int32_t> records) : records(std::move(records)) {}

  void Assign(int32_t from, int32_t to) override {
    calls.emplace_back(from, to);
    const int32_t record = from == -1 ? held_ : records.at(static_cast<size_t>(from));
    (to == -1 ? held_ : records.at(static_cast<size_t>(to))) = record;
  }

  std::vector<int32_t> records;
  std::vector<std::pair<int32_t, int32_t>> calls;

 private:
  int32_t held_ = 0;
};

class ApplyOrder : public testing::Test {
 protected:
  static void fill(IntArray& index, const std::vector<int32_t>& values) {
    index.Resize(static_cast<int32_t>(values.size()), false);
    for (size_t i = 0; i < values.size(); ++i) index.Set(static_cast<int32_t>(i), values[i]);
  }

  tests::ManagedMemory memory_;
};

TEST_F(ApplyOrder, AssignmentStandsBehindTheDestructor) {
  EXPECT_EQ(tests::slotNumber(&QuickSort_Assign::Assign), 3) << "a destructor takes two places";
}

TEST_F(ApplyOrder, CallsNothingForWhatIsRight) {
  IntArray index;
  fill(index, {0, 1, 2, 3, 4});
  Mover mover({10, 11, 12, 13, 14});
  applyOrder(index, 0, 4, mover);
  applyOrder(index, 3, 2, mover);
  EXPECT_THAT(mover.calls, IsEmpty());
}

TEST_F(ApplyOrder, ExchangesTwoRecordsInThreeCalls) {
  IntArray index;
  fill(index, {0, 3, 2, 1});
  Mover mover({10, 11, 12, 13});
  applyOrder(index, 1, 3, mover);
  EXPECT_THAT(mover.records, ElementsAre(10, 13, 12, 11));
  EXPECT_THAT(mover.calls, ElementsAre(Pair(1, -1), Pair(3, 1), Pair(-1, 3)));
}

TEST_F(ApplyOrder, FollowsCycles) {
  IntArray index;
  fill(index, {2, 0, 4, 3, 1});  // place p gets the record of index[p]
  Mover mover({10, 11, 12, 13, 14});
  applyOrder(index, 0, 4, mover);
  EXPECT_THAT(mover.records, ElementsAre(12, 10, 14, 13, 11));
  EXPECT_THAT(mover.calls,
              ElementsAre(Pair(0, -1), Pair(2, 0), Pair(4, 2), Pair(1, 4), Pair(-1, 1)));
}

TEST_F(ApplyOrder, MovesEachRecordOnce) {
  std::mt19937 random(3);
  for (const int32_t count : {10, 1000, 200000}) {
    std::vector<int32_t> order(static_cast<size_t>(count) + 1);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin() + 1, order.end(), random);
    IntArray index;
    fill(index, order);
    std::vector<int32_t> records(order.size());
    std::iota(records.begin(), records.end(), 1000);
    Mover mover(records);
    applyOrder(index, 1, count, mover);
    for (size_t i = 0; i < order.size(); ++i) {
      ASSERT_EQ(mover.records[i], 1000 + order[i]) << i;
      ASSERT_EQ(index.Get(static_cast<int32_t>(i)), order[i]) << "the order stays";
    }
    EXPECT_LE(mover.calls.size(), order.size() * 3 / 2);
  }
  memory_.manager->takeLog();
  EXPECT_EQ(memory_.manager->living(), 0) << "what waits in the pool takes no blocks";
}

TEST_F(ApplyOrder, NotesWhatIsDoneInTheCallersVector) {
  IntArray index;
  fill(index, {0, 0, 0, 4, 3});
  Mover mover({10, 11, 12, 13, 14});
  BitVector done(500);
  applyOrder(index, 3, 4, mover, done);
  EXPECT_THAT(mover.records, ElementsAre(10, 11, 12, 14, 13));
  EXPECT_EQ(done.CountSet(), 0) << "empty afterwards";
  EXPECT_EQ(done.MaximumBit(), 511);
  BitVector left(0);
  left.Set(0);
  left.Set(1);
  applyOrder(index, 3, 4, mover, left);
  EXPECT_THAT(mover.records, ElementsAre(10, 11, 12, 14, 13)) << "what is set is left out";
  EXPECT_EQ(left.CountSet(), 0);
  left.Set(1);
  applyOrder(index, 3, 2, mover, left);
  EXPECT_EQ(left.CountSet(), 0) << "after no record at all too";
}

TEST_F(ApplyOrder, ComesToItsEndWithWhatIsNoPermutation) {
  for (const std::vector<int32_t>& order : {std::vector<int32_t>{1, 2, 1, 0},
                                            {3, 3, 3, 3},
                                            {1, 9, 0, 2},
                                            {1, -1, 0, 2},
                                            {2, 0, 0, 0}}) {
    IntArray index;
    fill(index, order);
    Mover mover({10, 11, 12, 13});
    applyOrder(index, 0, 3, mover);
    EXPECT_LE(mover.calls.size(), 12U);
  }
}

}  // namespace
