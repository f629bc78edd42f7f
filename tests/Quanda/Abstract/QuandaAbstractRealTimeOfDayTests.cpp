#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaTimeOfDayTestSupport.h"

namespace {

using Time = QuandaAbstractRealTimeOfDay;
using Relative = QuandaAbstractRelativeRealTimeOfDay;
using quanda_test::expectChain;
using quanda_test::withDefaultDecimalSeparator;

constexpr std::string_view path = "Quanda/Abstract/QuandaAbstractRealTimeOfDay";
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const double largestSecond = std::nextafter(60.0, 0.0);

Time at(int hour, int minute, double second) {
  return Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute), second)
      .value();
}

static_assert(std::is_trivially_copyable_v<Time>);

TEST(QuandaAbstractRealTimeOfDay, ValidatesFieldsWithEachFieldsOwnText) {
  EXPECT_TRUE(Time::make(23, 59, 59.999));
  EXPECT_TRUE(Time::make(23, 59, largestSecond));
  EXPECT_TRUE(Time::make(0, 0, -0.0));
  const std::vector<std::string_view> proposed{"proposedHour", "proposedMinute", "proposedSecond"};
  const std::tuple<int, int, double, std::string_view> cases[] = {
      {24, 0, 0.0, "Invalid hour"},   {24, 60, nan, "Invalid hour"},
      {0, 60, 0.0, "Invalid minute"}, {0, 60, 60.0, "Invalid minute"},
      {0, 0, 60.0, "Invalid second"}, {0, 0, -1e-300, "Invalid second"},
      {0, 0, nan, "Invalid second"},  {0, 0, infinity, "Invalid second"},
  };
  for (const auto& [hour, minute, second, message] : cases) {
    SCOPED_TRACE(testing::Message() << hour << ":" << minute << ":" << second);
    const auto time =
        Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute), second);
    ASSERT_FALSE(time);
    expectChain(time.error(), {{message, "make(hour:minute:second:)", proposed}}, path);
  }
  const auto components = Time::make(Time::Components{.hour = 1, .minute = 2, .second = 60.5});
  ASSERT_FALSE(components);
  expectChain(components.error(),
              {{"", "make(components:)", {"proposedComponents"}},
               {"Invalid second", "make(hour:minute:second:)", proposed}},
              path);
  EXPECT_EQ(components.error().argument("proposedComponents"),
            "Components(hour: 1, minute: 2, second: 60.5)");
}

TEST(QuandaAbstractRealTimeOfDay, ReadsTheColonFormWithADecimalSecond) {
  EXPECT_EQ(Time::makeFromIso8601String("10:20:30.25").value(), at(10, 20, 30.25));
  EXPECT_EQ(Time::makeFromIso8601String("7:5:0").value(), at(7, 5, 0.0));

  const std::string_view function = "make(iso8601String:)";
  const std::vector<std::string_view> withTokens{"iso8601String", "tokens"};
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"10:20", "Unexpected number of tokens"},
      {"10:20:30:40", "Unexpected number of tokens"},
      {"x:20:30", "Couldn't convert first token to hour"},
      {"10:2x:30", "Couldn't convert second token to minute"},
      {"10:20:30,25", "Couldn't convert third token to second"},
  };
  for (const auto& [text, message] : cases) {
    SCOPED_TRACE(text);
    const auto time = Time::makeFromIso8601String(text);
    ASSERT_FALSE(time);
    expectChain(time.error(), {{message, function, withTokens}}, path);
  }
  EXPECT_EQ(Time::makeFromIso8601String("10:20").error().argument("tokens"), R"(["10", "20"])");
  // The validation failure carries the string alone, unlike the natural kind.
  const auto invalid = Time::makeFromIso8601String("10:20:60");
  ASSERT_FALSE(invalid);
  expectChain(invalid.error(),
              {{"", function, {"iso8601String"}},
               {"Invalid second",
                "make(hour:minute:second:)",
                {"proposedHour", "proposedMinute", "proposedSecond"}}},
              path);
}

