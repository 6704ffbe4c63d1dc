#include "orobasictypes/bininput.h"

#include <algorithm>

int32_t BinInput::PeekInt32() {
  int32_t value = 0;
  const bool read = Read(&value, 1);
  return read && Seek(Tell() - int64_t{sizeof value}, true) ? value : -1;
}

bool BinInput::setWordWidth(int32_t bits) {
  if (wordWidth_ != 0) return false;
  wordWidth_ = bits;
  return true;
}

// One question to the medium, for no more than the staging buffer holds. The position is asked
// for the scrambler alone.
int64_t BinInput::readChunk(uint8_t* buffer, int64_t count) {
  BinIO_Scrambler* const installed = scrambler();
  const int64_t position = installed != nullptr ? Tell() : 0;
  lastCount_ = std::clamp<int64_t>(ReadRaw(buffer, count), 0, count);
  if (installed != nullptr && lastCount_ > 0) installed->Unscramble(buffer, position, lastCount_);
  return lastCount_;
}

// Asks for exactly what is missing until the element is whole.
bool BinInput::completeElement(uint8_t* element, int64_t have, int64_t width) {
  while (have < width) {
    const int64_t got = readChunk(element + have, width - have);
    if (got == 0) return false;
    have += got;
  }
  return true;
}

// Decodes the whole elements that the medium holds ready, and returns how many they were.
template <BinValue T>
int64_t BinInput::takeReady(T* values, int width, int64_t count) {
  if (scrambler() != nullptr) return 0;
  const int64_t taken = std::min<int64_t>(count, (readyEnd_ - ready_) / width);
  if (taken == 0) return 0;
  binelements::decode(values, ready_, taken, width);
  ready_ += taken * width;
  return taken;
}

// Reads large blocks into the values themselves and turns them there, and returns how many came.
// Only what the medium has is asked for, so that a value that is cut is not touched.
template <BinValue T>
int64_t BinInput::takeStraight(T* values, int width, int64_t count) {
  if (straightBlock_ == 0 || width != sizeof(T) || scrambler() != nullptr) return 0;
  const int64_t inBlock = straightBlock_ / width;
  int64_t done = 0;
  for (int64_t whole = inBlock; whole == inBlock; done += whole) {
    if (count - done < inBlock || size_ - Tell() < straightBlock_) break;
    T* const to = values + done;
    whole = ReadRaw(to, straightBlock_) / width;
    if constexpr (sizeof(T) > 1) binelements::copyReversed<sizeof(T)>(to, to, whole * sizeof(T));
  }
  return done;
}

template <BinValue T>
bool BinInput::readElements(T* values, int width, int64_t count) {
  int64_t done = 0;
  while (done < count) {
    done += takeReady(values + done, width, count - done);
    done += takeStraight(values + done, width, count - done);
    if (done == count) return true;
    const int64_t wanted = std::min(count - done, stagingSize) * width;
    const int64_t got = readChunk(staging_, std::min(wanted, stagingSize));
    if (got == 0) return false;
    const int64_t whole = got / width;
    binelements::decode(values + done, staging_, whole, width);
    done += whole;
    const int64_t rest = got % width;
    if (rest == 0) continue;
    uint8_t element[8];
    std::copy_n(staging_ + whole * width, rest, element);
    if (!completeElement(element, rest, width)) return false;
    binelements::decode(values + done++, element, 1, width);
  }
  return true;
}

template bool BinInput::readElements(int8_t*, int, int64_t);
template bool BinInput::readElements(uint8_t*, int, int64_t);
template bool BinInput::readElements(int16_t*, int, int64_t);
template bool BinInput::readElements(uint16_t*, int, int64_t);
template bool BinInput::readElements(int32_t*, int, int64_t);
template bool BinInput::readElements(uint32_t*, int, int64_t);
template bool BinInput::readElements(uint64_t*, int, int64_t);
template bool BinInput::readElements(float*, int, int64_t);
template bool BinInput::readElements(double*, int, int64_t);
