// quanda datetime: reads a date-time in any form the library's factories read, shows it in every
// form the library writes, and applies calendar and clock arithmetic given as options, in order.
//
//   quanda datetime 2024-12-31T23:30:00 --add-hours 1 --next 08:00:00
//   quanda datetime 20240229235959 --round hour
//   quanda datetime 2024-03-05T07:08:09.25 --add-seconds 0.5
//
// Whole seconds give a natural date-time, a fractional second (or --real) a real one. Arithmetic
// that would leave 0001-01-01...9999-12-31 is a programming error in the library, so the command
// checks each step first, the way the date-time carries it, and refuses it with an error instead.
#include <cmath>
#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaTimeArguments.h"

namespace {

using Natural = QuandaAbstractNaturalDateTime;
using Real = QuandaAbstractRealDateTime;

constexpr std::string_view usage =
    "datetime <date-time> [--real] [--add-years N] [--add-months N] [--add-days N] "
    "[--add-hours N] [--add-minutes N] [--add-seconds N] [--round minute|hour|day] "
    "[--floor minute|day] [--next HH:MM:SS]";
constexpr std::string_view commandPath = "tools/quanda/DateTimeCommand";

constexpr QuandaOptionSpec acceptedOptions[] = {
    {"real", false}, {"add-years"},   {"add-months"}, {"add-days"}, {"add-hours"},
    {"add-minutes"}, {"add-seconds"}, {"round"},      {"floor"},    {"next"},
};

KeelArguments describe(const Natural& dateTime) {
  return {{"RFC 3339", dateTime.serializedToRfc3339String()},
          {"description", dateTime.description()},
          {"RFC 3339 numeric", dateTime.serializedToRfc3339Numeric()},
          {"archive", nlohmann::json(dateTime).dump()},
          {"day of week", caseName(dateTime.date().dayOfWeek())},
          {"seconds since datum", dateTime.secondsSinceDatum()},
          {"seconds since midnight", dateTime.secondsSinceMidnight()},
          {"local seconds since 1970", dateTime.localSeconds().time_since_epoch().count()}};
}

KeelArguments describe(const Real& dateTime) {
  return {{"RFC 3339", dateTime.serializedToRfc3339String()},
          {"day of week", caseName(dateTime.date().dayOfWeek())},
          {"seconds since datum", dateTime.secondsSinceDatum()},
          {"seconds since midnight", dateTime.secondsSinceMidnight()},
          {"local seconds since 1970", dateTime.localTime().time_since_epoch().count()},
          {"nearest natural", dateTime.makeNatural().serializedToRfc3339String()}};
}

bool staysInRange(QuandaAbstractDate date, std::optional<std::int32_t> days) {
  if (!days) return false;
  const std::int64_t target = std::int64_t{date.daysSinceDatum()} + *days;
  return target >= 0 && target <= QuandaAbstractDate::validDaysSinceDatumRange.max();
}

// One option, read and ready to apply to a date-time.
template <class DateTime>
using Step = std::function<KeelResult<DateTime>(const DateTime&)>;

template <class DateTime>
KeelResult<DateTime> outsideTheCalendar(const DateTime& dateTime, const QuandaOption& option) {
  return KeelError::fault("Result outside 0001-01-01 ... 9999-12-31",
                          {{"dateTime", dateTime.serializedToRfc3339String()},
                           {"option", "--" + option.name},
                           {"value", option.value}},
                          commandPath, "datetime");
}

// A clock move by the option's amount in units of unitSeconds.
template <class DateTime, class Amount, class Move>
Step<DateTime> clockStep(QuandaOption option, Amount amount, std::int64_t unitSeconds, Move move) {
  return [=](const DateTime& dateTime) -> KeelResult<DateTime> {
    if (!staysInRange(dateTime.date(),
                      quandaCarriedDays(dateTime.secondsSinceMidnight(), amount, unitSeconds))) {
      return outsideTheCalendar(dateTime, option);
    }
    return move(dateTime, amount);
  };
}

// Reads one option into a step; a value the command cannot read is a usage error, a time of day
// the library refuses (for --next) is the library's error.
template <class DateTime>
KeelResult<Step<DateTime>> readStep(const QuandaOption& option) {
  using Result = KeelResult<Step<DateTime>>;
  using Time = std::remove_cvref_t<decltype(std::declval<DateTime>().time())>;
  const std::string& name = option.name;
  const std::string& value = option.value;
  const auto readInteger = [&]<class Integer>(Integer) {
    return parseQuandaInteger<Integer>(value, name);
  };
  if (name == "add-years" || name == "add-months" || name == "add-days") {
    const KeelResult<std::int32_t> amount = readInteger(std::int32_t{});
    if (!amount) return (amount.error());
    const std::int32_t n = amount.value();
    return Step<DateTime>([=](const DateTime& dateTime) -> KeelResult<DateTime> {
      const QuandaAbstractDate date = dateTime.date();
      if (name == "add-days") {
        if (!staysInRange(date, n)) return outsideTheCalendar(dateTime, option);
        return dateTime.addingDays(n);
      }
      const std::int64_t months = name == "add-years" ? std::int64_t{n} * 12 : n;
      const std::int64_t total = std::int64_t{date.year()} * 12 + (date.month() - 1) + months;
      const std::int64_t year = total / 12 - (total % 12 < 0 ? 1 : 0);
      if (year < 1 || year > 9999) return outsideTheCalendar(dateTime, option);
      return name == "add-years" ? dateTime.addingYears(static_cast<std::int16_t>(n))
                                 : dateTime.addingMonths(n);
    });
  }
  if (name == "add-hours") {
    const KeelResult<std::int32_t> hours = readInteger(std::int32_t{});
    if (!hours) return (hours.error());
    return clockStep<DateTime>(option, hours.value(), 3600,
                               [](const DateTime& d, std::int32_t n) { return d.addingHours(n); });
  }
  if (name == "add-minutes") {
    const KeelResult<std::int64_t> minutes = readInteger(std::int64_t{});
    if (!minutes) return (minutes.error());
    return clockStep<DateTime>(option, minutes.value(), 60, [](const DateTime& d, std::int64_t n) {
      return d.addingMinutes(n);
    });
  }
  if (name == "add-seconds") {
    if constexpr (std::is_same_v<DateTime, Real>) {
      const KeelResult<double> seconds = parseQuandaDecimal(value, name);
      if (!seconds) return (seconds.error());
      return clockStep<DateTime>(option, seconds.value(), 1,
                                 [](const DateTime& d, double n) { return d.addingSeconds(n); });
    } else {
      const KeelResult<std::int64_t> seconds = readInteger(std::int64_t{});
      if (!seconds) return (seconds.error());
      return clockStep<DateTime>(option, seconds.value(), 1, [](const DateTime& d, std::int64_t n) {
        return d.addingSeconds(n);
      });
    }
  }
  if (name == "round" || name == "floor") {
    const bool round = name == "round";
    if (value == "minute") {
      return Step<DateTime>([=](const DateTime& d) -> KeelResult<DateTime> {
        return round ? d.roundingToMinute() : d.flooringToMinute();
      });
    }
    if (value == "day") {
      return Step<DateTime>([=](const DateTime& d) -> KeelResult<DateTime> {
        return round ? d.roundingToDay() : d.flooringToDay();
      });
    }
    if (value == "hour" && round) {
      return Step<DateTime>(
          [](const DateTime& d) -> KeelResult<DateTime> { return d.roundingToHour(); });
    }
    return Result("Unknown unit",
                  {{"option", "--" + name},
                   {"value", value},
                   {"units", round ? "minute, hour, day" : "minute, day"}},
                  commandPath, "datetime", __LINE__);
  }
  // --next: the first date-time at that time of day after this one.
  const KeelResult<Time> time = Time::makeFromIso8601String(value);
  if (!time) return (time.error());
  return Step<DateTime>([option, time = time.value()](const DateTime& d) -> KeelResult<DateTime> {
    if (d.date() == QuandaAbstractDate::validRange.max() && !(time > d.time())) {
      return outsideTheCalendar(d, option);
    }
    return d.next(time, false);
  });
}

template <class DateTime>
int run(const DateTime& start, const QuandaArguments& arguments, std::ostream& out,
        std::ostream& err) {
  // Every option is read before anything is applied, so that a misspelt one changes nothing.
  std::vector<std::pair<const QuandaOption*, Step<DateTime>>> steps;
  for (const QuandaOption& option : arguments.options) {
    if (option.name == "real") continue;
    KeelResult<Step<DateTime>> step = readStep<DateTime>(option);
    if (!step) {
      const bool libraryRefused = option.name == "next";
      if (libraryRefused) {
        printQuandaError(step.error(), err);
        return quandaExitFailure;
      }
      return printQuandaUsageError(step.error(), usage, err);
    }
    steps.emplace_back(&option, std::move(step).value());
  }
  printQuandaTable(describe(start), out);
  DateTime current = start;
  for (const auto& [option, step] : steps) {
    const KeelResult<DateTime> next = step(current);
    if (!next) {
      printQuandaError(next.error(), err);
      return quandaExitFailure;
    }
    current = next.value();
    out << "\n--" << option->name << (option->value.empty() ? "" : " ") << option->value << ":\n";
    printQuandaTable(describe(current), out, "  ");
  }
  return 0;
}

int runDateTime(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const KeelResult<QuandaArguments> parsed = parseQuandaArguments(args, acceptedOptions);
  if (!parsed) return printQuandaUsageError(parsed.error(), usage, err);
  const QuandaArguments& arguments = parsed.value();
  if (arguments.positionals.size() != 1) {
    return printQuandaUsageError(
        KeelError("Expected one date-time", {{"arguments", arguments.positionals}}, commandPath,
                  "datetime", __LINE__),
        usage, err);
  }
  const std::string& text = arguments.positionals.front();
  const bool digitsOnly = text.find_first_not_of("0123456789") == std::string::npos;
  const bool fractional = text.find_first_of(".,") != std::string::npos;
  if (!digitsOnly && (fractional || arguments.has("real"))) {
    const KeelResult<Real> dateTime = Real::makeFromRfc3339String(text);
    if (!dateTime) {
      printQuandaError(dateTime.error(), err);
      return quandaExitFailure;
    }
    return run(dateTime.value(), arguments, out, err);
  }
  KeelResult<Natural> dateTime = [&]() -> KeelResult<Natural> {
    if (!digitsOnly) return Natural::makeFromRfc3339String(text);
    const KeelResult<std::uint64_t> number = parseQuandaInteger<std::uint64_t>(text, "date-time");
    if (!number) return (number.error());
    return Natural::makeFromRfc3339Numeric(number.value());
  }();
  if (!dateTime) {
    printQuandaError(dateTime.error(), err);
    return quandaExitFailure;
  }
  if (arguments.has("real")) return run(Real(dateTime.value()), arguments, out, err);
  return run(dateTime.value(), arguments, out, err);
}

const bool registered = registerQuandaCommand({
    .name = "datetime",
    .usage = usage,
    .summary = "Reads a date-time (YYYY-MM-DDTHH:MM:SS[.fff] or YYYYMMDDhhmmss), shows every form "
               "of it, and applies calendar and clock arithmetic in order.",
    .run = runDateTime,
    .demonstrations =
        {
            {"2024-02-29T23:59:59"},
            {"2024-12-31T23:30:00", "--add-hours", "1", "--next", "08:00:00"},
            {"20240130101530", "--add-days", "1", "--add-months", "1", "--round", "hour"},
            {"2024-03-05T07:08:09.25", "--add-seconds", "-0.5", "--floor", "minute"},
            {"2024-12-31T23:59:59", "--real", "--add-seconds", "1.25"},
        },
});

}  // namespace
