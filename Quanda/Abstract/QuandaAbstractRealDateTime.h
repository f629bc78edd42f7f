// QuandaAbstractRealDateTime: a calendar date with a fractional-second time of day, in no time
// zone.
//
// The real counterpart of QuandaAbstractNaturalDateTime: a QuandaAbstractDate and a
// QuandaAbstractRealTimeOfDay (a double second below 60), from 0001-01-01T00:00:00.0 to
// 9999-12-31T23:59:59.99999999999999. It shares the natural kind's shape (QuandaDateTimeCore.h):
// the same factories and validation order, the same "date T time" parser (here with a decimal
// second), the same carry of clock amounts into the date, in double precision. The seconds are
// stored as given; only the text cuts them to six fraction digits, in the process's default
// locale (a German locale writes a decimal comma).
//
//   auto dateTime =
//       QuandaAbstractRealDateTime::makeFromRfc3339String("2024-03-05T07:08:09.25").value();
//   dateTime.serializedToRfc3339String();   // "2024-03-05T07:08:09.250000"
//   dateTime.addingSeconds(-0.5);           // 2024-03-05T07:08:08.750000
//   dateTime.makeNatural();                 // 2024-03-05T07:08:09 (nearest second)
//
// Equality is exact, field by field; equals(other, tolerance) compares the seconds with a
// tolerance. It converts to and from std::chrono::local_time with double seconds. There is no
// packed number and no archive.
#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "Keel/KeelDomain.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelPrecision.h"
#include "Keel/KeelResult.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRelativeRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaDateTimeCore.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

namespace quanda_detail {

struct RealDateTimeTraits {
  using Time = QuandaAbstractRealTimeOfDay;
  using Second = double;
  using Relative = QuandaAbstractRelativeRealTimeOfDay;
  using Span = QuandaRealTimeSpan;
  using Count = double;
  using Total = double;
  using SecondsAmount = double;

  static constexpr std::string_view sourcePath = "Quanda/Abstract/QuandaAbstractRealDateTime";
};

}  // namespace quanda_detail

