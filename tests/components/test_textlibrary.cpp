// The staged library "text", as the application description names it, and who sees it.

#include <gtest/gtest.h>

#include <string>

#include "interfaces/IKelLocale.h"
#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroStrSupport.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "tests/components/describedid.h"
#include "tests/framework/managerfixture.h"
#include "tests/testpaths.h"

namespace {

class TextLibrary : public tests::ManagerFixture {
 protected:
  TextLibrary() { testaccess::resetStrSupport(); }
  ~TextLibrary() override {
    keepForGood();
    testaccess::resetStrSupport();
  }

  // From now on the description is read.
  void describe() {
    const GUID component = tests::describedId("component text ");
    manager_->registerComponent(tests::wideTextOf(tests::stageDir() / "text"), component,
                                KelCString("text"), KelCString());
    for (const auto& [name, interface] : {std::pair{"TextSupport", "IOroStrSupport"},
                                          {"SessionLanguage", "IOroLanguageID"},
                                          {"SystemLocale", "IKelLocale"}}) {
      const GUID id = tests::describedId(std::string("class ") + name);
      broker_->registerClass(id, component, {}, KelCString(name));
      broker_->registerInterface(KelCString(interface), id);
    }
  }
};

TEST_F(TextLibrary, AModuleThatAsksAfterTheDescriptionIsReadSeesIt) {
  describe();
  testaccess::resetStrSupport();
  EXPECT_TRUE(OroString("abc").contains(OroString("c"), true));
  EXPECT_EQ(std::u16string(OroString(u"\u00C4 b ").stripSpace().wideText()), u"\u00C4 b");
}

TEST_F(TextLibrary, AModuleThatAsksBeforeDoesNot) {
  EXPECT_FALSE(OroString("abc").contains(OroString("c"), true));
  describe();
  EXPECT_TRUE(SPtr<IOroStrSupport>());
  EXPECT_FALSE(OroString("abc").contains(OroString("c"), true));
  EXPECT_EQ(std::u16string(OroString(u"\u00C4 b ").stripSpace().wideText()), u"\u00C4b");
}

TEST_F(TextLibrary, ThereIsOneLanguageInForce) {
  describe();
  const SPtr<IOroLanguageID> first;
  ASSERT_TRUE(first);
  EXPECT_TRUE(first->getLanguage().isEmpty());
  first->setLanguage(KelCString("de"));
  const SPtr<IOroLanguageID> second;
  EXPECT_EQ(first.get(), second.get());
  EXPECT_STREQ(second->getLanguage().text(), "de");
}

TEST_F(TextLibrary, TheSystemsLanguageIsAnObjectApart) {
  describe();
  const SPtr<IKelLocale> locale;
  const SPtr<IOroLanguageID> inForce;
  ASSERT_TRUE(locale);
  ASSERT_NE(locale->systemLanguage(), nullptr);
  EXPECT_NE(locale->systemLanguage(), inForce.get());
}

}  // namespace
