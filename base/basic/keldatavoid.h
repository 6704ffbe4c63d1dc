// KelDataVoid: an event; it has no value and can only be fired. Visitors never see it.
#pragma once

#include "base/basic/keldataitem.h"

class KelDataVoid final : public KelDataItem {
 public:
  static constexpr const char* className() { return "KelDataVoid"; }
  static constexpr int32_t kKind = IKelDataItem::kVoid;
  using Offers = OroOffersOver<KelDataVoid, KelDataItem>;

  KelDataVoid(const char* path, uint32_t flags) : KelDataItem(path, kVoid, flags) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void Notify() override { fire(nullptr, true); }
};
