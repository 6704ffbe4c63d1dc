// Removing duplicates, sorting and thinning by cubes, beside what the standard library offers for
// the same work on a plain array.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <random>
#include <unordered_set>
#include <vector>

#include "bench/support/ratios.h"
#include "components/points/commands/duplicatefinder.h"
#include "components/points/commands/pointset.h"
#include "components/points/commands/pointsorter.h"
#include "components/points/commands/pointwork.h"
#include "components/points/commands/voxelthinner.h"
#include "orobasictypes/bitvector.h"

namespace {

using Point = std::array<double, 3>;

constexpr int kPoints = 1000000;
constexpr int64_t kBlock = 1024;  // as in the document

// A survey with one duplicate in ten points.
std::vector<Point> survey() {
  std::mt19937 random(1);
  std::vector<Point> points;
  for (int i = 0; i < kPoints; ++i) {
    if (i % 10 == 9) {
      points.push_back(points[random() % points.size()]);
    } else {
      points.push_back({637000 + random() % 100000 * 0.01, 849000 + random() % 100000 * 0.01,
                        400 + random() % 6000 * 0.01});
    }
  }
  return points;
}

// The points in runs of blocks; commands that only look need no more.
class Blocks : public PointSet {
 public:
  explicit Blocks(std::vector<Point> points) : points_(std::move(points)) {}
  int64_t count() const override { return static_cast<int64_t>(points_.size()); }
  double* run(int64_t first, int64_t& size) override {
    size = std::min(kBlock - first % kBlock, count() - first);
    return points_[static_cast<size_t>(first)].data();
  }
  bool hasColors() const override { return false; }
  void setHasColors(bool) override {}
  void getColors(int64_t, int64_t, uint32_t*) const override {}
  void setColors(int64_t, int64_t, const uint32_t*) override {}
  void resize(int64_t count) override { points_.resize(static_cast<size_t>(count)); }
  void own() override {}
  void coordinatesChanged() override {}
  BitVector& selection() override { return selection_; }

 private:
  std::vector<Point> points_;
  BitVector selection_;
};

struct HashOfPoint {
  size_t operator()(const Point& p) const {
    const std::hash<double> hash;
    return (hash(p[0]) * 31 + hash(p[1])) * 31 + hash(p[2]);
  }
};

size_t uniqueBySet(const std::vector<Point>& points) {
  std::unordered_set<Point, HashOfPoint> seen;
  seen.reserve(points.size());
  for (const Point& point : points) seen.insert(point);
  return seen.size();
}

size_t orderOf(const std::vector<Point>& points) {
  std::vector<uint32_t> order(points.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](uint32_t a, uint32_t b) { return points[a] < points[b]; });
  return order[0];
}

size_t cubes(const std::vector<Point>& points) {
  std::unordered_set<Point, HashOfPoint> seen;
  for (const Point& p : points) {
    seen.insert({std::floor(p[0]), std::floor(p[1]), std::floor(p[2])});
  }
  return seen.size();
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  const std::vector<Point> points = survey();
  Blocks set(points);
  PointWork work;
  BitVector mask;
  std::vector<uint32_t> order;
  ratios.compare(
      "deduplicate 1e6 points", "std::unordered_set", 0.5,
      [&] { benchmark::DoNotOptimize(DuplicateFinder().find(set, mask, work)); },
      [&] { benchmark::DoNotOptimize(uniqueBySet(points)); });
  ratios.compare(
      "sort 1e6 points", "std::stable_sort", 1.0,
      [&] {
        benchmark::DoNotOptimize(PointSorter({0, 1, 2}, false).find(set, order, work));
      },
      [&] { benchmark::DoNotOptimize(orderOf(points)); });
  ratios.compare(
      "cubes of 1e6 points", "std::unordered_set of cubes", 1.0,
      [&] { benchmark::DoNotOptimize(VoxelThinner(1).find(set, mask, work)); },
      [&] { benchmark::DoNotOptimize(cubes(points)); });
}
