#include "base/basic/keldataxmlwriter.h"

#include <limits>

#include "interfaces/IKelDataFilter.h"
#include "tests/base/basic/settingsworld.h"
#include "tests/support/testdisk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kJournalFile = "user/velmora.iniml.changes";

// A store with the default writer.
class SettingsWriter : public tests::SettingsWorld {
 protected:
  SettingsWriter() {
    store.CreateDirectory("A");
    store.CreateDirectory("A/B");
  }
  void makeInt(const char* path, int32_t value = 0, uint32_t flags = kSaved) {
    ASSERT_TRUE(store.CreateInt(path, value, INT32_MIN, INT32_MAX, flags));
  }
  std::string journal() const { return read(kJournalFile); }
  // The line of a wide text "w" set to this.
  std::string lineOf(const OroString& text) {
    std::filesystem::remove(file(kJournalFile));
    store.CreateOroString("w", 1000, OroString(), kSaved);
    store.SetOroString(nullptr, "w", text);
    return journal();
  }
  bool differs(const char* path) {  // whether a writer would still take the item
    const IPtr<IKelDataVisitor> writer(store.CreateXmlWriter(pathOf("probe")));
    const int32_t value = store.GetInt(path, nullptr);
    store.CopyLayer(path, 1, 0, nullptr);
    const bool differ = store.GetInt(path, nullptr) != value;
    store.SetAutoSave(false);
    store.SetInt(nullptr, path, value);
    store.SetAutoSave(true);
    return differ;
  }

  KelDataStore store{true, 5, 20};
};

TEST_F(SettingsWriter, AppendsOneLineForAChange) {
  makeInt("A/B/c");
  EXPECT_TRUE(store.SetInt(nullptr, "A/B/c", 5));
  EXPECT_EQ(journal(),
            "<section name=\"A\"><section name=\"B\"><value name=\"c\" type=\"integer\">5</value>"
            "</section></section>\n");
}

TEST_F(SettingsWriter, NeedsNoSectionForOneSegment) {
  makeInt("c");
  store.SetInt(nullptr, "c", -2147483647 - 1);
  EXPECT_EQ(journal(), "<value name=\"c\" type=\"integer\">-2147483648</value>\n");
}

TEST_F(SettingsWriter, WritesEachKindInItsForm) {
  store.CreateFloat("f", 0, -1e300, 1e300, kSaved);
  store.CreateString("s", 20, "", kSaved);
  store.CreateOroString("w", 20, OroString(), kSaved);
  store.CreateBlob("b", 0, nullptr, kSaved);
  store.SetFloat(nullptr, "f", -12.5);
  store.SetString(nullptr, "s", "caf\xE9");
  store.SetOroString(nullptr, "w", OroString(u"\u20AC"));
  store.SetBlob(nullptr, "b", "XYZ", 3);
  EXPECT_EQ(journal(),
            "<value name=\"f\" type=\"float\">-1.250000000000000e+01</value>\n"
            "<value name=\"s\" type=\"text_latin1\">caf\xEF\xBF\xA9</value>\n"
            "<value name=\"w\" type=\"text_unicode\">\xE2\x82\xAC</value>\n"
            "<value name=\"b\" type=\"binary_base64\">WFla</value>\n");
}

TEST_F(SettingsWriter, PrintsFloatsWith15DigitsBehindThePoint) {
  store.CreateFloat("f", 0, -1e308, 1e308, kSaved);
  for (const double value : {1.0 / 3, 1e300, -1e-300, 123456789.0}) {
    store.SetFloat(nullptr, "f", value);
  }
  EXPECT_EQ(journal(),
            "<value name=\"f\" type=\"float\">3.333333333333333e-01</value>\n"
            "<value name=\"f\" type=\"float\">1.000000000000000e+300</value>\n"
            "<value name=\"f\" type=\"float\">-1.000000000000000e-300</value>\n"
            "<value name=\"f\" type=\"float\">1.234567890000000e+08</value>\n");
}

