#include "platform/console.h"

#include "platform/systempart.h"

namespace platform {

void* attachConsole(int) { return nullptr; }

std::uint16_t consoleAttributes(void*) { return 0; }

void setConsoleAttributes(void*, std::uint16_t) {}

void freeConsole(void*) {}

bool writeToParentConsole(std::string_view) { return false; }

}  // namespace platform
