// QuandaKnownDateTimeFormatTemplate: the date-time templates a caller may ask for, each a
// skeleton that the adapter localizes.
//
// The templates carry literal separators ("/", ":") and the day-period field "a" for readability;
// the localizer keeps only the fields and writes them in the locale's order with its own
// separators, so the same template gives "Thu, Feb 29, 2024, 1:05 PM" in English and
// "Do., 29. Feb. 2024, 13:05" in German.
//
// | Case                      | Template                 | English example                    |
// | ------------------------- | ------------------------ | ---------------------------------- |
// | standaloneHour            | "jj"                     | 1 PM                               |
// | fullDateToMinuteLong      | "j:mma EEEE d MMMM yyyy" | Thursday, February 29, 2024 at ... |
// | fullDateToMinuteMedium    | "j:mma EEE d MMM yyyy"   | Thu, Feb 29, 2024, 1:05 PM         |
// | fullDateToMinuteShort     | "j:mma E d/MM/yy"        | Thu, 02/29/24, 1:05 PM             |
// | fullDateToMinuteVeryShort | "j:mma d/MM/yy"          | 02/29/24, 1:05 PM                  |
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaKnownFormatTemplateTable.h"

enum class QuandaKnownDateTimeFormatTemplate : std::uint8_t {
  standaloneHour,
  fullDateToMinuteLong,
  fullDateToMinuteMedium,
  fullDateToMinuteShort,
  fullDateToMinuteVeryShort,
};

template <>
struct QuandaCaseNames<QuandaKnownDateTimeFormatTemplate> {
  static constexpr std::array<std::string_view, 5> names{
      "standaloneHour", "fullDateToMinuteLong", "fullDateToMinuteMedium", "fullDateToMinuteShort",
      "fullDateToMinuteVeryShort"};
};

template <>
struct QuandaKnownFormatTemplates<QuandaKnownDateTimeFormatTemplate> {
  static constexpr std::array<QuandaKnownFormatTemplate, 5> templates{{
      {"jj", true},
      {"j:mma EEEE d MMMM yyyy", true},
      {"j:mma EEE d MMM yyyy", true},
      {"j:mma E d/MM/yy", true},
      {"j:mma d/MM/yy", true},
  }};
};
