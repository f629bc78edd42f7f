// QuandaCalendarGrid: months as the program shows them, each a grid of weeks under the locale's
// weekday names, titled with the locale's month and year, side by side when there are several:
//
//         February 2024
//    Su  Mo  Tu  We  Th  Fr  Sa
//                     1   2   3
//     4   5   6   7   8   9  10
//    ...
//    25  26  27  28 [29]
//
// Names come from the calendar adapter in the user's locale: the title is its "fullMonthAndYear"
// template, the columns its standalone weekday names, short ones where each fits two columns of a
// terminal ("Mo", "月"), else the very short ones ("M"). Cells are as wide as the widest name, so
// the grid stays aligned in any script; widths count East Asian wide characters as two columns
// and combining marks as none.
//
// Days a mask matched are shown in brackets. Today is shown in reverse video when colours are on,
// else between '>' and '<' (">14]" when it is also matched). Without either mark the cells are a
// column narrower, as on a wall calendar. `quanda cal` and `quanda date` both draw through it.
#pragma once

#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

struct QuandaMonthGrid {
  QuandaAbstractDate month;  // any day of the month shown
  QuandaDayOfGregorianWeek firstDay = QuandaDayOfGregorianWeek::monday;
  std::string title;                     // centred over the grid; no title line when empty
  std::vector<std::string> columnNames;  // seven, from firstDay on
  // Days of the month (bit n for day n) shown in brackets.
  std::optional<std::bitset<32>> marked = std::nullopt;
  std::optional<unsigned> today = std::nullopt;  // the day of the month that is today
  bool colours = false;                          // today in reverse video

  // The grid's lines, each padded with spaces to the same width in terminal columns.
  std::vector<std::string> lines() const;
};

// A month's grid with the adapter's title and column names in the locale, weeks from firstDay.
KeelResult<QuandaMonthGrid> makeQuandaMonthGrid(QuandaCalendarAdapting& adapter,
                                                const std::string& locale, QuandaAbstractDate month,
                                                QuandaDayOfGregorianWeek firstDay);

// The grids, `across` to a row of months, rows apart by a blank line; every line ends with a
// newline and no trailing spaces.
std::string renderQuandaMonthGrids(const std::vector<QuandaMonthGrid>& grids, std::size_t across);

// The columns a terminal gives the UTF-8 text.
std::size_t quandaDisplayWidth(std::string_view text);
