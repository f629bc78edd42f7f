// Checked integer arithmetic and range-checked conversions.
//
// Whole-number arithmetic in this library never wraps silently. Each operation comes in two forms
// that share one rule: try... answers nothing where the exact result does not fit, for callers
// that take their numbers from outside (a user, a file) and want to refuse them; checked...
// treats the same case as a programming error and stops the process through KEEL_PRECONDITION.
#pragma once

#include <concepts>
#include <limits>
#include <optional>
#include <utility>

#include "Keel/KeelPrecondition.h"

namespace keel {

template <std::integral T>
constexpr std::optional<T> tryAdd(T a, T b) noexcept {
  T result{};
  if (__builtin_add_overflow(a, b, &result)) return std::nullopt;
  return result;
}

template <std::integral T>
constexpr std::optional<T> trySubtract(T a, T b) noexcept {
  T result{};
  if (__builtin_sub_overflow(a, b, &result)) return std::nullopt;
  return result;
}

template <std::integral T>
constexpr std::optional<T> tryMultiply(T a, T b) noexcept {
  T result{};
  if (__builtin_mul_overflow(a, b, &result)) return std::nullopt;
  return result;
}

template <std::integral T>
constexpr std::optional<T> tryNegate(T a) noexcept {
  return trySubtract(T{0}, a);
}

// The same value in another integer type, if it fits.
template <std::integral To, std::integral From>
constexpr std::optional<To> tryNarrow(From value) noexcept {
  if (!std::in_range<To>(value)) return std::nullopt;
  return static_cast<To>(value);
}

// A double truncated to an integer type, if it is finite and lies inside the target's range.
// Callers round or floor first; the bounds are tested as doubles, exactly: above -1 (unsigned) or
// from the minimum (signed), and below 2^digits.
template <std::integral To>
constexpr std::optional<To> tryFromDouble(double value) noexcept {
  constexpr double upperExclusive = static_cast<double>(std::numeric_limits<To>::max()) + 1.0;
  bool fits = false;
  if constexpr (std::numeric_limits<To>::is_signed) {
    fits = value >= static_cast<double>(std::numeric_limits<To>::min()) && value < upperExclusive;
  } else {
    fits = value > -1.0 && value < upperExclusive;
  }
  if (!fits) return std::nullopt;
  return static_cast<To>(value);
}

// The value of an optional that a caller's precondition guarantees; stops with `what` otherwise.
// The stopping forms of the library are their try... forms followed by this.
// The report names the caller's place, not this function's.
template <class T>
constexpr T valueOrStop(const std::optional<T>& value, const char* what,
                        const char* file = __builtin_FILE(), int line = __builtin_LINE(),
                        const char* function = __builtin_FUNCTION()) {
  if (!value.has_value()) keel_detail::preconditionFailure(what, file, line, function);
  return *value;
}

template <std::integral T>
constexpr T checkedAdd(T a, T b) {
  return valueOrStop(tryAdd(a, b), "integer overflow in addition");
}

template <std::integral T>
constexpr T checkedSubtract(T a, T b) {
  return valueOrStop(trySubtract(a, b), "integer overflow in subtraction");
}

template <std::integral T>
constexpr T checkedMultiply(T a, T b) {
  return valueOrStop(tryMultiply(a, b), "integer overflow in multiplication");
}

template <std::integral T>
constexpr T checkedNegate(T a) {
  return checkedSubtract(T{0}, a);
}

// Converts between integer types, stopping when the value does not fit the target.
template <std::integral To, std::integral From>
constexpr To checkedNarrow(From value) {
  return valueOrStop(tryNarrow<To>(value), "integer value does not fit the target type");
}

// Converts a double to an integer type by truncation, stopping when the double is not finite or
// lies outside the target's range.
template <std::integral To>
constexpr To checkedFromDouble(double value) {
  return valueOrStop(tryFromDouble<To>(value), "double is not finite or outside the integer range");
}

}  // namespace keel
