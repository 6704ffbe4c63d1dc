#include "gui/apps/main/commandlineflow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/basic/gendatastore.h"
#include "base/basic/keldatavisitor.h"
#include "gui/apps/main/appglobals.h"
#include "gui/apps/main/commandlinesettings.h"
#include "gui/apps/main/oroappmain.h"
#include "headless/testaccess.h"
#include "interfaces/IGuiCursor.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataOroString.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orocommandlineflag.h"
#include "orobasictypes/sptr.h"
#include "tests/blackbox/childprocess.h"
#include "tests/gui/apps/main/appworld.h"
#include "tests/gui/apps/main/flowdoubles.h"

namespace {

using namespace commandlinesettings;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using tests::event;
using tests::events;

class Flow : public testing::Test {
 protected:
  Flow() { application_.initEssential(); }

  template <class T>
  T* add(const char* name, T* object) {
    tests::publish(name, object);
    return object;
  }
  int32_t run() { return runCommandLine(2, arguments_.data()); }

  static std::string textOf(const char* path) {
    return getGenDataStore()->GetOroString(path, nullptr).toNarrow();
  }

  tests::AppWorld world_;
  OroAppMain application_;
  std::vector<OroString> arguments_ = tests::argumentsOf({"cowl", "-x"});
};

// All services there, as their names stand in the broker.
class FullFlow : public Flow {
 protected:
  FullFlow() {
    add("IGenApp", new tests::GenApp());
    add("ICommandAccess", new tests::CommandAccess());
    add("ICommandRegistration", new tests::CommandRegistration());
    add("IPrimitivesService", new tests::Primitives());
    add("IExitService", new tests::ExitService());
    add("IOroBatchProcessingService", new tests::BatchService());
    add("IOroOpenDoc", new tests::OpenDoc());
    add("IOroOpenOptions", new tests::OpenOptions());
    add("IFileSaveData", new tests::SaveData());
    add("IOroSaveDoc", new tests::SaveDoc());
    fileTypes_->writer = writer_.get();
    commandLine_->onParse = [this] { onOptions(); };
  }
  virtual void onOptions() {
    for (const auto& [path, text] : texts_) {
      getGenDataStore()->SetOroString(nullptr, path, OroString(text.c_str()));
    }
    for (const auto& [path, number] : numbers_) getGenDataStore()->SetInt(nullptr, path, number);
  }
  // What an option sets.
  void option(const char* path, const std::string& text) { texts_.emplace_back(path, text); }
  void option(const char* path, int number) { numbers_.emplace_back(path, number); }

  // The events from the one of that text on.
  tests::Events from(const std::string& first) {
    const auto place = std::find(events().begin(), events().end(), first);
    return {place, events().end()};
  }

  tests::CmdLine* commandLine_ = add("ICmdLine", new tests::CmdLine());
  tests::Doc* document_ = add("IOroDoc", new tests::Doc());
  tests::InfoBar* bar_ = add("IInfoBar", new tests::InfoBar());
  tests::ScriptEngine* engine_ = add("IScriptEngine", new tests::ScriptEngine());
  tests::FileTypes* fileTypes_ = add("IFileTypeService", new tests::FileTypes());
  IPtr<tests::Writer> writer_{new tests::Writer()};

 private:
  std::vector<std::pair<const char*, std::string>> texts_;
  std::vector<std::pair<const char*, int>> numbers_;
};

TEST_F(FullFlow, DoesNothingMoreThanStartingWithoutFiles) {
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), ElementsAre("prepare", "registerCommands", "commandsRegistered",
                                    "parse 2 '-x'", "makeDocument"));
}

TEST_F(FullFlow, OpensRunsTheScriptAndSavesInThisOrder) {
  option(kInputFile, "in.xyz");
  option(kScript, "do.py");
  option(kOutputFile, "out.xyz");
  document_->objects = {new tests::DocObject("A"), new tests::DocObject("B")};
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(
      events(),
      ElementsAre("prepare", "registerCommands", "commandsRegistered", "parse 2 '-x'",
                  "makeDocument", "startCommand 'Open File'", "setMode 1", "setText 0 ''",
                  "open 'in.xyz'", "with options", "quiet 1", "stopCommand", "runScript 'do.py'",
                  "arguments ''", "setContinue 1", "startCommand 'Save File'", "setPath 'out.xyz'",
                  "writerFor", "setSaveData", "prepare 'out.xyz'", "setStatus 5", "objects 2000",
                  "addObject 'A'", "addObject 'B'", "save 5 'out.xyz'", "with writer",
                  "stopCommand", "setSaveData null"));
}

