#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "orobasictypes/binio.h"
#include "platform/files.h"
#include "platform/filestream.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

using tests::FlipScrambler;

class BinFiles : public testing::Test {
 protected:
  OroPath path(const std::filesystem::path& name) const {
    return tests::textOf(folder_.file(name));
  }
  std::FILE* stream(const char* name, const char* mode) const {
    return platform::openFile(path(name).wideText(), mode);
  }
  std::string content(const char* name) const { return folder_.read(name); }
  static std::string patterned(size_t count) {
    std::string bytes(count, '\0');
    for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 31 + i / 256 + i / 65536);
    return bytes;
  }

  tests::TempFolder folder_;
};

// Reading.

TEST_F(BinFiles, AnInputKnowsItsSizeAndReadsToItsEnd) {
  folder_.write("a", "\x01\x02\x03\x04\x05");
  BinInputFile input(path("a"));
  EXPECT_TRUE(input.IsGood());
  EXPECT_EQ(input.GetSize(), 5);
  EXPECT_EQ(input.Tell(), 0);
  uint32_t value = 0;
  EXPECT_TRUE(input.Read(&value, 1));
  EXPECT_EQ(value, 0x01020304u);
  EXPECT_EQ(input.Tell(), 4) << "where the next value stands, whatever was read ahead";
  EXPECT_FALSE(input.Read(&value, 1));
  EXPECT_TRUE(input.IsGood()) << "the end is no failure";
  EXPECT_EQ(value, 0x01020304u);
}

TEST_F(BinFiles, NamesOfAnyScriptOpen) {
  const std::filesystem::path name(u"caf\u00E9 \u03B1\u65E5");
  BinOutputFile output(path(name));
  ASSERT_TRUE(output.WriteBytes("x", 1));
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(BinInputFile(path(name)).GetSize(), 1);
}

TEST_F(BinFiles, OfAPathThatDoesNotOpenEverythingIsZeroOrFalse) {
  std::filesystem::create_directory(folder_.file("folder"));
  char bytes[8];
  for (const char* name : {"absent", "folder"}) {
    BinInputFile input(path(name));
    uint32_t value = 7;
    EXPECT_EQ(input.GetSize(), 0);
    EXPECT_FALSE(input.IsGood());
    EXPECT_FALSE(input.Read(&value, 1));
    EXPECT_EQ(input.ReadRaw(bytes, 8), 0);
    EXPECT_EQ(input.Tell(), 0);
    EXPECT_FALSE(input.Seek(0, true));
    EXPECT_EQ(input.PeekInt32(), -1);
    EXPECT_FALSE(input.Close());
    EXPECT_EQ(value, 7u);
  }
  for (const char* name : {"absent/below", "folder"}) {
    BinOutputFile output(path(name));
    EXPECT_FALSE(output.IsGood());
    EXPECT_EQ(output.WriteRaw(bytes, 8), 0);
    EXPECT_EQ(output.ReadRaw(bytes, 8), 0);
    EXPECT_EQ(output.Tell(), 0);
    EXPECT_FALSE(output.Seek(0, true));
    EXPECT_FALSE(output.Flush());
    EXPECT_FALSE(output.Reopen());
    const int32_t value = 7;
    EXPECT_TRUE(output.Write(&value, 1)) << "it is only pending";
    EXPECT_FALSE(output.FlushBuffer());
    EXPECT_FALSE(output.Close());
    EXPECT_FALSE(output.FlushAndClose());
  }
  EXPECT_FALSE(BinInputFile(static_cast<std::FILE*>(nullptr)).IsGood());
  EXPECT_FALSE(BinOutputFile(static_cast<std::FILE*>(nullptr)).IsGood());
}

TEST_F(BinFiles, AnInputOnAStreamBeginsWhereItStood) {
  folder_.write("a", "0123456789");
  std::FILE* const file = stream("a", "rb");
  ASSERT_EQ(std::fgetc(file), '0');
  ASSERT_EQ(std::fgetc(file), '1');
  BinInputFile input(file);
  EXPECT_EQ(input.GetSize(), 10);
  EXPECT_EQ(input.Tell(), 2);
  char bytes[3];
  EXPECT_TRUE(input.ReadBytes(bytes, 3));
  EXPECT_EQ(std::string(bytes, 3), "234");
}

