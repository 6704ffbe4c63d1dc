#include "platform/nationaltext.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(NationalText, WordsHaveAnOrderOfTheirOwn) {
  EXPECT_LT(platform::compareNational(u"apple", u"Banana"), 0);
  EXPECT_GT(platform::compareNational(u"cherry", u"Banana"), 0);
  EXPECT_LT(platform::compareNational(u"caf", u"caf\u00E9"), 0);
  EXPECT_LT(platform::compareNational(u"caf\u00E9", u"cage"), 0);
  EXPECT_NE(platform::compareNational(u"a", u"A"), 0);
  EXPECT_EQ(platform::compareNational(u"same", u"same"), 0);
}

TEST(NationalText, AnEmptyTextComesFirst) {
  EXPECT_EQ(platform::compareNational(u"", u""), 0);
  EXPECT_LT(platform::compareNational(u"", u"a"), 0);
  EXPECT_GT(platform::compareNational(u"a", u""), 0);
}

TEST(NationalText, BlanksAreThoseOfAllScripts) {
  for (const char16_t unit :
       {u' ', u'\t', u'\n', u'\v', u'\f', u'\r', u'\u00A0', u'\u2003', u'\u3000'}) {
    EXPECT_TRUE(platform::isBlank(unit)) << std::hex << static_cast<int>(unit);
  }
  for (const char16_t unit : {u'\0', u'a', u'0', u'_', u'\u00E9', u'\xD800', u'\xFFFF'}) {
    EXPECT_FALSE(platform::isBlank(unit)) << std::hex << static_cast<int>(unit);
  }
}

TEST(NationalText, DigitsAreThoseOfAllScripts) {
  for (const char16_t unit : {u'0', u'9', u'\u0663', u'\u0967'}) {
    EXPECT_TRUE(platform::isDigit(unit)) << std::hex << static_cast<int>(unit);
  }
  for (const char16_t unit : {u'\0', u'a', u' ', u'-', u'\u4E09', u'\xD800'}) {
    EXPECT_FALSE(platform::isDigit(unit)) << std::hex << static_cast<int>(unit);
  }
}

TEST(NationalText, LettersOfAllScriptsHaveTheirOtherForm) {
  EXPECT_EQ(platform::smallLetters(u"ABC \u00C4\u0416\u03A9 1"), u"abc \u00E4\u0436\u03C9 1");
  EXPECT_EQ(platform::capitalLetters(u"abc \u00E4\u0436\u03C9 1"), u"ABC \u00C4\u0416\u03A9 1");
  EXPECT_EQ(platform::smallLetters(u""), u"");
  EXPECT_EQ(platform::capitalLetters(u""), u"");
}

TEST(NationalText, ALetterWithoutASingleOtherFormStays) {
  EXPECT_EQ(platform::capitalLetters(u"stra\u00DFe"), u"STRA\u00DFE");
  EXPECT_EQ(platform::smallLetters(u"\u4E2D"), u"\u4E2D");
}

TEST(NationalText, NoLanguageHasLettersOfItsOwn) {
  EXPECT_EQ(platform::smallLetters(u"FILE"), u"file");
  EXPECT_EQ(platform::capitalLetters(u"file"), u"FILE");
}

TEST(NationalText, HalfPairsAreKept) {
  const std::u16string broken = {u'A', u'\xD800', u'B', u'\xDC00'};
  const std::u16string small = {u'a', u'\xD800', u'b', u'\xDC00'};
  EXPECT_EQ(platform::smallLetters(broken), small);
  EXPECT_EQ(platform::capitalLetters(small), broken);
  EXPECT_EQ(platform::composed(broken), broken);
  EXPECT_EQ(platform::compareNational(broken, broken), 0);
}

TEST(NationalText, PairsAreKept) {
  EXPECT_EQ(platform::smallLetters(u"A\U0001F600"), u"a\U0001F600");
  EXPECT_EQ(platform::composed(u"\U0001F600"), u"\U0001F600");
}

TEST(NationalText, MarksJoinTheirCharacters) {
  EXPECT_EQ(platform::composed(u"cafe\u0301"), u"caf\u00E9");
  EXPECT_EQ(platform::composed(u"\u1112\u1161\u11AB"), u"\uD55C");
  EXPECT_EQ(platform::composed(u"plain"), u"plain");
  EXPECT_EQ(platform::composed(u""), u"");
}

TEST(NationalText, AComposedTextMayBeLonger) {
  EXPECT_EQ(platform::composed(u"\u0958\u0959"), u"\u0915\u093C\u0916\u093C");
}

TEST(NationalText, LongTextsAreWorkedOnWhole) {
  std::u16string decomposed;
  std::u16string composed;
  for (int i = 0; i < 10'000; ++i) {
    decomposed += u"E\u0301";
    composed += u'\u00C9';
  }
  EXPECT_EQ(platform::composed(decomposed), composed);
  EXPECT_EQ(platform::smallLetters(composed), std::u16string(10'000, u'\u00E9'));
}

TEST(NationalText, TheUsersLanguageIsATag) {
  const std::string tag = platform::userLanguageTag();
  ASSERT_GE(tag.size(), 2u);
  EXPECT_EQ(
      tag.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-"),
      tag.npos)
      << tag;
}

}  // namespace
