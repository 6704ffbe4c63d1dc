#include "base/basic/keldataxmlfile.h"

#include "base/basic/keldatavisitor.h"
#include "tests/base/basic/settingsworld.h"
#include "tests/support/testdisk.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kDocument = "user/velmora.iniml";
constexpr const char* kJournal = "user/velmora.iniml.changes";
constexpr const char* kRejected = "user/velmora.iniml.changes.rejected";
constexpr const char* kDamaged = "user/velmora.iniml.damaged";

// Settings over several sessions: each Session is a process that reads, sets and ends.
class SettingsDocument : public tests::SettingsWorld {
 protected:
  std::string lines(std::initializer_list<std::pair<const char*, int>> values) {
    std::string text;
    for (const auto& [name, value] : values) text += "\t" + valueLine(name, value);
    return document(text);
  }
  // What a start finds under the name; 0 when there is nothing.
  int32_t next(const char* name) {
    forget();
    Session session;
    return session.loaded(name);
  }
};

TEST_F(SettingsDocument, IsMergedAtTheNextStart) {
  write(kDocument, document(valueLine("a", 1) + valueLine("b", 1)));
  {
    Session session;
    session.set("a", 5);
    EXPECT_EQ(read(kDocument), document(valueLine("a", 1) + valueLine("b", 1)));
  }  // died without a commit
  EXPECT_EQ(next("a"), 5);
  EXPECT_EQ(read(kDocument), lines({{"a", 5}, {"b", 1}}));
  EXPECT_FALSE(exists(kJournal));
  EXPECT_FALSE(exists(kRejected));
}

TEST_F(SettingsDocument, IsMergedByTheLaterLine) {
  write(kDocument, document(valueLine("a", 1)));
  write(kJournal, valueLine("a", 2) + valueLine("b", 3) + valueLine("a", 4));
  EXPECT_EQ(next("a"), 4);
  EXPECT_EQ(read(kDocument), lines({{"a", 4}, {"b", 3}}));
}

TEST_F(SettingsDocument, IsMergedByReadingAlone) {
  write(kDocument, document(valueLine("a", 1)));
  write(kJournal, valueLine("b", 2));
  Session session;
  EXPECT_FALSE(session.store.AcceptPath(session.store.GetReader(), "c"));
  EXPECT_EQ(read(kDocument), lines({{"a", 1}, {"b", 2}}));
}

TEST_F(SettingsDocument, KeepsSettingsThatNobodyDeclared) {
  write(kDocument, document(valueLine("unknown", 7) +
                            "<section name=\"S\"><value name=\"x\" type=\"of others\">text</value>"
                            "</section>"));
  Session session;
  session.load();
  session.set("a", 1);
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), document("\t" + valueLine("a", 1) +
                                      "\t<section name=\"S\">\n"
                                      "\t\t<value name=\"x\" type=\"of others\">text</value>\n"
                                      "\t</section>\n\t" +
                                      valueLine("unknown", 7)));
}

TEST_F(SettingsDocument, HoldsTheSessionAfterItsEnd) {
  write(kDocument, document(valueLine("a", 1)));
  {
    Session session;
    session.load();
    session.set("a", 5);
    session.set("b", 6);
    EXPECT_TRUE(session.commit());
  }
  EXPECT_EQ(read(kDocument), lines({{"a", 5}, {"b", 6}}));
  EXPECT_FALSE(exists(kJournal));
  EXPECT_EQ(next("b"), 6);
}

TEST_F(SettingsDocument, IsRewrittenByACommitWithoutChanges) {
  write(kDocument, document(valueLine("b", 1) + valueLine("a", 1)));
  Session session;
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), lines({{"a", 1}, {"b", 1}}));
}

TEST_F(SettingsDocument, IsWrittenTwiceByTwoCommits) {
  write(kDocument, document(valueLine("a", 1)));
  Session session;
  session.set("b", 2);
  EXPECT_TRUE(session.commit());
  session.set("c", 3);
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), lines({{"a", 1}, {"b", 2}, {"c", 3}}));
}

// --- The first session of a user

