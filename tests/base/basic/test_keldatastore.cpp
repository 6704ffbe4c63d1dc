#include "base/basic/keldatastore.h"

#include <climits>
#include <functional>
#include <limits>
#include <memory>

#include "base/basic/gendatastore.h"
#include "base/basic/kelcustomdatastore.h"
#include "base/basic/keldatavisitor.h"
#include "tests/base/basic/assertionlog.h"
#include "tests/base/basic/recordingvisitor.h"
#include "tests/base/basic/storetest.h"
#include "tests/support/fakeheap.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using tests::AssertionLog;
using tests::Log;
using tests::RecordingReceiver;
using tests::RecordingVisitor;
using tests::StoreTest;

// --- Declaring

TEST_F(StoreTest, OnlyTheWholePathOfACreatedDirectoryIsKnown) {
  store.CreateDirectory("A/B/C");
  EXPECT_TRUE(store.DirectoryExists("A/B/C"));
  EXPECT_FALSE(store.DirectoryExists("A/B"));
  EXPECT_FALSE(store.DirectoryExists("A"));
  store.CreateDirectory("A");
  EXPECT_TRUE(store.DirectoryExists("A"));
  EXPECT_FALSE(store.DirectoryExists("a"));
}

TEST_F(StoreTest, ItemNeedsItsParentByExactlyThatText) {
  store.CreateDirectory("A/B/D");
  EXPECT_FALSE(store.CreateInt("A/B/C", 1, 0, 9, 0));
  EXPECT_FALSE(store.Exists("A/B/C"));
  store.CreateDirectory("A/B");
  EXPECT_TRUE(store.CreateInt("A/B/C", 1, 0, 9, 0));
  EXPECT_TRUE(store.CreateInt("A/B/D/E", 1, 0, 9, 0));
  EXPECT_THAT(pathsIn("A/B"), ElementsAre("A/B/D/E", "A/B/C"));
}

TEST_F(StoreTest, EmptyPathMakesNoDirectory) {
  store.CreateDirectory("");
  store.CreateDirectory(nullptr);
  EXPECT_FALSE(store.DirectoryExists(""));
  EXPECT_FALSE(store.DirectoryExists(nullptr));
}

TEST_F(StoreTest, EmptySegmentEndsTheWalkAndTheWholeTextIsKnown) {
  store.CreateDirectory("A//B");
  EXPECT_TRUE(store.DirectoryExists("A//B"));
  EXPECT_FALSE(store.DirectoryExists("A"));
  store.CreateDirectory("A/");
  EXPECT_FALSE(store.CreateInt("A/x", 1, 0, 9, 0));
  EXPECT_TRUE(store.CreateInt("A//x", 1, 0, 9, 0));
  store.CreateDirectory("A");
  EXPECT_THAT(pathsIn("A"), ElementsAre("A//x"));
}

TEST_F(StoreTest, LeadingSlashStandsForTheRoot) {
  store.CreateDirectory("/A");
  EXPECT_TRUE(store.DirectoryExists("/A"));
  EXPECT_TRUE(store.CreateInt("/A/x", 1, 0, 9, 0));
  makeInt("y");
  EXPECT_THAT(pathsIn("/A"), ElementsAre("/A/x", "y"));
}

TEST_F(StoreTest, CreatingADirectoryAgainKeepsOneEntry) {
  makeInt("A/x");
  store.CreateDirectory("A");
  store.CreateDirectory("A");
  EXPECT_THAT(pathsIn("A"), ElementsAre("A/x"));
  EXPECT_TRUE(store.unindexDirectory("A"));
  EXPECT_FALSE(store.DirectoryExists("A"));
}

TEST_F(StoreTest, ItemWithoutASlashLiesInTheRoot) {
  EXPECT_TRUE(store.CreateInt("x", 3, 0, 9, 0));
  EXPECT_EQ(store.GetInt("x", nullptr), 3);
  EXPECT_TRUE(store.CreateInt("", 4, 0, 9, 0));
  EXPECT_EQ(store.GetInt("", nullptr), 4);
}

TEST_F(StoreTest, AnyCharacterButTheSlashMayStandInASegment) {
  store.CreateDirectory("Fonts and Languages");
  const char* const path = "Fonts and Languages/\xC3\xA4 [x]=;\\\t.";
  EXPECT_TRUE(store.CreateString(path, 80, "en", 1));
  EXPECT_STREQ(store.GetString(path, nullptr), "en");
}

TEST_F(StoreTest, DeclaringAgainChangesNothingAndIsTrue) {
  store.CreateDirectory("A");
  EXPECT_TRUE(store.CreateInt("A/x", 5, 0, 10, 1));
  EXPECT_TRUE(store.CreateInt("A/x", 7, -100, 100, 31));
  EXPECT_TRUE(store.CreateString("A/x", 10, "text", 0));
  EXPECT_TRUE(store.CreateVoid("A/x", 0));
  EXPECT_EQ(kindOf("A/x"), IKelDataItem::kInt);
  EXPECT_EQ(store.GetInt("A/x", nullptr), 5);
  EXPECT_EQ(store.GetFlags("A/x"), 1u);
  int32_t minimum = -1, maximum = -1;
  store.GetIntRange("A/x", minimum, maximum, nullptr);
  EXPECT_EQ(minimum, 0);
  EXPECT_EQ(maximum, 10);
  EXPECT_THAT(pathsIn("A"), ElementsAre("A/x"));
}

TEST_F(StoreTest, AllKindsAreMadeWithTheirValuesAndFlags) {
  EXPECT_TRUE(store.CreateVoid("v", 16));
  EXPECT_TRUE(store.CreateInt("i", 99, 0, 9, 1));
  EXPECT_TRUE(store.CreateFloat("f", -2.5, -1, 9, 2));
  EXPECT_TRUE(store.CreateString("s", 2, "abcdef", 4));
  EXPECT_TRUE(store.CreateOroString("w", 2, OroString(u"abcdef"), 8));
  EXPECT_TRUE(store.CreateBlob("b", 2, "abcdef", 3));
  EXPECT_EQ(kindOf("v"), 0);
  EXPECT_EQ(kindOf("i"), 1);
  EXPECT_EQ(kindOf("f"), 2);
  EXPECT_EQ(kindOf("s"), 3);
  EXPECT_EQ(kindOf("w"), 4);
  EXPECT_EQ(kindOf("b"), 5);
  EXPECT_EQ(store.GetInt("i", nullptr), 9);
  EXPECT_EQ(store.GetFloat("f", nullptr), -1.0);
  EXPECT_STREQ(store.GetString("s", nullptr), "abc");
  EXPECT_EQ(store.GetOroString("w", nullptr), OroString(u"ab"));
  int32_t size = 0;
  EXPECT_EQ(std::string(static_cast<const char*>(store.GetBlob("b", size, nullptr)), 2), "ab");
  EXPECT_EQ(size, 2);
  EXPECT_EQ(store.GetFlags("v"), 16u);
  EXPECT_EQ(store.GetFlags("b"), 3u);
}

