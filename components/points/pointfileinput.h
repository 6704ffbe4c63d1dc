// PointFileInput: the bytes of a point file on the disk, with the progress of reading them.
//
//   PointFileInput input;
//   if (!input.open(path)) return false;
//   PointInputBuffer bytes(input);
//
// Main thread only.
#pragma once

#include "components/points/formats/pointinput.h"
#include "components/points/pointprogress.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orotranslate.h"

class PointFileInput : public PointInput {
 public:
  // False when there is no such file, it is a directory or it may not be read.
  bool open(const OroPath& path);

  size_t read(char* buffer, size_t size) override;
  int64_t size() const override { return file_.size(); }
  bool failed() const override { return file_.failed(); }
  bool restart() override;

 private:
  OroPath path_;
  OroFileReader file_;
  PointProgress progress_{oroKey("Reading points")};
  int64_t done_ = 0;  // bytes
};
