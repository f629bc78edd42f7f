#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

namespace {

TEST(QuandaRealTimeSpanTests, MakeAddsInDoubles) {
  EXPECT_EQ(QuandaRealTimeSpan::make(0, 0, 1, 0.5).seconds(), 60.5);
  EXPECT_EQ(QuandaRealTimeSpan::make(1, 2, 3, 4.25).seconds(), 93784.25);
  EXPECT_EQ(QuandaRealTimeSpan::make(0, 0, 0, -1.5).seconds(), -1.5);
  EXPECT_EQ(QuandaRealTimeSpan(QuandaNaturalTimeSpan(7)).seconds(), 7.0);
}

TEST(QuandaRealTimeSpanTests, TheThreeDivisions) {
  const QuandaRealTimeSpan four(4.0);
  EXPECT_EQ(QuandaRealTimeSpan(10.0) / four, 2.5);
  // A number over a span is the plain quotient, as a span, not the reciprocal of a rate.
  EXPECT_EQ((10.0 / four).seconds(), 2.5);
  EXPECT_EQ((four / 8.0).seconds(), 0.5);
}

TEST(QuandaRealTimeSpanTests, RoundingToAMultiple) {
  const QuandaRealTimeSpan minute(60.0);
  EXPECT_EQ(QuandaRealTimeSpan(90.0).rounded(minute).seconds(), 120.0);
  EXPECT_EQ(QuandaRealTimeSpan(-90.0).rounded(minute).seconds(), -120.0);
  EXPECT_EQ(QuandaRealTimeSpan(119.9).floored(minute).seconds(), 60.0);
  EXPECT_EQ(QuandaRealTimeSpan(-0.1).floored(minute).seconds(), -60.0);
  EXPECT_EQ(QuandaRealTimeSpan(60.1).ceilled(minute).seconds(), 120.0);
  EXPECT_EQ(QuandaRealTimeSpan(0.25).rounded(QuandaRealTimeSpan(0.5)).seconds(), 0.5);
}

TEST(QuandaRealTimeSpanTests, NegativeZeroEqualsAndHashesLikeZero) {
  EXPECT_FALSE(QuandaRealTimeSpan(-0.0).isNegative());
  EXPECT_EQ(QuandaRealTimeSpan(-0.0), QuandaRealTimeSpan::zero);
  EXPECT_EQ(std::hash<QuandaRealTimeSpan>{}(QuandaRealTimeSpan(-0.0)),
            std::hash<QuandaRealTimeSpan>{}(QuandaRealTimeSpan::zero));
}

TEST(QuandaRealTimeSpanTests, NonFiniteValuesPropagate) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ((QuandaRealTimeSpan(inf) + QuandaRealTimeSpan(1.0)).seconds(), inf);
  EXPECT_TRUE(std::isnan((QuandaRealTimeSpan(inf) - QuandaRealTimeSpan(inf)).seconds()));
  EXPECT_EQ((1.0 / QuandaRealTimeSpan::zero).seconds(), inf);
  EXPECT_EQ(QuandaRealTimeSpan(inf).nextUp().seconds(), inf);
}

}  // namespace
