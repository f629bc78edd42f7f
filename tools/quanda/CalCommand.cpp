// quanda cal: a month as a calendar grid, weeks starting on a chosen day, with the days a date
// mask matches marked.
#include <cstdint>
#include <iomanip>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"

namespace {

constexpr std::string_view path = "tools/quanda/CalCommand";

constexpr std::string_view usage =
    "cal <yyyy-mm> [--mask <rule>] [--first-day <day>]\n"
    "      Prints the month with its weeks starting on --first-day (monday by default). Days that\n"
    "      --mask matches are shown in brackets; the rule is written as for `quanda mask`.";

constexpr QuandaOptionSpec options[] = {{"mask"}, {"first-day"}};

constexpr std::string_view monthNames[] = {"January",   "February", "March",    "April",
                                           "May",       "June",     "July",     "August",
                                           "September", "October",  "November", "December"};

KeelResult<QuandaAbstractDate> firstOfMonth(const std::string& text) {
  const std::size_t dash = text.find('-');
  const auto year = parseQuandaInteger<std::uint16_t>(text.substr(0, dash), "year");
  if (!year) return (year.error());
  if (dash == std::string::npos) {
    return KeelError::fault("Expected a month as yyyy-mm", {{"month", text}}, path, "cal");
  }
  const auto month = parseQuandaInteger<std::uint8_t>(text.substr(dash + 1), "month");
  if (!month) return (month.error());
  const auto date = QuandaAbstractDate::make(year.value(), month.value(), 1);
  if (!date) return KeelError::wrap(date.error(), {{"month", text}}, path, "cal");
  return date;
}

int runCal(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const auto parsed = parseQuandaArguments(args, options);
  if (!parsed) return printQuandaUsageError(parsed.error(), usage, err);
  const QuandaArguments& arguments = parsed.value();
  if (arguments.positionals.size() != 1) {
    return printQuandaUsageError(
        KeelError("Expected one month", {{"arguments", arguments.positionals}}, path, "cal",
                  __LINE__),
        usage, err);
  }
  auto firstDay = QuandaDayOfGregorianWeek::monday;
  if (const std::string* text = arguments.lastValue("first-day")) {
    const auto day = makeDayOfGregorianWeekFromSyntax(*text);
    if (!day) return printQuandaUsageError(day.error(), usage, err);
    firstDay = day.value();
  }
  const auto first = firstOfMonth(arguments.positionals[0]);
  if (!first) {
    printQuandaError(first.error(), err);
    return quandaExitFailure;
  }
  std::shared_ptr<const QuandaDateMasking> mask;
  if (const std::string* rule = arguments.lastValue("mask")) {
    const auto made = makeDateMaskFromSyntaxOrArchive(*rule);
    if (!made) {
      printQuandaError(made.error(), err);
      return quandaExitFailure;
    }
    mask = made.value();
  }

  // Three columns a day like a wall calendar, four when days are marked.
  const int width = mask ? 4 : 3;
  const QuandaAbstractDate start = first.value();
  std::ostringstream title;
  title << monthNames[start.month() - 1] << ' ' << start.year();
  const int gridWidth = 7 * width - 1;
  const int padding = (gridWidth - static_cast<int>(title.str().size())) / 2;
  out << std::string(static_cast<std::size_t>(padding > 0 ? padding : 0), ' ') << title.str()
      << "\n";

  QuandaDayOfGregorianWeek day = firstDay;
  for (int column = 0; column < 7; ++column, day = nextDayOfWeek(day)) {
    if (column > 0) out << ' ';
    out << std::setw(width - 1) << developmentLanguageTitleCaseName(day).substr(0, 2);
  }
  out << "\n";

  // Mark the matches through the mask's own search rather than testing every day.
  std::vector<bool> marked(32, false);
  if (mask) {
    for (QuandaAbstractDate match :
         mask->matchingDates(KeelDomain(start, start.endOfMonth()), firstDay)) {
      marked[match.day()] = true;
    }
  }
  const int offset = start.weekNumberAndDay(firstDay).zeroBasedDayOfWeek;
  std::string line(static_cast<std::size_t>(offset * width), ' ');
  for (int dayOfMonth = 1; dayOfMonth <= start.daysInMonth(); ++dayOfMonth) {
    std::ostringstream cell;
    if (mask) {
      cell << (marked[dayOfMonth] ? '[' : ' ') << std::setw(2) << dayOfMonth
           << (marked[dayOfMonth] ? "]" : " ");
    } else {
      cell << std::setw(2) << dayOfMonth << ' ';
    }
    line += cell.str();
    if ((offset + dayOfMonth) % 7 == 0 || dayOfMonth == start.daysInMonth()) {
      while (!line.empty() && line.back() == ' ') line.pop_back();
      out << line << "\n";
      line.clear();
    }
  }
  return 0;
}

const bool registered = registerQuandaCommand({
    .name = "cal",
    .usage = usage,
    .summary = "Prints a month as a calendar grid and marks the days a date mask matches.",
    .run = runCal,
    .demonstrations = {{"2024-02"},
                       {"2024-02", "--first-day", "sunday", "--mask", "last fri"},
                       {"2024-07", "--mask", "mon,thu except 2024-07-08..2024-07-19"},
                       {"2024-13"}},
});

}  // namespace
