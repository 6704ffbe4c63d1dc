// ProductVersionInfo: the version record of a product that is installed on this machine.
//
//   ProductVersionInfo info;
//   if (info.read("CowlCORE")) use(info.currentVersion(), info.currentSR());
//
// The record lies in the operating system's registry, below the local machine. A plain value; main
// thread.
#pragma once

#include <cstdint>

#include "platform/osregistry.h"

class ProductVersionInfo {
 public:
  // Reads the record of the product; false when there is none. Numbers that are absent, or no
  // numbers, stay as they are. A text counts up to its ninth character, in the notation of C: "010"
  // is 8, and "08" is 0.
  bool read(const char* product);

  // -1 until read.
  int32_t currentVersion() const { return currentVersion_; }
  int32_t currentSR() const { return currentSR_; }
  int32_t latestVersion() const { return latestVersion_; }
  int32_t latestSR() const { return latestSR_; }

 private:
  void readNumber(const char* name, int32_t& number) const;

  platform::RegistryKey key_ = nullptr;  // open while reading
  int32_t currentVersion_ = -1;
  int32_t currentSR_ = -1;
  int32_t latestVersion_ = -1;
  int32_t latestSR_ = -1;
};
