#include "orobasictypes/binoutputfile.h"

#include <algorithm>
#include <cstring>

#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oropath.h"
#include "platform/files.h"
#include "platform/filestream.h"

namespace {

constexpr int32_t windowSize = 65536;

}  // namespace

BinOutputFile::BinOutputFile(const OroString& path)
    : BinOutputFile(platform::openFile(OroPath(path).toOsPath().wideText(), "w+bc")) {
  if (stream_ != nullptr) std::setvbuf(stream_, nullptr, _IONBF, 0);  // the window is the buffer
}

BinOutputFile::BinOutputFile(std::FILE* stream)
    : stream_(stream),
      windowAt_(stream != nullptr ? platform::tellStream(stream) : -1),
      streamAt_(windowAt_) {}

// The C library wants a seek between reading and writing, even to the same place.
bool BinOutputFile::standAt(int64_t position, Last use) {
  if (position < 0) return true;
  if (position != streamAt_ || (last_ != use && last_ != Last::seek)) {
    const bool there = platform::seekStream(stream_, position, platform::SeekFrom::start);
    streamAt_ = there ? position : -1;
    if (!there) return false;
  }
  last_ = use;
  return true;
}

// Writes at the place of the window and moves it forward. The stream is asked where it stands then,
// for one that appends has written elsewhere than it stood. On Windows it knows only when flushed.
int64_t BinOutputFile::handOver(const void* bytes, int64_t count, int64_t forward) {
  const size_t wanted = static_cast<size_t>(count);
  const size_t written =
      standAt(windowAt_, Last::write) ? platform::writeBlock(stream_, bytes, wanted) : 0;
  const bool whole = written == wanted;
  if (!whole) failed_ = true;
  if (windowAt_ >= 0) {
    streamAt_ = whole ? platform::tellStream(stream_) : -1;
    windowAt_ = whole && forward == count ? streamAt_ : windowAt_ + forward;
  }
  return static_cast<int64_t>(written);
}

// The window is empty afterwards and begins where the position is.
bool BinOutputFile::writeWindow() {
  const int64_t forward = at();
  const int64_t size = std::max(size_, forward);
  const bool written = size == 0 || handOver(window_, size, forward) == size;
  beginWindow();
  return written;
}

// The window ends where a block of the file ends, for the system writes whole blocks fastest.
void BinOutputFile::beginWindow() {
  size_ = 0;
  ready_ = window_;
  if (window_ == nullptr) return;
  readyEnd_ = window_ + windowSize - (windowAt_ > 0 ? windowAt_ % windowSize : 0);
}

int64_t BinOutputFile::WriteRaw(const void* buffer, int64_t count) {
  if (stream_ == nullptr || count <= 0) return 0;
  if (window_ == nullptr) {
    kelMalloc(window_, 1, windowSize);
    beginWindow();
  }
  const auto* from = static_cast<const uint8_t*>(buffer);
  for (int64_t rest = count; rest > 0;) {
    if (ready_ == readyEnd_ && !writeWindow()) return 0;
    const int64_t fitting = std::min<int64_t>(rest, readyEnd_ - ready_);
    std::memcpy(ready_, from, static_cast<size_t>(fitting));
    ready_ += fitting;
    from += fitting;
    rest -= fitting;
  }
  return count;
}

int64_t BinOutputFile::ReadRaw(void* buffer, int64_t count) {
  if (stream_ == nullptr || count <= 0) return 0;
  if (!writeWindow() || !standAt(windowAt_, Last::read)) return 0;
  const auto got = static_cast<int64_t>(std::fread(buffer, 1, static_cast<size_t>(count), stream_));
  if (windowAt_ >= 0) streamAt_ = windowAt_ += got;
  beginWindow();
  return got;
}

int64_t BinOutputFile::Tell() {
  if (stream_ == nullptr) return 0;
  return windowAt_ < 0 ? -1 : windowAt_ + at();
}

bool BinOutputFile::Seek(int64_t offset, bool fromStart) {
  if (stream_ == nullptr || windowAt_ < 0) return false;
  size_ = std::max(size_, at());
  if (fromStart && offset >= windowAt_ && offset - windowAt_ <= size_) {
    ready_ = window_ + (offset - windowAt_);
    return true;
  }
  const bool written = writeWindow();
  const auto from = fromStart ? platform::SeekFrom::start : platform::SeekFrom::end;
  if (!platform::seekStream(stream_, offset, from)) {
    streamAt_ = -1;
    return false;
  }
  streamAt_ = windowAt_ = fromStart ? offset : platform::tellStream(stream_);
  last_ = Last::seek;
  beginWindow();
  return written;
}

bool BinOutputFile::Flush() {
  if (stream_ == nullptr) return false;
  const bool buffered = FlushBuffer();
  const bool written = writeWindow() && standAt(windowAt_, Last::write);
  const bool flushed = platform::flushCommitting(stream_);
  if (written && windowAt_ >= 0) {
    streamAt_ = windowAt_ = platform::tellStream(stream_);
    beginWindow();
  }
  return flushed && written && buffered;
}

bool BinOutputFile::IsGood() { return stream_ != nullptr && !failed_ && std::ferror(stream_) == 0; }

bool BinOutputFile::Close() {
  if (stream_ == nullptr) return false;
  const bool written = writeWindow() && IsGood();
  const bool closed = std::fclose(stream_) == 0;
  kelFree(window_);
  window_ = ready_ = readyEnd_ = nullptr;
  stream_ = nullptr;
  return closed && written;
}
