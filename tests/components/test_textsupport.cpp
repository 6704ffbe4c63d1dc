#include "components/text/textsupport.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/testaccess.h"
#include "platform/text.h"
#include "tests/support/fakebroker.h"

namespace {

std::u16string units(const OroString& text) { return text.wideText(); }

// The strings of a module that sees the service.
class TextSupportTest : public testing::Test {
 protected:
  TextSupportTest() {
    testaccess::resetStrSupport();
    broker_.registerService(KelCString::borrow("IOroStrSupport"), support_.get());
  }
  ~TextSupportTest() override { testaccess::resetStrSupport(); }

  tests::FakeBroker broker_;
  IPtr<TextSupport> support_ = new TextSupport;
};

TEST_F(TextSupportTest, TextsAreOrderedAsWords) {
  EXPECT_TRUE(OroString(u"\u00C4pfel") < OroString(u"Birnen"));
  EXPECT_TRUE(OroString("apple") < OroString("Banana"));
  EXPECT_TRUE(OroString("b") > OroString("a"));
  EXPECT_EQ(support_->compare(OroString("a"), OroString("a")), 0);
  EXPECT_EQ(support_->compare(OroString("a"), OroString("b")), -1);
  EXPECT_EQ(support_->compare(OroString("b"), OroString("a")), 1);
  EXPECT_EQ(support_->compare(OroString(), OroString("")), 0);
  EXPECT_EQ(support_->compare(OroString(), OroString("a")), -1);
}

TEST_F(TextSupportTest, LettersOfAllScriptsChangeTheirCase) {
  EXPECT_EQ(units(OroString(u"\u00C4RGER").toLower()), u"\u00E4rger");
  EXPECT_EQ(units(OroString(u"\u00E4rger").toUpper()), u"\u00C4RGER");
  const OroPath path(OroString(u"C:\\\u00C4\\x"));
  EXPECT_TRUE(path.equalsIgnoringCase(OroPath(OroString(u"c:\\\u00E4\\X"))));
}

TEST_F(TextSupportTest, SpaceIsStrippedAtBothEndsAlone) {
  EXPECT_EQ(units(OroString(u" \t a b \u3000\r\n").stripSpace()), u"a b");
  EXPECT_EQ(units(OroString(u" \t ").stripSpace()), u"");
  EXPECT_EQ(units(OroString(u"").stripSpace()), u"");
  EXPECT_EQ(units(OroString(u"a").stripSpace()), u"a");
}

TEST_F(TextSupportTest, BlanksAndDigitsAreThoseOfAllScripts) {
  const OroString text(u"a \u3000\u0663");
  EXPECT_FALSE(text.isSpace(0));
  EXPECT_TRUE(text.isSpace(1));
  EXPECT_TRUE(text.isSpace(2));
  EXPECT_TRUE(text.isDigit(3));
  EXPECT_FALSE(text.isDigit(0));
}

TEST_F(TextSupportTest, ATextContainsItselfAndItsLastCharacter) {
  const OroString text(u"abc\u00C4");
  EXPECT_TRUE(text.contains(text, true));
  EXPECT_TRUE(text.contains(OroString(u"\u00C4"), true));
  EXPECT_FALSE(text.contains(OroString(u"\u00E4"), true));
  EXPECT_TRUE(text.contains(OroString(u"C\u00E4"), false));
  EXPECT_FALSE(text.contains(OroString("abd"), false));
  EXPECT_FALSE(text.contains(OroString(""), true));
  EXPECT_FALSE(text.contains(OroString(""), false));
  EXPECT_FALSE(OroString("").contains(text, false));
}

TEST_F(TextSupportTest, NormalTextHasComposedCharacters) {
  EXPECT_EQ(units(OroString(u"cafe\u0301 x").normalize(u' ')), u"caf\u00E9 x");
  EXPECT_EQ(units(OroString(u"cafe\u0301 x\ty").normalize(u'_')), u"caf\u00E9_x_y");
}

TEST_F(TextSupportTest, NarrowTextIsTheSystems) {
  const OroString text(u"caf\u00E9");
  EXPECT_EQ(text.toNarrow(), platform::toCodePage(u"caf\u00E9"));
  EXPECT_GT(std::string(text.toNarrow()).size(), 3u);
  EXPECT_STREQ(OroString("plain").toNarrow(), "plain");
  KelCString out("before");
  support_->toNarrow(out, OroString());
  EXPECT_STREQ(out.c_str(), "");
}

TEST_F(TextSupportTest, ANullTextStaysNull) {
  OroString text;
  support_->stripSpace(text);
  support_->normalize(text);
  support_->toLower(text);
  support_->toUpper(text);
  EXPECT_TRUE(text.isNull());
}

TEST_F(TextSupportTest, ThreadsMayShareIt) {
  std::vector<std::thread> threads;
  std::vector<int> wrong(4);
  for (int& count : wrong) {
    threads.emplace_back([this, &count] {
      for (int i = 0; i < 2000; ++i) {
        OroString text(u" \u00C4B ");
        support_->stripSpace(text);
        support_->toLower(text);
        if (units(text) != u"\u00E4b") ++count;
        if (support_->compare(text, OroString("b")) != -1) ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4));
}

TEST_F(TextSupportTest, ItAnswersForItsInterface) {
  EXPECT_EQ(oroQuery<IOroStrSupport>(support_.get()), support_.get());
  EXPECT_STREQ(support_->getClassName(), "TextSupport");
}

}  // namespace
