// The broker's hot paths against what the standard library offers: a published service by name, and
// the counting of references.

#include <cstdio>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench/support/ratios.h"
#include "framework/kelregistry.h"
#include "framework/oroobjectbroker.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/sptr.h"
#include "tests/support/countingnew.h"
#include "tests/support/fakeheap.h"

namespace {

class IOroErrorService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroErrorService"; }
};

class OroErrorService : public IOroErrorService {
 public:
  static constexpr const char* className() { return "OroErrorService"; }
  using Offers = OroOffers<OroErrorService, IOroErrorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

// Stands for all other services: answers to whatever it is asked for.
class OtherService : public IOroUnknown {
 public:
  void queryInterface(const char*, void* out) override { *static_cast<void**>(out) = this; }
  const char* getClassName() const override { return "OtherService"; }
};

// The names that a host in use has published, to fill both tables alike.
constexpr const char* kNames[] = {"IOroComponentManager",
                                  "IProductInfo",
                                  "IOroRegistry",
                                  "IOroErrorService",
                                  "IDataStore",
                                  "IOroDirService",
                                  "IOroTranslatorService",
                                  "IOroTranslator",
                                  "IImageStore",
                                  "IHelpService",
                                  "IFileUtil",
                                  "IOroNetworkService",
                                  "IBucketMemoryPool",
                                  "IInfoBar",
                                  "IGuiBusyState",
                                  "IGuiStatusBar",
                                  "IGuiCursor",
                                  "IGuiThemeMgr",
                                  "ICmdLine",
                                  "IOroDoc",
                                  "IFileTypeService",
                                  "IScriptEngine",
                                  "IOroMManager",
                                  "ICommandRegistration",
                                  "IOroStrSupport"};

class Fixture {
 public:
  Fixture() {
    for (const char* const name : kNames) {
      const bool own = std::string_view(name) == IOroErrorService::interfaceName();
      IOroUnknown* const object = own ? static_cast<IOroUnknown*>(new OroErrorService)
                                      : static_cast<IOroUnknown*>(new OtherService);
      broker_.registerService(KelCString::borrow(name), object);
      map_[name] = std::make_shared<OroErrorService>();
    }
    oroSetBroker(&broker_);
  }

  OroObjectBroker& broker() { return broker_; }
  const std::unordered_map<std::string, std::shared_ptr<IOroUnknown>>& map() const { return map_; }

 private:
  OroObjectBroker broker_{nullptr};
  std::unordered_map<std::string, std::shared_ptr<IOroUnknown>> map_;
};

void compareServices(bench::Ratios& ratios, Fixture& fixture) {
  const auto& map = fixture.map();
  const std::string key = IOroErrorService::interfaceName();
  const auto ask = [] {
    void* found = nullptr;
    oroGetService(KelCString::borrow(IOroErrorService::interfaceName()), &found);
    benchmark::DoNotOptimize(found);
  };
  const auto find = [&] { benchmark::DoNotOptimize(map.find(key)->second.get()); };
  const auto findByLiteral = [&] {
    benchmark::DoNotOptimize(map.find(IOroErrorService::interfaceName())->second.get());
  };
  ratios.compare("getService", "std::unordered_map find, ready string", 1.0, ask, find);
  ratios.compare("getService", "std::unordered_map find, literal", 1.0, ask, findByLiteral);
  ratios.compare(
      "getService of all names in turn", "std::unordered_map find, ready strings", 1.0,
      [] {
        for (const char* const name : kNames) {
          void* found = nullptr;
          oroGetService(KelCString::borrow(name), &found);
          benchmark::DoNotOptimize(found);
        }
      },
      [&, keys = std::vector<std::string>(std::begin(kNames), std::end(kNames))] {
        for (const std::string& each : keys) benchmark::DoNotOptimize(map.find(each)->second.get());
      });
  ratios.compare(
      "SPtr", "std::unordered_map find and std::shared_ptr copy", 0,
      [] { benchmark::DoNotOptimize(SPtr<IOroErrorService>().get()); },
      [&] {
        const std::shared_ptr<IOroUnknown> held = map.find(key)->second;
        benchmark::DoNotOptimize(held.get());
      });
}

void compareRegistry(bench::Ratios& ratios) {
  KelRegistry registry;
  std::unordered_map<std::string, std::string> map;
  for (int section = 0; section < 20; ++section) {
    for (int i = 0; i < 20; ++i) {
      const std::string text = "SECTION" + std::to_string(section) + "/key" + std::to_string(i);
      KelCString key(text.c_str());
      registry.setValue(key, KelCString("value"));
      map[text] = "value";
    }
  }
  KelCString key("SECTION11/key7");
  const std::string text = key.text();
  ratios.compare(
      "registry getValue of two segments", "std::unordered_map find", 0,
      [&] { benchmark::DoNotOptimize(registry.getValue(key)); },
      [&] { benchmark::DoNotOptimize(map.find(text)); });
}

// False when asking for a published service allocates.
bool showAllocations() {
  constexpr int requests = 1000;
  kelPoolShutdown();  // so that no block is at hand
  const tests::FakeHeap heap;
  const size_t before = tests::newCalls;
  for (int i = 0; i < requests; ++i) {
    const SPtr<IOroErrorService> service;
    benchmark::DoNotOptimize(service.get());
  }
  const size_t taken = tests::newCalls - before + static_cast<size_t>(heap.allocations);
  std::printf("%d requests for a published service: %zu allocations\n", requests, taken);
  return taken == 0;
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  Fixture fixture;
  compareServices(ratios, fixture);
  compareRegistry(ratios);
  return showAllocations() ? 0 : 1;
}
