#include "headless/kelrecordsink.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "orobasictypes/orostring.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/pipereader.h"
#include "tests/tempfolder.h"

namespace {

OroString settingOf(const std::filesystem::path& file) {
  return OroString(platform::fromSystem(file.string()).c_str());
}

KelRecord command(const char16_t* text) { return {KelRecordKind::startCommand, text, 0}; }

// The current directory is one for the process; it is put back.
class InFolder {
 public:
  explicit InFolder(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
  ~InFolder() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

class RecordSink : public testing::Test {
 protected:
  std::string contents(const char* name) { return tests::plainLines(folder_.read(name)); }

  tests::TempFolder folder_;
  KelRecordSink sink_;
};

TEST_F(RecordSink, IsClosedWithAnEmptySettingAndWritesNothing) {
  sink_.open(OroString());
  EXPECT_FALSE(sink_.isOpen());
  sink_.write(command(u"x"));
  sink_.close();
}

TEST_F(RecordSink, FramesTheRecordsOfAFile) {
  sink_.open(settingOf(folder_.file("log.txt")));
  EXPECT_TRUE(sink_.isOpen());
  sink_.write(command(u"Open"));
  sink_.close();
  EXPECT_EQ(contents("log.txt"), "<log>\n<start cmd=\"Open\"/>\n</log>\n");
}

TEST_F(RecordSink, ReplacesAnOldFile) {
  folder_.write("log.txt", "an old log that is longer than the new one\n");
  sink_.open(settingOf(folder_.file("log.txt")));
  sink_.close();
  EXPECT_EQ(contents("log.txt"), "<log>\n</log>\n");
}

TEST_F(RecordSink, ShowsEachRecordAsItIsWritten) {
  sink_.open(settingOf(folder_.file("log.txt")));
  EXPECT_EQ(contents("log.txt"), "<log>\n");
  sink_.write({KelRecordKind::percent, {}, 5});
  EXPECT_EQ(contents("log.txt"), "<log>\n <prog done=\"5\"/>\n");
  sink_.close();
}

TEST_F(RecordSink, WritesUtf8WithSurrogatePairsJoinedAndLoneOnesReplaced) {
  sink_.open(settingOf(folder_.file("log.txt")));
  sink_.write(command(u"\u20AC \U0001F600 \xD800 %s"));
  sink_.close();
  EXPECT_EQ(contents("log.txt"),
            "<log>\n<start cmd=\"\xE2\x82\xAC \xF0\x9F\x98\x80 \xEF\xBF\xBD %s\"/>\n</log>\n");
}

TEST_F(RecordSink, StaysClosedWhenTheFileDoesNotOpen) {
  sink_.open(settingOf(folder_.file("nowhere") / "log.txt"));
  EXPECT_FALSE(sink_.isOpen());
  sink_.write(command(u"x"));
  sink_.close();
}

TEST_F(RecordSink, ClosesOnceAndOpensAgain) {
  sink_.open(settingOf(folder_.file("a")));
  sink_.close();
  sink_.close();
  sink_.open(settingOf(folder_.file("b")));
  sink_.close();
  EXPECT_EQ(contents("a"), "<log>\n</log>\n");
  EXPECT_EQ(contents("b"), "<log>\n</log>\n");
}

TEST_F(RecordSink, TakesOtherLettersOfAStreamsNameAsAFile) {
  const InFolder inFolder(folder_.path());
  for (const char* name : {"Stdout", "STDERR", "strerr", "stdout "}) {
    KelRecordSink sink;
    sink.open(OroString(name));
    EXPECT_TRUE(sink.isOpen()) << name;
    sink.close();
    EXPECT_TRUE(std::filesystem::exists(name)) << name;
  }
}

TEST_F(RecordSink, TakesAPipePrefixThatDoesNotLeadAsAPath) {
  const InFolder inFolder(folder_.path());
  sink_.open(OroString("x\\\\.\\pipe\\y"));
  EXPECT_FALSE(sink_.isOpen());  // there is no folder "x"
  std::filesystem::create_directories("x/pipe");
  sink_.open(OroString("x\\.\\pipe\\y"));
  EXPECT_TRUE(sink_.isOpen());
  sink_.close();
  EXPECT_EQ(tests::plainLines(folder_.read("x/pipe/y")), "<log>\n</log>\n");
}

TEST_F(RecordSink, OpensAFileOfNonAsciiName) {
  const OroString setting(
      (platform::fromSystem(folder_.path().string()) + u"\\\u00E4\u20AC.log").c_str());
  sink_.open(setting);
  ASSERT_TRUE(sink_.isOpen());
  sink_.close();
  EXPECT_TRUE(platform::isFile(setting.wideText()));
}

TEST_F(RecordSink, WritesThePipeSpellingToAPipe) {
  tests::PipeReader reader("recordsink");
  sink_.open(OroString(reader.setting().c_str()));
  ASSERT_TRUE(sink_.isOpen());
  sink_.write(command(u"Open \u20AC \U0001F600"));
  sink_.write({KelRecordKind::percent, {}, 50});
  sink_.write({KelRecordKind::error, u"bad", 0});
  sink_.close();
  EXPECT_EQ(reader.readAll(),
            u"<log>\n<start cmd=\"Open \u20AC \U0001F600\">\n <prog done=\"50\"/>\n"
            u"<Error=\"bad\">\n</log>\n");
}

TEST_F(RecordSink, StaysClosedWithoutAPipeOfThatName) {
  sink_.open(OroString("\\\\.\\pipe\\no-such-pipe-for-cowl"));
  EXPECT_FALSE(sink_.isOpen());
  sink_.write(command(u"x"));
  sink_.close();
}

}  // namespace