TEST_F(SettingsDocument, OfAFirstSessionHoldsTheInstalledSettingsToo) {
  write("installed/velmora.iniml", document(valueLine("a", 1)));
  {
    Session session;
    EXPECT_EQ(session.loaded("a"), 1);
    session.set("b", 5);
    EXPECT_TRUE(session.commit());
  }
  EXPECT_EQ(read(kDocument), lines({{"a", 1}, {"b", 5}}));
  EXPECT_EQ(read("installed/velmora.iniml"), document(valueLine("a", 1)));
  EXPECT_EQ(next("b"), 5);
}

TEST_F(SettingsDocument, IsNotReadFromTheInstallationOnceTheUserHasOne) {
  write("installed/velmora.iniml", document(valueLine("a", 1)));
  write(kDocument, document(valueLine("b", 2)));
  EXPECT_EQ(next("a"), 0);
  EXPECT_EQ(next("b"), 2);
}

TEST_F(SettingsDocument, IsMadeWithItsFolders) {
  directories->directories["userconfig"] = pathOf("x/y/z");
  Session session;
  session.set("a", 1);
  EXPECT_FALSE(exists("x"));
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("x/y/z/velmora.iniml"),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore />\n")
      << "the set found no folder for its journal and was not kept";
}

TEST_F(SettingsDocument, OfAFirstSessionThatDiesIsLostButMovedAside) {
  {
    Session session;
    session.set("a", 5);
  }
  {
    Session second;
    EXPECT_EQ(second.loaded("a"), 0);
    second.set("b", 6);
    EXPECT_TRUE(second.commit());
  }
  EXPECT_EQ(read(kDocument), lines({{"b", 6}}));
  EXPECT_EQ(read(kRejected), valueLine("a", 5) + valueLine("b", 6));
  EXPECT_FALSE(exists(kJournal));
  ASSERT_EQ(errors->texts.size(), 1u);
  EXPECT_THAT(errors->texts[0], HasSubstr("velmora.iniml.changes.rejected"));
  EXPECT_THAT(errors->severities, ElementsAre(0));
}

// The lines of a private writer are nobody's own table.
TEST_F(SettingsDocument, OfAFirstSessionLosesWhatAPrivateWriterWrote) {
  Session session;
  session.store.SetAutoSave(false);
  session.set("a", 5);
  const IPtr<IKelDataVisitor> writer(session.store.CreateDefaultWriter());
  EXPECT_TRUE(session.store.Accept(writer.get()));
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(next("a"), 0);
  EXPECT_EQ(read(kRejected), valueLine("a", 5));
}

// --- Journals that cannot be merged

TEST_F(SettingsDocument, LeavesAJournalBesideNothingToBeMovedAside) {
  addArgument("-inifile=" + file("in").generic_string());
  addArgument("-ini_out=" + file("in").generic_string());
  write("in.changes", valueLine("a", 1));
  Session session;
  EXPECT_EQ(session.loaded("a"), 0);
  EXPECT_EQ(read("in.changes.rejected"), valueLine("a", 1));
  session.set("b", 2);
  EXPECT_EQ(session.loaded("b"), 2);
  EXPECT_EQ(read("in.changes.rejected"), valueLine("b", 2)) << "looked for again, moved again";
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("in"), lines({{"b", 2}})) << "the writer still knows its own";
  EXPECT_EQ(errors->texts.size(), 2u);
}

TEST_F(SettingsDocument, MovesAJournalAsideThatIsNoXml) {
  write(kDocument, document(valueLine("a", 1)));
  const std::string journal = "<value name=\"w\" type=\"t\">a&lt;b<c</value>\n" + valueLine("a", 2);
  write(kJournal, journal);
  EXPECT_EQ(next("a"), 1);
  EXPECT_EQ(read(kDocument), document(valueLine("a", 1)));
  EXPECT_EQ(read(kRejected), journal);
  EXPECT_FALSE(exists(kJournal));
  EXPECT_THAT(errors->severities, ElementsAre(0));
  EXPECT_THAT(errors->details, ElementsAre(""));
}

