#include "components/points/formats/pointreal.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace {

// The same value to the last bit, and the same end, as the library's own.
void expectAsTheLibrary(const std::string& text) {
  const char* const first = text.data();
  const char* const last = first + text.size();
  double expected = 0.5;
  const auto [end, error] = std::from_chars(first, last, expected);
  double value = 0.5;
  const char* const next = pointTakeReal(first, last, value);
  if (error != std::errc{}) {
    EXPECT_EQ(next, nullptr) << text;
    return;
  }
  ASSERT_NE(next, nullptr) << text;
  EXPECT_EQ(next - first, end - first) << text;
  EXPECT_EQ(std::bit_cast<uint64_t>(value), std::bit_cast<uint64_t>(expected)) << text;
}

TEST(PointReal, ReadsWhatTheLibraryReads) {
  const char* const texts[] = {"",
                               "-",
                               "+1",
                               ".",
                               "-.",
                               "x",
                               "0",
                               "-0",
                               "-0.0",
                               "1.",
                               ".5",
                               "-.5x",
                               "12.25 7",
                               "1..5",
                               "1.2.3",
                               "--1",
                               "- 1",
                               "1e3",
                               "1e",
                               "1e+",
                               "1E-3",
                               "1.5e400",
                               "1e-400",
                               "4.9e-324",
                               "inf",
                               "-inf",
                               "nan",
                               "0x10",
                               "637177.98",
                               "9007199254740992",
                               "9007199254740993",
                               "-9007199254740993.0",
                               "900719925474099.3",
                               "0.1234567890123456789",
                               "1234567890123456789",
                               "12345678901234567890",
                               "18446744073709551616",
                               "18446744073709551617.5",
                               "0.0000000000000000000000000001",
                               "0000000000000000000000000000012",
                               "0.000000000000000001",
                               "0.3000000000000000000"};
  for (const char* text : texts) expectAsTheLibrary(text);
}

TEST(PointReal, ReadsManyNumbersAsTheLibraryDoes) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 200000; ++i) {
    const auto decimals = static_cast<size_t>(random() % 22);
    std::string digits = std::to_string(random() >> random() % 64);
    while (digits.size() <= decimals) digits.insert(0, "0");
    std::string text = (random() & 1) != 0 ? "-" : "";
    text += digits.substr(0, digits.size() - decimals);
    if (decimals > 0) text += "." + digits.substr(digits.size() - decimals);
    expectAsTheLibrary(text);
    char shortest[64];
    const double value = std::bit_cast<double>(random());
    std::snprintf(shortest, sizeof shortest, "%.*g", static_cast<int>(random() % 20), value);
    expectAsTheLibrary(shortest);
  }
}

TEST(PointReal, StaysWithinTheText) {
  const std::string text = "123.456";
  for (size_t size = 0; size <= text.size(); ++size) {
    const std::string part = text.substr(0, size);
    expectAsTheLibrary(part);
  }
}

}  // namespace