// The third token is read as a general "parse a double" routine reads text, independent of the
// locale: these are the forms it takes and refuses.
TEST(QuandaAbstractRealTimeOfDay, ThirdTokenFollowsTheStandardDoubleSyntax) {
  const std::pair<std::string_view, double> accepted[] = {
      {"30", 30.0},     {"+5", 5.0},        {"-0", 0.0},
      {".5", 0.5},      {"5.", 5.0},        {"1e1", 10.0},
      {"2.5E+1", 25.0}, {"0x1p3", 8.0},     {"0X1.8P1", 3.0},
      {"0x.8p1", 1.0},  {"0x1f", 31.0},     {"000059.5", 59.5},
      {"1e-400", 0.0},  {"4e-320", 4e-320}, {"59.99999999999999", 59.99999999999999},
  };
  for (const auto& [token, value] : accepted) {
    SCOPED_TRACE(token);
    const auto time = Time::makeFromIso8601String("00:00:" + std::string(token));
    ASSERT_TRUE(time);
    EXPECT_EQ(time.value().second(), value);
  }
  // Read, then refused by the domain.
  for (const std::string_view token :
       {"inf", "-Infinity", "nan", "NaN(payload_1)", "snan", "1e400", "-1", "60", "0x1p6"}) {
    SCOPED_TRACE(token);
    const auto time = Time::makeFromIso8601String("00:00:" + std::string(token));
    ASSERT_FALSE(time);
    EXPECT_EQ(time.error().innermost().message(), "Invalid second");
  }
  for (const std::string_view token :
       std::initializer_list<std::string_view>{"",       " 5",
                                               "5 ",     "5,5",
                                               "+-5",    "--5",
                                               "+",      ".",
                                               "e5",     "1e",
                                               "1e+",    "0x",
                                               "0x-1",   "0x+1",
                                               "0xp1",   "0x1p",
                                               "1_0",    "inf ",
                                               "in",     "nan(",
                                               "nan()x", std::string_view("5\0", 2),
                                               "٣"}) {
    SCOPED_TRACE(token);
    const auto time = Time::makeFromIso8601String("00:00:" + std::string(token));
    ASSERT_FALSE(time);
    EXPECT_EQ(time.error().message(), "Couldn't convert third token to second");
  }
}

TEST(QuandaAbstractRealTimeOfDay, ParsesOutOfRangeMagnitudesToInfinityOrZero) {
  using quanda_detail::parseFloatingPoint;
  EXPECT_EQ(parseFloatingPoint("1e400"), infinity);
  EXPECT_EQ(parseFloatingPoint("-1e400"), -infinity);
  EXPECT_EQ(parseFloatingPoint("0.0000001e-320"), 0.0);
  EXPECT_TRUE(std::signbit(*parseFloatingPoint("-1e-400")));
  EXPECT_EQ(parseFloatingPoint("923456789e300"), infinity);
  EXPECT_EQ(parseFloatingPoint("0.000000001e318"), infinity);
  EXPECT_EQ(parseFloatingPoint("1000e-330"), 0.0);
  EXPECT_EQ(parseFloatingPoint("0x1p2000"), infinity);
  EXPECT_EQ(parseFloatingPoint("0x0.0001p-1070"), 0.0);
  EXPECT_EQ(parseFloatingPoint("1e99999999999999999999"), infinity);
  EXPECT_EQ(parseFloatingPoint("1e-99999999999999999999"), 0.0);
}

TEST(QuandaAbstractRealTimeOfDay, WritesSixFractionDigitsCutTowardZero) {
  const std::pair<Time, std::string_view> cases[] = {
      {at(7, 8, 5.5), "07:08:05.500000"},
      {at(10, 20, 30.1234567), "10:20:30.123456"},
      {at(0, 0, 0.0000004), "00:00:00.000000"},
      {at(0, 0, -0.0), "00:00:00.000000"},
      {Time::maxInc, "23:59:59.999999"},
      {Time::makeFromSecondsSinceDayBegan(0.29), "00:00:00.290000"},
  };
  for (const auto& [time, text] : cases) {
    EXPECT_EQ(time.serializeToIso8601String(), withDefaultDecimalSeparator(std::string(text)));
    EXPECT_EQ(time.description(), time.serializeToIso8601String());
  }
}

TEST(QuandaAbstractRealTimeOfDay, SplitsSecondCountsExactly) {
  // Counts clamp to the last double below 86400, whose second is 59.99999999998545.
  const Time last = Time::makeFromSecondsSinceDayBegan(std::nextafter(86400.0, 0.0));
  EXPECT_EQ(last.second(), std::nextafter(86400.0, 0.0) - 86340.0);
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(90000.0), last);
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(infinity), last);
  EXPECT_EQ(last.serializeToIso8601String(), withDefaultDecimalSeparator("23:59:59.999999"));
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(-5.0), Time::zero);
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(-infinity), Time::zero);
  EXPECT_FALSE(std::signbit(Time::makeFromSecondsSinceDayBegan(-0.0).second()));
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(3723.25), at(1, 2, 3.25));

  // Random counts and the doubles just below every whole minute: the split loses nothing, and
  // the fields stay inside their domains.
  std::mt19937_64 random(20240229);
  std::uniform_real_distribution<double> count(0.0, 86400.0);
  std::vector<double> samples;
  for (int index = 0; index < 20000; ++index) samples.push_back(count(random));
  for (int minute = 1; minute <= 1440; ++minute)
    samples.push_back(std::nextafter(minute * 60.0, 0));
  for (const double seconds : samples) {
    const Time time = Time::makeFromSecondsSinceDayBegan(seconds);
    ASSERT_LE(time.hour(), 23);
    ASSERT_LE(time.minute(), 59);
    ASSERT_GE(time.second(), 0.0);
    ASSERT_LT(time.second(), 60.0);
    ASSERT_EQ(time.hour() * 3600.0 + time.minute() * 60.0 + time.second(), seconds) << seconds;
    ASSERT_EQ(Time::make(time.components()).value(), time);
  }
}

