#pragma once

// The base of the test doubles: a counted class that offers the interfaces and answers the
// operations that nobody calls.
//
//   struct GenApp : tests::Double<GenApp, IGenApp> {
//     static constexpr const char* className() { return "GenApp"; }
//     void prepare() override { tests::event("prepare"); }
//   };

#include <cstdint>

#include "orobasictypes/orooffers.h"

namespace tests {

template <class Self, class... Interfaces>
class Double : public Interfaces... {
 public:
  void queryInterface(const char* name, void* out) override {
    OroOffers<Self, Interfaces...>::query(static_cast<Self&>(*this), name, out);
  }
  const char* getClassName() const override { return Self::className(); }

  // Overrides where an interface has the place, and is an operation more where none has it.
  virtual void unusedPlace3() {}
  virtual void unusedPlace5() {}
  virtual void unusedPlace6() {}
  virtual void unusedPlace7() {}
  virtual void unusedPlace8() {}
  virtual void unusedPlace9() {}
  virtual void unusedPlace10() {}
  virtual void unusedPlace14() {}
  virtual void unusedPlace15() {}
  virtual void unusedPlace16() {}
  virtual void unusedPlace17() {}
  virtual int32_t unusedSlot1() { return 0; }
  virtual int32_t unusedSlot2() { return 0; }
  virtual int32_t unusedSlot3() { return 0; }
  virtual int32_t unusedSlot4() { return 0; }
  virtual int32_t unusedSlot5() { return 0; }
  virtual int32_t unusedSlot6() { return 0; }
  virtual int32_t unusedSlot7() { return 0; }
  virtual int32_t unusedSlot8() { return 0; }
  virtual int32_t unusedSlot9() { return 0; }
  virtual int32_t unusedSlot10() { return 0; }
  virtual int32_t unusedSlot11() { return 0; }
  virtual int32_t unusedSlot12() { return 0; }
  virtual int32_t unusedSlot13() { return 0; }
  virtual int32_t unusedSlot14() { return 0; }
  virtual int32_t unusedSlot15() { return 0; }
  virtual int32_t unusedSlot16() { return 0; }
  virtual int32_t unusedSlot17() { return 0; }
  virtual int32_t unusedSlot18() { return 0; }
  virtual int32_t unusedSlot19() { return 0; }
  virtual int32_t unusedSlot20() { return 0; }
  virtual int32_t unusedSlot21() { return 0; }
  virtual int32_t unusedSlot22() { return 0; }
  virtual int32_t unusedSlot23() { return 0; }
  virtual int32_t unusedSlot24() { return 0; }
  virtual int32_t unusedSlot25() { return 0; }
  virtual int32_t unusedSlot26() { return 0; }
  virtual int32_t unusedSlot27() { return 0; }
  virtual int32_t unusedSlot28() { return 0; }
  virtual int32_t unusedSlot29() { return 0; }
  virtual int32_t unusedSlot30() { return 0; }
  virtual int32_t unusedSlot31() { return 0; }
  virtual int32_t unusedSlot32() { return 0; }
  virtual int32_t unusedSlot33() { return 0; }
  virtual int32_t unusedSlot34() { return 0; }
  virtual int32_t unusedSlot35() { return 0; }
  virtual int32_t unusedSlot36() { return 0; }
  virtual int32_t unusedSlot37() { return 0; }
};

}  // namespace tests
