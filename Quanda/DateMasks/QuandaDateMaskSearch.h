// The searches that the masks share: weekdays in a window of day counts, and the days of month-
// local rules month by month. Internal to the date masks.
//
// Every search works within a window of day counts (0 is 0001-01-01), or from a date to the end
// of the valid range, and returns the earliest or latest day whose answer is the wanted one. None
// of them visits days one by one: weekdays are found by rotating a 7-bit set, the days of a month
// by intersecting the month's wanted days (a 32-bit set, bit d for day d) with the days still in
// the window.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <optional>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/QuandaConstants.h"

namespace quanda_detail {

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

// ---- Month-local rules -----------------------------------------------------------------------
//
// Most rules decide a date from its place in its month alone: the day number, the day counted
// from the end, the seven-day block, the weekday, and (for rules written per month of the year)
// the month itself. Which days of a month such a rule selects then depends only on the month of
// the year and the weekday of its 1st, February counting twice (28 and 29 days): 91 kinds of
// month. A MonthDaySets holds the answer for each kind (bit d for day d), built once when the
// mask is made, and combinations of such rules combine these bit sets with AND, OR and NOT.
//
// The Gregorian calendar repeats its months, lengths and weekdays alike, every 400 years (146097
// days, a whole number of weeks), so one table of 4800 bytes gives the kind of every month. A
// search then reads one byte and one word per month visited, with no date conversion inside the
// walk: one at the start and, for the date searches, none at the end.
//
// A rule that also depends on where a month falls in a cycle of months (every third month) is
// not month-local in this sense, since such a cycle need not divide the 400 years: it reads the
// same kinds, plus the month's count since January of year 1, which the walks can track from
// the year and month they carry and DayBlock carries for the word-parallel searches.

// The kind of a month: (month of the year - 1) * 7 + weekday ordinal of its 1st (monday 0), and
// 84 + weekday ordinal of the 1st for a February of 29 days.
inline constexpr std::uint32_t monthKindCount = 91;
constexpr std::uint32_t monthKind(std::uint32_t monthOfYear, std::uint32_t length,
                                  std::uint32_t weekdayOfFirst) noexcept {
  return (length == 29 ? 12 : monthOfYear - 1) * 7 + weekdayOfFirst;
}
constexpr std::uint32_t monthOfYearOfMonthKind(std::uint32_t kind) noexcept {
  return kind < 84 ? kind / 7 + 1 : 2;
}
constexpr std::uint32_t weekdayOfFirstOfMonthKind(std::uint32_t kind) noexcept { return kind % 7; }
inline constexpr auto monthKindLengths = [] {
  std::array<std::uint8_t, monthKindCount> lengths{};
  for (std::uint32_t kind = 0; kind < monthKindCount; ++kind) {
    lengths[kind] = kind < 84 ? Quanda::DaysIn::Gregorian::oneBasedMonth(
                                    static_cast<std::uint8_t>(monthOfYearOfMonthKind(kind)), 1)
                              : 29;
  }
  return lengths;
}();
constexpr std::uint32_t lengthOfMonthKind(std::uint32_t kind) noexcept {
  return monthKindLengths[kind];
}

// What a month-local rule is asked about a kind of month.
struct MonthShape {
  std::uint32_t monthOfYear;     // 1 ... 12
  std::uint32_t length;          // 28 ... 31
  std::uint32_t weekdayOfFirst;  // ordinal, monday 0
};

inline constexpr std::uint32_t monthsInCalendarCycle = 4800;

// The kind of every month of a 400-year cycle (index (year - 1) % 400 * 12 + (month - 1);
// 0001-01-01 was a Monday), with the last month repeated before the first and the first after the
// last, so that a month's neighbours are read without wrapping the index.
inline constexpr auto monthKindsOfCalendarCycle = [] {
  std::array<std::uint8_t, monthsInCalendarCycle + 2> kinds{};
  std::uint32_t weekdayOfFirst = 0;
  for (std::uint32_t index = 0; index < monthsInCalendarCycle; ++index) {
    const auto year = static_cast<std::uint16_t>(index / 12 + 1);
    const std::uint32_t month = index % 12 + 1;
    const std::uint32_t length =
        Quanda::DaysIn::Gregorian::oneBasedMonth(static_cast<std::uint8_t>(month), year);
    kinds[index + 1] = static_cast<std::uint8_t>(monthKind(month, length, weekdayOfFirst));
    weekdayOfFirst = (weekdayOfFirst + length) % 7;
  }
  kinds[0] = kinds[monthsInCalendarCycle];
  kinds[monthsInCalendarCycle + 1] = kinds[1];
  return kinds;
}();
// The kinds of the month at a cycle index, of the month before it and of the month after it.
constexpr std::uint32_t kindOfMonth(std::uint32_t index) noexcept {
  return monthKindsOfCalendarCycle[index + 1];
}
constexpr std::uint32_t kindOfMonthBefore(std::uint32_t index) noexcept {
  return monthKindsOfCalendarCycle[index];
}
constexpr std::uint32_t kindOfMonthAfter(std::uint32_t index) noexcept {
  return monthKindsOfCalendarCycle[index + 2];
}
constexpr std::uint32_t nextCalendarCycleIndex(std::uint32_t index) noexcept {
  return index + 1 == monthsInCalendarCycle ? 0 : index + 1;
}

constexpr std::uint32_t calendarCycleIndex(std::uint32_t year, std::uint32_t month) noexcept {
  return (year - 1) % 400 * 12 + (month - 1);
}

// The days of the cycle (146097), a whole number of weeks.
inline constexpr std::uint32_t daysInCalendarCycle = [] {
  std::uint32_t days = 0;
  for (std::uint32_t index = 0; index < monthsInCalendarCycle; ++index) {
    days += lengthOfMonthKind(kindOfMonth(index));
  }
  return days;
}();
static_assert(daysInCalendarCycle % 7 == 0);

// Every kind of month occurs in the cycle, so a rule that selects a day in some kind of month
// matches within 400 years, and a walk that finds nothing in a whole cycle never will.
static_assert([] {
  bool seen[monthKindCount] = {};
  for (std::uint8_t kind : monthKindsOfCalendarCycle) seen[kind] = true;  // ends repeat kinds
  for (bool kindSeen : seen) {
    if (!kindSeen) return false;
  }
  return true;
}());

// The days a month-local rule selects in each kind of month.
class MonthDaySets {
 public:
  // The sets given by daysOf(const MonthShape&); bits outside 1...length are dropped.
  template <class DaysOf>
  static constexpr MonthDaySets make(const DaysOf& daysOf) noexcept {
    MonthDaySets sets;
    for (std::uint32_t kind = 0; kind < monthKindCount; ++kind) {
      const MonthShape shape{monthOfYearOfMonthKind(kind), lengthOfMonthKind(kind),
                             weekdayOfFirstOfMonthKind(kind)};
      sets.days_[kind] = daysOf(shape) & daysUpTo(shape.length);
    }
    sets.summarise();
    return sets;
  }
  static constexpr MonthDaySets everyDay() noexcept {
    return make([](const MonthShape& shape) { return daysUpTo(shape.length); });
  }
  static constexpr MonthDaySets noDay() noexcept { return MonthDaySets(); }