TEST_F(StoreTest, NullPathsAnswerAsMissingItems) {
  const OroString text(u"x");
  bool ok = true;
  int32_t number = 7;
  EXPECT_FALSE(store.CreateInt(nullptr, 1, 0, 9, 0));
  EXPECT_FALSE(store.RemoveItem(nullptr));
  EXPECT_FALSE(store.RemoveDirectory(nullptr));
  const char* const null = nullptr;
  EXPECT_EQ(store.GetInt(null, &ok), 0);
  EXPECT_FALSE(ok);
  EXPECT_EQ(store.GetString(null, nullptr), nullptr);
  EXPECT_FALSE(store.SetInt(nullptr, null, 1));
  EXPECT_FALSE(store.SetOroString(nullptr, null, text));
  EXPECT_FALSE(store.InitInt(null, 1));
  EXPECT_FALSE(store.Exists(null));
  EXPECT_FALSE(store.GetType(null, number));
  EXPECT_EQ(number, 7);
  EXPECT_EQ(store.GetFlags(null), 0u);
  EXPECT_THAT(pathsIn(nullptr), IsEmpty());
}

TEST_F(StoreTest, NullPieceListIsAnEmptyOne) {
  makeInt("", 4);
  const char* const empty[] = {nullptr};
  EXPECT_EQ(store.GetInt(static_cast<IDataStore::PathPieces>(nullptr), nullptr), 4);
  EXPECT_EQ(store.GetInt(empty, nullptr), 4);
  EXPECT_TRUE(store.Exists(empty));
  EXPECT_FALSE(store.Exists(""));
}

// --- Reading

TEST_F(StoreTest, MissingAndForeignItemsReadAsZero) {
  makeInt("i", 5);
  store.CreateString("s", 9, "x", 0);
  for (const char* path : {"s", "missing"}) {
    bool ok = true;
    EXPECT_EQ(store.GetInt(path, &ok), 0);
    EXPECT_FALSE(ok);
    EXPECT_EQ(store.GetInt(path, nullptr), 0);
  }
  for (const char* path : {"i", "missing"}) {
    bool ok = true;
    EXPECT_EQ(store.GetFloat(path, &ok), 0.0);
    EXPECT_FALSE(ok);
    ok = true;
    EXPECT_EQ(store.GetString(path, &ok), nullptr);
    EXPECT_FALSE(ok);
    ok = true;
    EXPECT_EQ(&store.GetOroString(path, &ok), &OroString::empty());
    EXPECT_FALSE(ok);
    ok = true;
    int32_t size = 9;
    EXPECT_EQ(store.GetBlob(path, size, &ok), nullptr);
    EXPECT_EQ(size, 0);
    EXPECT_FALSE(ok);
  }
}

TEST_F(StoreTest, FoundItemsReportSuccess) {
  makeInt("i", 5);
  bool ok = false;
  EXPECT_EQ(store.GetInt("i", &ok), 5);
  EXPECT_TRUE(ok);
  store.CreateString("s", 9, nullptr, 0);
  ok = false;
  EXPECT_STREQ(store.GetString("s", &ok), "");
  EXPECT_TRUE(ok);
}

TEST_F(StoreTest, RangesOfMissingItemsAreZeroToOne) {
  makeInt("i", 5);
  store.CreateFloat("f", 1, -3, 3, 0);
  int32_t low = 9, high = 9;
  bool ok = true;
  store.GetIntRange("f", low, high, &ok);
  EXPECT_EQ(low, 0);
  EXPECT_EQ(high, 1);
  EXPECT_FALSE(ok);
  store.GetIntRange("i", low, high, &ok);
  EXPECT_EQ(low, INT_MIN);
  EXPECT_EQ(high, INT_MAX);
  EXPECT_TRUE(ok);
  double least = 9, most = 9;
  store.GetFloatRange("missing", least, most, &ok);
  EXPECT_EQ(least, 0.0);
  EXPECT_EQ(most, 1.0);
  EXPECT_FALSE(ok);
  store.GetFloatRange("f", least, most, &ok);
  EXPECT_EQ(least, -3.0);
  EXPECT_EQ(most, 3.0);
  EXPECT_TRUE(ok);
}

TEST_F(StoreTest, CapacityIsWhatWasAskedForOrTheSize) {
  store.CreateVoid("v", 0);
  makeInt("i");
  store.CreateFloat("f", 0, 0, 1, 0);
  store.CreateString("s", 80, "", 0);
  store.CreateOroString("w", 70, OroString(), 0);
  store.CreateBlob("b", 5, nullptr, 0);
  bool ok = false;
  EXPECT_EQ(store.GetCapacity("s", &ok), 80);
  EXPECT_TRUE(ok);
  EXPECT_EQ(store.GetCapacity("w", nullptr), 70);
  EXPECT_EQ(store.GetCapacity("b", nullptr), 5);
  for (const char* path : {"v", "i", "f", "missing"}) {
    ok = true;
    EXPECT_EQ(store.GetCapacity(path, &ok), 0);
    EXPECT_FALSE(ok);
  }
}