TEST_F(BinFiles, SeeksCountFromTheStartOrTheEnd) {
  folder_.write("a", "0123456789");
  BinInputFile input(path("a"));
  char byte = 0;
  EXPECT_TRUE(input.Seek(-2, false));
  EXPECT_EQ(input.Tell(), 8);
  EXPECT_TRUE(input.ReadBytes(&byte, 1));
  EXPECT_EQ(byte, '8');
  EXPECT_TRUE(input.Seek(3, true));
  EXPECT_TRUE(input.ReadBytes(&byte, 1));
  EXPECT_EQ(byte, '3');
  EXPECT_TRUE(input.Seek(0, false));
  EXPECT_FALSE(input.ReadBytes(&byte, 1));
  EXPECT_TRUE(input.Seek(0, true));
  EXPECT_TRUE(input.ReadBytes(&byte, 1));
  EXPECT_EQ(byte, '0');
  EXPECT_FALSE(input.Seek(-1, true));
  EXPECT_FALSE(input.Seek(-11, false));
  EXPECT_EQ(input.Tell(), 1) << "a failed seek moves nothing";
  EXPECT_TRUE(input.Seek(1000000, true));
  EXPECT_FALSE(input.ReadBytes(&byte, 1));
}

TEST_F(BinFiles, PositionsBeyond32BitsAreReached) {
  constexpr int64_t far = 0x1'2345'6789;
  {
    BinOutputFile output(path("a"));
    ASSERT_TRUE(output.Seek(far, true));
    ASSERT_TRUE(output.WriteBytes("end", 3));
    ASSERT_TRUE(output.FlushAndClose());
  }
  BinInputFile input(path("a"));
  EXPECT_EQ(input.GetSize(), far + 3);
  char bytes[3];
  ASSERT_TRUE(input.Seek(far, true));
  ASSERT_TRUE(input.ReadBytes(bytes, 3));
  EXPECT_EQ(std::string(bytes, 3), "end");
  EXPECT_EQ(input.Tell(), far + 3);
}

// Any walk through a file larger than what is read ahead gives what is there.
TEST_F(BinFiles, ReadsAndSeeksInAnyOrderGiveWhatIsThere) {
  const std::string bytes = patterned(300000);
  folder_.write("a", bytes);
  BinInputFile input(path("a"));
  std::mt19937 random(1);
  size_t at = 0;
  for (int step = 0; step < 20000; ++step) {
    if (random() % 3 == 0) {
      const size_t jump = random() % (random() % 2 == 0 ? 300000 : 500);
      at = random() % 2 == 0 ? jump : std::min<size_t>(at + jump, 300000);
      ASSERT_TRUE(input.Seek(static_cast<int64_t>(at), true));
    }
    std::array<char, 3000> read;
    const size_t count = random() % (random() % 20 == 0 ? 3000 : 30);
    const size_t there = std::min(count, bytes.size() - at);
    ASSERT_EQ(input.Tell(), static_cast<int64_t>(at));
    ASSERT_EQ(input.ReadBytes(read.data(), static_cast<int64_t>(count)), there == count);
    ASSERT_EQ(std::string_view(read.data(), there), std::string_view(bytes).substr(at, there));
    at += there;
  }
}

TEST_F(BinFiles, LargeRawReadsComeWhole) {
  const std::string bytes = patterned(300000);
  folder_.write("a", bytes);
  BinInputFile input(path("a"));
  std::string read(400010, '.');
  ASSERT_EQ(input.ReadRaw(read.data(), 10), 10);
  ASSERT_EQ(input.ReadRaw(read.data() + 10, 400000), 299990);
  EXPECT_EQ(read.substr(0, 300000), bytes);
  EXPECT_EQ(input.Tell(), 300000);
  EXPECT_EQ(input.ReadRaw(read.data(), 10), 0);
  EXPECT_TRUE(input.Seek(299999, true));
  EXPECT_EQ(input.ReadRaw(read.data(), 10), 1);
}

TEST_F(BinFiles, ArraysOfAllSizesAndWidthsComeBack) {
  std::vector<uint64_t> values(20000);
  std::mt19937_64 random(2);
  for (uint64_t& value : values) value = random();
  for (const int width : {1, 3, 4, 7, 8}) {
    BinOutputFile output(path("a"));
    for (size_t i = 0; i < values.size();) {
      const size_t count = std::min<size_t>(values.size() - i, random() % 3000);
      ASSERT_TRUE(output.Write(&values[i], width, static_cast<int64_t>(count)));
      i += count;
    }
    ASSERT_TRUE(output.FlushAndClose());
    BinInputFile input(path("a"));
    ASSERT_EQ(input.GetSize(), 20000 * width);
    std::vector<uint64_t> read(values.size());
    ASSERT_TRUE(input.Read(read.data(), width, 20000));
    const uint64_t mask = width == 8 ? ~uint64_t{0} : (uint64_t{1} << 8 * width) - 1;
    for (size_t i = 0; i < values.size(); ++i) ASSERT_EQ(read[i], values[i] & mask);
  }
}

