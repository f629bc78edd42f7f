#include "tools/quanda/QuandaCommandSupport.h"

#include <algorithm>
#include <charconv>
#include <ostream>

#include "tools/quanda/QuandaCommand.h"

using quanda_detail::supportPath;

const std::string* QuandaArguments::lastValue(std::string_view name) const {
  const auto found = std::find_if(options.rbegin(), options.rend(),
                                  [&](const QuandaOption& option) { return option.name == name; });
  return found == options.rend() ? nullptr : &found->value;
}

bool QuandaArguments::has(std::string_view name) const { return lastValue(name) != nullptr; }

KeelResult<QuandaArguments> parseQuandaArguments(const std::vector<std::string>& args,
                                                 std::span<const QuandaOptionSpec> accepted) {
  static constexpr std::string_view signature = "parseQuandaArguments";
  QuandaArguments parsed;
  bool optionsEnded = false;
  for (std::size_t index = 0; index < args.size(); ++index) {
    const std::string_view argument = args[index];
    if (optionsEnded || !argument.starts_with("--")) {
      parsed.positionals.emplace_back(argument);
      continue;
    }
    if (argument == "--") {
      optionsEnded = true;
      continue;
    }
    const std::string_view body = argument.substr(2);
    const std::size_t equals = body.find('=');
    const std::string_view name = body.substr(0, equals);
    const auto known =
        std::find_if(accepted.begin(), accepted.end(),
                     [&](const QuandaOptionSpec& each) { return each.name == name; });
    if (known == accepted.end()) {
      return KeelError::fault("Unknown option", {{"option", argument}}, supportPath, signature);
    }
    if (!known->takesValue) {
      if (equals != std::string_view::npos) {
        return KeelError::fault("Option takes no value", {{"option", argument}}, supportPath,
                                signature);
      }
      parsed.options.push_back({std::string(name), std::string()});
    } else if (equals != std::string_view::npos) {
      parsed.options.push_back({std::string(name), std::string(body.substr(equals + 1))});
    } else if (index + 1 < args.size()) {
      parsed.options.push_back({std::string(name), args[++index]});
    } else {
      return KeelError::fault("Missing value for option", {{"option", argument}}, supportPath,
                              signature);
    }
  }
  return parsed;
}

int printQuandaUsageError(const KeelError& problem, std::string_view usage, std::ostream& err) {
  printQuandaError(problem, err);
  err << "usage: quanda " << usage << '\n';
  return quandaExitUsage;
}

namespace quanda_detail {

KeelResult<DecimalInteger> parseDecimalInteger(std::string_view text, std::string_view name) {
  static constexpr std::string_view signature = "parseQuandaInteger";
  DecimalInteger read;
  std::string_view digits = text;
  if (!digits.empty() && (digits.front() == '+' || digits.front() == '-')) {
    read.negative = digits.front() == '-';
    digits.remove_prefix(1);
  }
  const bool allDigits = !digits.empty() && std::all_of(digits.begin(), digits.end(), [](char c) {
    return c >= '0' && c <= '9';
  });
  if (!allDigits) {
    return KeelError::fault("Not an integer", {{"argument", name}, {"text", text}}, supportPath,
                            signature);
  }
  const std::from_chars_result result =
      std::from_chars(digits.data(), digits.data() + digits.size(), read.magnitude);
  read.beyond64Bits = result.ec == std::errc::result_out_of_range;
  return read;
}

KeelError integerOutOfRange(std::string_view text, std::string_view name, std::string minimum,
                            std::string maximum) {
  return KeelError("Integer out of range",
                   {{"argument", name},
                    {"text", text},
                    {"minimum", std::move(minimum)},
                    {"maximum", std::move(maximum)}},
                   supportPath, "parseQuandaInteger", __LINE__);
}

}  // namespace quanda_detail

void printQuandaTable(const KeelArguments& rows, std::ostream& out, std::string_view indent) {
  std::size_t labelWidth = 0;
  for (const KeelArgument& row : rows) labelWidth = std::max(labelWidth, row.key.size());
  const std::string continuation(indent.size() + labelWidth + 2, ' ');
  for (const KeelArgument& row : rows) {
    out << indent << row.key << ':' << std::string(labelWidth - row.key.size() + 1, ' ');
    for (const char c : row.value) {
      out << c;
      if (c == '\n') out << continuation;
    }
    out << '\n';
  }
}
