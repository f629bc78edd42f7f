// The rules that split a duration into the units it is written with, apart from any locale.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "Quanda/FoundationAdapting/QuandaDurationDecomposition.h"

namespace {

using Style = QuandaDurationFormatStyle;
using Settings = QuandaDurationFormatSettings;

// "-1h 2m", with the units' one-letter names ("mo" and "w" for months and weeks).
std::string decomposed(double seconds, const Settings& settings) {
  constexpr std::pair<Settings::Unit, const char*> names[] = {
      {Settings::year, "y"},  {Settings::month, "mo"}, {Settings::weekOfMonth, "w"},
      {Settings::day, "d"},   {Settings::hour, "h"},   {Settings::minute, "m"},
      {Settings::second, "s"}};
  const std::optional<QuandaDurationDecomposition> decomposition =
      decomposeDuration(seconds, settings);
  if (!decomposition) return "none";
  std::string text = decomposition->isNegative ? "-" : "";
  for (const auto& piece : decomposition->pieces()) {
    if (&piece != decomposition->pieces().data()) text += ' ';
    text += std::to_string(piece.amount);
    for (const auto& [unit, name] : names) {
      if (unit == piece.unit) text += name;
    }
  }
  return text;
}

std::string decomposed(double seconds, Style style) {
  return decomposed(seconds, durationFormatSettings(style));
}

TEST(QuandaDurationDecomposition, EveryStyleOnTheReferenceDurations) {
  // 0 s, 45 s, 90 s, 3,725 s, 36 hours, 400 days.
  constexpr double durations[] = {0, 45, 90, 3725, 36 * 3600.0, 400 * 86400.0};
  const struct {
    Style style;
    const char* expected[6];
  } cases[] = {
      {Style::hoursOnly, {"0h", "0h", "0h", "1h", "36h", "9600h"}},
      {Style::longTermCompact, {"0s", "45s", "1m 30s", "1h 2m", "1d 12h", "1y 1mo"}},
      {Style::mediumAbsoluteSubDay, {"0s", "45s", "1m 30s", "1h 2m", "36h", "9600h"}},
      {Style::minutesOnly, {"0m", "0m", "1m", "62m", "2160m", "576000m"}},
      {Style::positional,
       {"0h 0m 0s", "0h 0m 45s", "0h 1m 30s", "1h 2m 5s", "36h 0m 0s", "9600h 0m 0s"}},
      {Style::secondsOnly, {"0s", "45s", "90s", "3725s", "129600s", "34560000s"}},
      {Style::shortAbsoluteSubDay, {"0s", "45s", "1m 30s", "1h 2m", "36h", "9600h"}},
      {Style::shortDelta, {"0s", "45s", "1m 30s", "1h 2m 5s", "1d 12h", "1y 1mo 4d"}},
      {Style::totalWholeSeconds, {"0s", "45s", "90s", "3725s", "129600s", "34560000s"}},
  };
  for (const auto& c : cases) {
    for (std::size_t index = 0; index < 6; ++index) {
      EXPECT_EQ(decomposed(durations[index], c.style), c.expected[index])
          << caseName(c.style) << " of " << durations[index] << " s";
    }
  }
}

TEST(QuandaDurationDecomposition, YearsAndMonthsFollowTheCalendarFrom2001) {
  const Settings yearsToDays{Settings::UnitsStyle::abbreviated,
                             Settings::year | Settings::month | Settings::day};
  const Settings months{Settings::UnitsStyle::abbreviated, Settings::month | Settings::day};
  constexpr double day = 86400;
  EXPECT_EQ(decomposed(364 * day, yearsToDays), "11mo 30d");  // December has 31 days
  EXPECT_EQ(decomposed(365 * day, yearsToDays), "1y");        // 2001 is not a leap year
  EXPECT_EQ(decomposed(59 * day, yearsToDays), "2mo");        // January and a 28-day February
  EXPECT_EQ(decomposed(58 * day, months), "1mo 27d");
  EXPECT_EQ(decomposed(1461 * day, yearsToDays), "4y");  // 2004 is the leap year of the four
  EXPECT_EQ(decomposed(400 * day, months), "13mo 4d");
  // Fractions of the smallest allowed unit are dropped, never rounded.
  EXPECT_EQ(decomposed(365 * day - 1, Settings{Settings::UnitsStyle::abbreviated, Settings::year}),
            "0y");
  EXPECT_EQ(decomposed(59.999, Style::shortDelta), "59s");
  // Far beyond any date: 10,000 years of 146097 days per 400 years.
  EXPECT_EQ(decomposed(146097.0 * 25 * day, yearsToDays), "10000y");
}

TEST(QuandaDurationDecomposition, MaximumUnitCountAndZeroUnits) {
  // Two units from the largest shown; zeros inside them dropped, smaller units never rounded.
  EXPECT_EQ(decomposed(3605, Style::shortAbsoluteSubDay), "1h");
  EXPECT_EQ(decomposed(3659, Style::shortAbsoluteSubDay), "1h");
  EXPECT_EQ(decomposed(3719, Style::shortAbsoluteSubDay), "1h 1m");
  EXPECT_EQ(decomposed(86400 + 61, Style::longTermCompact), "1d");
  // Without a maximum, zero units in the middle are dropped, the rest kept.
  EXPECT_EQ(decomposed(3605, Style::shortDelta), "1h 5s");
  EXPECT_EQ(decomposed(7 * 86400.0 + 1, Style::shortDelta), "1w 1s");
  // Padding keeps every unit, leading ones included.
  EXPECT_EQ(decomposed(5, Style::positional), "0h 0m 5s");
  // A positional style without a zero setting drops leading zeros only.
  const Settings positional{Settings::UnitsStyle::positional,
                            Settings::hour | Settings::minute | Settings::second};
  EXPECT_EQ(decomposed(65, positional), "1m 5s");
  EXPECT_EQ(decomposed(3605, positional), "1h 0m 5s");
  EXPECT_EQ(decomposed(0, positional), "0s");
}

TEST(QuandaDurationDecomposition, SignsAndDurationsWithoutText) {
  EXPECT_EQ(decomposed(-3725, Style::shortDelta), "-1h 2m 5s");
  EXPECT_EQ(decomposed(-90.5, Style::positional), "-0h 1m 30s");
  // A negative duration whose amounts all round down to zero has no sign to show.
  EXPECT_EQ(decomposed(-0.5, Style::shortDelta), "0s");
  EXPECT_EQ(decomposed(-0.0, Style::positional), "0h 0m 0s");
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (double seconds : {std::nan(""), infinity, -infinity, 9.3e18, -9.3e18}) {
    EXPECT_EQ(decomposed(seconds, Style::shortDelta), "none") << seconds;
  }
  EXPECT_NE(decomposed(9.2e18, Style::shortDelta), "none");
}

}  // namespace
