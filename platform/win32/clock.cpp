#include "platform/clock.h"

#include "platform/win32/win32gate.h"

namespace platform {

LocalTime localTime() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  return {now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

}  // namespace platform
