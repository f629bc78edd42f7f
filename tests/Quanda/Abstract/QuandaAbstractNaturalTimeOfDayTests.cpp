#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "Keel/KeelDecodingError.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaTimeOfDayTestSupport.h"

namespace {

using Time = QuandaAbstractNaturalTimeOfDay;
using Relative = QuandaAbstractRelativeDiscreteTimeOfDay;
using quanda_test::expectChain;

constexpr std::string_view path = "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay";

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
      {24, 0, 0, "Invalid hour"},      {24, 60, 60, "Invalid hour"},
      {0, 60, 0, "Invalid hour"},  // the minute check reports the hour's text
      {0, 60, 60, "Invalid hour"},     {0, 0, 60, "Invalid day for month in year"},
      {255, 255, 255, "Invalid hour"},
  };
  for (const auto& [hour, minute, second, message] : cases) {
    SCOPED_TRACE(testing::Message() << hour << ":" << minute << ":" << second);
    const auto time = Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute),
                                 static_cast<std::uint8_t>(second));
    ASSERT_FALSE(time);
    expectChain(time.error(),
                {{message,
                  "make(hour:minute:second:)",
                  {"proposedHour", "proposedMinute", "proposedSecond"}}},
                path);
    EXPECT_EQ(time.error().argument("proposedSecond"), std::to_string(second));
  }
  const auto components = Time::make(Time::Components{.hour = 1, .minute = 60, .second = 0});
  ASSERT_FALSE(components);
  expectChain(components.error(),
              {{"", "make(components:)", {"proposedComponents"}},
               {"Invalid hour",
                "make(hour:minute:second:)",
                {"proposedHour", "proposedMinute", "proposedSecond"}}},
              path);
  EXPECT_EQ(components.error().argument("proposedComponents"),
            "Components(hour: 1, minute: 60, second: 0)");
}

TEST(QuandaAbstractNaturalTimeOfDay, ReadsTheColonForm) {
  EXPECT_EQ(Time::makeFromIso8601String("12:34:56").value(), at(12, 34, 56));
  EXPECT_EQ(Time::makeFromIso8601String("7:5:0").value(), at(7, 5, 0));
  EXPECT_EQ(Time::makeFromIso8601String("+07:-0:005").value(), at(7, 0, 5));

  struct Case {
    std::string_view text;
    std::vector<quanda_test::ExpectedLink> chain;
  };
  const std::vector<std::string_view> stringOnly{"iso8601String"};
  const std::vector<std::string_view> withTokens{"iso8601String", "tokens"};
  const std::string_view function = "make(iso8601String:)";
  const std::vector<std::string_view> proposed{"proposedHour", "proposedMinute", "proposedSecond"};
  const Case cases[] = {
      {"12:34", {{"Unexpected number of tokens", function, stringOnly}}},
      {"12:34:56:00", {{"Unexpected number of tokens", function, stringOnly}}},
      {"1a:00:00", {{"Couldn't convert first token to hour", function, withTokens}}},
      {"12::56", {{"Couldn't convert second token to minute", function, withTokens}}},
      {"12:34:", {{"Couldn't convert third token to second", function, withTokens}}},
      {"12:34:256", {{"Couldn't convert third token to second", function, withTokens}}},
      {"12:34:60",
       {{"", function, withTokens},
        {"Invalid day for month in year", "make(hour:minute:second:)", proposed}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const auto time = Time::makeFromIso8601String(c.text);
    ASSERT_FALSE(time);
    expectChain(time.error(), c.chain, path);
  }
  EXPECT_EQ(Time::makeFromIso8601String("12::56").error().argument("tokens"),
            R"(["12", "", "56"])");
}

TEST(QuandaAbstractNaturalTimeOfDay, ReadsSixCharactersWithoutSeparators) {
  EXPECT_EQ(Time::makeFromIso8601StringWithoutSeparators("123456").value(), at(12, 34, 56));
  EXPECT_EQ(Time::makeFromIso8601StringWithoutSeparators("+1+2+3").value(), at(1, 2, 3));
  const std::string_view function = "make(iso8601StringWithoutSeparators:)";
  const std::vector<std::string_view> stringOnly{"iso8601String"};
  const std::string_view sixDigits =
      "Unexpected 6 digits without separators. Use the 'with separators variant' otherwise";
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"12345", sixDigits},
      {"1234567", sixDigits},
      {"", sixDigits},
      {"12:456", "Couldn't convert second token to minute"},
      {"x23456", "Couldn't convert first token to hour"},
      {"1234 6", "Couldn't convert third token to second"},
      // Six characters as a reader counts them, though more bytes.
      {"12345\xC3\xA9", "Couldn't convert third token to second"},
  };
  for (const auto& [text, message] : cases) {
    SCOPED_TRACE(text);
    const auto time = Time::makeFromIso8601StringWithoutSeparators(text);
    ASSERT_FALSE(time);
    expectChain(time.error(), {{message, function, stringOnly}}, path);
  }
  const auto invalid = Time::makeFromIso8601StringWithoutSeparators("235960");
  ASSERT_FALSE(invalid);
  expectChain(invalid.error(),
              {{"", function, stringOnly},
               {"Invalid day for month in year",
                "make(hour:minute:second:)",
                {"proposedHour", "proposedMinute", "proposedSecond"}}},
              path);
}

