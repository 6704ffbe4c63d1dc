#include "base/basic/keldatastring.h"

#include <gmock/gmock.h>

#include <climits>
#include <string>

#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/recordingvisitor.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

TEST(KelDataString, KeepsOneCharacterMoreThanItsCapacity) {
  KelDataString item("a", 3, "abcdefgh", 0);
  EXPECT_EQ(item.GetCapacity(), 3);
  EXPECT_STREQ(item.Get(), "abcd");
  item.Set("0123456789");
  EXPECT_STREQ(item.Get(), "0123");
  item.Set("012");
  EXPECT_STREQ(item.Get(), "012");
}

TEST(KelDataString, OddCapacitiesAreSafe) {
  KelDataString none("a", 0, "xyz", 0);
  EXPECT_STREQ(none.Get(), "x");
  KelDataString negative("a", INT_MIN, "xyz", 0);
  EXPECT_EQ(negative.GetCapacity(), 0);
  EXPECT_STREQ(negative.Get(), "x");
  KelDataString huge("a", INT_MAX, "xyz", 0);
  EXPECT_EQ(huge.GetCapacity(), INT_MAX);
  EXPECT_STREQ(huge.Get(), "xyz");
}

TEST(KelDataString, NullAndEmptyAreAlikeAndNeverNull) {
  KelDataString item("a", 10, nullptr, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  EXPECT_STREQ(item.Get(), "");
  item.Update("", nullptr, false);
  item.Update(nullptr, nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_FALSE(item.LayersDiffer(0, 1));
  item.Set("x");
  item.Set(nullptr);
  EXPECT_STREQ(item.Get(), "");
  EXPECT_FALSE(item.LayersDiffer(0, 1));
}

TEST(KelDataString, ComparesTheTextAsGivenBeforeItIsCut) {
  KelDataString item("a", 3, "abcd", 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update("abcd", nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  // Cut, it is what stands there already; it counts as a change each time.
  item.Update("abcdef", nullptr, false);
  item.Update("abcdef", nullptr, false);
  EXPECT_THAT(receiver.calls, ElementsAre("string a abcd", "string a abcd"));
}

TEST(KelDataString, TakesItsOwnTexts) {
  KelDataString item("a", 20, "hello world", IKelDataItem::kInitialiseAll);
  item.Set(item.Get());
  EXPECT_STREQ(item.Get(), "hello world");
  item.Set(item.Get() + 6);
  EXPECT_STREQ(item.Get(), "world");
  item.Update(item.Get() + 1, nullptr, true);
  EXPECT_STREQ(item.Get(), "orld");
  item.Notify();
  EXPECT_STREQ(item.Get(), "orld");
}

TEST(KelDataString, LayersCompareByContentAndCopy) {
  KelDataString item("a", 20, "one", 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Set(std::string("two").c_str());
  EXPECT_TRUE(item.LayersDiffer(0, 1));
  item.CopyLayer(0, 3);
  item.Set(std::string("two").c_str());
  EXPECT_FALSE(item.LayersDiffer(0, 3));
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.CopyLayer(1, 0);
  item.CopyLayer(4, 0);
  item.CopyLayer(0, 4);
  EXPECT_THAT(receiver.calls, ElementsAre("string a one"));
  EXPECT_FALSE(item.LayersDiffer(-1, 3));
}

TEST(KelDataString, SetWithTheInitialiseFlagWritesAllLayers) {
  KelDataString item("a", 3, "one", IKelDataItem::kInitialiseAll);
  item.Set("twenty");
  for (int layer = 1; layer < 4; ++layer) EXPECT_FALSE(item.LayersDiffer(0, layer));
  EXPECT_STREQ(item.Get(), "twen");
}

TEST(KelDataString, SenderAndForceFollowTheCommonRule) {
  KelDataString item("a", 10, "x", 0);
  RecordingReceiver sender;
  item.AddReceiver(&sender);
  item.Update("y", &sender, false);
  EXPECT_THAT(sender.calls, IsEmpty());
  item.Update("y", &sender, true);
  EXPECT_THAT(sender.calls, ElementsAre("string a y"));
}

TEST(KelDataString, IsVisitedAsANarrowText) {
  KelDataString item("A/s", 10, "x", 0);
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(item.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("string A/s"));
}

}  // namespace
