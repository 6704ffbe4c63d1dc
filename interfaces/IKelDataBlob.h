// IKelDataBlob: a setting that is an array of bytes. The item keeps its own copy.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDataReceiver;

class IKelDataBlob : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataBlob"; }

  // The item's own, good until the next change; null when the size is 0.
  virtual const void* Get() const = 0;
  // Stores a copy, silently. Null data gives `size` zero bytes; a size below 0 counts as 0.
  virtual void Set(const void* data, int32_t size) = 0;
  // As Set; then, if size or bytes changed or `force` is set, tells the receivers. `sender`, which
  // may be null, is passed over unless `force` is set.
  virtual void Update(const void* data, int32_t size, IOroDataReceiver* sender, bool force) = 0;
  // In bytes.
  virtual int32_t GetSize() const = 0;
};