class QuandaAbstractRealDateTime
    : private quanda_detail::DateTimeCore<QuandaAbstractRealDateTime,
                                          quanda_detail::RealDateTimeTraits> {
  using Core =
      quanda_detail::DateTimeCore<QuandaAbstractRealDateTime, quanda_detail::RealDateTimeTraits>;
  friend Core;

 public:
  // The unvalidated fields {day, hour, minute, month, second (double), year}, as exchanged with
  // the calendar adapter.
  using Core::Components;
  // {.years, .months, .days, .hours, .minutes, .seconds (double)}, each optional, for adding(...).
  using Core::Amounts;
  // {.year, .month, .day, .hour, .minute, .second (double)}, each a KeelOverride, for
  // replacing(...).
  using Core::Replacement;

  static constexpr std::string_view sourcePath = quanda_detail::RealDateTimeTraits::sourcePath;

  static const QuandaAbstractRealDateTime zero;    // 0001-01-01T00:00:00.0
  static const QuandaAbstractRealDateTime minInc;  // 0001-01-01T00:00:00.0
  static const QuandaAbstractRealDateTime maxInc;  // 9999-12-31T23:59:59.99999999999999

  // ---- Making date-times ----------------------------------------------------------------------

  // Pairs a date and a time as they are, without checks.
  constexpr QuandaAbstractRealDateTime(QuandaAbstractDate date,
                                       QuandaAbstractRealTimeOfDay time) noexcept
      : Core(date, time) {}
  // The same date, the time with its whole second as a double: exact.
  constexpr explicit QuandaAbstractRealDateTime(QuandaAbstractNaturalDateTime dateTime) noexcept
      : Core(dateTime.date(), QuandaAbstractRealTimeOfDay(dateTime.time())) {}

  // make(year, month, day, hour, minute, second): the date's checks, then the real time's
  // ("Invalid hour", "Invalid minute", "Invalid second"), the failure wrapped with the six
  // proposed fields. make(components) wraps that failure once more.
  using Core::make;
  // "YYYY-MM-DDTHH:MM:SS.ffffff": split at every upper-case 'T' into exactly two pieces
  // ("Unexpected number of T tokens"), the date read as QuandaAbstractDate::makeFromIso8601String
  // and the time as QuandaAbstractRealTimeOfDay::makeFromIso8601String (any decimal second).
  using Core::makeFromRfc3339String;
  // Never fails for a finite count from 0 whose day count is below 2^32 (anything else is a
  // programming error): the day count floor(s / 86400) is clamped as
  // QuandaAbstractDate::makeFromDaysSinceDatum clamps it, and the remainder, clamped into the
  // day, gives the time.
  static QuandaAbstractRealDateTime makeFromSecondsSinceDatum(double secondsSinceDatum);
  static QuandaAbstractRealDateTime makeFromDouble(double secondsSinceDatum) {
    return makeFromSecondsSinceDatum(secondsSinceDatum);
  }
  // The date at 00:00:00.0, and (deliberately) the following date at 00:00:00.0.
  using Core::makeAtBeginningOf;
  using Core::makeAtEndOf;

  // The natural date-time at the nearest whole second (halves away from zero), which can carry
  // into the next minute, hour or date: 2024-12-31T23:59:59.5 gives 2025-01-01T00:00:00. A count
  // that is not finite or rounds outside 0 ... 2^64-1 is a programming error.
  QuandaAbstractNaturalDateTime makeNatural() const;

  // Interoperation with <chrono>: a date-time has no zone, so it is local time in chrono's sense.
  // Finite local times from 0001-01-01T00:00:00 up to (not including) 10000-01-01T00:00:00
  // convert; others are an error. The days and the time within the day are converted apart, so
  // the fraction survives as far as the duration's double holds it.
  static KeelResult<QuandaAbstractRealDateTime> make(
      std::chrono::local_time<std::chrono::duration<double>> localTime);
  std::chrono::local_time<std::chrono::duration<double>> localTime() const noexcept {
    const std::int64_t days =
        std::int64_t{date().daysSinceDatum()} - quanda_detail::datumDaysBeforeUnixEpoch;
    return std::chrono::local_time<std::chrono::duration<double>>{std::chrono::duration<double>{
        static_cast<double>(days * Quanda::SecondsIn::Gregorian::Day::count) +
        secondsSinceMidnight()}};
  }

  // ---- Fields, counts and serialised forms ----------------------------------------------------

  using Core::components;
  using Core::date;
  using Core::day;
  using Core::hour;
  using Core::isMidday;
  using Core::isMidnight;
  using Core::minute;
  using Core::month;
  using Core::second;
  using Core::time;
  using Core::year;

  // time().secondsSinceDayBegan(), a double.
  using Core::secondsSinceMidnight;
  // date().daysSinceDatum() * 86400 + secondsSinceMidnight(), a double (whose precision at these
  // magnitudes is some microseconds).
  using Core::asDouble;
  using Core::secondsSinceDatum;

  // "%04d-%02d-%02dT%02d:%02d:" followed by the seconds with two integer and six fraction digits,
  // cut toward zero, in the process's default locale: "2024-03-05T07:08:09.250000". If the
  // platform formats nothing, the seconds part is empty. description() is the same text.
  std::string serializedToRfc3339String() const;
  std::string description() const { return serializedToRfc3339String(); }

  // ---- Stepping, arithmetic and comparison ----------------------------------------------------

  // makeFromSecondsSinceDatum of the next (previous) representable double of secondsSinceDatum().
  // The predecessor of the datum's midnight is that midnight itself, as with the natural kind; at
  // the top, the count lands on the last date as makeFromSecondsSinceDatum says.
  QuandaAbstractRealDateTime nextUp() const;
  QuandaAbstractRealDateTime nextDown() const;

  // The date's addingYears / addingMonths / addingDays (with their quirks), the time kept.
  using Core::addingDays;
  using Core::addingMonths;
  using Core::addingYears;
  // The clock amount carried into the date, in doubles. A day count beyond 32 bits (NaN and the
  // infinities included) or leaving 0001...9999 is a programming error.
  using Core::addingHours;
  using Core::addingMinutes;
  using Core::addingSeconds;
  // adding({.days = 1, .seconds = 0.5}): seconds, minutes, hours, days, months, years.
  using Core::adding;

  // next(timeOfDay, allowingSelf), comparing the times' seconds since midnight as doubles.
  using Core::next;

  // Rounded on secondsSinceDatum() to the nearest minute, hour or day (halves up), or floored.
  using Core::flooringToDay;
  using Core::flooringToMinute;
  using Core::roundingToDay;
  using Core::roundingToHour;
  using Core::roundingToMinute;

  // replacing({.second = 30.5}): the date's and the time's replacing(), which clamp.
  using Core::replacing;

  // The steps above for amounts taken from outside (a person, a file): the same result where it
  // lies in 0001...9999 and the step reaches it by its own rule, nothing where the step would stop,
  // clamp (rounding past the last second) or leave those years.
  using Core::tryAdding;
  using Core::tryAddingDays;
  using Core::tryAddingHours;
  using Core::tryAddingMinutes;
  using Core::tryAddingMonths;
  using Core::tryAddingSeconds;
  using Core::tryAddingYears;
  using Core::tryFlooringToMinute;
  using Core::tryNext;
  using Core::tryRoundingToDay;
  using Core::tryRoundingToHour;
  using Core::tryRoundingToMinute;

  // Same date, hour and minute exactly; the seconds equal within the tolerance.
  constexpr bool equals(QuandaAbstractRealDateTime other, KeelPrecision tolerance) const noexcept {
    return date() == other.date() && time().equals(other.time(), tolerance);
  }

  // The other operators (+ and - with a QuandaRealTimeSpan or a
  // QuandaAbstractRelativeRealTimeOfDay, the difference of two date-times as a QuandaRealTimeSpan
  // of the difference of their secondsSinceDatum(), ==) come with the core.

  // The order of secondsSinceDatum() as doubles. That sum rounds to the double's precision (some
  // microseconds in our era), so date-times whose seconds differ by less order as equivalent
  // although == (exact, field by field) tells them apart: 2024-03-05T10:00:00.000001 and
  // 2024-03-05T10:00:00.0 are equivalent and unequal. The order is therefore weak: do not key an
  // ordered container (std::set, std::map) by real date-times, or two distinct values collide;
  // use std::unordered_set, or the natural kind. A date in year 0 has no day count, so ordering a
  // date-time in it is a programming error (see QuandaAbstractDate::daysSinceDatum).
  friend constexpr std::weak_ordering operator<=>(QuandaAbstractRealDateTime lhs,
                                                  QuandaAbstractRealDateTime rhs) noexcept {
    const double left = lhs.secondsSinceDatum();
    const double right = rhs.secondsSinceDatum();
    if (left < right) return std::weak_ordering::less;
    if (right < left) return std::weak_ordering::greater;
    return std::weak_ordering::equivalent;
  }
};

