#include "orobasictypes/orowildcard.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakeheap.h"

namespace {

using tests::borrowed;
using tests::owned;

bool matches(const char16_t* pattern, const char16_t* text) {
  return OroWildcard(borrowed(pattern)).match(borrowed(text));
}

struct MatchRow {
  const char16_t* pattern;
  const char16_t* text;
  bool matches;
};

TEST(OroWildcard, MatchesByTheRules) {
  for (const MatchRow& row : {
           MatchRow{u"*.t?t", u"a.txt", true},
           MatchRow{u"*.t?t", u".txt", true},
           MatchRow{u"*.t?t", u"a.tx", false},
           MatchRow{u"*.t?t", u"a.txt.txt", true},
           MatchRow{u"", u"", true},
           MatchRow{u"", u"a", false},
           MatchRow{u"*", u"", true},
           MatchRow{u"**", u"", true},
           MatchRow{u"*", u"a\\b/c", true},
           MatchRow{u"?", u"", false},
           MatchRow{u"?", u"\\", true},
           MatchRow{u"abc", u"abc", true},
           MatchRow{u"abc", u"ABC", false},
           MatchRow{u"abc", u"abcd", false},
           MatchRow{u"*a*b*", u"xxaxxbxx", true},
           MatchRow{u"*a*b*", u"xxbxxaxx", false},
           MatchRow{u"a*", u"a", true},
           MatchRow{u"*", u"*", true},
           MatchRow{u"{a,b}", u"a", false},
           MatchRow{u"{a,b}", u"{a,b}", true},
           MatchRow{u"\\*", u"*", false},
       }) {
    EXPECT_EQ(matches(row.pattern, row.text), row.matches)
        << OroString(row.pattern) << " " << OroString(row.text);
  }
}

TEST(OroWildcard, MatchesSets) {
  for (const MatchRow& row : {
           MatchRow{u"[a-c]x", u"bx", true},  MatchRow{u"[a-c]x", u"ax", true},
           MatchRow{u"[a-c]x", u"cx", true},  MatchRow{u"[a-c]x", u"-x", true},
           MatchRow{u"[a-c]x", u"dx", false}, MatchRow{u"[abc]", u"b", true},
           MatchRow{u"[!a]", u"b", false},    MatchRow{u"[!a]", u"!", true},
           MatchRow{u"[c-a]", u"a", true},    MatchRow{u"[c-a]", u"-", true},
           MatchRow{u"[c-a]", u"c", false},   MatchRow{u"[c-a]", u"b", false},
           MatchRow{u"[a-]", u"a", false},    MatchRow{u"[a-]", u"-", true},
           MatchRow{u"[+-]", u"A", true},     MatchRow{u"[+-]", u"+", true},
           MatchRow{u"[+-]", u"-", true},     MatchRow{u"[-a]", u"-", true},
           MatchRow{u"[-a]", u"a", true},     MatchRow{u"[-a]", u"b", false},
           MatchRow{u"[]", u"]", false},      MatchRow{u"[]", u"[]", false},
           MatchRow{u"[]a]", u"]", false},    MatchRow{u"[]a]", u"a]", false},
           MatchRow{u"a[", u"a[", false},     MatchRow{u"a[", u"a", false},
           MatchRow{u"[a", u"[a", false},     MatchRow{u"]", u"]", true},
           MatchRow{u"[*]", u"*", true},      MatchRow{u"[*]", u"a", false},
           MatchRow{u"[[]", u"[", true},      MatchRow{u"*[0-9].xyz", u"cloud7.xyz", true},
       }) {
    EXPECT_EQ(matches(row.pattern, row.text), row.matches)
        << OroString(row.pattern) << " " << OroString(row.text);
  }
}

TEST(OroWildcard, ComparesUnitsAsUnsigned) {
  EXPECT_TRUE(matches(u"[a-\uFFFF]", u"\u8000"));
  EXPECT_TRUE(matches(u"[\u7000-\u9000]", u"\u8000"));
  EXPECT_TRUE(matches(u"\u20AC*", u"\u20AC5"));
}

TEST(OroWildcard, IgnoringCaseLowersTheTextAndTheConstructorThePattern) {
  testaccess::resetStrSupport();
  OroWildcard exact(borrowed(u"*.TXT"));
  EXPECT_TRUE(exact.match(borrowed(u"a.TXT")));
  EXPECT_FALSE(exact.matchIgnoringCase(borrowed(u"a.TXT"))) << "the pattern was not lowered";
  OroWildcard lowered(borrowed(u"*.TXT"), true);
  EXPECT_TRUE(lowered.matchIgnoringCase(borrowed(u"a.TxT")));
  EXPECT_FALSE(lowered.match(borrowed(u"a.TXT")));
}

TEST(OroWildcard, NullIsTheEmptyText) {
  EXPECT_TRUE(OroWildcard(OroString()).match(OroString()));
  EXPECT_FALSE(OroWildcard(borrowed(u"a")).match(OroString()));
}

TEST(OroWildcard, MatchingAllocatesNothing) {
  OroWildcard pattern(borrowed(u"*a*[b-d]?*e"));
  const OroString text(u"xxabcxxe");
  tests::FakeHeap heap;
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(pattern.match(text));
  EXPECT_EQ(heap.allocations + heap.reallocations, 0);
}

TEST(OroWildcard, CostGrowsWithTheProductAlone) {
  std::u16string pattern;
  for (int i = 0; i < 100; ++i) pattern += u"*a";
  OroWildcard hostile(owned(pattern + u"*b"));
  EXPECT_FALSE(hostile.match(owned(std::u16string(5000, u'a'))));
}

// A matcher that tries everything, for texts short enough.
bool matchesSlowly(std::u16string_view pattern, std::u16string_view text) {
  if (pattern.empty()) return text.empty();
  if (pattern[0] == u'*') {
    return matchesSlowly(pattern.substr(1), text) ||
           (!text.empty() && matchesSlowly(pattern, text.substr(1)));
  }
  if (text.empty()) return false;
  if (pattern[0] == u'?') return matchesSlowly(pattern.substr(1), text.substr(1));
  if (pattern[0] != u'[') {
    return pattern[0] == text[0] && matchesSlowly(pattern.substr(1), text.substr(1));
  }
  const size_t closing = pattern.find(u']', 1);
  if (closing == pattern.npos) return false;
  bool hit = false;
  for (size_t i = 1; i < closing; ++i) {
    hit |= pattern[i + 1] == u'-' ? pattern[i] <= text[0] && text[0] <= pattern[i + 2]
                                  : pattern[i] == text[0];
  }
  return hit && matchesSlowly(pattern.substr(closing + 1), text.substr(1));
}

TEST(OroWildcard, RandomPatternsMatchAsWhenTryingEverything) {
  std::mt19937 random(31);
  int hits = 0;
  for (int i = 0; i < 50000; ++i) {
    std::u16string pattern;
    std::u16string text;
    for (unsigned length = random() % 8; length > 0; --length) {
      pattern += u"ab-*?[]"[random() % 7];
    }
    for (unsigned length = random() % 6; length > 0; --length) text += u"ab-[]"[random() % 5];
    const bool expected = matchesSlowly(pattern, text);
    hits += expected;
    ASSERT_EQ(OroWildcard(owned(pattern)).match(owned(text)), expected)
        << OroString(pattern.c_str()) << " " << OroString(text.c_str());
  }
  EXPECT_GT(hits, 500);
}

}  // namespace
