// KeelDomain<T>: a closed range [min, max] of an ordered type.
//
// The bounds are stored as given; trueMin() and trueMax() are the smaller and the larger of the
// two whatever order they came in, and clamp() and contains() work on those, so a domain given
// with reversed bounds still describes the same set. Equality and hashing are over both stored
// bounds. The library uses domains for every valid range (years 1...9999, day counts, dates) and
// as the date range of masks and iterators.
#pragma once

#include <cstddef>
#include <functional>
#include <ostream>

#include "Keel/KeelBoundsEligibility.h"
#include "Keel/KeelHash.h"

template <class T>
class KeelDomain {
 public:
  using BoundsEligibility = KeelBoundsEligibility;

  constexpr KeelDomain(T min, T max) : min_(min), max_(max) {}

  constexpr const T& min() const noexcept { return min_; }
  constexpr const T& max() const noexcept { return max_; }
  constexpr const T& trueMin() const noexcept { return max_ < min_ ? max_ : min_; }
  constexpr const T& trueMax() const noexcept { return max_ < min_ ? min_ : max_; }

  // The lower bound for a value below it, the upper bound for a value above it, else the value.
  constexpr T clamp(const T& value) const {
    if (value < trueMin()) return trueMin();
    if (trueMax() < value) return trueMax();
    return value;
  }

  constexpr bool contains(const T& value, BoundsEligibility boundsEligibility =
                                              BoundsEligibility::inclusiveMinInclusiveMax) const {
    const T& low = trueMin();
    const T& high = trueMax();
    switch (boundsEligibility) {
      case BoundsEligibility::inclusiveMinInclusiveMax:
        return low <= value && value <= high;
      case BoundsEligibility::inclusiveMinExclusiveMax:
        return low <= value && value < high;
      case BoundsEligibility::exclusiveMinInclusiveMax:
        return low < value && value <= high;
      case BoundsEligibility::exclusiveMinExclusiveMax:
        return low < value && value < high;
    }
    return false;
  }

  friend constexpr bool operator==(const KeelDomain&, const KeelDomain&) = default;

 private:
  T min_;
  T max_;
};

template <class T>
std::ostream& operator<<(std::ostream& stream, const KeelDomain<T>& domain) {
  return stream << domain.min() << "..." << domain.max();
}

template <class T>
struct std::hash<KeelDomain<T>> {
  std::size_t operator()(const KeelDomain<T>& domain) const noexcept {
    return keel::hashFields(domain.min(), domain.max());
  }
};