static_assert(KeelScalarInterpolable<QuandaAbstractRealDateTime>);

inline constexpr QuandaAbstractRealDateTime QuandaAbstractRealDateTime::zero{
    QuandaAbstractDate::validRange.min(), QuandaAbstractRealTimeOfDay::zero};
inline constexpr QuandaAbstractRealDateTime QuandaAbstractRealDateTime::minInc{
    QuandaAbstractDate::validRange.min(), QuandaAbstractRealTimeOfDay::zero};
inline constexpr QuandaAbstractRealDateTime QuandaAbstractRealDateTime::maxInc{
    QuandaAbstractDate::validRange.max(), QuandaAbstractRealTimeOfDay::maxInc};

// ---- The date's combinations with fractional-second times and spans -----------------------------

// The date at that time.
constexpr QuandaAbstractRealDateTime operator+(QuandaAbstractDate date,
                                               QuandaAbstractRealTimeOfDay time) noexcept {
  return QuandaAbstractRealDateTime(date, time);
}
// The real date-time that many seconds after the date's beginning (before it for a negative
// span).
inline QuandaAbstractRealDateTime operator+(QuandaAbstractDate date, QuandaRealTimeSpan span) {
  return QuandaAbstractRealDateTime::makeAtBeginningOf(date).addingSeconds(span.seconds());
}

constexpr QuandaAbstractRealDateTime QuandaAbstractDate::makeRealBeginningOfDay() const noexcept {
  return QuandaAbstractRealDateTime::makeAtBeginningOf(*this);
}
constexpr QuandaAbstractRealDateTime QuandaAbstractDate::makeRealEndOfDay() const {
  return QuandaAbstractRealDateTime::makeAtEndOf(*this);
}
constexpr KeelDomain<QuandaAbstractRealDateTime> QuandaAbstractDate::makeRealDateTimeRange() const {
  return {makeRealBeginningOfDay(), makeRealEndOfDay()};
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRealDateTime dateTime);
std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractRealDateTime::Components& components);

template <>
struct std::hash<QuandaAbstractRealDateTime> {
  std::size_t operator()(QuandaAbstractRealDateTime dateTime) const noexcept {
    return keel::hashFields(dateTime.date(), dateTime.time());
  }
};

template <>
struct std::hash<QuandaAbstractRealDateTime::Components> {
  std::size_t operator()(const QuandaAbstractRealDateTime::Components& components) const noexcept {
    const std::size_t seed =
        keel::hashFields(components.day, components.hour, components.minute, components.month);
    return keel::hashCombine(keel::hashCombine(seed, keel::hashDouble(components.second)),
                             std::hash<std::uint16_t>{}(components.year));
  }
};
