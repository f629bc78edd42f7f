// The shared core of the three time-span types: one field of seconds and everything that reads
// the same whatever the number type is.
//
// QuandaNaturalTimeSpan (uint64_t), QuandaDiscreteTimeSpan (int64_t) and QuandaRealTimeSpan
// (double) each derive from QuandaTimeSpanCore<Self, Rep>. The core gives them construction from
// the field (and from std::chrono), zero, the predicates, the interpolation members, + and +=,
// the comparisons, hashing and the text form; the whole-second types also get their totals and
// their rounding to minutes, hours, days and weeks, and the signed types (discrete and real) get
// - and -= and the sign tests. Whole-second arithmetic is checked: an overflow or a double that
// does not fit stops the process (KEEL_PRECONDITION). Real arithmetic is plain double arithmetic;
// infinities and NaN propagate.
//
// Operators take two values of the same span type only, so the three kinds never mix implicitly.
// Each span type declares its own static constant zero after its complete definition, so that
// zero stays usable in constant expressions. Include the span headers, not this one.
#pragma once

#include <chrono>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelError.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelMathUtil.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/QuandaConstants.h"

namespace quanda_detail {

template <class Derived, class SecondsType>
class QuandaTimeSpanCore {
 public:
  // The type of the one field.
  using Rep = SecondsType;

 private:
  static_assert(std::is_same_v<Rep, std::uint64_t> || std::is_same_v<Rep, std::int64_t> ||
                std::is_same_v<Rep, double>);

  static constexpr bool isWhole = std::is_integral_v<Rep>;
  static constexpr bool isSigned = std::is_signed_v<Rep>;

  // The larger units in seconds, for the fractional totals and the rounding steps.
  static constexpr double minute = Quanda::SecondsIn::Gregorian::Minute::count;
  static constexpr double hour = Quanda::SecondsIn::Gregorian::Hour::count;
  static constexpr double day = Quanda::SecondsIn::Gregorian::Day::count;
  static constexpr double week = Quanda::SecondsIn::Gregorian::Week::count;

 public:
  // The std::chrono duration that this span converts to and from: whole seconds for the
  // whole-second types, fractional seconds for the real one.
  using ChronoDuration =
      std::conditional_t<isWhole, std::chrono::seconds, std::chrono::duration<double>>;

  // From a number of seconds. The whole-second types take any integer type and stop when the
  // value does not fit their field (a negative count for the natural span).
  template <std::integral Integer>
  requires isWhole constexpr explicit QuandaTimeSpanCore(Integer seconds)
      : seconds_(keel::checkedNarrow<Rep>(seconds)) {}
  constexpr explicit QuandaTimeSpanCore(double seconds) noexcept requires(!isWhole)
      : seconds_(seconds) {}

  // From a std::chrono duration; the natural span stops on a negative one.
  constexpr explicit QuandaTimeSpanCore(ChronoDuration duration)
      : seconds_(convertedCount<Rep>(duration.count())) {}

  // The value at a position in seconds: floor(x) for the whole-second types, stopping when x is
  // not finite or floor(x) lies outside the field's range; x itself for the real span.
  static Derived makeFromDouble(double x) {
    if constexpr (isWhole) {
      return Derived(keel::checkedFromDouble<Rep>(std::floor(x)));
    } else {
      return Derived(x);
    }
  }
  // The same for a number taken from outside: nothing where makeFromDouble would stop, and for the
  // real span nothing for NaN and the infinities.
  static std::optional<Derived> tryMakeFromDouble(double x) noexcept {
    if constexpr (isWhole) {
      const std::optional<Rep> seconds = keel::tryFromDouble<Rep>(std::floor(x));
      return seconds ? std::optional(Derived(*seconds)) : std::nullopt;
    } else {
      return finite(x);
    }
  }

  constexpr Rep seconds() const noexcept { return seconds_; }
  constexpr bool isZero() const noexcept { return seconds_ == Rep{0}; }
  constexpr double asDouble() const noexcept { return static_cast<double>(seconds_); }

  constexpr bool isPositive() const noexcept requires isSigned { return seconds_ > Rep{0}; }
  constexpr bool isNegative() const noexcept requires isSigned { return seconds_ < Rep{0}; }

  // The neighbouring values: one second away (saturating at the ends of the field) for the
  // whole-second types, the neighbouring double for the real span.
  Derived nextUp() const noexcept {
    if constexpr (isWhole) {
      return Derived(keelNextUp(seconds_));
    } else {
      return Derived(std::nextafter(seconds_, std::numeric_limits<double>::infinity()));
    }
  }
  Derived nextDown() const noexcept {
    if constexpr (isWhole) {
      return Derived(keelNextDown(seconds_));
    } else {
      return Derived(std::nextafter(seconds_, -std::numeric_limits<double>::infinity()));
    }
  }

