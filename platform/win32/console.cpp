#include "platform/console.h"

#include <cstdio>
#include <iostream>

#include "platform/streams.h"
#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

std::FILE* openTextStream(HANDLE handle) {
  constexpr int textMode = 0x4000;
  const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), textMode);
  return descriptor < 0 ? nullptr : _fdopen(descriptor, "w");
}

// The newer C library hides what a stream is made of; there the descriptor moves instead.
void becomeStream(std::FILE* target, std::FILE* source) {
  std::fflush(target);
#if defined(_UCRT)
  _dup2(_fileno(source), target == stderr ? 2 : 1);
#else
  *target = *source;
#endif
}

std::FILE* attachStream(HANDLE& handle, DWORD handleNumber) {
  if (!AttachConsole(ATTACH_PARENT_PROCESS)) return nullptr;
  handle = GetStdHandle(handleNumber);
  return openTextStream(handle);
}

}  // namespace

// For standard output the error handle is asked for and the other way round.
void* attachConsole(int streamNumber) {
  HANDLE handle = nullptr;
  std::FILE* const stream = attachStream(handle, static_cast<DWORD>(streamNumber - 12));
  if (stream != nullptr) becomeStream(streamNumber == 0 ? stdout : stderr, stream);
  if (handle != nullptr) std::ios::sync_with_stdio(true);
  return handle;
}

std::uint16_t consoleAttributes(void* console) {
  CONSOLE_SCREEN_BUFFER_INFO info = {};
  if (console != nullptr) GetConsoleScreenBufferInfo(console, &info);
  return info.wAttributes;
}

void setConsoleAttributes(void* console, std::uint16_t attributes) {
  if (console != nullptr) SetConsoleTextAttribute(console, attributes);
}

void freeConsole(void* console) {
  if (console != nullptr) FreeConsole();
}

bool writeToParentConsole(std::string_view text) {
  HANDLE handle = nullptr;
  std::FILE* const stream = attachStream(handle, STD_OUTPUT_HANDLE);
  if (stream == nullptr) return false;
  writeStream(stream, text);
  becomeStream(stdout, stream);
  return true;
}

}  // namespace platform
