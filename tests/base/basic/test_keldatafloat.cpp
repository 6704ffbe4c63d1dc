#include "base/basic/keldatafloat.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/recordingvisitor.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(KelDataFloat, ClampsBelowFirstAndThenAbove) {
  const struct {
    double minimum, maximum, value, stored;
  } rows[] = {
      {0, 1, -0.5, 0}, {0, 1, 0.5, 0.5}, {0, 1, 2, 1},         {1, 0, 0.5, 1},
      {1, 0, 1, 0},    {0, 1, kNaN, 1},  {0, 1, kInfinity, 1}, {0, 1, -kInfinity, 0},
  };
  for (const auto& row : rows) {
    KelDataFloat item("a", row.value, row.minimum, row.maximum, 0);
    EXPECT_EQ(item.Get(), row.stored) << row.minimum << ' ' << row.maximum << ' ' << row.value;
    item.Set(row.value);
    EXPECT_EQ(item.Get(), row.stored);
    EXPECT_FALSE(item.LayersDiffer(0, 3));
  }
  double minimum = 0, maximum = 0;
  KelDataFloat("a", 0, -2.5, 8.25, 0).GetRange(minimum, maximum);
  EXPECT_EQ(minimum, -2.5);
  EXPECT_EQ(maximum, 8.25);
}

TEST(KelDataFloat, NotANumberBecomesTheMaximumAndIsNoLastingChange) {
  KelDataFloat item("a", 0.5, 0, 1, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(kNaN, nullptr, false);
  item.Update(kNaN, nullptr, false);
  EXPECT_THAT(receiver.calls, ElementsAre("float a 1"));
}

TEST(KelDataFloat, UpdateTellsOnlyAChangedValueUnlessForced) {
  KelDataFloat item("a", 1, 0, 1, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(3.5, nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.Update(3.5, nullptr, true);
  item.Update(0.25, nullptr, false);
  EXPECT_THAT(receiver.calls, ElementsAre("float a 1", "float a 0.25"));
}

TEST(KelDataFloat, LayersCompareByValueAndCopy) {
  KelDataFloat item("a", 1, -kInfinity, kInfinity, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Set(2);
  EXPECT_TRUE(item.LayersDiffer(0, 1));
  item.CopyLayer(0, 1);
  EXPECT_FALSE(item.LayersDiffer(0, 1));
  EXPECT_TRUE(item.LayersDiffer(1, 2));
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.CopyLayer(2, 0);
  item.CopyLayer(9, 0);
  item.CopyLayer(0, -1);
  EXPECT_THAT(receiver.calls, ElementsAre("float a 1"));
  EXPECT_FALSE(item.LayersDiffer(0, 4));
  item.SetFlags(IKelDataItem::kInitialiseAll);
  item.Set(7);
  EXPECT_FALSE(item.LayersDiffer(0, 3));
}

TEST(KelDataFloat, ZerosOfEitherSignAreOneValue) {
  KelDataFloat item("a", 0.0, -1, 1, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(-0.0, nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_TRUE(std::signbit(item.Get()));
  EXPECT_FALSE(item.LayersDiffer(0, 1));
}

TEST(KelDataFloat, IsVisitedAndNotifiesAsAFloat) {
  KelDataFloat item("A/f", 1.5, 0, 2, 0);
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(item.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("float A/f"));
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Notify();
  EXPECT_THAT(receiver.calls, ElementsAre("float A/f 1.5"));
}

}  // namespace
