#include "components/points/formats/pointinputbuffer.h"

#include <algorithm>
#include <cstring>

bool PointInputBuffer::fill(size_t size) {
  if (ready() >= size) return true;
  if (at_ + size > kRoom) {
    std::memmove(bytes_.get(), data(), ready());
    base_ += static_cast<int64_t>(at_);
    end_ -= at_;
    at_ = 0;
  }
  while (ready() < size) {
    const size_t got = input_.read(bytes_.get() + end_, kRoom - end_);
    if (got == 0) return false;
    end_ += got;
  }
  return true;
}

size_t PointInputBuffer::fillUp() {
  fill(kRoom);
  return ready();
}

bool PointInputBuffer::skipFar(int64_t size) {
  while (size > static_cast<int64_t>(ready())) {
    size -= static_cast<int64_t>(ready());
    skip(ready());
    if (!fill(1)) return false;
  }
  skip(static_cast<size_t>(size));
  return true;
}

bool PointInputBuffer::line(std::string_view& line, size_t longest) {
  size_t seen = 0;
  const char* found = nullptr;
  while (found == nullptr) {
    found = static_cast<const char*>(std::memchr(data() + seen, '\n', ready() - seen));
    seen = ready();
    if (found != nullptr || seen > longest + 1) break;
    if (!fill(seen + 1)) {
      if (seen == 0) return false;
      break;
    }
  }
  size_t length = found == nullptr ? seen : static_cast<size_t>(found - data());
  line = {data(), length};
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.size() > longest) return false;
  skip(found == nullptr ? length : length + 1);
  return true;
}

bool PointInputBuffer::restart() {
  base_ = 0;
  at_ = end_ = 0;
  return input_.restart();
}
