// Sessions of the real executable that change settings: what the next session finds, however the
// one before it ended.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/killself.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
constexpr const char* kApplication =
    "\ncomponent blackbox_session {51E6A0B3-2C7D-4F91-8E5A-07B439D26C18}\n"
    "class SessionStarter {C83F5D17-6B02-4AE4-973D-F1208A4E5BD9}\ndefault IOroAppStarter\n";
constexpr const char* kDefaults = "Number=-1\nRatio=0.5\nName=nobody\nTitle=none\nState=?\n";

std::string sessionDocument(const std::string& number) {
  return std::string(kDeclaration) + "<OroDataStore>\n\t<section name=\"Session\">\n" +
         "\t\t<value name=\"Number\" type=\"integer\">" + number +
         "</value>\n\t</section>\n</OroDataStore>\n";
}

// The shipped product with an application that does as it is told; see libs/session.cpp.
class SettingsRun : public testing::Test {
 protected:
  SettingsRun() {
    fs::copy(tests::stageDir(), product_, fs::copy_options::recursive);
    for (const char* const suffix : {".so", ".dll"}) {
      const std::string library = std::string("blackbox_session") + suffix;
      if (fs::exists(tests::testLibsDir() / library)) {
        fs::copy_file(tests::testLibsDir() / library, product_ / library);
      }
    }
    std::ofstream(product_ / "cowl.description", std::ios::binary | std::ios::app) << kApplication;
    fs::create_directory(home_);
  }

  tests::ChildResult run(const std::vector<std::string>& arguments) {
    fs::remove(folder_.file("shown.txt"));
    const std::string home = home_.string();
    const tests::ChildResult result = tests::runChild({product_ / tests::cowlProgram().filename(),
                                                       arguments,
                                                       {{"HOME", home}, {"XDG_CONFIG_HOME", home}},
                                                       folder_.path()});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    return result;
  }
  // A session on the test's own document, in front of what else it is to do.
  tests::ChildResult session(const std::vector<std::string>& commands) {
    std::vector<std::string> arguments = {"-inifile=own.iniml", "-ini_out=own.iniml", "create"};
    arguments.insert(arguments.end(), commands.begin(), commands.end());
    return run(arguments);
  }
  void killedSession(std::vector<std::string> commands) {
    commands.push_back("kill");
    EXPECT_EQ(session(commands).exitCode, tests::killedExitCode);
  }
  // The values as a session on that document finds them.
  std::string found() {
    session({"show"});
    return shownValues();
  }
  std::string shownValues() {
    const std::string shown = file("shown.txt");
    return shown.substr(0, shown.find("userconfig="));
  }

  bool exists(const std::string& name) { return fs::exists(folder_.file(name)); }
  std::string file(const std::string& name) {
    return exists(name) ? folder_.read(name) : "<absent>";
  }
  static void moveLibrary(const std::string& stem, const fs::path& from, const fs::path& to) {
    for (const char* const suffix : {".so", ".dll"}) {
      if (fs::exists(from / (stem + suffix)))
        fs::rename(from / (stem + suffix), to / (stem + suffix));
    }
  }

  tests::TempFolder folder_;
  const fs::path product_ = folder_.file("product");
  const fs::path home_ = folder_.file("home");
};

TEST_F(SettingsRun, ASettingIsThereAfterAKillRightAfterTheSet) {
  folder_.write("own.iniml", sessionDocument("1"));
  killedSession({"set:Number=42"});
  EXPECT_EQ(file("own.iniml"), sessionDocument("1"));
  EXPECT_EQ(
      file("own.iniml.changes"),
      "<section name=\"Session\"><value name=\"Number\" type=\"integer\">42</value></section>\n");
  EXPECT_THAT(found(), HasSubstr("Number=42\n"));
  EXPECT_EQ(file("own.iniml"), sessionDocument("42"));
  EXPECT_FALSE(exists("own.iniml.changes"));
}

