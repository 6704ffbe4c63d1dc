// IKelDataItem: one setting of the tree, whatever its kind.
//
// Ask it for the typed interface of its kind (IKelDataInt and its like) to read or set the value.
// An item keeps four layers of its value: 0 is current, 1 what the settings file holds, 2 and 3 are
// spare snapshots. The directory owns the item and deletes it whatever its reference count says.
// One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IKelDataVisitor;
class IOroDataReceiver;

class IKelDataItem : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataItem"; }

  // The kinds, as GetType gives them.
  static constexpr int32_t kVoid = 0;
  static constexpr int32_t kInt = 1;
  static constexpr int32_t kFloat = 2;
  static constexpr int32_t kString = 3;
  static constexpr int32_t kOroString = 4;
  static constexpr int32_t kBlob = 5;

  // The flags, to be combined.
  static constexpr uint32_t kPersistent = 1;     // file visitors take part
  static constexpr uint32_t kJournalled = 2;     // each set through the store is written at once
  static constexpr uint32_t kLayerExempt = 4;    // CopyLayers of a directory passes over it
  static constexpr uint32_t kInitialiseAll = 8;  // Set writes all layers; writers always write it
  static constexpr uint32_t kNoNotifyAll = 16;   // NotifyAll of the store passes over it

  // The full path, and the part of it behind the last '/'. The item's own text.
  virtual const char* GetPath() const = 0;
  virtual const char* GetName() const = 0;
  virtual int32_t GetType() const = 0;
  virtual uint32_t GetFlags() const = 0;
  virtual void SetFlags(uint32_t flags) = 0;

  // Not counted. A receiver that is there already stays as it is; a new one takes the first empty
  // slot and starts unblocked.
  virtual void AddReceiver(IOroDataReceiver* receiver) = 0;
  // True if it was there. Its slot is empty until a later delivery closes the gap.
  virtual bool RemoveReceiver(IOroDataReceiver* receiver) = 0;
  virtual void BlockReceiver(IOroDataReceiver* receiver, bool blocked) = 0;
  // A failed assertion for a receiver that is unknown here.
  virtual bool IsReceiverBlocked(IOroDataReceiver* receiver) const = 0;
  // Empty slots are counted.
  virtual int32_t GetReceiverCount() const = 0;
  // `index` from 0. Null for an empty slot and outside the range.
  virtual IOroDataReceiver* GetReceiver(int32_t index) const = 0;

  // Calls the visitor's operation for this kind and gives its result; an event is not visited and
  // gives true.
  virtual bool Accept(IKelDataVisitor* visitor) = 0;
  // Into layer 0: an update that receivers hear of. Into another layer: silent. A layer outside
  // 0 to 3 does nothing.
  virtual void CopyLayer(int32_t from, int32_t to) = 0;
  virtual bool LayersDiffer(int32_t a, int32_t b) const = 0;
  // Every receiver that is not blocked hears the current value.
  virtual void Notify() = 0;
};
