#include "base/basic/keldatarecvitem.h"

#include <utility>

#include "interfaces/IDataStore.h"
#include "orobasictypes/iptr.h"

KelDataRecvItem::KelDataRecvItem(IDataStore* store, const char* key, Unconnected)
    : store_(store), key_(key) {
  if (store_ != nullptr) store_->addRef();
}

KelDataRecvItem::KelDataRecvItem(IDataStore* store, const char* key)
    : KelDataRecvItem(store, key, Unconnected()) {
  joinItem();
}

bool KelDataRecvItem::joinItem() {
  if (store_ == nullptr || !store_->Exists(key())) return false;
  store_->AddReceiver(key(), this);
  connected_ = true;
  return true;
}

// The new reference is taken first: the old one may be the last on the same store.
bool KelDataRecvItem::Attach(IDataStore* store) {
  if (store == store_ && connected_) return true;
  if (store != nullptr) store->addRef();
  if (store_ != nullptr) Disconnect();
  store_ = store;
  return Connect();
}

bool KelDataRecvItem::Connect() {
  if (!connected_ && joinItem()) Refresh();
  return connected_;
}

bool KelDataRecvItem::Disconnect() {
  if (store_ == nullptr) return false;
  store_->RemoveReceiver(key(), this);
  dropStore();
  return true;
}

void KelDataRecvItem::dropStore() {
  connected_ = false;
  if (IDataStore* const store = std::exchange(store_, nullptr)) store->release();
}
