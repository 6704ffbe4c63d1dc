// A batch with doubles for what opens, runs scripts and saves.

#include "components/batch/batchprocessor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "base/basic/kelcustomdatastore.h"
#include "interfaces/IFileUtil.h"
#include "interfaces/IGuiBusyState.h"
#include "interfaces/IOroErrorListener.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orosystemtext.h"
#include "tests/gui/apps/main/flowdoubles.h"
#include "tests/support/fakebroker.h"
#include "tests/tempfolder.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::event;
using tests::events;

constexpr const char* kInput = "Advanced/Batch Processing/Input Directory";
constexpr const char* kOutput = "Advanced/Batch Processing/Output Directory";
constexpr const char* kPrefix = "Advanced/Batch Processing/Prefix";
constexpr const char* kPostfix = "Advanced/Batch Processing/Postfix";
constexpr const char* kStamp = "Advanced/Batch Processing/Date and Time";
constexpr const char* kActiveOnly = "Advanced/Batch Processing/Save Active Only";
constexpr const char* kScript = "Scripting/Startup Macro";
constexpr const char* kScriptError = "Python/Error String";
constexpr const char* kInterrupted = "Python/Interrupted";

// Files that are there, in the order in which a system may list them.
struct Files : tests::Double<Files, IFileUtil> {
  static constexpr const char* className() { return "Files"; }
  std::vector<const char*> names;
  bool isFile(const OroPath&) override { return false; }
  bool removeFile(const OroPath&) override { return false; }
  bool renameFile(const OroPath&, const OroPath&) override { return true; }
  bool fileDate(const OroPath&, IFileDate&) override { return false; }
  void listFiles(const OroPath&, OroArray<OroPath>& out, const OroString& pattern, int32_t recurse,
                 int32_t mode) override {
    if (!pattern.isEmpty() || recurse != 0 || mode != 1) return;
    for (const char* name : names) out.add(OroPath(name));
  }
  bool isDirectory(const OroPath& path) override {
    OroPath slashed(path);
    std::u16string text(slashed.wideText());
    std::replace(text.begin(), text.end(), u'\\', u'/');
    return std::filesystem::is_directory(std::filesystem::path(text));
  }
  bool makeDirectories(const OroPath&) override { return false; }
  bool removeDirectory(const OroPath&, bool) override { return false; }
};

// Opens what it is not told to fail on.
struct Opener : tests::Double<Opener, IOroOpenDoc> {
  static constexpr const char* className() { return "Opener"; }
  std::set<std::string> failing;
  std::function<void(const OroPath&)> onFailure = [](const OroPath&) {};
  int32_t mode = -1;
  bool open(const OroPath& path, IOroOpenOptions*, int32_t quiet) override {
    event("open " + std::to_string(mode) + " " + std::to_string(quiet), path.fileName());
    if (failing.count(path.fileName().toNarrow()) == 0) return true;
    onFailure(path);
    return false;
  }
  void setMode(int32_t value) override { mode = value; }
  void setText(int32_t, const OroString&) override {}
};

// Makes the file that it is to save, as a whole or not at all.
struct Saver : tests::Double<Saver, IOroSaveDoc> {
  static constexpr const char* className() { return "Saver"; }
  std::set<std::string> failing;
  std::function<void()> onFailure = [] {};
  const tests::TempFolder* folder = nullptr;
  bool save(IFileSaveData* saveData, IWriteScene*, int32_t flags, int32_t options) override {
    const std::string name = saveData->path().fileName().toNarrow();
    event("save " + std::to_string(saveData->status() + flags + options),
          saveData->path().fileName());
    if (failing.count(name) != 0) {
      onFailure();
      return false;
    }
    folder->write(std::filesystem::path("out") / name, "saved");
    return true;
  }
};

