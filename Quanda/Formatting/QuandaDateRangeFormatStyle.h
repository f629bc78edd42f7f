// QuandaDateRangeFormatStyle: how much of each date a range formatter writes, with the four
// lengths of the date styles. In an English locale: 2/3/24 – 2/29/24, Feb 3 – 29, 2024,
// February 3 – 29, 2024 and Saturday, February 3 – Thursday, February 29, 2024.
//
// Cases in declaration order (their ordinals): short_ (0), medium, long_, full (3). The platform's
// own style of the same name is ordinal + 1, because the platform counts "none" as 0. The range
// formatter writes the dates only (its time style is "none").
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

enum class QuandaDateRangeFormatStyle : std::uint8_t { short_, medium, long_, full };

template <>
struct QuandaCaseNames<QuandaDateRangeFormatStyle> {
  static constexpr std::array<std::string_view, 4> names = quanda_detail::lengthStyleNames;
};
