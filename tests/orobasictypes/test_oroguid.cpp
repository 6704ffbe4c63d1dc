#include "orobasictypes/oroguid.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "orobasictypes/kelcstring.h"

namespace {

constexpr GUID sample{0x1DBFCAD9, 0x0338, 0x4923, {0xA3, 0x29, 0xEA, 0xEA, 0x81, 0x06, 0x3F, 0xF0}};
constexpr char sampleValues[] =
    "0x1dbfcad9, 0x338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0";

TEST(OroGuid, DefaultIsNull) {
  EXPECT_TRUE(GUID().isNull());
  EXPECT_FALSE(sample.isNull());
}

TEST(OroGuid, EqualInAllFourParts) {
  EXPECT_EQ(sample, GUID(sample));
  GUID other = sample;
  other.data1 ^= 1;
  EXPECT_FALSE(other == sample);
  other = sample;
  other.data2 ^= 1;
  EXPECT_FALSE(other == sample);
  other = sample;
  other.data3 ^= 0x8000;
  EXPECT_FALSE(other == sample);
  for (int i = 0; i < 8; ++i) {
    other = sample;
    other.data4[i] ^= 0x80;
    EXPECT_FALSE(other == sample) << i;
  }
}

TEST(OroGuid, OrderTakesTheFieldsInTurn) {
  const GUID ascending[] = {{0, 0, 0, {}},  {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 255}},
                            {0, 0, 0, {1}}, {0, 0, 0xFFFF, {}},
                            {0, 1, 0, {}},  {0, 0xFFFF, 0, {}},
                            {1, 0, 0, {}},  {0xFFFFFFFF, 0, 0, {}}};
  for (size_t i = 0; i < std::size(ascending); ++i) {
    for (size_t j = 0; j < std::size(ascending); ++j) {
      EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
    }
  }
}

TEST(OroGuid, TextIsElevenValuesWithoutPadding) {
  EXPECT_STREQ(oroGuidText(sample).text(), sampleValues);
  EXPECT_STREQ(oroGuidText(GUID()).text(), "0x0, 0x0, 0x0, 0x0, 0x0, 0x0, 0x0, 0x0, 0x0, 0x0, 0x0");
}

TEST(OroGuid, TextsThatAreAnId) {
  for (const char* text :
       {"{1DBFCAD9-0338-4923-A329-EAEA81063FF0}", "1DBFCAD9-0338-4923-A329-EAEA81063FF0",
        "1dbfcad9-0338-4923-a329-eaea81063ff0", "{1dBfCaD9-0338-4923-A329-eAeA81063fF0}",
        sampleValues, "0X1DBFCAD9, 0X338, 0X4923, 0XA3, 0X29, 0XEA, 0XEA, 0X81, 0X6, 0X3F, 0XF0",
        "0x1dbfcad9, 0x0338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x06, 0x3f, "
        "0xf0"}) {
    GUID id;
    EXPECT_TRUE(oroParseGuid(text, id)) << text;
    EXPECT_EQ(id, sample) << text;
  }
}

TEST(OroGuid, TextsThatAreNoId) {
  const std::string good = "{1DBFCAD9-0338-4923-A329-EAEA81063FF0}";
  std::set<std::string> bad = {
      "",
      "{}",
      "-",
      "1DBFCAD9",
      "{1DBFCAD9-0338-4923-A329-EAEA81063FF0",
      "1DBFCAD9-0338-4923-A329-EAEA81063FF0}",
      "{{1DBFCAD9-0338-4923-A329-EAEA81063FF0}}",
      " {1DBFCAD9-0338-4923-A329-EAEA81063FF0}",
      "{1DBFCAD9-0338-4923-A329-EAEA81063FF0} ",
      "{1DBFCAD903384923A329EAEA81063FF0}",
      "{1DBFCAD9-0338-4923-A32-9EAEA81063FF0}",
      "{1DBFCAD9-338-4923-A329-EAEA81063FF0}",
      "{1DBFCAD9-0338-4923-A329-EAEA81063FFG}",
      "{0x1dbfcad9, 0x338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0}",
      "0x1dbfcad9, 0x338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f",
      "0x1dbfcad9, 0x338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0, 0x1",
      "0x11dbfcad9, 0x338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0",
      "0x1dbfcad9, 0x10338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0",
      "0x1dbfcad9, 0x338, 0x4923, 0x1a3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0",
      "0x, 0x338, 0x4923, 0xa3, 0x29, 0xea, 0xea, 0x81, 0x6, 0x3f, 0xf0",
      "1dbfcad9, 338, 4923, a3, 29, ea, ea, 81, 6, 3f, f0",
      "0x1dbfcad9; 0x338; 0x4923; 0xa3; 0x29; 0xea; 0xea; 0x81; 0x6; 0x3f; 0xf0"};
  for (size_t cut = 0; cut < good.size(); ++cut) bad.insert(good.substr(0, cut));
  for (const std::string& text : bad) {
    GUID id = sample;
    EXPECT_FALSE(oroParseGuid(text, id)) << text;
    EXPECT_EQ(id, sample) << text;
  }
}

TEST(OroGuid, TextReadsBack) {
  GUID id;
  ASSERT_TRUE(oroParseGuid(oroGuidText(sample).text(), id));
  EXPECT_EQ(id, sample);
}

}  // namespace
