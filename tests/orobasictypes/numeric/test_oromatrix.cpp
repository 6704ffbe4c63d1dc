#include "orobasictypes/oromatrix.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <numbers>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/numeric/notfinite.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

using tests::infinity;
using tests::nan;
constexpr double pi = std::numbers::pi;

OroMatrix fromRows(const double (&rows)[16]) {
  OroMatrix matrix;
  std::copy_n(rows, 16, matrix.m);
  return matrix;
}

// 1 to 16.
OroMatrix counted() {
  OroMatrix matrix;
  for (int i = 0; i < 16; ++i) matrix.m[i] = i + 1;
  return matrix;
}

OroMatrix diagonal(double x, double y, double z) {
  OroMatrix matrix;
  matrix.m[0] = x;
  matrix.m[5] = y;
  matrix.m[10] = z;
  return matrix;
}

// Rz * Ry * Rx.
OroMatrix rotation(double x, double y, double z) {
  OroMatrix rx;
  rx.m[5] = rx.m[10] = std::cos(x);
  rx.m[9] = std::sin(x);
  rx.m[6] = -rx.m[9];
  OroMatrix ry;
  ry.m[0] = ry.m[10] = std::cos(y);
  ry.m[2] = std::sin(y);
  ry.m[8] = -ry.m[2];
  OroMatrix rz;
  rz.m[0] = rz.m[5] = std::cos(z);
  rz.m[4] = std::sin(z);
  rz.m[1] = -rz.m[4];
  return rz * ry * rx;
}

void expectNear(const OroMatrix& a, const OroMatrix& b, double tolerance) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(a.m[i], b.m[i], tolerance) << "element " << i;
}

OroMatrix randomMatrix(std::mt19937& random) {
  std::uniform_real_distribution<double> values(-10, 10);
  OroMatrix matrix;
  for (double& element : matrix.m) element = values(random);
  return matrix;
}

