// QuandaAbstractNaturalTimeOfDay: a time of day in whole seconds that belongs to no date, time
// zone or calendar.
//
// An hour (0...23), a minute (0...59) and a second (0...59) of a 24-hour day; there is no leap
// second. The value is 3 bytes, orders as a clock does, reads and writes "hh:mm:ss", "hhmmss" and
// the packed number hhmmss, and counts seconds since midnight. Adding hours, minutes or seconds
// never wraps silently: the result is a QuandaAbstractRelativeDiscreteTimeOfDay, which carries
// the whole days crossed.
//
//   auto time = QuandaAbstractNaturalTimeOfDay::make(22, 30, 0).value();
//   time.serializeToIso8601String();     // "22:30:00"
//   time.addingHours(3);                 // 01:30:00, +1 day
//   time.secondsSinceDayBegan();         // 81000
//
// A time can only be made valid: the factories validate and report failures as KeelResult errors;
// the counting factories clamp or wrap instead of failing. One of them keeps a deliberate quirk,
// documented where it is declared. The shared shape of the natural and the real time of day lives
// in QuandaTimeOfDayCore.h; this header re-exports it member by member.
//
// Archived in JSON as its packed number (07:05:09 is 70509).
#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/Abstract/QuandaTimeOfDayCore.h"
#include "Quanda/QuandaConstants.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"

class QuandaAbstractNaturalTimeOfDay;
class QuandaAbstractRelativeDiscreteTimeOfDay;

namespace quanda_detail {

struct NaturalTimeOfDayTraits {
  using Second = std::uint8_t;
  using SecondsAmount = std::int64_t;
  using Relative = QuandaAbstractRelativeDiscreteTimeOfDay;

  static constexpr std::string_view sourcePath = "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay";
  // The minute and the second checks report these texts; callers match on them, so they stay.
  static constexpr std::string_view invalidMinuteMessage = "Invalid hour";
  static constexpr std::string_view invalidSecondMessage = "Invalid day for month in year";
  // "Unexpected number of tokens" carries the string alone; a validation failure of the parsed
  // tokens carries the string and the tokens.
  static constexpr bool tokenCountFailureListsTokens = false;
  static constexpr bool validationFailureListsTokens = true;

  static constexpr bool isValidSecond(Second second) noexcept {
    return Quanda::SecondsIn::Gregorian::Minute::validZeroBasedDomain.contains(second);
  }
  static constexpr Second clampSecond(Second second) noexcept {
    return Quanda::SecondsIn::Gregorian::Minute::validZeroBasedDomain.clamp(second);
  }
  static std::optional<Second> parseSecond(std::string_view token) noexcept;
};

}  // namespace quanda_detail

