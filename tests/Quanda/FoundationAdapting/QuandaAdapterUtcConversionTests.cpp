// Conversions in UTC, every date of the calendar: against the library's own day count and against
// ICU's proleptic Gregorian calendar, in both directions.
#include <absl/time/civil_time.h>
#include <gtest/gtest.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <cmath>
#include <limits>
#include <memory>

#include "Quanda/FoundationAdapting/AdapterTestSupport.h"

namespace {

TEST(QuandaAdapterUtcConversions, EveryDateAgreesWithTheDayCountAndWithIcu) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  UErrorCode status = U_ZERO_ERROR;
  icu::GregorianCalendar icu(icu::TimeZone::createTimeZone("UTC"), icu::Locale("en_US"), status);
  icu.setGregorianChange(-std::numeric_limits<double>::infinity(), status);
  ASSERT_TRUE(U_SUCCESS(status));

  int mismatches = 0;
  const auto check = [&mismatches](bool ok, const char* what, const QuandaAbstractDate& date) {
    if (!ok && ++mismatches <= 20) ADD_FAILURE() << what << " differs at " << date;
  };
  for (std::uint32_t days = 0; days <= 3652058; ++days) {
    const QuandaAbstractDate date = QuandaAbstractDate::makeFromDaysSinceDatum(days);
    const double midnight = (static_cast<double>(days) - 719162) * 86400;
    const KeelResult<KeelDate> built = adapter.makeUtcGregorianFoundationDate(date.components());
    check(built && seconds(built.value()) == midnight, "date -> instant", date);
    check(adapter.makeUtcTimezoneDateComponents(instant(midnight)).value() == date.components(),
          "instant -> date", date);

    // A time of day that moves with the date, in both kinds of date-time.
    const int hour = static_cast<int>(days % 24);
    const int minute = static_cast<int>(days % 60);
    const int second = static_cast<int>(days * 7 % 60);
    const double moment = midnight + hour * 3600 + minute * 60 + second;
    const NaturalDateTimeComponents natural =
        dateTime(date.year(), date.month(), date.day(), hour, minute, second);
    check(seconds(adapter.makeUtcGregorianFoundationDate(natural).value()) == moment,
          "date-time -> instant", date);
    check(adapter.makeUtcTimezoneDiscreteDateTimeComponents(instant(moment)).value() == natural,
          "instant -> date-time", date);

    icu.clear();
    icu.set(date.year(), date.month() - 1, date.day(), hour, minute, second);
    check(icu.getTime(status) == moment * 1000, "ICU's instant", date);
  }
  EXPECT_TRUE(U_SUCCESS(status));
  EXPECT_EQ(mismatches, 0);
}

TEST(QuandaAdapterUtcConversions, TheEpochAndTheEdgesOfTheYears) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  EXPECT_EQ(seconds(adapter.makeUtcGregorianFoundationDate(DateComponents{1970, 1, 1}).value()), 0);
  EXPECT_EQ(adapter.makeUtcGregorianLogicTimeInterval(dateTime(1970, 1, 1)).value(),
            QuandaLogicTimeInterval::zero);
  EXPECT_EQ(seconds(adapter.makeFoundationDate(QuandaLogicTimeInterval(0))), 0);
  EXPECT_EQ(adapter.makeUtcTimezoneDiscreteDateTimeComponents(QuandaLogicTimeInterval(-1)).value(),
            dateTime(1969, 12, 31, 23, 59, 59));

  // Year 0 is 1 BC and year 10000 follows 9999: both directions give the proleptic year as it is.
  constexpr double year1 = -62135596800;
  EXPECT_EQ(adapter.makeUtcTimezoneDiscreteDateTimeComponents(instant(year1 - 1)).value(),
            dateTime(0, 12, 31, 23, 59, 59));
  EXPECT_EQ(seconds(adapter.makeUtcGregorianFoundationDate(DateComponents{0, 2, 29}).value()),
            year1 - 307 * 86400);
  EXPECT_EQ(adapter.makeUtcTimezoneDateComponents(instant(253402300800)).value(),
            (DateComponents{10000, 1, 1}));
  EXPECT_EQ(
      seconds(adapter.makeUtcGregorianFoundationDate(DateComponents{65535, 12, 31}).value()),
      static_cast<double>(absl::CivilDay(65535, 12, 31) - absl::CivilDay(1970, 1, 1)) * 86400);
}

TEST(QuandaAdapterUtcConversions, RealSecondsSplitByFloor) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  // 59.999999999 is second 59 and nanosecond 999999999, never rounded up to the next minute.
  const KeelDate built =
      adapter.makeUtcGregorianFoundationDate(realDateTime(1970, 1, 1, 0, 0, 59.999999999)).value();
  EXPECT_EQ(seconds(built), 59.0 + 999999999 / 1e9);
  EXPECT_EQ(adapter.makeUtcTimezoneRealDateTimeComponents(built).value(),
            realDateTime(1970, 1, 1, 0, 0, 59.0 + 999999999 / 1e9));
  EXPECT_EQ(adapter.makeUtcTimezoneRealTimeComponents(instant(-0.25)).value(),
            (RealTimeComponents{23, 59, 59.75}));
  EXPECT_EQ(adapter.makeUtcTimezoneDiscreteTimeComponents(instant(-0.25)).value(),
            (NaturalTimeComponents{23, 59, 59}));
  EXPECT_EQ(adapter.makeUtcGregorianLogicTimeInterval(realDateTime(2024, 2, 29, 13, 5, 9.5))
                .value()
                .unixEpoch(),
            1709211909.5);
}

}  // namespace