TEST_F(SettingsDocument, MovesAJournalAsideThatIsNoText) {
  for (const char* bytes : {"\xFF", "\xF0\x9F\x98\x80", "\xC3"}) {
    write(kDocument, document(valueLine("a", 1)));
    const std::string journal =
        "<value name=\"w\" type=\"t\">" + std::string(bytes) + "</value>\n" + valueLine("a", 2);
    write(kJournal, journal);
    EXPECT_EQ(next("a"), 1);
    EXPECT_EQ(read(kRejected), journal);
    EXPECT_EQ(read(kDocument), document(valueLine("a", 1)));
  }
}

// A stray byte of 0x80 is decoded as a unit 0, which would end the text there.
TEST_F(SettingsDocument, DoesNotMergeTheFrontOfAJournalAlone) {
  for (const std::string& stray : {std::string("\x80\n"), std::string("\0\n", 2)}) {
    write(kDocument, document(valueLine("a", 1)));
    const std::string journal = valueLine("a", 2) + stray + valueLine("a", 3);
    write(kJournal, journal);
    EXPECT_EQ(next("a"), 1);
    EXPECT_EQ(read(kRejected), journal);
  }
}

TEST_F(SettingsDocument, MovesAJournalAsideThatIsTooLongToBeOne) {
  write(kDocument, document(valueLine("a", 1)));
  write(kJournal, valueLine("a", 2));
  std::error_code refused;  // by a disk that keeps the zeros
  std::filesystem::resize_file(file(kJournal), uintmax_t{1} << 40, refused);
  if (refused) std::filesystem::resize_file(file(kJournal), (uintmax_t{1} << 28) + 1);
  const uintmax_t size = std::filesystem::file_size(file(kJournal));
  EXPECT_EQ(next("a"), 1);
  EXPECT_FALSE(exists(kJournal));
  EXPECT_EQ(std::filesystem::file_size(file(kRejected)), size);
}

TEST_F(SettingsDocument, ReplacesAnOlderJournalThatWasMovedAside) {
  write(kDocument, document(""));
  write(kRejected, "old");
  write(kJournal, "</x>");
  next("a");
  EXPECT_EQ(read(kRejected), "</x>");
}

TEST_F(SettingsDocument, FreesTheJournalsNameEvenWhereItCannotBeMoved) {
  write(kDocument, document(""));
  std::filesystem::create_directories(file(kRejected) / "in the way");
  write(kJournal, "</x>");
  next("a");
  EXPECT_FALSE(exists(kJournal));
  ASSERT_EQ(errors->texts.size(), 1u) << "but not without a word";
  EXPECT_THAT(errors->texts[0], HasSubstr("are lost"));
  EXPECT_THAT(errors->texts[0], HasSubstr("velmora.iniml.changes.rejected"));
  EXPECT_THAT(errors->severities, ElementsAre(0));
}

// Blocks of the file that never got to the disk read as zeros.
TEST_F(SettingsDocument, TakesWholeLinesBeforeOneThatWasCutOff) {
  const std::string zeros(100, '\0');
  for (const std::string& rest :
       {std::string("<"), std::string("<value name=\"a\" type=\"integer\">"), zeros,
        "<value" + zeros, std::string("<section name=\"A\"><value name=\"a\" type=\"t\">5</value>"),
        std::string("<value name=\"a\" type=\"t\">\xC3"),
        std::string("<value name=\"a\" type=\"binary_base64\">\n\t\tAAAA\n")}) {
    write(kDocument, document(valueLine("a", 1)));
    write(kJournal, valueLine("a", 2) + rest);
    EXPECT_EQ(next("a"), 2) << rest;
    EXPECT_EQ(read(kDocument), lines({{"a", 2}}));
    write(kJournal, rest);
    EXPECT_EQ(next("a"), 2) << rest;
  }
  EXPECT_FALSE(exists(kRejected));
  EXPECT_THAT(errors->texts, IsEmpty());
}

TEST_F(SettingsDocument, DoesNotTakeOtherBytesForALineThatWasCutOff) {
  const std::string zeros(100, '\0');
  for (const std::string& rest :
       {std::string("</x>"), std::string("<other"), std::string("<value type=\"t\">"), zeros + "x",
        "<" + zeros + valueLine("a", 3)}) {
    write(kDocument, document(valueLine("a", 1)));
    write(kJournal, valueLine("a", 2) + rest);
    EXPECT_EQ(next("a"), 1) << rest;
    EXPECT_EQ(read(kRejected), valueLine("a", 2) + rest);
  }
}

