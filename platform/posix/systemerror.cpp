#include "platform/systemerror.h"

#include <cerrno>
#include <system_error>

#include "platform/text.h"

namespace platform {

void clearSystemError() { errno = 0; }

std::u16string systemErrorText() {
  const int number = errno;
  if (number == 0) return {};
  return fromSystem(std::generic_category().message(number));
}

}  // namespace platform
