// MemLimitListener: keeps the value of the setting "Memory/MemLimit" where anybody can read it
// without going through the settings store.
//
// kelMemoryLimit in kelmemory.h reads it from the one that the process has, made at first need and
// never destroyed. It answers queries under its base's name alone. A setting that is not declared
// when it is made gives 0 and is never heard of again. A template as its base is: whoever makes one
// includes interfaces/IOroDataReceiver.h. The limit is read by any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "orobasictypes/keldatareceiverof.h"
#include "orobasictypes/keltruncate.h"

namespace memlimit {

inline constexpr char settingName[] = "Memory/MemLimit";

// The larger of physical memory and address space; 0x80000000 when the system does not tell.
int64_t ofMachine();
// Adds the receiver to the setting and stores its value in `limit`; without a settings store
// nothing happens.
void follow(IOroDataReceiver& receiver, std::atomic<int64_t>& limit);

}  // namespace memlimit

template <class Base = KelDataReceiverOf<>>
class MemLimitListener : public Base {
 public:
  MemLimitListener() : limit_(memlimit::ofMachine()) { memlimit::follow(*this, limit_); }

  void OnFloatChanged(const char* path, double value) override {
    if (std::strcmp(path, memlimit::settingName) == 0) limit_ = kelTruncate(value);
  }
  int64_t limit() const { return limit_.load(std::memory_order_relaxed); }  // bytes

 private:
  std::atomic<int64_t> limit_;  // bytes
};

// The one of this process.
MemLimitListener<>& kelMemLimitListener();
