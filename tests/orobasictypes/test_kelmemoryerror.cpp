// The record, the message and the end of the process when memory is out.

#include "orobasictypes/kelmemoryerror.h"

#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interfaces/IGfxRenderer.h"
#include "interfaces/IMemChecker.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "platform/files.h"
#include "tests/orobasictypes/memoryworld.h"
#include "tests/support/slotnumber.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char16_t* kMessage =
    u"While running this function, you have run out of memory.\nThe application will close. After "
    u"restarting, please read\nthe online help about \"Memory Optimization\".";

// Tells four figures of its own while it is active.
class AskedChecker : public IMemChecker {
 public:
  static constexpr const char* className() { return "Checker"; }
  using Offers = OroOffers<AskedChecker, IMemChecker>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool IsActive() override { return active; }
  int32_t GetMemoryStatus(int64_t& free, int64_t& total, int64_t& swapFree, int64_t& swapTotal,
                          int32_t unit) override {
    free = 1;
    total = 22;
    swapFree = 333;
    swapTotal = unit;
    return 0;
  }
  int64_t GetProcessMemory(int32_t) override { return 5; }
  bool active = true;
};

// Writes what it hears into the events of the test.
class Errors : public IOroErrorService {
 public:
  explicit Errors(std::vector<std::string>& events) : events_(events) {}
  static constexpr const char* className() { return "Errors"; }
  using Offers = OroOffers<Errors, IOroErrorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void report(const OroString& text, int32_t severity, const KelCString& detail) override {
    events_.push_back("report " + std::to_string(severity) + " " + detail.c_str());
    if (std::u16string(text.wideText()) != kMessage) events_.push_back("another text");
  }
  void addListener(IOroErrorListener*) override {}
  void removeListener(IOroErrorListener*) override {}
  void setFlag(const KelCString&, bool) override {}
  bool getFlag(const KelCString&) override { return false; }
  void removeWinBoxDisplay() override {}
  void pushContext(const OroString&) override {}
  void popContext() override {}
  void getContext(OroStringArray&) override {}
  void clearContext() override {}
  bool setActive(bool) override { return true; }
  bool isActive() override { return true; }

 private:
  std::vector<std::string>& events_;
};

class Renderer : public IGfxRenderer {
 public:
  explicit Renderer(std::vector<std::string>& events) : events_(events) {}
  static constexpr const char* className() { return "Renderer"; }
  using Offers = OroOffers<Renderer, IGfxRenderer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void suspend() override { events_.push_back("suspend"); }
  void resume() override { events_.push_back("resume"); }
  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }

 private:
  std::vector<std::string>& events_;
};

class KelMemoryErrorTest : public tests::MemoryWorld {
 protected:
  std::string recordOf(int64_t attempted) {
    end([&] { kelWriteMemoryLog(attempted); });
    return record();
  }
};

constexpr const char* kSystemLines =
    "system free:         3000k\n"
    "system total:        8000k\n"
    "swap free:           4000k\n"
    "swap total:          9000k\n"
    "\n";

