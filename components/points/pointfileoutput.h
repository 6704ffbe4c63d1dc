// PointFileOutput: hands what a writer makes to a file that becomes whole or stays as it was.
//
// The file outlives it. One thread.
#pragma once

#include "components/points/formats/pointoutput.h"
#include "orobasictypes/orowholefile.h"

class PointFileOutput : public PointOutput {
 public:
  explicit PointFileOutput(OroWholeFile& file) : file_(file) {}

  bool write(const char* bytes, size_t size) override { return file_.write(bytes, size); }

 private:
  OroWholeFile& file_;
};
