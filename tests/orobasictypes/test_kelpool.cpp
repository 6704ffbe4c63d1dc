#include "orobasictypes/kelpool.h"

#include <cstdlib>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interfaces/IBucketMemoryPool.h"
#include "orobasictypes/bucketmemorypool.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelrealloc.h"
#include "platform/hooks.h"
#include "platform/process.h"
#include "tests/support/fakebroker.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

using testing::ElementsAre;
using Pool = BucketMemoryPool<>;

KelCString poolName() { return KelCString::borrow("IBucketMemoryPool"); }

// Each test starts without a current pool and leaves none.
class KelPool : public testing::Test {
 protected:
  KelPool() { kelPoolShutdown(); }
  ~KelPool() override { kelPoolShutdown(); }

  void* take(int32_t size) { return kelPoolAlloc(size, actual_); }
  // Takes and gives back so many blocks of 4 bytes.
  void use(int times) {
    for (int i = 0; i < times; ++i) kelPoolFree(4, take(4));
  }

  int32_t actual_ = -1;
};

// --- The pool as an object

struct SizeRow {
  int32_t size, actual;
};
constexpr SizeRow kSizes[] = {{0, 4},
                              {1, 4},
                              {4, 4},
                              {5, 8},
                              {8189, 8192},
                              {8192, 8192},
                              {8193, 16384},
                              {16384, 16384},
                              {16385, 32768},
                              {131073, 262144},
                              {262144, 262144},
                              {262145, 262145},
                              {1000003, 1000003},
                              {-1, 4},
                              {INT32_MIN, 4}};

TEST_F(KelPool, SizesAreRounded) {
  for (const SizeRow& row : kSizes) {
    void* const block = take(row.size);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(actual_, row.actual) << row.size;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 8, 0u);
    std::memset(block, 0x55, static_cast<size_t>(actual_));
    kelPoolFree(actual_, block);
  }
}

TEST_F(KelPool, SizesUpToTheMaximumAreKeptForReuse) {
  for (const SizeRow& row : kSizes) {
    kelPoolFree(row.actual, take(row.size));
    tests::FakeHeap heap;
    kelPoolFree(row.actual, take(row.size));
    EXPECT_EQ(heap.allocations, row.size <= 262144 ? 0 : 1) << row.size;
  }
}

TEST_F(KelPool, BlockCarriesAHeaderOfEightBytes) {
  kelPoolInstance();
  tests::FakeHeap heap;
  void* const small = take(5);
  void* const large = take(262145);
  EXPECT_THAT(heap.sizes, ElementsAre(16, 262153));
  kelPoolFree(8, small);
  EXPECT_EQ(heap.frees, 0);
  kelPoolFree(262145, large);
  EXPECT_EQ(heap.frees, 1);
}

TEST_F(KelPool, TableStartsWith2050SlotsAndGrowsByDoubling) {
  tests::FakeHeap heap;
  kelPoolInstance();
  EXPECT_THAT(heap.sizes, ElementsAre(2050 * 8));
  void* const block = take(16384);  // bucket 2048
  EXPECT_THAT(heap.sizes, ElementsAre(2050 * 8, 16392));
  void* const other = take(65536);  // bucket 2050
  EXPECT_THAT(heap.sizes, ElementsAre(2050 * 8, 16392, 4100 * 8, 65544));
  kelPoolFree(16384, block);
  kelPoolFree(65536, other);
}

TEST_F(KelPool, ListStartsWithNineEntriesAndDoublesAtTheNinth) {
  kelPoolInstance();
  void* blocks[20] = {};
  for (void*& block : blocks) block = take(4);
  tests::FakeHeap heap;
  for (int i = 0; i < 8; ++i) kelPoolFree(4, blocks[i]);
  EXPECT_THAT(heap.sizes, ElementsAre(sizeof(KelBucketList), 9 * 16)) << "entry 0 is not used";
  kelPoolFree(4, blocks[8]);
  EXPECT_EQ(heap.sizes.back(), 18u * 16);
  for (int i = 9; i < 17; ++i) kelPoolFree(4, blocks[i]);
  EXPECT_EQ(heap.sizes.size(), 3u);
  kelPoolFree(4, blocks[17]);
  EXPECT_EQ(heap.sizes.back(), 36u * 16);
  kelPoolFree(4, blocks[18]);
  kelPoolFree(4, blocks[19]);
}