TEST(OroMatrix, IsSixteenDoublesByRowsAndStartsAsTheIdentity) {
  EXPECT_EQ(sizeof(OroMatrix), 128U);
  const OroMatrix matrix;
  EXPECT_THAT(matrix.m, ElementsAre(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
  EXPECT_EQ(OroMatrix::kIdentity, matrix);
  EXPECT_THAT(OroMatrix::kZero.m, testing::Each(0.0));
}

TEST(OroMatrix, IsMadeFromFourColumns) {
  const OroMatrix matrix({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12});
  EXPECT_THAT(matrix.m, ElementsAre(1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12, 0, 0, 0, 1));
}

TEST(OroMatrix, MapsTheUnitSquareToAWindow) {
  const double window[4] = {10, 20, 16, 28};  // left, bottom, right, top
  const OroMatrix matrix = OroMatrix::FromWindow(window);
  EXPECT_THAT(matrix.m, ElementsAre(3, 0, 0, 13, 0, 4, 0, 24, 0, 0, 1, 0, 0, 0, 0, 1));
  EXPECT_EQ(matrix * OroVector(-1, -1, 5), OroVector(10, 20, 5));
  EXPECT_EQ(matrix * OroVector(1, 1, 5), OroVector(16, 28, 5));
}

TEST(OroMatrix, MakesAnOrthographicViewInFloats) {
  const OroMatrix matrix = OroMatrix::Orthographic(3, 7, 0.1F, 10);
  EXPECT_THAT(matrix.m, ElementsAre(2.0F / 3, 0, 0, 0, 0, 2.0F / 7, 0, 0, 0, 0, 1 / (10 - 0.1F), 0,
                                    0, 0, -(0.1F / (10 - 0.1F)), 1));
  EXPECT_NE(matrix.m[0], 2.0 / 3) << "not in doubles";
}

TEST(OroMatrixElements, AreReadByColumnsAndRows) {
  const OroMatrix matrix = counted();
  OroVector out;
  matrix.GetColumn(1, out);
  EXPECT_EQ(out, OroVector(2, 6, 10));
  matrix.GetColumn(3, out);
  EXPECT_EQ(out, OroVector(4, 8, 12));
  matrix.GetRow(2, out);
  EXPECT_EQ(out, OroVector(9, 10, 11));
  matrix.GetRow(3, out);
  EXPECT_EQ(out, OroVector(13, 14, 15));
  matrix.GetTranslation(out);
  EXPECT_EQ(out, OroVector(4, 8, 12));
}

TEST(OroMatrixElements, BeyondTheFourthReadAsZeroAndTakeNothing) {
  OroMatrix matrix = counted();
  for (const uint32_t i : {4U, 100U, UINT32_MAX}) {
    OroVector out(1, 1, 1);
    matrix.GetColumn(i, out);
    EXPECT_EQ(out, OroVector());
    out = OroVector(1, 1, 1);
    matrix.GetRow(i, out);
    EXPECT_EQ(out, OroVector());
    matrix.SetColumn(i, OroVector(5, 5, 5));
    matrix.SetRow(i, OroVector(5, 5, 5));
  }
  EXPECT_EQ(matrix, counted());
}

TEST(OroMatrixElements, AreSetByColumnsAndRows) {
  OroMatrix matrix = OroMatrix::kZero;
  matrix.SetColumn(1, OroVector(1, 2, 3));
  EXPECT_THAT(matrix.m, ElementsAre(0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0));
  matrix = OroMatrix::kZero;
  matrix.m[15] = 7;
  matrix.SetRow(3, OroVector(1, 2, 3));
  EXPECT_THAT(matrix.m, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 7))
      << "the fourth element of a row stays";
  matrix = OroMatrix::kZero;
  matrix.SetTranslation(OroVector(1, 2, 3));
  EXPECT_THAT(matrix.m, ElementsAre(0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0));
}

TEST(OroMatrixTests, IdentityAndEqualityAreExact) {
  OroMatrix matrix;
  EXPECT_TRUE(matrix.IsIdentity());
  for (int i = 0; i < 16; ++i) {
    matrix = OroMatrix();
    matrix.m[i] += 1e-16 + std::numeric_limits<double>::epsilon();
    EXPECT_FALSE(matrix.IsIdentity()) << i;
    EXPECT_NE(matrix, OroMatrix());
    matrix.m[i] = nan;
    EXPECT_FALSE(matrix.IsIdentity()) << i;
    const OroMatrix same = matrix;
    EXPECT_FALSE(matrix == same) << "not equal to itself";
  }
}

TEST(OroMatrixTests, AffineLooksAtTheLastRowAlone) {
  OroMatrix matrix = counted();
  EXPECT_FALSE(matrix.IsAffine());
  matrix.m[12] = matrix.m[13] = matrix.m[14] = 0;
  matrix.m[15] = 1;
  EXPECT_TRUE(matrix.IsAffine());
  for (int i = 12; i < 16; ++i) {
    OroMatrix other = matrix;
    other.m[i] += 1e-9;
    EXPECT_FALSE(other.IsAffine()) << i;
  }
}

TEST(OroMatrixTests, TranslationIncludesTheIdentity) {
  OroMatrix matrix;
  EXPECT_TRUE(matrix.IsTranslation());
  matrix.SetTranslation(OroVector(1, nan, infinity));
  EXPECT_TRUE(matrix.IsTranslation());
  for (const int i : {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15}) {
    OroMatrix other = matrix;
    other.m[i] += 1e-9;
    EXPECT_FALSE(other.IsTranslation()) << i;
  }
}

TEST(OroMatrixTests, ZeroRotationScaleIncludesTheTranslation) {
  OroMatrix matrix = OroMatrix::kZero;
  EXPECT_TRUE(matrix.IsZeroRotationScale());
  matrix.m[12] = 5;
  EXPECT_TRUE(matrix.IsZeroRotationScale()) << "the last row is not looked at";
  for (int i = 0; i < 12; ++i) {
    matrix = OroMatrix::kZero;
    matrix.m[i] = 1e-300;
    EXPECT_FALSE(matrix.IsZeroRotationScale()) << i;
    matrix.m[i] = nan;
    EXPECT_FALSE(matrix.IsZeroRotationScale()) << i;
  }
}

TEST(OroMatrixTests, RigidAllowsMirrorsAndAnyLastRow) {
  EXPECT_TRUE(rotation(0.3, -1, 2).IsRigid());
  OroMatrix mirror = diagonal(-1, 1, 1);
  mirror.m[12] = 9;
  mirror.m[15] = 0;
  mirror.SetTranslation(OroVector(5, 6, 7));
  EXPECT_TRUE(mirror.IsRigid());
}

TEST(OroMatrixTests, RigidToleratesATenMillionth) {
  EXPECT_TRUE(diagonal(1 + 0.9e-7, 1, 1).IsRigid());
  EXPECT_TRUE(diagonal(1, 1 - 0.9e-7, 1).IsRigid());
  EXPECT_FALSE(diagonal(nan, 1, 1).IsRigid());
  for (const int i : {0, 5, 10}) {
    OroMatrix matrix;
    matrix.m[i] = 1 + 1.1e-7;
    EXPECT_FALSE(matrix.IsRigid()) << i;
    matrix.m[i] = 1 - 1.1e-7;
    EXPECT_FALSE(matrix.IsRigid()) << i;
  }
  for (const int i : {1, 2, 4, 6, 8, 9}) {
    OroMatrix matrix;
    matrix.m[i] = 0.9e-7;
    EXPECT_TRUE(matrix.IsRigid()) << i;
    matrix.m[i] = -1.1e-7;
    EXPECT_FALSE(matrix.IsRigid()) << i;
  }
}

TEST(OroMatrixTests, UniformScaleMayBeNegativeAndMove) {
  OroMatrix matrix = diagonal(-2, -2, -2);
  EXPECT_TRUE(matrix.IsUniformScale()) << "the cube root has a sign";
  matrix.SetTranslation(OroVector(1, 2, 3));
  EXPECT_TRUE(matrix.IsUniformScale());
  EXPECT_TRUE(diagonal(0, 0, 0).IsUniformScale());
  EXPECT_TRUE(OroMatrix().IsUniformScale());
  EXPECT_FALSE(diagonal(2, 2, -2).IsUniformScale());
  for (const int i : {0, 5, 10}) {
    OroMatrix other = diagonal(2, 2, 2);
    other.m[i] += 2e-10;
    EXPECT_FALSE(other.IsUniformScale()) << i;
    other.m[i] = 2 + 0.5e-10;
    EXPECT_TRUE(other.IsUniformScale()) << i;
  }
  EXPECT_FALSE(diagonal(nan, nan, nan).IsUniformScale());
  for (const int i : {1, 2, 4, 6, 8, 9, 12, 13, 14, 15}) {
    OroMatrix other = diagonal(3, 3, 3);
    other.m[i] += 1e-300 + (i == 15 ? 1 : 0);
    EXPECT_FALSE(other.IsUniformScale()) << i;
  }
}

TEST(OroMatrixTests, OffDiagonalIsStrictlyAboveItsBound) {
  EXPECT_FALSE(diagonal(5, 6, 7).HasOffDiagonal(0));
  for (int i = 0; i < 16; ++i) {
    OroMatrix matrix;
    matrix.m[i] = -0.5;
    const bool counts = i == 1 || i == 2 || i == 4 || i == 6 || i == 8 || i == 9;
    EXPECT_EQ(matrix.HasOffDiagonal(0.4), counts) << i;
    EXPECT_FALSE(matrix.HasOffDiagonal(0.5)) << i;
  }
}

TEST(OroMatrixArithmetic, MultipliesRowsByColumns) {
  const OroMatrix product = counted() * counted().Transpose();
  EXPECT_EQ(product.m[0], 1 + 4 + 9 + 16);
  EXPECT_EQ(product.m[1], 1 * 5 + 2 * 6 + 3 * 7 + 4 * 8);
  EXPECT_EQ(product.m[14], 13 * 9 + 14 * 10 + 15 * 11 + 16 * 12);
  EXPECT_EQ(counted() * OroMatrix(), counted());
  EXPECT_THAT(counted().Transpose().m,
              ElementsAre(1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16));
}

TEST(OroMatrixArithmetic, TakesPointsAsColumnsAndVectorsWithoutTranslation) {
  EXPECT_EQ(counted() * OroVector(1, 10, 100), OroVector(325, 773, 1221));
  EXPECT_EQ(counted().TransformPoint(OroVector(1, 10, 100)), OroVector(325, 773, 1221));
  EXPECT_EQ(counted().TransformVector(OroVector(1, 10, 100)), OroVector(321, 765, 1209));
}

TEST(OroMatrixArithmetic, AddsInTheWrittenOrder) {
  std::mt19937 random(7);
  for (int round = 0; round < 1000; ++round) {
    const OroMatrix a = randomMatrix(random);
    const double* const m = a.m;
    const double x = 0.1 * round;
    const double y = -0.7 / (round + 1);
    const double z = 1e3 + round;
    const OroVector point = a * OroVector(x, y, z);
    ASSERT_EQ(point.x, ((m[0] * x + m[1] * y) + m[2] * z) + m[3]);
    ASSERT_EQ(point.y, ((m[4] * x + m[5] * y) + m[6] * z) + m[7]);
    ASSERT_EQ(point.z, ((m[8] * x + m[9] * y) + m[10] * z) + m[11]);
  }
}

TEST(OroMatrixArithmetic, FindsDeterminants) {
  const OroMatrix matrix = fromRows({2, 0, 1, 3, 1, 4, 0, 1, 5, 2, 2, 0, 1, 1, 3, 2});
  EXPECT_NEAR(matrix.Determinant3(), -2, 1e-12);
  EXPECT_NEAR(matrix.Determinant(), 151, 151 * 1e-9);
  EXPECT_EQ(OroMatrix().Determinant(), 1);
  EXPECT_EQ(diagonal(2, 3, -4).Determinant(), -24);
  EXPECT_EQ(counted().Determinant3(), 0);
}

TEST(OroMatrixArithmetic, SkipsWhatAZeroInTheFirstRowHides) {
  OroMatrix matrix;
  matrix.m[0] = 0;
  matrix.m[1] = 2;
  matrix.m[4] = 3;
  matrix.m[5] = infinity;  // only in the minor of the first element
  EXPECT_EQ(matrix.Determinant(), -6);
  EXPECT_FALSE(std::isfinite(matrix.Determinant3()));
  for (int shown = 0; shown < 4; ++shown) {
    // Infinities in the column of the one that is not 0 stand in all other minors alone.
    OroMatrix other = counted();
    for (int i = 0; i < 4; ++i) other.m[i] = 0;
    other.m[shown] = 1;
    other.m[4 + shown] = other.m[8 + shown] = other.m[12 + shown] = infinity;
    EXPECT_TRUE(std::isfinite(other.Determinant())) << shown;
  }
}

TEST(OroMatrixArithmetic, DeterminantOfAProductIsTheProduct) {
  std::mt19937 random(11);
  for (int round = 0; round < 200; ++round) {
    const OroMatrix a = randomMatrix(random);
    const OroMatrix b = randomMatrix(random);
    const double expected = a.Determinant() * b.Determinant();
    EXPECT_NEAR((a * b).Determinant(), expected, 1e-9 * std::max(1e4, std::abs(expected)));
  }
}

TEST(OroMatrixArithmetic, InvertsWithPivots) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    const OroMatrix matrix = randomMatrix(random);
    OroMatrix inverse;
    ASSERT_EQ(matrix.Invert(inverse), 1);
    expectNear(matrix * inverse, OroMatrix(), 1e-8);
  }
  // Every element of the diagonal is 0: without exchanges there is no pivot.
  const OroMatrix swapping = fromRows({0, 2, 0, 0, 4, 0, 0, 0, 0, 0, 0, 5, 0, 0, 8, 0});
  OroMatrix inverse;
  ASSERT_EQ(swapping.Invert(inverse), 1);
  EXPECT_EQ(inverse, fromRows({0, 0.25, 0, 0, 0.5, 0, 0, 0, 0, 0, 0, 0.125, 0, 0, 0.2, 0}));
}

