// quanda date: reads a date in any form the library's factories read and shows what the library
// knows of it: its day count, weekday, position in its month and preferred week, its text and
// numeric forms, its neighbours, and the calendar grid of its month.
#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelError.h"
#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractDateDomain.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"

namespace {

constexpr std::string_view kUsage =
    "date <yyyy-mm-dd | yyyymmdd | packed number> [--first-day <day>]";
constexpr std::string_view kPath = "tools/quanda/DateCommand";
constexpr std::string_view kSignature = "date";

constexpr std::array<std::string_view, 12> kMonthNames{
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

bool isDecimalDigits(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Text with a "-" is the ISO form with separators; digits other than eight are the packed number
// (50709 is 0005-07-09); anything else is the eight-character form without separators, whose
// own error explains the choice.
KeelResult<QuandaAbstractDate> readDate(std::string_view text) {
  if (text.find('-') != std::string_view::npos) {
    return QuandaAbstractDate::makeFromIso8601String(text);
  }
  if (isDecimalDigits(text) && text.size() != 8) {
    const auto number = parseQuandaInteger<std::uint64_t>(text, "date");
    if (!number) return (number.error());
    return QuandaAbstractDate::makeFromIso8601Numeric(number.value());
  }
  return QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(text);
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

std::string monthAndYear(QuandaAbstractDate date) {
  return std::string(kMonthNames[date.month() - 1u]) + " " + std::to_string(date.year());
}

// The day `offset` days away, or nothing where that leaves the valid range (stepping past it is
// a programming error for the library, so the command checks first).
std::optional<QuandaAbstractDate> dayAway(QuandaAbstractDate date, std::int32_t offset) {
  const std::int64_t target = std::int64_t{date.daysSinceDatum()} + offset;
  if (target < 0 || target > QuandaAbstractDate::validDaysSinceDatumRange.max()) return {};
  return date.addingDays(offset);
}

std::string dayAwayText(QuandaAbstractDate date, std::int32_t offset) {
  if (const auto day = dayAway(date, offset)) return day->description();
  return offset < 0 ? "(before 0001-01-01)" : "(after 9999-12-31)";
}

// The month as a grid of preferred weeks, the date in brackets:
//     Mo  Tu  We  Th  Fr  Sa  Su
//                  1   2   3   4
//    ...
//    26  27  28 [29]
std::string calendarGrid(QuandaAbstractDate date, QuandaDayOfGregorianWeek firstDay) {
  std::string grid;
  for (QuandaDayOfGregorianWeek day = firstDay;;) {
    grid += "  ";
    grid += developmentLanguageTitleCaseName(day).substr(0, 2);
    day = nextDayOfWeek(day);
    if (day == firstDay) break;
  }
  const QuandaAbstractDate first = date.beginningOfMonth();
  const unsigned lead = first.weekNumberAndDay(firstDay).zeroBasedDayOfWeek;
  std::string row(4 * lead, ' ');
  for (const QuandaAbstractDate day : datesInclusive({first, date.endOfMonth()})) {
    const std::string number = std::to_string(day.day());
    if (day == date) {
      row += std::string(2 - number.size(), ' ') + "[" + number + "]";
    } else {
      row += std::string(4 - number.size(), ' ') + number;
    }
    if (day.weekNumberAndDay(firstDay).zeroBasedDayOfWeek == 6 || day == date.endOfMonth()) {
      grid += '\n';
      grid += row;
      row.clear();
    }
  }
  return grid;
}

int runDate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  static constexpr QuandaOptionSpec options[] = {{"first-day"}};
  const auto parsed = parseQuandaArguments(args, options);
  if (!parsed) return printQuandaUsageError(parsed.error(), kUsage, err);
  const QuandaArguments& arguments = parsed.value();
  if (arguments.positionals.size() != 1) {
    return printQuandaUsageError(KeelError("Expected one date", {{"dates", arguments.positionals}},
                                           kPath, kSignature, __LINE__),
                                 kUsage, err);
  }

  auto firstDay = QuandaDayOfGregorianWeek::monday;
  if (const std::string* name = arguments.lastValue("first-day")) {
    const auto day = makeDayOfGregorianWeek(std::string_view(*name));
    if (!day) {
      return printQuandaUsageError(
          KeelError("Unknown day of the week",
                    {{"option", "--first-day"}, {"text", *name}, {"expected", "monday ... sunday"}},
                    kPath, kSignature, __LINE__),
          kUsage, err);
    }
    firstDay = *day;
  }

  const auto read = readDate(arguments.positionals.front());
  if (!read) {
    printQuandaError(read.error(), err);
    return quandaExitFailure;
  }
  const QuandaAbstractDate date = read.value();

  const auto weekAndDay = date.weekNumberAndDay(firstDay);
  const auto position = static_cast<std::int32_t>(weekAndDay.zeroBasedDayOfWeek);
  const std::string preferredWeek = ordinalText(weekAndDay.zeroBasedDayOfWeek + 1u) + " day of " +
                                    dayAwayText(date, -position) + " ... " +
                                    dayAwayText(date, 6 - position) + ", week " +
                                    std::to_string(weekAndDay.week) + " since 0001-01-01";
  const QuandaAbstractDate nextMonth = date.addingMonths(1);
  const auto rows = QuandaAbstractDate::calendarWeeksIn(date.year(), date.month(), firstDay);

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
                                    monthAndYear(date) + ")"},
          {std::string(caseName(firstDay)) + " week", preferredWeek},
          {"ISO 8601 text", date.serializeToIso8601String()},
          {"ISO 8601 numeric", date.serializeToIso8601Numeric()},
          {"next day", dayAwayText(date, 1)},
          {"previous day", dayAwayText(date, -1)},
          {"plus a month", nextMonth.year() > QuandaAbstractDate::validYearRange.max()
                               ? nextMonth.description() + " (past 9999, kept as computed)"
                               : nextMonth.description()},
          {"calendar weeks", std::to_string(rows.value()) + " rows of " +
                                 std::string(caseName(firstDay)) + " weeks\n" +
                                 calendarGrid(date, firstDay)},
      },
      out);
  return 0;
}

const bool registered = registerQuandaCommand({
    .name = "date",
    .usage = kUsage,
    .summary = "Reads a date and shows what the library knows of it, with its month's calendar.",
    .run = runDate,
    .demonstrations = {{"2024-02-29"}, {"20240229", "--first-day", "sunday"}, {"2023-02-29"}},
});

}  // namespace
