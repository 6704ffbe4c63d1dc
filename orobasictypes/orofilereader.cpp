#include "orobasictypes/orofilereader.h"

#include "orobasictypes/oropath.h"
#include "platform/files.h"

bool OroFileReader::open(const OroPath& path) {
  close();
  const OroPath name(path.toOsPath());
  stream_ = platform::openFile(name.wideText(), "rb");
  if (stream_ == nullptr) return false;
  std::setvbuf(stream_, nullptr, _IONBF, 0);  // the caller's block is the buffer
  const int64_t size = platform::fileSize(name.wideText());
  size_ = size > 0 ? size : 0;
  return true;
}

void OroFileReader::close() {
  if (stream_ != nullptr) std::fclose(stream_);
  stream_ = nullptr;
  size_ = 0;
  failed_ = false;
}

size_t OroFileReader::read(char* buffer, size_t size) {
  if (stream_ == nullptr || failed_) return 0;
  const size_t got = std::fread(buffer, 1, size, stream_);
  if (got < size && std::ferror(stream_) != 0) failed_ = true;
  return got;
}
