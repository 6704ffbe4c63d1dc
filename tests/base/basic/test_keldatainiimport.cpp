#include "base/basic/keldatainiimport.h"

#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <system_error>

#include "platform/files.h"
#include "platform/process.h"
#include "tests/base/basic/storetest.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IniImportTest : public tests::StoreTest {
 protected:
  bool import(std::string_view bytes, bool expandEnv = false) {
    path = folder.write("settings" + std::to_string(++files) + ".ini", bytes);
    return store.ImportIni(OroString(path.u16string().c_str()), expandEnv);
  }
  // Whether this process still holds the file of the last import.
  bool isOpen() const {
    if (std::filesystem::path::preferred_separator == '\\') {
      return !platform::removeFile(path.u16string());
    }
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
      std::error_code gone;  // the descriptor of this walk is among them
      if (std::filesystem::read_symlink(descriptor, gone) == path) return true;
    }
    return false;
  }
  const char* text(const char* path) { return store.GetString(path, nullptr); }

  tests::TempFolder folder;
  std::filesystem::path path;  // of the last import
  int files = 0;
};

TEST_F(IniImportTest, ReadsSectionsAndKeysIntoTextItems) {
  EXPECT_TRUE(import("[A]\nb=1\nlonger key = some text\n[C/D]\ne=2\n"));
  EXPECT_STREQ(text("A/b"), "1");
  EXPECT_STREQ(text("A/longer key"), "some text");
  EXPECT_STREQ(text("C/D/e"), "2");
  EXPECT_EQ(store.GetCapacity("A/b", nullptr), 1);
  EXPECT_EQ(store.GetCapacity("A/longer key", nullptr), 9);
  EXPECT_EQ(store.GetFlags("A/b"), 0u);
  EXPECT_TRUE(store.DirectoryExists("C/D"));
  EXPECT_FALSE(store.DirectoryExists("C"));
}

TEST_F(IniImportTest, MissingFileAndFolderFail) {
  EXPECT_FALSE(store.ImportIni(OroString(folder.file("none.ini").u16string().c_str()), false));
  EXPECT_FALSE(store.ImportIni(OroString(folder.path().u16string().c_str()), false));
  EXPECT_FALSE(store.ImportIni(OroString(), false));
}

TEST_F(IniImportTest, EmptyFileIsWhole) { EXPECT_TRUE(import("")); }

TEST_F(IniImportTest, LastLineNeedsItsLineFeed) {
  EXPECT_FALSE(import("[A]\nb=1\nc=2"));
  EXPECT_STREQ(text("A/b"), "1");
  EXPECT_FALSE(store.Exists("A/c"));
}

TEST_F(IniImportTest, CommentIsOneInTheFirstColumnAlone) {
  EXPECT_TRUE(import("[A]\n;b=1\n ;c=2\n"));
  EXPECT_FALSE(store.Exists("A/b"));
  EXPECT_STREQ(text("A/;c"), "2");
}

TEST_F(IniImportTest, SectionNeedsItsBracket) {
  EXPECT_FALSE(import("[A]\nb=1\n[C\nd=2\n"));
  EXPECT_STREQ(text("A/b"), "1");
  EXPECT_FALSE(store.DirectoryExists("C"));
}

TEST_F(IniImportTest, SectionEndsAtTheFirstBracketAndKeepsItsBlanks) {
  EXPECT_TRUE(import("[ A ]]x]\nb=1\n"));
  EXPECT_TRUE(store.DirectoryExists(" A "));
  EXPECT_STREQ(text(" A /b"), "1");
}

TEST_F(IniImportTest, IndentedSectionIsNone) {
  EXPECT_TRUE(import("[A]\n [B]\nc=1\n"));
  EXPECT_FALSE(store.DirectoryExists("B"));
  EXPECT_STREQ(text("A/c"), "1");
}

TEST_F(IniImportTest, KeyBeforeAnySectionIsDropped) {
  EXPECT_TRUE(import("b=1\n[A]\nc=2\n"));
  EXPECT_FALSE(store.Exists("b"));
  EXPECT_FALSE(store.Exists("/b"));
  EXPECT_STREQ(text("A/c"), "2");
}

TEST_F(IniImportTest, EmptySectionTakesNoKeys) {
  EXPECT_TRUE(import("[A]\n[]\nb=1\n"));
  EXPECT_FALSE(store.Exists("A/b"));
  EXPECT_FALSE(store.Exists("/b"));
}