TEST_F(SettingsWriter, IndentsLongBlobsByTheDepthOfTheirPath) {
  const std::string data(49, '\0');
  store.CreateBlob("A/b", 0, nullptr, kSaved);
  store.SetBlob(nullptr, "A/b", data.data(), static_cast<int32_t>(data.size()));
  EXPECT_EQ(journal(), "<section name=\"A\"><value name=\"b\" type=\"binary_base64\">\n\t\t\t" +
                           std::string(64, 'A') + "\n\t\t\tAA==\n\t\t</value></section>\n");
}

TEST_F(SettingsWriter, WritesAnEmptyBlobAndAnEmptyText) {
  store.CreateBlob("b", 1, "x", kSaved);
  store.CreateString("s", 5, "x", kSaved);
  store.SetBlob(nullptr, "b", nullptr, 0);
  store.SetString(nullptr, "s", "");
  EXPECT_EQ(journal(),
            "<value name=\"b\" type=\"binary_base64\"></value>\n"
            "<value name=\"s\" type=\"text_latin1\"></value>\n");
}

TEST_F(SettingsWriter, EscapesNamesAndTexts) {
  store.CreateDirectory("A&B     ");
  makeInt("A&B     /\"c\"             ");
  store.SetInt(nullptr, "A&B     /\"c\"             ", 5);
  EXPECT_EQ(journal(),
            "<section name=\"A&amp;B     \"><value name=\"&quot;c&quot;             \" "
            "type=\"integer\">5</value></section>\n");
  EXPECT_EQ(lineOf(OroString("a<b<c")),
            "<value name=\"w\" type=\"text_unicode\">a&lt;b<c</value>\n");
}

TEST_F(SettingsWriter, WritesNamesByteForByte) {
  makeInt("caf\xC3\xA9");
  store.SetInt(nullptr, "caf\xC3\xA9", 5);
  EXPECT_EQ(journal(), "<value name=\"caf\xC3\xA9\" type=\"integer\">5</value>\n");
}

TEST_F(SettingsWriter, WritesARepeatedValueOnce) {
  makeInt("c", 1);
  for (const int32_t value : {5, 5, 5}) store.SetInt(nullptr, "c", value);
  EXPECT_EQ(journal(), valueLine("c", 5));
  for (const int32_t value : {6, 5}) store.SetInt(nullptr, "c", value);
  EXPECT_EQ(journal(), valueLine("c", 5) + valueLine("c", 6) + valueLine("c", 5));
}

TEST_F(SettingsWriter, WritesAnEqualTextOfAnotherTypeAgain) {
  KelDataXMLWriter writer;
  ASSERT_TRUE(writer.Begin());
  writer.WriteValue("c", OroString("t"), OroString("1"));
  writer.WriteValue("c", OroString("t"), OroString("1"));
  writer.WriteValue("c", OroString("u"), OroString("1"));
  writer.End();
  EXPECT_EQ(journal(),
            "<value name=\"c\" type=\"t\">1</value>\n<value name=\"c\" type=\"u\">1</value>\n");
}

TEST_F(SettingsWriter, EndsAPathAtAnEmptySegment) {
  KelDataXMLWriter writer;
  ASSERT_TRUE(writer.Begin());
  for (const char* path : {"A//x", "/x", "", "B/C/"}) {
    writer.WriteValue(path, OroString("t"), OroString(path));
  }
  writer.End();
  EXPECT_EQ(journal(),
            "<value name=\"A\" type=\"t\">A//x</value>\n"
            "<section name=\"B\"><value name=\"C\" type=\"t\">B/C/</value></section>\n");
}

