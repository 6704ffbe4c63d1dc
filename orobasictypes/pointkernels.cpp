#include "orobasictypes/pointkernels.h"

#include <immintrin.h>

#include <cmath>
#include <initializer_list>

namespace {

static_assert(sizeof(OroVector) == 3 * sizeof(double));

// ---------------------------------------------------------------------------------------------
// Point by point, with what every processor has. Also what is left of the wide loops.

void widenBy(double value, double& min, double& max) {
  min = value < min ? value : min;
  max = value > max ? value : max;
}

void widen(const OroVector* points, int64_t count, OroVector& min, OroVector& max) {
  OroVector low = min;
  OroVector high = max;
  for (int64_t i = 0; i < count; ++i) {
    widenBy(points[i].x, low.x, high.x);
    widenBy(points[i].y, low.y, high.y);
    widenBy(points[i].z, low.z, high.z);
  }
  min = low;
  max = high;
}

double largest(const OroVector* points, int64_t count, double most) {
  for (int64_t i = 0; i < count; ++i) {
    for (const double value : {points[i].x, points[i].y, points[i].z}) {
      const double size = std::fabs(value);
      most = size > most ? size : most;
    }
  }
  return most;
}

void translate(OroVector* points, int64_t count, const double* m) {
  for (int64_t i = 0; i < count; ++i) {
    const OroVector p = points[i];
    points[i] = OroVector(p.x + m[3], p.y + m[7], p.z + m[11]);
  }
}

double rowOf(const double* row, const OroVector& p) {
  return row[0] * p.x + row[1] * p.y + row[2] * p.z + row[3];
}

void transform(OroVector* points, int64_t count, const double* m) {
  for (int64_t i = 0; i < count; ++i) {
    const OroVector p = points[i];
    points[i] = OroVector(rowOf(m, p), rowOf(m + 4, p), rowOf(m + 8, p));
  }
}

// A fourth row of exactly 1 needs no case of its own: the product with 1 changes nothing.
void project(OroVector* points, int64_t count, const double* m) {
  for (int64_t i = 0; i < count; ++i) {
    const OroVector p = points[i];
    const double factor = 1 / rowOf(m + 12, p);
    points[i] = OroVector(rowOf(m, p) * factor, rowOf(m + 4, p) * factor, rowOf(m + 8, p) * factor);
  }
}

// ---------------------------------------------------------------------------------------------
// AVX2: four points a step, which are three vectors of four doubles.

constexpr int64_t pointsPerStep = 4;

struct Coordinates {  // of four points
  __m256d x, y, z;
};

__attribute__((target("avx2"), always_inline)) inline Coordinates loadFour(const OroVector* p) {
  const double* const at = &p->x;
  const __m256d first = _mm256_loadu_pd(at);       // x y z x
  const __m256d second = _mm256_loadu_pd(at + 4);  // y z x y
  const __m256d third = _mm256_loadu_pd(at + 8);   // z x y z
  const __m256d xyxy = _mm256_permute2f128_pd(first, second, 0x30);
  const __m256d zxzx = _mm256_permute2f128_pd(first, third, 0x21);
  const __m256d yzyz = _mm256_permute2f128_pd(second, third, 0x30);
  return {_mm256_shuffle_pd(xyxy, zxzx, 0xA), _mm256_shuffle_pd(xyxy, yzyz, 0x5),
          _mm256_shuffle_pd(zxzx, yzyz, 0xA)};
}

__attribute__((target("avx2"), always_inline)) inline void storeFour(OroVector* p,
                                                                     const Coordinates& c) {
  double* const at = &p->x;
  const __m256d xyxy = _mm256_shuffle_pd(c.x, c.y, 0x0);
  const __m256d zxzx = _mm256_shuffle_pd(c.z, c.x, 0xA);
  const __m256d yzyz = _mm256_shuffle_pd(c.y, c.z, 0xF);
  _mm256_storeu_pd(at, _mm256_permute2f128_pd(xyxy, zxzx, 0x20));
  _mm256_storeu_pd(at + 4, _mm256_permute2f128_pd(yzyz, xyxy, 0x30));
  _mm256_storeu_pd(at + 8, _mm256_permute2f128_pd(zxzx, yzyz, 0x31));
}

__attribute__((target("avx2"), always_inline)) inline __m256d rowOfFour(const double* row,
                                                                        const Coordinates& c) {
  __m256d sum = _mm256_mul_pd(_mm256_broadcast_sd(row), c.x);
  sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_broadcast_sd(row + 1), c.y));
  sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_broadcast_sd(row + 2), c.z));
  return _mm256_add_pd(sum, _mm256_broadcast_sd(row + 3));
}

// Of zeros the first one counts, as when the points are looked at one by one; what is left of them
// in the lanes is any.
double firstZero(const OroVector* points, int64_t count, double OroVector::*axis) {
  int64_t i = 0;
  while (i < count - 1 && points[i].*axis != 0) ++i;
  return points[i].*axis;
}

void settleZero(const OroVector* points, int64_t count, double OroVector::*axis, double before,
                double& after) {
  if (after != 0) return;
  after = before == 0 ? before : firstZero(points, count, axis);
}

// Twelve doubles, the coordinates of four points in turn.
struct Lanes {
  __m256d v[3];
};

__attribute__((target("avx2"), always_inline)) inline Lanes lanesOf(const OroVector& p) {
  return {{_mm256_setr_pd(p.x, p.y, p.z, p.x), _mm256_setr_pd(p.y, p.z, p.x, p.y),
           _mm256_setr_pd(p.z, p.x, p.y, p.z)}};
}

