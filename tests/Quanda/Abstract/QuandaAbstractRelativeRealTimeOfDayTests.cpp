#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractRelativeRealTimeOfDay.h"

namespace {

using Time = QuandaAbstractRealTimeOfDay;
using Relative = QuandaAbstractRelativeRealTimeOfDay;

Time at(int hour, int minute, double second) {
  return Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute), second)
      .value();
}

TEST(QuandaAbstractRelativeRealTimeOfDay, NormalisesWithFlooredDays) {
  EXPECT_EQ(Relative::normalizing(-0.5), Relative(-1, at(23, 59, 59.5)));
  EXPECT_EQ(Relative::normalizing(86400.25), Relative(1, at(0, 0, 0.25)));
  EXPECT_EQ(Relative::normalizing(-86400.0 * 3), Relative(-3, Time::zero));
  // A remainder that rounds up to a whole day is clamped into the last count of the day.
  EXPECT_EQ(Relative::normalizing(-1e-20),
            Relative(-1, Time::makeFromSecondsSinceDayBegan(86400.0)));
  EXPECT_EQ(Relative::makeFromDouble(3600.5), Relative(at(1, 0, 0.5)));
  EXPECT_EQ(Relative(2, at(1, 0, 0.5)).seconds(), 2 * 86400 + 3600.5);
}

TEST(QuandaAbstractRelativeRealTimeOfDayDeathTest, NonFiniteAndHugeTotalsStop) {
  EXPECT_DEATH(Relative::normalizing(std::numeric_limits<double>::quiet_NaN()),
               "signed 32-bit range");
  EXPECT_DEATH(Relative::normalizing(86400.0 * 2147483648.0), "signed 32-bit range");
  EXPECT_DEATH(Relative(std::numeric_limits<std::int32_t>::max(), Time::zero).addingHours(24),
               "signed 32-bit range");
}

TEST(QuandaAbstractRelativeRealTimeOfDay, AddsStepsAndCompares) {
  EXPECT_EQ(Relative(at(23, 59, 30.0)).addingSeconds(45.5), Relative(1, at(0, 0, 15.5)));
  EXPECT_EQ(Relative(Time::zero).adding({.hours = -1, .seconds = 0.5}),
            Relative(-1, at(23, 0, 0.5)));
  EXPECT_EQ(Relative(1, Time::zero).nextDown(),
            Relative(0, Time::makeFromSecondsSinceDayBegan(std::nextafter(86400.0, 0.0))));
  EXPECT_GT(Relative(Time::zero).nextUp(), Relative(Time::zero));
  // The quotient of the double just below 0 underflows to -0, so the day does not change.
  EXPECT_EQ(Relative(Time::zero).nextDown(), Relative(Time::zero));
  EXPECT_LT(Relative(-1, at(23, 59, 59.5)), Relative(Time::zero));

  EXPECT_EQ(Relative(1, at(0, 0, 0.5)) - Relative(-1, at(23, 59, 59.0)),
            QuandaRealTimeSpan(86401.5));
  EXPECT_EQ(QuandaRealTimeSpan(-86400.5) + Relative(Time::zero), Relative(-2, at(23, 59, 59.5)));

  const Relative a(1, at(10, 0, 0.0000001));
  EXPECT_TRUE(a.equals(Relative(1, at(10, 0, 0.0)), KeelPrecision::coarse));
  EXPECT_FALSE(a.equals(Relative(0, at(10, 0, 0.0)), KeelPrecision::coarse));
  EXPECT_NE(a, Relative(1, at(10, 0, 0.0)));
}

TEST(QuandaAbstractRelativeRealTimeOfDay, DescribesTheDayOffset) {
  EXPECT_EQ(Relative(1, at(0, 0, 15.5)).description(),
            withDefaultDecimalSeparator("00:00:15.500000, +1 day"));
  EXPECT_EQ(Relative(-3, at(23, 30, 0.0)).description(),
            withDefaultDecimalSeparator("23:30:00.000000, -3 days"));
}

}  // namespace