TEST(QuandaAbstractRealTimeOfDayDeathTest, NanStops) {
  EXPECT_DEATH(Time::makeFromSecondsSinceDayBegan(nan), "not finite");
  EXPECT_DEATH(Time::zero.addingSeconds(nan), "signed 32-bit range");
  EXPECT_DEATH(Time::zero.addingSeconds(infinity), "signed 32-bit range");
  EXPECT_DEATH(Time::zero.replacing({.second = nan}), "NaN second");
  EXPECT_DEATH(Time::zero.addingMinutes(std::numeric_limits<std::int64_t>::max()),
               "signed 32-bit range");
}

TEST(QuandaAbstractRealTimeOfDay, AddsWithCarryIntoDays) {
  EXPECT_EQ(at(23, 59, 30.0).addingSeconds(45.5), Relative(1, at(0, 0, 15.5)));
  EXPECT_EQ(at(7, 8, 5.5).addingSeconds(-30000.25), Relative(-1, at(22, 48, 5.25)));
  EXPECT_EQ(at(0, 30, 0.0).addingHours(-1), Relative(-1, at(23, 30, 0.0)));
  EXPECT_EQ(at(12, 0, 0.5).addingMinutes(1440 * 2), Relative(2, at(12, 0, 0.5)));
  EXPECT_EQ(at(23, 0, 0.0).adding({.hours = 1, .minutes = -61, .seconds = 3600.5}),
            Relative(0, at(23, 59, 0.5)));
  EXPECT_EQ(at(12, 0, 0.0).adding({}), Relative(at(12, 0, 0.0)));
}

TEST(QuandaAbstractRealTimeOfDay, CombinesWithSpans) {
  EXPECT_EQ(at(23, 59, 30.0) + QuandaRealTimeSpan(45.5), Relative(1, at(0, 0, 15.5)));
  EXPECT_EQ(QuandaRealTimeSpan(-0.5) + Time::zero, Relative(-1, at(23, 59, 59.5)));
  EXPECT_EQ(at(10, 0, 0.25) - at(12, 0, 0.0), QuandaRealTimeSpan(-7199.75));
}

TEST(QuandaAbstractRealTimeOfDay, ComparesExactlyOrWithinATolerance) {
  const Time a = at(10, 0, 0.0000001);
  const Time b = at(10, 0, 0.0);
  EXPECT_NE(a, b);
  EXPECT_TRUE(a.equals(b, KeelPrecision::coarse));
  EXPECT_FALSE(a.equals(b, KeelPrecision::fine));
  EXPECT_FALSE(at(10, 0, 59.9999).equals(at(10, 1, 0.0), KeelPrecision(10.0)));
  EXPECT_EQ(at(1, 1, 0.0), at(1, 1, -0.0));
  EXPECT_EQ(std::hash<Time>{}(at(1, 1, 0.0)), std::hash<Time>{}(at(1, 1, -0.0)));
  EXPECT_LT(b, a);
  // Ordering goes by the count of seconds as a double, which cannot tell the last double of a
  // minute from the next minute: such times are equivalent in order without being equal.
  EXPECT_TRUE(std::is_eq(at(9, 59, largestSecond) <=> b));
  EXPECT_NE(at(9, 59, largestSecond), b);
}

TEST(QuandaAbstractRealTimeOfDay, StepsReplacesAndTellsPartsOfTheDay) {
  EXPECT_EQ(Time::zero.nextUp().second(), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(Time::zero.nextDown(), Time::zero);
  EXPECT_EQ(at(10, 20, 30.5).replacing({.second = 75.0}), at(10, 20, largestSecond));
  EXPECT_EQ(at(10, 20, 30.5).replacing({.hour = 30, .second = -2.0}), at(23, 20, 0.0));
  EXPECT_FALSE(at(0, 0, 1e-9).isMidnight());
  EXPECT_FALSE(at(12, 0, 1e-9).isMidday());
}

TEST(QuandaAbstractRealTimeOfDay, ConvertsFromNaturalTimesAndChrono) {
  const auto natural = QuandaAbstractNaturalTimeOfDay::make(7, 5, 9).value();
  EXPECT_EQ(Time(natural), at(7, 5, 9.0));
  EXPECT_EQ(Time::make(std::chrono::duration<double>{3600.5}).value(), at(1, 0, 0.5));
  EXPECT_EQ(Time::make(std::chrono::milliseconds{1500}).value(), at(0, 0, 1.5));
  EXPECT_EQ(at(1, 0, 0.5).durationSinceDayBegan().count(), 3600.5);
  for (const double outside : {-1e-9, 86400.0, nan, infinity}) {
    const auto time = Time::make(std::chrono::duration<double>{outside});
    ASSERT_FALSE(time);
    expectChain(time.error(), {{"Duration outside one day", "make(duration:)", {"seconds"}}}, path);
  }
}

}  // namespace
