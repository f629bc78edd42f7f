// QuandaReverseWeekdaysOfMonthDateMask: the dates whose weekday is in daysOfWeek and whose
// seven-day block counted from the month's last day is in oneBasedWeeks: {friday} with {1} is the
// last Friday of every month.
//
//   QuandaReverseWeekdaysOfMonthDateMask lastFriday({QuandaDayOfGregorianWeek::friday}, {1});
//   // archived as {"daysOfWeek": ["friday"], "oneBasedWeeks": [1]}
//
// One of the month-position masks: see QuandaMonthPositionDateMask for how it tests and searches.
#pragma once

#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

namespace quanda_detail {
struct ReverseWeekdaysOfMonthRule {
  static constexpr std::string_view kind = "reverseWeekdaysOfMonth";
  static constexpr std::string_view positionsKey = "oneBasedWeeks";
  static constexpr std::uint32_t blockLength = 7;
  static constexpr bool fromEnd = true;
  static constexpr bool withWeekdays = true;
};
}  // namespace quanda_detail

using QuandaReverseWeekdaysOfMonthDateMask =
    QuandaMonthPositionDateMask<quanda_detail::ReverseWeekdaysOfMonthRule>;
