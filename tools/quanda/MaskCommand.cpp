// quanda mask: reads a date mask (in the short syntax or as its tagged JSON archive) and lists
// its matches in a range, or the next or previous few around a date.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "Quanda/DateMasks/QuandaRecurrenceRule.h"
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
  // Monday unless given, or the WKST of a rule read as RFC 5545 text.
  std::optional<QuandaDayOfGregorianWeek> firstDay;
  bool json = false;
  bool rrule = false;
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

// Today in the device's zone.
KeelResult<QuandaAbstractDate> today() {
  const auto now = quandaNow(*makeQuandaAdapter(""));
  if (!now) return KeelError::wrap(now.error(), {}, path, "mask");
  return now.value().date();
}

// The day before today, so that the matches listed start from today.
KeelResult<QuandaAbstractDate> fromToday() {
  const auto date = today();
  if (!date) return date;
  return date.value().tryAddingDays(-1).value_or(QuandaAbstractDate::validRange.min());
}

// The first date the rule is asked about: --from, --after, --before, or today.
KeelResult<QuandaAbstractDate> firstAsked(const Arguments& arguments) {
  if (!arguments.from.empty()) return readDate(arguments.from, "--from");
  if (!arguments.after.empty()) return readDate(arguments.after, "--after");
  if (!arguments.before.empty()) return readDate(arguments.before, "--before");
  return today();
}

// RFC 5545 text ("RRULE:...", "FREQ=...", or DTSTART and RRULE lines) rather than a mask.
bool isRecurrenceRuleText(std::string_view rule) {
  const auto startsWith = [rule](std::string_view prefix) {
    return rule.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), rule.begin(), [](char wanted, char given) {
             return wanted == std::toupper(static_cast<unsigned char>(given));
           });
  };
  return startsWith("RRULE:") || startsWith("FREQ=") || startsWith("DTSTART");
}

// The mask the rule says, and the first day of the week it needs.
struct ReadRule {
  std::shared_ptr<const QuandaDateMasking> mask;
  QuandaDayOfGregorianWeek firstDay;
};

KeelResult<ReadRule> readRule(const Arguments& arguments) {
  if (isRecurrenceRuleText(arguments.rule)) {
    const auto start = firstAsked(arguments);
    if (!start) return start.error();
    const auto imported = QuandaRecurrenceRule::importing(arguments.rule, start.value());
    if (!imported)
      return KeelError::wrap(imported.error(), {{"rule", arguments.rule}}, path, "mask");
    return ReadRule{imported.value().mask,
                    arguments.firstDay.value_or(imported.value().firstDayOfWeek)};
  }
  const auto mask = makeDateMaskFromSyntaxOrArchive(arguments.rule);
  if (!mask) return KeelError::wrap(mask.error(), {{"rule", arguments.rule}}, path, "mask");
  return ReadRule{mask.value(), arguments.firstDay.value_or(QuandaDayOfGregorianWeek::monday)};
}

// The rule as RFC 5545 text from the first date asked about.
QuandaOutcome printRecurrenceRule(const Arguments& arguments, const ReadRule& rule,
                                  std::ostream& out) {
  const auto start = firstAsked(arguments);
  if (!start) return start.error();
  const auto text = QuandaRecurrenceRule::exporting(*rule.mask, start.value(), rule.firstDay);
  if (!text) return KeelError::wrap(text.error(), {{"rule", arguments.rule}}, path, "mask");
  out << text.value().text();
  return quandaDone;
}

// The occurrences as instants: the dates read here, the rest by QuandaMaskOccurrences.
QuandaOutcome runOccurrences(const Arguments& arguments, const ReadRule& rule, std::ostream& out) {
  QuandaMaskOccurrencesRequest request{.mask = rule.mask,
                                       .rule = arguments.rule,
                                       .firstDay = rule.firstDay,
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
  const auto read = readRule(arguments);
  if (!read) return read.error();
  if (!arguments.at.empty()) return runOccurrences(arguments, read.value(), out);
  if (arguments.rrule) return printRecurrenceRule(arguments, read.value(), out);
  const QuandaDateMasking& rule = *read.value().mask;
  const QuandaDayOfGregorianWeek firstDay = read.value().firstDay;
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
         rule.matchingDates(KeelDomain(from.value(), to.value()), firstDay)) {
      printDate(date, out);
    }
  } else {
    const auto start = backward                  ? readDate(arguments.before, "--before")
                       : arguments.after.empty() ? fromToday()
                                                 : readDate(arguments.after, "--after");
    if (!start) return start.error();
    std::optional<QuandaAbstractDate> date = start.value();
    for (std::uint32_t index = 0; index < arguments.count; ++index) {
      date = forward ? rule.nextMatch(*date, firstDay) : rule.previousMatch(*date, firstDay);
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
  command
      .add_option("rule", arguments->rule,
                  "The rule: short syntax, tagged JSON archive or RFC 5545 RRULE text")
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
  command.add_flag("--rrule", arguments->rrule,
                   "Prints the rule as RFC 5545 text (DTSTART, RRULE, RDATE, EXDATE)");
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
        "--rrule writes the rule as RFC 5545 text from --from, --after or today; a rule given\n"
        "as such text (\"RRULE:FREQ=MONTHLY;BYDAY=-1FR\", DTSTART and RRULE lines) is read as "
        "one,\n"
        "its start the DTSTART or else --from, --after or today, its weeks starting on its WKST.\n"
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
                       {.args = {"last fri", "--rrule", "--after", "2024-01-01"}},
                       {.args = {"RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=2SU", "--after", "2024-01-01",
                                 "--count", "2"}},
                       {.args = {"every 0 days from 2024-01-01"}, .refused = true}},
});

}  // namespace
