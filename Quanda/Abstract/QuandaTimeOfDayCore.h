// The shape shared by the natural and the real time of day, and by their relative kinds.
//
// A natural time of day counts whole seconds (an unsigned 8-bit second), a real one fractional
// seconds (a double below 60). Apart from that number type the two behave alike: the same fields
// and validation order, the same "hh:mm:ss" parser, the same tests for midnight and noon, the
// same clamping replacement, and the same carry of added amounts into a day count. This header
// holds that common shape once:
//
//   quanda_detail::TimeOfDayCore<Time, Traits>              hour, minute, second and what is
//                                                            built on them alone
//   quanda_detail::RelativeTimeOfDayCore<Relative, Traits>  a signed day count and a time of day
//
// The public types inherit a core privately and re-export its members one by one, so each public
// header still lists its whole interface; a traits class supplies what differs between the kinds
// (the second's type, messages, how the third token is read, how seconds are totalled). Callers
// never name anything in this header directly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelError.h"
#include "Keel/KeelOverride.h"
#include "Keel/KeelResult.h"
#include "Quanda/QuandaConstants.h"

namespace quanda_detail {

// The unvalidated fields of a time of day, as exchanged with the calendar adapter.
template <class Second>
struct TimeOfDayComponents {
  std::uint8_t hour = 0;
  std::uint8_t minute = 0;
  Second second = 0;

  // "Components(hour: 7, minute: 5, second: 9)".
  std::string description() const {
    return "Components(hour: " + keel::describe(hour) + ", minute: " + keel::describe(minute) +
           ", second: " + keel::describe(second) + ")";
  }
  friend constexpr bool operator==(const TimeOfDayComponents&,
                                   const TimeOfDayComponents&) = default;
};

// Optional amounts for adding(...): applied as hours, then minutes, then seconds.
template <class SecondsAmount>
struct TimeOfDayAmounts {
  std::optional<std::int32_t> hours{};
  std::optional<std::int64_t> minutes{};
  std::optional<SecondsAmount> seconds{};
};

// Optional field overrides for replacing(...); present values are clamped into their domains.
template <class Second>
struct TimeOfDayReplacement {
  KeelOverride<std::uint8_t> hour{};
  KeelOverride<std::uint8_t> minute{};
  KeelOverride<Second> second{};
};

// Optional overrides of a relative time of day; present values replace, unchanged.
template <class Time>
struct RelativeTimeOfDayReplacement {
  KeelOverride<std::int32_t> days{};
  KeelOverride<Time> time{};
};

// Reads a decimal or hexadecimal floating-point token as a general-purpose "parse a double"
// routine does, independent of any locale: an optional sign, then digits with an optional "."
// and an optional exponent ("30.25", "-1.5e3", ".5", "5."), hexadecimal with "0x" and an optional
// binary exponent ("0x1.8p3"), "inf", "infinity", "nan", "nan(chars)" and "snan" in any case.
// Leading or trailing spaces, a decimal comma and anything left over fail. A magnitude too large
// for a double reads as an infinity, one too small as zero (IEEE round to nearest).
std::optional<double> parseFloatingPoint(std::string_view token) noexcept;

template <class Time, class Traits>
class TimeOfDayCore {
 public:
  using Second = typename Traits::Second;
  using Relative = typename Traits::Relative;
  using Components = TimeOfDayComponents<Second>;
  using Amounts = TimeOfDayAmounts<typename Traits::SecondsAmount>;
  using Replacement = TimeOfDayReplacement<Second>;

  // Checks, in order: hour in 0...23, minute in 0...59, second in its domain; each failure has its
  // own message (the kinds differ in these texts) and carries the three proposed fields.
  static KeelResult<Time> make(std::uint8_t hour, std::uint8_t minute, Second second);
  static KeelResult<Time> make(const Components& components);
  // Three ":"-separated tokens: hour and minute as unsigned decimal integers, the second as the
  // kind reads it. Digit counts are not checked ("7:5:0" is 07:05:00).
  static KeelResult<Time> makeFromIso8601String(std::string_view iso8601String);

  constexpr std::uint8_t hour() const noexcept { return hour_; }
  constexpr std::uint8_t minute() const noexcept { return minute_; }
  constexpr Second second() const noexcept { return second_; }
  constexpr Components components() const noexcept { return {hour_, minute_, second_}; }

  constexpr bool isMidnight() const noexcept { return hour_ == 0 && minute_ == 0 && second_ == 0; }
  constexpr bool isMidday() const noexcept { return hour_ == 12 && minute_ == 0 && second_ == 0; }
  constexpr bool isAM() const noexcept { return hour_ < 12; }
  constexpr bool isPM() const noexcept { return hour_ > 11; }

  // Moves the time by an amount and carries whole days into the result's day count.
  constexpr Relative addingHours(std::int32_t hours) const { return relative().addingHours(hours); }
  constexpr Relative addingMinutes(std::int64_t minutes) const {
    return relative().addingMinutes(minutes);
  }
  constexpr Relative addingSeconds(typename Traits::SecondsAmount seconds) const {
    return relative().addingSeconds(seconds);
  }
  constexpr Relative adding(const Amounts& amounts) const { return relative().adding(amounts); }
  // The same, refused (nothing) where the carried day count would leave 32 bits.
  constexpr std::optional<Relative> tryAddingHours(std::int32_t hours) const {
    return relative().tryAddingHours(hours);
  }
  constexpr std::optional<Relative> tryAddingMinutes(std::int64_t minutes) const {
    return relative().tryAddingMinutes(minutes);
  }
  constexpr std::optional<Relative> tryAddingSeconds(typename Traits::SecondsAmount seconds) const {
    return relative().tryAddingSeconds(seconds);
  }
  constexpr std::optional<Relative> tryAdding(const Amounts& amounts) const {
    return relative().tryAdding(amounts);
  }

