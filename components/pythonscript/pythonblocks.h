// PythonBlocks: walks the storage of a cloud, block by block, as arrays of NumPy.
//
//   for block in cloud.blocks():
//       block.points, block.colors, block.first, len(block)
//
// The arrays show the storage itself and keep it alive. Needs the interpreter's lock.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include "interfaces/IPointBlocks.h"
#include "orobasictypes/iptr.h"

struct PythonBlock {
  int64_t first = 0;        // the number of its first point, from 0
  pybind11::array points;   // (n, 3), float64
  pybind11::object colors;  // (n, 3), uint8; None without colours
};

class PythonBlocks {
 public:
  static void define(pybind11::module_& module);

  explicit PythonBlocks(IPointBlocks* blocks) : blocks_(blocks) {}

  // StopIteration behind the last one.
  PythonBlock next();

  // Arrays over memory of the storage, which they keep.
  static pybind11::array pointArray(const IPtr<IPointBlocks>& blocks, double* xyz, int64_t size);
  static pybind11::object colorArray(const IPtr<IPointBlocks>& blocks, int64_t first, int64_t size);

 private:
  IPtr<IPointBlocks> blocks_;
  int32_t at_ = 0;
};
