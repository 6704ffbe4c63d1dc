// The real executable in the languages of its users.

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/productcopy.h"
#include "tests/tempfolder.h"

namespace {

constexpr const char* kColoredPoints = "1.00 2.00 3.00 4 5 6\n";

std::string document(const std::string& language) {
  return "<OroDataStore><section name=\"Fonts and Languages\"><value name=\"Language\" "
         "type=\"text_latin1\">" +
         language + "</value></section></OroDataStore>";
}

std::string table(const std::string& key, const std::string& text) {
  return "<root><data name=\"" + key + "\"><value>" + text + "</value></data></root>";
}

std::string xliff(const std::string& source, const std::string& target) {
  return "<xliff><file><body><trans-unit><source>" + source + "</source><target>" + target +
         "</target></trans-unit></body></file></xliff>";
}

class LanguageRun : public testing::Test {
 protected:
  LanguageRun() { folder_.write("in.xyz", kColoredPoints); }

  // By the application description.
  void speak(const std::string& language) {
    product_.changeDescription("", "registry Application/Language " + language + "\n");
  }
  void writeLanguage(const std::string& name, const std::string& bytes) {
    std::ofstream(product_.file("lang") / name, std::ios::binary) << bytes;
  }
  tests::ChildResult run(std::vector<std::string> arguments) {
    const auto result = product_.run("cowl", std::move(arguments), folder_.path());
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    return result;
  }
  // What a run that opens and saves records.
  std::string records(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"-input",  "in.xyz",   "-output",
                                          "out.xyz", "-logfile", "stdout"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tests::plainLines(run(arguments).output);
  }
  // The name of the first command of such a run, and of the first action in it.
  std::string spoken(std::vector<std::string> more = {}) {
    const std::string text = records(std::move(more));
    const auto behind = [&text](const std::string& head) {
      const size_t at = text.find(head);
      if (at == text.npos) return text;
      const size_t begin = at + head.size();
      return text.substr(begin, text.find('"', begin) - begin);
    };
    return behind("<start cmd=\"") + ", " + behind("<start action=\"");
  }

