// Reference counts and name tables against what the standard library offers.

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "bench/support/ratios.h"
#include "interfaces/IOroObjBroker.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelhash.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orooffers.h"
#include "platform/sync.h"

namespace {

class IOroThing : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroThing"; }
};

class KelThing : public IOroThing {
 public:
  static constexpr const char* className() { return "KelThing"; }
  using Offers = OroOffers<KelThing, IOroThing>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

// As much of a broker as counting takes.
class Broker : public IOroObjBroker {
 public:
  Broker() { oroSetBroker(this); }
  ~Broker() override { oroSetBroker(nullptr); }

  void countUp(int32_t* count) override {
    const std::lock_guard guard(lock_);
    ++*count;
  }
  bool countDown(int32_t* count) override {
    const std::lock_guard guard(lock_);
    return --*count == 0;
  }

  int32_t registerService(const KelCString&, IOroUnknown*) override { return 0; }
  int32_t getService(const KelCString&, void**) override { return 0; }
  int32_t createObject(const GUID&, const KelCString&, void**) override { return 0; }
  int32_t getComponentId(const GUID&, GUID&) override { return 0; }
  int32_t registerInterface(const KelCString&, const GUID&) override { return 0; }
  int32_t unregisterInterface(const KelCString&) override { return 0; }
  bool hasService(const KelCString&) override { return false; }
  bool classSupports(const GUID&, const KelCString&) override { return false; }
  int32_t getLastStatus() override { return 1; }
  IOroObjBroker* groupBroker(const KelCString&, bool) override { return nullptr; }
  IOroClassRegistration* classRegistration() override { return nullptr; }
  IOroComponentManager* componentManager() override { return nullptr; }
  int32_t setClassObject(const GUID&, IOroUnknown*) override { return 0; }
  int32_t removeClassObject(const GUID&) override { return 0; }
  int32_t createInstance(const GUID&, const KelCString&, void**) override { return 0; }

 private:
  platform::CountLock lock_;  // guards every count
};

// Does the work in the calling thread while a second thread does its own share of the kind.
template <class Work, class CompanionWork>
class Pair {
 public:
  Pair(const Work& work, const CompanionWork& companionWork)
      : work_(work), thread_([this, &companionWork] {
          while (!stop_.load(std::memory_order_relaxed)) {
            companionWork();
            running_.store(true, std::memory_order_relaxed);
          }
        }) {
    while (!running_.load(std::memory_order_relaxed)) std::this_thread::yield();
  }
  ~Pair() {
    stop_ = true;
    thread_.join();
  }
  void operator()() const { work_(); }

