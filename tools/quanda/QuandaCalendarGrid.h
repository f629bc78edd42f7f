// QuandaCalendarGrid: a month as the program shows it, a grid of weeks under two-letter day
// names, with chosen days in brackets:
//
//        February 2024
//    Mo  Tu  We  Th  Fr  Sa  Su
//                 1   2   3   4
//     5   6   7   8   9  10  11
//    ...
//    26  27  28 [29]
//
// Without marks the cells are a column narrower, as on a wall calendar. `quanda cal` and
// `quanda date` both show their month through it.
#pragma once

#include <bitset>
#include <optional>
#include <string>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

// The English name of a month, 1...12.
std::string_view quandaMonthName(unsigned month);

struct QuandaMonthGrid {
  QuandaAbstractDate month;  // any day of the month shown
  QuandaDayOfGregorianWeek firstDay = QuandaDayOfGregorianWeek::monday;
  // Days of the month (bit n for day n) shown in brackets; none gives the narrow layout.
  std::optional<std::bitset<32>> marked = std::nullopt;
  bool titled = true;  // the month's name and year, centred over the grid

  // The grid, one line per row, each ending with a newline and no trailing spaces.
  std::string render() const;
};
