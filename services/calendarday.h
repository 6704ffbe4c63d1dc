// CalendarDay: a day of the Gregorian calendar, from a time as file systems tell it. A pure
// computation in universal time; any thread.
#pragma once

#include <cstdint>

struct CalendarDay {
  int32_t year;
  int32_t month;  // 1 to 12
  int32_t day;    // 1 to 31; of a time before 1970: 1 or less, counted from 1 January 1970
};

// The day of a time in seconds since 1970. Years that have no place in the result end at the last
// one that has.
CalendarDay calendarDayOf(int64_t seconds);