TEST_F(SettingsWriter, WritesWhatDiffersFromTheFileAlone) {
  makeInt("c", 1);
  makeInt("A/d", 1);
  makeInt("e", 1, kSaved | IKelDataItem::kInitialiseAll);
  makeInt("t", 1, IKelDataItem::kJournalled);
  store.SetAutoSave(false);
  store.SetInt(nullptr, "c", 2);
  store.SetInt(nullptr, "t", 2);
  const IPtr<IKelDataVisitor> writer(store.CreateDefaultWriter());
  EXPECT_TRUE(store.Accept(writer.get()));
  EXPECT_EQ(journal(), valueLine("c", 2) + valueLine("e", 1));
  EXPECT_TRUE(store.Accept(writer.get()));
  EXPECT_EQ(journal(), valueLine("c", 2) + valueLine("e", 1));
  EXPECT_FALSE(differs("c")) << "what was written counts as the file's";
}

class OnlyC : public IKelDataFilter {
 public:
  static constexpr const char* className() { return "OnlyC"; }
  using Offers = OroOffers<OnlyC, IKelDataFilter>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Accept(IKelDataItem* item) override { return std::string("c") == item->GetPath(); }
};

TEST_F(SettingsWriter, WritesWhatTheFilterAccepts) {
  makeInt("c");
  makeInt("d");
  store.SetAutoSave(false);
  store.SetInt(nullptr, "c", 2);
  store.SetInt(nullptr, "d", 2);
  const IPtr<IKelDataVisitor> writer(store.CreateDefaultWriter());
  writer->SetFilter(new OnlyC);
  EXPECT_TRUE(store.Accept(writer.get()));
  EXPECT_EQ(journal(), valueLine("c", 2));
}

TEST_F(SettingsWriter, MakesOneDirectoryAbove) {
  makeInt("c");
  std::filesystem::remove(file("user"));
  store.SetInt(nullptr, "c", 5);
  EXPECT_EQ(journal(), valueLine("c", 5));
}

TEST_F(SettingsWriter, MakesNoMoreThanOneDirectory) {
  directories->directories["userconfig"] = pathOf("x/y");
  makeInt("c");
  EXPECT_TRUE(store.SetInt(nullptr, "c", 5)) << "the value is set all the same";
  EXPECT_FALSE(exists("x"));
  EXPECT_FALSE(store.AcceptPath(store.GetWriter(), "c"));
  EXPECT_THAT(errors->texts, IsEmpty()) << "nobody is told";
}