TEST_F(SettingsRun, EveryKindOfSettingSurvivesAKill) {
  folder_.write("own.iniml", sessionDocument("1"));
  const std::string state(100, 's');
  killedSession({"set:Number=5", "set:Number=6", "set:Number=5", "set:Ratio=0.0625",
                 "set:Name=A name", "set:Title=Title", "set:State=" + state});
  const std::string values =
      "Number=5\nRatio=0.0625\nName=A name\n"
      "Title=Title \xC3\xBC\xE2\x82\xAC\r\n <b> & more\t\nState=" +
      state + "\n";
  EXPECT_EQ(found(), values);
  EXPECT_EQ(found(), values) << "once merged, the document alone holds them";
}

TEST_F(SettingsRun, OneKillAfterTheOtherLosesNothing) {
  folder_.write("own.iniml", sessionDocument("0"));
  for (int i = 1; i <= 5; ++i) {
    const std::string number = std::to_string(i);
    killedSession({"set:Name=name" + number, "set:Number=" + number});
  }
  EXPECT_THAT(found(), HasSubstr("Number=5\nRatio=0.5\nName=name5\n"));
}

TEST_F(SettingsRun, ASessionThatEndsCommits) {
  session({"set:Number=7", "set:Name=seven"});
  EXPECT_FALSE(exists("own.iniml.changes"));
  EXPECT_EQ(file("own.iniml"), std::string(kDeclaration) +
                                   "<OroDataStore>\n\t<section name=\"Session\">\n"
                                   "\t\t<value name=\"Name\" type=\"text_latin1\">seven</value>\n"
                                   "\t\t<value name=\"Number\" type=\"integer\">7</value>\n"
                                   "\t</section>\n</OroDataStore>\n");
  EXPECT_EQ(found(), "Number=7\nRatio=0.5\nName=seven\nTitle=none\nState=?\n");
}

TEST_F(SettingsRun, WhatASessionDoesNotKnowStaysInTheDocument) {
  const std::string other =
      std::string(kDeclaration) +
      "<OroDataStore>\n\t<value name=\"Lone\" type=\"x\"> </value>\n"
      "\t<section name=\"Other\">\n\t\t<value name=\"Deep\" type=\"text\">a&amp;b"
      "</value>\n\t</section>\n</OroDataStore>\n";
  folder_.write("own.iniml", other);
  session({});
  EXPECT_EQ(file("own.iniml"), other);
}

TEST_F(SettingsRun, AnInputAloneIsReadAndNothingIsSaved) {
  folder_.write("own.iniml", sessionDocument("3"));
  run({"-inifile=own.iniml", "create", "show", "set:Number=4"});
  EXPECT_THAT(shownValues(), HasSubstr("Number=3\n"));
  EXPECT_EQ(file("own.iniml"), sessionDocument("3"));
  EXPECT_FALSE(exists("own.iniml.changes"));
  for (const auto& entry : fs::recursive_directory_iterator(home_)) {
    EXPECT_NE(entry.path().extension(), ".iniml") << entry.path();
  }
}

TEST_F(SettingsRun, OneDocumentIsReadAndAnotherIsWritten) {
  folder_.write("in.iniml", sessionDocument("3"));
  run({"-inifile=in.iniml", "-ini_out=new/out.iniml", "create", "set:Number=4"});
  EXPECT_EQ(file("in.iniml"), sessionDocument("3"));
  EXPECT_EQ(file("new/out.iniml"), sessionDocument("4"));
}

TEST_F(SettingsRun, TheLastOfSeveralOptionsCounts) {
  folder_.write("a.iniml", sessionDocument("3"));
  folder_.write("b.iniml", sessionDocument("4"));
  run({"-inifile=a.iniml", "create", "-inifile=b.iniml", "show"});
  EXPECT_THAT(shownValues(), HasSubstr("Number=4\n"));
}

