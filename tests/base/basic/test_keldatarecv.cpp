#include <gmock/gmock.h>

#include <new>
#include <string>

#include "base/basic/keldatarecvfloat.h"
#include "base/basic/keldatarecvint.h"
#include "base/basic/keldatarecvorostring.h"
#include "base/basic/keldatarecvstring.h"
#include "base/basic/keldatastore.h"
#include "orobasictypes/orostring.h"
#include "tests/base/basic/assertionlog.h"
#include "tests/support/slotnumber.h"

namespace {

// A store that tells when it dies.
class WatchedStore : public KelDataStore {
 public:
  explicit WatchedStore(bool& alive) : KelDataStore(true, 5, 20), alive_(alive) { alive_ = true; }
  ~WatchedStore() override { alive_ = false; }

 private:
  bool& alive_;
};

class DataRecv : public testing::Test {
 protected:
  DataRecv() {
    store->CreateDirectory("A");
    store->CreateInt("A/int", 5, -100, 100, 0);
    store->CreateFloat("A/float", 0.5, -100, 100, 0);
    store->CreateString("A/text", 10, "text", 0);
    store->CreateOroString("A/wide", 10, OroString(u"wide"), 0);
  }

  bool alive = false;
  IPtr<IDataStore> store{new WatchedStore(alive)};
};

TEST_F(DataRecv, ReadsTheValueWhenItIsMade) {
  KelDataRecvInt number(store.get(), "A/int");
  KelDataRecvFloat real(store.get(), "A/float");
  KelDataRecvString text(store.get(), "A/text");
  KelDataRecvOroString wide(store.get(), "A/wide");
  EXPECT_TRUE(number.isConnected());
  EXPECT_EQ(number.value(), 5);
  EXPECT_EQ(real.value(), 0.5);
  EXPECT_STREQ(text.value(), "text");
  EXPECT_TRUE(wide.value() == "wide");
  for (KelDataRecvItem* each :
       std::initializer_list<KelDataRecvItem*>{&number, &real, &text, &wide})
    EXPECT_TRUE(each->Disconnect());
}

TEST_F(DataRecv, FollowsEachKindOfSetting) {
  KelDataRecvInt number(store.get(), "A/int");
  KelDataRecvFloat real(store.get(), "A/float");
  KelDataRecvString text(store.get(), "A/text");
  KelDataRecvOroString wide(store.get(), "A/wide");
  store->SetInt(nullptr, "A/int", -7);
  store->SetFloat(nullptr, "A/float", 2.25);
  store->SetString(nullptr, "A/text", "other");
  store->SetOroString(nullptr, "A/wide", OroString(u"\u20AC"));
  EXPECT_EQ(number.value(), -7);
  EXPECT_EQ(real.value(), 2.25);
  EXPECT_STREQ(text.value(), "other");
  EXPECT_TRUE(wide.value() == OroString(u"\u20AC"));
  store->SetInt(nullptr, "A/int", 1000);
  EXPECT_EQ(number.value(), 100) << "as stored, not as set";
  for (KelDataRecvItem* each :
       std::initializer_list<KelDataRecvItem*>{&number, &real, &text, &wide})
    EXPECT_TRUE(each->Disconnect());
}

TEST_F(DataRecv, DoesNotNoticeThatItsKeyIsCreated) {
  KelDataRecvInt number(store.get(), "A/later");
  EXPECT_FALSE(number.isConnected());
  EXPECT_EQ(number.value(), 0);
  EXPECT_FALSE(number.Connect());
  store->CreateInt("A/later", 3, 0, 100, 0);
  store->SetInt(nullptr, "A/later", 4);
  EXPECT_EQ(number.value(), 0);
  EXPECT_TRUE(number.Connect());
  EXPECT_EQ(number.value(), 4) << "connecting reads";
  store->SetInt(nullptr, "A/later", 5);
  EXPECT_EQ(number.value(), 5);
  number.Disconnect();
}

TEST_F(DataRecv, RefreshDoesNothingWithoutAConnection) {
  KelDataRecvInt number(store.get(), "A/later");
  store->CreateInt("A/later", 3, 0, 100, 0);
  number.Refresh();
  EXPECT_EQ(number.value(), 0);
  EXPECT_TRUE(number.Disconnect()) << "it held the store";
}

TEST_F(DataRecv, ValueSurvivesTheDisconnection) {
  KelDataRecvInt number(store.get(), "A/int");
  EXPECT_TRUE(number.Disconnect());
  EXPECT_FALSE(number.isConnected());
  store->SetInt(nullptr, "A/int", 8);
  number.Refresh();
  EXPECT_EQ(number.value(), 5);
  EXPECT_FALSE(number.Disconnect()) << "there is no store any more";
  EXPECT_FALSE(number.Connect());
}

TEST_F(DataRecv, ValueSetWithExtraStaysOldUntilRefresh) {
  KelDataRecvInt number(store.get(), "A/int");
  store->SetIntEx(nullptr, "A/int", 9, 1);
  EXPECT_EQ(number.value(), 5);
  number.Refresh();
  EXPECT_EQ(number.value(), 9);
  number.Disconnect();
}

TEST_F(DataRecv, DirectoryIsAKeyThatNeverTells) {
  KelDataRecvInt number(store.get(), "A");
  EXPECT_TRUE(number.isConnected());
  EXPECT_EQ(number.value(), 0);
  KelDataRecvString text(store.get(), "A");
  EXPECT_STREQ(text.value(), "");
  EXPECT_TRUE(number.Disconnect());
  EXPECT_TRUE(text.Disconnect());
}

TEST_F(DataRecv, HoldsItsStoreUntilDisconnect) {
  {
    KelDataRecvInt number(store.get(), "A/int");
    store = nullptr;
    EXPECT_TRUE(alive);
    EXPECT_EQ(number.value(), 5);
    number.Disconnect();
    EXPECT_FALSE(alive);
  }
}

TEST_F(DataRecv, DestructionNeitherDisconnectsNorReleases) {
  const int32_t before = store->refCount();
  alignas(KelDataRecvInt) unsigned char place[sizeof(KelDataRecvInt)];
  auto* const stale = new (place) KelDataRecvInt(store.get(), "A/int");
  stale->~KelDataRecvInt();
  EXPECT_EQ(store->refCount(), before + 1);
  EXPECT_TRUE(store->RemoveReceiver("A/int", stale)) << "the item still had it";
  store->release();
}

TEST_F(DataRecv, AttachMovesToAnotherStore) {
  bool otherAlive = false;
  IPtr<IDataStore> other(new WatchedStore(otherAlive));
  other->CreateDirectory("A");
  other->CreateInt("A/int", 50, 0, 100, 0);
  KelDataRecvInt number(store.get(), "A/int");
  EXPECT_TRUE(number.Attach(other.get()));
  EXPECT_EQ(number.value(), 50);
  store->SetInt(nullptr, "A/int", 6);
  EXPECT_EQ(number.value(), 50);
  store = nullptr;
  EXPECT_FALSE(alive) << "the old store was let go";
  EXPECT_FALSE(number.Attach(nullptr));
  EXPECT_EQ(other->refCount(), 1);
  EXPECT_FALSE(number.Disconnect());
}

TEST_F(DataRecv, AttachToTheSameStoreReconnects) {
  KelDataRecvInt number(store.get(), "A/later");
  EXPECT_FALSE(number.Attach(store.get()));
  store->CreateInt("A/later", 3, 0, 100, 0);
  EXPECT_TRUE(number.Attach(store.get()));
  EXPECT_EQ(number.value(), 3);
  store->SetIntEx(nullptr, "A/later", 9, 1);
  const int32_t references = store->refCount();
  EXPECT_TRUE(number.Attach(store.get()));
  EXPECT_EQ(number.value(), 3) << "nothing happens while connected, not even a refresh";
  EXPECT_EQ(store->refCount(), references);
  number.Disconnect();
}

TEST_F(DataRecv, AttachKeepsAStoreThatOnlyTheReceiverHolds) {
  KelDataRecvInt number(store.get(), "A/later");
  IDataStore* const raw = store.get();
  store = nullptr;
  EXPECT_FALSE(number.Attach(raw));
  ASSERT_TRUE(alive);
  raw->CreateInt("A/later", 3, 0, 100, 0);
  EXPECT_TRUE(number.Connect());
  number.Disconnect();
  EXPECT_FALSE(alive);
}

TEST_F(DataRecv, WorksWithoutAStore) {
  KelDataRecvOroString wide(nullptr, "A/wide");
  EXPECT_FALSE(wide.isConnected());
  EXPECT_FALSE(wide.Connect());
  EXPECT_FALSE(wide.Disconnect());
  EXPECT_FALSE(wide.Attach(nullptr));
  EXPECT_TRUE(wide.value().isEmpty());
  EXPECT_TRUE(wide.Attach(store.get()));
  EXPECT_TRUE(wide.value() == "wide");
  wide.Disconnect();
}

TEST_F(DataRecv, WithoutAKeyItNeverConnects) {
  KelDataRecvInt number(store.get(), nullptr);
  EXPECT_FALSE(number.Connect());
  EXPECT_TRUE(number.Disconnect());
}

TEST_F(DataRecv, IsNotCalledForItsOwnChange) {
  KelDataRecvInt number(store.get(), "A/int");
  store->SetInt(&number, "A/int", 8);
  EXPECT_EQ(number.value(), 5);
  number.Refresh();
  EXPECT_EQ(number.value(), 8);
  number.Disconnect();
}

TEST(DataRecvClass, AnswersForItsNames) {
  KelDataRecvInt number(nullptr, "x");
  EXPECT_STREQ(number.getClassName(), "KelDataRecvInt");
  EXPECT_EQ(oroQuery<IOroDataReceiver>(&number), static_cast<IOroDataReceiver*>(&number));
  EXPECT_NE(oroQueryClass<KelDataReceiver>(&number), nullptr);
  EXPECT_NE(oroQueryClass<KelDataRecvItem>(&number), nullptr);
  EXPECT_EQ(oroQueryClass<KelDataRecvFloat>(&number), nullptr);
}

TEST(DataRecvClass, OwnOperationsStandInTheirOrder) {
  const int first = tests::slotNumber(&KelDataRecvItem::Attach);
  EXPECT_GT(first, tests::slotNumber(&KelDataReceiver::OnVoidFired));
  EXPECT_EQ(tests::slotNumber(&KelDataRecvItem::Connect), first + 1);
  EXPECT_EQ(tests::slotNumber(&KelDataRecvItem::Disconnect), first + 2);
  EXPECT_EQ(tests::slotNumber(&KelDataRecvItem::Refresh), first + 3);
}

TEST(DataReceiver, BaseDoesNothing) {
  const IPtr<IDataStore> store(new KelDataStore(true, 5, 20));
  KelDataReceiver receiver;
  store->CreateInt("int", 0, 0, 9, 0);
  store->CreateFloat("float", 0, 0, 9, 0);
  store->CreateString("text", 9, "", 0);
  store->CreateOroString("wide", 9, OroString(), 0);
  store->CreateBlob("blob", 0, nullptr, 0);
  store->CreateVoid("event", 0);
  for (const char* path : {"int", "float", "text", "wide", "blob", "event"}) {
    EXPECT_TRUE(store->AddReceiver(path, &receiver));
  }
  EXPECT_TRUE(store->SetInt(nullptr, "int", 1));
  EXPECT_TRUE(store->SetIntEx(nullptr, "int", 2, 3));
  EXPECT_TRUE(store->SetFloat(nullptr, "float", 1));
  EXPECT_TRUE(store->SetString(nullptr, "text", "a"));
  EXPECT_TRUE(store->SetOroString(nullptr, "wide", OroString(u"a")));
  EXPECT_TRUE(store->SetBlob(nullptr, "blob", "a", 1));
  EXPECT_TRUE(store->Fire(nullptr, "event"));
  EXPECT_EQ(receiver.refCount(), 0) << "items do not count it";
  EXPECT_STREQ(receiver.getClassName(), "KelDataReceiver");
}

}  // namespace
