#include "orobasictypes/pointkernels.h"

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/oromatrix.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/numeric/notfinite.h"

namespace {

using tests::infinity;
using tests::nan;

using Points = std::vector<OroVector>;

// Bit by bit; what is not a number may be any such.
bool isSame(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

bool isSame(const OroVector& a, const OroVector& b) {
  return isSame(a.x, b.x) && isSame(a.y, b.y) && isSame(a.z, b.z);
}

class PointLevels : public testing::TestWithParam<KelProcessorLevel> {
 protected:
  PointLevels() : level_(testaccess::limitProcessorLevel(GetParam())) {}
  ~PointLevels() override { testaccess::limitProcessorLevel(kKelAvx512); }

  const PointKernels& baseline() const { return pointKernelTable[kKelBaseline]; }
  const PointKernels& kernels() const { return pointKernelTable[level_]; }
  double drawValue() {
    switch (random_() % 16) {
      case 0:
        return 0.0;
      case 1:
        return -0.0;
      case 2:
        return random_() % 4 == 0 ? nan : 1;
      case 3:
        return random_() % 4 == 0 ? infinity : -1e300;
      case 4:
        return random_() % 4 == 0 ? -infinity : 1e-310;
      default:
        return std::ldexp(static_cast<double>(random_()) - 2e9, -16);
    }
  }
  Points drawPoints(size_t count) {
    Points points(count);
    for (OroVector& point : points) point = OroVector(drawValue(), drawValue(), drawValue());
    return points;
  }
  // What a kernel makes of the points, beside what the baseline makes of each one alone.
  void expectSameChange(void (*PointKernels::*change)(OroVector*, int64_t, const double*),
                        const OroMatrix& matrix) {
    for (size_t count = 0; count < 40; ++count) {
      const Points points = drawPoints(count + 1);
      Points ours = points;
      (kernels().*change)(ours.data(), static_cast<int64_t>(count), matrix.m);
      for (size_t i = 0; i <= count; ++i) {
        OroVector single = points[i];
        if (i < count) (baseline().*change)(&single, 1, matrix.m);
        ASSERT_TRUE(isSame(ours[i], single)) << i << " of " << count << ": " << ours[i].x;
      }
    }
  }

  std::mt19937 random_{17};
  const KelProcessorLevel level_;
};

INSTANTIATE_TEST_SUITE_P(All, PointLevels,
                         testing::Values(kKelBaseline, kKelAvx2, kKelBmi2, kKelAvx512));

TEST_P(PointLevels, WidenABoxPointByPoint) {
  for (size_t count = 0; count < 200; ++count) {
    const Points points = drawPoints(count);
    for (const double edge : {1e42, 0.0, -0.0, -5.0}) {
      OroVector min(edge, edge, edge);
      OroVector max(-edge, -edge, -edge);
      OroVector low = min;
      OroVector high = max;
      kernels().widen(points.data(), static_cast<int64_t>(count), min, max);
      for (const OroVector& p : points) {
        for (double OroVector::*const axis : {&OroVector::x, &OroVector::y, &OroVector::z}) {
          if (p.*axis < low.*axis) low.*axis = p.*axis;
          if (p.*axis > high.*axis) high.*axis = p.*axis;
        }
      }
      ASSERT_TRUE(isSame(min, low)) << count << " from " << edge;
      ASSERT_TRUE(isSame(max, high)) << count << " from " << edge;
    }
  }
}

TEST_P(PointLevels, KeepTheFirstOfZeros) {
  for (const double first : {0.0, -0.0}) {
    Points points(50, OroVector(-first, -first, -first));
    points[0] = OroVector(first, first, first);
    OroVector min(1, 1, 1);
    OroVector max(-1, -1, -1);
    kernels().widen(points.data(), 50, min, max);
    EXPECT_TRUE(isSame(min, points[0]));
    EXPECT_TRUE(isSame(max, points[0]));
  }
}

TEST_P(PointLevels, FindTheLargestCoordinate) {
  for (size_t count = 0; count < 100; ++count) {
    const Points points = drawPoints(count);
    double most = 1e-16;
    for (const OroVector& p : points) {
      for (const double value : {p.x, p.y, p.z}) {
        if (std::fabs(value) > most) most = std::fabs(value);
      }
    }
    ASSERT_TRUE(isSame(kernels().largest(points.data(), static_cast<int64_t>(count), 1e-16), most));
  }
}

TEST_P(PointLevels, ChangePointsWithTheSameBits) {
  OroMatrix matrix;
  for (double& element : matrix.m) element = drawValue();
  expectSameChange(&PointKernels::translate, matrix);
  expectSameChange(&PointKernels::transform, matrix);
  expectSameChange(&PointKernels::project, matrix);
  for (int i = 0; i < 16; ++i) matrix.m[i] = 0.1 * i;
  expectSameChange(&PointKernels::transform, matrix);
  expectSameChange(&PointKernels::project, matrix);
}

TEST_P(PointLevels, FollowTheOrderOfTheWords) {
  OroMatrix matrix;
  for (int i = 0; i < 16; ++i) matrix.m[i] = std::sqrt(2.0 + i);
  const Points points = drawPoints(21);
  Points moved = points;
  kernels().transform(moved.data(), 21, matrix.m);
  Points projected = points;
  kernels().project(projected.data(), 21, matrix.m);
  const auto row = [&](int i, const OroVector& p) {
    return ((matrix.m[i] * p.x + matrix.m[i + 1] * p.y) + matrix.m[i + 2] * p.z) + matrix.m[i + 3];
  };
  for (size_t i = 0; i < points.size(); ++i) {
    const OroVector& p = points[i];
    const double w = row(12, p);
    OroVector expected(row(0, p), row(4, p), row(8, p));
    ASSERT_TRUE(isSame(moved[i], expected));
    if (w != 1.0) expected *= 1 / w;
    ASSERT_TRUE(isSame(projected[i], expected));
  }
}

}  // namespace
