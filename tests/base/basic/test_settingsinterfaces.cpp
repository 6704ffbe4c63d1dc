// The order of the operations of the settings interfaces, by which component libraries call them.

#include <gtest/gtest.h>

#include "interfaces/ICustomDataStore.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataFilter.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"
#include "interfaces/IKelDataVisitor.h"
#include "interfaces/IOroDataReceiver.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::slotNumber;
using Store = IDataStore;
using Pieces = IDataStore::PathPieces;
using Sender = IOroDataReceiver*;

// The form of an overloaded operation that takes these arguments.
template <class Result, class... Arguments>
int slotOfForm(Result (Store::*operation)(Arguments...)) {
  return slotNumber(operation);
}

TEST(DataStoreOrder, DeclaringComesFirst) {
  EXPECT_EQ(slotNumber(&Store::CreateDirectory), 1);
  EXPECT_EQ(slotNumber(&Store::RemoveDirectory), 2);
  EXPECT_EQ(slotNumber(&Store::DirectoryExists), 3);
  EXPECT_EQ(slotNumber(&Store::CreateVoid), 4);
  EXPECT_EQ(slotNumber(&Store::CreateInt), 5);
  EXPECT_EQ(slotNumber(&Store::CreateFloat), 6);
  EXPECT_EQ(slotNumber(&Store::CreateString), 7);
  EXPECT_EQ(slotNumber(&Store::CreateOroString), 8);
  EXPECT_EQ(slotNumber(&Store::CreateBlob), 9);
}

TEST(DataStoreOrder, GettersHaveTheListFormFirst) {
  EXPECT_EQ((slotOfForm<int32_t, Pieces, bool*>(&Store::GetInt)), 10);
  EXPECT_EQ((slotOfForm<int32_t, const char*, bool*>(&Store::GetInt)), 11);
  EXPECT_EQ((slotOfForm<double, Pieces, bool*>(&Store::GetFloat)), 12);
  EXPECT_EQ((slotOfForm<double, const char*, bool*>(&Store::GetFloat)), 13);
  EXPECT_EQ((slotOfForm<const char*, Pieces, bool*>(&Store::GetString)), 14);
  EXPECT_EQ((slotOfForm<const char*, const char*, bool*>(&Store::GetString)), 15);
  EXPECT_EQ((slotOfForm<const OroString&, Pieces, bool*>(&Store::GetOroString)), 16);
  EXPECT_EQ((slotOfForm<const OroString&, const char*, bool*>(&Store::GetOroString)), 17);
  EXPECT_EQ(slotNumber(&Store::GetIntRange), 18);
  EXPECT_EQ(slotNumber(&Store::GetFloatRange), 19);
  EXPECT_EQ(slotNumber(&Store::GetBlob), 20);
  EXPECT_EQ(slotNumber(&Store::GetCapacity), 21);
}

TEST(DataStoreOrder, InitialisingAndItemsFollow) {
  EXPECT_EQ(slotNumber(&Store::InitInt), 22);
  EXPECT_EQ(slotNumber(&Store::InitFloat), 23);
  EXPECT_EQ(slotNumber(&Store::InitString), 24);
  EXPECT_EQ(slotNumber(&Store::InitOroString), 25);
  EXPECT_EQ(slotNumber(&Store::InitBlob), 26);
  EXPECT_EQ(slotNumber(&Store::RemoveItem), 27);
  EXPECT_EQ(slotNumber(&Store::Clear), 28);
  EXPECT_EQ(slotNumber(&Store::GetType), 29);
  EXPECT_EQ(slotNumber(&Store::GetFlags), 30);
  EXPECT_EQ(slotNumber(&Store::SetFlags), 31);
  EXPECT_EQ(slotNumber(&Store::CopyLayer), 32);
  EXPECT_EQ(slotNumber(&Store::CopyLayers), 33);
  EXPECT_EQ((slotOfForm<bool, Pieces>(&Store::Exists)), 34);
  EXPECT_EQ((slotOfForm<bool, const char*>(&Store::Exists)), 35);
  EXPECT_EQ(slotNumber(&Store::AddReceiver), 36);
  EXPECT_EQ(slotNumber(&Store::RemoveReceiver), 37);
  EXPECT_EQ(slotNumber(&Store::NotifyAll), 38);
}

TEST(DataStoreOrder, SettersAreGroupedByForm) {
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces, const void*, int32_t>(&Store::SetBlob)), 39);
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces, const OroString&>(&Store::SetOroString)), 40);
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces, const char*>(&Store::SetString)), 41);
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces, double>(&Store::SetFloat)), 42);
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces, int32_t>(&Store::SetInt)), 43);
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces>(&Store::Fire)), 44);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*, const void*, int32_t>(&Store::SetBlob)), 45);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*, const OroString&>(&Store::SetOroString)), 46);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*, const char*>(&Store::SetString)), 47);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*, double>(&Store::SetFloat)), 48);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*, int32_t>(&Store::SetInt)), 49);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*>(&Store::Fire)), 50);
  EXPECT_EQ((slotOfForm<bool, Sender, Pieces, int32_t, int32_t>(&Store::SetIntEx)), 51);
  EXPECT_EQ((slotOfForm<bool, Sender, const char*, int32_t, int32_t>(&Store::SetIntEx)), 52);
}

