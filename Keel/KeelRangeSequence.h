// KeelRangeSequence<T>: a sorted sequence of closed ranges that answers "is this value in any of
// them?" in logarithmic time.
//
// The ranges come from a KeelSortedArray ordered by lower bound (as KeelClosedRange's
// areInIncreasingOrder orders them) and are kept exactly as given: they may overlap, touch or
// repeat. Because a wide early range can cover values beyond later ones, the sequence keeps, beside
// the ranges, the running maximum of their upper bounds; contains(value) finds the last range whose
// lower bound is at most value (a search of the sorted array, binary above its threshold) and
// compares value with the greatest upper bound up to there.
//
// A range sequence is a value: copies share one immutable storage, so copying is cheap and
// equality, hashing and description are over the ranges in order.
//
//   KeelRangeSequence<int> holidays(KeelSortedArray(std::vector{KeelClosedRange(20, 25),
//                                                               KeelClosedRange(1, 3)}));
//   holidays.contains(21);  // true
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "Keel/KeelClosedRange.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelSortedArray.h"

template <std::totally_ordered T>
class KeelRangeSequence {
 public:
  using Range = KeelClosedRange<T>;

  // The ranges of sorted, which must be in non-decreasing order of lower bound.
  explicit KeelRangeSequence(const KeelSortedArray<Range>& sorted)
      : storage_(std::make_shared<const Storage>(sorted)) {}

  const KeelSortedArray<Range>& ranges() const noexcept { return storage_->ranges; }

  // Whether at least one of the ranges holds value.
  bool contains(const T& value) const {
    const std::size_t candidates = storage_->ranges.partitionPoint(
        [&](const Range& range) { return range.lowerBound() <= value; });
    return candidates > 0 && value <= storage_->upperBoundMaxima[candidates - 1];
  }

  std::string description() const { return keel::describe(storage_->ranges.elements()); }

  friend bool operator==(const KeelRangeSequence& lhs, const KeelRangeSequence& rhs) {
    return lhs.storage_ == rhs.storage_ || lhs.storage_->ranges == rhs.storage_->ranges;
  }

 private:
  struct Storage {
    explicit Storage(const KeelSortedArray<Range>& sorted) : ranges(sorted) {
      upperBoundMaxima.reserve(ranges.size());
      for (std::size_t index = 0; index < ranges.size(); ++index) {
        const Range& range = ranges[index];
        if (index == 0) {
          upperBoundMaxima.push_back(range.upperBound());
          continue;
        }
        KEEL_PRECONDITION(ranges[index - 1].lowerBound() <= range.lowerBound(),
                          "a range sequence needs its ranges sorted by lower bound");
        const T& previous = upperBoundMaxima.back();
        upperBoundMaxima.push_back(previous < range.upperBound() ? range.upperBound() : previous);
      }
    }

    KeelSortedArray<Range> ranges;
    std::vector<T> upperBoundMaxima;  // [i]: the greatest upper bound of ranges 0...i
  };

  std::shared_ptr<const Storage> storage_;
};

template <class T>
std::ostream& operator<<(std::ostream& stream, const KeelRangeSequence<T>& sequence) {
  return stream << sequence.description();
}

template <class T>
struct std::hash<KeelRangeSequence<T>> {
  std::size_t operator()(const KeelRangeSequence<T>& sequence) const noexcept {
    std::size_t seed = std::hash<std::size_t>{}(sequence.ranges().size());
    for (const auto& range : sequence.ranges()) {
      seed = keel::hashCombine(seed, std::hash<KeelClosedRange<T>>{}(range));
    }
    return seed;
  }
};
