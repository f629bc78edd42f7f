// quanda date: reads a date in any form the library's factories read and shows what the library
// knows of it: its day count, weekday, position in its month and preferred week, its text and
// numeric forms, its neighbours, and the calendar grid of its month. "today", "tomorrow" and
// "yesterday" are read from the clock in the device's zone (or --zone).
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
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

constexpr std::string_view path = "tools/quanda/DateCommand";

struct Arguments {
  std::string text;
  std::string locale;
  std::string zone;
  std::optional<QuandaDayOfGregorianWeek> firstDay;
};

// A day's name relative to today, and its distance from today.
constexpr std::pair<std::string_view, std::int32_t> relativeDays[] = {
    {"today", 0}, {"tomorrow", 1}, {"yesterday", -1}};

// A relative day from the clock in the adapter's zone; text with a "-" is the ISO form with
// separators, eight characters the form without them, and other text the packed number (50709 is
// 0005-07-09), which must then be a number.
KeelResult<QuandaAbstractDate> readDate(const std::string& text,
                                        QuandaFoundationCalendarAdapter& adapter) {
  for (const auto& [name, offset] : relativeDays) {
    if (text != name) continue;
    const auto now = quandaNow(adapter);
    if (!now) return now.error();
    const std::optional<QuandaAbstractDate> date = now.value().date().tryAddingDays(offset);
    if (!date) {
      return KeelError::fault("Date outside 0001-01-01 ... 9999-12-31",
                              {{"today", now.value().date()}}, path, "date");
    }
    return *date;
  }
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

// The day `offset` days away, or a note where that leaves the calendar.
std::string dayAwayText(QuandaAbstractDate date, std::int32_t offset) {
  const std::optional<QuandaAbstractDate> away = date.tryAddingDays(offset);
  if (away) return away->description();
  return offset < 0 ? "(before 0001-01-01)" : "(after 9999-12-31)";
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string locale = quandaLocale(arguments.locale);
  const auto adapter = makeQuandaAdapter(locale, arguments.zone, arguments.firstDay);
  const KeelArguments input{{"date", arguments.text}};
  const auto read = readDate(arguments.text, *adapter);
  if (!read) return KeelError::wrap(read.error(), input, path, "date");
  const QuandaAbstractDate date = read.value();
  const auto preferred = adapter->preferredFirstDayOfWeek();
  if (!preferred) return KeelError::wrap(preferred.error(), input, path, "date");
  const QuandaDayOfGregorianWeek firstDay = preferred.value();

  const auto weekAndDay = date.weekNumberAndDay(firstDay);
  const auto position = static_cast<std::int32_t>(weekAndDay.zeroBasedDayOfWeek);
  const std::string preferredWeek = ordinalText(weekAndDay.zeroBasedDayOfWeek + 1u) + " day of " +
                                    dayAwayText(date, -position) + " ... " +
                                    dayAwayText(date, 6 - position) + ", week " +
                                    std::to_string(weekAndDay.week) + " since 0001-01-01";
  const std::optional<QuandaAbstractDate> nextMonth = date.tryAddingMonths(1);
  const auto rows = QuandaAbstractDate::calendarWeeksIn(date.year(), date.month(), firstDay);
  const auto made = makeQuandaMonthGrid(*adapter, locale, date, firstDay);
  if (!made) return KeelError::wrap(made.error(), input, path, "date");
  QuandaMonthGrid monthGrid = made.value();
  monthGrid.title.clear();
  monthGrid.marked.emplace().set(date.day());
  std::string grid = renderQuandaMonthGrids({monthGrid}, 1);
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
                                    std::to_string(date.daysInMonth()) + " days in the month)"},
          {std::string(caseName(firstDay)) + " week", preferredWeek},
          {"ISO 8601 text", date.serializeToIso8601String()},
          {"ISO 8601 numeric", date.serializeToIso8601Numeric()},
          {"next day", dayAwayText(date, 1)},
          {"previous day", dayAwayText(date, -1)},
          {"plus a month", nextMonth ? nextMonth->description() : "(after 9999-12-31)"},
          {"calendar weeks", std::to_string(rows.value()) + " rows of " +
                                 std::string(caseName(firstDay)) + " weeks\n" + grid},
      },
      out);
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command
      .add_option("date", arguments->text,
                  "yyyy-mm-dd, yyyymmdd, the packed number, today, tomorrow or yesterday")
      ->type_name("")
      ->required();
  addQuandaFirstDayOption(command, arguments->firstDay);
  addQuandaLocaleOption(command, arguments->locale);
  addQuandaZoneOption(command, arguments->zone);
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "date",
    .summary = "Shows what the library knows of a date, with its month's calendar.",
    .detail =
        "A date with a \"-\" is read as yyyy-mm-dd, eight characters as yyyymmdd, and other\n"
        "digits as the packed number yyyymmdd without leading zeros (50709 is 0005-07-09).\n"
        "today, tomorrow and yesterday are read from the clock in --zone (TZ or the system's\n"
        "zone). The week starts on --first-day, else on the locale's (--locale, LANG).\n",
    .declare = declare,
    .demonstrations = {{.args = {"today"}},
                       {.args = {"2024-02-29"}},
                       {.args = {"20240229", "--first-day", "sunday"}},
                       {.args = {"2023-02-29"}, .refused = true}},
});

}  // namespace
