// QuandaAbstractRelativeDiscreteTimeOfDay: a whole-second time of day on a day counted from some
// reference day — "01:00:00, +1 day" or "23:30:00, -1 day".
//
// It is what adding an amount to a QuandaAbstractNaturalTimeOfDay yields, and what a date-time
// takes to move by days and clock time at once. The value is a signed 32-bit day count and a
// natural time of day; its total, seconds(), is days * 86400 plus the time's seconds since
// midnight, and it orders by that total.
//
// normalizing(seconds) is the one place where a signed second count becomes (days, time): the day
// count is the floor of seconds / 86400, so the time is never negative (-1 second is
// (-1, 23:59:59)). Everything that carries whole seconds into days uses it.
//
//   auto late = QuandaAbstractNaturalTimeOfDay::make(23, 0, 0).value();
//   auto next = late.addingHours(2);   // (1, 01:00:00)
//   next.description();                // "01:00:00, +1 day"
//   next.seconds();                    // 90000
//
// Overflow of a 64-bit total and a day count beyond 32 bits are programming errors. Archived in
// JSON as {"days": 1, "time": 10000}.
#pragma once

#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <utility>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaTimeOfDayCore.h"
#include "Quanda/QuandaConstants.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"

namespace quanda_detail {

struct RelativeDiscreteTimeOfDayTraits {
  using Time = QuandaAbstractNaturalTimeOfDay;
  using Total = std::int64_t;
  using SecondsAmount = std::int64_t;

  // |days| * 86400 stays far below 2^63, so the total itself cannot overflow.
  static constexpr Total total(std::int32_t days, Time time) noexcept {
    return std::int64_t{days} * Quanda::SecondsIn::Gregorian::Day::count +
           time.secondsSinceDayBegan();
  }
  static constexpr Total hours(std::int32_t hours) noexcept {
    return std::int64_t{hours} * Quanda::SecondsIn::Gregorian::Hour::count;
  }
  static constexpr std::optional<Total> tryMinutes(std::int64_t minutes) noexcept {
    return keel::tryMultiply<std::int64_t>(minutes, Quanda::SecondsIn::Gregorian::Minute::count);
  }
  static constexpr std::optional<Total> trySum(Total lhs, Total rhs) noexcept {
    return keel::tryAdd(lhs, rhs);
  }
};

}  // namespace quanda_detail

class QuandaAbstractRelativeDiscreteTimeOfDay
    : private quanda_detail::RelativeTimeOfDayCore<QuandaAbstractRelativeDiscreteTimeOfDay,
                                                   quanda_detail::RelativeDiscreteTimeOfDayTraits> {
  using Core = quanda_detail::RelativeTimeOfDayCore<QuandaAbstractRelativeDiscreteTimeOfDay,
                                                    quanda_detail::RelativeDiscreteTimeOfDayTraits>;
  friend Core;

 public:
  // {.hours, .minutes, .seconds}, each optional, for adding(...).
  using Core::Amounts;
  // {.days, .time}, each a KeelOverride, for replacing(...).
  using Core::Replacement;

  // Both parts as given.
  constexpr QuandaAbstractRelativeDiscreteTimeOfDay(std::int32_t days,
                                                    QuandaAbstractNaturalTimeOfDay time) noexcept
      : Core(days, time) {}
  // The time on the reference day (days 0).
  constexpr explicit QuandaAbstractRelativeDiscreteTimeOfDay(
      QuandaAbstractNaturalTimeOfDay time) noexcept
      : Core(0, time) {}

  // (floor(seconds / 86400), the remainder as a time of day). A day count outside the signed
  // 32-bit range is a programming error; tryNormalizing answers nothing for it.
  static constexpr std::optional<QuandaAbstractRelativeDiscreteTimeOfDay> tryNormalizing(
      std::int64_t seconds) noexcept;
  static constexpr QuandaAbstractRelativeDiscreteTimeOfDay normalizing(std::int64_t seconds) {
    return keel::valueOrStop(tryNormalizing(seconds), outsideTheDayCount);
  }
  // The second count nearest to a double (halves away from zero), normalised. A double that is
  // not finite or rounds outside the signed 64-bit range is a programming error.
  static QuandaAbstractRelativeDiscreteTimeOfDay makeFromDouble(double seconds) {
    return normalizing(keel::checkedFromDouble<std::int64_t>(std::round(seconds)));
  }

  using Core::days;
  using Core::time;
  // days * 86400 + time.secondsSinceDayBegan().
  using Core::asDouble;
  using Core::seconds;

  // Add to seconds() and normalise; adding({...}) applies hours, then minutes, then seconds. The
  // try... forms answer nothing where the others would stop.
  using Core::adding;
  using Core::addingHours;
  using Core::addingMinutes;
  using Core::addingSeconds;
  using Core::tryAdding;
  using Core::tryAddingHours;
  using Core::tryAddingMinutes;
  using Core::tryAddingSeconds;
  // Absent overrides keep, present ones replace; nothing is normalised.
  using Core::replacing;

  // The next and previous second, normalised (23:59:59 steps up into the next day). Stepping
  // beyond the 32-bit day range is a programming error.
  constexpr QuandaAbstractRelativeDiscreteTimeOfDay nextUp() const {
    return normalizing(keelNextUp(seconds()));
  }
  constexpr QuandaAbstractRelativeDiscreteTimeOfDay nextDown() const {
    return normalizing(keelNextDown(seconds()));
  }

  // relative + span (either order) is addingSeconds(span.seconds()); a natural span of 2^63
  // seconds or more is a programming error.
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaAbstractRelativeDiscreteTimeOfDay relative, QuandaNaturalTimeSpan span) {
    return relative.addingSeconds(keel::checkedNarrow<std::int64_t>(span.seconds()));
  }
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaNaturalTimeSpan span, QuandaAbstractRelativeDiscreteTimeOfDay relative) {
    return relative + span;
  }
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaAbstractRelativeDiscreteTimeOfDay relative, QuandaDiscreteTimeSpan span) {
    return relative.addingSeconds(span.seconds());
  }
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaDiscreteTimeSpan span, QuandaAbstractRelativeDiscreteTimeOfDay relative) {
    return relative.addingSeconds(span.seconds());
  }
  // lhs.seconds() - rhs.seconds(): (1, 00:00:00) - (0, 23:59:59) is 1 second.
  friend constexpr QuandaDiscreteTimeSpan operator-(QuandaAbstractRelativeDiscreteTimeOfDay lhs,
                                                    QuandaAbstractRelativeDiscreteTimeOfDay rhs) {
    return QuandaDiscreteTimeSpan(keel::checkedSubtract(lhs.seconds(), rhs.seconds()));
  }

  // "08:00:00 same day", "01:00:00, +1 day", "23:30:00, -3 days".
  using Core::description;

  friend constexpr bool operator==(QuandaAbstractRelativeDiscreteTimeOfDay lhs,
                                   QuandaAbstractRelativeDiscreteTimeOfDay rhs) noexcept {
    return lhs.days() == rhs.days() && lhs.time() == rhs.time();
  }
  friend constexpr std::strong_ordering operator<=>(
      QuandaAbstractRelativeDiscreteTimeOfDay lhs,
      QuandaAbstractRelativeDiscreteTimeOfDay rhs) noexcept {
    return lhs.seconds() <=> rhs.seconds();
  }
};

