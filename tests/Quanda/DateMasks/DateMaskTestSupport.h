// Random date masks paired with an independent reference of their rule, for the property tests.
//
// The reference reads a date through <chrono> (weekday, day, month length, days since
// 0001-01-01), not through the library's own day counts, and applies each mask's inclusion rule
// as it is written down for that mask.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"

namespace date_mask_test {

struct ReferenceDay {
  std::int64_t daysSinceDatum;
  unsigned weekday;  // 0 monday ... 6 sunday
  unsigned day;
  unsigned monthLength;
  unsigned month;
  std::int64_t monthsSinceDatum;  // months since January of year 1

  static ReferenceDay of(QuandaAbstractDate date) {
    namespace chrono = std::chrono;
    const chrono::year_month_day ymd{chrono::year{date.year()}, chrono::month{date.month()},
                                     chrono::day{date.day()}};
    const chrono::sys_days days{ymd};
    const chrono::sys_days datum{chrono::year{1} / chrono::January / 1};
    return {(days - datum).count(),
            chrono::weekday{days}.iso_encoding() - 1,
            static_cast<unsigned>(ymd.day()),
            static_cast<unsigned>((ymd.year() / ymd.month() / chrono::last).day()),
            static_cast<unsigned>(ymd.month()),
            (int{ymd.year()} - 1) * std::int64_t{12} + static_cast<unsigned>(ymd.month()) - 1};
  }
  std::int64_t week(QuandaDayOfGregorianWeek firstDayOfWeek) const {
    return (daysSinceDatum + (7 - ordinal(firstDayOfWeek)) % 7) / 7;
  }
};

using Reference = std::function<bool(const ReferenceDay&, QuandaDayOfGregorianWeek)>;

struct MaskCase {
  std::shared_ptr<const QuandaDateMasking> mask;
  Reference reference;
  // The first day count of the domain for each first day of the week (the week cycles have no
  // answer before their first residue).
  std::function<std::uint32_t(QuandaDayOfGregorianWeek)> firstDayWithAnswer;
};

enum class Kind {
  everyDay,
  daysOfWeek,
  daysOfMonth,
  reverseDaysOfMonth,
  weeksOfMonth,
  reverseWeeksOfMonth,
  weekdaysOfMonth,
  reverseWeekdaysOfMonth,
  dayCycle,
  weekCycle,
  daysOfWeeks,
  dateRange,
  dateRanges,
  monthsOfYear,
  monthCycle,
  allOf,
  anyOf,
  negation,
  // all of, any of or not of month-local masks only (weekdays, days and weeks of the month), which
  // search by their combined month day sets
  monthLocalCombination,
  // up to four levels of all of / any of / not over every kind, searched word by word
  mixedTree,
};
inline constexpr Kind simpleKinds[] = {Kind::everyDay,        Kind::daysOfWeek,
                                       Kind::daysOfMonth,     Kind::reverseDaysOfMonth,
                                       Kind::weeksOfMonth,    Kind::reverseWeeksOfMonth,
                                       Kind::weekdaysOfMonth, Kind::reverseWeekdaysOfMonth,
                                       Kind::dayCycle,        Kind::weekCycle,
                                       Kind::daysOfWeeks,     Kind::dateRange,
                                       Kind::monthsOfYear,    Kind::monthCycle};
inline constexpr Kind monthLocalKinds[] = {Kind::everyDay,        Kind::daysOfWeek,
                                           Kind::daysOfMonth,     Kind::reverseDaysOfMonth,
                                           Kind::weeksOfMonth,    Kind::reverseWeeksOfMonth,
                                           Kind::weekdaysOfMonth, Kind::reverseWeekdaysOfMonth,
                                           Kind::monthsOfYear,    Kind::monthLocalCombination};

// A random mask of a kind; date ranges and anchors fall around `near` (a day count).
MaskCase randomMask(Kind kind, std::mt19937_64& random, std::uint32_t near, int depth = 0);

}  // namespace date_mask_test
