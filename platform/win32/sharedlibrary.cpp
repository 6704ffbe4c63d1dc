#include "platform/sharedlibrary.h"

#include <cstdio>

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

constexpr DWORD fromSystemTable = 4096;
constexpr DWORD processLanguage = 1024;
constexpr UINT failCriticalErrors = 1;
constexpr UINT noErrorBoxes = 0x8001;

std::string describeError(DWORD number) {
  char message[255] = "";
  FormatMessageA(fromSystemTable, nullptr, number, processLanguage, message, sizeof message,
                 nullptr);
  char head[16];
  std::snprintf(head, sizeof head, "0x%x:", static_cast<unsigned>(number));
  return std::string(head) + message;
}

}  // namespace

const char16_t* librarySuffix() { return u".dll"; }

void* openLibrary(std::u16string_view name, LibrarySearch how, std::string* errorText) {
  const std::wstring file = toWidePath(name);
  const HMODULE library = how == LibrarySearch::alteredPath
                              ? LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)
                              : LoadLibraryW(file.c_str());
  if (library == nullptr && errorText != nullptr) *errorText = describeError(GetLastError());
  return library;
}

void* librarySymbol(void* library, const char* name) {
  if (library == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void closeLibrary(void* library) {
  if (library != nullptr) FreeLibrary(static_cast<HMODULE>(library));
}

bool shareSymbols(const void*) { return true; }

void setLibraryDirectory(std::u16string_view directory) {
  const std::wstring text = toWidePath(directory);
  SetDllDirectoryW(text.empty() ? nullptr : text.c_str());
}

LibraryErrorMode::LibraryErrorMode(bool silent) : before_(SetErrorMode(failCriticalErrors)) {
  if (silent) SetErrorMode(before_ | noErrorBoxes);
}

LibraryErrorMode::~LibraryErrorMode() { SetErrorMode(before_); }

}  // namespace platform
