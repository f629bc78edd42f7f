// quanda date: reads a date in any form the library's factories read and shows what the library
// knows of it: its day count, weekday, position in its month and preferred week, its text and
// numeric forms, its neighbours, and the calendar grid of its month.
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "tools/quanda/QuandaCalendarGrid.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

constexpr std::string_view path = "tools/quanda/DateCommand";

struct Arguments {
  std::string text;
  QuandaDayOfGregorianWeek firstDay = QuandaDayOfGregorianWeek::monday;
};

// Text with a "-" is the ISO form with separators, eight characters the form without them, and
// other text the packed number (50709 is 0005-07-09), which must then be a number.
KeelResult<QuandaAbstractDate> readDate(const std::string& text) {
  if (text.find('-') != std::string::npos) return QuandaAbstractDate::makeFromIso8601String(text);
  if (text.size() == 8) return QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(text);
  return QuandaAbstractDate::makeFromIso8601Numeric(quandaNumber<std::uint64_t>(text, "date"));
}

std::string ordinalText(unsigned number) {
  const unsigned lastTwo = number % 100;
  const char* suffix = "th";
  if (lastTwo < 11 || lastTwo > 13) {
    switch (number % 10) {
      case 1:
        suffix = "st";
        break;
      case 2:
        suffix = "nd";
        break;
      case 3:
        suffix = "rd";
        break;
      default:
        break;
    }
  }
  return std::to_string(number) + suffix;
}

// The day `offset` days away, or a note where that leaves the valid range (stepping past it is
// a programming error for the library, so the command checks first).
std::string dayAwayText(QuandaAbstractDate date, std::int32_t offset) {
  const std::int64_t target = std::int64_t{date.daysSinceDatum()} + offset;
  if (target < 0) return "(before 0001-01-01)";
  if (target > QuandaAbstractDate::validDaysSinceDatumRange.max()) return "(after 9999-12-31)";
  return date.addingDays(offset).description();
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const auto read = readDate(arguments.text);
  if (!read) return KeelError::wrap(read.error(), {{"date", arguments.text}}, path, "date");
  const QuandaAbstractDate date = read.value();
  const QuandaDayOfGregorianWeek firstDay = arguments.firstDay;

  const auto weekAndDay = date.weekNumberAndDay(firstDay);
  const auto position = static_cast<std::int32_t>(weekAndDay.zeroBasedDayOfWeek);
  const std::string preferredWeek = ordinalText(weekAndDay.zeroBasedDayOfWeek + 1u) + " day of " +
                                    dayAwayText(date, -position) + " ... " +
                                    dayAwayText(date, 6 - position) + ", week " +
                                    std::to_string(weekAndDay.week) + " since 0001-01-01";
  const QuandaAbstractDate nextMonth = date.addingMonths(1);
  const auto rows = QuandaAbstractDate::calendarWeeksIn(date.year(), date.month(), firstDay);
  std::bitset<32> marked;
  marked.set(date.day());
  std::string grid =
      QuandaMonthGrid{.month = date, .firstDay = firstDay, .marked = marked, .titled = false}
          .render();
  grid.pop_back();

  printQuandaTable(
      {
          {"date", date},
          {"day of week", developmentLanguageTitleCaseName(date.dayOfWeek())},
          {"days since 0001-01-01", date.daysSinceDatum()},
          {"days since 1970-01-01", std::int64_t{date.sysDays().time_since_epoch().count()}},
          {"week of month", ordinalText(date.weekOfMonthOneBased()) + " from the start, " +
                                ordinalText(date.weekFromEndOfMonthOneBased()) + " from the end"},
          {"days to month end", std::to_string(date.daysFromEndOfMonthZeroBased()) + " (" +
                                    std::to_string(date.daysInMonth()) + " days in " +
                                    std::string(quandaMonthName(date.month())) + ' ' +
                                    std::to_string(date.year()) + ")"},
          {std::string(caseName(firstDay)) + " week", preferredWeek},
          {"ISO 8601 text", date.serializeToIso8601String()},
          {"ISO 8601 numeric", date.serializeToIso8601Numeric()},
          {"next day", dayAwayText(date, 1)},
          {"previous day", dayAwayText(date, -1)},
          {"plus a month", nextMonth.year() > QuandaAbstractDate::validYearRange.max()
                               ? nextMonth.description() + " (past 9999, kept as computed)"
                               : nextMonth.description()},
          {"calendar weeks", std::to_string(rows.value()) + " rows of " +
                                 std::string(caseName(firstDay)) + " weeks\n" + grid},
      },
      out);
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("date", arguments->text, "yyyy-mm-dd, yyyymmdd or the packed number")
      ->type_name("")
      ->required();
  addQuandaFirstDayOption(command, arguments->firstDay);
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "date",
    .summary = "Shows what the library knows of a date, with its month's calendar.",
    .detail = "A date with a \"-\" is read as yyyy-mm-dd, eight characters as yyyymmdd, and other\n"
              "digits as the packed number yyyymmdd without leading zeros (50709 is 0005-07-09).\n"
              "--first-day chooses the preferred week the date is placed in.\n",
    .declare = declare,
    .demonstrations = {{.args = {"2024-02-29"}},
                       {.args = {"20240229", "--first-day", "sunday"}},
                       {.args = {"2023-02-29"}, .refused = true}},
});

}  // namespace