TEST_F(StoreTest, PieceListsReadAsTheJoinedPath) {
  makeInt("A/B C/item", 5);
  store.CreateFloat("A/B C/f", 0.5, 0, 1, 0);
  store.CreateString("A/B C/s", 9, "x", 0);
  store.CreateOroString("A/B C/w", 9, OroString(u"y"), 0);
  const char* const whole[] = {"A/B C/item", nullptr};
  const char* const split[] = {"A", "/", "", "B C/it", "em", nullptr};
  const char* const tooShort[] = {"A/B C/", "ite", nullptr};
  const char* const tooLong[] = {"A/B C/item", "s", nullptr};
  EXPECT_EQ(store.GetInt(whole, nullptr), 5);
  EXPECT_EQ(store.GetInt(split, nullptr), 5);
  bool ok = true;
  EXPECT_EQ(store.GetInt(tooShort, &ok), 0);
  EXPECT_FALSE(ok);
  EXPECT_EQ(store.GetInt(tooLong, &ok), 0);
  const char* const f[] = {"A/B C/", "f", nullptr};
  const char* const s[] = {"A/B C/", "s", nullptr};
  const char* const w[] = {"A/B C/", "w", nullptr};
  EXPECT_EQ(store.GetFloat(f, nullptr), 0.5);
  EXPECT_STREQ(store.GetString(s, nullptr), "x");
  EXPECT_EQ(store.GetOroString(w, nullptr), OroString(u"y"));
  EXPECT_TRUE(store.Exists(split));
  EXPECT_FALSE(store.Exists(tooLong));
  const char* const directory[] = {"A/", "B C", nullptr};
  EXPECT_TRUE(store.Exists(directory));
}

TEST_F(StoreTest, BytesAboveTheAsciiOnesAreFoundInBothForms) {
  makeInt("\xC3\xA4/\xFF", 5);
  const char* const pieces[] = {"\xC3", "\xA4/", "\xFF", nullptr};
  EXPECT_EQ(store.GetInt("\xC3\xA4/\xFF", nullptr), 5);
  EXPECT_EQ(store.GetInt(pieces, nullptr), 5);
}

TEST_F(StoreTest, ReadingAndWritingNumbersAllocatesNothing) {
  makeInt("GUI/CommandLine Progress Window", 5);
  store.CreateFloat("GUI/Scale", 1, 0, 10, 0);
  RecordingReceiver sender;
  store.AddReceiver("GUI/Scale", &sender);
  const char* const pieces[] = {"GUI/", "CommandLine Progress Window", nullptr};
  tests::FakeHeap heap;
  for (int32_t n = 0; n < 100; ++n) {
    EXPECT_TRUE(store.SetInt(nullptr, "GUI/CommandLine Progress Window", n));
    EXPECT_EQ(store.GetInt(pieces, nullptr), n);
    EXPECT_TRUE(store.SetInt(nullptr, pieces, n + 1));
    EXPECT_EQ(store.GetInt("GUI/CommandLine Progress Window", nullptr), n + 1);
    EXPECT_TRUE(store.SetFloat(&sender, "GUI/Scale", n / 100.0));
    EXPECT_EQ(store.GetFloat("GUI/Scale", nullptr), n / 100.0);
  }
  EXPECT_EQ(heap.allocations, 0);
  EXPECT_EQ(heap.reallocations, 0);
}

TEST_F(StoreTest, ManyItemsAreAllFoundAgain) {
  store.CreateDirectory("Many");
  for (int32_t n = 0; n < 20000; ++n) {
    ASSERT_TRUE(store.CreateInt(("Many/item " + std::to_string(n)).c_str(), n, 0, 30000, 0));
  }
  for (int32_t n = 0; n < 20000; ++n) {
    ASSERT_EQ(store.GetInt(("Many/item " + std::to_string(n)).c_str(), nullptr), n);
  }
  EXPECT_EQ(pathsIn("Many").size(), 20000u);
}

// --- Setting

TEST_F(StoreTest, SettersStoreAndTellReceiversButTheSender) {
  store.CreateDirectory("A");
  store.CreateInt("A/i", 0, 0, 9, 0);
  store.CreateFloat("A/f", 0, 0, 9, 0);
  store.CreateString("A/s", 9, "", 0);
  store.CreateOroString("A/w", 9, OroString(), 0);
  store.CreateBlob("A/b", 0, nullptr, 0);
  RecordingReceiver receiver, sender;
  for (const char* path : {"A/i", "A/f", "A/s", "A/w", "A/b"}) {
    EXPECT_TRUE(store.AddReceiver(path, &receiver));
    EXPECT_TRUE(store.AddReceiver(path, &sender));
  }
  EXPECT_TRUE(store.SetInt(&sender, "A/i", 50));
  EXPECT_TRUE(store.SetFloat(&sender, "A/f", 0.5));
  EXPECT_TRUE(store.SetString(&sender, "A/s", "x"));
  EXPECT_TRUE(store.SetOroString(&sender, "A/w", OroString(u"y")));
  EXPECT_TRUE(store.SetBlob(&sender, "A/b", "z", 1));
  EXPECT_THAT(receiver.calls, ElementsAre("int A/i 9", "float A/f 0.5", "string A/s x",
                                          "wide A/w y", "blob A/b z"));
  EXPECT_THAT(sender.calls, IsEmpty());

  const char* const i[] = {"A", "/i", nullptr};
  const char* const f[] = {"A", "/f", nullptr};
  const char* const s[] = {"A", "/s", nullptr};
  const char* const w[] = {"A", "/w", nullptr};
  const char* const b[] = {"A", "/b", nullptr};
  receiver.calls.clear();
  EXPECT_TRUE(store.SetInt(&sender, i, 1));
  EXPECT_TRUE(store.SetFloat(&sender, f, 1));
  EXPECT_TRUE(store.SetString(&sender, s, "1"));
  EXPECT_TRUE(store.SetOroString(&sender, w, OroString(u"1")));
  EXPECT_TRUE(store.SetBlob(&sender, b, "1", 1));
  EXPECT_THAT(receiver.calls,
              ElementsAre("int A/i 1", "float A/f 1", "string A/s 1", "wide A/w 1", "blob A/b 1"));
  EXPECT_THAT(sender.calls, IsEmpty());
}

