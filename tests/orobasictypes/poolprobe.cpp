// A component library that shows its module's pool to a test.

#include "components/kit/orocomponentrecord.h"
#include "interfaces/IBucketMemoryPool.h"
#include "orobasictypes/bucketmemorypool.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/orooffers.h"
#include "tests/orobasictypes/ipoolprobe.h"

namespace {

class PoolProbe : public IPoolProbe {
 public:
  static constexpr const char* className() { return "PoolProbe"; }
  using Offers = OroOffers<PoolProbe, IPoolProbe>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void* take(int32_t size, int32_t& actual) override { return kelPoolAlloc(size, actual); }
  void give(int32_t size, void* block) override { kelPoolFree(size, block); }
  int32_t adopt() override { return kelPoolAdopt(); }
  void shutDown() override { kelPoolShutdown(); }
  IBucketMemoryPool* current() override { return kelPoolInstance(); }
  // As the first allocation does it before there are services.
  void makeLocal() override {
    IOroObjBroker* const broker = oroBroker();
    oroSetBroker(nullptr);
    kelPoolShutdown();
    int32_t actual = 0;
    kelPoolFree(4, kelPoolAlloc(4, actual));
    oroSetBroker(broker);
  }
  const void* lock() override { return &KelBucketStore::moduleLock(); }
};

constexpr OroClassEntry kClasses[] = {
    {{0x5C0A1E77, 0x2D34, 0x4A6B, {0x91, 0x0E, 0x7B, 0x5D, 0x3F, 0x66, 0xA2, 0x19}},
     PoolProbe::className(),
     OroSharing::shared,
     oroMake<PoolProbe>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{
    "poolprobe",
    {0x8F2B6D10, 0x7C5E, 0x4E02, {0xB3, 0x4D, 0x19, 0xE8, 0x70, 0xCA, 0x54, 0x2F}},
    kClasses};
