// QuandaWeeksOfMonthDateMask: the dates whose seven-day block of the month, counted from the 1st
// (days 1-7 are week 1, ..., 29-31 week 5), is in oneBasedWeeks.
//
//   QuandaWeeksOfMonthDateMask firstWeek({1});   // archived as {"oneBasedWeeks": [1]}
//
// One of the month-position masks: see QuandaMonthPositionDateMask for how it tests and searches.
#pragma once

#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

namespace quanda_detail {
struct WeeksOfMonthRule {
  static constexpr std::string_view kind = "weeksOfMonth";
  static constexpr std::string_view positionsKey = "oneBasedWeeks";
  static constexpr std::uint32_t blockLength = 7;
  static constexpr bool fromEnd = false;
  static constexpr bool withWeekdays = false;
};
}  // namespace quanda_detail

using QuandaWeeksOfMonthDateMask = QuandaMonthPositionDateMask<quanda_detail::WeeksOfMonthRule>;
