// The date's combinations with times, relative times and spans, its days as date-time ranges, and
// the date-time domain functions.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "Quanda/Abstract/QuandaAbstractDateTimeDomain.h"

namespace {

using Natural = QuandaAbstractNaturalDateTime;
using Real = QuandaAbstractRealDateTime;
using Date = QuandaAbstractDate;

Date day(std::string_view text) { return Date::makeFromIso8601String(text).value(); }
Natural natural(std::string_view text) { return Natural::makeFromRfc3339String(text).value(); }
Real real(std::string_view text) { return Real::makeFromRfc3339String(text).value(); }
QuandaAbstractNaturalTimeOfDay clock(std::string_view text) {
  return QuandaAbstractNaturalTimeOfDay::makeFromIso8601String(text).value();
}

static_assert(Date::zero.makeNaturalEndOfDay().secondsSinceDatum() == 86400);
static_assert(Date::zero.makeNaturalDateTimeRange().max() ==
              Date::zero.nextDay() + QuandaAbstractNaturalTimeOfDay::zero);

TEST(QuandaAbstractDateCombinations, TimesRelativeTimesAndSpans) {
  const Date leap = day("2024-02-29");
  EXPECT_EQ(leap + clock("07:08:09"), natural("2024-02-29T07:08:09"));
  EXPECT_EQ(leap + QuandaAbstractRealTimeOfDay::make(7, 8, 9.5).value(),
            real("2024-02-29T07:08:09.5"));

  const struct {
    std::int32_t days;
    std::string_view time, expected;
  } relatives[] = {
      {0, "23:00:00", "2024-02-29T23:00:00"},
      {1, "01:00:00", "2024-03-01T01:00:00"},
      {-1, "23:30:00", "2024-02-28T23:30:00"},
  };
  for (const auto& [days, time, expected] : relatives) {
    EXPECT_EQ(leap + QuandaAbstractRelativeDiscreteTimeOfDay(days, clock(time)), natural(expected))
        << days << ' ' << time;
  }
  // The 24:00 that minutes since the day began can give carries into the next day.
  EXPECT_EQ(leap + QuandaAbstractRelativeDiscreteTimeOfDay(
                       0, QuandaAbstractNaturalTimeOfDay::makeFromMinutesSinceDayBegan(-1440)),
            natural("2024-03-01T00:00:00"));

  EXPECT_EQ(leap + QuandaDiscreteTimeSpan(90000), natural("2024-03-01T01:00:00"));
  EXPECT_EQ(leap + QuandaNaturalTimeSpan(3600), natural("2024-02-29T01:00:00"));
  EXPECT_EQ(leap + QuandaRealTimeSpan(0.25), real("2024-02-29T00:00:00.25"));
  EXPECT_EQ(leap - QuandaDiscreteTimeSpan(1), natural("2024-02-28T23:59:59"));
  EXPECT_EQ(leap - QuandaDiscreteTimeSpan(-86400), natural("2024-03-01T00:00:00"));
  // Subtracting clamps at the datum's midnight instead of stopping.
  EXPECT_EQ(day("0001-01-02") - QuandaDiscreteTimeSpan(86401), Natural::zero);
  EXPECT_EQ(leap - QuandaDiscreteTimeSpan(std::numeric_limits<std::int64_t>::max()), Natural::zero);
}

TEST(QuandaAbstractDateCombinations, DaysEndAtTheNextMidnight) {
  EXPECT_EQ(day("2024-12-31").makeNaturalEndOfDay(), natural("2025-01-01T00:00:00"));
  EXPECT_EQ(day("2024-02-28").makeRealEndOfDay(), real("2024-02-29T00:00:00"));
  EXPECT_EQ(day("2024-02-28").makeRealBeginningOfDay(), real("2024-02-28T00:00:00"));
  EXPECT_EQ(Natural::makeAtEndOf(day("2024-02-28")), natural("2024-02-29T00:00:00"));
  const KeelDomain<Natural> whole = day("2024-02-29").makeNaturalDateTimeRange();
  EXPECT_EQ(whole,
            KeelDomain<Natural>(natural("2024-02-29T00:00:00"), natural("2024-03-01T00:00:00")));
  EXPECT_EQ(trueRange(whole).seconds(), 86400u);
  EXPECT_EQ(range(day("2024-02-29").makeRealDateTimeRange()).seconds(), 86400.0);
}

TEST(QuandaAbstractDateTimeDomain, RangesAndContainment) {
  const KeelDomain<Date> oneDay{day("2024-12-31"), day("2024-12-31")};
  const KeelDomain<Natural> instants = makeNaturalDateTimeRange(oneDay);
  EXPECT_EQ(instants.min(), natural("2024-12-31T00:00:00"));
  EXPECT_EQ(instants.max(), natural("2025-01-01T00:00:00"));
  EXPECT_TRUE(instants.contains(natural("2025-01-01T00:00:00")));
  EXPECT_EQ(makeRealDateTimeRange(oneDay), makeRealRange(instants));
  // The end lies on the next day, so the dates containing the range are two.
  EXPECT_EQ(makeDateRangeContaining(instants),
            KeelDomain<Date>(day("2024-12-31"), day("2025-01-01")));

  // Reversed bounds: range keeps the direction, trueRange and containment do not.
  const KeelDomain<Natural> reversed{natural("2024-03-02T00:00:00"),
                                     natural("2024-03-01T12:00:00")};
  EXPECT_EQ(range(reversed).seconds(), -43200);
  EXPECT_EQ(trueRange(reversed).seconds(), 43200u);
  EXPECT_EQ(range(makeRealRange(reversed)).seconds(), -43200.0);
  EXPECT_EQ(makeDateRangeContaining(reversed),
            KeelDomain<Date>(day("2024-03-01"), day("2024-03-02")));
  const KeelDomain<Natural> march =
      makeNaturalDateTimeRange({day("2024-03-01"), day("2024-03-31")});
  EXPECT_TRUE(contains(march, reversed));
  EXPECT_FALSE(contains(reversed, march));
  EXPECT_FALSE(contains(march, {natural("2024-03-31T12:00:00"), natural("2024-04-01T00:00:01")}));
  EXPECT_TRUE(contains(march, {natural("2024-03-31T12:00:00"), natural("2024-04-01T00:00:00")}));
}

TEST(QuandaAbstractDateTimeDomainDeathTest, TheLastDayHasNoEnd) {
  EXPECT_DEATH(Date::validRange.max().makeNaturalEndOfDay(), "9999-12-31");
  EXPECT_DEATH(makeRealDateTimeRange(Date::validRange), "9999-12-31");
}

}  // namespace
