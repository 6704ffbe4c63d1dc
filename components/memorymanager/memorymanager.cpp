#include "components/memorymanager/memorymanager.h"

#include <algorithm>
#include <string>

#include "interfaces/IDataStore.h"
#include "orobasictypes/keltruncate.h"
#include "orobasictypes/oropagestore.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr double kMostBytes = 4611686018427387904.0;  // 2 to the 62
constexpr int32_t kFolderCapacity = 32767;

constexpr char kCoreLimit[] = "Memory/CoreLimit";
constexpr char kSwapLimit[] = "Memory/SwapLimit";
constexpr char kSwapDirectory[] = "Memory/SwapDirectory";

// They stand at what the user's document says. Nothing of it is saved.
void declareSettings(IDataStore& store) {
  constexpr uint32_t kPersistent = 1;  // what a reader fills in
  store.CreateDirectory("Memory");
  store.CreateFloat(kCoreLimit, 0, 0, kMostBytes, kPersistent);
  store.CreateFloat(kSwapLimit, 0, 0, kMostBytes, kPersistent);
  store.CreateOroString(kSwapDirectory, kFolderCapacity, OroString::empty(), kPersistent);
  for (const char* setting : {kCoreLimit, kSwapLimit, kSwapDirectory}) {
    store.AcceptPath(store.GetReader(), setting);
    store.SetFlags(setting, 0);
  }
}

int64_t bytesOf(IDataStore& store, const char* setting, int64_t standard) {
  const double value = store.GetFloat(setting, nullptr);
  return value >= 1 ? kelTruncate(std::min(value, kMostBytes)) : standard;
}

BlockManager::Limits limitsOfMachine() {
  constexpr int64_t whenNobodyTells = int64_t{1} << 32;
  const auto told = static_cast<int64_t>(std::min<uint64_t>(oroMemoryAllowance(), INT64_MAX / 4));
  const int64_t allowance = told > 0 ? told : whenNobodyTells;
  return {allowance / 2, allowance * 4, {}};
}

BlockManager::Limits limitsOfSettings() {
  BlockManager::Limits limits = limitsOfMachine();
  SPtr<IDataStore> store;
  if (!store) return limits;
  declareSettings(*store);
  limits.core = bytesOf(*store, kCoreLimit, limits.core);
  limits.swap = bytesOf(*store, kSwapLimit, limits.swap);
  limits.folder = store->GetOroString(kSwapDirectory, nullptr).wideText();
  return limits;
}

int64_t pagesOf(int64_t bytes) {
  constexpr int64_t page = 24576;
  return bytes / page + (bytes % page != 0 ? 1 : 0);
}

}  // namespace

MemoryManager::MemoryManager(const BlockManager::Limits& limits)
    : blocks_(new BlockManager(limits)) {}

MemoryManager::~MemoryManager() { delete made(); }

BlockManager* MemoryManager::make() {
  const std::lock_guard hold(making_);
  if (made() == nullptr) blocks_ = new BlockManager(limitsOfSettings());
  return made();
}

void* MemoryManager::AllocBlock(int32_t bytes, bool zero) {
  BlockManager* const blocks = made();
  return (blocks != nullptr ? blocks : make())->allocate(bytes, zero);
}

void MemoryManager::FreeBlock(void* block) {
  if (BlockManager* const blocks = made()) blocks->free(block);
}

bool MemoryManager::ReleaseMemory() {
  BlockManager* const blocks = made();
  return blocks != nullptr && blocks->release();
}

int64_t MemoryManager::CoreLimit() {
  BlockManager* const blocks = made();
  return pagesOf(blocks != nullptr ? blocks->coreLimit() : limitsOfMachine().core);
}

int64_t MemoryManager::SwapLimit() {
  BlockManager* const blocks = made();
  return pagesOf(blocks != nullptr ? blocks->swapLimit() : limitsOfMachine().swap);
}

int64_t MemoryManager::SwapPages() {
  BlockManager* const blocks = made();
  return blocks != nullptr ? pagesOf(blocks->swapBytes()) : 0;
}

int64_t MemoryManager::CorePages() {
  BlockManager* const blocks = made();
  return blocks != nullptr ? pagesOf(blocks->coreBytes()) : 0;
}

void MemoryManager::end() {
  if (BlockManager* const blocks = made()) blocks->endFile();
}
