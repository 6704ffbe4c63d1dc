#include "orobasictypes/orovector.h"

#include <cmath>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/numeric/notfinite.h"

namespace {

using tests::nan;

void expectNear(const OroVector& v, double x, double y, double z) {
  EXPECT_NEAR(v.x, x, 1e-15);
  EXPECT_NEAR(v.y, y, 1e-15);
  EXPECT_NEAR(v.z, z, 1e-15);
}

OroVector perpendicularTo(const OroVector& v) {
  OroVector out;
  v.Perpendicular(out);
  return out;
}

TEST(OroVector, StartsAtTheOriginAndIsThreeDoubles) {
  EXPECT_EQ(OroVector(), OroVector(0, 0, 0));
  EXPECT_EQ(sizeof(OroVector), 24U);
}

TEST(OroVector, IsAddedScaledAndMultiplied) {
  OroVector v(1, 2, 3);
  v.Add(10, 20, 30);
  EXPECT_EQ(v, OroVector(11, 22, 33));
  v += OroVector(1, 1, 1);
  v -= OroVector(2, 3, 4);
  v *= 2;
  EXPECT_EQ(v, OroVector(20, 40, 60));
  EXPECT_EQ(-v, OroVector(-20, -40, -60));
  EXPECT_EQ(0.5 * v, OroVector(10, 20, 30));
  EXPECT_EQ(OroVector(1, 2, 3).Dot(OroVector(4, -5, 6)), 12);
  EXPECT_EQ(OroVector(1, 0, 0).Cross(OroVector(0, 1, 0)), OroVector(0, 0, 1));
  EXPECT_EQ(OroVector(1, 2, 3).LengthSquared(), 14);
  EXPECT_EQ(OroVector(3, 0, 4).Length(), 5);
}

TEST(OroVector, ComparesExactlyAndNeverWithWhatIsNoNumber) {
  EXPECT_EQ(OroVector(0.0, 0, 0), OroVector(-0.0, 0, 0));
  EXPECT_NE(OroVector(1, 2, 3), OroVector(1, 2, std::nextafter(3.0, 4.0)));
  EXPECT_NE(OroVector(nan, 0, 0), OroVector(nan, 0, 0));
}

TEST(OroVectorNormalize, MakesTheLengthOne) {
  OroVector v(3, 0, 4);
  EXPECT_TRUE(v.Normalize());
  expectNear(v, 0.6, 0, 0.8);
  v = OroVector(-1, -1, -1);
  EXPECT_TRUE(v.Normalize());
  expectNear(v, -std::sqrt(1.0 / 3), -std::sqrt(1.0 / 3), -std::sqrt(1.0 / 3));
}

TEST(OroVectorNormalize, ComputesEachComponentFromTheTwoOthers) {
  OroVector v(1, 2, 3);
  ASSERT_TRUE(v.Normalize());
  EXPECT_EQ(v.x, std::sqrt(1.0 - 13.0 / 14.0));
  EXPECT_EQ(v.y, std::sqrt(1.0 - 10.0 / 14.0));
  EXPECT_EQ(v.z, std::sqrt(1.0 - 5.0 / 14.0));
}

TEST(OroVectorNormalize, MakesZerosPositive) {
  OroVector v(-0.0, -2, -0.0);
  ASSERT_TRUE(v.Normalize());
  EXPECT_EQ(v, OroVector(0, -1, 0));
  EXPECT_FALSE(std::signbit(v.x));
  EXPECT_FALSE(std::signbit(v.z));
}

TEST(OroVectorNormalize, LeavesAVectorWithoutLengthAlone) {
  OroVector v(-0.0, 0, 0);
  EXPECT_FALSE(v.Normalize());
  EXPECT_TRUE(std::signbit(v.x));
  v = OroVector(1, nan, 2);
  EXPECT_FALSE(v.Normalize());
  EXPECT_EQ(v.x, 1);
  EXPECT_EQ(v.z, 2);
  v = OroVector(1e-200, 0, 0);
  EXPECT_FALSE(v.Normalize()) << "its square is 0";
}

TEST(OroVectorNormalize, SurvivesSquaresThatOverflow) {
  OroVector v(1e200, 0, 0);
  EXPECT_TRUE(v.Normalize());
  EXPECT_EQ(v, OroVector(1, 0, 0));
}

TEST(OroVectorNormalize, HasAFormThatCopies) {
  const OroVector v(0, -5, 0);
  OroVector out;
  EXPECT_TRUE(v.Normalized(out));
  EXPECT_EQ(out, OroVector(0, -1, 0));
  EXPECT_FALSE(OroVector().Normalized(out));
  EXPECT_EQ(out, OroVector());
}

TEST(OroVectorTests, ShorterIsStrict) {
  EXPECT_TRUE(OroVector(0.5, 0, 0).IsShorterThan(0.6));
  EXPECT_FALSE(OroVector(0.5, 0, 0).IsShorterThan(0.5));
  EXPECT_TRUE(OroVector(0.5, 0, 0).IsShorterThan(-0.6)) << "the square counts";
  EXPECT_FALSE(OroVector().IsShorterThan(0));
  EXPECT_FALSE(OroVector(nan, 0, 0).IsShorterThan(1));
}

TEST(OroVectorTests, UnitIncludesItsBounds) {
  EXPECT_TRUE(OroVector(1.25, 0, 0).IsUnit(0.25));
  EXPECT_TRUE(OroVector(0, 0.75, 0).IsUnit(0.25));
  EXPECT_FALSE(OroVector(1.2500001, 0, 0).IsUnit(0.25));
  EXPECT_FALSE(OroVector(0, 0, 0.7499999).IsUnit(0.25));
  EXPECT_FALSE(OroVector(nan, 0, 0).IsUnit(1e9));
}

TEST(OroVectorTests, OppositeAndZeroVectorsAreParallel) {
  EXPECT_TRUE(OroVector(1, 0, 0).IsParallel(OroVector(-2, 0, 0), 0));
  EXPECT_TRUE(OroVector(1, 0, 0).IsParallel(OroVector(), 0));
  EXPECT_FALSE(OroVector(1, 0, 0).IsParallel(OroVector(1, 0.1, 0), 0.05));
  EXPECT_TRUE(OroVector(1, 0, 0).IsParallel(OroVector(1, 0.1, 0), 0.1));
  EXPECT_FALSE(OroVector(nan, 0, 0).IsParallel(OroVector(1, 0, 0), 1));
}

TEST(OroVectorTests, PerpendicularAllowsASmallCosine) {
  EXPECT_TRUE(OroVector(1, 0, 0).IsPerpendicular(OroVector(0, 7, 0), 0));
  EXPECT_TRUE(OroVector(1, 0, 0).IsPerpendicular(OroVector(), 0));
  EXPECT_FALSE(OroVector(1, 0, 0).IsPerpendicular(OroVector(0.1, 1, 0), 0.05));
  EXPECT_TRUE(OroVector(1, 0, 0).IsPerpendicular(OroVector(0.1, 1, 0), 0.1));
  EXPECT_FALSE(OroVector(nan, 0, 0).IsPerpendicular(OroVector(1, 0, 0), 1));
}

TEST(OroVectorTests, ATooShortVectorIsNeitherParallelNorPerpendicular) {
  const OroVector tiny(1e-9, 0, 0);
  const OroVector x(1, 0, 0);
  EXPECT_TRUE(tiny.NotParallel(x, 0.5, 1e-6));
  EXPECT_TRUE(x.NotParallel(tiny, 0.5, 1e-6));
  EXPECT_TRUE(tiny.NotPerpendicular(x, 2, 1e-6));
  EXPECT_TRUE(x.NotPerpendicular(tiny, 2, 1e-6));
}

TEST(OroVectorTests, NotParallelLooksAtTheAngle) {
  const OroVector x(3, 0, 0);
  EXPECT_FALSE(x.NotParallel(OroVector(-5, 0, 0), 1e-6, 1e-6));
  EXPECT_TRUE(x.NotParallel(OroVector(1, 1, 0), 0.25, 1e-6));
  EXPECT_FALSE(x.NotParallel(OroVector(1, 1, 0), 0.3, 1e-6));
  EXPECT_FALSE(x.NotParallel(OroVector(1, 0, 0), 0, 1e-6)) << "exactly the bound";
}

TEST(OroVectorTests, NotPerpendicularLooksAtTheAngle) {
  const OroVector x(3, 0, 0);
  EXPECT_FALSE(x.NotPerpendicular(OroVector(0, 5, 0), 1e-6, 1e-6));
  EXPECT_FALSE(x.NotPerpendicular(OroVector(0, 5, 0), 0, 1e-6)) << "exactly the bound";
  EXPECT_TRUE(x.NotPerpendicular(OroVector(-1, 1, 0), 0.7, 1e-6));
  EXPECT_FALSE(x.NotPerpendicular(OroVector(-1, 1, 0), 0.71, 1e-6));
}

TEST(OroVectorProjection, SplitsAVectorInTwo) {
  const OroVector v(3, 4, 5);
  OroVector along;
  OroVector rest;
  v.ProjectOnto(OroVector(0, 2, 0), along);
  v.RejectFrom(OroVector(0, 2, 0), rest);
  EXPECT_EQ(along, OroVector(0, 4, 0));
  EXPECT_EQ(rest, OroVector(3, 0, 5));
}

TEST(OroVectorProjection, DividesOnceAndMultipliesThen) {
  const OroVector v(1, 1, 1);
  const OroVector onto(0.1, 0.3, 0.7);
  OroVector along;
  v.ProjectOnto(onto, along);
  const double factor = v.Dot(onto) / onto.LengthSquared();
  EXPECT_EQ(along, OroVector(0.1 * factor, 0.3 * factor, 0.7 * factor));
}

TEST(OroVectorProjection, KnowsNoDirectionInAShortVector) {
  const OroVector v(1, 2, 3);
  const double limit = std::sqrt(2.220446049250313e-16);
  OroVector out(9, 9, 9);
  v.ProjectOnto(OroVector(limit * 0.99, 0, 0), out);
  EXPECT_EQ(out, OroVector());
  v.RejectFrom(OroVector(limit * 0.99, 0, 0), out);
  EXPECT_EQ(out, v);
  v.ProjectOnto(OroVector(limit * 1.01, 0, 0), out);
  EXPECT_NEAR(out.x, 1, 1e-12);
}

TEST(OroVectorProjection, MayOverwriteWhatItReads) {
  OroVector v(3, 4, 5);
  v.RejectFrom(OroVector(0, 2, 0), v);
  EXPECT_EQ(v, OroVector(3, 0, 5));
  OroVector onto(0, 2, 0);
  OroVector(3, 4, 5).ProjectOnto(onto, onto);
  EXPECT_EQ(onto, OroVector(0, 4, 0));
}

TEST(OroVectorPerpendicular, DividesByALargeComponent) {
  struct Row {
    OroVector v;
    OroVector before;  // of normalizing
  };
  const Row rows[] = {
      {{2, 3, 1}, {-0.5, 0, 1}},      // x not above y, x above z
      {{1, 3, 2}, {0, -2.0 / 3, 1}},  // x not above y or z, y above z
      {{1, 2, 4}, {1, 0, -0.25}},     // z the largest
      {{4, 2, 1}, {-0.25, 0, 1}},     // x above y above z
      {{4, 1, 2}, {-0.25, 1, 0}},     // x the largest, z above y
      {{2, 1, 4}, {0, 1, -0.25}},     // z above x above y
      {{1, 1, 1}, {1, 0, -1}},        // ties count as not above
      {{2, 2, 1}, {-0.5, 0, 1}},     {{2, 1, 1}, {-0.5, 1, 0}},
      {{2, 1, 2}, {0, 1, -0.5}},     {{-2, 3, -1}, {-0.5, 0, 1}},  // signs do not choose the row
  };
  for (const Row& row : rows) {
    OroVector expected;
    row.before.Normalized(expected);
    EXPECT_EQ(perpendicularTo(row.v), expected) << row.v;
    EXPECT_NEAR(perpendicularTo(row.v).Dot(row.v), 0, 1e-15) << row.v;
  }
}

TEST(OroVectorPerpendicular, HasNoGuardForAVectorWithoutLength) {
  EXPECT_TRUE(std::isnan(perpendicularTo(OroVector()).z));
}

TEST(OroVectorText, WritesItsForm) {
  std::ostringstream out;
  out << OroVector(1, -2.5, 1e10);
  EXPECT_EQ(out.str(), "(1,-2.5,1e+10)");
}

TEST(OroVectorText, ReadsItsFormAndSkipsWhiteSpace) {
  std::istringstream in(" ( 1 ,\n-2.5,\t3e2 )(4,5,6)x");
  OroVector first;
  OroVector second;
  EXPECT_TRUE(in >> first >> second);
  EXPECT_EQ(first, OroVector(1, -2.5, 300));
  EXPECT_EQ(second, OroVector(4, 5, 6));
  EXPECT_EQ(in.get(), 'x');
}

TEST(OroVectorText, FailsAtAnyOtherCharacter) {
  for (const char* text : {"", "1,2,3)", "[1,2,3]", "(1;2,3)", "(1,2,3", "(1,2,3]", "(,2,3)",
                           "(1,2)", "(1,2,x)", "((1,2,3)"}) {
    std::istringstream in(text);
    OroVector v(7, 8, 9);
    EXPECT_FALSE(in >> v) << text;
    EXPECT_TRUE(in.fail()) << text;
    EXPECT_EQ(v, OroVector(7, 8, 9)) << text;
  }
}

TEST(OroVectorBinary, IsThreeDoubles) {
  tests::MemoryOutput output;
  EXPECT_TRUE(OroVector(1, -2, 0.5).Write(output));
  output.FlushBuffer();
  EXPECT_EQ(output.bytes,
            std::string("\x3F\xF0\0\0\0\0\0\0\xC0\0\0\0\0\0\0\0\x3F\xE0\0\0\0\0\0\0", 24));
  tests::MemoryInput input(output.bytes);
  OroVector v;
  EXPECT_TRUE(v.Read(input));
  EXPECT_EQ(v, OroVector(1, -2, 0.5));
  EXPECT_FALSE(v.Read(input)) << "there is no second one";
  EXPECT_EQ(v, OroVector(1, -2, 0.5));
}

}  // namespace
