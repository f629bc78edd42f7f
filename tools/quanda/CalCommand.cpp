// quanda cal: this month, a month or a year as calendar grids in the user's locale, today marked,
// weeks starting on the locale's first day or on --first-day, with the days a date mask matches
// in brackets.
//
//   quanda cal                         this month, in the device's zone
//   quanda cal 2024                    the year, three months across
//   quanda cal 2024-02 --locale de_DE  a month, in German
#include <bitset>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "tools/quanda/QuandaCalendarGrid.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

constexpr std::string_view path = "tools/quanda/CalCommand";
constexpr std::size_t monthsAcross = 3;

struct Arguments {
  std::string when;
  std::string rule;
  std::string locale;
  std::string zone;
  std::optional<QuandaDayOfGregorianWeek> firstDay;
};

// The months shown: yyyy is the year's twelve, yyyy-mm one month, nothing the month of today.
// Text of neither form is a misuse; numbers of the right form that name no month are refused.
KeelResult<std::vector<QuandaAbstractDate>> monthsAsked(const std::string& when,
                                                        QuandaAbstractDate today) {
  if (when.empty()) return std::vector{today.beginningOfMonth()};
  const std::size_t dash = when.find('-');
  const std::optional<std::uint16_t> year =
      readQuandaNumber<std::uint16_t>(std::string_view(when).substr(0, dash));
  const std::optional<std::uint8_t> month =
      dash == std::string::npos
          ? std::optional<std::uint8_t>(1)
          : readQuandaNumber<std::uint8_t>(std::string_view(when).substr(dash + 1));
  if (!year || !month || when.starts_with('+') || when.find('+', 1) != std::string::npos) {
    throw CLI::ValidationError("yyyy-mm", "expected yyyy or yyyy-mm, not " + when);
  }
  const auto first = QuandaAbstractDate::make(*year, *month, 1);
  if (!first) return KeelError::wrap(first.error(), {{"month", when}}, path, "cal");
  if (dash != std::string::npos) return std::vector{first.value()};
  std::vector<QuandaAbstractDate> months;
  for (unsigned index = 0; index < 12; ++index) months.push_back(first.value().addingMonths(index));
  return months;
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string locale = quandaLocale(arguments.locale);
  const auto adapter = makeQuandaAdapter(locale, arguments.zone, arguments.firstDay);
  const auto refused = [&](const KeelError& error) {
    return KeelError::wrap(error, {{"locale", locale}}, path, "cal");
  };
  const auto now = quandaNow(*adapter);
  if (!now) return refused(now.error());
  const QuandaAbstractDate today = now.value().date();
  const auto months = monthsAsked(arguments.when, today);
  if (!months) return months.error();
  const auto firstDay = adapter->preferredFirstDayOfWeek();
  if (!firstDay) return refused(firstDay.error());

  std::vector<std::bitset<32>> marks(months.value().size());
  if (!arguments.rule.empty()) {
    const auto mask = makeDateMaskFromSyntaxOrArchive(arguments.rule);
    if (!mask) return KeelError::wrap(mask.error(), {{"mask", arguments.rule}}, path, "cal");
    // The matches come from the mask's own search rather than from testing every day.
    const QuandaAbstractDate first = months.value().front();
    const KeelDomain shown(first, months.value().back().endOfMonth());
    for (const QuandaAbstractDate match : mask.value()->matchingDates(shown, firstDay.value())) {
      marks.at(match.month() - first.month()).set(match.day());
    }
  }
  // Grids side by side keep one width: all have room for marks when today's needs it.
  const bool colours = quandaColours(out);
  const bool todayShown =
      months.value().front() <= today && today <= months.value().back().endOfMonth();
  const bool slotted = !arguments.rule.empty() || (todayShown && !colours);
  std::vector<QuandaMonthGrid> grids;
  for (std::size_t index = 0; index < months.value().size(); ++index) {
    const QuandaAbstractDate month = months.value()[index];
    const auto made = makeQuandaMonthGrid(*adapter, locale, month, firstDay.value());
    if (!made) return refused(made.error());
    QuandaMonthGrid grid = made.value();
    if (slotted) grid.marked = marks[index];
    if (month.year() == today.year() && month.month() == today.month()) {
      grid.today = today.day();
      grid.colours = colours;
    }
    grids.push_back(std::move(grid));
  }
  out << renderQuandaMonthGrids(grids, monthsAcross);
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("when", arguments->when, "yyyy-mm for a month, yyyy for a year (this month)")
      ->type_name("");
  command.add_option("--mask", arguments->rule, "Marks the days this rule matches")
      ->type_name("RULE");
  addQuandaFirstDayOption(command, arguments->firstDay);
  addQuandaLocaleOption(command, arguments->locale);
  addQuandaZoneOption(command, arguments->zone);
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "cal",
    .summary = "Prints this month's, a month's or a year's calendar, today marked.",
    .detail =
        "Names follow --locale or LC_ALL/LANG; weeks start on the locale's first day unless\n"
        "--first-day says otherwise. Today (in --zone, TZ or the system's zone) is in reverse\n"
        "video on a terminal unless NO_COLOR is set, else between > and <. Days --mask matches\n"
        "are in brackets; the rule is written as for `quanda mask`.\n",
    .declare = declare,
    .demonstrations = {{.args = {}},
                       {.args = {"2024-02", "--first-day", "sunday", "--mask", "last fri"}},
                       {.args = {"2024-07", "--locale", "de_DE", "--mask",
                                 "mon,thu except 2024-07-08..2024-07-19"}},
                       {.args = {"2024", "--locale", "en_GB"}},
                       {.args = {"2024-13"}, .refused = true}},
});

}  // namespace
