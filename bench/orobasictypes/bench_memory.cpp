// Memory: the pool of the strings against the allocators that programs take, growing buffers
// against std::vector, and the blocks of the memory manager against plain memory and a mapped file.
//
// The allocators are those of the distribution, loaded beside the C library's own; one that is not
// installed is passed over.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <random>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "bench/support/ratios.h"
#include "components/memorymanager/blockmanager.h"
#include "orobasictypes/kelgrow.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/kelrealloc.h"

namespace {

// --- Small blocks

struct Allocator {
  const char* name;
  void* (*allocate)(size_t bytes);
  void (*release)(void* block);
};

Allocator ofLibrary(const char* name, const char* file) {
  void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return {name, nullptr, nullptr};
  return {name, reinterpret_cast<void* (*)(size_t)>(dlsym(library, "malloc")),
          reinterpret_cast<void (*)(void*)>(dlsym(library, "free"))};
}

const std::vector<Allocator>& peers() {
  static const std::vector<Allocator> all = {
      {"glibc", std::malloc, std::free},
      ofLibrary("mimalloc", "libmimalloc.so.2"),
      ofLibrary("jemalloc", "libjemalloc.so.2"),
      ofLibrary("tcmalloc", "libtcmalloc_minimal.so.4"),
  };
  return all;
}

constexpr size_t kLive = 100000;

struct Range {
  int32_t least, most;
};

// Which block goes next, and how large the one is that comes for it: the same for all.
class Plan {
 public:
  explicit Plan(Range range) : steps_(size_t{1} << 20) {
    std::mt19937 random(42);
    std::uniform_int_distribution<int32_t> size(range.least, range.most);
    for (Step& step : steps_) step = {static_cast<uint32_t>(random() % kLive), size(random)};
    for (int32_t& bytes : first_) bytes = size(random);
  }
  struct Step {
    uint32_t slot;
    int32_t size;
  };
  const Step& step(size_t number) const { return steps_[number & (steps_.size() - 1)]; }
  int32_t first(size_t slot) const { return first_[slot]; }

 private:
  std::vector<Step> steps_;
  std::vector<int32_t> first_ = std::vector<int32_t>(kLive);
};

// The pool's blocks in use; each operation gives one back and takes another, and writes to it as a
// string does.
class PoolUse {
 public:
  explicit PoolUse(const Plan& plan) : plan_(plan), blocks_(kLive) {
    for (size_t i = 0; i < kLive; ++i) take(blocks_[i], plan.first(i));
  }
  ~PoolUse() {
    for (const Block& block : blocks_) kelPoolFree(block.size, block.at);
  }
  void operator()() {
    const Plan::Step& step = plan_.step(next_++);
    Block& block = blocks_[step.slot];
    kelPoolFree(block.size, block.at);
    take(block, step.size);
  }

 private:
  struct Block {
    char* at;
    int32_t size;
  };
  static void take(Block& block, int32_t size) {
    block.at = static_cast<char*>(kelPoolAlloc(size, block.size));
    block.at[0] = 1;
  }
  const Plan& plan_;
  std::vector<Block> blocks_;
  size_t next_ = 0;
};

class PeerUse {
 public:
  PeerUse(const Plan& plan, const Allocator& allocator)
      : plan_(plan), allocator_(allocator), blocks_(kLive) {
    for (size_t i = 0; i < kLive; ++i) take(blocks_[i], plan.first(i));
  }
  ~PeerUse() {
    for (char* block : blocks_) allocator_.release(block);
  }
  void operator()() {
    const Plan::Step& step = plan_.step(next_++);
    char*& block = blocks_[step.slot];
    allocator_.release(block);
    take(block, step.size);
  }

 private:
  void take(char*& block, int32_t size) {
    block = static_cast<char*>(allocator_.allocate(static_cast<size_t>(size)));
    block[0] = 1;
  }
  const Plan& plan_;
  const Allocator& allocator_;
  std::vector<char*> blocks_;
  size_t next_ = 0;
};

// The same work in a second thread, as long as this object lives.
template <class Use>
class Beside {
 public:
  explicit Beside(Use& use)
      : thread_([this, &use] {
          while (!stop_.load(std::memory_order_relaxed)) {
            for (int i = 0; i < 100; ++i) use();
          }
        }) {}
  ~Beside() {
    stop_ = true;
    thread_.join();
  }

