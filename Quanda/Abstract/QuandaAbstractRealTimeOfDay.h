// QuandaAbstractRealTimeOfDay: a time of day with fractional seconds that belongs to no date,
// time zone or calendar.
//
// The real counterpart of QuandaAbstractNaturalTimeOfDay: an hour (0...23), a minute (0...59) and
// a double second from 0 up to 59.99999999999999, the largest double below 60. It shares the
// natural kind's shape (QuandaTimeOfDayCore.h): the same validation order, the same "hh:mm:ss"
// parser with a decimal third token, the same carry of added amounts into a day count, here a
// QuandaAbstractRelativeRealTimeOfDay. The seconds are stored as given, never rounded; only the
// text form cuts them to six fraction digits.
//
//   auto time = QuandaAbstractRealTimeOfDay::makeFromIso8601String("07:08:05.5").value();
//   time.serializeToIso8601String();   // "07:08:05.500000" (a German locale: "07:08:05,500000")
//   time.addingSeconds(-30000.25);     // 22:48:05.250000, -1 day
//
// Equality is exact, field by field; equals(other, tolerance) compares the seconds with a
// tolerance. Ordering compares secondsSinceDayBegan() as doubles. The type has no packed number
// and no archive.
#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelHash.h"
#include "Keel/KeelPrecision.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelResult.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaTimeOfDayCore.h"
#include "Quanda/QuandaConstants.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

class QuandaAbstractRealTimeOfDay;
class QuandaAbstractRelativeRealTimeOfDay;

namespace quanda_detail {

struct RealTimeOfDayTraits {
  using Second = double;
  using SecondsAmount = double;
  using Relative = QuandaAbstractRelativeRealTimeOfDay;

  static constexpr std::string_view sourcePath = "Quanda/Abstract/QuandaAbstractRealTimeOfDay";
  static constexpr std::string_view invalidMinuteMessage = "Invalid minute";
  static constexpr std::string_view invalidSecondMessage = "Invalid second";
  // "Unexpected number of tokens" carries the string and the tokens; a validation failure of the
  // parsed tokens carries the string alone.
  static constexpr bool tokenCountFailureListsTokens = true;
  static constexpr bool validationFailureListsTokens = false;

  static constexpr KeelDoubleDomain secondDomain =
      Quanda::SecondsIn::Gregorian::Minute::validSecondsWithSubSecondsDomainInc;

  // NaN lies outside.
  static constexpr bool isValidSecond(Second second) noexcept {
    return secondDomain.contains(second);
  }
  // A NaN second cannot be clamped into anything: it is a programming error.
  static constexpr Second clampSecond(Second second) {
    KEEL_PRECONDITION(second == second, "NaN second of a real time of day");
    return secondDomain.clamp(second);
  }
  static std::optional<Second> parseSecond(std::string_view token) noexcept;
};

}  // namespace quanda_detail