// A heap that is asked for more room gives these blocks back to the pool first, as strings do that
// are used while room is looked for.
class BusyHeap {
 public:
  explicit BusyHeap(std::vector<void*> blocks) {
    given_ = std::move(blocks);
    kelHeapCalls.reallocate = [](void* block, size_t bytes) {
      for (void* other : std::exchange(given_, {})) kelPoolFree(4, other);
      return std::realloc(block, bytes);
    };
  }

 private:
  static inline std::vector<void*> given_;
  tests::FakeHeap heap_;  // puts the calls back
};

TEST_F(KelPool, BlocksGivenBackWhileTheirListGrowsAreKeptToo) {
  std::vector<void*> own(9), meanwhile(30);
  for (void*& block : own) block = take(4);
  for (void*& block : meanwhile) block = take(4);
  {
    const BusyHeap heap(meanwhile);
    for (void* block : own) kelPoolFree(4, block);
  }
  tests::FakeHeap heap;
  std::vector<void*> back;
  for (size_t i = 0; i < own.size() + meanwhile.size(); ++i) back.push_back(take(4));
  EXPECT_EQ(heap.allocations, 0);
  EXPECT_EQ(back.front(), own.back());
  std::vector<void*> all = own;
  all.insert(all.end(), meanwhile.begin(), meanwhile.end());
  EXPECT_THAT(back, testing::UnorderedElementsAreArray(all)) << "each once";
  for (void* block : back) kelPoolFree(4, block);
}

TEST_F(KelPool, BlocksGivenBackWhileTheTableGrowsAreKeptToo) {
  void* const before = take(4);
  void* const meanwhile = take(4);
  void* const large = take(16384);
  kelPoolFree(4, before);
  {
    const BusyHeap heap({meanwhile});
    kelPoolFree(65536, take(65536));
  }
  kelPoolFree(16384, large);
  tests::FakeHeap heap;
  EXPECT_EQ(take(4), meanwhile);
  EXPECT_EQ(take(4), before);
  EXPECT_EQ(take(16384), large);
  EXPECT_EQ(heap.allocations, 0);
  kelPoolFree(4, before);
  kelPoolFree(4, meanwhile);
  kelPoolFree(16384, large);
}

TEST_F(KelPool, BucketIsAStack) {
  void* const first = take(10);
  void* const second = take(12);
  kelPoolFree(12, first);
  kelPoolFree(12, second);
  EXPECT_EQ(take(9), second);
  EXPECT_EQ(take(11), first);
  EXPECT_EQ(actual_, 12);
  kelPoolFree(12, first);
  kelPoolFree(12, second);
}

TEST_F(KelPool, BlockIsFiledByTheSizeThatIsGiven) {
  void* const block = take(100);
  kelPoolFree(5, block);
  EXPECT_EQ(take(8), block) << "the rest of its capacity is lost";
  EXPECT_EQ(actual_, 8);
  kelPoolFree(8, block);
}

TEST_F(KelPool, ReleaseOfNullOrSizeZeroIsFalseAndChangesNothing) {
  IBucketMemoryPool* const pool = kelPoolInstance();
  void* block = take(5);
  void* const before = block;
  EXPECT_FALSE(pool->Release(0, &block));
  EXPECT_FALSE(pool->Release(-5, &block)) << "counts as 0";
  EXPECT_EQ(block, before);
  void* null = nullptr;
  EXPECT_FALSE(pool->Release(8, &null));
  void* const other = take(5);
  EXPECT_NE(other, before) << "nothing was kept";
  EXPECT_TRUE(pool->Release(8, &block));
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(take(5), before);
  kelPoolFree(8, before);
  kelPoolFree(8, other);
}

