#include "orobasictypes/orofdstreambuf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <istream>
#include <string>

#include "orobasictypes/orostring.h"
#include "platform/descriptor.h"
#include "platform/text.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/support/assertionlist.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

using std::ios_base;
using testing::ElementsAre;
using testing::IsEmpty;
using Mode = OroOpenMode;

constexpr int atEnd = std::streambuf::traits_type::eof();
constexpr int readBinary = Mode::in | Mode::binary;
constexpr int writeBinary = Mode::out | Mode::binary;

class OroFdStreambufTest : public testing::Test {
 protected:
  OroString path(const char* name) const { return tests::textOf(folder_.file(name)); }
  OroFdStreambuf* open(const char* name, int mode) { return file_.Open(path(name), mode); }
  std::string content(const std::filesystem::path& name) const { return folder_.read(name); }
  // Opens a file of that content with the mode and tells what opening left of it.
  std::string contentAfterOpening(int mode) {
    folder_.write("old", "old");
    OroFdStreambuf file;
    EXPECT_EQ(file.Open(path("old"), mode), &file) << mode;
    EXPECT_EQ(file.Close(), &file) << mode;
    return content("old");
  }
  bool creates(int mode) {
    std::filesystem::remove(folder_.file("new"));
    OroFdStreambuf file;
    file.Open(path("new"), mode);
    return std::filesystem::exists(folder_.file("new"));
  }
  std::string read(int count) {
    std::string text(static_cast<size_t>(count), '.');
    text.resize(static_cast<size_t>(file_.sgetn(text.data(), count)));
    return text;
  }
  void put(const std::string& text) {
    for (const char c : text) ASSERT_NE(file_.sputc(c), atEnd);
  }

  tests::TempFolder folder_;
  char buffer_[16] = {};  // outlives the file that it is given to
  OroFdStreambuf file_;
};

// Opening.

TEST_F(OroFdStreambufTest, ModesHaveTheSystemsOwnNumbers) {
  EXPECT_EQ(Mode::in, 1);
  EXPECT_EQ(Mode::out, 2);
  EXPECT_EQ(Mode::atEnd, 4);
  EXPECT_EQ(Mode::append, 8);
  EXPECT_EQ(Mode::truncate, 16);
  EXPECT_EQ(Mode::binary, 32);
  EXPECT_EQ(Mode::of(ios_base::in), 1);
  EXPECT_EQ(Mode::of(ios_base::out | ios_base::trunc), 18);
  EXPECT_EQ(Mode::of(ios_base::ate | ios_base::app | ios_base::binary), 44);
}

TEST_F(OroFdStreambufTest, OpeningTruncatesWhenAskedOrWhenNothingKeepsTheFile) {
  EXPECT_EQ(contentAfterOpening(Mode::out), "");
  EXPECT_EQ(contentAfterOpening(writeBinary), "");
  EXPECT_EQ(contentAfterOpening(Mode::out | Mode::truncate), "");
  EXPECT_EQ(contentAfterOpening(Mode::in | Mode::out | Mode::truncate), "");
  EXPECT_EQ(contentAfterOpening(Mode::out | Mode::append | Mode::truncate), "");
  EXPECT_EQ(contentAfterOpening(Mode::in), "old");
  EXPECT_EQ(contentAfterOpening(Mode::in | Mode::out), "old");
  EXPECT_EQ(contentAfterOpening(Mode::out | Mode::atEnd), "old");
  EXPECT_EQ(contentAfterOpening(Mode::out | Mode::append), "old");
}

TEST_F(OroFdStreambufTest, OpeningCreatesUnlessItOnlyReads) {
  EXPECT_FALSE(creates(Mode::in));
  EXPECT_FALSE(creates(Mode::in | Mode::append));
  EXPECT_TRUE(creates(Mode::out));
  EXPECT_TRUE(creates(Mode::in | Mode::out));
  EXPECT_TRUE(creates(Mode::out | Mode::append));
  EXPECT_TRUE(creates(Mode::out | Mode::atEnd));
}

