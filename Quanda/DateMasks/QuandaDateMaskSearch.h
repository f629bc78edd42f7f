// The searches that the masks share: weekdays in a window of day counts, and days of the month
// month by month. Internal to the date masks.
//
// Every search works on day counts (0 is 0001-01-01) within a window first...last and returns the
// earliest or latest day whose answer is the wanted one. None of them visits days one by one:
// weekdays are found by rotating a 7-bit set, days of the month by intersecting a month's wanted
// days (a 32-bit set, bit d for day d) with the days still in the window.
#pragma once

#include <bit>
#include <cstdint>
#include <optional>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/QuandaConstants.h"

namespace quanda_detail {

inline constexpr std::uint32_t lastValidDayCount =
    QuandaAbstractDate::validDaysSinceDatumRange.max();

// The bits of days 1...length.
constexpr std::uint32_t daysUpTo(std::uint32_t length) noexcept {
  return length >= 31 ? 0xFFFFFFFEU : ((std::uint32_t{1} << (length + 1)) - 2);
}

// The days of a month (bit d for day d) that fall on the weekdays in `weekdayBits` (bit i for
// ordinal i), given the weekday ordinal of the month's 1st.
constexpr std::uint32_t daysOnWeekdays(std::uint8_t weekdayBits,
                                       std::uint32_t weekdayOfFirst) noexcept {
  const std::uint32_t doubled = weekdayBits | (std::uint32_t{weekdayBits} << 7);
  const std::uint64_t week = (doubled >> weekdayOfFirst) & 0x7FU;  // bit k: day k + 1
  const std::uint64_t repeated = week * 0x0810204081ULL;           // bits 0...34
  return static_cast<std::uint32_t>(repeated << 1);
}

// The days of a month of `monthLength` days whose block number is in `blockBits` (bit k for
// block k), blocks being `blockLength` days counted from the 1st or from the last day; block 1
// holds the 1st (or the last day). With a block length of 1 the blocks are the days themselves.
constexpr std::uint32_t daysInBlocks(std::uint64_t blockBits, std::uint32_t blockLength,
                                     bool fromEnd, std::uint32_t monthLength) noexcept {
  std::uint32_t days = 0;
  for (std::uint32_t day = 1; day <= monthLength; ++day) {
    const std::uint32_t block = (fromEnd ? monthLength - day : day - 1) / blockLength + 1;
    if (block < 64 && ((blockBits >> block) & 1U)) days |= std::uint32_t{1} << day;
  }
  return days;
}

// The four tables of daysInBlocks for months of 28, 29, 30 and 31 days.
struct DaysByMonthLength {
  std::uint32_t days[4] = {};
  constexpr std::uint32_t operator()(std::uint32_t monthLength) const noexcept {
    return days[monthLength - 28];
  }
  static constexpr DaysByMonthLength make(std::uint64_t blockBits, std::uint32_t blockLength,
                                          bool fromEnd) noexcept {
    DaysByMonthLength table;
    for (std::uint32_t length = 28; length <= 31; ++length) {
      table.days[length - 28] = daysInBlocks(blockBits, blockLength, fromEnd, length);
    }
    return table;
  }
  friend constexpr bool operator==(const DaysByMonthLength&, const DaysByMonthLength&) = default;
};

// The earliest day in first...last whose weekday ordinal is in weekdayBits (bit i for ordinal i).
constexpr std::optional<std::uint32_t> earliestWeekday(std::uint8_t weekdayBits,
                                                       std::uint32_t first,
                                                       std::uint32_t last) noexcept {
  if ((weekdayBits & 0x7FU) == 0) return std::nullopt;
  const std::uint32_t doubled = (weekdayBits & 0x7FU) | ((weekdayBits & 0x7FU) << 7);
  const std::uint32_t ahead = std::countr_zero(doubled >> (first % 7));
  const std::uint64_t day = std::uint64_t{first} + ahead;
  if (day > last) return std::nullopt;
  return static_cast<std::uint32_t>(day);
}

// The latest day in first...last whose weekday ordinal is in weekdayBits.
constexpr std::optional<std::uint32_t> latestWeekday(std::uint8_t weekdayBits, std::uint32_t first,
                                                     std::uint32_t last) noexcept {
  if ((weekdayBits & 0x7FU) == 0) return std::nullopt;
  const std::uint32_t doubled = (weekdayBits & 0x7FU) | ((weekdayBits & 0x7FU) << 7);
  const std::uint32_t position = last % 7 + 7;  // in the upper copy
  const std::uint32_t atOrBelow = doubled & ((std::uint32_t{2} << position) - 1);
  const std::uint32_t behind = position - (std::bit_width(atOrBelow) - 1);
  if (last < first + behind) return std::nullopt;
  return last - behind;
}

// A month of the calendar seen from the day count of its 1st.
struct MonthCursor {
  std::uint32_t start;  // day count of the 1st
  std::uint16_t year;
  std::uint8_t month;
  std::uint8_t length;

