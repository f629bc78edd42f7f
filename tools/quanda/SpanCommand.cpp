// quanda span: reads a time span as the library's factories take one (a count of seconds, whole
// or fractional), shows it in every form the library gives, and adds days, hours, minutes and
// seconds or rounds it, as options say, in order.
//
//   quanda span 93784 --round hour            (a natural span: whole seconds, never negative)
//   quanda span -7200 --add-hours 3           (a discrete span: whole seconds with a sign)
//   quanda span 2.5 --add-minutes 1           (a real span: fractional seconds)
//   quanda span 2.9 --discrete                (whole kinds floor a fraction: 2 seconds)
//
// Whole-second overflow is a programming error in the library, so the command checks each step
// first and refuses it with an error instead; a natural span that would go negative is refused by
// the library itself (subtract), whose error is shown.
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "Keel/KeelMathUtil.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaTimeArguments.h"

namespace {

using Natural = QuandaNaturalTimeSpan;
using Discrete = QuandaDiscreteTimeSpan;
using Real = QuandaRealTimeSpan;

constexpr std::string_view usage =
    "span <seconds> [--natural | --discrete | --real] [--add-days N] [--add-hours N] "
    "[--add-minutes N] [--add-seconds N] [--round minute|hour|day|week]";
constexpr std::string_view commandPath = "tools/quanda/SpanCommand";

constexpr QuandaOptionSpec acceptedOptions[] = {
    {"natural", false}, {"discrete", false}, {"real", false}, {"add-days"},
    {"add-hours"},      {"add-minutes"},     {"add-seconds"}, {"round"},
};

constexpr double twoTo63 = 9223372036854775808.0;

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

KeelError outsideTheRange(std::string_view span, const QuandaOption& option) {
  return KeelError("Result outside the span's range",
                   {{"span", span}, {"option", "--" + option.name}, {"value", option.value}},
                   commandPath, "span", __LINE__);
}

std::int64_t unitSeconds(std::string_view option) {
  if (option == "add-days") return 86400;
  if (option == "add-hours") return 3600;
  if (option == "add-minutes") return 60;
  return 1;
}

// The span moved by amount * unit seconds: checked sums for the whole kinds (and the library's
// subtract for a natural span moving back), a plain sum for the real kind.
template <class Span>
KeelResult<Span> added(
    Span span, const QuandaOption& option, std::int64_t unit,
    std::conditional_t<std::is_same_v<Span, Real>, double, std::int64_t> amount) {
  if constexpr (std::is_same_v<Span, Real>) {
    return span + Real(amount * static_cast<double>(unit));
  } else if constexpr (std::is_same_v<Span, Discrete>) {
    std::int64_t product = 0;
    std::int64_t sum = 0;
    if (__builtin_mul_overflow(amount, unit, &product) ||
        __builtin_add_overflow(span.seconds(), product, &sum)) {
      return (outsideTheRange(span.description(), option));
    }
    return span + Discrete(product);
  } else {
    // The magnitude of the move, in unsigned seconds.
    std::uint64_t magnitude = 0;
    const std::uint64_t amountMagnitude =
        amount < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(amount)
                   : static_cast<std::uint64_t>(amount);
    std::uint64_t sum = 0;
    if (__builtin_mul_overflow(amountMagnitude, static_cast<std::uint64_t>(unit), &magnitude) ||
        (amount >= 0 && __builtin_add_overflow(span.seconds(), magnitude, &sum)) ||
        (amount < 0 &&
         (span.seconds() >= std::uint64_t{1} << 63 || magnitude >= std::uint64_t{1} << 63))) {
      return (outsideTheRange(span.description(), option));
    }
    if (amount >= 0) return span + Natural(magnitude);
    return span.subtract(Natural(magnitude));
  }
}

template <class Span>
KeelResult<Span> rounded(Span span, const QuandaOption& option) {
  const std::string_view unit = option.value;
  const double step = unit == "minute" ? 60.0
                      : unit == "hour" ? 3600.0
                      : unit == "day"  ? 86400.0
                      : unit == "week" ? 604800.0
                                       : 0.0;
  if constexpr (std::is_same_v<Span, Real>) {
    return span.rounded(Real(step));
  } else {
    // The library rounds in doubles; a result past the field's end stops it, so refuse it here.
    const double result = KeelMathUtil::roundTo(span.asDouble(), step);
    const bool fits = std::is_same_v<Span, Natural> ? result > -1.0 && result < 2.0 * twoTo63
                                                    : result >= -twoTo63 && result < twoTo63;
    if (!fits) return (outsideTheRange(span.description(), option));
    if (step == 60.0) return span.roundingToMinute();
    if (step == 3600.0) return span.roundingToHour();
    if (step == 86400.0) return span.roundingToDay();
    return span.roundingToWeek();
  }
}

template <class Span>
int run(Span span, const QuandaArguments& arguments, std::ostream& out, std::ostream& err) {
  using Amount = std::conditional_t<std::is_same_v<Span, Real>, double, std::int64_t>;
  // Every option is read before anything is applied, so that a misspelt one changes nothing.
  std::vector<std::pair<const QuandaOption*, Amount>> steps;
  for (const QuandaOption& option : arguments.options) {
    if (option.name == "natural" || option.name == "discrete" || option.name == "real") continue;
    if (option.name == "round") {
      const std::string& unit = option.value;
      if (unit != "minute" && unit != "hour" && unit != "day" && unit != "week") {
        return printQuandaUsageError(
            KeelError(
                "Unknown unit",
                {{"option", "--round"}, {"value", unit}, {"units", "minute, hour, day, week"}},
                commandPath, "span", __LINE__),
            usage, err);
      }
      steps.emplace_back(&option, Amount{});
      continue;
    }
    if constexpr (std::is_same_v<Span, Real>) {
      const KeelResult<double> amount = parseQuandaDecimal(option.value, option.name);
      if (!amount) return printQuandaUsageError(amount.error(), usage, err);
      steps.emplace_back(&option, amount.value());
    } else {
      const KeelResult<std::int64_t> amount =
          parseQuandaInteger<std::int64_t>(option.value, option.name);
      if (!amount) return printQuandaUsageError(amount.error(), usage, err);
      steps.emplace_back(&option, amount.value());
    }
  }

  printQuandaTable(describe(span), out);
  for (const auto& [option, amount] : steps) {
    const KeelResult<Span> next = option->name == "round"
                                      ? rounded(span, *option)
                                      : added(span, *option, unitSeconds(option->name), amount);
    if (!next) {
      printQuandaError(next.error(), err);
      return quandaExitFailure;
    }
    span = next.value();
    out << "\n--" << option->name << ' ' << option->value << ":\n";
    printQuandaTable(describe(span), out, "  ");
  }
  return 0;
}

int runSpan(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const KeelResult<QuandaArguments> parsed = parseQuandaArguments(args, acceptedOptions);
  if (!parsed) return printQuandaUsageError(parsed.error(), usage, err);
  const QuandaArguments& arguments = parsed.value();
  if (arguments.positionals.size() != 1) {
    return printQuandaUsageError(
        KeelError("Expected one count of seconds", {{"arguments", arguments.positionals}},
                  commandPath, "span", __LINE__),
        usage, err);
  }
  const std::string& text = arguments.positionals.front();
  const bool whole = !text.empty() && text.find_first_not_of("+-0123456789") == std::string::npos;
  const bool negative = !text.empty() && text.front() == '-';
  const bool real =
      arguments.has("real") || (!whole && !arguments.has("natural") && !arguments.has("discrete"));
  if (real) {
    const KeelResult<double> seconds = parseQuandaDecimal(text, "seconds");
    if (!seconds) return printQuandaUsageError(seconds.error(), usage, err);
    return run(Real(seconds.value()), arguments, out, err);
  }
  const bool discrete = arguments.has("discrete") || (negative && !arguments.has("natural"));
  if (!whole) {
    // A fraction for a whole kind: the kind's init(double:), which floors.
    const KeelResult<double> seconds = parseQuandaDecimal(text, "seconds");
    if (!seconds) return printQuandaUsageError(seconds.error(), usage, err);
    const double floor = std::floor(seconds.value());
    if (discrete ? !(floor >= -twoTo63 && floor < twoTo63)
                 : !(floor > -1.0 && floor < 2.0 * twoTo63)) {
      printQuandaError(KeelError("Seconds outside the span's range", {{"seconds", text}},
                                 commandPath, "span", __LINE__),
                       err);
      return quandaExitFailure;
    }
    if (discrete) return run(Discrete::makeFromDouble(seconds.value()), arguments, out, err);
    return run(Natural::makeFromDouble(seconds.value()), arguments, out, err);
  }
  if (discrete) {
    const KeelResult<std::int64_t> seconds = parseQuandaInteger<std::int64_t>(text, "seconds");
    if (!seconds) return printQuandaUsageError(seconds.error(), usage, err);
    return run(Discrete(seconds.value()), arguments, out, err);
  }
  const KeelResult<std::uint64_t> seconds = parseQuandaInteger<std::uint64_t>(text, "seconds");
  if (!seconds) return printQuandaUsageError(seconds.error(), usage, err);
  return run(Natural(seconds.value()), arguments, out, err);
}

const bool registered = registerQuandaCommand({
    .name = "span",
    .usage = usage,
    .summary = "Reads a time span as a count of seconds (natural, discrete or real), shows every "
               "form of it, and adds amounts or rounds it.",
    .run = runSpan,
    .demonstrations =
        {
            {"93784", "--round", "hour"},
            {"-7200", "--add-hours", "3", "--add-minutes", "-90"},
            {"3600", "--add-days", "1", "--add-seconds", "-90000"},
            {"2.5", "--add-minutes", "1", "--round", "minute"},
            {"2.9", "--discrete"},
        },
});

}  // namespace
