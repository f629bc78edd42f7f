// QuandaAbstractRelativeRealTimeOfDay: a fractional-second time of day on a day counted from some
// reference day — "00:00:15.500000, +1 day".
//
// The real counterpart of QuandaAbstractRelativeDiscreteTimeOfDay, sharing its shape
// (QuandaTimeOfDayCore.h): a signed 32-bit day count and a QuandaAbstractRealTimeOfDay, with the
// total seconds() = days * 86400 + the time's seconds as a double. normalizing(seconds) splits a
// double second count into (floor(seconds / 86400), the remainder as a time), so the time is never
// negative; date-times with fractional seconds reuse it.
//
//   auto time = QuandaAbstractRealTimeOfDay::make(23, 59, 30.0).value();
//   time.addingSeconds(45.5);   // (1, 00:00:15.5)
//
// Equality is exact, field by field; equals(other, tolerance) compares days, hour and minute
// exactly and the seconds with a tolerance. Ordering compares seconds() as doubles. A day count
// beyond 32 bits, and so a NaN or infinite total, is a programming error. There is no archive.
#pragma once

#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <optional>

#include "Keel/KeelHash.h"
#include "Keel/KeelPrecision.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaTimeOfDayCore.h"
#include "Quanda/QuandaConstants.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

namespace quanda_detail {

struct RelativeRealTimeOfDayTraits {
  using Time = QuandaAbstractRealTimeOfDay;
  using Total = double;
  using SecondsAmount = double;

  static constexpr Total total(std::int32_t days, Time time) noexcept {
    return static_cast<double>(days) * Quanda::SecondsIn::Gregorian::Day::count +
           time.secondsSinceDayBegan();
  }
  static constexpr Total hours(std::int32_t hours) noexcept {
    return static_cast<double>(hours) * Quanda::SecondsIn::Gregorian::Hour::count;
  }
  static constexpr std::optional<Total> tryMinutes(std::int64_t minutes) noexcept {
    return static_cast<double>(minutes) * Quanda::SecondsIn::Gregorian::Minute::count;
  }
  static constexpr std::optional<Total> trySum(Total lhs, Total rhs) noexcept { return lhs + rhs; }
};

}  // namespace quanda_detail

