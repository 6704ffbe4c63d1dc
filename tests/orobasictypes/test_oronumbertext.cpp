#include "orobasictypes/oronumbertext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

using oronumbers::Parsed;

constexpr double infinity = std::numeric_limits<double>::infinity();

struct RealRow {
  const char* text;
  Parsed parsed;
  double value;
};

TEST(OroNumberText, ReadsRealsAsTheCLibraryDoes) {
  for (const RealRow& row : {
           RealRow{"1.5", Parsed::ok, 1.5},
           RealRow{" \t\n\v\f\r-2.5e-1rest", Parsed::ok, -0.25},
           RealRow{"+3", Parsed::ok, 3},
           RealRow{"1e", Parsed::ok, 1},
           RealRow{"1e+", Parsed::ok, 1},
           RealRow{"1.", Parsed::ok, 1},
           RealRow{".5", Parsed::ok, 0.5},
           RealRow{".", Parsed::noNumber, 0},
           RealRow{"", Parsed::noNumber, 0},
           RealRow{"-", Parsed::noNumber, 0},
           RealRow{"--1", Parsed::noNumber, 0},
           RealRow{"+-1", Parsed::noNumber, 0},
           RealRow{"- 1", Parsed::noNumber, 0},
           RealRow{"abc", Parsed::noNumber, 0},
           RealRow{"0x1.8p1", Parsed::ok, 3},
           RealRow{"-0X.8p1", Parsed::ok, -1},
           RealRow{"0x", Parsed::ok, 0},
           RealRow{"0xg", Parsed::ok, 0},
           RealRow{"0x-5", Parsed::ok, 0},
           RealRow{"INFinity", Parsed::ok, infinity},
           RealRow{"-infinite", Parsed::ok, -infinity},
           RealRow{"1e400", Parsed::outOfRange, infinity},
           RealRow{"-1e400", Parsed::outOfRange, -infinity},
           RealRow{"1e-400", Parsed::outOfRange, 0},
           RealRow{"0x1p99999", Parsed::outOfRange, infinity},
           RealRow{"0x1p-99999", Parsed::outOfRange, 0},
           RealRow{"1e99999999999999999999", Parsed::outOfRange, infinity},
           RealRow{"1e-99999999999999999999", Parsed::outOfRange, 0},
           RealRow{"0e99999999999999999999", Parsed::ok, 0},
           RealRow{"0.000", Parsed::ok, 0},
           RealRow{"4e-320", Parsed::ok, 4e-320},
           RealRow{"-0.696975654", Parsed::ok, -0.696975654},
       }) {
    double value = 77;
    EXPECT_EQ(oronumbers::parseReal(row.text, value), row.parsed) << row.text;
    EXPECT_EQ(value, row.value) << row.text;
  }
}

TEST(OroNumberText, FloatsHaveTheirOwnRange) {
  float value = 0;
  EXPECT_EQ(oronumbers::parseReal("1e39", value), Parsed::outOfRange);
  EXPECT_EQ(value, std::numeric_limits<float>::infinity());
  EXPECT_EQ(oronumbers::parseReal("1e-50", value), Parsed::outOfRange);
  EXPECT_EQ(value, 0.0f);
  EXPECT_EQ(oronumbers::parseReal("1e-40", value), Parsed::ok);
  EXPECT_EQ(value, 1e-40f);
}

TEST(OroNumberText, LongTextsOfDigitsAreTakenWhole) {
  double value = 0;
  EXPECT_EQ(oronumbers::parseReal(std::string(100000, '9'), value), Parsed::outOfRange);
  EXPECT_EQ(value, infinity);
  EXPECT_EQ(oronumbers::parseReal("0." + std::string(100000, '0') + "1", value),
            Parsed::outOfRange);
  EXPECT_EQ(value, 0);
  EXPECT_EQ(oronumbers::parseReal(std::string(5000, '0') + "1.5", value), Parsed::ok);
  EXPECT_EQ(value, 1.5);
}

TEST(OroNumberText, RandomRealsReadAsWithTheCLibrary) {
  std::mt19937 random(5);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (int length = static_cast<int>(random() % 12); length > 0; --length) {
      text += "0123456789.eE+-xpin fa"[random() % 22];
    }
    double value = 0;
    const bool found = oronumbers::parseReal(text, value) != Parsed::noNumber;
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    ASSERT_EQ(found, end != text.c_str()) << text;
    if (std::isnan(expected)) {
      ASSERT_TRUE(std::isnan(value)) << text;
    } else {
      ASSERT_EQ(value, expected) << text;
    }
  }
}

struct IntRow {
  const char* text;
  bool found;
  int32_t value;
};

TEST(OroNumberText, ReadsIntegersInThreeBases) {
  for (const IntRow& row : {
           IntRow{"42", true, 42},
           IntRow{" -42 rest", true, -42},
           IntRow{"+7", true, 7},
           IntRow{"010", true, 8},
           IntRow{"08", true, 0},
           IntRow{"0x10", true, 16},
           IntRow{"-0XfF", true, -255},
           IntRow{"0x", true, 0},
           IntRow{"0xg", true, 0},
           IntRow{"abc", false, 0},
           IntRow{"", false, 0},
           IntRow{"-", false, 0},
           IntRow{"- 1", false, 0},
           IntRow{"4294967295", true, -1},
           IntRow{"99999999999", true, 1215752191},
           IntRow{"9223372036854775807", true, -1},
           IntRow{"99999999999999999999", true, -1},
           IntRow{"-99999999999999999999", true, 0},
           IntRow{"-2147483648", true, INT32_MIN},
       }) {
    int32_t value = 77;
    EXPECT_EQ(oronumbers::parseInt(row.text, value), row.found) << row.text;
    EXPECT_EQ(value, row.value) << row.text;
  }
}

TEST(OroNumberText, DecimalIntegersHaveNoPrefixes) {
  int32_t value = 0;
  EXPECT_TRUE(oronumbers::parseDecimal("010", value));
  EXPECT_EQ(value, 10);
  EXPECT_TRUE(oronumbers::parseDecimal("0x10", value));
  EXPECT_EQ(value, 0);
  EXPECT_FALSE(oronumbers::parseDecimal("x", value));
}

TEST(OroNumberText, PrintsAsTheCLibraryDoes) {
  std::mt19937_64 random(11);
  oronumbers::Buffer buffer;
  char expected[400];
  for (int i = 0; i < 5000; ++i) {
    const auto value =
        std::ldexp(static_cast<double>(random()) - 9.2e18, static_cast<int>(random() % 400) - 260);
    std::snprintf(expected, sizeof expected, "%f", value);
    ASSERT_EQ(oronumbers::printFixed(value, buffer), expected);
    std::snprintf(expected, sizeof expected, "%e", value);
    ASSERT_EQ(oronumbers::printScientific(value, buffer), expected);
  }
  EXPECT_EQ(oronumbers::printFixed(-std::numeric_limits<double>::max(), buffer).size(), 317u);
  EXPECT_EQ(oronumbers::printFixed(infinity, buffer), "inf");
  EXPECT_EQ(oronumbers::printScientific(1e11, buffer), "1.000000e+11");
  EXPECT_EQ(oronumbers::printInt(INT64_MIN, buffer), "-9223372036854775808");
  EXPECT_EQ(oronumbers::printUnsigned(UINT64_MAX, buffer), "18446744073709551615");
}

}  // namespace