  // The days of a kind of month that give `matching`.
  constexpr std::uint32_t days(std::uint32_t kind) const noexcept { return days_[kind]; }
  constexpr std::uint32_t days(bool matching, std::uint32_t kind) const noexcept {
    return matching ? days_[kind] : days_[kind] ^ daysUpTo(lengthOfMonthKind(kind));
  }
  // Whether some day of some month gives `matching`.
  constexpr bool canAnswer(bool matching) const noexcept { return matching ? canMatch_ : canMiss_; }
  // The number of days after which the answers repeat: 1 for a rule that answers the same every
  // day, 7 for one that reads the weekday alone, else the 146097 days of the calendar cycle.
  constexpr std::uint32_t period() const noexcept { return period_; }

  friend constexpr MonthDaySets operator&(const MonthDaySets& lhs,
                                          const MonthDaySets& rhs) noexcept {
    return combine(lhs, rhs, [](std::uint32_t a, std::uint32_t b) { return a & b; });
  }
  friend constexpr MonthDaySets operator|(const MonthDaySets& lhs,
                                          const MonthDaySets& rhs) noexcept {
    return combine(lhs, rhs, [](std::uint32_t a, std::uint32_t b) { return a | b; });
  }
  constexpr MonthDaySets complement() const noexcept {
    return combine(*this, everyDay(), [](std::uint32_t a, std::uint32_t all) { return a ^ all; });
  }

