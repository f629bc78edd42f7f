#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"

namespace {

using Time = QuandaAbstractNaturalTimeOfDay;
using Relative = QuandaAbstractRelativeDiscreteTimeOfDay;

constexpr std::string_view path = "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay";
const std::vector<std::string> proposed{"proposedHour", "proposedMinute", "proposedSecond"};

Time at(int hour, int minute, int second) {
  return Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute),
                    static_cast<std::uint8_t>(second))
      .value();
}

static_assert(std::is_trivially_copyable_v<Time>);
static_assert(Time::maxInc.secondsSinceDayBegan() == 86399);
static_assert(Time::makeFromSecondsSinceDayBegan(90000) == Time::maxInc);
static_assert(Time::makeFromMinutesSinceDayBegan(-1440).hour() == 24);

// Every second of the day, against std::chrono's split of a duration and printf's text.
TEST(QuandaAbstractNaturalTimeOfDay, EverySecondOfTheDayRoundTrips) {
  std::optional<Time> previous;
  for (std::uint32_t s = 0; s < 86400; ++s) {
    const Time time = Time::makeFromSecondsSinceDayBegan(s);
    const std::chrono::hh_mm_ss<std::chrono::seconds> oracle{std::chrono::seconds{s}};
    ASSERT_EQ(time.hour(), oracle.hours().count());
    ASSERT_EQ(time.minute(), oracle.minutes().count());
    ASSERT_EQ(time.second(), oracle.seconds().count());
    ASSERT_EQ(time.secondsSinceDayBegan(), s);
    ASSERT_EQ(time.minutesSinceDayBegan(), s / 60);

    char expected[16];
    std::snprintf(expected, sizeof expected, "%02u:%02u:%02u", s / 3600, s / 60 % 60, s % 60);
    const std::string text = time.serializeToIso8601String();
    ASSERT_EQ(text, expected);
    ASSERT_EQ(Time::makeFromIso8601String(text).value(), time);
    const std::string compact = text.substr(0, 2) + text.substr(3, 2) + text.substr(6, 2);
    ASSERT_EQ(Time::makeFromIso8601StringWithoutSeparators(compact).value(), time);
    ASSERT_EQ(time.serializeToIso8601Numeric(), std::stoull(compact));
    ASSERT_EQ(Time::makeFromIso8601Numeric(time.serializeToIso8601Numeric()).value(), time);
    ASSERT_EQ(nlohmann::json(time).get<Time>(), time);
    ASSERT_EQ(Time::make(std::chrono::seconds{s}).value(), time);
    ASSERT_EQ(time.hhMmSs().to_duration().count(), s);
    if (previous) {
      ASSERT_LT(*previous, time);
      ASSERT_EQ(previous->nextUp(), time);
      ASSERT_EQ(time.nextDown(), *previous);
    }
    previous = time;
  }
}

TEST(QuandaAbstractNaturalTimeOfDay, ValidatesFieldsInOrderWithTheirOwnTexts) {
  const std::tuple<int, int, int, std::string_view> cases[] = {
      {24, 0, 0, "Invalid hour"},
      {0, 60, 0, "Invalid hour"},  // the minute check reports the hour's text
      {0, 0, 60, "Invalid day for month in year"},
  };
  for (const auto& [hour, minute, second, message] : cases) {
    SCOPED_TRACE(testing::Message() << hour << ":" << minute << ":" << second);
    const auto time = Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute),
                                 static_cast<std::uint8_t>(second));
    ASSERT_FALSE(time);
    expectErrorChain(time.error(), {{"make(hour:minute:second:)", proposed, std::string(message)}},
                     path);
  }
  const auto components = Time::make(Time::Components{.hour = 1, .minute = 60, .second = 0});
  ASSERT_FALSE(components);
  expectErrorChain(
      components.error(),
      {{"make(components:)", {"proposedComponents=Components(hour: 1, minute: 60, second: 0)"}},
       {"make(hour:minute:second:)",
        {"proposedHour=1", "proposedMinute=60", "proposedSecond=0"},
        "Invalid hour"}},
      path);
}

