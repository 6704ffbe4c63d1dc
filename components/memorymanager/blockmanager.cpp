#include "components/memorymanager/blockmanager.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

// Large blocks have whole pages of their own, small ones a line of the cache.
size_t blockBytesFor(int64_t bytes) {
  constexpr size_t line = 64;
  constexpr size_t page = 4096;
  const auto size = static_cast<size_t>(std::max<int64_t>(bytes, 1));
  const size_t step = size <= page ? line : page;
  return (size + step - 1) / step * step;
}

size_t areaBytesFor(size_t blockBytes) {
  return blockBytes > OroPageStore::areaSize / 2 ? blockBytes : OroPageStore::areaSize;
}

}  // namespace

// The one operation that is under way. An allocation of its own that fails comes back to release(),
// which then must find nothing to do.
class BlockManager::Busy {
 public:
  explicit Busy(BlockManager& manager)
      : manager_(manager), hold_(manager.mutex_), wasBusy_(manager.busy_) {
    manager_.busy_ = true;
  }
  ~Busy() { manager_.busy_ = wasBusy_; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

  bool isInner() const { return wasBusy_; }

 private:
  BlockManager& manager_;
  const std::lock_guard<std::recursive_mutex> hold_;
  const bool wasBusy_;
};

BlockManager::BlockManager(const Limits& limits) : limits_(limits), store_(limits.folder) {}

BlockManager::~BlockManager() {
  for (auto& [address, area] : areas_) store_.give(area->pages());
}

char* BlockManager::allocate(int64_t bytes, bool zero) {
  const Busy busy(*this);
  if (busy.isInner()) return nullptr;
  try {
    return allocateHeld(blockBytesFor(bytes), zero);
  } catch (const std::bad_alloc&) {
    return nullptr;  // no room for the lists
  }
}

char* BlockManager::allocateHeld(size_t blockBytes, bool zero) {
  const auto more = static_cast<int64_t>(blockBytes);
  const bool coreHasRoom = coreBytes_ + more <= limits_.core;
  const bool fileHasRoom = !fileEnded_ && swapBytes_ + more <= limits_.swap;
  if (!coreHasRoom && !fileHasRoom && !fileEnded_) return nullptr;
  char* block = coreHasRoom ? takeCore(blockBytes, zero) : nullptr;
  if (block == nullptr && fileHasRoom) block = takeFile(blockBytes, zero);
  if (block == nullptr && !coreHasRoom) block = takeCore(blockBytes, zero);
  return block;
}

char* BlockManager::takeCore(size_t blockBytes, bool zero) {
  BlockSize& size = sizes_[blockBytes];
  if (size.core.empty() && addArea(blockBytes, false) == nullptr) return nullptr;
  char* const block = takeFrom(size.core, zero);
  coreBytes_ += static_cast<int64_t>(blockBytes);
  return block;
}

char* BlockManager::takeFile(size_t blockBytes, bool zero) {
  BlockSize& size = sizes_[blockBytes];
  if (size.file.empty() && addArea(blockBytes, true) == nullptr) return nullptr;
  char* const block = takeFrom(size.file, zero);
  swapBytes_ += static_cast<int64_t>(blockBytes);
  return block;
}

char* BlockManager::takeFrom(std::vector<BlockArea*>& withRoom, bool zero) {
  BlockArea& area = *withRoom.back();
  bool isZero = false;
  char* const block = area.take(isZero);
  if (area.isFull()) withRoom.pop_back();
  if (zero && !isZero) std::memset(block, 0, area.blockBytes());
  return block;
}

// Where a whole area cannot be had, one that holds a single block may.
BlockArea* BlockManager::addArea(size_t blockBytes, bool inFile) {
  const auto take = [&](size_t bytes, OroPageArea& pages) {
    return inFile ? store_.takeFile(bytes, pages) : store_.takeCore(bytes, pages);
  };
  OroPageArea pages;
  const size_t whole = areaBytesFor(blockBytes);
  if (!take(whole, pages)) {
    while (dropEmptyArea()) {
    }
    if (!take(whole, pages) && (whole == blockBytes || !take(blockBytes, pages))) return nullptr;
  }
  try {
    auto made = std::make_unique<BlockArea>(pages, blockBytes);
    BlockArea* const area = made.get();
    // Room in the lists first: giving back must take no memory.
    BlockSize& size = sizes_[blockBytes];
    std::vector<BlockArea*>& list = inFile ? size.file : size.core;
    if (list.capacity() <= areas_.size()) list.reserve(2 * areas_.size() + 1);
    areas_.emplace(pages.pages, std::move(made));
    list.push_back(area);
    return area;
  } catch (const std::bad_alloc&) {
    store_.give(pages);
    return nullptr;
  }
}

void BlockManager::free(const void* block) {
  if (block == nullptr) return;
  const Busy busy(*this);
  const char* const address = static_cast<const char*>(block);
  BlockArea* const area = areaOf(address);
  if (area == nullptr) return;
  const bool wasFull = area->isFull();
  if (!area->give(address)) return;
  int64_t& bytes = area->pages().inFile ? swapBytes_ : coreBytes_;
  bytes -= static_cast<int64_t>(area->blockBytes());
  if (wasFull) noteRoom(*area);
  if (area->isEmpty()) dropIfSpare(*area);
}

BlockArea* BlockManager::areaOf(const char* block) {
  auto behind = areas_.upper_bound(block);
  if (behind == areas_.begin()) return nullptr;
  BlockArea& area = *(--behind)->second;
  return area.holds(block) ? &area : nullptr;
}

std::vector<BlockArea*>& BlockManager::roomFor(const BlockArea& area) {
  BlockSize& size = sizes_.find(area.blockBytes())->second;
  return area.pages().inFile ? size.file : size.core;
}

void BlockManager::noteRoom(BlockArea& area) { roomFor(area).push_back(&area); }

// One empty area of a size is kept, so that a block that comes and goes does not take its pages
// anew each time.
void BlockManager::dropIfSpare(BlockArea& area) {
  const std::vector<BlockArea*>& list = roomFor(area);
  const auto isEmpty = [](const BlockArea* other) { return other->isEmpty(); };
  if (std::count_if(list.begin(), list.end(), isEmpty) > 1) removeArea(area);
}

void BlockManager::removeArea(BlockArea& area) {
  std::vector<BlockArea*>& list = roomFor(area);
  list.erase(std::find(list.begin(), list.end(), &area));
  store_.give(area.pages());
  areas_.erase(area.pages().pages);
}

bool BlockManager::dropEmptyArea() {
  for (auto& [address, area] : areas_) {
    if (!area->isEmpty()) continue;
    removeArea(*area);
    return true;
  }
  return false;
}

bool BlockManager::release() {
  const Busy busy(*this);
  return !busy.isInner() && (dropEmptyArea() || pageOutOne());
}

// In turn, so that one call does not look at all areas that the calls before it have emptied.
bool BlockManager::pageOutOne() {
  auto next = areas_.upper_bound(cursor_);
  for (size_t tried = 0; tried < areas_.size(); ++tried) {
    if (next == areas_.end()) next = areas_.begin();
    const BlockArea& area = *next->second;
    ++next;
    if (store_.pageOut(area.pages()) == 0) continue;
    cursor_ = area.pages().pages;
    return true;
  }
  return false;
}

void BlockManager::endFile() {
  const Busy busy(*this);
  for (auto at = areas_.begin(); at != areas_.end();) {
    BlockArea& area = *at->second;
    if (!area.pages().inFile) {
      ++at;
      continue;
    }
    store_.retire(area.pages());
    at = areas_.erase(at);
  }
  for (auto& [bytes, size] : sizes_) size.file.clear();
  store_.closeFile();
  swapBytes_ = 0;
  fileEnded_ = true;
}

int64_t BlockManager::coreBytes() {
  const Busy busy(*this);
  return coreBytes_;
}

int64_t BlockManager::swapBytes() {
  const Busy busy(*this);
  return swapBytes_;
}