struct Busy : tests::Double<Busy, IGuiBusyState> {
  static constexpr const char* className() { return "Busy"; }
  std::vector<const void*> running;
  void startBusy(const OroString& text, int32_t, const void* id) override {
    running.push_back(id);
    event("start", text);
  }
  void startBusy2(const OroString&, int32_t, const void*) override {}
  void startBusy3(const OroString&, int32_t, const void*) override {}
  void startBusy4(const OroString&, int32_t, const void*) override {}
  void stopBusy(int32_t, int32_t, const void* id) override {
    event(!running.empty() && running.back() == id ? "stop" : "stop of another");
    if (!running.empty()) running.pop_back();
  }
  void stopBusy2(int32_t, int32_t, const void*) override {}
  void setBusyText(const OroString& text) override { event("summary", text); }
  void currentAction(OroString&) override {}
  void setPercent(int32_t) override {}
};

struct Bar : tests::Double<Bar, IInfoBar> {
  static constexpr const char* className() { return "Bar"; }
  std::vector<int32_t> percents;
  void setStatusText(const OroString&) override {}
  void clearStatusText() override {}
  void setPercent(int32_t percent) override { percents.push_back(percent); }
  void clearPercent() override {}
  void setFraction(float) override {}
  void setFractionFor(const void*, float) override {}
};

struct Errors : tests::Double<Errors, IOroErrorService> {
  static constexpr const char* className() { return "Errors"; }
  std::vector<std::string> texts;
  std::vector<IOroErrorListener*> listeners;
  void addListener(IOroErrorListener* listener) override { listeners.push_back(listener); }
  void removeListener(IOroErrorListener* listener) override { std::erase(listeners, listener); }
  void report(const OroString& text, int32_t severity, const KelCString& detail) override {
    texts.push_back((severity == 1 ? "error: " : "warning: ") + std::string(text.toUtf8()));
    for (IOroErrorListener* const listener : listeners) listener->onError(text, &severity, detail);
  }
  void setFlag(const KelCString&, bool) override {}
  bool getFlag(const KelCString&) override { return false; }
  void removeWinBoxDisplay() override {}
  void pushContext(const OroString&) override {}
  void popContext() override {}
  void getContext(OroStringArray&) override {}
  void clearContext() override {}
  bool setActive(bool) override { return true; }
  bool isActive() override { return true; }
};

struct Outcome : tests::Double<Outcome, IOroRunOutcome> {
  static constexpr const char* className() { return "Outcome"; }
  std::vector<std::string> steps;
  void stepBegun(int32_t, const OroString&) override {}
  void stepEnded(int32_t step, int32_t result) override {
    steps.push_back(std::to_string(step) + (result == kOroRunDone ? "+" : "-"));
  }
  void runEnded() override {}
  int32_t exitStatus() override { return -1; }
};

class BatchProcessorTest : public testing::Test {
 protected:
  BatchProcessorTest() {
    events().clear();
    std::filesystem::create_directory(folder_.file("in"));
    files_->names = {"b10.xyz", "b9.xyz", "a.xyz"};
    saver_->folder = &folder_;
    fileTypes_->writer = writer_.get();
    document_->objects = {new tests::DocObject("Points")};
    store_->CreateDirectory("Python");
    store_->CreateOroString(kScriptError, 1000, OroString::empty(), 0);
    option(kInput, pathText("in"));
    option(kOutput, pathText("out"));
  }