TEST_F(IniImportTest, ValueBeginsAtTheFirstEqualsSign) {
  EXPECT_TRUE(import("[A]\nb=1=2\n=nameless\nempty=\n"));
  EXPECT_STREQ(text("A/b"), "1=2");
  EXPECT_STREQ(text("A/"), "nameless");
  EXPECT_STREQ(text("A/empty"), "");
  EXPECT_EQ(store.GetCapacity("A/empty", nullptr), 0);
}

TEST_F(IniImportTest, KeyAndValueAreTrimmedAtBothEnds) {
  EXPECT_TRUE(import("[A]\n \t b c \v=\f  d e \r\n"));
  EXPECT_STREQ(text("A/b c"), "d e");
  EXPECT_TRUE(import("[B]\r\nc=1\r\n"));
  EXPECT_STREQ(text("B/c"), "1");
}

TEST_F(IniImportTest, LinesWithNeitherAreIgnored) {
  EXPECT_TRUE(import("\nnothing\n[A]\n\n  \nb=1\nwords\n"));
  EXPECT_THAT(pathsIn("A"), ElementsAre("A/b"));
}

TEST_F(IniImportTest, ExistingItemsKeepTheirValues) {
  store.CreateDirectory("A");
  store.CreateString("A/b", 10, "mine", 1);
  store.CreateInt("A/c", 5, 0, 9, 1);
  EXPECT_TRUE(import("[A]\nb=theirs\nc=7\n"));
  EXPECT_STREQ(text("A/b"), "mine");
  EXPECT_EQ(store.GetInt("A/c", nullptr), 5);
}

TEST_F(IniImportTest, KeyWithASlashNeedsItsSection) {
  EXPECT_TRUE(import("[A]\nB/c=1\n[A/B]\nd=2\n[A]\nB/e=3\n"));
  EXPECT_FALSE(store.Exists("A/B/c"));
  EXPECT_STREQ(text("A/B/e"), "3");
}

TEST_F(IniImportTest, LineHoldsUpTo4095CharactersWithItsLineFeed) {
  const std::string head = "[A]\nb=";
  const size_t room = 4095 - std::string("b=\n").size();
  EXPECT_TRUE(import(head + std::string(room, 'x') + "\n"));
  EXPECT_EQ(std::string(text("A/b")), std::string(room, 'x'));
  store.Clear();
  EXPECT_FALSE(import(head + std::string(room + 1, 'x') + "\n"));
  EXPECT_FALSE(store.Exists("A/b"));
  EXPECT_FALSE(import("[C]\nbefore=1\n" + std::string(4095, 'y') + "=1\nafter=1\n"));
  EXPECT_STREQ(text("C/before"), "1");
  EXPECT_THAT(pathsIn("C"), ElementsAre("C/before"));
}

TEST_F(IniImportTest, ZeroByteEndsTheImport) {
  EXPECT_FALSE(import(std::string_view("[A]\nb=1\nc=2\0\nd=3\n", 18)));
  EXPECT_STREQ(text("A/b"), "1");
  EXPECT_THAT(pathsIn("A"), ElementsAre("A/b"));
  EXPECT_FALSE(import(std::string_view("\0", 1)));
}

TEST_F(IniImportTest, ByteOfAnOldEndOfFileIsAnOrdinaryOne) {
  EXPECT_TRUE(import("[A]\nb=1\x1A\nc=2\n"));
  EXPECT_STREQ(text("A/b"), "1\x1A");
  EXPECT_STREQ(text("A/c"), "2");
}

TEST_F(IniImportTest, WithoutExpansionVariablesStayAsWritten) {
  platform::setEnvironment("COWL_TEST_INI", "value");
  EXPECT_TRUE(import("[A]\nb=${COWL_TEST_INI}\n"));
  EXPECT_STREQ(text("A/b"), "${COWL_TEST_INI}");
  platform::setEnvironment("COWL_TEST_INI", std::nullopt);
}