TEST(QuandaAbstractNaturalTimeOfDay, ReadsThePackedNumber) {
  const std::string_view function = "make(iso8601Numeric:)";
  for (const std::uint64_t number : {240000ull, 999999ull, ~0ull}) {
    const auto time = Time::makeFromIso8601Numeric(number);
    ASSERT_FALSE(time);
    expectChain(
        time.error(),
        {{"Invalid numeric ISO 8601 representation of abtract time", function, {"iso8601Numeric"}}},
        path);
  }
  const std::vector<std::string_view> proposed{"proposedHour", "proposedMinute", "proposedSecond"};
  const auto minute60 = Time::makeFromIso8601Numeric(236000);
  ASSERT_FALSE(minute60);
  expectChain(
      minute60.error(),
      {{"", function, {"iso8601Numeric"}}, {"Invalid hour", "make(hour:minute:second:)", proposed}},
      path);
  EXPECT_EQ(Time::makeFromIso8601Numeric(235960).error().innermost().message(),
            "Invalid day for month in year");
}

TEST(QuandaAbstractNaturalTimeOfDay, CountingFactoriesClampOrWrap) {
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(90000), Time::maxInc);
  EXPECT_EQ(Time::maxInc.nextUp(), Time::maxInc);
  EXPECT_EQ(Time::zero.nextDown(), Time::zero);

  const std::pair<std::int64_t, std::array<int, 2>> minutes[] = {
      {1441, {0, 1}},   {1500, {1, 0}},   {-1, {23, 59}},
      {-1440, {24, 0}}, {-2880, {24, 0}}, {std::numeric_limits<std::int64_t>::min(), {5, 52}},
  };
  for (const auto& [count, expected] : minutes) {
    SCOPED_TRACE(count);
    const Time time = Time::makeFromMinutesSinceDayBegan(count);
    EXPECT_EQ(time.hour(), expected[0]);
    EXPECT_EQ(time.minute(), expected[1]);
    EXPECT_EQ(time.second(), 0);
  }
  EXPECT_EQ(Time::makeFromMinutesSinceDayBegan(-1440).description(), "24:00:00");

  EXPECT_EQ(Time::makeFromDouble(0.5), at(0, 0, 1));
  EXPECT_EQ(Time::makeFromDouble(-0.4), Time::zero);
  EXPECT_EQ(Time::makeFromDouble(4294967295.0), Time::maxInc);
}

TEST(QuandaAbstractNaturalTimeOfDayDeathTest, DoublesOutsideTheCountStop) {
  EXPECT_DEATH(Time::makeFromDouble(-0.5), "double is not finite or outside");
  EXPECT_DEATH(Time::makeFromDouble(4294967295.5), "double is not finite or outside");
  EXPECT_DEATH(Time::makeFromDouble(std::numeric_limits<double>::quiet_NaN()), "not finite");
  EXPECT_DEATH(Time::makeFromDouble(std::numeric_limits<double>::infinity()), "not finite");
}

