// PointInputBuffer: the bytes of an input in large blocks, as lines or as they are.
//
//   PointInputBuffer bytes(input);
//   if (!bytes.fill(12)) return cut(bytes.position());
//   use(bytes.data());
//   bytes.skip(12);
//
// For the readers of point files. The input outlives it. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "components/points/formats/pointinput.h"

class PointInputBuffer {
 public:
  // The most that fill() can hold ready.
  static constexpr size_t kRoom = size_t{1} << 18;

  explicit PointInputBuffer(PointInput& input) : input_(input) {}

  // Has `size` bytes ready in a row. False where the input ends before; what it had is ready then.
  // Requires: size is at most kRoom.
  bool fill(size_t size);
  // Reads on until the buffer is full or the input ends, and gives what is ready.
  size_t fillUp();

  const char* data() const { return bytes_.get() + at_; }
  size_t ready() const { return end_ - at_; }
  void skip(size_t size) { at_ += size; }  // Requires: size is at most ready()
  // Passes over bytes that need not be ready. False where the input ends before.
  bool skipFar(int64_t size);

  // The next line without its line end, LF or CR LF; the last may be without. False at the end of
  // the input and for a line of more than `longest` bytes, which atEnd() tells apart.
  bool line(std::string_view& line, size_t longest);
  bool atEnd() { return !fill(1); }

  // Bytes passed over so far: where data() stands in the file.
  int64_t position() const { return base_ + static_cast<int64_t>(at_); }
  // Bytes up to the end of the input, -1 where the input has no size.
  int64_t left() const { return input_.size() > 0 ? input_.size() - position() : -1; }
  int64_t size() const { return input_.size(); }
  bool failed() const { return input_.failed(); }
  // Back at the front. False for what can be read once only.
  bool restart();

 private:
  PointInput& input_;
  std::unique_ptr<char[]> bytes_ = std::make_unique_for_overwrite<char[]>(kRoom);
  int64_t base_ = 0;  // place of bytes_[0] in the file
  size_t at_ = 0;     // what is ready: bytes_[at_] up to bytes_[end_]
  size_t end_ = 0;
};
