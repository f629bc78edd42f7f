// quanda time: reads a time of day in any form the library's factories read, shows it in every
// form the library writes, and moves it by hours, minutes and seconds given as options, in order;
// each move carries whole days into a relative time of day.
//
//   quanda time 22:30:00 --add-hours 3          (01:30:00, +1 day)
//   quanda time 070509                          (six digits without separators)
//   quanda time 70509                           (the packed number hhmmss)
//   quanda time 23:59:30.25 --add-seconds 45.5  (fractional seconds: a real time of day)
#include <cstdint>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaTimeArguments.h"

namespace {

using Natural = QuandaAbstractNaturalTimeOfDay;
using Real = QuandaAbstractRealTimeOfDay;

constexpr std::string_view usage =
    "time <hh:mm:ss[.fff] | hhmmss | packed number> [--real] [--add-hours N] [--add-minutes N] "
    "[--add-seconds N]";
constexpr std::string_view commandPath = "tools/quanda/TimeCommand";

constexpr QuandaOptionSpec acceptedOptions[] = {
    {"real", false}, {"add-hours"}, {"add-minutes"}, {"add-seconds"}};

std::string_view meridian(bool isAM) { return isAM ? "AM" : "PM"; }

KeelArguments describe(Natural time) {
  return {{"ISO 8601", time.serializeToIso8601String()},
          {"ISO 8601 numeric", time.serializeToIso8601Numeric()},
          {"archive", nlohmann::json(time).dump()},
          {"seconds since day began", time.secondsSinceDayBegan()},
          {"minutes since day began", time.minutesSinceDayBegan()},
          {"meridian", meridian(time.isAM())},
          {"midnight, midday", std::string(time.isMidnight() ? "yes" : "no") + ", " +
                                   (time.isMidday() ? "yes" : "no")}};
}

KeelArguments describe(Real time) {
  return {{"ISO 8601", time.serializeToIso8601String()},
          {"seconds since day began", time.secondsSinceDayBegan()},
          {"meridian", meridian(time.isAM())},
          {"midnight, midday", std::string(time.isMidnight() ? "yes" : "no") + ", " +
                                   (time.isMidday() ? "yes" : "no")}};
}

template <class Relative>
KeelArguments describeRelative(Relative relative) {
  KeelArguments rows = {{"relative", relative.description()},
                        {"days", relative.days()},
                        {"time", relative.time().serializeToIso8601String()},
                        {"seconds", relative.seconds()}};
  if constexpr (std::is_same_v<Relative, QuandaAbstractRelativeDiscreteTimeOfDay>) {
    rows.emplace_back("archive", nlohmann::json(relative).dump());
  }
  return rows;
}

// Moves the relative time by each option in turn, printing every result; a move whose day count
// would leave 32 bits is refused before the library is asked.
template <class Time>
int run(Time time, const QuandaArguments& arguments, std::ostream& out, std::ostream& err) {
  using Relative = std::remove_cvref_t<decltype(time.addingSeconds(0))>;
  // The amounts are read first, so that a misspelt one changes nothing.
  struct Move {
    const QuandaOption* option;
    std::int64_t unitSeconds;
    std::conditional_t<std::is_same_v<Time, Real>, double, std::int64_t> amount;
  };
  std::vector<Move> moves;
  for (const QuandaOption& option : arguments.options) {
    if (option.name == "real") continue;
    const std::int64_t unit = option.name == "add-hours"     ? 3600
                              : option.name == "add-minutes" ? 60
                                                             : 1;
    if constexpr (std::is_same_v<Time, Real>) {
      if (unit == 1) {
        const KeelResult<double> seconds = parseQuandaDecimal(option.value, option.name);
        if (!seconds) return printQuandaUsageError(seconds.error(), usage, err);
        moves.push_back({&option, unit, seconds.value()});
        continue;
      }
    }
    // Hours are 32-bit amounts in the library, minutes and seconds 64-bit.
    std::int64_t amount = 0;
    if (unit == 3600) {
      const KeelResult<std::int32_t> hours =
          parseQuandaInteger<std::int32_t>(option.value, option.name);
      if (!hours) return printQuandaUsageError(hours.error(), usage, err);
      amount = hours.value();
    } else {
      const KeelResult<std::int64_t> count =
          parseQuandaInteger<std::int64_t>(option.value, option.name);
      if (!count) return printQuandaUsageError(count.error(), usage, err);
      amount = count.value();
    }
    moves.push_back({&option, unit, static_cast<decltype(Move::amount)>(amount)});
  }

  printQuandaTable(describe(time), out);
  Relative relative(time);
  for (const Move& move : moves) {
    if (!quandaCarriedDays(relative.seconds(), move.amount, move.unitSeconds)) {
      printQuandaError(KeelError("Day count beyond 32 bits",
                                 {{"relative", relative.description()},
                                  {"option", "--" + move.option->name},
                                  {"value", move.option->value}},
                                 commandPath, "time", __LINE__),
                       err);
      return quandaExitFailure;
    }
    if (move.unitSeconds == 3600) {
      relative = relative.addingHours(static_cast<std::int32_t>(move.amount));
    } else if (move.unitSeconds == 60) {
      relative = relative.addingMinutes(static_cast<std::int64_t>(move.amount));
    } else {
      relative = relative.addingSeconds(move.amount);
    }
    out << "\n--" << move.option->name << ' ' << move.option->value << ":\n";
    printQuandaTable(describeRelative(relative), out, "  ");
  }
  return 0;
}

// The factory a text is meant for: a fraction makes a real time, colons the ISO 8601 string, six
// characters the form without separators, and other digits the packed number.
int runTime(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const KeelResult<QuandaArguments> parsed = parseQuandaArguments(args, acceptedOptions);
  if (!parsed) return printQuandaUsageError(parsed.error(), usage, err);
  const QuandaArguments& arguments = parsed.value();
  if (arguments.positionals.size() != 1) {
    return printQuandaUsageError(
        KeelError("Expected one time of day", {{"arguments", arguments.positionals}}, commandPath,
                  "time", __LINE__),
        usage, err);
  }
  const std::string& text = arguments.positionals.front();
  if (text.find_first_of(".,") != std::string::npos || arguments.has("real")) {
    const KeelResult<Real> time = Real::makeFromIso8601String(text);
    if (!time) {
      printQuandaError(time.error(), err);
      return quandaExitFailure;
    }
    return run(time.value(), arguments, out, err);
  }
  const bool digitsOnly =
      !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  const KeelResult<Natural> time = [&]() -> KeelResult<Natural> {
    if (text.find(':') != std::string::npos) return Natural::makeFromIso8601String(text);
    if (!digitsOnly || text.size() == 6)
      return Natural::makeFromIso8601StringWithoutSeparators(text);
    const KeelResult<std::uint64_t> number = parseQuandaInteger<std::uint64_t>(text, "time");
    if (!number) return (number.error());
    return Natural::makeFromIso8601Numeric(number.value());
  }();
  if (!time) {
    printQuandaError(time.error(), err);
    return quandaExitFailure;
  }
  return run(time.value(), arguments, out, err);
}

const bool registered = registerQuandaCommand({
    .name = "time",
    .usage = usage,
    .summary = "Reads a time of day (hh:mm:ss[.fff], hhmmss or the packed number), shows every "
               "form of it, and moves it by hours, minutes and seconds, carrying whole days.",
    .run = runTime,
    .demonstrations =
        {
            {"22:30:00", "--add-hours", "3", "--add-minutes", "-45"},
            {"070509"},
            {"70509", "--add-seconds", "-25510"},
            {"23:59:30.25", "--add-seconds", "45.5"},
        },
});

}  // namespace
