#include "platform/clock.h"

#include "platform/posix/posixgate.h"

namespace platform {

LocalTime localTime() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  tm parts = {};
  localtime_r(&now.tv_sec, &parts);
  return {parts.tm_hour, parts.tm_min, parts.tm_sec, static_cast<int>(now.tv_nsec / 1000000)};
}

}  // namespace platform
