// Which place an operation has among the operations of its own interface, counted from 1. Modules
// are built apart, so the places are part of the contract. A virtual destructor that the interface
// declares takes two places.
//
//   EXPECT_EQ(tests::slotNumber(&IOroTranslator::translate), 8);
#pragma once

#include <cstdint>
#include <cstring>

namespace tests {

// The compilers of both systems keep the offset in the class's table, plus one, in the first word
// of a pointer to a virtual operation.
template <class Operation>
int slotNumber(Operation operation) {
  static_assert(sizeof operation == 2 * sizeof(std::uintptr_t));
  std::uintptr_t words[2];
  std::memcpy(words, &operation, sizeof words);
  if (words[0] % 2 == 0 || words[1] != 0) return -1;  // not virtual, or of another class
  return static_cast<int>((words[0] - 1) / sizeof(void*)) + 1;
}

}  // namespace tests