  friend constexpr bool operator==(const MonthDaySets&, const MonthDaySets&) noexcept = default;

 private:
  template <class Operation>
  static constexpr MonthDaySets combine(const MonthDaySets& lhs, const MonthDaySets& rhs,
                                        const Operation& operation) noexcept {
    MonthDaySets sets;
    for (std::uint32_t kind = 0; kind < monthKindCount; ++kind) {
      sets.days_[kind] = operation(lhs.days_[kind], rhs.days_[kind]);
    }
    sets.summarise();
    return sets;
  }
  constexpr void summarise() noexcept {
    canMatch_ = false;
    canMiss_ = false;
    // The weekdays selected in January of a year beginning on a Monday (bit i: ordinal i), which
    // a rule of weekdays alone selects in every month.
    const auto weekdays = static_cast<std::uint8_t>(days_[0] >> 1 & 0x7FU);
    bool weekdaysAlone = true;
    for (std::uint32_t kind = 0; kind < monthKindCount; ++kind) {
      const std::uint32_t all = daysUpTo(lengthOfMonthKind(kind));
      canMatch_ = canMatch_ || days_[kind] != 0;
      canMiss_ = canMiss_ || days_[kind] != all;
      weekdaysAlone =
          weekdaysAlone &&
          days_[kind] == (daysOnWeekdays(weekdays, weekdayOfFirstOfMonthKind(kind)) & all);
    }
    period_ = !canMatch_ || !canMiss_ ? 1 : weekdaysAlone ? 7 : daysInCalendarCycle;
  }