 private:
  std::atomic<bool> stop_ = false;
  std::thread thread_;
};

template <class Use>
struct Session {
  Use& use;
  Beside<Use> beside;
  Session(Use& mine, Use& others) : use(mine), beside(others) {}
  void operator()() const { use(); }
};

void comparePools(bench::Ratios& ratios) {
  for (const Range& range : {Range{1, 64}, Range{65, 8192}}) {
    const Plan plan(range);
    const std::string sizes =
        " of " + std::to_string(range.least) + " to " + std::to_string(range.most) + " bytes";
    for (const Allocator& peer : peers()) {
      if (peer.allocate == nullptr) {
        std::printf("%s is not installed\n", peer.name);
        continue;
      }
      const bool isBar = std::string(peer.name) == "glibc";
      PoolUse ours(plan);
      PeerUse theirs(plan, peer);
      ratios.compare(
          "pool, one block for another" + sizes, peer.name, isBar ? 1.0 : 0, [&] { ours(); },
          [&] { theirs(); });
    }
  }
}

void comparePoolsOfTwoThreads(bench::Ratios& ratios) {
  const Plan plan({1, 64});
  for (const Allocator& peer : peers()) {
    if (peer.allocate == nullptr) continue;
    PoolUse ours(plan);
    PoolUse oursBeside(plan);
    PeerUse theirs(plan, peer);
    PeerUse theirsBeside(plan, peer);
    ratios.compareSessions(
        "pool, one block for another of 1 to 64 bytes, two threads", peer.name, 0,
        [&] { return Session<PoolUse>(ours, oursBeside); },
        [&] { return Session<PeerUse>(theirs, theirsBeside); });
  }
  PoolUse ours(plan);
  PoolUse oursBeside(plan);
  ratios.compareSessions(
      "pool, two threads", "one thread", 0, [&] { return Session<PoolUse>(ours, oursBeside); },
      [&]() -> PoolUse& { return ours; });
}

// --- Work that takes long: a few rounds in turn, and their medians

class LongRatios {
 public:
  LongRatios(int argc, char** argv) {
    const std::string option = "--benchmark_filter=";
    for (int i = 1; i < argc; ++i) {
      const std::string argument = argv[i];
      if (argument.rfind(option, 0) == 0) filter_ = argument.substr(option.size());
    }
  }
  using Work = std::function<void()>;
  void compare(const std::string& name, const std::string& peerName, double bar, const Work& ours,
               const Work& peer) {
    if (!std::regex_search(name, std::regex(filter_))) return;
    std::vector<double> ourTimes, peerTimes, quotients;
    for (int round = 0; round < 7; ++round) {
      ourTimes.push_back(milliseconds(ours));
      peerTimes.push_back(milliseconds(peer));
      quotients.push_back(ourTimes.back() / peerTimes.back());
    }
    const double ratio = median(quotients);
    std::printf("%s: %.4g ms, %s %.4g ms, ratio %.2f", name.c_str(), median(ourTimes),
                peerName.c_str(), median(peerTimes), ratio);
    if (bar > 0) std::printf(" (bar %.2f%s)", bar, ratio > bar ? ": above" : "");
    std::printf("\n");
    std::fflush(stdout);
  }

 private:
  static double milliseconds(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    return taken.count();
  }
  static double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
  }
  std::string filter_;
};

// --- A buffer that grows

constexpr int32_t kGigabyte = 1 << 30;
constexpr int32_t kStep = 1 << 16;

void compareGrowth(LongRatios& ratios) {
  ratios.compare(
      "kelRealloc, a buffer that grows to 1 GB", "std::vector", 0,
      [] {
        char* buffer = nullptr;
        int32_t capacity = 0;
        for (int32_t size = 0; size < kGigabyte; size += kStep) {
          const int32_t needed = size + kStep;
          if (needed > capacity) {
            capacity = kelRealloc(buffer, 1, capacity, needed, kelGrowSize(capacity, needed));
          }
          std::memset(buffer + size, 1, kStep);
        }
        benchmark::DoNotOptimize(buffer);
        kelFree(buffer);
      },
      [] {
        std::vector<char> buffer;
        for (int32_t size = 0; size < kGigabyte; size += kStep) {
          buffer.resize(static_cast<size_t>(size) + kStep);
          std::memset(buffer.data() + size, 1, kStep);
        }
        benchmark::DoNotOptimize(buffer.data());
      });
}

// --- Blocks of the manager

constexpr int64_t kBlock = 24576;
constexpr size_t kBlocks = 16384;  // 384 MiB
constexpr size_t kBytes = kBlocks * kBlock;

using Blocks = std::vector<char*>;

Blocks takeBlocks(BlockManager& manager) {
  Blocks blocks(kBlocks);
  for (char*& block : blocks) block = manager.allocate(kBlock, true);
  return blocks;
}

