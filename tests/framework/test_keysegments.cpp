#include "framework/keysegments.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> segmentsOf(const char* text) {
  KelCString key(text);
  std::vector<std::string> segments;
  for (KeySegments walk(key); walk.next();) segments.emplace_back(walk.text());
  EXPECT_STREQ(key.c_str(), text);
  return segments;
}

using Texts = std::vector<std::string>;

TEST(KeySegments, SlashesDivideAndEmptySegmentsCount) {
  EXPECT_EQ(segmentsOf("A"), (Texts{"A"}));
  EXPECT_EQ(segmentsOf("A/B/C"), (Texts{"A", "B", "C"}));
  EXPECT_EQ(segmentsOf("/B"), (Texts{"", "B"}));
  EXPECT_EQ(segmentsOf("A//B"), (Texts{"A", "", "B"}));
  EXPECT_EQ(segmentsOf("A/"), (Texts{"A"}));
  EXPECT_EQ(segmentsOf("/"), (Texts{""}));
  EXPECT_EQ(segmentsOf(""), Texts());
}

TEST(KeySegments, NullKeyHasNoSegments) {
  KelCString key;
  KeySegments walk(key);
  EXPECT_TRUE(walk.isLast());
  EXPECT_FALSE(walk.next());
  EXPECT_STREQ(walk.text(), "");
}

TEST(KeySegments, KeyReadsAsBeforeWhenTheWalkStopsHalfway) {
  KelCString key("A/B/C");
  {
    KeySegments walk(key);
    ASSERT_TRUE(walk.next());
    EXPECT_STREQ(key.text(), "A");  // the slash is away while the segment is in use
    ASSERT_TRUE(walk.next());
    EXPECT_STREQ(walk.text(), "B");
    EXPECT_FALSE(walk.isLast());
  }
  EXPECT_STREQ(key.text(), "A/B/C");
}

TEST(KeySegments, TrailingSlashIsNoFurtherSegment) {
  KelCString key("A/");
  KeySegments walk(key);
  ASSERT_TRUE(walk.next());
  EXPECT_TRUE(walk.isLast());
}

TEST(KeySegments, LiteralIsNeverWritten) {
  const char* const literal = "A/B";
  KelCString key = KelCString::borrow(literal);
  {
    KeySegments walk(key);
    ASSERT_TRUE(walk.next());
    EXPECT_STREQ(walk.text(), "A");
    EXPECT_STREQ(literal, "A/B");
  }
  EXPECT_STREQ(key.text(), "A/B");
}

}  // namespace