TEST(OroMatrixArithmetic, InvertsByTheLargestPivot) {
  // From the small element everything else would be rounded away.
  OroMatrix matrix;
  matrix.m[0] = 1e-20;
  matrix.m[1] = 1;
  matrix.m[4] = -2;
  matrix.m[5] = 1;
  OroMatrix inverse;
  ASSERT_EQ(matrix.Invert(inverse), 1);
  expectNear(inverse, fromRows({0.5, -0.5, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}), 1e-12);
}

TEST(OroMatrixArithmetic, RefusesToInvertASingularMatrix) {
  OroMatrix inverse;
  EXPECT_EQ(OroMatrix::kZero.Invert(inverse), 0);
  OroMatrix matrix;
  matrix.m[10] = 0;
  EXPECT_EQ(matrix.Invert(inverse), 0);
  matrix.m[10] = 1e-300;
  EXPECT_EQ(matrix.Invert(inverse), 1) << "only exactly 0 is singular";
}

TEST(OroMatrixArithmetic, MayBeItsOwnInverse) {
  OroMatrix matrix = diagonal(2, 4, 8);
  EXPECT_EQ(matrix.Invert(matrix), 1);
  EXPECT_EQ(matrix, diagonal(0.5, 0.25, 0.125));
}

TEST(OroMatrixDecomposition, FindsTheScale) {
  OroVector scale;
  (rotation(1, 2, 3) * diagonal(2, 3, 4)).GetScale(scale);
  EXPECT_NEAR(scale.x, 2, 1e-14);
  EXPECT_NEAR(scale.y, 3, 1e-14);
  EXPECT_NEAR(scale.z, 4, 1e-14);
}

