#include "base/basic/keldataorostring.h"

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

std::u16string textOf(const KelDataOroString& item) { return item.Get().wideText(); }

TEST(KelDataOroString, KeepsExactlyItsCapacity) {
  KelDataOroString item("a", 3, OroString(u"abcdefgh"), 0);
  EXPECT_EQ(item.GetCapacity(), 3);
  EXPECT_EQ(textOf(item), u"abc");
  item.Set(OroString(u"\u20AC\xD83D\xDE00x"));
  EXPECT_EQ(textOf(item), u"\u20AC\xD83D\xDE00");
}

TEST(KelDataOroString, OddCapacitiesAreSafe) {
  KelDataOroString none("a", 0, OroString(u"xyz"), 0);
  EXPECT_EQ(textOf(none), u"");
  none.Set(OroString(u"xyz"));
  EXPECT_EQ(textOf(none), u"");
  EXPECT_EQ(KelDataOroString("a", INT_MIN, OroString(), 0).GetCapacity(), 0);
  EXPECT_EQ(textOf(KelDataOroString("a", INT_MAX, OroString(u"xyz"), 0)), u"xyz");
}

TEST(KelDataOroString, ComparesTheTextAsStored) {
  KelDataOroString item("a", 3, OroString(u"abc"), 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(OroString(u"abcdef"), nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.Update(OroString(u"abd"), nullptr, false);
  item.Update(OroString(u"ab"), nullptr, false);
  EXPECT_THAT(receiver.calls, ElementsAre("wide a abd", "wide a ab"));
}

TEST(KelDataOroString, NullAndEmptyAreAlike) {
  KelDataOroString item("a", 3, OroString(), 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(OroString(u""), nullptr, false);
  item.Update(OroString(), nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_FALSE(item.LayersDiffer(0, 1));
  EXPECT_TRUE(item.Get().isEmpty());
}

TEST(KelDataOroString, OwnsItsTextAndForgetsNarrowForms) {
  std::u16string text = u"first";
  KelDataOroString item("a", 10, OroString(text.c_str(), 0), 0);
  text = u"xxxxx";
  EXPECT_EQ(textOf(item), u"first");
  // A literal pair brings a narrow form of its own, which must not answer for the next value.
  item.Set(OroString(u"pair", "pair"));
  EXPECT_STREQ(item.Get().toNarrow(), "pair");
  item.Set(OroString(u"next"));
  EXPECT_STREQ(item.Get().toNarrow(), "next");
  EXPECT_STREQ(item.Get().toUtf8(), "next");
}

TEST(KelDataOroString, TakesItsOwnLayers) {
  KelDataOroString item("a", 20, OroString(u"hello"), 0);
  item.Set(item.Get());
  EXPECT_EQ(textOf(item), u"hello");
  item.SetFlags(IKelDataItem::kInitialiseAll);
  item.Update(item.Get(), nullptr, true);
  item.CopyLayer(2, 0);
  EXPECT_EQ(textOf(item), u"hello");
}

TEST(KelDataOroString, LayersCompareByContentAndCopy) {
  KelDataOroString item("a", 20, OroString(u"one"), 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Set(OroString(u"two"));
  EXPECT_TRUE(item.LayersDiffer(0, 1));
  item.CopyLayer(0, 2);
  EXPECT_FALSE(item.LayersDiffer(0, 2));
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.CopyLayer(1, 0);
  item.CopyLayer(4, 0);
  item.CopyLayer(0, -1);
  EXPECT_THAT(receiver.calls, ElementsAre("wide a one"));
  EXPECT_FALSE(item.LayersDiffer(0, 4));
  item.SetFlags(IKelDataItem::kInitialiseAll);
  item.Set(OroString(u"three"));
  EXPECT_FALSE(item.LayersDiffer(0, 3));
  item.Set(OroString());
  EXPECT_FALSE(item.LayersDiffer(0, 3));
}

TEST(KelDataOroString, IsVisitedAndNotifiesAsAWideText) {
  KelDataOroString item("A/w", 10, OroString(u"\u00E4"), 0);
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(item.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("wide A/w"));
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Notify();
  EXPECT_THAT(receiver.calls, ElementsAre("wide A/w \xC3\xA4"));
}

}  // namespace