class QuandaAbstractRelativeRealTimeOfDay
    : private quanda_detail::RelativeTimeOfDayCore<QuandaAbstractRelativeRealTimeOfDay,
                                                   quanda_detail::RelativeRealTimeOfDayTraits> {
  using Core = quanda_detail::RelativeTimeOfDayCore<QuandaAbstractRelativeRealTimeOfDay,
                                                    quanda_detail::RelativeRealTimeOfDayTraits>;
  friend Core;

 public:
  // {.hours, .minutes, .seconds (double)}, each optional, for adding(...).
  using Core::Amounts;
  // {.days, .time}, each a KeelOverride, for replacing(...).
  using Core::Replacement;

  // Both parts as given.
  constexpr QuandaAbstractRelativeRealTimeOfDay(std::int32_t days,
                                                QuandaAbstractRealTimeOfDay time) noexcept
      : Core(days, time) {}
  // The time on the reference day (days 0).
  constexpr explicit QuandaAbstractRelativeRealTimeOfDay(QuandaAbstractRealTimeOfDay time) noexcept
      : Core(0, time) {}

  // (floor(seconds / 86400), the time made from seconds - days * 86400). A day count outside the
  // signed 32-bit range, NaN and the infinities are programming errors; tryNormalizing answers
  // nothing for them.
  static std::optional<QuandaAbstractRelativeRealTimeOfDay> tryNormalizing(double seconds) {
    constexpr double secondsInDay = Quanda::SecondsIn::Gregorian::Day::count;
    const double days = std::floor(seconds / secondsInDay);
    if (!(days >= std::numeric_limits<std::int32_t>::min() &&
          days <= std::numeric_limits<std::int32_t>::max())) {
      return std::nullopt;
    }
    return QuandaAbstractRelativeRealTimeOfDay(
        static_cast<std::int32_t>(days),
        QuandaAbstractRealTimeOfDay::makeFromSecondsSinceDayBegan(seconds - days * secondsInDay));
  }
  static QuandaAbstractRelativeRealTimeOfDay normalizing(double seconds) {
    return keel::valueOrStop(tryNormalizing(seconds), outsideTheDayCount);
  }
  static QuandaAbstractRelativeRealTimeOfDay makeFromDouble(double seconds) {
    return normalizing(seconds);
  }

  using Core::days;
  using Core::time;
  // days * 86400 + time.secondsSinceDayBegan(), as a double.
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

  // The relative time at the next (previous) representable double of seconds(), normalised.
  QuandaAbstractRelativeRealTimeOfDay nextUp() const {
    return normalizing(std::nextafter(seconds(), std::numeric_limits<double>::infinity()));
  }
  QuandaAbstractRelativeRealTimeOfDay nextDown() const {
    return normalizing(std::nextafter(seconds(), -std::numeric_limits<double>::infinity()));
  }

  // relative + span (either order) is addingSeconds(span.seconds()).
  friend QuandaAbstractRelativeRealTimeOfDay operator+(QuandaAbstractRelativeRealTimeOfDay relative,
                                                       QuandaRealTimeSpan span) {
    return relative.addingSeconds(span.seconds());
  }
  friend QuandaAbstractRelativeRealTimeOfDay operator+(
      QuandaRealTimeSpan span, QuandaAbstractRelativeRealTimeOfDay relative) {
    return relative.addingSeconds(span.seconds());
  }
  // lhs.seconds() - rhs.seconds().
  friend constexpr QuandaRealTimeSpan operator-(QuandaAbstractRelativeRealTimeOfDay lhs,
                                                QuandaAbstractRelativeRealTimeOfDay rhs) noexcept {
    return QuandaRealTimeSpan(lhs.seconds() - rhs.seconds());
  }

  // "00:00:15.500000, +1 day"; the time as QuandaAbstractRealTimeOfDay writes it.
  using Core::description;

  // Days, hour and minute exactly equal, seconds equal within the tolerance.
  constexpr bool equals(QuandaAbstractRelativeRealTimeOfDay other,
                        KeelPrecision tolerance) const noexcept {
    return days() == other.days() && time().equals(other.time(), tolerance);
  }

  friend constexpr bool operator==(QuandaAbstractRelativeRealTimeOfDay lhs,
                                   QuandaAbstractRelativeRealTimeOfDay rhs) noexcept {
    return lhs.days() == rhs.days() && lhs.time() == rhs.time();
  }
  friend constexpr std::partial_ordering operator<=>(
      QuandaAbstractRelativeRealTimeOfDay lhs, QuandaAbstractRelativeRealTimeOfDay rhs) noexcept {
    return lhs.seconds() <=> rhs.seconds();
  }
};

static_assert(KeelScalarInterpolable<QuandaAbstractRelativeRealTimeOfDay>);

// The span arithmetic of the real time of day, declared with it.
inline QuandaAbstractRelativeRealTimeOfDay operator+(QuandaAbstractRealTimeOfDay time,
                                                     QuandaRealTimeSpan span) {
  return time.addingSeconds(span.seconds());
}
inline QuandaAbstractRelativeRealTimeOfDay operator+(QuandaRealTimeSpan span,
                                                     QuandaAbstractRealTimeOfDay time) {
  return time.addingSeconds(span.seconds());
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRelativeRealTimeOfDay relative);

template <>
struct std::hash<QuandaAbstractRelativeRealTimeOfDay> {
  std::size_t operator()(QuandaAbstractRelativeRealTimeOfDay relative) const noexcept {
    return keel::hashFields(relative.days(), relative.time());
  }
};
