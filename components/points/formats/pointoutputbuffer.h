// PointOutputBuffer: gathers what a writer makes and hands it to the output in large blocks.
//
//   PointOutputBuffer bytes(output);
//   char* at = bytes.room(64);
//   bytes.take(format(at));
//   return bytes.flush();
//
// flush() ends the writing; what was not flushed is lost. The output outlives it. One thread.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "components/points/formats/pointoutput.h"

class PointOutputBuffer {
 public:
  static constexpr size_t kRoom = size_t{1} << 18;

  explicit PointOutputBuffer(PointOutput& output) : output_(output) {}

  // Room for `size` bytes in a row. Requires: size is at most kRoom.
  char* room(size_t size) {
    if (kRoom - end_ < size) flush();
    return bytes_.get() + end_;
  }
  // Takes what was put into the room, up to `end`.
  void take(const char* end) { end_ = static_cast<size_t>(end - bytes_.get()); }
  void put(std::string_view text);

  // False once the output has refused anything.
  bool flush();
  bool good() const { return good_; }

 private:
  PointOutput& output_;
  std::unique_ptr<char[]> bytes_ = std::make_unique_for_overwrite<char[]>(kRoom);
  size_t end_ = 0;
  bool good_ = true;
};
