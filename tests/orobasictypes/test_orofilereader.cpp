#include "orobasictypes/orofilereader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "orobasictypes/oropath.h"
#include "tests/tempfolder.h"

namespace {

class OroFileReaderTest : public testing::Test {
 protected:
  OroPath path(const char* name) {
    return OroPath(OroString(folder_.file(name).u16string().c_str()));
  }
  tests::TempFolder folder_;
  OroFileReader file_;
};

TEST_F(OroFileReaderTest, GivesTheBytesAsTheyAreInBlocks) {
  const std::string bytes("a\r\nb\0\x1A c", 8);
  folder_.write("a", bytes);
  ASSERT_TRUE(file_.open(path("a")));
  EXPECT_EQ(file_.size(), 8);
  std::string got;
  char block[3];
  while (const size_t size = file_.read(block, sizeof(block))) got.append(block, size);
  EXPECT_EQ(got, bytes);
  EXPECT_FALSE(file_.failed());
  EXPECT_EQ(file_.read(block, sizeof(block)), 0u);
}

TEST_F(OroFileReaderTest, AnAbsentFileAndAFolderDoNotOpen) {
  std::filesystem::create_directory(folder_.file("folder"));
  char block[1];
  EXPECT_FALSE(file_.open(path("absent")));
  EXPECT_FALSE(file_.open(path("folder")));
  EXPECT_FALSE(file_.open(OroPath()));
  EXPECT_EQ(file_.read(block, 1), 0u);
  EXPECT_EQ(file_.size(), 0);
}

TEST_F(OroFileReaderTest, ASecondOpenBeginsWithTheOtherFile) {
  folder_.write("a", "first");
  folder_.write("b", "2");
  ASSERT_TRUE(file_.open(path("a")));
  ASSERT_TRUE(file_.open(path("b")));
  char block[8];
  ASSERT_EQ(file_.read(block, sizeof(block)), 1u);
  EXPECT_EQ(block[0], '2');
  file_.close();
  EXPECT_EQ(file_.read(block, sizeof(block)), 0u);
}

}  // namespace
