#include "orobasictypes/orostringformat.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

#include "orobasictypes/orostring.h"
#include "tests/orobasictypes/texts.h"

namespace {

using tests::units;

OroStringFormat format(const char* layout, bool exponent = false, bool force = false) {
  return OroStringFormat(KelCString::borrow(layout), exponent, force);
}

TEST(OroStringFormat, PrintsIntegers) {
  EXPECT_EQ(units(OroString(42, format("8"))), u"      42");
  EXPECT_EQ(units(OroString(-42, format("-8"))), u"-42     ");
  EXPECT_EQ(units(OroString(42L, format("08"))), u"00000042");
  EXPECT_EQ(units(OroString(42LL, format("+.4"))), u"+0042");
  EXPECT_EQ(units(OroString(std::numeric_limits<long long>::min(), format(""))),
            u"-9223372036854775808");
  EXPECT_EQ(units(OroString(7, OroStringFormat())), u"7");
}

TEST(OroStringFormat, LettersOfReals) {
  EXPECT_EQ(units(OroString(1234.5, format("8.3"))), u"1234.500");
  EXPECT_EQ(units(OroString(1234.5, format("8.3", false, true))), u"1234.500");
  EXPECT_EQ(units(OroString(1234.5, format(".3", true, true))), u"1.234e+03");
  EXPECT_EQ(units(OroString(1234.5, format(".6", true))), u"1234.5");
  EXPECT_EQ(units(OroString(1e11, format("", true))), u"1e+11");
  EXPECT_EQ(units(OroString(0.0, format("", true, true))), u"0.000000e+00");
  EXPECT_EQ(units(OroString(std::numeric_limits<double>::infinity(), format("8.3"))), u"     inf");
}

TEST(OroStringFormat, TextsOfAnyLengthFit) {
  for (const int width : {38, 39, 40, 41, 79, 80, 81, 159, 160, 4095}) {
    const OroString text(1.5, format((std::to_string(width) + ".1").c_str()));
    EXPECT_EQ(text.length(), width);
    EXPECT_TRUE(units(text).ends_with(u" 1.5"));
    EXPECT_EQ(OroString(7, format(std::to_string(width).c_str())).length(), width);
  }
  EXPECT_EQ(OroString(1e300, format(".2")).length(), 304);
}

TEST(OroStringFormat, TheSpecificationEndsAtAnythingElse) {
  EXPECT_EQ(units(OroString(42, format("5n"))), u"   42");
  EXPECT_EQ(units(OroString(42, format("5d%s%n"))), u"   42");
  EXPECT_EQ(units(OroString(42, format("*"))), u"42");
  EXPECT_EQ(units(OroString(1.5, format("8.*"))), u"       2");
  EXPECT_EQ(units(OroString(1.5, format("hh.1"))), u"1.500000");
  EXPECT_EQ(units(OroString(1.5, format(nullptr))), u"1.500000");
}

TEST(OroStringFormat, WidthAndPrecisionAreBounded) {
  EXPECT_EQ(OroString(1, format("4096")).length(), 4095);
  EXPECT_EQ(OroString(1, format("99999999999999999999")).length(), 4095);
  EXPECT_EQ(OroString(1.5, format("1.2000000000")).length(), 4097);
  EXPECT_EQ(OroString(1e308, format("99999.99999")).length(), 309 + 1 + 4095);
}

TEST(OroStringFormat, DoesNotFollowTheLocaleOfTheProcess) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de-DE", "German", ""}) {
    if (std::setlocale(LC_ALL, name) == nullptr) continue;
    EXPECT_EQ(units(OroString(1234.5, format("8.2"))), u" 1234.50") << name;
    EXPECT_EQ(units(OroString(1234.5)), u"1234.500000") << name;
    EXPECT_EQ(OroString("1234.5").toDouble(), 1234.5) << name;
    EXPECT_EQ(KelCString::borrow("1234.5").toDouble(), 1234.5) << name;
    EXPECT_STREQ(KelCString(0.5).text(), "0.500000") << name;
  }
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
