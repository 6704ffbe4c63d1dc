// A small family of interfaces and classes for the tests of the object model.
#pragma once

#include <cstdint>

#include "orobasictypes/orooffers.h"

namespace tests {

class IOroThing : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroThing"; }
  virtual int32_t size() = 0;
  virtual int32_t weight() = 0;
};

class IOroThingV2 : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroThingV2"; }
  virtual int32_t colour() = 0;
};

class IOroOther : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroOther"; }
  virtual int32_t other() = 0;
};

// Counts the living.
class KelThing : public IOroThing, public IOroThingV2 {
 public:
  static constexpr const char* className() { return "KelThing"; }
  using Offers = OroOffers<KelThing, IOroThing, IOroThingV2>;

  KelThing() { ++alive; }
  ~KelThing() override { --alive; }

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  int32_t size() override { return 11; }
  int32_t weight() override { return 12; }
  int32_t colour() override { return 21; }

  static inline int alive = 0;
};

// Over a concrete class, with an interface of its own and one that the base offers as well.
class KelBigThing : public KelThing, public IOroOther {
 public:
  static constexpr const char* className() { return "KelBigThing"; }
  using Offers = OroOffersOver<KelBigThing, KelThing, IOroOther, IOroThing>;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  int32_t other() override { return 31; }
};

}  // namespace tests
