// quanda mask: reads a date mask (in the short syntax or as its tagged JSON archive) and lists
// its matches in a range, or the next or previous few around a date.
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaMaskGrammar.h"
#include "tools/quanda/QuandaMaskOccurrences.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

constexpr std::string_view path = "tools/quanda/MaskCommand";

struct Arguments {
  std::string rule;
  std::string from, to, after, before;
  std::uint32_t count = 10;
  QuandaDayOfGregorianWeek firstDay = QuandaDayOfGregorianWeek::monday;
  bool json = false;
  // --at, --zone, --ics: the occurrences as instants (QuandaMaskOccurrences.h).
  std::string at, zone = "local";
  bool ics = false;
};

void printDate(QuandaAbstractDate date, std::ostream& out) {
  out << date << "  " << developmentLanguageTitleCaseName(date.dayOfWeek()) << "\n";
}

KeelResult<QuandaAbstractDate> readDate(const std::string& text, std::string_view option) {
  const auto date = QuandaAbstractDate::makeFromIso8601String(text);
  if (!date) return KeelError::wrap(date.error(), {{option, text}}, path, "mask");
  return date;
}

// The day before today in the device's zone, so that the matches listed start from today.
KeelResult<QuandaAbstractDate> fromToday() {
  const auto now = quandaNow(*makeQuandaAdapter(""));
  if (!now) return KeelError::wrap(now.error(), {}, path, "mask");
  return now.value().date().tryAddingDays(-1).value_or(QuandaAbstractDate::validRange.min());
}

// The occurrences as instants: the dates read here, the rest by QuandaMaskOccurrences.
QuandaOutcome runOccurrences(const Arguments& arguments,
                             std::shared_ptr<const QuandaDateMasking> mask, std::ostream& out) {
  QuandaMaskOccurrencesRequest request{.mask = std::move(mask),
                                       .rule = arguments.rule,
                                       .firstDay = arguments.firstDay,
                                       .at = arguments.at,
                                       .zone = arguments.zone,
                                       .count = arguments.count,
                                       .ics = arguments.ics};
  if (!arguments.after.empty()) {
    const auto after = readDate(arguments.after, "--after");
    if (!after) return after.error();
    request.after = after.value();
  }
  if (!arguments.before.empty()) {
    const auto before = readDate(arguments.before, "--before");
    if (!before) return before.error();
    request.before = before.value();
  }
  return printQuandaMaskOccurrences(request, out);
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const auto mask = makeDateMaskFromSyntaxOrArchive(arguments.rule);
  if (!mask) return KeelError::wrap(mask.error(), {{"rule", arguments.rule}}, path, "mask");
  if (!arguments.at.empty()) return runOccurrences(arguments, mask.value(), out);
  const QuandaDateMasking& rule = *mask.value();
  const bool range = !arguments.from.empty();
  const bool backward = !arguments.before.empty();
  const bool forward = !range && !backward;
  if (arguments.json) out << encodeTaggedDateMask(rule).dump() << "\n";

  if (range) {
    const auto from = readDate(arguments.from, "--from");
    if (!from) return from.error();
    const auto to = readDate(arguments.to, "--to");
    if (!to) return to.error();
    for (const QuandaAbstractDate date :
         rule.matchingDates(KeelDomain(from.value(), to.value()), arguments.firstDay)) {
      printDate(date, out);
    }
  } else {
    const auto start = backward                  ? readDate(arguments.before, "--before")
                       : arguments.after.empty() ? fromToday()
                                                 : readDate(arguments.after, "--after");
    if (!start) return start.error();
    std::optional<QuandaAbstractDate> date = start.value();
    for (std::uint32_t index = 0; index < arguments.count; ++index) {
      date = forward ? rule.nextMatch(*date, arguments.firstDay)
                     : rule.previousMatch(*date, arguments.firstDay);
      if (!date) {
        out << (forward ? "(no later match up to 9999-12-31)\n"
                        : "(no earlier match down to 0001-01-01)\n");
        break;
      }
      printDate(*date, out);
    }
  }
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("rule", arguments->rule, "The rule: short syntax or tagged JSON archive")
      ->type_name("")
      ->required();
  // CLI11 would list what an option needs and excludes in an order of its own; the
  // descriptions say it instead.
  CLI::Option* from =
      command.add_option("--from", arguments->from, "Lists every match from this date to --to")
          ->option_text("DATE");
  CLI::Option* to =
      command.add_option("--to", arguments->to, "... up to this one")->option_text("DATE");
  CLI::Option* after =
      command.add_option("--after", arguments->after, "Or lists the next matches after it")
          ->option_text("DATE");
  CLI::Option* before =
      command.add_option("--before", arguments->before, "Or the matches before it")
          ->option_text("DATE");
  from->needs(to);
  to->needs(from);
  after->excludes(from)->excludes(to)->excludes(before);
  before->excludes(from)->excludes(to);
  addQuandaNumberOption(command, "--count", arguments->count,
                        "How many matches --after, --before or from today lists (10)");
  addQuandaFirstDayOption(command, arguments->firstDay);
  command.add_flag("--json", arguments->json, "Also prints the rule's tagged JSON archive");
  CLI::Option* at = command
                        .add_option("--at", arguments->at,
                                    "Lists the occurrences at this time of day as instants")
                        ->option_text("TIME");
  command.add_option("--zone", arguments->zone, "... in this zone (local)")
      ->option_text("ZONE")
      ->needs(at);
  command.add_flag("--ics", arguments->ics, "... as an iCalendar file")->needs(at);
  at->excludes(from)->excludes(to);
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "mask",
    .summary = "Lists the dates a recurrence rule (a date mask) matches.",
    .detail =
        "With none of --from/--to, --after, --before the next matches from today are listed\n"
        "(--json shows the rule's archive). --first-day sets the first day of the week (only\n"
        "week cycles use it).\n"
        "The rule is a tagged JSON archive ({\"kind\": ..., \"mask\": ...}) or the short "
        "syntax:\n" QUANDA_MASK_GRAMMAR
        "--at lists the occurrences at a time of day (hh:mm or hh:mm:ss) as instants in --zone (a\n"
        "tz database name, utc or local): the wall clock, the instant in UTC and the offset; by\n"
        "default the next --count from now. A wall time the zone skips moves forward by the gap;\n"
        "one it repeats is the earlier instant. --ics writes them as an iCalendar file.\n",
    .declare = declare,
    .demonstrations = {{.args = {"2nd tue", "--count", "3"}},
                       {.args = {"last fri", "--before", "2024-06-01", "--count", "3"}},
                       {.args = {"2nd tue", "--from", "2024-01-01", "--to", "2024-03-31"}},
                       {.args = {"mon except 2024-07-01..2024-07-14", "--after", "2024-06-20",
                                 "--count", "3"}},
                       {.args = {"fri and day 13", "--after", "2024-01-01", "--count", "3"}},
                       {.args = {"every 2 weeks from 2024-01-03", "--json", "--after", "2024-01-01",
                                 "--count", "2", "--first-day", "sun"}},
                       {.args = {R"({"kind":"daysOfMonth","mask":{"oneBasedOrdinals":[31]}})",
                                 "--after", "2024-01-01", "--count", "2"}},
                       {.args = {"last fri", "--at", "09:30", "--zone", "Europe/Berlin", "--after",
                                 "2024-02-01", "--count", "3"}},
                       {.args = {"every 0 days from 2024-01-01"}, .refused = true}},
});

}  // namespace
