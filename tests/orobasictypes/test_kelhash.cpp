#include "orobasictypes/kelhash.h"

#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

uint32_t oneByOne(const std::string& text) {
  uint32_t hash = 5381;
  for (const char c : text) hash = hash * 33 + static_cast<uint32_t>(static_cast<signed char>(c));
  return hash;
}

TEST(KelHash, KnownValues) {
  EXPECT_EQ(kelHashText(nullptr), 0u);
  EXPECT_EQ(kelHashText(""), 5381u);
  EXPECT_EQ(kelHashText("a"), 5381u * 33 + 97);
  EXPECT_EQ(kelHashText("\xFF"), 177572u) << "bytes are signed";
}

TEST(KelHash, EightBytesAtATimeAreAsOneByOne) {
  std::mt19937 random(1);
  for (size_t length = 0; length < 70; ++length) {
    for (int round = 0; round < 50; ++round) {
      std::string text(length, '\0');
      for (char& c : text) c = static_cast<char>(random() % 255 + 1);
      ASSERT_EQ(kelHashText(text.c_str()), oneByOne(text)) << "length " << length;
      ASSERT_EQ(kelHashBytes(text.data(), length), oneByOne(text)) << "length " << length;
    }
  }
  for (const char extreme : {'\x01', '\x7F', '\x80', '\xFF'}) {
    for (size_t length = 0; length < 40; ++length) {
      const std::string text(length, extreme);
      ASSERT_EQ(kelHashText(text.c_str()), oneByOne(text)) << int{extreme} << " " << length;
    }
  }
}

// On the heap without a byte to spare, so that the address sanitizer sees a step too far.
TEST(KelHash, ReadsOnlyTheText) {
  for (size_t length = 0; length < 40; ++length) {
    const auto text = std::make_unique<char[]>(length + 1);
    std::fill_n(text.get(), length, 'x');
    const auto bare = std::make_unique<char[]>(length);
    std::fill_n(bare.get(), length, 'x');
    EXPECT_EQ(kelHashText(text.get()), kelHashBytes(bare.get(), length));
  }
}

TEST(KelHash, ListHashesAsTheJoinedText) {
  EXPECT_EQ(kelHashList(nullptr), 0u);
  const char* const none[] = {nullptr};
  EXPECT_EQ(kelHashList(none), 5381u);
  const char* const list[] = {"Advanced", "/", "", "Batch Processing", "/Enabled", nullptr};
  EXPECT_EQ(kelHashList(list), kelHashText("Advanced/Batch Processing/Enabled"));
}

}  // namespace
