#include "orobasictypes/progbitvectoriter.h"

#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/orobasictypes/numeric/fakeprogress.h"
#include "tests/support/fakebroker.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::bitsOf;
using tests::FakeProgress;

class ProgressWalk : public testing::Test {
 protected:
  ProgressWalk() {
    broker_.registerService(KelCString::borrow(IOroProgress::interfaceName()), service_.get());
  }
  static std::vector<int32_t> walked(ProgBitVectorIter& walk) {
    std::vector<int32_t> bits;
    for (int32_t b = walk.Next(); b >= 0; b = walk.Next()) bits.push_back(b);
    return bits;
  }

  tests::FakeBroker broker_;
  const IPtr<FakeProgress> service_ = new FakeProgress;
};

TEST_F(ProgressWalk, VisitsSetOrClearBits) {
  BitVector bits = bitsOf({0, 3, 31});
  ProgBitVectorIter set(bits, true);
  EXPECT_EQ(set.Current(), -1);
  EXPECT_THAT(walked(set), ElementsAre(0, 3, 31));
  bits.Not();
  ProgBitVectorIter clear(bits, false);
  EXPECT_THAT(walked(clear), ElementsAre(0, 3, 31));
}

TEST_F(ProgressWalk, ReportsAtTheBitsThatPassTheNextStep) {
  BitVector bits = bitsOf({5, 10, 15, 16, 40, 1000}, 1023);  // a step is 10 bits
  {
    ProgBitVectorIter walk(bits, true);
    walked(walk);
    EXPECT_THAT(service_->take(),
                ElementsAre(5 / 1023.0F, 15 / 1023.0F, 40 / 1023.0F, 1000 / 1023.0F));
  }
  EXPECT_THAT(service_->take(), ElementsAre(1.0F)) << "its end is the end of the work";
}

TEST_F(ProgressWalk, ReportsAboutAHundredTimes) {
  BitVector bits(99999);
  bits.Not();
  ProgBitVectorIter walk(bits, true);
  EXPECT_EQ(walked(walk).size(), 100000U);
  EXPECT_THAT(service_->take(),
              testing::SizeIs(testing::AllOf(testing::Ge(98U), testing::Le(102U))));
}

TEST_F(ProgressWalk, StepsByOneBitAtLeast) {
  BitVector bits = bitsOf({1, 2, 3});
  ProgBitVectorIter walk(bits, true);
  walked(walk);
  EXPECT_THAT(service_->take(), ElementsAre(1 / 31.0F, 2 / 31.0F, 3 / 31.0F));
}

TEST_F(ProgressWalk, DoesNotHearACancel) {
  BitVector bits = bitsOf({1, 2, 3});
  service_->goesOn = false;
  service_->isCancelled = true;
  ProgBitVectorIter walk(bits, true);
  EXPECT_THAT(walked(walk), ElementsAre(1, 2, 3));
}

TEST_F(ProgressWalk, AttachedAnewReportsFromTheStart) {
  BitVector bits = bitsOf({500}, 1023);
  BitVector other = bitsOf({7, 600}, 99999);
  ProgBitVectorIter walk(bits, true);
  EXPECT_EQ(walk.Next(), 500);
  service_->take();
  walk.Attach(other);
  EXPECT_EQ(walk.Next(), 600) << "behind the current bit";
  EXPECT_THAT(service_->take(), ElementsAre(600 / 99999.0F));
  EXPECT_EQ(walk.Next(), -1);
  EXPECT_EQ(walk.Next(), 7) << "and from the end it starts again";
}

TEST(ProgressWalkWithoutService, Walks) {
  BitVector bits = bitsOf({4, 9});
  ProgBitVectorIter walk(bits, true);
  EXPECT_EQ(walk.Next(), 4);
  EXPECT_EQ(walk.Next(), 9);
  EXPECT_EQ(walk.Next(), -1);
}

}  // namespace
