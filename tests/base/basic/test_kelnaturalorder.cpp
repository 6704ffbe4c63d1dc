#include "base/basic/kelnaturalorder.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<std::string> sorted(std::vector<std::string> texts) {
  kelNaturalSort(texts, [](const std::string& text) { return text.c_str(); });
  return texts;
}

struct OrderedPair {
  const char* lower;
  const char* higher;
};

TEST(NaturalOrder, PutsOneBeforeTheOther) {
  const OrderedPair pairs[] = {
      {nullptr, ""},         {"", "a"},       {"a", "ab"},
      {"Item 9", "Item 10"}, {"a", "B"},      {"B", "c"},
      {"item2", "item10"},   {"a01", "a2"},   {"a2", "a010"},
      {"1", "01"},           {"01", "001"},   {"0", "00"},
      {"a1b", "a01b"},       {"a01b", "a1c"}, {"9", "a"},
      {"a/", "a1"},          {"A b", "A/"},   {"1.5", "1.10"},
      {"a\x7F", "a\x80"},    {"a9", "a\xC3"}, {"99999999999999999999", "100000000000000000000"},
      {"a1 x02", "a01 x2"},  // the first difference in zeros counts
  };
  for (const auto& [lower, higher] : pairs) {
    EXPECT_LT(kelNaturalCompare(lower, higher), 0) << (lower ? lower : "null") << " " << higher;
    EXPECT_GT(kelNaturalCompare(higher, lower), 0) << (lower ? lower : "null") << " " << higher;
  }
}

TEST(NaturalOrder, FindsEqualTextsEqual) {
  for (const char* text : {"", "a", "a01b", "Item 10", "\xC3\xA9"}) {
    EXPECT_EQ(kelNaturalCompare(text, std::string(text).c_str()), 0) << text;
  }
  EXPECT_EQ(kelNaturalCompare(nullptr, nullptr), 0);
}

TEST(NaturalOrder, PutsEachBehindTheOtherWhereLettersDifferInCaseAlone) {
  EXPECT_GT(kelNaturalCompare("a", "A"), 0);
  EXPECT_GT(kelNaturalCompare("A", "a"), 0);
  EXPECT_GT(kelNaturalCompare("a1", "A2"), 0);
  EXPECT_GT(kelNaturalCompare("A2", "a1"), 0);
}

TEST(NaturalSort, OrdersNumbersAndLetters) {
  EXPECT_THAT(sorted({"b", "a10", "a/x", "a9", "a", "a b", "a09"}),
              ElementsAre("a", "a b", "a/x", "a9", "a09", "a10", "b"));
  EXPECT_THAT(sorted({}), ElementsAre());
  EXPECT_THAT(sorted({"x"}), ElementsAre("x"));
}

TEST(NaturalSort, LeavesWhatIsNotOrderedInItsPlace) {
  EXPECT_THAT(sorted({"a", "A", "a", "A"}), ElementsAre("a", "A", "a", "A"));
}

// Every text in both cases: no answer of the comparison agrees with any order.
TEST(NaturalSort, KeepsEveryTextHoweverTheyCompare) {
  std::vector<std::string> texts;
  for (int i = 0; i < 500; ++i) {
    texts.push_back((i % 2 == 0 ? "a" : "A") + std::to_string(i * 7919 % 500));
  }
  std::vector<std::string> result = sorted(texts);
  EXPECT_THAT(result, testing::UnorderedElementsAreArray(texts));
}

}  // namespace
