#include "bench/orobasictypes/foreignrecords.h"

int32_t ByKey::Compare(int32_t a, int32_t b) {
  const double first = keys_[static_cast<size_t>(a)];
  const double second = keys_[static_cast<size_t>(b)];
  return first < second ? -1 : first > second ? 1 : 0;
}

void MovePoints::Assign(int32_t from, int32_t to) {
  const OroVector point = from == -1 ? held_ : points_.Get(from);
  (to == -1 ? held_ : points_.At(to)) = point;
}