  std::array<std::uint32_t, monthKindCount> days_{};
  std::uint32_t period_ = 1;
  bool canMatch_ = false;
  bool canMiss_ = true;
};

// The first matching date strictly after `after`, or nothing up to 9999-12-31. Two months are read
// at a time, as one 64-bit set (the first month in bits 0-31, the second in bits 32-63), so that a
// rule matching every month finds its answer without an unpredictable branch.
inline std::optional<QuandaAbstractDate> nextMonthDay(const MonthDaySets& sets,
                                                      QuandaAbstractDate after) noexcept {
  std::uint32_t year = after.year();
  std::uint32_t month = after.month();
  std::uint32_t index = calendarCycleIndex(year, month);
  // The days above after.day() (none when it is 31: the shift then leaves 0).
  const std::uint32_t rest =
      sets.days(kindOfMonth(index)) & ~((std::uint32_t{2} << after.day()) - 1);
  std::uint64_t days = rest | std::uint64_t{sets.days(kindOfMonthAfter(index))} << 32;
  while (days == 0 && sets.canAnswer(true) && year <= 9999) {
    index = index + 2 >= monthsInCalendarCycle ? index + 2 - monthsInCalendarCycle : index + 2;
    month += 2;
    if (month > 12) {
      month -= 12;
      ++year;
    }
    days = sets.days(kindOfMonth(index)) | std::uint64_t{sets.days(kindOfMonthAfter(index))} << 32;
  }
  // One exit, so that the optional date is built once, in registers.
  const auto bit = static_cast<std::uint32_t>(std::countr_zero(days | std::uint64_t{1} << 63));
  month += bit >> 5;
  const std::uint32_t nextYear = month > 12;
  month -= 12 * nextYear;
  year += nextYear;
  return days != 0 && year <= 9999
             ? std::optional(
                   QuandaAbstractDateFieldsAccess::makeFromValidFields(year, month, bit & 31))
             : std::nullopt;
}

// The last matching date strictly before `before`, or nothing down to 0001-01-01; two months at a
// time as nextMonthDay (the later month in bits 32-63).
inline std::optional<QuandaAbstractDate> previousMonthDay(const MonthDaySets& sets,
                                                          QuandaAbstractDate before) noexcept {
  if (!sets.canAnswer(true)) return std::nullopt;
  std::uint32_t year = before.year();
  std::uint32_t month = before.month();
  std::uint32_t index = calendarCycleIndex(year, month);
  const std::uint32_t rest =
      sets.days(kindOfMonth(index)) & ((std::uint32_t{1} << before.day()) - 1);
  std::uint64_t days = std::uint64_t{rest} << 32 | sets.days(kindOfMonthBefore(index));
  while (days == 0) {
    index = index >= 2 ? index - 2 : index + monthsInCalendarCycle - 2;
    if (month <= 2) {
      month += 10;
      if (--year == 0) return std::nullopt;
    } else {
      month -= 2;
    }
    days = std::uint64_t{sets.days(kindOfMonth(index))} << 32 | sets.days(kindOfMonthBefore(index));
  }
  const auto bit = static_cast<std::uint32_t>(std::bit_width(days) - 1);
  if (bit < 32) {
    if (--month == 0) {
      month = 12;
      --year;
    }
  }
  if (year == 0) return std::nullopt;
  return QuandaAbstractDateFieldsAccess::makeFromValidFields(year, month, bit & 31);
}

// The earliest day count in first...last (a checked window) that gives `matching`.
inline std::optional<std::uint32_t> earliestMonthDay(const MonthDaySets& sets, bool matching,
                                                     std::uint32_t first,
                                                     std::uint32_t last) noexcept {
  if (!sets.canAnswer(matching)) return std::nullopt;
  const QuandaAbstractDate date = QuandaAbstractDate::makeFromDaysSinceDatum(first);
  std::uint32_t start = first - (date.day() - 1U);  // the day count of the month's 1st
  std::uint32_t index = calendarCycleIndex(date.year(), date.month());
  std::uint32_t kind = kindOfMonth(index);
  std::uint32_t days = sets.days(matching, kind) & ~((std::uint32_t{1} << date.day()) - 1);
  while (days == 0) {
    start += lengthOfMonthKind(kind);
    if (start > last) return std::nullopt;
    if (++index == monthsInCalendarCycle) index = 0;
    kind = kindOfMonth(index);
    days = sets.days(matching, kind);
  }
  const std::uint32_t found = start + std::countr_zero(days) - 1;
  return found <= last ? std::optional(found) : std::nullopt;
}

// The latest day count in first...last (a checked window) that gives `matching`.
inline std::optional<std::uint32_t> latestMonthDay(const MonthDaySets& sets, bool matching,
                                                   std::uint32_t first,
                                                   std::uint32_t last) noexcept {
  if (!sets.canAnswer(matching)) return std::nullopt;
  const QuandaAbstractDate date = QuandaAbstractDate::makeFromDaysSinceDatum(last);
  std::uint32_t start = last - (date.day() - 1U);
  std::uint32_t index = calendarCycleIndex(date.year(), date.month());
  std::uint32_t days =
      sets.days(matching, kindOfMonth(index)) & ((std::uint32_t{2} << date.day()) - 1);
  while (days == 0) {
    if (start <= first) return std::nullopt;
    index = (index == 0 ? monthsInCalendarCycle : index) - 1;
    const std::uint32_t kind = kindOfMonth(index);
    start -= lengthOfMonthKind(kind);
    days = sets.days(matching, kind);
  }
  const std::uint32_t found = start + (std::bit_width(days) - 1) - 1;
  return found >= first ? std::optional(found) : std::nullopt;
}

}  // namespace quanda_detail
