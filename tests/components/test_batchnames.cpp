#include "components/batch/batchnames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include "tests/tempfolder.h"

namespace {

OroString wide(const char* text) { return OroString::fromUtf8(text); }

std::vector<std::string> sorted(const std::vector<const char*>& texts) {
  std::vector<OroString> names;
  for (const char* text : texts) names.push_back(wide(text));
  std::sort(names.begin(), names.end(), comesBefore);
  std::vector<std::string> out;
  for (const OroString& name : names) out.emplace_back(name.toUtf8());
  return out;
}

using Names = std::vector<std::string>;

TEST(BatchNames, NumbersInNamesCountByTheirValue) {
  EXPECT_EQ(sorted({"scan10.xyz", "scan9.xyz", "scan1.xyz", "scan100.xyz", "scan2.xyz"}),
            (Names{"scan1.xyz", "scan2.xyz", "scan9.xyz", "scan10.xyz", "scan100.xyz"}));
  EXPECT_EQ(sorted({"b2-10", "b2-9", "b10-1", "b2"}), (Names{"b2", "b2-9", "b2-10", "b10-1"}));
}

TEST(BatchNames, NumbersLargerThanAnyIntegerStillCountByTheirValue) {
  EXPECT_EQ(sorted({"x100000000000000000000000", "x99999999999999999999999", "x5"}),
            (Names{"x5", "x99999999999999999999999", "x100000000000000000000000"}));
}

TEST(BatchNames, LetterCaseComesSecond) {
  EXPECT_EQ(sorted({"B.xyz", "a.xyz", "A.xyz", "c.xyz"}),
            (Names{"A.xyz", "a.xyz", "B.xyz", "c.xyz"}));
}

TEST(BatchNames, NamesThatDifferInZerosAloneHaveAnOrderToo) {
  EXPECT_EQ(sorted({"a01", "a1", "a001"}), (Names{"a001", "a01", "a1"}));
  EXPECT_TRUE(comesBefore(wide("a01"), wide("a1")));
  EXPECT_FALSE(comesBefore(wide("a1"), wide("a01")));
  EXPECT_FALSE(comesBefore(wide("a1"), wide("a1")));
}

TEST(BatchNames, AShorterNameComesFirst) {
  EXPECT_EQ(sorted({"ab", "a", "", "a0"}), (Names{"", "a", "a0", "ab"}));
}

TEST(BatchNames, NamesBeyondAsciiGoByTheirUnits) {
  EXPECT_EQ(sorted({"\xC3\xA9", "z", "\xE4\xB8\xAD"}), (Names{"z", "\xC3\xA9", "\xE4\xB8\xAD"}));
}

std::tm january() {
  std::tm time{};
  time.tm_year = 126;
  time.tm_mon = 0;
  time.tm_mday = 31;
  time.tm_hour = 7;
  time.tm_min = 5;
  time.tm_sec = 9;
  return time;
}

std::string savedName(const char* input, const char* prefix, const char* postfix, int dateAndTime) {
  BatchJob job;
  job.prefix = wide(prefix);
  job.postfix = wide(postfix);
  job.dateAndTime = dateAndTime;
  return batchFileName(wide(input), job, january()).toUtf8();
}

TEST(BatchNames, ASavedFileKeepsItsNameUnlessMoreIsAskedFor) {
  EXPECT_EQ(savedName("a.xyz", "", "", 0), "a.xyz");
  EXPECT_EQ(savedName("a", "", "", 0), "a");
}

TEST(BatchNames, PrefixAndPostfixStandAroundTheNameBeforeTheExtension) {
  EXPECT_EQ(savedName("a.b.xyz", "new-", "-clean", 0), "new-a.b-clean.xyz");
  EXPECT_EQ(savedName("noextension", "<", ">", 0), "<noextension>");
  EXPECT_EQ(savedName("a.xyz", "", ".v2", 0), "a.v2.xyz");
}

TEST(BatchNames, DateAndTimeAreASum) {
  EXPECT_EQ(savedName("a.xyz", "", "", 1), "a_20260131.xyz");
  EXPECT_EQ(savedName("a.xyz", "", "", 2), "a_070509.xyz");
  EXPECT_EQ(savedName("a.xyz", "p", "q", 3), "paq_20260131_070509.xyz");
}

TEST(BatchNames, TheTimeIsThatOfNow) {
  const std::time_t before = std::time(nullptr);
  std::tm now = batchTime();
  now.tm_isdst = -1;
  EXPECT_LE(std::difftime(std::mktime(&now), before), 5.0);
  EXPECT_GE(std::difftime(std::mktime(&now), before), -1.0);
}

TEST(BatchNames, ANameThatIsTakenGetsANumber) {
  tests::TempFolder folder;
  const OroPath directory(OroString(folder.path().u16string().c_str()));
  EXPECT_TRUE(freeFile(directory, wide("a.xyz")).fileName() == "a.xyz");
  folder.write("a.xyz", "");
  EXPECT_TRUE(freeFile(directory, wide("a.xyz")).fileName() == "a_2.xyz");
  folder.write("a_2.xyz", "");
  std::filesystem::create_directory(folder.file("a_3.xyz"));
  EXPECT_TRUE(freeFile(directory, wide("a.xyz")).fileName() == "a_4.xyz");
  folder.write("plain", "");
  EXPECT_TRUE(freeFile(directory, wide("plain")).fileName() == "plain_2");
}

}  // namespace
