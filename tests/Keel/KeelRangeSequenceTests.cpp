#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <list>
#include <random>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Keel/KeelClosedRange.h"
#include "Keel/KeelRangeSequence.h"
#include "Keel/KeelSortedArray.h"

namespace {

using Range = KeelClosedRange<int>;

TEST(KeelClosedRange, ContainsBothBoundsAndOrdersByLowerThenUpper) {
  const Range range(3, 7);
  EXPECT_TRUE(range.contains(3) && range.contains(7));
  EXPECT_FALSE(range.contains(2) || range.contains(8));
  EXPECT_FALSE(KeelClosedRange(0.0, 1.0).contains(NAN));

  EXPECT_TRUE(Range::areInIncreasingOrder(Range(1, 9), Range(2, 3)));
  EXPECT_TRUE(Range::areInIncreasingOrder(Range(1, 3), Range(1, 4)));
  EXPECT_FALSE(Range::areInIncreasingOrder(Range(1, 4), Range(1, 4)));
  EXPECT_FALSE(Range::areInIncreasingOrder(Range(2, 3), Range(1, 9)));
  EXPECT_EQ(range.description(), "3...7");
}

TEST(KeelClosedRangeDeathTest, RejectsReversedOrUnorderedBounds) {
  EXPECT_DEATH(Range(7, 3), "lowerBound <= upperBound");
  EXPECT_DEATH(KeelClosedRange(std::nan(""), 1.0), "lowerBound <= upperBound");
}

TEST(KeelSortedArray, SortsStablyAndSearchesAlikeLinearlyAndBinary) {
  using Pair = std::pair<int, int>;
  const auto byFirst = [](const Pair& a, const Pair& b) { return a.first < b.first; };
  const KeelSortedArray<Pair> pairs(std::list<Pair>{{2, 0}, {1, 1}, {2, 2}, {1, 3}}, std::nullopt,
                                    byFirst);
  EXPECT_EQ(pairs.elements(), (std::vector<Pair>{{1, 1}, {1, 3}, {2, 0}, {2, 2}}));
  EXPECT_EQ(pairs.binarySearchThreshold(), KeelSortedArray<Pair>::defaultBinarySearchThreshold);

  std::mt19937 random(7);
  for (std::size_t size : {0u, 1u, 5u, 17u, 100u}) {
    std::vector<int> numbers(size);
    for (int& number : numbers) number = std::uniform_int_distribution<int>(0, 30)(random);
    const KeelSortedArray<int> linear(numbers, 1000);
    const KeelSortedArray<int> binary(numbers, 0);
    std::sort(numbers.begin(), numbers.end());
    for (int value = -1; value <= 31; ++value) {
      const auto lower = std::lower_bound(numbers.begin(), numbers.end(), value) - numbers.begin();
      const auto upper = std::upper_bound(numbers.begin(), numbers.end(), value) - numbers.begin();
      for (const auto* array : {&linear, &binary}) {
        EXPECT_EQ(array->lowerBound(value), static_cast<std::size_t>(lower));
        EXPECT_EQ(array->upperBound(value), static_cast<std::size_t>(upper));
        EXPECT_EQ(array->contains(value), lower != upper);
      }
    }
  }
}

TEST(KeelRangeSequence, ContainsAgreesWithBruteForceOnOverlappingRanges) {
  std::mt19937 random(11);
  for (std::size_t count : {0u, 1u, 3u, 16u, 17u, 60u}) {
    for (int round = 0; round < 20; ++round) {
      std::vector<Range> ranges;
      for (std::size_t index = 0; index < count; ++index) {
        const int lower = std::uniform_int_distribution<int>(0, 100)(random);
        ranges.emplace_back(lower, lower + std::uniform_int_distribution<int>(0, 30)(random));
      }
      const KeelRangeSequence<int> sequence(
          KeelSortedArray(ranges, std::nullopt, Range::areInIncreasingOrder));
      for (int value = -1; value <= 132; ++value) {
        const bool expected = std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
          return range.contains(value);
        });
        ASSERT_EQ(sequence.contains(value), expected) << sequence << " value " << value;
      }
    }
  }
}

TEST(KeelRangeSequence, EqualityAndHashFollowTheSortedRanges) {
  const KeelRangeSequence<int> a(
      KeelSortedArray(std::vector{Range(20, 25), Range(1, 3), Range(1, 2)}));
  const KeelRangeSequence<int> b(
      KeelSortedArray(std::vector{Range(1, 2), Range(20, 25), Range(1, 3)}));
  const KeelRangeSequence<int> c(KeelSortedArray(std::vector{Range(1, 2), Range(20, 25)}));
  EXPECT_EQ(a, b);
  EXPECT_NE(a, c);
  EXPECT_EQ(std::hash<KeelRangeSequence<int>>{}(a), std::hash<KeelRangeSequence<int>>{}(b));
  EXPECT_EQ(std::unordered_set<KeelRangeSequence<int>>({a, b, c}).size(), 2u);
  EXPECT_EQ(a.description(), "[1...2, 1...3, 20...25]");
}

TEST(KeelRangeSequenceDeathTest, RejectsRangesNotSortedByLowerBound) {
  const auto byUpperDescending = [](const Range& x, const Range& y) {
    return x.upperBound() > y.upperBound();
  };
  const KeelSortedArray<Range> sorted(std::vector{Range(1, 2), Range(5, 9)}, std::nullopt,
                                      byUpperDescending);
  EXPECT_DEATH(KeelRangeSequence<int>{sorted}, "sorted by lower bound");
}

}  // namespace
