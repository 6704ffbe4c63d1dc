// Walks of the store, its readers and writers, and the journal of sets.

#include "base/basic/kelcustomdatastore.h"
#include "base/basic/keldatafactories.h"
#include "base/basic/keldatavisitor.h"
#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataInt.h"
#include "tests/base/basic/assertionlog.h"
#include "tests/base/basic/documentdouble.h"
#include "tests/base/basic/recordingvisitor.h"
#include "tests/base/basic/storetest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using tests::AssertionLog;
using tests::DocumentDouble;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

class StoreWalkTest : public tests::StoreTest {
 protected:
  StoreWalkTest() {
    makeInt("x");
    makeInt("A/i");
    makeInt("A/B/j");
  }

  RecordingVisitor reader{IKelDataVisitor::kReading};
  RecordingVisitor writer{IKelDataVisitor::kWriting};
};

TEST_F(StoreWalkTest, WholeTreeIsWalkedFromTheRoot) {
  EXPECT_TRUE(store.Accept(&writer));
  EXPECT_THAT(writer.calls, ElementsAre("begin", "enter ", "enter A", "enter B", "int A/B/j",
                                        "leave B", "int A/i", "leave A", "int x", "leave ", "end"));
}

TEST_F(StoreWalkTest, FailedBeginEndsTheWalkAndIsEndedAllTheSame) {
  reader.failing = {"begin"};
  EXPECT_FALSE(store.Accept(&reader));
  EXPECT_FALSE(store.AcceptPath(&reader, "A/i"));
  EXPECT_THAT(reader.calls, ElementsAre("begin", "end", "begin", "end"));
}

TEST_F(StoreWalkTest, ResultIsThatOfEndWhenAllElseWentWell) {
  reader.failing = {"end"};
  EXPECT_FALSE(store.Accept(&reader));
  EXPECT_FALSE(store.AcceptPath(&reader, "A/i"));
  reader.failing = {"int x"};
  EXPECT_FALSE(store.Accept(&reader));
  EXPECT_EQ(reader.calls.back(), "end");
}

TEST_F(StoreWalkTest, PathToAnItemEntersTheDirectoriesOnTheWay) {
  EXPECT_TRUE(store.AcceptPath(&reader, "A/B/j"));
  EXPECT_THAT(reader.calls,
              ElementsAre("begin", "enter A", "enter B", "int A/B/j", "leave B", "leave A", "end"));
  reader.calls.clear();
  EXPECT_TRUE(store.AcceptPath(&reader, "x"));
  EXPECT_THAT(reader.calls, ElementsAre("begin", "int x", "end"));
}

TEST_F(StoreWalkTest, PathToADirectoryWalksAllBelowIt) {
  EXPECT_TRUE(store.AcceptPath(&reader, "A/B"));
  EXPECT_THAT(reader.calls,
              ElementsAre("begin", "enter A", "enter B", "int A/B/j", "leave B", "leave A", "end"));
}

TEST_F(StoreWalkTest, ItemGoesBeforeADirectoryOfItsName) {
  makeInt("A/B");
  EXPECT_TRUE(store.AcceptPath(&reader, "A/B"));
  EXPECT_THAT(reader.calls, ElementsAre("begin", "enter A", "int A/B", "leave A", "end"));
}

TEST_F(StoreWalkTest, ItemIsFoundInTheTreeAlsoWhenTheIndexHasForgottenIt) {
  store.unindexItem("A/i");
  EXPECT_TRUE(store.AcceptPath(&reader, "A/i"));
}

TEST_F(StoreWalkTest, DirectoryIsFoundOnlyInTheIndex) {
  store.CreateDirectory("P/Q");
  AssertionLog assertions;
  EXPECT_FALSE(store.AcceptPath(&reader, "P"));
  EXPECT_EQ(assertions.files.size(), 1u);
  EXPECT_TRUE(store.AcceptPath(&reader, "P/Q"));
}

TEST_F(StoreWalkTest, OddSpellingEntersItsDirectoryTwice) {
  store.CreateDirectory("A//Z");
  EXPECT_TRUE(store.AcceptPath(&writer, "A//Z"));
  EXPECT_THAT(writer.calls, ElementsAre("begin", "enter A", "enter A", "enter B", "int A/B/j",
                                        "leave B", "int A/i", "leave A", "leave A", "end"));
}

