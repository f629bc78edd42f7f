// KeelOverride<T>: an optional replacement of a field, as taken by the replacing(...) operations.
// Absent keeps the current value; present replaces it (after the operation's own clamping).
//
//   date.replacing({.day = 1})     // year and month kept
#pragma once

#include <optional>

template <class T>
class KeelOverride {
 public:
  constexpr KeelOverride() noexcept = default;
  constexpr KeelOverride(std::nullopt_t) noexcept {}
  constexpr KeelOverride(T value) noexcept : value_(value) {}

  constexpr bool isSet() const noexcept { return value_.has_value(); }
  constexpr const std::optional<T>& value() const noexcept { return value_; }

  // The override where one is set, else base.
  constexpr T resolve(T base) const noexcept { return value_ ? *value_ : base; }

  friend constexpr bool operator==(const KeelOverride&, const KeelOverride&) = default;

 private:
  std::optional<T> value_;
};
