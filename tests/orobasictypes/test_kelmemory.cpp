#include "orobasictypes/kelmemory.h"

#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

#include "interfaces/IMemChecker.h"
#include "orobasictypes/kelbreakflag.h"
#include "orobasictypes/kelgrow.h"
#include "orobasictypes/keltruncate.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/testaccess.h"
#include "platform/hooks.h"
#include "platform/memoryfigures.h"
#include "tests/support/fakebroker.h"

namespace {

platform::MemoryFigures figures;
platform::WorkingSet set;
bool known = true;

// A machine with the figures above.
class KelMemory : public testing::Test {
 protected:
  KelMemory() {
    figures = {.physicalTotal = 1000,
               .physicalAvailable = 400,
               .pageFileTotal = 1500,
               .pageFileAvailable = 700,
               .virtualTotal = 5000,
               .virtualAvailable = 4000,
               .extendedAvailable = 0};
    set = {300, 350};
    known = true;
    testaccess::resetMemoryServices();
  }
  ~KelMemory() override {
    testaccess::resetMemoryServices();
    testaccess::resetMemLimitListener();
  }

  // Free, total, swap free and swap total in this unit, as one text.
  static std::string status(int32_t unit) {
    int64_t free = -7;
    int64_t total = -7;
    int64_t swapFree = -7;
    int64_t swapTotal = -7;
    const int32_t result = kelMemoryStatus(free, total, swapFree, swapTotal, unit);
    return std::to_string(result) + ": " + std::to_string(free) + " " + std::to_string(total) +
           " " + std::to_string(swapFree) + " " + std::to_string(swapTotal);
  }