TEST_F(StoreWalkTest, MissingPathIsAnAssertionBeforeAnythingBegins) {
  AssertionLog assertions;
  EXPECT_FALSE(store.AcceptPath(&reader, "A/missing"));
  EXPECT_FALSE(store.AcceptPath(&reader, "missing/i"));
  EXPECT_FALSE(store.AcceptPath(&reader, ""));
  EXPECT_FALSE(store.AcceptPath(&reader, nullptr));
  EXPECT_THAT(reader.calls, IsEmpty());
  EXPECT_THAT(assertions.files, ElementsAre("base/basic/keldata", "base/basic/keldata",
                                            "base/basic/keldata", "base/basic/keldata"));
}

TEST_F(StoreWalkTest, MissingPathIsQuietInACommandLineRun) {
  AssertionLog assertions;
  oroCommandLineFlag() = 1;
  EXPECT_FALSE(store.AcceptPath(&reader, "missing"));
  EXPECT_THAT(assertions.files, IsEmpty());
}

TEST_F(StoreWalkTest, RefusedDirectoryOnTheWayEndsTheWalk) {
  reader.failing = {"enter B"};
  EXPECT_FALSE(store.AcceptPath(&reader, "A/B/j"));
  EXPECT_THAT(reader.calls, ElementsAre("begin", "enter A", "enter B", "end"));
}

TEST_F(StoreWalkTest, FailedVisitEndsTheWalkWithoutLeaving) {
  reader.failing = {"int A/B/j"};
  EXPECT_FALSE(store.AcceptPath(&reader, "A/B/j"));
  EXPECT_THAT(reader.calls, ElementsAre("begin", "enter A", "enter B", "int A/B/j", "end"));
}

TEST_F(StoreWalkTest, FailedLeaveEndsTheWalk) {
  reader.failing = {"leave B"};
  EXPECT_FALSE(store.AcceptPath(&reader, "A/B/j"));
  EXPECT_THAT(reader.calls,
              ElementsAre("begin", "enter A", "enter B", "int A/B/j", "leave B", "end"));
}

TEST_F(StoreWalkTest, NullVisitorFailsWithoutAWord) {
  AssertionLog assertions;
  EXPECT_FALSE(store.Accept(nullptr));
  EXPECT_FALSE(store.AcceptPath(nullptr, "A/i"));
  EXPECT_FALSE(store.AcceptPath(nullptr, "missing"));
  EXPECT_FALSE(store.Load());
  EXPECT_FALSE(store.ImportXml(OroString(u"x"), nullptr));
  EXPECT_FALSE(store.ImportXml(OroString(u"x"), "A"));
  EXPECT_THAT(assertions.files, IsEmpty());
}

TEST_F(StoreWalkTest, WalkWithinAWalkKeepsBothOnTheirWay) {
  makeInt("C/D/E/k");
  RecordingVisitor inner(IKelDataVisitor::kReading);
  reader.during = [&](const std::string& call) {
    if (call != "int A/B/j") return;
    EXPECT_TRUE(store.AcceptPath(&inner, "C/D/E/k"));
  };
  EXPECT_TRUE(store.AcceptPath(&reader, "A/B/j"));
  EXPECT_THAT(reader.calls,
              ElementsAre("begin", "enter A", "enter B", "int A/B/j", "leave B", "leave A", "end"));
  EXPECT_THAT(inner.calls, ElementsAre("begin", "enter C", "enter D", "enter E", "int C/D/E/k",
                                       "leave E", "leave D", "leave C", "end"));
}

TEST_F(StoreWalkTest, WalkedItemsAndDirectoriesMayBeRemoved) {
  reader.during = [&](const std::string& call) {
    if (call == "int A/B/j") store.RemoveDirectory("A");
    if (call == "int x") store.Clear();
  };
  EXPECT_TRUE(store.AcceptPath(&reader, "A/B/j"));
  EXPECT_EQ(reader.calls.back(), "end");
  EXPECT_FALSE(store.Exists("A/B/j"));
  EXPECT_TRUE(store.Accept(&reader));
  EXPECT_FALSE(store.Exists("x"));
}

