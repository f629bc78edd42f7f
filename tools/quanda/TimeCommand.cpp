// quanda time: reads a time of day in any form the library's factories read, shows it in every
// form the library writes, and moves it by hours, minutes and seconds given as options, in order;
// each move carries whole days into a relative time of day.
//
//   quanda time 22:30:00 --add-hours 3          (01:30:00, +1 day)
//   quanda time 070509                          (six digits without separators)
//   quanda time 70509                           (the packed number hhmmss)
//   quanda time 23:59:30.25 --add-seconds 45.5  (fractional seconds: a real time of day)
//   quanda time now --zone Asia/Tokyo           (the present in a zone)
#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"
#include "tools/quanda/QuandaSteps.h"

namespace {

using Natural = QuandaAbstractNaturalTimeOfDay;
using Real = QuandaAbstractRealTimeOfDay;

constexpr std::string_view path = "tools/quanda/TimeCommand";

struct Arguments {
  std::string text;
  std::string zone;
  bool real = false;
  QuandaSteps steps;
};

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
KeelArguments describeRelative(const Relative& relative) {
  KeelArguments rows = {{"relative", relative.description()},
                        {"days", relative.days()},
                        {"time", relative.time().serializeToIso8601String()},
                        {"seconds", relative.seconds()}};
  if constexpr (std::is_same_v<Relative, QuandaAbstractRelativeDiscreteTimeOfDay>) {
    rows.emplace_back("archive", nlohmann::json(relative).dump());
  }
  return rows;
}

// A move of the relative time by the step's amount through its try... form, refused where the
// day count would leave 32 bits. Hours are 32-bit amounts in the library, minutes and seconds
// 64-bit, and a real time moves by fractional seconds.
template <class Relative>
std::function<KeelResult<Relative>(const Relative&)> makeMove(const QuandaStep& step) {
  using Seconds =
      std::conditional_t<std::is_same_v<Relative, QuandaAbstractRelativeDiscreteTimeOfDay>,
                         std::int64_t, double>;
  const auto refusedWhereNothing = [step](auto amount, auto tryMove) {
    return [=](const Relative& relative) -> KeelResult<Relative> {
      const std::optional<Relative> moved = tryMove(relative, amount);
      if (moved) return *moved;
      return KeelError::fault(
          "Day count beyond 32 bits",
          {{"relative", relative.description()}, {"option", step.option}, {"value", step.value}},
          path, "time");
    };
  };
  if (step.option == "--add-hours") {
    return refusedWhereNothing(
        quandaNumber<std::int32_t>(step.value, step.option),
        [](const Relative& r, std::int32_t n) { return r.tryAddingHours(n); });
  }
  if (step.option == "--add-minutes") {
    return refusedWhereNothing(
        quandaNumber<std::int64_t>(step.value, step.option),
        [](const Relative& r, std::int64_t n) { return r.tryAddingMinutes(n); });
  }
  return refusedWhereNothing(quandaNumber<Seconds>(step.value, step.option),
                             [](const Relative& r, Seconds n) { return r.tryAddingSeconds(n); });
}

template <class Time>
QuandaOutcome run(Time time, const Arguments& arguments, std::ostream& out) {
  using Relative = std::remove_cvref_t<decltype(time.addingSeconds(0))>;
  const auto describeThis = [](const Relative& relative) { return describeRelative(relative); };
  return runQuandaSteps(Relative(time), describe(time), arguments.steps.given(), makeMove<Relative>,
                        describeThis, out);
}

// The factory a text is meant for: a fraction makes a real time, colons the ISO 8601 string, six
// characters the form without separators, and other digits the packed number.
QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string& text = arguments.text;
  if (!arguments.zone.empty() && text != "now") {
    throw CLI::ValidationError("--zone", "only taken with now");
  }
  if (text == "now") {
    const auto adapter = makeQuandaAdapter("", arguments.zone);
    const auto now = quandaNow(*adapter);
    if (!now) return KeelError::wrap(now.error(), {{"time", text}}, path, "time");
    if (arguments.real) return run(Real(now.value().time()), arguments, out);
    return run(now.value().time(), arguments, out);
  }
  if (text.find_first_of(".,") != std::string::npos || arguments.real) {
    const KeelResult<Real> time = Real::makeFromIso8601String(text);
    if (!time) return KeelError::wrap(time.error(), {{"time", text}}, path, "time");
    return run(time.value(), arguments, out);
  }
  const KeelResult<Natural> time =
      text.find(':') != std::string::npos ? Natural::makeFromIso8601String(text)
      : text.size() == 6
          ? Natural::makeFromIso8601StringWithoutSeparators(text)
          : Natural::makeFromIso8601Numeric(quandaNumber<std::uint64_t>(text, "time"));
  if (!time) return KeelError::wrap(time.error(), {{"time", text}}, path, "time");
  return run(time.value(), arguments, out);
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("time", arguments->text, "hh:mm:ss[.fff], hhmmss, the packed number or now")
      ->type_name("")
      ->required();
  addQuandaZoneOption(command, arguments->zone);
  command.add_flag("--real", arguments->real, "Reads the time as a real one");
  QuandaSteps& steps = arguments->steps;
  steps.add(command, "--add-hours", "Adds hours", quandaNumberCheck<std::int32_t>());
  steps.add(command, "--add-minutes", "Adds minutes", quandaNumberCheck<std::int64_t>());
  steps.add(command, "--add-seconds", "Adds seconds (fractional for a real time)",
            quandaNumberCheck<double>());
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "time",
    .summary = "Reads a time of day, shows every form of it, moves it carrying days.",
    .detail = "A time with colons is read as hh:mm:ss, six characters as hhmmss, other digits as\n"
              "the packed number hhmmss; a fraction of a second or --real makes a real time.\n"
              "The --add steps apply in the order given, and may repeat. now is the present in\n"
              "--zone (TZ or the system's zone).\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"22:30:00", "--add-hours", "3", "--add-minutes", "-45"}},
            {.args = {"070509"}},
            {.args = {"70509", "--add-seconds", "-25510"}},
            {.args = {"23:59:30.25", "--add-seconds", "45.5"}},
        },
});

}  // namespace
