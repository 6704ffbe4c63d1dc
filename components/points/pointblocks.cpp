#include "components/points/pointblocks.h"

#include <algorithm>

#include "interfaces/IOroPointExtraInfo.h"

namespace {

using Points = OroMM::VectorArray;

}  // namespace

// Place 0 of the array is no point, so its first block has one point fewer.
int32_t PointBlocks::blockCount() {
  const int32_t count = points_->GetCount();
  return count == 0 ? 0 : (count >> Points::shift) + 1;
}

double* PointBlocks::positions(int32_t block, int64_t& first, int64_t& size) {
  first = 0;
  size = 0;
  if (block < 0 || block >= blockCount()) return nullptr;
  const int64_t begin = std::max<int64_t>(int64_t{block} << Points::shift, 1);
  const int64_t end = std::min<int64_t>((int64_t{block} + 1) << Points::shift, count() + 1);
  first = begin - 1;
  size = end - begin;
  OroVector* at = points_->Points().Block(block);
  if (at == nullptr) at = points_->Points().MakeBlock(block);
  return &at[begin & Points::mask].x;
}

uint8_t* PointBlocks::colors() {
  if (!points_->HasColors()) return nullptr;
  points_->SetPackedColors(true);
  return reinterpret_cast<uint8_t*>(points_->ExtraInfo()->GetPackedArray() + 1);
}
