// Conversions in named zones against Howard Hinnant's tz library, which reads the same system
// database: every hour of 1970...2037 in both directions, and every daylight-saving edge, in
// zones chosen for their oddities. Expected instants come from the oracle's offsets, never from
// typed-in ones, so that a database update cannot break a test.
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#include <date/tz.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "Quanda/FoundationAdapting/AdapterTestSupport.h"

namespace {

using std::chrono::seconds;
using SysSeconds = date::sys_seconds;
using LocalSeconds = date::local_seconds;

// The wall time of a local instant as a component record.
NaturalDateTimeComponents fieldsOf(LocalSeconds local) {
  const auto day = date::floor<date::days>(local);
  const date::year_month_day ymd(day);
  const date::hh_mm_ss<seconds> time(local - day);
  return dateTime(
      static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
      static_cast<int>(static_cast<unsigned>(ymd.day())), static_cast<int>(time.hours().count()),
      static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
}

// The instant the adapter gives a wall time: for a skipped one the wall time less the offset
// before the gap (the oracle's own choice is the transition instant), for a repeated one the
// earlier instant, which the oracle's first interval gives too.
SysSeconds expectedInstant(const date::time_zone& zone, LocalSeconds local) {
  const date::local_info info = zone.get_info(local);
  return SysSeconds((local - info.first.offset).time_since_epoch());
}

class QuandaAdapterZoneConversions : public ::testing::TestWithParam<const char*> {
 protected:
  TestAdapter test{"en_US", "UTC"};
  int mismatches = 0;

  void checkInstant(const date::time_zone& zone, SysSeconds moment) {
    const std::string name = GetParam();
    const date::local_seconds local = zone.to_local(moment);
    const auto read = test.adapter.makeTimezoneDiscreteDateTimeComponents(
        instant(static_cast<double>(moment.time_since_epoch().count())), name);
    if (!(read && read.value() == fieldsOf(local)) && ++mismatches <= 10) {
      ADD_FAILURE() << "reading " << moment.time_since_epoch().count() << " in " << name;
    }
  }

  void checkWallTime(const date::time_zone& zone, LocalSeconds local) {
    const std::string name = GetParam();
    const auto built = test.adapter.makeGregorianFoundationDate(fieldsOf(local), name);
    const double expected =
        static_cast<double>(expectedInstant(zone, local).time_since_epoch().count());
    if (!(built && ::seconds(built.value()) == expected) && ++mismatches <= 10) {
      ADD_FAILURE() << "building " << fieldsOf(local).description() << " in " << name;
    }
  }
};

TEST_P(QuandaAdapterZoneConversions, EveryHourAndEveryTransitionAgreeWithTheOracle) {
  const date::time_zone& zone = *date::locate_zone(GetParam());
  const SysSeconds first = date::sys_days(date::year(1970) / 1 / 1);
  const SysSeconds last = date::sys_days(date::year(2038) / 1 / 1);
  for (SysSeconds moment = first; moment < last; moment += std::chrono::hours(1)) {
    checkInstant(zone, moment);
    checkWallTime(zone, LocalSeconds(moment.time_since_epoch()));
  }
  // Around each transition: the instants beside it, and wall times on both sides of the gap or
  // overlap, at its edges and inside it.
  int transitions = 0;
  for (date::sys_info info = zone.get_info(first); info.end < last;
       info = zone.get_info(info.end), ++transitions) {
    const SysSeconds change = info.end;
    for (seconds step : {seconds(-1), seconds(0), seconds(1)}) checkInstant(zone, change + step);
    const seconds before = info.offset;
    const seconds after = zone.get_info(change).offset;
    for (seconds offset : {before, after}) {
      const LocalSeconds wall = LocalSeconds((change + offset).time_since_epoch());
      for (seconds step : {seconds(-1), seconds(0), seconds(1), (after - before) / 2}) {
        checkWallTime(zone, wall + step);
      }
    }
  }
  EXPECT_EQ(mismatches, 0);
  RecordProperty("transitions", transitions);
}

// Beyond the oracle's years (its database stops at 2037) and at the edges of the years the adapter
// keeps as a table (1900 to 2099), against Abseil's own lookups of the same database.
TEST_P(QuandaAdapterZoneConversions, TheTableEdgesAndTheFarFutureAgreeWithTheTzLibrary) {
  absl::TimeZone zone;
  ASSERT_TRUE(absl::LoadTimeZone(GetParam(), &zone));
  const std::string name = GetParam();
  const auto check = [&](std::int64_t moment) {
    const absl::CivilSecond civil = absl::ToCivilSecond(absl::FromUnixSeconds(moment), zone);
    const NaturalDateTimeComponents wall =
        dateTime(static_cast<int>(civil.year()), civil.month(), civil.day(), civil.hour(),
                 civil.minute(), civil.second());
    const auto read = test.adapter.makeTimezoneDiscreteDateTimeComponents(
        instant(static_cast<double>(moment)), name);
    const auto built = test.adapter.makeGregorianFoundationDate(wall, name);
    const double expected = static_cast<double>(absl::ToUnixSeconds(zone.At(civil).pre));
    if (!(read && read.value() == wall && built && ::seconds(built.value()) == expected) &&
        ++mismatches <= 10) {
      ADD_FAILURE() << moment << " in " << name;
    }
  };
  for (const int year : {1895, 2095}) {
    const std::int64_t first =
        absl::ToUnixSeconds(absl::FromCivil(absl::CivilSecond(year, 1, 1), zone));
    for (std::int64_t moment = first; moment < first + 10 * 366 * 86400LL; moment += 3600) {
      check(moment);
    }
  }
  absl::TimeZone::CivilTransition transition;
  for (absl::Time after = absl::FromCivil(absl::CivilSecond(2037, 1, 1), zone);
       zone.NextTransition(after, &transition) &&
       after < absl::FromCivil(absl::CivilSecond(2101, 1, 1), zone);) {
    after = zone.At(transition.to).trans;
    for (std::int64_t step = -2; step <= 2; ++step) check(absl::ToUnixSeconds(after) + step * 1800);
  }
  EXPECT_EQ(mismatches, 0);
}

INSTANTIATE_TEST_SUITE_P(Zones, QuandaAdapterZoneConversions,
                         ::testing::Values("America/New_York", "America/Havana", "America/Santiago",
                                           "Australia/Lord_Howe", "Pacific/Chatham", "Asia/Kolkata",
                                           "Asia/Kathmandu", "Pacific/Apia", "Pacific/Kiritimati",
                                           "America/Mexico_City", "America/Nuuk", "Africa/Cairo",
                                           "Asia/Almaty", "Europe/Berlin"),
                         [](const auto& info) {
                           std::string name = info.param;
                           for (char& character : name) {
                             if (character == '/') character = '_';
                           }
                           return name;
                         });

TEST(QuandaAdapterDaylightSaving, SkippedAndRepeatedWallTimes) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const auto built = [&](NaturalDateTimeComponents wall, std::string_view zone) {
    return ::seconds(adapter.makeGregorianFoundationDate(wall, zone).value());
  };
  const auto readBack = [&](NaturalDateTimeComponents wall, std::string_view zone) {
    return adapter.makeTimezoneDiscreteDateTimeComponents(instant(built(wall, zone)), zone).value();
  };
  // New York: 02:30 on the spring-forward night is 03:30 EDT (07:30Z); 01:30 on the fall-back
  // night is the earlier of the two, 01:30 EDT (05:30Z).
  EXPECT_EQ(built(dateTime(2024, 3, 10, 2, 30), "America/New_York"), 1710055800);
  EXPECT_EQ(built(dateTime(2024, 11, 3, 1, 30), "America/New_York"), 1730611800);
  // A midnight that does not exist is the first instant of that day, never the day before.
  EXPECT_EQ(readBack(dateTime(2024, 3, 10), "America/Havana"), dateTime(2024, 3, 10, 1));
  EXPECT_EQ(readBack(dateTime(2024, 9, 8), "America/Santiago"), dateTime(2024, 9, 8, 1));
  // Lord Howe moves by 30 minutes, so a skipped time moves by 30 minutes.
  EXPECT_EQ(readBack(dateTime(2024, 10, 6, 2, 15), "Australia/Lord_Howe"),
            dateTime(2024, 10, 6, 2, 45));
  // Apia skipped 2011-12-30 whole: its wall times move a day forward.
  EXPECT_EQ(readBack(dateTime(2011, 12, 30), "Pacific/Apia"), dateTime(2011, 12, 31));
  EXPECT_EQ(readBack(dateTime(2011, 12, 30, 12), "Pacific/Apia"), dateTime(2011, 12, 31, 12));
  // Chatham's skipped hour starts at 02:45.
  EXPECT_EQ(readBack(dateTime(2024, 9, 29, 3, 0), "Pacific/Chatham"), dateTime(2024, 9, 29, 4, 0));
}

}  // namespace
