#include "orobasictypes/orounits.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

TEST(OroUnits, MeasuresAtEveryAlignmentAndLength) {
  std::vector<char16_t> page(4096, u'x');
  for (size_t start = 0; start < 20; ++start) {
    for (size_t length = 0; length < 70; ++length) {
      page[start + length] = 0;
      EXPECT_EQ(orounits::length(&page[start]), length);
      EXPECT_EQ(orounits::length(&page[start], 5), std::min<size_t>(length, 5));
      EXPECT_EQ(orounits::length(&page[start], SIZE_MAX), length);
      page[start + length] = u'x';
    }
  }
}

TEST(OroUnits, OnlyAWholeZeroUnitEndsAText) {
  const char16_t text[] = {0x0100, 0x0001, 0x1000, 0x0010, 0x00FF,
                           0xFF00, 0x8000, 0x0080, 0x0100, 0};
  EXPECT_EQ(orounits::length(text), 9u);
}

TEST(OroUnits, NothingBehindTheLimitIsTouched) {
  const auto units = std::make_unique<char16_t[]>(3);  // no terminator: the limit is all there is
  for (int i = 0; i < 3; ++i) units[i] = u'a';
  EXPECT_EQ(orounits::length(units.get(), 3), 3u);
  EXPECT_EQ(orounits::length(units.get(), 0), 0u);
}

TEST(OroUnits, WidensEveryByteWithItsSign) {
  std::string bytes;
  for (int i = 0; i < 300; ++i) bytes += static_cast<char>(i * 7);
  for (size_t length = 0; length < bytes.size(); ++length) {
    std::vector<char16_t> out(length + 1, 0x1234);
    orounits::widen(bytes.data(), length, out.data());
    for (size_t i = 0; i < length; ++i) {
      ASSERT_EQ(out[i], static_cast<char16_t>(static_cast<signed char>(bytes[i])));
    }
    ASSERT_EQ(out[length], 0x1234);
  }
}

// Byte by byte, with no thought of speed.
std::optional<std::u16string> decodeSlowly(const std::string& text) {
  std::u16string units;
  for (size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0xC0) {
      units += static_cast<char16_t>(lead & 0x7F);
      continue;
    }
    int more = 0;
    while (more < 6 && (lead & (0x40 >> more)) != 0) ++more;
    if (more > 2 || text.size() - i < static_cast<size_t>(more)) return std::nullopt;
    unsigned value = lead & (0x3Fu >> more);
    for (int k = 0; k < more; ++k)
      value = value << 6 | (static_cast<unsigned char>(text[i++]) & 63);
    if (value < 0x80 || (more == 2 && value < 0x800)) return std::nullopt;
    units += static_cast<char16_t>(value);
  }
  return units;
}

std::optional<std::u16string> decode(const std::string& text) {
  const auto bytes = std::make_unique<char[]>(text.size());  // exact, so that an overrun is seen
  std::memcpy(bytes.get(), text.data(), text.size());
  const auto out = std::make_unique<char16_t[]>(text.size());
  const ptrdiff_t units = orounits::decodeUtf8(bytes.get(), text.size(), out.get());
  if (units < 0) return std::nullopt;
  return std::u16string(out.get(), static_cast<size_t>(units));
}

std::string encodeSlowly(const std::u16string& units) {
  std::string text;
  for (const char16_t unit : units) {
    if (unit < 0x80) {
      text += static_cast<char>(unit);
    } else if (unit < 0x800) {
      text += static_cast<char>(0xC0 + unit / 64);
      text += static_cast<char>(0x80 + unit % 64);
    } else {
      text += static_cast<char>(0xE0 + unit / 4096);
      text += static_cast<char>(0x80 + unit / 64 % 64);
      text += static_cast<char>(0x80 + unit % 64);
    }
  }
  return text;
}

std::string encode(const std::u16string& units) {
  const auto out = std::make_unique<char[]>(3 * units.size());
  return std::string(out.get(), orounits::encodeUtf8(units.data(), units.size(), out.get()));
}

TEST(OroUnits, DecodesEveryLeadByteByTheRule) {
  for (int lead = 0; lead < 256; ++lead) {
    for (const char* const rest : {"", "\xAC", "\x82\xAC", "AB", "\x80\x80", "ABC"}) {
      for (const int before : {0, 1, 15, 16, 17}) {
        const std::string text =
            std::string(static_cast<size_t>(before), 'x') + static_cast<char>(lead) + rest;
        ASSERT_EQ(decode(text), decodeSlowly(text)) << lead << " " << before;
      }
    }
  }
}

TEST(OroUnits, RandomBytesDecodeByTheRule) {
  std::mt19937 random(3);
  int refused = 0;
  for (int i = 0; i < 40000; ++i) {
    std::string text;
    const bool hostile = i % 2 == 0;
    for (int length = static_cast<int>(random() % 60); length > 0; --length) {
      const unsigned kind = random() % 8;
      if (hostile && kind == 0) {
        text += static_cast<char>(random());
      } else if (kind == 1) {
        text += encodeSlowly({static_cast<char16_t>(0x80 + random() % 0xFF80)});
      } else {
        text += static_cast<char>(1 + random() % 127);
      }
    }
    const auto expected = decodeSlowly(text);
    refused += !expected.has_value();
    ASSERT_EQ(decode(text), expected) << i;
  }
  EXPECT_GT(refused, 1000);
}

TEST(OroUnits, EveryUnitEncodesByItself) {
  std::u16string all;
  for (int unit = 1; unit < 0x10000; ++unit) all += static_cast<char16_t>(unit);
  EXPECT_EQ(encode(all), encodeSlowly(all));
}

TEST(OroUnits, RandomUnitsEncodeAndDecodeBack) {
  std::mt19937 random(4);
  for (int i = 0; i < 20000; ++i) {
    std::u16string units;
    for (int length = static_cast<int>(random() % 50); length > 0; --length) {
      const unsigned widths[] = {0x7F, 0x7F, 0x7F, 0x7F, 0x7FF, 0xFFFF};
      units += static_cast<char16_t>(1 + random() % widths[random() % 6]);
    }
    const std::string text = encode(units);
    ASSERT_EQ(text, encodeSlowly(units));
    ASSERT_EQ(decode(text), units);
  }
}

TEST(OroUnits, DropsWhatIsNotAscii) {
  std::mt19937 random(9);
  for (int i = 0; i < 5000; ++i) {
    std::u16string units;
    std::string expected;
    for (int length = static_cast<int>(random() % 40); length > 0; --length) {
      const auto unit = static_cast<char16_t>(random() % (i % 2 == 0 ? 0x7F : 0x101) + 1);
      units += unit;
      if (unit < 0x80) expected += static_cast<char>(unit);
    }
    const auto out = std::make_unique<char[]>(units.size());
    const size_t length = orounits::dropToAscii(units.data(), units.size(), out.get());
    ASSERT_EQ(std::string(out.get(), length), expected);
  }
}

}  // namespace
