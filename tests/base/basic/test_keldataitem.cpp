#include "base/basic/keldataitem.h"

#include <gmock/gmock.h>

#include <memory>

#include "base/basic/keldatablob.h"
#include "base/basic/keldatafloat.h"
#include "base/basic/keldataint.h"
#include "base/basic/keldataorostring.h"
#include "base/basic/keldatastring.h"
#include "base/basic/keldatavoid.h"
#include "orobasictypes/orostring.h"
#include "tests/base/basic/assertionlog.h"
#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/recordingvisitor.h"
#include "tests/support/fakeheap.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using tests::AssertionLog;
using tests::Log;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

KelDataInt number(const char* path = "A/b") { return KelDataInt(path, 1, 0, 100, 0); }

TEST(KelDataItem, NameIsThePathBehindItsLastSlash) {
  KelDataVoid deep("A/B C/d", 0);
  EXPECT_STREQ(deep.GetPath(), "A/B C/d");
  EXPECT_STREQ(deep.GetName(), "d");
  KelDataVoid flat("d", 0);
  EXPECT_STREQ(flat.GetName(), "d");
  KelDataVoid open("A/", 0);
  EXPECT_STREQ(open.GetName(), "");
  KelDataVoid nameless("", 0);
  EXPECT_STREQ(nameless.GetPath(), "");
}

TEST(KelDataItem, KindsHaveTheirNumbers) {
  EXPECT_EQ(KelDataVoid("a", 0).GetType(), 0);
  EXPECT_EQ(KelDataInt("a", 0, 0, 1, 0).GetType(), 1);
  EXPECT_EQ(KelDataFloat("a", 0, 0, 1, 0).GetType(), 2);
  EXPECT_EQ(KelDataString("a", 1, "", 0).GetType(), 3);
  EXPECT_EQ(KelDataOroString("a", 1, OroString(), 0).GetType(), 4);
  EXPECT_EQ(KelDataBlob("a", 0, nullptr, 0).GetType(), 5);
}

TEST(KelDataItem, FlagsAreKeptAsGivenAndReplaced) {
  KelDataVoid item("a", 0x80000005);
  EXPECT_EQ(item.GetFlags(), 0x80000005);
  item.SetFlags(2);
  EXPECT_EQ(item.GetFlags(), 2u);
}

template <class Item>
void expectFinds(Item& item, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    void* found = nullptr;
    item.queryInterface(name, &found);
    EXPECT_NE(found, nullptr) << name;
  }
  void* found = &item;
  item.queryInterface("IKelDataDirectory", &found);
  EXPECT_EQ(found, nullptr);
}

TEST(KelDataItem, IsFoundUnderItsInterfacesAndItsClasses) {
  KelDataVoid event("a", 0);
  expectFinds(event, {"KelDataVoid", "KelDataItem", "IKelDataItem", "IOroUnknown"});
  KelDataInt integer("a", 0, 0, 1, 0);
  expectFinds(integer, {"KelDataInt", "IKelDataInt", "KelDataItem", "IKelDataItem", "IOroUnknown"});
  KelDataFloat real("a", 0, 0, 1, 0);
  expectFinds(real, {"KelDataFloat", "IKelDataFloat", "KelDataItem", "IKelDataItem"});
  KelDataString narrow("a", 1, "", 0);
  expectFinds(narrow, {"KelDataString", "IKelDataString", "KelDataItem", "IKelDataItem"});
  KelDataOroString wide("a", 1, OroString(), 0);
  expectFinds(wide, {"KelDataOroString", "IKelDataOroString", "KelDataItem", "IKelDataItem"});
  KelDataBlob blob("a", 0, nullptr, 0);
  expectFinds(blob, {"KelDataBlob", "IKelDataBlob", "KelDataItem", "IKelDataItem"});

  EXPECT_EQ(oroQuery<IKelDataInt>(oroQuery<IKelDataItem>(&integer)), &integer);
  EXPECT_EQ(oroQueryClass<KelDataItem>(static_cast<IKelDataInt*>(&integer)), &integer);
  EXPECT_STREQ(integer.getClassName(), "KelDataInt");
  EXPECT_STREQ(event.getClassName(), "KelDataVoid");
}

TEST(KelDataItem, AddingAReceiverTwiceKeepsOneAndItsBlock) {
  KelDataInt item = number();
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.BlockReceiver(&receiver, true);
  item.AddReceiver(&receiver);
  EXPECT_EQ(item.GetReceiverCount(), 1);
  EXPECT_TRUE(item.IsReceiverBlocked(&receiver));
}

