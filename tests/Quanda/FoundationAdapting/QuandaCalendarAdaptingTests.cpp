// The adapter interface can be implemented outside the library: a forwarding double that counts
// its calls stands in for the library's adapter wherever an adapter is taken.
#include <gtest/gtest.h>

#include <vector>

#include "Quanda/FoundationAdapting/AdapterTestSupport.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

namespace {

// Forwards each of the 58 requirements to another adapter and records its position.
class CountingAdapter final : public QuandaCalendarAdapting {
 public:
  explicit CountingAdapter(QuandaCalendarAdapting& inner) : inner_(inner) {}

  std::vector<int> calls;

// clang-format off
#define FORWARD(position, Result, name, parameters, arguments) \
  Result name parameters override { calls.push_back(position); return inner_.name arguments; }
  using Override = LocaleIdentifierOverride;
  using Day = QuandaDayOfGregorianWeek;
  using Interval = QuandaLogicTimeInterval;
  using Zone = std::string_view;
  FORWARD(0, KeelResult<Day>, preferredFirstDayOfWeek, (), ())
  FORWARD(1, KeelResult<QuandaPreferredTimeFormat>, preferredTimeFormat, (), ())
  FORWARD(2, KeelResult<std::vector<std::string>>, calendarColumnNames, (Override l, std::optional<Day> f, QuandaStandaloneDayNameFormatStyle s), (l, f, s))
  FORWARD(3, KeelResult<std::string>, amSymbol, (Override l), (l))
  FORWARD(4, KeelResult<std::string>, pmSymbol, (Override l), (l))
  std::string currentTimezoneIdentifier() const override { const_cast<CountingAdapter*>(this)->calls.push_back(5); return inner_.currentTimezoneIdentifier(); }
  FORWARD(6, KeelResult<std::string>, format, (DateComponents c, QuandaDateFormatStyle s, Override l), (c, s, l))
  FORWARD(7, KeelResult<std::string>, format, (DateComponents c, QuandaKnownDateFormatTemplate t, Override l), (c, t, l))
  FORWARD(8, KeelResult<std::string>, format, (KeelDate d, QuandaDateFormatStyle s, Override l), (d, s, l))
  FORWARD(9, KeelResult<std::string>, format, (KeelDate d, QuandaKnownDateFormatTemplate t, Override l), (d, t, l))
  FORWARD(10, KeelResult<std::string>, format, (DateComponents a, DateComponents b, QuandaDateRangeFormatStyle s, Override l), (a, b, s, l))
  FORWARD(11, KeelResult<std::string>, format, (DiscreteTimeComponents c, Override l, QuandaTimeFormatStyle s), (c, l, s))
  FORWARD(12, KeelResult<std::string>, format, (RealTimeComponents c, Override l, QuandaTimeFormatStyle s), (c, l, s))
  FORWARD(13, KeelResult<std::string>, format, (DiscreteTimeComponents c, QuandaKnownTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(14, KeelResult<std::string>, format, (RealTimeComponents c, QuandaKnownTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(15, KeelResult<std::string>, format, (DiscreteDateTimeComponents c, QuandaDateTimeFormatStyle s, Override l), (c, s, l))
  FORWARD(16, KeelResult<std::string>, format, (RealDateTimeComponents c, QuandaDateTimeFormatStyle s, Override l), (c, s, l))
  FORWARD(17, KeelResult<std::string>, format, (DiscreteDateTimeComponents c, QuandaKnownDateTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(18, KeelResult<std::string>, format, (RealDateTimeComponents c, QuandaKnownDateTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(19, KeelResult<QuandaFormattedDuration>, format, (double d, Override l, QuandaDurationFormatStyle s), (d, l, s))
  FORWARD(20, KeelResult<std::string>, format, (Day d, Override l, QuandaStandaloneDayNameFormatStyle s), (d, l, s))
  FORWARD(21, KeelResult<KeelDate>, makeLocalGregorianFoundationDate, (DateComponents c), (c))
  FORWARD(22, KeelResult<KeelDate>, makeUtcGregorianFoundationDate, (DateComponents c), (c))
  FORWARD(23, KeelResult<KeelDate>, makeGregorianFoundationDate, (DateComponents c, Zone z), (c, z))
  FORWARD(24, KeelResult<KeelDate>, makeLocalGregorianFoundationDate, (DiscreteDateTimeComponents c), (c))
  FORWARD(25, KeelResult<KeelDate>, makeLocalGregorianFoundationDate, (RealDateTimeComponents c), (c))
  FORWARD(26, KeelResult<KeelDate>, makeUtcGregorianFoundationDate, (DiscreteDateTimeComponents c), (c))
  FORWARD(27, KeelResult<KeelDate>, makeUtcGregorianFoundationDate, (RealDateTimeComponents c), (c))
  FORWARD(28, KeelResult<KeelDate>, makeGregorianFoundationDate, (DiscreteDateTimeComponents c, Zone z), (c, z))
  FORWARD(29, KeelResult<KeelDate>, makeGregorianFoundationDate, (RealDateTimeComponents c, Zone z), (c, z))
  FORWARD(30, KeelResult<Interval>, makeLocalGregorianLogicTimeInterval, (DiscreteDateTimeComponents c), (c))
  FORWARD(31, KeelResult<Interval>, makeLocalGregorianLogicTimeInterval, (RealDateTimeComponents c), (c))
  FORWARD(32, KeelResult<Interval>, makeUtcGregorianLogicTimeInterval, (DiscreteDateTimeComponents c), (c))
  FORWARD(33, KeelResult<Interval>, makeUtcGregorianLogicTimeInterval, (RealDateTimeComponents c), (c))
  FORWARD(34, KeelResult<Interval>, makeGregorianLogicTimeInterval, (DiscreteDateTimeComponents c, Zone z), (c, z))
  FORWARD(35, KeelResult<Interval>, makeGregorianLogicTimeInterval, (RealDateTimeComponents c, Zone z), (c, z))
  FORWARD(36, KeelResult<DateComponents>, makeLocalTimezoneDateComponents, (KeelDate d), (d))
  FORWARD(37, KeelResult<DateComponents>, makeUtcTimezoneDateComponents, (KeelDate d), (d))
  FORWARD(38, KeelResult<DateComponents>, makeTimezoneDateComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(39, KeelResult<DiscreteTimeComponents>, makeLocalTimezoneDiscreteTimeComponents, (KeelDate d), (d))
  FORWARD(40, KeelResult<RealTimeComponents>, makeLocalTimezoneRealTimeComponents, (KeelDate d), (d))
  FORWARD(41, KeelResult<DiscreteTimeComponents>, makeUtcTimezoneDiscreteTimeComponents, (KeelDate d), (d))
  FORWARD(42, KeelResult<RealTimeComponents>, makeUtcTimezoneRealTimeComponents, (KeelDate d), (d))
  FORWARD(43, KeelResult<DiscreteTimeComponents>, makeTimezoneDiscreteTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(44, KeelResult<RealTimeComponents>, makeTimezoneRealTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(45, KeelResult<DiscreteDateTimeComponents>, makeLocalTimezoneDiscreteDateTimeComponents, (KeelDate d), (d))
  FORWARD(46, KeelResult<RealDateTimeComponents>, makeLocalTimezoneRealDateTimeComponents, (KeelDate d), (d))
  FORWARD(47, KeelResult<DiscreteDateTimeComponents>, makeUtcTimezoneDiscreteDateTimeComponents, (KeelDate d), (d))
  FORWARD(48, KeelResult<RealDateTimeComponents>, makeUtcTimezoneRealDateTimeComponents, (KeelDate d), (d))
  FORWARD(49, KeelResult<DiscreteDateTimeComponents>, makeTimezoneDiscreteDateTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(50, KeelResult<RealDateTimeComponents>, makeTimezoneRealDateTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(51, KeelResult<DiscreteDateTimeComponents>, makeLocalTimezoneDiscreteDateTimeComponents, (Interval i), (i))
  FORWARD(52, KeelResult<RealDateTimeComponents>, makeLocalTimezoneRealDateTimeComponents, (Interval i), (i))
  FORWARD(53, KeelResult<DiscreteDateTimeComponents>, makeUtcTimezoneDiscreteDateTimeComponents, (Interval i), (i))
  FORWARD(54, KeelResult<RealDateTimeComponents>, makeUtcTimezoneRealDateTimeComponents, (Interval i), (i))
  FORWARD(55, KeelResult<DiscreteDateTimeComponents>, makeTimezoneDiscreteDateTimeComponents, (Interval i, Zone z), (i, z))
  FORWARD(56, KeelResult<RealDateTimeComponents>, makeTimezoneRealDateTimeComponents, (Interval i, Zone z), (i, z))
  FORWARD(57, KeelDate, makeFoundationDate, (Interval i), (i))
#undef FORWARD
  // clang-format on

 private:
  QuandaCalendarAdapting& inner_;
};

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
  CountingAdapter counting(library.adapter);
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