TEST_F(StoreTest, SettersRefuseMissingItemsAndOtherKinds) {
  makeInt("i", 5);
  store.CreateOroString("w", 9, OroString(u"x"), 0);
  store.CreateString("s", 9, "x", 0);
  const OroString text(u"y");
  EXPECT_FALSE(store.SetInt(nullptr, "missing", 1));
  EXPECT_FALSE(store.SetInt(nullptr, "s", 1));
  EXPECT_FALSE(store.SetFloat(nullptr, "i", 1));
  EXPECT_FALSE(store.SetString(nullptr, "i", "1"));
  EXPECT_FALSE(store.SetString(nullptr, "missing", "1"));
  EXPECT_FALSE(store.SetOroString(nullptr, "s", text));
  EXPECT_FALSE(store.SetBlob(nullptr, "s", "1", 1));
  EXPECT_FALSE(store.SetIntEx(nullptr, "s", 1, 2));
  EXPECT_FALSE(store.Fire(nullptr, "missing"));
  const char* const missing[] = {"miss", "ing", nullptr};
  EXPECT_FALSE(store.SetInt(nullptr, missing, 1));
  EXPECT_FALSE(store.SetFloat(nullptr, missing, 1));
  EXPECT_FALSE(store.SetString(nullptr, missing, "1"));
  EXPECT_FALSE(store.SetOroString(nullptr, missing, text));
  EXPECT_FALSE(store.SetBlob(nullptr, missing, "1", 1));
  EXPECT_FALSE(store.SetIntEx(nullptr, missing, 1, 2));
  EXPECT_FALSE(store.Fire(nullptr, missing));
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
  EXPECT_STREQ(store.GetString("s", nullptr), "x");
}

TEST_F(StoreTest, NarrowTextIsWidenedWithItsSignForAWideItem) {
  store.CreateOroString("w", 9, OroString(), 0);
  RecordingReceiver receiver;
  store.AddReceiver("w", &receiver);
  EXPECT_TRUE(store.SetString(nullptr, "w", "a\xE4"));
  EXPECT_EQ(store.GetOroString("w", nullptr), OroString(u"a\xFFE4"));
  const char* const pieces[] = {"w", nullptr};
  EXPECT_TRUE(store.SetString(nullptr, pieces, nullptr));
  EXPECT_TRUE(store.GetOroString("w", nullptr).isEmpty());
  EXPECT_EQ(receiver.calls.size(), 2u);
}

TEST_F(StoreTest, ItsOwnTextsMayBeSetAgain) {
  store.CreateString("s", 20, "hello", 0);
  store.CreateOroString("w", 20, OroString(u"hello"), 0);
  store.CreateBlob("b", 5, "hello", 0);
  int32_t size = 0;
  EXPECT_TRUE(store.SetString(nullptr, "s", store.GetString("s", nullptr) + 2));
  EXPECT_TRUE(store.SetOroString(nullptr, "w", store.GetOroString("w", nullptr)));
  EXPECT_TRUE(store.SetBlob(nullptr, "b", store.GetBlob("b", size, nullptr), 3));
  EXPECT_STREQ(store.GetString("s", nullptr), "llo");
  EXPECT_EQ(store.GetOroString("w", nullptr), OroString(u"hello"));
  EXPECT_EQ(store.GetCapacity("b", nullptr), 3);
}

TEST_F(StoreTest, ForcedNotificationReachesTheSenderAndUnchangedItems) {
  makeInt("i", 5);
  RecordingReceiver sender;
  store.AddReceiver("i", &sender);
  EXPECT_FALSE(store.GetForceNotify());
  store.SetForceNotify(true);
  EXPECT_TRUE(store.GetForceNotify());
  store.SetInt(&sender, "i", 5);
  EXPECT_THAT(sender.calls, ElementsAre("int i 5"));
  store.SetForceNotify(false);
  store.SetInt(&sender, "i", 5);
  EXPECT_EQ(sender.calls.size(), 1u);
}

TEST_F(StoreTest, FrozenSettersSucceedAndDoNothing) {
  makeInt("i", 5);
  store.CreateVoid("v", 0);
  RecordingReceiver receiver;
  store.AddReceiver("i", &receiver);
  store.AddReceiver("v", &receiver);
  store.SetFrozen(true);
  EXPECT_TRUE(store.GetFrozen());
  const char* const missing[] = {"missing", nullptr};
  const OroString text(u"x");
  for (const char* path : {"i", "missing"}) {
    EXPECT_TRUE(store.SetInt(nullptr, path, 9));
    EXPECT_TRUE(store.SetFloat(nullptr, path, 9));
    EXPECT_TRUE(store.SetString(nullptr, path, "9"));
    EXPECT_TRUE(store.SetOroString(nullptr, path, text));
    EXPECT_TRUE(store.SetBlob(nullptr, path, "9", 1));
    EXPECT_TRUE(store.SetIntEx(nullptr, path, 9, 9));
    EXPECT_TRUE(store.Fire(nullptr, path));
  }
  EXPECT_TRUE(store.SetInt(nullptr, missing, 9));
  EXPECT_TRUE(store.SetFloat(nullptr, missing, 9));
  EXPECT_TRUE(store.SetString(nullptr, missing, "9"));
  EXPECT_TRUE(store.SetOroString(nullptr, missing, text));
  EXPECT_TRUE(store.SetBlob(nullptr, missing, "9", 1));
  EXPECT_TRUE(store.SetIntEx(nullptr, missing, 9, 9));
  EXPECT_TRUE(store.Fire(nullptr, missing));
  EXPECT_TRUE(store.Fire(nullptr, "v"));
  store.NotifyAll();
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
  EXPECT_THAT(receiver.calls, IsEmpty());
}

TEST_F(StoreTest, FreezingStopsNeitherInitialisingNorFlagsNorLayers) {
  makeInt("i", 5);
  RecordingReceiver receiver;
  store.AddReceiver("i", &receiver);
  store.SetFrozen(true);
  EXPECT_TRUE(store.InitInt("i", 6));
  EXPECT_TRUE(store.SetFlags("i", 4));
  EXPECT_TRUE(store.CreateInt("new", 1, 0, 9, 0));
  EXPECT_EQ(store.GetInt("i", nullptr), 6);
  EXPECT_EQ(store.GetFlags("i"), 4u);
  store.SetFrozen(false);
  store.SetInt(nullptr, "i", 7);
  store.SetFrozen(true);
  store.CopyLayer("i", 1, 0, nullptr);
  EXPECT_THAT(receiver.calls, ElementsAre("int i 7", "int i 6"));
}