TEST_F(StoreWalkTest, ReaderAndWriterCanBeReplacedAndAreHeld) {
  auto* const visitor = new KelDataVisitor(IKelDataVisitor::kReading);
  store.SetReader(visitor);
  store.SetWriter(visitor);
  EXPECT_EQ(store.GetReader(), visitor);
  EXPECT_EQ(store.GetWriter(), visitor);
  EXPECT_EQ(visitor->refCount(), 2);
  EXPECT_TRUE(store.Load());
  store.SetReader(nullptr);
  EXPECT_EQ(visitor->refCount(), 1);
  EXPECT_EQ(store.GetReader(), nullptr);
}

// --- Checking the indexes

TEST(StoreCheck, FlatTreePasses) {
  KelDataStore store(true, 5, 20);
  EXPECT_TRUE(store.CheckIndexes());
  store.CreateDirectory("A");
  store.CreateInt("A/i", 0, 0, 9, 0);
  store.CreateInt("x", 0, 0, 9, 0);
  EXPECT_TRUE(store.CheckIndexes());
}

TEST_F(StoreWalkTest, NestedTreeNeverPasses) { EXPECT_FALSE(store.CheckIndexes()); }

TEST(StoreCheck, MissingEntriesFail) {
  KelDataStore store(true, 5, 20);
  store.CreateDirectory("A");
  store.CreateInt("A/i", 0, 0, 9, 0);
  store.unindexItem("A/i");
  EXPECT_FALSE(store.CheckIndexes());
  store.Clear();
  store.CreateDirectory("A");
  store.CreateInt("A/i", 0, 0, 9, 0);
  store.unindexDirectory("A");
  EXPECT_FALSE(store.CheckIndexes());
}

TEST(StoreCheck, EntriesThatLeadNowhereFail) {
  KelDataStore store(true, 5, 20);
  store.CreateDirectory("A");
  store.CreateDirectory("A/B");
  store.RemoveDirectory("A");
  EXPECT_TRUE(store.DirectoryExists("A/B"));
  EXPECT_FALSE(store.CheckIndexes());
  store.Clear();
  store.CreateVoid("v", 0);
  store.RemoveItem("v");
  EXPECT_TRUE(store.CheckIndexes());
}

TEST(StoreCheck, ItemsWithoutTheirDirectoryFail) {
  KelDataStore store(true, 5, 20);
  store.CreateDirectory("A");
  store.CreateVoid("A/v", 0);
  store.RemoveItem("A/v");
  EXPECT_TRUE(store.CheckIndexes());
  store.RemoveDirectory("A");
  EXPECT_TRUE(store.Exists("A/v"));
  EXPECT_FALSE(store.CheckIndexes());
}

// --- Readers, writers and the journal

class StoreDocumentTest : public testing::Test {
 protected:
  DocumentDouble document;
  KelDataStore store{true, 50, 3000};
};

TEST_F(StoreDocumentTest, DefaultsAreMadeWithTheStoreAndOpenNothing) {
  EXPECT_THAT(document.made, ElementsAre("default writer", "default reader"));
  EXPECT_NE(store.GetReader(), nullptr);
  EXPECT_NE(store.GetWriter(), nullptr);
  EXPECT_FALSE(document.journalFileMade);
}

TEST_F(StoreDocumentTest, SmallStoreUsesTheSystemRegistry) {
  document.made.clear();
  const IPtr<IDataStore> custom(new KelCustomDataStore);
  EXPECT_THAT(document.made, ElementsAre("registry writer", "registry reader"));
}

TEST_F(StoreDocumentTest, FactoriesPassTheirArgumentsOn) {
  document.made.clear();
  const OroString path(u"C:\\p.xml");
  const IPtr<IKelDataVisitor> made[] = {
      store.CreateDefaultReader(),        store.CreateDefaultWriter(),
      store.CreateFileReader(path, true), store.CreateFileWriter(path),
      store.CreateXmlReader(path, false), store.CreateXmlWriter(path)};
  for (const auto& visitor : made) EXPECT_TRUE(visitor);
  EXPECT_THAT(document.made, ElementsAre("default reader", "default writer",
                                         "file reader C:\\p.xml 1", "file writer C:\\p.xml",
                                         "xml reader C:\\p.xml 0", "xml writer C:\\p.xml"));
}

// A table without any format, for the life of this object.
struct NoFactories {
  NoFactories() { kelDataFactories() = KelDataFactories(); }
  ~NoFactories() { kelDataFactories() = before; }
  const KelDataFactories before = kelDataFactories();
};