TEST_F(KelPool, LargeBlocksAreFreedAtOnce) {
  IBucketMemoryPool* const pool = kelPoolInstance();
  void* block = take(262145);
  tests::FakeHeap heap;
  EXPECT_TRUE(pool->Release(262145, &block));
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(heap.frees, 1);
}

TEST_F(KelPool, SwitchedOffItGivesAndTakesByTheHeap) {
  IBucketMemoryPool* const pool = kelPoolInstance();
  void* const kept = take(5);
  void* const out = take(5);
  kelPoolFree(8, kept);
  EXPECT_TRUE(pool->SetEnabled(false));
  EXPECT_TRUE(pool->SetEnabled(false)) << "changes nothing";
  tests::FakeHeap heap;
  void* const fresh = take(5);
  EXPECT_EQ(actual_, 5);
  EXPECT_NE(fresh, kept);
  EXPECT_THAT(heap.sizes, ElementsAre(13));
  kelPoolFree(5, fresh);
  kelPoolFree(8, out);
  EXPECT_EQ(heap.frees, 2) << "what was taken before, too";
  EXPECT_TRUE(pool->SetEnabled(true));
  EXPECT_EQ(take(5), kept) << "stayed in its bucket";
  EXPECT_EQ(actual_, 8);
  kelPoolFree(8, kept);
  EXPECT_TRUE(pool->SetEnabled(true));
  void* const large = take(262144);
  EXPECT_EQ(actual_, 262144);
  kelPoolFree(262144, large);
}

TEST_F(KelPool, PurgeFreesTheBlocksAndTheListsButNotTheTable) {
  IBucketMemoryPool* const pool = kelPoolInstance();
  void* blocks[3] = {take(4), take(4), take(300)};
  kelPoolFree(4, blocks[0]);
  kelPoolFree(4, blocks[1]);
  kelPoolFree(300, blocks[2]);
  tests::FakeHeap heap;
  EXPECT_TRUE(pool->Purge());
  EXPECT_EQ(heap.frees, 3 + 2 * 2);
  kelPoolFree(4, take(4));
  EXPECT_THAT(heap.sizes, ElementsAre(12, sizeof(KelBucketList), 9 * 16)) << "and no table";
}

TEST_F(KelPool, OddParametersAreGuarded) {
  const IPtr<IBucketMemoryPool> pool = new BucketMemoryPool(0, -5, INT32_MAX);
  int32_t actual = 0;
  void* block = pool->Allocate(3, actual);
  EXPECT_EQ(actual, 4) << "a step and a limit of 1: 1, 2, 4";
  EXPECT_TRUE(pool->Release(actual, &block));
  const IPtr<IBucketMemoryPool> off = new BucketMemoryPool(4, 8192, 0);
  off->SetEnabled(true);
  block = off->Allocate(5, actual);
  EXPECT_EQ(actual, 5) << "with a maximum of 0 there is nothing to switch on";
  EXPECT_TRUE(off->Release(actual, &block));
  const IPtr<IBucketMemoryPool> step3 = new BucketMemoryPool(3, 10, 100);
  for (const SizeRow& row :
       {SizeRow{1, 3}, {3, 3}, {4, 6}, {10, 12}, {11, 20}, {80, 80}, {81, 160}, {101, 101}}) {
    block = step3->Allocate(row.size, actual);
    EXPECT_EQ(actual, row.actual) << row.size;
    EXPECT_TRUE(step3->Release(actual, &block));
  }
}

TEST_F(KelPool, LargestSizesEndAsExhaustion) {
  struct Ended {};
  kelPoolInstance();
  tests::FakeHeap heap;
  heap.refuseAbove = 1 << 20;
  const platform::HookGuard guard(
      platform::endProcessHook, +[](int) { throw Ended(); });
  for (const int32_t size : {INT32_MAX, INT32_MAX - 7, INT32_MAX - 8}) {
    EXPECT_THROW(take(size), Ended) << size;
  }
}

