#include "components/points/formats/pointoutputbuffer.h"

#include <algorithm>
#include <cstring>

void PointOutputBuffer::put(std::string_view text) {
  while (!text.empty()) {
    const size_t size = std::min(text.size(), kRoom);
    char* at = room(size);
    std::memcpy(at, text.data(), size);
    take(at + size);
    text.remove_prefix(size);
  }
}

bool PointOutputBuffer::flush() {
  good_ = good_ && (end_ == 0 || output_.write(bytes_.get(), end_));
  end_ = 0;
  return good_;
}