TEST_F(StoreTest, InitialisingWritesAllLayersSilentlyAndRestoresTheFlags) {
  store.CreateInt("i", 1, 0, 9, 3);
  store.CreateFloat("f", 1, 0, 9, 3);
  store.CreateString("s", 9, "1", 3);
  store.CreateOroString("w", 9, OroString(u"1"), 3);
  store.CreateBlob("b", 1, "1", 3);
  RecordingReceiver receiver;
  for (const char* path : {"i", "f", "s", "w", "b"}) store.AddReceiver(path, &receiver);
  EXPECT_TRUE(store.InitInt("i", 50));
  EXPECT_TRUE(store.InitFloat("f", 2));
  EXPECT_TRUE(store.InitString("s", "2"));
  EXPECT_TRUE(store.InitOroString("w", OroString(u"2")));
  EXPECT_TRUE(store.InitBlob("b", "22", 2));
  for (const char* path : {"i", "f", "s", "w", "b"}) {
    EXPECT_EQ(store.GetFlags(path), 3u);
    for (int32_t layer = 1; layer < 4; ++layer) {
      bool ok = false;
      store.CopyLayer(path, layer, 0, &ok);
      EXPECT_TRUE(ok);
    }
  }
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_EQ(store.GetInt("i", nullptr), 9);
  EXPECT_STREQ(store.GetString("s", nullptr), "2");
}

TEST_F(StoreTest, InitialisingRefusesMissingItemsAndOtherKinds) {
  makeInt("i", 5);
  EXPECT_FALSE(store.InitInt("missing", 1));
  EXPECT_FALSE(store.InitFloat("i", 1));
  EXPECT_FALSE(store.InitString("i", "1"));
  EXPECT_FALSE(store.InitOroString("i", OroString(u"1")));
  EXPECT_FALSE(store.InitBlob("i", "1", 1));
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
}

TEST_F(StoreTest, ExtraSetReachesEverybodyThroughItsOwnHandler) {
  makeInt("i", 5);
  RecordingReceiver sender;
  store.AddReceiver("i", &sender);
  EXPECT_TRUE(store.SetIntEx(&sender, "i", 5, 7));
  const char* const pieces[] = {"i", nullptr};
  EXPECT_TRUE(store.SetIntEx(&sender, pieces, 6, 8));
  EXPECT_THAT(sender.calls, ElementsAre("intex i 5 7", "intex i 6 8"));
  EXPECT_EQ(store.GetInt("i", nullptr), 6);
}

TEST_F(StoreTest, FiringTellsReceiversButTheSenderUnlessForced) {
  store.CreateVoid("v", 0);
  RecordingReceiver sender, other;
  store.AddReceiver("v", &sender);
  store.AddReceiver("v", &other);
  EXPECT_TRUE(store.Fire(&sender, "v"));
  const char* const pieces[] = {"v", nullptr};
  EXPECT_TRUE(store.Fire(&sender, pieces));
  EXPECT_THAT(sender.calls, IsEmpty());
  EXPECT_THAT(other.calls, ElementsAre("void v", "void v"));
  store.SetForceNotify(true);
  EXPECT_TRUE(store.Fire(&sender, "v"));
  EXPECT_EQ(sender.calls.size(), 1u);
}

TEST_F(StoreTest, FiringAnItemOfAnotherKindReachesItsReceiversSafely) {
  makeInt("i", 5);
  RecordingReceiver receiver;
  store.AddReceiver("i", &receiver);
  EXPECT_TRUE(store.Fire(nullptr, "i"));
  EXPECT_THAT(receiver.calls, ElementsAre("void i"));
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
}

TEST_F(StoreTest, ReceiversAreAddedToAndRemovedFromExistingItems) {
  makeInt("i", 5);
  RecordingReceiver receiver;
  EXPECT_FALSE(store.AddReceiver("missing", &receiver));
  EXPECT_TRUE(store.AddReceiver("i", &receiver));
  EXPECT_TRUE(store.RemoveReceiver("i", &receiver));
  EXPECT_FALSE(store.RemoveReceiver("i", &receiver));
  EXPECT_FALSE(store.RemoveReceiver("missing", &receiver));
  store.SetInt(nullptr, "i", 6);
  EXPECT_THAT(receiver.calls, IsEmpty());
}

// --- Items as such

TEST_F(StoreTest, ExistsKnowsItemsAndDirectories) {
  makeInt("A/i");
  EXPECT_TRUE(store.Exists("A/i"));
  EXPECT_TRUE(store.Exists("A"));
  EXPECT_FALSE(store.Exists("A/"));
  EXPECT_FALSE(store.Exists(""));
  EXPECT_FALSE(store.DirectoryExists("A/i"));
}

TEST_F(StoreTest, FlagsOfMissingItemsAreZero) {
  makeInt("i", 0, 3);
  EXPECT_EQ(store.GetFlags("i"), 3u);
  EXPECT_TRUE(store.SetFlags("i", 0));
  EXPECT_EQ(store.GetFlags("i"), 0u);
  EXPECT_FALSE(store.SetFlags("missing", 1));
  EXPECT_EQ(store.GetFlags("missing"), 0u);
}

TEST_F(StoreTest, CopyingLayersOfAMissingItemIsAnAssertionUnlessQuiet) {
  AssertionLog assertions;
  bool ok = true;
  store.CopyLayer("missing", 0, 1, &ok);
  EXPECT_FALSE(ok);
  EXPECT_THAT(assertions.files, ElementsAre("base/basic/keldata"));
  oroCommandLineFlag() = 1;
  store.CopyLayer("missing", 0, 1, nullptr);
  EXPECT_EQ(assertions.files.size(), 1u);
}

TEST_F(StoreTest, NoOtherOperationAssertsForAMissingPath) {
  AssertionLog assertions;
  store.GetInt("missing", nullptr);
  store.SetInt(nullptr, "missing", 1);
  store.InitInt("missing", 1);
  store.RemoveItem("missing");
  store.RemoveDirectory("missing");
  store.Fire(nullptr, "missing");
  store.SetFlags("missing", 1);
  store.CreateInt("missing/i", 1, 0, 9, 0);
  pathsIn("missing");
  EXPECT_THAT(assertions.files, IsEmpty());
}

TEST_F(StoreTest, CopyingTheLayersOfAllItemsPassesExemptOnes) {
  makeInt("A/i", 1);
  makeInt("A/exempt", 1, IKelDataItem::kLayerExempt);
  store.SetInt(nullptr, "A/i", 2);
  store.SetInt(nullptr, "A/exempt", 2);
  store.CopyLayers(1, 0);
  EXPECT_EQ(store.GetInt("A/i", nullptr), 1);
  EXPECT_EQ(store.GetInt("A/exempt", nullptr), 2);
  store.CopyLayer("A/exempt", 1, 0, nullptr);
  EXPECT_EQ(store.GetInt("A/exempt", nullptr), 1);
}