TEST(StoreFactories, WithoutThemThereIsNoReaderAndNoWriter) {
  const NoFactories none;
  KelDataStore store(true, 5, 20);
  const OroString path(u"p");
  EXPECT_EQ(store.GetReader(), nullptr);
  EXPECT_EQ(store.GetWriter(), nullptr);
  EXPECT_EQ(store.CreateDefaultReader(), nullptr);
  EXPECT_EQ(store.CreateDefaultWriter(), nullptr);
  EXPECT_EQ(store.CreateFileReader(path, true), nullptr);
  EXPECT_EQ(store.CreateFileWriter(path), nullptr);
  EXPECT_EQ(store.CreateXmlReader(path, true), nullptr);
  EXPECT_EQ(store.CreateXmlWriter(path), nullptr);
  EXPECT_TRUE(store.CommitWriter());
  store.CreateInt("i", 0, 0, 9, IKelDataItem::kJournalled);
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
}

TEST_F(StoreDocumentTest, DeclaredSettingTakesItsStoredValue) {
  document.values = {{"Fonts and Languages/Language", "de"}, {"Unknown/x", "1"}};
  store.CreateDirectory("Fonts and Languages");
  store.CreateString("Fonts and Languages/Language", 80, "en", 1);
  EXPECT_TRUE(store.AcceptPath(store.GetReader(), "Fonts and Languages/Language"));
  EXPECT_STREQ(store.GetString("Fonts and Languages/Language", nullptr), "de");
  EXPECT_FALSE(store.Exists("Unknown/x"));
}

TEST_F(StoreDocumentTest, UnreadableDocumentLeavesTheDefault) {
  document.values = {{"i", "7"}};
  document.readable = false;
  store.CreateInt("i", 1, 0, 9, 1);
  EXPECT_FALSE(store.AcceptPath(store.GetReader(), "i"));
  EXPECT_FALSE(store.Load());
  EXPECT_EQ(store.GetInt("i", nullptr), 1);
}

TEST_F(StoreDocumentTest, LoadReadsAllThatIsThereAndFailsForTheRest) {
  document.values = {{"a", "5"}, {"c", "7"}};
  store.CreateInt("a", 1, 0, 9, 1);
  store.CreateInt("b", 2, 0, 9, 1);
  store.CreateInt("c", 3, 0, 9, 1);
  store.CreateInt("d", 4, 0, 9, 0);
  EXPECT_FALSE(store.Load());
  EXPECT_EQ(store.GetInt("a", nullptr), 5);
  EXPECT_EQ(store.GetInt("b", nullptr), 2);
  EXPECT_EQ(store.GetInt("c", nullptr), 7);
  store.RemoveItem("b");
  EXPECT_TRUE(store.Load());
}

TEST_F(StoreDocumentTest, ReadValueIsNoChangeAndIsNotWritten) {
  document.values = {{"i", "5"}};
  store.CreateInt("i", 1, 0, 9, 1);
  store.Load();
  EXPECT_TRUE(store.Accept(store.GetWriter()));
  EXPECT_THAT(document.journal, IsEmpty());
}

TEST_F(StoreDocumentTest, SetOfAJournalledItemIsWrittenAtOnce) {
  store.CreateInt("i", 1, 0, 9, 3);
  store.CreateInt("plain", 1, 0, 9, 1);
  EXPECT_TRUE(store.SetInt(nullptr, "plain", 5));
  EXPECT_FALSE(document.journalFileMade);
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
  EXPECT_TRUE(store.SetIntEx(nullptr, "i", 6, 0));
  const char* const pieces[] = {"i", nullptr};
  EXPECT_TRUE(store.SetInt(nullptr, pieces, 7));
  EXPECT_THAT(document.journal, ElementsAre("i=5", "i=6", "i=7"));
}

TEST_F(StoreDocumentTest, EverySetRunsTheWriterChangedOrNot) {
  store.CreateInt("i", 1, 0, 9, 3);
  EXPECT_TRUE(store.SetInt(nullptr, "i", 1));
  EXPECT_TRUE(document.journalFileMade);
  EXPECT_THAT(document.journal, IsEmpty());
}

TEST_F(StoreDocumentTest, JournalFlagAloneRunsTheWriterWhichAsksForTheOther) {
  store.CreateInt("i", 1, 0, 9, 2);
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
  EXPECT_TRUE(document.journalFileMade);
  EXPECT_THAT(document.journal, IsEmpty());
}