TEST_F(FullFlow, TellsEachStepToWhoeverGathersTheOutcome) {
  add("IOroRunOutcome", new tests::RunOutcome());
  option(kInputFile, "in.xyz");
  option(kScript, "do.py");
  option(kOutputFile, "out.xyz");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(tests::eventsLike({"step ", "run", "open", "save", "stopCommand"}),
              ElementsAre("step 1 begun 'in.xyz'", "open 'in.xyz'", "stopCommand", "step 1 ended 1",
                          "step 2 begun 'do.py'", "runScript 'do.py'", "step 2 ended 0",
                          "step 3 begun 'out.xyz'", "save 5 'out.xyz'", "stopCommand",
                          "step 3 ended 1", "run ended"))
      << "the doubles neither open nor save";
}

TEST_F(FullFlow, TellsThatNothingWasToDo) {
  add("IOroRunOutcome", new tests::RunOutcome());
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(tests::eventsLike({"step", "run"}), ElementsAre("run ended"));
}

TEST_F(FullFlow, TellsAScriptThatFailed) {
  add("IOroRunOutcome", new tests::RunOutcome());
  option(kScript, "do.py");
  engine_->onRun = [] { tests::setText(kScriptError, "line 1"); };
  EXPECT_EQ(run(), 1);
  EXPECT_THAT(events(), Contains("step 2 ended 1"));
}

TEST_F(Flow, TellsStepsThatNobodyCanDo) {
  add("IOroRunOutcome", new tests::RunOutcome());
  declareCommandLineSettings(*getGenDataStore());
  tests::setText(kInputFile, "in.xyz");
  tests::setText(kScript, "do.py");
  tests::setText(kOutputFile, "out.xyz");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(tests::eventsLike({"step "}),
              ElementsAre("step 1 begun 'in.xyz'", "step 1 ended 2", "step 2 begun 'do.py'",
                          "step 2 ended 2", "step 3 begun 'out.xyz'", "step 3 ended 2"));
}

TEST_F(Flow, TellsABatchThatNobodyCanRun) {
  add("IOroRunOutcome", new tests::RunOutcome());
  declareCommandLineSettings(*getGenDataStore());
  tests::setNumber(kBatch, 1);
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), ElementsAre("step 4 begun ''", "step 4 ended 2", "run ended"));
}

TEST_F(FullFlow, CommandsGoByTheApplicationMainObject) {
  option(kInputFile, "in.xyz");
  run();
  EXPECT_EQ(bar_->key, static_cast<const void*>(&application_));
}

TEST_F(FullFlow, ARefusedCommandLineIsReportedAndEndsTheProcessWithZero) {
  commandLine_->accepts = false;
  EXPECT_EQ(run(), 1);
  EXPECT_THAT(events(), ElementsAre("prepare", "registerCommands", "commandsRegistered",
                                    "parse 2 '-x'", "exit 0"));
  EXPECT_EQ(world_.boxText(), u"ERROR:\nwhat is -x?");
}

TEST_F(FullFlow, ARefusedCommandLineNeverReachesTheLog) {
  const tests::TempFolder folder;
  commandLine_->accepts = false;
  option(kLogFile, folder.file("log").string());
  run();
  EXPECT_EQ(headlesstest::attachedService(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(folder.file("log")));
}

TEST_F(FullFlow, ABatchTakesThePlaceOfOpenScriptAndSave) {
  option(kInputFile, "in.xyz");
  option(kScript, "do.py");
  option(kOutputFile, "out.xyz");
  option(kBatch, -1);
  engine_->onRun = [] { tests::setText(kScriptError, "broken"); };
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), ElementsAre("prepare", "registerCommands", "commandsRegistered",
                                    "parse 2 '-x'", "makeDocument", "batch"));
}

TEST_F(FullFlow, AFailedScriptMakesTheResultOneAndTheFileIsSaved) {
  option(kScript, "do.py");
  option(kOutputFile, "out.xyz");
  engine_->onRun = [] { tests::setText(kScriptError, "broken"); };
  EXPECT_EQ(run(), 1);
  EXPECT_THAT(events(), Contains("save 5 'out.xyz'"));
}

