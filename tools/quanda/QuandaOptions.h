// QuandaOptions: what the quanda program adds to CLI11 to read its command line, and nothing more.
//
// Numbers. CLI11 2.1 reads integers with strtoll in base 0, so that "010" is eight and "08" no
// number at all, and lets values past 64 bits through clamped. Every number on quanda's command
// line is decimal, read whole by std::from_chars into the type the library takes (a double must
// also be finite), and text that is not such a number is a misuse:
//
//   std::uint32_t count = 10;
//   addQuandaNumberOption(command, "--count", count, "How many matches to list");
//
// A value whose type is known only once the whole command line is read (an amount of seconds is
// whole for a natural date-time, fractional for a real one) is kept as text, checked to be a
// number while the command line is read (quandaNumberCheck<double>()), and read into its type by
// quandaNumber<T>() afterwards, which reports a misuse the same way.
//
// Values the library reads. An option whose text one of the library's factories reads is given
// that factory, and text it refuses is a misuse; --first-day is one, read by the library's
// weekday syntax in every command:
//
//   auto firstDay = QuandaDayOfGregorianWeek::monday;
//   addQuandaFirstDayOption(command, firstDay);
#pragma once

#include <CLI/App.hpp>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "Keel/KeelError.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

template <class T>
concept QuandaNumeric = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;

// The whole text as a decimal number of type T, with an optional sign ("-3", "+3"); nothing for
// other text, a value outside T (a "-" for an unsigned T), or a non-finite double.
template <QuandaNumeric T>
std::optional<T> readQuandaNumber(std::string_view text) {
  // from_chars reads a "-" but no "+"; a "+" followed by another sign stays unread.
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
    text.remove_prefix(1);
  }
  T value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || error != std::errc{} || stop != end) return std::nullopt;
  if constexpr (std::is_floating_point_v<T>) {
    if (!std::isfinite(value)) return std::nullopt;
  }
  return value;
}

// What a number of type T is, for messages: "a whole number from 0 to 255".
template <QuandaNumeric T>
std::string quandaNumberExpectation() {
  if constexpr (std::is_floating_point_v<T>) {
    return "a finite decimal number";
  } else {
    return "a whole number from " + keel::describe(std::numeric_limits<T>::min()) + " to " +
           keel::describe(std::numeric_limits<T>::max());
  }
}

// Refuses, while the command line is read, text that is not a number of type T.
template <QuandaNumeric T>
CLI::Validator quandaNumberCheck() {
  return CLI::Validator(
      [](const std::string& text) {
        return readQuandaNumber<T>(text)
                   ? std::string()
                   : "expected " + quandaNumberExpectation<T>() + ", not " + text;
      },
      "");
}

// The text given to an option as a number of type T; a misuse (CLI::ValidationError) otherwise.
template <QuandaNumeric T>
T quandaNumber(const std::string& text, const std::string& option) {
  if (const std::optional<T> value = readQuandaNumber<T>(text)) return *value;
  throw CLI::ValidationError(option, "expected " + quandaNumberExpectation<T>() + ", not " + text);
}

// Declares an option (or, for a name without dashes, a positional argument) whose text is a
// number of type T, stored in target.
template <QuandaNumeric T>
CLI::Option* addQuandaNumberOption(CLI::App& command, const std::string& name, T& target,
                                   const std::string& description) {
  return command
      .add_option_function<std::string>(
          name, [&target, name](const std::string& text) { target = quandaNumber<T>(text, name); },
          description)
      ->check(quandaNumberCheck<T>())
      ->type_name("N");
}

// Declares an option whose text the library reads with factory (text -> KeelResult<T>), stored
// in target; text the factory refuses is a misuse, shown with the factory's message.
template <class T, class Factory>
CLI::Option* addQuandaLibraryOption(CLI::App& command, const std::string& name, T& target,
                                    Factory factory, const std::string& description) {
  return command.add_option_function<std::string>(
      name,
      [&target, name, factory](const std::string& text) {
        const auto read = factory(text);
        if (!read)
          throw CLI::ValidationError(name, read.error().innermost().message() + ": " + text);
        target = read.value();
      },
      description);
}

// Declares --first-day, the day weeks start on, read by the library's weekday syntax ("mon",
// "Monday", "mondays"). firstDay keeps its value when the option is absent; an optional one stays
// empty, for the locale's own first day.
CLI::Option* addQuandaFirstDayOption(CLI::App& command, QuandaDayOfGregorianWeek& firstDay);
CLI::Option* addQuandaFirstDayOption(CLI::App& command,
                                     std::optional<QuandaDayOfGregorianWeek>& firstDay);
