#include "orobasictypes/oroblockarray.h"

#include <algorithm>
#include <cstring>

#include "orobasictypes/kelgrow.h"
#include "orobasictypes/kelrealloc.h"

namespace {

// How a number of elements lies in blocks.
struct Shape {
  Shape(int32_t size, uint32_t shift)
      : full(size >> shift), rest(static_cast<int32_t>(size & ((int64_t{1} << shift) - 1))) {}

  int32_t blocks() const { return full + (rest > 0); }
  // Elements of a block.
  int32_t length(int32_t block, uint32_t shift) const {
    return block < full ? static_cast<int32_t>(int64_t{1} << shift) : rest;
  }

  int32_t full;  // blocks
  int32_t rest;  // elements of the block behind them, 0 when there is none
};

void* makeBlock(int32_t elementSize, int32_t length, bool clear) {
  void* block = nullptr;
  kelMalloc(block, elementSize, length);
  if (clear) std::memset(block, 0, static_cast<size_t>(elementSize) * static_cast<size_t>(length));
  return block;
}

// Only a table of which less than half would be used becomes smaller.
void fitTable(void**& table, int32_t& capacity, int32_t needed) {
  if (table == nullptr) capacity = 0;
  if (needed > capacity) {
    capacity = kelRealloc(table, sizeof(void*), capacity, needed, kelGrowSize(capacity, needed));
  } else if (int64_t{needed} * 2 < capacity) {
    capacity = kelRealloc(table, sizeof(void*), capacity, needed, -1);
  }
}

// The size that a policy makes of the wish; the present one means that nothing is to be done.
int32_t targetSize(int32_t size, uint32_t shift, int32_t newSize, int32_t maximum) {
  newSize = std::max(newSize, 0);
  if (maximum < 0) return newSize;
  if (maximum > 0) {
    const bool fits = newSize == size || (size > newSize && size <= maximum);
    return fits ? size : maximum;
  }
  if (newSize <= size) return size;
  const int64_t nextBlock = ((int64_t{newSize} >> shift) + 1) << shift;
  return static_cast<int32_t>(std::min<int64_t>(kelGrowSize(size, newSize), nextBlock));
}

void shrinkBlocks(void** table, int32_t elementSize, uint32_t shift, Shape from, Shape to) {
  for (int32_t block = to.blocks(); block < from.blocks(); ++block) kelFree(table[block]);
  if (to.rest > 0) {
    kelRealloc(table[to.full], elementSize, from.length(to.full, shift), to.rest, -1);
  }
}

void growBlocks(void** table, int32_t elementSize, uint32_t shift, Shape from, Shape to,
                bool clear) {
  int32_t block = from.full;
  if (from.rest > 0) {
    // What the block gains is zero, asked for or not.
    kelRealloc(table[block], elementSize, from.rest, to.length(block, shift), -1);
    ++block;
  }
  for (; block < to.blocks(); ++block) {
    table[block] = makeBlock(elementSize, to.length(block, shift), clear);
  }
}

}  // namespace

void OroBlockArray::Make(void**& table, int32_t elementSize, uint32_t shift, int32_t size,
                         int32_t& capacity, bool clear) {
  const Shape shape(size, shift);
  table = nullptr;
  capacity = 0;
  fitTable(table, capacity, shape.blocks());
  for (int32_t block = 0; block < shape.blocks(); ++block) {
    table[block] = makeBlock(elementSize, shape.length(block, shift), clear);
  }
}

void OroBlockArray::Destroy(void**& table, uint32_t shift, int32_t size) {
  const int32_t blocks = Shape(size, shift).blocks();
  for (int32_t block = 0; block < blocks; ++block) kelFree(table[block]);
  kelFree(table);
  table = nullptr;
}

void OroBlockArray::Resize(void**& table, int32_t elementSize, uint32_t shift, int32_t& size,
                           int32_t newSize, int32_t maximum, int32_t& capacity, bool clear) {
  const int32_t target = targetSize(size, shift, newSize, maximum);
  if (target == size) return;
  const Shape from(size, shift);
  const Shape to(target, shift);
  if (target < size) {
    shrinkBlocks(table, elementSize, shift, from, to);
    fitTable(table, capacity, to.blocks());
  } else {
    fitTable(table, capacity, to.blocks());
    growBlocks(table, elementSize, shift, from, to, clear);
  }
  size = target;
}

void OroBlockArray::ClearAll(void** table, int32_t elementSize, uint32_t shift, int32_t size,
                             bool clear) {
  if (!clear) return;
  const Shape shape(size, shift);
  for (int32_t block = 0; block < shape.blocks(); ++block) {
    const auto bytes = int64_t{elementSize} * shape.length(block, shift);
    std::memset(table[block], 0, static_cast<size_t>(bytes));
  }
}

void** OroBlockArray::Copy(void* const* table, int32_t elementSize, uint32_t shift, int32_t size,
                           int32_t& capacity) {
  void** copy = nullptr;
  Make(copy, elementSize, shift, size, capacity, false);
  const Shape shape(size, shift);
  for (int32_t block = 0; block < shape.blocks(); ++block) {
    const auto bytes = int64_t{elementSize} * shape.length(block, shift);
    std::memcpy(copy[block], table[block], static_cast<size_t>(bytes));
  }
  return copy;
}

OroBlockArray::OroBlockArray(int32_t largest, uint32_t shift)
    : shift_(shift != 0 ? shift : kelBlockShift(sizeof(int32_t))), mask_((1U << shift_) - 1) {
  size_ = static_cast<int32_t>(std::clamp<int64_t>(int64_t{largest} + 1, 0, INT32_MAX));
  Make(table_, sizeof(int32_t), shift_, size_, tableCapacity_, true);
}

OroBlockArray::OroBlockArray(const OroBlockArray& other)
    : size_(other.size_), shift_(other.shift_), mask_(other.mask_) {
  table_ = Copy(other.table_, sizeof(int32_t), shift_, size_, tableCapacity_);
}
