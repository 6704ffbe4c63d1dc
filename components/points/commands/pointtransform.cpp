#include "components/points/commands/pointtransform.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "components/points/commands/pointset.h"

namespace {

struct Turn {
  double sine;
  double cosine;
};

Turn turnOf(double degrees) {
  const double rest = std::fmod(degrees, 360.0);
  const double quarters = rest / 90;
  if (quarters == std::floor(quarters)) {
    constexpr Turn kQuarters[] = {{0, 1}, {1, 0}, {0, -1}, {-1, 0}};
    return kQuarters[(static_cast<int>(quarters) + 4) % 4];
  }
  const double angle = rest * std::numbers::pi / 180;
  return {std::sin(angle), std::cos(angle)};
}

}  // namespace

PointTransform::PointTransform(const double* matrix) { std::copy_n(matrix, 16, m_); }

PointTransform PointTransform::shift(const double* by) {
  PointTransform out;
  for (int row = 0; row < 3; ++row) out.m_[4 * row + 3] = by[row];
  return out;
}

PointTransform PointTransform::scaling(const double* factors, const double* center) {
  PointTransform out;
  for (int row = 0; row < 3; ++row) out.m_[5 * row] = factors[row];
  out.about(center);
  return out;
}

PointTransform PointTransform::rotation(const double* axis, double degrees, const double* center) {
  const double largest = std::max({std::abs(axis[0]), std::abs(axis[1]), std::abs(axis[2])});
  double u[3] = {axis[0] / largest, axis[1] / largest, axis[2] / largest};
  const double length = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
  for (double& part : u) part /= length;
  const auto [s, c] = turnOf(degrees);
  const double cross[9] = {0, -u[2], u[1], u[2], 0, -u[0], -u[1], u[0], 0};
  PointTransform out;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      out.m_[4 * row + column] =
          (row == column ? c : 0) + s * cross[3 * row + column] + (1 - c) * (u[row] * u[column]);
    }
  }
  out.about(center);
  return out;
}

// The shift that leaves the center where it is.
void PointTransform::about(const double* center) {
  double moved[3] = {center[0], center[1], center[2]};
  apply(moved);
  for (int row = 0; row < 3; ++row) m_[4 * row + 3] = center[row] - moved[row];
}

PointTransform::Kind PointTransform::kind() const {
  if (m_[12] != 0 || m_[13] != 0 || m_[14] != 0 || m_[15] != 1) return Kind::projective;
  if (m_[1] != 0 || m_[2] != 0 || m_[4] != 0 || m_[6] != 0 || m_[8] != 0 || m_[9] != 0) {
    return Kind::affine;
  }
  const bool scales = m_[0] != 1 || m_[5] != 1 || m_[10] != 1;
  const bool shifts = m_[3] != 0 || m_[7] != 0 || m_[11] != 0;
  if (!scales) return Kind::shift;
  return shifts ? Kind::affine : Kind::scaling;
}

void PointTransform::apply(double* xyz) const {
  const double x = xyz[0];
  const double y = xyz[1];
  const double z = xyz[2];
  for (int row = 0; row < 3; ++row) {
    const double* const m = m_ + 4 * row;
    xyz[row] = m[0] * x + m[1] * y + m[2] * z + m[3];
  }
  const double w = m_[12] * x + m_[13] * y + m_[14] * z + m_[15];
  if (w == 1) return;
  for (int row = 0; row < 3; ++row) xyz[row] /= w;
}

template <class Change>
void PointTransform::forEach(PointSet& set, const Change& change) {
  for (int64_t first = 0, size = 0; first < set.count(); first += size) {
    double* const xyz = set.run(first, size);
    for (int64_t i = 0; i < size; ++i) change(xyz + 3 * i);
  }
}

void PointTransform::apply(PointSet& set) const {
  switch (kind()) {
    case Kind::shift:
      return forEach(set, [this](double* p) {
        for (int row = 0; row < 3; ++row) p[row] += m_[4 * row + 3];
      });
    case Kind::scaling:
      return forEach(set, [this](double* p) {
        for (int row = 0; row < 3; ++row) p[row] *= m_[5 * row];
      });
    default:
      return forEach(set, [this](double* p) { apply(p); });
  }
}