TEST(QuandaAbstractNaturalTimeOfDay, TextFormsRefuseWhatIsNoTime) {
  EXPECT_EQ(Time::makeFromIso8601String("7:5:0").value(), at(7, 5, 0));
  EXPECT_EQ(Time::makeFromIso8601String("+07:-0:005").value(), at(7, 0, 5));
  EXPECT_EQ(Time::makeFromIso8601StringWithoutSeparators("+1+2+3").value(), at(1, 2, 3));

  const std::string colons = "make(iso8601String:)";
  const std::string packed = "make(iso8601StringWithoutSeparators:)";
  const std::string sixDigits =
      "Unexpected 6 digits without separators. Use the 'with separators variant' otherwise";
  const ExpectedErrorLink invalidSecond{"make(hour:minute:second:)", proposed,
                                        "Invalid day for month in year"};
  const struct {
    KeelResult<Time> result;
    std::vector<ExpectedErrorLink> chain;
  } cases[] = {
      {Time::makeFromIso8601String("12:34"),
       {{colons, {"iso8601String"}, "Unexpected number of tokens"}}},
      {Time::makeFromIso8601String("1a:00:00"),
       {{colons, {"iso8601String", "tokens"}, "Couldn't convert first token to hour"}}},
      {Time::makeFromIso8601String("12::56"),
       {{colons,
         {"iso8601String=12::56", R"(tokens=["12", "", "56"])"},
         "Couldn't convert second token to minute"}}},
      {Time::makeFromIso8601String("12:34:256"),
       {{colons, {"iso8601String", "tokens"}, "Couldn't convert third token to second"}}},
      {Time::makeFromIso8601String("12:34:60"),
       {{colons, {"iso8601String", "tokens"}}, invalidSecond}},
      {Time::makeFromIso8601StringWithoutSeparators("12345"),
       {{packed, {"iso8601String"}, sixDigits}}},
      {Time::makeFromIso8601StringWithoutSeparators("12:456"),
       {{packed, {"iso8601String"}, "Couldn't convert second token to minute"}}},
      // Six characters as a reader counts them, though more bytes.
      {Time::makeFromIso8601StringWithoutSeparators("12345\xC3\xA9"),
       {{packed, {"iso8601String"}, "Couldn't convert third token to second"}}},
      {Time::makeFromIso8601StringWithoutSeparators("235960"),
       {{packed, {"iso8601String"}}, invalidSecond}},
      {Time::makeFromIso8601Numeric(240000),
       {{"make(iso8601Numeric:)",
         {"iso8601Numeric=240000"},
         "Invalid numeric ISO 8601 representation of abtract time"}}},
      {Time::makeFromIso8601Numeric(~0ull),
       {{"make(iso8601Numeric:)",
         {"iso8601Numeric"},
         "Invalid numeric ISO 8601 representation of abtract time"}}},
      {Time::makeFromIso8601Numeric(236000),
       {{"make(iso8601Numeric:)", {"iso8601Numeric"}},
        {"make(hour:minute:second:)", proposed, "Invalid hour"}}},
      {Time::make(std::chrono::seconds{86400}),
       {{"make(duration:)", {"seconds"}, "Duration outside one day"}}},
      {Time::make(std::chrono::seconds{-1}),
       {{"make(duration:)", {"seconds"}, "Duration outside one day"}}},
      {Time::make(std::chrono::hh_mm_ss{std::chrono::seconds{-3723}}),
       {{"make(hhMmSs:)", {"hhMmSs=-1h 2min 3s"}},
        {"make(duration:)", {"seconds=-3723"}, "Duration outside one day"}}},
  };
  for (const auto& c : cases) {
    ASSERT_FALSE(c.result) << c.chain.front().args.front();
    expectErrorChain(c.result.error(), c.chain, path);
  }
}