TEST_F(FullFlow, AScriptMayChooseWhereToSave) {
  option(kScript, "do.py");
  engine_->onRun = [] { tests::setText(kOutputFile, "chosen.xyz"); };
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), Contains("save 5 'chosen.xyz'"));
}

TEST_F(FullFlow, AnErrorOfAnEarlierScriptDoesNotCountWithoutAScript) {
  tests::setText(kScriptError, "stale");
  option(kInputFile, "in.xyz");
  EXPECT_EQ(run(), 0);
}

TEST_F(FullFlow, TheNativeFileIsNotPreparedAndNotWalked) {
  option(kOutputFile, "out.cwl");
  document_->objects = {new tests::DocObject("A")};
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(from("setPath 'out.cwl'"),
              ElementsAre("setPath 'out.cwl'", "writerFor", "setSaveData", "setStatus 1015",
                          "save 1015 'out.cwl'", "with writer", "stopCommand", "setSaveData null"));
}

TEST_F(FullFlow, TheNativeExtensionIsComparedExactly) {
  option(kOutputFile, "out.CWL");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), IsSupersetOf({"prepare 'out.CWL'", "setStatus 5"}));
}

TEST_F(FullFlow, CodesFromAThousandOnAreNotWalked) {
  for (const int32_t code : {999, 1000, 1001, 1015}) {
    events().clear();
    writer_->code = code;
    tests::setText(kOutputFile, "out.xyz");
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(events(), Contains("setStatus " + std::to_string(code)));
    EXPECT_THAT(events(), Contains("save " + std::to_string(code) + " 'out.xyz'"));
    if (code < 1000) {
      EXPECT_THAT(events(), Contains("objects 2000"));
    } else {
      EXPECT_THAT(events(), Not(Contains("objects 2000")));
    }
  }
}

TEST_F(FullFlow, HandsOverWhatTheWriterTakesAndTheWorldOnlyWithDataThatSaysSo) {
  option(kOutputFile, "out.xyz");
  auto* const wanted = new tests::WorldData();
  auto* const excluded = new tests::WorldData();
  excluded->excluded = true;
  document_->objects = {new tests::DocObject("Camera"),  // not taken by the writer
                        new tests::DocObject("World"),   // no data
                        new tests::DocObject("World", excluded),
                        new tests::DocObject("World", new tests::Primitives()),  // other data
                        new tests::DocObject("world"),                           // an ordinary name
                        new tests::DocObject("World", wanted),
                        new tests::DocObject("Worlds")};
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(
      from("objects 2000"),
      ElementsAre("objects 2000", "addObject 'world'", "addObject 'World'", "addObject 'Worlds'",
                  "save 5 'out.xyz'", "with writer", "stopCommand", "setSaveData null"));
}

TEST_F(FullFlow, SavesWithoutObjectsWhereTheDocumentGivesNoWalk) {
  option(kOutputFile, "out.xyz");
  document_->hasIterator = false;
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(from("objects 2000"), ElementsAre("objects 2000", "save 5 'out.xyz'", "with writer",
                                                "stopCommand", "setSaveData null"));
}

TEST_F(FullFlow, WithoutAWriterNothingIsSavedBetweenTheRecords) {
  option(kOutputFile, "out.cwl");
  fileTypes_->writer = nullptr;
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(
      from("startCommand 'Save File'"),
      ElementsAre("startCommand 'Save File'", "setPath 'out.cwl'", "writerFor", "stopCommand"));
}

TEST_F(FullFlow, AWriterThatCannotPrepareSavesTheNativeFileAlone) {
  fileTypes_->writer = new tests::OldWriter();
  option(kOutputFile, "out.xyz");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(from("startCommand 'Save File'"),
              ElementsAre("startCommand 'Save File'", "setPath 'out.xyz'", "writerFor",
                          "setSaveData", "stopCommand", "setSaveData null"));
  events().clear();
  option(kOutputFile, "out.cwl");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), IsSupersetOf({"setStatus 1015", "save 1015 'out.cwl'"}));
}

TEST_F(FullFlow, TurnsFileNamesIntoPaths) {
  option(kInputFile, "dir/in.xyz");
  option(kOutputFile, "dir/out.xyz");
  run();
  EXPECT_THAT(events(), IsSupersetOf({"open 'dir\\in.xyz'", "setPath 'dir\\out.xyz'"}));
}

// --- Services that are not there.

