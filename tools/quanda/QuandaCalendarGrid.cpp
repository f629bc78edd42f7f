#include "tools/quanda/QuandaCalendarGrid.h"

#include <array>

#include "Quanda/Abstract/QuandaAbstractDateDomain.h"

namespace {

void endLine(std::string& grid) {
  while (!grid.empty() && grid.back() == ' ') grid.pop_back();
  grid += '\n';
}

std::string twoDigits(unsigned number) { return (number < 10 ? " " : "") + std::to_string(number); }

}  // namespace

std::string_view quandaMonthName(unsigned month) {
  static constexpr std::array<std::string_view, 12> names{
      "January", "February", "March",     "April",   "May",      "June",
      "July",    "August",   "September", "October", "November", "December"};
  return names.at(month - 1);
}

std::string QuandaMonthGrid::render() const {
  const bool marking = marked.has_value();
  const std::size_t width = marking ? 4 : 3;
  std::string grid;
  if (titled) {
    const std::string title =
        std::string(quandaMonthName(month.month())) + ' ' + std::to_string(month.year());
    const std::size_t gridWidth = 7 * width - 1;
    grid += std::string(title.size() < gridWidth ? (gridWidth - title.size()) / 2 : 0, ' ');
    grid += title;
    endLine(grid);
  }
  QuandaDayOfGregorianWeek day = firstDay;
  for (int column = 0; column < 7; ++column, day = nextDayOfWeek(day)) {
    grid += marking ? " " : "";
    grid += developmentLanguageTitleCaseName(day).substr(0, 2);
    grid += ' ';
  }
  endLine(grid);
  const QuandaAbstractDate first = month.beginningOfMonth();
  grid += std::string(width * first.weekNumberAndDay(firstDay).zeroBasedDayOfWeek, ' ');
  for (const QuandaAbstractDate date : datesInclusive({first, month.endOfMonth()})) {
    const bool bracketed = marking && marked->test(date.day());
    grid += bracketed ? "[" : marking ? " " : "";
    grid += twoDigits(date.day());
    grid += bracketed ? "]" : " ";
    if (date.weekNumberAndDay(firstDay).zeroBasedDayOfWeek == 6 || date == month.endOfMonth()) {
      endLine(grid);
    }
  }
  return grid;
}