  template <class T>
  T* add(const char* name, T* object) {
    broker_.registerService(KelCString::borrow(name), object);
    return object;
  }
  OroString pathText(const char* name) { return OroString(folder_.file(name).u16string().c_str()); }
  void option(const char* path, const OroString& text) {
    store_->CreateDirectory("Advanced");
    store_->CreateDirectory("Advanced/Batch Processing");
    store_->CreateDirectory("Scripting");
    store_->CreateOroString(path, 32767, OroString::empty(), 0);
    store_->SetOroString(nullptr, path, text);
  }
  void option(const char* path, int32_t number) {
    store_->CreateInt(path, 0, -100, 100, 0);
    store_->SetInt(nullptr, path, number);
  }
  // `interrupted` is the file at whose script the user interrupts.
  void useScript(std::set<std::string> failing = {}, std::string interrupted = {}) {
    option(kScript, OroString(u"do.py"));
    engine_ = add("IScriptEngine", new tests::ScriptEngine());
    engine_->onRun = [this, failing, interrupted] {
      option(kInterrupted, lastOpened() == interrupted ? 1 : 0);
      const bool fails = failing.count(lastOpened()) != 0;
      store_->SetOroString(
          nullptr, kScriptError,
          fails ? OroString(u"Traceback\n  line 3\nValueError: no points\n") : OroString());
    };
  }
  std::string lastOpened() {
    for (auto at = events().rbegin(); at != events().rend(); ++at) {
      if (at->rfind("open ", 0) == 0)
        return at->substr(at->find('\'') + 1, at->size() - at->find('\'') - 2);
    }
    return {};
  }
  // The events of these kinds.
  std::vector<std::string> of(const std::vector<std::string>& kinds) {
    std::vector<std::string> some;
    for (const std::string& text : events()) {
      for (const std::string& kind : kinds) {
        if (text.rfind(kind, 0) == 0) some.push_back(text);
      }
    }
    return some;
  }
  std::vector<std::string> saved() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.file("out"))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // Runs the batch and gives what it printed.
  std::string run() {
    testing::internal::CaptureStdout();
    IPtr<BatchProcessor>(new BatchProcessor)->run();
    return testing::internal::GetCapturedStdout();
  }

  tests::TempFolder folder_;
  tests::FakeBroker broker_;
  IDataStore* store_ = add("IDataStore", new KelCustomDataStore);
  Files* files_ = add("IFileUtil", new Files);
  Opener* opener_ = add("IOroOpenDoc", new Opener);
  Saver* saver_ = add("IOroSaveDoc", new Saver);
  Busy* busy_ = add("IGuiBusyState", new Busy);
  Bar* bar_ = add("IInfoBar", new Bar);
  Errors* errors_ = add("IOroErrorService", new Errors);
  Outcome* outcome_ = add("IOroRunOutcome", new Outcome);
  tests::Doc* document_ = add("IOroDoc", new tests::Doc);
  tests::FileTypes* fileTypes_ = add("IFileTypeService", new tests::FileTypes);
  tests::SaveData* saveData_ = add("IFileSaveData", new tests::SaveData);
  tests::ScriptEngine* engine_ = nullptr;
  IPtr<tests::Writer> writer_{new tests::Writer};
};

TEST_F(BatchProcessorTest, OpensAndSavesEachFileInNaturalOrder) {
  run();
  EXPECT_THAT(of({"open", "save"}),
              ElementsAre("open 0 1 'a.xyz'", "save 5 'a.xyz'", "open 0 1 'b9.xyz'",
                          "save 5 'b9.xyz'", "open 0 1 'b10.xyz'", "save 5 'b10.xyz'"));
  EXPECT_THAT(saved(), ElementsAre("a.xyz", "b10.xyz", "b9.xyz"));
  EXPECT_THAT(errors_->texts, IsEmpty());
  EXPECT_THAT(outcome_->steps, ElementsAre("1+", "3+", "1+", "3+", "1+", "3+", "4+"));
}

TEST_F(BatchProcessorTest, RunsTheScriptBetweenOpeningAndSaving) {
  useScript();
  files_->names = {"a.xyz"};
  run();
  EXPECT_THAT(of({"open", "runScript", "arguments", "setContinue", "save"}),
              ElementsAre("open 0 1 'a.xyz'", "runScript 'do.py'", "arguments ''", "setContinue 1",
                          "save 5 'a.xyz'"));
  EXPECT_THAT(outcome_->steps, ElementsAre("1+", "2+", "3+", "4+"));
}

TEST_F(BatchProcessorTest, WithoutAScriptTheEngineIsNotAsked) {
  add("IScriptEngine", new tests::ScriptEngine());
  run();
  EXPECT_THAT(of({"runScript"}), IsEmpty());
}

TEST_F(BatchProcessorTest, HandsTheObjectsOfTheDocumentToTheWriter) {
  files_->names = {"a.xyz"};
  document_->objects = {new tests::DocObject("World"), new tests::DocObject("Camera"),
                        new tests::DocObject("Points")};
  run();
  EXPECT_THAT(
      of({"setPath", "writerFor", "setSaveData", "prepare", "setStatus", "objects", "addObject"}),
      testing::SizeIs(8));
  EXPECT_THAT(of({"objects", "addObject"}), ElementsAre("objects 2000", "addObject 'Points'"));
  EXPECT_EQ(writer_->saveData, nullptr);
}

