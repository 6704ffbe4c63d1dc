#include "orobasictypes/kelwildcard.h"

#include <gtest/gtest.h>

#include "tests/support/fakeheap.h"

namespace {

KelCString borrowed(const char* text) { return KelCString::borrow(text); }

bool matches(const char* pattern, const char* text) {
  return KelWildcard(borrowed(pattern)).match(borrowed(text));
}

TEST(KelWildcard, MatchesAsTheWideForm) {
  EXPECT_TRUE(matches("*.t?t", "a.txt"));
  EXPECT_TRUE(matches("*.t?t", ".txt"));
  EXPECT_FALSE(matches("*.t?t", "a.tx"));
  EXPECT_TRUE(matches("[a-c]x", "bx"));
  EXPECT_TRUE(matches("[a-c]x", "-x"));
  EXPECT_FALSE(matches("a[", "a["));
  EXPECT_TRUE(matches("", ""));
  EXPECT_FALSE(matches("", "a"));
  EXPECT_TRUE(KelWildcard(KelCString()).match(KelCString()));
}

TEST(KelWildcard, ComparesBytesAsSigned) {
  EXPECT_TRUE(matches("[\xC0-\xFF]", "\xE9"));
  EXPECT_TRUE(matches("[\x80-z]", "\xE9")) << "from below zero up to z";
  EXPECT_TRUE(matches("[\x80-z]", "a"));
  EXPECT_FALSE(matches("[a-\xFF]", "b")) << "the end lies below the beginning";
}

TEST(KelWildcard, IgnoringCaseLowersTheTextAndTheConstructorThePattern) {
  KelWildcard exact(borrowed("*.TXT"));
  EXPECT_TRUE(exact.match(borrowed("a.TXT")));
  EXPECT_FALSE(exact.matchIgnoringCase(borrowed("a.TXT")));
  KelWildcard lowered(borrowed("*.TXT"), true);
  const char text[] = "a.TxT";
  EXPECT_TRUE(lowered.matchIgnoringCase(borrowed(text)));
  EXPECT_STREQ(text, "a.TxT");
}

TEST(KelWildcard, OwnsItsPatternAndMatchesWithoutAllocating) {
  char pattern[] = "a*";
  KelWildcard wildcard(borrowed(pattern));
  pattern[0] = 'b';
  tests::FakeHeap heap;
  EXPECT_TRUE(wildcard.match(borrowed("abc")));
  EXPECT_EQ(heap.allocations + heap.reallocations, 0);
}

}  // namespace
