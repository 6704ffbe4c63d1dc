// slotOf: the place of a virtual operation in the table of the class that declares it, from 0.
//
//   EXPECT_EQ(tests::slotOf(&IOroRegIter::atEnd), 3);
//
// Modules agree on nothing but these places. The compilers of both systems lay tables out alike: a
// pointer to a virtual operation holds its offset plus 1. A declared destructor takes two places.
#pragma once

#include <cstdint>
#include <cstring>

namespace tests {

template <class Operation>
int slotOf(Operation operation) {
  static_assert(sizeof operation == 2 * sizeof(std::intptr_t));
  std::intptr_t offset = 0;
  std::memcpy(&offset, &operation, sizeof offset);
  return static_cast<int>((offset - 1) / static_cast<std::intptr_t>(sizeof(void*)));
}

}  // namespace tests