TEST_F(KelPool, OperationsStandInOrder) {
  EXPECT_EQ(tests::slotNumber(&IBucketMemoryPool::Purge), 1);
  EXPECT_EQ(tests::slotNumber(&IBucketMemoryPool::Allocate), 2);
  EXPECT_EQ(tests::slotNumber(&IBucketMemoryPool::Release), 3);
  EXPECT_EQ(tests::slotNumber(&IBucketMemoryPool::SetEnabled), 4);
  EXPECT_EQ(tests::slotNumber(&BucketMemoryAllocator::Free), 3) << "behind the destructor's two";
  static_assert(sizeof(BucketMemoryAllocator) == sizeof(void*), "no data");
  static_assert(sizeof(KelBucketEntry) == 16 && offsetof(KelBucketEntry, block) == 8);
  static_assert(sizeof(KelBucketList) == 24 && offsetof(KelBucketList, entries) == 8 &&
                offsetof(KelBucketList, count) == 16);
}

// Other modules work on the fields of a pool.
TEST_F(KelPool, FieldsStandInOrder) {
  auto* const pool = new BucketMemoryPool(4, 16, 64);
  struct Fields {
    int32_t capacity;
    KelBucketList** table;
    int32_t step, linearLimit, maximum;
    platform::CountLock* lock;
  };
  const auto& fields = *reinterpret_cast<const Fields*>(&pool->buckets());
  EXPECT_EQ(fields.capacity, 6);
  EXPECT_EQ(fields.table[0], nullptr);
  EXPECT_EQ(fields.step, 4);
  EXPECT_EQ(fields.linearLimit, 16);
  EXPECT_EQ(fields.maximum, 64);
  EXPECT_EQ(fields.lock, &KelBucketStore::moduleLock());
  kelPoolFree(4, take(4));
  ASSERT_NE(fields.table[0], nullptr);
  EXPECT_EQ(fields.table[0]->count, 1);
  EXPECT_EQ(fields.table[0]->entries[0].block, nullptr);
  EXPECT_EQ(fields.table[0]->entries[1].size, 4u);
  pool->SetEnabled(false);
  EXPECT_EQ(fields.maximum, -64);
  EXPECT_EQ(reinterpret_cast<const char*>(&pool->buckets()) - reinterpret_cast<const char*>(pool),
            8)
      << "behind the table of operations";
}

TEST_F(KelPool, EmptyEntriesAreSkipped) {
  auto* const pool = new BucketMemoryPool(4, 16, 64);
  struct Fields {
    int32_t capacity;
    KelBucketList** table;
  };
  void* const first = take(4);
  void* const second = take(4);
  kelPoolFree(4, first);
  kelPoolFree(4, second);
  KelBucketList& list = *reinterpret_cast<const Fields*>(&pool->buckets())->table[0];
  list.entries[2].block = nullptr;
  EXPECT_EQ(take(4), first);
  EXPECT_EQ(list.count, 0);
  kelPoolFree(4, first);
  *(static_cast<void**>(second) - 1) = nullptr;
  std::free(static_cast<void**>(second) - 1);
}

TEST_F(KelPool, ClassNameIsTheNameOfItsConcreteType) {
  IBucketMemoryPool* const pool = kelPoolInstance();
  EXPECT_STREQ(pool->getClassName(), "BucketMemoryPool");
  void* found = nullptr;
  pool->queryInterface("BucketMemoryPool", &found);
  EXPECT_EQ(static_cast<IBucketMemoryPool*>(static_cast<Pool*>(found)), pool);
  EXPECT_EQ(oroQuery<IBucketMemoryPool>(pool), pool);
}

// --- Allocators in the headers

// Stands for the allocator of another module.
class OtherAllocator : public BucketMemoryAllocator {
 public:
  void Free(void* header) override { freed = header; }
  void* freed = nullptr;
};

struct OtherBlock {
  BucketMemoryAllocator* allocator;
  char bytes[8];
};

TEST_F(KelPool, WithoutACurrentPoolABlockIsFreedByItsOwnAllocator) {
  OtherAllocator allocator;
  OtherBlock block{&allocator, {}};
  tests::FakeHeap heap;
  kelPoolFree(0, block.bytes);
  kelPoolFree(-1, block.bytes);
  kelPoolFree(8, nullptr);
  EXPECT_EQ(allocator.freed, nullptr);
  kelPoolFree(8, block.bytes);
  EXPECT_EQ(allocator.freed, &block);
  EXPECT_EQ(heap.allocations + heap.frees, 0);
}

