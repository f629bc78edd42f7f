// KeelPrecision: the tolerance used wherever fractional seconds are compared.
//
// A precision is an absolute tolerance in the compared unit. keelEquals(a, b, p) holds when a and b
// are equal (infinities included) or differ by at most p's tolerance; NaN equals nothing.
#pragma once

class KeelPrecision {
 public:
  constexpr explicit KeelPrecision(double absoluteTolerance) noexcept
      : absoluteTolerance_(absoluteTolerance < 0 ? -absoluteTolerance : absoluteTolerance) {}

  constexpr double absoluteTolerance() const noexcept { return absoluteTolerance_; }

  static const KeelPrecision coarse;  // 1e-3: milliseconds
  static const KeelPrecision medium;  // 1e-6: microseconds
  static const KeelPrecision fine;    // 1e-9: nanoseconds
  static const KeelPrecision exact;   // 0: bit-for-bit equality of values

  friend constexpr bool operator==(const KeelPrecision&, const KeelPrecision&) = default;

 private:
  double absoluteTolerance_;
};

inline constexpr KeelPrecision KeelPrecision::coarse{1e-3};
inline constexpr KeelPrecision KeelPrecision::medium{1e-6};
inline constexpr KeelPrecision KeelPrecision::fine{1e-9};
inline constexpr KeelPrecision KeelPrecision::exact{0.0};

// The tolerant comparison of two doubles.
constexpr bool keelEquals(double lhs, double other, KeelPrecision tolerance) noexcept {
  if (lhs == other) return true;
  const double difference = lhs > other ? lhs - other : other - lhs;
  return difference <= tolerance.absoluteTolerance();
}
