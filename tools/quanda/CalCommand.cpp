// quanda cal: a month as a calendar grid, weeks starting on a chosen day, with the days a date
// mask matches marked.
#include <bitset>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "tools/quanda/QuandaCalendarGrid.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

constexpr std::string_view path = "tools/quanda/CalCommand";

struct Arguments {
  std::pair<std::string, std::string> yearAndMonth;
  std::string rule;
  QuandaDayOfGregorianWeek firstDay = QuandaDayOfGregorianWeek::monday;
};

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const auto& [year, month] = arguments.yearAndMonth;
  const auto first = QuandaAbstractDate::make(quandaNumber<std::uint16_t>(year, "yyyy-mm"),
                                              quandaNumber<std::uint8_t>(month, "yyyy-mm"), 1);
  if (!first) return KeelError::wrap(first.error(), {{"month", year + '-' + month}}, path, "cal");
  QuandaMonthGrid grid{.month = first.value(), .firstDay = arguments.firstDay};
  if (!arguments.rule.empty()) {
    const auto mask = makeDateMaskFromSyntaxOrArchive(arguments.rule);
    if (!mask) return KeelError::wrap(mask.error(), {{"mask", arguments.rule}}, path, "cal");
    // The matches come from the mask's own search rather than from testing every day.
    grid.marked.emplace();
    const QuandaAbstractDate start = first.value();
    for (const QuandaAbstractDate match :
         mask.value()->matchingDates(KeelDomain(start, start.endOfMonth()), arguments.firstDay)) {
      grid.marked->set(match.day());
    }
  }
  out << grid.render();
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("yyyy-mm", arguments->yearAndMonth, "The month, as 2024-02")
      ->required()
      ->delimiter('-')
      ->check(quandaNumberCheck<std::uint16_t>().application_index(0))
      ->check(quandaNumberCheck<std::uint8_t>().application_index(1))
      ->type_name("");
  command.add_option("--mask", arguments->rule, "Marks the days this rule matches")
      ->type_name("RULE");
  addQuandaFirstDayOption(command, arguments->firstDay);
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "cal",
    .summary = "Prints a month's calendar grid, marking the days a date mask matches.",
    .detail = "Weeks start on --first-day. Days --mask matches are shown in brackets; the rule is\n"
              "written as for `quanda mask`.\n",
    .declare = declare,
    .demonstrations = {{.args = {"2024-02"}},
                       {.args = {"2024-02", "--first-day", "sunday", "--mask", "last fri"}},
                       {.args = {"2024-07", "--mask", "mon,thu except 2024-07-08..2024-07-19"}},
                       {.args = {"2024-13"}, .refused = true}},
});

}  // namespace
