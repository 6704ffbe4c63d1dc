#include "orobasictypes/kelwildcard.h"

#include <gtest/gtest.h>

#include "tests/support/fakeheap.h"

namespace {

KelCString borrowedWord(const char* text) { return KelCString::borrow(text); }

bool matches(const char* pattern, const char* text) {
  return KelWildcard(borrowedWord(pattern)).match(borrowedWord(text));
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
  KelWildcard exact(borrowedWord("*.TXT"));
  EXPECT_TRUE(exact.match(borrowedWord("a.TXT")));
  EXPECT_FALSE(exact.matchIgnoringCase(borrowedWord("a.TXT")));
  KelWildcard lowered(borrowedWord("*.TXT"), true);
  const char text[] = "a.TxT";
  EXPECT_TRUE(lowered.matchIgnoringCase(borrowedWord(text)));
  EXPECT_STREQ(text, "a.TxT");
}

TEST(KelWildcard, OwnsItsPatternAndMatchesWithoutAllocating) {
  char pattern[] = "a*";
  KelWildcard wildcard(borrowedWord(pattern));
  pattern[0] = 'b';
  tests::FakeHeap heap;
  EXPECT_TRUE(wildcard.match(borrowedWord("abc")));
  EXPECT_EQ(heap.allocations + heap.reallocations, 0);
}

}  // namespace
