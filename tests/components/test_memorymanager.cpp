#include "components/memorymanager/memorymanager.h"

#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "base/basic/keldatastore.h"
#include "orobasictypes/oropagestore.h"
#include "orobasictypes/orostring.h"
#include "platform/text.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"
#include "tests/tempfolder.h"

namespace {

constexpr int64_t kManagedPage = 24576;

TEST(MemoryManager, CountsBegunPagesOf24Kilobytes) {
  const IPtr<OroMM::IOroMManager> manager(
      new MemoryManager(BlockManager::Limits{3 * kManagedPage + 1, 5 * kManagedPage, {}}));
  EXPECT_EQ(manager->CoreLimit(), 4);
  EXPECT_EQ(manager->SwapLimit(), 5);
  EXPECT_EQ(manager->CorePages(), 0);
  void* blocks[5] = {};
  for (void*& block : blocks) block = manager->AllocBlock(8192, true);
  EXPECT_EQ(manager->CorePages(), 2) << "five blocks of a third of a page";
  void* const more = manager->AllocBlock(3 * kManagedPage, true);
  EXPECT_EQ(manager->SwapPages(), 3);
  EXPECT_EQ(manager->AllocBlock(3 * kManagedPage, true), nullptr);
  manager->FreeBlock(more);
  manager->FreeBlock(nullptr);
  for (void* block : blocks) manager->FreeBlock(block);
  EXPECT_EQ(manager->CorePages(), 0);
  EXPECT_EQ(manager->SwapPages(), 0);
}

TEST(MemoryManager, OperationsStandInTheirPlaces) {
  using OroMM::IOroMManager;
  EXPECT_EQ(tests::slotNumber(&IOroMManager::AllocBlock), 1);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::FreeBlock), 2);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::ReleaseMemory), 4);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::CoreLimit), 11);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::SwapLimit), 12);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::SwapPages), 13);
  EXPECT_EQ(tests::slotNumber(&IOroMManager::CorePages), 18);
  EXPECT_EQ(tests::slotNumber(&IMemoryInit::end), 4);
  // The eleven in between take and give nothing.
  void (IOroMManager::*const unused[])() = {
      &IOroMManager::unusedPlace3,  &IOroMManager::unusedPlace5,  &IOroMManager::unusedPlace6,
      &IOroMManager::unusedPlace7,  &IOroMManager::unusedPlace8,  &IOroMManager::unusedPlace9,
      &IOroMManager::unusedPlace10, &IOroMManager::unusedPlace14, &IOroMManager::unusedPlace15,
      &IOroMManager::unusedPlace16, &IOroMManager::unusedPlace17};
  const int places[] = {3, 5, 6, 7, 8, 9, 10, 14, 15, 16, 17};
  for (size_t i = 0; i < std::size(places); ++i) EXPECT_EQ(tests::slotNumber(unused[i]), places[i]);
}

TEST(MemoryManager, EndsThroughItsOwnObject) {
  const tests::TempFolder folder;
  const IPtr<OroMM::IOroMManager> manager(new MemoryManager(
      BlockManager::Limits{0, 5 * kManagedPage, platform::fromSystemPath(folder.path().string())}));
  void* const block = manager->AllocBlock(kManagedPage, true);
  EXPECT_EQ(manager->SwapPages(), 1);
  IMemoryInit* const end = oroQuery<IMemoryInit>(manager.get());
  ASSERT_NE(end, nullptr);
  EXPECT_STREQ(manager->getClassName(), "MemoryManager");
  end->end();
  EXPECT_EQ(manager->SwapPages(), 0);
  manager->FreeBlock(block);
}

TEST(MemoryManager, HasNothingToGiveBeforeItsFirstBlock) {
  const IPtr<OroMM::IOroMManager> manager(new MemoryManager());
  EXPECT_FALSE(manager->ReleaseMemory());
  EXPECT_EQ(manager->CorePages(), 0);
  EXPECT_EQ(manager->SwapPages(), 0);
  int local = 0;
  manager->FreeBlock(&local);
  oroQuery<IMemoryInit>(manager.get())->end();
}

TEST(MemoryManager, LimitsComeFromTheMachineWithoutSettings) {
  const IPtr<OroMM::IOroMManager> manager(new MemoryManager());
  const auto allowance = static_cast<int64_t>(oroMemoryAllowance());
  EXPECT_NEAR(static_cast<double>(manager->CoreLimit()), allowance / 2 / kManagedPage, 2);
  EXPECT_NEAR(static_cast<double>(manager->SwapLimit()), allowance * 4.0 / kManagedPage, 2);
}

TEST(MemoryManager, LimitsAndFolderAreSettings) {
  const tests::TempFolder folder;
  tests::FakeBroker broker;
  auto* const store = new KelDataStore(false, 17, 17);
  broker.registerService(KelCString::borrow("IDataStore"), store);
  store->CreateDirectory("Memory");
  store->CreateFloat("Memory/CoreLimit", 7.0 * kManagedPage, 0, 1e18, 0);
  store->CreateFloat("Memory/SwapLimit", 9.0 * kManagedPage, 0, 1e18, 0);
  const std::u16string absent = platform::fromSystemPath(folder.file("absent").string());
  store->CreateOroString("Memory/SwapDirectory", 1000, OroString(absent.c_str()), 0);
  const IPtr<OroMM::IOroMManager> manager(new MemoryManager());
  EXPECT_GT(manager->CoreLimit(), 1000) << "not read before there is a block";
  void* const block = manager->AllocBlock(8 * kManagedPage, false);
  EXPECT_EQ(manager->CoreLimit(), 7);
  EXPECT_EQ(manager->SwapLimit(), 9);
  EXPECT_EQ(manager->CorePages(), 8) << "no file in a folder that is not there";
  manager->FreeBlock(block);
}

TEST(MemoryManager, SettingsAreDeclaredWithTheMachinesShareAsTheirZero) {
  tests::FakeBroker broker;
  auto* const store = new KelDataStore(false, 17, 17);
  broker.registerService(KelCString::borrow("IDataStore"), store);
  const IPtr<OroMM::IOroMManager> manager(new MemoryManager());
  EXPECT_FALSE(store->Exists("Memory/CoreLimit"));
  manager->FreeBlock(manager->AllocBlock(kManagedPage, true));
  EXPECT_TRUE(store->Exists("Memory/CoreLimit"));
  EXPECT_TRUE(store->Exists("Memory/SwapLimit"));
  EXPECT_TRUE(store->Exists("Memory/SwapDirectory"));
  EXPECT_EQ(store->GetFloat("Memory/CoreLimit", nullptr), 0);
  EXPECT_GT(manager->CoreLimit(), 1000);
}

}  // namespace
