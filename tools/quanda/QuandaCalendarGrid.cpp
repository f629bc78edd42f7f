#include "tools/quanda/QuandaCalendarGrid.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>

#include "Quanda/Abstract/QuandaAbstractDateDomain.h"

namespace {

constexpr std::string_view path = "tools/quanda/QuandaCalendarGrid";
constexpr std::string_view reverseVideo = "\x1b[7m";
constexpr std::string_view plainVideo = "\x1b[27m";

// A line being built, with its width in terminal columns (escapes take none).
struct Line {
  std::string text;
  std::size_t width = 0;

  void add(std::string_view part, std::size_t partWidth) {
    text += part;
    width += partWidth;
  }
  void add(std::string_view part) { add(part, quandaDisplayWidth(part)); }
  void padTo(std::size_t target) {
    if (width < target) add(std::string(target - width, ' '), target - width);
  }
};

std::size_t widest(const std::vector<std::string>& names) {
  std::size_t width = 0;
  for (const std::string& name : names) width = std::max(width, quandaDisplayWidth(name));
  return width;
}

std::string twoDigits(unsigned number) { return (number < 10 ? " " : "") + std::to_string(number); }

void trimEnd(std::string& line) {
  while (!line.empty() && line.back() == ' ') line.pop_back();
}

}  // namespace

std::size_t quandaDisplayWidth(std::string_view text) {
  std::size_t width = 0;
  std::int32_t index = 0;
  const auto length = static_cast<std::int32_t>(text.size());
  while (index < length) {
    UChar32 c = 0;
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), index, length, c);
    if (c < 0) {
      ++width;
      continue;
    }
    const auto category = u_charType(c);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK ||
        category == U_FORMAT_CHAR) {
      continue;
    }
    const auto eastAsian = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    width += eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH ? 2 : 1;
  }
  return width;
}

std::vector<std::string> QuandaMonthGrid::lines() const {
  const std::size_t nameWidth = std::max<std::size_t>(2, widest(columnNames));
  // Brackets, and today without colours, need a column on each side of the digits.
  const bool slots = marked.has_value() || (today.has_value() && !colours);
  const std::size_t cellWidth = nameWidth + (slots ? 2 : 1);
  const std::size_t gridWidth = 7 * cellWidth - 1;

  std::vector<Line> built;
  if (!title.empty()) {
    Line line;
    const std::size_t titleWidth = quandaDisplayWidth(title);
    line.padTo(titleWidth < gridWidth ? (gridWidth - titleWidth) / 2 : 0);
    line.add(title, titleWidth);
    built.push_back(line);
  }
  Line header;
  for (const std::string& name : columnNames) {
    if (slots) header.add(" ", 1);
    header.padTo(header.width + nameWidth - quandaDisplayWidth(name));
    header.add(name);
    header.add(" ", 1);
  }
  built.push_back(header);

  const QuandaAbstractDate first = month.beginningOfMonth();
  Line week;
  week.padTo(cellWidth * first.weekNumberAndDay(firstDay).zeroBasedDayOfWeek);
  for (const QuandaAbstractDate date : datesInclusive({first, month.endOfMonth()})) {
    const bool isMarked = marked && marked->test(date.day());
    const bool isToday = today == date.day();
    week.padTo(week.width + nameWidth - 2);
    if (slots) week.add(isToday && !colours ? ">" : isMarked ? "[" : " ", 1);
    if (isToday && colours) {
      week.add(std::string(reverseVideo) + twoDigits(date.day()) + std::string(plainVideo), 2);
    } else {
      week.add(twoDigits(date.day()), 2);
    }
    week.add(isMarked ? "]" : isToday && !colours ? "<" : " ", 1);
    if (date.weekNumberAndDay(firstDay).zeroBasedDayOfWeek == 6 || date == month.endOfMonth()) {
      built.push_back(week);
      week = Line();
    }
  }
  std::vector<std::string> result;
  result.reserve(built.size());
  for (Line& line : built) {
    line.padTo(cellWidth * 7);
    result.push_back(std::move(line.text));
  }
  return result;
}

KeelResult<QuandaMonthGrid> makeQuandaMonthGrid(QuandaCalendarAdapting& adapter,
                                                const std::string& locale, QuandaAbstractDate month,
                                                QuandaDayOfGregorianWeek firstDay) {
  const KeelArguments input{{"month", month.description()}, {"locale", locale}};
  const auto title =
      month.formatWith(QuandaKnownDateFormatTemplate::fullMonthAndYear, adapter, locale);
  if (!title) return KeelError::wrap(title.error(), input, path, "cal");
  auto names =
      adapter.calendarColumnNames(locale, firstDay, QuandaStandaloneDayNameFormatStyle::short_);
  if (names && widest(names.value()) > 2) {
    names = adapter.calendarColumnNames(locale, firstDay,
                                        QuandaStandaloneDayNameFormatStyle::veryShort);
  }
  if (!names) return KeelError::wrap(names.error(), input, path, "cal");
  return QuandaMonthGrid{.month = month,
                         .firstDay = firstDay,
                         .title = title.value(),
                         .columnNames = std::move(names).value()};
}

std::string renderQuandaMonthGrids(const std::vector<QuandaMonthGrid>& grids, std::size_t across) {
  std::string text;
  for (std::size_t row = 0; row < grids.size(); row += across) {
    if (row > 0) text += '\n';
    std::vector<std::vector<std::string>> columns;
    std::size_t height = 0;
    for (std::size_t index = row; index < std::min(grids.size(), row + across); ++index) {
      columns.push_back(grids[index].lines());
      height = std::max(height, columns.back().size());
    }
    for (std::size_t lineIndex = 0; lineIndex < height; ++lineIndex) {
      std::string line;
      for (std::size_t column = 0; column < columns.size(); ++column) {
        if (column > 0) line += "  ";
        const std::vector<std::string>& lines = columns[column];
        if (lineIndex < lines.size()) {
          line += lines[lineIndex];
        } else {
          line += std::string(quandaDisplayWidth(lines.front()), ' ');
        }
      }
      trimEnd(line);
      text += line + '\n';
    }
  }
  return text;
}
