// OroFdStreambuf: a standard stream buffer over a file descriptor that opens any file name, and the
// open modes of it and of the streams over it.
//
//   OroFdStreambuf file;
//   if (file.Open(path, OroOpenMode::in | OroOpenMode::binary) == nullptr) return false;
//   std::istream stream(&file);
//
// For a whole stream take OroOfstream, OroIfstream or OroFstream. The direction never changes by
// itself: between writing and reading there is a seek. Blocks go straight to the descriptor.
// It owns the descriptor, also an attached one, and a buffer of its own unless it was given one.
// One thread at a time.
#pragma once

#include <cstdint>
#include <ios>
#include <streambuf>

class OroString;

// Open modes, to be added up. Numbers of the system's own, not those of std::ios_base.
struct OroOpenMode {
  static constexpr int in = 1;
  static constexpr int out = 2;
  static constexpr int atEnd = 4;   // keeps what is there; opening does not seek
  static constexpr int append = 8;  // every write goes to the end
  static constexpr int truncate = 16;
  static constexpr int binary = 32;  // without it Windows translates line ends

  static int of(std::ios_base::openmode mode);
};

class OroFdStreambuf : public std::streambuf {
 public:
  OroFdStreambuf() = default;
  ~OroFdStreambuf() override;  // closes
  OroFdStreambuf(const OroFdStreambuf&) = delete;
  OroFdStreambuf& operator=(const OroFdStreambuf&) = delete;

  // Opens a file that others may use at the same time. `out` creates it, and truncates unless `in`,
  // `atEnd` or `append` is there too. This; null when the file does not open or one is open.
  // A mode with neither `in` nor `out` is asserted against and opens a file that takes nothing.
  OroFdStreambuf* Open(const char16_t* path, int mode);
  OroFdStreambuf* Open(const OroString& path, int mode);
  // The path in the system's code page, UTF-8 on Linux.
  OroFdStreambuf* Open(const char* path, int mode);
  OroFdStreambuf* Open(const char16_t* path, std::ios_base::openmode mode);
  OroFdStreambuf* Open(const OroString& path, std::ios_base::openmode mode);
  OroFdStreambuf* Open(const char* path, std::ios_base::openmode mode);
  // Takes over an open descriptor. This; null when one is open already.
  OroFdStreambuf* Attach(int descriptor, int mode);
  // Writes what is pending and closes. This; null when none was open or something failed. The
  // descriptor is closed in any case.
  OroFdStreambuf* Close();
  bool IsOpen() const { return descriptor_ >= 0; }

 protected:
  int_type overflow(int_type character) override;
  int_type underflow() override;
  int_type uflow() override;
  std::streamsize xsgetn(char* to, std::streamsize count) override;
  std::streamsize xsputn(const char* from, std::streamsize count) override;
  // The position of the descriptor, also when telling: what was read ahead is dropped. A direction
  // that is none of the three ends the process.
  pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                   std::ios_base::openmode which) override;
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override;
  // The buffer stays the caller's; a size of 0 makes the stream unbuffered. What is pending is
  // written first, what was read ahead is dropped.
  std::streambuf* setbuf(char* buffer, std::streamsize size) override;
  int sync() override;
  std::streamsize showmanyc() override;

 private:
  OroFdStreambuf* opened(int descriptor, int mode);
  bool startReading();
  bool startWriting();
  bool drain();
  void resetAreas();
  void freeBuffer();

  bool bufferOwned_ = false;
  int32_t descriptor_ = -1;  // -1 when closed
  uint32_t mode_ = 0;        // readable, writable, in read phase, in write phase
  int64_t bufferSize_ = 0;   // bytes
  char* buffer_ = nullptr;   // null until the first open
};
