// DayBlock: 64 consecutive days as the word-parallel searches read them, and AnswerRun, a stretch
// of days over which a mask's answers repeat. Internal to the date masks.
//
// A combination of rules (all of, any of, not) that is not month-local is searched 64 days at a
// time: each mask writes its answers for a block of days into one 64-bit word (bit i for day
// start + i), and the combination ANDs, ORs and inverts the words of its parts. A block carries
// what the rules read, worked out once per block rather than once per mask or per day: the
// weekday of its first day, its preferred week and the place of its first day in that week, the
// months it overlaps (their kinds in the 400-year table and where each begins in the word), and
// the count of months since January of year 1.
//
// Every rule of the library is periodic away from a few break points: a day cycle of n days
// repeats every n days from its anchor's residue, a week cycle every 7n days from its first
// residue, a month-local rule every 146097 days (every 7 or every day for the simplest), a date
// range answers the same on each side of its ends. An AnswerRun is the stretch around a day
// between two such break points, with the period the answers keep inside it; a combination's run
// is the intersection of its parts' runs and its period their least common multiple. A search
// that has read one whole period of a run without finding its answer knows the rest of the run
// holds none.
#pragma once

#include <array>
#include <cstdint>
#include <numeric>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaDateMaskSearch.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

namespace quanda_detail {

// The days first...last (day counts) over which the answers repeat every `period` days: 1 means
// one answer throughout, 0 no known period.
struct AnswerRun {
  std::uint32_t first;
  std::uint32_t last;
  std::uint32_t period;
};

// A period of this many days, or 0 (none known) when it is longer than the valid range, where it
// could never end a search early.
constexpr std::uint32_t periodWithin(std::uint64_t days) noexcept {
  return days <= QuandaAbstractDate::validDaysSinceDatumRange.max() + std::uint64_t{1}
             ? static_cast<std::uint32_t>(days)
             : 0;
}

// The period of a combination of parts with these periods: their least common multiple, or 0
// when either is unknown or the multiple is longer than the valid range.
constexpr std::uint32_t combinedPeriod(std::uint32_t lhs, std::uint32_t rhs) noexcept {
  if (lhs == 0 || rhs == 0) return 0;
  return periodWithin(std::uint64_t{lhs} / std::gcd(lhs, rhs) * rhs);
}

// The days of the block from `start` that lie in low...high (day counts).
constexpr std::uint64_t daysInInterval(std::uint32_t start, std::uint32_t low,
                                       std::uint32_t high) noexcept {
  if (high < start || low > start + 63) return 0;
  const std::uint32_t from = low > start ? low - start : 0;
  const std::uint32_t through = high - start < 63 ? high - start : 63;
  return (~std::uint64_t{0} >> (63 - through)) & (~std::uint64_t{0} << from);
}

class DayBlock {
 public:
  static constexpr std::uint32_t size = 64;

  // The block of the 64 days from `start` on (days past 9999-12-31 are read as if the calendar
  // went on; the searches never care about them).
  static constexpr DayBlock at(std::uint32_t start,
                               QuandaDayOfGregorianWeek firstDayOfWeek) noexcept {
    const QuandaAbstractDate date = QuandaAbstractDate::makeFromDaysSinceDatum(start);
    const auto week = date.weekNumberAndDay(firstDayOfWeek);
    DayBlock block;
    block.start_ = start;
    block.firstDayOfWeek_ = firstDayOfWeek;
    block.weekdayOfStart_ = start % 7;
    block.week_ = static_cast<std::uint32_t>(week.week);
    block.dayInWeek_ = week.zeroBasedDayOfWeek;
    block.monthIndex_ = calendarCycleIndex(date.year(), date.month());
    block.monthsSinceDatum_ = (date.year() - 1U) * 12U + (date.month() - 1U);
    block.dayOfMonth_ = date.day();
    block.placeMonths();
    return block;
  }

  // Moves on to the next 64 days.
  constexpr void advance() noexcept {
    start_ += size;
    weekdayOfStart_ = (weekdayOfStart_ + size) % 7;
    week_ += size / 7;
    dayInWeek_ += size % 7;
    if (dayInWeek_ >= 7) {
      dayInWeek_ -= 7;
      ++week_;
    }
    dayOfMonth_ += size;
    for (std::uint32_t length = lengthOfMonthKind(kindOfMonth(monthIndex_)); dayOfMonth_ > length;
         length = lengthOfMonthKind(kindOfMonth(monthIndex_))) {
      dayOfMonth_ -= length;
      monthIndex_ = nextCalendarCycleIndex(monthIndex_);
      ++monthsSinceDatum_;
    }
    placeMonths();
  }

