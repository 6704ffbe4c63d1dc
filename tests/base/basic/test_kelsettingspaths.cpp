#include "base/basic/kelsettingspaths.h"

#include "tests/base/basic/settingsworld.h"

namespace {

class SettingsPaths : public tests::SettingsWorld {
 protected:
  std::string own() const { return pathOf("user/velmora.iniml").toUtf8(); }
  std::string installed() const { return pathOf("installed/velmora.iniml").toUtf8(); }
  static std::string readPath() { return kelSettingsPaths().read.toUtf8(); }
  static std::string writePath() { return kelSettingsPaths().write.toUtf8(); }
};

TEST_F(SettingsPaths, AreTheUsersOwnDocument) {
  write("user/velmora.iniml", "");
  write("installed/velmora.iniml", "");
  EXPECT_EQ(readPath(), own());
  EXPECT_EQ(writePath(), own());
}

TEST_F(SettingsPaths, ReadTheInstalledDocumentWhileTheUserHasNone) {
  write("installed/velmora.iniml", "");
  EXPECT_EQ(readPath(), installed());
  EXPECT_EQ(writePath(), own());
}

TEST_F(SettingsPaths, ReadNothingWhereThereIsNoDocument) {
  EXPECT_EQ(readPath(), "");
  EXPECT_EQ(writePath(), own());
}

TEST_F(SettingsPaths, OfTheReadOptionAloneWriteNothing) {
  write("user/velmora.iniml", "");
  addArgument("-inifile=other.iniml");
  EXPECT_EQ(readPath(), "other.iniml");
  EXPECT_EQ(writePath(), "");
}

TEST_F(SettingsPaths, OfTheWriteOptionAloneReadAsUsual) {
  write("user/velmora.iniml", "");
  addArgument("-ini_out=out.iniml");
  EXPECT_EQ(readPath(), own());
  EXPECT_EQ(writePath(), "out.iniml");
}

TEST_F(SettingsPaths, OfBothOptionsNeedNoDirectories) {
  directories->directories.clear();
  addArgument("-inifile=in.iniml");
  addArgument("-ini_out=out.iniml");
  EXPECT_EQ(readPath(), "in.iniml");
  EXPECT_EQ(writePath(), "out.iniml");
}

TEST_F(SettingsPaths, FollowTheLastOfEachOption) {
  for (const char* text :
       {"-inifile=1", "-ini_out=2", "x", "-inifile=3", "-ini_out=4", "inifile=5", "-INIFILE=6"}) {
    addArgument(text);
  }
  EXPECT_EQ(readPath(), "3");
  EXPECT_EQ(writePath(), "4");
}

TEST_F(SettingsPaths, TakeAnEmptyOptionAsNone) {
  write("user/velmora.iniml", "");
  addArgument("-inifile=other");
  addArgument("-inifile=");
  EXPECT_EQ(readPath(), own());
  EXPECT_EQ(writePath(), own());
}

TEST_F(SettingsPaths, DecodeOptionsAsUtf8) {
  addArgument("-inifile=caf\xC3\xA9.iniml");
  EXPECT_EQ(readPath(), "caf\xC3\xA9.iniml");
}

TEST_F(SettingsPaths, AreWorkedOutOnce) {
  EXPECT_EQ(readPath(), "");
  write("user/velmora.iniml", "");
  addArgument("-ini_out=late");
  EXPECT_EQ(readPath(), "") << "what came out empty stays so for the process";
  EXPECT_EQ(writePath(), own());
  forget();
  EXPECT_EQ(readPath(), own());
  EXPECT_EQ(writePath(), "late");
}

TEST_F(SettingsPaths, AreNotWorkedOutBeforeTheyAreNeeded) {
  Session session;
  write("user/velmora.iniml", document(valueLine("a", 5)));
  EXPECT_EQ(session.loaded("a"), 5);
}

TEST_F(SettingsPaths, NameNothingWithoutServices) {
  tests::FakeXml::current()->available = false;
  oroSetBroker(nullptr);
  EXPECT_EQ(readPath(), "");
  EXPECT_EQ(writePath(), "");
  oroSetBroker(&xml);
}

}  // namespace