TEST_F(StoreTest, CollectsADirectoryOrTheItemItself) {
  makeInt("A/i");
  store.CreateDirectory("A/B");
  OroArray<const char*> list;
  EXPECT_FALSE(store.CollectPaths("A/B", list));
  EXPECT_FALSE(store.CollectPaths("missing", list));
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(store.CollectPaths("A", list));
  EXPECT_TRUE(store.CollectPaths("A/i", list));
  EXPECT_EQ(list.count(), 2);
  EXPECT_STREQ(list[1], "A/i");
  EXPECT_STREQ(list[2], "A/i");
  makeInt("");
  EXPECT_FALSE(store.CollectPaths("", list)) << "the empty path does not exist";
  EXPECT_EQ(list.count(), 2);
}

TEST_F(StoreTest, ClearForgetsEverythingAndReplacesTheRoot) {
  makeInt("A/i", 5);
  store.CreateVoid("v", 0);
  store.RemoveItem("v");
  IKelDataDirectory* root = nullptr;
  class RootFinder : public KelDataVisitor {
   public:
    explicit RootFinder(IKelDataDirectory*& root) : KelDataVisitor(kReading), root_(root) {}
    bool EnterDirectory(IKelDataDirectory* directory) override {
      root_ = directory;
      return false;
    }

   private:
    IKelDataDirectory*& root_;
  };
  RootFinder finder(root);
  store.Accept(&finder);
  const IPtr<IKelDataDirectory> held(root);
  store.Clear();
  EXPECT_FALSE(store.Exists("A"));
  EXPECT_FALSE(store.Exists("A/i"));
  EXPECT_FALSE(store.Exists("v"));
  EXPECT_FALSE(store.isRoot(root));
  EXPECT_NE(held->GetDirectory("A"), nullptr);
  makeInt("A/i", 6);
  EXPECT_EQ(store.GetInt("A/i", nullptr), 6);
}

// --- Removing

TEST_F(StoreTest, RemovedItemIsGone) {
  makeInt("A/i");
  makeInt("A/j");
  EXPECT_TRUE(store.RemoveItem("A/i"));
  EXPECT_FALSE(store.RemoveItem("A/i"));
  EXPECT_FALSE(store.Exists("A/i"));
  EXPECT_THAT(pathsIn("A"), ElementsAre("A/j"));
  EXPECT_TRUE(store.CreateString("A/i", 9, "x", 0));
  EXPECT_EQ(kindOf("A/i"), IKelDataItem::kString);
}

TEST_F(StoreTest, RemovingNeedsTheParentInTheIndex) {
  makeInt("A/i");
  store.unindexDirectory("A");
  EXPECT_FALSE(store.RemoveItem("A/i"));
  EXPECT_TRUE(store.Exists("A/i"));
}

TEST_F(StoreTest, RemovedEventStillExistsAndIsSafe) {
  store.CreateDirectory("A");
  store.CreateVoid("A/v", 0);
  RecordingReceiver receiver;
  store.AddReceiver("A/v", &receiver);
  EXPECT_TRUE(store.RemoveItem("A/v"));
  EXPECT_FALSE(store.RemoveItem("A/v"));
  EXPECT_TRUE(store.Exists("A/v"));
  EXPECT_EQ(kindOf("A/v"), IKelDataItem::kVoid);
  EXPECT_TRUE(store.Fire(nullptr, "A/v"));
  store.NotifyAll();
  EXPECT_EQ(receiver.calls.size(), 2u);
  EXPECT_THAT(pathsIn("A"), IsEmpty());
  EXPECT_TRUE(store.CreateInt("A/v", 1, 0, 9, 0));
  EXPECT_EQ(kindOf("A/v"), IKelDataItem::kVoid);
  AssertionLog assertions;
  RecordingVisitor visitor(IKelDataVisitor::kReading);
  EXPECT_FALSE(store.AcceptPath(&visitor, "A/v"));
  EXPECT_EQ(assertions.files.size(), 1u);
}

TEST_F(StoreTest, RemovedDirectoryTakesItsItemsWithIt) {
  makeInt("A/i");
  makeInt("A/B/j");
  store.CreateVoid("A/B/v", 0);
  makeInt("k");
  EXPECT_TRUE(store.RemoveDirectory("A"));
  EXPECT_FALSE(store.RemoveDirectory("A"));
  EXPECT_FALSE(store.Exists("A"));
  EXPECT_FALSE(store.Exists("A/i"));
  EXPECT_FALSE(store.Exists("A/B/j"));
  EXPECT_TRUE(store.Exists("A/B/v"));
  EXPECT_TRUE(store.Fire(nullptr, "A/B/v"));
  EXPECT_TRUE(store.Exists("k"));
}

TEST_F(StoreTest, DeeperPathOfARemovedDirectoryExistsButLeadsNowhere) {
  makeInt("A/i");
  makeInt("A/B/j");
  store.RemoveDirectory("A");
  EXPECT_TRUE(store.DirectoryExists("A/B"));
  EXPECT_TRUE(store.Exists("A/B"));
  const char* const pieces[] = {"A/", "B", nullptr};
  EXPECT_TRUE(store.Exists(pieces));
  EXPECT_FALSE(store.CreateInt("A/B/j", 1, 0, 9, 0));
  EXPECT_FALSE(store.RemoveDirectory("A/B"));
  EXPECT_THAT(pathsIn("A/B"), IsEmpty());
  AssertionLog assertions;
  RecordingVisitor visitor(IKelDataVisitor::kReading);
  EXPECT_FALSE(store.AcceptPath(&visitor, "A/B"));
  EXPECT_THAT(visitor.calls, IsEmpty());
  EXPECT_EQ(assertions.files.size(), 1u);
}

TEST_F(StoreTest, CreatingARemovedDirectoryAgainHealsItsPath) {
  makeInt("A/B/j");
  store.CreateDirectory("A");
  store.RemoveDirectory("A");
  makeInt("A/B/k", 3);
  EXPECT_EQ(store.GetInt("A/B/k", nullptr), 3);
  EXPECT_FALSE(store.Exists("A/B/j"));
  EXPECT_THAT(pathsIn("A/B"), ElementsAre("A/B/k"));
}

