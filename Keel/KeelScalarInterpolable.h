// Ordered scalar values that can bound a KeelDomain and be interpolated.
//
// A conforming type has a successor and a predecessor (nextUp, nextDown), a position as a double
// (asDouble) and the value at a double position (makeFromDouble). The integer helpers keelNextUp
// and keelNextDown saturate at the ends of their type.
#pragma once

#include <concepts>
#include <limits>

template <class T>
concept KeelScalarInterpolable = requires(const T& value, double position) {
  { value.nextUp() } -> std::same_as<T>;
  { value.nextDown() } -> std::same_as<T>;
  { value.asDouble() } -> std::convertible_to<double>;
  { T::makeFromDouble(position) } -> std::same_as<T>;
};

// The value at ratio of the way from `from` towards `towards` (0 gives from, 1 gives towards).
template <KeelScalarInterpolable T>
T lerpOpen(const T& from, double ratio, const T& towards) {
  const double start = from.asDouble();
  return T::makeFromDouble(start + (towards.asDouble() - start) * ratio);
}

template <std::integral T>
constexpr T keelNextUp(T value) noexcept {
  return value == std::numeric_limits<T>::max() ? value : static_cast<T>(value + 1);
}

template <std::integral T>
constexpr T keelNextDown(T value) noexcept {
  return value == std::numeric_limits<T>::min() ? value : static_cast<T>(value - 1);
}
