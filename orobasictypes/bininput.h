// BinInput: reads typed numbers from a medium, most significant byte first, whatever the machine.
//
//   BinInputFile file(path);
//   double point[3];
//   if (!file.Read(point, 3)) return false;
//   int32_t index = 0;
//   file.Read(&index, 3, 1);  // one integer of three bytes
//
// BinInputFile reads a file; whoever has another medium derives from this class and gives its
// operations. It never reads ahead of what it was asked for: Tell() is where the next value stands.
// A value that does not come whole leaves its place untouched, those before it are stored. One
// thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/binelements.h"
#include "orobasictypes/binio_scrambler.h"

class BinInput {
 public:
  BinInput() = default;
  virtual ~BinInput() = default;
  BinInput(const BinInput&) = delete;
  BinInput& operator=(const BinInput&) = delete;

  // The medium. Bytes read; 0 at its end and on failure. Never unscrambled.
  virtual int64_t ReadRaw(void* buffer, int64_t count) = 0;
  virtual int64_t Tell() = 0;
  // From the start, or from the end with an offset of 0 or less.
  virtual bool Seek(int64_t offset, bool fromStart) = 0;
  // False once the medium has failed; its end is no failure.
  virtual bool IsGood() = 0;
  virtual bool Close() = 0;

  // Values of their type's own width. A count below 1 is true and touches nothing.
  template <BinValue T>
  bool Read(T* values, int64_t count) {
    if (count < 1) return true;
    if (count > (readyEnd_ - ready_) / int64_t{sizeof(T)} || scrambler() != nullptr) {
      return readElements(values, sizeof(T), count);
    }
    const uint64_t bytes = static_cast<uint64_t>(count) * sizeof(T);
    binelements::copyReversed<sizeof(T)>(values, ready_, bytes);
    ready_ += bytes;
    return true;
  }
  // Values of `width` bytes: integers 1 to 8, floats 4 or 8; false for any other. Narrower integers
  // are filled up with their sign or with zeros, of wider ones the low bytes are kept.
  template <BinValue T>
  bool Read(T* values, int width, int64_t count) {
    return binelements::hasWidth<T>(width) && readElements(values, width, count);
  }
  // Groups of values, as one Read each: a medium that is watched sees the same questions, a file is
  // asked for all of them at once.
  template <BinValue T>
  bool ReadEach(T* values, int64_t inGroup, int64_t groups) {
    if (straightBlock_ != 0 && scrambler() == nullptr) return Read(values, inGroup * groups);
    for (int64_t i = 0; i < groups; ++i) {
      if (!Read(values + i * inGroup, inGroup)) return false;
    }
    return true;
  }
  bool ReadBytes(void* bytes, int64_t count) { return Read(static_cast<uint8_t*>(bytes), count); }
  // The next 32 bits without taking them; all ones on failure.
  int32_t PeekInt32();

  // Bytes of the whole medium, 0 where that is not known.
  int64_t GetSize() const { return size_; }
  // Bits of an element size in a model file: 32, 64, or 0 while nobody has said.
  int32_t GetWordWidth() const { return wordWidth_; }
  // The first to say decides; false for all others.
  bool SetWordWidth32() { return setWordWidth(32); }
  bool SetWordWidth64() { return setWordWidth(64); }

 protected:
  void SetSize(int64_t size) { size_ = size; }

 private:
  static constexpr int64_t stagingSize = 1024;

  template <BinValue T>
  bool readElements(T* values, int width, int64_t count);
  template <BinValue T>
  int64_t takeReady(T* values, int width, int64_t count);
  template <BinValue T>
  int64_t takeStraight(T* values, int width, int64_t count);
  BinIO_Scrambler* scrambler() const { return *scrambler_; }
  int64_t readChunk(uint8_t* buffer, int64_t count);
  bool completeElement(uint8_t* element, int64_t have, int64_t width);
  bool setWordWidth(int32_t bits);

  uint8_t staging_[stagingSize];
  int64_t lastCount_ = 0;  // bytes of the last ReadRaw
  int64_t size_ = 0;       // bytes
  int32_t wordWidth_ = 0;
  // What is installed in the module that made the input, whichever module reads from it.
  BinIO_Scrambler* const* const scrambler_ = &binio::scrambler;

 protected:
  // Bytes that a medium holds in memory at its position; values are taken from there without a
  // call. Only a class that nobody can derive from may use it, or that one's ReadRaw would be
  // passed by.
  const uint8_t* ready_ = nullptr;
  const uint8_t* readyEnd_ = nullptr;
  // Bytes that are worth a ReadRaw straight into the values when the medium has them; 0 for none.
  // The same holds for it.
  int64_t straightBlock_ = 0;
};
