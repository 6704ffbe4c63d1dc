// PointKernels: the loops over points that lie in one piece, for the point arrays alone.
//
//   const PointKernels& kernels = pointKernels();
//   kernels.widen(points, count, min, max);
//
// Every processor gives the same bits: products and sums in the order of the words below, none
// fused. A coordinate that is not a number widens nothing. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/kelprocessor.h"
#include "orobasictypes/orovector.h"

struct PointKernels {
  // Makes the box hold the points.
  void (*widen)(const OroVector* points, int64_t count, OroVector& min, OroVector& max);
  // The largest of `most` and of all coordinates without their signs.
  double (*largest)(const OroVector* points, int64_t count, double most);
  // Sixteen elements of a matrix by rows. The sums run through a row from its left; project divides
  // by the fourth one: one division a point, then three products.
  void (*translate)(OroVector* points, int64_t count, const double* m);
  void (*transform)(OroVector* points, int64_t count, const double* m);
  void (*project)(OroVector* points, int64_t count, const double* m);
};

extern const PointKernels pointKernelTable[kKelProcessorLevels];

inline const PointKernels& pointKernels() { return pointKernelTable[kelProcessorLevel]; }
