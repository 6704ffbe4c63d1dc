// PointSet: one cloud as the commands work on it: points in runs that lie in one piece, colours in
// blocks, and a selection.
//
//   for (int64_t first = 0, size = 0; first < set.count(); first += size) {
//     double* xyz = set.run(first, size);
//   }
//
// Points are numbered from 0 here, but in the selection and in masks, whose items count from 1.
// A colour is packed: red in the lowest byte, then green, blue, and 255. One thread.
#pragma once

#include <cstdint>

class BitVector;

class PointSet {
 public:
  virtual ~PointSet() = default;

  virtual int64_t count() const = 0;
  // Point `first` and how many lie behind it in one piece, itself included: three doubles each,
  // which may be changed. Good until resize() or own(). Requires: first < count().
  virtual double* run(int64_t first, int64_t& size) = 0;

  virtual bool hasColors() const = 0;
  virtual void setHasColors(bool wanted) = 0;  // new colours are black
  // Requires: there are colours, and the range lies within the points.
  virtual void getColors(int64_t first, int64_t size, uint32_t* out) const = 0;
  virtual void setColors(int64_t first, int64_t size, const uint32_t* colors) = 0;

  // Cuts at the end or appends origins, black where there are colours.
  virtual void resize(int64_t count) = 0;
  // From here on nobody else sees the storage: who looks at it keeps the points as they are now.
  // For what moves points to other numbers.
  virtual void own() = 0;
  // The coordinates are no longer those of the file: its digits and its grid do not fit any more.
  virtual void coordinatesChanged() = 0;

  // The selected points; the vector may end before the last point.
  virtual BitVector& selection() = 0;
};
