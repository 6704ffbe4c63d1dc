// IOroLoadJournal: which component libraries this run has loaded, or tried to.
//
// A library that was loaded stands in it once, and so does one that never came up. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

// Where the bringing up of a library ended.
enum OroLoadStep : int32_t {
  kOroLoadDone = 0,
  kOroLoadFile = 1,        // the library, or one that it needs, could not be loaded
  kOroLoadEntryPoint = 2,  // it has no entry point
  kOroLoadVersion = 3,     // the entry point speaks another version of the contract
  kOroLoadComponent = 4,   // the entry point gave no component
};

class IOroLoadJournal : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroLoadJournal"; }

  virtual int32_t count() = 0;

  // Load number `index`, from 1: the library's path as
  // the description has it, the step at which it ended, and how long that took. False outside.
  virtual bool load(int32_t index, OroString& path, int32_t& step, int64_t& nanoseconds) = 0;
};