  tests::ProductCopy product_;
  tests::TempFolder folder_;  // where it runs
};

constexpr const char* kEnglish = "Open File, Reading points";
constexpr const char* kGerman =
    "Datei \xC3\xB6"
    "ffnen, Punkte lesen";

TEST_F(LanguageRun, ALanguageOfTheDescriptionIsSpokenByHostAndComponents) {
  speak("de");
  EXPECT_EQ(records(),
            "<log>\n"
            "<start cmd=\"Datei \xC3\xB6"
            "ffnen\"/>\n"
            "<start action=\"Punkte lesen\"/>\n"
            " <prog done=\"100\"/>\n"
            "<stop action=\"Punkte lesen\"/>\n"
            "<stop cmd=\"Datei \xC3\xB6"
            "ffnen\"/>\n"
            "<start cmd=\"Datei speichern\"/>\n"
            "<start action=\"Punkte schreiben\"/>\n"
            " <prog done=\"100\"/>\n"
            "<stop action=\"Punkte schreiben\"/>\n"
            "<stop cmd=\"Datei speichern\"/>\n"
            "<set action=\"Outcome: success\"/>\n"
            "</log>\n");
  EXPECT_EQ(folder_.read("out.xyz"), kColoredPoints);
}

TEST_F(LanguageRun, ErrorsAreSpokenToo) {
  speak("de");
  const auto unknown = run({"-nonsense"});
  EXPECT_EQ(tests::plainLines(unknown.errors), "FEHLER:\nUnbekannte Option: -nonsense\n");
  const auto absent = run({"-input", "absent.xyz", "-logfile", "stdout"});
  EXPECT_NE(absent.output.find("<Error=\"Die Datei absent.xyz kann nicht ge\xC3\xB6"
                               "ffnet werden\"/>"),
            std::string::npos)
      << absent.output;
  folder_.write("in.xyz", "1 2\n");
  EXPECT_NE(records().find("<Error=\"in.xyz, Zeile 1: ein Punkt braucht drei Koordinaten\"/>"),
            std::string::npos);
}

TEST_F(LanguageRun, WithoutAChoiceEnglishIsSpoken) { EXPECT_EQ(spoken(), kEnglish); }

TEST_F(LanguageRun, TheStoredLanguageIsSpoken) {
  folder_.write("own.iniml", document("de"));
  EXPECT_EQ(spoken({"-inifile=own.iniml"}), kGerman);
}

TEST_F(LanguageRun, TheDescriptionWinsOverTheStoredLanguageAndLeavesItAlone) {
  folder_.write("own.iniml", document("en"));
  speak("de");
  EXPECT_EQ(spoken({"-inifile=own.iniml", "-ini_out=own.iniml"}), kGerman);
  EXPECT_EQ(folder_.read("own.iniml"), document("en"));
}

TEST_F(LanguageRun, AComponentWithoutAFileOfTheLanguageSaysSoAndSpeaksEnglish) {
  speak("xx");
  writeLanguage("velmora.xx.resx", table("Open File", "Xopen"));
  writeLanguage("commandline_xx", xliff("a", "b"));
  const std::string text = records();
  EXPECT_NE(text.find("<start cmd=\"Xopen\"/>"), std::string::npos) << text;
  EXPECT_NE(text.find("<start action=\"Reading points\"/>"), std::string::npos) << text;
  const size_t report = text.find("<Error=\"Translation file not found or oarsing error: ");
  ASSERT_NE(report, text.npos) << text;
  EXPECT_NE(text.find("points_xx\"/>", report), std::string::npos) << text;
  EXPECT_EQ(text.find("<Error=", report + 1), std::string::npos) << "once";
}

TEST_F(LanguageRun, WhatAComponentsFileLacksIsTakenFromTheApplication) {
  speak("xx");
  writeLanguage("velmora.xx.resx", table("Reading points", "Xreading"));
  writeLanguage("commandline_xx", xliff("a", "b"));
  writeLanguage("points_xx", xliff("Writing points", "Xwriting"));
  const std::string text = records();
  EXPECT_NE(text.find("<start action=\"Xreading\"/>"), std::string::npos) << text;
  EXPECT_NE(text.find("<start action=\"Xwriting\"/>"), std::string::npos) << text;
  EXPECT_EQ(text.find("<Error="), std::string::npos) << text;
}

TEST_F(LanguageRun, TheHostGetsNothingOutOfALineFile) {
  speak("xx");
  writeLanguage("xx.po", "msgid \"Open File\"\r\nmsgstr \"Xopen\"\r\n");
  writeLanguage("commandline_xx", xliff("a", "b"));
  writeLanguage("points_xx", xliff("a", "b"));
  EXPECT_EQ(spoken(), kEnglish) << "it asked for the text service before the library was known";
}

TEST_F(LanguageRun, WithoutTheTextLibraryKeysShowAsTheyAre) {
  speak("de");
  product_.removeLibrary("text");
  EXPECT_EQ(spoken(), kEnglish);
}

TEST_F(LanguageRun, WithoutTheXmlLibraryKeysShowAsTheyAre) {
  speak("de");
  product_.removeLibrary("xmldom");
  EXPECT_EQ(spoken(), kEnglish);
}

TEST_F(LanguageRun, DamagedTablesLeaveEnglish) {
  speak("de");
  writeLanguage("velmora.de.resx", "<root><data");
  writeLanguage("points_de", "\xFF\xFE<");
  const std::string text = records();
  EXPECT_NE(text.find("<start cmd=\"Open File\"/>"), std::string::npos) << text;
  EXPECT_NE(text.find("<start action=\"Reading points\"/>"), std::string::npos) << text;
}

}  // namespace
