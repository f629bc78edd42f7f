// What a caller of the conversions relies on beyond the arithmetic: refused components and zones
// with their exact errors, instants without components, the device's zone read at every call,
// and the limits where the process stops or the range check says no.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Quanda/Abstract/ErrorChainExpectations.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"

namespace {

constexpr std::string_view refused = "Failed to create local foundation date from dateComponents";
constexpr std::string_view unknownZone = "Failed to create timezone";
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(QuandaAdapterConversions, ComponentsThatNameNoMomentAreRefusedInEveryZone) {
  TestAdapter test("en_US", "Europe/Berlin");
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const std::vector<NaturalDateTimeComponents> invalid{
      dateTime(2023, 2, 29),    dateTime(2024, 2, 30),        dateTime(2024, 4, 31),
      dateTime(2024, 13, 1),    dateTime(2024, 0, 1),         dateTime(2024, 1, 0),
      dateTime(2024, 1, 1, 24), dateTime(2024, 1, 1, 23, 60), dateTime(2024, 1, 1, 23, 59, 60)};
  for (const NaturalDateTimeComponents& components : invalid) {
    SCOPED_TRACE(components.description());
    expectErrorChain(adapter.makeUtcGregorianFoundationDate(components).error(),
                     {{"makeUtcGregorianFoundationDate(from:)",
                       {"components", "calendar", "dateComponents"},
                       std::string(refused)}},
                     adapterPath);
    expectErrorChain(adapter.makeGregorianLogicTimeInterval(components, "Asia/Tokyo").error(),
                     {{"makeGregorianLogicTimeInterval(from:timezoneIdentifier:)",
                       {"discreteDateTimeComponents", "timezoneIdentifier=Asia/Tokyo"}},
                      {"makeGregorianFoundationDate(from:timezoneIdentifier:)",
                       {"components", "timezoneIdentifier", "calendar", "dateComponents"},
                       std::string(refused)}},
                     adapterPath);
  }
  const auto dateError = adapter.makeUtcGregorianFoundationDate(DateComponents{2023, 2, 29});
  EXPECT_EQ(dateError.error().argument("dateComponents"),
            "DateComponents(year: 2023, month: 2, day: 29)");
  EXPECT_EQ(dateError.error().argument("calendar"),
            "Calendar(identifier: gregorian, localeIdentifier: en_US, timezoneIdentifier: UTC)");
  // A real second of 60, or below 0, names no moment either; its split is shown.
  const auto realError =
      adapter.makeUtcGregorianLogicTimeInterval(realDateTime(2024, 1, 1, 0, 0, 60));
  expectErrorChain(realError.error(),
                   {{"makeUtcGregorianLogicTimeInterval(from:)", {"realDateTimeComponents"}},
                    {"makeUtcGregorianFoundationDate(from:)",
                     {"components", "calendar", "dateComponents"},
                     std::string(refused)}},
                   adapterPath);
  EXPECT_EQ(realError.error().error()->argument("dateComponents"),
            "DateComponents(year: 2024, month: 1, day: 1, hour: 0, minute: 0, second: 60, "
            "nanosecond: 0)");
  EXPECT_FALSE(adapter.makeUtcGregorianFoundationDate(realDateTime(2024, 1, 1, 0, 0, -0.5)));
}

TEST(QuandaAdapterConversions, UnknownZonesFailAndAreNotKept) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  for (const char* zone : {"", "Not/AZone", "europe/berlin", "+05:30", "UTC+01:00", "GMT+5", "Z",
                           "/etc/localtime", "localtime", "posix/Europe/Berlin", "posixrules",
                           "Factory", "Europe/../Europe/Berlin", "../../../etc/passwd"}) {
    SCOPED_TRACE(zone);
    expectErrorChain(adapter.makeGregorianFoundationDate(DateComponents{2024, 2, 29}, zone).error(),
                     {{"makeGregorianFoundationDate(from:timezoneIdentifier:)",
                       {"components", "timezoneIdentifier"}},
                      {"getGregorianCalendarBy(localeIdentifier:timezoneIdentifier:)",
                       {"localeIdentifier=en_US", "timezoneIdentifier"}},
                      {"getTimezoneBy(identifier:)", {"identifier"}, std::string(unknownZone)}},
                     adapterPath);
  }
  EXPECT_EQ(adapter.cacheBuildCounts().timezonesByIdentifier, 0u);
  EXPECT_EQ(adapter.cacheBuildCounts().gregorianCalendarsByTimezoneIdentifier, 0u);
  // Aliases of the database are zones in their own right.
  for (const char* zone : {"US/Eastern", "Asia/Calcutta", "Europe/Kiev", "EST5EDT", "Etc/GMT+5"}) {
    EXPECT_TRUE(adapter.makeGregorianFoundationDate(DateComponents{2024, 2, 29}, zone)) << zone;
  }
}