  static constexpr MonthCursor holding(std::uint32_t dayCount) noexcept {
    const QuandaAbstractDate date = QuandaAbstractDate::makeFromDaysSinceDatum(dayCount);
    return {dayCount - (date.day() - 1U), date.year(), date.month(), date.daysInMonth()};
  }
  constexpr std::uint32_t weekdayOfFirst() const noexcept { return start % 7; }
  constexpr std::uint32_t end() const noexcept { return start + length - 1U; }
  constexpr void moveToNext() noexcept {
    start += length;
    if (month == 12) {
      month = 1;
      ++year;
    } else {
      ++month;
    }
    length = year <= 9999 ? Quanda::DaysIn::Gregorian::oneBasedMonth(month, year) : 31;
  }
  constexpr void moveToPrevious() noexcept {
    if (month == 1) {
      month = 12;
      --year;
    } else {
      --month;
    }
    length = Quanda::DaysIn::Gregorian::oneBasedMonth(month, year);
    start -= length;
  }
};

// The Gregorian calendar repeats its months, lengths and weekdays alike, every 400 years: a month
// search that finds nothing in that many months finds nothing ever.
inline constexpr std::uint32_t monthsInCalendarCycle = 4800;

// The earliest day in first...last on which wantedDays(monthLength, weekdayOfFirst) (the days of
// that month that match, bit d for day d) is `matching`. `possible` tells whether some month can
// have such a day at all, so that an impossible rule is answered at once.
template <class WantedDays>
std::optional<std::uint32_t> earliestMonthDay(bool matching, bool possible, std::uint32_t first,
                                              std::uint32_t last, const WantedDays& wantedDays) {
  if (!possible) return std::nullopt;
  MonthCursor month = MonthCursor::holding(first);
  std::uint32_t fromDay = first - month.start + 1;
  for (std::uint32_t visited = 0; visited <= monthsInCalendarCycle; ++visited) {
    const std::uint32_t wanted = wantedDays(month.length, month.weekdayOfFirst());
    const std::uint32_t days =
        (matching ? wanted : ~wanted) & daysUpTo(month.length) & ~daysUpTo(fromDay - 1);
    if (days != 0) {
      const std::uint32_t found = month.start + std::countr_zero(days) - 1;
      return found <= last ? std::optional(found) : std::nullopt;
    }
    if (month.end() >= last) return std::nullopt;
    month.moveToNext();
    fromDay = 1;
  }
  return std::nullopt;
}

// The latest day in first...last on which wantedDays is `matching`; as earliestMonthDay.
template <class WantedDays>
std::optional<std::uint32_t> latestMonthDay(bool matching, bool possible, std::uint32_t first,
                                            std::uint32_t last, const WantedDays& wantedDays) {
  if (!possible) return std::nullopt;
  MonthCursor month = MonthCursor::holding(last);
  std::uint32_t throughDay = last - month.start + 1;
  for (std::uint32_t visited = 0; visited <= monthsInCalendarCycle; ++visited) {
    const std::uint32_t wanted = wantedDays(month.length, month.weekdayOfFirst());
    const std::uint32_t days = (matching ? wanted : ~wanted) & daysUpTo(throughDay);
    if (days != 0) {
      const std::uint32_t found = month.start + (std::bit_width(days) - 1) - 1;
      return found >= first ? std::optional(found) : std::nullopt;
    }
    if (month.start <= first) return std::nullopt;
    month.moveToPrevious();
    throughDay = month.length;
  }
  return std::nullopt;
}

}  // namespace quanda_detail

namespace quanda_detail {

// Whether a month rule can give `matching` at all, from the days it wants in a 31-day month: every
// day number 1...31 and every weekday position occur in some 31-day month, and shorter months
// only drop days, so the longest month decides.
constexpr bool canAnswer(bool matching, std::uint32_t daysOfLongestMonth) noexcept {
  const std::uint32_t days = daysOfLongestMonth & daysUpTo(31);
  return matching ? days != 0 : days != daysUpTo(31);
}

}  // namespace quanda_detail
