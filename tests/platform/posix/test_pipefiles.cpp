// What stands for a named pipe on Linux: a FIFO or a socket in the folder for temporary files.

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "platform/pipe.h"
#include "platform/posix/posixgate.h"
#include "platform/process.h"
#include "tests/tempfolder.h"

namespace {

class PipeFiles : public testing::Test {
 protected:
  PipeFiles() { platform::setEnvironment("TMPDIR", folder_.path().string()); }
  ~PipeFiles() override { platform::setEnvironment("TMPDIR", before_); }

  const std::optional<std::string> before_ = platform::environment("TMPDIR");
  tests::TempFolder folder_;
  platform::PipeSink sink_;
};

TEST_F(PipeFiles, FifoWithoutAReaderDoesNotOpen) {
  ASSERT_EQ(mkfifo(folder_.file("lonely").c_str(), 0600), 0);
  EXPECT_FALSE(sink_.open(u"\\\\.\\pipe\\lonely"));
}

TEST_F(PipeFiles, PlainFilesAndFoldersAreNoPipes) {
  folder_.write("plain", "bytes");
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_FALSE(sink_.open(u"\\\\.\\pipe\\plain"));
  EXPECT_FALSE(sink_.open(u"\\\\.\\pipe\\folder"));
  EXPECT_EQ(folder_.read("plain"), "bytes");
}

TEST_F(PipeFiles, NoNameIsNoPipe) { EXPECT_FALSE(sink_.open(u"\\\\.\\pipe\\")); }

TEST_F(PipeFiles, BackslashesInTheNameAreFolders) {
  std::filesystem::create_directory(folder_.file("below"));
  const std::string file = folder_.file("below/fifo").string();
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const int reader = open(file.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_TRUE(sink_.open(u"\\\\.\\pipe\\below\\fifo"));
  close(reader);
}

TEST_F(PipeFiles, WithoutTheVariableTheyLieInTmp) {
  const std::string name = "cowl-test-fifo-" + std::to_string(platform::processId());
  const std::string file = "/tmp/" + name;
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const int reader = open(file.c_str(), O_RDONLY | O_NONBLOCK);
  const std::u16string pipe = u"\\\\.\\pipe\\" + std::u16string(name.begin(), name.end());
  EXPECT_FALSE(sink_.open(pipe)) << "looked for in the folder of the variable";
  platform::setEnvironment("TMPDIR", std::nullopt);
  EXPECT_TRUE(sink_.open(pipe));
  platform::setEnvironment("TMPDIR", "");
  EXPECT_TRUE(sink_.open(pipe));
  close(reader);
  unlink(file.c_str());
}

class SocketFiles : public PipeFiles {
 protected:
  int listenOn(const std::string& name) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string file = folder_.file(name).string();
    file.copy(address.sun_path, sizeof address.sun_path - 1);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(listener, 1);
    return listener;
  }
};

TEST_F(SocketFiles, TakeTheBytes) {
  const int listener = listenOn("socket");
  ASSERT_TRUE(sink_.open(u"\\\\.\\pipe\\socket"));
  EXPECT_TRUE(sink_.write(u"ab"));
  sink_.close();
  const int reader = accept(listener, nullptr, nullptr);
  char bytes[8] = {};
  EXPECT_EQ(read(reader, bytes, sizeof bytes), 4);
  EXPECT_EQ(std::string(bytes, 4), std::string("a\0b\0", 4));
  close(reader);
  close(listener);
}

TEST_F(SocketFiles, ReaderThatLeavesMakesWritesFail) {
  const int listener = listenOn("socket");
  ASSERT_TRUE(sink_.open(u"\\\\.\\pipe\\socket"));
  close(accept(listener, nullptr, nullptr));
  EXPECT_FALSE(sink_.write(u"ab"));
  close(listener);
}

TEST_F(SocketFiles, WithoutAListenerOrWithTooLongANameDoNotOpen) {
  close(listenOn("dead"));
  EXPECT_FALSE(sink_.open(u"\\\\.\\pipe\\dead"));
  EXPECT_FALSE(sink_.open(u"\\\\.\\pipe\\" + std::u16string(300, u'x')));
}

}  // namespace
