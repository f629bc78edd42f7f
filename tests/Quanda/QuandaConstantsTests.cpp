// The calendar constants against an independent calendar, and against each other: a unit's count
// must agree with the counts it is made of.
#include <date/date.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "Quanda/QuandaConstants.h"

namespace {

namespace G = Quanda;

TEST(QuandaConstants, LeapYearsAndMonthLengthsMatchAnIndependentCalendar) {
  // The oracle's years end at 32767; the rule's 400-year period covers the rest.
  for (unsigned year = 0; year <= 32767; ++year) {
    const date::year oracle{static_cast<int>(year)};
    ASSERT_EQ(G::isLeapYear(static_cast<std::uint16_t>(year)), oracle.is_leap()) << year;
    ASSERT_EQ(G::isLeapYear(static_cast<std::uint16_t>(year + 32400)), oracle.is_leap()) << year;
    if (year > 9999) continue;
    for (unsigned month = 1; month <= 12; ++month) {
      const unsigned expected =
          static_cast<unsigned>((oracle / date::month{month} / date::last).day());
      ASSERT_EQ(G::DaysIn::Gregorian::oneBasedMonth(static_cast<std::uint8_t>(month),
                                                    static_cast<std::uint16_t>(year)),
                expected)
          << year << "-" << month;
    }
  }
}

TEST(QuandaConstants, CountsAgreeWithEachOther) {
  namespace Days = G::DaysIn::Gregorian;
  const auto sum = [](const auto& table) { return std::accumulate(table.begin(), table.end(), 0); };
  EXPECT_EQ(sum(Days::Month::nonLeap), Days::Year::nonLeap);
  EXPECT_EQ(sum(Days::Month::leap), Days::Year::leap);
  EXPECT_EQ(Days::Year::countDomain, (KeelDomain<std::uint16_t>{365, 366}));
  EXPECT_EQ(G::MonthsIn::Gregorian::Year::count, Days::Month::leap.size());

  using namespace G;
  static_assert(SecondsIn::Gregorian::Minute::count == 60);
  static_assert(SecondsIn::Gregorian::Hour::count ==
                MinutesIn::Gregorian::Hour::count * SecondsIn::Gregorian::Minute::count);
  static_assert(SecondsIn::Gregorian::Day::count ==
                HoursIn::Gregorian::Day::count * SecondsIn::Gregorian::Hour::count);
  static_assert(MinutesIn::Gregorian::Day::count ==
                HoursIn::Gregorian::Day::count * MinutesIn::Gregorian::Hour::count);
  static_assert(SecondsIn::Gregorian::Week::count ==
                DaysIn::Gregorian::Week::count * SecondsIn::Gregorian::Day::count);
  static_assert(HoursIn::Gregorian::Day::count == 2 * HoursIn::Gregorian::Meridian::count);
  static_assert(NanosecondsIn::Gregorian::Second::count == 1'000'000'000);

  // Zero-based domains run from 0 to count - 1, the one-based month domain from 1 to count.
  EXPECT_EQ(HoursIn::Gregorian::Day::validZeroBasedDomain, (KeelDomain<std::uint8_t>{0, 23}));
  EXPECT_EQ(SecondsIn::Gregorian::Day::validZeroBasedDomain.max(), 86399u);
  EXPECT_EQ(MinutesIn::Gregorian::Hour::validZeroBasedDomain.max(), 59u);
  EXPECT_EQ(MonthsIn::Gregorian::Year::validOneBasedDomain, (KeelDomain<std::uint8_t>{1, 12}));
}

// The fractional-second domains admit every double below the unit's length and not the length.
TEST(QuandaConstants, FractionalSecondDomainsStopJustBelowTheUnit) {
  const auto& minute = G::SecondsIn::Gregorian::Minute::validSecondsWithSubSecondsDomainInc;
  const auto& day = G::SecondsIn::Gregorian::Day::validSecondsWithSubSecondsDomainInc;
  EXPECT_TRUE(minute.contains(0.0) && minute.contains(std::nextafter(60.0, 0.0)));
  EXPECT_FALSE(minute.contains(60.0));
  EXPECT_TRUE(day.contains(std::nextafter(86400.0, 0.0)));
  EXPECT_FALSE(day.contains(86400.0));
  EXPECT_FALSE(day.contains(std::nan("")));
}

TEST(QuandaConstantsDeathTest, MonthOutsideTheYearStops) {
  volatile std::uint8_t thirteen = 13;
  EXPECT_DEATH((void)G::DaysIn::Gregorian::oneBasedMonth(thirteen, 2024), "month outside 1...12");
}

}  // namespace
