// Point arrays against loops over plain memory, against std::sort and against a library of
// matrices; their chunks against the bare calls of the system with bytes that are ready.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include <Eigen/Geometry>

#include "bench/support/blockmemory.h"
#include "bench/support/ratios.h"
#include "orobasictypes/bininputfile.h"
#include "orobasictypes/binoutputfile.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oromatrix.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orovectorarray.h"
#include "orobasictypes/quicksort_compare.h"
#include "tests/tempfolder.h"

namespace {

using Points = std::vector<OroVector>;
using Cloud = IPtr<OroVectorArray>;

Points somePoints(int32_t count, uint32_t values) {
  Points points(static_cast<size_t>(count));
  std::mt19937_64 random(1);
  for (OroVector& p : points) {
    p = OroVector(static_cast<double>(random() % values) * 1e-3,
                  static_cast<double>(random() % values) * 1e-3,
                  static_cast<double>(random() % 99));
  }
  return points;
}

Cloud cloudOf(const Points& points) {
  Cloud cloud(new OroVectorArray);
  cloud->AddAll(points.data(), static_cast<int32_t>(points.size()));
  return cloud;
}

BitVector maskOf(int32_t count, int percent) {
  BitVector mask(count);
  std::mt19937 random(2);
  for (int32_t i = 1; i <= count; ++i) {
    if (static_cast<int>(random() % 100) < percent) mask.Set(i);
  }
  return mask;
}

[[gnu::noipa]] OroVector readSum(const Points& points) {
  OroVector sum;
  for (const OroVector& p : points) sum += p;
  return sum;
}

[[gnu::noipa]] void scaleInPlace(Points& points, double factor) {
  for (OroVector& p : points) p *= factor;
}

// Each point tested by its bit.
[[gnu::noipa]] void testingBounds(const Points& points, const BitVector& mask, OroVector& min,
                                  OroVector& max) {
  min = OroVector(1e42, 1e42, 1e42);
  max = -min;
  for (size_t i = 0; i < points.size(); ++i) {
    if (!mask.Test(static_cast<int32_t>(i) + 1)) continue;
    const OroVector& p = points[i];
    for (double OroVector::*const axis : {&OroVector::x, &OroVector::y, &OroVector::z}) {
      if (p.*axis < min.*axis) min.*axis = p.*axis;
      if (p.*axis > max.*axis) max.*axis = p.*axis;
    }
  }
}

[[gnu::noipa]] size_t testingCopy(Points& points, const BitVector& mask) {
  size_t kept = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    if (mask.Test(static_cast<int32_t>(i) + 1)) points[kept++] = points[i];
  }
  return kept;
}

// ---------------------------------------------------------------------------------------------

class ByPoint : public QuickSort_Compare {
 public:
  explicit ByPoint(const Points& points) : points_(points) {}
  int32_t Compare(int32_t a, int32_t b) override {
    return RealPArray::Compare(points_[static_cast<size_t>(a)], points_[static_cast<size_t>(b)]);
  }

 private:
  const Points& points_;
};

[[gnu::noipa]] void sortByStandard(std::vector<int32_t>& index, QuickSort_Compare& compare) {
  std::sort(index.begin(), index.end(),
            [&compare](int32_t a, int32_t b) { return compare.Compare(a, b) < 0; });
}

// Both begin with the points in their first order, and end with them in the new one.
void compareSort(bench::Ratios& ratios, const std::string& name, int32_t count, uint32_t values,
                 double bar) {
  const Points points = somePoints(count, values);
  const Cloud cloud = cloudOf(points);
  Points plain(points.size());
  Points sorted(points.size());
  std::vector<int32_t> index(points.size());
  ratios.compare(
      "point sort, " + name, "std::sort with a virtual comparison", bar,
      [&] {
        cloud->Clear();
        cloud->AddAll(points.data(), count);
        cloud->Sort(false, nullptr, nullptr);
      },
      [&] {
        plain = points;
        ByPoint compare(plain);
        std::iota(index.begin(), index.end(), 0);
        sortByStandard(index, compare);
        for (size_t i = 0; i < index.size(); ++i) sorted[i] = plain[static_cast<size_t>(index[i])];
      });
}

void compareBounds(bench::Ratios& ratios, const std::string& name, int32_t count) {
  const Points points = somePoints(count, 1000000);
  const Cloud cloud = cloudOf(points);
  OroVector min;
  OroVector max;
  ratios.compare(
      "bounds, " + name, "read sum", 1.35, [&] { cloud->GetBounds(min, max); },
      [&] { benchmark::DoNotOptimize(readSum(points)); });
  const std::pair<int, double> masks[] = {{1, 0.1}, {50, 0.4}, {99, 0.35}};
  for (const auto& [percent, bar] : masks) {
    const BitVector mask = maskOf(count, percent);
    ratios.compare(
        "bounds with a mask of " + std::to_string(percent) + " %, " + name, "testing loop", bar,
        [&] { cloud->GetBounds(min, max, mask); },
        [&] {
          testingBounds(points, mask, min, max);
          benchmark::DoNotOptimize(min);
        });
  }
}

