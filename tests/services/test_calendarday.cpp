#include "services/calendarday.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>

bool operator==(const CalendarDay& a, const CalendarDay& b) {
  return a.year == b.year && a.month == b.month && a.day == b.day;
}

void PrintTo(const CalendarDay& date, std::ostream* out) {
  *out << date.year << "-" << date.month << "-" << date.day;
}

namespace {

constexpr int64_t kDay = 86400;

TEST(CalendarDay, IsThatOfTheGregorianCalendar) {
  const struct {
    int64_t seconds;
    CalendarDay date;
  } rows[] = {
      {0, {1970, 1, 1}},
      {kDay - 1, {1970, 1, 1}},
      {kDay, {1970, 1, 2}},
      {31 * kDay, {1970, 2, 1}},
      {365 * kDay - 1, {1970, 12, 31}},
      {365 * kDay, {1971, 1, 1}},
      {951782400, {2000, 2, 29}},  // a leap year although it is divisible by 100
      {951782400 + kDay, {2000, 3, 1}},
      {1709164800, {2024, 2, 29}},
      {1709164800 + kDay - 1, {2024, 2, 29}},
      {1735603200, {2024, 12, 31}},
      {1735603200 + kDay, {2025, 1, 1}},
      {4107456000, {2100, 2, 28}},  // none although it is divisible by 4
      {4107456000 + kDay, {2100, 3, 1}},
      {13574563200, {2400, 2, 29}},
  };
  for (const auto& row : rows) EXPECT_EQ(calendarDayOf(row.seconds), row.date) << row.seconds;
}

TEST(CalendarDay, FollowsDayByDayForFiveCenturies) {
  for (int64_t day = 0; day < 500 * 366; ++day) {
    const std::chrono::year_month_day expected{std::chrono::sys_days(std::chrono::days(day))};
    const CalendarDay date = {static_cast<int>(expected.year()),
                              static_cast<int>(static_cast<unsigned>(expected.month())),
                              static_cast<int>(static_cast<unsigned>(expected.day()))};
    ASSERT_EQ(calendarDayOf(day * kDay + kDay / 2), date);
  }
}

TEST(CalendarDay, BeforeItsBeginningDaysCountFromTheFirst) {
  EXPECT_EQ(calendarDayOf(-1), (CalendarDay{1970, 1, 1}));
  EXPECT_EQ(calendarDayOf(-kDay), (CalendarDay{1970, 1, 0}));
  EXPECT_EQ(calendarDayOf(-3 * kDay), (CalendarDay{1970, 1, -2}));
}

// A file system may hold any number.
TEST(CalendarDay, AnyTimeHasADayAndHasItAtOnce) {
  const CalendarDay last = calendarDayOf(std::numeric_limits<int64_t>::max());
  EXPECT_EQ(last.year, std::numeric_limits<int32_t>::max());
  EXPECT_GE(last.month, 1);
  EXPECT_LE(last.month, 12);
  EXPECT_GE(last.day, 1);
  EXPECT_LE(last.day, 31);
  const CalendarDay first = calendarDayOf(std::numeric_limits<int64_t>::min());
  EXPECT_EQ(first, (CalendarDay{1970, 1, std::numeric_limits<int32_t>::min()}));
}

}  // namespace
