// Split arrays, block arrays and lists of integers against the containers of the standard library,
// and a report of progress against a counter: what the blocks cost an access.

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "bench/support/blockmemory.h"
#include "bench/support/ratios.h"
#include "interfaces/IOroProgress.h"
#include "orobasictypes/array.h"
#include "orobasictypes/oroblockarray.h"
#include "orobasictypes/orointlist.h"
#include "orobasictypes/progresscallbackbase.h"
#include "tests/orobasictypes/numeric/fakeprogress.h"

namespace {

constexpr int32_t count = 1000000;
constexpr int32_t accesses = 10000;

// Places in no order, the same ones for both.
template <class Access>
void atRandom(const Access& access) {
  uint64_t state = 88172645463325252;
  for (int32_t i = 0; i < accesses; ++i) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    access(static_cast<int32_t>((state >> 32) * count >> 32));
  }
}

// `get(i)` and `set(i, value)` of ours against those of both peers.
template <class Ours>
void compareAccess(bench::Ratios& ratios, const std::string& kind, Ours& ours) {
  std::vector<int32_t> flat(count);
  std::deque<int32_t> deque(count);
  const auto compare = [&](const std::string& work, const auto& mine, const auto& theirs) {
    const std::string name = kind + ", " + work;
    ratios.compare(name, "std::vector", 0, mine, [&] { theirs(flat); });
    ratios.compare(name, "std::deque", 0, mine, [&] { theirs(deque); });
  };
  compare(
      "1e6 set in order",
      [&] {
        for (int32_t i = 0; i < count; ++i) ours.Set(i, i + 1);
      },
      [](auto& peer) {
        for (int32_t i = 0; i < count; ++i) peer[static_cast<size_t>(i)] = i + 1;
        benchmark::DoNotOptimize(&peer[0]);
      });
  compare(
      "1e6 read in order",
      [&] {
        int64_t sum = 0;
        for (int32_t i = 0; i < count; ++i) sum += ours.Get(i);
        benchmark::DoNotOptimize(sum);
      },
      [](auto& peer) {
        int64_t sum = 0;
        for (int32_t i = 0; i < count; ++i) sum += peer[static_cast<size_t>(i)];
        benchmark::DoNotOptimize(sum);
      });
  compare(
      "10000 set at random", [&] { atRandom([&](int32_t i) { ours.Set(i, i + 1); }); },
      [](auto& peer) { atRandom([&](int32_t i) { peer[static_cast<size_t>(i)] = i + 1; }); });
  compare(
      "10000 read at random",
      [&] {
        int64_t sum = 0;
        atRandom([&](int32_t i) { sum += ours.Get(i); });
        benchmark::DoNotOptimize(sum);
      },
      [](auto& peer) {
        int64_t sum = 0;
        atRandom([&](int32_t i) { sum += peer[static_cast<size_t>(i)]; });
        benchmark::DoNotOptimize(sum);
      });
}

void compareCopies(bench::Ratios& ratios) {
  OroMM::VectorArray from(count);
  from.Materialize(true);
  OroMM::VectorArray to(count);
  const std::vector<OroVector> flat(count);
  std::vector<OroVector> copy(count);
  ratios.compare(
      "split array, 1e6 points assigned", "std::vector", 0, [&] { to.Assign(from, count); },
      [&] { copy = flat; });
  ratios.compare(
      "split array, 1e6 points cleared", "std::vector", 0, [&] { to.ClearRange(0, count); },
      [&] { copy.assign(count, OroVector()); });
}

void compareLists(bench::Ratios& ratios) {
  OroIntList list(41);
  std::vector<int32_t> flat;
  ratios.compare(
      "list, 1000 added and taken", "std::vector", 0,
      [&] {
        for (int32_t i = 0; i < 1000; ++i) list.Add(i);
        int64_t sum = 0;
        while (list.Count() > 0) sum += list.Take();
        benchmark::DoNotOptimize(sum);
      },
      [&] {
        for (int32_t i = 0; i < 1000; ++i) flat.push_back(i);
        int64_t sum = 0;
        for (; !flat.empty(); flat.pop_back()) sum += flat.back();
        benchmark::DoNotOptimize(sum);
      });
}

// Between two positions that are shown, in an operation that may not be cancelled.
void compareProgress(bench::Ratios& ratios) {
  const IPtr<tests::FakeProgress> service = new tests::FakeProgress;
  ProgressCallbackBase progress;
  progress.SetProgress(service.get());
  progress.SetCancellable(false);
  progress.Report(0.5F);
  int64_t counter = 0;
  ratios.compare(
      "progress, 1000 reports of one position", "a counter", 0,
      [&] {
        ProgressCallbackBase* operation = &progress;
        for (int i = 0; i < 1000; ++i) {
          benchmark::DoNotOptimize(operation);
          benchmark::DoNotOptimize(operation->Report(0.5F));
        }
      },
      [&] {
        for (int i = 0; i < 1000; ++i) benchmark::DoNotOptimize(++counter);
      });
}

}  // namespace

int main(int argc, char** argv) {
  const bench::BlockMemory memory;
  bench::Ratios ratios(argc, argv);
  OroMM::IntArray split(count);
  compareAccess(ratios, "split array", split);
  OroBlockArray blocks(count - 1);
  compareAccess(ratios, "block array", blocks);
  compareCopies(ratios);
  compareLists(ratios);
  compareProgress(ratios);
}