TEST(QuandaAbstractNaturalTimeOfDay, CountingFactoriesClampOrWrap) {
  EXPECT_EQ(Time::maxInc.nextUp(), Time::maxInc);
  EXPECT_EQ(Time::zero.nextDown(), Time::zero);
  const std::pair<std::int64_t, Time> minutes[] = {
      {1441, at(0, 1, 0)},
      {-1, at(23, 59, 0)},
      {-2880, Time::makeFromMinutesSinceDayBegan(-1440)},  // the quirky 24:00
      {std::numeric_limits<std::int64_t>::min(), at(5, 52, 0)},
  };
  for (const auto& [count, expected] : minutes) {
    EXPECT_EQ(Time::makeFromMinutesSinceDayBegan(count), expected) << count;
  }
  EXPECT_EQ(Time::makeFromMinutesSinceDayBegan(-1440).description(), "24:00:00");
  EXPECT_EQ(Time::makeFromDouble(0.5), at(0, 0, 1));
  EXPECT_EQ(Time::makeFromDouble(-0.4), Time::zero);
  EXPECT_EQ(Time::makeFromDouble(4294967295.0), Time::maxInc);
}

TEST(QuandaAbstractNaturalTimeOfDay, AddsWithCarryIntoDays) {
  EXPECT_EQ(at(22, 0, 0).addingHours(3), Relative(1, at(1, 0, 0)));
  EXPECT_EQ(Time::zero.addingSeconds(-1), Relative(-1, at(23, 59, 59)));
  EXPECT_EQ(at(23, 0, 0).adding({.hours = 1, .minutes = -61, .seconds = 3600}),
            Relative(0, at(23, 59, 0)));
  EXPECT_EQ(at(0, 0, 1).addingHours(std::numeric_limits<std::int32_t>::min()).days(), -89478486);
  // The quirky 24:00 carries like any other count of seconds.
  EXPECT_EQ(Time::makeFromMinutesSinceDayBegan(-1440).addingSeconds(0), Relative(1, Time::zero));
  EXPECT_EQ(at(10, 0, 0) - at(12, 0, 0), QuandaDiscreteTimeSpan(-7200));
  EXPECT_EQ(QuandaDiscreteTimeSpan(-1) + Time::zero, Relative(-1, Time::maxInc));
  EXPECT_EQ(at(12, 0, 0) + QuandaNaturalTimeSpan(86400 * 2), Relative(2, at(12, 0, 0)));
}

TEST(QuandaAbstractNaturalTimeOfDay, ReplacesWithClampingAndTellsPartsOfTheDay) {
  EXPECT_EQ(at(10, 20, 30).replacing({.minute = 5}), at(10, 5, 30));
  EXPECT_EQ(at(10, 20, 30).replacing({.hour = 99, .minute = 77, .second = 60}), Time::maxInc);
  EXPECT_FALSE(at(12, 0, 1).isMidday());
  EXPECT_TRUE(at(11, 59, 59).isAM() && !at(11, 59, 59).isPM());
  EXPECT_TRUE(at(12, 0, 0).isPM() && at(12, 0, 0).isMidday() && !at(12, 0, 0).isAM());
}

TEST(QuandaAbstractNaturalTimeOfDay, ArchivesAsThePackedNumber) {
  EXPECT_EQ(nlohmann::json(at(7, 5, 9)).dump(), "70509");
  EXPECT_EQ(nlohmann::json(70509.0).get<Time>(), at(7, 5, 9));
  for (const char* bad : {"240000", "235960"}) {
    expectDecodingError<Time>(bad, "Failed to create date from int");
  }
  for (const char* wrongType : {"-1", "1.5", "\"70509\"", "null"}) {
    EXPECT_THROW((void)nlohmann::json::parse(wrongType).get<Time>(), nlohmann::json::type_error)
        << wrongType;
  }
}

TEST(QuandaAbstractNaturalTimeOfDayDeathTest, ProgrammingErrorsStop) {
  constexpr std::int64_t int64Max = std::numeric_limits<std::int64_t>::max();
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { Time::makeFromDouble(-0.5); }, "double is not finite or outside"},
      {[] { Time::makeFromDouble(4294967295.5); }, "double is not finite or outside"},
      {[] { Time::makeFromDouble(std::numeric_limits<double>::quiet_NaN()); }, "not finite"},
      {[] { Time::zero + QuandaNaturalTimeSpan(std::uint64_t{1} << 63); }, "does not fit"},
      {[] { Time::zero.addingMinutes(int64Max); }, "overflows its seconds"},
      {[] { Time::maxInc.addingSeconds(int64Max); }, "overflows its seconds"},
      {[] { Time::zero.addingSeconds(std::int64_t{86400} << 31); }, "signed 32-bit range"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