  // As a std::chrono duration; a natural count of 2^63 seconds or more stops the process, and
  // tryToChrono answers nothing for it.
  constexpr ChronoDuration toChrono() const {
    return ChronoDuration(convertedCount<typename ChronoDuration::rep>(seconds_));
  }
  constexpr std::optional<ChronoDuration> tryToChrono() const noexcept {
    if constexpr (isWhole) {
      const auto count = keel::tryNarrow<typename ChronoDuration::rep>(seconds_);
      return count ? std::optional(ChronoDuration(*count)) : std::nullopt;
    } else {
      return ChronoDuration(seconds_);
    }
  }

  // The length in larger units, as fractions.
  constexpr double totalMinutes() const noexcept requires isWhole { return asDouble() / minute; }
  constexpr double totalHours() const noexcept requires isWhole { return asDouble() / hour; }
  constexpr double totalDays() const noexcept requires isWhole { return asDouble() / day; }
  constexpr double totalWeeks() const noexcept requires isWhole { return asDouble() / week; }

  // Rounded to the nearest whole minute, hour, day or week, halves away from zero
  // (KeelMathUtil::roundTo). The rounding is done in doubles, so a count near the top of the
  // field can round past it, which stops the process.
  Derived roundingToMinute() const requires isWhole { return roundedToStep(minute); }
  Derived roundingToHour() const requires isWhole { return roundedToStep(hour); }
  Derived roundingToDay() const requires isWhole { return roundedToStep(day); }
  Derived roundingToWeek() const requires isWhole { return roundedToStep(week); }
  // The same, nothing where the rounded count leaves the field.
  std::optional<Derived> tryRoundingToMinute() const requires isWhole {
    return tryRoundedToStep(minute);
  }
  std::optional<Derived> tryRoundingToHour() const requires isWhole {
    return tryRoundedToStep(hour);
  }
  std::optional<Derived> tryRoundingToDay() const requires isWhole { return tryRoundedToStep(day); }
  std::optional<Derived> tryRoundingToWeek() const requires isWhole {
    return tryRoundedToStep(week);
  }

  // The seconds followed by "s": "3600s", "-5s", "2.5s".
  std::string description() const {
    if constexpr (isWhole) {
      return std::to_string(seconds_) + 's';
    } else {
      return keel::describeDouble(seconds_) + 's';
    }
  }

  // The hash of the one field; the real span hashes -0.0 and +0.0 alike.
  std::size_t hashValue() const noexcept {
    if constexpr (isWhole) {
      return keel::hashFields(seconds_);
    } else {
      return keel::hashCombine(0, keel::hashDouble(seconds_));
    }
  }

  friend constexpr bool operator==(const Derived& lhs, const Derived& rhs) noexcept {
    return lhs.seconds() == rhs.seconds();
  }
  friend constexpr auto operator<=>(const Derived& lhs, const Derived& rhs) noexcept {
    return lhs.seconds() <=> rhs.seconds();
  }

  // The sum and the difference for amounts taken from outside: nothing where the operators below
  // stop (a whole count overflows) and, for the real span, where the result is not finite.
  constexpr std::optional<Derived> tryAdding(const Derived& other) const noexcept {
    if constexpr (isWhole) {
      const std::optional<Rep> sum = keel::tryAdd(seconds_, other.seconds());
      return sum ? std::optional(Derived(*sum)) : std::nullopt;
    } else {
      return finite(seconds_ + other.seconds());
    }
  }
  constexpr std::optional<Derived> trySubtracting(
      const Derived& other) const noexcept requires isSigned {
    if constexpr (isWhole) {
      const std::optional<Rep> difference = keel::trySubtract(seconds_, other.seconds());
      return difference ? std::optional(Derived(*difference)) : std::nullopt;
    } else {
      return finite(seconds_ - other.seconds());
    }
  }

  friend constexpr Derived operator+(const Derived& lhs, const Derived& rhs) {
    if constexpr (isWhole) {
      return keel::valueOrStop(lhs.tryAdding(rhs), "integer overflow in addition");
    } else {
      return Derived(lhs.seconds() + rhs.seconds());
    }
  }
  friend constexpr Derived& operator+=(Derived& lhs, const Derived& rhs) { return lhs = lhs + rhs; }