class QuandaAbstractRealTimeOfDay
    : private quanda_detail::TimeOfDayCore<QuandaAbstractRealTimeOfDay,
                                           quanda_detail::RealTimeOfDayTraits> {
  using Core =
      quanda_detail::TimeOfDayCore<QuandaAbstractRealTimeOfDay, quanda_detail::RealTimeOfDayTraits>;
  friend Core;

 public:
  // The unvalidated fields {hour, minute, second (double)}, as exchanged with the calendar adapter.
  using Core::Components;
  // {.hours, .minutes, .seconds (double)}, each optional, for adding(...).
  using Core::Amounts;
  // {.hour, .minute, .second (double)}, each a KeelOverride, for replacing(...).
  using Core::Replacement;

  static constexpr std::string_view sourcePath = quanda_detail::RealTimeOfDayTraits::sourcePath;

  static const QuandaAbstractRealTimeOfDay zero;    // 00:00:00.0
  static const QuandaAbstractRealTimeOfDay minInc;  // 00:00:00.0
  static const QuandaAbstractRealTimeOfDay maxInc;  // 23:59:59.99999999999999

  // ---- Making times of day ------------------------------------------------------------------

  // make(hour, minute, second) checks, in order: hour in 0...23 ("Invalid hour"), minute in
  // 0...59 ("Invalid minute"), second in 0 ... 59.99999999999999 ("Invalid second"; NaN fails
  // too). make(components) wraps that failure.
  using Core::make;
  // The natural time's fields, its second as a double.
  constexpr explicit QuandaAbstractRealTimeOfDay(QuandaAbstractNaturalTimeOfDay time) noexcept
      : Core(time.hour(), time.minute(), time.second()) {}
  // Never fails: the count is clamped into 0 ... 86399.99999999999, the last double below 86400
  // (so 90000.0 gives 23:59:59.99999999998545 and -5.0 gives 00:00:00), then split exactly into
  // hour, minute and second; the fraction is kept as it is. NaN is a programming error.
  static QuandaAbstractRealTimeOfDay makeFromSecondsSinceDayBegan(double secondsSinceDayBegan);
  static QuandaAbstractRealTimeOfDay makeFromDouble(double secondsSinceDayBegan) {
    return makeFromSecondsSinceDayBegan(secondsSinceDayBegan);
  }
  // "hh:mm:ss.ffffff": hour and minute are unsigned decimal integers, the second any decimal
  // double ("10:20:30.25", "7:5:0", "10:20:3e1"); a decimal comma fails.
  using Core::makeFromIso8601String;

  // Interoperation with <chrono>: durations from 0 up to (not including) a day convert; any
  // other duration, NaN included, is an error.
  static KeelResult<QuandaAbstractRealTimeOfDay> make(std::chrono::duration<double> sinceDayBegan);
  std::chrono::duration<double> durationSinceDayBegan() const noexcept {
    return std::chrono::duration<double>{secondsSinceDayBegan()};
  }

  // ---- Fields, counts and serialised forms --------------------------------------------------

  using Core::components;
  using Core::hour;
  using Core::minute;
  using Core::second;

  // hour * 3600 + minute * 60 + second, in doubles.
  constexpr double secondsSinceDayBegan() const noexcept {
    return static_cast<double>(hour() * Quanda::SecondsIn::Gregorian::Hour::count +
                               minute() * Quanda::SecondsIn::Gregorian::Minute::count) +
           second();
  }
  constexpr double asDouble() const noexcept { return secondsSinceDayBegan(); }
  // "%02d:%02d:" followed by the seconds with two integer and six fraction digits, cut toward
  // zero, in the process's default locale (QuandaSecondsFormatter::shared()): "07:08:05.500000".
  // If the platform formats nothing, the seconds part is empty. description() is the same text.
  std::string serializeToIso8601String() const;
  std::string description() const { return serializeToIso8601String(); }

  // Midnight and noon need the second to be exactly 0.
  using Core::isAM;
  using Core::isMidday;
  using Core::isMidnight;
  using Core::isPM;

  // ---- Stepping, comparison and arithmetic --------------------------------------------------

  // The time at the next (previous) representable double of secondsSinceDayBegan(), clamped.
  QuandaAbstractRealTimeOfDay nextUp() const;
  QuandaAbstractRealTimeOfDay nextDown() const;

  // The time moved by an amount, with the whole days crossed carried into the result:
  // 23:59:30 plus 45.5 seconds is (1, 00:00:15.5). The totals are doubles; a day count beyond
  // 32 bits (or a NaN or infinite amount) is a programming error.
  using Core::adding;
  using Core::addingHours;
  using Core::addingMinutes;
  using Core::addingSeconds;
  using Core::tryAdding;
  using Core::tryAddingHours;
  using Core::tryAddingMinutes;
  using Core::tryAddingSeconds;

  // time + span (either order) is addingSeconds(span.seconds()). Defined with
  // QuandaAbstractRelativeRealTimeOfDay.
  friend inline QuandaAbstractRelativeRealTimeOfDay operator+(QuandaAbstractRealTimeOfDay time,
                                                              QuandaRealTimeSpan span);
  friend inline QuandaAbstractRelativeRealTimeOfDay operator+(QuandaRealTimeSpan span,
                                                              QuandaAbstractRealTimeOfDay time);
  // The difference of secondsSinceDayBegan(), with no day carry.
  friend constexpr QuandaRealTimeSpan operator-(QuandaAbstractRealTimeOfDay lhs,
                                                QuandaAbstractRealTimeOfDay rhs) noexcept {
    return QuandaRealTimeSpan(lhs.secondsSinceDayBegan() - rhs.secondsSinceDayBegan());
  }

  // Present overrides are clamped into their fields' domains (the second into 0 ...
  // 59.99999999999999) and replace the fields; a NaN second is a programming error.
  using Core::replacing;

  // Hour and minute exactly equal, seconds equal within the tolerance.
  constexpr bool equals(QuandaAbstractRealTimeOfDay other, KeelPrecision tolerance) const noexcept {
    return hour() == other.hour() && minute() == other.minute() &&
           keelEquals(second(), other.second(), tolerance);
  }

  // Exact, field by field (0.0 and -0.0 are equal).
  friend constexpr bool operator==(QuandaAbstractRealTimeOfDay lhs,
                                   QuandaAbstractRealTimeOfDay rhs) noexcept {
    return lhs.components() == rhs.components();
  }
  // By secondsSinceDayBegan() as doubles, without tolerance. That sum rounds:
  // 09:59:59.99999999999999 orders as equivalent to 10:00:00 though the two are not equal.
  friend constexpr std::partial_ordering operator<=>(QuandaAbstractRealTimeOfDay lhs,
                                                     QuandaAbstractRealTimeOfDay rhs) noexcept {
    return lhs.secondsSinceDayBegan() <=> rhs.secondsSinceDayBegan();
  }

 private:
  constexpr QuandaAbstractRealTimeOfDay(std::uint8_t hour, std::uint8_t minute,
                                        double second) noexcept
      : Core(hour, minute, second) {}
};

static_assert(KeelScalarInterpolable<QuandaAbstractRealTimeOfDay>);

inline constexpr QuandaAbstractRealTimeOfDay QuandaAbstractRealTimeOfDay::zero{0, 0, 0.0};
inline constexpr QuandaAbstractRealTimeOfDay QuandaAbstractRealTimeOfDay::minInc{0, 0, 0.0};
inline constexpr QuandaAbstractRealTimeOfDay QuandaAbstractRealTimeOfDay::maxInc{
    23, 59, quanda_detail::RealTimeOfDayTraits::secondDomain.max()};

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRealTimeOfDay time);
std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractRealTimeOfDay::Components& components);

template <>
struct std::hash<QuandaAbstractRealTimeOfDay> {
  std::size_t operator()(QuandaAbstractRealTimeOfDay time) const noexcept {
    std::size_t seed = keel::hashFields(time.hour(), time.minute());
    return keel::hashCombine(seed, keel::hashDouble(time.second()));
  }
};

template <>
struct std::hash<QuandaAbstractRealTimeOfDay::Components> {
  std::size_t operator()(const QuandaAbstractRealTimeOfDay::Components& components) const noexcept {
    std::size_t seed = keel::hashFields(components.hour, components.minute);
    return keel::hashCombine(seed, keel::hashDouble(components.second));
  }
};

// The result type of the arithmetic above.
#include "Quanda/Abstract/QuandaAbstractRelativeRealTimeOfDay.h"
