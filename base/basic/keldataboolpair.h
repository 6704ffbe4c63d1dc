// KelDataBoolPair: follows two integer settings and combines them into one truth value. A value
// above 0 counts as true.
//
//   KelDataBoolPair shown(store, "View/Points", "View/Grid", KelDataBoolPair::kOr);
//   if (shown.value()) ...
//
// It is connected only while both keys exist. KelDataRecvItem tells how it ends.
#pragma once

#include <cstdint>

#include "base/basic/keldatarecvitem.h"

class KelDataBoolPair final : public KelDataRecvItem {
 public:
  static constexpr const char* className() { return "KelDataBoolPair"; }
  using Offers = OroOffersOver<KelDataBoolPair, KelDataRecvItem>;

  // The operations; any other number gives false.
  static constexpr int32_t kAnd = 0;
  static constexpr int32_t kOr = 1;
  static constexpr int32_t kExclusiveOr = 2;

  // The bits of the state.
  static constexpr uint8_t kCombined = 1;
  static constexpr uint8_t kFirst = 2;
  static constexpr uint8_t kSecond = 4;

  KelDataBoolPair(IDataStore* store, const char* firstKey, const char* secondKey,
                  int32_t operation);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Connect() override;
  bool Disconnect() override;
  void Refresh() override;
  // Any path but the first key means the second.
  void OnIntChanged(const char* path, int32_t value) override;

  bool value() const { return (state_ & kCombined) != 0; }
  uint8_t state() const { return state_; }

 private:
  void set(uint8_t bit, bool on);
  void combine();

  int32_t operation_;
  KelCString secondKey_;
  uint8_t state_ = 0;
};
