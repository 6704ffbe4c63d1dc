#include "tests/tempfolder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/testpaths.h"

namespace {

TEST(TempFolder, WritesAndReadsBytesUnchanged) {
  tests::TempFolder folder;
  std::string bytes("a\r\nb\n\0c", 7);
  folder.write("sub/name.bin", bytes);
  EXPECT_EQ(folder.read("sub/name.bin"), bytes);
}

TEST(TempFolder, ReadingAMissingFileThrows) {
  tests::TempFolder folder;
  EXPECT_THROW(folder.read("missing"), std::runtime_error);
}

TEST(TempFolder, TwoFoldersAreDifferentAndBothGoAway) {
  std::filesystem::path first, second;
  {
    tests::TempFolder a, b;
    first = a.path();
    second = b.path();
    a.write("file", "x");
    EXPECT_NE(first, second);
    EXPECT_TRUE(std::filesystem::is_directory(first));
  }
  EXPECT_FALSE(std::filesystem::exists(first));
  EXPECT_FALSE(std::filesystem::exists(second));
}

TEST(TestPaths, SourceTreeIsThere) {
  EXPECT_TRUE(std::filesystem::exists(tests::sourceDir() / "tests" / "testpaths.h"));
}

}  // namespace
