// OroClcBinary: a block of bytes to hand to another component.
//
//   void* block = nullptr;
//   kelMalloc(block, 1, count);
//   return new OroClcBinary(block, count);   // whoever takes a reference owns it
//
// It owns the block and frees it when the last reference goes.
#pragma once

#include "interfaces/IOroClcBinary.h"
#include "orobasictypes/orooffers.h"

class OroClcBinary : public IOroClcBinary {
 public:
  static constexpr const char* className() { return "OroClcBinary"; }

  // Takes over a block of `size` bytes that kelMalloc gave, or null with size 0.
  OroClcBinary(void* block, uint32_t size) : block_(block), size_(size) {}
  OroClcBinary(const OroClcBinary&) = delete;
  OroClcBinary& operator=(const OroClcBinary&) = delete;
  ~OroClcBinary() override;

  uint32_t size() override { return size_; }
  const void* data() override { return block_; }

  using Offers = OroOffers<OroClcBinary, IOroClcBinary>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  void* block_;  // owned
  uint32_t size_;
};