class QuandaAbstractNaturalTimeOfDay
    : private quanda_detail::TimeOfDayCore<QuandaAbstractNaturalTimeOfDay,
                                           quanda_detail::NaturalTimeOfDayTraits> {
  using Core = quanda_detail::TimeOfDayCore<QuandaAbstractNaturalTimeOfDay,
                                            quanda_detail::NaturalTimeOfDayTraits>;
  friend Core;

 public:
  // The unvalidated fields {hour, minute, second}, as exchanged with the calendar adapter.
  using Core::Components;
  // {.hours, .minutes, .seconds}, each optional, for adding(...).
  using Core::Amounts;
  // {.hour, .minute, .second}, each a KeelOverride, for replacing(...).
  using Core::Replacement;

  static constexpr std::string_view sourcePath = quanda_detail::NaturalTimeOfDayTraits::sourcePath;

  static const QuandaAbstractNaturalTimeOfDay zero;    // 00:00:00
  static const QuandaAbstractNaturalTimeOfDay minInc;  // 00:00:00
  static const QuandaAbstractNaturalTimeOfDay maxInc;  // 23:59:59

  // ---- Making times of day ------------------------------------------------------------------

  // make(hour, minute, second) checks, in order: hour in 0...23 ("Invalid hour"), minute in
  // 0...59 (also "Invalid hour"), second in 0...59 ("Invalid day for month in year"); these
  // texts are kept on purpose. make(components) wraps that failure.
  using Core::make;
  // Never fails: counts of 86400 and more give 23:59:59, not a wrap.
  static constexpr QuandaAbstractNaturalTimeOfDay makeFromSecondsSinceDayBegan(
      std::uint32_t secondsSinceDayBegan) noexcept;
  // Wraps modulo a day (1500 is 01:00:00, -1 is 23:59:00). Deliberate quirk: a negative multiple
  // of 1440 gives hour 24, minute 0 (24:00:00), the one value outside the hour domain that any
  // factory produces.
  static constexpr QuandaAbstractNaturalTimeOfDay makeFromMinutesSinceDayBegan(
      std::int64_t minutesSinceDayBegan) noexcept;
  // hhmmss below 240000, then the field checks.
  static KeelResult<QuandaAbstractNaturalTimeOfDay> makeFromIso8601Numeric(
      std::uint64_t iso8601Numeric);
  // "hh:mm:ss": three ":"-separated unsigned decimal tokens; "7:5:0" is 07:05:00.
  using Core::makeFromIso8601String;
  // Exactly six characters "hhmmss", read as three two-character tokens.
  static KeelResult<QuandaAbstractNaturalTimeOfDay> makeFromIso8601StringWithoutSeparators(
      std::string_view iso8601String);
  // The seconds count nearest to a double position (halves away from zero), clamped as
  // makeFromSecondsSinceDayBegan does. A position that is not finite or rounds outside
  // 0 ... 2^32-1 is a programming error.
  static QuandaAbstractNaturalTimeOfDay makeFromDouble(double secondsSinceDayBegan);

  // Interoperation with <chrono>: durations from 0 to 86399 seconds convert; any other duration
  // (negative, or a day or more) is an error.
  static KeelResult<QuandaAbstractNaturalTimeOfDay> make(std::chrono::seconds sinceDayBegan);
  static KeelResult<QuandaAbstractNaturalTimeOfDay> make(
      std::chrono::hh_mm_ss<std::chrono::seconds> hhMmSs);
  constexpr std::chrono::seconds durationSinceDayBegan() const noexcept {
    return std::chrono::seconds{secondsSinceDayBegan()};
  }
  constexpr std::chrono::hh_mm_ss<std::chrono::seconds> hhMmSs() const noexcept {
    return std::chrono::hh_mm_ss<std::chrono::seconds>{durationSinceDayBegan()};
  }

  // ---- Fields, counts and serialised forms --------------------------------------------------

  using Core::components;
  using Core::hour;
  using Core::minute;
  using Core::second;

  // hour * 3600 + minute * 60 + second.
  constexpr std::uint32_t secondsSinceDayBegan() const noexcept {
    return hour() * std::uint32_t{Quanda::SecondsIn::Gregorian::Hour::count} +
           minute() * std::uint32_t{Quanda::SecondsIn::Gregorian::Minute::count} + second();
  }
  // hour * 60 + minute; the seconds are dropped.
  constexpr std::uint16_t minutesSinceDayBegan() const noexcept {
    return static_cast<std::uint16_t>(hour() * 60 + minute());
  }
  // hour * 10000 + minute * 100 + second: 70509 for 07:05:09.
  constexpr std::uint64_t serializeToIso8601Numeric() const noexcept {
    return std::uint64_t{hour()} * 10000 + std::uint64_t{minute()} * 100 + second();
  }
  // "%02d:%02d:%02d": "07:05:09". description() is the same text.
  std::string serializeToIso8601String() const;
  std::string description() const { return serializeToIso8601String(); }

  // All three fields 0; exactly 12:00:00; hour below 12; hour 12 or later.
  using Core::isAM;
  using Core::isMidday;
  using Core::isMidnight;
  using Core::isPM;

  // ---- Stepping and arithmetic --------------------------------------------------------------

  // The next and previous second, staying at 23:59:59 and 00:00:00 at the ends of the day.
  constexpr QuandaAbstractNaturalTimeOfDay nextUp() const noexcept {
    return makeFromSecondsSinceDayBegan(keelNextUp(secondsSinceDayBegan()));
  }
  constexpr QuandaAbstractNaturalTimeOfDay nextDown() const noexcept {
    return makeFromSecondsSinceDayBegan(keelNextDown(secondsSinceDayBegan()));
  }
  constexpr double asDouble() const noexcept { return secondsSinceDayBegan(); }

  // The time moved by an amount, with the whole days crossed carried into the result:
  // 22:00:00 plus 3 hours is (1, 01:00:00), 00:00:00 minus 1 second is (-1, 23:59:59).
  // adding({.hours, .minutes, .seconds}) applies the present amounts in that order. A total
  // that overflows 64 bits, or a day count beyond 32 bits, is a programming error.
  using Core::adding;
  using Core::addingHours;
  using Core::addingMinutes;
  using Core::addingSeconds;
  using Core::tryAdding;
  using Core::tryAddingHours;
  using Core::tryAddingMinutes;
  using Core::tryAddingSeconds;

  // time + span (either order) is addingSeconds(span.seconds()); a natural span of 2^63 seconds
  // or more is a programming error. Defined with QuandaAbstractRelativeDiscreteTimeOfDay.
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaAbstractNaturalTimeOfDay time, QuandaDiscreteTimeSpan span);
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaDiscreteTimeSpan span, QuandaAbstractNaturalTimeOfDay time);
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaAbstractNaturalTimeOfDay time, QuandaNaturalTimeSpan span);
  friend constexpr QuandaAbstractRelativeDiscreteTimeOfDay operator+(
      QuandaNaturalTimeSpan span, QuandaAbstractNaturalTimeOfDay time);
  // The signed distance between two times of the same day, with no day carry:
  // 10:00:00 - 12:00:00 is -7200 seconds.
  friend constexpr QuandaDiscreteTimeSpan operator-(QuandaAbstractNaturalTimeOfDay lhs,
                                                    QuandaAbstractNaturalTimeOfDay rhs) noexcept {
    return QuandaDiscreteTimeSpan(std::int64_t{lhs.secondsSinceDayBegan()} -
                                  std::int64_t{rhs.secondsSinceDayBegan()});
  }

  // Present overrides are clamped into their fields' domains and replace the fields.
  using Core::replacing;

  friend constexpr bool operator==(QuandaAbstractNaturalTimeOfDay lhs,
                                   QuandaAbstractNaturalTimeOfDay rhs) noexcept {
    return lhs.components() == rhs.components();
  }
  // Clock order, which is the order of the packed numbers.
  friend constexpr std::strong_ordering operator<=>(QuandaAbstractNaturalTimeOfDay lhs,
                                                    QuandaAbstractNaturalTimeOfDay rhs) noexcept {
    return lhs.serializeToIso8601Numeric() <=> rhs.serializeToIso8601Numeric();
  }

 private:
  constexpr QuandaAbstractNaturalTimeOfDay(std::uint8_t hour, std::uint8_t minute,
                                           std::uint8_t second) noexcept
      : Core(hour, minute, second) {}
};