TEST_F(StoreTest, AllSpellingsOfARemovedDirectoryLeadNowhere) {
  store.CreateDirectory("A");
  store.CreateDirectory("A/");
  store.CreateDirectory("A//B");
  EXPECT_TRUE(store.RemoveDirectory("A"));
  EXPECT_TRUE(store.DirectoryExists("A/"));
  EXPECT_FALSE(store.CreateInt("A//x", 1, 0, 9, 0));
  EXPECT_THAT(pathsIn("A//B"), IsEmpty());
}

TEST_F(StoreTest, RemovingADeepDirectoryForgetsATopOneOfItsName) {
  makeInt("B/keep", 5);
  makeInt("A/B/j");
  store.CreateDirectory("A");
  EXPECT_TRUE(store.RemoveDirectory("A/B"));
  EXPECT_TRUE(store.DirectoryExists("A/B"));
  EXPECT_FALSE(store.DirectoryExists("B"));
  EXPECT_FALSE(store.CreateInt("B/new", 1, 0, 9, 0));
  EXPECT_EQ(store.GetInt("B/keep", nullptr), 5);
  store.CreateDirectory("B");
  EXPECT_THAT(pathsIn("B"), ElementsAre("B/keep"));
}

TEST_F(StoreTest, RootUnderAnotherNameIsNotRemoved) {
  makeInt("x", 5);
  store.CreateDirectory("/");
  store.CreateDirectory("//");
  EXPECT_FALSE(store.RemoveDirectory("/"));
  // It is no child of itself, yet the index is emptied first, as for any directory.
  EXPECT_FALSE(store.RemoveDirectory("//"));
  EXPECT_FALSE(store.Exists("x"));
  EXPECT_THAT(pathsIn("//"), ElementsAre("x"));
  store.Clear();
}

// --- Notification of all

TEST_F(StoreTest, NotifyAllPassesMarkedItemsAndIgnoresForce) {
  makeInt("i", 1);
  makeInt("quiet", 1, IKelDataItem::kNoNotifyAll);
  RecordingReceiver receiver;
  store.AddReceiver("i", &receiver);
  store.AddReceiver("quiet", &receiver);
  store.NotifyAll();
  EXPECT_THAT(receiver.calls, ElementsAre("int i 1"));
}

// The order that the index gives, from an index of the test's own.
std::vector<std::string> indexOrder(const std::vector<std::string>& paths, size_t buckets) {
  constexpr size_t primes[] = {5, 11, 17, 37, 67, 131, 257, 521, 1031, 2053, 4099, 8209};
  std::vector<std::vector<std::string>> table(buckets);  // chains, head first
  const auto chain = [&](const std::string& path) -> std::vector<std::string>& {
    uint32_t hash = 5381;
    for (const char c : path) hash = hash * 33 + static_cast<uint32_t>(static_cast<signed char>(c));
    return table[hash % table.size()];
  };
  size_t count = 0;
  for (const std::string& path : paths) {
    chain(path).insert(chain(path).begin(), path);
    if (static_cast<double>(++count) < static_cast<double>(table.size()) * 0.8) continue;
    const auto old = std::move(table);
    table.assign(*std::upper_bound(std::begin(primes), std::end(primes), old.size()), {});
    for (const auto& chained : old) {
      for (const std::string& moved : chained) chain(moved).insert(chain(moved).begin(), moved);
    }
  }
  std::vector<std::string> order;
  for (const auto& chained : table) order.insert(order.end(), chained.begin(), chained.end());
  return order;
}

struct IndexSize {
  IDataStore* (*make)();
  size_t buckets;
};

template <int32_t expected>
IDataStore* expecting() {
  return new KelDataStore(true, 5, expected);
}

template <class Store>
IDataStore* made() {
  return new Store;
}

class IndexOrderTest : public testing::TestWithParam<IndexSize> {};

