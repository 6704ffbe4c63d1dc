#include "components/points/commands/pointtransform.h"

#include <gtest/gtest.h>

#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::Point;
using tests::SmallBlocks;

const double kOrigin[3] = {0, 0, 0};

TEST(PointTransform, AShiftOnlyAdds) {
  SmallBlocks set;
  for (int i = 0; i < 12; ++i) set.add({0.1 * i, 1e15, -1});
  const double by[3] = {0.2, 1, 0};
  PointTransform::shift(by).apply(set);
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(set.points()[static_cast<size_t>(i)], (Point{0.1 * i + 0.2, 1e15 + 1, -1}));
  }
}

TEST(PointTransform, AScalingOnlyMultiplies) {
  SmallBlocks set{{0.1, 0.7, 3}};
  const double factors[3] = {3, 1, 0.1};
  PointTransform::scaling(factors, kOrigin).apply(set);
  EXPECT_EQ(set.points()[0], (Point{0.1 * 3, 0.7, 3 * 0.1}));
}

TEST(PointTransform, TheCenterStays) {
  SmallBlocks set{{10, 20, 30}, {11, 20, 30}};
  const double factors[3] = {2, 2, 2};
  const double center[3] = {10, 20, 30};
  PointTransform::scaling(factors, center).apply(set);
  EXPECT_EQ(set.points()[0], (Point{10, 20, 30}));
  EXPECT_EQ(set.points()[1], (Point{12, 20, 30}));
}

TEST(PointTransform, QuarterTurnsAreExact) {
  const double z[3] = {0, 0, 5};
  for (const auto& [degrees, wanted] : {std::pair<double, Point>{90, {-2, 1, 3}},
                                        {-90, {2, -1, 3}},
                                        {180, {-1, -2, 3}},
                                        {270, {2, -1, 3}},
                                        {450, {-2, 1, 3}},
                                        {-360, {1, 2, 3}}}) {
    SmallBlocks set{{1, 2, 3}};
    PointTransform::rotation(z, degrees, kOrigin).apply(set);
    EXPECT_EQ(set.points()[0], wanted) << degrees;
  }
}

TEST(PointTransform, TurnsAboutAnyAxisThroughAnyPoint) {
  SmallBlocks set{{2, 1, 1}};
  const double axis[3] = {0, 0, 1e-200};
  const double center[3] = {1, 1, 0};
  PointTransform::rotation(axis, 30, center).apply(set);
  EXPECT_NEAR(set.points()[0][0], 1 + 0.86602540378443864, 1e-15);
  EXPECT_NEAR(set.points()[0][1], 1.5, 1e-15);
  EXPECT_EQ(set.points()[0][2], 1);
}

TEST(PointTransform, DividesByTheLastRow) {
  SmallBlocks set{{2, 4, 6}};
  const double matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2};
  PointTransform(matrix).apply(set);
  EXPECT_EQ(set.points()[0], (Point{1, 2, 3}));
}

TEST(PointTransform, IsTheSameByMatrix) {
  const double axis[3] = {1, 2, 3};
  const double center[3] = {4, 5, 6};
  const PointTransform turn = PointTransform::rotation(axis, 77, center);
  SmallBlocks set{{0.5, -1, 2}};
  PointTransform(turn.matrix()).apply(set);
  double point[3] = {0.5, -1, 2};
  turn.apply(point);
  EXPECT_EQ(set.points()[0], (Point{point[0], point[1], point[2]}));
}

}  // namespace