TEST(KelDataItem, NewReceiverStartsUnblockedEvenIfBlockedBefore) {
  KelDataInt item = number();
  RecordingReceiver receiver;
  item.BlockReceiver(&receiver, true);
  EXPECT_TRUE(item.IsReceiverBlocked(&receiver));
  item.AddReceiver(&receiver);
  EXPECT_FALSE(item.IsReceiverBlocked(&receiver));
}

TEST(KelDataItem, NullReceiverIsNeitherAddedNorRemoved) {
  KelDataInt item = number();
  RecordingReceiver receiver;
  item.AddReceiver(nullptr);
  EXPECT_EQ(item.GetReceiverCount(), 0);
  item.AddReceiver(&receiver);
  item.RemoveReceiver(&receiver);
  EXPECT_FALSE(item.RemoveReceiver(nullptr));
}

TEST(KelDataItem, AskingForTheBlockOfAnUnknownReceiverIsAnAssertion) {
  KelDataInt item = number();
  RecordingReceiver receiver;
  AssertionLog assertions;
  EXPECT_FALSE(item.IsReceiverBlocked(&receiver));
  EXPECT_THAT(assertions.files, ElementsAre("base/basic/keldata"));
  item.AddReceiver(&receiver);
  EXPECT_FALSE(item.IsReceiverBlocked(&receiver));
  EXPECT_EQ(assertions.files.size(), 1u);
}

TEST(KelDataItem, RemovedReceiverLeavesAnEmptySlotThatTheNextOneTakes) {
  KelDataInt item = number();
  RecordingReceiver a, b, c;
  item.AddReceiver(&a);
  item.AddReceiver(&b);
  EXPECT_TRUE(item.RemoveReceiver(&a));
  EXPECT_FALSE(item.RemoveReceiver(&a));
  EXPECT_EQ(item.GetReceiverCount(), 2);
  EXPECT_EQ(item.GetReceiver(0), nullptr);
  EXPECT_EQ(item.GetReceiver(1), &b);
  item.AddReceiver(&c);
  EXPECT_EQ(item.GetReceiverCount(), 2);
  EXPECT_EQ(item.GetReceiver(0), &c);
}

TEST(KelDataItem, ReceiverIndexStartsAtZeroAndIsNullOutside) {
  KelDataInt item = number();
  RecordingReceiver a, b;
  EXPECT_EQ(item.GetReceiver(0), nullptr);
  item.AddReceiver(&a);
  item.AddReceiver(&b);
  EXPECT_EQ(item.GetReceiver(0), &a);
  EXPECT_EQ(item.GetReceiver(1), &b);
  EXPECT_EQ(item.GetReceiver(2), nullptr);
  EXPECT_EQ(item.GetReceiver(-1), nullptr);
}

TEST(KelDataItem, FirstReceiverMakesRoomForTwentyOneSlotsAndSeventeenChains) {
  KelDataInt item = number();
  RecordingReceiver receiver;
  tests::FakeHeap heap;
  item.AddReceiver(&receiver);
  EXPECT_THAT(heap.sizes, IsSupersetOf({21 * sizeof(void*), 17 * sizeof(void*)}));
}

TEST(KelDataItem, ManyReceiversHearInTheOrderOfTheirSlots) {
  KelDataInt item = number();
  Log log;
  std::vector<std::unique_ptr<RecordingReceiver>> receivers;
  Log expected;
  for (int i = 0; i < 100; ++i) {
    receivers.push_back(std::make_unique<RecordingReceiver>(std::to_string(i), log));
    item.AddReceiver(receivers.back().get());
    expected.push_back(std::to_string(i) + ": int A/b 2");
  }
  item.Update(2, nullptr, false);
  EXPECT_EQ(log, expected);
}

TEST(KelDataItem, ReusedSlotIsCalledInSlotOrder) {
  KelDataInt item = number();
  Log log;
  RecordingReceiver a("a", log), b("b", log), c("c", log);
  item.AddReceiver(&a);
  item.AddReceiver(&b);
  item.RemoveReceiver(&a);
  item.AddReceiver(&c);
  item.Update(2, nullptr, false);
  EXPECT_THAT(log, ElementsAre("c: int A/b 2", "b: int A/b 2"));
}