TEST_F(IniImportTest, ExpandsVariablesInKeysAndValuesOnce) {
  platform::setEnvironment("COWL_TEST_INI", "value");
  platform::setEnvironment("COWL_TEST_INI_2", "${COWL_TEST_INI}");
  platform::setEnvironment("COWL_TEST_INI_3", " blanks ");
  EXPECT_TRUE(
      import("[A]\n"
             "k${COWL_TEST_INI}=<${COWL_TEST_INI}${COWL_TEST_INI}>\n"
             "twice=${COWL_TEST_INI_2}\n"
             "late=${COWL_TEST_INI_3}\n"
             "[${COWL_TEST_INI}]\n",
             true));
  EXPECT_STREQ(text("A/kvalue"), "<valuevalue>");
  EXPECT_STREQ(text("A/twice"), "${COWL_TEST_INI}");
  EXPECT_STREQ(text("A/late"), " blanks ");
  EXPECT_EQ(store.GetCapacity("A/late", nullptr), 8);
  EXPECT_TRUE(store.DirectoryExists("${COWL_TEST_INI}"));
  for (const char* name : {"COWL_TEST_INI", "COWL_TEST_INI_2", "COWL_TEST_INI_3"}) {
    platform::setEnvironment(name, std::nullopt);
  }
}

TEST_F(IniImportTest, UnknownAndBrokenVariablesStayAsWritten) {
  platform::setEnvironment("COWL_TEST_INI", "value");
  EXPECT_TRUE(
      import("[A]\n"
             "a=${COWL_TEST_NO_SUCH} ${COWL_TEST_INI}\n"
             "b=$COWL_TEST_INI $ ${}\n"
             "c=}${COWL_TEST_INI\n"
             "d=${x${COWL_TEST_INI}\n"
             "e=${COWL_TEST_INI}${\n"
             "f=$${COWL_TEST_INI}}\n",
             true));
  EXPECT_STREQ(text("A/a"), "${COWL_TEST_NO_SUCH} value");
  EXPECT_STREQ(text("A/b"), "$COWL_TEST_INI $ ${}");
  EXPECT_STREQ(text("A/c"), "}${COWL_TEST_INI");
  EXPECT_STREQ(text("A/d"), "${x${COWL_TEST_INI}");
  EXPECT_STREQ(text("A/e"), "value${");
  EXPECT_STREQ(text("A/f"), "$value}");
  platform::setEnvironment("COWL_TEST_INI", std::nullopt);
}

TEST_F(IniImportTest, ManyLinesAreRead) {
  std::string bytes = "[A]\n";
  for (int n = 0; n < 50000; ++n)
    bytes += "key" + std::to_string(n) + "=" + std::to_string(n) + "\n";
  EXPECT_TRUE(import(bytes));
  EXPECT_STREQ(text("A/key49999"), "49999");
}

TEST_F(IniImportTest, ManySectionsAreRead) {
  std::string bytes;
  for (int n = 0; n < 50000; ++n) bytes += "[section " + std::to_string(n) + "]\nb=1\n";
  EXPECT_TRUE(import(bytes));
  EXPECT_STREQ(text("section 49999/b"), "1");
}

// Whoever wrote the file may wait for it in vain; an import that went well gives it back.
TEST_F(IniImportTest, FileStaysOpenOnlyWhereTheImportEndedEarly) {
  EXPECT_TRUE(import("[A]\nb=1\n"));
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(import("[A]\nb=1"));
  EXPECT_TRUE(isOpen());
  EXPECT_FALSE(import("[A\n"));
  EXPECT_TRUE(isOpen());
}

TEST_F(IniImportTest, DeepSectionsAreMadeAndRemoved) {
  std::string section(2000, 'x');
  for (size_t i = 1; i < section.size(); i += 2) section[i] = '/';
  section.pop_back();
  EXPECT_TRUE(import("[" + section + "]\nk=1\n"));
  EXPECT_STREQ(text((section + "/k").c_str()), "1");
  store.CreateDirectory("x");
  EXPECT_TRUE(store.RemoveDirectory("x"));
  EXPECT_FALSE(store.Exists((section + "/k").c_str()));
}

// Any bytes end in true or false, and what is read is within bounds.
TEST_F(IniImportTest, RandomBytesAreHarmless) {
  std::mt19937 random(7);
  const std::string alphabet("[]=;${}/\n\r\t A1\0\xFF", 17);
  int whole = 0;
  for (int round = 0; round < 300; ++round) {
    std::string bytes;
    const size_t size = random() % 9000;
    while (bytes.size() < size) {
      if (random() % 4000 == 0) bytes.append(random() % 5000, 'x');
      bytes.push_back(alphabet[random() % (round % 2 == 0 ? 13 : alphabet.size())]);
    }
    if (round % 2 == 0) bytes += "\n";
    if (import(bytes, round % 3 == 0)) ++whole;
    if (round % 50 == 0) store.Clear();
  }
  EXPECT_LT(whole, 300);
}

}  // namespace
