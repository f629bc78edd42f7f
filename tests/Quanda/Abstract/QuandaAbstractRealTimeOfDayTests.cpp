#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"

namespace {

using Time = QuandaAbstractRealTimeOfDay;
using Relative = QuandaAbstractRelativeRealTimeOfDay;

constexpr std::string_view path = "Quanda/Abstract/QuandaAbstractRealTimeOfDay";
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const double largestSecond = std::nextafter(60.0, 0.0);
const std::vector<std::string> proposed{"proposedHour", "proposedMinute", "proposedSecond"};

Time at(int hour, int minute, double second) {
  return Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute), second)
      .value();
}

static_assert(std::is_trivially_copyable_v<Time>);

TEST(QuandaAbstractRealTimeOfDay, FactoriesRefuseWhatIsNoTime) {
  EXPECT_TRUE(Time::make(23, 59, largestSecond));
  EXPECT_EQ(Time::makeFromIso8601String("7:5:0").value(), at(7, 5, 0.0));
  const std::string colons = "make(iso8601String:)";
  const struct {
    KeelResult<Time> result;
    std::vector<ExpectedErrorLink> chain;
  } cases[] = {
      {Time::make(24, 60, nan), {{"make(hour:minute:second:)", proposed, "Invalid hour"}}},
      {Time::make(0, 60, 60.0), {{"make(hour:minute:second:)", proposed, "Invalid minute"}}},
      {Time::make(0, 0, -1e-300), {{"make(hour:minute:second:)", proposed, "Invalid second"}}},
      {Time::make(0, 0, nan), {{"make(hour:minute:second:)", proposed, "Invalid second"}}},
      {Time::make(Time::Components{.hour = 1, .minute = 2, .second = 60.5}),
       {{"make(components:)", {"proposedComponents=Components(hour: 1, minute: 2, second: 60.5)"}},
        {"make(hour:minute:second:)", proposed, "Invalid second"}}},
      {Time::makeFromIso8601String("10:20"),
       {{colons, {"iso8601String", R"(tokens=["10", "20"])"}, "Unexpected number of tokens"}}},
      {Time::makeFromIso8601String("10:2x:30"),
       {{colons, {"iso8601String", "tokens"}, "Couldn't convert second token to minute"}}},
      {Time::makeFromIso8601String("10:20:30,25"),
       {{colons, {"iso8601String", "tokens"}, "Couldn't convert third token to second"}}},
      // The validation failure carries the string alone, unlike the natural kind.
      {Time::makeFromIso8601String("10:20:60"),
       {{colons, {"iso8601String"}}, {"make(hour:minute:second:)", proposed, "Invalid second"}}},
      {Time::make(std::chrono::duration<double>{86400.0}),
       {{"make(duration:)", {"seconds"}, "Duration outside one day"}}},
      {Time::make(std::chrono::duration<double>{nan}),
       {{"make(duration:)", {"seconds"}, "Duration outside one day"}}},
  };
  for (const auto& c : cases) {
    ASSERT_FALSE(c.result) << c.chain.front().function;
    expectErrorChain(c.result.error(), c.chain, path);
  }
}

// The third token is read as a general "parse a double" routine reads text, independent of the
// locale: these are the forms it takes and refuses.
TEST(QuandaAbstractRealTimeOfDay, ThirdTokenFollowsTheStandardDoubleSyntax) {
  const std::pair<std::string_view, double> accepted[] = {
      {"+5", 5.0},
      {"-0", 0.0},
      {".5", 0.5},
      {"5.", 5.0},
      {"2.5E+1", 25.0},
      {"0X1.8P1", 3.0},
      {"0x.8p1", 1.0},
      {"0x1f", 31.0},
      {"1e-400", 0.0},
      {"4e-320", 4e-320},
      {"59.99999999999999", 59.99999999999999},
  };
  for (const auto& [token, value] : accepted) {
    const auto time = Time::makeFromIso8601String("00:00:" + std::string(token));
    ASSERT_TRUE(time) << token;
    EXPECT_EQ(time.value().second(), value) << token;
  }
  // Read, then refused by the domain.
  for (const std::string_view token :
       {"-Infinity", "NaN(payload_1)", "snan", "1e400", "60", "0x1p6"}) {
    const auto time = Time::makeFromIso8601String("00:00:" + std::string(token));
    ASSERT_FALSE(time) << token;
    EXPECT_EQ(time.error().innermost().message(), "Invalid second") << token;
  }
  for (const std::string_view token :
       {"", " 5", "5,5", "+-5", ".", "e5", "1e+", "0x", "0x-1", "0xp1", "0x1p", "1_0", "inf ", "in",
        "nan(", "nan()x", "٣"}) {
    const auto time = Time::makeFromIso8601String("00:00:" + std::string(token));
    ASSERT_FALSE(time) << token;
    EXPECT_EQ(time.error().message(), "Couldn't convert third token to second") << token;
  }
  EXPECT_FALSE(Time::makeFromIso8601String(std::string("00:00:5\0", 8)));
}

