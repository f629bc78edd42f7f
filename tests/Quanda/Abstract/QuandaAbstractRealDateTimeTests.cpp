#include <absl/time/civil_time.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <compare>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"

namespace {

using DateTime = QuandaAbstractRealDateTime;
using Natural = QuandaAbstractNaturalDateTime;
using Time = QuandaAbstractRealTimeOfDay;
using Relative = QuandaAbstractRelativeRealTimeOfDay;
using Span = QuandaRealTimeSpan;

constexpr std::string_view realDateTimePath = "Quanda/Abstract/QuandaAbstractRealDateTime";
constexpr std::string_view realTimePath = "Quanda/Abstract/QuandaAbstractRealTimeOfDay";

DateTime at(std::string_view text) { return DateTime::makeFromRfc3339String(text).value(); }
Natural natural(std::string_view text) { return Natural::makeFromRfc3339String(text).value(); }

static_assert(std::is_trivially_copyable_v<DateTime>);

TEST(QuandaAbstractRealDateTime, ReadsAndWritesFractionalSeconds) {
  const DateTime quarter = at("2024-03-05T07:08:09.25");
  EXPECT_EQ(quarter.second(), 9.25);
  EXPECT_EQ(quarter.serializedToRfc3339String(),
            withDefaultDecimalSeparator("2024-03-05T07:08:09.250000"));
  // The canonical whole-second form takes the fast path and reads the same as the general one.
  EXPECT_EQ(at("2024-03-05T07:08:09"), at("2024-03-05T07:08:9.0"));
  EXPECT_EQ(at("2024-03-05T07:08:09").serializedToRfc3339String(),
            withDefaultDecimalSeparator("2024-03-05T07:08:09.000000"));
  // Cut, not rounded.
  EXPECT_EQ(at("0005-07-09T23:59:59.9999999").serializedToRfc3339String(),
            withDefaultDecimalSeparator("0005-07-09T23:59:59.999999"));

  expectErrorChain(DateTime::makeFromRfc3339String("2024-03-05T07:08:09,25").error(),
                   {{"make(rfc3339String:)", {"rfc3339String"}},
                    {"make(iso8601String:)",
                     {"iso8601String", "tokens"},
                     "Couldn't convert third token to second",
                     realTimePath}},
                   realDateTimePath);
  expectErrorChain(DateTime::make(2024, 3, 5, 7, 60, 0.0).error(),
                   {{"make(year:month:day:hour:minute:second:)",
                     {"proposedYear", "proposedMonth", "proposedDay", "proposedHour",
                      "proposedMinute", "proposedSecond"}},
                    {"make(hour:minute:second:)",
                     {"proposedHour", "proposedMinute", "proposedSecond"},
                     "Invalid minute",
                     realTimePath}},
                   realDateTimePath);
}

TEST(QuandaAbstractRealDateTime, ConvertsToAndFromNatural) {
  // Natural to real and back is the identity, at random instants.
  std::mt19937_64 random(11);
  std::uniform_int_distribution<std::uint64_t> instants(0, Natural::maxSecondsSinceDatum);
  for (int round = 0; round < 20000; ++round) {
    const Natural dateTime = Natural::makeFromSecondsSinceDatum(instants(random));
    const DateTime real(dateTime);
    ASSERT_EQ(real.makeNatural(), dateTime);
    ASSERT_EQ(real.secondsSinceDatum(), static_cast<double>(dateTime.secondsSinceDatum()));
    ASSERT_EQ(real.localTime().time_since_epoch().count(),
              static_cast<double>(dateTime.localSeconds().time_since_epoch().count()));
  }
  const struct {
    std::string_view real, natural;
  } roundings[] = {
      {"2024-01-01T10:00:00.49", "2024-01-01T10:00:00"},
      {"2024-01-01T10:00:00.5", "2024-01-01T10:00:01"},
      {"2024-12-31T23:59:59.5", "2025-01-01T00:00:00"},
      {"0001-01-01T00:00:00.4", "0001-01-01T00:00:00"},
  };
  for (const auto& [real, expected] : roundings) {
    EXPECT_EQ(at(real).makeNatural(), natural(expected)) << real;
  }
}

TEST(QuandaAbstractRealDateTime, ArithmeticInDoubles) {
  const DateTime late = at("2024-12-31T23:59:59.75");
  EXPECT_EQ(late.addingSeconds(0.5), at("2025-01-01T00:00:00.25"));
  EXPECT_EQ(Span(0.5) + late, at("2025-01-01T00:00:00.25"));
  EXPECT_EQ(late - Span(86400.0), at("2024-12-30T23:59:59.75"));
  EXPECT_EQ(late.addingHours(-24).addingMinutes(1440), late);
  EXPECT_EQ(late.adding({.months = 2, .days = 1, .seconds = 0.25}), at("2025-03-02T00:00:00"));

  const Relative back(-1, Time::make(1, 0, 0.5).value());
  EXPECT_EQ(late + back, at("2024-12-31T01:00:00.25"));
  EXPECT_EQ(back + late, late + back);
  EXPECT_EQ(late - back, at("2025-01-01T22:59:59.25"));

  // The difference and the order are those of the seconds since the datum, doubles whose
  // precision is some microseconds here: a smaller difference vanishes in both, while == stays
  // exact, so the order is weak.
  const DateTime a = at("9999-12-31T10:00:00.1");
  const DateTime b = at("9999-12-31T10:00:00.2");
  EXPECT_EQ((b - a).seconds(), b.secondsSinceDatum() - a.secondsSinceDatum());
  EXPECT_NE((b - a).seconds(), 0.1);
  const DateTime tick = at("2024-03-05T10:00:00.000001");
  const DateTime ten0 = at("2024-03-05T10:00:00");
  EXPECT_NE(tick, ten0);
  EXPECT_EQ(tick <=> ten0, std::weak_ordering::equivalent);
  EXPECT_EQ((tick - ten0).seconds(), 0.0);
  EXPECT_TRUE(KeelDomain<DateTime>(ten0, ten0).contains(tick));
  static_assert(std::is_same_v<decltype(tick <=> ten0), std::weak_ordering>);
  EXPECT_EQ((at("2024-03-05T10:00:00") - at("2024-03-05T10:00:00.25")).seconds(), -0.25);
  EXPECT_EQ((at("2024-03-06T00:00:00") - at("2024-03-05T23:59:59.5")).seconds(), 0.5);
  EXPECT_LT(at("2024-03-05T23:59:59.99"), at("2024-03-06T00:00:00"));

  const DateTime ten = at("2024-01-01T10:00:00.5");
  EXPECT_EQ(ten.next(Time::make(10, 0, 0.5).value(), false), at("2024-01-02T10:00:00.5"));
  EXPECT_EQ(ten.next(Time::make(10, 0, 0.25).value(), true), at("2024-01-02T10:00:00.25"));
  EXPECT_EQ(at("2024-01-01T10:00:30.5").roundingToMinute(), at("2024-01-01T10:01:00"));
  EXPECT_EQ(at("2024-01-01T10:00:59.9").flooringToMinute(), at("2024-01-01T10:00:00"));
  EXPECT_EQ(at("2024-12-31T12:00:00.1").roundingToDay(), at("2025-01-01T00:00:00"));
  EXPECT_EQ(ten.replacing({.second = 75.0}).second(), Time::maxInc.second());

  EXPECT_TRUE(
      at("2024-01-01T10:00:00.0000001").equals(at("2024-01-01T10:00:00"), KeelPrecision::coarse));
  EXPECT_NE(at("2024-01-01T10:00:00.0000001"), at("2024-01-01T10:00:00"));
  EXPECT_FALSE(
      at("2024-01-01T10:00:59.9999").equals(at("2024-01-01T10:01:00"), KeelPrecision::coarse));
}

TEST(QuandaAbstractRealDateTime, CountsAndChrono) {
  EXPECT_EQ(DateTime::makeFromSecondsSinceDatum(86400.5), at("0001-01-02T00:00:00.5"));
  EXPECT_EQ(DateTime::zero.nextDown(), DateTime::zero);
  EXPECT_GT(DateTime::zero.nextUp(), DateTime::zero);
  EXPECT_EQ(DateTime::maxInc.serializedToRfc3339String(),
            withDefaultDecimalSeparator("9999-12-31T23:59:59.999999"));

  const DateTime quarter = at("2024-03-05T07:08:09.25");
  EXPECT_EQ(DateTime::make(quarter.localTime()).value(), quarter);
  const auto outside =
      DateTime::make(DateTime::zero.localTime() - std::chrono::duration<double>(1));
  ASSERT_FALSE(outside);
  EXPECT_EQ(outside.error().message(), "Local time outside the valid range");
  EXPECT_FALSE(DateTime::make(std::chrono::local_time<std::chrono::duration<double>>(
      std::chrono::duration<double>(std::numeric_limits<double>::quiet_NaN()))));
  EXPECT_FALSE(DateTime::make(std::chrono::local_time<std::chrono::duration<double>>(
      std::chrono::duration<double>(std::numeric_limits<double>::infinity()))));
}

TEST(QuandaAbstractRealDateTimeDeathTest, ProgrammingErrorsStop) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { DateTime::makeFromSecondsSinceDatum(-0.5); }, "double"},
      {[] { DateTime::makeFromSecondsSinceDatum(nan); }, "double"},
      {[] { DateTime::makeFromSecondsSinceDatum(1e30); }, "double"},
      {[] { DateTime::maxInc.addingSeconds(1.0); }, "9999-12-31"},
      {[] { DateTime::zero.addingSeconds(std::numeric_limits<double>::infinity()); }, "32-bit"},
      {[] { DateTime::zero.replacing({.second = nan}); }, "NaN"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
