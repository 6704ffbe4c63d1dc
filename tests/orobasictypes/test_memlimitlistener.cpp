#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/memlimitlistener.h"

#include <limits>

#include <gtest/gtest.h>

#include "base/basic/keldatareceiver.h"
#include "base/basic/keldatastore.h"
#include "orobasictypes/kelmemory.h"
#include "orobasictypes/testaccess.h"
#include "platform/hooks.h"
#include "platform/memoryfigures.h"
#include "tests/support/fakebroker.h"

namespace {

constexpr char kSetting[] = "Memory/MemLimit";
constexpr int64_t kNone = std::numeric_limits<int64_t>::min();

class MemLimit : public testing::Test {
 protected:
  MemLimit() { testaccess::resetMemLimitListener(); }
  ~MemLimit() override { testaccess::resetMemLimitListener(); }

  // A broker with a store that has the setting.
  struct Settings {
    Settings() {
      store->CreateDirectory("Memory");
      broker.registerService(KelCString::borrow("IDataStore"), store);
    }
    ~Settings() { testaccess::resetMemLimitListener(); }
    void declare(double value) { store->CreateFloat(kSetting, value, -1e300, 1e300, 0); }
    void set(double value) { store->SetFloat(nullptr, kSetting, value); }

    tests::FakeBroker broker;
    KelDataStore* const store = new KelDataStore(false, 17, 17);
  };
};

TEST_F(MemLimit, IsTheSettingInBytes) {
  Settings settings;
  settings.declare(1.5e9);
  EXPECT_EQ(kelMemoryLimit(), 1500000000);
}

TEST_F(MemLimit, FollowsTheSettingFromItsFirstNeedOn) {
  Settings settings;
  settings.declare(1000.9);
  kelPhysicalMemoryFree(1);
  settings.set(2000.9);
  EXPECT_EQ(kelMemoryLimit(), 2000);
  settings.set(-3.7);
  EXPECT_EQ(kelMemoryLimit(), -3);
  settings.set(1e30);
  EXPECT_EQ(kelMemoryLimit(), kNone);
  settings.set(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(kelMemoryLimit(), kNone);
}

TEST_F(MemLimit, IsMadeByTheFirstOfThreeQueries) {
  for (void (*query)() : {+[] { kelMemoryAvailable(0.5, 1); }, +[] { kelPhysicalMemoryFree(1); },
                          +[] { kelMemoryLimit(); }}) {
    testaccess::resetMemLimitListener();
    query();
    Settings settings;
    settings.declare(7);
    EXPECT_NE(kelMemoryLimit(), 7) << "made before the store, it never hears of it";
    settings.set(8);
    EXPECT_NE(kelMemoryLimit(), 8);
  }
}

TEST_F(MemLimit, AnAbsentSettingIsZeroForGood) {
  Settings settings;
  EXPECT_EQ(kelMemoryLimit(), 0);
  settings.declare(5);
  settings.set(6);
  EXPECT_EQ(kelMemoryLimit(), 0);
}

TEST_F(MemLimit, WithoutAStoreItIsTheLargerOfMemoryAndAddressSpace) {
  for (const bool physical : {false, true}) {
    static bool larger;
    larger = physical;
    const platform::HookGuard guard(
        platform::memoryFiguresHook, +[](platform::MemoryFigures& figures) {
          figures.physicalTotal = larger ? 900 : 500;
          figures.virtualTotal = 700;
          return true;
        });
    testaccess::resetMemLimitListener();
    EXPECT_EQ(kelMemoryLimit(), physical ? 900 : 700);
  }
}

TEST_F(MemLimit, WithoutAStoreAndFiguresItIsTwoGigabytes) {
  const platform::HookGuard guard(
      platform::memoryFiguresHook, +[](platform::MemoryFigures&) { return false; });
  EXPECT_EQ(kelMemoryLimit(), 2147483648);
}

TEST_F(MemLimit, OnlyAFloatOfExactlyThisNameCounts) {
  Settings settings;
  settings.declare(1);
  MemLimitListener<> listener;
  listener.OnFloatChanged("Memory/MemLimit2", 2);
  listener.OnFloatChanged("memory/MemLimit", 2);
  listener.OnFloatChanged("MemLimit", 2);
  listener.OnIntChanged(kSetting, 2);
  listener.OnIntExChanged(kSetting, 2, 2);
  listener.OnStringChanged(kSetting, "2");
  listener.OnVoidFired(kSetting);
  EXPECT_EQ(listener.limit(), 1);
  listener.OnFloatChanged("Memory/MemLimit", 2);
  EXPECT_EQ(listener.limit(), 2);
  settings.store->RemoveReceiver(kSetting, &listener);
}

TEST_F(MemLimit, AnswersUnderItsBasesName) {
  MemLimitListener<> listener;
  EXPECT_STREQ(listener.getClassName(), "KelDataReceiver");
  EXPECT_EQ(oroQueryClass<KelDataReceiver>(&listener), &listener);
  void* found = &listener;
  listener.queryInterface("MemLimitListener", &found);
  EXPECT_EQ(found, nullptr);
}

}  // namespace
