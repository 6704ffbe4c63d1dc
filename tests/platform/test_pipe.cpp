#include "platform/pipe.h"

#include <gtest/gtest.h>

#include <future>
#include <string>

#include "tests/platform/pipereader.h"

namespace {

TEST(PipeNames, BeginWithThePrefix) {
  EXPECT_TRUE(platform::namesPipe(u"\\\\.\\pipe\\x"));
  EXPECT_TRUE(platform::namesPipe(u"\\\\.\\pipe\\"));
  const std::u16string_view others[] = {
      u"", u"stdout", u"\\\\.\\pipe", u"x\\\\.\\pipe\\x", u"\\\\.\\Pipe\\x", u"//./pipe/x"};
  for (const auto other : others) EXPECT_FALSE(platform::namesPipe(other));
}

TEST(PipeSink, OpensOnlyPipesThatExist) {
  platform::PipeSink sink;
  EXPECT_FALSE(sink.open(u"\\\\.\\pipe\\cowl-nobody-made-this"));
  EXPECT_FALSE(sink.open(std::u16string_view(u"\\\\.\\pipe\\a\0b", 12)));
  EXPECT_FALSE(sink.open(u"file.txt"));
  EXPECT_FALSE(sink.isOpen());
}

TEST(PipeSink, ClosedTakesNothing) {
  platform::PipeSink sink;
  EXPECT_FALSE(sink.write(u"<log>\n"));
  sink.close();
  EXPECT_FALSE(sink.writeBytes("x", 1));
}

TEST(PipeSink, TextArrivesAsLittleEndianUnitsWithoutTerminator) {
  tests::SinkReader reader;
  platform::PipeSink sink;
  ASSERT_TRUE(sink.open(reader.name()));
  EXPECT_TRUE(sink.isOpen());
  EXPECT_TRUE(sink.write(u"<a\n\u20AC>"));
  EXPECT_TRUE(sink.write(u""));
  EXPECT_TRUE(sink.write(u"b"));
  auto bytes = std::async(std::launch::async, [&] { return reader.readAll(); });
  sink.close();
  EXPECT_FALSE(sink.isOpen());
  EXPECT_EQ(bytes.get(), std::string("<\0a\0\n\0\xAC\x20>\0b\0", 12));
}

TEST(PipeSink, MoreThanThePipeHoldsArrivesWhole) {
  tests::SinkReader reader;
  std::string sent(1'000'003, '\0');
  for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<char>(i * 31 >> 3);
  platform::PipeSink sink;
  ASSERT_TRUE(sink.open(reader.name()));
  auto bytes = std::async(std::launch::async, [&] { return reader.readAll(); });
  EXPECT_TRUE(sink.writeBytes(sent.data(), sent.size()));
  sink.close();
  EXPECT_TRUE(bytes.get() == sent);
}

TEST(PipeSink, ReaderThatLeavesMakesWritesFailAndNothingWorse) {
  tests::SinkReader reader;
  platform::PipeSink sink;
  ASSERT_TRUE(sink.open(reader.name()));
  EXPECT_TRUE(sink.write(u"<log>\n"));
  reader.leave();
  EXPECT_FALSE(sink.write(u"</log>\n"));
  EXPECT_FALSE(sink.write(u"</log>\n"));
  EXPECT_TRUE(sink.isOpen());
}

TEST(PipeSink, OpeningAnotherClosesTheFirst) {
  tests::SinkReader reader;
  platform::PipeSink sink;
  ASSERT_TRUE(sink.open(reader.name()));
  EXPECT_TRUE(sink.write(u"x"));
  auto bytes = std::async(std::launch::async, [&] { return reader.readAll(); });
  EXPECT_FALSE(sink.open(u"\\\\.\\pipe\\cowl-nobody-made-this"));
  EXPECT_EQ(bytes.get(), std::string("x\0", 2));
  EXPECT_FALSE(sink.isOpen());
}

}  // namespace
