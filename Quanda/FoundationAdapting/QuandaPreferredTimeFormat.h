// QuandaPreferredTimeFormat: whether the user's locale shows hours on a 12-hour clock with a day
// period ("1:05 PM") or on a 24-hour clock ("13:05").
//
// Cases in declaration order (their ordinals): twelveHour (0), twentyFourHour (1).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

enum class QuandaPreferredTimeFormat : std::uint8_t { twelveHour, twentyFourHour };

template <>
struct QuandaCaseNames<QuandaPreferredTimeFormat> {
  static constexpr std::array<std::string_view, 2> names{"twelveHour", "twentyFourHour"};
};
