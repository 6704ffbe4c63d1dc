// IKelDataString: a setting that is a narrow text of limited length. Null texts count as empty.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDataReceiver;

class IKelDataString : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataString"; }

  // Never null; the item's own, good until the next change.
  virtual const char* Get() const = 0;
  // Cuts to the capacity and one character more, and stores, silently.
  virtual void Set(const char* text) = 0;
  // As Set; then, if the text as given differed or `force` is set, tells the receivers. `sender`,
  // which may be null, is passed over unless `force` is set.
  virtual void Update(const char* text, IOroDataReceiver* sender, bool force) = 0;
  // In characters, as asked for when the item was made.
  virtual int32_t GetCapacity() const = 0;
};