  constexpr std::uint32_t start() const noexcept { return start_; }
  constexpr QuandaDayOfGregorianWeek firstDayOfWeek() const noexcept { return firstDayOfWeek_; }
  // The preferred week (QuandaAbstractDate::weekNumberAndDay) of the first day.
  constexpr std::uint32_t week() const noexcept { return week_; }
  // The months since January of year 1 to the month of the first day.
  constexpr std::uint32_t monthsSinceDatum() const noexcept { return monthsSinceDatum_; }

  // The days on a weekday of `weekdayBits` (bit i for ordinal i).
  constexpr std::uint64_t weekdays(std::uint8_t weekdayBits) const noexcept {
    const std::uint32_t doubled = (weekdayBits & 0x7FU) | (std::uint32_t{weekdayBits} & 0x7FU) << 7;
    return ((doubled >> weekdayOfStart_) & 0x7FU) * everySeventhBit;
  }

  // The days of the weeks whose bits are set in `weekBits`, bit j standing for the j-th
  // preferred week from the one holding the first day (the block touches 10 at most).
  constexpr std::uint64_t daysOfWeeks(std::uint64_t weekBits) const noexcept {
    const std::uint64_t firstNine = wholeWeeks[weekBits & 7U] |
                                    wholeWeeks[weekBits >> 3 & 7U] << 21 |
                                    wholeWeeks[weekBits >> 6 & 7U] << 42;
    std::uint64_t days = firstNine >> dayInWeek_;
    if ((weekBits >> 9) & 1U) days |= std::uint64_t{0x7F} << (63 - dayInWeek_);
    return days;
  }

  // The days of the months whose bits are set in `monthBits`, bit j standing for the j-th month
  // from the one holding the first day (the block touches 4 at most).
  constexpr std::uint64_t daysOfMonths(std::uint64_t monthBits) const noexcept {
    std::uint64_t days = 0;
    for (std::uint32_t slot = 0; slot < monthCount_; ++slot) {
      if (((monthBits >> slot) & 1U) == 0) continue;
      const std::uint32_t end = slot + 1 < monthCount_ ? offsets_[slot + 1] - 1U : 63U;
      days |= daysInInterval(0, offsets_[slot], end);
    }
    return days;
  }

  // The days a month-local rule selects.
  constexpr std::uint64_t monthDays(const MonthDaySets& sets) const noexcept {
    std::uint64_t days = std::uint64_t{sets.days(kinds_[0])} >> dayOfMonth_;
    for (std::uint32_t slot = 1; slot < monthCount_; ++slot) {
      days |= std::uint64_t{sets.days(kinds_[slot]) >> 1} << offsets_[slot];
    }
    return days;
  }

 private:
  static constexpr std::uint64_t everySeventhBit = [] {
    std::uint64_t bits = 0;
    for (std::uint32_t bit = 0; bit < 64; bit += 7) bits |= std::uint64_t{1} << bit;
    return bits;
  }();
  // Bit k of the index: seven bits from 7k on.
  static constexpr std::array<std::uint64_t, 8> wholeWeeks = [] {
    std::array<std::uint64_t, 8> weeks{};
    for (std::uint32_t index = 0; index < 8; ++index) {
      for (std::uint32_t week = 0; week < 3; ++week) {
        if ((index >> week) & 1U) weeks[index] |= std::uint64_t{0x7F} << (7 * week);
      }
    }
    return weeks;
  }();

  // The months the block overlaps: their kinds, and the bit where each begins (its day 1).
  constexpr void placeMonths() noexcept {
    kinds_[0] = static_cast<std::uint8_t>(kindOfMonth(monthIndex_));
    std::uint32_t offset = lengthOfMonthKind(kinds_[0]) - dayOfMonth_ + 1;
    std::uint32_t index = monthIndex_;
    monthCount_ = 1;
    while (offset < size) {
      index = nextCalendarCycleIndex(index);
      kinds_[monthCount_] = static_cast<std::uint8_t>(kindOfMonth(index));
      offsets_[monthCount_] = static_cast<std::uint8_t>(offset);
      offset += lengthOfMonthKind(kinds_[monthCount_]);
      ++monthCount_;
    }
  }

  std::uint32_t start_ = 0;
  QuandaDayOfGregorianWeek firstDayOfWeek_ = QuandaDayOfGregorianWeek::monday;
  std::uint32_t weekdayOfStart_ = 0;
  std::uint32_t week_ = 0;
  std::uint32_t dayInWeek_ = 0;
  std::uint32_t monthIndex_ = 0;
  std::uint32_t monthsSinceDatum_ = 0;
  std::uint32_t dayOfMonth_ = 1;
  std::uint32_t monthCount_ = 1;
  std::array<std::uint8_t, 4> kinds_{};
  std::array<std::uint8_t, 4> offsets_{};
};

}  // namespace quanda_detail
