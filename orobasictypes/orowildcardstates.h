// OroWildcardStates: the state sets of a wildcard matcher, one byte for each position of the
// pattern and one for its end, current and previous. Internal to the two wildcard classes.
#pragma once

#include <cstdint>

class OroWildcardStates {
 public:
  explicit OroWildcardStates(int32_t patternLength);
  ~OroWildcardStates();
  OroWildcardStates(const OroWildcardStates&) = delete;
  OroWildcardStates& operator=(const OroWildcardStates&) = delete;

  uint8_t* current() { return current_; }
  uint8_t* previous() { return previous_; }
  void clear();
  void advance();  // the current set becomes the previous one; the current is empty

 private:
  int32_t size_;  // bytes of each set: pattern length plus one
  uint8_t* current_;
  uint8_t* previous_;
};
