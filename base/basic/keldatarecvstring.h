// KelDataRecvString: follows a narrow text setting.
//
// KelDataRecvItem tells how it connects and ends. Without a connection it is empty or the last
// value.
#pragma once

#include "base/basic/keldatarecvitem.h"

class KelDataRecvString final : public KelDataRecvItem {
 public:
  static constexpr const char* className() { return "KelDataRecvString"; }
  using Offers = OroOffersOver<KelDataRecvString, KelDataRecvItem>;

  KelDataRecvString(IDataStore* store, const char* key);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void Refresh() override;
  void OnStringChanged(const char*, const char* text) override { value_ = text; }

  const char* value() const { return value_.c_str(); }

 private:
  KelCString value_;  // as last heard or read
};
