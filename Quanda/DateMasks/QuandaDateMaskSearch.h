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
// from the end, the seven-day block, the weekday. Which days of a month such a rule selects then
// depends only on the month's length (28 to 31) and the weekday of its 1st: 28 kinds of month.
// A MonthDaySets holds the answer for each kind (bit d for day d), built once when the mask is
// made, and combinations of such rules combine these bit sets with AND, OR and NOT.
//
// The Gregorian calendar repeats its months, lengths and weekdays alike, every 400 years (146097
// days, a whole number of weeks), so one table of 4800 bytes gives the kind of every month. A
// search then reads one byte and one word per month visited, with no date conversion inside the
// walk: one at the start and, for the date searches, none at the end.

// The kind of a month: (length - 28) * 7 + weekday ordinal of its 1st (monday 0).
inline constexpr std::uint32_t monthKindCount = 28;
constexpr std::uint32_t monthKind(std::uint32_t length, std::uint32_t weekdayOfFirst) noexcept {
  return (length - 28) * 7 + weekdayOfFirst;
}
constexpr std::uint32_t lengthOfMonthKind(std::uint32_t kind) noexcept { return 28 + kind / 7; }
constexpr std::uint32_t weekdayOfFirstOfMonthKind(std::uint32_t kind) noexcept { return kind % 7; }

inline constexpr std::uint32_t monthsInCalendarCycle = 4800;

// The kind of every month of a 400-year cycle (index (year - 1) % 400 * 12 + (month - 1);
// 0001-01-01 was a Monday), with the last month repeated before the first and the first after the
// last, so that a month's neighbours are read without wrapping the index.
inline constexpr auto monthKindsOfCalendarCycle = [] {
  std::array<std::uint8_t, monthsInCalendarCycle + 2> kinds{};
  std::uint32_t weekdayOfFirst = 0;
  for (std::uint32_t index = 0; index < monthsInCalendarCycle; ++index) {
    const auto year = static_cast<std::uint16_t>(index / 12 + 1);
    const std::uint32_t length =
        Quanda::DaysIn::Gregorian::oneBasedMonth(static_cast<std::uint8_t>(index % 12 + 1), year);
    kinds[index + 1] = static_cast<std::uint8_t>(monthKind(length, weekdayOfFirst));
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

constexpr std::uint32_t calendarCycleIndex(std::uint32_t year, std::uint32_t month) noexcept {
  return (year - 1) % 400 * 12 + (month - 1);
}

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
  // The sets given by daysOf(length, weekdayOfFirst); bits outside 1...length are dropped.
  template <class DaysOf>
  static constexpr MonthDaySets make(const DaysOf& daysOf) noexcept {
    MonthDaySets sets;
    for (std::uint32_t kind = 0; kind < monthKindCount; ++kind) {
      sets.days_[kind] = daysOf(lengthOfMonthKind(kind), weekdayOfFirstOfMonthKind(kind)) &
                         daysUpTo(lengthOfMonthKind(kind));
    }
    sets.summarise();
    return sets;
  }
  static constexpr MonthDaySets everyDay() noexcept {
    return make([](std::uint32_t length, std::uint32_t) { return daysUpTo(length); });
  }
  static constexpr MonthDaySets noDay() noexcept { return MonthDaySets(); }

  // The days of a kind of month that give `matching`.
  constexpr std::uint32_t days(std::uint32_t kind) const noexcept { return days_[kind]; }
  constexpr std::uint32_t days(bool matching, std::uint32_t kind) const noexcept {
    return matching ? days_[kind] : days_[kind] ^ daysUpTo(lengthOfMonthKind(kind));
  }
  // Whether some day of some month gives `matching`.
  constexpr bool canAnswer(bool matching) const noexcept { return matching ? canMatch_ : canMiss_; }

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
    for (std::uint32_t kind = 0; kind < monthKindCount; ++kind) {
      canMatch_ = canMatch_ || days_[kind] != 0;
      canMiss_ = canMiss_ || days_[kind] != daysUpTo(lengthOfMonthKind(kind));
    }
  }

  std::array<std::uint32_t, monthKindCount> days_{};
  bool canMatch_ = false;
  bool canMiss_ = true;
};

// A date from fields known to be valid, in one register. Built field by field (or through
// makeIfValid), the date is written to memory a byte at a time and read back whole, a stall
// that costs more than the whole month walk; so the fields are packed as QuandaAbstractDate
// lays them out (day, month, year from the lowest address up), which the static_assert below
// checks at compile time.
constexpr QuandaAbstractDate dateFromValidFields(std::uint32_t year, std::uint32_t month,
                                                 std::uint32_t day) noexcept {
  if constexpr (std::endian::native == std::endian::little) {
    return std::bit_cast<QuandaAbstractDate>(day | month << 8 | year << 16);
  } else {
    return *QuandaAbstractDate::makeIfValid(static_cast<std::uint16_t>(year),
                                            static_cast<std::uint8_t>(month),
                                            static_cast<std::uint8_t>(day));
  }
}
static_assert(sizeof(QuandaAbstractDate) == 4 &&
              dateFromValidFields(2024, 2, 29) == *QuandaAbstractDate::makeIfValid(2024, 2, 29) &&
              dateFromValidFields(9999, 12, 31) == QuandaAbstractDate::validRange.max());

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
  return days != 0 && year <= 9999 ? std::optional(dateFromValidFields(year, month, bit & 31))
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
  return dateFromValidFields(year, month, bit & 31);
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
