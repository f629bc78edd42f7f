// QuandaDiscreteTimeSpan: a signed length of time in whole seconds, for offsets in either
// direction (the difference of two date-times, a shift applied to a time of day).
//
// The one field is a signed 64-bit count of seconds. Every operation that would leave that range
// (an overflowing sum or difference, negating the smallest count, a double that does not fit)
// stops the process.
//
//   QuandaDiscreteTimeSpan shift = QuandaDiscreteTimeSpan::make({.hours = -1, .minutes = -30});
//   QuandaNaturalTimeSpan length = shift.abs();  // 5400 s
//
// Archived as the bare number of seconds. Interpolable (KeelScalarInterpolable): a double
// position is floored to whole seconds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaTimeSpanCore.h"

class QuandaDiscreteTimeSpan
    : public quanda_detail::QuandaTimeSpanCore<QuandaDiscreteTimeSpan, std::int64_t> {
 public:
  // The amounts of make(); an absent amount counts as 0.
  struct Amounts {
    std::optional<std::int64_t> days = std::nullopt;
    std::optional<std::int64_t> hours = std::nullopt;
    std::optional<std::int64_t> minutes = std::nullopt;
    std::optional<std::int64_t> seconds = std::nullopt;
  };

  // QuandaDiscreteTimeSpan(seconds) from any integer type (a count outside the signed 64-bit
  // range stops the process), QuandaDiscreteTimeSpan(std::chrono::seconds), zero,
  // makeFromDouble(x) (floor), seconds(), isZero(), isPositive(), isNegative(), asDouble(),
  // nextUp(), nextDown(), toChrono(), totalMinutes() ... totalWeeks(), roundingToMinute() ...
  // roundingToWeek(), description(), +, +=, -, -=, ==, <=>: see QuandaTimeSpanCore.
  using QuandaTimeSpanCore::QuandaTimeSpanCore;

  static const QuandaDiscreteTimeSpan zero;

  // The natural span's count; 2^63 seconds or more stops the process.
  constexpr explicit QuandaDiscreteTimeSpan(QuandaNaturalTimeSpan natural)
      : QuandaTimeSpanCore(natural.seconds()) {}

  // days x 86400 + hours x 3600 + minutes x 60 + seconds; stops on overflow, where tryMake
  // answers nothing.
  //   QuandaDiscreteTimeSpan::make({.days = 1, .hours = 2})
  static constexpr std::optional<QuandaDiscreteTimeSpan> tryMake(const Amounts& amounts) noexcept {
    const auto total =
        quanda_detail::tryClockTotal(amounts.days.value_or(0), amounts.hours.value_or(0),
                                     amounts.minutes.value_or(0), amounts.seconds.value_or(0));
    return total ? std::optional(QuandaDiscreteTimeSpan(*total)) : std::nullopt;
  }
  static constexpr QuandaDiscreteTimeSpan make(const Amounts& amounts) {
    return keel::valueOrStop(tryMake(amounts), "integer overflow in a span's days and clock time");
  }

  // The span in the other direction; stops for the smallest count, which has no negation.
  constexpr QuandaDiscreteTimeSpan inverted() const {
    return QuandaDiscreteTimeSpan(keel::checkedNegate(seconds()));
  }

  // The length without its direction; stops for the smallest count.
  constexpr QuandaNaturalTimeSpan abs() const {
    return QuandaNaturalTimeSpan(seconds() < 0 ? keel::checkedNegate(seconds()) : seconds());
  }
};

inline constexpr QuandaDiscreteTimeSpan QuandaDiscreteTimeSpan::zero{0};

template <>
struct std::hash<QuandaDiscreteTimeSpan>
    : quanda_detail::QuandaTimeSpanHash<QuandaDiscreteTimeSpan> {};

template <>
struct nlohmann::adl_serializer<QuandaDiscreteTimeSpan>
    : quanda_detail::QuandaWholeSecondsArchive<QuandaDiscreteTimeSpan> {};
