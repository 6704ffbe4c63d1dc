// Sorting an index by a comparison that only its caller knows, against std::sort with the same one;
// and bringing records into the order, against following the cycles with one bit for each record.

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench/orobasictypes/foreignrecords.h"
#include "bench/support/blockmemory.h"
#include "bench/support/ratios.h"
#include "orobasictypes/applyorder.h"
#include "orobasictypes/quicksort.h"

namespace {

[[gnu::noipa]] void applyByCycles(const std::vector<int32_t>& index, QuickSort_Assign& assign) {
  std::vector<bool> done(index.size());
  for (size_t p = 0; p < index.size(); ++p) {
    if (done[p] || index[p] == static_cast<int32_t>(p)) continue;
    assign.Assign(static_cast<int32_t>(p), -1);
    size_t q = p;
    for (auto next = static_cast<size_t>(index[q]); next != p;
         next = static_cast<size_t>(index[q])) {
      assign.Assign(static_cast<int32_t>(next), static_cast<int32_t>(q));
      done[q] = true;
      q = next;
    }
    assign.Assign(-1, static_cast<int32_t>(q));
    done[q] = true;
  }
}

[[gnu::noipa]] void sortByStandard(std::vector<int32_t>& index, QuickSort_Compare& compare) {
  std::sort(index.begin(), index.end(),
            [&compare](int32_t a, int32_t b) { return compare.Compare(a, b) < 0; });
}

void compareSort(bench::Ratios& ratios, const std::string& name, int32_t count, uint32_t keys) {
  if (!ratios.wants("index sort, " + name)) return;
  std::vector<double> values(static_cast<size_t>(count));
  std::mt19937 random(1);
  for (double& value : values) value = random() % keys;
  ByKey byKey(values);
  OroMM::IntArray unsorted(count);
  for (int32_t i = 0; i < count; ++i) unsorted.Set(i, i);
  std::vector<int32_t> unsortedFlat(static_cast<size_t>(count));
  std::iota(unsortedFlat.begin(), unsortedFlat.end(), 0);
  OroMM::IntArray index(count);
  std::vector<int32_t> flat(unsortedFlat.size());
  ratios.compare(
      "index sort, " + name, "std::sort", 1.05,
      [&] {
        index.Assign(unsorted, count);
        quickSort(index, 0, count - 1, byKey);
      },
      [&] {
        flat = unsortedFlat;
        sortByStandard(flat, byKey);
      });
}

void compareOrder(bench::Ratios& ratios, const std::string& name, int32_t count) {
  if (!ratios.wants("order applied, " + name)) return;
  OroMM::VectorArray points(count);
  points.Materialize(true);
  std::vector<int32_t> flat(static_cast<size_t>(count));
  std::iota(flat.begin(), flat.end(), 0);
  std::shuffle(flat.begin(), flat.end(), std::mt19937(2));
  OroMM::IntArray index(count);
  for (int32_t i = 0; i < count; ++i) index.Set(i, flat[static_cast<size_t>(i)]);
  MovePoints assign(points);
  ratios.compare(
      "order applied, " + name, "cycle following", 1.15,
      [&] { applyOrder(index, 0, count - 1, assign); }, [&] { applyByCycles(flat, assign); });
}

}  // namespace

int main(int argc, char** argv) {
  const bench::BlockMemory memory;
  bench::Ratios ratios(argc, argv);
  compareSort(ratios, "1e3", 1000, UINT32_MAX);
  compareSort(ratios, "1e6", 1000000, UINT32_MAX);
  compareSort(ratios, "1e6 with many ties", 1000000, 100);
  compareSort(ratios, "1e7", 10000000, UINT32_MAX);
  compareOrder(ratios, "1e6", 1000000);
  compareOrder(ratios, "1e7", 10000000);
}
