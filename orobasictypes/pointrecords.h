// The records of a point that RealPArray gives and takes: position and colour together.
//
// Plain values. w is 1 in what is delivered, or the gray of the colour where gray was asked for;
// what is taken is not looked at. Colours are from 0 to 1.
#pragma once

struct OroFloat4 {
  float x = 0;
  float y = 0;
  float z = 0;
  float w = 1;
};

struct OroPointF {
  float x = 0;
  float y = 0;
  float z = 0;
  float w = 1;
  float r = 0;
  float g = 0;
  float b = 0;
  float a = 1;
};

struct OroPointD {
  double x = 0;
  double y = 0;
  double z = 0;
  double w = 1;
  double r = 0;
  double g = 0;
  double b = 0;
};

static_assert(sizeof(OroFloat4) == 16 && sizeof(OroPointF) == 32 && sizeof(OroPointD) == 56);
