// QuandaDateFormatStyle: how much of a date a formatter writes, from the fewest characters to the
// most. In an English locale: 2/29/24, Feb 29, 2024, February 29, 2024 and Thursday, February 29,
// 2024.
//
// Cases in declaration order (their ordinals): short_ (0), medium, long_, full (3). The platform's
// own style of the same name is ordinal + 1, because the platform counts "none" as 0.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

enum class QuandaDateFormatStyle : std::uint8_t { short_, medium, long_, full };

template <>
struct QuandaCaseNames<QuandaDateFormatStyle> {
  static constexpr std::array<std::string_view, 4> names = quanda_detail::lengthStyleNames;
};
