// QuickSort_Assign: what applyOrder moves records through.
//
// Whoever has records to bring into an order derives from it, and holds one record beside them.
#pragma once

#include <cstdint>

class QuickSort_Assign {
 public:
  virtual ~QuickSort_Assign() = default;

  // Copies the record at place `from` to place `to`; -1 is the one that this object holds.
  virtual void Assign(int32_t from, int32_t to) = 0;
};
