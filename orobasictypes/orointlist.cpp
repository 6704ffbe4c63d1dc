#include "orobasictypes/orointlist.h"

#include "orobasictypes/bitvector.h"

OroIntList::OroIntList(const BitVector& bits) : OroIntList(11) {
  bits.ForEachSet([this](int32_t b) { Add(b); });
}
