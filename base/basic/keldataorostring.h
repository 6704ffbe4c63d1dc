// KelDataOroString: a setting that is a wide text of limited length.
#pragma once

#include "base/basic/keldataitem.h"
#include "interfaces/IKelDataOroString.h"
#include "orobasictypes/orostring.h"

class KelDataOroString final : public KelDataItem, public IKelDataOroString {
 public:
  static constexpr const char* className() { return "KelDataOroString"; }
  static constexpr int32_t kKind = IKelDataItem::kOroString;
  using Offers = OroOffersOver<KelDataOroString, KelDataItem, IKelDataOroString>;

  // A capacity below 0 counts as 0.
  KelDataOroString(const char* path, int32_t capacity, const OroString& text, uint32_t flags);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayer(int32_t from, int32_t to) override;
  bool LayersDiffer(int32_t a, int32_t b) const override;
  void Notify() override { Update(layers_[0], nullptr, true); }

  const OroString& Get() const override { return layers_[0]; }
  // Takes one of its own layers too.
  void Set(const OroString& text) override;
  void Update(const OroString& text, IOroDataReceiver* sender, bool force) override;
  int32_t GetCapacity() const override { return capacity_; }

 private:
  void store(OroString& layer, const OroString& text) const;
  // Whether the layer holds the text as it would be stored.
  bool holds(const OroString& layer, const OroString& text) const;

  OroString layers_[kLayers];  // 0 is the current value
  int32_t capacity_;           // 16-bit units
};
