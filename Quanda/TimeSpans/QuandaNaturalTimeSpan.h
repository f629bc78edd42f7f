// QuandaNaturalTimeSpan: a length of time in whole seconds that cannot be negative, for durations
// that never run backwards (how long something lasts, how far apart two instants are).
//
// The one field is an unsigned 64-bit count of seconds. Arithmetic that would leave the field's
// range stops the process; the one operation that can meet a negative result in normal use,
// subtract(), reports it as an error value instead. There is deliberately no - operator.
//
//   QuandaNaturalTimeSpan meeting = QuandaNaturalTimeSpan::make(0, 1, 30, 0);  // 5400 s
//   KeelResult<QuandaNaturalTimeSpan> rest = meeting.subtract(QuandaNaturalTimeSpan(600));
//
// Archived as the bare number of seconds. Interpolable (KeelScalarInterpolable): a double
// position is floored to whole seconds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "Keel/KeelDomain.h"
#include "Keel/KeelResult.h"
#include "Quanda/TimeSpans/QuandaTimeSpanCore.h"

class QuandaNaturalTimeSpan
    : public quanda_detail::QuandaTimeSpanCore<QuandaNaturalTimeSpan, std::uint64_t> {
 public:
  // QuandaNaturalTimeSpan(seconds) from any integer type (a negative count stops the process),
  // QuandaNaturalTimeSpan(std::chrono::seconds) (a negative duration stops the process), zero,
  // makeFromDouble(x) (floor), seconds(), isZero(), asDouble(), nextUp(), nextDown(),
  // toChrono(), totalMinutes() ... totalWeeks(), roundingToMinute() ... roundingToWeek(),
  // description(), +, +=, ==, <=>: see QuandaTimeSpanCore.
  using QuandaTimeSpanCore::QuandaTimeSpanCore;

  static const QuandaNaturalTimeSpan zero;

  // days x 86400 + hours x 3600 + minutes x 60 + seconds; stops on overflow, where tryMake
  // answers nothing.
  static constexpr std::optional<QuandaNaturalTimeSpan> tryMake(std::uint64_t days,
                                                                std::uint64_t hours,
                                                                std::uint64_t minutes,
                                                                std::uint64_t seconds) noexcept {
    const auto total = quanda_detail::tryClockTotal(days, hours, minutes, seconds);
    return total ? std::optional(QuandaNaturalTimeSpan(*total)) : std::nullopt;
  }
  static constexpr QuandaNaturalTimeSpan make(std::uint64_t days, std::uint64_t hours,
                                              std::uint64_t minutes, std::uint64_t seconds) {
    return keel::valueOrStop(tryMake(days, hours, minutes, seconds),
                             "integer overflow in a span's days and clock time");
  }

  // |self - other|. Both counts are taken as signed 64-bit values first: a count of 2^63 or more
  // stops the process.
  constexpr QuandaNaturalTimeSpan absoluteDifference(QuandaNaturalTimeSpan other) const {
    const auto lhs = keel::checkedNarrow<std::int64_t>(seconds());
    const auto rhs = keel::checkedNarrow<std::int64_t>(other.seconds());
    return QuandaNaturalTimeSpan(lhs < rhs ? rhs - lhs : lhs - rhs);
  }

  // self - other, or an error when other is the longer span (a zero result is a valid span).
  // Both counts are taken as signed 64-bit values first: a count of 2^63 or more stops the
  // process.
  KeelResult<QuandaNaturalTimeSpan> subtract(QuandaNaturalTimeSpan other) const;
  // subtract without the stop: nothing where subtract would stop (a count of 2^63 or more),
  // else its result.
  std::optional<KeelResult<QuandaNaturalTimeSpan>> trySubtract(QuandaNaturalTimeSpan other) const {
    if (!keel::tryNarrow<std::int64_t>(seconds()) ||
        !keel::tryNarrow<std::int64_t>(other.seconds())) {
      return std::nullopt;
    }
    return subtract(other);
  }
};

inline constexpr QuandaNaturalTimeSpan QuandaNaturalTimeSpan::zero{0};

// The length of a domain of natural spans, whichever way round its bounds are:
// max.absoluteDifference(min).
constexpr QuandaNaturalTimeSpan absoluteRange(const KeelDomain<QuandaNaturalTimeSpan>& domain) {
  return domain.max().absoluteDifference(domain.min());
}

inline KeelResult<QuandaNaturalTimeSpan> QuandaNaturalTimeSpan::subtract(
    QuandaNaturalTimeSpan other) const {
  const auto lhs = keel::checkedNarrow<std::int64_t>(seconds());
  const auto rhs = keel::checkedNarrow<std::int64_t>(other.seconds());
  if (lhs < rhs) {
    return KeelError::fault(
        "Result would be a negative time which is unacceptable for a natural span",
        {{"timeSpan", seconds()}, {"other", other.seconds()}},
        "Quanda/Time Spans/QuandaNaturalTimeSpan", "subtract(_:)");
  }
  return QuandaNaturalTimeSpan(lhs - rhs);
}

template <>
struct std::hash<QuandaNaturalTimeSpan> : quanda_detail::QuandaTimeSpanHash<QuandaNaturalTimeSpan> {
};

template <>
struct nlohmann::adl_serializer<QuandaNaturalTimeSpan>
    : quanda_detail::QuandaWholeSecondsArchive<QuandaNaturalTimeSpan> {};
