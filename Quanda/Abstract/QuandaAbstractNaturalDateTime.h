// QuandaAbstractNaturalDateTime: a calendar date with a whole-second time of day, in no time zone.
//
// A QuandaAbstractDate and a QuandaAbstractNaturalTimeOfDay, from 0001-01-01T00:00:00 to
// 9999-12-31T23:59:59. The value is 8 bytes and counts seconds from the date datum in O(1), so
// adding seconds, comparing and measuring distances cost a few multiplications. It reads and
// writes the RFC 3339 date-time without a zone ("2024-02-29T23:59:59") and a packed 14-digit
// number (20240229235959), and its clock arithmetic carries into the date.
//
//   auto dateTime =
//       QuandaAbstractNaturalDateTime::makeFromRfc3339String("2024-12-31T23:30:00").value();
//   dateTime.addingHours(1);                 // 2025-01-01T00:30:00
//   dateTime.next(eight, false);             // 2025-01-01T08:00:00 for eight = 08:00:00
//   dateTime.serializedToRfc3339String();    // "2024-12-31T23:30:00"
//   dateTime.description();                  // "2024:12:31T23:30:00", colons in the date too
//
// A date-time can only be made valid: the factories validate (the date first, then the time) and
// report failures as KeelResult errors; the counting factories clamp instead. Clock overflows and
// leaving 0001...9999 by arithmetic are programming errors. The shared shape of the natural and
// the real date-time lives in QuandaDateTimeCore.h; this header re-exports it member by member.
//
// It has no zone, so it converts to and from std::chrono::local_seconds (local time in chrono's
// sense). Archived in JSON as {"serializedRfc3339Numeric": 20240229235959}.
#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelDomain.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRelativeDiscreteTimeOfDay.h"
#include "Quanda/Abstract/QuandaDateTimeCore.h"
#include "Quanda/QuandaConstants.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"

namespace quanda_detail {

struct NaturalDateTimeTraits {
  using Time = QuandaAbstractNaturalTimeOfDay;
  using Second = std::uint8_t;
  using Relative = QuandaAbstractRelativeDiscreteTimeOfDay;
  using Span = QuandaDiscreteTimeSpan;
  using Count = std::uint64_t;
  using Total = std::int64_t;
  using SecondsAmount = std::int64_t;

  static constexpr std::string_view sourcePath = "Quanda/Abstract/QuandaAbstractNaturalDateTime";
};

}  // namespace quanda_detail

