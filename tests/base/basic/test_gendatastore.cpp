#include "base/basic/gendatastore.h"

#include <gtest/gtest.h>

#include "base/basic/kelcustomdatastore.h"
#include "orobasictypes/oroweakref.h"
#include "orobasictypes/sptr.h"
#include "tests/support/fakebroker.h"

namespace {

TEST(GenDataStore, IsOneAndSurvivesItsLastHolder) {
  GenDataStore* const store = getGenDataStore();
  EXPECT_EQ(getGenDataStore(), store);
  { const IPtr<IDataStore> holder(store); }
  store->CreateDirectory("GenDataStore test");
  EXPECT_TRUE(store->DirectoryExists("GenDataStore test"));
  EXPECT_TRUE(store->RemoveDirectory("GenDataStore test"));
}

TEST(GenDataStore, AddsOnlyItsName) {
  GenDataStore* const store = getGenDataStore();
  EXPECT_STREQ(store->getClassName(), "GenDataStore");
  EXPECT_EQ(oroQueryClass<GenDataStore>(static_cast<IDataStore*>(store)), store);
  EXPECT_EQ(oroQueryClass<KelDataStore>(static_cast<IDataStore*>(store)), store);
  EXPECT_EQ(oroQuery<IDataStore>(store), static_cast<IDataStore*>(store));
}

TEST(GenDataStore, ServesAsTheSettingsService) {
  tests::FakeBroker broker;
  broker.registerService(KelCString::borrow("IDataStore"), getGenDataStore());
  SPtr<IDataStore> store;
  ASSERT_TRUE(store);
  EXPECT_EQ(store.get(), static_cast<IDataStore*>(getGenDataStore()));
}

TEST(KelCustomDataStore, IsAStoreByAnotherName) {
  auto* const custom = new KelCustomDataStore;
  const IPtr<ICustomDataStore> holder(custom);
  EXPECT_STREQ(custom->getClassName(), "KelCustomDataStore");
  EXPECT_EQ(oroQuery<ICustomDataStore>(custom), static_cast<ICustomDataStore*>(custom));
  EXPECT_EQ(oroQuery<IDataStore>(custom), static_cast<IDataStore*>(custom));
  EXPECT_EQ(oroQueryClass<KelDataStore>(custom), custom);
  ICustomDataStore* const store = holder.get();
  store->CreateDirectory("A");
  EXPECT_TRUE(store->CreateInt("A/i", 50, 0, 9, 0));
  EXPECT_TRUE(store->SetInt(nullptr, "A/i", 5));
  EXPECT_EQ(store->GetInt("A/i", nullptr), 5);
  EXPECT_FALSE(getGenDataStore()->Exists("A/i"));
}

TEST(KelCustomDataStore, DiesWithItsLastHolder) {
  IPtr<IDataStore> store(new KelCustomDataStore);
  OroWeakRef* const weak = store->getWeakRef();
  weak->addRef();
  EXPECT_NE(weak->target(), nullptr);
  store = nullptr;
  EXPECT_EQ(weak->target(), nullptr);
  weak->release();
}

}  // namespace