TEST(KelDataItem, SenderDoesNotHearOfItsOwnChange) {
  KelDataInt item = number();
  RecordingReceiver sender, other;
  item.AddReceiver(&sender);
  item.AddReceiver(&other);
  item.Update(2, &sender, false);
  EXPECT_THAT(sender.calls, IsEmpty());
  EXPECT_THAT(other.calls, ElementsAre("int A/b 2"));
}

TEST(KelDataItem, ForceReachesTheSenderButNoBlockedReceiver) {
  KelDataInt item = number();
  RecordingReceiver sender, blocked;
  item.AddReceiver(&sender);
  item.AddReceiver(&blocked);
  item.BlockReceiver(&blocked, true);
  item.Update(1, &sender, true);
  EXPECT_THAT(sender.calls, ElementsAre("int A/b 1"));
  EXPECT_THAT(blocked.calls, IsEmpty());
  item.BlockReceiver(&blocked, false);
  item.Update(1, &sender, true);
  EXPECT_THAT(blocked.calls, ElementsAre("int A/b 1"));
}

TEST(KelDataItem, NotifyReachesTheLastSenderButNoBlockedReceiver) {
  KelDataInt item = number();
  RecordingReceiver sender, blocked;
  item.AddReceiver(&sender);
  item.AddReceiver(&blocked);
  item.BlockReceiver(&blocked, true);
  item.Update(7, &sender, false);
  item.Notify();
  EXPECT_THAT(sender.calls, ElementsAre("int A/b 7"));
  EXPECT_THAT(blocked.calls, IsEmpty());
}

TEST(KelDataItem, ReceiverIsNotCalledBackForTheItemWhoseHandlerRuns) {
  KelDataInt item = number();
  KelDataInt other = number("A/c");
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  other.AddReceiver(&receiver);
  receiver.handler = [&] {
    item.Update(item.Get() + 1, nullptr, true);
    other.Update(50, nullptr, false);
  };
  item.Update(2, nullptr, false);
  EXPECT_EQ(item.Get(), 4);  // one step from each handler
  EXPECT_THAT(receiver.calls, ElementsAre("int A/b 2", "int A/c 50"));
  EXPECT_FALSE(item.IsReceiverBlocked(&receiver));
}

TEST(KelDataItem, NestedSetShowsLaterReceiversTheNewValue) {
  KelDataInt item = number();
  Log log;
  RecordingReceiver setter("setter", log), later("later", log);
  item.AddReceiver(&setter);
  item.AddReceiver(&later);
  setter.handler = [&] { item.Update(9, nullptr, false); };
  item.Update(2, nullptr, false);
  EXPECT_THAT(log, ElementsAre("setter: int A/b 2", "later: int A/b 9", "later: int A/b 9"));
}

TEST(KelDataItem, NestedSetOfATextLeavesNoStaleTextToLaterReceivers) {
  KelDataString item("A/s", 100, "first", 0);
  Log log;
  RecordingReceiver setter("setter", log), later("later", log);
  item.AddReceiver(&setter);
  item.AddReceiver(&later);
  setter.handler = [&] { item.Set("a text that is much longer and lies elsewhere"); };
  item.Update("second", nullptr, false);
  EXPECT_THAT(log, ElementsAre("setter: string A/s second",
                               "later: string A/s a text that is much longer and lies elsewhere"));
}

TEST(KelDataItem, ReceiverAppendedInAHandlerHearsOnlyTheNextDelivery) {
  KelDataInt item = number();
  RecordingReceiver first, added;
  item.AddReceiver(&first);
  first.handler = [&] { item.AddReceiver(&added); };
  item.Update(2, nullptr, false);
  EXPECT_THAT(added.calls, IsEmpty());
  item.Update(3, nullptr, false);
  EXPECT_THAT(added.calls, ElementsAre("int A/b 3"));
}

TEST(KelDataItem, ReceiverPutIntoALaterEmptySlotHearsTheRunningDelivery) {
  KelDataInt item = number();
  RecordingReceiver first, gone, added;
  item.AddReceiver(&first);
  item.AddReceiver(&gone);
  item.RemoveReceiver(&gone);
  first.handler = [&] { item.AddReceiver(&added); };
  item.Update(2, nullptr, false);
  EXPECT_THAT(added.calls, ElementsAre("int A/b 2"));
}

