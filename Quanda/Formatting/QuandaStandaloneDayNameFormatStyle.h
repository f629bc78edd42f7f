// QuandaStandaloneDayNameFormatStyle: the length of a weekday's name written on its own, as a
// calendar column title is: full ("Monday"), short_ ("Mon") or veryShort ("M") in English.
//
// Cases in declaration order (their ordinals): full (0), short_, veryShort (2).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

enum class QuandaStandaloneDayNameFormatStyle : std::uint8_t { full, short_, veryShort };

template <>
struct QuandaCaseNames<QuandaStandaloneDayNameFormatStyle> {
  static constexpr std::array<std::string_view, 3> names{"full", "short", "veryShort"};
};
