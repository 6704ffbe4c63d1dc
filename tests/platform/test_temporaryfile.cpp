#include "platform/temporaryfile.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "platform/descriptor.h"
#include "platform/files.h"
#include "platform/hooks.h"
#include "platform/text.h"
#include "tests/tempfolder.h"

namespace {

class TemporaryFile : public testing::Test {
 protected:
  std::u16string path(const char* name) {
    return platform::fromSystemPath(folder_.file(name).string());
  }
  bool isEmptyFolder() { return std::filesystem::is_empty(folder_.path()); }

  tests::TempFolder folder_;
};

TEST_F(TemporaryFile, TakesAndGivesBytesAndIsGoneWhenClosed) {
  const int file = platform::openTemporaryDescriptor(path("block"));
  ASSERT_GE(file, 0);
  const std::string bytes("a\nb\r\nc\0d", 8);
  EXPECT_EQ(platform::writeDescriptor(file, bytes.data(), bytes.size()), 8);
  EXPECT_EQ(platform::seekDescriptor(file, 0, platform::SeekFrom::start), 0);
  std::string back(20, '?');
  EXPECT_EQ(platform::readDescriptor(file, back.data(), back.size()), 8);
  EXPECT_EQ(back.substr(0, 8), bytes) << "no line ends are translated";
  EXPECT_TRUE(platform::closeDescriptor(file));
  EXPECT_TRUE(isEmptyFolder());
}

TEST_F(TemporaryFile, DoesNotOpenInAFolderThatIsNotThere) {
  EXPECT_LT(platform::openTemporaryDescriptor(path("absent/block")), 0);
  EXPECT_LT(platform::openTemporaryDescriptor(u""), 0);
}

TEST_F(TemporaryFile, IsOpenedByTheHook) {
  const platform::HookGuard guard(
      platform::temporaryFileHook, +[](std::u16string_view name) { return name == u"x" ? 42 : 1; });
  EXPECT_EQ(platform::openTemporaryDescriptor(u"x"), 42);
}

}  // namespace
