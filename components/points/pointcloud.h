// PointCloud: the points of one object of the document, with or without a colour each, and which of
// them are selected.
//
//   PointCloud cloud;
//   if (!cloud.add(xyz, colors, count)) return fail();
//   for (int32_t i = 1; i <= cloud.count(); i += size) cloud.positions(i, size, xyz);
//
// Points count from 1. Coordinates are doubles in the file's own unit, colours 8 bits a channel.
// The points lie in the blocks of the memory manager: without one there are no clouds. One thread.
#pragma once

#include <cstdint>
#include <optional>

#include "components/points/formats/pointcloudhead.h"
#include "components/points/pointcolor.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orovectorarray.h"

class PointCloud {
 public:
  static constexpr int kShortest = -1;
  // The containers of the system count points in signed 32 bits, in whole blocks.
  static constexpr int32_t kMostPoints = 0x7FFFFFFF - 2 * OroMM::VectorArray::perBlock;

  PointCloud() = default;
  PointCloud(const PointCloud&) = delete;
  PointCloud& operator=(const PointCloud&) = delete;

  // Whether there is a memory manager. Without one no point can be added.
  static bool canBeMade();

  int32_t count() const { return points_->GetCount(); }
  bool hasColors() const { return points_->HasColors(); }
  // Copies `count` points from `first` on, three coordinates each. Requires: they are all there.
  void positions(int32_t first, int32_t count, double* xyz) const;
  // The same for their colours; black where the cloud has none.
  void colors(int32_t first, int32_t count, PointColor* out) const;
  // The array itself, for work on all points, and for reading its blocks where they lie. Who adds,
  // takes or moves points in it sees to colours and selection.
  OroVectorArray& points() { return *points_; }
  const OroVectorArray& points() const { return *points_; }
  // The selected points.
  BitVector& selection() { return selection_; }
  const BitVector& selection() const { return selection_; }
  // Digits behind the point that the source wrote its coordinates with, so that a save shows them
  // in the same way; kShortest where it had no fixed number.
  int decimals = kShortest;
  // The grid that the source had its coordinates on, where it had one; points may have left it.
  std::optional<PointGrid> grid;

  // Adds points of three coordinates each, and their colours: from the first point on, or never,
  // null then. False when there is no room for all.
  bool add(const double* xyz, const PointColor* colors, int32_t count);
  // Makes room for so many points in all. Room for colours comes with them.
  void reserve(int32_t count);
  // Adds the other's points. Colours stay where both have them, or either has no points.
  bool append(const PointCloud& other);
  void dropColors() { points_->SetHasColors(false); }
  // From here on nobody else holds the array: who does keeps the points as they are now. For those
  // who move points in it.
  void own();
  // Keeps the points that the mask has, in their order.
  void keep(const BitVector& mask);
  // Point i becomes point map[i]. Requires: a permutation of 1 to count().
  void reorder(const OroMM::IntArray& map);

 private:
  uint32_t* colorRoom(int32_t first, int32_t count);

  IPtr<OroVectorArray> points_ = new OroVectorArray;
  BitVector selection_;
};