TEST(DataStoreOrder, PersistenceComesLast) {
  EXPECT_EQ(slotNumber(&Store::SetForceNotify), 53);
  EXPECT_EQ(slotNumber(&Store::GetForceNotify), 54);
  EXPECT_EQ(slotNumber(&Store::SetFrozen), 55);
  EXPECT_EQ(slotNumber(&Store::GetFrozen), 56);
  EXPECT_EQ(slotNumber(&Store::AcceptPath), 57);
  EXPECT_EQ(slotNumber(&Store::Accept), 58);
  EXPECT_EQ(slotNumber(&Store::CreateDefaultReader), 59);
  EXPECT_EQ(slotNumber(&Store::CreateDefaultWriter), 60);
  EXPECT_EQ(slotNumber(&Store::CreateFileReader), 61);
  EXPECT_EQ(slotNumber(&Store::CreateFileWriter), 62);
  EXPECT_EQ(slotNumber(&Store::CreateXmlReader), 63);
  EXPECT_EQ(slotNumber(&Store::CreateXmlWriter), 64);
  EXPECT_EQ(slotNumber(&Store::GetWriter), 65);
  EXPECT_EQ(slotNumber(&Store::SetWriter), 66);
  EXPECT_EQ(slotNumber(&Store::GetReader), 67);
  EXPECT_EQ(slotNumber(&Store::SetReader), 68);
  EXPECT_EQ(slotNumber(&Store::Load), 69);
  EXPECT_EQ(slotNumber(&Store::ImportIni), 70);
  EXPECT_EQ(slotNumber(&Store::CollectPaths), 71);
  EXPECT_EQ(slotNumber(&Store::ImportXml), 72);
}

TEST(DataItemOrder, IsFixed) {
  EXPECT_EQ(slotNumber(&IKelDataItem::GetPath), 1);
  EXPECT_EQ(slotNumber(&IKelDataItem::GetName), 2);
  EXPECT_EQ(slotNumber(&IKelDataItem::GetType), 3);
  EXPECT_EQ(slotNumber(&IKelDataItem::GetFlags), 4);
  EXPECT_EQ(slotNumber(&IKelDataItem::SetFlags), 5);
  EXPECT_EQ(slotNumber(&IKelDataItem::AddReceiver), 6);
  EXPECT_EQ(slotNumber(&IKelDataItem::RemoveReceiver), 7);
  EXPECT_EQ(slotNumber(&IKelDataItem::BlockReceiver), 8);
  EXPECT_EQ(slotNumber(&IKelDataItem::IsReceiverBlocked), 9);
  EXPECT_EQ(slotNumber(&IKelDataItem::GetReceiverCount), 10);
  EXPECT_EQ(slotNumber(&IKelDataItem::GetReceiver), 11);
  EXPECT_EQ(slotNumber(&IKelDataItem::Accept), 12);
  EXPECT_EQ(slotNumber(&IKelDataItem::CopyLayer), 13);
  EXPECT_EQ(slotNumber(&IKelDataItem::LayersDiffer), 14);
  EXPECT_EQ(slotNumber(&IKelDataItem::Notify), 15);
}

template <class Typed>
void expectTypedOrder(int fourth) {
  EXPECT_EQ(slotNumber(&Typed::Get), 1);
  EXPECT_EQ(slotNumber(&Typed::Set), 2);
  EXPECT_EQ(slotNumber(&Typed::Update), 3);
  EXPECT_EQ(fourth, 4);
}

TEST(DataItemOrder, IsFixedForEachKind) {
  expectTypedOrder<IKelDataInt>(slotNumber(&IKelDataInt::GetRange));
  expectTypedOrder<IKelDataFloat>(slotNumber(&IKelDataFloat::GetRange));
  expectTypedOrder<IKelDataString>(slotNumber(&IKelDataString::GetCapacity));
  expectTypedOrder<IKelDataOroString>(slotNumber(&IKelDataOroString::GetCapacity));
  expectTypedOrder<IKelDataBlob>(slotNumber(&IKelDataBlob::GetSize));
}

TEST(DataDirectoryOrder, IsFixed) {
  EXPECT_EQ(slotNumber(&IKelDataDirectory::GetPath), 1);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::GetName), 2);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::AddDirectory), 3);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::RemoveDirectory), 4);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::AddItem), 5);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::RemoveItem), 6);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::FindDirectory), 7);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::GetDirectory), 8);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::GetItem), 9);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::Accept), 10);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::CopyLayers), 11);
  EXPECT_EQ(slotNumber(&IKelDataDirectory::CollectPaths), 12);
  EXPECT_EQ(slotNumber(&IKelDataFilter::Accept), 1);
}

TEST(DataReceiverOrder, IsFixed) {
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnBlobChanged), 1);
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnIntExChanged), 2);
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnOroStringChanged), 3);
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnStringChanged), 4);
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnFloatChanged), 5);
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnIntChanged), 6);
  EXPECT_EQ(slotNumber(&IOroDataReceiver::OnVoidFired), 7);
}

TEST(SettingsInterfaces, AreCalledByTheirNames) {
  EXPECT_STREQ(IDataStore::interfaceName(), "IDataStore");
  EXPECT_STREQ(ICustomDataStore::interfaceName(), "ICustomDataStore");
  EXPECT_STREQ(IKelDataItem::interfaceName(), "IKelDataItem");
  EXPECT_STREQ(IKelDataVisitor::interfaceName(), "IKelDataVisitor");
  EXPECT_STREQ(IKelDataFilter::interfaceName(), "IKelDataFilter");
  EXPECT_STREQ(IKelDataDirectory::interfaceName(), "IKelDataDirectory");
  EXPECT_STREQ(IOroDataReceiver::interfaceName(), "IOroDataReceiver");
}

}  // namespace