 private:
  const Work& work_;
  std::atomic<bool> stop_{false};
  std::atomic<bool> running_{false};
  std::thread thread_;  // last: it uses what stands above
};

struct MutexCount {
  std::mutex& mutex;
  int count = 1;
  void change(int by) {
    const std::lock_guard guard(mutex);
    count += by;
  }
};

// The library counts without atomics until the first thread has been started.
void becomeThreaded() {
  std::thread([] {}).join();
}

void compareCounts(bench::Ratios& ratios) {
  auto* const thing = new KelThing;
  IPtr<IOroUnknown> held(thing);
  const auto shared = std::make_shared<KelThing>();
  std::mutex mutex;
  MutexCount plain{mutex};

  const auto ours = [thing] {
    thing->addRef();
    thing->release();
  };
  const auto copy = [&] {
    std::shared_ptr<KelThing> another(shared);
    benchmark::DoNotOptimize(another);
  };
  const auto locked = [&] {
    plain.change(1);
    plain.change(-1);
  };
  ratios.compare("addRef and release", "std::shared_ptr copy", 1.6, ours, copy);
  ratios.compare("addRef and release", "std::mutex", 0, ours, locked);
  ratios.compare(
      "IPtr copy", "std::shared_ptr copy", 1.6,
      [&] {
        IPtr<IOroUnknown> another(held);
        benchmark::DoNotOptimize(another);
      },
      copy);
}

// The second thread counts another object; only what guards the counts is shared.
void compareContendedCounts(bench::Ratios& ratios) {
  const IPtr<IOroUnknown> mine(new KelThing);
  const IPtr<IOroUnknown> other(new KelThing);
  std::mutex mutex;
  MutexCount myCount{mutex};
  MutexCount otherCount{mutex};
  const auto countUnder = [](IOroUnknown* object) {
    object->addRef();
    object->release();
  };
  const auto pair = [](const auto& work, const auto& companionWork) {
    return [&] { return Pair(work, companionWork); };
  };
  const auto ours = [&] { countUnder(mine.object()); };
  const auto theirs = [&] { countUnder(other.object()); };
  const auto locked = [&] {
    myCount.change(1);
    myCount.change(-1);
  };
  const auto otherLocked = [&] {
    otherCount.change(1);
    otherCount.change(-1);
  };
  const auto shared = std::make_shared<KelThing>();
  const auto copy = [&] {
    std::shared_ptr<KelThing> another(shared);
    benchmark::DoNotOptimize(another);
  };
  ratios.compareSessions("addRef and release beside a second thread", "std::mutex", 0,
                         pair(ours, theirs), pair(locked, otherLocked));
  ratios.compareSessions("addRef and release beside a second thread",
                         "std::shared_ptr copy of one object", 0, pair(ours, theirs),
                         pair(copy, copy));
}

// As many services as a run with its component libraries publishes.
const char* const names[] = {"IOroRegistry",
                             "IOroComponentManager",
                             "IDataStore",
                             "IOroDirService",
                             "IOroErrorService",
                             "IOroTranslatorService",
                             "IOroNetworkService",
                             "IBucketMemoryPool",
                             "IProductInfo",
                             "IImageStore",
                             "IOroAppStarter",
                             "IOroLanguageID",
                             "IFileTypeService",
                             "IScriptEngine",
                             "ICmdLine",
                             "IExitService",
                             "IOroDoc",
                             "IOroOpenDoc",
                             "IOroSaveDoc",
                             "IFileSaveData",
                             "ICommandRegistration",
                             "ICommandAccess",
                             "IPrimitivesService",
                             "IGenApp",
                             "IInfoBar",
                             "IGuiBusyState",
                             "IGuiStatusBar",
                             "IGuiCursor",
                             "IGuiThemeMgr",
                             "IOroProgress",
                             "IHelpService",
                             "IFileUtil",
                             "ILogFile",
                             "IKelFileMagic",
                             "IKelLocale",
                             "IOroStrSupport",
                             "IOroMManager",
                             "IOroRandom",
                             "IOroBatchProcessingService",
                             "IOroInternalLanguageService"};

void compareNames(bench::Ratios& ratios) {
  std::unordered_map<std::string, int> map;
  std::vector<std::string> texts;
  OroHashTable<KelCString, int> table(99);
  for (const char* name : names) {
    table.insert(KelCString::borrow(name), 1);
    map[name] = 1;
    texts.push_back(name);
  }

  size_t at = 0;
  const auto next = [&] { return at = at + 1 < std::size(names) ? at + 1 : 0; };
  ratios.compare(
      "table find by name", "std::unordered_map", 1.0,
      [&] { benchmark::DoNotOptimize(table.find(KelCString::borrow(names[next()]))->value); },
      [&] { benchmark::DoNotOptimize(map.find(texts[next()])->second); });
}

// Keys as the settings store has them, many more than the nearest cache holds.
void comparePaths(bench::Ratios& ratios) {
  std::vector<std::string> paths;
  for (int i = 0; i < 3000; ++i) {
    paths.push_back("Advanced/Group " + std::to_string(i % 50) + "/Setting " + std::to_string(i));
  }
  OroHashTable<KelCString, int> table(4099);
  std::unordered_map<std::string, int> map;
  for (const std::string& path : paths) {
    table.insert(KelCString(path.c_str()), 1);
    map[path] = 1;
  }
  size_t at = 0;
  const auto next = [&]() -> const std::string& {
    at = at + 1021 < paths.size() ? at + 1021 : at + 1021 - paths.size();
    return paths[at];
  };
  ratios.compare(
      "table find by path", "std::unordered_map", 1.0,
      [&] { benchmark::DoNotOptimize(table.find(KelCString::borrow(next().c_str()))->value); },
      [&] { benchmark::DoNotOptimize(map.find(next())->second); });
  ratios.compare(
      "hash of a path", "std::hash", 0,
      [&] { benchmark::DoNotOptimize(kelHashText(next().c_str())); },
      [&] { benchmark::DoNotOptimize(std::hash<std::string>()(next())); });
}

}  // namespace

int main(int argc, char** argv) {
  becomeThreaded();
  bench::Ratios ratios(argc, argv);
  Broker broker;
  compareCounts(ratios);
  compareContendedCounts(ratios);
  compareNames(ratios);
  comparePaths(ratios);
  return 0;
}