TEST_F(OroFdStreambufTest, AModeWithoutADirectionIsAssertedAgainstAndTakesNothing) {
  tests::AssertionList assertions;
  EXPECT_EQ(contentAfterOpening(Mode::append), "old");
  EXPECT_THAT(assertions.take(), ElementsAre(" orobasictypes/orofdstreambuf"));
  EXPECT_EQ(contentAfterOpening(0), "");
  EXPECT_EQ(contentAfterOpening(Mode::atEnd), "old");
  EXPECT_TRUE(creates(Mode::append));
  EXPECT_EQ(assertions.take().size(), 3u);

  ASSERT_EQ(open("a", Mode::append), &file_);
  EXPECT_EQ(file_.sputc('x'), atEnd);
  EXPECT_EQ(file_.sputn("xyz", 3), 0);
  EXPECT_EQ(file_.sgetc(), atEnd);
  EXPECT_EQ(file_.Close(), &file_);
  EXPECT_EQ(content("a"), "");
}

TEST_F(OroFdStreambufTest, ASecondOpenGivesNullAndLeavesTheFirst) {
  folder_.write("a", "first");
  folder_.write("b", "second");
  ASSERT_EQ(open("a", readBinary), &file_);
  EXPECT_EQ(open("b", readBinary), nullptr);
  EXPECT_EQ(open("absent", readBinary), nullptr);
  EXPECT_EQ(file_.Attach(0, readBinary), nullptr);
  EXPECT_TRUE(file_.IsOpen());
  EXPECT_EQ(read(9), "first");
}

TEST_F(OroFdStreambufTest, WhatDoesNotOpenGivesNullAndStaysClosed) {
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_EQ(open("absent", readBinary), nullptr);
  EXPECT_EQ(open("folder", readBinary), nullptr);
  EXPECT_EQ(open("absent/below", writeBinary), nullptr);
  EXPECT_EQ(file_.Open(static_cast<const char16_t*>(nullptr), writeBinary), nullptr);
  EXPECT_EQ(file_.Open("", writeBinary), nullptr);
  EXPECT_EQ(file_.Attach(-1, readBinary), nullptr);
  EXPECT_FALSE(file_.IsOpen());
  EXPECT_EQ(file_.sgetc(), atEnd);
  EXPECT_EQ(file_.sputc('x'), atEnd);
}

TEST_F(OroFdStreambufTest, EveryFormOfPathAndModeOpensTheSameFile) {
  const OroString name = tests::textOf(folder_.file(u"caf\u00E9 \u03B1\u65E5"));
  ASSERT_NE(file_.Open(name.wideText(), ios_base::out | ios_base::binary), nullptr);
  EXPECT_EQ(file_.sputn("text", 4), 4);
  ASSERT_NE(file_.Close(), nullptr);
  EXPECT_EQ(content(u"caf\u00E9 \u03B1\u65E5"), "text");
  ASSERT_NE(file_.Open(name, ios_base::in | ios_base::binary), nullptr);
  EXPECT_EQ(read(9), "text");
  ASSERT_NE(file_.Close(), nullptr);

  const std::string narrow = platform::toCodePage(path("plain").wideText());
  ASSERT_NE(file_.Open(narrow.c_str(), ios_base::out), nullptr);
  ASSERT_NE(file_.Close(), nullptr);
  EXPECT_NE(file_.Open(narrow.c_str(), readBinary), nullptr);
}

TEST_F(OroFdStreambufTest, AFileIsSharedWithOthers) {
  ASSERT_NE(open("a", writeBinary), nullptr);
  OroFdStreambuf other;
  EXPECT_NE(other.Open(path("a"), readBinary), nullptr);
  EXPECT_EQ(file_.sputn("shared", 6), 6);
  EXPECT_EQ(other.sgetc(), 's');
}

TEST_F(OroFdStreambufTest, ANewFileHasTheRightsOfAnyNewFile) {
  folder_.write("plain", "");
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(std::filesystem::status(folder_.file("a")).permissions(),
            std::filesystem::status(folder_.file("plain")).permissions());
}

TEST_F(OroFdStreambufTest, TextModeWritesTheLineEndsOfTheSystem) {
  ASSERT_NE(open("a", Mode::out), nullptr);
  EXPECT_EQ(file_.sputn("a\nb\n", 4), 4);
  ASSERT_NE(file_.Close(), nullptr);
  EXPECT_EQ(content("a"), tests::systemLines("a\nb\n"));
  ASSERT_NE(open("a", Mode::in), nullptr);
  EXPECT_EQ(read(9), "a\nb\n");
  ASSERT_NE(file_.Close(), nullptr);
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(file_.sputn("a\nb\n", 4), 4);
  ASSERT_NE(file_.Close(), nullptr);
  EXPECT_EQ(content("a"), "a\nb\n");
}