void compareTransforms(bench::Ratios& ratios, const std::string& name, int32_t count) {
  Points points = somePoints(count, 1000000);
  const Cloud cloud = cloudOf(points);
  OroMatrix turn;  // by a little, there and back, so that nothing grows
  turn.m[0] = turn.m[5] = 0.8;
  turn.m[1] = -0.6;
  turn.m[4] = 0.6;
  turn.m[3] = 0.001;
  ratios.compare(
      "affine transform in place, " + name, "scale in place", 1.95, [&] { cloud->Transform(turn); },
      [&] { scaleInPlace(points, 1.0000001); });
  OroMatrix projection;
  projection.m[14] = 1e-9;
  Eigen::Matrix4d matrix = Eigen::Matrix4d::Identity();
  matrix(3, 2) = 1e-9;
  Eigen::Map<Eigen::Matrix3Xd> columns(&points[0].x, 3, count);
  ratios.compare(
      "projective transform in place, " + name, "Eigen's hnormalized", 0.55,
      [&] { cloud->Transform(projection); },
      [&] {
        for (int32_t i = 0; i < count; ++i) {
          columns.col(i) = (matrix * columns.col(i).homogeneous()).hnormalized();
        }
        benchmark::ClobberMemory();
      });
}

void compareCompress(bench::Ratios& ratios, const std::string& name, int32_t count) {
  Points points = somePoints(count, 1000000);
  Points copied(points.size());
  const Cloud cloud = cloudOf(points);
  cloud->Add(0, 0, 0);
  const auto compress = [&](const BitVector& mask) {
    cloud->Compress(mask);
    cloud->SetCount(count + 1);
  };
  const BitVector few = maskOf(count, 1);
  ratios.compare(
      "compress to 1 %, " + name, "testing loop", 0.12, [&] { compress(few); },
      [&] { benchmark::DoNotOptimize(testingCopy(points, few)); });
  const BitVector half = maskOf(count, 50);
  ratios.compare(
      "compress to 50 %, " + name, "read sum", 1.45, [&] { compress(half); },
      [&] { benchmark::DoNotOptimize(readSum(points)); });
  const BitVector most = maskOf(count, 99);
  const auto kept = static_cast<size_t>(most.CountSet());
  ratios.compare(
      "compress to 99 %, " + name, "memcpy of what is kept", 1.2, [&] { compress(most); },
      [&] {
        std::copy_n(points.data(), kept, copied.data());
        benchmark::ClobberMemory();
      });
}

// ---------------------------------------------------------------------------------------------

void writeBare(const std::string& name, const std::string& bytes) {
  const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  for (size_t at = 0; at < bytes.size();) {
    const ssize_t written = write(file, bytes.data() + at, bytes.size() - at);
    if (written <= 0) std::abort();
    at += static_cast<size_t>(written);
  }
  close(file);
}

void readBare(const std::string& name, std::string& bytes) {
  const int file = open(name.c_str(), O_RDONLY);
  for (size_t at = 0; at < bytes.size();) {
    const ssize_t got = read(file, bytes.data() + at, bytes.size() - at);
    if (got <= 0) std::abort();
    at += static_cast<size_t>(got);
  }
  close(file);
}

void compareChunks(bench::Ratios& ratios, const std::string& name, int32_t count) {
  const tests::TempFolder folder;
  const std::string ours = folder.file("ours").string();
  const std::string bare = folder.file("bare").string();
  const OroPath path{OroString(ours.c_str())};
  const Cloud cloud = cloudOf(somePoints(count, 1000000));
  std::string bytes(8 + size_t{24} * static_cast<size_t>(count), 'x');
  writeBare(bare, bytes);
  const bool isLong = count >= 10000000;  // shorter ones are read from the processor's cache
  ratios.compare(
      "write a chunk, " + name, "write(2) of ready bytes", isLong ? 1.25 : 0,
      [&] {
        BinOutputFile file(path);
        if (!cloud->Write(file) || !file.FlushAndClose()) std::abort();
      },
      [&] { writeBare(bare, bytes); });
  {
    BinOutputFile file(path);
    if (!cloud->Write(file) || !file.FlushAndClose()) std::abort();
  }
  ratios.compare(
      "read a chunk, " + name, "read(2)", isLong ? 1.1 : 0,
      [&] {
        BinInputFile file(path);
        if (!cloud->Read(file)) std::abort();
      },
      [&] { readBare(bare, bytes); });
}

}  // namespace

int main(int argc, char** argv) {
  const bench::BlockMemory memory;
  bench::Ratios ratios(argc, argv);
  const std::pair<int32_t, const char*> sizes[] = {{1000000, "1e6"}, {10000000, "1e7"}};
  for (const auto& [count, name] : sizes) {
    compareBounds(ratios, name, count);
    compareTransforms(ratios, name, count);
    compareCompress(ratios, name, count);
    compareChunks(ratios, name, count);
  }
  compareSort(ratios, "1e6", 1000000, UINT32_MAX, 0.65);
  compareSort(ratios, "1e6 with many ties", 1000000, 100, 1.1);
  compareSort(ratios, "1e7", 10000000, UINT32_MAX, 0.45);
}
