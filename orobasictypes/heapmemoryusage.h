// HeapMemoryUsage: the ledger behind IOroHeapMemoryUsage.
//
//   #include "interfaces/IOroHeapMemoryUsage.h"
//   HeapMemoryUsage<> usage;
//   usage.Add(100);
//
// One mutex serves the writes of all ledgers; the getters read without it. A copy has the same
// figures and a count of its own. A template only because headers of this folder know no interface:
// whoever makes one includes that of the ledger. Any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include "orobasictypes/oromutex.h"
#include "orobasictypes/orooffers.h"
#include "platform/memoryfigures.h"

class IOroHeapMemoryUsage;

// The mutex of all ledgers of this module.
OroMutex& kelHeapUsageMutex();

template <class Interface = IOroHeapMemoryUsage>
class HeapMemoryUsage : public Interface {
 public:
  static constexpr const char* className() { return "HeapMemoryUsage"; }
  using Offers = OroOffers<HeapMemoryUsage, Interface>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  HeapMemoryUsage() = default;
  HeapMemoryUsage(const HeapMemoryUsage& other)
      : Interface(other),
        current_(other.current_.load()),
        mark_(other.mark_.load()),
        peak_(other.peak_.load()) {}

  void Add(uint64_t bytes) override {
    const std::lock_guard hold(kelHeapUsageMutex());
    current_ += bytes;
    // Kept: unsigned, so that a use below the mark makes a very large peak.
    const uint64_t risen = current_ - mark_;
    if (risen > peak_) peak_ = risen;
  }
  void Subtract(uint64_t bytes) override {
    const std::lock_guard hold(kelHeapUsageMutex());
    current_ -= bytes;
  }
  void SubtractBlock(const void* block) override { this->Subtract(platform::heapBlockSize(block)); }
  void SetMark() override {
    const std::lock_guard hold(kelHeapUsageMutex());
    mark_ = current_.load();
    peak_ = 0;
  }
  uint64_t GetCurrent() override { return current_; }
  uint64_t GetMark() override { return mark_; }
  uint64_t GetPeak() override { return peak_; }

 private:
  std::atomic<uint64_t> current_ = 0;  // bytes in use
  std::atomic<uint64_t> mark_ = 0;     // what current_ was when the mark was set
  std::atomic<uint64_t> peak_ = 0;     // the most of current_ - mark_ since then
};
