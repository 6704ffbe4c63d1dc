// PointExtraInfo: the colours of one point array, as floats or, once somebody asked for the packed
// array, packed, with 8 bits a channel.
//
// Colours that are set later are brought into the form that there is; ClearColors begins with
// floats again. See IOroPointExtraInfo.h for the places. One thread.
#pragma once

#include "components/points/pointplaces.h"
#include "interfaces/IOroPointExtraInfo.h"
#include "orobasictypes/orooffers.h"

class PointExtraInfo : public IOroPointExtraInfo {
 public:
  static constexpr const char* className() { return "PointExtraInfo"; }
  using Offers = OroOffers<PointExtraInfo, IOroPointExtraInfo>;

  PointExtraInfo() = default;
  PointExtraInfo(const PointExtraInfo& other)
      : IOroUnknown(),
        IOroPointExtraInfo(),
        floats_(other.floats_),
        packed_(other.packed_),
        isPacked_(other.isPacked_),
        hasColors_(other.hasColors_) {}
  PointExtraInfo& operator=(const PointExtraInfo&) = delete;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  IOroPointExtraInfo* Clone() override { return new PointExtraInfo(*this); }
  bool HasColors() override { return hasColors_; }
  void SetCapacity(int32_t count) override;
  void ClearColors() override;
  void SetColorD(int32_t i, const double* color) override;
  void SetColorF(int32_t i, const float* color) override;
  int32_t unusedSlot7() override { return 0; }
  void GetColorD(int32_t i, double* color) override;
  void GetColorF(int32_t i, float* color) override;
  uint32_t GetPackedColor(int32_t i) override;
  int32_t GetCount() override { return isPacked_ ? packed_.count() : floats_.count(); }
  bool Equals(IOroPointExtraInfo* other, int32_t count) override;
  void CopyColor(int32_t to, int32_t from) override;
  void SetCount(int32_t count) override;
  bool CanDiscard() override { return true; }
  void Remove(int32_t first, int32_t count) override;
  void Insert(int32_t first, int32_t count) override;
  int32_t unusedSlot18() override { return 0; }
  // Null: nothing.
  void Swap(IOroPointExtraInfo* other) override;
  void Assign(IOroPointExtraInfo* other) override;
  void Permute(const OroMM::IntArray& index, int32_t first, int32_t last) override;
  void Compact(const BitVector& mask) override;
  void Reorder(const OroMM::IntArray& map, int32_t count) override;
  bool Validate() override;
  uint32_t* GetPackedArray() override;

 private:
  struct FloatColor {
    float channels[3] = {};
  };

  template <class Work>
  auto onPlaces(Work&& work) {
    return isPacked_ ? work(packed_) : work(floats_);
  }
  bool makePlace(int32_t i);
  void take(PointExtraInfo& other);

  PointPlaces<FloatColor> floats_;
  PointPlaces<uint32_t> packed_;
  bool isPacked_ = false;  // which of the two is in use
  bool hasColors_ = false;
};
