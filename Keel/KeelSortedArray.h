// KeelSortedArray<T>: an immutable array sorted once, at construction, by a given predicate.
//
// The sort is stable, so elements the predicate deems equivalent keep the order they were given
// in. Lookups search linearly while the array holds at most binarySearchThreshold elements
// (scanning a few neighbours beats the branches of a binary search) and by bisection above it.
//
//   KeelSortedArray<int> numbers(std::vector{5, 1, 3});  // 1, 3, 5 by std::less
//   numbers.lowerBound(3);                               // 1: the index of the first element >= 3
//
// Equality compares the elements alone; the predicate and the threshold are how the array was
// built, not what it holds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <ranges>
#include <type_traits>
#include <utility>
#include <vector>

#include "Keel/KeelPrecondition.h"

namespace keel {
// A sequence whose elements convert to T.
template <class Sequence, class T>
concept SequenceOf = std::ranges::input_range<Sequence> &&
    std::convertible_to<std::ranges::range_reference_t<Sequence>, T>;
}  // namespace keel

template <class T>
class KeelSortedArray {
 public:
  using Predicate = std::function<bool(const T&, const T&)>;
  using const_iterator = typename std::vector<T>::const_iterator;

  // The threshold used when none is given.
  static constexpr std::size_t defaultBinarySearchThreshold = 16;

  // Sorts sequence by areInIncreasingOrder, a strict weak ordering.
  explicit KeelSortedArray(std::vector<T> sequence,
                           std::optional<std::size_t> binarySearchThreshold = std::nullopt,
                           std::type_identity_t<Predicate> areInIncreasingOrder = std::less<T>())
      : elements_(std::move(sequence)),
        areInIncreasingOrder_(std::move(areInIncreasingOrder)),
        binarySearchThreshold_(binarySearchThreshold.value_or(defaultBinarySearchThreshold)) {
    KEEL_PRECONDITION(areInIncreasingOrder_ != nullptr, "a sorted array needs a predicate");
    std::stable_sort(elements_.begin(), elements_.end(), areInIncreasingOrder_);
  }

  // The same from any other sequence of T (a std::vector<T> takes the constructor above).
  template <keel::SequenceOf<T> Sequence>
  explicit KeelSortedArray(Sequence&& sequence,
                           std::optional<std::size_t> binarySearchThreshold = std::nullopt,
                           std::type_identity_t<Predicate> areInIncreasingOrder = std::less<T>())
      : KeelSortedArray(collect(std::forward<Sequence>(sequence)), binarySearchThreshold,
                        std::move(areInIncreasingOrder)) {}

  const_iterator begin() const noexcept { return elements_.begin(); }
  const_iterator end() const noexcept { return elements_.end(); }
  std::size_t size() const noexcept { return elements_.size(); }
  bool empty() const noexcept { return elements_.empty(); }
  const T& operator[](std::size_t index) const {
    KEEL_PRECONDITION(index < elements_.size(), "sorted array index out of range");
    return elements_[index];
  }
  const std::vector<T>& elements() const noexcept { return elements_; }

  std::size_t binarySearchThreshold() const noexcept { return binarySearchThreshold_; }
  const Predicate& areInIncreasingOrder() const noexcept { return areInIncreasingOrder_; }

  // The index of the first element for which isBefore does not hold, given that it holds for a
  // prefix of the array and not after (as "element < x" does for any x). size() when it holds for
  // every element.
  template <class IsBefore>
  std::size_t partitionPoint(IsBefore isBefore) const {
    if (elements_.size() <= binarySearchThreshold_) {
      std::size_t index = 0;
      while (index < elements_.size() && isBefore(elements_[index])) ++index;
      return index;
    }
    return static_cast<std::size_t>(
        std::partition_point(elements_.begin(), elements_.end(), std::move(isBefore)) -
        elements_.begin());
  }

  // The index of the first element not ordered before value.
  std::size_t lowerBound(const T& value) const {
    return partitionPoint([&](const T& element) { return areInIncreasingOrder_(element, value); });
  }
  // The index of the first element ordered after value.
  std::size_t upperBound(const T& value) const {
    return partitionPoint([&](const T& element) { return !areInIncreasingOrder_(value, element); });
  }
  // Whether an element equivalent to value (neither ordered before nor after it) is present.
  bool contains(const T& value) const {
    const std::size_t index = lowerBound(value);
    return index < elements_.size() && !areInIncreasingOrder_(value, elements_[index]);
  }

  friend bool operator==(const KeelSortedArray& lhs, const KeelSortedArray& rhs) {
    return lhs.elements_ == rhs.elements_;
  }

 private:
  template <class Sequence>
  static std::vector<T> collect(Sequence&& sequence) {
    std::vector<T> elements;
    if constexpr (std::ranges::sized_range<Sequence>) {
      elements.reserve(static_cast<std::size_t>(std::ranges::size(sequence)));
    }
    for (auto&& element : sequence) elements.emplace_back(std::forward<decltype(element)>(element));
    return elements;
  }

  std::vector<T> elements_;
  Predicate areInIncreasingOrder_;
  std::size_t binarySearchThreshold_;
};

template <std::ranges::input_range Sequence, class... Rest>
KeelSortedArray(Sequence&&, Rest&&...)
    -> KeelSortedArray<std::ranges::range_value_t<std::remove_cvref_t<Sequence>>>;