TEST(QuandaAdapterConversions, TheLocalZoneIsTheDevicesAtEachCall) {
  TestAdapter test("en_US", "Asia/Tokyo");
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const KeelDate lateEvening = instant(1709249400);  // 2024-02-29T23:30:00Z
  EXPECT_EQ(adapter.makeUtcTimezoneDateComponents(lateEvening).value(),
            (DateComponents{2024, 2, 29}));
  EXPECT_EQ(adapter.makeLocalTimezoneDateComponents(lateEvening).value(),
            (DateComponents{2024, 3, 1}));
  EXPECT_EQ(adapter.currentTimezoneIdentifier(), "Asia/Tokyo");
  test.device->setTimezoneIdentifier("America/Los_Angeles");
  EXPECT_EQ(adapter.makeLocalTimezoneDiscreteDateTimeComponents(lateEvening).value(),
            dateTime(2024, 2, 29, 15, 30));
  EXPECT_EQ(
      seconds(adapter.makeLocalGregorianFoundationDate(dateTime(2024, 2, 29, 15, 30)).value()),
      1709249400);
  EXPECT_EQ(adapter.currentTimezoneIdentifier(), "America/Los_Angeles");

  // A device whose zone is unknown fails every local conversion, through the local calendar.
  test.device->setTimezoneIdentifier("Mars/Olympus_Mons");
  expectErrorChain(adapter.makeLocalGregorianLogicTimeInterval(dateTime(2024, 1, 1)).error(),
                   {{"makeLocalGregorianLogicTimeInterval(from:)", {"discreteDateTimeComponents"}},
                    {"makeLocalGregorianFoundationDate(from:)", {"components"}},
                    {"getLocalGregorianCalendar()", {}},
                    {"getGregorianCalendarBy(localeIdentifier:timezoneIdentifier:)",
                     {"localeIdentifier", "timezoneIdentifier=Mars/Olympus_Mons"}},
                    {"getTimezoneBy(identifier:)", {"identifier"}, std::string(unknownZone)}},
                   adapterPath);
  expectErrorChain(adapter.makeLocalTimezoneDateComponents(lateEvening).error(),
                   {{"makeLocalTimezoneDateComponents(foundationDate:)", {"foundationDate"}},
                    {"getLocalGregorianCalendar()", {}},
                    {"getGregorianCalendarBy(localeIdentifier:timezoneIdentifier:)",
                     {"localeIdentifier", "timezoneIdentifier"}},
                    {"getTimezoneBy(identifier:)", {"identifier"}, std::string(unknownZone)}},
                   adapterPath);
}