TEST_F(BatchProcessorTest, AsksForTheActiveObjectsAloneWhereThatIsWanted) {
  files_->names = {"a.xyz"};
  option(kActiveOnly, 1);
  run();
  EXPECT_THAT(of({"objects"}), ElementsAre("objects 1000"));
}

TEST_F(BatchProcessorTest, ANativeFileIsSavedWithoutTheWriterChoosing) {
  files_->names = {"a.cwl"};
  run();
  EXPECT_THAT(of({"prepare", "objects", "setStatus", "save"}),
              ElementsAre("setStatus 1015", "save 1015 'a.cwl'"));
}

TEST_F(BatchProcessorTest, AnOtherCodeOfTheWriterHandsOverNothing) {
  files_->names = {"a.xyz"};
  writer_->code = 1000;
  run();
  EXPECT_THAT(of({"objects", "save"}), ElementsAre("save 1000 'a.xyz'"));
}

TEST_F(BatchProcessorTest, OneFileThatDoesNotOpenStopsNothing) {
  opener_->failing = {"b9.xyz"};
  const std::string output = run();
  EXPECT_THAT(saved(), ElementsAre("a.xyz", "b10.xyz"));
  EXPECT_THAT(outcome_->steps, ElementsAre("1+", "3+", "1-", "1+", "3+", "4+"));
  EXPECT_EQ(output, "Batch of 3 files: 2 saved, 1 failed\n  b9.xyz: not opened\n");
}

TEST_F(BatchProcessorTest, OneScriptThatFailsStopsNothingAndSavesNothingOfItsFile) {
  useScript({"a.xyz"});
  const std::string output = run();
  EXPECT_THAT(saved(), ElementsAre("b10.xyz", "b9.xyz"));
  EXPECT_THAT(errors_->texts,
              ElementsAre("error: The script failed on the file a.xyz: ValueError: no points"));
  EXPECT_EQ(
      output,
      "Batch of 3 files: 2 saved, 1 failed\n  a.xyz: the script failed: ValueError: no points\n");
}

TEST_F(BatchProcessorTest, OneFileThatIsNotSavedStopsNothing) {
  saver_->failing = {"a.xyz"};
  const std::string output = run();
  EXPECT_THAT(saved(), ElementsAre("b10.xyz", "b9.xyz"));
  EXPECT_THAT(outcome_->steps, Contains("3-"));
  EXPECT_EQ(output, "Batch of 3 files: 2 saved, 1 failed\n  a.xyz: not saved\n");
}

TEST_F(BatchProcessorTest, TheReasonOfAFailureIsTheFirstErrorOfItsFileInOneLine) {
  opener_->failing = {"b9.xyz"};
  opener_->onFailure = [this](const OroPath& path) {
    errors_->report(OroString(u"a warning"), 0, KelCString());
    OroString text = oroShownPath(path);
    text.append(", line 3: \xC2\xA7 is no number\nand more");
    errors_->report(text, 1, KelCString());
    errors_->report(OroString(u"the file cannot be read"), 1, KelCString());
  };
  saver_->failing = {"a.xyz"};
  saver_->onFailure = [this] { errors_->report(OroString(u"The disk is full"), 1, KelCString()); };
  const std::string output = run();
  EXPECT_THAT(output, testing::StartsWith("Batch of 3 files: 1 saved, 2 failed\n"
                                          "  a.xyz: not saved: The disk is full\n"
                                          "  b9.xyz: not opened: line 3: "));
  EXPECT_THAT(output, testing::EndsWith(" is no number\n")) << "without what stands behind it";
  EXPECT_THAT(errors_->listeners, IsEmpty());
}

TEST_F(BatchProcessorTest, AReasonIsNotKeptForTheNextFile) {
  opener_->failing = {"a.xyz", "b9.xyz"};
  opener_->onFailure = [this](const OroPath& path) {
    if (path.fileName() == "a.xyz") errors_->report(OroString(u"no"), 1, KelCString());
  };
  EXPECT_EQ(run(),
            "Batch of 3 files: 1 saved, 2 failed\n  a.xyz: not opened: no\n"
            "  b9.xyz: not opened\n");
}