TEST_F(Flow, RunsWithNoServicesAtAll) {
  EXPECT_EQ(run(), 0);
  EXPECT_TRUE(events().empty());
  EXPECT_NE(headlesstest::attachedService(), nullptr);
}

TEST_F(Flow, TellsThatThereIsNoScriptEngineAmongTheRecordsOfAnAbsentOpenAndSave) {
  const tests::TempFolder folder;
  tests::setText(kLogFile, folder.file("log").string().c_str());
  tests::setText(kInputFile, "in.xyz");
  tests::setText(kScript, "do.py");
  tests::setText(kOutputFile, "out.xyz");
  tests::setText(kScriptError, "stale");
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(tests::plainLines(folder.read("log")),
            "<log>\n<start cmd=\"Open File\"/>\n<stop cmd=\"Open File\"/>\n"
            "<Error=\"There is no script engine to run do.py\"/>\n"
            "<start cmd=\"Save File\"/>\n<stop cmd=\"Save File\"/>\n</log>\n");
}

// The person at the prompt sees what went wrong: in the records, or else on standard error.
TEST_F(Flow, PrintsErrorsWhereNoRecordsAreKept) {
  tests::setText(kScript, "do.py");
  testing::internal::CaptureStderr();
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(tests::plainLines(testing::internal::GetCapturedStderr()),
            "There is no script engine to run do.py\n");
}

TEST_F(Flow, PrintsErrorsWhereTheRecordsHaveNoPlace) {
  const tests::TempFolder folder;
  tests::setText(kScript, "do.py");
  tests::setText(kLogFile, folder.file("absent/log").string().c_str());
  testing::internal::CaptureStderr();
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(tests::plainLines(testing::internal::GetCapturedStderr()),
            "There is no script engine to run do.py\n");
}

TEST_F(Flow, PrintsNothingWhereRecordsAreKept) {
  const tests::TempFolder folder;
  tests::setText(kScript, "do.py");
  tests::setText(kLogFile, folder.file("log").string().c_str());
  testing::internal::CaptureStderr();
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_NE(folder.read("log").find("There is no script engine"), std::string::npos);
}

TEST_F(Flow, SavesWithoutSaveDataOrWriterNothing) {
  tests::setText(kOutputFile, "out.xyz");
  add("IOroSaveDoc", new tests::SaveDoc());
  EXPECT_EQ(run(), 0);
  auto* const types = add("IFileTypeService", new tests::FileTypes());
  types->writer = new tests::Writer();
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), ElementsAre("writerFor"));
}

TEST_F(Flow, AsksTheWriterWithoutASaveService) {
  tests::setText(kOutputFile, "out.xyz");
  add("IFileSaveData", new tests::SaveData());
  add("IFileTypeService", new tests::FileTypes())->writer = new tests::Writer();
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), ElementsAre("setPath 'out.xyz'", "writerFor", "setSaveData",
                                    "prepare 'out.xyz'", "setStatus 5", "setSaveData null"));
}

TEST_F(Flow, OpensWithoutOptions) {
  tests::setText(kInputFile, "in.xyz");
  add("IOroOpenDoc", new tests::OpenDoc());
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), Contains("without options"));
}

TEST_F(Flow, DoesWithAnInfoBarThatCannotShowCommands) {
  add("IInfoBar", new tests::PlainInfoBar());
  add("IOroOpenDoc", new tests::OpenDoc());
  tests::setText(kInputFile, "in.xyz");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(events(), Contains("open 'in.xyz'"));
}

TEST_F(Flow, GoesOnWithoutABatchService) {
  tests::setNumber(kBatch, 1);
  EXPECT_EQ(run(), 0);
}

void assertion(void*, const char* expression, const char* file, int32_t line) {
  event(std::string(expression) + " " + file + " " + std::to_string(line));
}

TEST_F(Flow, AssertsThatSomebodyCanEndTheProcessAfterARefusedCommandLine) {
  add("ICmdLine", new tests::CmdLine())->accepts = false;
  kelSetAssertCallback(assertion, nullptr);
  EXPECT_EQ(run(), 1);
  EXPECT_THAT(events(), ElementsAre("parse 2 '-x'", "theExitService gui/apps/main/oroappmain 711"));
}

// --- Settings and marks.

