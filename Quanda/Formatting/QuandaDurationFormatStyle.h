// QuandaDurationFormatStyle: how a duration is written. Each style fixes the units a duration is
// split into, how many of them are shown and how they are spelt (QuandaDurationFormatSettings
// holds the settings of each). English examples for 3,725 seconds:
//
// | Case                 | Text                    |
// | -------------------- | ----------------------- |
// | hoursOnly            | 1h                      |
// | longTermCompact      | 1h 2m                   |
// | mediumAbsoluteSubDay | 1 hour, 2 minutes       |
// | minutesOnly          | 62m                     |
// | positional           | 1:02:05                 |
// | secondsOnly          | 3,725s                  |
// | shortAbsoluteSubDay  | 1h 2m                   |
// | shortDelta           | 1h 2m 5s                |
// | totalWholeSeconds    | 3,725 seconds           |
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

enum class QuandaDurationFormatStyle : std::uint8_t {
  hoursOnly,
  longTermCompact,
  mediumAbsoluteSubDay,
  minutesOnly,
  positional,
  secondsOnly,
  shortAbsoluteSubDay,
  shortDelta,
  totalWholeSeconds,
};

template <>
struct QuandaCaseNames<QuandaDurationFormatStyle> {
  static constexpr std::array<std::string_view, 9> names{
      "hoursOnly",           "longTermCompact", "mediumAbsoluteSubDay",
      "minutesOnly",         "positional",      "secondsOnly",
      "shortAbsoluteSubDay", "shortDelta",      "totalWholeSeconds"};
};