TEST_F(OroFdStreambufTest, AnAttachedDescriptorIsUsedAndClosed) {
  folder_.write("a", "attached");
  const int descriptor = platform::openDescriptor(path("a").wideText(), platform::openRead);
  ASSERT_GE(descriptor, 0);
  ASSERT_EQ(file_.Attach(descriptor, readBinary), &file_);
  EXPECT_TRUE(file_.IsOpen());
  EXPECT_EQ(read(9), "attached");
  EXPECT_EQ(file_.sputc('x'), atEnd) << "the mode decides, not the descriptor";
  EXPECT_EQ(file_.Close(), &file_);
  char byte = 0;
  EXPECT_LT(platform::readDescriptor(descriptor, &byte, 1), 0);
}

TEST_F(OroFdStreambufTest, ClosingAClosedOneGivesNull) {
  EXPECT_EQ(file_.Close(), nullptr);
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(file_.Close(), &file_);
  EXPECT_EQ(file_.Close(), nullptr);
  EXPECT_FALSE(file_.IsOpen());
}

TEST_F(OroFdStreambufTest, ClosingAndDestroyingWriteWhatIsPending) {
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("pending");
  EXPECT_EQ(content("a"), "p");
  EXPECT_EQ(file_.Close(), &file_);
  EXPECT_EQ(content("a"), "pending");
  {
    OroFdStreambuf other;
    ASSERT_NE(other.Open(path("b"), writeBinary), nullptr);
    other.sputc('x');
    other.sputc('y');
    EXPECT_EQ(content("b"), "x");
  }
  EXPECT_EQ(content("b"), "xy");
}

TEST_F(OroFdStreambufTest, AtEndDoesNotSeek) {
  folder_.write("a", "old");
  ASSERT_NE(open("a", writeBinary | Mode::atEnd), nullptr);
  EXPECT_EQ(file_.sputn("N", 1), 1);
  EXPECT_EQ(content("a"), "Nld");
}

TEST_F(OroFdStreambufTest, AppendWritesAtTheEndWhereverItStands) {
  folder_.write("a", "old");
  ASSERT_NE(open("a", writeBinary | Mode::append), nullptr);
  EXPECT_EQ(file_.pubseekoff(0, ios_base::beg), std::streampos(0));
  EXPECT_EQ(file_.sputn("new", 3), 3);
  EXPECT_EQ(content("a"), "oldnew");
}

// Writing.

TEST_F(OroFdStreambufTest, TheFirstCharacterGoesOutAtOnceAndThenABufferAtATime) {
  tests::TestDisk disk;
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("x");
  EXPECT_THAT(disk.writes, ElementsAre(1));
  put(std::string(1023, 'y'));
  EXPECT_THAT(disk.writes, ElementsAre(1));
  put("z");
  EXPECT_THAT(disk.writes, ElementsAre(1, 1024));
  EXPECT_EQ(content("a"), "x" + std::string(1023, 'y') + "z");
}

TEST_F(OroFdStreambufTest, ABufferOfOneWritesEachCharacterStraightThrough) {
  tests::TestDisk disk;
  file_.pubsetbuf(buffer_, 1);
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abc");
  EXPECT_THAT(disk.writes, ElementsAre(1, 1, 1));
  EXPECT_EQ(content("a"), "abc");
}

TEST_F(OroFdStreambufTest, ABufferOfTwoLosesAndReordersNothing) {
  file_.pubsetbuf(buffer_, 2);
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abcdefg");
  ASSERT_NE(file_.Close(), nullptr);
  EXPECT_EQ(content("a"), "abcdefg");
}

TEST_F(OroFdStreambufTest, ABlockGoesStraightOutBehindWhatIsPending) {
  tests::TestDisk disk;
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abc");
  EXPECT_EQ(file_.sputn("defgh", 5), 5);
  EXPECT_THAT(disk.writes, ElementsAre(1, 2, 5));
  EXPECT_EQ(file_.sputn("", 0), 0);
  EXPECT_EQ(content("a"), "abcdefgh");
}

