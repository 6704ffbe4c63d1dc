// BatchJob: what the settings ask of a batch, read once at its start.
//
// A plain value. The options of the command line are these settings; a settings document may give
// them too.
#pragma once

#include <cstdint>

#include "orobasictypes/oropath.h"

struct BatchJob {
  // What "-dt" adds to the names of the saved files, as a sum.
  static constexpr int32_t kDate = 1;
  static constexpr int32_t kTime = 2;

  OroPath inputDirectory;
  OroPath outputDirectory;
  OroString script;   // file; empty: no script
  OroString prefix;   // in front of each saved file's name
  OroString postfix;  // behind it, before the extension
  int32_t dateAndTime = 0;
  bool activeOnly = false;  // save the active objects alone
};

// Declares the settings that nobody has declared yet, with what the settings document says, and
// reads all of them. Without a settings store the job is empty.
BatchJob readBatchJob();
