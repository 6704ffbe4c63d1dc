#include "gui/apps/main/productversion.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/process.h"

namespace {

// Where executables have no version block, the version is the build's.
constexpr bool kVersionWithoutBlock = COWL_VERSION_WITHOUT_BLOCK;

using Block = std::vector<uint8_t>;

constexpr std::string_view kName{"P\0r\0o\0d\0u\0c\0t\0V\0e\0r\0s\0i\0o\0n\0\0\0", 30};

std::string wide(std::string_view text) {
  std::string bytes;
  for (const char c : text) bytes += {c, '\0'};
  return bytes;
}

// A zeroed block of the smallest size with the bytes at the place.
Block blockWith(std::size_t place, std::string_view bytes, std::size_t size = 4096) {
  Block block(size);
  for (std::size_t i = 0; i < bytes.size() && place + i < size; ++i) {
    block[place + i] = static_cast<uint8_t>(bytes[i]);
  }
  return block;
}

std::string entry(std::string_view value) { return std::string(kName) + wide(value); }

TEST(ProductVersion, StandsRightBehindItsName) {
  EXPECT_EQ(findProductVersion(blockWith(0, entry("5.3.21.373382"))), "5.3.21.373382");
  EXPECT_EQ(findProductVersion(blockWith(1001, entry("2021, 0, 0"))), "2021, 0, 0");
}

TEST(ProductVersion, IsNotThereInAnEmptyBlock) {
  EXPECT_EQ(findProductVersion(Block(4096)), std::nullopt);
  EXPECT_EQ(findProductVersion(Block()), std::nullopt);
  EXPECT_EQ(findProductVersion(Block(10, 'P')), std::nullopt);
}

TEST(ProductVersion, NeedsTheTerminatorOfItsName) {
  const std::string longer = wide("ProductVersionX");
  EXPECT_EQ(findProductVersion(blockWith(100, longer)), std::nullopt);
}

TEST(ProductVersion, GoesOnTwoBytesBehindALetterThatWasNotTheName) {
  // A letter one byte in front of the name hides it.
  EXPECT_EQ(findProductVersion(blockWith(99, "P" + entry("1"))), std::nullopt);
  EXPECT_EQ(findProductVersion(blockWith(98, "P." + entry("1"))), "1");
}

TEST(ProductVersion, TheFirstOneCounts) {
  Block block = blockWith(100, entry("1"));
  const Block second = blockWith(500, entry("2"));
  for (std::size_t i = 500; i < 600; ++i) block[i] = second[i];
  EXPECT_EQ(findProductVersion(block), "1");
}

TEST(ProductVersion, IsLookedForInTheFirst4096Bytes) {
  EXPECT_EQ(findProductVersion(blockWith(4096 - 30, kName)), "");
  EXPECT_EQ(findProductVersion(blockWith(4096 - 29, kName)), std::nullopt);
  EXPECT_EQ(findProductVersion(blockWith(4096 - 29, entry("1"), 8192)), std::nullopt);
  EXPECT_EQ(findProductVersion(blockWith(4096 - 30, entry("1"), 8192)), "1");
}

TEST(ProductVersion, IsCutAt32CharactersAndAtTheEndOfTheBlock) {
  const std::string digits = "0123456789012345678901234567890123456789";
  EXPECT_EQ(findProductVersion(blockWith(0, entry(digits))), digits.substr(0, 32));
  EXPECT_EQ(findProductVersion(blockWith(4096 - 30 - 4, entry(digits))), "01");
  EXPECT_EQ(findProductVersion(blockWith(4096 - 30 - 5, entry(digits))), "012");
}

TEST(ProductVersion, KeepsTheLowByteOfEachUnit) {
  const std::string bytes = std::string(kName) + std::string("1\x20\xE9\x01\0\0", 6);
  EXPECT_EQ(findProductVersion(blockWith(0, bytes)), "1\xE9");
}

TEST(ProductVersion, IsToldByTheExecutableItself) {
  // The buffer for the path holds 127 units; no executable of a longer path can be read.
  const bool readable = kVersionWithoutBlock || platform::executablePath(1000).size() < 128;
  EXPECT_EQ(productVersionText().value_or("none"), readable ? COWL_EXPECTED_VERSION : "none");
}

TEST(DisplayVersion, EndsAtTheFirstPointElseAtTheFirstComma) {
  EXPECT_EQ(displayVersionOf("5.3.21.373382"), "5");
  EXPECT_EQ(displayVersionOf("2021, 0, 0"), "2021");
  EXPECT_EQ(displayVersionOf("1,2.3"), "1,2");
  EXPECT_EQ(displayVersionOf("2021"), "2021");
  EXPECT_EQ(displayVersionOf(".5"), "");
  EXPECT_EQ(displayVersionOf(""), "");
}

}  // namespace