TEST_F(Flow, MarksTheRunForAllToSee) {
  EXPECT_EQ(oroCommandLineFlag(), 0);
  std::string seen;
  add("IGenApp", new tests::GenApp())->onPrepare = [&] {
    seen = std::to_string(oroCommandLineFlag()) + " " +
           std::to_string(getGenDataStore()->GetInt(kCommandLine, nullptr));
  };
  run();
  EXPECT_EQ(seen, "1 1");
  EXPECT_EQ(oroCommandLineFlag(), 1);
  EXPECT_EQ(getGenDataStore()->GetInt(kCommandLine, nullptr), 1);
}

// A writer that counts what is journalled.
class Journal : public KelDataVisitor {
 public:
  Journal() : KelDataVisitor(kWriting) {}
  bool VisitItem(IKelDataItem*) override {
    event("journalled");
    return true;
  }
};

TEST_F(Flow, JournalsNothing) {
  IDataStore& store = *getGenDataStore();
  store.CreateDirectory("GUI");
  store.CreateInt(kCommandLine, 0, 0, 1, 3);
  store.CreateInt("GUI/Other", 0, 0, 1, 3);
  store.SetWriter(new Journal());
  store.SetInt(nullptr, "GUI/Other", 1);
  EXPECT_THAT(events(), ElementsAre("journalled"));
  add("IGenApp", new tests::GenApp())->onPrepare = [&] { store.SetInt(nullptr, "GUI/Other", 0); };
  run();
  store.SetInt(nullptr, "GUI/Other", 1);  // nobody switches it on again
  store.SetWriter(nullptr);
  EXPECT_THAT(events(), ElementsAre("journalled", "prepare"));
}

TEST_F(Flow, DeclaresItsSettingsUnsaved) {
  run();
  IDataStore& store = *getGenDataStore();
  for (const char* path : {kCommandLine, kProgressWindow, kLogFile, kBatch, kScript, kInputFile,
                           kOutputFile, kExitOnMacroEnd, kScriptError}) {
    EXPECT_TRUE(store.Exists(path)) << path;
    EXPECT_EQ(store.GetFlags(path), 0u) << path;
  }
  int32_t low = 0;
  int32_t high = 0;
  store.GetIntRange(kBatch, low, high, nullptr);
  EXPECT_EQ(low, INT32_MIN);
  EXPECT_EQ(high, INT32_MAX);
  EXPECT_EQ(store.GetCapacity(kInputFile, nullptr), 32767);
  EXPECT_EQ(store.GetCapacity(kScriptError, nullptr), 1048576);
}

TEST_F(Flow, LeavesWhatAComponentDeclaredFirst) {
  IDataStore& store = *getGenDataStore();
  store.CreateDirectory("Scripting");
  store.CreateOroString(kInputFile, 100, OroString("mine.xyz"), 0);
  run();
  EXPECT_EQ(store.GetCapacity(kInputFile, nullptr), 100);
  EXPECT_EQ(textOf(kInputFile), "mine.xyz");
}

// A reader with a settings document that names an input file and a batch.
class Document : public KelDataVisitor {
 public:
  Document() : KelDataVisitor(kReading) {}
  bool VisitOroString(IKelDataOroString* item) override {
    item->Set(OroString("from the document"));
    return true;
  }
  bool VisitInt(IKelDataInt* item) override {
    item->Set(7);
    return true;
  }
};

TEST_F(Flow, ASettingsDocumentCanDriveIt) {
  getGenDataStore()->SetReader(new Document());
  declareCommandLineSettings(*getGenDataStore());
  getGenDataStore()->SetReader(nullptr);
  for (const char* path : {kLogFile, kScript, kInputFile, kOutputFile}) {
    EXPECT_EQ(textOf(path), "from the document") << path;
  }
  for (const char* path : {kProgressWindow, kBatch, kExitOnMacroEnd}) {
    EXPECT_EQ(getGenDataStore()->GetInt(path, nullptr), 7) << path;
  }
  EXPECT_EQ(textOf(kScriptError), "");
  EXPECT_EQ(getGenDataStore()->GetInt(kCommandLine, nullptr), 0);
}

TEST_F(Flow, RealServicesWinOverTheHeadlessOne) {
  add("IInfoBar", new tests::InfoBar());
  run();
  SPtr<IInfoBar> bar;
  EXPECT_STREQ(bar.object()->getClassName(), "InfoBar");
  SPtr<IGuiCursor> cursor;
  EXPECT_STREQ(cursor.object()->getClassName(), "KelMockService");
}

}  // namespace