  const platform::HookGuard<bool(platform::MemoryFigures&)> figuresGuard_{
      platform::memoryFiguresHook, [](platform::MemoryFigures& out) {
        if (known) out = figures;
        return known;
      }};
  const platform::HookGuard<bool(platform::WorkingSet&)> setGuard_{platform::workingSetHook,
                                                                   [](platform::WorkingSet& out) {
                                                                     if (known) out = set;
                                                                     return known;
                                                                   }};
};

TEST_F(KelMemory, StatusIsThatOfTheSystem) {
  EXPECT_EQ(status(1), "0: 400 1000 700 1500");
  EXPECT_EQ(status(300), "0: 1 3 2 5");
  known = false;
  EXPECT_EQ(status(1), "-1: -7 -7 -7 -7");
}

TEST_F(KelMemory, UnitBelowOneIsOne) {
  EXPECT_EQ(status(0), status(1));
  EXPECT_EQ(status(-1024), status(1));
  EXPECT_EQ(kelVirtualMemoryFree(0), 4000);
}

TEST_F(KelMemory, SwapTotalIsTheSmallerOfPageFileAndAddressSpaceBeyondMemory) {
  figures.virtualTotal = 2200;
  EXPECT_EQ(status(1), "0: 400 1000 700 1200");
}

TEST_F(KelMemory, SwapFreeIsTheLeastOfThree) {
  figures.pageFileAvailable = 2000;
  EXPECT_EQ(status(1), "0: 400 1000 1500 1500") << "all of it";
  figures.virtualAvailable = 1000;
  EXPECT_EQ(status(1), "0: 400 1000 600 1500") << "the address space that is left";
}

TEST_F(KelMemory, AvailableIsFreeAndAShareOfTheSwap) {
  EXPECT_EQ(kelMemoryAvailable(0.0, 1), 400);
  EXPECT_EQ(kelMemoryAvailable(0.5, 1), 750);
  EXPECT_EQ(kelMemoryAvailable(0.333, 1), 633) << "the product alone is truncated";
  EXPECT_EQ(kelMemoryAvailable(1.0, 100), 11);
  EXPECT_EQ(kelPhysicalMemoryFree(100), 4);
  known = false;
  EXPECT_EQ(kelMemoryAvailable(0.5, 1), -1);
  EXPECT_EQ(kelPhysicalMemoryFree(1), -1);
}

TEST_F(KelMemory, AddressableIsWhatBothMemoryAndAddressSpaceHave) {
  EXPECT_EQ(kelAddressableMemory(0.0, 1), 400);
  EXPECT_EQ(kelAddressableMemory(0.0, 300), 1);
  figures.virtualAvailable = 250;
  EXPECT_EQ(kelAddressableMemory(0.0, 1), 250);
  figures.extendedAvailable = 100;
  EXPECT_EQ(kelAddressableMemory(0.0, 1), 350);
  EXPECT_EQ(kelAddressableMemory(0.5, 1), 700);
  EXPECT_EQ(kelAddressableMemory(0.001, 117), 2) << "350.7 / 117, truncated once at the end";
  EXPECT_EQ(kelAddressableMemory(0.002, 117), 3) << "351.4 / 117";
  known = false;
  EXPECT_EQ(kelAddressableMemory(0.0, 1024), 1800);
  EXPECT_EQ(kelAddressableMemory(0.5, 1000), 1843);
}

TEST_F(KelMemory, VirtualFreeIsThatOfTheSystem) {
  EXPECT_EQ(kelVirtualMemoryFree(300), 13);
  known = false;
  EXPECT_EQ(kelVirtualMemoryFree(1024), 1800);
}

TEST_F(KelMemory, ProcessUsesItsWorkingSetOrItsAddressSpace) {
  EXPECT_EQ(kelProcessMemoryUsed(100), 3);
  const platform::HookGuard guard(
      platform::workingSetHook, +[](platform::WorkingSet&) { return false; });
  EXPECT_EQ(kelProcessMemoryUsed(100), 10);
}

TEST_F(KelMemory, WorkingSetIsLeftAloneOnFailure) {
  int64_t current = -7;
  int64_t peak = -7;
  EXPECT_TRUE(kelProcessWorkingSet(current, peak, 100));
  EXPECT_EQ(current, 3);
  EXPECT_EQ(peak, 3);
  EXPECT_TRUE(kelProcessWorkingSet(current, 1));
  EXPECT_EQ(current, 300);
  known = false;
  EXPECT_FALSE(kelProcessWorkingSet(current, peak, 1));
  EXPECT_EQ(current, 300);
  EXPECT_EQ(peak, 3);
}

class Checker : public IMemChecker {
 public:
  static constexpr const char* className() { return "Checker"; }
  using Offers = OroOffers<Checker, IMemChecker>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool IsActive() override { return active; }
  int32_t GetMemoryStatus(int64_t& free, int64_t& total, int64_t& swapFree, int64_t& swapTotal,
                          int32_t unit) override {
    free = 10 * unit;
    total = 20;
    swapFree = 30;
    swapTotal = 40;
    return result;
  }
  int64_t GetProcessMemory(int32_t unit) override { return 50 * unit; }
  bool active = true;
  int32_t result = 5;
};

TEST_F(KelMemory, ActiveCheckerKnowsBetter) {
  tests::FakeBroker broker;
  EXPECT_EQ(status(1), "0: 400 1000 700 1500");
  auto* const checker = new Checker;
  broker.registerService(KelCString::borrow("IMemChecker"), checker);
  EXPECT_EQ(status(2), "5: 20 20 30 40") << "looked up again while there was none";
  EXPECT_EQ(kelMemoryAvailable(0.5, 2), 35) << "any result but all ones is good";
  EXPECT_EQ(kelProcessMemoryUsed(2), 100);
  EXPECT_EQ(kelVirtualMemoryFree(1), 4000) << "the system's alone";
  checker->result = -1;
  EXPECT_EQ(kelMemoryAvailable(0.5, 2), -1);
  EXPECT_EQ(kelPhysicalMemoryFree(2), -1);
  checker->active = false;
  EXPECT_EQ(status(1), "0: 400 1000 700 1500");
  EXPECT_EQ(kelProcessMemoryUsed(1), 300);
  testaccess::resetMemoryServices();
}

TEST(KelMemoryOfThisMachine, HasFiguresThatFitTogether) {
  int64_t free = 0;
  int64_t total = 0;
  int64_t swapFree = 0;
  int64_t swapTotal = 0;
  ASSERT_EQ(kelMemoryStatus(free, total, swapFree, swapTotal, 1), 0);
  EXPECT_GT(free, 0);
  EXPECT_GE(total, free);
  EXPECT_GE(swapTotal, swapFree);
  int64_t current = 0;
  int64_t peak = 0;
  ASSERT_TRUE(kelProcessWorkingSet(current, peak, 1024));
  EXPECT_GT(current, 100);
  EXPECT_GE(peak, current);
  EXPECT_GT(kelVirtualMemoryFree(1 << 20), 1 << 20) << "a terabyte of address space";
  testaccess::resetMemLimitListener();
}

TEST(KelTruncate, DropsTheFractionAndMarksWhatDoesNotFit) {
  constexpr int64_t none = std::numeric_limits<int64_t>::min();
  static_assert(kelTruncate(1.9) == 1 && kelTruncate(-1.9) == -1);
  EXPECT_EQ(kelTruncate(9223372036854774784.0), 9223372036854774784);
  EXPECT_EQ(kelTruncate(9223372036854775808.0), none);
  EXPECT_EQ(kelTruncate(-9223372036854775808.0), none);
  EXPECT_EQ(kelTruncate(-1e300), none);
  EXPECT_EQ(kelTruncate(std::numeric_limits<double>::quiet_NaN()), none);
}

TEST(KelBreakFlag, IsSetAndRead) {
  const bool before = kelBreakEnabled();
  kelSetBreakEnabled(false);
  EXPECT_FALSE(kelBreakEnabled());
  kelSetBreakEnabled(true);
  EXPECT_TRUE(kelBreakEnabled());
  kelSetBreakEnabled(before);
}

}  // namespace
