// QuandaDurationFormatSettings: the settings of a duration formatter for one duration style, as a
// plain record that the adapter's duration formatting reads.
//
// The values are the platform's own: units style positional 0, abbreviated 1, full 3; allowed
// units as a set of calendar-unit bits (hour 0x20, minute 0x40, second 0x80, 0xE0 for hour, minute
// and second, 0xFC for year, month, day, hour, minute and second); zero formatting behaviour
// dropAll 0x0E (drop leading, middle and trailing zero units) or pad 0x10000. An absent setting
// is one the style leaves to the platform's default.
//
// clang-format off
// | Style                | unitsStyle  | allowedUnits | maximumUnitCount | zeroFormattingBehavior | the four flags |
// | -------------------- | ----------- | ------------ | ---------------- | ---------------------- | -------------- |
// | hoursOnly            | abbreviated | hour         | -                | -                      | -              |
// | longTermCompact      | abbreviated | 0xFC         | 2                | dropAll                | false          |
// | mediumAbsoluteSubDay | full        | 0xE0         | 2                | dropAll                | false          |
// | minutesOnly          | abbreviated | minute       | -                | -                      | -              |
// | positional           | positional  | 0xE0         | -                | pad                    | false          |
// | secondsOnly          | abbreviated | second       | -                | -                      | -              |
// | shortAbsoluteSubDay  | abbreviated | 0xE0         | 2                | dropAll                | false          |
// | shortDelta           | abbreviated | -            | -                | dropAll                | false          |
// | totalWholeSeconds    | full        | second       | -                | -                      | -              |
// clang-format on
//
// The four flags are allowsFractionalUnits, collapsesLargestUnit, includesApproximationPhrase and
// includesTimeRemainingPhrase; no style turns one on.
#pragma once

#include <cstdint>
#include <optional>

#include "Quanda/Formatting/QuandaDurationFormatStyle.h"

struct QuandaDurationFormatSettings {
  enum class UnitsStyle : std::uint8_t { positional = 0, abbreviated = 1, full = 3 };

  // The calendar units a duration can be split into, as the platform's bits. Weeks are the
  // platform's week-of-month unit.
  enum Unit : std::uint32_t {
    year = 0x04,
    month = 0x08,
    day = 0x10,
    hour = 0x20,
    minute = 0x40,
    second = 0x80,
    weekOfMonth = 0x1000,
  };

  enum class ZeroFormattingBehavior : std::uint32_t { dropAll = 0x0E, pad = 0x10000 };

  UnitsStyle unitsStyle = UnitsStyle::abbreviated;
  std::optional<std::uint32_t> allowedUnits{};
  std::optional<std::uint8_t> maximumUnitCount{};
  std::optional<ZeroFormattingBehavior> zeroFormattingBehavior{};
  std::optional<bool> allowsFractionalUnits{};
  std::optional<bool> collapsesLargestUnit{};
  std::optional<bool> includesApproximationPhrase{};
  std::optional<bool> includesTimeRemainingPhrase{};

  friend constexpr bool operator==(const QuandaDurationFormatSettings&,
                                   const QuandaDurationFormatSettings&) = default;
};

// The settings of a style (the table above).
constexpr QuandaDurationFormatSettings durationFormatSettings(
    QuandaDurationFormatStyle style) noexcept {
  using Settings = QuandaDurationFormatSettings;
  using Units = Settings::UnitsStyle;
  using Zero = Settings::ZeroFormattingBehavior;
  constexpr std::uint32_t hourMinuteSecond = Settings::hour | Settings::minute | Settings::second;
  constexpr std::uint32_t yearToSecond =
      Settings::year | Settings::month | Settings::day | hourMinuteSecond;
  // A style that sets its flags sets all four to false.
  const auto flagged = [](Units units, std::optional<std::uint32_t> allowed,
                          std::optional<std::uint8_t> maximum, Zero zero) {
    return Settings{units, allowed, maximum, zero, false, false, false, false};
  };
  switch (style) {
    case QuandaDurationFormatStyle::hoursOnly:
      return {Units::abbreviated, Settings::hour};
    case QuandaDurationFormatStyle::longTermCompact:
      return flagged(Units::abbreviated, yearToSecond, 2, Zero::dropAll);
    case QuandaDurationFormatStyle::mediumAbsoluteSubDay:
      return flagged(Units::full, hourMinuteSecond, 2, Zero::dropAll);
    case QuandaDurationFormatStyle::minutesOnly:
      return {Units::abbreviated, Settings::minute};
    case QuandaDurationFormatStyle::positional:
      return flagged(Units::positional, hourMinuteSecond, std::nullopt, Zero::pad);
    case QuandaDurationFormatStyle::secondsOnly:
      return {Units::abbreviated, Settings::second};
    case QuandaDurationFormatStyle::shortAbsoluteSubDay:
      return flagged(Units::abbreviated, hourMinuteSecond, 2, Zero::dropAll);
    case QuandaDurationFormatStyle::shortDelta:
      return flagged(Units::abbreviated, std::nullopt, std::nullopt, Zero::dropAll);
    case QuandaDurationFormatStyle::totalWholeSeconds:
      return {Units::full, Settings::second};
  }
  return {};
}
