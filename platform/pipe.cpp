#include "platform/pipe.h"

#include <bit>

namespace platform {

static_assert(std::endian::native == std::endian::little, "units go out as they lie in memory");

bool namesPipe(std::u16string_view text) { return text.starts_with(u"\\\\.\\pipe\\"); }

bool PipeSink::isOpen() const { return state_ != nullptr; }

bool PipeSink::write(std::u16string_view text) {
  return writeBytes(text.data(), text.size() * sizeof(char16_t));
}

}  // namespace platform