// Both keep their second operand where the first is not a number.
struct Lowest {
  __attribute__((target("avx2"), always_inline)) static inline __m256d of(__m256d a, __m256d b) {
    return _mm256_min_pd(a, b);
  }
};
struct Highest {
  __attribute__((target("avx2"), always_inline)) static inline __m256d of(__m256d a, __m256d b) {
    return _mm256_max_pd(a, b);
  }
};

// The lowest or the highest of each coordinate.
template <class Pick>
__attribute__((target("avx2"), always_inline)) inline OroVector foldOf(const Lanes& lanes) {
  const __m256d first = lanes.v[0];                                // x y z x
  const __m256d second = _mm256_permute4x64_pd(lanes.v[1], 0xD2);  // x y z y
  const __m256d third = _mm256_permute4x64_pd(lanes.v[2], 0xC9);   // x y z z
  const __m256d ends = _mm256_unpackhi_pd(first, second);          // . . x y
  const __m256d fourth = _mm256_permute4x64_pd(_mm256_permute2f128_pd(ends, third, 0x31), 0xF4);
  double values[4];
  _mm256_storeu_pd(values, Pick::of(Pick::of(first, second), Pick::of(third, fourth)));
  return {values[0], values[1], values[2]};
}

__attribute__((target("avx2"))) void widenWide(const OroVector* points, int64_t count,
                                               OroVector& min, OroVector& max) {
  if (count < 2 * pointsPerStep) return widen(points, count, min, max);
  const OroVector low = min;
  const OroVector high = max;
  Lanes lows = lanesOf(min);
  Lanes highs = lanesOf(max);
  int64_t i = 0;
  for (; i + pointsPerStep <= count; i += pointsPerStep) {
    const double* const at = &points[i].x;
#pragma GCC unroll 3
    for (int v = 0; v < 3; ++v) {
      const __m256d values = _mm256_loadu_pd(at + 4 * v);
      lows.v[v] = _mm256_min_pd(values, lows.v[v]);
      highs.v[v] = _mm256_max_pd(values, highs.v[v]);
    }
  }
  min = foldOf<Lowest>(lows);
  max = foldOf<Highest>(highs);
  widen(points + i, count - i, min, max);
  for (double OroVector::*const axis : {&OroVector::x, &OroVector::y, &OroVector::z}) {
    settleZero(points, count, axis, low.*axis, min.*axis);
    settleZero(points, count, axis, high.*axis, max.*axis);
  }
}

__attribute__((target("avx2"))) double largestWide(const OroVector* points, int64_t count,
                                                   double most) {
  const __m256d magnitude = _mm256_castsi256_pd(_mm256_set1_epi64x(INT64_MAX));
  __m256d lanes[3] = {_mm256_set1_pd(most), _mm256_set1_pd(most), _mm256_set1_pd(most)};
  int64_t i = 0;
  for (; i + pointsPerStep <= count; i += pointsPerStep) {
    const double* const at = &points[i].x;
#pragma GCC unroll 3
    for (int v = 0; v < 3; ++v) {
      lanes[v] = _mm256_max_pd(_mm256_and_pd(_mm256_loadu_pd(at + 4 * v), magnitude), lanes[v]);
    }
  }
  alignas(32) double values[4];
  _mm256_store_pd(values, _mm256_max_pd(_mm256_max_pd(lanes[0], lanes[1]), lanes[2]));
  for (const double value : values) most = value > most ? value : most;
  return largest(points + i, count - i, most);
}

__attribute__((target("avx2"))) void translateWide(OroVector* points, int64_t count,
                                                   const double* m) {
  const __m256d steps[3] = {_mm256_setr_pd(m[3], m[7], m[11], m[3]),
                            _mm256_setr_pd(m[7], m[11], m[3], m[7]),
                            _mm256_setr_pd(m[11], m[3], m[7], m[11])};
  int64_t i = 0;
  for (; i + pointsPerStep <= count; i += pointsPerStep) {
    double* const at = &points[i].x;
#pragma GCC unroll 3
    for (int v = 0; v < 3; ++v) {
      _mm256_storeu_pd(at + 4 * v, _mm256_add_pd(_mm256_loadu_pd(at + 4 * v), steps[v]));
    }
  }
  translate(points + i, count - i, m);
}

__attribute__((target("avx2"))) void transformWide(OroVector* points, int64_t count,
                                                   const double* m) {
  int64_t i = 0;
  for (; i + pointsPerStep <= count; i += pointsPerStep) {
    const Coordinates c = loadFour(points + i);
    storeFour(points + i, {rowOfFour(m, c), rowOfFour(m + 4, c), rowOfFour(m + 8, c)});
  }
  transform(points + i, count - i, m);
}

__attribute__((target("avx2"))) void projectWide(OroVector* points, int64_t count,
                                                 const double* m) {
  const __m256d one = _mm256_set1_pd(1);
  int64_t i = 0;
  for (; i + pointsPerStep <= count; i += pointsPerStep) {
    const Coordinates c = loadFour(points + i);
    const __m256d factor = _mm256_div_pd(one, rowOfFour(m + 12, c));
    storeFour(points + i,
              {_mm256_mul_pd(rowOfFour(m, c), factor), _mm256_mul_pd(rowOfFour(m + 4, c), factor),
               _mm256_mul_pd(rowOfFour(m + 8, c), factor)});
  }
  project(points + i, count - i, m);
}

constexpr PointKernels baselinePointKernels = {widen, largest, translate, transform, project};
constexpr PointKernels widePointKernels = {widenWide, largestWide, translateWide, transformWide,
                                           projectWide};

}  // namespace

constinit const PointKernels pointKernelTable[kKelProcessorLevels] = {
    baselinePointKernels, widePointKernels, widePointKernels, widePointKernels};
