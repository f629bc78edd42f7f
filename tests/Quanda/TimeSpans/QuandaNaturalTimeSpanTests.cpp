#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "Quanda/Abstract/ErrorChainExpectations.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"

namespace {

constexpr std::uint64_t uint64Max = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t twoTo63 = std::uint64_t{1} << 63;

TEST(QuandaNaturalTimeSpanTests, MakeSumsTheUnits) {
  EXPECT_EQ(QuandaNaturalTimeSpan::make(1, 2, 3, 4).seconds(), 93784u);
  EXPECT_EQ(QuandaNaturalTimeSpan::make(0, 0, 0, uint64Max).seconds(), uint64Max);
  // The largest whole number of days that fits, plus the seconds left below the top.
  constexpr std::uint64_t days = uint64Max / 86400;
  EXPECT_EQ(QuandaNaturalTimeSpan::make(days, 0, 0, uint64Max - days * 86400).seconds(), uint64Max);
}

TEST(QuandaNaturalTimeSpanTests, SubtractReportsANegativeResult) {
  const auto result = QuandaNaturalTimeSpan(10).subtract(QuandaNaturalTimeSpan(15));
  ASSERT_FALSE(result);
  expectErrorChain(result.error(),
                   {{"subtract(_:)",
                     {"timeSpan=10", "other=15"},
                     "Result would be a negative time which is unacceptable for a natural span"}},
                   "Quanda/Time Spans/QuandaNaturalTimeSpan");

  EXPECT_EQ(QuandaNaturalTimeSpan(15).subtract(QuandaNaturalTimeSpan(10)).value().seconds(), 5u);
  const auto top = QuandaNaturalTimeSpan(twoTo63 - 1);
  EXPECT_EQ(top.subtract(QuandaNaturalTimeSpan::zero).value(), top);
}

TEST(QuandaNaturalTimeSpanTests, AbsoluteDifferenceIsSymmetric) {
  EXPECT_EQ(QuandaNaturalTimeSpan(10).absoluteDifference(QuandaNaturalTimeSpan(15)).seconds(), 5u);
  const auto top = QuandaNaturalTimeSpan(twoTo63 - 1);
  EXPECT_EQ(QuandaNaturalTimeSpan::zero.absoluteDifference(top), top);
  EXPECT_EQ(absoluteRange(KeelDomain(QuandaNaturalTimeSpan(70), QuandaNaturalTimeSpan(20))),
            QuandaNaturalTimeSpan(50));
}

TEST(QuandaNaturalTimeSpanTests, RoundingRoundsHalvesUp) {
  struct Case {
    std::uint64_t seconds;
    QuandaNaturalTimeSpan (QuandaNaturalTimeSpan::*rounding)() const;
    std::uint64_t expected;
  };
  const Case cases[] = {
      {89, &QuandaNaturalTimeSpan::roundingToMinute, 60},
      {90, &QuandaNaturalTimeSpan::roundingToMinute, 120},
      {5400, &QuandaNaturalTimeSpan::roundingToHour, 7200},
      {43200, &QuandaNaturalTimeSpan::roundingToDay, 86400},
      {302399, &QuandaNaturalTimeSpan::roundingToWeek, 0},
      {302400, &QuandaNaturalTimeSpan::roundingToWeek, 604800},
  };
  for (const Case& c : cases) {
    EXPECT_EQ((QuandaNaturalTimeSpan(c.seconds).*c.rounding)().seconds(), c.expected) << c.seconds;
  }
}

TEST(QuandaNaturalTimeSpanTests, ArchivesAsTheBareNumber) {
  EXPECT_EQ(nlohmann::json(QuandaNaturalTimeSpan(3600)).dump(), "3600");
  for (std::uint64_t seconds : {std::uint64_t{0}, std::uint64_t{3600}, twoTo63, uint64Max}) {
    const auto text = nlohmann::json(QuandaNaturalTimeSpan(seconds)).dump();
    EXPECT_EQ(nlohmann::json::parse(text).get<QuandaNaturalTimeSpan>().seconds(), seconds);
  }
  // An integer built in memory from a signed type decodes too, as does the text -0.
  EXPECT_EQ(nlohmann::json(std::int64_t{7}).get<QuandaNaturalTimeSpan>().seconds(), 7u);
  EXPECT_TRUE(nlohmann::json::parse("-0").get<QuandaNaturalTimeSpan>().isZero());
}

TEST(QuandaNaturalTimeSpanTests, DecodingRejectsWhatIsNotAnUnsignedInteger) {
  for (const char* text :
       {"-1", "2.5", "\"60\"", "true", "null", "{}", "[]", "18446744073709551616"}) {
    EXPECT_THROW(nlohmann::json::parse(text).get<QuandaNaturalTimeSpan>(),
                 nlohmann::json::type_error)
        << text;
  }
}

TEST(QuandaNaturalTimeSpanDeathTests, OverflowHalts) {
  EXPECT_DEATH(QuandaNaturalTimeSpan::make(uint64Max / 86400 + 1, 0, 0, 0), "overflow");
  EXPECT_DEATH(QuandaNaturalTimeSpan::make(0, 0, 1, uint64Max - 59), "overflow");
  EXPECT_DEATH(QuandaNaturalTimeSpan(uint64Max).roundingToMinute(), "outside the integer range");
}

TEST(QuandaNaturalTimeSpanDeathTests, DifferencesHaltFromTwoTo63) {
  const QuandaNaturalTimeSpan big(twoTo63);
  EXPECT_DEATH(big.absoluteDifference(QuandaNaturalTimeSpan::zero), "does not fit");
  EXPECT_DEATH(QuandaNaturalTimeSpan::zero.absoluteDifference(big), "does not fit");
  EXPECT_DEATH((void)big.subtract(QuandaNaturalTimeSpan(1)), "does not fit");
  EXPECT_DEATH((void)QuandaNaturalTimeSpan(1).subtract(big), "does not fit");
  // The refusing form answers nothing exactly where subtract stops, and its result elsewhere.
  EXPECT_FALSE(big.trySubtract(QuandaNaturalTimeSpan(1)));
  EXPECT_FALSE(QuandaNaturalTimeSpan(1).trySubtract(big));
  const QuandaNaturalTimeSpan top(twoTo63 - 1);
  EXPECT_EQ(top.trySubtract(top)->value(), QuandaNaturalTimeSpan::zero);
  EXPECT_FALSE(QuandaNaturalTimeSpan(1).trySubtract(top)->hasValue());
}

}  // namespace
