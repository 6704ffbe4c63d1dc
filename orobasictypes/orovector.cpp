#include "orobasictypes/orovector.h"

#include <algorithm>
#include <cmath>
#include <istream>
#include <ostream>

#include "orobasictypes/bininput.h"
#include "orobasictypes/binoutput.h"

namespace {

// The squared length below which a vector has no direction to project on.
constexpr double leastSquare = 2.220446049250313e-16;

// What becomes of one component, told by the squares of the two others. The order in max() matters:
// where huge components overflow, the quotient is not a number and counts as 0.
double unitComponent(double value, double othersSquared, double lengthSquared) {
  const double sign = value < 0 ? -1.0 : 1.0;
  return sign * std::sqrt(std::max(0.0, 1.0 - othersSquared / lengthSquared));
}

// The cosine of the angle between two vectors, without its sign.
double absoluteCosine(const OroVector& a, const OroVector& b) {
  OroVector unitA;
  OroVector unitB;
  a.Normalized(unitA);
  b.Normalized(unitB);
  return std::abs(unitA.Dot(unitB));
}

bool skipTo(std::istream& in, char expected) {
  if (!(in >> std::ws)) return false;
  if (in.peek() != std::char_traits<char>::to_int_type(expected)) {
    in.setstate(std::ios::failbit);
    return false;
  }
  in.get();
  return true;
}

}  // namespace

double OroVector::Length() const { return std::sqrt(LengthSquared()); }

// No division by a root: each component stays within 0 to 1 however the squares round.
bool OroVector::Normalize() {
  const double length = LengthSquared();
  if (!(length > 0)) return false;
  const double xx = x * x;
  const double yy = y * y;
  const double zz = z * z;
  x = unitComponent(x, yy + zz, length);
  y = unitComponent(y, xx + zz, length);
  z = unitComponent(z, xx + yy, length);
  return true;
}

bool OroVector::Normalized(OroVector& out) const {
  out = *this;
  return out.Normalize();
}

bool OroVector::IsUnit(double eps) const {
  const double length = Length();
  return length >= 1 - eps && length <= 1 + eps;
}

bool OroVector::IsParallel(const OroVector& other, double eps) const {
  const double dot = Dot(other);
  return dot * dot >= LengthSquared() * (1 - eps * eps) * other.LengthSquared();
}

bool OroVector::IsPerpendicular(const OroVector& other, double eps) const {
  const double dot = Dot(other);
  return LengthSquared() * (eps * eps) * other.LengthSquared() >= dot * dot;
}

bool OroVector::NotParallel(const OroVector& other, double angleTolerance,
                            double zeroTolerance) const {
  if (IsShorterThan(zeroTolerance) || other.IsShorterThan(zeroTolerance)) return true;
  return absoluteCosine(*this, other) < 1 - angleTolerance;
}

bool OroVector::NotPerpendicular(const OroVector& other, double angleTolerance,
                                 double zeroTolerance) const {
  if (IsShorterThan(zeroTolerance) || other.IsShorterThan(zeroTolerance)) return true;
  return absoluteCosine(*this, other) > angleTolerance;
}

void OroVector::ProjectOnto(const OroVector& v, OroVector& out) const {
  const double square = v.LengthSquared();
  out = square > leastSquare ? v * (Dot(v) / square) : OroVector();
}

void OroVector::RejectFrom(const OroVector& v, OroVector& out) const {
  OroVector along;
  ProjectOnto(v, along);
  out = *this - along;
}

// Divides by a component that the others do not both exceed; which one decides the result.
void OroVector::Perpendicular(OroVector& out) const {
  const double ax = std::abs(x);
  const double ay = std::abs(y);
  const double az = std::abs(z);
  if (ax > ay ? ay > az : ax > az) {
    out = OroVector(-z / x, 0, 1);
  } else if (!(ax > ay)) {
    out = ay > az ? OroVector(0, -z / y, 1) : OroVector(1, 0, -x / z);
  } else {
    out = ax > az ? OroVector(-y / x, 1, 0) : OroVector(0, 1, -y / z);
  }
  out.Normalize();
}

bool OroVector::Write(BinOutput& output) const {
  const double values[3] = {x, y, z};
  return output.Write(values, 3);
}

bool OroVector::Read(BinInput& input) {
  double values[3] = {x, y, z};
  const bool complete = input.Read(values, 3);
  *this = OroVector(values[0], values[1], values[2]);
  return complete;
}

std::ostream& operator<<(std::ostream& out, const OroVector& v) {
  return out << "(" << v.x << "," << v.y << "," << v.z << ")";
}

std::istream& operator>>(std::istream& in, OroVector& v) {
  OroVector read;
  if (skipTo(in, '(') && in >> std::ws >> read.x && skipTo(in, ',') && in >> std::ws >> read.y &&
      skipTo(in, ',') && in >> std::ws >> read.z && skipTo(in, ')')) {
    v = read;
  }
  return in;
}
