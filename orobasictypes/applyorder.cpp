#include "orobasictypes/applyorder.h"

#include "orobasictypes/bitvector.h"
#include "orobasictypes/oropool.h"

namespace {

OroPool<BitVector>& donePool() {
  static auto* const pool = new OroPool<BitVector>;
  return *pool;
}

// The cycle of records that begins at `start`, which is not done yet.
void moveCycle(const OroMM::IntArray& index, int32_t first, int32_t last, int32_t start,
               QuickSort_Assign& assign, BitVector& done) {
  done.Set(start - first);
  assign.Assign(start, -1);
  int32_t to = start;
  for (;;) {
    const int32_t from = index.Get(to);
    // Back at the start, or at a place that no permutation would come to.
    if (from < first || from > last || !done.Insert(from - first)) break;
    assign.Assign(from, to);
    to = from;
  }
  assign.Assign(-1, to);
}

}  // namespace

void applyOrder(const OroMM::IntArray& index, int32_t first, int32_t last,
                QuickSort_Assign& assign) {
  const OroPool<BitVector>::Loan done(donePool(), [] { return new BitVector; });
  applyOrder(index, first, last, assign, *done);
  if (done->IsLarge()) done->Resize(0);  // what waits in a pool takes no blocks
}

void applyOrder(const OroMM::IntArray& index, int32_t first, int32_t last, QuickSort_Assign& assign,
                BitVector& done) {
  if (first <= last && done.MaximumBit() < last - first) done.Resize(last - first);
  for (int32_t place = first; place <= last; ++place) {
    if (done.Test(place - first)) continue;
    if (index.Get(place) == place) {
      done.Set(place - first);
    } else {
      moveCycle(index, first, last, place, assign, done);
    }
  }
  done.Zero();
}
