// IOroDataReceiver: hears of changes of settings.
//
// Give one to IDataStore::AddReceiver (or to an item). Each handler is called with the item's full
// path after the value is stored, on the thread of whoever sets it and before the setter returns.
// The path, texts and data are the item's own and good for the call. The item does not count the
// receiver: remove it before it dies. While its handler runs it hears nothing more of that item.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IOroDataReceiver : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDataReceiver"; }

  virtual void OnBlobChanged(const char* path, const void* data, int32_t size) = 0;
  // An integer that was set with SetIntEx; OnIntChanged is not called for it.
  virtual void OnIntExChanged(const char* path, int32_t value, int32_t extra) = 0;
  virtual void OnOroStringChanged(const char* path, const OroString& text) = 0;
  virtual void OnStringChanged(const char* path, const char* text) = 0;
  virtual void OnFloatChanged(const char* path, double value) = 0;
  virtual void OnIntChanged(const char* path, int32_t value) = 0;
  virtual void OnVoidFired(const char* path) = 0;
};
