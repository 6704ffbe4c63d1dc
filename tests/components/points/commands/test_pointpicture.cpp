#include "components/points/commands/pointpicture.h"

#include <gtest/gtest.h>

#include "components/points/commands/pointwork.h"
#include "tests/components/points/commands/smallblocks.h"

namespace {

using tests::SmallBlocks;
using View = PointPicture::View;

// The colour at a place, as 0xRRGGBB.
uint32_t at(const PointPicture& picture, int x, int y) {
  const uint8_t* const p =
      picture.pixels().data() +
      3 * (static_cast<size_t>(y) * static_cast<size_t>(picture.width()) + static_cast<size_t>(x));
  return uint32_t{p[0]} << 16 | uint32_t{p[1]} << 8 | p[2];
}

constexpr uint32_t kWhite = 0xFFFFFF;

PointPicture drawn(SmallBlocks& set, View view, bool byColor = true) {
  PointPicture picture(101, 101, view);
  PointBounds bounds;
  bounds.add(set);
  picture.frame(bounds);
  PointWork work;
  EXPECT_TRUE(picture.draw(set, byColor, work));
  return picture;
}

// Whether any pixel of the quarter (left or right, upper or lower) is drawn.
bool isDrawn(const PointPicture& picture, bool right, bool lower) {
  for (int y = lower ? 60 : 0; y < (lower ? 101 : 40); ++y) {
    for (int x = right ? 60 : 0; x < (right ? 101 : 40); ++x) {
      if (at(picture, x, y) != kWhite) return true;
    }
  }
  return false;
}

TEST(PointPicture, LooksAlongTheAxisOfItsView) {
  SmallBlocks set{{0, 0, 0}, {1, 1, 1}};
  set.colour({0xFF0000FF, 0xFF00FF00});
  for (const View view : {View::top, View::front, View::side}) {
    const PointPicture picture = drawn(set, view);
    EXPECT_TRUE(isDrawn(picture, false, true));  // the origin, left below
    EXPECT_TRUE(isDrawn(picture, true, false));  // the other, right above
    EXPECT_FALSE(isDrawn(picture, false, false));
    EXPECT_FALSE(isDrawn(picture, true, true));
  }
}

TEST(PointPicture, TheNearestPointIsSeen) {
  SmallBlocks set{{0, 0, 5}, {0, 0, 1}, {9, 9, 0}};
  set.colour({0xFF0000FF, 0xFF00FF00, 0xFF00FF00});
  EXPECT_EQ(at(drawn(set, View::top), 3, 97), 0xFF0000u);
  SmallBlocks front{{0, 5, 0}, {0, 1, 0}, {9, 9, 9}};
  front.colour({0xFF0000FF, 0xFF00FF00, 0xFF0000FF});
  EXPECT_EQ(at(drawn(front, View::front), 3, 97), 0x00FF00u);
}

TEST(PointPicture, HeightsGoFromBlueToRed) {
  SmallBlocks set{{0, 0, 0}, {1, 0, 5}, {2, 0, 10}};
  const PointPicture picture = drawn(set, View::front);
  EXPECT_EQ(PointPicture::colorOfHeight(0) & 0xFFFFFF, 0x800000u);
  EXPECT_EQ(PointPicture::colorOfHeight(0.5) & 0xFFFFFF, 0x80FF80u);
  EXPECT_EQ(PointPicture::colorOfHeight(1) & 0xFFFFFF, 0x000080u);
  EXPECT_EQ(at(picture, 50, 50), 0x80FF80u);
}

TEST(PointPicture, OnePointAndEqualPointsAreInTheMiddle) {
  SmallBlocks set{{1e9, -1e9, 7}, {1e9, -1e9, 7}};
  EXPECT_NE(at(drawn(set, View::top), 50, 50), kWhite);
}

TEST(PointPicture, TakesTheLargestAndTheSmallestDoubles) {
  SmallBlocks wide{{-1.7e308, -1.7e308, -1.7e308}, {1.7e308, 1.7e308, 1.7e308}};
  EXPECT_TRUE(isDrawn(drawn(wide, View::top), true, false));
  SmallBlocks tiny{{0, 0, 0}, {5e-324, 5e-324, 5e-324}};
  const PointPicture picture = drawn(tiny, View::side);
  EXPECT_EQ(picture.pixels().size(), 3u * 101 * 101);
}

TEST(PointPicture, StopsWhenItIsTold) {
  SmallBlocks set;
  for (int i = 0; i < 100; ++i) set.add({1.0 * i, 0, 0});
  PointBounds bounds;
  bounds.add(set);
  PointPicture picture(10, 10, View::top);
  picture.frame(bounds);
  PointWork work = tests::stoppingAfter(2);
  EXPECT_FALSE(picture.draw(set, true, work));
}

}  // namespace
