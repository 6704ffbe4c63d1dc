// MemoryWorld: a process for tests of exhaustion. Its settings store keeps the record and the
// temporary files in a folder of its own, the machine's figures are fixed, the message box is
// remembered, and the end of the process is an exception that end() catches.
//
//   heap.refuseAbove = 100;
//   EXPECT_EQ(end([&] { kelMalloc(block, 4, 100); }), -1);
//   EXPECT_EQ(record(), ...);
//   EXPECT_THAT(tried(), ElementsAre(400));
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/basic/keldatastore.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/testaccess.h"
#include "platform/hooks.h"
#include "platform/memoryfigures.h"
#include "platform/messagebox.h"
#include "platform/process.h"
#include "platform/text.h"
#include "tests/support/fakebroker.h"
#include "tests/support/fakeheap.h"
#include "tests/support/fakemanager.h"
#include "tests/tempfolder.h"

namespace tests {

class MemoryWorld : public testing::Test {
 protected:
  // What the end of the process becomes.
  struct Ended {
    int status;
  };

  MemoryWorld() {
    current = this;
    heap.fillsBlocks = true;
    store_->addRef();
    manager_->addRef();
    store_->CreateDirectory("Directories");
    store_->CreateDirectory("Memory");
    setFolder("Directories/Logs Directory", folder_.path());
    setFolder("Directories/Temp Directory", folder_.path());
    publish("IDataStore", store_);
    testaccess::resetMemoryServices();
  }
  ~MemoryWorld() override {
    testaccess::resetMemoryServices();
    testaccess::resetMemLimitListener();
    kelSetAssertCallback(nullptr, nullptr);
    current = nullptr;
    store_->release();
    manager_->release();
  }

  void publish(const char* name, IOroUnknown* object) {
    broker_.registerService(KelCString::borrow(name), object);
  }
  void setFolder(const char* setting, const std::filesystem::path& folder) {
    store_->CreateOroString(setting, 1000, OroString::empty(), 0);
    const std::u16string text = platform::fromSystemPath(folder.string());
    store_->InitOroString(setting, OroString(text.c_str()));
  }
  void setNumber(const char* setting, int32_t value) {
    store_->CreateInt(setting, 0, 0, 1, 0);
    store_->InitInt(setting, value);
  }
  // From here on there is a memory manager.
  FakeManager& addManager(int64_t releases) {
    manager_->releases = releases;
    publish("IOroMManager", manager_);
    forget();
    return *manager_;
  }

  // The status that the process would end with; 0 if it goes on.
  template <class Action>
  int end(const Action& action) {
    const platform::HookGuard ending(
        platform::endProcessHook, +[](int status) {
          current->events.push_back("end");
          throw Ended{status};
        });
    const platform::HookGuard box(platform::messageBoxHook, showBox);
    const platform::HookGuard figures(platform::memoryFiguresHook, tell);
    try {
      action();
    } catch (const Ended& ended) {
      return ended.status;
    }
    return 0;
  }

  // What the heap was asked for up to the record of a failure, in bytes.
  std::vector<size_t> tried() const {
    const size_t count = recordAt_ > 0 ? recordAt_ : heap.sizes.size();
    return {heap.sizes.begin(), heap.sizes.begin() + static_cast<std::ptrdiff_t>(count)};
  }
  // Forgets what was asked so far.
  void forget() {
    heap.sizes.clear();
    heap.allocations = heap.reallocations = heap.frees = 0;
    recordAt_ = 0;
    events.clear();
  }

  std::filesystem::path recordFile() const { return folder_.file("memory.log"); }
  // The record with line feeds; "<absent>" where there is none.
  std::string record() const {
    std::ifstream file(recordFile(), std::ios::binary);
    if (!file) return "<absent>";
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::erase(text, '\r');
    return text;
  }
  // Names of all that is in the folder.
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  bool figuresKnown = true;
  bool refusesReport = false;  // what a test refuses is refused to the record and the message too
  std::vector<std::string> events;  // "box", "box without record", "end", in their order
  std::u16string boxTitle, boxText;
  unsigned boxStyle = 99;

  FakeBroker broker_;
  KelDataStore* const store_ = new KelDataStore(false, 17, 17);
  TempFolder folder_;
  FakeHeap heap;

 private:
  static int showBox(const std::u16string& title, const std::u16string& text, unsigned style) {
    current->events.push_back(
        std::filesystem::exists(current->recordFile()) ? "box" : "box without record");
    current->boxTitle = title;
    current->boxText = text;
    current->boxStyle = style;
    return platform::answerOk;
  }
  // The record asks for the figures first of all. There is memory for it and for the message: it is
  // the large blocks that are refused.
  static bool tell(platform::MemoryFigures& figures) {
    if (current->recordAt_ == 0) current->recordAt_ = current->heap.sizes.size();
    if (!current->refusesReport) current->heap.refuseNothing();
    if (!current->figuresKnown) return false;
    figures = {.physicalTotal = 8000 * kilo,
               .physicalAvailable = 3000 * kilo,
               .pageFileTotal = 9000 * kilo,
               .pageFileAvailable = 4000 * kilo,
               .virtualTotal = 123456789 * kilo,
               .virtualAvailable = 123400000 * kilo,
               .extendedAvailable = 0};
    return true;
  }

  static constexpr uint64_t kilo = 1024;
  static inline MemoryWorld* current = nullptr;
  FakeManager* const manager_ = new FakeManager;
  size_t recordAt_ = 0;
};

}  // namespace tests