TEST(QuandaAbstractNaturalTimeOfDay, AddsWithCarryIntoDays) {
  EXPECT_EQ(at(22, 0, 0).addingHours(3), Relative(1, at(1, 0, 0)));
  EXPECT_EQ(at(0, 30, 0).addingHours(-1), Relative(-1, at(23, 30, 0)));
  EXPECT_EQ(Time::zero.addingSeconds(-1), Relative(-1, at(23, 59, 59)));
  EXPECT_EQ(at(12, 0, 0).adding({}), Relative(at(12, 0, 0)));
  EXPECT_EQ(at(23, 0, 0).adding({.hours = 1, .minutes = -61, .seconds = 3600}),
            Relative(0, at(23, 59, 0)));
  EXPECT_EQ(at(0, 0, 1).addingHours(std::numeric_limits<std::int32_t>::min()).days(), -89478486);
  // The quirky 24:00 carries like any other count of seconds.
  EXPECT_EQ(Time::makeFromMinutesSinceDayBegan(-1440).addingSeconds(0), Relative(1, Time::zero));
}

TEST(QuandaAbstractNaturalTimeOfDay, CombinesWithSpans) {
  EXPECT_EQ(at(10, 0, 0) - at(12, 0, 0), QuandaDiscreteTimeSpan(-7200));
  EXPECT_EQ(Time::maxInc - Time::zero, QuandaDiscreteTimeSpan(86399));
  EXPECT_EQ(at(22, 0, 0) + QuandaDiscreteTimeSpan(3 * 3600), Relative(1, at(1, 0, 0)));
  EXPECT_EQ(QuandaDiscreteTimeSpan(-1) + Time::zero, Relative(-1, Time::maxInc));
  EXPECT_EQ(at(12, 0, 0) + QuandaNaturalTimeSpan(86400 * 2), Relative(2, at(12, 0, 0)));
  EXPECT_EQ(QuandaNaturalTimeSpan(0) + at(12, 0, 0), Relative(at(12, 0, 0)));
}

TEST(QuandaAbstractNaturalTimeOfDayDeathTest, ArithmeticOverflowStops) {
  EXPECT_DEATH(Time::zero + QuandaNaturalTimeSpan(std::uint64_t{1} << 63), "does not fit");
  EXPECT_DEATH(Time::zero.addingMinutes(std::numeric_limits<std::int64_t>::max()),
               "overflow in multiplication");
  EXPECT_DEATH(Time::maxInc.addingSeconds(std::numeric_limits<std::int64_t>::max()),
               "overflow in addition");
  EXPECT_DEATH(Time::zero.addingSeconds(std::int64_t{86400} << 31), "signed 32-bit range");
  EXPECT_DEATH(Time::zero.adding({.minutes = std::int64_t{1440} << 31}), "signed 32-bit range");
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
  EXPECT_EQ(nlohmann::json(70509).get<Time>(), at(7, 5, 9));
  EXPECT_EQ(nlohmann::json(70509.0).get<Time>(), at(7, 5, 9));
  for (const char* bad : {"240000", "236000", "235960"}) {
    SCOPED_TRACE(bad);
    try {
      (void)nlohmann::json::parse(bad).get<Time>();
      ADD_FAILURE() << "decoded";
    } catch (const KeelDecodingError& error) {
      EXPECT_STREQ(error.what(), "Failed to create date from int");
    }
  }
  for (const char* wrongType : {"-1", "1.5", "\"70509\"", "null", "[70509]"}) {
    SCOPED_TRACE(wrongType);
    EXPECT_THROW((void)nlohmann::json::parse(wrongType).get<Time>(), nlohmann::json::type_error);
  }
}

TEST(QuandaAbstractNaturalTimeOfDay, ConvertsFromChronoWithinOneDay) {
  EXPECT_EQ(Time::make(std::chrono::hours{13} + std::chrono::minutes{4}).value(), at(13, 4, 0));
  EXPECT_EQ(Time::make(std::chrono::hh_mm_ss{std::chrono::seconds{3723}}).value(), at(1, 2, 3));
  for (const std::chrono::seconds outside :
       {std::chrono::seconds{-1}, std::chrono::seconds{86400}, std::chrono::seconds::max()}) {
    const auto time = Time::make(outside);
    ASSERT_FALSE(time);
    expectChain(time.error(), {{"Duration outside one day", "make(duration:)", {"seconds"}}}, path);
  }
  const auto negative = Time::make(std::chrono::hh_mm_ss{std::chrono::seconds{-3723}});
  ASSERT_FALSE(negative);
  EXPECT_EQ(negative.error().functionName(), "make(hhMmSs:)");
  EXPECT_EQ(negative.error().argument("hhMmSs"), "-1h 2min 3s");
}

}  // namespace
