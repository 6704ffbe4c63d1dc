// OroVector: three doubles, a point or a direction.
//
//   OroVector direction(3, 0, 4);
//   if (!direction.Normalize()) return;  // no direction in a vector of length 0
//
// A plain value. The tolerance tests take what they tolerate from the caller; a value that is not a
// number answers false in all of them.
#pragma once

#include <iosfwd>

class BinInput;
class BinOutput;

struct OroVector {
  double x = 0;
  double y = 0;
  double z = 0;

  constexpr OroVector() = default;
  constexpr OroVector(double x, double y, double z) : x(x), y(y), z(z) {}

  double LengthSquared() const { return x * x + y * y + z * z; }
  double Length() const;
  double Dot(const OroVector& other) const { return x * other.x + y * other.y + z * other.z; }
  OroVector Cross(const OroVector& other) const {
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
  }

  // Makes the length 1; false, and nothing changes, when there is no length.
  bool Normalize();
  // Makes `out` a normalized copy, or a plain one with the answer false.
  bool Normalized(OroVector& out) const;
  void Add(double dx, double dy, double dz) { *this += OroVector(dx, dy, dz); }

  bool IsShorterThan(double eps) const { return eps * eps > LengthSquared(); }
  bool IsUnit(double eps) const;
  // eps is the sine of the angle that is tolerated. Opposite vectors are parallel, and those
  // without a length are both, to any other.
  bool IsParallel(const OroVector& other, double eps) const;
  bool IsPerpendicular(const OroVector& other, double eps) const;
  // True also when either vector is shorter than `zeroTolerance`: each denies what it names.
  bool NotParallel(const OroVector& other, double angleTolerance, double zeroTolerance) const;
  bool NotPerpendicular(const OroVector& other, double angleTolerance, double zeroTolerance) const;

  // The part of this vector along `v`, and the rest of it. A `v` that is too short has nothing.
  void ProjectOnto(const OroVector& v, OroVector& out) const;
  void RejectFrom(const OroVector& v, OroVector& out) const;
  // A unit vector at a right angle to this one. Requires: a length.
  void Perpendicular(OroVector& out) const;

  // Three doubles.
  bool Write(BinOutput& output) const;
  bool Read(BinInput& input);

  OroVector& operator+=(const OroVector& other) { return *this = *this + other; }
  OroVector& operator-=(const OroVector& other) { return *this = *this - other; }
  OroVector& operator*=(double factor) { return *this = *this * factor; }
  friend OroVector operator+(const OroVector& a, const OroVector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
  }
  friend OroVector operator-(const OroVector& a, const OroVector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
  friend OroVector operator-(const OroVector& v) { return {-v.x, -v.y, -v.z}; }
  friend OroVector operator*(const OroVector& v, double factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
  }
  friend OroVector operator*(double factor, const OroVector& v) { return v * factor; }
  // Exact; a value that is not a number equals nothing.
  friend bool operator==(const OroVector&, const OroVector&) = default;
};

// "(x,y,z)". Reading skips white space; any other character sets the fail bit, is left where it
// stands, and the vector stays as it was.
std::ostream& operator<<(std::ostream& out, const OroVector& v);
std::istream& operator>>(std::istream& in, OroVector& v);