TEST_F(StoreDocumentTest, WidenedTextIsWrittenOnce) {
  RecordingVisitor writer(IKelDataVisitor::kWriting);
  writer.addRef();
  store.SetWriter(&writer);
  store.CreateOroString("w", 9, OroString(), 3);
  EXPECT_TRUE(store.SetString(nullptr, "w", "x"));
  EXPECT_THAT(writer.calls, ElementsAre("begin", "wide w", "end"));
  store.SetWriter(nullptr);
}

TEST_F(StoreDocumentTest, FiringAndInitialisingWriteNothing) {
  store.CreateVoid("v", 3);
  store.CreateInt("i", 1, 0, 9, 3);
  store.Fire(nullptr, "v");
  store.InitInt("i", 5);
  store.CopyLayer("i", 0, 1, nullptr);
  EXPECT_FALSE(document.journalFileMade);
}

TEST_F(StoreDocumentTest, FailedJournalDoesNotFailTheSet) {
  document.writable = false;
  store.CreateInt("i", 1, 0, 9, 3);
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
  EXPECT_THAT(document.journal, IsEmpty());
}

TEST_F(StoreDocumentTest, WithoutAutoSaveNothingIsJournalled) {
  store.CreateInt("i", 1, 0, 9, 3);
  store.SetAutoSave(false);
  store.SetInt(nullptr, "i", 5);
  EXPECT_FALSE(document.journalFileMade);
  store.SetAutoSave(true);
  store.SetInt(nullptr, "i", 6);
  EXPECT_THAT(document.journal, ElementsAre("i=6"));
}

TEST_F(StoreDocumentTest, ReceiversHearBeforeTheJournalIsWritten) {
  store.CreateInt("i", 1, 0, 9, 3);
  RecordingReceiver receiver;
  size_t lines = 99;
  receiver.handler = [&] { lines = document.journal.size(); };
  store.AddReceiver("i", &receiver);
  store.SetInt(nullptr, "i", 5);
  EXPECT_EQ(lines, 0u);
  EXPECT_EQ(document.journal.size(), 1u);
}

TEST_F(StoreDocumentTest, JournalledSetWithinAReadKeepsTheReadOnItsWay) {
  document.values = {{"A/B/i", "5"}};
  store.CreateDirectory("A/B");
  store.CreateDirectory("C");
  store.CreateInt("A/B/i", 1, 0, 9, 1);
  store.CreateInt("C/copy", 1, 0, 9, 3);
  RecordingReceiver receiver;
  receiver.handler = [&] { store.SetInt(nullptr, "C/copy", store.GetInt("A/B/i", nullptr)); };
  store.AddReceiver("A/B/i", &receiver);
  const IPtr<IKelDataVisitor> reader(store.CreateXmlReader(OroString(u"x"), true));
  EXPECT_TRUE(store.AcceptPath(reader.get(), "A/B/i"));
  EXPECT_THAT(document.journal, ElementsAre("C/copy=5"));
}

TEST_F(StoreDocumentTest, WriterMayBeReplacedByAHandlerWhileItWrites) {
  store.CreateInt("i", 1, 0, 9, 3);
  class Replacing : public KelDataVisitor {
   public:
    explicit Replacing(KelDataStore& store) : KelDataVisitor(kWriting), store_(store) {}
    bool Begin() override {
      store_.SetWriter(nullptr);
      return true;
    }

   private:
    KelDataStore& store_;
  };
  store.SetWriter(new Replacing(store));
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
  EXPECT_EQ(store.GetWriter(), nullptr);
}

TEST_F(StoreDocumentTest, ReaderMayBeReplacedWhileItReads) {
  store.CreateInt("i", 1, 0, 9, 1);
  class Replaced : public KelDataVisitor {
   public:
    Replaced(KelDataStore& store, tests::Log& log)
        : KelDataVisitor(kReading), store_(store), log_(log) {}
    ~Replaced() override { log_.push_back("destroyed"); }
    bool VisitItem(IKelDataItem*) override {
      store_.SetReader(nullptr);
      return true;
    }
    bool End() override {
      log_.push_back("end");
      return true;
    }

   private:
    KelDataStore& store_;
    tests::Log& log_;
  };
  tests::Log log;
  store.SetReader(new Replaced(store, log));
  EXPECT_TRUE(store.Accept(store.GetReader()));
  store.SetReader(new Replaced(store, log));
  EXPECT_TRUE(store.AcceptPath(store.GetReader(), "i"));
  EXPECT_THAT(log, ElementsAre("end", "destroyed", "end", "destroyed"));
}

