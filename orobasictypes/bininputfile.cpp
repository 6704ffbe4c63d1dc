#include "orobasictypes/bininputfile.h"

#include <algorithm>
#include <cstring>

#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oropath.h"
#include "platform/files.h"
#include "platform/filestream.h"

namespace {

constexpr int32_t readWindow = 131072;
// More than the window, so that it goes past it.
constexpr int64_t straightBlockSize = 2 * readWindow;
// After a jump little is read ahead, for the next jump may follow soon.
constexpr int64_t firstAhead = 4096;

}  // namespace

BinInputFile::BinInputFile(const OroString& path)
    : stream_(platform::openFile(OroPath(path).toOsPath().wideText(), "rb")) {
  if (stream_ != nullptr) std::setvbuf(stream_, nullptr, _IONBF, 0);  // the window is the buffer
  measure();
}

BinInputFile::BinInputFile(std::FILE* stream) : stream_(stream) { measure(); }

void BinInputFile::measure() {
  if (stream_ == nullptr) return;
  failed_ = std::ferror(stream_) != 0;
  streamAt_ = platform::tellStream(stream_);
  if (streamAt_ < 0 || !platform::seekStream(stream_, 0, platform::SeekFrom::end)) return;
  SetSize(std::max<int64_t>(platform::tellStream(stream_), 0));
  platform::seekStream(stream_, streamAt_, platform::SeekFrom::start);
  straightBlock_ = straightBlockSize;
}

int64_t BinInputFile::takeAhead(uint8_t* buffer, int64_t count) {
  const int64_t taken = std::min<int64_t>(count, readyEnd_ - ready_);
  if (taken > 0) std::memcpy(buffer, ready_, static_cast<size_t>(taken));
  ready_ += taken;
  return taken;
}

int64_t BinInputFile::readStream(void* buffer, int64_t count) {
  const auto got = static_cast<int64_t>(std::fread(buffer, 1, static_cast<size_t>(count), stream_));
  if (streamAt_ >= 0) streamAt_ += got;
  if (got < count && std::ferror(stream_) != 0) failed_ = true;
  return got;
}

bool BinInputFile::readAhead() {
  if (window_ == nullptr) kelMalloc(window_, 1, readWindow);
  aheadSize_ = std::clamp<int64_t>(2 * aheadSize_, firstAhead, readWindow);
  ready_ = window_;
  readyEnd_ = window_ + readStream(window_, aheadSize_);
  return ready_ < readyEnd_;
}

// What has no positions is not read ahead: whoever writes the other end may wait for an answer.
int64_t BinInputFile::ReadRaw(void* buffer, int64_t count) {
  if (stream_ == nullptr || count <= 0) return 0;
  auto* const to = static_cast<uint8_t*>(buffer);
  int64_t done = takeAhead(to, count);
  while (done < count) {
    const int64_t rest = count - done;
    if (streamAt_ < 0 || rest >= readWindow) {
      dropAhead();
      return done + readStream(to + done, rest);
    }
    if (!readAhead()) break;
    done += takeAhead(to + done, rest);
  }
  return done;
}

int64_t BinInputFile::Tell() {
  if (stream_ == nullptr) return 0;
  return streamAt_ < 0 ? -1 : streamAt_ - (readyEnd_ - ready_);
}

bool BinInputFile::Seek(int64_t offset, bool fromStart) {
  if (stream_ == nullptr || streamAt_ < 0) return false;
  const int64_t held = readyEnd_ - window_;
  if (fromStart && offset <= streamAt_ && offset >= streamAt_ - held) {
    ready_ = readyEnd_ - (streamAt_ - offset);
    return true;
  }
  const auto from = fromStart ? platform::SeekFrom::start : platform::SeekFrom::end;
  if (!platform::seekStream(stream_, offset, from)) return false;
  streamAt_ = fromStart ? offset : platform::tellStream(stream_);
  aheadSize_ = 0;
  dropAhead();
  return true;
}

bool BinInputFile::IsGood() { return stream_ != nullptr && !failed_; }

bool BinInputFile::Close() {
  kelFree(window_);
  window_ = nullptr;
  dropAhead();
  const bool closed = stream_ != nullptr && std::fclose(stream_) == 0;
  stream_ = nullptr;
  streamAt_ = -1;
  return closed;
}