TEST(KelDataItem, HandlerMayAddSoManyReceiversThatTheListMoves) {
  KelDataInt item = number();
  RecordingReceiver first, last;
  std::vector<std::unique_ptr<RecordingReceiver>> added;
  item.AddReceiver(&first);
  item.AddReceiver(&last);
  first.handler = [&] {
    for (int i = 0; i < 500; ++i) {
      added.push_back(std::make_unique<RecordingReceiver>());
      item.AddReceiver(added.back().get());
    }
    first.handler = nullptr;
  };
  item.Update(2, nullptr, false);
  EXPECT_THAT(last.calls, ElementsAre("int A/b 2"));
  EXPECT_EQ(item.GetReceiverCount(), 502);
  EXPECT_THAT(added[499]->calls, IsEmpty());
}

TEST(KelDataItem, SelfRemovalLeavesAGapThatTheNextDeliveryCloses) {
  KelDataInt item = number();
  RecordingReceiver leaver, other;
  item.AddReceiver(&leaver);
  item.AddReceiver(&other);
  leaver.handler = [&] { item.RemoveReceiver(&leaver); };
  item.Update(2, nullptr, false);
  EXPECT_THAT(other.calls, ElementsAre("int A/b 2"));
  EXPECT_EQ(item.GetReceiverCount(), 2);
  EXPECT_EQ(item.GetReceiver(0), nullptr);
  item.Update(3, nullptr, false);
  EXPECT_EQ(item.GetReceiverCount(), 1);
  EXPECT_EQ(item.GetReceiver(0), &other);
  EXPECT_THAT(leaver.calls, ElementsAre("int A/b 2"));
}

TEST(KelDataItem, GapClosedBeforeDoesNotHastenTheNextOne) {
  KelDataInt item = number();
  RecordingReceiver gone, leaver, other;
  for (RecordingReceiver* receiver : {&gone, &leaver, &other}) item.AddReceiver(receiver);
  item.RemoveReceiver(&gone);
  item.Update(2, nullptr, false);
  EXPECT_EQ(item.GetReceiverCount(), 2);
  leaver.handler = [&] { item.RemoveReceiver(&leaver); };
  item.Update(3, nullptr, false);
  EXPECT_EQ(item.GetReceiverCount(), 2);
  item.Update(4, nullptr, false);
  EXPECT_EQ(item.GetReceiverCount(), 1);
}

TEST(KelDataItem, SelfRemovalLeavesNoBlockBehind) {
  KelDataInt item = number();
  RecordingReceiver leaver;
  item.AddReceiver(&leaver);
  leaver.handler = [&] { item.RemoveReceiver(&leaver); };
  item.Update(2, nullptr, false);
  AssertionLog assertions;
  EXPECT_FALSE(item.IsReceiverBlocked(&leaver));
  EXPECT_EQ(assertions.files.size(), 1u);
}

TEST(KelDataItem, RemovingALaterReceiverInAHandlerKeepsItFromHearing) {
  KelDataInt item = number();
  RecordingReceiver remover;
  auto doomed = std::make_unique<RecordingReceiver>();
  item.AddReceiver(&remover);
  item.AddReceiver(doomed.get());
  remover.handler = [&] {
    item.RemoveReceiver(doomed.get());
    doomed.reset();
  };
  item.Update(2, nullptr, false);
  EXPECT_EQ(remover.calls.size(), 1u);
  EXPECT_EQ(item.GetReceiverCount(), 1);
}

TEST(KelDataItem, GapsCloseOnlyWhenTheOutermostDeliveryEnds) {
  KelDataInt item = number();
  RecordingReceiver gone, nesting;
  item.AddReceiver(&gone);
  item.AddReceiver(&nesting);
  item.RemoveReceiver(&gone);
  int32_t within = 0;
  nesting.handler = [&] {
    item.Update(item.Get() + 1, nullptr, false);
    within = item.GetReceiverCount();
  };
  item.Update(2, nullptr, false);
  EXPECT_EQ(within, 2);
  EXPECT_EQ(item.GetReceiverCount(), 1);
}

TEST(KelDataItem, GapsStayWhenNobodyIsToBeTold) {
  KelDataInt item = number();
  RecordingReceiver gone;
  item.AddReceiver(&gone);
  item.RemoveReceiver(&gone);
  item.Set(50);
  item.Update(50, nullptr, false);
  EXPECT_EQ(item.GetReceiverCount(), 1);
  item.Update(51, nullptr, false);
  EXPECT_EQ(item.GetReceiverCount(), 0);
}