TEST_F(KelPool, PurgeFreesEachBlockByItsOwnAllocator) {
  IBucketMemoryPool* const pool = kelPoolInstance();
  OtherAllocator allocator;
  OtherBlock block{&allocator, {}};
  kelPoolFree(8, block.bytes);
  EXPECT_EQ(allocator.freed, nullptr) << "kept like any other";
  pool->Purge();
  EXPECT_EQ(allocator.freed, &block);
  allocator.freed = nullptr;
  pool->SetEnabled(false);
  kelPoolFree(8, block.bytes);
  EXPECT_EQ(allocator.freed, &block);
}

TEST_F(KelPool, AllocatorOfABlockFreesItByTheHeap) {
  void* const block = take(5);
  auto* const header = static_cast<BucketMemoryAllocator**>(block) - 1;
  tests::FakeHeap heap;
  (*header)->Free(header);
  EXPECT_EQ(heap.frees, 1);
}

// --- The current pool

TEST_F(KelPool, NewPoolHasTheReferenceOfTheSlotAlone) {
  auto* const pool = new BucketMemoryPool(4, 8192, 0x40000);
  EXPECT_EQ(pool->refCount(), 1);
  EXPECT_EQ(kelPoolInstance(), pool);
  {
    tests::FakeBroker broker;
    broker.registerService(poolName(), pool);
    EXPECT_EQ(pool->refCount(), 2);
  }
  EXPECT_EQ(pool->refCount(), 1);
}

TEST_F(KelPool, FirstAllocationMakesAPoolWithOneReference) {
  use(1);
  EXPECT_EQ(kelPoolInstance()->refCount(), 1);
}

TEST_F(KelPool, PoolWithEqualParametersTakesTheBlocksOver) {
  void* const block = take(4);
  kelPoolFree(4, block);
  tests::FakeHeap heap;
  auto* const pool = new BucketMemoryPool(4, 8192, 0x40000);
  EXPECT_EQ(heap.frees, 1) << "the table of the old pool";
  EXPECT_EQ(kelPoolInstance(), pool);
  EXPECT_EQ(take(4), block);
  kelPoolFree(4, block);
}

TEST_F(KelPool, PoolWithOtherParametersReplacesWithoutTakingTheBlocks) {
  for (const bool switchedOff : {false, true}) {
    kelPoolShutdown();
    kelPoolFree(4, take(4));
    IPtr<IBucketMemoryPool> old(kelPoolInstance());
    if (switchedOff) old->SetEnabled(false);
    tests::FakeHeap heap;
    auto* const pool = new BucketMemoryPool(4, 8192, switchedOff ? 0x40000 : 0x20000);
    EXPECT_EQ(kelPoolInstance(), pool);
    EXPECT_EQ(heap.frees, 0);
    old = nullptr;
    EXPECT_EQ(heap.frees, 4) << "block, entries, list and table go with the last reference";
  }
}

TEST_F(KelPool, PoolThatIsDeletedWhileCurrentLeavesNone) {
  auto* const pool = new BucketMemoryPool(4, 8192, 0x40000);
  delete pool;
  use(1);
  EXPECT_NE(kelPoolInstance(), nullptr);
  EXPECT_EQ(kelPoolInstance()->refCount(), 1);
}

TEST_F(KelPool, ShutdownPurgesAndLetsGo) {
  IPtr<IBucketMemoryPool> pool(kelPoolInstance());
  kelPoolFree(4, take(4));
  tests::FakeHeap heap;
  kelPoolShutdown();
  EXPECT_EQ(heap.frees, 3);
  EXPECT_EQ(pool->refCount(), 1);
  kelPoolShutdown();
  EXPECT_EQ(heap.frees, 3);
  pool = nullptr;
  EXPECT_EQ(heap.frees, 4);
}