TEST(QuandaAbstractRealTimeOfDay, ParsesOutOfRangeMagnitudesToInfinityOrZero) {
  using quanda_detail::parseFloatingPoint;
  EXPECT_EQ(parseFloatingPoint("-1e400"), -infinity);
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
      {at(10, 20, 30.1234567), "10:20:30.123456"},
      {at(0, 0, -0.0), "00:00:00.000000"},
      {Time::maxInc, "23:59:59.999999"},
      {Time::makeFromSecondsSinceDayBegan(0.29), "00:00:00.290000"},
  };
  for (const auto& [time, text] : cases) {
    EXPECT_EQ(time.description(), withDefaultDecimalSeparator(std::string(text)));
  }
}

TEST(QuandaAbstractRealTimeOfDay, SplitsSecondCountsExactly) {
  // Counts clamp to the last double below 86400, whose second is 59.99999999998545.
  const Time last = Time::makeFromSecondsSinceDayBegan(std::nextafter(86400.0, 0.0));
  EXPECT_EQ(last.second(), std::nextafter(86400.0, 0.0) - 86340.0);
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(infinity), last);
  EXPECT_EQ(Time::makeFromSecondsSinceDayBegan(-infinity), Time::zero);
  EXPECT_FALSE(std::signbit(Time::makeFromSecondsSinceDayBegan(-0.0).second()));

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

TEST(QuandaAbstractRealTimeOfDay, AddsWithCarryIntoDays) {
  EXPECT_EQ(at(23, 59, 30.0).addingSeconds(45.5), Relative(1, at(0, 0, 15.5)));
  EXPECT_EQ(at(7, 8, 5.5).addingSeconds(-30000.25), Relative(-1, at(22, 48, 5.25)));
  EXPECT_EQ(at(12, 0, 0.5).addingMinutes(1440 * 2), Relative(2, at(12, 0, 0.5)));
  EXPECT_EQ(at(23, 0, 0.0).adding({.hours = 1, .minutes = -61, .seconds = 3600.5}),
            Relative(0, at(23, 59, 0.5)));
  EXPECT_EQ(QuandaRealTimeSpan(-0.5) + Time::zero, Relative(-1, at(23, 59, 59.5)));
  EXPECT_EQ(at(10, 0, 0.25) - at(12, 0, 0.0), QuandaRealTimeSpan(-7199.75));
  EXPECT_EQ(Time(QuandaAbstractNaturalTimeOfDay::make(7, 5, 9).value()), at(7, 5, 9.0));
  EXPECT_EQ(Time::make(std::chrono::milliseconds{1500}).value(), at(0, 0, 1.5));
}

TEST(QuandaAbstractRealTimeOfDay, ComparesExactlyOrWithinATolerance) {
  const Time a = at(10, 0, 0.0000001);
  const Time b = at(10, 0, 0.0);
  EXPECT_NE(a, b);
  EXPECT_TRUE(a.equals(b, KeelPrecision::coarse));
  EXPECT_FALSE(a.equals(b, KeelPrecision::fine));
  EXPECT_FALSE(at(10, 0, 59.9999).equals(at(10, 1, 0.0), KeelPrecision(10.0)));
  EXPECT_EQ(std::hash<Time>{}(at(1, 1, 0.0)), std::hash<Time>{}(at(1, 1, -0.0)));
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

TEST(QuandaAbstractRealTimeOfDayDeathTest, ProgrammingErrorsStop) {
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { Time::makeFromSecondsSinceDayBegan(nan); }, "not finite"},
      {[] { Time::zero.addingSeconds(nan); }, "signed 32-bit range"},
      {[] { Time::zero.addingSeconds(infinity); }, "signed 32-bit range"},
      {[] { Time::zero.replacing({.second = nan}); }, "NaN second"},
      {[] { Time::zero.addingMinutes(std::numeric_limits<std::int64_t>::max()); },
       "signed 32-bit range"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
