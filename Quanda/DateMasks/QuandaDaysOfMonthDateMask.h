// QuandaDaysOfMonthDateMask: the dates whose day of the month is in oneBasedOrdinals (the 1st and
// the 15th). An ordinal a month does not reach (31 in April) does not match in that month; there
// is no carrying to the month's last day.
//
//   QuandaDaysOfMonthDateMask paydays({1, 15});   // archived as {"oneBasedOrdinals": [1, 15]}
//
// One of the month-position masks: see QuandaMonthPositionDateMask for how it tests and searches.
#pragma once

#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

namespace quanda_detail {
struct DaysOfMonthRule {
  static constexpr std::string_view kind = "daysOfMonth";
  static constexpr std::string_view positionsKey = "oneBasedOrdinals";
  static constexpr std::uint32_t blockLength = 1;
  static constexpr bool fromEnd = false;
  static constexpr bool withWeekdays = false;
};
}  // namespace quanda_detail

using QuandaDaysOfMonthDateMask = QuandaMonthPositionDateMask<quanda_detail::DaysOfMonthRule>;
