#include <absl/time/civil_time.h>
#include <date/date.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <type_traits>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"

namespace {

using DateTime = QuandaAbstractNaturalDateTime;
using Time = QuandaAbstractNaturalTimeOfDay;
using Relative = QuandaAbstractRelativeDiscreteTimeOfDay;
using Discrete = QuandaDiscreteTimeSpan;

constexpr std::string_view naturalDateTimePath = "Quanda/Abstract/QuandaAbstractNaturalDateTime";
constexpr std::string_view datePath = "Quanda/Abstract/QuandaAbstractDate";
constexpr std::string_view naturalTimePath = "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay";

DateTime at(std::string_view text) { return DateTime::makeFromRfc3339String(text).value(); }
Time clock(std::string_view text) { return Time::makeFromIso8601String(text).value(); }

static_assert(std::is_trivially_copyable_v<DateTime>);
static_assert(sizeof(DateTime) == 8);
static_assert(DateTime::maxInc.secondsSinceDatum() == 315537897599);
static_assert(DateTime::makeFromSecondsSinceDatum(86400).date() ==
              QuandaAbstractDate::zero.nextDay());

const absl::CivilSecond datum(1, 1, 1, 0, 0, 0);

// The oracle's reading of a second count since 0001-01-01T00:00:00.
absl::CivilSecond oracleAt(std::uint64_t seconds) {
  return datum + static_cast<std::int64_t>(seconds);
}

void expectMatchesOracle(DateTime dateTime, absl::CivilSecond oracle) {
  ASSERT_EQ(dateTime.year(), oracle.year());
  ASSERT_EQ(dateTime.month(), oracle.month());
  ASSERT_EQ(dateTime.day(), oracle.day());
  ASSERT_EQ(dateTime.hour(), oracle.hour());
  ASSERT_EQ(dateTime.minute(), oracle.minute());
  ASSERT_EQ(dateTime.second(), oracle.second());
}

// Random instants across 0001..9999 against Abseil's civil seconds (fields, counts, differences)
// and Hinnant's date (text and chrono local time), with every text and number form read back.
TEST(QuandaAbstractNaturalDateTime, RandomInstantsAgreeWithTwoCalendars) {
  std::mt19937_64 random(20240229);
  std::uniform_int_distribution<std::uint64_t> instants(0, DateTime::maxSecondsSinceDatum);
  DateTime previous = DateTime::zero;
  for (int round = 0; round < 100000; ++round) {
    const std::uint64_t seconds = instants(random);
    const DateTime dateTime = DateTime::makeFromSecondsSinceDatum(seconds);
    const absl::CivilSecond oracle = oracleAt(seconds);
    expectMatchesOracle(dateTime, oracle);
    ASSERT_EQ(dateTime.secondsSinceDatum(), seconds);
    ASSERT_EQ(oracle - datum, static_cast<std::int64_t>(seconds));

    const date::local_seconds local = date::local_days{date::year{static_cast<int>(oracle.year())} /
                                                       oracle.month() / oracle.day()} +
                                      std::chrono::hours{oracle.hour()} +
                                      std::chrono::minutes{oracle.minute()} +
                                      std::chrono::seconds{oracle.second()};
    const std::string text = date::format("%FT%T", local);
    ASSERT_EQ(dateTime.serializedToRfc3339String(), text);
    std::string colons = text;
    colons[4] = colons[7] = ':';
    ASSERT_EQ(dateTime.description(), colons);
    ASSERT_EQ(dateTime.localSeconds().time_since_epoch(), local.time_since_epoch());

    ASSERT_EQ(DateTime::makeFromRfc3339String(text).value(), dateTime);
    // A leading '+' on the year keeps the text valid but off the canonical fast path.
    ASSERT_EQ(DateTime::makeFromRfc3339String("+" + text).value(), dateTime);
    ASSERT_EQ(DateTime::makeFromRfc3339Numeric(dateTime.serializedToRfc3339Numeric()).value(),
              dateTime);
    ASSERT_EQ(dateTime.serializedToRfc3339Numeric(),
              std::stoull(date::format("%Y%m%d%H%M%S", local)));
    ASSERT_EQ(nlohmann::json(dateTime).get<DateTime>(), dateTime);
    ASSERT_EQ(DateTime::make(std::chrono::local_seconds{local.time_since_epoch()}).value(),
              dateTime);

    ASSERT_EQ(dateTime < previous, seconds < previous.secondsSinceDatum());
    ASSERT_EQ((dateTime - previous).seconds(), oracle - oracleAt(previous.secondsSinceDatum()));
    previous = dateTime;
  }
}

// Hours, minutes and seconds carried across day, month and year ends (and leap days), against
// the oracle's arithmetic. Start instants lie in the last or first hours of a month.
TEST(QuandaAbstractNaturalDateTime, ClockArithmeticCarriesLikeTheOracle) {
  std::mt19937_64 random(7);
  std::uniform_int_distribution<int> years(1, 9998);
  std::uniform_int_distribution<int> months(1, 12);
  std::uniform_int_distribution<int> nearEnd(-7200, 7199);
  std::uniform_int_distribution<std::int64_t> seconds(-200000, 200000);
  std::uniform_int_distribution<std::int32_t> hours(-20000, 20000);
  for (int round = 0; round < 20000; ++round) {
    // An instant within two hours of the start of a month.
    const absl::CivilSecond oracle =
        absl::CivilSecond(absl::CivilMonth(years(random), months(random))) + nearEnd(random);
    if (oracle < datum) continue;
    const std::uint64_t start = static_cast<std::uint64_t>(oracle - datum);
    const DateTime dateTime = DateTime::makeFromSecondsSinceDatum(start);
    const std::int64_t bySeconds = seconds(random);
    const std::int32_t byHours = hours(random);
    const auto inRange = [](absl::CivilSecond instant) {
      return instant >= datum && instant <= oracleAt(DateTime::maxSecondsSinceDatum);
    };
    if (inRange(oracle + bySeconds)) {
      expectMatchesOracle(dateTime.addingSeconds(bySeconds), oracle + bySeconds);
      expectMatchesOracle(dateTime + Discrete(bySeconds), oracle + bySeconds);
      expectMatchesOracle(dateTime - Discrete(-bySeconds), oracle + bySeconds);
    }
    if (inRange(oracle + std::int64_t{byHours} * 3600)) {
      expectMatchesOracle(dateTime.addingHours(byHours), oracle + std::int64_t{byHours} * 3600);
      expectMatchesOracle(dateTime.addingMinutes(std::int64_t{byHours} * 60),
                          oracle + std::int64_t{byHours} * 3600);
    }
  }
}

TEST(QuandaAbstractNaturalDateTime, FactoriesWrapTheFailuresOfTheDateAndTheTime) {
  // Digit counts are the date's and the time's business, which do not check them.
  EXPECT_EQ(at("2024-2-29T7:5:0"), at("2024-02-29T07:05:00"));
  // Years past 9999 are reachable through month arithmetic and print all their digits.
  EXPECT_EQ(at("9999-12-31T10:00:00").addingMonths(1).serializedToRfc3339String(),
            "10000-01-31T10:00:00");

  const std::vector<std::string> six = {"proposedYear", "proposedMonth",  "proposedDay",
                                        "proposedHour", "proposedMinute", "proposedSecond"};
  const ExpectedErrorLink text{"make(rfc3339String:)", {"rfc3339String"}};
  const ExpectedErrorLink tTokens{
      "make(rfc3339String:)", {"rfc3339String"}, "Unexpected number of T tokens"};
  const ExpectedErrorLink invalidDay{"make(year:month:day:)",
                                     {"proposedYear", "proposedMonth", "proposedDay"},
                                     "Invalid day for month in year",
                                     datePath};
  const ExpectedErrorLink thirdToken{"make(iso8601String:)",
                                     {"iso8601String", "tokens"},
                                     "Couldn't convert third token to second",
                                     naturalTimePath};
  const ExpectedErrorLink dateTokens{
      "make(iso8601String:)", {"iso8601String"}, "Unexpected number of tokens", datePath};
  const struct {
    KeelResult<DateTime> result;
    std::vector<ExpectedErrorLink> chain;
  } cases[] = {
      {DateTime::makeFromRfc3339String("2024-02-29 23:59:59"), {tTokens}},
      {DateTime::makeFromRfc3339String("2024-02-29t23:59:59"), {tTokens}},
      {DateTime::makeFromRfc3339String("2024-02-29T23:59:59T"), {tTokens}},
      {DateTime::makeFromRfc3339String("2024-02-29T23:59:59Z"), {text, thirdToken}},
      {DateTime::makeFromRfc3339String("2024-02-29T23:59:59.5"), {text, thirdToken}},
      {DateTime::makeFromRfc3339String("2023-02-29T12:00:00"),
       {text, {"make(iso8601String:)", {"iso8601String"}, "", datePath}, invalidDay}},
      {DateTime::makeFromRfc3339String("2024-02-29T24:00:00"),
       {{"make(rfc3339String:)", {"rfc3339String=2024-02-29T24:00:00"}},
        {"make(iso8601String:)", {"iso8601String", "tokens"}, "", naturalTimePath},
        {"make(hour:minute:second:)",
         {"proposedHour", "proposedMinute", "proposedSecond"},
         "Invalid hour",
         naturalTimePath}}},
      {DateTime::makeFromRfc3339String("2024-02T12:00:00"), {text, dateTokens}},
      {DateTime::makeFromRfc3339String("T"), {text, dateTokens}},
      {DateTime::makeFromRfc3339Numeric(20240229240000),
       {{"make(rfc3339Numeric:)", {"rfc3339Numeric"}},
        {"make(iso8601Numeric:)",
         {"iso8601Numeric"},
         "Invalid numeric ISO 8601 representation of abtract time",
         naturalTimePath}}},
      // Both halves invalid: the date half is reported.
      {DateTime::makeFromRfc3339Numeric(20230229250000),
       {{"make(rfc3339Numeric:)", {"rfc3339Numeric"}},
        {"make(iso8601Numeric:)", {"iso8601Numeric"}, "", datePath},
        invalidDay}},
      {DateTime::make(2023, 2, 29, 24, 0, 0),
       {{"make(year:month:day:hour:minute:second:)", six}, invalidDay}},
      {DateTime::make({.day = 29, .hour = 12, .minute = 0, .month = 2, .second = 60, .year = 2024}),
       {{"make(components:)",
         {"proposedComponents=Components(day: 29, hour: 12, minute: 0, month: 2, second: 60, "
          "year: 2024)"}},
        {"make(year:month:day:hour:minute:second:)", six},
        {"make(hour:minute:second:)",
         {"proposedHour", "proposedMinute", "proposedSecond"},
         "Invalid day for month in year",
         naturalTimePath}}},
      {DateTime::make(DateTime::maxInc.localSeconds() + std::chrono::seconds{1}),
       {{"make(localSeconds:)", {"secondsSinceUnixEpoch"}, "Local time outside the valid range"}}},
  };
  for (const auto& c : cases) {
    ASSERT_FALSE(c.result) << c.chain.front().function;
    expectErrorChain(c.result.error(), c.chain, naturalDateTimePath);
  }
  EXPECT_FALSE(DateTime::make(DateTime::zero.localSeconds() - std::chrono::seconds{1}));
  EXPECT_FALSE(DateTime::make(std::chrono::local_seconds::min()));
  EXPECT_FALSE(DateTime::make(std::chrono::local_seconds::max()));
}

TEST(QuandaAbstractNaturalDateTime, CalendarArithmeticAppliesSmallestUnitsFirst) {
  EXPECT_EQ(at("2024-01-31T10:00:00").addingMonths(1), at("2024-02-29T10:00:00"));
  EXPECT_EQ(at("2024-02-29T10:00:00").addingYears(1), at("2025-02-28T10:00:00"));
  // The day first: January 30 + 1 day is January 31, + 1 month is February 29.
  EXPECT_EQ(at("2024-01-30T10:00:00").adding({.months = 1, .days = 1}), at("2024-02-29T10:00:00"));
  // The seconds carry into the day before the day is added.
  EXPECT_EQ(at("2024-01-30T23:59:59").adding({.months = 1, .days = 1, .seconds = 1}),
            at("2024-03-01T00:00:00"));

  const DateTime start = at("2024-01-31T22:00:00");
  const Relative plus(1, clock("03:00:00"));
  EXPECT_EQ(start + plus, at("2024-02-02T01:00:00"));
  EXPECT_EQ(plus + start, start + plus);
  EXPECT_EQ(start - plus, at("2024-01-30T19:00:00"));
  EXPECT_EQ(QuandaNaturalTimeSpan(7200) + start, at("2024-02-01T00:00:00"));
}

TEST(QuandaAbstractNaturalDateTime, NextRoundingAndReplacing) {
  const DateTime eight = at("2024-01-01T08:00:00");
  EXPECT_EQ(eight.next(clock("08:00:00"), false), at("2024-01-02T08:00:00"));
  EXPECT_EQ(eight.next(clock("08:00:00"), true), eight);
  EXPECT_EQ(eight.next(clock("08:00:01"), false), at("2024-01-01T08:00:01"));
  EXPECT_EQ(eight.next(clock("07:59:59"), true), at("2024-01-02T07:59:59"));
  EXPECT_EQ(at("2024-12-31T23:00:00").next(clock("00:00:00"), true), at("2025-01-01T00:00:00"));

  const struct {
    std::string_view from, floorMinute, roundMinute, roundHour, roundDay;
  } cases[] = {
      {"2024-01-01T10:30:59", "2024-01-01T10:30:00", "2024-01-01T10:31:00", "2024-01-01T11:00:00",
       "2024-01-01T00:00:00"},
      {"2024-01-01T10:29:30", "2024-01-01T10:29:00", "2024-01-01T10:30:00", "2024-01-01T10:00:00",
       "2024-01-01T00:00:00"},
      {"2024-12-31T23:59:00", "2024-12-31T23:59:00", "2024-12-31T23:59:00", "2025-01-01T00:00:00",
       "2025-01-01T00:00:00"},
      {"2024-12-31T12:00:00", "2024-12-31T12:00:00", "2024-12-31T12:00:00", "2024-12-31T12:00:00",
       "2025-01-01T00:00:00"},  // halves round up
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.from);
    const DateTime from = at(c.from);
    EXPECT_EQ(from.flooringToMinute(), at(c.floorMinute));
    EXPECT_EQ(from.roundingToMinute(), at(c.roundMinute));
    EXPECT_EQ(from.roundingToHour(), at(c.roundHour));
    EXPECT_EQ(from.roundingToDay(), at(c.roundDay));
    EXPECT_EQ(from.flooringToDay(), DateTime::makeAtBeginningOf(from.date()));
  }

