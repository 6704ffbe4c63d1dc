// PointLineText: writes points as lines of text, with a separator between their numbers.
//
//   PointLineText lines(decimals, ' ', PointLineText::Colors::channels);
//   lines.put(out, xyz, colors, count);
//
// Coordinates read back as exactly the same doubles. One thread.
#pragma once

#include "components/points/formats/pointcloudhead.h"
#include "components/points/formats/pointnumbertext.h"
#include "components/points/formats/pointoutputbuffer.h"

class PointLineText {
 public:
  enum class Colors {
    channels,  // three numbers from 0 to 255
    packed,    // one number, red * 65536 + green * 256 + blue
  };

  PointLineText(int decimals, char separator, Colors form)
      : number_(decimals), separator_(separator), form_(form) {}

  // `colors` may be null. The output remembers a failure.
  void put(PointOutputBuffer& out, const double* xyz, const PointColor* colors, size_t count) const;

 private:
  char* putColor(char* at, const PointColor& color) const;

  PointNumberText number_;
  char separator_;
  Colors form_;
};
