#include "platform/pages.h"

#include <algorithm>

#include "platform/descriptor.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

constexpr std::size_t smallPage = 4096;

HANDLE handleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

DWORD high(std::int64_t value) { return static_cast<DWORD>(value >> 32); }
DWORD low(std::int64_t value) { return static_cast<DWORD>(value & 0xFFFFFFFF); }

// Unlocking what is not locked takes it out of the working set: the system's documented way.
std::size_t trim(void* pages, std::size_t bytes) {
  const std::size_t before = residentBytes(pages, bytes);
  if (before == 0) return 0;
  VirtualUnlock(pages, bytes);
  return before - std::min(before, residentBytes(pages, bytes));
}

}  // namespace

void* takePages(std::size_t bytes) {
  return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void givePages(void* pages, std::size_t) { VirtualFree(pages, 0, MEM_RELEASE); }

std::size_t residentBytes(const void* pages, std::size_t bytes) {
  constexpr std::size_t window = 512;
  PSAPI_WORKING_SET_EX_INFORMATION states[window];
  std::size_t resident = 0;
  char* const from = const_cast<char*>(static_cast<const char*>(pages));
  for (std::size_t done = 0; done < bytes; done += window * smallPage) {
    const std::size_t count = std::min(bytes - done, window * smallPage) / smallPage;
    for (std::size_t i = 0; i < count; ++i) {
      states[i] = {};
      states[i].VirtualAddress = from + done + i * smallPage;
    }
    const auto size = static_cast<DWORD>(count * sizeof states[0]);
    if (!K32QueryWorkingSetEx(GetCurrentProcess(), states, size)) return 0;
    for (std::size_t i = 0; i < count; ++i) {
      if (states[i].VirtualAttributes.Valid != 0) resident += smallPage;
    }
  }
  return resident;
}

std::size_t pageOut(void* pages, std::size_t bytes) { return trim(pages, bytes); }

bool PageFile::open(std::u16string_view path) {
  if (isOpen()) return false;
  const HANDLE file =
      CreateFileW(toWidePath(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  handle_ = reinterpret_cast<std::intptr_t>(file);
  return true;
}

void PageFile::close() {
  if (isOpen()) CloseHandle(handleOf(handle_));
  handle_ = -1;
}

bool PageFile::grow(std::int64_t size) {
  LARGE_INTEGER now = {};
  if (!GetFileSizeEx(handleOf(handle_), &now)) return false;
  if (now.QuadPart >= size) return true;
  const auto more = static_cast<std::size_t>(size - now.QuadPart);
  if (diskRoomHook != nullptr && diskRoomHook(more) < more) return false;
  LARGE_INTEGER end = {};
  end.QuadPart = size;
  return SetFilePointerEx(handleOf(handle_), end, nullptr, FILE_BEGIN) &&
         SetEndOfFile(handleOf(handle_));
}

void* PageFile::map(std::int64_t offset, std::size_t bytes) {
  const std::int64_t end = offset + static_cast<std::int64_t>(bytes);
  const HANDLE mapping =
      CreateFileMappingW(handleOf(handle_), nullptr, PAGE_READWRITE, high(end), low(end), nullptr);
  if (mapping == nullptr) return nullptr;
  void* const pages =
      MapViewOfFile(mapping, FILE_MAP_READ | FILE_MAP_WRITE, high(offset), low(offset), bytes);
  CloseHandle(mapping);  // the view keeps it
  return pages;
}

void PageFile::unmap(void* pages, std::size_t bytes, bool holdAddresses) {
  UnmapViewOfFile(pages);
  if (holdAddresses) VirtualAlloc(pages, bytes, MEM_RESERVE, PAGE_NOACCESS);
}

bool PageFile::discard(std::int64_t offset, std::size_t bytes) {
  static const char zeros[pageUnit] = {};
  LARGE_INTEGER place = {};
  place.QuadPart = offset;
  if (!SetFilePointerEx(handleOf(handle_), place, nullptr, FILE_BEGIN)) return false;
  for (std::size_t done = 0; done < bytes; done += sizeof zeros) {
    DWORD written = 0;
    if (!WriteFile(handleOf(handle_), zeros, sizeof zeros, &written, nullptr)) return false;
    if (written != sizeof zeros) return false;
  }
  return true;
}

std::size_t PageFile::pageOut(void* pages, std::int64_t, std::size_t bytes) {
  FlushViewOfFile(pages, bytes);
  return trim(pages, bytes);
}

}  // namespace platform
