// OroAsciiHead: the front of a wide text as narrow characters, for reading a number from it.
//
//   const OroAsciiHead head(u" 12.5 m");  // head.text() is "12.5"
//
// White space is skipped; the head ends at the first unit that no number can hold. It copies, into
// a block of its own when the head is long. For one thread and one call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

class OroAsciiHead {
 public:
  explicit OroAsciiHead(std::u16string_view text);
  ~OroAsciiHead();
  OroAsciiHead(const OroAsciiHead&) = delete;
  OroAsciiHead& operator=(const OroAsciiHead&) = delete;

  std::string_view text() const { return {text_, length_}; }

 private:
  char local_[64];
  char* text_ = local_;
  size_t length_ = 0;
  int32_t capacity_ = 0;  // above 0: text_ is a block of the pool
};
