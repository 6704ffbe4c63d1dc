#include "tests/platform/pipereader.h"

#include <atomic>

#include "platform/process.h"
#include "platform/text.h"
#include "platform/win32/win32gate.h"

namespace tests {

struct SinkReader::State {
  HANDLE pipe;
};

SinkReader::SinkReader() {
  static std::atomic<int> counter{0};
  name_ = u"\\\\.\\pipe\\cowl-test-" + platform::fromSystem(std::to_string(platform::processId()) +
                                                            "-" + std::to_string(counter++));
  state_ = new State{CreateNamedPipeW(platform::toWide(name_).c_str(), PIPE_ACCESS_INBOUND,
                                      PIPE_TYPE_BYTE | PIPE_WAIT, 1, 4096, 4096, 0, nullptr)};
}

SinkReader::~SinkReader() {
  leave();
  delete state_;
}

std::string SinkReader::readAll() {
  std::string bytes;
  char buffer[4096];
  DWORD length = 0;
  ConnectNamedPipe(state_->pipe, nullptr);
  while (ReadFile(state_->pipe, buffer, sizeof buffer, &length, nullptr)) {
    bytes.append(buffer, length);
  }
  return bytes;
}

void SinkReader::leave() {
  if (state_->pipe != INVALID_HANDLE_VALUE) CloseHandle(state_->pipe);
  state_->pipe = INVALID_HANDLE_VALUE;
}

}  // namespace tests
