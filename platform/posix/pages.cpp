#include "platform/pages.h"

#include <algorithm>
#include <string>

#include "platform/descriptor.h"
#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {
namespace {

constexpr std::size_t smallPage = 4096;

void* mapPrivate(std::size_t bytes) {
  void* const pages =
      mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return pages == MAP_FAILED ? nullptr : pages;
}

bool isAligned(const void* pages) {
  return reinterpret_cast<std::uintptr_t>(pages) % largePage == 0;
}

// Newer systems align such requests by themselves; for older ones more is taken than is needed. An
// address space without room for that gives what it has.
void* mapAligned(std::size_t bytes) {
  void* const first = mapPrivate(bytes);
  if (first == nullptr || isAligned(first)) return first;
  char* const wide = static_cast<char*>(mapPrivate(bytes + largePage));
  if (wide == nullptr) return first;
  munmap(first, bytes);
  const std::size_t past = reinterpret_cast<std::uintptr_t>(wide) % largePage;
  const std::size_t before = past == 0 ? 0 : largePage - past;
  if (before > 0) munmap(wide, before);
  munmap(wide + before + bytes, largePage - before);
  return wide + before;
}

}  // namespace

void* takePages(std::size_t bytes) {
  if (bytes % largePage != 0) return mapPrivate(bytes);
  void* const pages = mapAligned(bytes);
  if (pages != nullptr && isAligned(pages)) madvise(pages, bytes, MADV_HUGEPAGE);
  return pages;
}

void givePages(void* pages, std::size_t bytes) { munmap(pages, bytes); }

std::size_t residentBytes(const void* pages, std::size_t bytes) {
  constexpr std::size_t window = 512;
  unsigned char states[window];
  std::size_t resident = 0;
  const char* const from = static_cast<const char*>(pages);
  for (std::size_t done = 0; done < bytes; done += window * smallPage) {
    const std::size_t part = std::min(bytes - done, window * smallPage);
    if (mincore(const_cast<char*>(from + done), part, states) != 0) return 0;
    const auto count = std::count_if(states, states + part / smallPage,
                                     [](unsigned char state) { return (state & 1) != 0; });
    resident += static_cast<std::size_t>(count) * smallPage;
  }
  return resident;
}

std::size_t pageOut(void* pages, std::size_t bytes) {
  const std::size_t before = residentBytes(pages, bytes);
  if (before == 0) return 0;
  madvise(pages, bytes, MADV_PAGEOUT);
  return before - std::min(before, residentBytes(pages, bytes));
}

bool PageFile::open(std::u16string_view path) {
  if (isOpen()) return false;
  constexpr mode_t forTheUserAlone = 0600;
  const std::string name = toSystemPath(path);
  const int file = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, forTheUserAlone);
  if (file < 0) return false;
  unlink(name.c_str());
  handle_ = file;
  return true;
}

void PageFile::close() {
  if (isOpen()) ::close(static_cast<int>(handle_));
  handle_ = -1;
}

// A hole in the file would be found out only when it is written, by a signal.
bool PageFile::grow(std::int64_t size) {
  const int file = static_cast<int>(handle_);
  struct stat what = {};
  if (fstat(file, &what) != 0) return false;
  if (what.st_size >= size) return true;
  const auto more = static_cast<std::size_t>(size - what.st_size);
  if (diskRoomHook != nullptr && diskRoomHook(more) < more) return false;
  if (posix_fallocate(file, what.st_size, size - what.st_size) == 0) return true;
  if (ftruncate(file, what.st_size) != 0) return false;  // what was had of it goes back
  return false;
}

void* PageFile::map(std::int64_t offset, std::size_t bytes) {
  void* const pages =
      mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(handle_), offset);
  return pages == MAP_FAILED ? nullptr : pages;
}

void PageFile::unmap(void* pages, std::size_t bytes, bool holdAddresses) {
  constexpr int nothing = MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED | MAP_NORESERVE;
  if (holdAddresses && mmap(pages, bytes, PROT_NONE, nothing, -1, 0) != MAP_FAILED) return;
  munmap(pages, bytes);
}

// Zeroed rather than punched out: the room on the disk stays taken for the next who maps it.
bool PageFile::discard(std::int64_t offset, std::size_t bytes) {
  const int file = static_cast<int>(handle_);
  const auto length = static_cast<off_t>(bytes);
  if (fallocate(file, FALLOC_FL_ZERO_RANGE | FALLOC_FL_KEEP_SIZE, offset, length) == 0) return true;
  return fallocate(file, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, offset, length) == 0 &&
         posix_fallocate(file, offset, length) == 0;
}

// First to the disk, so that what the system then drops is clean and really goes.
std::size_t PageFile::pageOut(void* pages, std::int64_t offset, std::size_t bytes) {
  const std::size_t before = residentBytes(pages, bytes);
  if (before == 0) return 0;
  msync(pages, bytes, MS_SYNC);
  madvise(pages, bytes, MADV_PAGEOUT);
  if (residentBytes(pages, bytes) != 0) {
    madvise(pages, bytes, MADV_DONTNEED);  // of a shared file: the contents stay in it
    posix_fadvise(static_cast<int>(handle_), offset, static_cast<off_t>(bytes),
                  POSIX_FADV_DONTNEED);
  }
  return before - std::min(before, residentBytes(pages, bytes));
}

}  // namespace platform
