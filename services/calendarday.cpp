#include "services/calendarday.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int64_t kDay = 86400;  // seconds
constexpr int64_t kYear = 365 * kDay;
constexpr int64_t kLeapYear = 366 * kDay;
constexpr int64_t kFourCenturies = 146097 * kDay;  // after which the calendar repeats itself
constexpr int32_t kDaysOfMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

bool isLeapYear(int64_t year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int64_t lengthOfMonth(int32_t month, int64_t year) {
  return (kDaysOfMonth[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0)) * kDay;
}

template <class To>
To clamped(int64_t value) {
  return static_cast<To>(
      std::clamp<int64_t>(value, std::numeric_limits<To>::min(), std::numeric_limits<To>::max()));
}

}  // namespace

// Nothing is taken off a time before 1970, which callers know.
CalendarDay calendarDayOf(int64_t seconds) {
  int64_t year = 1970;
  if (seconds > 0) {  // a damaged time may lie billions of years ahead
    year += seconds / kFourCenturies * 400;
    seconds %= kFourCenturies;
  }
  for (int64_t length = 0; seconds >= (length = isLeapYear(year) ? kLeapYear : kYear); ++year) {
    seconds -= length;
  }
  int32_t month = 1;
  for (int64_t length = 0; seconds >= (length = lengthOfMonth(month, year)); ++month) {
    seconds -= length;
  }
  return {clamped<int32_t>(year), month, clamped<int32_t>(seconds / kDay + 1)};
}
