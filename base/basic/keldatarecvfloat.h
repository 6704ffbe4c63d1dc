// KelDataRecvFloat: follows a float setting.
//
// KelDataRecvItem tells how it connects and ends. Without a connection it is 0 or the last value.
#pragma once

#include "base/basic/keldatarecvitem.h"

class KelDataRecvFloat final : public KelDataRecvItem {
 public:
  static constexpr const char* className() { return "KelDataRecvFloat"; }
  using Offers = OroOffersOver<KelDataRecvFloat, KelDataRecvItem>;

  KelDataRecvFloat(IDataStore* store, const char* key);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void Refresh() override;
  void OnFloatChanged(const char*, double value) override { value_ = value; }

  double value() const { return value_; }

 private:
  double value_ = 0.0;  // as last heard or read
};