void giveBlocks(BlockManager& manager, const Blocks& blocks) {
  for (char* block : blocks) manager.free(block);
}

Blocks blocksOf(char* memory) {
  Blocks blocks(kBlocks);
  for (size_t i = 0; i < kBlocks; ++i) blocks[i] = memory + i * kBlock;
  return blocks;
}

void writeAndRead(const Blocks& blocks) {
  static int value = 0;
  ++value;
  for (char* block : blocks) std::memset(block, value, kBlock);
  uint64_t sum = 0;
  for (const char* block : blocks) {
    const auto* const words = reinterpret_cast<const uint64_t*>(block);
    for (size_t i = 0; i < kBlock / sizeof *words; ++i) sum += words[i];
  }
  benchmark::DoNotOptimize(sum);
}

char* mapped(int flags, int file) {
  void* const memory = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, flags, file, 0);
  if (memory == MAP_FAILED) std::abort();
  return static_cast<char*>(memory);
}

// A file of that size without a name, in the folder of the manager's.
int anonymousFile() {
  std::string name = (std::filesystem::temp_directory_path() / "benchXXXXXX").string();
  const int file = mkstemp(name.data());
  if (file < 0 || posix_fallocate(file, 0, static_cast<off_t>(kBytes)) != 0) std::abort();
  unlink(name.c_str());
  return file;
}

void compareCoreBlocks(LongRatios& ratios) {
  BlockManager manager({int64_t{1} << 40, 0, {}});
  const Blocks ours = takeBlocks(manager);
  std::vector<char> memory(kBytes);
  const Blocks theirs = blocksOf(memory.data());
  ratios.compare(
      "blocks within the core limit, written and read", "plain memory", 1.1,
      [&] { writeAndRead(ours); }, [&] { writeAndRead(theirs); });
  giveBlocks(manager, ours);
}

void compareNewBlocks(LongRatios& ratios) {
  ratios.compare(
      "new blocks, taken and written", "fresh pages of 4 KiB", 0.4,
      [] {
        BlockManager manager({int64_t{1} << 40, 0, {}});
        const Blocks blocks = takeBlocks(manager);
        for (char* block : blocks) {
          for (int64_t i = 0; i < kBlock; i += 4096) block[i] = 1;
        }
        giveBlocks(manager, blocks);
      },
      [] {
        char* const memory = mapped(MAP_PRIVATE | MAP_ANONYMOUS, -1);
        madvise(memory, kBytes, MADV_NOHUGEPAGE);
        for (size_t i = 0; i < kBytes; i += 4096) memory[i] = 1;
        munmap(memory, kBytes);
      });
}

void compareSwapBlocks(LongRatios& ratios) {
  BlockManager manager({0, int64_t{1} << 40, {}});
  const Blocks ours = takeBlocks(manager);
  const int file = anonymousFile();
  char* const memory = mapped(MAP_SHARED, file);
  const Blocks theirs = blocksOf(memory);
  ratios.compare(
      "blocks beyond the core limit, written and read", "a mapped file", 0,
      [&] { writeAndRead(ours); }, [&] { writeAndRead(theirs); });
  ratios.compare(
      "blocks beyond the core limit, moved out, written and read", "a mapped file", 0,
      [&] {
        while (manager.release()) {
        }
        writeAndRead(ours);
      },
      [&] {
        msync(memory, kBytes, MS_SYNC);
        madvise(memory, kBytes, MADV_DONTNEED);
        posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
        writeAndRead(theirs);
      });
  giveBlocks(manager, ours);
  munmap(memory, kBytes);
  close(file);
}

// One of the allocators wants more of the room for thread variables than is left to libraries that
// are loaded late; the C library reads this at its start alone.
void restartWithRoomForLibraries(char** argv) {
  constexpr const char* variable = "GLIBC_TUNABLES";
  if (getenv(variable) != nullptr) return;
  setenv(variable, "glibc.rtld.optional_static_tls=16384", 1);
  execv("/proc/self/exe", argv);
}

}  // namespace

int main(int argc, char** argv) {
  restartWithRoomForLibraries(argv);
  kelPoolInstance();  // as in the running program: one that does not look for the service
  bench::Ratios ratios(argc, argv);
  comparePools(ratios);
  comparePoolsOfTwoThreads(ratios);
  LongRatios longRatios(argc, argv);
  compareGrowth(longRatios);
  compareCoreBlocks(longRatios);
  compareNewBlocks(longRatios);
  compareSwapBlocks(longRatios);
}
