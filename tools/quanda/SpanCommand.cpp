// quanda span: reads a time span as the library's factories take one (a count of seconds, whole
// or fractional), shows it in every form the library gives, and adds days, hours, minutes and
// seconds or rounds it, as options say, in order.
//
//   quanda span 93784 --round hour            (a natural span: whole seconds, never negative)
//   quanda span -7200 --add-hours 3           (a discrete span: whole seconds with a sign)
//   quanda span 2.5 --add-minutes 1           (a real span: fractional seconds)
//   quanda span 2.9 --discrete                (whole kinds floor a fraction: 2 seconds)
//
// Each step is the span's try... form (or the natural span's subtract), and a result past the
// kind's range, or a real one that is not finite, is refused with an error.
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "Keel/KeelCheckedArithmetic.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaOptions.h"
#include "tools/quanda/QuandaSteps.h"

namespace {

using Natural = QuandaNaturalTimeSpan;
using Discrete = QuandaDiscreteTimeSpan;
using Real = QuandaRealTimeSpan;

constexpr std::string_view path = "tools/quanda/SpanCommand";

struct Arguments {
  std::string text;
  bool natural = false;
  bool discrete = false;
  bool real = false;
  QuandaSteps steps;
};

template <class Span>
KeelArguments describe(Span span) {
  KeelArguments rows = {{"description", span.description()}, {"seconds", span.seconds()}};
  if constexpr (!std::is_same_v<Span, Real>) {
    rows.emplace_back("minutes, hours", keel::describe(span.totalMinutes()) + ", " +
                                            keel::describe(span.totalHours()));
    rows.emplace_back("days, weeks",
                      keel::describe(span.totalDays()) + ", " + keel::describe(span.totalWeeks()));
    rows.emplace_back("archive", nlohmann::json(span).dump());
  }
  if constexpr (std::is_same_v<Span, Natural>) {
    if (span.seconds() < std::uint64_t{1} << 63) {
      rows.emplace_back("as discrete", Discrete(span).description());
    }
    rows.emplace_back("as real", Real(span).description());
  } else if constexpr (std::is_same_v<Span, Discrete>) {
    if (span.seconds() != std::numeric_limits<std::int64_t>::min()) {
      rows.emplace_back("inverted", span.inverted().description());
      rows.emplace_back("absolute (natural)", span.abs().description());
    }
  } else {
    rows.emplace_back("absolute", span.abs().description());
  }
  return rows;
}

KeelError outsideTheRange(std::string_view span, const QuandaStep& step) {
  return KeelError::fault("Result outside the span's range",
                          {{"span", span}, {"option", step.option}, {"value", step.value}}, path,
                          "span");
}

std::int64_t unitSeconds(std::string_view option) {
  if (option == "--add-days") return 86400;
  if (option == "--add-hours") return 3600;
  if (option == "--add-minutes") return 60;
  return 1;
}

template <class Span>
using Amount = std::conditional_t<std::is_same_v<Span, Real>, double, std::int64_t>;

template <class Span>
KeelResult<Span> refusedWhereNothing(const std::optional<Span>& result, const Span& span,
                                     const QuandaStep& step) {
  if (result) return *result;
  return outsideTheRange(span.description(), step);
}

// The span moved by amount * unit seconds, through the kind's try... forms.
template <class Span>
KeelResult<Span> added(Span span, const QuandaStep& step, Amount<Span> amount) {
  const std::int64_t unit = unitSeconds(step.option);
  if constexpr (std::is_same_v<Span, Real>) {
    const std::optional<Real> move = Real::tryMakeFromDouble(amount * static_cast<double>(unit));
    return refusedWhereNothing(move ? span.tryAdding(*move) : std::nullopt, span, step);
  } else if constexpr (std::is_same_v<Span, Discrete>) {
    const std::optional<std::int64_t> move = keel::tryMultiply(amount, unit);
    return refusedWhereNothing(move ? span.tryAdding(Discrete(*move)) : std::nullopt, span, step);
  } else {
    const std::optional<std::int64_t> back = keel::tryNegate(amount);
    const std::optional<std::uint64_t> magnitude =
        amount >= 0 ? keel::tryMultiply(static_cast<std::uint64_t>(amount),
                                        static_cast<std::uint64_t>(unit))
        : back
            ? keel::tryMultiply(static_cast<std::uint64_t>(*back), static_cast<std::uint64_t>(unit))
            : std::nullopt;
    if (!magnitude) return outsideTheRange(span.description(), step);
    if (amount < 0) {
      auto moved = span.trySubtract(Natural(*magnitude));
      if (!moved) return outsideTheRange(span.description(), step);
      return *std::move(moved);
    }
    return refusedWhereNothing(span.tryAdding(Natural(*magnitude)), span, step);
  }
}

template <class Span>
KeelResult<Span> rounded(Span span, const QuandaStep& step) {
  const std::string_view unit = step.value;
  if constexpr (std::is_same_v<Span, Real>) {
    const double seconds = unit == "minute" ? 60.0
                           : unit == "hour" ? 3600.0
                           : unit == "day"  ? 86400.0
                                            : 604800.0;
    return span.rounded(Real(seconds));
  } else {
    const std::optional<Span> result = unit == "minute" ? span.tryRoundingToMinute()
                                       : unit == "hour" ? span.tryRoundingToHour()
                                       : unit == "day"  ? span.tryRoundingToDay()
                                                        : span.tryRoundingToWeek();
    return refusedWhereNothing(result, span, step);
  }
}

template <class Span>
std::function<KeelResult<Span>(const Span&)> makeStep(const QuandaStep& step) {
  if (step.option == "--round") return [step](const Span& span) { return rounded(span, step); };
  const Amount<Span> amount = quandaNumber<Amount<Span>>(step.value, step.option);
  return [step, amount](const Span& span) { return added(span, step, amount); };
}

template <class Span>
QuandaOutcome run(Span span, const Arguments& arguments, std::ostream& out) {
  const auto describeThis = [](const Span& each) { return describe(each); };
  return runQuandaSteps(span, describe(span), arguments.steps.given(), makeStep<Span>, describeThis,
                        out);
}

// A whole count makes a natural span (a discrete one when negative), a fraction a real one,
// unless a kind is asked for; a whole kind floors a fraction, as its factory from a double does.
QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string& text = arguments.text;
  const bool whole = !text.empty() && text.find_first_not_of("+-0123456789") == std::string::npos;
  const bool real = arguments.real || (!whole && !arguments.natural && !arguments.discrete);
  if (real) return run(Real(quandaNumber<double>(text, "seconds")), arguments, out);
  const bool discrete = arguments.discrete || (text.starts_with('-') && !arguments.natural);
  if (!whole) {
    const double seconds = quandaNumber<double>(text, "seconds");
    const auto made = [&](const auto& span) -> QuandaOutcome {
      if (span) return run(*span, arguments, out);
      return KeelError::fault("Seconds outside the span's range", {{"seconds", text}}, path,
                              "span");
    };
    if (discrete) return made(Discrete::tryMakeFromDouble(seconds));
    return made(Natural::tryMakeFromDouble(seconds));
  }
  if (discrete) return run(Discrete(quandaNumber<std::int64_t>(text, "seconds")), arguments, out);
  return run(Natural(quandaNumber<std::uint64_t>(text, "seconds")), arguments, out);
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("seconds", arguments->text, "A count of seconds, whole or fractional")
      ->type_name("")
      ->required();
  CLI::Option* natural =
      command.add_flag("--natural", arguments->natural, "A natural span: whole, never negative")
          ->option_text(" ");
  CLI::Option* discrete =
      command.add_flag("--discrete", arguments->discrete, "Or a discrete one: whole, with a sign")
          ->option_text(" ");
  CLI::Option* real =
      command.add_flag("--real", arguments->real, "Or a real one: fractional")->option_text(" ");
  natural->excludes(discrete)->excludes(real);
  discrete->excludes(real);
  QuandaSteps& steps = arguments->steps;
  const CLI::Validator number = quandaNumberCheck<double>();
  steps.add(command, "--add-days", "Adds days", number);
  steps.add(command, "--add-hours", "Adds hours", number);
  steps.add(command, "--add-minutes", "Adds minutes", number);
  steps.add(command, "--add-seconds", "Adds seconds", number);
  steps.add(command, "--round", "Rounds to the nearest unit",
            CLI::IsMember({"minute", "hour", "day", "week"}).description(""),
            "minute|hour|day|week");
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "span",
    .summary = "Reads a span of seconds, shows every form of it, adds to it or rounds it.",
    .detail =
        "A whole count makes a natural span (a discrete one when negative), a fraction a real\n"
        "one; --natural, --discrete and --real choose the kind (a whole kind floors a\n"
        "fraction). Amounts are whole for the whole kinds. The --add and --round steps apply\n"
        "in the order given, and may repeat; a result past the kind's range is refused.\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"93784", "--round", "hour"}},
            {.args = {"-7200", "--add-hours", "3", "--add-minutes", "-90"}},
            {.args = {"3600", "--add-days", "1", "--add-seconds", "-90000"}},
            {.args = {"2.5", "--add-minutes", "1", "--round", "minute"}},
            {.args = {"2.9", "--discrete"}},
        },
});

}  // namespace
