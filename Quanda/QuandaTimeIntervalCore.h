// The shared core of the two clock types, QuandaLogicTimeInterval and QuandaInterfaceTimeInterval.
//
// Both are an instant as seconds since 1970-01-01T00:00:00Z in a double, fractional, possibly
// negative and never validated. They are kept as two distinct types so that a reading of one
// clock cannot be passed where the other is expected; each derives from
// QuandaTimeIntervalCore<Self>, which gives the whole shared interface. Every operation is one
// double operation: nothing is rounded, clamped or normalised, and non-finite values are carried
// as they are. Each clock type declares its own static constant zero (the epoch) after its
// complete definition, so that zero stays usable in constant expressions. Include the interval
// headers, not this one.
#pragma once

#include <cmath>
#include <compare>
#include <concepts>
#include <cstddef>
#include <limits>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "Keel/KeelDate.h"
#include "Keel/KeelDomain.h"
#include "Keel/KeelError.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelPrecision.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

namespace quanda_detail {

template <class Derived>
class QuandaTimeIntervalCore {
 public:
  constexpr explicit QuandaTimeIntervalCore(double unixEpoch) noexcept : unixEpoch_(unixEpoch) {}
  // The platform instant's seconds since 1970.
  constexpr explicit QuandaTimeIntervalCore(KeelDate date) noexcept
      : unixEpoch_(date.time_since_epoch().count()) {}

  // The interval at a position in seconds since 1970: the same as the constructor.
  static constexpr Derived makeFromDouble(double unixEpoch) noexcept { return Derived(unixEpoch); }

  constexpr double unixEpoch() const noexcept { return unixEpoch_; }
  constexpr double asDouble() const noexcept { return unixEpoch_; }

  // The neighbouring representable instants.
  Derived nextUp() const noexcept {
    return Derived(std::nextafter(unixEpoch_, std::numeric_limits<double>::infinity()));
  }
  Derived nextDown() const noexcept {
    return Derived(std::nextafter(unixEpoch_, -std::numeric_limits<double>::infinity()));
  }

  // Equality within the tolerance (keelEquals on unixEpoch).
  constexpr bool equals(const Derived& other, KeelPrecision tolerance) const noexcept {
    return keelEquals(unixEpoch_, other.unixEpoch(), tolerance);
  }

  // unixEpoch in its shortest round-trip form, such as "1700000000.25".
  std::string description() const { return keel::describeDouble(unixEpoch_); }

  // -0.0 and +0.0, which compare equal, hash alike.
  std::size_t hashValue() const noexcept {
    return keel::hashCombine(0, keel::hashDouble(unixEpoch_));
  }

  friend constexpr bool operator==(const Derived& lhs, const Derived& rhs) noexcept {
    return lhs.unixEpoch() == rhs.unixEpoch();
  }
  friend constexpr std::partial_ordering operator<=>(const Derived& lhs,
                                                     const Derived& rhs) noexcept {
    return lhs.unixEpoch() <=> rhs.unixEpoch();
  }

  // The instant span.seconds() earlier.
  friend constexpr Derived operator-(const Derived& interval, QuandaRealTimeSpan span) noexcept {
    return Derived(interval.unixEpoch() - span.seconds());
  }
  // How far lhs lies after rhs; negative when lhs is the earlier instant.
  friend constexpr QuandaRealTimeSpan operator-(const Derived& lhs, const Derived& rhs) noexcept {
    return QuandaRealTimeSpan(lhs.unixEpoch() - rhs.unixEpoch());
  }

  friend std::ostream& operator<<(std::ostream& stream, const Derived& interval) {
    return stream << interval.description();
  }

 private:
  double unixEpoch_;
};

template <class T>
concept QuandaTimeInterval = std::derived_from<T, QuandaTimeIntervalCore<T>>;

template <class Interval>
struct QuandaTimeIntervalHash {
  std::size_t operator()(const Interval& interval) const noexcept { return interval.hashValue(); }
};

// The keyed archive of an interval: {"unixEpoch": <double>}. Decoding reads that number and
// nothing else, without a range check. A missing key is nlohmann's out_of_range 403; a value that
// is not a number (booleans included) is its type_error 302; a document that is not an object is
// its type_error 304.
//
// nlohmann writes a double in a form that reads back to the same bits, so a finite interval
// survives dump() and parse() exactly. JSON has no literal for infinities or NaN: dump() writes
// them as null, which then fails to decode.
template <class Interval>
struct QuandaTimeIntervalArchive {
  template <class BasicJsonType>
  static void to_json(BasicJsonType& json, const Interval& interval) {
    json = BasicJsonType::object();
    json["unixEpoch"] = interval.unixEpoch();
  }

  template <class BasicJsonType>
  static Interval from_json(const BasicJsonType& json) {
    const BasicJsonType& value = json.at("unixEpoch");
    if (!value.is_number()) {
      throw BasicJsonType::type_error::create(
          302, std::string("type must be number, but is ") + value.type_name(), &value);
    }
    return Interval(value.template get<double>());
  }
};

}  // namespace quanda_detail

// The domain of intervals from range.min() to range.max() (as given, not reordered).
template <quanda_detail::QuandaTimeInterval Interval>
constexpr KeelDomain<Interval> makeTimeIntervalDomain(const KeelDomain<double>& range) noexcept {
  return KeelDomain<Interval>(Interval(range.min()), Interval(range.max()));
}

// The length of a domain of intervals: max - min, negative when the bounds are reversed.
template <quanda_detail::QuandaTimeInterval Interval>
constexpr QuandaRealTimeSpan range(const KeelDomain<Interval>& domain) noexcept {
  return domain.max() - domain.min();
}
