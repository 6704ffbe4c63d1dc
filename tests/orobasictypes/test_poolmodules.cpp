// Two modules and one pool: a component library's strings use the pool of the process, which works
// under the lock of the module that made it.

#include <atomic>
#include <cstring>
#include <filesystem>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "components/kit/entrypoint.h"
#include "interfaces/IBucketMemoryPool.h"
#include "interfaces/IOroComponent.h"
#include "orobasictypes/bucketmemorypool.h"
#include "orobasictypes/kelpool.h"
#include "platform/sharedlibrary.h"
#include "platform/text.h"
#include "tests/orobasictypes/ipoolprobe.h"
#include "tests/support/fakebroker.h"
#include "tests/testpaths.h"

namespace {

using Pool = BucketMemoryPool<>;

// The library is loaded once and stays, as libraries do.
IOroComponent* loadComponent() {
  std::filesystem::path file = tests::testLibsDir() / "poolprobe";
  file += std::filesystem::path(platform::librarySuffix());
  void* const library = platform::openLibrary(platform::fromSystemPath(file.string()),
                                              platform::LibrarySearch::alteredPath);
  void* const entry = platform::librarySymbol(library, "EntryPoint");
  int32_t version = 0;
  IOroComponent* component = nullptr;
  reinterpret_cast<decltype(&EntryPoint)>(entry)(&version, &component);
  return component;
}

class PoolModules : public testing::Test {
 protected:
  PoolModules() {
    static IOroComponent* const component = loadComponent();
    kelPoolShutdown();
    service_ = new BucketMemoryPool(4, 8192, 0x40000);
    service_->addRef();
    broker_.registerService(KelCString::borrow("IBucketMemoryPool"), service_);
    component->initialise(&broker_);
    IOroUnknown* object = nullptr;
    component->getClassObject(
        {0x5C0A1E77, 0x2D34, 0x4A6B, {0x91, 0x0E, 0x7B, 0x5D, 0x3F, 0x66, 0xA2, 0x19}}, &object);
    probe_ = oroQuery<IPoolProbe>(object);
    probe_->shutDown();
  }
  ~PoolModules() override {
    probe_->shutDown();
    kelPoolShutdown();
    service_->release();
  }

  void* take(int32_t size) { return kelPoolAlloc(size, actual_); }
  void* takeThere(int32_t size) { return probe_->take(size, actual_); }

  tests::FakeBroker broker_;
  Pool* service_ = nullptr;
  IPoolProbe* probe_ = nullptr;
  int32_t actual_ = 0;
};

TEST_F(PoolModules, HaveALockEachAndShareTheService) {
  EXPECT_NE(probe_->lock(), &KelBucketStore::moduleLock());
  void* const block = takeThere(10);
  probe_->give(12, block);
  EXPECT_EQ(probe_->current(), service_);
  EXPECT_EQ(&service_->buckets().lock(), &KelBucketStore::moduleLock());
  EXPECT_EQ(take(10), block) << "what the one gives back the other gets";
  kelPoolFree(12, block);
}

TEST_F(PoolModules, BlocksOfALocalPoolGoToTheServiceAndDieByTheirOwnAllocator) {
  probe_->makeLocal();
  EXPECT_NE(probe_->current(), service_);
  void* const block = takeThere(10);
  probe_->give(12, block);
  EXPECT_EQ(probe_->adopt(), 1);
  EXPECT_EQ(probe_->current(), service_);
  EXPECT_EQ(take(10), block);
  void* const own = take(10);
  EXPECT_NE(*(static_cast<BucketMemoryAllocator**>(block) - 1),
            *(static_cast<BucketMemoryAllocator**>(own) - 1));
  kelPoolFree(12, block);
  kelPoolFree(12, own);
  service_->Purge();
}

TEST_F(PoolModules, LargeBlocksMadeInOneDieInTheOther) {
  kelPoolFree(300000, takeThere(300000));
  probe_->give(300000, take(300000));
  EXPECT_EQ(actual_, 300000);
}

TEST_F(PoolModules, ShutdownOfTheOneLeavesTheOther) {
  void* const block = takeThere(10);
  const int32_t count = service_->refCount();
  probe_->shutDown();
  EXPECT_EQ(service_->refCount(), count - 1);
  EXPECT_EQ(kelPoolInstance(), service_);
  kelPoolFree(12, block);
}

TEST_F(PoolModules, ThreadsOfBothUseIt) {
  std::atomic<bool> stop = false;
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&, i] {
      for (int n = 0; n < 1000; ++n) {
        int32_t actual = 0;
        const bool there = i % 2 == 0;
        char* const block = static_cast<char*>(there ? probe_->take(n % 300, actual)
                                                     : kelPoolAlloc(n % 300, actual));
        std::memset(block, i, static_cast<size_t>(actual));
        for (int32_t k = 0; k < actual; ++k) ASSERT_EQ(block[k], i);
        if (n % 2 == 0) {
          probe_->give(actual, block);
        } else {
          kelPoolFree(actual, block);
        }
      }
    });
  }
  std::thread changes([&] {
    while (!stop) probe_->adopt();
  });
  std::thread purges([&] {
    while (!stop) service_->Purge();
  });
  for (std::thread& thread : threads) thread.join();
  stop = true;
  changes.join();
  purges.join();
}

}  // namespace