TEST_F(SettingsDocument, DropsAnEmptyJournalWithoutAWord) {
  write(kJournal, "");
  next("a");
  Session session;
  EXPECT_TRUE(session.commit());
  EXPECT_FALSE(exists(kJournal));
  EXPECT_FALSE(exists(kRejected));
  EXPECT_THAT(errors->texts, IsEmpty());
}

TEST_F(SettingsDocument, MovesAJournalAsideWhenTheMergedDocumentIsNotSaved) {
  write(kDocument, document(valueLine("a", 1)));
  write(kJournal, valueLine("a", 2));
  xml.savesLeft = 0;
  EXPECT_EQ(next("a"), 1);
  EXPECT_EQ(read(kRejected), valueLine("a", 2));
  EXPECT_FALSE(exists(kJournal));
}

TEST_F(SettingsDocument, LeavesTheJournalAloneWithoutAnXmlLibrary) {
  write(kDocument, document(valueLine("a", 1)));
  {
    Session session;
    session.set("a", 5);
    xml.available = false;
    EXPECT_FALSE(session.commit());
  }
  EXPECT_EQ(read(kJournal), valueLine("a", 5));
  xml.available = true;
  EXPECT_EQ(next("a"), 5);
}

// --- Damaged documents

TEST_F(SettingsDocument, ThatIsDamagedIsKeptAsideAndReplaced) {
  write(kDocument, "<OroDataStore><value name=\"a\"");
  Session session;
  EXPECT_EQ(session.loaded("a"), 0);
  session.set("b", 6);
  EXPECT_EQ(read(kDocument), "<OroDataStore><value name=\"a\"") << "left as it is until the end";
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), lines({{"b", 6}}));
  EXPECT_EQ(read(kDamaged), "<OroDataStore><value name=\"a\"");
  EXPECT_EQ(next("b"), 6);
}

TEST_F(SettingsDocument, ThatIsDamagedIsReportedByTheReaderAndByTheCommit) {
  write(kDocument, "<");
  Session session;
  session.load();
  session.load();
  EXPECT_EQ(errors->texts.size(), 1u);
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(errors->texts.size(), 2u);
  EXPECT_THAT(errors->severities, ElementsAre(1, 1));
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(errors->texts.size(), 2u) << "it is whole again";
}

TEST_F(SettingsDocument, ThatIsDamagedReplacesAnOlderOne) {
  write(kDamaged, "old");
  write(kDocument, "<");
  Session session;
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDamaged), "<");
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDamaged), "<") << "the whole one is not kept aside";
}

TEST_F(SettingsDocument, ThatIsDamagedIsKeptOnAFullDiskToo) {
  write(kDocument, "<damaged");
  Session session;
  session.set("a", 1);
  {
    tests::TestDisk disk;
    disk.refuseFrom(0);
    EXPECT_FALSE(session.commit());
  }
  EXPECT_EQ(read(kDamaged), "<damaged");
}

TEST_F(SettingsDocument, WithAJournalThatIsDamagedKeepsBothAside) {
  write(kDocument, "<");
  write(kJournal, valueLine("a", 2));
  Session session;
  EXPECT_EQ(session.loaded("a"), 0);
  EXPECT_EQ(read(kRejected), valueLine("a", 2));
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDamaged), "<");
}

TEST_F(SettingsDocument, ToBeWrittenElsewhereLeavesADamagedOneAlone) {
  write("in", "<");
  write("out", document(valueLine("x", 1)));
  addArgument("-inifile=" + file("in").generic_string());
  addArgument("-ini_out=" + file("out").generic_string());
  Session session;
  session.set("a", 1);
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("in"), "<");
  EXPECT_FALSE(exists("in.damaged"));
  EXPECT_FALSE(exists("out.damaged"));
}

TEST_F(SettingsDocument, ThatIsDamagedIsKeptAsideWhereNobodyHasReadItToo) {
  write("in", document(valueLine("a", 1)));
  write("out", "<damaged");
  addArgument("-inifile=" + file("in").generic_string());
  addArgument("-ini_out=" + file("out").generic_string());
  Session session;
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("out"), lines({{"a", 1}}));
  EXPECT_EQ(read("out.damaged"), "<damaged");
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("out.damaged"), "<damaged") << "the whole one is not kept aside";
}

