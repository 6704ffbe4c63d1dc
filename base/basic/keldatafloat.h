// KelDataFloat: a setting that is a 64-bit float, kept within a range.
#pragma once

#include "base/basic/keldataitem.h"
#include "interfaces/IKelDataFloat.h"

class KelDataFloat final : public KelDataItem, public IKelDataFloat {
 public:
  static constexpr const char* className() { return "KelDataFloat"; }
  static constexpr int32_t kKind = IKelDataItem::kFloat;
  using Offers = OroOffersOver<KelDataFloat, KelDataItem, IKelDataFloat>;

  // The range may be inverted; the minimum then wins below itself, the maximum everywhere else.
  KelDataFloat(const char* path, double value, double minimum, double maximum, uint32_t flags);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayer(int32_t from, int32_t to) override;
  bool LayersDiffer(int32_t a, int32_t b) const override;
  void Notify() override { Update(layers_[0], nullptr, true); }

  double Get() const override { return layers_[0]; }
  void Set(double value) override;
  void Update(double value, IOroDataReceiver* sender, bool force) override;
  void GetRange(double& minimum, double& maximum) const override;

 private:
  // Not-a-number fails both tests and becomes the maximum, so that no item differs from itself.
  double clamp(double value) const {
    return value < minimum_ ? minimum_ : (value < maximum_ ? value : maximum_);
  }

  double layers_[kLayers];  // 0 is the current value
  double minimum_;
  double maximum_;
};
