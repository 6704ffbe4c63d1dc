#include "components/memorymanager/blockarea.h"

BlockArea::BlockArea(const OroPageArea& area, size_t blockBytes)
    : area_(area), blockBytes_(blockBytes), count_(static_cast<uint32_t>(area.bytes / blockBytes)) {
  free_.reserve(count_);  // so that giving back takes no memory
  inUse_.resize(count_);
}

// Used blocks first: they are in memory already, the fresh ones perhaps never need to be.
char* BlockArea::take(bool& isZero) {
  uint32_t index = fresh_;
  isZero = free_.empty();
  if (isZero) {
    ++fresh_;
  } else {
    index = free_.back();
    free_.pop_back();
  }
  ++used_;
  inUse_[index] = true;
  return area_.pages + index * blockBytes_;
}

bool BlockArea::give(const char* block) {
  const auto offset = static_cast<size_t>(block - area_.pages);
  const size_t index = offset / blockBytes_;
  if (offset % blockBytes_ != 0 || index >= count_ || !inUse_[index]) return false;
  inUse_[index] = false;
  free_.push_back(static_cast<uint32_t>(index));
  --used_;
  return true;
}