void expectQuaternion(const OroMatrix& matrix, double w, double x, double y, double z) {
  double q[4];
  matrix.GetRotationQuaternion(q);
  EXPECT_NEAR(q[0], w, 1e-14);
  EXPECT_NEAR(q[1], x, 1e-14);
  EXPECT_NEAR(q[2], y, 1e-14);
  EXPECT_NEAR(q[3], z, 1e-14);
}

TEST(OroMatrixDecomposition, FindsTheQuaternion) {
  const double s = std::sin(0.25);
  const double c = std::cos(0.25);
  expectQuaternion(OroMatrix(), 1, 0, 0, 0);
  expectQuaternion(rotation(0.5, 0, 0), c, s, 0, 0);
  expectQuaternion(rotation(0, 0.5, 0), c, 0, s, 0);
  expectQuaternion(rotation(0, 0, -0.5), c, 0, 0, -s);
}

TEST(OroMatrixDecomposition, FindsTheQuaternionOfHalfTurns) {
  expectQuaternion(diagonal(1, -1, -1), 0, 1, 0, 0);
  expectQuaternion(diagonal(-1, 1, -1), 0, 0, 1, 0);
  expectQuaternion(diagonal(-1, -1, 1), 0, 0, 0, 1);
  const double s = std::sin(1.5);
  const double c = std::cos(1.5);
  expectQuaternion(rotation(3, 0, 0), c, s, 0, 0);
  expectQuaternion(rotation(0, 3, 0), c, 0, s, 0);
  expectQuaternion(rotation(0, 0, 3), c, 0, 0, s);
}

