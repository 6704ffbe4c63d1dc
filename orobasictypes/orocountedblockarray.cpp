#include "orobasictypes/orocountedblockarray.h"

#include <algorithm>

#include "orobasictypes/bininput.h"
#include "orobasictypes/binoutput.h"

int32_t OroCountedBlockArray::Add(int32_t value) {
  const int32_t i = count_ + 1;
  if (i >= Size()) Resize(i + 1, 0, true);
  Set(i, value);
  return count_ = i;
}

// Block by block; what lies beyond the size counts as zeros.
bool OroCountedBlockArray::Write(BinOutput& output) const {
  if (!output.Write(&count_, 1)) return false;
  const int64_t perBlock = int64_t{1} << Shift();
  const int64_t end = std::min<int64_t>(int64_t{count_} + 1, Size());
  for (int64_t i = 1; i < end;) {
    const int64_t run = std::min(end - i, perBlock - (i & (perBlock - 1)));
    if (!output.Write(at(static_cast<int32_t>(i)), run)) return false;
    i += run;
  }
  constexpr int32_t absent = 0;
  for (int64_t i = std::max<int64_t>(end, 1); i <= count_; ++i) {
    if (!output.Write(&absent, 1)) return false;
  }
  return output.IsGood();
}

bool OroCountedBlockArray::Read(BinInput& input) {
  int32_t count = 0;
  if (!input.Read(&count, 1) || count < 0 || count > INT32_MAX - 2) return false;
  if (input.GetSize() > 0 && int64_t{count} * 4 > input.GetSize() - input.Tell()) return false;
  count_ = 0;
  const int64_t perBlock = int64_t{1} << Shift();
  // With each block that comes, so that an input that promises much does not get it on its word.
  for (int64_t i = 1; i <= count;) {
    const int64_t run = std::min(int64_t{count} + 1 - i, perBlock - (i & (perBlock - 1)));
    const int64_t needed = std::min(i + run, int64_t{count} + 2);
    if (needed > Size()) Resize(static_cast<int32_t>(needed), -1, true);
    if (!input.Read(at(static_cast<int32_t>(i)), run)) return false;
    i += run;
  }
  Resize(count + 2, -1, true);
  count_ = count;
  return input.IsGood();
}
