// What the time and date-time commands need to check a clock move before the library makes it.
//
// Moving a clock so far that its day count leaves 32 bits, or a date-time off 0001...9999, is a
// programming error in the library, which stops the process. A command must refuse such an input
// instead, so it first computes the whole days the move would carry, exactly as the library's
// times of day compute them, and checks them.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <type_traits>

// The whole days that moving a count of seconds (a relative time's total, or a time's seconds
// since midnight) by amount * unitSeconds carries: floor(total / 86400), in checked 64-bit
// integers for whole seconds and in doubles for fractional ones, as the library computes it.
// Nothing when the total overflows or the day count does not fit 32 signed bits.
template <class Seconds, class Amount>
std::optional<std::int32_t> quandaCarriedDays(Seconds seconds, Amount amount,
                                              std::int64_t unitSeconds) {
  if constexpr (std::is_floating_point_v<Seconds>) {
    const double total = seconds + static_cast<double>(amount) * static_cast<double>(unitSeconds);
    const double days = std::floor(total / 86400.0);
    if (!(days >= -2147483648.0 && days <= 2147483647.0)) return std::nullopt;
    return static_cast<std::int32_t>(days);
  } else {
    static_assert(std::is_integral_v<Amount>);
    std::int64_t product = 0;
    std::int64_t total = 0;
    if (__builtin_mul_overflow(std::int64_t{amount}, unitSeconds, &product) ||
        __builtin_add_overflow(product, static_cast<std::int64_t>(seconds), &total)) {
      return std::nullopt;
    }
    const std::int64_t days = total / 86400 - (total % 86400 < 0 ? 1 : 0);
    if (days < INT32_MIN || days > INT32_MAX) return std::nullopt;
    return static_cast<std::int32_t>(days);
  }
}
