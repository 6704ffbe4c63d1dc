// BlockArea: one area of pages, cut into blocks of one size.
//
// A block keeps its address until it is given back. The area owns its list of free blocks and not
// the pages. One thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "orobasictypes/oropagestore.h"

class BlockArea {
 public:
  // May throw std::bad_alloc; nothing else here does. Requires: blockBytes is above 0 and no larger
  // than the area.
  BlockArea(const OroPageArea& area, size_t blockBytes);

  // Requires: isFull() is false. `isZero` tells whether the block has never been used.
  char* take(bool& isZero);
  // False if no block that is in use starts there.
  bool give(const char* block);

  bool isFull() const { return used_ == count_; }
  bool isEmpty() const { return used_ == 0; }
  bool holds(const char* address) const {
    return address >= area_.pages && address < area_.pages + area_.bytes;
  }
  size_t blockBytes() const { return blockBytes_; }
  const OroPageArea& pages() const { return area_; }

 private:
  const OroPageArea area_;
  const size_t blockBytes_;
  const uint32_t count_;        // blocks in the area
  uint32_t used_ = 0;           // of them in use
  uint32_t fresh_ = 0;          // blocks from here on have never been used
  std::vector<uint32_t> free_;  // blocks below that that are not in use
  std::vector<bool> inUse_;     // by block
};