TEST_F(BinFiles, AFileThatEndsInsideAnArrayKeepsWhatCame) {
  for (const int64_t size : {70001, 262143, 262144, 262151, 1000003}) {
    folder_.write("a", std::string(static_cast<size_t>(size), '\1'));
    BinInputFile input(path("a"));
    std::vector<double> values(150000, 7);
    EXPECT_FALSE(input.Read(values.data(), 150000));
    EXPECT_EQ(std::count(values.begin(), values.end(), 7.0), 150000 - size / 8) << size;
    EXPECT_EQ(input.Tell(), size);
  }
}

// Behind values of all lengths, so that large blocks begin anywhere.
TEST_F(BinFiles, LargeArraysComeBackFromAnyPlace) {
  const std::string bytes = patterned(3000000);
  folder_.write("a", bytes);
  BinInputFile input(path("a"));
  std::mt19937 random(4);
  std::vector<uint8_t> single(1000000);
  std::vector<uint32_t> words(250000);
  for (int round = 0; round < 60; ++round) {
    const size_t start = random() % 1000000;
    const size_t head = random() % 200000;
    const size_t count = random() % 250000;
    ASSERT_TRUE(input.Seek(static_cast<int64_t>(start), true));
    ASSERT_TRUE(input.Read(single.data(), static_cast<int64_t>(head)));
    ASSERT_TRUE(input.Read(words.data(), static_cast<int64_t>(count)));
    ASSERT_EQ(input.Tell(), static_cast<int64_t>(start + head + 4 * count));
    ASSERT_EQ(std::memcmp(single.data(), bytes.data() + start, head), 0);
    for (uint32_t& word : words) word = __builtin_bswap32(word);
    ASSERT_EQ(std::memcmp(words.data(), bytes.data() + start + head, 4 * count), 0);
    ASSERT_TRUE(input.Read(single.data(), 1000000)) << "large arrays of bytes too";
    ASSERT_EQ(std::memcmp(single.data(), bytes.data() + start + head + 4 * count, 1000000), 0);
  }
}

TEST_F(BinFiles, LargeArraysAreUnscrambledToo) {
  const std::string bytes = patterned(1000000);
  folder_.write("a", FlipScrambler::flipped(bytes));
  const tests::ScramblerGuard guard(new FlipScrambler);
  BinInputFile input(path("a"));
  std::string read(1000000, '.');
  ASSERT_TRUE(input.ReadBytes(read.data(), 1000000));
  EXPECT_EQ(read, bytes);
}

TEST_F(BinFiles, ReadingWhatIsOpenForWritingAloneGivesNothing) {
  BinInputFile input(stream("a", "wb"));
  char byte = 'x';
  EXPECT_TRUE(input.IsGood());
  EXPECT_EQ(input.ReadRaw(&byte, 1), 0);
  EXPECT_FALSE(input.ReadBytes(&byte, 1));
  EXPECT_EQ(byte, 'x');
}

TEST_F(BinFiles, AClosedInputGivesNothing) {
  folder_.write("a", "0123456789");
  BinInputFile input(path("a"));
  uint16_t value = 7;
  ASSERT_TRUE(input.Read(&value, 1));
  EXPECT_TRUE(input.Close());
  EXPECT_FALSE(input.Close());
  EXPECT_FALSE(input.IsGood());
  value = 7;
  EXPECT_FALSE(input.Read(&value, 1)) << "what was read ahead is gone too";
  EXPECT_EQ(value, 7);
}

// Writing.

TEST_F(BinFiles, AnOutputMakesOrEmptiesItsFile) {
  folder_.write("a", "old content");
  BinOutputFile output(path("a"));
  EXPECT_TRUE(output.IsGood());
  EXPECT_EQ(content("a"), "");
  ASSERT_TRUE(output.WriteBytes("new", 3));
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), "new");
  EXPECT_FALSE(output.IsGood());
}

TEST_F(BinFiles, DestroyingLosesTheBufferAndNothingElse) {
  {
    BinOutputFile output(path("a"));
    const std::string bytes(2000, 'x');
    ASSERT_TRUE(output.WriteBytes(bytes.data(), 2000));
  }
  EXPECT_EQ(content("a"), std::string(1024, 'x'));
}

