#include "orobasictypes/orofdstreambuf.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orostring.h"
#include "platform/descriptor.h"
#include "platform/text.h"

namespace {

constexpr char orofdstreambufSource[] = "orobasictypes/orofdstreambuf";

constexpr int32_t ownBufferSize = 1024;
constexpr std::streamsize longestCall = 0x7FFFFFFF;

constexpr uint32_t readable = 1;
constexpr uint32_t writable = 2;
constexpr uint32_t readPhase = 4;
constexpr uint32_t writePhase = 8;

// A mode without a direction goes on as one that writes.
unsigned systemMode(int mode) {
  const int direction = mode & (OroOpenMode::in | OroOpenMode::out);
  if (direction == 0) kelAssertFail("", orofdstreambufSource, __LINE__);
  unsigned flags = 0;
  if ((mode & OroOpenMode::in) != 0) flags |= platform::openRead;
  if (direction != OroOpenMode::in) flags |= platform::openWrite | platform::openCreate;
  const int keeping = OroOpenMode::in | OroOpenMode::atEnd | OroOpenMode::append;
  if ((mode & OroOpenMode::truncate) != 0 || (mode & keeping) == 0) flags |= platform::openTruncate;
  if ((mode & OroOpenMode::append) != 0) flags |= platform::openAppend;
  if ((mode & OroOpenMode::binary) == 0) flags |= platform::openText;
  return flags;
}

size_t callSize(std::streamsize bytes) { return static_cast<size_t>(std::min(bytes, longestCall)); }

}  // namespace

int OroOpenMode::of(std::ios_base::openmode mode) {
  constexpr struct {
    std::ios_base::openmode theirs;
    int ours;
  } names[] = {{std::ios_base::in, in},          {std::ios_base::out, out},
               {std::ios_base::ate, atEnd},      {std::ios_base::app, append},
               {std::ios_base::trunc, truncate}, {std::ios_base::binary, binary}};
  int sum = 0;
  for (const auto& name : names) {
    if ((mode & name.theirs) != 0) sum |= name.ours;
  }
  return sum;
}

// Opening and closing.

OroFdStreambuf::~OroFdStreambuf() {
  Close();
  freeBuffer();
}

OroFdStreambuf* OroFdStreambuf::Open(const char16_t* path, int mode) {
  if (IsOpen()) return nullptr;
  const unsigned flags = systemMode(mode);
  return opened(platform::openDescriptor(path != nullptr ? path : u"", flags), mode);
}

OroFdStreambuf* OroFdStreambuf::Open(const OroString& path, int mode) {
  return Open(path.wideText(), mode);
}

OroFdStreambuf* OroFdStreambuf::Open(const char* path, int mode) {
  return Open(platform::fromCodePage(path != nullptr ? path : "").c_str(), mode);
}

OroFdStreambuf* OroFdStreambuf::Open(const char16_t* path, std::ios_base::openmode mode) {
  return Open(path, OroOpenMode::of(mode));
}

OroFdStreambuf* OroFdStreambuf::Open(const OroString& path, std::ios_base::openmode mode) {
  return Open(path.wideText(), OroOpenMode::of(mode));
}

OroFdStreambuf* OroFdStreambuf::Open(const char* path, std::ios_base::openmode mode) {
  return Open(path, OroOpenMode::of(mode));
}

OroFdStreambuf* OroFdStreambuf::Attach(int descriptor, int mode) {
  return IsOpen() ? nullptr : opened(descriptor, mode);
}

OroFdStreambuf* OroFdStreambuf::opened(int descriptor, int mode) {
  if (descriptor < 0) return nullptr;
  if (buffer_ == nullptr) {
    kelMalloc(buffer_, 1, ownBufferSize);
    bufferSize_ = ownBufferSize;
    bufferOwned_ = true;
  }
  descriptor_ = descriptor;
  mode_ = static_cast<uint32_t>(mode) & (readable | writable);
  resetAreas();
  return this;
}

OroFdStreambuf* OroFdStreambuf::Close() {
  if (!IsOpen()) return nullptr;
  const bool drained =
      (mode_ & writePhase) == 0 || overflow(traits_type::eof()) != traits_type::eof();
  const bool closed = platform::closeDescriptor(descriptor_);
  descriptor_ = -1;
  mode_ = 0;
  resetAreas();
  return drained && closed ? this : nullptr;
}

void OroFdStreambuf::resetAreas() {
  setg(nullptr, nullptr, nullptr);
  setp(nullptr, nullptr);
}

void OroFdStreambuf::freeBuffer() {
  if (bufferOwned_) kelFree(buffer_);
  buffer_ = nullptr;
  bufferSize_ = 0;
  bufferOwned_ = false;
}

// Phases. Neither follows upon the other without a seek.

bool OroFdStreambuf::startReading() {
  if ((mode_ & readable) == 0 || (mode_ & writePhase) != 0) return false;
  mode_ |= readPhase;
  return true;
}

bool OroFdStreambuf::startWriting() {
  if ((mode_ & writable) == 0 || (mode_ & readPhase) != 0) return false;
  mode_ |= writePhase;
  return true;
}

