// The wildcard matcher over characters of either width. Internal to the two wildcard classes.
//
// An automaton whose states are the positions of the pattern: all states that can be reached are
// followed at once, so that no text makes it go back. `Character` settles whether characters
// compare as signed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "orobasictypes/orowildcardstates.h"

template <class Stored, class Character>
class OroWildcardMatcher {
 public:
  using Text = std::basic_string_view<Stored>;

  OroWildcardMatcher(Text pattern, OroWildcardStates& states)
      : pattern_(pattern), states_(states) {}

  bool match(Text text) {
    states_.clear();
    states_.current()[0] = 1;
    close();
    for (const Stored character : text) {
      states_.advance();
      for (size_t i = 0; i < pattern_.size(); ++i) {
        if (states_.previous()[i] != 0) step(i, character);
      }
      close();
    }
    return states_.current()[pattern_.size()] != 0;
  }

 private:
  // A "*" may stand for nothing.
  void close() {
    uint8_t* const states = states_.current();
    for (size_t i = 0; i < pattern_.size(); ++i) {
      if (states[i] != 0 && pattern_[i] == Stored('*')) states[i + 1] = 1;
    }
  }

  void step(size_t at, Stored character) {
    uint8_t* const next = states_.current();
    const Stored p = pattern_[at];
    if (p == Stored('*')) {
      next[at] = 1;
    } else if (p == Stored('[')) {
      stepSet(at, character);
    } else if (p == Stored('?') || p == character) {
      next[at + 1] = 1;
    }
  }

  void stepSet(size_t at, Stored character) {
    const size_t closing = pattern_.find(Stored(']'), at + 1);
    if (closing == Text::npos) return;
    for (size_t i = at + 1; i < closing; ++i) {
      if (!holds(i, character)) continue;
      states_.current()[closing + 1] = 1;
      return;
    }
  }

  // A range reads the character behind its "-" even if that is the closing "]"; the "-" and the
  // end of a range count as single characters when their turn comes.
  bool holds(size_t at, Stored character) const {
    if (pattern_[at + 1] != Stored('-')) return pattern_[at] == character;
    const auto value = static_cast<Character>(character);
    return static_cast<Character>(pattern_[at]) <= value &&
           value <= static_cast<Character>(pattern_[at + 2]);
  }

  Text pattern_;
  OroWildcardStates& states_;
};