// --- Two paths

TEST_F(SettingsDocument, ReadFromOnePathAndWrittenToAnother) {
  write("in", document(valueLine("a", 1)));
  addArgument("-inifile=" + file("in").generic_string());
  addArgument("-ini_out=" + file("out").generic_string());
  Session session;
  EXPECT_EQ(session.loaded("a"), 1);
  session.set("b", 2);
  EXPECT_EQ(read("out.changes"), valueLine("b", 2));
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("out"), lines({{"a", 1}, {"b", 2}}));
  EXPECT_EQ(read("in"), document(valueLine("a", 1)));
}

// The commit is then done with the merge alone.
TEST_F(SettingsDocument, WrittenToAnotherPathThatHasOneAlreadyGetsTheChangesAlone) {
  write("in", document(valueLine("a", 1)));
  write("out", document(valueLine("c", 3)));
  addArgument("-inifile=" + file("in").generic_string());
  addArgument("-ini_out=" + file("out").generic_string());
  Session session;
  session.load();
  session.set("b", 2);
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("out"), lines({{"b", 2}, {"c", 3}})) << "what was read is not copied into it";
}

TEST_F(SettingsDocument, WrittenToAnotherPathIsReplacedWhenTheJournalLacksAChange) {
  write("in", document(valueLine("a", 1)));
  write("out", document(valueLine("c", 3)));
  addArgument("-inifile=" + file("in").generic_string());
  addArgument("-ini_out=" + file("out").generic_string());
  Session session;
  session.set("b", 2);
  {
    tests::TestDisk disk;
    disk.refuseFrom(0);
    session.set("d", 4);
  }
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read("out"), lines({{"a", 1}, {"b", 2}, {"d", 4}}));
  EXPECT_FALSE(exists("out.changes"));
}

TEST_F(SettingsDocument, WithTheReadOptionAloneIsNotWritten) {
  write("in", document(valueLine("a", 1)));
  addArgument("-inifile=" + file("in").generic_string());
  Session session;
  EXPECT_EQ(session.loaded("a"), 1);
  session.set("a", 5);
  EXPECT_FALSE(session.commit());
  EXPECT_EQ(read("in"), document(valueLine("a", 1)));
  EXPECT_FALSE(exists("in.changes"));
  EXPECT_FALSE(exists(kDocument));
}

// --- Failed commits

TEST_F(SettingsDocument, IsAsItWasAfterAFailedCommitAndTheJournalIsGone) {
  write(kDocument, document(valueLine("a", 1)));
  Session session;
  session.set("a", 5);
  xml.savesLeft = 0;
  EXPECT_FALSE(session.commit());
  EXPECT_EQ(read(kDocument), document(valueLine("a", 1)));
  EXPECT_FALSE(exists(kJournal));
  EXPECT_EQ(read(kRejected), valueLine("a", 5));
  xml.savesLeft = 1000;
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), lines({{"a", 1}})) << "the own table is forgotten";
}

TEST_F(SettingsDocument, ForgetsWhatWasOwedWhenItIsWritten) {
  write(kDocument, document(""));
  Session session;
  {
    tests::TestDisk disk;
    disk.refuseFrom(0);
    session.set("a", 1);
  }
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), lines({{"a", 1}}));
  const int loads = xml.loads;
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(xml.loads, loads + 1);
}

TEST_F(SettingsDocument, CommitsNothingForOtherVisitors) {
  Session session;
  session.store.SetWriter(new KelDataVisitor(IKelDataVisitor::kWriting));
  EXPECT_TRUE(session.commit());
  EXPECT_FALSE(exists(kDocument));
  session.store.SetWriter(nullptr);
  EXPECT_TRUE(session.commit());
}

TEST_F(SettingsDocument, IsCommittedByAReaderInThePlaceOfTheWriterToo) {
  write("installed/velmora.iniml", document(valueLine("a", 1)));
  Session session;
  session.store.SetWriter(session.store.CreateDefaultReader());
  EXPECT_TRUE(session.commit());
  EXPECT_EQ(read(kDocument), lines({{"a", 1}}));
}

}  // namespace
