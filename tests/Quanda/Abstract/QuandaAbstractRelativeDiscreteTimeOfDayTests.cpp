#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractRelativeDiscreteTimeOfDay.h"

namespace {

using Time = QuandaAbstractNaturalTimeOfDay;
using Relative = QuandaAbstractRelativeDiscreteTimeOfDay;

constexpr std::int32_t int32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t int32Max = std::numeric_limits<std::int32_t>::max();

Time at(int hour, int minute, int second) {
  return Time::make(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute),
                    static_cast<std::uint8_t>(second))
      .value();
}

static_assert(Relative::normalizing(-1) == Relative(-1, Time::maxInc));
static_assert(Relative::normalizing(86400).days() == 1);

TEST(QuandaAbstractRelativeDiscreteTimeOfDay, NormalisesWithFlooredDays) {
  const std::pair<std::int64_t, Relative> cases[] = {
      {0, Relative(Time::zero)},
      {-1, Relative(-1, at(23, 59, 59))},
      {86399, Relative(0, at(23, 59, 59))},
      {86400, Relative(1, Time::zero)},
      {-86400, Relative(-1, Time::zero)},
      {-86401, Relative(-2, at(23, 59, 59))},
      {std::int64_t{int32Max} * 86400 + 86399, Relative(int32Max, Time::maxInc)},
      {std::int64_t{int32Min} * 86400, Relative(int32Min, Time::zero)},
  };
  for (const auto& [seconds, expected] : cases) {
    SCOPED_TRACE(seconds);
    EXPECT_EQ(Relative::normalizing(seconds), expected);
    EXPECT_EQ(expected.seconds(), seconds);
  }
  // Random totals across the whole day range come back whole.
  std::mt19937_64 random(1010);
  std::uniform_int_distribution<std::int64_t> total(std::int64_t{int32Min} * 86400,
                                                    std::int64_t{int32Max} * 86400 + 86399);
  for (int index = 0; index < 100000; ++index) {
    const std::int64_t seconds = total(random);
    const Relative relative = Relative::normalizing(seconds);
    ASSERT_EQ(relative.seconds(), seconds);
    ASSERT_EQ(relative.asDouble(), static_cast<double>(seconds));
  }
}

TEST(QuandaAbstractRelativeDiscreteTimeOfDay, AddsToTheTotal) {
  EXPECT_EQ(Relative(at(23, 0, 0)).addingHours(2), Relative(1, at(1, 0, 0)));
  EXPECT_EQ(Relative(Time::zero).addingSeconds(-86401), Relative(-2, at(23, 59, 59)));
  EXPECT_EQ(Relative(-1, at(23, 0, 0)).adding({.hours = 1, .minutes = 1, .seconds = -61}),
            Relative(-1, Time::maxInc));
  EXPECT_EQ(Relative(0, Time::maxInc).nextUp(), Relative(1, Time::zero));
  EXPECT_EQ(Relative(0, Time::zero).nextDown(), Relative(-1, Time::maxInc));
  EXPECT_EQ(Relative::makeFromDouble(-0.5), Relative(-1, Time::maxInc));
  EXPECT_EQ(Relative::makeFromDouble(86400.4), Relative(1, Time::zero));
}

TEST(QuandaAbstractRelativeDiscreteTimeOfDay, CombinesWithSpans) {
  EXPECT_EQ(Relative(1, Time::zero) - Relative(0, at(23, 59, 59)), QuandaDiscreteTimeSpan(1));
  EXPECT_EQ(Relative(int32Min, Time::zero) - Relative(int32Max, Time::maxInc),
            QuandaDiscreteTimeSpan(-(std::int64_t{1} << 32) * 86400 + 1));
  EXPECT_EQ(Relative(-1, at(23, 0, 0)) + QuandaNaturalTimeSpan(3600), Relative(Time::zero));
  EXPECT_EQ(QuandaNaturalTimeSpan(1) + Relative(Time::maxInc), Relative(1, Time::zero));
  EXPECT_LT(Relative(-1, at(23, 59, 59)), Relative(0, Time::zero));
  EXPECT_EQ(Relative(3, at(4, 5, 6)).replacing({.days = -7}), Relative(-7, at(4, 5, 6)));
}

TEST(QuandaAbstractRelativeDiscreteTimeOfDay, DescribesTheDayOffset) {
  const std::pair<std::int32_t, std::string_view> cases[] = {
      {0, "08:00:00 same day"},
      {1, "08:00:00, +1 day"},
      {-1, "08:00:00, -1 day"},
      {int32Min, "08:00:00, -2147483648 days"},
  };
  for (const auto& [days, text] : cases) {
    EXPECT_EQ(Relative(days, at(8, 0, 0)).description(), text);
  }
}

TEST(QuandaAbstractRelativeDiscreteTimeOfDay, ArchivesDaysAndThePackedTime) {
  const Relative relative(1, at(1, 0, 0));
  EXPECT_EQ(nlohmann::json(relative), nlohmann::json::parse(R"({"days": 1, "time": 10000})"));
  EXPECT_EQ(nlohmann::json::parse(R"({"time": 70509, "days": -3})").get<Relative>(),
            Relative(-3, at(7, 5, 9)));
  expectDecodingError<Relative>(R"({"days": 0, "time": 240000})", "Failed to create date from int");
  for (const char* wrong :
       {R"({"days": 0})", R"({"time": 0})", R"({"days": 2147483648, "time": 0})", "0"}) {
    SCOPED_TRACE(wrong);
    EXPECT_THROW((void)nlohmann::json::parse(wrong).get<Relative>(), nlohmann::json::exception);
  }
}

TEST(QuandaAbstractRelativeDiscreteTimeOfDayDeathTest, ProgrammingErrorsStop) {
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { Relative::normalizing(std::int64_t{int32Max} * 86400 + 86400); },
       "signed 32-bit range"},
      {[] { Relative::normalizing(std::int64_t{int32Min} * 86400 - 1); }, "signed 32-bit range"},
      {[] { Relative(int32Max, Time::maxInc).nextUp(); }, "signed 32-bit range"},
      {[] { Relative(int32Min, Time::zero).nextDown(); }, "signed 32-bit range"},
      {[] { Relative(int32Max, Time::zero).addingHours(24); }, "signed 32-bit range"},
      {[] { Relative::makeFromDouble(1e19); }, "double is not finite or outside"},
      {[] { Relative(Time::zero) + QuandaNaturalTimeSpan(std::uint64_t{1} << 63); },
       "does not fit"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
