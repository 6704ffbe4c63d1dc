#include "platform/process.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/text.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

constexpr UINT ansiCodePage = 0;
constexpr DWORD composeCharacters = 0x200;

void* allocateForEver(std::size_t bytes) { return GlobalAlloc(GPTR, bytes); }

// The source length of the conversion is twice the size of its result; the source is padded with
// zeros up to there. The call therefore runs out of room and reports an error after it has filled
// the whole result, so its own result says nothing.
char* toNarrowForEver(const wchar_t* argument) {
  DWORD flags = composeCharacters;
  int size = WideCharToMultiByte(ansiCodePage, flags, argument, -1, nullptr, 0, nullptr, nullptr);
  if (size == 0) {  // a code page that takes no flags, UTF-8 for one
    flags = 0;
    size = WideCharToMultiByte(ansiCodePage, flags, argument, -1, nullptr, 0, nullptr, nullptr);
  }
  const int room = std::max(size, 1);
  auto* narrow = static_cast<char*>(allocateForEver(static_cast<std::size_t>(room)));
  std::wstring source(argument);
  source.resize(std::max(source.size() + 1, static_cast<std::size_t>(room) * 2));
  WideCharToMultiByte(ansiCodePage, flags, source.c_str(), room * 2, narrow, room, nullptr,
                      nullptr);
  narrow[room - 1] = '\0';
  return narrow;
}

}  // namespace

std::u16string executablePath(int maxUnits) {
  if (maxUnits <= 0) return {};
  std::wstring buffer(static_cast<std::size_t>(maxUnits), L'\0');
  GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(maxUnits));
  buffer.back() = L'\0';
  return fromWide(buffer.c_str());
}

std::vector<std::u16string> modulePaths(int maxModules, int maxUnits) {
  if (maxModules <= 0 || maxUnits <= 0) return {};
  constexpr DWORD queryAndRead = 1040;
  const HANDLE process = OpenProcess(queryAndRead, FALSE, GetCurrentProcessId());
  if (process == nullptr) return {};
  std::vector<HMODULE> modules(static_cast<std::size_t>(maxModules));
  const auto room = static_cast<DWORD>(modules.size() * sizeof(HMODULE));
  DWORD needed = 0;
  if (!K32EnumProcessModules(process, modules.data(), room, &needed)) needed = 0;
  modules.resize(std::min(room, needed) / sizeof(HMODULE));
  std::vector<std::u16string> paths;
  std::wstring buffer(static_cast<std::size_t>(maxUnits), L'\0');
  for (const HMODULE module : modules) {
    if (K32GetModuleFileNameExW(process, module, buffer.data(), static_cast<DWORD>(maxUnits)) == 0)
      continue;
    buffer.back() = L'\0';
    paths.push_back(fromWide(buffer.c_str()));
  }
  CloseHandle(process);
  return paths;
}

std::uint32_t processId() { return GetCurrentProcessId(); }

NarrowArguments narrowArguments(int, char**) {
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) count = 0;
  const std::size_t slots = static_cast<std::size_t>(count) + 1;
  auto** const values = static_cast<char**>(allocateForEver(slots * sizeof(char*)));
  for (int i = 0; i < count; ++i) values[i] = toNarrowForEver(wide[i]);
  LocalFree(wide);
  return {count, values};
}

void* systemInstanceHandle() { return GetModuleHandleW(nullptr); }

std::optional<std::u16string> environmentWide(std::u16string_view name) {
  const std::wstring key = toWide(name);
  std::wstring value(128, L'\0');
  for (;;) {
    SetLastError(ERROR_SUCCESS);
    const DWORD room = static_cast<DWORD>(value.size());
    const DWORD length = GetEnvironmentVariableW(key.c_str(), value.data(), room);
    if (length == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
    value.resize(length);
    if (length < room) return fromWide(value);
  }
}

bool setEnvironment(std::string_view name, std::optional<std::string_view> value) {
  if (name.empty() || name.find('=') != name.npos) return false;
  const std::wstring key = toWide(fromSystem(name));
  const std::wstring text = value ? toWide(fromSystem(*value)) : std::wstring();
  // The C library's copy first: it takes an empty value as removal, the system does not.
  if (_wputenv_s(key.c_str(), text.c_str()) != 0) return false;
  return !value || SetEnvironmentVariableW(key.c_str(), text.c_str());
}

void reportRuntimeErrorsInBox() { _set_error_mode(_OUT_TO_MSGBOX); }

bool versionBlock(std::u16string_view path, std::vector<std::uint8_t>& block) {
  constexpr std::size_t smallestBlock = 4096;
  const std::wstring file = toWidePath(path);
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeW(file.c_str(), &ignored);
  if (size == 0) return false;
  std::vector<std::uint8_t> bytes(std::max<std::size_t>(size, smallestBlock));
  if (!GetFileVersionInfoW(file.c_str(), 0, size, bytes.data())) return false;
  block = std::move(bytes);
  return true;
}

void ignoreBrokenPipes() {}

void ignoreFileSizeLimit() {}

void fillStandardStreams() {}

}  // namespace platform
