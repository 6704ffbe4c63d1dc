// KelDataString: a setting that is a narrow text of limited length.
//
// It keeps one character more than its capacity, in every layer; kept, since the length that others
// see and store follows from it. A null text is an empty one.
#pragma once

#include "base/basic/keldataitem.h"
#include "interfaces/IKelDataString.h"

class KelDataString final : public KelDataItem, public IKelDataString {
 public:
  static constexpr const char* className() { return "KelDataString"; }
  static constexpr int32_t kKind = IKelDataItem::kString;
  using Offers = OroOffersOver<KelDataString, KelDataItem, IKelDataString>;

  // A capacity below 0 counts as 0.
  KelDataString(const char* path, int32_t capacity, const char* text, uint32_t flags);

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayer(int32_t from, int32_t to) override;
  bool LayersDiffer(int32_t a, int32_t b) const override;
  void Notify() override { Update(Get(), nullptr, true); }

  const char* Get() const override { return layers_[0].c_str(); }
  // Takes text of one of its own layers too.
  void Set(const char* text) override;
  void Update(const char* text, IOroDataReceiver* sender, bool force) override;
  int32_t GetCapacity() const override { return capacity_; }

 private:
  void store(KelCString& layer, const char* text) const;

  KelCString layers_[kLayers];  // 0 is the current value; null for empty
  int32_t capacity_;            // characters, as asked for
};
