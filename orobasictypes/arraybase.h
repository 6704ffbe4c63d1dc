// OroMM::ArrayBase: the part of a split array that does not know its elements. A split array is a
// table of blocks of one size, so that it needs no large piece of memory; a block that nobody has
// written does not exist and reads as zero. Take array.h for a typed one.
//
// The blocks belong to the memory manager, the service IOroMManager, which may page them; the table
// is the array's own. Without a manager an array can be made, resized and read, but the first block
// that it needs ends the process. One writer at a time, and no reader beside it.
#pragma once

#include <cstdint>

namespace OroMM {

class IOroMManager;

// The manager that all arrays of this module share, or null. Asked for until there is one, and then
// kept, with its reference, for the life of the process. Borrowed. Any thread.
IOroMManager* arrayManager();

class ArrayBase {
 public:
  // Entries from `count` up to `capacity` are null.
  struct BlockTable {
    void** blocks = nullptr;
    int32_t count = 0;
    int32_t capacity = 0;
  };

  // `size` in elements, kept as it is until InitBlocks. Above 0x7FFFFFFF less one block it is
  // refused by an assertion and counts as 0, as a negative one does.
  ArrayBase(int32_t size, int32_t elementSize, int32_t perBlock, int32_t blockBytes);
  virtual ~ArrayBase();
  ArrayBase(const ArrayBase&) = delete;
  ArrayBase& operator=(const ArrayBase&) = delete;

  // In elements; whole blocks but between construction and InitBlocks.
  int32_t Size() const { return size_; }
  int32_t PerBlock() const { return perBlock_; }
  // The blocks that so many elements take, and those of this array.
  int32_t BlockCount(int32_t elements) const;
  int32_t NumBlocks() const { return BlockCount(size_); }
  // Whether every block exists.
  bool IsDense() const;
  // A block's elements, null for one that does not exist.
  const void* RawBlock(int32_t block) const {
    return block < table_.count ? table_.blocks[block] : nullptr;
  }
  const BlockTable& Table() const { return table_; }

  // Makes the size whole blocks. Allocates none, whatever the flag says.
  void InitBlocks(bool zero);
  // Makes the size whole blocks for `newSize` elements; those beyond go back to the manager. What
  // was written beyond the old size and is to lie within the new one is lost, except in an array of
  // size 0. A size that is too large is refused as at construction. `clearTail` zeroes the added
  // elements in the last old block.
  void Resize(int32_t newSize, bool clearTail);
  // The other's blocks up to `size` elements, copied. Requires: elements of the same type.
  void Assign(const ArrayBase& other, int32_t size);
  // Makes the missing blocks, cleared if `zero` says so.
  void Materialize(bool zero);
  // Zeroes the elements up to `to`, which is not one of them, from the start of the block that
  // `from` lies in: in whole blocks, which is what those who clear what they added ask for.
  void ClearRange(int32_t from, int32_t to);
  // Exchanges the table alone; the size does not follow.
  void SwapBlocks(BlockTable& other);
  // Exchanges elements and size. Requires: elements of the same type.
  void SwapContents(ArrayBase& other);

 protected:
  // The block, made and cleared when it is missing; the table grows to it, the size does not.
  void* MakeBlock(int32_t block);
  void GrowTable(int32_t count);

 private:
  void setTableCount(int32_t count);
  void* allocate(bool zero);
  void free(void* block);
  bool isSizeAllowed(int32_t size) const;

  IOroMManager* manager_;
  int32_t size_;         // elements
  int32_t elementSize_;  // bytes
  int32_t perBlock_;     // elements
  int32_t blockBytes_;

 protected:
  BlockTable table_;
};

}  // namespace OroMM
