// The value types and time providers through a calendar adapter: each operation asks the adapter
// requirement it stands on and wraps that requirement's failure exactly once, with its own
// signature text, path and argument keys; and the answers agree with Abseil's civil time and time
// zones, whatever the device's zone.
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"
#include "Quanda/FoundationAdapting/ForwardingAdapter.h"
#include "Quanda/QuandaMockTimeProvider.h"

namespace {

using Date = QuandaAbstractDate;
using NaturalTime = QuandaAbstractNaturalTimeOfDay;
using RealTime = QuandaAbstractRealTimeOfDay;
using Natural = QuandaAbstractNaturalDateTime;
using Real = QuandaAbstractRealDateTime;
using Interval = QuandaLogicTimeInterval;

constexpr std::string_view datePath = "Quanda/Abstract/QuandaAbstractDate";
constexpr std::string_view naturalTimePath = "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay";
constexpr std::string_view realTimePath = "Quanda/Abstract/QuandaAbstractRealTimeOfDay";
constexpr std::string_view naturalPath = "Quanda/Abstract/QuandaAbstractNaturalDateTime";
constexpr std::string_view realPath = "Quanda/Abstract/QuandaAbstractRealDateTime";

// The first fault of a forwarding adapter's failing position.
ExpectedErrorLink injectedLink(int position) {
  return {.function = std::string(injectedFunction),
          .args = {"position=" + std::to_string(position)},
          .message = std::string(injectedFailure),
          .file = forwardingAdapterPath};
}

template <class Value>
std::optional<KeelError> failureOf(const KeelResult<Value>& result) {
  return result ? std::nullopt : std::optional<KeelError>(result.error());
}

const Date leapDay = Date::make(2024, 2, 29).value();
const NaturalTime lunch = NaturalTime::make(13, 5, 9).value();
const RealTime realLunch = RealTime::make(13, 5, 9.5).value();
const Natural dateTime = leapDay + lunch;
const Real realDateTime = Real::make(2024, 2, 29, 13, 5, 9.5).value();
const KeelDate moment = instant(1709211909.5);
const Interval interval(1709211909.5);
const auto fullDateTime = QuandaDateTimeFormatStyle::dateAndTime(QuandaDateFormatStyle::full,
                                                                 QuandaTimeFormatStyle::short_);
constexpr auto longTemplate = QuandaKnownDateTimeFormatTemplate::fullDateToMinuteLong;
constexpr std::string_view tokyo = "Asia/Tokyo";

struct BoundOperation {
  std::string function;
  std::string_view path;
  int position;  // of the adapter requirement the operation stands on
  std::vector<std::string> args;
  std::function<std::optional<KeelError>(QuandaCalendarAdapting&, const QuandaTimeProviding&)> call;
};

// clang-format off
const std::vector<BoundOperation>& boundOperations() {
  using A = QuandaCalendarAdapting&;
  using P = const QuandaTimeProviding&;
  const std::vector<std::string> format = {"date", "dateStyle", "calendarAdapter", "localeIdentifierOverride"};
  const std::vector<std::string> formatTemplate = {"date", "formatStringTemplate", "calendarAdapter", "localeIdentifierOverride"};
  const std::vector<std::string> instantKeys = {"foundationDate", "calendarAdapter"};
  const std::vector<std::string> namedInstantKeys = {"foundationDate", "calendarAdapter", "timezoneIdentifier"};
  const std::vector<std::string> intervalKeys = {"logicTimeInterval", "calendarAdapter"};
  const std::vector<std::string> namedIntervalKeys = {"logicTimeInterval", "calendarAdapter", "timezoneIdentifier"};
  const std::vector<std::string> nowKeys = {"currentLogicDate", "calendarAdapter"};
  const std::vector<std::string> timeNowKeys = {"timeProvider", "currentLogicDate", "calendarAdapter"};
  const std::vector<std::string> dateTimeFormat = {"dateTime", "dateTimeStyle", "calendarAdapter", "localeIdentifierOverride"};
  const std::vector<std::string> dateTimeTemplate = {"dateTime", "formatStringTemplate", "calendarAdapter", "localeIdentifierOverride"};
  static const std::vector<BoundOperation> operations = {
      {"makeLocalFoundationDate(calendarAdapter:)", datePath, 21, {"date"}, [](A a, P) { return failureOf(leapDay.makeLocalFoundationDate(a)); }},
      {"makeUtcFoundationDate(calendarAdapter:)", datePath, 22, {"date"}, [](A a, P) { return failureOf(leapDay.makeUtcFoundationDate(a)); }},
      {"makeFoundationDate(calendarAdapter:timezoneIdentifier:)", datePath, 23, {"date"}, [](A a, P) { return failureOf(leapDay.makeFoundationDate(a, tokyo)); }},
      {"makeLocalDateTimeRange(calendarAdapter:)", datePath, 21, {"date"}, [](A a, P) { return failureOf(leapDay.makeLocalDateTimeRange(a)); }},
      {"makeUtcDateTimeRange(calendarAdapter:)", datePath, 22, {"date"}, [](A a, P) { return failureOf(leapDay.makeUtcDateTimeRange(a)); }},
      {"makeDateTimeRange(calendarAdapter:timezoneIdentifier:)", datePath, 23, {"date"}, [](A a, P) { return failureOf(leapDay.makeDateTimeRange(a, tokyo)); }},
      {"formatWith(dateStyle:calendarAdapter:localeIdentifierOverride:)", datePath, 6, format, [](A a, P) { return failureOf(leapDay.formatWith(QuandaDateFormatStyle::full, a, "de_DE")); }},
      {"formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)", datePath, 7, formatTemplate, [](A a, P) { return failureOf(leapDay.formatWith(QuandaKnownDateFormatTemplate::fullMonthAndYear, a)); }},
      {"formatRange(to:style:calendarAdapter:localeIdentifierOverride:)", datePath, 10, {"from", "to", "style", "calendarAdapter", "localeIdentifierOverride"}, [](A a, P) { return failureOf(leapDay.formatRange(Date::make(2024, 3, 5).value(), QuandaDateRangeFormatStyle::medium, a)); }},
      {"localizedStandloneDayOfWeekName(calendarAdapter:localeIdentifierOverride:style:)", datePath, 20, {"date", "localeIdentifierOverride", "style"}, [](A a, P) { return failureOf(leapDay.localizedStandloneDayOfWeekName(a, std::nullopt, QuandaStandaloneDayNameFormatStyle::full)); }},
      {"localizedMonthShortName(calendarAdapter:localeIdentifierOverride:)", datePath, 7, {"date", "localeIdentifierOverride"}, [](A a, P) { return failureOf(leapDay.localizedMonthShortName(a, "fr_FR")); }},
      {"makeUsingLocalTimezone(foundationDate:calendarAdapter:)", datePath, 36, instantKeys, [](A a, P) { return failureOf(Date::makeUsingLocalTimezone(moment, a)); }},
      {"makeUsingUtcTimezone(foundationDate:calendarAdapter:)", datePath, 37, instantKeys, [](A a, P) { return failureOf(Date::makeUsingUtcTimezone(moment, a)); }},
      {"makeUsingTimezone(foundationDate:calendarAdapter:timezoneIdentifier:)", datePath, 38, namedInstantKeys, [](A a, P) { return failureOf(Date::makeUsingTimezone(moment, a, tokyo)); }},
      {"makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)", datePath, 36, {"currentLogicDate"}, [](A a, P p) { return failureOf(Date::makeFromCurrentDateUsingLocalTimezone(a, p)); }},
      {"localizedStandaloneName(calendarAdapter:localeIdentifierOverride:style:)", "Quanda/QuandaDayOfGregorianWeek", 20, {"dayOfWeek", "localeIdentifierOverride", "style"}, [](A a, P) { return failureOf(localizedStandaloneName(QuandaDayOfGregorianWeek::sunday, a, "ja_JP", QuandaStandaloneDayNameFormatStyle::veryShort)); }},

      {"formatWith(timeStyle:calendarAdapter:localeIdentifierOverride:)", naturalTimePath, 11, {"timeOfDay", "timeStyle", "calendarAdapter"}, [](A a, P) { return failureOf(lunch.formatWith(QuandaTimeFormatStyle::short_, a)); }},
      {"formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)", naturalTimePath, 13, {"timeOfDay", "formatStringTemplate", "calendarAdapter"}, [](A a, P) { return failureOf(lunch.formatWith(QuandaKnownTimeFormatTemplate::standaloneMinuteWithoutUnit, a)); }},
      {"makeUsingLocalTimezone(foundationDate:calendarAdapter:)", naturalTimePath, 39, instantKeys, [](A a, P) { return failureOf(NaturalTime::makeUsingLocalTimezone(moment, a)); }},
      {"makeUsingUtcTimezone(foundationDate:calendarAdapter:)", naturalTimePath, 41, instantKeys, [](A a, P) { return failureOf(NaturalTime::makeUsingUtcTimezone(moment, a)); }},
      {"makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)", naturalTimePath, 39, timeNowKeys, [](A a, P p) { return failureOf(NaturalTime::makeFromCurrentDateUsingLocalTimezone(a, p)); }},
      {"formatWith(timeStyle:calendarAdapter:localeIdentifierOverride:)", realTimePath, 12, {"timeOfDay", "timeStyle", "calendarAdapter"}, [](A a, P) { return failureOf(realLunch.formatWith(QuandaTimeFormatStyle::medium, a, "en_GB")); }},
      {"formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)", realTimePath, 14, {"timeOfDay", "formatStringTemplate", "calendarAdapter"}, [](A a, P) { return failureOf(realLunch.formatWith(QuandaKnownTimeFormatTemplate::standaloneSecondWithoutUnit, a)); }},
      {"makeUsingLocalTimezone(foundationDate:calendarAdapter:)", realTimePath, 40, instantKeys, [](A a, P) { return failureOf(RealTime::makeUsingLocalTimezone(moment, a)); }},
      {"makeUsingUtcTimezone(foundationDate:calendarAdapter:)", realTimePath, 42, instantKeys, [](A a, P) { return failureOf(RealTime::makeUsingUtcTimezone(moment, a)); }},
      {"makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)", realTimePath, 40, timeNowKeys, [](A a, P p) { return failureOf(RealTime::makeFromCurrentDateUsingLocalTimezone(a, p)); }},

      {"makeLocalFoundationDate(calendarAdapter:)", naturalPath, 24, {"dateTime"}, [](A a, P) { return failureOf(dateTime.makeLocalFoundationDate(a)); }},
      {"makeUtcFoundationDate(calendarAdapter:)", naturalPath, 26, {"dateTime"}, [](A a, P) { return failureOf(dateTime.makeUtcFoundationDate(a)); }},
      {"makeFoundationDate(calendarAdapter:timezoneIdentifier:)", naturalPath, 28, {"dateTime", "timezoneIdentifier"}, [](A a, P) { return failureOf(dateTime.makeFoundationDate(a, tokyo)); }},
      {"makeLocalLogicTimeInterval(calendarAdapter:)", naturalPath, 30, {"dateTime"}, [](A a, P) { return failureOf(dateTime.makeLocalLogicTimeInterval(a)); }},
      {"makeUtcLogicTimeInterval(calendarAdapter:)", naturalPath, 32, {"dateTime"}, [](A a, P) { return failureOf(dateTime.makeUtcLogicTimeInterval(a)); }},
      {"formatWith(dateTimeStyle:calendarAdapter:localeIdentifierOverride:)", naturalPath, 15, dateTimeFormat, [](A a, P) { return failureOf(dateTime.formatWith(fullDateTime, a)); }},
      {"formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)", naturalPath, 17, dateTimeTemplate, [](A a, P) { return failureOf(dateTime.formatWith(longTemplate, a, "de_DE")); }},
      {"makeUsingLocalTimezone(foundationDate:calendarAdapter:)", naturalPath, 45, instantKeys, [](A a, P) { return failureOf(Natural::makeUsingLocalTimezone(moment, a)); }},
      {"makeUsingUtcTimezone(foundationDate:calendarAdapter:)", naturalPath, 47, instantKeys, [](A a, P) { return failureOf(Natural::makeUsingUtcTimezone(moment, a)); }},
      {"makeUsingTimezone(foundationDate:calendarAdapter:timezoneIdentifier:)", naturalPath, 49, namedInstantKeys, [](A a, P) { return failureOf(Natural::makeUsingTimezone(moment, a, tokyo)); }},
      {"makeUsingLocalTimezone(logicTimeInterval:calendarAdapter:)", naturalPath, 51, intervalKeys, [](A a, P) { return failureOf(Natural::makeUsingLocalTimezone(interval, a)); }},
      {"makeUsingUtcTimezone(logicTimeInterval:calendarAdapter:)", naturalPath, 53, intervalKeys, [](A a, P) { return failureOf(Natural::makeUsingUtcTimezone(interval, a)); }},
      {"makeUsingTimezone(logicTimeInterval:calendarAdapter:timezoneIdentifier:)", naturalPath, 55, namedIntervalKeys, [](A a, P) { return failureOf(Natural::makeUsingTimezone(interval, a, tokyo)); }},
      {"makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)", naturalPath, 45, nowKeys, [](A a, P p) { return failureOf(Natural::makeFromCurrentDateUsingLocalTimezone(a, p)); }},
      {"makeFromCurrentDateUsingTimezone(calendarAdapter:timeProvider:timezoneIdentifier:)", naturalPath, 49, {"currentLogicDate", "calendarAdapter", "timezoneIdentifier"}, [](A a, P p) { return failureOf(Natural::makeFromCurrentDateUsingTimezone(a, p, tokyo)); }},
      {"makeLocalFoundationDate(calendarAdapter:)", realPath, 25, {"dateTime"}, [](A a, P) { return failureOf(realDateTime.makeLocalFoundationDate(a)); }},
      {"makeUtcFoundationDate(calendarAdapter:)", realPath, 27, {"dateTime"}, [](A a, P) { return failureOf(realDateTime.makeUtcFoundationDate(a)); }},
      {"makeLocalLogicTimeInterval(calendarAdapter:)", realPath, 31, {"dateTime"}, [](A a, P) { return failureOf(realDateTime.makeLocalLogicTimeInterval(a)); }},
      {"makeUtcLogicTimeInterval(calendarAdapter:)", realPath, 33, {"dateTime"}, [](A a, P) { return failureOf(realDateTime.makeUtcLogicTimeInterval(a)); }},
      {"formatWith(dateTimeStyle:calendarAdapter:localeIdentifierOverride:)", realPath, 16, dateTimeFormat, [](A a, P) { return failureOf(realDateTime.formatWith(fullDateTime, a)); }},
      {"formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)", realPath, 18, dateTimeTemplate, [](A a, P) { return failureOf(realDateTime.formatWith(longTemplate, a)); }},
      {"makeUsingLocalTimezone(foundationDate:calendarAdapter:)", realPath, 46, instantKeys, [](A a, P) { return failureOf(Real::makeUsingLocalTimezone(moment, a)); }},
      {"makeUsingUtcTimezone(foundationDate:calendarAdapter:)", realPath, 48, instantKeys, [](A a, P) { return failureOf(Real::makeUsingUtcTimezone(moment, a)); }},
      {"makeUsingLocalTimezone(logicTimeInterval:calendarAdapter:)", realPath, 52, intervalKeys, [](A a, P) { return failureOf(Real::makeUsingLocalTimezone(interval, a)); }},
      {"makeUsingUtcTimezone(logicTimeInterval:calendarAdapter:)", realPath, 54, intervalKeys, [](A a, P) { return failureOf(Real::makeUsingUtcTimezone(interval, a)); }},
      {"makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)", realPath, 46, nowKeys, [](A a, P p) { return failureOf(Real::makeFromCurrentDateUsingLocalTimezone(a, p)); }},
  };
  return operations;
}
// clang-format on

TEST(QuandaCalendarBinding, EachOperationAsksItsRequirementAndWrapsItsFailureOnce) {
  TestAdapter test("en_US", "Europe/Berlin");
  QuandaMockTimeProvider provider;
  provider.setCurrentLogicTimeIntervalOverride(interval);
  for (const BoundOperation& operation : boundOperations()) {
    SCOPED_TRACE(std::string(operation.path) + " " + operation.function);
    ForwardingAdapter adapter(test.adapter);
    EXPECT_EQ(operation.call(adapter, provider), std::nullopt);
    EXPECT_GE(adapter.count(operation.position), 1);

    adapter.failing = {operation.position};
    const std::optional<KeelError> failure = operation.call(adapter, provider);
    ASSERT_TRUE(failure.has_value());
    expectErrorChain(*failure,
                     {{operation.function, operation.args}, injectedLink(operation.position)},
                     operation.path);
  }
}

TEST(QuandaCalendarBinding, ProvidersReadTheLogicClockThroughTheDateTimesWrappingWithoutArguments) {
  TestAdapter test("en_US", "Asia/Tokyo");
  ForwardingAdapter adapter(test.adapter);
  QuandaMockTimeProvider provider;
  provider.setCurrentLogicTimeIntervalOverride(interval);
  EXPECT_EQ(provider.currentLogicDate(adapter), moment);
  EXPECT_EQ(provider.currentLocalLogicNaturalDateTime(adapter).value(),
            Natural::makeUsingLocalTimezone(interval, adapter).value());
  EXPECT_EQ(provider.currentLocalLogicRealDateTime(adapter).value().serializedToRfc3339String(),
            withDefaultDecimalSeparator("2024-02-29T22:05:09.500000"));

  adapter.failing = {51, 52};
  const auto natural = provider.currentLocalLogicNaturalDateTime(adapter);
  const auto real = provider.currentLocalLogicRealDateTime(adapter);
  for (const auto& [failure, function, innerPath] :
       {std::tuple{failureOf(natural), "currentLocalLogicNaturalDateTime(calendarAdapter:)",
                   naturalPath},
        std::tuple{failureOf(real), "currentLocalLogicRealDateTime(calendarAdapter:)", realPath}}) {
    ASSERT_TRUE(failure.has_value());
    expectErrorChain(*failure,
                     {{function, {}},
                      {.function = "makeUsingLocalTimezone(logicTimeInterval:calendarAdapter:)",
                       .args = {"logicTimeInterval", "calendarAdapter"},
                       .file = innerPath},
                      injectedLink(51 + (innerPath == realPath))},
                     "Quanda/QuandaTimeProviding");
  }
}

// Two calendars nobody here wrote: Abseil's civil time and its reading of the system's tz
// database. Every date's UTC midnight, and wall times in a zone with daylight saving, round trip.
TEST(QuandaCalendarBinding, InstantsAgreeWithAbseilInUtcAndInANamedZone) {
  TestAdapter test("en_US", "Pacific/Chatham");
  QuandaCalendarAdapting& adapter = test.adapter;
  absl::TimeZone newYork;
  ASSERT_TRUE(absl::LoadTimeZone("America/New_York", &newYork));
  std::mt19937_64 random(29022024);
  std::uniform_int_distribution<std::uint32_t> days(0, 3652058);
  constexpr std::uint64_t unixEpochSinceDatum = 62135596800;  // 1970-01-01T00:00:00
  std::uniform_int_distribution<std::uint64_t> recent(unixEpochSinceDatum,
                                                      unixEpochSinceDatum + 2145916800);
  for (int round = 0; round < 2000; ++round) {
    const Date date = Date::makeFromDaysSinceDatum(days(random));
    const absl::CivilDay civil(date.year(), date.month(), date.day());
    const double expected = static_cast<double>((civil - absl::CivilDay(1970, 1, 1)) * 86400);
    ASSERT_EQ(seconds(date.makeUtcFoundationDate(adapter).value()), expected) << date;
    ASSERT_EQ(Date::makeUsingUtcTimezone(instant(expected + 86399.5), adapter).value(), date);

    const Natural wall = Natural::makeFromSecondsSinceDatum(recent(random));
    const absl::Time oracle =
        absl::FromCivil(absl::CivilSecond(wall.year(), wall.month(), wall.day(), wall.hour(),
                                          wall.minute(), wall.second()),
                        newYork);
    const KeelDate placed = wall.makeFoundationDate(adapter, "America/New_York").value();
    ASSERT_EQ(seconds(placed), static_cast<double>(absl::ToUnixSeconds(oracle))) << wall;
    const absl::CivilSecond back = absl::ToCivilSecond(oracle, newYork);
    ASSERT_EQ(
        Natural::makeUsingTimezone(placed, adapter, "America/New_York").value(),
        Natural::make(
            static_cast<std::uint16_t>(back.year()), static_cast<std::uint8_t>(back.month()),
            static_cast<std::uint8_t>(back.day()), static_cast<std::uint8_t>(back.hour()),
            static_cast<std::uint8_t>(back.minute()), static_cast<std::uint8_t>(back.second()))
            .value());
  }
}

TEST(QuandaCalendarBinding, LocalOperationsFollowTheDeviceWhileUtcOnesNeverDo) {
  TestAdapter test("en_US", "UTC");
  QuandaCalendarAdapting& adapter = test.adapter;
  QuandaMockTimeProvider provider;
  const KeelDate lateEvening = instant(1709236800);  // 2024-02-29T20:00:00Z
  provider.setCurrentLogicTimeIntervalOverride(Interval(lateEvening));
  const std::string fullText = leapDay.formatWith(QuandaDateFormatStyle::full, adapter).value();
  for (const std::string_view zone : {"UTC", "Asia/Tokyo", "America/Los_Angeles"}) {
    SCOPED_TRACE(zone);
    test.device->setTimezoneIdentifier(std::string(zone));
    const Date local = Date::makeUsingLocalTimezone(lateEvening, adapter).value();
    EXPECT_EQ(local, Date::makeUsingTimezone(lateEvening, adapter, zone).value());
    EXPECT_EQ(Date::makeFromCurrentDateUsingLocalTimezone(adapter, provider).value(), local);
    EXPECT_EQ(NaturalTime::makeFromCurrentDateUsingLocalTimezone(adapter, provider).value(),
              Natural::makeFromCurrentDateUsingTimezone(adapter, provider, zone).value().time());
    EXPECT_EQ(Date::makeUsingUtcTimezone(lateEvening, adapter).value(), leapDay);
    EXPECT_EQ(NaturalTime::makeUsingUtcTimezone(lateEvening, adapter).value().hour(), 20);
    EXPECT_EQ(leapDay.formatWith(QuandaDateFormatStyle::full, adapter).value(), fullText);
    // A pinned logic clock gives the same value on every call.
    EXPECT_EQ(Natural::makeFromCurrentDateUsingLocalTimezone(adapter, provider).value(),
              Natural::makeFromCurrentDateUsingLocalTimezone(adapter, provider).value());
  }
  EXPECT_EQ(Date::makeUsingLocalTimezone(lateEvening, adapter).value().day(), 29);
  test.device->setTimezoneIdentifier("Asia/Tokyo");
  EXPECT_EQ(Date::makeUsingLocalTimezone(lateEvening, adapter).value().day(), 1);
}

TEST(QuandaCalendarBinding, DayRangesSpanTheZonesDaysToTheNextMidnight) {
  TestAdapter test("en_US", "Europe/Berlin");
  QuandaCalendarAdapting& adapter = test.adapter;
  const auto hours = [](const KeelDomain<KeelDate>& range) {
    return (seconds(range.max()) - seconds(range.min())) / 3600;
  };
  EXPECT_EQ(hours(Date::make(2024, 3, 31).value().makeLocalDateTimeRange(adapter).value()), 23);
  EXPECT_EQ(hours(Date::make(2024, 10, 27).value().makeLocalDateTimeRange(adapter).value()), 25);
  EXPECT_EQ(hours(leapDay.makeDateTimeRange(adapter, "Asia/Kolkata").value()), 24);
  const KeelDomain<KeelDate> last = Date::validRange.max().makeUtcDateTimeRange(adapter).value();
  EXPECT_EQ(seconds(last.min()), 253402214400);
  EXPECT_EQ(seconds(last.max()), 253402300800);
  EXPECT_EQ(seconds(leapDay.makeUtcDateTimeRange(adapter).value().max()),
            seconds(Date::make(2024, 3, 1).value().makeUtcFoundationDate(adapter).value()));
}

TEST(QuandaCalendarBinding, WhatTheAdapterCannotGiveFailsWithItsOwnError) {
  TestAdapter test;
  QuandaCalendarAdapting& adapter = test.adapter;
  const auto failure = dateTime.makeFoundationDate(adapter, "Not/AZone");
  ASSERT_FALSE(failure);
  EXPECT_EQ(failure.error().functionName(),
            "makeFoundationDate(calendarAdapter:timezoneIdentifier:)");
  EXPECT_EQ(failure.error().innermost().message(), "Failed to create timezone");
  // A wall time read before year 1 is not a date-time: its validation fails, naming the
  // components read.
  const auto early = Natural::makeUsingUtcTimezone(instant(-62135596801.0), adapter);
  ASSERT_FALSE(early);
  EXPECT_EQ(early.error().argument("components"),
            "Components(day: 31, hour: 23, minute: 59, month: 12, second: 59, year: 0)");
  EXPECT_EQ(early.error().innermost().message(), "Invalid year");
  const auto earlyDate = Date::makeUsingUtcTimezone(instant(-62135596801.0), adapter);
  ASSERT_FALSE(earlyDate);
  EXPECT_EQ(earlyDate.error().argument("components"), std::nullopt);
}

TEST(QuandaCalendarBinding, WeekdayNamesOfDatesAreTheirWeekdaysNames) {
  TestAdapter test("de_DE", "UTC");
  for (int offset = 0; offset < 7; ++offset) {
    const Date date = leapDay.addingDays(offset);
    for (const auto style : allCases<QuandaStandaloneDayNameFormatStyle>) {
      EXPECT_EQ(
          date.localizedStandloneDayOfWeekName(test.adapter, std::nullopt, style).value(),
          localizedStandaloneName(date.dayOfWeek(), test.adapter, std::nullopt, style).value());
    }
  }
  EXPECT_EQ(localizedStandaloneName(QuandaDayOfGregorianWeek::sunday, test.adapter, "en_US",
                                    QuandaStandaloneDayNameFormatStyle::full)
                .value(),
            "Sunday");
  EXPECT_EQ(leapDay.localizedMonthShortName(test.adapter).value(), "Feb");
  EXPECT_EQ(Date::make(2024, 3, 1).value().localizedMonthShortName(test.adapter).value(), "Mär");
}

}  // namespace