// Writing.

// Writes the put area. What the disk took is gone from it even when the rest failed.
bool OroFdStreambuf::drain() {
  while (pptr() > pbase()) {
    const size_t asked = callSize(pptr() - pbase());
    const int64_t written = platform::writeDescriptor(descriptor_, pbase(), asked);
    if (written > 0) {
      const auto rest = pptr() - pbase() - written;
      std::memmove(pbase(), pbase() + written, static_cast<size_t>(rest));
      pbump(static_cast<int>(-written));
    }
    if (written != static_cast<int64_t>(asked)) return false;
  }
  return true;
}

// The put area ends one before the buffer: the last place is for the character that does not fit,
// so that a full buffer goes out in one piece.
OroFdStreambuf::int_type OroFdStreambuf::overflow(int_type character) {
  if (!startWriting()) return traits_type::eof();
  if (traits_type::eq_int_type(character, traits_type::eof())) {
    return drain() ? traits_type::not_eof(character) : traits_type::eof();
  }
  const char value = traits_type::to_char_type(character);
  if (bufferSize_ <= 1) {
    const bool written = platform::writeDescriptor(descriptor_, &value, 1) == 1;
    return written ? character : traits_type::eof();
  }
  if (pptr() == nullptr) setp(buffer_, buffer_ + bufferSize_ - 1);
  *pptr() = value;
  pbump(1);
  if (drain()) return character;
  pbump(-1);  // the character was refused and is the caller's again
  return traits_type::eof();
}

std::streamsize OroFdStreambuf::xsputn(const char* from, std::streamsize count) {
  if (!startWriting() || !drain()) return 0;
  std::streamsize done = 0;
  while (done < count) {
    const size_t asked = callSize(count - done);
    const int64_t written = platform::writeDescriptor(descriptor_, from + done, asked);
    if (written > 0) done += written;
    if (written != static_cast<int64_t>(asked)) break;
  }
  return done;
}

int OroFdStreambuf::sync() { return drain() ? 0 : -1; }

// Reading.

OroFdStreambuf::int_type OroFdStreambuf::underflow() {
  if (!startReading()) return traits_type::eof();
  if (gptr() < egptr()) return traits_type::to_int_type(*gptr());
  const int64_t got = platform::readDescriptor(descriptor_, buffer_, callSize(bufferSize_));
  if (got < 1) return traits_type::eof();
  setg(buffer_, buffer_, buffer_ + got);
  return traits_type::to_int_type(*gptr());
}

OroFdStreambuf::int_type OroFdStreambuf::uflow() {
  if (bufferSize_ > 0) return std::streambuf::uflow();
  char character = 0;
  const bool got = startReading() && platform::readDescriptor(descriptor_, &character, 1) == 1;
  return got ? traits_type::to_int_type(character) : traits_type::eof();
}

// What was read ahead comes first, or the order of the stream would break.
std::streamsize OroFdStreambuf::xsgetn(char* to, std::streamsize count) {
  if (!startReading() || count <= 0) return 0;
  std::streamsize done = std::min<std::streamsize>(egptr() - gptr(), count);
  if (done > 0) std::memcpy(to, gptr(), static_cast<size_t>(done));
  setg(eback(), gptr() + done, egptr());
  while (done < count) {
    const int64_t got = platform::readDescriptor(descriptor_, to + done, callSize(count - done));
    if (got < 1) break;
    done += got;
    setg(nullptr, nullptr, nullptr);  // what it holds no longer precedes the next character
  }
  return done;
}

std::streamsize OroFdStreambuf::showmanyc() {
  return (mode_ & readPhase) != 0 ? egptr() - gptr() : -1;
}

// Position and buffer.

OroFdStreambuf::pos_type OroFdStreambuf::seekoff(off_type offset, std::ios_base::seekdir direction,
                                                 std::ios_base::openmode /*which*/) {
  const pos_type failure(off_type(-1));
  if (!IsOpen()) return failure;
  auto from = platform::SeekFrom::start;
  if (direction == std::ios_base::cur) {
    from = platform::SeekFrom::current;
  } else if (direction == std::ios_base::end) {
    from = platform::SeekFrom::end;
  } else if (direction != std::ios_base::beg) {
    std::abort();
  }
  if ((mode_ & writePhase) != 0 && !drain()) return failure;
  mode_ &= ~(readPhase | writePhase);
  resetAreas();
  return pos_type(platform::seekDescriptor(descriptor_, offset, from));
}

OroFdStreambuf::pos_type OroFdStreambuf::seekpos(pos_type position, std::ios_base::openmode which) {
  return seekoff(off_type(position), std::ios_base::beg, which);
}

std::streambuf* OroFdStreambuf::setbuf(char* buffer, std::streamsize size) {
  if ((mode_ & writePhase) != 0 && !drain()) return nullptr;
  freeBuffer();
  resetAreas();
  buffer_ = buffer;
  bufferSize_ = buffer != nullptr ? std::max<std::streamsize>(size, 0) : 0;
  return this;
}
