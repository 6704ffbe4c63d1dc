// KelDataRecvItem: binds one key of a store to a value that follows the setting by itself; base of
// KelDataRecvInt, KelDataRecvFloat, KelDataRecvString, KelDataRecvOroString and KelDataBoolPair.
//
//   KelDataRecvInt limit(store, "Memory/Limit");  // connected if the key exists
//   use(limit.value());
//   limit.Disconnect();  // before it dies
//
// It holds a reference on its store until Disconnect. Its destruction does not disconnect: the item
// would keep a receiver that is gone, and the store its reference. One thread at a time.
#pragma once

#include "base/basic/keldatareceiver.h"
#include "orobasictypes/kelcstring.h"

class IDataStore;

class KelDataRecvItem : public KelDataReceiver {
 public:
  static constexpr const char* className() { return "KelDataRecvItem"; }
  using Offers = OroOffersOver<KelDataRecvItem, KelDataReceiver>;

  // Connects if `store`, which may be null, has the key; derived classes then read the value.
  KelDataRecvItem(IDataStore* store, const char* key);
  KelDataRecvItem(const KelDataRecvItem&) = delete;
  KelDataRecvItem& operator=(const KelDataRecvItem&) = delete;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Leaves the present store and connects to this one, which may be null or the same; true if
  // connected then. Nothing happens while connected to it.
  virtual bool Attach(IDataStore* store);
  // True if connected. False as long as the store lacks the key: nobody tells when it is created,
  // so a later call may succeed. A key that is a directory connects and never hears anything.
  virtual bool Connect();
  // Leaves the store and lets go of it; the value stays as it is. False without a store.
  virtual bool Disconnect();
  // Takes the value from the store; nothing while not connected.
  virtual void Refresh() = 0;

  bool isConnected() const { return connected_; }

 protected:
  // Holds the store and leaves the connecting to the derived class.
  struct Unconnected {};
  KelDataRecvItem(IDataStore* store, const char* key, Unconnected);

  IDataStore* store() const { return store_; }
  const char* key() const { return key_.c_str(); }
  void setConnected() { connected_ = true; }
  // The end of Disconnect, after the receiver was removed.
  void dropStore();

 private:
  bool joinItem();

  IDataStore* store_;  // counted by hand: destruction keeps the reference
  KelCString key_;
  bool connected_ = false;
};