// The user wants all of it to end, not the one script.
TEST_F(BatchProcessorTest, AnInterruptedScriptEndsTheBatchBehindItsFile) {
  useScript({"b9.xyz"}, "b9.xyz");
  EXPECT_EQ(run(),
            "Batch of 3 files, interrupted: 1 saved, 1 failed, 1 not begun\n"
            "  b9.xyz: the script failed: ValueError: no points\n  b10.xyz: not begun\n");
  EXPECT_THAT(saved(), ElementsAre("a.xyz"));
  EXPECT_THAT(errors_->texts.back(),
              "error: The batch was interrupted at the file b9.xyz. Files not begun: 1");
  EXPECT_THAT(outcome_->steps, ElementsAre("1+", "2+", "3+", "1+", "2-", "4-"));
  EXPECT_THAT(of({"summary"}),
              ElementsAre("summary 'Batch of 3 files, interrupted: 1 saved, 1 failed, 1 not "
                          "begun'"));
}

TEST_F(BatchProcessorTest, AScriptThatEndsWellAfterAnInterruptEndsTheBatchToo) {
  useScript({}, "a.xyz");
  EXPECT_EQ(run(),
            "Batch of 3 files, interrupted: 1 saved, 0 failed, 2 not begun\n"
            "  b9.xyz: not begun\n  b10.xyz: not begun\n");
  EXPECT_THAT(saved(), ElementsAre("a.xyz"));
  EXPECT_THAT(outcome_->steps, ElementsAre("1+", "2+", "3+", "4-"));
}

TEST_F(BatchProcessorTest, AnInterruptOfTheLastScriptLeavesNothingUndone) {
  useScript({}, "b10.xyz");
  EXPECT_EQ(run(), "Batch of 3 files: 3 saved, 0 failed\n");
  EXPECT_THAT(outcome_->steps.back(), "4+");
}

TEST_F(BatchProcessorTest, AnInterruptOfAnEarlierScriptDoesNotCountWithoutAScript) {
  option(kInterrupted, 1);
  EXPECT_EQ(run(), "Batch of 3 files: 3 saved, 0 failed\n");
}

TEST_F(BatchProcessorTest, AllMayFail) {
  opener_->failing = {"a.xyz", "b9.xyz", "b10.xyz"};
  EXPECT_EQ(run(),
            "Batch of 3 files: 0 saved, 3 failed\n  a.xyz: not opened\n  b9.xyz: not opened\n"
            "  b10.xyz: not opened\n");
}

TEST_F(BatchProcessorTest, NamesGetPrefixPostfixAndStamp) {
  files_->names = {"a.xyz"};
  option(kPrefix, OroString(u"p-"));
  option(kPostfix, OroString(u"-q"));
  option(kStamp, 3);
  run();
  ASSERT_EQ(saved().size(), 1u);
  EXPECT_THAT(saved()[0], testing::MatchesRegex("p-a-q_........_......\\.xyz"));
}

TEST_F(BatchProcessorTest, AFileThatIsThereStaysAndTheNewOneGetsANumberAndAWarning) {
  std::filesystem::create_directory(folder_.file("out"));
  folder_.write("out/a.xyz", "old");
  files_->names = {"a.xyz"};
  EXPECT_EQ(run(), "Batch of 1 files: 1 saved, 0 failed\n");
  EXPECT_EQ(folder_.read("out/a.xyz"), "old");
  EXPECT_EQ(folder_.read("out/a_2.xyz"), "saved");
  EXPECT_THAT(errors_->texts,
              ElementsAre("warning: There is a file a.xyz already, so a_2.xyz is written"));
}

TEST_F(BatchProcessorTest, ShowsTheBatchEachFileAndThePercentOfAllFiles) {
  opener_->failing = {"b9.xyz"};
  run();
  EXPECT_THAT(of({"start", "stop", "summary"}),
              ElementsAre("start 'Batch of 3 files'", "start 'File 1 of 3: a.xyz'", "stop",
                          "start 'File 2 of 3: b9.xyz'", "stop", "start 'File 3 of 3: b10.xyz'",
                          "stop", "summary 'Batch of 3 files: 2 saved, 1 failed'", "stop"));
  EXPECT_EQ(bar_->percents, (std::vector<int32_t>{33, 66, 100}));
}

