// OroCountedBlockArray: a block array that knows how many of its elements are used, and can be
// saved.
//
//   OroCountedBlockArray groups;
//   groups.Add(5);  // element 1
//
// Elements are numbered from 1; element 0 exists and is not saved. See oroblockarray.h for the
// rest.
#pragma once

#include <cstdint>

#include "orobasictypes/oroblockarray.h"

class BinInput;
class BinOutput;

class OroCountedBlockArray : public OroBlockArray {
 public:
  using OroBlockArray::OroBlockArray;

  // The last element that is used.
  int32_t Count() const { return count_; }
  // Moves that mark alone: elements beyond the size read as 0.
  void SetCount(int32_t count) { count_ = count < 0 ? 0 : count; }
  // Appends an element, growing the array, and returns its index. Requires: Count() < 0x7FFFFFFE.
  int32_t Add(int32_t value);

  // The count, then the elements 1 to count, 32 bits each. Without a tag.
  bool Write(BinOutput& output) const;
  // Elements that are not read stay as they are. False for a count that is negative or larger than
  // what is left of the input, with no change, and for an input that ends early, with a count of 0.
  bool Read(BinInput& input);

 private:
  int32_t count_ = 0;
};
