#include "orobasictypes/memlimitlistener.h"

#include <algorithm>
#include <memory>
#include <mutex>

#include "interfaces/IDataStore.h"
#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/kelmemoryservices.h"
#include "orobasictypes/sptr.h"
#include "orobasictypes/testaccess.h"
#include "platform/memoryfigures.h"
#include "platform/sync.h"

namespace {

struct Kept {
  platform::CriticalSection lock;  // guards the making
  std::unique_ptr<MemLimitListener<>> listener;
};

}  // namespace

int64_t memlimit::ofMachine() {
  platform::MemoryFigures now;
  if (!platform::memoryFigures(now)) return 0x80000000;
  return static_cast<int64_t>(std::max(now.physicalTotal, now.virtualTotal));
}

// What the store has counts, whatever it is: 0 for a setting that nobody declared.
void memlimit::follow(IOroDataReceiver& receiver, std::atomic<int64_t>& limit) {
  SPtr<IDataStore> store;
  if (!store) return;
  store->AddReceiver(settingName, &receiver);
  limit = kelTruncate(store->GetFloat(settingName, nullptr));
}

MemLimitListener<>& kelMemLimitListener() {
  Kept& kept = kelmemory::immortal<Kept>();
  const std::lock_guard hold(kept.lock);
  if (kept.listener == nullptr) kept.listener = std::make_unique<MemLimitListener<>>();
  return *kept.listener;
}

void testaccess::resetMemLimitListener() { kelmemory::immortal<Kept>().listener = nullptr; }
