// KelDataItem: what the items of all kinds share: path, flags and the receivers.
//
// Derive a typed item from it and implement its typed interface beside. An item is made by the
// store and owned by its directory. Handlers may add and remove receivers, set the item again and
// remove it; its delivery then ends. A set through the store keeps a removed item alive until its
// handlers have returned, a set of the item itself does not. One thread at a time.
#pragma once

#include <cstdint>

#include "interfaces/IKelDataItem.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"

class KelDataItem : public IKelDataItem {
 public:
  static constexpr const char* className() { return "KelDataItem"; }
  static constexpr int32_t kLayers = 4;
  using Offers = OroOffers<KelDataItem, IKelDataItem>;

  // `path` is copied and must not be null. The kind never changes.
  KelDataItem(const char* path, int32_t kind, uint32_t flags);
  ~KelDataItem() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const char* GetPath() const override { return path(); }
  const char* GetName() const override { return path() + leafOffset_; }
  int32_t GetType() const override { return kind_; }
  uint32_t GetFlags() const override { return flags_; }
  void SetFlags(uint32_t flags) override { flags_ = flags; }

  void AddReceiver(IOroDataReceiver* receiver) override;
  bool RemoveReceiver(IOroDataReceiver* receiver) override;
  void BlockReceiver(IOroDataReceiver* receiver, bool blocked) override;
  bool IsReceiverBlocked(IOroDataReceiver* receiver) const override;
  int32_t GetReceiverCount() const override { return receivers_.count(); }
  IOroDataReceiver* GetReceiver(int32_t index) const override;

  // As an item without a value: nothing to visit, nothing to copy, no difference.
  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayer(int32_t from, int32_t to) override;
  bool LayersDiffer(int32_t a, int32_t b) const override;

  // The same as the virtual operations, for the store's own look-ups.
  const char* path() const { return path_.c_str(); }
  int32_t kind() const { return kind_; }
  bool hasFlag(uint32_t flag) const { return (flags_ & flag) != 0; }

  // Tells the receivers that the event was fired, whatever the kind of the item.
  void fire(IOroDataReceiver* sender, bool force);
  // For an item that leaves its store: receivers can no longer be removed by its path and may go
  // with it, so that a delivery that runs tells nobody any more.
  void forgetReceivers();

 protected:
  // Calls one handler with the value as it stands in layer 0 at that moment, so that a receiver
  // never hears a value that an earlier one has already replaced.
  using Message = void (*)(const KelDataItem& item, IOroDataReceiver& receiver, int32_t extra);

  struct Delivery {
    Message message;
    IOroDataReceiver* sender;  // passed over unless `force` is set; may be null
    bool force;
    // Only outermost deliveries close gaps. Wide texts and blobs do not count as deliveries that
    // others run in; kept, since the order of later calls depends on it.
    bool raisesDepth = true;
    int32_t extra = 0;
  };
  void deliver(const Delivery& delivery) {
    if (!receivers_.isEmpty()) deliverToAll(delivery);
  }

  static bool isLayer(int32_t layer) { return layer >= 0 && layer < kLayers; }

 private:
  void deliverToAll(const Delivery& delivery);
  int32_t findReceiver(const IOroDataReceiver* receiver) const;
  void tell(IOroDataReceiver* receiver, const Delivery& delivery, const bool& gone);
  void setBlocked(IOroDataReceiver* receiver, bool blocked);
  void compact();

  OroArray<IOroDataReceiver*> receivers_;             // not counted; null where one was removed
  OroHashTable<IOroDataReceiver*, uint8_t> blocked_;  // 1 while not to be told
  KelCString path_;                                   // full, as given
  int32_t leafOffset_;                                // of the name in the path
  int32_t kind_;
  uint32_t flags_;
  uint16_t depth_ = 0;              // deliveries that run now, one in the other
  bool compactionPending_ = false;  // a delivery met an empty slot
  bool* gone_ = nullptr;            // of the innermost delivery that runs; set at destruction
};
