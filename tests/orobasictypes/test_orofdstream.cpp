#include "orobasictypes/orofdstream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "orobasictypes/orofstream.h"
#include "orobasictypes/oroifstream.h"
#include "orobasictypes/oroofstream.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

using std::ios_base;
using Mode = OroOpenMode;

class OroFdStreams : public testing::Test {
 protected:
  OroString path(const std::filesystem::path& name) const {
    return tests::textOf(folder_.file(name));
  }
  tests::TempFolder folder_;
};

TEST_F(OroFdStreams, AnOutputStreamWritesAFileOfAnyName) {
  const std::filesystem::path name(u"caf\u00E9 \u03B1\u65E5");
  {
    OroOfstream stream(path(name), Mode::out | Mode::truncate | Mode::binary);
    ASSERT_TRUE(stream.is_open());
    stream << "value " << 42 << '\n' << OroString(u"wide") << std::endl;
    EXPECT_TRUE(stream.good());
  }
  EXPECT_EQ(folder_.read(name), "value 42\nwide\n");
}

TEST_F(OroFdStreams, AnInputStreamReadsLinesAndNumbers) {
  folder_.write("a", "first line\n12 3.5 rest");
  OroIfstream stream(path("a"));
  std::string line;
  int integer = 0;
  double number = 0;
  std::string word;
  ASSERT_TRUE(std::getline(stream, line));
  ASSERT_TRUE(stream >> integer >> number >> word);
  EXPECT_EQ(line, "first line");
  EXPECT_EQ(integer, 12);
  EXPECT_EQ(number, 3.5);
  EXPECT_EQ(word, "rest");
  EXPECT_FALSE(stream >> word);
  EXPECT_TRUE(stream.eof());
}

TEST_F(OroFdStreams, ABothWayStreamTurnsRoundWithASeek) {
  OroFstream stream(path("a"), Mode::in | Mode::out | Mode::binary);
  ASSERT_TRUE(stream.is_open());
  stream << "one two";
  stream.seekg(4);
  std::string word;
  ASSERT_TRUE(stream >> word);
  EXPECT_EQ(word, "two");
  stream.clear();
  stream.seekp(0);
  stream << "ONE" << std::flush;
  EXPECT_EQ(folder_.read("a"), "ONE two");
}

TEST_F(OroFdStreams, WithoutASeekTheOtherDirectionFails) {
  folder_.write("a", "abc");
  OroFstream stream(path("a"));
  EXPECT_EQ(stream.get(), 'a');
  EXPECT_FALSE(stream << "x");
  EXPECT_EQ(folder_.read("a"), "abc");
}

template <class Stream>
void expectFailAndBad(const OroString& path) {
  Stream made(path);
  EXPECT_FALSE(made.is_open());
  EXPECT_EQ(made.rdstate(), ios_base::failbit | ios_base::badbit);
  Stream opened;
  EXPECT_TRUE(opened.good());
  opened.open(path);
  EXPECT_EQ(opened.rdstate(), ios_base::failbit | ios_base::badbit);
}

TEST_F(OroFdStreams, AFailedOpenSetsFailAndBad) {
  expectFailAndBad<OroIfstream>(path("absent/below"));
  expectFailAndBad<OroOfstream>(path("absent/below"));
  expectFailAndBad<OroFstream>(path("absent/below"));
  expectFailAndBad<OroIfstream>(path("absent"));
}

TEST_F(OroFdStreams, ASecondOpenSetsFailAndBadAndLeavesTheFirst) {
  OroOfstream stream(path("a"));
  stream.open(path("b"));
  EXPECT_EQ(stream.rdstate(), ios_base::failbit | ios_base::badbit);
  EXPECT_TRUE(stream.is_open());
  EXPECT_FALSE(std::filesystem::exists(folder_.file("b")));
}

TEST_F(OroFdStreams, AGoodOpenClearsTheState) {
  OroOfstream stream(path("absent/below"));
  stream.open(path("a"));
  EXPECT_TRUE(stream.good());
  stream << "x";
  stream.close();
  EXPECT_TRUE(stream.good());
  EXPECT_EQ(folder_.read("a"), "x");
  stream.close();
  EXPECT_TRUE(stream.fail()) << "none was open";
}

TEST_F(OroFdStreams, TheDirectionOfTheStreamIsAlwaysMeant) {
  folder_.write("a", "old");
  OroOfstream appended(path("a"), Mode::append | Mode::binary);
  appended << "new";
  appended.close();
  EXPECT_EQ(folder_.read("a"), "oldnew");
  std::string word;
  OroIfstream read(path("a"), Mode::binary);
  ASSERT_TRUE(read >> word);
  EXPECT_EQ(word, "oldnew");
}

TEST_F(OroFdStreams, StandardModesAreTranslated) {
  folder_.write("a", "old");
  OroOfstream stream(path("a"), ios_base::app | ios_base::binary);
  stream << "\n";
  stream.close();
  EXPECT_EQ(folder_.read("a"), "old\n");
  stream.open(path("a"), ios_base::out | ios_base::trunc);
  stream << "\n";
  stream.close();
  EXPECT_EQ(folder_.read("a"), tests::systemLines("\n"));
  OroIfstream read;
  read.open(path("a"), ios_base::in);
  EXPECT_EQ(read.get(), '\n');
}

TEST_F(OroFdStreams, AFullDiskShowsInTheState) {
  tests::TestDisk disk;
  OroOfstream stream(path("a"));
  disk.refuseFrom(1);
  stream << "a";
  EXPECT_TRUE(stream.good());
  stream << "b";
  EXPECT_TRUE(stream.bad());

  OroOfstream closed(path("b"));
  disk.refuseFrom(SIZE_MAX);
  closed.put('a').put('b');
  disk.refuseFrom(0);
  EXPECT_TRUE(closed.good());
  closed.close();
  EXPECT_TRUE(closed.fail());
  EXPECT_FALSE(closed.is_open());
}

}  // namespace
