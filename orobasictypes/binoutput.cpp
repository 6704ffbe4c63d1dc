#include "orobasictypes/binoutput.h"

#include <algorithm>
#include <cstring>

bool BinOutput::FlushBuffer() {
  if (pending_ == 0) return true;
  if (scrambler() != nullptr) scrambler()->Scramble(staging_, Tell(), pending_);
  const bool written = WriteRaw(staging_, pending_) > 0;
  pending_ = 0;
  return written;
}

// Whole buffers on their way to a medium that takes them in its memory; returns how many values.
template <BinValue T>
int64_t BinOutput::putReady(const T* values, int width, int64_t count) {
  if (pending_ != 0 || stagingSize % width != 0 || scrambler() != nullptr) return 0;
  const int64_t inBuffer = stagingSize / width;
  const int64_t buffers = std::min(count / inBuffer, (readyEnd_ - ready_) / stagingSize);
  if (buffers == 0) return 0;
  binelements::encode(ready_, values, buffers * inBuffer, width);
  ready_ += buffers * stagingSize;
  return buffers * inBuffer;
}

// A flush for want of room is not looked at: what was lost shows in IsGood().
template <BinValue T>
bool BinOutput::writeElements(const T* values, int width, int64_t count) {
  for (int64_t done = 0; done < count;) {
    done += putReady(values + done, width, count - done);
    if (done == count) break;
    if (pending_ > mostPending) FlushBuffer();
    const int64_t fitting = std::min(count - done, room() / width);
    binelements::encode(staging_ + pending_, values + done, fitting, width);
    pending_ += fitting * width;
    done += fitting;
    if (room() == 0 && !FlushBuffer()) return false;
  }
  return true;
}

bool BinOutput::WriteBytes(const void* bytes, int64_t count) {
  const auto* from = static_cast<const uint8_t*>(bytes);
  while (count > 0) {
    const int64_t fitting = std::min(count, room());
    std::memcpy(staging_ + pending_, from, static_cast<size_t>(fitting));
    pending_ += fitting;
    from += fitting;
    count -= fitting;
    if (room() == 0 && !FlushBuffer()) return false;
  }
  return true;
}

int64_t BinOutput::ReadBack(void* buffer, int64_t count) {
  FlushBuffer();
  BinIO_Scrambler* const installed = scrambler();
  const int64_t position = installed != nullptr ? Tell() : 0;
  const int64_t got = ReadRaw(buffer, count);
  if (installed != nullptr && got > 0) installed->Unscramble(buffer, position, got);
  return got;
}

bool BinOutput::SeekFlushed(int64_t offset, bool fromStart) {
  const bool flushed = FlushBuffer();
  return Seek(offset, fromStart) && flushed;
}

bool BinOutput::FlushAndClose() {
  const bool flushed = FlushBuffer();
  return Close() && flushed;
}

bool BinOutput::setWordWidth(int32_t bits) {
  if (wordWidth_ != 0) return false;
  wordWidth_ = bits;
  return true;
}

template bool BinOutput::writeElements(const int8_t*, int, int64_t);
template bool BinOutput::writeElements(const uint8_t*, int, int64_t);
template bool BinOutput::writeElements(const int16_t*, int, int64_t);
template bool BinOutput::writeElements(const uint16_t*, int, int64_t);
template bool BinOutput::writeElements(const int32_t*, int, int64_t);
template bool BinOutput::writeElements(const uint32_t*, int, int64_t);
template bool BinOutput::writeElements(const uint64_t*, int, int64_t);
template bool BinOutput::writeElements(const float*, int, int64_t);
template bool BinOutput::writeElements(const double*, int, int64_t);
