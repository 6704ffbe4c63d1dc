// OroFdStream: what OroIfstream, OroOfstream and OroFstream have in common, a standard stream with
// an OroFdStreambuf of its own. Take one of the three.
#pragma once

#include <ios>

#include "orobasictypes/orofdstreambuf.h"
#include "orobasictypes/orostring.h"

// `Always` is the open mode that this kind of stream has whether or not it is asked for.
template <class Stream, int Always>
class OroFdStream : public Stream {
 public:
  OroFdStream() : Stream(nullptr) { this->init(&buffer_); }
  explicit OroFdStream(const OroString& path, int mode = Always) : OroFdStream() {
    open(path, mode);
  }
  OroFdStream(const OroString& path, std::ios_base::openmode mode)
      : OroFdStream(path, OroOpenMode::of(mode)) {}
  OroFdStream(const OroFdStream&) = delete;
  OroFdStream& operator=(const OroFdStream&) = delete;

  // When the file does not open, or one is open already, the state gets fail and bad.
  void open(const OroString& path, int mode = Always) {
    if (buffer_.Open(path, mode | Always) != nullptr) {
      this->clear();
    } else {
      this->setstate(std::ios_base::failbit | std::ios_base::badbit);
    }
  }
  void open(const OroString& path, std::ios_base::openmode mode) {
    open(path, OroOpenMode::of(mode));
  }
  // Fail is set when none was open or the rest could not be written.
  void close() {
    if (buffer_.Close() == nullptr) this->setstate(std::ios_base::failbit);
  }
  bool is_open() const { return buffer_.IsOpen(); }
  OroFdStreambuf* rdbuf() { return &buffer_; }

 private:
  OroFdStreambuf buffer_;
};
