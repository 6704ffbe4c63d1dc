#pragma once

// Damage that every reader of point files has to stand.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/components/points/formats/pointmedia.h"

namespace tests {

/// Cut anywhere from `first` on, a file is refused with the place; a last line end alone may be
/// missing.
template <class Reader>
void expectCutsFail(const std::string& bytes, size_t first = 0) {
  ASSERT_TRUE(load<Reader>(bytes).good) << load<Reader>(bytes).told();
  const size_t needed = bytes.back() == '\n' ? bytes.size() - 1 : bytes.size();
  for (size_t size = first; size < needed; ++size) {
    for (const bool sized : {true, false}) {
      const Loaded cut = load<Reader>(bytes.substr(0, size), SIZE_MAX, sized);
      // A number may lose its last digits and stay one.
      const bool plain = cut.good && bytes.back() == '\n';
      if (plain && bytes.find('\n', size) == bytes.size() - 1) continue;
      EXPECT_FALSE(cut.good) << size;
      EXPECT_NE(cut.told(), "") << size;
      EXPECT_LE(cut.problem.place, static_cast<int64_t>(size) + 1) << cut.told();
    }
  }
}

/// Whatever a byte becomes, the reader ends with points or with a problem, and never asks for more
/// room than the file could fill.
template <class Reader>
void expectDamageIsHarmless(const std::string& bytes) {
  for (size_t at = 0; at < bytes.size(); ++at) {
    for (int value = 0; value < 256; value += at < 400 ? 1 : 15) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(value);
      const Loaded loaded = load<Reader>(damaged);
      EXPECT_EQ(loaded.good, loaded.told().empty()) << at << " " << value;
      EXPECT_LE(loaded.roomAsked, static_cast<int64_t>(bytes.size())) << at << " " << value;
      for (const Cloud& cloud : loaded.clouds) {
        for (const double coordinate : cloud.xyz) EXPECT_TRUE(std::isfinite(coordinate));
      }
    }
  }
}

}  // namespace tests
