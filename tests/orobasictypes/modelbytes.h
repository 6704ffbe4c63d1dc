// ModelBytes: puts the bytes of a model file together by hand, as the page on the format has it.
//
//   ModelBytes file(8);
//   file.begin(0x4B454C, 1).begin(0x10000, 0).number(1.0).number(2.0).number(3.0).end().end();
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace tests {

class ModelBytes {
 public:
  // Bytes of a size field, 4 or 8.
  explicit ModelBytes(int sizeWidth) : sizeWidth_(sizeWidth) {}

  ModelBytes& begin(uint32_t tag, uint32_t version) {
    starts_.push_back(bytes_.size());
    return put(tag << 8 | version, 4).put(0, sizeWidth_);
  }
  ModelBytes& end() {
    patch(bytes_.size() - starts_.back());
    return *this;
  }
  // With a size that is not its own.
  ModelBytes& endAs(uint64_t size) {
    patch(size);
    return *this;
  }
  ModelBytes& put(uint64_t value, int width) {
    for (int i = width - 1; i >= 0; --i) bytes_ += static_cast<char>(value >> (8 * i));
    return *this;
  }
  ModelBytes& number(double value) { return put(std::bit_cast<uint64_t>(value), 8); }
  ModelBytes& number(float value) { return put(std::bit_cast<uint32_t>(value), 4); }
  ModelBytes& text(const std::string& text) {
    bytes_ += text;
    return *this;
  }

  const std::string& bytes() const { return bytes_; }

 private:
  void patch(uint64_t size) {
    const size_t start = starts_.back();
    starts_.pop_back();
    for (int i = 0; i < sizeWidth_; ++i) {
      bytes_[start + 4 + static_cast<size_t>(i)] =
          static_cast<char>(size >> (8 * (sizeWidth_ - 1 - i)));
    }
  }

  int sizeWidth_;
  std::string bytes_;
  std::vector<size_t> starts_;
};

}  // namespace tests
