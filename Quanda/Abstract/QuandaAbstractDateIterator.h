// QuandaAbstractDateIterator: the dates of a date range, one day at a time, bounds included.
//
// A walk starts at the range's min() and ends at its max(), stepping one day forward when min() is
// the earlier bound and one day backward otherwise, so a range given with reversed bounds is
// walked from its later date down to its earlier one. The walk is a small value (the next date,
// the last date and the step); copying it copies the position.
//
// It can be driven either way:
//
//   for (QuandaAbstractDate date : QuandaAbstractDateIterator(range)) { ... }
//
//   QuandaAbstractDateIterator walk(range);
//   while (const std::optional<QuandaAbstractDate> date = walk.next()) { ... }
//
// begin() starts from the current position without consuming it, and end() is a sentinel, so the
// iterator is also a std::ranges::forward_range. Each step is a nextDay() or previousDay(): no day
// count round trip and never a step past the last date.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

#include "Keel/KeelDomain.h"
#include "Keel/KeelPrecondition.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"

class QuandaAbstractDateIterator {
 public:
  // The standard iterator over the remaining dates; equals std::default_sentinel once the walk is
  // over. Defined below, as it holds a walk of its own.
  class Iterator;

  // Walks from range.min() to range.max(), both included.
  constexpr explicit QuandaAbstractDateIterator(
      const KeelDomain<QuandaAbstractDate>& range) noexcept
      : current_(range.min()),
        max_(range.max()),
        dayIncrement_(range.min() < range.max() ? 1 : -1) {}

  // The date the next step hands out; nothing once the walk is over.
  constexpr const std::optional<QuandaAbstractDate>& current() const noexcept { return current_; }
  // The last date of the walk.
  constexpr QuandaAbstractDate max() const noexcept { return max_; }
  // +1 for a forward walk, -1 for a backward one.
  constexpr std::int32_t dayIncrement() const noexcept { return dayIncrement_; }

  // Hands out the current date and moves on; nothing once the walk is over.
  constexpr std::optional<QuandaAbstractDate> next() noexcept {
    const std::optional<QuandaAbstractDate> date = current_;
    if (date) {
      if (*date == max_) {
        current_.reset();
      } else {
        // Never past max_, which is a valid date, so neither step can leave the valid range.
        current_ = dayIncrement_ > 0 ? date->nextDay() : date->previousDay();
      }
    }
    return date;
  }

  constexpr Iterator begin() const noexcept;
  constexpr std::default_sentinel_t end() const noexcept { return std::default_sentinel; }

  friend constexpr bool operator==(const QuandaAbstractDateIterator&,
                                   const QuandaAbstractDateIterator&) noexcept = default;

 private:
  std::optional<QuandaAbstractDate> current_;
  QuandaAbstractDate max_;
  std::int32_t dayIncrement_;
};

class QuandaAbstractDateIterator::Iterator {
 public:
  using value_type = QuandaAbstractDate;
  using difference_type = std::ptrdiff_t;
  using iterator_concept = std::forward_iterator_tag;
  using iterator_category = std::input_iterator_tag;  // dereferencing yields a value

  constexpr Iterator() noexcept = default;

  // Dereferencing a finished walk is a programming error.
  constexpr QuandaAbstractDate operator*() const {
    KEEL_PRECONDITION(walk_.current().has_value(), "dereferencing a finished date walk");
    return *walk_.current();
  }
  constexpr Iterator& operator++() noexcept {
    walk_.next();
    return *this;
  }
  constexpr Iterator operator++(int) noexcept {
    Iterator before = *this;
    walk_.next();
    return before;
  }

  friend constexpr bool operator==(const Iterator& lhs, const Iterator& rhs) noexcept {
    return lhs.walk_.current() == rhs.walk_.current();
  }
  friend constexpr bool operator==(const Iterator& iterator, std::default_sentinel_t) noexcept {
    return !iterator.walk_.current().has_value();
  }

 private:
  friend class QuandaAbstractDateIterator;
  constexpr explicit Iterator(const QuandaAbstractDateIterator& walk) noexcept : walk_(walk) {}

  QuandaAbstractDateIterator walk_{QuandaAbstractDate::validRange};
};

constexpr QuandaAbstractDateIterator::Iterator QuandaAbstractDateIterator::begin() const noexcept {
  return Iterator(*this);
}