TEST_F(BinFiles, FlushBringsAllThatWasWrittenToTheFile) {
  BinOutputFile output(path("a"));
  ASSERT_TRUE(output.WriteBytes("abc", 3));
  EXPECT_EQ(content("a"), "");
  EXPECT_TRUE(output.Flush());
  EXPECT_EQ(content("a"), "abc");
  EXPECT_TRUE(output.Flush()) << "with nothing pending";
  ASSERT_TRUE(output.WriteBytes("d", 1));
  EXPECT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), "abcd");
}

TEST_F(BinFiles, AnOutputOnAStreamGoesOnWhereItStood) {
  folder_.write("a", "0123456789");
  std::FILE* const file = stream("a", "r+b");
  ASSERT_TRUE(platform::seekStream(file, 4, platform::SeekFrom::start));
  BinOutputFile output(file);
  EXPECT_EQ(output.Tell(), 4);
  ASSERT_TRUE(output.WriteBytes("AB", 2));
  EXPECT_EQ(output.CurrentPosition(), 6);
  ASSERT_TRUE(output.Flush());
  EXPECT_EQ(content("a"), "0123AB6789") << "the stream's own buffer too";
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), "0123AB6789");
}

TEST_F(BinFiles, AStreamThatAppendsWritesAtTheEndAndKnowsIt) {
  folder_.write("a", "0123");
  BinOutputFile output(stream("a", "ab"));
  ASSERT_TRUE(output.WriteBytes("ab", 2));
  ASSERT_TRUE(output.Flush());
  EXPECT_EQ(output.Tell(), 6);
  ASSERT_TRUE(output.WriteBytes("cd", 2));
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), "0123abcd");
}

TEST_F(BinFiles, ReadingBackAndWritingFollowEachOtherFreely) {
  BinOutputFile output(path("a"));
  ASSERT_TRUE(output.WriteBytes("0123456789", 10));
  ASSERT_TRUE(output.SeekFlushed(2, true));
  char back[3];
  EXPECT_EQ(output.ReadBack(back, 3), 3);
  EXPECT_EQ(std::string(back, 3), "234");
  ASSERT_TRUE(output.WriteBytes("AB", 2));
  EXPECT_EQ(output.ReadBack(back, 2), 2);
  EXPECT_EQ(std::string(back, 2), "78");
  EXPECT_EQ(output.ReadBack(back, 3), 1);
  EXPECT_EQ(output.ReadBack(back, 3), 0);
  ASSERT_TRUE(output.WriteBytes("C", 1));
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), "01234AB789C");
}

TEST_F(BinFiles, AnOutputStandsBeyondTheEndAndLeavesZeros) {
  BinOutputFile output(path("a"));
  ASSERT_TRUE(output.WriteBytes("ab", 2));
  ASSERT_TRUE(output.SeekFlushed(5, true));
  ASSERT_TRUE(output.WriteBytes("c", 1));
  ASSERT_TRUE(output.SeekFlushed(-3, false));
  EXPECT_EQ(output.Tell(), 3);
  EXPECT_FALSE(output.Seek(-1, true));
  EXPECT_FALSE(output.Seek(-100, false));
  EXPECT_EQ(output.Tell(), 3);
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), std::string("ab\0\0\0c", 6));
}

// Any order of writing, seeking and reading back leaves what a string in memory would hold.
TEST_F(BinFiles, WritesAndSeeksInAnyOrderLeaveWhatWasWritten) {
  std::mt19937 random(3);
  std::string model;
  size_t at = 0;
  BinOutputFile output(path("a"));
  for (int step = 0; step < 20000; ++step) {
    const unsigned what = random() % 10;
    if (what < 6) {
      const std::string bytes(random() % (random() % 50 == 0 ? 100000 : 60),
                              static_cast<char>(random()));
      ASSERT_TRUE(output.WriteBytes(bytes.data(), static_cast<int64_t>(bytes.size())));
      if (model.size() < at + bytes.size()) model.resize(at + bytes.size());
      model.replace(at, bytes.size(), bytes);
      at += bytes.size();
    } else if (what < 9) {
      at = random() % 4 == 0 ? random() % (model.size() + 1)
                             : model.size() - std::min<size_t>(model.size(), random() % 300);
      ASSERT_TRUE(output.SeekFlushed(static_cast<int64_t>(at), true));
    } else {
      std::array<char, 100> back;
      const size_t there = std::min<size_t>(100, model.size() - at);
      ASSERT_EQ(output.ReadBack(back.data(), 100), static_cast<int64_t>(there));
      ASSERT_EQ(std::string_view(back.data(), there), std::string_view(model).substr(at, there));
      at += there;
    }
    ASSERT_EQ(output.CurrentPosition(), static_cast<int64_t>(at));
    if (model.size() > 2000000) break;
  }
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(content("a"), model);
}

