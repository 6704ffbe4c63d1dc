// PointTransform: moves points by a matrix of four by four, rows one after the other.
//
//   PointTransform::rotation(axis, degrees, center).apply(set);
//
// A pure shift only adds and a pure scaling only multiplies, so that no digit is lost to the rest
// of the matrix. A plain value.
#pragma once

class PointSet;

class PointTransform {
 public:
  PointTransform() = default;  // leaves all points where they are
  // Sixteen numbers; a last row other than 0 0 0 1 divides by what it gives.
  explicit PointTransform(const double* matrix);

  static PointTransform shift(const double* by);
  // About a point that stays.
  static PointTransform scaling(const double* factors, const double* center);
  // Counterclockwise as seen against the axis, which need not have the length 1. Requires: it is
  // not 0. Multiples of 90 degrees are exact.
  static PointTransform rotation(const double* axis, double degrees, const double* center);

  const double* matrix() const { return m_; }
  void apply(double* xyz) const;
  void apply(PointSet& set) const;

 private:
  enum class Kind { shift, scaling, affine, projective };

  Kind kind() const;
  void about(const double* center);
  template <class Change>
  static void forEach(PointSet& set, const Change& change);

  double m_[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};