TEST(OroMatrixDecomposition, QuaternionTurnsLikeTheMatrix) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> angles(-3, 3);
  for (int round = 0; round < 500; ++round) {
    const OroMatrix matrix = rotation(angles(random), angles(random), angles(random));
    double q[4];
    matrix.GetRotationQuaternion(q);
    const auto [w, x, y, z] = q;
    const OroMatrix turned =
        fromRows({1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y), 0,  //
                  2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x), 0,  //
                  2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y), 0,  //
                  0, 0, 0, 1});
    expectNear(turned, matrix, 1e-12);
  }
}

TEST(OroMatrixDecomposition, FindsTheAxis) {
  OroVector axis;
  rotation(0, 0, 1.2).GetRotationAxis(axis);
  EXPECT_NEAR(axis.x, 0, 1e-14);
  EXPECT_NEAR(axis.y, 0, 1e-14);
  EXPECT_NEAR(axis.z, 1, 1e-14);
  OroMatrix().GetRotationAxis(axis);
  EXPECT_TRUE(std::isnan(axis.x)) << "a rotation by 0 has none";
}

TEST(OroMatrixDecomposition, FindsTheAnglesOfTheGeneralCase) {
  OroVector angles;
  rotation(0.3, 0.4, 0.5).GetEulerAngles(angles);
  EXPECT_NEAR(angles.x, 0.3, 1e-14);
  EXPECT_NEAR(angles.y, 0.4, 1e-14);
  EXPECT_NEAR(angles.z, 0.5, 1e-14);
  // A negative second angle is told as pi less itself, the others turn by half a circle with it.
  rotation(0.3, -0.4, 0.5).GetEulerAngles(angles);
  EXPECT_NEAR(angles.x, 0.3 - pi, 1e-14);
  EXPECT_NEAR(angles.y, pi + 0.4, 1e-14);
  EXPECT_NEAR(angles.z, 0.5 - pi, 1e-14);
}

