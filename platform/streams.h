#pragma once

// Writing of ready bytes to C streams. The bytes are never taken as a format and may hold zeros;
// a stream in text mode still writes its own line ends. A stream that does not take them (a
// process without standard streams) makes no other trouble than the result false.

#include <cstdio>
#include <string_view>

namespace platform {

/// Writes all bytes and flushes; a null stream gives false.
bool writeStream(std::FILE* stream, std::string_view bytes);

bool writeStandardOutput(std::string_view bytes);
bool writeStandardError(std::string_view bytes);

/// Line-buffered with a buffer of 64 bytes. Requires: nothing was read or written yet.
void setLineBuffered(std::FILE* stream);

}  // namespace platform