TEST_F(KelPool, BlocksOutliveTheShutdown) {
  auto* const block = static_cast<char*>(take(10));
  kelPoolShutdown();
  std::memset(block, 1, 12);
  kelPoolFree(12, block);
  use(1);
}

// --- From a pool of its own to the service

class KelPoolService : public KelPool {
 protected:
  ~KelPoolService() override { kelPoolShutdown(); }

  // Publishes a pool while the module goes on with the one that it had.
  Pool* publishBeside() {
    IPtr<IBucketMemoryPool> before(kelPoolInstance());
    auto* const service = new BucketMemoryPool(4, 8192, 0x20000);
    broker_.registerService(poolName(), service);
    kelPoolReplace(*oroQueryClass<Pool>(before.get()));
    return service;
  }
  bool isCurrent(Pool* pool) { return kelPoolInstance() == pool; }

  tests::FakeBroker broker_;
};

TEST_F(KelPoolService, IsAdoptedByTheFirstAllocation) {
  auto* const service = new BucketMemoryPool(4, 8192, 0x40000);
  broker_.registerService(poolName(), service);
  kelPoolShutdown();
  EXPECT_EQ(service->refCount(), 1);
  broker_.serviceRequests = 0;
  use(2000);
  EXPECT_TRUE(isCurrent(service));
  EXPECT_EQ(service->refCount(), 2);
  EXPECT_EQ(broker_.serviceRequests, 1) << "and never asked for again";
}

TEST_F(KelPoolService, IsLookedForEvery601Allocations) {
  broker_.serviceRequests = 0;
  std::vector<int> looks;
  for (int call = 1; call <= 1900; ++call) {
    const int before = broker_.serviceRequests;
    use(1);
    if (broker_.serviceRequests != before) looks.push_back(call);
  }
  EXPECT_THAT(looks, ElementsAre(1, 602, 1203, 1804));
}

TEST_F(KelPoolService, TakesTheBlocksOfTheLocalPoolBehindItsOwn) {
  void* const small = take(4);
  void* const last = take(4);
  void* const other = take(300);
  kelPoolFree(4, small);
  kelPoolFree(4, last);
  Pool* const service = publishBeside();
  EXPECT_FALSE(isCurrent(service));
  void* own = service->Allocate(4, actual_);
  void* const ownFirst = own;
  service->Release(4, &own);
  kelPoolFree(300, other);
  EXPECT_EQ(kelPoolAdopt(), 1);
  EXPECT_TRUE(isCurrent(service));
  EXPECT_EQ(take(4), last) << "from behind, in the order that they had";
  EXPECT_EQ(take(4), small);
  EXPECT_EQ(take(4), ownFirst);
  EXPECT_EQ(take(300), other) << "a list that the service had not";
  kelPoolFree(4, last);
  kelPoolFree(4, small);
  kelPoolFree(4, ownFirst);
  kelPoolFree(300, other);
}

TEST_F(KelPoolService, IsAdoptedAtTheNextLook) {
  use(1);
  IPtr<IBucketMemoryPool> local(kelPoolInstance());
  Pool* const service = publishBeside();
  use(600);
  EXPECT_FALSE(isCurrent(service));
  use(1);
  EXPECT_TRUE(isCurrent(service));
  EXPECT_EQ(local->refCount(), 1) << "let go";
}

TEST_F(KelPoolService, LocalPoolThatBecomesTheServiceIsOnlyLocalNoMore) {
  use(1);
  broker_.registerService(poolName(), kelPoolInstance());
  void* const kept = take(4);
  kelPoolFree(4, kept);
  use(601);
  EXPECT_EQ(kelPoolInstance()->refCount(), 2);
  EXPECT_EQ(take(4), kept);
  kelPoolFree(4, kept);
  broker_.serviceRequests = 0;
  use(2000);
  EXPECT_EQ(broker_.serviceRequests, 0);
}

