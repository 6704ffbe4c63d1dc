// TestDisk: sees every write of this process to a descriptor or a block of a stream, and makes the
// disk full, for the life of this object. One at a time.
//
//   tests::TestDisk disk;
//   disk.refuseFrom(3);  // the first three writes go well
//   EXPECT_FALSE(save(path));
//   EXPECT_THAT(disk.writes, ElementsAre(1024, 1024, 1024, 512));
#pragma once

#include <cstddef>
#include <vector>

#include "platform/descriptor.h"
#include "platform/hooks.h"

namespace tests {

class TestDisk {
 public:
  TestDisk() { current() = this; }
  ~TestDisk() { current() = nullptr; }
  TestDisk(const TestDisk&) = delete;
  TestDisk& operator=(const TestDisk&) = delete;

  // The write of this number, from 0, and all behind it fail. Of that one `taken` bytes still fit.
  void refuseFrom(size_t number, size_t taken = 0) {
    refused_ = number;
    taken_ = taken;
  }

  std::vector<size_t> writes;  // bytes that each write asked for

 private:
  static TestDisk*& current() {
    static TestDisk* disk = nullptr;
    return disk;
  }
  static size_t room(size_t bytes) { return current()->roomFor(bytes); }
  size_t roomFor(size_t bytes) {
    const size_t number = writes.size();
    writes.push_back(bytes);
    if (number < refused_) return bytes;
    return number == refused_ && taken_ < bytes ? taken_ : 0;
  }

  size_t refused_ = SIZE_MAX;
  size_t taken_ = 0;
  platform::HookGuard<size_t(size_t)> guard_{platform::diskRoomHook, room};
};

}  // namespace tests
