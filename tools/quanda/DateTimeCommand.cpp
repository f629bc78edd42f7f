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
#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaOptions.h"
#include "tools/quanda/QuandaSteps.h"
#include "tools/quanda/QuandaTimeArguments.h"

namespace {

using Natural = QuandaAbstractNaturalDateTime;
using Real = QuandaAbstractRealDateTime;

constexpr std::string_view path = "tools/quanda/DateTimeCommand";

struct Arguments {
  std::string text;
  bool real = false;
  QuandaSteps steps;
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

template <class DateTime>
using Step = std::function<KeelResult<DateTime>(const DateTime&)>;

template <class DateTime>
KeelError outsideTheCalendar(const DateTime& dateTime, const QuandaStep& step) {
  return KeelError::fault("Result outside 0001-01-01 ... 9999-12-31",
                          {{"dateTime", dateTime.serializedToRfc3339String()},
                           {"option", step.option},
                           {"value", step.value}},
                          path, "datetime");
}

// A clock move by the step's amount in units of unitSeconds.
template <class DateTime, class Amount, class Move>
Step<DateTime> clockStep(const QuandaStep& step, std::int64_t unitSeconds, Move move) {
  const Amount amount = quandaNumber<Amount>(step.value, step.option);
  return [=](const DateTime& dateTime) -> KeelResult<DateTime> {
    if (!staysInRange(dateTime.date(),
                      quandaCarriedDays(dateTime.secondsSinceMidnight(), amount, unitSeconds))) {
      return outsideTheCalendar(dateTime, step);
    }
    return move(dateTime, amount);
  };
}

// A step ready to apply to a date-time of this kind; an amount it cannot take is a misuse.
template <class DateTime>
Step<DateTime> makeStep(const QuandaStep& step) {
  using Time = std::remove_cvref_t<decltype(std::declval<DateTime>().time())>;
  const std::string& name = step.option;
  if (name == "--add-years" || name == "--add-months" || name == "--add-days") {
    const auto n = quandaNumber<std::int32_t>(step.value, name);
    return [=](const DateTime& dateTime) -> KeelResult<DateTime> {
      const QuandaAbstractDate date = dateTime.date();
      if (name == "--add-days") {
        if (!staysInRange(date, n)) return outsideTheCalendar(dateTime, step);
        return dateTime.addingDays(n);
      }
      const std::int64_t months = name == "--add-years" ? std::int64_t{n} * 12 : n;
      const std::int64_t total = std::int64_t{date.year()} * 12 + (date.month() - 1) + months;
      const std::int64_t year = total / 12 - (total % 12 < 0 ? 1 : 0);
      if (year < 1 || year > 9999) return outsideTheCalendar(dateTime, step);
      return name == "--add-years" ? dateTime.addingYears(static_cast<std::int16_t>(n))
                                   : dateTime.addingMonths(n);
    };
  }
  if (name == "--add-hours") {
    return clockStep<DateTime, std::int32_t>(
        step, 3600, [](const DateTime& d, std::int32_t n) { return d.addingHours(n); });
  }
  if (name == "--add-minutes") {
    return clockStep<DateTime, std::int64_t>(
        step, 60, [](const DateTime& d, std::int64_t n) { return d.addingMinutes(n); });
  }
  if (name == "--add-seconds") {
    using Seconds = std::conditional_t<std::is_same_v<DateTime, Real>, double, std::int64_t>;
    return clockStep<DateTime, Seconds>(
        step, 1, [](const DateTime& d, Seconds n) { return d.addingSeconds(n); });
  }
  if (name == "--round" || name == "--floor") {
    const bool round = name == "--round";
    const std::string unit = step.value;
    return [=](const DateTime& d) -> KeelResult<DateTime> {
      if (unit == "minute") return round ? d.roundingToMinute() : d.flooringToMinute();
      if (unit == "hour") return d.roundingToHour();
      return round ? d.roundingToDay() : d.flooringToDay();
    };
  }
  // --next: the first date-time at that time of day after this one.
  return [step](const DateTime& d) -> KeelResult<DateTime> {
    const KeelResult<Time> time = Time::makeFromIso8601String(step.value);
    if (!time) return KeelError::wrap(time.error(), {{"option", step.option}}, path, "datetime");
    if (d.date() == QuandaAbstractDate::validRange.max() && !(time.value() > d.time())) {
      return outsideTheCalendar(d, step);
    }
    return d.next(time.value(), false);
  };
}

template <class DateTime>
QuandaOutcome run(const DateTime& start, const Arguments& arguments, std::ostream& out) {
  const auto describeThis = [](const DateTime& d) { return describe(d); };
  return runQuandaSteps(start, describe(start), arguments.steps.given(), makeStep<DateTime>,
                        describeThis, out);
}

// Digits alone are the packed number, a fraction (or --real) a real date-time, anything else
// the RFC 3339 text.
QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string& text = arguments.text;
  const bool digitsOnly = text.find_first_not_of("0123456789") == std::string::npos;
  const bool fractional = text.find_first_of(".,") != std::string::npos;
  if (!digitsOnly && (fractional || arguments.real)) {
    const KeelResult<Real> dateTime = Real::makeFromRfc3339String(text);
    if (!dateTime)
      return KeelError::wrap(dateTime.error(), {{"date-time", text}}, path, "datetime");
    return run(dateTime.value(), arguments, out);
  }
  const KeelResult<Natural> dateTime =
      digitsOnly ? Natural::makeFromRfc3339Numeric(quandaNumber<std::uint64_t>(text, "date-time"))
                 : Natural::makeFromRfc3339String(text);
  if (!dateTime) return KeelError::wrap(dateTime.error(), {{"date-time", text}}, path, "datetime");
  if (arguments.real) return run(Real(dateTime.value()), arguments, out);
  return run(dateTime.value(), arguments, out);
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command
      .add_option("date-time", arguments->text,
                  "YYYY-MM-DDTHH:MM:SS[.fff] or the packed number YYYYMMDDhhmmss")
      ->type_name("")
      ->required();
  command.add_flag("--real", arguments->real, "Reads the date-time as a real one");
  QuandaSteps& steps = arguments->steps;
  const CLI::Validator whole = quandaNumberCheck<std::int32_t>();
  steps.add(command, "--add-years", "Adds years", whole);
  steps.add(command, "--add-months", "Adds months", whole);
  steps.add(command, "--add-days", "Adds days", whole);
  steps.add(command, "--add-hours", "Adds hours", whole);
  steps.add(command, "--add-minutes", "Adds minutes", quandaNumberCheck<std::int64_t>());
  steps.add(command, "--add-seconds", "Adds seconds (fractional for a real date-time)",
            quandaNumberCheck<double>());
  steps.add(command, "--round", "Rounds to the nearest unit",
            CLI::IsMember({"minute", "hour", "day"}).description(""), "minute|hour|day");
  steps.add(command, "--floor", "Rounds down to the unit",
            CLI::IsMember({"minute", "day"}).description(""), "minute|day");
  steps.add(command, "--next", "Moves to that time of day, after this date-time", CLI::Validator(),
            "HH:MM:SS");
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "datetime",
    .summary = "Reads a date-time, shows every form of it, applies date and clock steps.",
    .detail = "Whole seconds make a natural date-time, a fractional second or --real a real one.\n"
              "The --add, --round, --floor and --next steps apply in the order given, and may\n"
              "repeat. A step that would leave 0001-01-01 ... 9999-12-31 is refused.\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"2024-02-29T23:59:59"}},
            {.args = {"2024-12-31T23:30:00", "--add-hours", "1", "--next", "08:00:00"}},
            {.args = {"20240130101530", "--add-days", "1", "--add-months", "1", "--round", "hour"}},
            {.args = {"2024-03-05T07:08:09.25", "--add-seconds", "-0.5", "--floor", "minute"}},
            {.args = {"2024-12-31T23:59:59", "--real", "--add-seconds", "1.25"}},
        },
});

}  // namespace
