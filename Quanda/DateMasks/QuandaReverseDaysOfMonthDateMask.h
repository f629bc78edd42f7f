// QuandaReverseDaysOfMonthDateMask: the dates whose position counted from the end of the month
// (the last day is 1, the day before it 2, ...) is in oneBasedOrdinals; month lengths follow leap
// years, so {1} is 2024-02-29 and 2023-02-28.
//
//   QuandaReverseDaysOfMonthDateMask lastDay({1});   // archived as {"oneBasedOrdinals": [1]}
//
// One of the month-position masks: see QuandaMonthPositionDateMask for how it tests and searches.
#pragma once

#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

namespace quanda_detail {
struct ReverseDaysOfMonthRule {
  static constexpr std::string_view kind = "reverseDaysOfMonth";
  static constexpr std::string_view positionsKey = "oneBasedOrdinals";
  static constexpr std::uint32_t blockLength = 1;
  static constexpr bool fromEnd = true;
  static constexpr bool withWeekdays = false;
};
}  // namespace quanda_detail

using QuandaReverseDaysOfMonthDateMask =
    QuandaMonthPositionDateMask<quanda_detail::ReverseDaysOfMonthRule>;