  const DateTime leap = at("2024-02-29T10:20:30");
  EXPECT_EQ(leap.replacing({.year = 2023}), at("2023-02-28T10:20:30"));
  EXPECT_EQ(leap.replacing({.month = 13, .hour = 99, .second = 0}), at("2024-12-29T23:20:00"));
}

// Past the last second, the clamping factory keeps the last date and the remainder's time; the
// successor of the last value is therefore the last day's midnight. This pins that behaviour.
TEST(QuandaAbstractNaturalDateTime, CountsPastTheLastSecondClampTheDateOnly) {
  EXPECT_EQ(DateTime::makeFromSecondsSinceDatum(DateTime::maxSecondsSinceDatum + 3601),
            at("9999-12-31T01:00:00"));
  EXPECT_EQ(DateTime::maxInc.nextUp(), at("9999-12-31T00:00:00"));
  EXPECT_EQ(DateTime::zero.nextDown(), DateTime::zero);
  EXPECT_EQ(at("2024-12-31T23:59:59").nextUp(), at("2025-01-01T00:00:00"));
  EXPECT_EQ(DateTime::makeFromDouble(86399.5), at("0001-01-02T00:00:00"));
}

TEST(QuandaAbstractNaturalDateTime, ArchivesTheNumericFormUnderAKey) {
  EXPECT_EQ(nlohmann::json(at("2024-03-05T07:08:09")).dump(),
            R"({"serializedRfc3339Numeric":20240305070809})");
  expectDecodingError<DateTime>(R"({"serializedRfc3339Numeric":20240229240000})",
                                "Failed to create dateTime from numeric");
  EXPECT_THROW(nlohmann::json::parse(R"({"numeric":20240305070809})").get<DateTime>(),
               nlohmann::json::out_of_range);
  EXPECT_THROW(nlohmann::json::parse(R"({"serializedRfc3339Numeric":-1})").get<DateTime>(),
               nlohmann::json::type_error);
  EXPECT_THROW(nlohmann::json::parse("20240305070809").get<DateTime>(), nlohmann::json::type_error);
}