static_assert(KeelScalarInterpolable<QuandaAbstractRelativeDiscreteTimeOfDay>);

constexpr std::optional<QuandaAbstractRelativeDiscreteTimeOfDay>
QuandaAbstractRelativeDiscreteTimeOfDay::tryNormalizing(std::int64_t seconds) noexcept {
  constexpr std::int64_t secondsInDay = Quanda::SecondsIn::Gregorian::Day::count;
  // Floor division: exact in integers, and equal to flooring the double quotient wherever the
  // day count fits 32 bits.
  std::int64_t days = seconds / secondsInDay;
  std::int64_t remainder = seconds % secondsInDay;
  if (remainder < 0) {
    remainder += secondsInDay;
    --days;
  }
  if (!std::in_range<std::int32_t>(days)) return std::nullopt;
  return QuandaAbstractRelativeDiscreteTimeOfDay(
      static_cast<std::int32_t>(days), QuandaAbstractNaturalTimeOfDay::makeFromSecondsSinceDayBegan(
                                           static_cast<std::uint32_t>(remainder)));
}

// The span arithmetic of the natural time of day, declared with it.
constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(QuandaAbstractNaturalTimeOfDay time,
                                                            QuandaDiscreteTimeSpan span) {
  return time.addingSeconds(span.seconds());
}
constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(QuandaDiscreteTimeSpan span,
                                                            QuandaAbstractNaturalTimeOfDay time) {
  return time.addingSeconds(span.seconds());
}
constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(QuandaAbstractNaturalTimeOfDay time,
                                                            QuandaNaturalTimeSpan span) {
  return time.addingSeconds(keel::checkedNarrow<std::int64_t>(span.seconds()));
}
constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(QuandaNaturalTimeSpan span,
                                                            QuandaAbstractNaturalTimeOfDay time) {
  return time + span;
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRelativeDiscreteTimeOfDay relative);

template <>
struct std::hash<QuandaAbstractRelativeDiscreteTimeOfDay> {
  std::size_t operator()(QuandaAbstractRelativeDiscreteTimeOfDay relative) const noexcept {
    return keel::hashFields(relative.days(), relative.time());
  }
};

// Archived as {"days": <signed 32-bit>, "time": <the time's packed number>}. A time that does not
// decode throws KeelDecodingError "Failed to create date from int"; a missing key or a number that
// does not fit is nlohmann's own error.
template <>
struct nlohmann::adl_serializer<QuandaAbstractRelativeDiscreteTimeOfDay> {
  static void to_json(nlohmann::json& json, QuandaAbstractRelativeDiscreteTimeOfDay relative);
  static QuandaAbstractRelativeDiscreteTimeOfDay from_json(const nlohmann::json& json);
};
