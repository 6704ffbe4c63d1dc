// BlockManager: blocks of any size that keep their address, in memory up to a limit and beyond it
// in a temporary file that is mapped into memory.
//
//   BlockManager blocks({.core = 1 << 30, .swap = int64_t{1} << 34, .folder = u""});
//   char* block = blocks.allocate(24576, true);
//
// The limits count blocks, in bytes. When the file cannot be had (a folder that may not be written,
// a full disk) memory is used beyond the core limit, as long as the system gives any. Blocks of one
// size lie together in areas of 2 MiB. Any thread; a block is used by whoever has it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "components/memorymanager/blockarea.h"
#include "orobasictypes/oropagestore.h"

class BlockManager {
 public:
  struct Limits {
    int64_t core = 0;            // bytes of blocks in memory
    int64_t swap = 0;            // bytes of blocks in the file
    std::u16string folder = {};  // of the file; empty for that of all temporary files
  };
  explicit BlockManager(const Limits& limits);
  ~BlockManager();
  BlockManager(const BlockManager&) = delete;
  BlockManager& operator=(const BlockManager&) = delete;

  // Null when both limits are reached or the system gives no memory. A size below 1 is one of 1.
  char* allocate(int64_t bytes, bool zero);
  // Null, and an address that is no block, are passed over.
  void free(const void* block);

  // Gives memory back: areas that nobody uses, else what the system can move out of an area. False
  // when there is nothing more to give; a block that is used afterwards can be moved out again.
  bool release();

  // Unmaps and deletes the file. Blocks in it are gone; to free them is still harmless. New blocks
  // come from memory.
  void endFile();

  int64_t coreLimit() const { return limits_.core; }
  int64_t swapLimit() const { return limits_.swap; }
  // Bytes of blocks in use.
  int64_t coreBytes();
  int64_t swapBytes();

 private:
  using Areas = std::map<const char*, std::unique_ptr<BlockArea>>;  // by address
  struct BlockSize {
    std::vector<BlockArea*> core;  // areas with room for one of this size, the emptiest last
    std::vector<BlockArea*> file;
  };
  class Busy;

  char* allocateHeld(size_t blockBytes, bool zero);
  char* takeFrom(std::vector<BlockArea*>& withRoom, bool zero);
  char* takeCore(size_t blockBytes, bool zero);
  char* takeFile(size_t blockBytes, bool zero);
  BlockArea* addArea(size_t blockBytes, bool inFile);
  BlockArea* areaOf(const char* block);
  void noteRoom(BlockArea& area);
  void dropIfSpare(BlockArea& area);
  bool dropEmptyArea();
  void removeArea(BlockArea& area);
  bool pageOutOne();
  std::vector<BlockArea*>& roomFor(const BlockArea& area);

  const Limits limits_;
  std::recursive_mutex mutex_;  // guards what follows
  bool busy_ = false;           // an operation of this thread is under way
  OroPageStore store_;
  std::map<size_t, BlockSize> sizes_;  // by bytes of a block
  Areas areas_;
  const char* cursor_ = nullptr;  // the area that was moved out last
  int64_t coreBytes_ = 0;
  int64_t swapBytes_ = 0;
  bool fileEnded_ = false;
};
