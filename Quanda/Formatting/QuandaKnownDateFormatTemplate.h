// QuandaKnownDateFormatTemplate: the date templates a caller may ask for, each a skeleton that
// the adapter localizes.
//
// | Case                 | Template   | English example |
// | -------------------- | ---------- | --------------- |
// | fullMonthAndYear     | "MMMMyyyy" | February 2024   |
// | standaloneDayOfMonth | "d"        | 29              |
// | standaloneShortMonth | "MMM"      | Feb             |
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaKnownFormatTemplateTable.h"

enum class QuandaKnownDateFormatTemplate : std::uint8_t {
  fullMonthAndYear,
  standaloneDayOfMonth,
  standaloneShortMonth,
};

template <>
struct QuandaCaseNames<QuandaKnownDateFormatTemplate> {
  static constexpr std::array<std::string_view, 3> names{"fullMonthAndYear", "standaloneDayOfMonth",
                                                         "standaloneShortMonth"};
};

template <>
struct QuandaKnownFormatTemplates<QuandaKnownDateFormatTemplate> {
  static constexpr std::array<QuandaKnownFormatTemplate, 3> templates{{
      {"MMMMyyyy", true},
      {"d", true},
      {"MMM", true},
  }};
};
