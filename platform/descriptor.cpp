#include "platform/descriptor.h"

namespace platform {

std::size_t (*diskRoomHook)(std::size_t bytes) = nullptr;

}  // namespace platform