TEST(QuandaAdapterConversions, InstantsWithoutComponentsFailWithTheFirstComponentNeeded) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  for (double value : {std::nan(""), infinity, -infinity}) {
    const KeelDate date = instant(value);
    expectErrorChain(adapter.makeLocalTimezoneRealDateTimeComponents(date).error(),
                     {{"makeLocalTimezoneRealDateTimeComponents(foundationDate:)",
                       {"calendar", "dateComponents=DateComponents()", "foundationDate"},
                       "dateComponents yields no year"}},
                     adapterPath);
    expectErrorChain(adapter.makeTimezoneRealTimeComponents(date, "Asia/Tokyo").error(),
                     {{"makeTimezoneRealTimeComponents(foundationDate:timezoneIdentifier:)",
                       {"dateComponents", "foundationDate", "timezoneIdentifier"},
                       "dateComponents yields no hour"}},
                     adapterPath);
    expectErrorChain(
        adapter.makeUtcTimezoneDiscreteDateTimeComponents(QuandaLogicTimeInterval(value)).error(),
        {{"makeUtcTimezoneDiscreteDateTimeComponents(logicTimeInterval:)", {"logicTimeInterval"}},
         {"makeUtcTimezoneDiscreteDateTimeComponents(foundationDate:)",
          {"calendar", "dateComponents", "foundationDate"},
          "dateComponents yields no year"}},
        adapterPath);
  }
}

TEST(QuandaAdapterConversions, TheRangeCheckSaysWhatTheReadersWouldStopOn) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  constexpr double year1 = -62135596800;        // 0001-01-01T00:00:00Z
  constexpr double year9999End = 253402300799;  // 9999-12-31T23:59:59Z
  const struct {
    double instant;
    const char* zone;
    const char* failure;  // null when the instant is accepted
  } cases[] = {
      {0, "UTC", nullptr},
      {year1, "UTC", nullptr},
      {year9999End, "UTC", nullptr},
      {year1, "America/New_York", "Foundation date outside the years 1...9999"},
      {year9999End, "Asia/Tokyo", "Foundation date outside the years 1...9999"},
      {1e15, "UTC", "Foundation date outside the years 1...9999"},
      {-1e300, "Europe/Berlin", "Foundation date outside the years 1...9999"},
      {std::nan(""), "UTC", "Foundation date is not finite"},
      {infinity, "UTC", "Foundation date is not finite"},
      {0, "Not/AZone", "Failed to create timezone"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.instant) + " in " + c.zone);
    const KeelResult<KeelDate> checked = adapter.checkedFoundationDate(instant(c.instant), c.zone);
    if (c.failure == nullptr) {
      EXPECT_EQ(seconds(checked.value()), c.instant);
    } else {
      ASSERT_FALSE(checked);
      EXPECT_EQ(checked.error().innermost().message(), c.failure);
      EXPECT_EQ(checked.error().functionName(),
                "checkedFoundationDate(foundationDate:timezoneIdentifier:)");
    }
  }
  // What the check accepts, the readers take; year 0 and year 10000 still read as they are.
  EXPECT_EQ(adapter.makeTimezoneDateComponents(instant(year1), "America/New_York").value(),
            (DateComponents{0, 12, 31}));
  EXPECT_EQ(adapter.makeTimezoneDateComponents(instant(year9999End), "Pacific/Kiritimati").value(),
            (DateComponents{10000, 1, 1}));
}

TEST(QuandaAdapterConversionsDeathTest, ValuesThatCannotBeNarrowedStopTheProcess) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  // Year 65536 onwards, or before year 0, does not fit the record.
  EXPECT_DEATH((void)adapter.makeUtcTimezoneDateComponents(instant(2.1e12)), "does not fit");
  EXPECT_DEATH((void)adapter.makeTimezoneDateComponents(instant(-6.3e10), "Asia/Tokyo"),
               "does not fit");
  EXPECT_DEATH((void)adapter.makeUtcTimezoneDiscreteTimeComponents(instant(1e300)), "does not fit");
  EXPECT_DEATH(
      (void)adapter.makeUtcGregorianFoundationDate(realDateTime(2024, 1, 1, 0, 0, std::nan(""))),
      "not finite");
  EXPECT_DEATH((void)adapter.makeUtcGregorianFoundationDate(realDateTime(2024, 1, 1, 0, 0, 1e300)),
               "not finite|does not fit|out of range");
}

}  // namespace
