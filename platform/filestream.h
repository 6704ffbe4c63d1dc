#pragma once

// C streams on files of any size: positions of 64 bits, blocks, and bringing data to the disk.
// The stream is the caller's; one thread at a time.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "platform/descriptor.h"

namespace platform {

/// False on failure, and for what has no positions (a pipe).
bool seekStream(std::FILE* stream, std::int64_t offset, SeekFrom from);
/// The position from the start, -1 for what has none.
std::int64_t tellStream(std::FILE* stream);

/// Bytes that the stream took, all unless it failed. Asks diskRoomHook.
std::size_t writeBlock(std::FILE* stream, const void* bytes, std::size_t count);

/// Flushes the stream. What was opened with the mode letter "c" is on the disk afterwards: Windows
/// does it by the letter, Linux by waiting here for the data.
bool flushCommitting(std::FILE* stream);

}  // namespace platform
