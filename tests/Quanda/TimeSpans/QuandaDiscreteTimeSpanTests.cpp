#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"

namespace {

constexpr std::int64_t int64Min = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t int64Max = std::numeric_limits<std::int64_t>::max();

__extension__ typedef __int128 Int128;

TEST(QuandaDiscreteTimeSpanTests, MakeTreatsAbsentAmountsAsZero) {
  EXPECT_TRUE(QuandaDiscreteTimeSpan::make({}).isZero());
  EXPECT_EQ(QuandaDiscreteTimeSpan::make({.seconds = int64Min}).seconds(), int64Min);
}

// Against 128-bit arithmetic: every sum that fits comes out exact.
TEST(QuandaDiscreteTimeSpanTests, MakeMatchesWideArithmetic) {
  std::mt19937_64 random(20240305);
  std::uniform_int_distribution<std::int64_t> days(-106751991167300, 106751991167300);
  std::uniform_int_distribution<std::int64_t> small(-1000000000, 1000000000);
  for (int i = 0; i < 10000; ++i) {
    const std::int64_t d = days(random), h = small(random), m = small(random), s = small(random);
    const Int128 wide = Int128{d} * 86400 + Int128{h} * 3600 + Int128{m} * 60 + s;
    if (wide < int64Min || wide > int64Max) continue;
    ASSERT_EQ(
        QuandaDiscreteTimeSpan::make({.days = d, .hours = h, .minutes = m, .seconds = s}).seconds(),
        static_cast<std::int64_t>(wide));
  }
}

TEST(QuandaDiscreteTimeSpanTests, SignAndDirection) {
  EXPECT_EQ(QuandaDiscreteTimeSpan(5).inverted().seconds(), -5);
  EXPECT_EQ(QuandaDiscreteTimeSpan(int64Max).inverted().seconds(), -int64Max);
  EXPECT_EQ(QuandaDiscreteTimeSpan(-7).abs(), QuandaNaturalTimeSpan(7));
  EXPECT_EQ(QuandaDiscreteTimeSpan(int64Min + 1).abs().seconds(),
            static_cast<std::uint64_t>(int64Max));
  EXPECT_TRUE(QuandaDiscreteTimeSpan(-1).isNegative());
  EXPECT_FALSE(QuandaDiscreteTimeSpan::zero.isPositive() ||
               QuandaDiscreteTimeSpan::zero.isNegative());
  QuandaDiscreteTimeSpan span(10);
  span -= QuandaDiscreteTimeSpan(25);
  EXPECT_EQ(span.seconds(), -15);
  EXPECT_EQ(QuandaDiscreteTimeSpan(QuandaNaturalTimeSpan(int64Max)).seconds(), int64Max);
}

TEST(QuandaDiscreteTimeSpanTests, TotalsAndRoundingAreSigned) {
  EXPECT_DOUBLE_EQ(QuandaDiscreteTimeSpan(-90).totalMinutes(), -1.5);
  // Halves round away from zero in both directions.
  EXPECT_EQ(QuandaDiscreteTimeSpan(-90).roundingToMinute().seconds(), -120);
  EXPECT_EQ(QuandaDiscreteTimeSpan(-89).roundingToMinute().seconds(), -60);
  EXPECT_EQ(QuandaDiscreteTimeSpan(-43200).roundingToDay().seconds(), -86400);
}

TEST(QuandaDiscreteTimeSpanTests, ArchivesAsTheBareNumber) {
  for (std::int64_t seconds : {std::int64_t{0}, std::int64_t{-3600}, int64Min, int64Max}) {
    const auto text = nlohmann::json(QuandaDiscreteTimeSpan(seconds)).dump();
    EXPECT_EQ(text, std::to_string(seconds));
    EXPECT_EQ(nlohmann::json::parse(text).get<QuandaDiscreteTimeSpan>().seconds(), seconds);
  }
}

TEST(QuandaDiscreteTimeSpanTests, DecodingRejectsWhatIsNotASigned64BitInteger) {
  EXPECT_THROW(nlohmann::json::parse("9223372036854775808").get<QuandaDiscreteTimeSpan>(),
               nlohmann::json::out_of_range);
  for (const char* text : {"-1.5", "\"60\"", "false", "null", "[1]", "-9223372036854775809"}) {
    EXPECT_THROW(nlohmann::json::parse(text).get<QuandaDiscreteTimeSpan>(),
                 nlohmann::json::type_error)
        << text;
  }
}

TEST(QuandaDiscreteTimeSpanDeathTests, HaltsAtTheEndsOfTheRange) {
  EXPECT_DEATH(QuandaDiscreteTimeSpan(int64Min).inverted(), "overflow");
  EXPECT_DEATH(QuandaDiscreteTimeSpan(int64Min).abs(), "overflow");
  EXPECT_DEATH(QuandaDiscreteTimeSpan(int64Min) - QuandaDiscreteTimeSpan(1), "overflow");
  EXPECT_DEATH(QuandaDiscreteTimeSpan::make({.days = int64Max / 86400 + 1}), "overflow");
  EXPECT_DEATH(QuandaDiscreteTimeSpan::make({.minutes = int64Min / 60, .seconds = -61}),
               "overflow");
  EXPECT_DEATH((void)QuandaDiscreteTimeSpan(QuandaNaturalTimeSpan(std::uint64_t{1} << 63)),
               "does not fit");
  EXPECT_DEATH(QuandaDiscreteTimeSpan(int64Max).roundingToWeek(), "outside the integer range");
}

}  // namespace