TEST(OroMatrixDecomposition, AnglesTurnLikeTheMatrix) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> values(-3, 3);
  for (int round = 0; round < 500; ++round) {
    const OroMatrix matrix = rotation(values(random), values(random), values(random));
    OroVector angles;
    matrix.GetEulerAngles(angles);
    expectNear(rotation(angles.x, angles.y, angles.z), matrix, 1e-9);
    EXPECT_GE(angles.y, 0);
  }
}

TEST(OroMatrixDecomposition, LeavesTheThirdAngleOutWhereItTurnsWithTheFirst) {
  for (const double second : {pi / 2, -pi / 2, pi / 2 - 0.00005, 3 * pi / 2}) {
    const OroMatrix matrix = rotation(0.7, second, 0.2);
    OroVector angles;
    matrix.GetEulerAngles(angles);
    EXPECT_EQ(angles.z, 0) << second;
    expectNear(rotation(angles.x, angles.y, angles.z), matrix, 1e-4);
  }
  OroVector angles;
  rotation(0.7, pi / 2 - 0.0003, 0.2).GetEulerAngles(angles);
  EXPECT_NEAR(angles.z, 0.2, 1e-9) << "beyond the tolerance they can be told apart";
}

TEST(OroMatrixText, WritesABlankBehindEveryNumber) {
  std::ostringstream out;
  out << counted();
  EXPECT_EQ(out.str(), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 ");
}

TEST(OroMatrixText, ReadsSixteenNumbers) {
  std::istringstream in("1 2 3 4\n5 6 7 8\n9 10 11 12\n13 14 15 16 17");
  OroMatrix matrix;
  EXPECT_TRUE(in >> matrix);
  EXPECT_EQ(matrix, counted());
  std::istringstream few("1 2 3");
  EXPECT_FALSE(few >> matrix);
}

std::string printed(const std::function<void()>& print) {
  testing::internal::CaptureStdout();
  print();
  std::fflush(stdout);
  std::string text = testing::internal::GetCapturedStdout();
  std::erase(text, '\r');
  return text;
}

TEST(OroMatrixText, PrintsRowsWithoutAClosingParenthesis) {
  const std::string rows =
      "(    1.000000     2.000000     3.000000     4.000000\n"
      "(    5.000000     6.000000     7.000000     8.000000\n"
      "(    9.000000    10.000000    11.000000    12.000000\n"
      "(   13.000000    14.000000    15.000000    16.000000\n";
  EXPECT_EQ(printed([] { counted().Print(); }), rows);
  EXPECT_EQ(printed([] { counted().Print("camera"); }), "camera\n" + rows + "\n");
}

TEST(OroMatrixBinary, IsSixteenDoublesByRows) {
  tests::MemoryOutput output;
  EXPECT_TRUE(counted().Write(output));
  output.FlushBuffer();
  tests::MemoryOutput doubles;
  for (int i = 1; i <= 16; ++i) {
    const double value = i;
    doubles.Write(&value, 1);
  }
  doubles.FlushBuffer();
  EXPECT_EQ(output.bytes, doubles.bytes);
  tests::MemoryInput input(output.bytes);
  OroMatrix matrix;
  EXPECT_TRUE(matrix.Read(input));
  EXPECT_EQ(matrix, counted());
  EXPECT_THAT(input.asked, ElementsAre(32, 32, 32, 32)) << "row by row";
  EXPECT_FALSE(matrix.Read(input));
}

// The output flushes when fewer than 256 bytes are free, which it looks at once for each write.
TEST(OroMatrixBinary, IsWrittenRowByRow) {
  tests::MemoryOutput rows;
  tests::MemoryOutput whole;
  for (tests::MemoryOutput* output : {&rows, &whole}) {
    const char filler[744] = {};
    output->WriteBytes(filler, sizeof filler);  // 280 bytes are free
  }
  counted().Write(rows);
  whole.Write(counted().m, 16);
  rows.FlushBuffer();
  whole.FlushBuffer();
  EXPECT_THAT(rows.written, ElementsAre(776, 96));
  EXPECT_THAT(whole.written, ElementsAre(872));
}

}  // namespace
