// KeelClosedRange<T>: the values from lowerBound() to upperBound(), both included.
//
// Unlike KeelDomain, whose bounds may come in either order, a closed range is ordered by
// construction: a lower bound above the upper bound is a programming error and stops the process
// (so are unordered bounds such as NaN). A range of one value has equal bounds.
//
// Ranges order by lower bound, then by upper bound (areInIncreasingOrder, and <=> agrees), which is
// the order KeelRangeSequence expects.
//
//   KeelClosedRange<int> weekdays(1, 5);
//   weekdays.contains(5);  // true
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

#include "Keel/KeelError.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelPrecondition.h"

template <std::totally_ordered T>
class KeelClosedRange {
 public:
  constexpr KeelClosedRange(T lowerBound, T upperBound)
      : lowerBound_(lowerBound), upperBound_(upperBound) {
    KEEL_PRECONDITION(lowerBound_ <= upperBound_, "a closed range needs lowerBound <= upperBound");
  }

  constexpr const T& lowerBound() const noexcept { return lowerBound_; }
  constexpr const T& upperBound() const noexcept { return upperBound_; }

  constexpr bool contains(const T& value) const {
    return lowerBound_ <= value && value <= upperBound_;
  }

  // Orders ranges by their lower bound, then by their upper bound.
  static constexpr bool areInIncreasingOrder(const KeelClosedRange& lhs,
                                             const KeelClosedRange& rhs) {
    if (lhs.lowerBound_ < rhs.lowerBound_) return true;
    return lhs.lowerBound_ == rhs.lowerBound_ && lhs.upperBound_ < rhs.upperBound_;
  }

  std::string description() const {
    return keel::describe(lowerBound_) + "..." + keel::describe(upperBound_);
  }

  friend constexpr bool operator==(const KeelClosedRange&, const KeelClosedRange&) = default;
  friend constexpr auto operator<=>(const KeelClosedRange&, const KeelClosedRange&) = default;

 private:
  T lowerBound_;
  T upperBound_;
};

template <class T>
std::ostream& operator<<(std::ostream& stream, const KeelClosedRange<T>& range) {
  return stream << range.description();
}

template <class T>
struct std::hash<KeelClosedRange<T>> {
  std::size_t operator()(const KeelClosedRange<T>& range) const noexcept {
    return keel::hashFields(range.lowerBound(), range.upperBound());
  }
};
