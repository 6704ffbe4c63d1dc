#include "tests/blackbox/pipereader.h"

#include "platform/posix/posixgate.h"
#include "platform/process.h"

namespace tests {

struct PipeReader::End {
  std::string file;
  int descriptor;
};

PipeReader::PipeReader(std::string_view name) {
  const std::string leaf = std::string(name) + "-" + std::to_string(platform::processId());
  const std::string folder = platform::environment("TMPDIR").value_or("/tmp");
  setting_ = "\\\\.\\pipe\\" + leaf;
  end_ = new End{folder + "/" + leaf, -1};
  ::unlink(end_->file.c_str());
  mkfifo(end_->file.c_str(), 0600);
  end_->descriptor = ::open(end_->file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

PipeReader::~PipeReader() {
  ::close(end_->descriptor);
  ::unlink(end_->file.c_str());
  delete end_;
}

std::u16string PipeReader::readAll() {
  std::string bytes;
  char buffer[4096];
  ssize_t count = 0;
  while ((count = ::read(end_->descriptor, buffer, sizeof buffer)) > 0) {
    bytes.append(buffer, static_cast<std::size_t>(count));
  }
  return unitsFromBytes(bytes);
}

}  // namespace tests
