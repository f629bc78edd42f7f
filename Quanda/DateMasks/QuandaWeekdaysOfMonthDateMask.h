// QuandaWeekdaysOfMonthDateMask: the dates whose weekday is in daysOfWeek and whose seven-day
// block from the 1st is in oneBasedWeeks. Each block holds every weekday once, so {tuesday} with
// {2, 4} is the second and fourth Tuesday of every month.
//
//   QuandaWeekdaysOfMonthDateMask secondTuesday({QuandaDayOfGregorianWeek::tuesday}, {2});
//   // archived as {"daysOfWeek": ["tuesday"], "oneBasedWeeks": [2]}
//
// One of the month-position masks: see QuandaMonthPositionDateMask for how it tests and searches.
#pragma once

#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

namespace quanda_detail {
struct WeekdaysOfMonthRule {
  static constexpr std::string_view kind = "weekdaysOfMonth";
  static constexpr std::string_view positionsKey = "oneBasedWeeks";
  static constexpr std::uint32_t blockLength = 7;
  static constexpr bool fromEnd = false;
  static constexpr bool withWeekdays = true;
};
}  // namespace quanda_detail

using QuandaWeekdaysOfMonthDateMask =
    QuandaMonthPositionDateMask<quanda_detail::WeekdaysOfMonthRule>;