TEST_F(OroFdStreambufTest, NoCallWritesMoreThanTheSystemTakes) {
  constexpr std::streamsize mostAtOnce = 0x7FFFFFFF;
  tests::TestDisk disk;
  disk.refuseFrom(0);  // before anything is read behind the buffer's end
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(file_.sputn(buffer_, mostAtOnce + 1), 0);
  EXPECT_EQ(file_.sputn(buffer_, 16), 0);
  EXPECT_THAT(disk.writes, ElementsAre(mostAtOnce, 16));
}

TEST_F(OroFdStreambufTest, SyncWritesWhatIsPending) {
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abc");
  EXPECT_EQ(file_.pubsync(), 0);
  EXPECT_EQ(content("a"), "abc");
  EXPECT_EQ(file_.pubsync(), 0);
}

TEST_F(OroFdStreambufTest, ARefusedCharacterIsTheCallersAgain) {
  tests::TestDisk disk;
  file_.pubsetbuf(buffer_, 4);
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abcd");
  disk.refuseFrom(1);
  EXPECT_EQ(file_.sputc('e'), atEnd);
  EXPECT_EQ(file_.pubsync(), -1);
  disk.refuseFrom(SIZE_MAX);
  EXPECT_EQ(file_.sputc('f'), 'f');
  EXPECT_EQ(file_.pubsync(), 0);
  EXPECT_EQ(content("a"), "abcdf");
}

TEST_F(OroFdStreambufTest, WhatAFullDiskStillTookIsNotWrittenAgain) {
  tests::TestDisk disk;
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abcdef");
  disk.refuseFrom(1, 2);
  EXPECT_EQ(file_.pubsync(), -1);
  EXPECT_EQ(content("a"), "abc");
  disk.refuseFrom(SIZE_MAX);
  EXPECT_EQ(file_.pubsync(), 0);
  EXPECT_EQ(content("a"), "abcdef");
}

TEST_F(OroFdStreambufTest, ABlockTellsHowMuchTheDiskTook) {
  tests::TestDisk disk;
  ASSERT_NE(open("a", writeBinary), nullptr);
  disk.refuseFrom(0, 3);
  EXPECT_EQ(file_.sputn("abcdef", 6), 3);
  EXPECT_EQ(file_.sputn("abcdef", 6), 0);
  EXPECT_EQ(content("a"), "abc");
}

// The bytes at the front are on the disk whole, and somebody hears of the rest.
TEST_F(OroFdStreambufTest, ADiskThatFillsUpAtAnyWriteIsToldAndKeepsTheFront) {
  std::string text;
  for (int i = 0; i < 700; ++i) text += std::to_string(i) + ",";
  bool complete = false;
  for (size_t n = 0; !complete; ++n) {
    tests::TestDisk disk;
    disk.refuseFrom(n, n % 3);
    OroFdStreambuf file;
    ASSERT_NE(file.Open(path("a"), writeBinary), nullptr);
    size_t put = 0;
    while (put < text.size() && file.sputc(text[put]) != atEnd) ++put;
    const bool closed = file.Close() != nullptr;
    complete = put == text.size() && closed;
    EXPECT_EQ(complete, disk.writes.size() <= n);
    EXPECT_TRUE(text.starts_with(content("a"))) << n;
    EXPECT_EQ(content("a") == text, complete) << n;
  }
}

// Reading.

TEST_F(OroFdStreambufTest, ReadingTakesABufferAheadAndCharactersFromIt) {
  folder_.write("a", std::string(1500, 'x') + "y");
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sgetc(), 'x');
  EXPECT_EQ(file_.sgetc(), 'x') << "nothing was taken";
  EXPECT_EQ(file_.in_avail(), 1024);
  for (int i = 0; i < 1500; ++i) ASSERT_EQ(file_.sbumpc(), 'x');
  EXPECT_EQ(file_.sbumpc(), 'y');
  EXPECT_EQ(file_.sbumpc(), atEnd);
  EXPECT_EQ(file_.sgetc(), atEnd);
}

TEST_F(OroFdStreambufTest, BytesAboveAsciiAreNoEnd) {
  folder_.write("a", "\xFF\xFE");
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sbumpc(), 0xFF);
  EXPECT_EQ(file_.sbumpc(), 0xFE);
  EXPECT_EQ(file_.sbumpc(), atEnd);
}