TEST_F(KelPoolService, AdoptSaysWhetherThereIsAPoolOfTheProcess) {
  EXPECT_EQ(kelPoolAdopt(), 0) << "none at all";
  use(1);
  IBucketMemoryPool* const local = kelPoolInstance();
  EXPECT_EQ(kelPoolAdopt(), 0);
  EXPECT_EQ(kelPoolInstance(), local) << "stays";
  Pool* const service = publishBeside();
  EXPECT_EQ(kelPoolAdopt(), 1);
  EXPECT_TRUE(isCurrent(service));
  broker_.serviceRequests = 0;
  EXPECT_EQ(kelPoolAdopt(), 1);
  EXPECT_EQ(broker_.serviceRequests, 0) << "at once";
  kelPoolShutdown();
  EXPECT_EQ(kelPoolAdopt(), 1) << "an empty slot is filled";
  EXPECT_EQ(service->refCount(), 2);
}

TEST_F(KelPoolService, PoolMadeByHandIsNotLocal) {
  kelPoolInstance();
  broker_.serviceRequests = 0;
  EXPECT_EQ(kelPoolAdopt(), 1);
  use(2000);
  EXPECT_EQ(broker_.serviceRequests, 0);
}

TEST_F(KelPoolService, ShutdownForgetsThatThePoolWasLocal) {
  use(700);
  kelPoolShutdown();
  kelPoolInstance();
  EXPECT_EQ(kelPoolAdopt(), 1);
}

// A service of another class is none.
class OtherPool : public IBucketMemoryPool {
 public:
  static constexpr const char* className() { return "OtherPool"; }
  using Offers = OroOffers<OtherPool, IBucketMemoryPool>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Purge() override { return true; }
  void* Allocate(int32_t, int32_t&) override { return nullptr; }
  bool Release(int32_t, void**) override { return true; }
  bool SetEnabled(bool) override { return true; }
};

TEST_F(KelPoolService, OfAnotherClassCountsAsAbsent) {
  broker_.registerService(poolName(), new OtherPool);
  use(1300);
  EXPECT_EQ(kelPoolInstance()->refCount(), 1);
  EXPECT_EQ(kelPoolAdopt(), 0);
}

// A broker that allocates from the pool while it looks for a service.
class AllocatingBroker : public tests::FakeBroker {
 public:
  int32_t getService(const KelCString& name, void** out) override {
    int32_t actual = 0;
    kelPoolFree(50, kelPoolAlloc(50, actual));
    return FakeBroker::getService(name, out);
  }
};

TEST(KelPoolLookUp, ThatAllocatesDoesNotComeBackToItself) {
  kelPoolShutdown();
  {
    AllocatingBroker broker;
    broker.serviceRequests = 0;
    int32_t actual = 0;
    for (int i = 0; i < 700; ++i) kelPoolFree(4, kelPoolAlloc(4, actual));
    EXPECT_EQ(broker.serviceRequests, 2);
    kelPoolShutdown();
  }
}

// --- Threads

TEST_F(KelPool, ThreadsTakeAndGiveBackAtOnce) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([i] {
      for (int n = 0; n < 2000; ++n) {
        int32_t actual = 0;
        auto* const block = static_cast<char*>(kelPoolAlloc(n, actual));
        std::memset(block, i, static_cast<size_t>(actual));
        for (int32_t k = 0; k < actual; k += 97) ASSERT_EQ(block[k], i);
        kelPoolFree(actual, block);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST_F(KelPool, ThreadsMeetReplacementsAndShutdowns) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 7; ++i) {
    threads.emplace_back([i] {
      for (int n = 0; n < 3000; ++n) {
        int32_t actual = 0;
        auto* const block = static_cast<char*>(kelPoolAlloc(n % 100, actual));
        std::memset(block, i, static_cast<size_t>(actual));
        for (int32_t k = 0; k < actual; ++k) ASSERT_EQ(block[k], i);
        kelPoolFree(actual, block);
      }
    });
  }
  threads.emplace_back([] {
    for (int n = 0; n < 60; ++n) {
      if (n % 2 == 0) {
        new BucketMemoryPool(4, 8192, 0x40000);
      } else {
        kelPoolShutdown();
      }
    }
  });
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
