// Matrices and vectors against those of Eigen of the same fixed size.

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <Eigen/Geometry>
#include <Eigen/LU>

#include "bench/support/ratios.h"
#include "orobasictypes/oromatrix.h"

namespace {

using PeerMatrix = Eigen::Matrix<double, 4, 4, Eigen::RowMajor>;
using PeerVector = Eigen::Vector3d;

constexpr size_t count = 100;  // all of them stay in the first cache
constexpr char peerName[] = "Eigen";

// The same transforms and points for both.
struct Sample {
  Sample() {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> number(-2, 2);
    for (size_t i = 0; i < count; ++i) {
      OroMatrix matrix;
      for (int k = 0; k < 12; ++k) matrix.m[k] = number(random);
      matrices.push_back(matrix);
      peerMatrices.emplace_back(Eigen::Map<const PeerMatrix>(matrix.m));
      points.emplace_back(number(random), number(random), number(random));
      peerPoints.emplace_back(points.back().x, points.back().y, points.back().z);
    }
  }

  std::vector<OroMatrix> matrices;
  std::vector<PeerMatrix> peerMatrices;
  std::vector<OroVector> points;
  std::vector<PeerVector> peerPoints;
};

template <class Ours, class Theirs>
void compareEach(bench::Ratios& ratios, const std::string& name, const Ours& ours,
                 const Theirs& theirs) {
  const Sample sample;
  ratios.compare(
      "100 x " + name, peerName, 0,
      [&] {
        for (size_t i = 0; i < count; ++i) ours(sample.matrices[i], sample.points[i]);
      },
      [&] {
        for (size_t i = 0; i < count; ++i) theirs(sample.peerMatrices[i], sample.peerPoints[i]);
      });
}

void keep(const auto& result) { benchmark::DoNotOptimize(&result); }

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  using M = const OroMatrix&;
  using V = const OroVector&;
  using PM = const PeerMatrix&;
  using PV = const PeerVector&;
  compareEach(
      ratios, "product", [](M m, V) { keep(m * m); },
      [](PM m, PV) {
        const PeerMatrix product = m * m;
        keep(product);
      });
  compareEach(
      ratios, "inverse",
      [](M m, V) {
        OroMatrix inverse;
        m.Invert(inverse);
        keep(inverse);
      },
      [](PM m, PV) {
        const PeerMatrix inverse = m.inverse();
        keep(inverse);
      });
  compareEach(
      ratios, "determinant", [](M m, V) { keep(m.Determinant()); },
      [](PM m, PV) { keep(m.determinant()); });
  compareEach(
      ratios, "point transformed", [](M m, V v) { keep(m.TransformPoint(v)); },
      [](PM m, PV v) {
        const PeerVector moved = m.topLeftCorner<3, 3>() * v + m.topRightCorner<3, 1>();
        keep(moved);
      });
  compareEach(
      ratios, "vector normalized",
      [](M, V v) {
        OroVector unit;
        v.Normalized(unit);
        keep(unit);
      },
      [](PM, PV v) {
        const PeerVector unit = v.normalized();
        keep(unit);
      });
}
