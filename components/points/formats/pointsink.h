// PointSink: takes the clouds that a reader finds in a file, block by block.
//
//   sink.beginCloud(head);
//   while (more) sink.addPoints(xyz, colors, count);
//   sink.endCloud(decimals);
//
// An operation that gives false ends the reading. A cloud counts only if its end was told and the
// whole reading went well: whoever keeps the points drops them otherwise. One thread.
#pragma once

#include "components/points/formats/pointcloudhead.h"

class BitVector;

class PointSink {
 public:
  virtual ~PointSink() = default;

  // The count of the head, where it is known, was checked against the size of the file: that many
  // points may be made room for.
  virtual bool beginCloud(const PointCloudHead& head) = 0;
  // `count` points of three finite coordinates each, and as many colours where the head says so,
  // else null. Valid for this call alone.
  virtual bool addPoints(const double* xyz, const PointColor* colors, size_t count) = 0;
  // The selected points of the cloud, from 1, all of which exist; told after the points, or never.
  virtual bool select(const BitVector&) { return true; }
  // `decimals` as in the head, where it is known only now.
  virtual bool endCloud(int decimals) = 0;
};
