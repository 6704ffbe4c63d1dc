// KelDataVisitor: the do-nothing base of the visitors of the settings tree.
//
// Override VisitItem to treat all kinds alike, or the typed visits. The base accepts everything; it
// keeps a filter for those that ask it, and asks nothing itself. One thread at a time.
#pragma once

#include <cstdint>

#include "interfaces/IKelDataFilter.h"
#include "interfaces/IKelDataVisitor.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"

class IKelDataItem;

class KelDataVisitor : public IKelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataVisitor"; }
  using Offers = OroOffers<KelDataVisitor, IKelDataVisitor>;

  // `mode` is kReading or kWriting.
  explicit KelDataVisitor(int32_t mode) : mode_(mode) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Begin() override { return true; }
  bool EnterDirectory(IKelDataDirectory*) override { return true; }
  // The five typed visits hand the item on to VisitItem.
  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;
  bool LeaveDirectory(IKelDataDirectory*) override { return true; }
  bool End() override { return true; }

  IKelDataFilter* GetFilter() const override { return filter_.get(); }
  void SetFilter(IKelDataFilter* filter) override { filter_ = filter; }
  int32_t GetMode() const override { return mode_; }

  virtual bool VisitItem(IKelDataItem*) { return true; }

 private:
  int32_t mode_;
  IPtr<IKelDataFilter> filter_;
};
