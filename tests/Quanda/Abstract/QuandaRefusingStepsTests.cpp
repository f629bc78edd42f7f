// The try... forms: what a caller that takes amounts from outside asks instead of predicting where
// an operation would stop or clamp. Each must agree with its stopping form wherever that one
// returns a value in 0001...9999, and answer nothing exactly where it would not.
#include <absl/time/civil_time.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"

namespace {

using Date = QuandaAbstractDate;
using Natural = QuandaAbstractNaturalDateTime;
using Real = QuandaAbstractRealDateTime;

constexpr std::int64_t int64Max = std::numeric_limits<std::int64_t>::max();
constexpr double twoTo63 = 9223372036854775808.0;

Date date(int year, int month, int day) {
  return Date::make(static_cast<std::uint16_t>(year), static_cast<std::uint8_t>(month),
                    static_cast<std::uint8_t>(day))
      .value();
}
Natural natural(std::string_view text) { return Natural::makeFromRfc3339String(text).value(); }
Real real(std::string_view text) { return Real::makeFromRfc3339String(text).value(); }

// Random dates and amounts up to the whole range: the civil-day oracle says which sums stay in
// 0001...9999, and where they do the try form must equal the stopping form.
TEST(QuandaRefusingSteps, DateStepsRefuseExactlyOutsideTheYears) {
  std::mt19937_64 random(7);
  std::uniform_int_distribution<std::uint32_t> dayCount(0, Date::validDaysSinceDatumRange.max());
  std::uniform_int_distribution<std::int32_t> days(-4'000'000, 4'000'000);
  std::uniform_int_distribution<std::int32_t> months(-130'000, 130'000);
  std::uniform_int_distribution<int> years(-12'000, 12'000);
  for (int round = 0; round < 20'000; ++round) {
    const Date from = Date::makeFromDaysSinceDatum(dayCount(random));
    const absl::CivilDay civil(from.year(), from.month(), from.day());

    const std::int32_t n = days(random);
    const absl::CivilDay byDays = civil + n;
    const bool daysFit = byDays.year() >= 1 && byDays.year() <= 9999;
    ASSERT_EQ(from.tryAddingDays(n).has_value(), daysFit) << from << " + " << n << " days";
    if (daysFit) {
      ASSERT_EQ(*from.tryAddingDays(n), from.addingDays(n));
    }

    const std::int32_t m = months(random);
    const absl::CivilMonth byMonths = absl::CivilMonth(civil) + m;
    const bool monthsFit = byMonths.year() >= 1 && byMonths.year() <= 9999;
    ASSERT_EQ(from.tryAddingMonths(m).has_value(), monthsFit) << from << " + " << m << " months";
    if (monthsFit) {
      ASSERT_EQ(*from.tryAddingMonths(m), from.addingMonths(m));
    }

    const auto y = static_cast<std::int16_t>(years(random));
    const bool yearsFit = from.year() + y >= 1 && from.year() + y <= 9999;
    ASSERT_EQ(from.tryAddingYears(y).has_value(), yearsFit) << from << " + " << y << " years";
    if (yearsFit) {
      ASSERT_EQ(*from.tryAddingYears(y), from.addingYears(y));
    }
  }
}

TEST(QuandaRefusingSteps, DateStepsKeepTheirQuirksAndRefuseClamps) {
  // The month quirk stays; raising a year to 1 and reaching year 0 are refused.
  EXPECT_EQ(date(2024, 1, 31).tryAddingMonths(13)->components(), (Date::Components{2025, 2, 29}));
  EXPECT_EQ(date(5, 3, 1).addingYears(-10), date(1, 3, 1));
  EXPECT_EQ(date(5, 3, 1).tryAddingYears(-10), std::nullopt);
  EXPECT_EQ(date(1, 1, 15).tryAddingMonths(-1), std::nullopt);
  EXPECT_EQ(date(9999, 12, 1).tryAddingMonths(1), std::nullopt);
  // Amounts apply in order and the first refusal ends the chain.
  EXPECT_EQ(date(2023, 1, 31).tryAdding({.years = 1, .months = 1}), date(2024, 2, 29));
  EXPECT_EQ(date(9999, 1, 31).tryAdding({.years = 1, .days = -400}), std::nullopt);
  // A date without a day count cannot move by days.
  EXPECT_EQ(date(1, 1, 5).addingMonths(-1).tryAddingDays(0), std::nullopt);
}

TEST(QuandaRefusingSteps, DateTimeStepsRefuseWhereTheStoppingFormsStopOrClamp) {
  const Natural last = Natural::maxInc;
  EXPECT_EQ(last.tryAddingSeconds(1), std::nullopt);
  EXPECT_EQ(last.tryAddingSeconds(-1), natural("9999-12-31T23:59:58"));
  EXPECT_EQ(last.tryAddingMinutes(int64Max), std::nullopt);
  EXPECT_EQ(Natural::zero.tryAddingHours(-1), std::nullopt);
  EXPECT_EQ(natural("2024-12-31T23:30:00").tryAddingHours(1), natural("2025-01-01T00:30:00"));
  EXPECT_EQ(natural("2024-01-30T10:00:00").tryAdding({.months = 1, .days = 1}),
            natural("2024-02-29T10:00:00"));
  // Rounding past the last second clamps in the stopping form; the try form refuses.
  const Natural late = natural("9999-12-31T23:59:30");
  EXPECT_EQ(late.roundingToMinute(), natural("9999-12-31T00:00:00"));
  EXPECT_EQ(late.tryRoundingToMinute(), std::nullopt);
  EXPECT_EQ(late.tryFlooringToMinute(), natural("9999-12-31T23:59:00"));
  EXPECT_EQ(natural("2024-01-01T10:00:30").tryRoundingToMinute(), natural("2024-01-01T10:01:00"));
  // next() on the last date: the same day when the time is still ahead, nothing after it.
  const auto eight = QuandaAbstractNaturalTimeOfDay::make(8, 0, 0).value();
  EXPECT_EQ(natural("9999-12-31T07:00:00").tryNext(eight, false), natural("9999-12-31T08:00:00"));
  EXPECT_EQ(natural("9999-12-31T08:00:00").tryNext(eight, true), natural("9999-12-31T08:00:00"));
  EXPECT_EQ(natural("9999-12-31T08:00:00").tryNext(eight, false), std::nullopt);

  EXPECT_EQ(Real::maxInc.tryAddingSeconds(0.5), std::nullopt);
  EXPECT_EQ(real("2024-03-05T10:00:00").tryAddingSeconds(std::nan("")), std::nullopt);
  EXPECT_EQ(real("9999-12-31T23:59:59.5").tryRoundingToDay(), std::nullopt);
  EXPECT_EQ(real("2024-03-05T10:00:00.25").tryAddingSeconds(-0.5), real("2024-03-05T09:59:59.75"));
}

TEST(QuandaRefusingSteps, RelativeTimesRefuseBeyondTheirDayCount) {
  const auto noon = QuandaAbstractNaturalTimeOfDay::make(12, 0, 0).value();
  EXPECT_EQ(noon.tryAddingMinutes(int64Max), std::nullopt);
  EXPECT_EQ(noon.tryAddingSeconds(int64Max), std::nullopt);
  EXPECT_EQ(noon.tryAddingHours(13)->days(), 1);
  const QuandaAbstractRelativeDiscreteTimeOfDay farthest(std::numeric_limits<std::int32_t>::max(),
                                                         noon);
  EXPECT_EQ(farthest.tryAddingHours(12), std::nullopt);
  EXPECT_EQ(farthest.tryAddingHours(11)->days(), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(QuandaAbstractRealTimeOfDay::zero.tryAddingSeconds(1e300), std::nullopt);
}

TEST(QuandaRefusingSteps, SpansRefuseOverflowAndNonFiniteResults) {
  using NaturalSpan = QuandaNaturalTimeSpan;
  using DiscreteSpan = QuandaDiscreteTimeSpan;
  using RealSpan = QuandaRealTimeSpan;
  EXPECT_EQ(DiscreteSpan(int64Max).tryAdding(DiscreteSpan(1)), std::nullopt);
  EXPECT_EQ(DiscreteSpan(-5).trySubtracting(DiscreteSpan(int64Max)), std::nullopt);
  EXPECT_EQ(DiscreteSpan(5).trySubtracting(DiscreteSpan(7)), DiscreteSpan(-2));
  EXPECT_EQ(NaturalSpan(std::numeric_limits<std::uint64_t>::max()).tryAdding(NaturalSpan(1)),
            std::nullopt);
  EXPECT_EQ(NaturalSpan::tryMake(1, 2, 3, 4), NaturalSpan::make(1, 2, 3, 4));
  EXPECT_EQ(NaturalSpan::tryMake(std::numeric_limits<std::uint64_t>::max() / 86400 + 1, 0, 0, 0),
            std::nullopt);
  EXPECT_EQ(DiscreteSpan::tryMake({.hours = int64Max / 3600 + 1}), std::nullopt);
  EXPECT_EQ(DiscreteSpan::tryMake({.days = -1, .seconds = 5}), DiscreteSpan(-86395));
  EXPECT_EQ(DiscreteSpan(int64Max).tryRoundingToWeek(), std::nullopt);
  EXPECT_EQ(DiscreteSpan(90).tryRoundingToMinute(), DiscreteSpan(120));
  EXPECT_EQ(NaturalSpan(std::uint64_t{1} << 63).tryToChrono(), std::nullopt);
  EXPECT_EQ(NaturalSpan::tryMakeFromDouble(-1.0), std::nullopt);
  EXPECT_EQ(DiscreteSpan::tryMakeFromDouble(twoTo63), std::nullopt);
  EXPECT_EQ(DiscreteSpan::tryMakeFromDouble(-2.5), DiscreteSpan(-3));

  EXPECT_EQ(RealSpan(1e308).tryAdding(RealSpan(1e308)), std::nullopt);
  EXPECT_EQ(RealSpan(1e308) + RealSpan(1e308), RealSpan(INFINITY));  // the operator propagates
  EXPECT_EQ(RealSpan(1.5).trySubtracting(RealSpan(0.25)), RealSpan(1.25));
  EXPECT_EQ(RealSpan::tryMake(1, 0, 0, 0.5), RealSpan(86400.5));
  EXPECT_EQ(RealSpan::tryMake(std::numeric_limits<std::uint64_t>::max(), 0, 0, INFINITY),
            std::nullopt);
  EXPECT_EQ(RealSpan::tryMakeFromDouble(std::nan("")), std::nullopt);
  EXPECT_EQ(RealSpan(1e308).tryRounded(RealSpan(1e-308)), std::nullopt);
}

}  // namespace
