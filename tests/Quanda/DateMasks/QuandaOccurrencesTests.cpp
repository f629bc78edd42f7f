// Occurrences as instants: placed against Abseil's zone rules (whose `pre` instant is the
// adapter's daylight-saving policy) and read back against Hinnant's tz, across the nights zones
// skip and repeat; the searches by instant and by date, forward and backward, against each other;
// the zone transitions against Hinnant's; and the errors.
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#include <date/tz.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "Quanda/DateMasks/QuandaOccurrences.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"
#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"

namespace {

using Time = QuandaAbstractNaturalTimeOfDay;

QuandaOccurrences occurrencesOf(const std::string& rule, Time time, std::string zone) {
  return QuandaOccurrences(makeDateMaskFromSyntax(rule).value(), time, std::move(zone));
}

QuandaLogicTimeInterval at(absl::Time time) {
  return QuandaLogicTimeInterval(absl::ToDoubleSeconds(time - absl::UnixEpoch()));
}

TEST(QuandaOccurrences, NightsThatZonesSkipOrRepeatFollowThePolicyAndReadBackAsTheDatabasesDo) {
  // How many nights of 2024 skip or repeat the time there: facts of the zones' rules, which the
  // loop counts from Abseil, so that each case is sure to cross what it is meant to.
  struct Case {
    std::string zone;
    Time time;
    int skipped;
    int repeated;
  };
  const Case cases[] = {{"Europe/Berlin", Time::make(2, 30, 0).value(), 1, 1},
                        {"America/New_York", Time::make(2, 30, 0).value(), 1, 0},
                        {"America/New_York", Time::make(1, 30, 0).value(), 0, 1},
                        {"Australia/Lord_Howe", Time::make(2, 15, 0).value(), 1, 0},
                        {"Australia/Lord_Howe", Time::make(1, 45, 0).value(), 0, 1}};
  TestAdapter test;
  for (const auto& [zone, time, skips, repeats] : cases) {
    SCOPED_TRACE(zone + " " + time.description());
    absl::TimeZone abseil;
    ASSERT_TRUE(absl::LoadTimeZone(zone, &abseil));
    const date::time_zone& hinnant = *date::locate_zone(zone);
    const QuandaOccurrences daily = occurrencesOf("every day", time, zone);
    const auto first = QuandaAbstractDate::make(2024, 1, 1).value();
    const auto year = daily.next(366, first.addingDays(-1), test.adapter);
    ASSERT_TRUE(year) << year.error();
    ASSERT_EQ(year.value().size(), 366U);
    int skipped = 0, repeated = 0;
    for (const QuandaOccurrence& occurrence : year.value()) {
      const QuandaAbstractDate date = occurrence.date;
      const auto civil = abseil.At(absl::CivilSecond(date.year(), date.month(), date.day(),
                                                     time.hour(), time.minute(), time.second()));
      skipped += civil.kind == absl::TimeZone::TimeInfo::SKIPPED;
      repeated += civil.kind == absl::TimeZone::TimeInfo::REPEATED;
      EXPECT_EQ(occurrence.logicTimeInterval, at(civil.pre)) << occurrence.description();

      const auto instant = date::sys_seconds(std::chrono::seconds(
          static_cast<std::int64_t>(occurrence.logicTimeInterval.unixEpoch())));
      const date::sys_info info = hinnant.get_info(instant);
      EXPECT_EQ(occurrence.secondsFromGMT, info.offset.count()) << occurrence.description();
      EXPECT_EQ(occurrence.localDateTime.localSeconds(),
                std::chrono::local_seconds((instant + info.offset).time_since_epoch()))
          << occurrence.description();
      EXPECT_EQ(occurrence, daily.occurrence(date, test.adapter).value());
    }
    EXPECT_EQ(skipped, skips);
    EXPECT_EQ(repeated, repeats);
  }
}

TEST(QuandaOccurrences, SearchesByInstantAndByDateForwardAndBackwardAgree) {
  const char* const rules[] = {"every day", "last fri", "2nd sun", "every 3 days from 2011-01-01",
                               "sat and day 31"};
  const char* const zones[] = {"Europe/Berlin", "America/New_York", "Pacific/Apia", "UTC"};
  const Time times[] = {Time::make(2, 30, 0).value(), Time::zero, Time::make(23, 30, 0).value()};
  // From October 2011 to spring 2012: both hemispheres' transitions and the day Samoa skipped.
  const QuandaLogicTimeInterval start(1317427200.0);
  TestAdapter test;
  for (const char* rule : rules) {
    for (const char* zone : zones) {
      for (const Time time : times) {
        SCOPED_TRACE(std::string(rule) + " at " + time.description() + " in " + zone);
        const QuandaOccurrences occurrences = occurrencesOf(rule, time, zone);
        const auto forward = occurrences.next(200, start, test.adapter).value();
        ASSERT_FALSE(forward.empty());
        const auto beyond = forward.back().logicTimeInterval.unixEpoch() + 1;
        auto backward =
            occurrences.previous(forward.size(), QuandaLogicTimeInterval(beyond), test.adapter)
                .value();
        std::reverse(backward.begin(), backward.end());
        EXPECT_EQ(backward, forward);

        const QuandaAbstractDate firstDate = forward.front().date;
        const auto byDate =
            occurrences.next(forward.size() + 1, firstDate.addingDays(-1), test.adapter).value();
        // By date, a date whose wall time falls in a skipped day shares the next one's instant.
        std::vector<QuandaOccurrence> distinct;
        for (const QuandaOccurrence& occurrence : byDate) {
          EXPECT_TRUE(
              occurrences.mask().matches(occurrence.date, QuandaDayOfGregorianWeek::monday));
          if (distinct.empty() ||
              distinct.back().logicTimeInterval < occurrence.logicTimeInterval) {
            distinct.push_back(occurrence);
          } else {
            EXPECT_EQ(distinct.back().logicTimeInterval, occurrence.logicTimeInterval);
          }
        }
        for (std::size_t index = 0; index + 1 < byDate.size(); ++index) {
          EXPECT_EQ(occurrences.nextAfter(byDate[index].date, test.adapter).value(),
                    byDate[index + 1]);
          EXPECT_EQ(occurrences.previousBefore(byDate[index + 1].date, test.adapter).value(),
                    byDate[index]);
        }
        distinct.erase(distinct.begin() +
                           static_cast<std::ptrdiff_t>(std::min(distinct.size(), forward.size())),
                       distinct.end());
        for (std::size_t index = 0; index < distinct.size(); ++index) {
          EXPECT_EQ(distinct[index], forward[index]);
        }

        for (std::size_t index = 0; index + 1 < forward.size(); ++index) {
          const QuandaLogicTimeInterval here = forward[index].logicTimeInterval;
          EXPECT_EQ(occurrences.nextAfter(here, test.adapter).value(), forward[index + 1]);
          EXPECT_EQ(occurrences.previousBefore(forward[index + 1].logicTimeInterval, test.adapter)
                        .value(),
                    forward[index]);
          EXPECT_EQ(
              occurrences.nextAfter(QuandaLogicTimeInterval(here.unixEpoch() - 0.5), test.adapter)
                  .value(),
              forward[index]);
        }
      }
    }
  }
}

TEST(QuandaOccurrences, TheDeviceZoneTheCalendarsEndsAndErrors) {
  TestAdapter newYork("en_US", "America/New_York");
  const auto half = Time::make(2, 30, 0).value();
  const QuandaOccurrences device(makeDateMaskFromSyntax("every day").value(), half);
  const QuandaOccurrences named = occurrencesOf("every day", half, "America/New_York");
  const auto march = QuandaAbstractDate::make(2024, 3, 1).value();
  EXPECT_EQ(device.next(20, march, newYork.adapter).value(),
            named.next(20, march, newYork.adapter).value());

  EXPECT_EQ(named.nextAfter(QuandaAbstractDate::validRange.max(), newYork.adapter).value(),
            std::nullopt);
  EXPECT_EQ(named.previousBefore(QuandaAbstractDate::validRange.min(), newYork.adapter).value(),
            std::nullopt);
  EXPECT_EQ(occurrencesOf("2024-02-29", half, "UTC").next(5, march, newYork.adapter).value(),
            std::vector<QuandaOccurrence>());

  const QuandaOccurrences nowhere = occurrencesOf("every day", half, "europe/berlin");
  const auto failed = nowhere.nextAfter(QuandaLogicTimeInterval(1.7e9), newYork.adapter);
  ASSERT_FALSE(failed);
  const KeelError& error = failed.error();
  EXPECT_EQ(error.functionName(), "nextAfter(logicTimeInterval:calendarAdapter:)");
  EXPECT_EQ(error.argument("logicTimeInterval"), QuandaLogicTimeInterval(1.7e9).description());
  EXPECT_NE(error.argument("occurrences")->find("europe/berlin"), std::string_view::npos);
  EXPECT_EQ(error.innermost().message(), "Failed to create timezone");
  EXPECT_EQ(error.error()->functionName(),
            "makeTimezoneDiscreteDateTimeComponents(logicTimeInterval:timezoneIdentifier:)");
  const auto listed = nowhere.previous(3, march, newYork.adapter);
  ASSERT_FALSE(listed);
  EXPECT_EQ(listed.error().functionName(), "previous(count:date:calendarAdapter:)");
}

TEST(QuandaTimezoneDatabase, TransitionsAgreeWithHinnantsTz) {
  using date::sys_seconds;
  const auto from = sys_seconds(date::sys_days(date::year(1990) / 1 / 1));
  const auto to = sys_seconds(date::sys_days(date::year(2030) / 1 / 1));
  const auto keel = [](sys_seconds time) {
    return KeelDate(KeelDate::duration(static_cast<double>(time.time_since_epoch().count())));
  };
  const auto offsetOf = [](const date::sys_info& info) {
    return QuandaTimezoneDatabase::Offset{static_cast<std::int32_t>(info.offset.count()),
                                          info.save != std::chrono::minutes(0), info.abbrev};
  };
  for (const char* zone : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe",
                           "Asia/Kolkata", "Pacific/Apia", "Africa/Cairo", "UTC"}) {
    SCOPED_TRACE(zone);
    const date::time_zone& hinnant = *date::locate_zone(zone);
    // The oracle's periods after `from`, those that change nothing merged away.
    std::vector<QuandaTimezoneDatabase::Transition> expected;
    date::sys_info info = hinnant.get_info(from);
    while (info.end <= to) {
      const date::sys_info next = hinnant.get_info(info.end);
      const auto before = offsetOf(info), after = offsetOf(next);
      if (before != after) expected.push_back({keel(info.end), before, after});
      info = next;
    }
    const auto found = QuandaTimezoneDatabase::transitions(zone, keel(to), keel(from)).value();
    if (std::string(zone) == "UTC") {
      EXPECT_TRUE(found.empty());
      continue;
    }
    ASSERT_FALSE(found.empty());
    // First the change in force at `from`, then those the oracle lists.
    EXPECT_LE(found.front().instant, keel(from));
    EXPECT_EQ(found.front().after, offsetOf(hinnant.get_info(from)));
    EXPECT_EQ(std::vector(found.begin() + 1, found.end()), expected);
  }
  EXPECT_FALSE(QuandaTimezoneDatabase::transitions("Not/AZone", keel(from), keel(to)));
}

}  // namespace
