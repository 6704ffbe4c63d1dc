#pragma once

// Files as the system numbers them, without a buffer in between. Take them for a stream class with
// a buffer of its own; for whole files and C streams there is files.h.
// A descriptor is an int that the caller closes; one thread at a time uses it.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

/// How openDescriptor opens, as a sum. Without openWrite the file is read only.
enum DescriptorMode : unsigned {
  openRead = 1,
  openWrite = 2,
  openCreate = 4,    ///< made when it is absent
  openTruncate = 8,  ///< emptied
  openAppend = 16,   ///< every write goes to the end
  openText = 32,     ///< the line ends of the system; nothing on Linux
};

/// Where an offset counts from.
enum class SeekFrom { start, current, end };

/// Opens a file that others may use at the same time; -1 on failure. A directory does not open.
/// A new file has the rights that the user's mask leaves. Child processes do not inherit it.
int openDescriptor(std::u16string_view path, unsigned mode);

/// Bytes read, 0 at the end, below 0 on failure. At most 0x7FFFFFFF bytes a call.
std::int64_t readDescriptor(int descriptor, void* buffer, std::size_t bytes);
/// Bytes written, which may be fewer than asked, below 0 on failure. At most 0x7FFFFFFF a call.
std::int64_t writeDescriptor(int descriptor, const void* bytes, std::size_t count);
/// The new position from the start, -1 on failure.
std::int64_t seekDescriptor(int descriptor, std::int64_t offset, SeekFrom from);
/// Cuts a file that is open for writing to so many bytes. The position stays.
bool truncateDescriptor(int descriptor, std::int64_t bytes);
bool closeDescriptor(int descriptor);

/// How many of so many bytes the disk still takes. Asked before each write of this header and of
/// writeBlock; a test makes the disk full with it.
extern std::size_t (*diskRoomHook)(std::size_t bytes);

}  // namespace platform