TEST_F(KelMemoryErrorTest, RecordWithoutAManager) {
  EXPECT_EQ(recordOf(1234567), std::string("attempted:        1234567b\n\n") + kSystemLines +
                                   "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RecordWithAManagerHasItsPagesInKilobytes) {
  addManager(0);
  EXPECT_EQ(recordOf(80), std::string("attempted:             80b\n\n") + kSystemLines +
                              "oromm core now:      2400k\n"
                              "oromm core limit:    4800k\n"
                              "oromm swap now:        72k\n"
                              "oromm swap limit: 9600000000k\n"
                              "\n");
}

TEST_F(KelMemoryErrorTest, RecordWithoutASizeHasNoLineForIt) {
  EXPECT_EQ(recordOf(0), std::string(kSystemLines) + "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RecordShowsWideAndImpossibleSizes) {
  EXPECT_EQ(recordOf(123456789012).substr(0, 33), "attempted:        123456789012b\n\n");
  EXPECT_EQ(recordOf(INT32_MIN).substr(0, 41), "attempted:        18446744071562067968b\n\n");
}

TEST_F(KelMemoryErrorTest, RecordOfAFreshBlockBeyondTwoGigabytes) {
  heap.refuseAbove = 1 << 20;
  void* block = nullptr;
  EXPECT_EQ(end([&] { kelMalloc(block, 4, 0x20000000); }), -1);
  EXPECT_EQ(record().substr(0, 41), "attempted:        18446744071562067968b\n\n");
  heap.refuseAbove = 1 << 20;
  EXPECT_EQ(end([&] { kelMalloc(block, 4, 0x40000000); }), -1);
  EXPECT_EQ(record().substr(0, 31), "attempted:        4294967296b\n\n");
}

TEST_F(KelMemoryErrorTest, RecordHasZerosWhenTheSystemDoesNotTell) {
  figuresKnown = false;
  EXPECT_EQ(recordOf(0),
            "system free:            0k\n"
            "system total:           0k\n"
            "swap free:              0k\n"
            "swap total:             0k\n"
            "\n"
            "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RecordHasTheFiguresOfAnActiveChecker) {
  auto* const checker = new AskedChecker;
  publish("IMemChecker", checker);
  EXPECT_EQ(recordOf(0),
            "system free:            1k\n"
            "system total:          22k\n"
            "swap free:            333k\n"
            "swap total:          1024k\n"
            "\n"
            "oromm not available\n\n");
  checker->active = false;
  EXPECT_EQ(recordOf(0), std::string(kSystemLines) + "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RecordHoldsTheLastFailureAlone) {
  std::ofstream(recordFile()) << std::string(10000, 'x');
  recordOf(5);
  EXPECT_EQ(recordOf(0), std::string(kSystemLines) + "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RecordHasTheLineEndsOfTheSystem) {
  recordOf(0);
  const std::string bytes = folder_.read("memory.log");
  const std::string text = folder_.write("text", "").string();
  std::ofstream(text) << record();
  EXPECT_EQ(bytes, folder_.read("text"));
}

TEST_F(KelMemoryErrorTest, RecordThatCannotBeWrittenIsPassedOver) {
  setFolder("Directories/Logs Directory", folder_.file("absent"));
  EXPECT_EQ(end([&] { kelOutOfMemory(5); }), -1);
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_THAT(events, ElementsAre("box without record", "end"));
}

TEST_F(KelMemoryErrorTest, RecordGoesToTheCurrentDirectoryWithoutAStore) {
  const std::u16string before = platform::currentDirectory(1 << 15);
  platform::setCurrentDirectory(platform::fromSystemPath(folder_.path().string()));
  oroSetBroker(nullptr);
  const std::string written = recordOf(0);
  platform::setCurrentDirectory(before);
  EXPECT_EQ(written, std::string(kSystemLines) + "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RecordComesBeforeTheMessageAndThatBeforeTheEnd) {
  EXPECT_EQ(end([] { kelOutOfMemory(5); }), -1);
  EXPECT_THAT(events, ElementsAre("box", "end"));
  EXPECT_EQ(boxTitle, u"Out of Memory");
  EXPECT_EQ(boxText, kMessage);
  EXPECT_EQ(boxStyle, platform::boxOk);
}

TEST_F(KelMemoryErrorTest, FatalErrorHasNoRecord) {
  EXPECT_EQ(end([] { kelFatalMemoryError(-3); }), -1);
  EXPECT_THAT(events, ElementsAre("box without record", "end"));
  events.clear();
  EXPECT_EQ(end([] { kelFatalMemoryError(7); }), -1);
  EXPECT_THAT(events, ElementsAre("end"));
}

TEST_F(KelMemoryErrorTest, CodesFromMinusFiveToMinusOneShowOneText) {
  for (int32_t code = -7; code <= 2; ++code) {
    boxText.clear();
    bool mayGoOn = true;
    EXPECT_EQ(end([&] { mayGoOn = kelReportMemoryError(code); }), 0);
    EXPECT_FALSE(mayGoOn);
    EXPECT_EQ(boxText, code >= -5 && code <= -1 ? kMessage : u"") << code;
  }
}

TEST_F(KelMemoryErrorTest, ErrorServiceHearsWhenTheSettingIsOn) {
  publish("IOroErrorService", new Errors(events));
  end([] { kelReportMemoryError(-4); });
  EXPECT_THAT(events, ElementsAre("box without record")) << "off";
  events.clear();
  setNumber("Memory/UseErrorService", 1);
  end([] { kelOutOfMemory(5); });
  EXPECT_THAT(events, ElementsAre("report 1 realloc", "end"));
  events.clear();
  end([] { kelReportMemoryError(-6); });
  EXPECT_THAT(events, IsEmpty());
}

TEST_F(KelMemoryErrorTest, NothingIsShownWithTheSettingOnAndNoErrorService) {
  setNumber("Memory/UseErrorService", 1);
  EXPECT_EQ(end([] { kelOutOfMemory(5); }), -1);
  EXPECT_THAT(events, ElementsAre("end"));
  EXPECT_NE(record(), "<absent>");
}

TEST_F(KelMemoryErrorTest, DrawingPausesWhileTheMessageIsShown) {
  publish("IGfxRenderer", new Renderer(events));
  end([] { kelReportMemoryError(-4); });
  EXPECT_THAT(events, ElementsAre("suspend", "box without record", "resume"));
  events.clear();
  end([] { kelReportMemoryError(-6); });
  EXPECT_THAT(events, IsEmpty());
}

TEST_F(KelMemoryErrorTest, DrawingGoesOnAlsoWhenTheMessageThrows) {
  publish("IGfxRenderer", new Renderer(events));
  const platform::HookGuard box(
      platform::messageBoxHook,
      +[](const std::u16string&, const std::u16string&, unsigned) -> int { throw 5; });
  EXPECT_THROW(kelReportMemoryError(-4), int);
  EXPECT_THAT(events, ElementsAre("suspend", "resume"));
}

TEST_F(KelMemoryErrorTest, RendererIsLookedUpOnceAlsoWhenAbsent) {
  end([] { kelReportMemoryError(-4); });
  publish("IGfxRenderer", new Renderer(events));
  events.clear();
  end([] { kelReportMemoryError(-4); });
  EXPECT_THAT(events, ElementsAre("box without record")) << "it came too late";
}

TEST_F(KelMemoryErrorTest, RecordWithoutAFolderGoesToTheCurrentDirectory) {
  const std::u16string before = platform::currentDirectory(1 << 15);
  platform::setCurrentDirectory(platform::fromSystemPath(folder_.path().string()));
  store_->InitOroString("Directories/Logs Directory", OroString::empty());
  const std::string written = recordOf(0);
  platform::setCurrentDirectory(before);
  EXPECT_EQ(written, std::string(kSystemLines) + "oromm not available\n\n");
}

TEST_F(KelMemoryErrorTest, RendererOperationsAreTheSeventhAndTheEighth) {
  EXPECT_EQ(tests::slotNumber(&IGfxRenderer::suspend), 7);
  EXPECT_EQ(tests::slotNumber(&IGfxRenderer::resume), 8);
}

TEST_F(KelMemoryErrorTest, CheckerOperationsStandInOrder) {
  EXPECT_EQ(tests::slotNumber(&IMemChecker::IsActive), 1);
  EXPECT_EQ(tests::slotNumber(&IMemChecker::GetMemoryStatus), 2);
  EXPECT_EQ(tests::slotNumber(&IMemChecker::GetProcessMemory), 3);
}

TEST_F(KelMemoryErrorTest, RequestRefusedDuringTheReportEndsAtOnce) {
  heap.refuseAbove = 1 << 20;
  EXPECT_EQ(end([&] {
              const platform::HookGuard box(
                  platform::messageBoxHook,
                  +[](const std::u16string&, const std::u16string&, unsigned) {
                    void* block = nullptr;
                    kelMalloc(block, 1, (1 << 20) + 1);
                    return 1;
                  });
              kelFatalMemoryError(-4);
            }),
            -1);
  EXPECT_THAT(events, ElementsAre("end"));
  EXPECT_EQ(record(), "<absent>");
}

TEST_F(KelMemoryErrorTest, RequestRefusedDuringTheRecordEndsAtOnce) {
  refusesReport = true;
  heap.refuseAbove = 1000;  // less than the stream's buffer
  EXPECT_EQ(end([] { kelOutOfMemory(5); }), -1);
  EXPECT_THAT(events, ElementsAre("end"));
}

TEST_F(KelMemoryErrorTest, TheNextFailureIsToldAgain) {
  EXPECT_EQ(end([] { kelOutOfMemory(5); }), -1);
  EXPECT_EQ(end([] { kelOutOfMemory(5); }), -1);
  EXPECT_THAT(events, ElementsAre("box", "end", "box", "end"));
}

}  // namespace