TEST_F(SettingsRun, AUserWithoutADocumentStartsWithTheOneBesideTheExecutable) {
  std::ofstream(product_ / "velmora.iniml", std::ios::binary) << sessionDocument("11");
  run({"create", "show"});
  const std::string shown = file("shown.txt");
  EXPECT_THAT(shown, HasSubstr("Number=11\n"));
  const size_t place = shown.find("userconfig=") + 11;
  const std::string userFolder = shown.substr(place, shown.find('\n', place) - place);
  const fs::path own =
      fs::path(std::u8string(userFolder.begin(), userFolder.end())) / "velmora.iniml";
  ASSERT_TRUE(fs::exists(own)) << own << " is made when the first session ends";
  run({"create", "set:Number=12"});
  run({"create", "show"});
  EXPECT_THAT(file("shown.txt"), HasSubstr("Number=12\n"));
  EXPECT_EQ(folder_.read("product/velmora.iniml"), sessionDocument("11"));
  fs::remove(own);
}

// Each escape in a journal hides the end of the text from the next one, so this line is broken.
TEST_F(SettingsRun, ATextThatEndsInEscapesTakesTheJournalWithIt) {
  folder_.write("own.iniml", sessionDocument("3"));
  killedSession({"set:Number=4", "set:Name=a<b<c"});
  const std::string journal = file("own.iniml.changes");
  EXPECT_THAT(journal, HasSubstr(">a&lt;b<c</value>"));
  EXPECT_THAT(found(), HasSubstr("Number=3\n"));
  EXPECT_EQ(file("own.iniml.changes.rejected"), journal);
  session({"set:Name=a<b<c"});
  EXPECT_THAT(found(), HasSubstr("Name=a<b<c\n")) << "a session that ends saves it";
}

// A journal beside no document has nothing to be merged into. It is kept for whoever looks for it.
TEST_F(SettingsRun, AKillInTheVeryFirstSessionLeavesItsChangesAside) {
  killedSession({"set:Number=42"});
  const std::string journal = file("own.iniml.changes");
  EXPECT_EQ(found(), kDefaults);
  EXPECT_FALSE(exists("own.iniml.changes"));
  EXPECT_EQ(file("own.iniml.changes.rejected"), journal);
}

TEST_F(SettingsRun, ADamagedDocumentIsReportedAndACopyIsKept) {
  const std::string damaged = sessionDocument("3").substr(0, 90);
  folder_.write("own.iniml", damaged);
  const auto result = session({"show", "set:Number=4"});
  EXPECT_EQ(shownValues(), kDefaults);
  EXPECT_THAT(result.errors, HasSubstr("own.iniml, line 4, column 11: "));
  EXPECT_EQ(file("own.iniml"), sessionDocument("4"));
  EXPECT_EQ(file("own.iniml.damaged"), damaged);
  EXPECT_THAT(found(), HasSubstr("Number=4\n"));
}

TEST_F(SettingsRun, WithoutTheXmlLibraryNothingIsReadAndNothingIsLost) {
  folder_.write("own.iniml", sessionDocument("3"));
  moveLibrary("xmldom", product_, folder_.path());
  session({"show", "set:Number=4"});
  EXPECT_EQ(shownValues(), kDefaults);
  EXPECT_EQ(file("own.iniml"), sessionDocument("3"));
  EXPECT_THAT(file("own.iniml.changes"), HasSubstr(">4</value>"));
  moveLibrary("xmldom", folder_.path(), product_);
  EXPECT_THAT(found(), HasSubstr("Number=4\n"));
}

TEST_F(SettingsRun, AnEntryThatWasCutOffCostsNoOther) {
  folder_.write("own.iniml", sessionDocument("3"));
  killedSession({"set:Number=4", "set:Name=four"});
  const std::string journal = file("own.iniml.changes");
  folder_.write("own.iniml.changes", journal.substr(0, journal.size() - 20));
  EXPECT_THAT(found(), HasSubstr("Number=4\nRatio=0.5\nName=nobody\n"));
  EXPECT_FALSE(exists("own.iniml.changes"));
  EXPECT_FALSE(exists("own.iniml.changes.rejected"));
}

}  // namespace
