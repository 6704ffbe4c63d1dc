// KelDataRecvInt: follows an integer setting.
//
// KelDataRecvItem tells how it connects and ends. Without a connection it is 0 or the last value.
// A value that is set with SetIntEx is not heard: the cached one is old until Refresh.
#pragma once

#include <cstdint>

#include "base/basic/keldatarecvitem.h"

class KelDataRecvInt final : public KelDataRecvItem {
 public:
  static constexpr const char* className() { return "KelDataRecvInt"; }
  using Offers = OroOffersOver<KelDataRecvInt, KelDataRecvItem>;

  KelDataRecvInt(IDataStore* store, const char* key);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void Refresh() override;
  void OnIntChanged(const char*, int32_t value) override { value_ = value; }

  int32_t value() const { return value_; }

 private:
  int32_t value_ = 0;  // as last heard or read
};