TEST_F(BinFiles, GoingBackALittleCostsNoCallOfTheSystem) {
  tests::TestDisk disk;
  BinOutputFile output(path("a"));
  for (int i = 0; i < 1000; ++i) {
    const int64_t start = output.CurrentPosition();
    ASSERT_TRUE(output.Write(&i, 1));
    ASSERT_TRUE(output.SeekFlushed(start, true));
    ASSERT_TRUE(output.Write(&i, 1));
    ASSERT_TRUE(output.SeekFlushed(start + 4, true));
  }
  EXPECT_TRUE(disk.writes.empty());
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(disk.writes, std::vector<size_t>{4000});
}

TEST_F(BinFiles, LargeFilesGoOutInWholeBlocks) {
  tests::TestDisk disk;
  BinOutputFile output(path("a"));
  const std::vector<double> values(30000, 1);
  ASSERT_TRUE(output.Write(values.data(), 3));
  ASSERT_TRUE(output.Write(values.data(), 30000));
  ASSERT_TRUE(output.FlushAndClose());
  EXPECT_EQ(disk.writes, (std::vector<size_t>{65536, 65536, 65536, 43416}));
}

// Of bytes that the disk refused somebody hears, at the latest at the end.
TEST_F(BinFiles, ADiskThatFillsUpAtAnyWriteIsTold) {
  const std::string bytes = patterned(400000);
  bool complete = false;
  for (size_t n = 0; !complete; ++n) {
    ASSERT_LT(n, 50u);
    tests::TestDisk disk;
    disk.refuseFrom(n, 1000 * (n % 2));
    BinOutputFile output(path("a"));
    ASSERT_TRUE(output.IsGood());
    output.WriteBytes(bytes.data(), 200000);
    output.SeekFlushed(100, true);
    output.WriteBytes(bytes.data() + 100, 10);
    output.SeekFlushed(200000, true);
    output.WriteBytes(bytes.data() + 200000, 200000);
    const bool flushed = output.Flush();
    const bool good = output.IsGood();
    const bool closed = output.FlushAndClose();
    complete = disk.writes.size() <= n;
    EXPECT_EQ(good && flushed, complete) << n;
    EXPECT_EQ(closed, complete) << n;
    EXPECT_EQ(content("a") == bytes, complete) << n;
  }
}

TEST_F(BinFiles, ADiskThatIsFullAtTheCloseIsTold) {
  tests::TestDisk disk;
  disk.refuseFrom(0);
  BinOutputFile output(path("a"));
  ASSERT_TRUE(output.WriteBytes("abc", 3));
  ASSERT_TRUE(output.FlushBuffer()) << "nothing has gone to the disk yet";
  EXPECT_TRUE(output.IsGood());
  EXPECT_FALSE(output.Close());
}

TEST_F(BinFiles, WritingToWhatIsOpenForReadingAloneFails) {
  folder_.write("a", "abc");
  BinOutputFile output(stream("a", "rb"));
  ASSERT_TRUE(output.WriteBytes("x", 1));
  EXPECT_FALSE(output.Flush());
  EXPECT_FALSE(output.IsGood());
  EXPECT_FALSE(output.Close());
  EXPECT_EQ(content("a"), "abc");
}

TEST_F(BinFiles, ScrambledFilesComeBackWhateverTheCut) {
  std::vector<int32_t> values(40000);
  std::iota(values.begin(), values.end(), -20000);
  const tests::ScramblerGuard guard(new FlipScrambler);
  {
    BinOutputFile output(path("a"));
    for (size_t i = 0; i < values.size(); i += 16) ASSERT_TRUE(output.Write(&values[i], 16));
    ASSERT_TRUE(output.FlushAndClose());
  }
  BinInputFile input(path("a"));
  std::vector<int32_t> read(values.size());
  ASSERT_TRUE(input.Read(read.data(), 7));
  ASSERT_TRUE(input.Read(read.data() + 7, 39993));
  EXPECT_EQ(read, values);
  InstallScrambler(nullptr);
  int32_t plain = 0;
  ASSERT_TRUE(input.Seek(0, true));
  ASSERT_TRUE(input.Read(&plain, 1));
  EXPECT_NE(plain, -20000);
}

}  // namespace