  friend constexpr Derived operator-(const Derived& lhs, const Derived& rhs) requires isSigned {
    if constexpr (isWhole) {
      return keel::valueOrStop(lhs.trySubtracting(rhs), "integer overflow in subtraction");
    } else {
      return Derived(lhs.seconds() - rhs.seconds());
    }
  }
  friend constexpr Derived& operator-=(Derived& lhs, const Derived& rhs) requires isSigned {
    return lhs = lhs - rhs;
  }

  friend std::ostream& operator<<(std::ostream& stream, const Derived& span) {
    return stream << span.description();
  }

 private:
  // Whole counts convert with a range check, fractional ones as they are.
  template <class To, class From>
  static constexpr To convertedCount(From count) {
    if constexpr (std::is_integral_v<To>) {
      return keel::checkedNarrow<To>(count);
    } else {
      return static_cast<To>(count);
    }
  }

  Derived roundedToStep(double step) const {
    return Derived(keel::checkedFromDouble<Rep>(KeelMathUtil::roundTo(asDouble(), step)));
  }
  std::optional<Derived> tryRoundedToStep(double step) const {
    const std::optional<Rep> count =
        keel::tryFromDouble<Rep>(KeelMathUtil::roundTo(asDouble(), step));
    return count ? std::optional(Derived(*count)) : std::nullopt;
  }

 protected:
  // The span of a double count, if it is finite.
  static constexpr std::optional<Derived> finite(double seconds) noexcept {
    if (!(seconds - seconds == 0.0)) return std::nullopt;  // NaN and the infinities
    return Derived(seconds);
  }

 private:
  Rep seconds_;
};

// days x 86400 + hours x 3600 + minutes x 60 + seconds in the span's field: for doubles summed in
// that order, ((days + hours) + minutes) + seconds; for whole counts nothing where a step
// overflows.
template <class Rep, class Count>
constexpr std::optional<Rep> tryClockTotal(Count days, Count hours, Count minutes,
                                           Rep seconds) noexcept {
  using namespace Quanda::SecondsIn::Gregorian;
  if constexpr (std::is_floating_point_v<Rep>) {
    return ((static_cast<Rep>(days) * Day::count + static_cast<Rep>(hours) * Hour::count) +
            static_cast<Rep>(minutes) * Minute::count) +
           seconds;
  } else {
    std::optional<Rep> total = keel::tryMultiply(days, Rep{Day::count});
    const std::optional<Rep> inHours = keel::tryMultiply(hours, Rep{Hour::count});
    const std::optional<Rep> inMinutes = keel::tryMultiply(minutes, Rep{Minute::count});
    if (total && inHours) total = keel::tryAdd(*total, *inHours);
    if (total && inMinutes) total = keel::tryAdd(*total, *inMinutes);
    if (total && inHours && inMinutes) return keel::tryAdd(*total, seconds);
    return std::nullopt;
  }
}

// std::hash for a span type.
template <class Span>
struct QuandaTimeSpanHash {
  std::size_t operator()(const Span& span) const noexcept { return span.hashValue(); }
};

// The keyed archive of a whole-second span: the bare number of seconds. Decoding takes a JSON
// integer that fits the field; any other JSON value (a fraction, a negative number for the
// natural span, a string) is nlohmann's type_error 302, and an integer outside a signed field is
// its out_of_range 406.
template <class Span>
struct QuandaWholeSecondsArchive {
  template <class BasicJsonType>
  static void to_json(BasicJsonType& json, const Span& span) {
    json = span.seconds();
  }

  template <class BasicJsonType>
  static Span from_json(const BasicJsonType& json) {
    using Rep = typename Span::Rep;
    using TypeError = typename BasicJsonType::type_error;
    if (json.is_number_unsigned()) {
      const auto value = json.template get<std::uint64_t>();
      if (!std::in_range<Rep>(value)) {
        throw BasicJsonType::out_of_range::create(
            406, "number " + std::to_string(value) + " does not fit a signed 64-bit integer",
            &json);
      }
      return Span(static_cast<Rep>(value));
    }
    if (json.is_number_integer()) {
      const auto value = json.template get<std::int64_t>();
      if (!std::in_range<Rep>(value)) {
        throw TypeError::create(302, "type must be unsigned integer, but is negative integer",
                                &json);
      }
      return Span(static_cast<Rep>(value));
    }
    const std::string expected = std::is_signed_v<Rep> ? "integer" : "unsigned integer";
    const std::string found = json.is_number_float() ? "floating-point number" : json.type_name();
    throw TypeError::create(302, "type must be " + expected + ", but is " + found, &json);
  }
};

}  // namespace quanda_detail