static_assert(sizeof(QuandaAbstractNaturalTimeOfDay) == 3);
static_assert(KeelScalarInterpolable<QuandaAbstractNaturalTimeOfDay>);

// ---- Inline definitions ----------------------------------------------------------------------

constexpr QuandaAbstractNaturalTimeOfDay
QuandaAbstractNaturalTimeOfDay::makeFromSecondsSinceDayBegan(
    std::uint32_t secondsSinceDayBegan) noexcept {
  const std::uint32_t seconds =
      Quanda::SecondsIn::Gregorian::Day::validZeroBasedDomain.clamp(secondsSinceDayBegan);
  using namespace Quanda::SecondsIn::Gregorian;
  return QuandaAbstractNaturalTimeOfDay(
      static_cast<std::uint8_t>(seconds / Hour::count),
      static_cast<std::uint8_t>(seconds % Hour::count / Minute::count),
      static_cast<std::uint8_t>(seconds % Minute::count));
}

constexpr QuandaAbstractNaturalTimeOfDay
QuandaAbstractNaturalTimeOfDay::makeFromMinutesSinceDayBegan(
    std::int64_t minutesSinceDayBegan) noexcept {
  constexpr std::int64_t minutesInDay = Quanda::MinutesIn::Gregorian::Day::count;
  // The remainder takes the sign of the count; the correction tests the count, not the
  // remainder, which is what turns -1440 into 1440 minutes (24:00).
  std::int64_t minutes = minutesSinceDayBegan % minutesInDay;
  if (minutesSinceDayBegan < 0) minutes += minutesInDay;
  return QuandaAbstractNaturalTimeOfDay(static_cast<std::uint8_t>(minutes / 60),
                                        static_cast<std::uint8_t>(minutes % 60), 0);
}

inline constexpr QuandaAbstractNaturalTimeOfDay QuandaAbstractNaturalTimeOfDay::zero{0, 0, 0};
inline constexpr QuandaAbstractNaturalTimeOfDay QuandaAbstractNaturalTimeOfDay::minInc{0, 0, 0};
inline constexpr QuandaAbstractNaturalTimeOfDay QuandaAbstractNaturalTimeOfDay::maxInc =
    QuandaAbstractNaturalTimeOfDay::makeFromSecondsSinceDayBegan(86399);

std::ostream& operator<<(std::ostream& stream, QuandaAbstractNaturalTimeOfDay time);
std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractNaturalTimeOfDay::Components& components);

template <>
struct std::hash<QuandaAbstractNaturalTimeOfDay> {
  std::size_t operator()(QuandaAbstractNaturalTimeOfDay time) const noexcept {
    return keel::hashFields(time.hour(), time.minute(), time.second());
  }
};

template <>
struct std::hash<QuandaAbstractNaturalTimeOfDay::Components> {
  std::size_t operator()(
      const QuandaAbstractNaturalTimeOfDay::Components& components) const noexcept {
    return keel::hashFields(components.hour, components.minute, components.second);
  }
};

// Archived as the packed hhmmss number. Decoding a number that is not a valid time throws
// KeelDecodingError "Failed to create date from int".
template <>
struct nlohmann::adl_serializer<QuandaAbstractNaturalTimeOfDay> {
  static void to_json(nlohmann::json& json, QuandaAbstractNaturalTimeOfDay time);
  static QuandaAbstractNaturalTimeOfDay from_json(const nlohmann::json& json);
};

// The result type of the arithmetic above.
#include "Quanda/Abstract/QuandaAbstractRelativeDiscreteTimeOfDay.h"