TEST(KelDataItem, NestedDeliveryOfABlobClosesGapsUnderTheOuterOne) {
  KelDataBlob item("A/x", 1, "0", 0);
  Log log;
  RecordingReceiver gone("gone", log), nesting("nesting", log), last("last", log);
  item.AddReceiver(&gone);
  item.AddReceiver(&nesting);
  item.AddReceiver(&last);
  item.RemoveReceiver(&gone);
  int32_t within = 0;
  nesting.handler = [&] {
    item.Update("2", 1, nullptr, false);
    within = item.GetReceiverCount();
  };
  item.Update("1", 1, nullptr, false);
  EXPECT_EQ(within, 2);
  // The outer walk goes on by place, and behind the moved receivers it finds nothing.
  EXPECT_THAT(log, ElementsAre("nesting: blob A/x 1", "last: blob A/x 2"));
  EXPECT_EQ(item.GetReceiverCount(), 2);
}

TEST(KelDataItem, OuterWalkFindsNoOldReceiverBehindAClosedGap) {
  KelDataOroString item("A/w", 10, OroString("0"), 0);
  std::vector<std::unique_ptr<RecordingReceiver>> receivers;
  for (int i = 0; i < 10; ++i) {
    receivers.push_back(std::make_unique<RecordingReceiver>());
    item.AddReceiver(receivers.back().get());
  }
  receivers[0]->handler = [&] {
    receivers[0]->handler = nullptr;
    for (int i = 1; i < 10; ++i) {
      item.RemoveReceiver(receivers[i].get());
      receivers[i].reset();
    }
    item.Update(OroString("2"), nullptr, false);
  };
  item.Update(OroString("1"), nullptr, false);
  EXPECT_THAT(receivers[0]->calls, ElementsAre("wide A/w 1"));
  EXPECT_EQ(item.GetReceiverCount(), 1);
}

TEST(KelDataItem, ReceiverThatRemovesAndAddsItselfStaysUnblocked) {
  KelDataInt item = number();
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  receiver.handler = [&] {
    item.RemoveReceiver(&receiver);
    item.AddReceiver(&receiver);
  };
  item.Update(2, nullptr, false);
  EXPECT_FALSE(item.IsReceiverBlocked(&receiver));
  item.Update(3, nullptr, false);
  EXPECT_THAT(receiver.calls, ElementsAre("int A/b 2", "int A/b 3"));
}

TEST(KelDataItem, ReceiversWithTheSameLowHalfOfTheAddressAreTwo) {
  // Entries of the block table share a chain when the low halves agree; the whole pointer decides.
  KelDataInt item = number();
  auto* const near = reinterpret_cast<IOroDataReceiver*>(uintptr_t{0x100001000});
  auto* const far = reinterpret_cast<IOroDataReceiver*>(uintptr_t{0x200001000});
  item.AddReceiver(near);
  item.AddReceiver(far);
  item.BlockReceiver(far, true);
  EXPECT_FALSE(item.IsReceiverBlocked(near));
  EXPECT_TRUE(item.IsReceiverBlocked(far));
}

// One item of each kind, and a change of it that its receivers hear of.
struct Kind {
  const char* name;
  std::unique_ptr<KelDataItem> (*make)();
  void (*change)(KelDataItem& item, int to);
  bool countsAsDelivery = true;
};

void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }

const Kind kValueKinds[] = {
    {"int", [] { return std::unique_ptr<KelDataItem>(new KelDataInt("a", 0, 0, 9, 0)); },
     [](KelDataItem& item, int to) { static_cast<KelDataInt&>(item).Update(to, nullptr, false); }},
    {"float", [] { return std::unique_ptr<KelDataItem>(new KelDataFloat("a", 0, 0, 9, 0)); },
     [](KelDataItem& item, int to) {
       static_cast<KelDataFloat&>(item).Update(to, nullptr, false);
     }},
    {"string", [] { return std::unique_ptr<KelDataItem>(new KelDataString("a", 9, "0", 0)); },
     [](KelDataItem& item, int to) {
       static_cast<KelDataString&>(item).Update(std::to_string(to).c_str(), nullptr, false);
     }},
    {"wide",
     [] { return std::unique_ptr<KelDataItem>(new KelDataOroString("a", 9, OroString(0), 0)); },
     [](KelDataItem& item, int to) {
       static_cast<KelDataOroString&>(item).Update(OroString(to), nullptr, false);
     },
     false},
    {"blob", [] { return std::unique_ptr<KelDataItem>(new KelDataBlob("a", 4, nullptr, 0)); },
     [](KelDataItem& item, int to) {
       static_cast<KelDataBlob&>(item).Update(&to, 4, nullptr, false);
     },
     false},
};

