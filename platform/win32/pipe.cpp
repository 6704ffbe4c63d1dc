#include "platform/pipe.h"

#include "platform/win32/win32gate.h"

namespace platform {

struct PipeSink::State {
  HANDLE pipe;
  OVERLAPPED overlapped;  // its event is made with the first write
};

bool PipeSink::open(std::u16string_view name) {
  close();
  if (!namesPipe(name)) return false;
  const HANDLE pipe = CreateFileW(toWidePath(name).c_str(), GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_WRITE_THROUGH, nullptr);
  if (pipe == INVALID_HANDLE_VALUE) return false;
  state_ = new State{pipe, {}};
  return true;
}

bool PipeSink::writeBytes(const void* data, std::size_t size) {
  if (state_ == nullptr) return false;
  OVERLAPPED& overlapped = state_->overlapped;
  if (overlapped.hEvent == nullptr) {
    overlapped.hEvent = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  }
  const bool done =
      WriteFile(state_->pipe, data, static_cast<DWORD>(size), nullptr, &overlapped) != 0;
  if (!done && GetLastError() != ERROR_IO_PENDING) return false;
  if (!done) WaitForSingleObject(overlapped.hEvent, INFINITE);
  DWORD written = 0;
  return GetOverlappedResult(state_->pipe, &overlapped, &written, FALSE) && written == size;
}

void PipeSink::close() {
  if (state_ == nullptr) return;
  DisconnectNamedPipe(state_->pipe);
  CloseHandle(state_->pipe);
  if (state_->overlapped.hEvent != nullptr) CloseHandle(state_->overlapped.hEvent);
  delete state_;
  state_ = nullptr;
}

}  // namespace platform