TEST_P(IndexOrderTest, NotifyAllGoesByTheIndex) {
  const IPtr<IDataStore> held(GetParam().make());
  IDataStore& store = *held;
  RecordingReceiver receiver;
  std::vector<std::string> paths;
  store.CreateDirectory("\xC3\xA4");
  for (int n = 0; n < 4000; ++n) {
    paths.push_back("\xC3\xA4/item " + std::to_string(n * 7919));
    store.CreateVoid(paths.back().c_str(), 0);
    store.AddReceiver(paths.back().c_str(), &receiver);
    if (n != 3 && n != 12 && n != 200 && n != 3999) continue;
    receiver.calls.clear();
    store.NotifyAll();
    std::vector<std::string> expected;
    for (const std::string& path : indexOrder(paths, GetParam().buckets)) {
      expected.push_back("void " + path);
    }
    ASSERT_EQ(receiver.calls, expected) << n;
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, IndexOrderTest,
                         testing::Values(IndexSize{made<GenDataStore>, 4099},
                                         IndexSize{made<KelCustomDataStore>, 37},
                                         IndexSize{expecting<5>, 5}, IndexSize{expecting<2>, 17},
                                         IndexSize{expecting<0>, 17},
                                         IndexSize{expecting<-5>, 17}));

TEST_F(StoreTest, NotifyAllPassesItemsThatAHandlerRemovedAndNewOnes) {
  std::vector<std::string> paths;
  RecordingReceiver receiver;
  for (int n = 0; n < 100; ++n) {
    paths.push_back("i" + std::to_string(n));
    makeInt(paths.back().c_str(), n);
    store.AddReceiver(paths.back().c_str(), &receiver);
  }
  receiver.handler = [&] {
    receiver.handler = nullptr;
    for (const std::string& path : paths) store.RemoveItem(path.c_str());
    for (int n = 0; n < 9000; ++n) makeInt(("new" + std::to_string(n)).c_str());
  };
  store.NotifyAll();
  EXPECT_EQ(receiver.calls.size(), 1u);
}

TEST_F(StoreTest, NotifyAllReachesItemsThatAHandlerPutInPlaceOfOthers) {
  RecordingReceiver receiver;
  for (const char* path : {"a", "b"}) {
    makeInt(path, 1);
    store.AddReceiver(path, &receiver);
  }
  receiver.handler = [&] {
    receiver.handler = nullptr;
    for (const char* path : {"a", "b"}) {
      store.RemoveItem(path);
      store.CreateString(path, 9, "new", 0);
      store.AddReceiver(path, &receiver);
    }
  };
  store.NotifyAll();
  ASSERT_EQ(receiver.calls.size(), 2u);
  EXPECT_EQ(receiver.calls[0].substr(0, 4), "int ");
  EXPECT_EQ(receiver.calls[1], receiver.calls[0] == "int a 1" ? "string b new" : "string a new");
}

// --- Removal while handlers run

TEST_F(StoreTest, HandlerMayRemoveTheItemThatIsBeingSet) {
  store.CreateDirectory("A");
  store.CreateString("A/s", 100, "x", IKelDataItem::kJournalled);
  Log log;
  RecordingReceiver remover("remover", log), later("later", log);
  store.AddReceiver("A/s", &remover);
  store.AddReceiver("A/s", &later);
  remover.handler = [&] { EXPECT_TRUE(store.RemoveItem("A/s")); };
  AssertionLog assertions;
  EXPECT_TRUE(store.SetString(nullptr, "A/s", "a text that is no short one"));
  EXPECT_THAT(log, ElementsAre("remover: string A/s a text that is no short one"));
  EXPECT_FALSE(store.Exists("A/s"));
  EXPECT_THAT(assertions.files, IsEmpty());
}

// Once an item is gone, nobody can take a receiver off it by its path.
TEST_F(StoreTest, ReceiversMayDieWithTheItemThatAHandlerRemoved) {
  const std::function<void()> removals[] = {[&] { store.RemoveItem("A/i"); },
                                            [&] { store.RemoveDirectory("A"); },
                                            [&] { store.Clear(); }};
  for (const auto& remove : removals) {
    makeInt("A/i");
    RecordingReceiver remover;
    auto doomed = std::make_unique<RecordingReceiver>();
    store.AddReceiver("A/i", &remover);
    store.AddReceiver("A/i", doomed.get());
    remover.handler = [&] {
      remove();
      EXPECT_FALSE(store.RemoveReceiver("A/i", doomed.get()));
      doomed.reset();
    };
    EXPECT_TRUE(store.SetInt(nullptr, "A/i", 5));
    EXPECT_EQ(remover.calls.size(), 1u);
  }
}

TEST_F(StoreTest, HandlerMayRemoveTheDirectoryOrClearTheStore) {
  makeInt("A/B/i");
  store.CreateDirectory("A");
  RecordingReceiver receiver;
  store.AddReceiver("A/B/i", &receiver);
  receiver.handler = [&] { EXPECT_TRUE(store.RemoveDirectory("A")); };
  EXPECT_TRUE(store.SetInt(nullptr, "A/B/i", 5));
  EXPECT_FALSE(store.Exists("A"));

  makeInt("A/B/i");
  store.CreateVoid("A/B/v", 0);
  store.RemoveItem("A/B/v");
  store.AddReceiver("A/B/i", &receiver);
  receiver.handler = [&] { store.Clear(); };
  EXPECT_TRUE(store.SetIntEx(nullptr, "A/B/i", 6, 1));
  EXPECT_FALSE(store.Exists("A/B/i"));
  EXPECT_FALSE(store.Exists("A/B/v"));
  EXPECT_EQ(receiver.calls.size(), 2u);
}

TEST_F(StoreTest, FiredEventMayClearTheStoreAndItsPathHoldsForTheCall) {
  class Clearing : public RecordingReceiver {
   public:
    explicit Clearing(KelDataStore& store) : store_(store) {}
    void OnVoidFired(const char* path) override {
      store_.RemoveItem("v");
      store_.Clear();
      RecordingReceiver::OnVoidFired(path);
    }

   private:
    KelDataStore& store_;
  };
  store.CreateVoid("v", 0);
  Clearing receiver(store);
  store.AddReceiver("v", &receiver);
  EXPECT_TRUE(store.Fire(nullptr, "v"));
  EXPECT_THAT(receiver.calls, ElementsAre("void v"));
  EXPECT_FALSE(store.Exists("v"));
}

TEST_F(StoreTest, NothingIsFreedBeforeTheOutermostDeliveryEnds) {
  makeInt("i", 1);
  makeInt("j", 1);
  RecordingReceiver outer, inner;
  store.AddReceiver("i", &outer);
  store.AddReceiver("j", &inner);
  outer.handler = [&] {
    store.SetInt(nullptr, "j", 5);
    store.RemoveItem("i");
    store.SetInt(nullptr, "j", 6);
  };
  inner.handler = [&] { store.RemoveItem("j"); };
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
  EXPECT_FALSE(store.Exists("i"));
  EXPECT_FALSE(store.Exists("j"));
  EXPECT_THAT(inner.calls, ElementsAre("int j 5"));
}

// --- The settings of a run without a user interface

TEST_F(StoreTest, DeclarationsOfACommandLineRunAllSucceed) {
  for (const char* path : {"GUI", "Advanced", "Advanced/Batch Processing", "Scripting", "Python"}) {
    store.CreateDirectory(path);
  }
  for (const char* path : {"GUI/CommandLine", "GUI/CommandLine Progress Window",
                           "Advanced/Batch Processing/Enabled", "Scripting/ExitOnMacroEnd"}) {
    EXPECT_TRUE(store.CreateInt(path, 0, INT_MIN, INT_MAX, 1)) << path;
  }
  EXPECT_TRUE(store.CreateOroString("GUI/CommandLine Log File", 32767, OroString(), 1));
  EXPECT_TRUE(store.CreateOroString("Python/Error String", 1048576, OroString(), 0));
  EXPECT_TRUE(store.SetInt(nullptr, "GUI/CommandLine", 1));
  EXPECT_TRUE(store.SetString(nullptr, "GUI/CommandLine Log File", "stdout"));
  EXPECT_TRUE(store.SetFlags("GUI/CommandLine Log File", 0));
  EXPECT_EQ(store.GetOroString("GUI/CommandLine Log File", nullptr), OroString(u"stdout"));
  EXPECT_TRUE(store.GetOroString("Python/Error String", nullptr).isEmpty());
}

TEST_F(StoreTest, IsFoundUnderInterfaceAndClass) {
  EXPECT_EQ(oroQuery<IDataStore>(&store), static_cast<IDataStore*>(&store));
  EXPECT_EQ(oroQueryClass<KelDataStore>(static_cast<IDataStore*>(&store)), &store);
  EXPECT_STREQ(store.getClassName(), "KelDataStore");
}

}  // namespace
