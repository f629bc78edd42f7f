// QuandaCommandSupport: what most commands of the quanda program need to read their arguments
// and show their results, so that every command reads its command line and lays out its output
// the same way.
//
//   static constexpr QuandaOptionSpec options[] = {{"add-days"}, {"round"}, {"utc", false}};
//   KeelResult<QuandaArguments> parsed = parseQuandaArguments(args, options);
//   if (!parsed) return printQuandaUsageError(parsed.error(), usage, err);
//   for (const QuandaOption& option : parsed.value().options) ...   // in command-line order
//
//   KeelResult<std::int32_t> days = parseQuandaInteger<std::int32_t>(option.value, option.name);
//
//   printQuandaTable({{"date", date}, {"day of week", date.dayOfWeek()}}, out);
//
// Failures come back as KeelError, like the library's own, so a command reports them with the
// same printQuandaError.
#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelError.h"
#include "Keel/KeelResult.h"

// An option a command accepts: "--name value" or "--name=value", or "--name" alone for a flag.
struct QuandaOptionSpec {
  std::string_view name;  // without the leading "--"
  bool takesValue = true;
};

// One option as given: its name without "--", and its value (empty for a flag).
struct QuandaOption {
  std::string name;
  std::string value;

  friend bool operator==(const QuandaOption&, const QuandaOption&) = default;
};

struct QuandaArguments {
  std::vector<std::string> positionals;  // in order, options taken out
  std::vector<QuandaOption> options;     // in command-line order; an option may repeat

  // The value of the last occurrence of an option, or null when it is absent.
  const std::string* lastValue(std::string_view name) const;
  bool has(std::string_view name) const;
};

// Splits a command's arguments into positionals and options. Anything starting with "--" is an
// option and must be one of the accepted ones; the argument after an option that takes a value
// is its value whatever it looks like ("--add-days -3"). A lone "--" ends the options, and a
// single leading dash is a positional ("-3"). Fails on an unknown option, a missing value or a
// value given to a flag.
KeelResult<QuandaArguments> parseQuandaArguments(const std::vector<std::string>& args,
                                                 std::span<const QuandaOptionSpec> accepted);

// Prints a usage error (the problem, then "usage: quanda <usage>") and returns quandaExitUsage.
int printQuandaUsageError(const KeelError& problem, std::string_view usage, std::ostream& err);

namespace quanda_detail {
inline constexpr std::string_view supportPath = "tools/quanda/QuandaCommandSupport";

// An optional sign and decimal digits, read without a target type yet.
struct DecimalInteger {
  bool negative = false;
  bool beyond64Bits = false;
  std::uint64_t magnitude = 0;  // meaningless when beyond64Bits
};
KeelResult<DecimalInteger> parseDecimalInteger(std::string_view text, std::string_view name);
KeelError integerOutOfRange(std::string_view text, std::string_view name, std::string minimum,
                            std::string maximum);
}  // namespace quanda_detail

// Reads a whole decimal number of type T with an optional sign ("+3", "-3"), naming the argument
// in the error: "Not an integer", or "Integer out of range" with T's bounds.
template <std::integral T>
requires(!std::same_as<T, bool>) KeelResult<T> parseQuandaInteger(std::string_view text,
                                                                  std::string_view name) {
  using Limits = std::numeric_limits<T>;
  const KeelResult<quanda_detail::DecimalInteger> read =
      quanda_detail::parseDecimalInteger(text, name);
  if (!read) return (read.error());
  const auto [negative, beyond64Bits, magnitude] = read.value();
  // The largest magnitude each sign allows; a two's complement minimum is one past the maximum.
  const auto maximum = static_cast<std::uint64_t>(Limits::max());
  const std::uint64_t limit = !negative ? maximum : Limits::is_signed ? maximum + 1 : 0;
  if (beyond64Bits || magnitude > limit) {
    return (quanda_detail::integerOutOfRange(text, name, keel::describe(Limits::min()),
                                             keel::describe(Limits::max())));
  }
  if constexpr (Limits::is_signed) {
    // -(magnitude - 1) - 1 stays inside T all the way down to T's minimum.
    if (negative && magnitude != 0) return static_cast<T>(-static_cast<T>(magnitude - 1) - 1);
  }
  return static_cast<T>(magnitude);
}

// Prints one "label: value" line per row, values aligned in one column after the longest label,
// each line starting with indent. A value spanning several lines keeps that column. The rows
// are KeelArguments, so any value the library can describe can be given as it is.
void printQuandaTable(const KeelArguments& rows, std::ostream& out, std::string_view indent = "");
