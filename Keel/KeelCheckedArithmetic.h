// Checked integer arithmetic and range-checked conversions.
//
// Whole-number arithmetic in this library never wraps silently: an overflow is a programming error
// and stops the process through KEEL_PRECONDITION. These helpers keep that rule in one place.
#pragma once

#include <concepts>
#include <limits>
#include <utility>

#include "Keel/KeelPrecondition.h"

namespace keel {

template <std::integral T>
constexpr T checkedAdd(T a, T b) {
  T result{};
  KEEL_PRECONDITION(!__builtin_add_overflow(a, b, &result), "integer overflow in addition");
  return result;
}

template <std::integral T>
constexpr T checkedSubtract(T a, T b) {
  T result{};
  KEEL_PRECONDITION(!__builtin_sub_overflow(a, b, &result), "integer overflow in subtraction");
  return result;
}

template <std::integral T>
constexpr T checkedMultiply(T a, T b) {
  T result{};
  KEEL_PRECONDITION(!__builtin_mul_overflow(a, b, &result), "integer overflow in multiplication");
  return result;
}

template <std::integral T>
constexpr T checkedNegate(T a) {
  return checkedSubtract(T{0}, a);
}

// Converts between integer types, stopping when the value does not fit the target.
template <std::integral To, std::integral From>
constexpr To checkedNarrow(From value) {
  KEEL_PRECONDITION(std::in_range<To>(value), "integer value does not fit the target type");
  return static_cast<To>(value);
}

// Converts a double to an integer type by truncation, stopping when the double is not finite or
// lies outside the target's range. Callers round or floor first; the bounds are tested as doubles,
// exactly: above -1 (unsigned) or from the minimum (signed), and below 2^digits.
template <std::integral To>
constexpr To checkedFromDouble(double value) {
  constexpr double upperExclusive = static_cast<double>(std::numeric_limits<To>::max()) + 1.0;
  bool fits = false;
  if constexpr (std::numeric_limits<To>::is_signed) {
    fits = value >= static_cast<double>(std::numeric_limits<To>::min()) && value < upperExclusive;
  } else {
    fits = value > -1.0 && value < upperExclusive;
  }
  KEEL_PRECONDITION(fits, "double is not finite or outside the integer range");
  return static_cast<To>(value);
}

}  // namespace keel
