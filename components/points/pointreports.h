// PointReports: keeps what reportPoints tells while it lives, for a caller who has to say the
// reason once more.
//
//   const PointReports reports;
//   if (!opener->open(path, options, 1)) return fail(reports.error());
//
// It hears, of several the innermost, whether there is an error service or not. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/orostring.h"

class PointReports {
 public:
  PointReports();
  ~PointReports();
  PointReports(const PointReports&) = delete;
  PointReports& operator=(const PointReports&) = delete;

  // The first error, in the user's language; empty where there was none.
  const OroString& error() const { return error_; }

  // For reportPoints.
  static void hear(int32_t severity, const OroString& text);

 private:
  OroString error_;
  PointReports* outer_;  // the one that heard before
};