TEST_F(OroFdStreambufTest, ABlockBeginsWithWhatWasReadAhead) {
  std::string text;
  for (int i = 0; i < 900; ++i) text += std::to_string(i) + ",";
  folder_.write("a", text);
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sbumpc(), text[0]);
  EXPECT_EQ(read(10), text.substr(1, 10));
  EXPECT_EQ(read(2000), text.substr(11, 2000));
  EXPECT_EQ(file_.sbumpc(), text[2011]);
  EXPECT_EQ(read(99999), text.substr(2012));
  EXPECT_EQ(read(1), "");
}

// What the buffer held last is not what was read last.
TEST_F(OroFdStreambufTest, BehindABlockFromTheFileNothingIsPutBack) {
  folder_.write("a", "abcdefghij");
  file_.pubsetbuf(buffer_, 4);
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sbumpc(), 'a');
  EXPECT_EQ(read(2), "bc");
  EXPECT_EQ(file_.sungetc(), 'c') << "the block came from the buffer";
  EXPECT_EQ(read(5), "cdefg");
  EXPECT_EQ(file_.sungetc(), atEnd);
  EXPECT_EQ(file_.in_avail(), 0);
  EXPECT_EQ(file_.sbumpc(), 'h');
  EXPECT_EQ(file_.sungetc(), 'h');
}

TEST_F(OroFdStreambufTest, AnUnbufferedStreamReadsOneCharacterAndCannotPeek) {
  folder_.write("a", "abc");
  ASSERT_NE(open("a", readBinary), nullptr);
  file_.pubsetbuf(nullptr, 0);
  EXPECT_EQ(file_.sgetc(), atEnd);
  EXPECT_EQ(file_.sbumpc(), 'a');
  EXPECT_EQ(file_.pubseekoff(0, ios_base::cur), std::streampos(1)) << "no more than that was read";
  EXPECT_EQ(file_.sbumpc(), 'b');
  EXPECT_EQ(read(9), "c");
  EXPECT_EQ(file_.sbumpc(), atEnd);
}

TEST_F(OroFdStreambufTest, WhatIsAvailableIsKnownWhileReadingOnly) {
  folder_.write("a", "abc");
  EXPECT_EQ(file_.in_avail(), -1);
  ASSERT_NE(open("a", Mode::in | Mode::out | Mode::binary), nullptr);
  EXPECT_EQ(file_.in_avail(), -1);
  EXPECT_EQ(file_.sbumpc(), 'a');
  EXPECT_EQ(file_.in_avail(), 2);
  EXPECT_EQ(read(2), "bc");
  EXPECT_EQ(file_.in_avail(), 0);
  file_.pubseekoff(0, ios_base::beg);
  EXPECT_EQ(file_.in_avail(), -1);
  file_.sputc('x');
  EXPECT_EQ(file_.in_avail(), -1);
}

// Phases and positions.

TEST_F(OroFdStreambufTest, WithoutASeekNeitherDirectionFollowsTheOther) {
  folder_.write("a", "abcdef");
  ASSERT_NE(open("a", Mode::in | Mode::out | Mode::binary), nullptr);
  EXPECT_EQ(file_.sbumpc(), 'a');
  EXPECT_EQ(file_.sputc('X'), atEnd);
  EXPECT_EQ(file_.sputn("XY", 2), 0);
  EXPECT_EQ(file_.pubseekoff(3, ios_base::beg), std::streampos(3));
  EXPECT_EQ(file_.sputn("DE", 2), 2);
  EXPECT_EQ(file_.sgetc(), atEnd);
  EXPECT_EQ(file_.sbumpc(), atEnd);
  EXPECT_EQ(read(3), "");
  EXPECT_EQ(file_.pubseekoff(0, ios_base::cur), std::streampos(5));
  EXPECT_EQ(file_.sbumpc(), 'f');
  EXPECT_EQ(content("a"), "abcDEf");
}

TEST_F(OroFdStreambufTest, ModesForbidTheOtherDirection) {
  folder_.write("a", "abc");
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sputc('x'), atEnd);
  EXPECT_EQ(read(3), "abc") << "a refused write changes nothing";
  ASSERT_NE(file_.Close(), nullptr);
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(file_.sgetc(), atEnd);
  EXPECT_EQ(file_.sputn("x", 1), 1);
}