TEST_F(SettingsWriter, LosesAChangeWhoseJournalDoesNotOpen) {
  makeInt("c");
  std::filesystem::create_directory(file(kJournalFile));
  store.SetInt(nullptr, "c", 5);
  EXPECT_TRUE(differs("c"));
  std::filesystem::remove(file(kJournalFile));
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(read("user/velmora.iniml"),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore />\n");
}

TEST_F(SettingsWriter, BeginsWithoutAStreamWhenThereIsNowhereToWriteTo) {
  addArgument("-inifile=in");
  makeInt("c");
  EXPECT_TRUE(store.SetInt(nullptr, "c", 5));
  EXPECT_TRUE(store.AcceptPath(store.GetWriter(), "c"));
  EXPECT_FALSE(differs("c")) << "the file's layer follows";
  EXPECT_FALSE(exists(kJournalFile));
  EXPECT_FALSE(store.CommitWriter());
}

TEST_F(SettingsWriter, HoldsTheFileOpenDuringAWalkAlone) {
  makeInt("c");
  store.SetInt(nullptr, "c", 5);
  std::filesystem::rename(file(kJournalFile), file("moved"));
  store.SetInt(nullptr, "c", 6);
  EXPECT_EQ(read("moved"), valueLine("c", 5));
  EXPECT_EQ(journal(), valueLine("c", 6));
}

TEST_F(SettingsWriter, WritesALineAsOneBlock) {
  makeInt("A/B/c");
  tests::TestDisk disk;
  store.SetInt(nullptr, "A/B/c", 5);
  EXPECT_THAT(disk.writes, ElementsAre(journal().size()));
}

// A part of a line would spoil those that follow.
TEST_F(SettingsWriter, LeavesNothingOfALineThatDoesNotFit) {
  makeInt("c");
  makeInt("d");
  for (size_t taken = 0; taken < valueLine("c", 7).size(); ++taken) {
    std::filesystem::remove(file(kJournalFile));
    store.SetInt(nullptr, "c", 5);
    {
      tests::TestDisk disk;
      disk.refuseFrom(0, taken);
      EXPECT_TRUE(store.SetInt(nullptr, "c", 7));
    }
    store.SetInt(nullptr, "d", static_cast<int32_t>(taken) + 1);
    EXPECT_EQ(journal(), valueLine("c", 5) + valueLine("d", static_cast<int32_t>(taken) + 1));
  }
}

TEST_F(SettingsWriter, SavesWithTheCommitWhatTheJournalDidNotTake) {
  makeInt("c");
  write("user/velmora.iniml", document(valueLine("x", 1)));
  {
    tests::TestDisk disk;
    disk.refuseFrom(0);
    store.SetInt(nullptr, "c", 5);
  }
  EXPECT_EQ(journal(), "");
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(read("user/velmora.iniml"),
            document("\t" + valueLine("c", 5) + "\t" + valueLine("x", 1)));
  EXPECT_FALSE(exists(kJournalFile));
}

TEST_F(SettingsWriter, OfADocumentOfItsOwnWritesAllSavedItems) {
  makeInt("c", 1);
  makeInt("A/d", 2);
  makeInt("t", 3, 0);
  const IPtr<IKelDataVisitor> writer(store.CreateXmlWriter(pathOf("out.iniml")));
  EXPECT_TRUE(store.Accept(writer.get()));
  EXPECT_EQ(read("out.iniml"),
            "<section name=\"A\"><value name=\"d\" type=\"integer\">2</value>"
            "</section>\n" +
                valueLine("c", 1))
      << "lines, and no document yet";
  EXPECT_FALSE(exists("out.iniml.changes"));
}

TEST_F(SettingsWriter, OfADocumentOfItsOwnMakesTheDocumentWhenItCommits) {
  makeInt("c", 1);
  makeInt("A/d", 2);
  write("out.iniml", document(valueLine("old", 1)));
  store.SetWriter(store.CreateXmlWriter(pathOf("out.iniml")));
  EXPECT_TRUE(store.Accept(store.GetWriter()));
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(read("out.iniml"), document("\t<section name=\"A\">\n"
                                        "\t\t<value name=\"d\" type=\"integer\">2</value>\n"
                                        "\t</section>\n"
                                        "\t" +
                                        valueLine("c", 1)));
  EXPECT_FALSE(exists("out.iniml.rejected"));
  EXPECT_THAT(errors->texts, IsEmpty());
}

// One line alone is a document by itself, and is merged with itself; the file stays all the same.
TEST_F(SettingsWriter, OfADocumentOfItsOwnKeepsTheFileOfOneLine) {
  makeInt("c", 1);
  store.SetWriter(store.CreateXmlWriter(pathOf("out.iniml")));
  EXPECT_TRUE(store.Accept(store.GetWriter()));
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(read("out.iniml"), document("\t" + valueLine("c", 1)));
}

TEST_F(SettingsWriter, OfADocumentOfItsOwnReplacesADocumentWithNothing) {
  write("out.iniml", document(valueLine("old", 1)));
  store.SetWriter(store.CreateXmlWriter(pathOf("out.iniml")));
  EXPECT_TRUE(store.CommitWriter());
  EXPECT_EQ(read("out.iniml"), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore />\n");
}

TEST_F(SettingsWriter, IsAFileByItsNames) {
  KelDataXMLWriter writer;
  EXPECT_STREQ(writer.getClassName(), "KelDataXMLWriter");
  EXPECT_NE(oroQueryClass<KelDataXMLFile>(&writer), nullptr);
  EXPECT_EQ(writer.GetMode(), IKelDataVisitor::kWriting);
}

}  // namespace
