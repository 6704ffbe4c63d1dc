// PointArrayFactory: makes the arrays that this library can read chunks of files into.
#pragma once

#include "interfaces/IRealPArrayFactory.h"
#include "orobasictypes/orooffers.h"

class PointArrayFactory : public IRealPArrayFactory {
 public:
  static constexpr const char* className() { return "PointArrayFactory"; }
  using Offers = OroOffers<PointArrayFactory, IRealPArrayFactory>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // An OroVectorArray for its chunks, null for all others.
  IRealPArray* MakeFromChunk(int32_t tag, int32_t size) override;
};
