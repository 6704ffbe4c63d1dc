#include "components/text/systemlocale.h"

#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/oropath.h"
#include "tests/tempfolder.h"

namespace {

TEST(SystemLocaleTest, ACodeIsTheLanguageInSmallLetters) {
  const auto code = SystemLocale::codeOf;
  EXPECT_EQ(code("de-DE"), "de");
  EXPECT_EQ(code("de"), "de");
  EXPECT_EQ(code("DE-at"), "de");
  EXPECT_EQ(code("en-US-u-va-posix"), "en");
  EXPECT_EQ(code("gsw-CH"), "gsw");
  EXPECT_EQ(code(""), "");
  EXPECT_EQ(code("-"), "");
}

TEST(SystemLocaleTest, ChineseIsToldApartByItsScript) {
  const auto code = SystemLocale::codeOf;
  EXPECT_EQ(code("zh"), "zh-cn");
  EXPECT_EQ(code("zh-CN"), "zh-cn");
  EXPECT_EQ(code("zh-SG"), "zh-cn");
  EXPECT_EQ(code("zh-TW"), "zh-tw");
  EXPECT_EQ(code("zh-HK"), "zh-tw");
  EXPECT_EQ(code("zh-MO"), "zh-tw");
  EXPECT_EQ(code("zh-Hant"), "zh-tw");
  EXPECT_EQ(code("zh-Hant-CN"), "zh-tw");
  EXPECT_EQ(code("zh-Hans-HK"), "zh-cn");
  EXPECT_EQ(code("zh-twist"), "zh-cn") << "only a whole part counts";
}

TEST(SystemLocaleTest, TheSystemsLanguageIsHeldByAnObject) {
  const IPtr<SystemLocale> locale = new SystemLocale;
  IOroLanguageID* const language = locale->systemLanguage();
  ASSERT_NE(language, nullptr);
  EXPECT_EQ(language, locale->systemLanguage());
  const std::string code = language->getLanguage().c_str();
  EXPECT_TRUE(code.empty() || code == "en") << "nothing is installed here: " << code;
  EXPECT_EQ(oroQuery<IKelLocale>(locale.get()), locale.get());
}

TEST(SystemLocaleTest, OnlyALanguageThatIsInstalledIsTold) {
  const tests::TempFolder files;
  const OroPath folder(OroString(files.path().u16string().c_str()));
  EXPECT_FALSE(SystemLocale::isInstalled(folder, "de"));
  EXPECT_TRUE(SystemLocale::isInstalled(folder, "en"));
  files.write("velmora.de.resx", "<root/>");
  files.write("fr.po", "");
  files.write("velmora.en-us.resx", "<root/>");
  EXPECT_TRUE(SystemLocale::isInstalled(folder, "de"));
  EXPECT_TRUE(SystemLocale::isInstalled(folder, "fr"));
  EXPECT_FALSE(SystemLocale::isInstalled(folder, "us"));
  EXPECT_FALSE(SystemLocale::isInstalled(folder, ""));
  EXPECT_FALSE(SystemLocale::isInstalled(OroPath(), "it"));
}

TEST(SessionLanguageTest, ItIsEmptyUntilALanguageIsSet) {
  const IPtr<SessionLanguage> language = new SessionLanguage;
  EXPECT_TRUE(language->getLanguage().isEmpty());
  EXPECT_FALSE(language->getLanguage().isNull());
  language->setLanguage(KelCString::borrow("de"));
  EXPECT_STREQ(language->getLanguage().text(), "de");
  language->setLanguage(language->getLanguage());
  EXPECT_STREQ(language->getLanguage().text(), "de");
  language->setLanguage(KelCString());
  EXPECT_TRUE(language->getLanguage().isEmpty());
  EXPECT_FALSE(language->getLanguage().isNull());
}

TEST(SessionLanguageTest, TheCodeIsItsOwn) {
  char text[] = "de";
  const IPtr<SessionLanguage> language = new SessionLanguage;
  language->setLanguage(KelCString::borrow(text));
  text[0] = 'x';
  EXPECT_STREQ(language->getLanguage().text(), "de");
  EXPECT_EQ(oroQuery<IOroLanguageID>(language.get()), language.get());
}

}  // namespace
