#include "components/points/pointtextformatter.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "components/points/pointtextparser.h"
#include "tests/components/pointclouds.h"
#include "tests/support/countingmanager.h"

namespace {

std::string line(int decimals, const OroVector& position, const PointColor* color = nullptr) {
  char out[PointTextFormatter::kLineRoom];
  const PointTextFormatter form(decimals);
  const double xyz[3] = {position.x, position.y, position.z};
  return std::string(out, form.line(out, xyz, color));
}

TEST(PointTextFormatter, KeepsTheNumberOfDecimals) {
  EXPECT_EQ(line(2, {637177.30, -0.05, 411}), "637177.30 -0.05 411.00\n");
  EXPECT_EQ(line(0, {1, -2, 3}), "1 -2 3\n");
}

TEST(PointTextFormatter, WritesColoursBehindThePoint) {
  const PointColor color{84, 0, 255};
  EXPECT_EQ(line(1, {1, 2, 3}, &color), "1.0 2.0 3.0 84 0 255\n");
}

TEST(PointTextFormatter, FallsBackOnTheShortestFormThatIsExact) {
  EXPECT_EQ(line(2, {0.125, 1, 1}), "0.125 1.00 1.00\n");
  EXPECT_EQ(line(PointCloud::kShortest, {0.1, 1e300, 1}), "0.1 1e+300 1\n");
  EXPECT_EQ(line(15, {123456.75, 0, 0}), "123456.75 0.000000000000000 0.000000000000000\n");
  EXPECT_EQ(line(99, {0.5, 0, 0}), "0.5 0 0\n");
}

TEST(PointTextFormatter, KeepsTheSignOfZero) { EXPECT_EQ(line(2, {-0.0, 0, 1}), "-0 0.00 1.00\n"); }

bool sameBits(double a, double b) {
  return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

TEST(PointTextFormatter, EveryCoordinateReadsBackAsTheSameDouble) {
  std::mt19937_64 random(2);
  std::string text;
  std::vector<OroVector> written;
  for (int i = 0; i < 30000; ++i) {
    double values[3];
    for (double& value : values) {
      do {
        value = i % 2 == 0 ? std::bit_cast<double>(random())
                           : static_cast<double>(static_cast<int64_t>(random() % 2000000000)) / 100;
      } while (!(value - value == 0));
    }
    written.emplace_back(values[0], values[1], values[2]);
    text += line(i % 18 - 1, written.back());
  }
  const double least = std::numeric_limits<double>::denorm_min();
  const double most = std::numeric_limits<double>::max();
  written.emplace_back(least, most, -most);
  text += line(2, written.back());

  const tests::ManagedMemory memory;
  PointCloud cloud;
  PointTextParser parser(cloud);
  ASSERT_TRUE(parser.feed(text.data(), text.size()));
  ASSERT_TRUE(parser.finish());
  const std::vector<OroVector> read = tests::positionsOf(cloud);
  ASSERT_EQ(read.size(), written.size());
  for (size_t i = 0; i < written.size(); ++i) {
    ASSERT_TRUE(sameBits(read[i].x, written[i].x)) << i;
    ASSERT_TRUE(sameBits(read[i].y, written[i].y)) << i;
    ASSERT_TRUE(sameBits(read[i].z, written[i].z)) << i;
  }
}

TEST(PointTextFormatter, ALineNeverExceedsItsRoom) {
  const PointColor color{255, 255, 255};
  const double longest = -2.2250738585072014e-308;
  EXPECT_LT(line(15, {longest, longest, longest}, &color).size(), PointTextFormatter::kLineRoom);
  const double wide = -9007199.254740991;
  EXPECT_LT(line(9, {wide, wide, wide}, &color).size(), PointTextFormatter::kLineRoom);
}

}  // namespace