TEST_F(OroFdStreambufTest, SeekingWhileWritingWritesFirst) {
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abcdef");
  EXPECT_EQ(file_.pubseekoff(1, ios_base::beg), std::streampos(1));
  EXPECT_EQ(content("a"), "abcdef");
  put("B");
  EXPECT_EQ(file_.pubseekoff(0, ios_base::end), std::streampos(6));
  EXPECT_EQ(content("a"), "aBcdef");
  EXPECT_EQ(file_.pubseekpos(2), std::streampos(2));
  EXPECT_EQ(file_.pubseekoff(2, ios_base::cur), std::streampos(4));
}

TEST_F(OroFdStreambufTest, SeekingWhileReadingDropsWhatWasReadAhead) {
  folder_.write("a", std::string(1024, 'x') + "yz");
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sbumpc(), 'x');
  EXPECT_EQ(file_.pubseekoff(0, ios_base::cur), std::streampos(1024));
  EXPECT_EQ(file_.sbumpc(), 'y');
}

TEST_F(OroFdStreambufTest, AFailedSeekGivesMinusOne) {
  EXPECT_EQ(file_.pubseekoff(0, ios_base::beg), std::streampos(-1)) << "closed";
  EXPECT_EQ(file_.pubseekoff(0, static_cast<ios_base::seekdir>(7)), std::streampos(-1));
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(file_.pubseekoff(-5, ios_base::beg), std::streampos(-1));
  tests::TestDisk disk;
  put("ab");
  disk.refuseFrom(0);
  EXPECT_EQ(file_.pubseekoff(0, ios_base::beg), std::streampos(-1));
  disk.refuseFrom(SIZE_MAX);
  EXPECT_EQ(file_.pubsync(), 0);
  EXPECT_EQ(content("a"), "ab") << "what could not be written is still pending";
}

TEST_F(OroFdStreambufTest, PositionsAreOf64Bits) {
  constexpr std::streamoff far = 0x123456789A;
  ASSERT_NE(open("a", writeBinary), nullptr);
  EXPECT_EQ(file_.pubseekoff(far, ios_base::beg), std::streampos(far));
  EXPECT_EQ(file_.pubseekoff(1, ios_base::cur), std::streampos(far + 1));
}

TEST_F(OroFdStreambufTest, AnUnknownDirectionEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        OroFdStreambuf file;
        file.Open(path("a"), writeBinary);
        file.pubseekoff(0, static_cast<ios_base::seekdir>(7));
      },
      "");
}

// Buffers.

TEST_F(OroFdStreambufTest, TheBufferOutlivesCloseAndAGivenOneIsUsed) {
  EXPECT_EQ(file_.pubsetbuf(buffer_, 8), &file_);
  folder_.write("a", "abcdefghijkl");
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sgetc(), 'a');
  EXPECT_EQ(std::string(buffer_, 8), "abcdefgh");
  ASSERT_NE(file_.Close(), nullptr);
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("12");
  EXPECT_EQ(buffer_[0], '2') << "the second open has the same buffer";
}

TEST_F(OroFdStreambufTest, ANewBufferLosesNothingThatWasWritten) {
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abc");
  EXPECT_EQ(file_.pubsetbuf(buffer_, 16), &file_);
  put("def");
  EXPECT_EQ(file_.pubsetbuf(nullptr, 0), &file_);
  put("gh");
  EXPECT_EQ(content("a"), "abcdefgh");
  EXPECT_EQ(file_.pubsetbuf(buffer_, -3), &file_);
  put("i");
  EXPECT_EQ(content("a"), "abcdefghi");
}

TEST_F(OroFdStreambufTest, AFullDiskKeepsTheOldBuffer) {
  tests::TestDisk disk;
  ASSERT_NE(open("a", writeBinary), nullptr);
  put("abc");
  disk.refuseFrom(1);
  EXPECT_EQ(file_.pubsetbuf(buffer_, 16), nullptr);
  disk.refuseFrom(SIZE_MAX);
  EXPECT_EQ(file_.pubsync(), 0);
  EXPECT_EQ(content("a"), "abc");
}

TEST_F(OroFdStreambufTest, WithoutABufferAtTheOpenItGetsOneOfItsOwn) {
  file_.pubsetbuf(nullptr, 0);
  folder_.write("a", std::string(2000, 'x'));
  ASSERT_NE(open("a", readBinary), nullptr);
  EXPECT_EQ(file_.sgetc(), 'x');
  EXPECT_EQ(file_.in_avail(), 1024);
}

}  // namespace
