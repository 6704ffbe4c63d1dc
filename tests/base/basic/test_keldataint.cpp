#include "base/basic/keldataint.h"

#include <gmock/gmock.h>

#include <climits>

#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/recordingvisitor.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

TEST(KelDataInt, StartsClampedInAllLayers) {
  KelDataInt item("a", 500, -10, 100, 0);
  EXPECT_EQ(item.Get(), 100);
  for (int layer = 1; layer < 4; ++layer) EXPECT_FALSE(item.LayersDiffer(0, layer));
  EXPECT_EQ(KelDataInt("a", -500, -10, 100, 0).Get(), -10);
  int32_t minimum = 0, maximum = 0;
  item.GetRange(minimum, maximum);
  EXPECT_EQ(minimum, -10);
  EXPECT_EQ(maximum, 100);
}

TEST(KelDataInt, ClampsBelowFirstAndThenAbove) {
  const struct {
    int32_t minimum, maximum, value, stored;
  } rows[] = {
      {0, 10, -1, 0},
      {0, 10, 0, 0},
      {0, 10, 10, 10},
      {0, 10, 11, 10},
      {10, 0, 5, 10},
      {10, 0, 10, 0},
      {10, 0, 99, 0},
      {5, 5, 7, 5},
      {INT_MIN, INT_MAX, INT_MIN, INT_MIN},
      {INT_MIN, INT_MAX, INT_MAX, INT_MAX},
  };
  for (const auto& row : rows) {
    KelDataInt item("a", 0, row.minimum, row.maximum, 0);
    item.Set(row.value);
    EXPECT_EQ(item.Get(), row.stored) << row.minimum << ' ' << row.maximum << ' ' << row.value;
  }
}

TEST(KelDataInt, SetIsSilentAndTouchesOneLayer) {
  KelDataInt item("a", 1, 0, 100, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Set(5);
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_TRUE(item.LayersDiffer(0, 1));
  EXPECT_FALSE(item.LayersDiffer(1, 2));
}

TEST(KelDataInt, SetWithTheInitialiseFlagWritesAllLayers) {
  KelDataInt item("a", 1, 0, 100, IKelDataItem::kInitialiseAll);
  item.Set(500);
  for (int layer = 1; layer < 4; ++layer) EXPECT_FALSE(item.LayersDiffer(0, layer));
  item.CopyLayer(3, 0);
  EXPECT_EQ(item.Get(), 100);
}

TEST(KelDataInt, UpdateTellsTheClampedValueOnlyWhenItChanged) {
  KelDataInt item("a", 100, 0, 100, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(500, nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.Update(-3, nullptr, false);
  EXPECT_THAT(receiver.calls, ElementsAre("int a 0"));
}

TEST(KelDataInt, UpdateSetsBeforeItFindsNoChange) {
  KelDataInt item("a", 1, 0, 100, 0);
  item.Set(5);
  item.SetFlags(IKelDataItem::kInitialiseAll);
  item.Update(5, nullptr, false);
  EXPECT_FALSE(item.LayersDiffer(0, 1));
}

TEST(KelDataInt, ExtraUpdateReachesEveryUnblockedReceiver) {
  KelDataInt item("a", 5, 0, 100, 0);
  RecordingReceiver receiver, blocked;
  item.AddReceiver(&receiver);
  item.AddReceiver(&blocked);
  item.BlockReceiver(&blocked, true);
  item.updateEx(500, -7);
  item.updateEx(500, -8);
  EXPECT_THAT(receiver.calls, ElementsAre("intex a 100 -7", "intex a 100 -8"));
  EXPECT_THAT(blocked.calls, IsEmpty());
}

TEST(KelDataInt, CopyingIntoTheCurrentLayerTellsReceivers) {
  KelDataInt item("a", 1, 0, 100, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Set(5);
  item.CopyLayer(0, 2);
  item.Set(6);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.CopyLayer(2, 0);
  EXPECT_THAT(receiver.calls, ElementsAre("int a 5"));
  item.CopyLayer(2, 0);
  EXPECT_EQ(receiver.calls.size(), 1u);
}

TEST(KelDataInt, LayersOutsideTheFourDoNothing) {
  KelDataInt item("a", 1, 0, 100, 0);
  item.Set(5);
  for (const int layer : {-1, 4, INT_MAX, INT_MIN}) {
    item.CopyLayer(layer, 0);
    item.CopyLayer(0, layer);
    EXPECT_FALSE(item.LayersDiffer(0, layer));
    EXPECT_FALSE(item.LayersDiffer(layer, 1));
  }
  EXPECT_EQ(item.Get(), 5);
  EXPECT_TRUE(item.LayersDiffer(0, 1));
}

TEST(KelDataInt, IsVisitedAsAnInteger) {
  KelDataInt item("A/i", 1, 0, 100, 0);
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(item.Accept(&visitor));
  visitor.failing = {"int A/i"};
  EXPECT_FALSE(item.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("int A/i", "int A/i"));
}

}  // namespace
