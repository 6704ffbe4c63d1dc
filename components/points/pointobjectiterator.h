// PointObjectIterator: walks the objects that a document held when the walk was made.
//
// It keeps them alive, so the document may change meanwhile. One thread.
#pragma once

#include <vector>

#include "components/points/pointobject.h"
#include "interfaces/IOroDocObjectItr.h"

class PointObjectIterator : public IOroDocObjectItr {
 public:
  static constexpr const char* className() { return "PointObjectIterator"; }
  using Offers = OroOffers<PointObjectIterator, IOroDocObjectItr>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  explicit PointObjectIterator(const std::vector<PointObject*>& objects)
      : objects_(objects.begin(), objects.end()) {}

  bool atEnd() override { return at_ == objects_.size(); }
  void next() override { at_ += atEnd() ? 0 : 1; }
  IOroDocObject* current() override { return atEnd() ? nullptr : objects_[at_].get(); }

 private:
  std::vector<IPtr<PointObject>> objects_;
  size_t at_ = 0;
};
