// QuandaKnownTimeFormatTemplate: the time-of-day templates a caller may ask for.
//
// Only "jj" is a skeleton, localized into the locale's own hour (with its day period on a
// 12-hour clock). The others are patterns used as they are: a lone "H", "h", "m" or "s" is the
// hour 0 to 23, the hour 1 to 12, the minute or the second, without leading zero and without any
// unit or day-period mark, in every locale.
//
// | Case                                | Template | 13:05:09 in English |
// | ----------------------------------- | -------- | ------------------- |
// | standaloneHourRespecting12or24Hour  | "jj"     | 1 PM                |
// | standalone24HourHourOnlyWithoutUnit | "H"      | 13                  |
// | standalone12HourHourOnlyWithoutUnit | "h"      | 1                   |
// | standaloneMinuteWithoutUnit         | "m"      | 5                   |
// | standaloneSecondWithoutUnit         | "s"      | 9                   |
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaKnownFormatTemplateTable.h"

enum class QuandaKnownTimeFormatTemplate : std::uint8_t {
  standaloneHourRespecting12or24Hour,
  standalone24HourHourOnlyWithoutUnit,
  standalone12HourHourOnlyWithoutUnit,
  standaloneMinuteWithoutUnit,
  standaloneSecondWithoutUnit,
};

template <>
struct QuandaCaseNames<QuandaKnownTimeFormatTemplate> {
  static constexpr std::array<std::string_view, 5> names{
      "standaloneHourRespecting12or24Hour", "standalone24HourHourOnlyWithoutUnit",
      "standalone12HourHourOnlyWithoutUnit", "standaloneMinuteWithoutUnit",
      "standaloneSecondWithoutUnit"};
};

template <>
struct QuandaKnownFormatTemplates<QuandaKnownTimeFormatTemplate> {
  static constexpr std::array<QuandaKnownFormatTemplate, 5> templates{{
      {"jj", true},
      {"H", false},
      {"h", false},
      {"m", false},
      {"s", false},
  }};
};