  constexpr Time replacing(const Replacement& replacement) const {
    constexpr auto hours = Quanda::HoursIn::Gregorian::Day::validZeroBasedDomain;
    constexpr auto minutes = Quanda::MinutesIn::Gregorian::Hour::validZeroBasedDomain;
    const auto& [hour, minute, second] = replacement;
    return Time(hour.isSet() ? hours.clamp(*hour.value()) : hour_,
                minute.isSet() ? minutes.clamp(*minute.value()) : minute_,
                second.isSet() ? Traits::clampSecond(*second.value()) : second_);
  }

 protected:
  constexpr TimeOfDayCore(std::uint8_t hour, std::uint8_t minute, Second second) noexcept
      : hour_(hour), minute_(minute), second_(second) {}

  // Which inputs a token failure reports: the string alone, or the string and its tokens.
  enum class TokenArguments { string, stringAndTokens };

  // Converts three tokens and validates them: the second step of every string factory.
  static KeelResult<Time> makeFromTokens(std::string_view hourToken, std::string_view minuteToken,
                                         std::string_view secondToken,
                                         std::string_view iso8601String,
                                         std::string_view functionName,
                                         TokenArguments conversionArguments,
                                         TokenArguments validationArguments);

 private:
  constexpr Relative relative() const noexcept { return Relative(Time(hour_, minute_, second_)); }

  std::uint8_t hour_;
  std::uint8_t minute_;
  Second second_;
};

// Traits of a relative kind provide Time, Total (the type of a signed second count),
// SecondsAmount (what adding seconds takes), and total(days, time), hours(n), tryMinutes(n) and
// trySum(a, b), the last two answering nothing where the kind's arithmetic overflows.
template <class Relative, class Traits>
class RelativeTimeOfDayCore {
 public:
  using Time = typename Traits::Time;
  using Total = typename Traits::Total;
  using Amounts = typename Time::Amounts;
  using Replacement = RelativeTimeOfDayReplacement<Time>;

  constexpr std::int32_t days() const noexcept { return days_; }
  constexpr Time time() const noexcept { return time_; }
  // days * 86400 + the time's seconds since the day began.
  constexpr Total seconds() const noexcept { return Traits::total(days_, time_); }
  constexpr double asDouble() const noexcept { return static_cast<double>(seconds()); }

  // Each adds the amount to seconds() and normalises the total into (days, time). An overflow of
  // the total or a day count beyond 32 bits stops the process; the try... forms answer nothing
  // instead.
  constexpr std::optional<Relative> tryAddingHours(std::int32_t hours) const {
    return tryMoved(Traits::hours(hours));
  }
  constexpr std::optional<Relative> tryAddingMinutes(std::int64_t minutes) const {
    const std::optional<Total> amount = Traits::tryMinutes(minutes);
    return amount ? tryMoved(*amount) : std::nullopt;
  }
  constexpr std::optional<Relative> tryAddingSeconds(typename Traits::SecondsAmount amount) const {
    return tryMoved(amount);
  }
  // Hours, then minutes, then seconds, skipping absent amounts and normalising after each.
  constexpr std::optional<Relative> tryAdding(const Amounts& amounts) const {
    std::optional<Relative> result = Relative(days_, time_);
    if (amounts.hours) result = result->tryAddingHours(*amounts.hours);
    if (result && amounts.minutes) result = result->tryAddingMinutes(*amounts.minutes);
    if (result && amounts.seconds) result = result->tryAddingSeconds(*amounts.seconds);
    return result;
  }
  constexpr Relative addingHours(std::int32_t hours) const {
    return keel::valueOrStop(tryAddingHours(hours), overflow);
  }
  constexpr Relative addingMinutes(std::int64_t minutes) const {
    return keel::valueOrStop(tryAddingMinutes(minutes), overflow);
  }
  constexpr Relative addingSeconds(typename Traits::SecondsAmount amount) const {
    return keel::valueOrStop(tryAddingSeconds(amount), overflow);
  }
  constexpr Relative adding(const Amounts& amounts) const {
    return keel::valueOrStop(tryAdding(amounts), overflow);
  }
  // Absent overrides keep, present ones replace; nothing is normalised.
  constexpr Relative replacing(const Replacement& replacement) const noexcept {
    return Relative(replacement.days.resolve(days_), replacement.time.resolve(time_));
  }

  // The time's text followed by " same day", ", +1 day", ", +2 days", ", -1 day", ", -2 days"...
  std::string description() const {
    std::string text = time_.serializeToIso8601String();
    if (days_ == 0) {
      text += " same day";
      return text;
    }
    text += days_ > 0 ? ", +" : ", ";
    text += std::to_string(days_);
    text += " day";
    if (days_ != 1 && days_ != -1) text += 's';
    return text;
  }

 protected:
  constexpr RelativeTimeOfDayCore(std::int32_t days, Time time) noexcept
      : days_(days), time_(time) {}

  static constexpr const char* outsideTheDayCount =
      "day count of a relative time of day outside the signed 32-bit range";
  static constexpr const char* overflow =
      "adding to a relative time of day overflows its seconds, or its day count leaves the signed "
      "32-bit range";

 private:
  constexpr std::optional<Relative> tryMoved(Total amount) const {
    const std::optional<Total> total = Traits::trySum(seconds(), amount);
    return total ? Relative::tryNormalizing(*total) : std::nullopt;
  }

  std::int32_t days_;
  Time time_;
};

}  // namespace quanda_detail
