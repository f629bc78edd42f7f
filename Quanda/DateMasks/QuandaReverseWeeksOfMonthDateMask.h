// QuandaReverseWeeksOfMonthDateMask: the dates whose seven-day block counted from the month's
// last day (the last seven days are week 1) is in oneBasedWeeks.
//
//   QuandaReverseWeeksOfMonthDateMask lastWeek({1});   // archived as {"oneBasedWeeks": [1]}
//
// One of the month-position masks: see QuandaMonthPositionDateMask for how it tests and searches.
#pragma once

#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

namespace quanda_detail {
struct ReverseWeeksOfMonthRule {
  static constexpr std::string_view kind = "reverseWeeksOfMonth";
  static constexpr std::string_view positionsKey = "oneBasedWeeks";
  static constexpr std::uint32_t blockLength = 7;
  static constexpr bool fromEnd = true;
  static constexpr bool withWeekdays = false;
};
}  // namespace quanda_detail

using QuandaReverseWeeksOfMonthDateMask =
    QuandaMonthPositionDateMask<quanda_detail::ReverseWeeksOfMonthRule>;
