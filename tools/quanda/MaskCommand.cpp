// quanda mask: reads a date mask (in the short syntax or as its tagged JSON archive) and lists
// its matches in a range, or the next or previous few around a date.
#include <cstdint>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"

namespace {

constexpr std::string_view usage =
    "mask <rule> [--from <yyyy-mm-dd> --to <yyyy-mm-dd> | --after <yyyy-mm-dd> | --before "
    "<yyyy-mm-dd>] [--count N] [--first-day <day>] [--json]\n"
    "      rule: a tagged JSON archive ({\"kind\": ..., \"mask\": ...}) or the short syntax:\n"
    "        every day | weekdays | weekends | mon,wed,fri | day 15 | days 1,15 | last day\n"
    "        days 1,2 from end | week 2 | last week | 2nd tue | 1st,3rd mon,wed | last fri\n"
    "        2nd last sun | every 3 days from 2024-01-01 | pattern 1101 from 2024-01-01\n"
    "        every 2 weeks from 2024-01-01 | week pattern 110 from 2024-01-01\n"
    "        mon,thu every 3 weeks from 2024-01-01 | 2024-07-01..2024-07-14 | 2024-12-25\n"
    "        holidays 2024-07-01..2024-07-14, 2024-12-24..2024-12-26\n"
    "        combined with not, and, or, except and parentheses:\n"
    "        \"mon except 2024-07-01..2024-07-14\", \"fri and day 13\"\n"
    "      --from/--to lists every match of the range; --after/--before lists the next or "
    "previous\n"
    "      --count matches (10 by default); with none of them the rule's archive is shown.\n"
    "      --first-day sets the first day of the week (monday by default; only week cycles use "
    "it).\n"
    "      --json also prints the rule's tagged JSON archive.";

constexpr QuandaOptionSpec options[] = {{"from"},  {"to"},        {"after"},      {"before"},
                                        {"count"}, {"first-day"}, {"json", false}};

KeelResult<QuandaAbstractDate> dateOption(const QuandaArguments& arguments, std::string_view name) {
  return QuandaAbstractDate::makeFromIso8601String(*arguments.lastValue(name));
}

void printDate(QuandaAbstractDate date, std::ostream& out) {
  out << date << "  " << developmentLanguageTitleCaseName(date.dayOfWeek()) << "\n";
}

int runMask(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const auto parsed = parseQuandaArguments(args, options);
  if (!parsed) return printQuandaUsageError(parsed.error(), usage, err);
  const QuandaArguments& arguments = parsed.value();
  if (arguments.positionals.size() != 1) {
    return printQuandaUsageError(
        KeelError("Expected one rule", {{"arguments", arguments.positionals}},
                  "tools/quanda/MaskCommand", "mask", __LINE__),
        usage, err);
  }
  const bool range = arguments.has("from") || arguments.has("to");
  if ((range && !(arguments.has("from") && arguments.has("to"))) ||
      int(range) + int(arguments.has("after")) + int(arguments.has("before")) > 1) {
    return printQuandaUsageError(KeelError("Give --from with --to, or --after, or --before", {},
                                           "tools/quanda/MaskCommand", "mask", __LINE__),
                                 usage, err);
  }
  std::uint32_t count = 10;
  if (const std::string* text = arguments.lastValue("count")) {
    const auto value = parseQuandaInteger<std::uint32_t>(*text, "count");
    if (!value) return printQuandaUsageError(value.error(), usage, err);
    count = value.value();
  }
  auto firstDay = QuandaDayOfGregorianWeek::monday;
  if (const std::string* text = arguments.lastValue("first-day")) {
    const auto day = makeDayOfGregorianWeekFromSyntax(*text);
    if (!day) return printQuandaUsageError(day.error(), usage, err);
    firstDay = day.value();
  }

  const auto mask = makeDateMaskFromSyntaxOrArchive(arguments.positionals[0]);
  if (!mask) {
    printQuandaError(mask.error(), err);
    return quandaExitFailure;
  }
  const QuandaDateMasking& rule = *mask.value();
  const bool listing = range || arguments.has("after") || arguments.has("before");
  if (arguments.has("json") || !listing) out << encodeTaggedDateMask(rule).dump() << "\n";

  if (range) {
    const auto from = dateOption(arguments, "from");
    if (!from) return printQuandaError(from.error(), err), quandaExitFailure;
    const auto to = dateOption(arguments, "to");
    if (!to) return printQuandaError(to.error(), err), quandaExitFailure;
    for (QuandaAbstractDate date :
         rule.matchingDates(KeelDomain(from.value(), to.value()), firstDay)) {
      printDate(date, out);
    }
  } else if (arguments.has("after") || arguments.has("before")) {
    const bool forward = arguments.has("after");
    const auto start = dateOption(arguments, forward ? "after" : "before");
    if (!start) return printQuandaError(start.error(), err), quandaExitFailure;
    std::optional<QuandaAbstractDate> date = start.value();
    for (std::uint32_t index = 0; index < count; ++index) {
      date = forward ? rule.nextMatch(*date, firstDay) : rule.previousMatch(*date, firstDay);
      if (!date) {
        out << (forward ? "(no later match up to 9999-12-31)\n"
                        : "(no earlier match down to 0001-01-01)\n");
        break;
      }
      printDate(*date, out);
    }
  }
  return 0;
}

const bool registered = registerQuandaCommand({
    .name = "mask",
    .usage = usage,
    .summary = "Lists the dates a recurrence rule (a date mask) matches.",
    .run = runMask,
    .demonstrations = {{"last fri", "--after", "2024-01-01", "--count", "3"},
                       {"2nd tue", "--from", "2024-01-01", "--to", "2024-03-31"},
                       {"mon except 2024-07-01..2024-07-14", "--after", "2024-06-20", "--count",
                        "3"},
                       {"fri and day 13", "--after", "2024-01-01", "--count", "3"},
                       {"every other week from 2024-01-03", "--json", "--after", "2024-01-01",
                        "--count", "2", "--first-day", "sunday"},
                       {R"({"kind": "daysOfMonth", "mask": {"oneBasedOrdinals": [31]}})",
                        "--before", "2024-06-01", "--count", "2"},
                       {"every 0 days from 2024-01-01"}},
});

}  // namespace
