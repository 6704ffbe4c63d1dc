#pragma once

// Memory by pages: straight from the system, or a file seen as memory. For whoever manages large
// blocks himself; everybody else allocates. Sizes and offsets are multiples of pageUnit.
// Memory is the caller's and is given back by the operation beside the one that took it. Any thread
// for different pages; one thread at a time for one file.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

/// What pages are taken in on both systems.
inline constexpr std::size_t pageUnit = std::size_t{1} << 16;
/// The size that the processor maps in one step where the system allows it.
inline constexpr std::size_t largePage = std::size_t{1} << 21;

/// Memory that reads as zero and takes room only where it is written; null if the system refuses.
/// A multiple of largePage is aligned to it where that is possible, and asks for such mapping.
void* takePages(std::size_t bytes);
void givePages(void* pages, std::size_t bytes);

/// How much of the pages is in physical memory.
std::size_t residentBytes(const void* pages, std::size_t bytes);

/// Asks the system to move the pages of takePages out of physical memory, and returns how much of
/// them has gone. Their contents stay.
std::size_t pageOut(void* pages, std::size_t bytes);

/// A file that exists to be memory: it is nobody else's, and gone when the process ends, however it
/// ends. On Linux it has no name from the start.
class PageFile {
 public:
  PageFile() = default;
  ~PageFile() { close(); }
  PageFile(const PageFile&) = delete;
  PageFile& operator=(const PageFile&) = delete;

  /// Makes the file; false if something of that name is there or the folder does not allow it.
  bool open(std::u16string_view path);
  bool isOpen() const { return handle_ != -1; }
  /// Requires: nothing of it is mapped any more.
  void close();

  /// Makes the file that large, with room on the disk for all of it. False, and the file as it was,
  /// when the disk has none.
  bool grow(std::int64_t size);
  /// A part of the file as memory; null if the system refuses.
  void* map(std::int64_t offset, std::size_t bytes);
  /// Takes the part away, and keeps its addresses from being used again if that is asked for.
  void unmap(void* pages, std::size_t bytes, bool holdAddresses);
  /// The part reads as zero when it is mapped next. Requires: it is not mapped.
  bool discard(std::int64_t offset, std::size_t bytes);
  /// As the function of this name, for a mapped part.
  std::size_t pageOut(void* pages, std::int64_t offset, std::size_t bytes);

 private:
  std::intptr_t handle_ = -1;  // the system's, -1 while closed
};

}  // namespace platform
