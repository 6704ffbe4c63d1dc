// What a caller of the sort brings: a comparison and a way to move records. Compiled apart, so that
// every sort has to call them, as it has to call those of any caller.
#pragma once

#include <cstdint>
#include <vector>

#include "orobasictypes/array.h"
#include "orobasictypes/quicksort_assign.h"
#include "orobasictypes/quicksort_compare.h"

class ByKey : public QuickSort_Compare {
 public:
  explicit ByKey(const std::vector<double>& keys) : keys_(keys) {}
  int32_t Compare(int32_t a, int32_t b) override;

 private:
  const std::vector<double>& keys_;
};

class MovePoints : public QuickSort_Assign {
 public:
  explicit MovePoints(OroMM::VectorArray& points) : points_(points) {}
  void Assign(int32_t from, int32_t to) override;

 private:
  OroMM::VectorArray& points_;
  OroVector held_;
};
