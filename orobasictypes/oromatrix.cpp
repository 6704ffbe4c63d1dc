#include "orobasictypes/oromatrix.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <istream>
#include <numbers>
#include <ostream>

#include "orobasictypes/bininput.h"
#include "orobasictypes/binoutput.h"

namespace {

constexpr double rigidTolerance = 1e-7;
constexpr double scaleTolerance = 1e-10;
constexpr double angleTolerance = 0.0001;

constexpr OroMatrix zeroMatrix() {
  OroMatrix matrix;
  for (double& element : matrix.m) element = 0;
  return matrix;
}

bool isAllZero(const double* elements, int count) {
  return std::all_of(elements, elements + count, [](double element) { return element == 0; });
}

// The determinant of the rows 1 to 3 without one column.
double minorOf(const double* m, int column) {
  int c[3];
  for (int i = 0, k = 0; i < 4; ++i) {
    if (i != column) c[k++] = i;
  }
  return m[4 + c[0]] * (m[8 + c[1]] * m[12 + c[2]] - m[8 + c[2]] * m[12 + c[1]]) -
         m[4 + c[1]] * (m[8 + c[0]] * m[12 + c[2]] - m[8 + c[2]] * m[12 + c[0]]) +
         m[4 + c[2]] * (m[8 + c[0]] * m[12 + c[1]] - m[8 + c[1]] * m[12 + c[0]]);
}

// The row at or below `column` whose element in that column is largest.
int pivotRow(const OroMatrix& a, int column) {
  int best = column;
  for (int row = column + 1; row < 4; ++row) {
    if (std::abs(a.m[row * 4 + column]) > std::abs(a.m[best * 4 + column])) best = row;
  }
  return best;
}

void swapRows(OroMatrix& a, int first, int second) {
  std::swap_ranges(a.m + first * 4, a.m + first * 4 + 4, a.m + second * 4);
}

void scaleRow(OroMatrix& a, int row, double divisor) {
  for (int i = 0; i < 4; ++i) a.m[row * 4 + i] /= divisor;
}

void subtractRow(OroMatrix& a, int row, int from, double factor) {
  for (int i = 0; i < 4; ++i) a.m[row * 4 + i] -= factor * a.m[from * 4 + i];
}

}  // namespace

constinit const OroMatrix OroMatrix::kIdentity;
constinit const OroMatrix OroMatrix::kZero = zeroMatrix();

OroMatrix::OroMatrix(const OroVector& a, const OroVector& b, const OroVector& c, const OroVector& d)
    : m{a.x, b.x, c.x, d.x, a.y, b.y, c.y, d.y, a.z, b.z, c.z, d.z, 0, 0, 0, 1} {}

OroMatrix OroMatrix::FromWindow(const double window[4]) {
  const double left = window[0];
  const double bottom = window[1];
  const double right = window[2];
  const double top = window[3];
  OroMatrix result;
  result.m[0] = (right - left) / 2;
  result.m[3] = (left + right) / 2;
  result.m[5] = (top - bottom) / 2;
  result.m[7] = (top + bottom) / 2;
  return result;
}

OroMatrix OroMatrix::Orthographic(float width, float height, float nearPlane, float farPlane) {
  OroMatrix result;
  result.m[0] = 2.0F / width;
  result.m[5] = 2.0F / height;
  result.m[10] = 1.0F / (farPlane - nearPlane);
  result.m[14] = -(nearPlane / (farPlane - nearPlane));
  return result;
}

void OroMatrix::GetColumn(uint32_t i, OroVector& out) const {
  out = i > 3 ? OroVector() : OroVector(m[i], m[4 + i], m[8 + i]);
}

void OroMatrix::SetColumn(uint32_t i, const OroVector& v) {
  if (i > 3) return;
  m[i] = v.x;
  m[4 + i] = v.y;
  m[8 + i] = v.z;
}

void OroMatrix::GetRow(uint32_t i, OroVector& out) const {
  out = i > 3 ? OroVector() : OroVector(m[i * 4], m[i * 4 + 1], m[i * 4 + 2]);
}

void OroMatrix::SetRow(uint32_t i, const OroVector& v) {
  if (i > 3) return;
  m[i * 4] = v.x;
  m[i * 4 + 1] = v.y;
  m[i * 4 + 2] = v.z;
}

bool OroMatrix::IsTranslation() const {
  return IsAffine() && m[0] == 1 && m[5] == 1 && m[10] == 1 && m[1] == 0 && m[2] == 0 &&
         m[4] == 0 && m[6] == 0 && m[8] == 0 && m[9] == 0;
}

bool OroMatrix::IsZeroRotationScale() const { return isAllZero(m, 12); }

bool OroMatrix::IsRigid() const {
  OroVector columns[3];
  for (uint32_t i = 0; i < 3; ++i) {
    GetColumn(i, columns[i]);
    if (!(std::abs(columns[i].Length() - 1) <= rigidTolerance)) return false;
  }
  return std::abs(columns[0].Dot(columns[1])) <= rigidTolerance &&
         std::abs(columns[0].Dot(columns[2])) <= rigidTolerance &&
         std::abs(columns[1].Dot(columns[2])) <= rigidTolerance;
}

bool OroMatrix::IsUniformScale() const {
  if (!IsAffine()) return false;
  for (const int i : {1, 2, 4, 6, 8, 9}) {
    if (m[i] != 0) return false;
  }
  const double scale = std::cbrt(m[0] * m[5] * m[10]);
  return std::abs(m[0] - scale) < scaleTolerance && std::abs(m[5] - scale) < scaleTolerance &&
         std::abs(m[10] - scale) < scaleTolerance;
}

bool OroMatrix::HasOffDiagonal(double eps) const {
  for (const int i : {1, 2, 4, 6, 8, 9}) {
    if (std::abs(m[i]) > eps) return true;
  }
  return false;
}

