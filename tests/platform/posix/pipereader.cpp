#include "tests/platform/pipereader.h"

#include <poll.h>

#include <filesystem>
#include <optional>

#include "platform/posix/posixgate.h"
#include "platform/process.h"
#include "tests/tempfolder.h"

namespace tests {

struct SinkReader::State {
  TempFolder folder;
  std::optional<std::string> folderBefore = platform::environment("TMPDIR");
  int descriptor = -1;
};

SinkReader::SinkReader() : state_(new State), name_(u"\\\\.\\pipe\\reader") {
  const std::string file = state_->folder.file("reader").string();
  mkfifo(file.c_str(), 0600);
  state_->descriptor = open(file.c_str(), O_RDONLY | O_NONBLOCK);
  platform::setEnvironment("TMPDIR", state_->folder.path().string());
}

SinkReader::~SinkReader() {
  leave();
  platform::setEnvironment("TMPDIR", state_->folderBefore);
  delete state_;
}

std::string SinkReader::readAll() {
  std::string bytes;
  char buffer[4096];
  for (;;) {
    pollfd ready = {state_->descriptor, POLLIN, 0};
    poll(&ready, 1, -1);
    const ssize_t length = read(state_->descriptor, buffer, sizeof buffer);
    if (length <= 0) return bytes;
    bytes.append(buffer, static_cast<std::size_t>(length));
  }
}

void SinkReader::leave() {
  if (state_->descriptor >= 0) close(state_->descriptor);
  state_->descriptor = -1;
}

}  // namespace tests
