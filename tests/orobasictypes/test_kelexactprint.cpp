#include "orobasictypes/kelexactprint.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

template <class T>
std::string exact(T value) {
  oronumbers::Buffer buffer;
  return std::string(kelExactPrint(value, buffer));
}

TEST(KelExactPrint, PrintsIntegersAsSuch) {
  EXPECT_EQ(exact(2.0f), "2");
  EXPECT_EQ(exact(-0.0f), "0");
  EXPECT_EQ(exact(-0.0), "0");
  EXPECT_EQ(exact(1e15), "1000000000000000");
  EXPECT_EQ(exact(16777216.0f), "16777216");
  EXPECT_EQ(exact(-2147483648.0f), "-2147483648");
  EXPECT_EQ(exact(-9223372036854775808.0), "-9223372036854775808");
}

TEST(KelExactPrint, IntegersBeyondTheRangeAreReals) {
  EXPECT_EQ(exact(2147483648.0f), "2.1474836e+09");
  EXPECT_EQ(exact(1e20f), "1e+20");
  EXPECT_EQ(exact(9223372036854775808.0), "9.223372036854776e+18");
}

TEST(KelExactPrint, TakesTheShortestTextThatReadsBack) {
  EXPECT_EQ(exact(0.1f), "0.1");
  EXPECT_EQ(exact(0.1), "0.1");
  EXPECT_EQ(exact(1.0f / 3), "0.33333334");
  EXPECT_EQ(exact(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(exact(3.14159), "3.14159");
  EXPECT_EQ(exact(1e-7f), "1e-07");
}

TEST(KelExactPrint, NumbersThatAreNoneStayThemselves) {
  EXPECT_EQ(exact(std::numeric_limits<float>::infinity()), "inf");
  EXPECT_EQ(exact(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_NE(exact(std::numeric_limits<float>::quiet_NaN()).find("nan"), std::string::npos);
  EXPECT_NE(exact(std::numeric_limits<double>::quiet_NaN()).find("nan"), std::string::npos);
}

TEST(KelExactPrint, ThrowsWhereFewerDigitsRoundToInfinity) {
  EXPECT_THROW(exact(std::numeric_limits<double>::max()), std::out_of_range);
  EXPECT_EQ(exact(std::numeric_limits<float>::max()), "3.4028235e+38");
  EXPECT_THROW(exact(1.5e308), std::out_of_range) << "one digit makes it 2e+308";
  EXPECT_EQ(exact(1.4e308), "1.4e+308");
}

// The plain way, over a standard stream in the classic locale.
template <class T, class Int>
std::string byStream(T value, int precision) {
  if (value >= -std::ldexp(T(1), std::numeric_limits<Int>::digits) &&
      value < std::ldexp(T(1), std::numeric_limits<Int>::digits) && value == std::trunc(value)) {
    return std::to_string(static_cast<Int>(value));
  }
  std::string best;
  T bestError = std::numeric_limits<T>::max();
  for (; precision >= 0; --precision) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(precision);
    stream << value;
    std::istringstream back(stream.str());
    T read = 0;
    back >> read;
    const T error = std::abs(read - value);
    if (error > bestError) break;
    bestError = error;
    best = stream.str();
  }
  return best;
}

TEST(KelExactPrint, AgreesWithAStandardStreamAndReadsBack) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 2000; ++i) {
    const auto f = std::bit_cast<float>(static_cast<uint32_t>(random()));
    const auto d = std::bit_cast<double>(random());
    if (std::isnormal(f) && std::abs(f) < 1e38f) {
      ASSERT_EQ(exact(f), (byStream<float, int32_t>(f, 9)));
      ASSERT_EQ(kelParseFloat(exact(f)), f) << exact(f);
    }
    if (std::isnormal(d) && std::abs(d) < 1.4e308) {
      ASSERT_EQ(exact(d), (byStream<double, int64_t>(d, 17)));
      ASSERT_EQ(kelParseDouble(exact(d)), d) << exact(d);
    }
    const float everyday = static_cast<float>(static_cast<int32_t>(random() % 2000001) - 1000000) /
                           static_cast<float>(1 + random() % 1000);
    ASSERT_EQ(exact(everyday), (byStream<float, int32_t>(everyday, 9)));
    ASSERT_EQ(kelParseFloat(exact(everyday)), everyday);
  }
}

TEST(KelExactPrint, SubnormalNumbersReadBack) {
  for (const float value : {1e-40f, std::numeric_limits<float>::denorm_min(), 1.1754942e-38f}) {
    EXPECT_EQ(kelParseFloat(exact(value)), value) << exact(value);
  }
  const double smallest = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(kelParseDouble(exact(smallest)), smallest);
}

}  // namespace