class EveryKindTest : public testing::TestWithParam<Kind> {
 protected:
  void change(int to) { GetParam().change(*item, to); }

  std::unique_ptr<KelDataItem> item = GetParam().make();
};

TEST_P(EveryKindTest, UnchangedValueIsStoredInAllLayersWhereTheItemIsSoMarked) {
  change(1);
  EXPECT_TRUE(item->LayersDiffer(0, 1));
  item->SetFlags(IKelDataItem::kInitialiseAll);
  change(1);
  for (int layer = 1; layer < 4; ++layer) EXPECT_FALSE(item->LayersDiffer(0, layer));
}

TEST_P(EveryKindTest, NestedChangeClosesGapsUnlessTheOuterOneCountsAsADelivery) {
  RecordingReceiver gone, nesting;
  item->AddReceiver(&gone);
  item->AddReceiver(&nesting);
  item->RemoveReceiver(&gone);
  int32_t within = 0;
  nesting.handler = [&] {
    change(2);
    within = item->GetReceiverCount();
  };
  change(1);
  EXPECT_EQ(within, GetParam().countsAsDelivery ? 2 : 1);
  EXPECT_EQ(item->GetReceiverCount(), 1);
}

TEST_P(EveryKindTest, FiringCountsAsADelivery) {
  RecordingReceiver gone, nesting;
  item->AddReceiver(&gone);
  item->AddReceiver(&nesting);
  item->RemoveReceiver(&gone);
  int32_t within = 0;
  nesting.handler = [&] {
    change(2);
    within = item->GetReceiverCount();
  };
  item->fire(nullptr, false);
  EXPECT_EQ(within, 2);
  EXPECT_EQ(item->GetReceiverCount(), 1);
}

TEST_P(EveryKindTest, DeliveryEndsWhereAHandlerDestroysTheItem) {
  Log log;
  RecordingReceiver outer("outer", log), inner("inner", log), later("later", log);
  for (RecordingReceiver* receiver : {&outer, &inner, &later}) item->AddReceiver(receiver);
  outer.handler = [&] { change(2); };
  inner.handler = [&] { item.reset(); };
  change(1);
  EXPECT_EQ(outer.calls.size(), 1u);
  EXPECT_EQ(inner.calls.size(), 1u);
  EXPECT_THAT(later.calls, IsEmpty());
  EXPECT_EQ(item, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryKindTest, testing::ValuesIn(kValueKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(KelDataVoid, FiresOnNotifyToEveryReceiver) {
  KelDataVoid item("A/go", 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Notify();
  EXPECT_THAT(receiver.calls, ElementsAre("void A/go"));
}

TEST(KelDataVoid, FiringPassesTheSenderOverUnlessForced) {
  KelDataVoid item("A/go", 0);
  RecordingReceiver sender, other;
  item.AddReceiver(&sender);
  item.AddReceiver(&other);
  item.fire(&sender, false);
  EXPECT_THAT(sender.calls, IsEmpty());
  EXPECT_EQ(other.calls.size(), 1u);
  item.fire(&sender, true);
  EXPECT_EQ(sender.calls.size(), 1u);
}

TEST(KelDataVoid, IsVisitedByNobodyAndHasNoLayers) {
  KelDataVoid item("A/go", IKelDataItem::kPersistent);
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(item.Accept(&visitor));
  EXPECT_THAT(visitor.calls, IsEmpty());
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.CopyLayer(1, 0);
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_FALSE(item.LayersDiffer(0, 1));
}

TEST(KelDataVoid, RaisesTheDepthAsOthersDo) {
  KelDataVoid item("A/go", 0);
  RecordingReceiver gone, nesting;
  item.AddReceiver(&gone);
  item.AddReceiver(&nesting);
  item.RemoveReceiver(&gone);
  int32_t within = 0;
  nesting.handler = [&] {
    item.Notify();
    within = item.GetReceiverCount();
  };
  item.Notify();
  EXPECT_EQ(within, 2);
  EXPECT_EQ(item.GetReceiverCount(), 1);
}

}  // namespace
