// BinOutput: writes typed numbers to a medium, most significant byte first, whatever the machine.
//
//   BinOutputFile file(path);
//   file.Write(point, 3);      // three doubles
//   file.Write(&index, 3, 1);  // one integer as three bytes
//   return file.FlushAndClose();
//
// What is written gathers in a buffer of 1 KiB: FlushAndClose must be called, or its last bytes are
// lost. A failed flush loses what it held, and IsGood() or the next flush tell. BinOutputFile
// writes a file; whoever has another medium derives from this class. One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/binelements.h"
#include "orobasictypes/binio_scrambler.h"

class BinOutput {
 public:
  BinOutput() = default;
  virtual ~BinOutput() = default;
  BinOutput(const BinOutput&) = delete;
  BinOutput& operator=(const BinOutput&) = delete;

  // The medium. Flush brings all that was written to where it lasts; false in this class.
  virtual bool Flush() { return false; }
  virtual bool Reopen() { return false; }
  // Bytes written and bytes read, 0 on failure. Never scrambled.
  virtual int64_t WriteRaw(const void* buffer, int64_t count) = 0;
  virtual int64_t ReadRaw(void* buffer, int64_t count) = 0;
  // Without what is pending in the buffer.
  virtual int64_t Tell() = 0;
  // From the start, or from the end with an offset of 0 or less. What is pending stays pending.
  virtual bool Seek(int64_t offset, bool fromStart) = 0;
  virtual bool IsGood() = 0;
  virtual bool Close() = 0;

  // Values as wide as their type. A count below 1 is true and touches nothing. False when the
  // buffer was full and the medium took nothing of it.
  template <BinValue T>
  bool Write(const T* values, int64_t count) {
    if (count < 1) return true;
    const int64_t fitting = (room() - 1) / int64_t{sizeof(T)};  // without filling it up
    if (pending_ > mostPending || count > fitting) return writeElements(values, sizeof(T), count);
    const uint64_t bytes = static_cast<uint64_t>(count) * sizeof(T);
    binelements::copyReversed<sizeof(T)>(staging_ + pending_, values, bytes);
    pending_ += static_cast<int64_t>(bytes);
    return true;
  }
  // Values as `width` bytes: integers 1 to 8, floats 4 or 8; false for any other.
  template <BinValue T>
  bool Write(const T* values, int width, int64_t count) {
    return binelements::hasWidth<T>(width) && writeElements(values, width, count);
  }
  // Groups of values, as one Write each: a medium that is watched sees the same flushes, a file
  // gets all of them at once.
  template <BinValue T>
  bool WriteEach(const T* values, int64_t inGroup, int64_t groups) {
    if (readyEnd_ != nullptr && scrambler() == nullptr) return Write(values, inGroup * groups);
    for (int64_t i = 0; i < groups; ++i) {
      if (!Write(values + i * inGroup, inGroup)) return false;
    }
    return true;
  }
  // Bytes as they are.
  bool WriteBytes(const void* bytes, int64_t count);

  // Hands what is pending to the medium. True when nothing was pending or any of it was taken.
  bool FlushBuffer();
  // Bytes read at the medium's position, behind what was pending.
  int64_t ReadBack(void* buffer, int64_t count);
  int64_t CurrentPosition() { return Tell() + pending_; }  // with what is pending
  bool SeekFlushed(int64_t offset, bool fromStart);
  bool FlushAndClose();

  int32_t GetFileVersion() const { return fileVersion_; }
  void SetFileVersion(int32_t version) { fileVersion_ = version; }
  // Bits of an element size in a model file: 32, 64, or 0 while nobody has said.
  int32_t GetWordWidth() const { return wordWidth_; }
  // The first to say decides; false for all others.
  bool SetWordWidth32() { return setWordWidth(32); }
  bool SetWordWidth64() { return setWordWidth(64); }
  // Three marks for whoever owns the output; nothing here looks at them.
  bool GetFirstFlag() const { return firstFlag_; }
  bool GetSecondFlag() const { return secondFlag_; }
  bool GetThirdFlag() const { return thirdFlag_; }
  void SetFirstFlag(bool value) { firstFlag_ = value; }
  void SetSecondFlag(bool value) { secondFlag_ = value; }
  void SetThirdFlag(bool value) { thirdFlag_ = value; }

 private:
  static constexpr int64_t stagingSize = 1024;
  static constexpr int64_t mostPending = 768;  // with more the buffer is flushed before a value

  template <BinValue T>
  bool writeElements(const T* values, int width, int64_t count);
  template <BinValue T>
  int64_t putReady(const T* values, int width, int64_t count);
  BinIO_Scrambler* scrambler() const { return *scrambler_; }
  int64_t room() const { return stagingSize - pending_; }
  bool setWordWidth(int32_t bits);

  uint8_t staging_[stagingSize];
  int64_t pending_ = 0;  // bytes
  int32_t fileVersion_ = 0;
  bool firstFlag_ = false;
  bool secondFlag_ = false;
  int32_t wordWidth_ = 0;
  bool thirdFlag_ = false;
  // What is installed in the module that made the output, whichever module writes to it.
  BinIO_Scrambler* const* const scrambler_ = &binio::scrambler;

 protected:
  // Memory of the medium at its position. Values that would fill the buffer exactly are put there
  // without a call. Only a class that nobody can derive from may use it, or that one's WriteRaw
  // would be passed by.
  uint8_t* ready_ = nullptr;
  uint8_t* readyEnd_ = nullptr;
};
