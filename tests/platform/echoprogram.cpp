// Writes each of its arguments as hexadecimal bytes on a line, as the program itself would see
// them, for the tests of the command line.

#include <cstdio>

#include "platform/process.h"

int main(int argc, char** argv) {
  const platform::NarrowArguments arguments = platform::narrowArguments(argc, argv);
  if (arguments.values[arguments.count] != nullptr) return 2;
  for (int i = 1; i < arguments.count; ++i) {
    for (const char* c = arguments.values[i]; *c != '\0'; ++c) {
      std::printf("%02x", static_cast<unsigned>(static_cast<unsigned char>(*c)));
    }
    std::printf(";");
  }
  return 0;
}
