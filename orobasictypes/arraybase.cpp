#include "orobasictypes/arraybase.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

#include "interfaces/IOroMManager.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/sptr.h"
#include "orobasictypes/testaccess.h"
#include "platform/sync.h"

namespace OroMM {
namespace {

constexpr char arraybaseSource[] = "orobasictypes/arraybase";

// Never destroyed: arrays may live until the very end of the process.
struct ManagerLink {
  std::atomic<IOroMManager*> manager = nullptr;
  platform::CriticalSection lock;  // guards the look-up

  IOroMManager* lookUp() {
    const std::lock_guard hold(lock);
    if (manager == nullptr) {
      const SPtr<IOroMManager> found;
      if (found) found->addRef();
      manager = found.get();
    }
    return manager;
  }
};

ManagerLink& managerLink() {
  static auto* const link = new ManagerLink;
  return *link;
}

// A table of a few blocks takes them one by one; a long one grows by two fifths.
int32_t grownCapacity(int64_t capacity, int32_t wanted) {
  while (capacity < wanted) capacity += capacity < 3 ? 1 : capacity * 2 / 5;
  return static_cast<int32_t>(std::min<int64_t>(capacity, INT32_MAX));
}

}  // namespace

IOroMManager* arrayManager() {
  ManagerLink& link = managerLink();
  IOroMManager* const manager = link.manager.load(std::memory_order_acquire);
  return manager != nullptr ? manager : link.lookUp();
}

ArrayBase::ArrayBase(int32_t size, int32_t elementSize, int32_t perBlock, int32_t blockBytes)
    : manager_(arrayManager()),
      size_(0),
      elementSize_(elementSize),
      perBlock_(perBlock),
      blockBytes_(blockBytes) {
  if (isSizeAllowed(size)) size_ = std::max(size, 0);
  const int32_t count = NumBlocks();
  const int32_t capacity = std::max(count, 1);
  kelMalloc(table_.blocks, sizeof(void*), capacity);
  std::fill_n(table_.blocks, capacity, nullptr);
  table_.count = count;
  table_.capacity = capacity;
}

ArrayBase::~ArrayBase() {
  for (int32_t block = table_.count - 1; block >= 0; --block) free(table_.blocks[block]);
  kelFree(table_.blocks);
}

bool ArrayBase::isSizeAllowed(int32_t size) const {
  if (size <= INT32_MAX - perBlock_) return true;
  kelAssertFail("", arraybaseSource, __LINE__);
  return false;
}

void* ArrayBase::allocate(bool zero) {
  if (manager_ == nullptr) {
    kelAssertFail("", arraybaseSource, __LINE__);
    std::abort();
  }
  void* const block = manager_->AllocBlock(blockBytes_, zero);
  if (block == nullptr) kelOutOfMemory(blockBytes_);
  return block;
}

// The manager hears of absent blocks too: it counts what comes back.
void ArrayBase::free(void* block) {
  if (manager_ != nullptr) manager_->FreeBlock(block);
}

int32_t ArrayBase::BlockCount(int32_t elements) const {
  const int64_t blocks = (int64_t{elements} + perBlock_ - 1) / perBlock_;
  return static_cast<int32_t>(std::max<int64_t>(blocks, 0));
}

bool ArrayBase::IsDense() const {
  for (int32_t block = NumBlocks() - 1; block >= 0; --block) {
    if (RawBlock(block) == nullptr) return false;
  }
  return true;
}

void ArrayBase::InitBlocks(bool) {
  const int32_t blocks = NumBlocks();
  setTableCount(blocks);
  size_ = blocks * perBlock_;
}

void ArrayBase::setTableCount(int32_t count) {
  if (count > table_.capacity) {
    const int32_t capacity = grownCapacity(table_.capacity, count);
    const int32_t old = table_.capacity;
    table_.capacity = kelRealloc(table_.blocks, sizeof(void*), old, capacity, capacity);
    std::fill(table_.blocks + old, table_.blocks + table_.capacity, nullptr);
  }
  for (int32_t block = count; block < table_.count; ++block) {
    // One that was written beyond the size; no other way leads back to it.
    if (table_.blocks[block] != nullptr) free(std::exchange(table_.blocks[block], nullptr));
  }
  table_.count = count;
}

void ArrayBase::GrowTable(int32_t count) {
  if (count > table_.count) setTableCount(count);
}

void* ArrayBase::MakeBlock(int32_t block) {
  GrowTable(block + 1);
  if (table_.blocks[block] == nullptr) {
    void* const made = allocate(true);
    // The manager may have used this very array to page.
    GrowTable(block + 1);
    table_.blocks[block] = made;
  }
  return table_.blocks[block];
}

void ArrayBase::Resize(int32_t newSize, bool clearTail) {
  if (!isSizeAllowed(newSize)) return;
  const int32_t newBlocks = BlockCount(newSize);
  const int32_t oldBlocks = NumBlocks();
  const int32_t oldSize = std::exchange(size_, newBlocks * perBlock_);
  if (oldSize == 0) {
    setTableCount(newBlocks);
    return;
  }
  GrowTable(oldBlocks);
  for (int32_t block = newBlocks; block < oldBlocks; ++block) {
    free(std::exchange(table_.blocks[block], nullptr));
  }
  if (newBlocks != oldBlocks) setTableCount(newBlocks);
  const int32_t used = oldSize % perBlock_;
  if (clearTail && newSize > oldSize && used != 0 && RawBlock(oldBlocks - 1) != nullptr) {
    const int64_t added = std::min(perBlock_ - used, newSize - oldSize);
    auto* const bytes = static_cast<char*>(table_.blocks[oldBlocks - 1]);
    std::memset(bytes + int64_t{used} * elementSize_, 0, static_cast<size_t>(added * elementSize_));
  }
  // What was written there before there was a size for it is not known to be wanted.
  for (int32_t block = oldBlocks; block < newBlocks; ++block) table_.blocks[block] = nullptr;
}

void ArrayBase::Assign(const ArrayBase& other, int32_t size) {
  Resize(size, false);
  if (&other == this) return;
  const int32_t blocks = NumBlocks();
  for (int32_t block = 0; block < blocks; ++block) {
    const void* const theirs = other.RawBlock(block);
    if (theirs == nullptr) {
      free(std::exchange(table_.blocks[block], nullptr));
      continue;
    }
    if (table_.blocks[block] == nullptr) table_.blocks[block] = allocate(false);
    std::memcpy(table_.blocks[block], theirs,
                static_cast<size_t>(elementSize_) * static_cast<size_t>(perBlock_));
  }
}

void ArrayBase::Materialize(bool zero) {
  const int32_t blocks = NumBlocks();
  GrowTable(blocks);
  for (int32_t block = 0; block < blocks; ++block) {
    if (table_.blocks[block] == nullptr) table_.blocks[block] = allocate(zero);
  }
}

void ArrayBase::ClearRange(int32_t from, int32_t to) {
  from = std::max(from, 0);
  int64_t left = int64_t{to} - from;
  const int32_t blocks = std::min(NumBlocks(), table_.count);
  for (int32_t block = from / perBlock_; block < blocks && left > 0; ++block) {
    if (void* const elements = table_.blocks[block]) {
      const int64_t cleared = std::min<int64_t>(left, perBlock_);
      std::memset(elements, 0, static_cast<size_t>(cleared * elementSize_));
    }
    left -= perBlock_;
  }
}

void ArrayBase::SwapBlocks(BlockTable& other) { std::swap(table_, other); }

// The manager goes along: it is the one that gets the blocks back.
void ArrayBase::SwapContents(ArrayBase& other) {
  std::swap(manager_, other.manager_);
  std::swap(size_, other.size_);
  std::swap(table_, other.table_);
}

}  // namespace OroMM

void testaccess::resetArrayManager() {
  OroMM::ManagerLink& link = OroMM::managerLink();
  if (OroMM::IOroMManager* const manager = link.manager.exchange(nullptr)) manager->release();
}
