// KelDataInt: a setting that is a signed 32-bit integer, kept within a range.
#pragma once

#include "base/basic/keldataitem.h"
#include "interfaces/IKelDataInt.h"

class KelDataInt final : public KelDataItem, public IKelDataInt {
 public:
  static constexpr const char* className() { return "KelDataInt"; }
  static constexpr int32_t kKind = IKelDataItem::kInt;
  using Offers = OroOffersOver<KelDataInt, KelDataItem, IKelDataInt>;

  // The range may be inverted; the minimum then wins below itself, the maximum everywhere else.
  KelDataInt(const char* path, int32_t value, int32_t minimum, int32_t maximum, uint32_t flags);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayer(int32_t from, int32_t to) override;
  bool LayersDiffer(int32_t a, int32_t b) const override;
  void Notify() override { Update(layers_[0], nullptr, true); }

  int32_t Get() const override { return layers_[0]; }
  void Set(int32_t value) override;
  void Update(int32_t value, IOroDataReceiver* sender, bool force) override;
  void GetRange(int32_t& minimum, int32_t& maximum) const override;

  // Sets, then tells every receiver that is not blocked, with `extra`, whether it changed or not.
  void updateEx(int32_t value, int32_t extra);

 private:
  int32_t clamp(int32_t value) const {
    return value < minimum_ ? minimum_ : (value < maximum_ ? value : maximum_);
  }

  int32_t layers_[kLayers];  // 0 is the current value
  int32_t minimum_;
  int32_t maximum_;
};