TEST(QuandaAbstractNaturalDateTimeDeathTest, ProgrammingErrorsStop) {
  const DateTime last = DateTime::maxInc;
  const DateTime first = DateTime::zero;
  constexpr std::int64_t int64Max = std::numeric_limits<std::int64_t>::max();
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[&] { last.addingSeconds(1); }, "9999-12-31"},
      {[&] { first.addingSeconds(-1); }, "0001-01-01"},
      {[&] { last.addingSeconds(int64Max); }, "overflow"},
      {[&] { first.addingMinutes(int64Max / 30); }, "overflow"},
      {[&] { first.addingSeconds(std::int64_t{1} << 50); }, "32-bit"},
      {[&] { first - Discrete(std::numeric_limits<std::int64_t>::min()); }, "overflow"},
      {[&] { first + QuandaNaturalTimeSpan(std::uint64_t{1} << 63); }, "does not fit"},
      {[&] { first - Relative(std::numeric_limits<std::int32_t>::min(), Time::zero); }, "overflow"},
      {[&] { DateTime::makeAtEndOf(last.date()); }, "9999-12-31"},
      {[&] { last.next(Time::zero, true); }, "9999-12-31"},
      {[] { DateTime::makeFromSecondsSinceDatum(std::uint64_t{86400} << 32); }, "does not fit"},
      {[] { DateTime::makeFromDouble(std::numeric_limits<double>::quiet_NaN()); }, "double"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
