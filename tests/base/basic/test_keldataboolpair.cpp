#include "base/basic/keldataboolpair.h"

#include <gtest/gtest.h>

#include "base/basic/keldatastore.h"

namespace {

class DataBoolPair : public testing::Test {
 protected:
  void set(int32_t first, int32_t second) {
    store->SetInt(nullptr, "first", first);
    store->SetInt(nullptr, "second", second);
  }
  void makeBoth() {
    store->CreateInt("first", 0, -9, 9, 0);
    store->CreateInt("second", 0, -9, 9, 0);
  }

  const IPtr<IDataStore> store{new KelDataStore(true, 5, 20)};
};

TEST_F(DataBoolPair, CombinesByItsOperation) {
  makeBoth();
  struct Row {
    int32_t operation, first, second;
    int state;
  };
  constexpr Row rows[] = {
      {KelDataBoolPair::kAnd, 0, 0, 0},
      {KelDataBoolPair::kAnd, 1, 0, 2},
      {KelDataBoolPair::kAnd, 0, 1, 4},
      {KelDataBoolPair::kAnd, 1, 1, 7},
      {KelDataBoolPair::kOr, 0, 0, 0},
      {KelDataBoolPair::kOr, 2, 0, 3},
      {KelDataBoolPair::kOr, 0, 2, 5},
      {KelDataBoolPair::kOr, 2, 2, 7},
      {KelDataBoolPair::kExclusiveOr, 0, 0, 0},
      {KelDataBoolPair::kExclusiveOr, 9, 0, 3},
      {KelDataBoolPair::kExclusiveOr, 0, 9, 5},
      {KelDataBoolPair::kExclusiveOr, 9, 9, 6},
      {KelDataBoolPair::kExclusiveOr, -1, 1, 5},
      {KelDataBoolPair::kAnd, -1, -1, 0},
      {KelDataBoolPair::kOr, -1, -1, 0},
      {3, 1, 1, 6},
      {-1, 1, 1, 6},
  };
  for (const Row& row : rows) {
    set(0, 0);
    KelDataBoolPair heard(store.get(), "first", "second", row.operation);
    set(row.first, row.second);
    EXPECT_EQ(heard.state(), row.state) << row.operation << row.first << row.second;
    EXPECT_EQ(heard.value(), row.state % 2 == 1);
    KelDataBoolPair read(store.get(), "first", "second", row.operation);
    EXPECT_EQ(read.state(), row.state) << "as it stood when the pair was made";
    heard.Disconnect();
    read.Disconnect();
  }
}

TEST_F(DataBoolPair, ConnectsOnlyWhenBothKeysExist) {
  store->CreateInt("first", 1, 0, 9, 0);
  KelDataBoolPair pair(store.get(), "first", "second", KelDataBoolPair::kOr);
  EXPECT_FALSE(pair.isConnected());
  EXPECT_FALSE(pair.Connect());
  store->SetInt(nullptr, "first", 2);
  EXPECT_EQ(pair.state(), 0) << "not even the first is heard";
  pair.Refresh();
  EXPECT_EQ(pair.state(), 0);
  store->CreateInt("second", 0, 0, 9, 0);
  EXPECT_EQ(pair.state(), 0);
  EXPECT_TRUE(pair.Connect());
  EXPECT_TRUE(pair.Connect());
  EXPECT_EQ(pair.state(), KelDataBoolPair::kCombined | KelDataBoolPair::kFirst);
  pair.Disconnect();
}

TEST_F(DataBoolPair, LeavesBothKeys) {
  makeBoth();
  KelDataBoolPair pair(store.get(), "first", "second", KelDataBoolPair::kOr);
  const int32_t held = store->refCount();
  EXPECT_TRUE(pair.Disconnect());
  EXPECT_EQ(store->refCount(), held - 1);
  EXPECT_FALSE(pair.Disconnect());
  EXPECT_FALSE(store->RemoveReceiver("first", &pair));
  EXPECT_FALSE(store->RemoveReceiver("second", &pair));
  EXPECT_TRUE(pair.Attach(store.get()));
  set(1, 0);
  EXPECT_TRUE(pair.value());
  pair.Disconnect();
}

TEST_F(DataBoolPair, OtherPathsMeanTheSecondKey) {
  makeBoth();
  KelDataBoolPair pair(store.get(), "first", "second", KelDataBoolPair::kOr);
  pair.OnIntChanged("elsewhere", 1);
  EXPECT_EQ(pair.state(), KelDataBoolPair::kCombined | KelDataBoolPair::kSecond);
  pair.OnIntChanged("first", 1);
  pair.OnIntChanged("second", 0);
  EXPECT_EQ(pair.state(), KelDataBoolPair::kCombined | KelDataBoolPair::kFirst);
  pair.Disconnect();
}

TEST_F(DataBoolPair, ValueSetWithExtraStaysOldUntilRefresh) {
  makeBoth();
  KelDataBoolPair pair(store.get(), "first", "second", KelDataBoolPair::kOr);
  store->SetIntEx(nullptr, "first", 1, 5);
  EXPECT_FALSE(pair.value());
  pair.Refresh();
  EXPECT_TRUE(pair.value());
  pair.Disconnect();
}

TEST_F(DataBoolPair, OneKeyTwiceIsHeardAsTheFirst) {
  makeBoth();
  KelDataBoolPair pair(store.get(), "first", "first", KelDataBoolPair::kAnd);
  set(1, 0);
  EXPECT_EQ(pair.state(), KelDataBoolPair::kFirst);
  pair.Refresh();
  EXPECT_EQ(pair.state(), 7) << "reading reads both";
  pair.Disconnect();
}

}  // namespace
