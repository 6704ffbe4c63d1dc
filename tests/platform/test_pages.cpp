#include "platform/pages.h"

#include <cstring>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "platform/text.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

constexpr std::size_t kUnit = platform::pageUnit;
constexpr std::size_t kLarge = platform::largePage;

bool isZero(const char* pages, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; i += 509) {
    if (pages[i] != 0) return false;
  }
  return pages[bytes - 1] == 0;
}

TEST(Pages, ReadAsZeroAndTakeRoomWhereTheyAreWritten) {
  constexpr std::size_t bytes = 8 * kLarge + kUnit;
  char* const pages = static_cast<char*>(platform::takePages(bytes));
  ASSERT_NE(pages, nullptr);
  EXPECT_EQ(platform::residentBytes(pages, bytes), 0u);
  EXPECT_TRUE(isZero(pages, bytes));
  std::memset(pages, 1, kUnit);
  EXPECT_GE(platform::residentBytes(pages, bytes), kUnit);
  platform::givePages(pages, bytes);
}

TEST(Pages, WholeLargePagesCanBeUsed) {
  for (int i = 0; i < 5; ++i) {
    char* const pages = static_cast<char*>(platform::takePages(kLarge));
    ASSERT_NE(pages, nullptr);
    std::memset(pages, i, kLarge);
    EXPECT_EQ(platform::residentBytes(pages, kLarge), kLarge);
    platform::givePages(pages, kLarge);
  }
}

TEST(Pages, ContentsStayWhenTheyAreMovedOut) {
  char* const pages = static_cast<char*>(platform::takePages(kLarge));
  ASSERT_NE(pages, nullptr);
  std::memset(pages, 7, kLarge);
  const std::size_t gone = platform::pageOut(pages, kLarge);
  EXPECT_LE(gone, kLarge);
  EXPECT_LE(platform::residentBytes(pages, kLarge), kLarge - gone);
  for (std::size_t i = 0; i < kLarge; i += 1000) ASSERT_EQ(pages[i], 7);
  platform::givePages(pages, kLarge);
}

TEST(Pages, AreRefusedBeyondTheAddressSpace) {
  EXPECT_EQ(platform::takePages(std::size_t{1} << 62), nullptr);
}

class PageFileTest : public testing::Test {
 protected:
  std::u16string path(const char* name) {
    return platform::fromSystemPath(folder_.file(name).string());
  }

  tests::TempFolder folder_;
  platform::PageFile file_;
};

TEST_F(PageFileTest, IsGoneWhenItIsClosed) {
  ASSERT_TRUE(file_.open(path("pages")));
  EXPECT_TRUE(file_.isOpen());
  EXPECT_FALSE(file_.open(path("other"))) << "is open already";
  ASSERT_TRUE(file_.grow(kLarge));
  char* const pages = static_cast<char*>(file_.map(0, kLarge));
  ASSERT_NE(pages, nullptr);
  std::memset(pages, 3, kLarge);
  file_.unmap(pages, kLarge, false);
  file_.close();
  EXPECT_FALSE(file_.isOpen());
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(PageFileTest, DoesNotTakeAFileThatIsThereNorAFolderThatIsNot) {
  folder_.write("taken", "precious");
  EXPECT_FALSE(file_.open(path("taken")));
  EXPECT_FALSE(file_.open(path("absent/pages")));
  EXPECT_EQ(folder_.read("taken"), "precious");
}

TEST_F(PageFileTest, PartsHaveTheirOwnContents) {
  ASSERT_TRUE(file_.open(path("pages")));
  ASSERT_TRUE(file_.grow(3 * kUnit));
  ASSERT_TRUE(file_.grow(kUnit)) << "never shrinks";
  char* parts[3] = {};
  for (int i = 0; i < 3; ++i) {
    parts[i] = static_cast<char*>(file_.map(static_cast<std::int64_t>(kUnit) * i, kUnit));
    ASSERT_NE(parts[i], nullptr);
    EXPECT_TRUE(isZero(parts[i], kUnit));
    std::memset(parts[i], i + 1, kUnit);
  }
  file_.unmap(parts[1], kUnit, false);
  parts[1] = static_cast<char*>(file_.map(kUnit, kUnit));
  ASSERT_NE(parts[1], nullptr);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(parts[i][0], i + 1);
    EXPECT_EQ(parts[i][kUnit - 1], i + 1);
  }
  for (char* part : parts) file_.unmap(part, kUnit, false);
}

TEST_F(PageFileTest, WhatIsDiscardedReadsAsZero) {
  ASSERT_TRUE(file_.open(path("pages")));
  ASSERT_TRUE(file_.grow(2 * kUnit));
  char* pages = static_cast<char*>(file_.map(0, 2 * kUnit));
  ASSERT_NE(pages, nullptr);
  std::memset(pages, 9, 2 * kUnit);
  file_.unmap(pages, 2 * kUnit, false);
  ASSERT_TRUE(file_.discard(kUnit, kUnit));
  pages = static_cast<char*>(file_.map(0, 2 * kUnit));
  ASSERT_NE(pages, nullptr);
  EXPECT_EQ(pages[kUnit - 1], 9);
  EXPECT_TRUE(isZero(pages + kUnit, kUnit));
  file_.unmap(pages, 2 * kUnit, false);
}

TEST_F(PageFileTest, ContentsStayWhenTheyAreMovedOut) {
  ASSERT_TRUE(file_.open(path("pages")));
  ASSERT_TRUE(file_.grow(kLarge));
  char* const pages = static_cast<char*>(file_.map(0, kLarge));
  ASSERT_NE(pages, nullptr);
  std::memset(pages, 5, kLarge);
  const std::size_t before = platform::residentBytes(pages, kLarge);
  EXPECT_EQ(before, kLarge);
  const std::size_t gone = file_.pageOut(pages, 0, kLarge);
  EXPECT_EQ(platform::residentBytes(pages, kLarge), before - gone);
  for (std::size_t i = 0; i < kLarge; i += 1000) ASSERT_EQ(pages[i], 5);
  file_.unmap(pages, kLarge, false);
}

TEST_F(PageFileTest, FullDiskLeavesTheFileAsItWas) {
  ASSERT_TRUE(file_.open(path("pages")));
  ASSERT_TRUE(file_.grow(kUnit));
  {
    tests::TestDisk disk;
    disk.refuseFrom(0, kUnit - 1);
    EXPECT_FALSE(file_.grow(2 * kUnit));
    EXPECT_EQ(disk.writes.at(0), kUnit);
  }
  EXPECT_TRUE(file_.grow(2 * kUnit));
}

TEST_F(PageFileTest, AddressesCanBeHeldBack) {
  ASSERT_TRUE(file_.open(path("pages")));
  ASSERT_TRUE(file_.grow(kUnit));
  void* const pages = file_.map(0, kUnit);
  ASSERT_NE(pages, nullptr);
  file_.unmap(pages, kUnit, true);
  for (int i = 0; i < 20; ++i) {
    char* const others = static_cast<char*>(platform::takePages(kUnit));
    EXPECT_NE(others, pages);  // not given back: the next one would lie there
    others[0] = 1;
  }
}

}  // namespace
