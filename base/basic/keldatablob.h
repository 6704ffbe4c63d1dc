// KelDataBlob: a setting that is an array of bytes. Each layer owns its own copy.
#pragma once

#include "base/basic/keldataitem.h"
#include "interfaces/IKelDataBlob.h"

class KelDataBlob final : public KelDataItem, public IKelDataBlob {
 public:
  static constexpr const char* className() { return "KelDataBlob"; }
  static constexpr int32_t kKind = IKelDataItem::kBlob;
  using Offers = OroOffersOver<KelDataBlob, KelDataItem, IKelDataBlob>;

  KelDataBlob(const char* path, int32_t size, const void* data, uint32_t flags);
  ~KelDataBlob() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayer(int32_t from, int32_t to) override;
  bool LayersDiffer(int32_t a, int32_t b) const override;
  void Notify() override { Update(data_[0], size_[0], nullptr, true); }

  const void* Get() const override { return data_[0]; }
  // Takes data of one of its own layers too.
  void Set(const void* data, int32_t size) override;
  void Update(const void* data, int32_t size, IOroDataReceiver* sender, bool force) override;
  int32_t GetSize() const override { return size_[0]; }

 private:
  void store(int32_t layer, const void* data, int32_t size);
  bool holds(int32_t layer, const void* data, int32_t size) const;

  void* data_[kLayers] = {};    // owned; null for size 0; 0 is the current value
  int32_t size_[kLayers] = {};  // bytes
};
