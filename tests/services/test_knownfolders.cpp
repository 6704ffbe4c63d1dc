#include "services/knownfolders.h"

#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/orotranslate.h"
#include "services/testaccess.h"
#include "tests/services/brackettranslator.h"
#include "tests/services/servicetest.h"

namespace {

using platform::KnownFolder;

class KnownFoldersTest : public tests::ServiceTest {
 protected:
  // What lies below this test's own folder, or the whole path where it does not.
  std::string known(const char* folder, bool productFolder, bool withVersion) {
    const std::string path = tests::narrow(oroKnownFolder(folder, productFolder, withVersion));
    const std::string own = tests::narrow(base());
    return path.rfind(own, 0) == 0 ? path.substr(own.size()) : path;
  }
};

TEST_F(KnownFoldersTest, EachNameIsAFolderOfTheSystem) {
  EXPECT_EQ(known("HOME", false, false), "\\profile");
  EXPECT_EQ(known("PERSONAL", false, false), "\\documents");
  EXPECT_EQ(known("COMMON_DOCUMENTS", false, false), "\\commonDocuments");
  EXPECT_EQ(known("APPDATA", false, false), "\\appData");
  EXPECT_EQ(known("COMMON_APPDATA", false, false), "\\commonAppData");
}

TEST_F(KnownFoldersTest, FoldersHaveTheNumbersOfTheSystem) {
  EXPECT_EQ(static_cast<int>(KnownFolder::profile), 40);
  EXPECT_EQ(static_cast<int>(KnownFolder::documents), 5);
  EXPECT_EQ(static_cast<int>(KnownFolder::commonDocuments), 46);
  EXPECT_EQ(static_cast<int>(KnownFolder::appData), 26);
  EXPECT_EQ(static_cast<int>(KnownFolder::commonAppData), 35);
}

TEST_F(KnownFoldersTest, WhatIsUnknownIsTheFallback) {
  nameProduct();
  EXPECT_EQ(known("DESKTOP", false, false), "C:");
  EXPECT_EQ(known("DESKTOP", true, true), "C:");
  EXPECT_EQ(known("home", false, false), "C:");
  EXPECT_EQ(known("", false, false), "C:");
  setSystemFolder(KnownFolder::profile, u"");
  EXPECT_EQ(known("HOME", false, false), "C:");
  EXPECT_EQ(known("HOME", true, true), "C:");
}

TEST_F(KnownFoldersTest, TheProductFolderIsTheCompanyAndWithVersionTheTitleInIt) {
  nameProduct("Scan", "7.5");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Velmora");
  EXPECT_EQ(known("APPDATA", true, true), "\\appData\\Velmora\\Velmora Scan 7.5");
  setValue("PRODUCT_INFO/companyName", "Acme Points");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Acme Points");
  EXPECT_EQ(known("APPDATA", true, true), "\\appData\\Acme Points\\Acme Points Scan 7.5");
}

TEST_F(KnownFoldersTest, AnEmptyVersionIsLeftOutOfTheTitle) {
  nameProduct("Scan", "");
  EXPECT_EQ(known("APPDATA", true, true), "\\appData\\Velmora\\Velmora Scan");
}

TEST_F(KnownFoldersTest, TheTitleIsATranslation) {
  oroSetModuleTranslator(new tests::BracketTranslator);
  nameProduct("Scan", "7.5");
  EXPECT_EQ(known("APPDATA", true, true), "\\appData\\Velmora\\[Velmora Scan 7.5]");
  nameProduct("Scan", "");
  EXPECT_EQ(known("APPDATA", true, true), "\\appData\\Velmora\\[Velmora Scan]");
}

TEST_F(KnownFoldersTest, WithoutProductFactsAProductFolderIsTheFallback) {
  EXPECT_EQ(known("APPDATA", true, true), "C:");
  setValue("PRODUCT_INFO/appName", "Scan");
  EXPECT_EQ(known("APPDATA", true, true), "C:");
  EXPECT_EQ(known("APPDATA", true, false), "C:");
  removeValue("PRODUCT_INFO/appName");
  setValue("PRODUCT_INFO/displayVersion", "7.5");
  EXPECT_EQ(known("APPDATA", true, true), "C:");
  EXPECT_EQ(known("APPDATA", false, false), "\\appData");
}

TEST_F(KnownFoldersTest, AnotherBrandReplacesCompanyAndTitle) {
  nameProduct("Scan", "7.5");
  setValue("ALT_PRODUCT_INFO/altProductName", "Other Scan");
  setValue("ALT_PRODUCT_INFO/altCompanyFolder", "Other");
  EXPECT_EQ(known("APPDATA", true, true), "\\appData\\Other\\Other Scan");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Other\\Other Scan");
  EXPECT_EQ(known("APPDATA", false, false), "\\appData");
}

TEST_F(KnownFoldersTest, AnotherBrandNeedsBothNames) {
  nameProduct("Scan", "7.5");
  setValue("ALT_PRODUCT_INFO/altProductName", "Other Scan");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Velmora");
  setValue("ALT_PRODUCT_INFO/altCompanyFolder", "");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Velmora");
  setValue("ALT_PRODUCT_INFO/altProductName", "");
  setValue("ALT_PRODUCT_INFO/altCompanyFolder", "Other");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Velmora");
}

TEST_F(KnownFoldersTest, AFolderMayBeReplacedByAnother) {
  setValue("ALT_PRODUCT_INFO/APPDATA", "PERSONAL");
  EXPECT_EQ(known("APPDATA", false, false), "\\documents");
  EXPECT_EQ(known("PERSONAL", false, false), "\\documents");
  setValue("ALT_PRODUCT_INFO/APPDATA", "");
  EXPECT_EQ(known("APPDATA", false, false), "\\appData");
}

TEST_F(KnownFoldersTest, EachFolderHasAReplacementOfItsOwn) {
  const char* const folders[] = {"HOME", "PERSONAL", "COMMON_DOCUMENTS", "APPDATA",
                                 "COMMON_APPDATA"};
  for (const char* folder : folders) {
    const std::string key = std::string("ALT_PRODUCT_INFO/") + folder;
    const char* const other = std::string(folder) == "HOME" ? "PERSONAL" : "HOME";
    const std::string expected = known(other, false, false);
    setValue(key.c_str(), other);
    EXPECT_EQ(known(folder, false, false), expected) << folder;
    removeValue(key.c_str());
  }
}

TEST_F(KnownFoldersTest, AReplacementWithoutTheOtherBrandsNamesCountsForPlainFoldersOnly) {
  nameProduct("Scan", "7.5");
  setValue("ALT_PRODUCT_INFO/APPDATA", "PERSONAL");
  EXPECT_EQ(known("APPDATA", true, false), "\\appData\\Velmora");
  setValue("ALT_PRODUCT_INFO/altProductName", "Other Scan");
  setValue("ALT_PRODUCT_INFO/altCompanyFolder", "Other");
  EXPECT_EQ(known("APPDATA", true, false), "\\documents\\Other\\Other Scan");
}

TEST_F(KnownFoldersTest, AnUnknownReplacementIsIgnored) {
  setValue("ALT_PRODUCT_INFO/APPDATA", "NOWHERE");
  EXPECT_EQ(known("APPDATA", false, false), "\\appData");
}

TEST_F(KnownFoldersTest, TheFolderIsMadeWithItsParents) {
  nameProduct("Scan", "7.5");
  oroKnownFolder("APPDATA", true, true);
  EXPECT_TRUE(isThere(base("appData\\Velmora\\Velmora Scan 7.5")));
  oroKnownFolder("HOME", false, false);
  EXPECT_TRUE(isThere(base("profile")));
  setValue("ALT_PRODUCT_INFO/altProductName", "Other Scan");
  setValue("ALT_PRODUCT_INFO/altCompanyFolder", "Other");
  oroKnownFolder("PERSONAL", true, true);
  EXPECT_TRUE(isThere(base("documents\\Other\\Other Scan")));
}

TEST_F(KnownFoldersTest, FoldersAreNotMadeWhenTheRegistrySaysSo) {
  for (const char* value : {"0", "2", "true", ""}) {
    testaccess::resetDefaultDirsWanted();
    setValue("PRODUCT_INFO/createDefaultDirs", value);
    EXPECT_EQ(known("HOME", false, false), "\\profile");
    EXPECT_FALSE(isThere(base("profile"))) << value;
  }
  testaccess::resetDefaultDirsWanted();
  setValue("PRODUCT_INFO/createDefaultDirs", "1");
  oroKnownFolder("HOME", false, false);
  EXPECT_TRUE(isThere(base("profile")));
}

TEST_F(KnownFoldersTest, WhetherFoldersAreMadeIsReadOnce) {
  setValue("PRODUCT_INFO/createDefaultDirs", "0");
  oroKnownFolder("HOME", false, false);
  setValue("PRODUCT_INFO/createDefaultDirs", "1");
  oroKnownFolder("HOME", false, false);
  EXPECT_FALSE(isThere(base("profile")));
}

TEST_F(KnownFoldersTest, AFolderThatCannotBeMadeIsNamedAllTheSame) {
  folder_.write("profile", "a file in the way");
  setSystemFolder(KnownFolder::profile, base("profile").joined("below").wideText());
  EXPECT_EQ(known("HOME", false, false), "\\profile\\below");
  EXPECT_FALSE(isThere(base("profile").joined("below")));
}

TEST_F(KnownFoldersTest, TheFallbackIsTheDriveRootInCanonicalForm) {
  EXPECT_EQ(tests::narrow(oroFallbackFolder()), "C:");
  EXPECT_EQ(tests::narrow(oroFallbackFolder().toOsPath()), "C:\\");
}

}  // namespace
