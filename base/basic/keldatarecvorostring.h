// KelDataRecvOroString: follows a wide text setting.
//
// KelDataRecvItem tells how it connects and ends. Without a connection it is empty or the last
// value.
#pragma once

#include "base/basic/keldatarecvitem.h"
#include "orobasictypes/orostring.h"

class KelDataRecvOroString final : public KelDataRecvItem {
 public:
  static constexpr const char* className() { return "KelDataRecvOroString"; }
  using Offers = OroOffersOver<KelDataRecvOroString, KelDataRecvItem>;

  KelDataRecvOroString(IDataStore* store, const char* key);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void Refresh() override;
  void OnOroStringChanged(const char*, const OroString& text) override { value_ = text; }

  const OroString& value() const { return value_; }

 private:
  OroString value_;  // as last heard or read
};
