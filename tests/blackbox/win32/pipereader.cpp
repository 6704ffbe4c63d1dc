#include "tests/blackbox/pipereader.h"

#include "platform/process.h"
#include "platform/text.h"
#include "platform/win32/win32gate.h"

namespace tests {

struct PipeReader::End {
  HANDLE pipe;
};

PipeReader::PipeReader(std::string_view name) {
  setting_ = "\\\\.\\pipe\\" + std::string(name) + "-" + std::to_string(platform::processId());
  constexpr DWORD room = 65536;
  const std::wstring path = platform::toWide(platform::fromSystem(setting_));
  end_ = new End{CreateNamedPipeW(path.c_str(), PIPE_ACCESS_INBOUND, PIPE_TYPE_BYTE, 1, room, room,
                                  0, nullptr)};
}

PipeReader::~PipeReader() {
  CloseHandle(end_->pipe);
  delete end_;
}

std::u16string PipeReader::readAll() {
  std::string bytes;
  DWORD waiting = 0;
  while (PeekNamedPipe(end_->pipe, nullptr, 0, nullptr, &waiting, nullptr) && waiting > 0) {
    std::string part(waiting, '\0');
    DWORD count = 0;
    if (!ReadFile(end_->pipe, part.data(), waiting, &count, nullptr)) break;
    bytes += part.substr(0, count);
  }
  return unitsFromBytes(bytes);
}

}  // namespace tests
