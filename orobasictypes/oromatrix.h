// OroMatrix: four by four doubles by rows, the transform of points.
//
//   OroMatrix move;
//   move.SetTranslation(OroVector(1, 2, 3));
//   OroVector moved = move.TransformPoint(point);
//
// A point is a column: x' = m[0] * x + m[1] * y + m[2] * z + m[3]. So m[3], m[7], m[11] are the
// translation and m[12] to m[15] the last row. A plain value.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "orobasictypes/orovector.h"

class BinInput;
class BinOutput;

struct OroMatrix {
  static const OroMatrix kIdentity;
  static const OroMatrix kZero;

  double m[16];

  // The identity.
  constexpr OroMatrix() : m{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1} {}
  // The four columns of the upper three rows; the last row is 0, 0, 0, 1.
  OroMatrix(const OroVector& a, const OroVector& b, const OroVector& c, const OroVector& d);
  // The square from -1 to 1 onto a window of left, bottom, right, top.
  static OroMatrix FromWindow(const double window[4]);
  // Computed in floats. What depends on `nearPlane` alone stands in the last row, as renderers that
  // take rows for columns expect it.
  static OroMatrix Orthographic(float width, float height, float nearPlane, float farPlane);

  // The upper three elements of a column, the first three of a row. An index above 3 gets the zero
  // vector and sets nothing.
  void GetColumn(uint32_t i, OroVector& out) const;
  void SetColumn(uint32_t i, const OroVector& v);
  void GetRow(uint32_t i, OroVector& out) const;
  void SetRow(uint32_t i, const OroVector& v);
  void GetTranslation(OroVector& out) const { GetColumn(3, out); }
  void SetTranslation(const OroVector& v) { SetColumn(3, v); }

  // Exact tests, but where a bound is told. What is not a number answers false.
  bool IsIdentity() const { return *this == kIdentity; }
  bool IsAffine() const { return m[12] == 0 && m[13] == 0 && m[14] == 0 && m[15] == 1; }
  bool IsTranslation() const;  // also without any
  // The twelve elements of the upper three rows, the translation among them.
  bool IsZeroRotationScale() const;
  // Columns of length 1 at right angles, within 1e-7. Mirrors and any last row pass.
  bool IsRigid() const;
  // One factor on the diagonal, within 1e-10, and nothing else but a translation.
  bool IsUniformScale() const;
  bool HasOffDiagonal(double eps) const;  // any of the six of the upper left beyond eps

  double Determinant3() const;  // of the upper left three by three
  double Determinant() const;
  OroMatrix Transpose() const;
  OroVector TransformPoint(const OroVector& point) const;
  OroVector TransformVector(const OroVector& vector) const;  // without the translation

  void GetScale(OroVector& out) const;  // the lengths of the first three columns
  // w, x, y, z. Requires: a rotation, as do the two below.
  void GetRotationQuaternion(double out[4]) const;
  void GetRotationAxis(OroVector& out) const;  // not numbers for a rotation by 0
  // The angles about x, y, z, in radians: this is Rz * Ry * Rx. The second is never negative; where
  // the first and the third turn about one axis, the third is 0.
  void GetEulerAngles(OroVector& out) const;
  // 1, or 0 for a singular matrix, after which `result` holds nothing of use.
  int32_t Invert(OroMatrix& result) const;

  // Sixteen doubles, row by row.
  bool Write(BinOutput& output) const;
  bool Read(BinInput& input);
  // On standard output: the rows; with a label, its line before them and an empty one behind.
  void Print() const;
  void Print(const char* label) const;

  friend OroMatrix operator*(const OroMatrix& a, const OroMatrix& b);
  friend OroVector operator*(const OroMatrix& a, const OroVector& point) {
    return a.TransformPoint(point);
  }
  friend bool operator==(const OroMatrix&, const OroMatrix&) = default;
};

// Sixteen numbers by rows; each one written has a blank behind it.
std::ostream& operator<<(std::ostream& out, const OroMatrix& matrix);
std::istream& operator>>(std::istream& in, OroMatrix& matrix);

inline OroVector OroMatrix::TransformPoint(const OroVector& p) const {
  return {m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3], m[4] * p.x + m[5] * p.y + m[6] * p.z + m[7],
          m[8] * p.x + m[9] * p.y + m[10] * p.z + m[11]};
}

inline OroVector OroMatrix::TransformVector(const OroVector& v) const {
  return {m[0] * v.x + m[1] * v.y + m[2] * v.z, m[4] * v.x + m[5] * v.y + m[6] * v.z,
          m[8] * v.x + m[9] * v.y + m[10] * v.z};
}
