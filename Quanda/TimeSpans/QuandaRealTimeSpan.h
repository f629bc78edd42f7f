// QuandaRealTimeSpan: a signed length of time in fractional seconds, for differences of epoch
// intervals and for interpolation.
//
// The one field is a double. Arithmetic is plain double arithmetic and never fails: infinities
// and NaN propagate. Equality is exact; equals() compares within a KeelPrecision.
//
//   QuandaRealTimeSpan lap = QuandaRealTimeSpan::make(0, 0, 1, 0.5);  // 60.5 s
//   double laps = QuandaRealTimeSpan(242.0) / lap;                     // 4.0
//
// There is no archived form.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "Keel/KeelMathUtil.h"
#include "Keel/KeelPrecision.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaTimeSpanCore.h"

class QuandaRealTimeSpan : public quanda_detail::QuandaTimeSpanCore<QuandaRealTimeSpan, double> {
 public:
  // QuandaRealTimeSpan(seconds), QuandaRealTimeSpan(std::chrono::duration<double>), zero,
  // makeFromDouble(x), seconds(), isZero(), isPositive(), isNegative(), asDouble(), nextUp(),
  // nextDown() (the neighbouring doubles), toChrono(), description(), +, +=, -, -=, ==, <=>:
  // see QuandaTimeSpanCore.
  using QuandaTimeSpanCore::QuandaTimeSpanCore;

  static const QuandaRealTimeSpan zero;

  // The natural span's count as a double (rounded to the nearest double above 2^53).
  constexpr explicit QuandaRealTimeSpan(QuandaNaturalTimeSpan natural) noexcept
      : QuandaTimeSpanCore(natural.asDouble()) {}

  // ((days x 86400 + hours x 3600) + minutes x 60) + seconds, added in that order in doubles.
  static constexpr QuandaRealTimeSpan make(std::uint64_t days, std::uint64_t hours,
                                           std::uint64_t minutes, double seconds) noexcept {
    return QuandaRealTimeSpan(*quanda_detail::tryClockTotal(days, hours, minutes, seconds));
  }
  // The same, nothing where the sum is not finite.
  static constexpr std::optional<QuandaRealTimeSpan> tryMake(std::uint64_t days,
                                                             std::uint64_t hours,
                                                             std::uint64_t minutes,
                                                             double seconds) noexcept {
    return finite(*quanda_detail::tryClockTotal(days, hours, minutes, seconds));
  }

  QuandaRealTimeSpan abs() const noexcept { return QuandaRealTimeSpan(std::fabs(seconds())); }

  // The seconds rounded to the nearest multiple of step's seconds (halves away from zero), down
  // to one, and up to one (KeelMathUtil).
  QuandaRealTimeSpan rounded(QuandaRealTimeSpan step) const {
    return QuandaRealTimeSpan(KeelMathUtil::roundTo(seconds(), step.seconds()));
  }
  QuandaRealTimeSpan floored(QuandaRealTimeSpan step) const {
    return QuandaRealTimeSpan(KeelMathUtil::floor(seconds(), step.seconds()));
  }
  QuandaRealTimeSpan ceilled(QuandaRealTimeSpan step) const {
    return QuandaRealTimeSpan(KeelMathUtil::ceil(seconds(), step.seconds()));
  }
  // rounded(step), nothing where the result is not finite.
  std::optional<QuandaRealTimeSpan> tryRounded(QuandaRealTimeSpan step) const {
    return finite(rounded(step).seconds());
  }

  // Equality within the tolerance (keelEquals on the seconds).
  constexpr bool equals(QuandaRealTimeSpan other, KeelPrecision tolerance) const noexcept {
    return keelEquals(seconds(), other.seconds(), tolerance);
  }

  friend constexpr QuandaRealTimeSpan operator*(QuandaRealTimeSpan span, double factor) noexcept {
    return QuandaRealTimeSpan(span.seconds() * factor);
  }
  friend constexpr QuandaRealTimeSpan operator*(double factor, QuandaRealTimeSpan span) noexcept {
    return QuandaRealTimeSpan(factor * span.seconds());
  }
  friend constexpr QuandaRealTimeSpan operator/(QuandaRealTimeSpan span, double divisor) noexcept {
    return QuandaRealTimeSpan(span.seconds() / divisor);
  }
  // The ratio of two lengths.
  friend constexpr double operator/(QuandaRealTimeSpan lhs, QuandaRealTimeSpan rhs) noexcept {
    return lhs.seconds() / rhs.seconds();
  }
  // A span of number / span.seconds() seconds: the plain quotient, kept so on purpose (it is not
  // the reciprocal of a rate).
  friend constexpr QuandaRealTimeSpan operator/(double number, QuandaRealTimeSpan span) noexcept {
    return QuandaRealTimeSpan(number / span.seconds());
  }
};

inline constexpr QuandaRealTimeSpan QuandaRealTimeSpan::zero{0};

template <>
struct std::hash<QuandaRealTimeSpan> : quanda_detail::QuandaTimeSpanHash<QuandaRealTimeSpan> {};
