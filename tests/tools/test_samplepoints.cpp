#include "tools/samplepoints.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

TEST(SamplePoints, FirstLinesAreTheSameOnEverySystem) {
  EXPECT_EQ(samplepoints::lines(3),
            "637000.45 849000.55 400.49 45 74 65\n"
            "637001.52 849000.17 400.82 56 73 51\n"
            "637002.26 849000.46 402.00 57 74 56\n");
}

TEST(SamplePoints, NoPointsIsEmptyText) { EXPECT_EQ(samplepoints::lines(0), ""); }

TEST(SamplePoints, LinesAreTheLinesOfEachIndexInOrder) {
  std::string expected;
  for (uint64_t index = 0; index < 5; ++index) samplepoints::appendLine(expected, index);
  EXPECT_EQ(samplepoints::lines(5), expected);
}

TEST(SamplePoints, EachLineHasCoordinatesAndColoursInTheirRanges) {
  std::istringstream text(samplepoints::lines(20000));
  int count = 0;
  double x, y, z;
  int r, g, b;
  while (text >> x >> y >> z >> r >> g >> b) {
    ++count;
    ASSERT_TRUE(x >= 637000 && x < 638024) << x;
    ASSERT_TRUE(y >= 849000 && y < 849021) << y;
    ASSERT_TRUE(z >= 400 && z < 460) << z;
    for (int colour : {r, g, b}) ASSERT_TRUE(colour >= 0 && colour <= 255) << colour;
  }
  EXPECT_EQ(count, 20000);
  EXPECT_TRUE(text.eof());
}

}  // namespace
