// The adapter interface can be implemented outside the library: a forwarding double that counts
// its calls stands in for the library's adapter wherever an adapter is taken.
#include <gtest/gtest.h>

#include <vector>

#include "Quanda/FoundationAdapting/AdapterTestSupport.h"
#include "Quanda/FoundationAdapting/ForwardingAdapter.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

namespace {

// Calls every requirement once, in declaration order, through the interface alone.
void callEveryRequirement(QuandaCalendarAdapting& adapter) {
  const DateComponents date{2024, 2, 29};
  const NaturalTimeComponents time{13, 5, 9};
  const RealTimeComponents realTime{13, 5, 9.5};
  const NaturalDateTimeComponents naturalDateTime = dateTime(2024, 2, 29, 13, 5, 9);
  const RealDateTimeComponents real = realDateTime(2024, 2, 29, 13, 5, 9.5);
  const KeelDate moment = instant(1709211909.5);
  const QuandaLogicTimeInterval interval(1709211909.5);
  const std::string_view zone = "Asia/Tokyo";
  const QuandaDateTimeFormatStyle style = QuandaDateTimeFormatStyle::dateAndTime(
      QuandaDateFormatStyle::medium, QuandaTimeFormatStyle::short_);
  const auto day = QuandaStandaloneDayNameFormatStyle::short_;
  (void)adapter.preferredFirstDayOfWeek();
  (void)adapter.preferredTimeFormat();
  (void)adapter.calendarColumnNames(std::nullopt, std::nullopt, day);
  (void)adapter.amSymbol("de_DE");
  (void)adapter.pmSymbol(std::nullopt);
  (void)adapter.currentTimezoneIdentifier();
  (void)adapter.format(date, QuandaDateFormatStyle::long_, std::nullopt);
  (void)adapter.format(date, QuandaKnownDateFormatTemplate::fullMonthAndYear, "ja_JP");
  (void)adapter.format(moment, QuandaDateFormatStyle::full, std::nullopt);
  (void)adapter.format(moment, QuandaKnownDateFormatTemplate::standaloneShortMonth, "fr_FR");
  (void)adapter.format(date, DateComponents{2024, 3, 5}, QuandaDateRangeFormatStyle::medium, {});
  (void)adapter.format(time, std::nullopt, QuandaTimeFormatStyle::short_);
  (void)adapter.format(realTime, "en_GB", QuandaTimeFormatStyle::medium);
  (void)adapter.format(time, QuandaKnownTimeFormatTemplate::standaloneHourRespecting12or24Hour, {});
  (void)adapter.format(realTime, QuandaKnownTimeFormatTemplate::standaloneSecondWithoutUnit, {});
  (void)adapter.format(naturalDateTime, style, std::nullopt);
  (void)adapter.format(real, style, "de_DE");
  (void)adapter.format(naturalDateTime, QuandaKnownDateTimeFormatTemplate::fullDateToMinuteLong,
                       {});
  (void)adapter.format(real, QuandaKnownDateTimeFormatTemplate::fullDateToMinuteShort, {});
  (void)adapter.format(3725.0, std::nullopt, QuandaDurationFormatStyle::shortDelta);
  (void)adapter.format(QuandaDayOfGregorianWeek::sunday, std::nullopt, day);
  (void)adapter.makeLocalGregorianFoundationDate(date);
  (void)adapter.makeUtcGregorianFoundationDate(date);
  (void)adapter.makeGregorianFoundationDate(date, zone);
  (void)adapter.makeLocalGregorianFoundationDate(naturalDateTime);
  (void)adapter.makeLocalGregorianFoundationDate(real);
  (void)adapter.makeUtcGregorianFoundationDate(naturalDateTime);
  (void)adapter.makeUtcGregorianFoundationDate(real);
  (void)adapter.makeGregorianFoundationDate(naturalDateTime, zone);
  (void)adapter.makeGregorianFoundationDate(real, "Not/AZone");
  (void)adapter.makeLocalGregorianLogicTimeInterval(naturalDateTime);
  (void)adapter.makeLocalGregorianLogicTimeInterval(real);
  (void)adapter.makeUtcGregorianLogicTimeInterval(naturalDateTime);
  (void)adapter.makeUtcGregorianLogicTimeInterval(real);
  (void)adapter.makeGregorianLogicTimeInterval(naturalDateTime, zone);
  (void)adapter.makeGregorianLogicTimeInterval(real, zone);
  (void)adapter.makeLocalTimezoneDateComponents(moment);
  (void)adapter.makeUtcTimezoneDateComponents(moment);
  (void)adapter.makeTimezoneDateComponents(moment, zone);
  (void)adapter.makeLocalTimezoneDiscreteTimeComponents(moment);
  (void)adapter.makeLocalTimezoneRealTimeComponents(moment);
  (void)adapter.makeUtcTimezoneDiscreteTimeComponents(moment);
  (void)adapter.makeUtcTimezoneRealTimeComponents(moment);
  (void)adapter.makeTimezoneDiscreteTimeComponents(moment, zone);
  (void)adapter.makeTimezoneRealTimeComponents(moment, zone);
  (void)adapter.makeLocalTimezoneDiscreteDateTimeComponents(moment);
  (void)adapter.makeLocalTimezoneRealDateTimeComponents(moment);
  (void)adapter.makeUtcTimezoneDiscreteDateTimeComponents(moment);
  (void)adapter.makeUtcTimezoneRealDateTimeComponents(moment);
  (void)adapter.makeTimezoneDiscreteDateTimeComponents(moment, zone);
  (void)adapter.makeTimezoneRealDateTimeComponents(moment, zone);
  (void)adapter.makeLocalTimezoneDiscreteDateTimeComponents(interval);
  (void)adapter.makeLocalTimezoneRealDateTimeComponents(interval);
  (void)adapter.makeUtcTimezoneDiscreteDateTimeComponents(interval);
  (void)adapter.makeUtcTimezoneRealDateTimeComponents(interval);
  (void)adapter.makeTimezoneDiscreteDateTimeComponents(interval, zone);
  (void)adapter.makeTimezoneRealDateTimeComponents(interval, zone);
  (void)adapter.makeFoundationDate(interval);
}

TEST(QuandaCalendarAdapting, AForwardingDoubleStandsInForTheAdapter) {
  TestAdapter library("en_US", "America/New_York");
  ForwardingAdapter counting(library.adapter);
  callEveryRequirement(counting);
  std::vector<int> expectedCalls(58);
  for (int position = 0; position < 58; ++position) expectedCalls[position] = position;
  EXPECT_EQ(counting.calls, expectedCalls);

  // What it forwards comes back unchanged, and it provides the two preferences on their own.
  QuandaCalendarAdapting& adapter = counting;
  EXPECT_EQ(adapter.format(DateComponents{2024, 2, 29}, QuandaDateFormatStyle::medium, {}).value(),
            "Feb 29, 2024");
  EXPECT_EQ(
      adapter.makeGregorianFoundationDate(dateTime(2024, 3, 10, 2, 30), "America/New_York").value(),
      instant(1710055800));
  QuandaFirstDayOfGregorianWeekProviding& weeks = counting;
  QuandaPreferredTimeFormatProviding& clock = counting;
  EXPECT_EQ(weeks.preferredFirstDayOfWeek().value(), QuandaDayOfGregorianWeek::sunday);
  EXPECT_EQ(clock.preferredTimeFormat().value(), QuandaPreferredTimeFormat::twelveHour);
  EXPECT_EQ(counting.calls.size(), 62u);
}

}  // namespace
