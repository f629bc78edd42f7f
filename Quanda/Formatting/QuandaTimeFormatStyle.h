// QuandaTimeFormatStyle: how much of a time of day a formatter writes, from the fewest characters
// to the most. In an English locale: 1:05 PM, 1:05:09 PM, 1:05:09 PM UTC and 1:05:09 PM
// Coordinated Universal Time.
//
// Cases in declaration order (their ordinals): short_ (0), medium, long_, full (3). The platform's
// own style of the same name is ordinal + 1, because the platform counts "none" as 0.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

enum class QuandaTimeFormatStyle : std::uint8_t { short_, medium, long_, full };

template <>
struct QuandaCaseNames<QuandaTimeFormatStyle> {
  static constexpr std::array<std::string_view, 4> names = quanda_detail::lengthStyleNames;
};