TEST_F(StoreDocumentTest, SetOfAJournalledItemBehindAnEmptySegmentIsAnAssertion) {
  store.CreateDirectory("A/");
  store.CreateInt("A//i", 1, 0, 9, 3);
  AssertionLog assertions;
  EXPECT_TRUE(store.SetInt(nullptr, "A//i", 5));
  EXPECT_EQ(store.GetInt("A//i", nullptr), 5);
  EXPECT_THAT(assertions.files, ElementsAre("base/basic/keldata"));
  EXPECT_THAT(document.journal, IsEmpty());
}

TEST_F(StoreDocumentTest, ItemThatAHandlerRemovedIsNotJournalled) {
  store.CreateInt("i", 1, 0, 9, 3);
  RecordingReceiver receiver;
  receiver.handler = [&] { store.RemoveItem("i"); };
  store.AddReceiver("i", &receiver);
  AssertionLog assertions;
  EXPECT_TRUE(store.SetInt(nullptr, "i", 5));
  EXPECT_THAT(assertions.files, IsEmpty());
  EXPECT_FALSE(document.journalFileMade);
}

TEST_F(StoreDocumentTest, CommitMergesTheJournal) {
  store.CreateInt("i", 1, 0, 9, 3);
  store.SetInt(nullptr, "i", 5);
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(document.commits, 1);
  EXPECT_THAT(document.values, ElementsAre(Pair("i", "5")));
  document.writable = false;
  EXPECT_FALSE(store.CommitWriter());
  store.SetWriter(nullptr);
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(document.commits, 2);
}

TEST_F(StoreDocumentTest, JournalOfADeadSessionReachesTheNextOne) {
  store.CreateInt("i", 1, 0, 9, 3);
  store.SetInt(nullptr, "i", 5);
  KelDataStore next(true, 50, 3000);
  next.CreateInt("i", 1, 0, 9, 3);
  EXPECT_TRUE(next.AcceptPath(next.GetReader(), "i"));
  EXPECT_EQ(next.GetInt("i", nullptr), 5);
}

TEST_F(StoreDocumentTest, ImportedDocumentIsNoChangeAndTellsNobody) {
  document.values = {{"A/i", "5"}, {"x", "6"}};
  store.CreateDirectory("A");
  store.CreateInt("A/i", 1, 0, 9, 1);
  store.CreateInt("x", 1, 0, 9, 1);
  RecordingReceiver receiver;
  store.AddReceiver("A/i", &receiver);
  document.made.clear();
  EXPECT_TRUE(store.ImportXml(OroString(u"f"), "A"));
  EXPECT_EQ(store.GetInt("A/i", nullptr), 5);
  EXPECT_EQ(store.GetInt("x", nullptr), 1);
  EXPECT_TRUE(store.ImportXml(OroString(u"f"), ""));
  EXPECT_EQ(store.GetInt("x", nullptr), 6);
  EXPECT_TRUE(store.ImportXml(OroString(u"f"), nullptr));
  EXPECT_THAT(document.made, ElementsAre("xml reader f 0", "xml reader f 0", "xml reader f 0"));
  EXPECT_THAT(receiver.calls, IsEmpty());
  EXPECT_TRUE(store.Accept(store.GetWriter()));
  EXPECT_THAT(document.journal, IsEmpty());
}

TEST_F(StoreDocumentTest, PrivateWriterWritesAllChangedPersistentItems) {
  store.CreateInt("a", 1, 0, 9, 1);
  store.CreateInt("b", 1, 0, 9, 1);
  store.CreateInt("c", 1, 0, 9, 0);
  store.CreateInt("always", 1, 0, 9, 1 | IKelDataItem::kInitialiseAll);
  for (const char* path : {"a", "c"}) store.SetInt(nullptr, path, 5);
  const IPtr<IKelDataVisitor> writer(store.CreateDefaultWriter());
  EXPECT_TRUE(store.Accept(writer.get()));
  EXPECT_THAT(document.journal, UnorderedElementsAre("a=5", "always=1"));
}

}  // namespace