double OroMatrix::Determinant3() const {
  return m[0] * (m[5] * m[10] - m[6] * m[9]) - m[1] * (m[4] * m[10] - m[6] * m[8]) +
         m[2] * (m[4] * m[9] - m[5] * m[8]);
}

// A zero in the first row hides what is behind it, an infinity too.
double OroMatrix::Determinant() const {
  double sum = 0;
  for (int column = 0; column < 4; ++column) {
    if (m[column] == 0) continue;
    const double term = m[column] * minorOf(m, column);
    sum = column % 2 == 0 ? sum + term : sum - term;
  }
  return sum;
}

OroMatrix OroMatrix::Transpose() const {
  OroMatrix result;
  for (int i = 0; i < 16; ++i) result.m[i] = m[i % 4 * 4 + i / 4];
  return result;
}

OroMatrix operator*(const OroMatrix& a, const OroMatrix& b) {
  OroMatrix result;
  for (int row = 0; row < 16; row += 4) {
    for (int column = 0; column < 4; ++column) {
      result.m[row + column] = a.m[row] * b.m[column] + a.m[row + 1] * b.m[column + 4] +
                               a.m[row + 2] * b.m[column + 8] + a.m[row + 3] * b.m[column + 12];
    }
  }
  return result;
}

void OroMatrix::GetScale(OroVector& out) const {
  OroVector columns[3];
  for (uint32_t i = 0; i < 3; ++i) GetColumn(i, columns[i]);
  out = OroVector(columns[0].Length(), columns[1].Length(), columns[2].Length());
}

void OroMatrix::GetRotationQuaternion(double out[4]) const {
  const double trace = m[0] + m[5] + m[10];
  if (trace > 0) {
    const double s = std::sqrt(trace + 1);
    const double factor = 0.5 / s;
    out[0] = s / 2;
    out[1] = (m[9] - m[6]) * factor;
    out[2] = (m[2] - m[8]) * factor;
    out[3] = (m[4] - m[1]) * factor;
    return;
  }
  // Of the axes, the one that the rotation keeps most of; the other two follow it in their circle.
  int i = m[5] > m[0] ? 1 : 0;
  if (m[10] > m[i * 5]) i = 2;
  const int j = (i + 1) % 3;
  const int k = (i + 2) % 3;
  const double s = std::sqrt(m[i * 5] + 1 - m[j * 5] - m[k * 5]);
  const double factor = 0.5 / s;
  out[0] = (m[k * 4 + j] - m[j * 4 + k]) * factor;
  out[1 + i] = s / 2;
  out[1 + j] = (m[j * 4 + i] + m[i * 4 + j]) * factor;
  out[1 + k] = (m[k * 4 + i] + m[i * 4 + k]) * factor;
}

void OroMatrix::GetRotationAxis(OroVector& out) const {
  double quaternion[4];
  GetRotationQuaternion(quaternion);
  const double sine = std::sin(std::acos(quaternion[0]));
  out = OroVector(quaternion[1] / sine, quaternion[2] / sine, quaternion[3] / sine);
}

void OroMatrix::GetEulerAngles(OroVector& out) const {
  constexpr double pi = std::numbers::pi;
  const auto isNothing = [this](int i) { return std::abs(m[i]) < angleTolerance; };
  if (isNothing(0) && isNothing(4) && isNothing(9) && isNothing(10)) {
    const bool isUp = m[8] < 0;
    out = OroVector(std::atan2(isUp ? m[1] : -m[1], m[5]), isUp ? pi / 2 : 3 * pi / 2, 0);
    return;
  }
  double second = -std::asin(m[8]);
  if (second < 0) second = pi - second;
  const double c = 1 / std::cos(second);
  out = OroVector(std::atan2(m[9] * c, m[10] * c), second, std::atan2(m[4] * c, m[0] * c));
}

int32_t OroMatrix::Invert(OroMatrix& result) const {
  OroMatrix a = *this;
  result = kIdentity;
  for (int column = 0; column < 4; ++column) {
    const int row = pivotRow(a, column);
    const double pivot = a.m[row * 4 + column];
    if (pivot == 0) return 0;
    if (row != column) {
      swapRows(a, row, column);
      swapRows(result, row, column);
    }
    scaleRow(a, column, pivot);
    scaleRow(result, column, pivot);
    for (int other = 0; other < 4; ++other) {
      if (other == column) continue;
      const double factor = a.m[other * 4 + column];
      subtractRow(a, other, column, factor);
      subtractRow(result, other, column, factor);
    }
  }
  return 1;
}

// Row by row: where the output flushes depends on it.
bool OroMatrix::Write(BinOutput& output) const {
  for (int row = 0; row < 16; row += 4) {
    if (!output.Write(m + row, 4)) return false;
  }
  return true;
}

bool OroMatrix::Read(BinInput& input) {
  for (int row = 0; row < 16; row += 4) {
    if (!input.Read(m + row, 4)) return false;
  }
  return true;
}

// The closing parenthesis is missing on purpose: what reads these lines does not know one.
void OroMatrix::Print() const {
  for (int row = 0; row < 16; row += 4) {
    std::printf("(%12.6f %12.6f %12.6f %12.6f\n", m[row], m[row + 1], m[row + 2], m[row + 3]);
  }
}

void OroMatrix::Print(const char* label) const {
  std::printf("%s\n", label);
  Print();
  std::printf("\n");
}

std::ostream& operator<<(std::ostream& out, const OroMatrix& matrix) {
  for (const double element : matrix.m) out << element << " ";
  return out;
}

std::istream& operator>>(std::istream& in, OroMatrix& matrix) {
  for (double& element : matrix.m) in >> element;
  return in;
}
