// quanda datetime: reads a date-time in any form the library's factories read, shows it in every
// form the library writes, and applies calendar and clock arithmetic given as options, in order.
//
//   quanda datetime 2024-12-31T23:30:00 --add-hours 1 --next 08:00:00
//   quanda datetime 20240229235959 --round hour
//   quanda datetime 2024-03-05T07:08:09.25 --add-seconds 0.5
//
// Whole seconds give a natural date-time, a fractional second (or --real) a real one; "now" is the
// present in the device's zone (or --zone). Each step is the library's try... form, and a step it
// answers nothing to (leaving 0001-01-01...9999-12-31) is refused with an error.
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

#include "Keel/KeelCheckedArithmetic.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"
#include "tools/quanda/QuandaSteps.h"

namespace {

using Natural = QuandaAbstractNaturalDateTime;
using Real = QuandaAbstractRealDateTime;

constexpr std::string_view path = "tools/quanda/DateTimeCommand";

struct Arguments {
  std::string text;
  std::string zone;
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

template <class DateTime>
using Step = std::function<KeelResult<DateTime>(const DateTime&)>;

// A step made of one of the date-time's try... forms: its answer, or a refusal naming the step.
template <class DateTime, class Try>
Step<DateTime> refusedWhereNothing(const QuandaStep& step, Try tryStep) {
  return [step, tryStep](const DateTime& dateTime) -> KeelResult<DateTime> {
    const std::optional<DateTime> result = tryStep(dateTime);
    if (result) return *result;
    return KeelError::fault("Result outside 0001-01-01 ... 9999-12-31",
                            {{"dateTime", dateTime.serializedToRfc3339String()},
                             {"option", step.option},
                             {"value", step.value}},
                            path, "datetime");
  };
}

// A step ready to apply to a date-time of this kind; an amount it cannot take is a misuse.
template <class DateTime>
Step<DateTime> makeStep(const QuandaStep& step) {
  using Time = std::remove_cvref_t<decltype(std::declval<DateTime>().time())>;
  using Seconds = std::conditional_t<std::is_same_v<DateTime, Real>, double, std::int64_t>;
  const std::string& name = step.option;
  const auto made = [&step](auto tryStep) { return refusedWhereNothing<DateTime>(step, tryStep); };
  if (name == "--add-years") {
    // Years beyond 16 bits leave the calendar as surely as any other.
    const auto years = keel::tryNarrow<std::int16_t>(quandaNumber<std::int32_t>(step.value, name));
    return made([=](const DateTime& d) { return years ? d.tryAddingYears(*years) : std::nullopt; });
  }
  if (name == "--add-months") {
    const auto n = quandaNumber<std::int32_t>(step.value, name);
    return made([=](const DateTime& d) { return d.tryAddingMonths(n); });
  }
  if (name == "--add-days") {
    const auto n = quandaNumber<std::int32_t>(step.value, name);
    return made([=](const DateTime& d) { return d.tryAddingDays(n); });
  }
  if (name == "--add-hours") {
    const auto n = quandaNumber<std::int32_t>(step.value, name);
    return made([=](const DateTime& d) { return d.tryAddingHours(n); });
  }
  if (name == "--add-minutes") {
    const auto n = quandaNumber<std::int64_t>(step.value, name);
    return made([=](const DateTime& d) { return d.tryAddingMinutes(n); });
  }
  if (name == "--add-seconds") {
    const auto n = quandaNumber<Seconds>(step.value, name);
    return made([=](const DateTime& d) { return d.tryAddingSeconds(n); });
  }
  if (name == "--round" || name == "--floor") {
    const bool round = name == "--round";
    const std::string unit = step.value;
    return made([=](const DateTime& d) -> std::optional<DateTime> {
      if (unit == "minute") return round ? d.tryRoundingToMinute() : d.tryFlooringToMinute();
      if (unit == "hour") return d.tryRoundingToHour();
      return round ? d.tryRoundingToDay() : d.flooringToDay();
    });
  }
  // --next: the first date-time at that time of day after this one.
  return [step](const DateTime& d) -> KeelResult<DateTime> {
    const KeelResult<Time> time = Time::makeFromIso8601String(step.value);
    if (!time) return KeelError::wrap(time.error(), {{"option", step.option}}, path, "datetime");
    return refusedWhereNothing<DateTime>(
        step, [&](const DateTime& from) { return from.tryNext(time.value(), false); })(d);
  };
}

template <class DateTime>
QuandaOutcome run(const DateTime& start, const Arguments& arguments, std::ostream& out) {
  const auto describeThis = [](const DateTime& d) { return describe(d); };
  return runQuandaSteps(start, describe(start), arguments.steps.given(), makeStep<DateTime>,
                        describeThis, out);
}

// The present in the zone asked for.
KeelResult<Natural> now(const Arguments& arguments) {
  const auto adapter = makeQuandaAdapter("", arguments.zone);
  return quandaNow(*adapter);
}

// "now" is the present, digits alone the packed number, a fraction (or --real) a real date-time,
// anything else the RFC 3339 text.
QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string& text = arguments.text;
  if (!arguments.zone.empty() && text != "now") {
    throw CLI::ValidationError("--zone", "only taken with now");
  }
  const bool digitsOnly = text.find_first_not_of("0123456789") == std::string::npos;
  const bool fractional = text.find_first_of(".,") != std::string::npos;
  if (text != "now" && !digitsOnly && (fractional || arguments.real)) {
    const KeelResult<Real> dateTime = Real::makeFromRfc3339String(text);
    if (!dateTime)
      return KeelError::wrap(dateTime.error(), {{"date-time", text}}, path, "datetime");
    return run(dateTime.value(), arguments, out);
  }
  const KeelResult<Natural> dateTime =
      text == "now" ? now(arguments)
      : digitsOnly ? Natural::makeFromRfc3339Numeric(quandaNumber<std::uint64_t>(text, "date-time"))
                   : Natural::makeFromRfc3339String(text);
  if (!dateTime) return KeelError::wrap(dateTime.error(), {{"date-time", text}}, path, "datetime");
  if (arguments.real) return run(Real(dateTime.value()), arguments, out);
  return run(dateTime.value(), arguments, out);
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command
      .add_option("date-time", arguments->text,
                  "YYYY-MM-DDTHH:MM:SS[.fff], the packed number YYYYMMDDhhmmss, or now")
      ->type_name("")
      ->required();
  addQuandaZoneOption(command, arguments->zone);
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
              "repeat. A step that would leave 0001-01-01 ... 9999-12-31 is refused. now is the\n"
              "present in --zone (TZ or the system's zone).\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"2024-02-29T23:59:59"}},
            {.args = {"now", "--zone", "America/Adak", "--round", "hour"}},
            {.args = {"2024-12-31T23:30:00", "--add-hours", "1", "--next", "08:00:00"}},
            {.args = {"20240130101530", "--add-days", "1", "--add-months", "1", "--round", "hour"}},
            {.args = {"2024-03-05T07:08:09.25", "--add-seconds", "-0.5", "--floor", "minute"}},
            {.args = {"2024-12-31T23:59:59", "--real", "--add-seconds", "1.25"}},
        },
});

}  // namespace
