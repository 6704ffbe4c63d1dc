// VertexArrayRPA: the points of a cloud as vertices.
//
// The array is not owned: its maker keeps it alive. Points that come later are not counted.
#pragma once

#include <algorithm>
#include <cstdint>

#include "orobasictypes/irealparray.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/vertexarrayimp.h"

class VertexArrayRPA : public VertexArrayImp {
 public:
  static constexpr const char* className() { return "VertexArrayRPA"; }
  using Offers = OroOffers<VertexArrayRPA, VertexArrayImp>;

  explicit VertexArrayRPA(const IRealPArray& array)
      : array_(&array), limit_(std::min(array.GetCount(), INT32_MAX - 1) + 1) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Behind the last point that there was when this was made. Nothing here checks it.
  int32_t Limit() const { return limit_; }
  void GetVertexF(int32_t i, float out[3]) const override { array_->Get(i, out); }
  void GetVertexD(int32_t i, double out[3]) const override {
    array_->Get(i, out[0], out[1], out[2]);
  }

 private:
  const IRealPArray* array_;  // not owned
  int32_t limit_;
};