TEST_F(BatchProcessorTest, PrintsNothingAmongRecordsOnStandardOutput) {
  store_->CreateDirectory("GUI");
  option("GUI/CommandLine Log File", OroString(u"stdout"));
  EXPECT_EQ(run(), "");
  EXPECT_THAT(of({"summary"}), testing::SizeIs(1));
}

TEST_F(BatchProcessorTest, AnEmptyDirectoryIsAWarning) {
  files_->names = {};
  EXPECT_EQ(run(), "Batch of 0 files: 0 saved, 0 failed\n");
  ASSERT_EQ(errors_->texts.size(), 1u);
  EXPECT_THAT(errors_->texts[0], HasSubstr("warning: The directory "));
  EXPECT_THAT(outcome_->steps, ElementsAre("4+"));
}

// What cannot work for any file is one report, and nothing is opened.
TEST_F(BatchProcessorTest, DoesNotBeginWithoutItsDirectories) {
  option(kInput, OroString());
  run();
  option(kInput, pathText("in"));
  option(kOutput, OroString());
  run();
  EXPECT_THAT(errors_->texts,
              ElementsAre("error: A batch needs the options -inputDir and -outputDir",
                          "error: A batch needs the options -inputDir and -outputDir"));
  EXPECT_THAT(events(), IsEmpty());
  EXPECT_THAT(outcome_->steps, ElementsAre("4-", "4-"));
}

TEST_F(BatchProcessorTest, DoesNotBeginWithoutAnInputDirectoryThatExists) {
  option(kInput, pathText("absent"));
  EXPECT_EQ(run(), "");
  ASSERT_EQ(errors_->texts.size(), 1u);
  EXPECT_THAT(errors_->texts[0], HasSubstr("error: There is no directory "));
  EXPECT_FALSE(std::filesystem::exists(folder_.file("out")));
}

TEST_F(BatchProcessorTest, DoesNotBeginWhereTheOutputDirectoryCannotBeMade) {
  folder_.write("out", "a file");
  run();
  ASSERT_EQ(errors_->texts.size(), 1u);
  EXPECT_THAT(errors_->texts[0], HasSubstr("cannot be made"));
  EXPECT_THAT(of({"open"}), IsEmpty());
}

TEST_F(BatchProcessorTest, MakesTheOutputDirectoryWithItsParents) {
  option(kOutput, pathText("deep/er/out"));
  files_->names = {};
  run();
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file("deep/er/out")));
}

TEST_F(BatchProcessorTest, DoesNotBeginWithAPrefixThatLeadsElsewhere) {
  for (const char16_t* bad : {u"../", u"a\\b"}) {
    option(kPrefix, OroString(bad));
    run();
    option(kPrefix, OroString());
    option(kPostfix, OroString(bad));
    run();
    option(kPostfix, OroString());
  }
  EXPECT_EQ(errors_->texts.size(), 4u);
  EXPECT_THAT(of({"open"}), IsEmpty());
}

TEST_F(BatchProcessorTest, DoesNotBeginWithoutAnEngineForItsScript) {
  option(kScript, OroString(u"do.py"));
  run();
  EXPECT_THAT(errors_->texts, ElementsAre("error: There is no script engine to run do.py"));
  EXPECT_THAT(of({"open"}), IsEmpty());
}

TEST_F(BatchProcessorTest, SaysSoWhereNothingCanSave) {
  fileTypes_->writer = nullptr;
  files_->names = {"a.xyz"};
  EXPECT_THAT(run(), testing::StartsWith("Batch of 1 files: 0 saved, 1 failed\n"
                                         "  a.xyz: not saved: There is nothing to save the file "));
  ASSERT_EQ(errors_->texts.size(), 1u);
  EXPECT_THAT(errors_->texts[0], HasSubstr("There is nothing to save the file "));
}

TEST(BatchProcessorAlone, EndsWithoutAnyService) {
  tests::FakeBroker broker;
  IPtr<BatchProcessor> batch(new BatchProcessor);
  batch->run();
  EXPECT_GT(broker.serviceRequests, 0);
}

}  // namespace
