// PointObject: a named object of the document with one piece of data.
//
// The document owns its objects; an object owns its data.
#pragma once

#include "interfaces/IOroDocObject.h"
#include "interfaces/IOroPointInfo.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

class PointObject : public IOroDocObject, public IOroPointInfo {
 public:
  static constexpr const char* className() { return "PointObject"; }
  using Offers = OroOffers<PointObject, IOroDocObject, IOroPointInfo>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  PointObject(const OroString& name, const GUID& dataClass, IOroUnknown* data)
      : name_(name), dataClass_(dataClass), data_(data) {}

  const OroString& name() override { return name_; }
  IOroUnknown* data(const GUID& classId) override {
    return classId == dataClass_ ? data_.get() : nullptr;
  }

  int64_t pointCount() override;
  bool pointBounds(double* minimum, double* maximum) override;
  void pointAttributes(OroStringArray& names) override;

 private:
  OroString name_;
  GUID dataClass_;
  IPtr<IOroUnknown> data_;
};