class QuandaAbstractNaturalDateTime
    : private quanda_detail::DateTimeCore<QuandaAbstractNaturalDateTime,
                                          quanda_detail::NaturalDateTimeTraits> {
  using Core = quanda_detail::DateTimeCore<QuandaAbstractNaturalDateTime,
                                           quanda_detail::NaturalDateTimeTraits>;
  friend Core;

 public:
  // The unvalidated fields {day, hour, minute, month, second, year}, as exchanged with the
  // calendar adapter.
  using Core::Components;
  // {.years, .months, .days, .hours, .minutes, .seconds}, each optional, for adding(...).
  using Core::Amounts;
  // {.year, .month, .day, .hour, .minute, .second}, each a KeelOverride, for replacing(...).
  using Core::Replacement;

  static constexpr std::string_view sourcePath = quanda_detail::NaturalDateTimeTraits::sourcePath;

  static const QuandaAbstractNaturalDateTime zero;    // 0001-01-01T00:00:00
  static const QuandaAbstractNaturalDateTime minInc;  // 0001-01-01T00:00:00
  static const QuandaAbstractNaturalDateTime maxInc;  // 9999-12-31T23:59:59
  // secondsSinceDatum() of maxInc.
  static constexpr std::uint64_t maxSecondsSinceDatum =
      (QuandaAbstractDate::validDaysSinceDatumRange.max() + 1ULL) *
          Quanda::SecondsIn::Gregorian::Day::count -
      1;

  // ---- Making date-times ----------------------------------------------------------------------

  // Pairs a date and a time as they are, without checks.
  constexpr QuandaAbstractNaturalDateTime(QuandaAbstractDate date,
                                          QuandaAbstractNaturalTimeOfDay time) noexcept
      : Core(date, time) {}

  // make(year, month, day, hour, minute, second): the date's checks ("Invalid year", "Invalid
  // month", "Invalid day for month in year"), then the time's ("Invalid hour", and the time's
  // kept texts for the minute and the second), the failure wrapped with the six proposed fields.
  // make(components) wraps that failure once more.
  using Core::make;
  // "YYYY-MM-DDTHH:MM:SS": split at every upper-case 'T' into exactly two pieces ("Unexpected
  // number of T tokens"), the first read as QuandaAbstractDate::makeFromIso8601String and the
  // second as QuandaAbstractNaturalTimeOfDay::makeFromIso8601String, whose failures come back
  // wrapped. No zone or offset and no fraction: "2024-02-29T23:59:59Z" fails on the second token.
  using Core::makeFromRfc3339String;
  // YYYYMMDDhhmmss: the date of n / 1000000 (QuandaAbstractDate::makeFromIso8601Numeric), then the
  // time of n % 1000000 (QuandaAbstractNaturalTimeOfDay::makeFromIso8601Numeric), each failure
  // wrapped.
  static KeelResult<QuandaAbstractNaturalDateTime> makeFromRfc3339Numeric(
      std::uint64_t rfc3339Numeric);
  // Never fails for a count whose day count fits 32 bits (a larger one is a programming error).
  // The day count is clamped as QuandaAbstractDate::makeFromDaysSinceDatum clamps it, and the
  // remainder gives the time: a count past maxSecondsSinceDatum lands on 9999-12-31 at the time
  // of its remainder, not on maxInc.
  static constexpr QuandaAbstractNaturalDateTime makeFromSecondsSinceDatum(
      std::uint64_t secondsSinceDatum);
  // The seconds count nearest to a double position (halves away from zero). A position that is
  // not finite or rounds outside 0 ... 2^64-1 is a programming error.
  static QuandaAbstractNaturalDateTime makeFromDouble(double secondsSinceDatum);
  // The date at 00:00:00, and (deliberately) the following date at 00:00:00.
  using Core::makeAtBeginningOf;
  using Core::makeAtEndOf;

  // Interoperation with <chrono>: a date-time has no zone, so it is local time in chrono's sense.
  // Local times from 0001-01-01T00:00:00 to 9999-12-31T23:59:59 convert; others are an error.
  static KeelResult<QuandaAbstractNaturalDateTime> make(std::chrono::local_seconds localSeconds);
  constexpr std::chrono::local_seconds localSeconds() const noexcept {
    return std::chrono::local_seconds{
        std::chrono::seconds{static_cast<std::int64_t>(secondsSinceDatum()) -
                             quanda_detail::datumSecondsBeforeUnixEpoch}};
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

  // time().secondsSinceDayBegan(), unsigned 32-bit.
  using Core::secondsSinceMidnight;
  // date().daysSinceDatum() * 86400 + secondsSinceMidnight(), unsigned 64-bit.
  using Core::asDouble;
  using Core::secondsSinceDatum;

  // (year * 10000 + month * 100 + day) * 1000000 + hour * 10000 + minute * 100 + second:
  // 20240305070809.
  constexpr std::uint64_t serializedToRfc3339Numeric() const noexcept {
    return date().serializeToIso8601Numeric() * 1000000 + time().serializeToIso8601Numeric();
  }
  // "%04d-%02d-%02dT%02d:%02d:%02d": "2024-02-29T23:59:59", written digit by digit.
  std::string serializedToRfc3339String() const {
    return quanda_detail::formatWholeSecondDateTime(date(), time(), '-');
  }
  // "%04d:%02d:%02dT%02d:%02d:%02d": "2024:02:29T23:59:59". Deliberately colons in the date part
  // too, unlike the RFC 3339 string.
  std::string description() const {
    return quanda_detail::formatWholeSecondDateTime(date(), time(), ':');
  }

  // ---- Stepping, arithmetic and comparison ----------------------------------------------------

  // makeFromSecondsSinceDatum of the next (previous) second count, saturating at the ends of the
  // unsigned 64-bit range. Past maxInc that count lands on 9999-12-31 at 00:00:00, as
  // makeFromSecondsSinceDatum says.
  constexpr QuandaAbstractNaturalDateTime nextUp() const {
    return makeFromSecondsSinceDatum(keelNextUp(secondsSinceDatum()));
  }
  constexpr QuandaAbstractNaturalDateTime nextDown() const {
    return makeFromSecondsSinceDatum(keelNextDown(secondsSinceDatum()));
  }

  // The date's addingYears / addingMonths / addingDays (with their quirks), the time kept.
  using Core::addingDays;
  using Core::addingMonths;
  using Core::addingYears;
  // The clock amount carried into the date. A 64-bit overflow, a day count beyond 32 bits or
  // leaving 0001...9999 is a programming error.
  using Core::addingHours;
  using Core::addingMinutes;
  using Core::addingSeconds;
  // adding({.days = 1, .hours = 2}): seconds, minutes, hours, days, months, years, in that order.
  using Core::adding;

  // next(timeOfDay, allowingSelf): the first date-time at that time of day from this one on.
  using Core::next;

  // Rounded on secondsSinceDatum() to the nearest minute, hour or day (halves up), or floored.
  using Core::flooringToDay;
  using Core::flooringToMinute;
  using Core::roundingToDay;
  using Core::roundingToHour;
  using Core::roundingToMinute;

  // replacing({.day = 1, .hour = 9}): the date's and the time's replacing(), which clamp.
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

  // The other operators (+ and - with a QuandaDiscreteTimeSpan or a
  // QuandaAbstractRelativeDiscreteTimeOfDay, the difference of two date-times as a
  // QuandaDiscreteTimeSpan, ==) come with the core; the natural span's are here. A natural span
  // of 2^63 seconds or more is a programming error.
  friend constexpr QuandaAbstractNaturalDateTime operator+(QuandaAbstractNaturalDateTime dateTime,
                                                           QuandaNaturalTimeSpan span) {
    return dateTime.addingSeconds(keel::checkedNarrow<std::int64_t>(span.seconds()));
  }
  friend constexpr QuandaAbstractNaturalDateTime operator+(QuandaNaturalTimeSpan span,
                                                           QuandaAbstractNaturalDateTime dateTime) {
    return dateTime + span;
  }

  // The calendar and clock order, which is the order of the packed numbers.
  friend constexpr std::strong_ordering operator<=>(QuandaAbstractNaturalDateTime lhs,
                                                    QuandaAbstractNaturalDateTime rhs) noexcept {
    return lhs.serializedToRfc3339Numeric() <=> rhs.serializedToRfc3339Numeric();
  }
};

static_assert(sizeof(QuandaAbstractNaturalDateTime) <= 8);
static_assert(KeelScalarInterpolable<QuandaAbstractNaturalDateTime>);

// ---- Inline definitions ------------------------------------------------------------------------

constexpr QuandaAbstractNaturalDateTime QuandaAbstractNaturalDateTime::makeFromSecondsSinceDatum(
    std::uint64_t secondsSinceDatum) {
  constexpr std::uint64_t secondsInDay = Quanda::SecondsIn::Gregorian::Day::count;
  const std::uint64_t days = secondsSinceDatum / secondsInDay;
  return QuandaAbstractNaturalDateTime(
      QuandaAbstractDate::makeFromDaysSinceDatum(keel::checkedNarrow<std::uint32_t>(days)),
      QuandaAbstractNaturalTimeOfDay::makeFromSecondsSinceDayBegan(
          static_cast<std::uint32_t>(secondsSinceDatum - days * secondsInDay)));
}

inline constexpr QuandaAbstractNaturalDateTime QuandaAbstractNaturalDateTime::zero{
    QuandaAbstractDate::validRange.min(), QuandaAbstractNaturalTimeOfDay::zero};
inline constexpr QuandaAbstractNaturalDateTime QuandaAbstractNaturalDateTime::minInc{
    QuandaAbstractDate::validRange.min(), QuandaAbstractNaturalTimeOfDay::zero};
inline constexpr QuandaAbstractNaturalDateTime QuandaAbstractNaturalDateTime::maxInc{
    QuandaAbstractDate::validRange.max(), QuandaAbstractNaturalTimeOfDay::maxInc};

static_assert(QuandaAbstractNaturalDateTime::maxInc.secondsSinceDatum() ==
              QuandaAbstractNaturalDateTime::maxSecondsSinceDatum);

// ---- The date's combinations with whole-second times and spans
// -----------------------------------

// The date at that time.
constexpr QuandaAbstractNaturalDateTime operator+(QuandaAbstractDate date,
                                                  QuandaAbstractNaturalTimeOfDay time) noexcept {
  return QuandaAbstractNaturalDateTime(date, time);
}
// The relative time's total seconds split into whole days and a time of day: the date moved by
// those days, at that time.
constexpr QuandaAbstractNaturalDateTime operator+(
    QuandaAbstractDate date, QuandaAbstractRelativeDiscreteTimeOfDay relative) {
  const auto normalized = QuandaAbstractRelativeDiscreteTimeOfDay::normalizing(relative.seconds());
  return QuandaAbstractNaturalDateTime(date.addingDays(normalized.days()), normalized.time());
}
// The date-time that many seconds after the date's beginning (before it for a negative span).
constexpr QuandaAbstractNaturalDateTime operator+(QuandaAbstractDate date,
                                                  QuandaDiscreteTimeSpan span) {
  return QuandaAbstractNaturalDateTime::makeAtBeginningOf(date).addingSeconds(span.seconds());
}
// As above; a natural span of 2^63 seconds or more is a programming error.
constexpr QuandaAbstractNaturalDateTime operator+(QuandaAbstractDate date,
                                                  QuandaNaturalTimeSpan span) {
  return QuandaAbstractNaturalDateTime::makeAtBeginningOf(date) + span;
}
// The span taken from the date's beginning (daysSinceDatum * 86400 seconds), clamped at 0: a
// span reaching before the datum gives 0001-01-01T00:00:00.
constexpr QuandaAbstractNaturalDateTime operator-(QuandaAbstractDate date,
                                                  QuandaDiscreteTimeSpan span) {
  const std::int64_t seconds = keel::checkedSubtract(
      std::int64_t{date.daysSinceDatum()} * Quanda::SecondsIn::Gregorian::Day::count,
      span.seconds());
  return QuandaAbstractNaturalDateTime::makeFromSecondsSinceDatum(
      seconds < 0 ? 0 : static_cast<std::uint64_t>(seconds));
}

constexpr QuandaAbstractNaturalDateTime QuandaAbstractDate::makeNaturalBeginningOfDay()
    const noexcept {
  return QuandaAbstractNaturalDateTime::makeAtBeginningOf(*this);
}
constexpr QuandaAbstractNaturalDateTime QuandaAbstractDate::makeNaturalEndOfDay() const {
  return QuandaAbstractNaturalDateTime::makeAtEndOf(*this);
}
constexpr KeelDomain<QuandaAbstractNaturalDateTime> QuandaAbstractDate::makeNaturalDateTimeRange()
    const {
  return {makeNaturalBeginningOfDay(), makeNaturalEndOfDay()};
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractNaturalDateTime dateTime);
std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractNaturalDateTime::Components& components);

template <>
struct std::hash<QuandaAbstractNaturalDateTime> {
  std::size_t operator()(QuandaAbstractNaturalDateTime dateTime) const noexcept {
    return keel::hashFields(dateTime.date(), dateTime.time());
  }
};

template <>
struct std::hash<QuandaAbstractNaturalDateTime::Components> {
  std::size_t operator()(
      const QuandaAbstractNaturalDateTime::Components& components) const noexcept {
    return keel::hashFields(components.day, components.hour, components.minute, components.month,
                            components.second, components.year);
  }
};

// Archived as {"serializedRfc3339Numeric": <the packed number>}. A number that is not a valid
// date-time throws KeelDecodingError "Failed to create dateTime from numeric"; a missing key, a
// document that is not an object or a value that is not an unsigned 64-bit integer is nlohmann's
// own error.
template <>
struct nlohmann::adl_serializer<QuandaAbstractNaturalDateTime> {
  static void to_json(nlohmann::json& json, QuandaAbstractNaturalDateTime dateTime);
  static QuandaAbstractNaturalDateTime from_json(const nlohmann::json& json);
};
