// QuandaSteps: the options that change a command's value one after another (--add-days 1
// --round hour ...), applied in the order they were typed; an option may be given again.
//
//   struct State { std::string text; QuandaSteps steps; };
//   state->steps.add(command, "--add-days", "Adds days", quandaNumberCheck<std::int32_t>());
//   ...
//   return runQuandaSteps(start, describe(start), state->steps.given(), makeStep, describe, out);
//
// CLI11 checks each value's form while it reads the command line (misuse, exit status 2). What
// a step means can depend on the value it applies to (whole or fractional seconds), so each is
// made only once the value is known, all of them before the first is applied, so that a step
// that cannot be made changes nothing.
#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "Keel/KeelResult.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"

// One step as typed: the option with its dashes, and its value.
struct QuandaStep {
  std::string option;
  std::string value;

  std::string label() const { return option + ' ' + value; }
};

class QuandaSteps {
 public:
  // Declares a step option taking one value of the form check accepts.
  CLI::Option* add(CLI::App& command, const std::string& option, const std::string& description,
                   const CLI::Validator& check, const std::string& typeName = "N") {
    return command
        .add_option_function<std::string>(
            option,
            [this, option](const std::string& value) {
              given_.push_back({option, value});
            },
            description)
        ->trigger_on_parse()
        ->check(check)
        ->type_name(typeName);
  }

  // The steps given, in command-line order.
  const std::vector<QuandaStep>& given() const { return given_; }

 private:
  std::vector<QuandaStep> given_;
};

// Makes every step with makeStep (QuandaStep -> a function from Value to KeelResult<Value>), then
// prints the start's rows and applies the steps to value in order, printing each step and the
// rows describe gives for its result, indented. Ends with the first refusal.
template <class Value, class MakeStep, class Describe>
QuandaOutcome runQuandaSteps(Value value, const KeelArguments& startRows,
                             const std::vector<QuandaStep>& given, MakeStep makeStep,
                             Describe describe, std::ostream& out) {
  std::vector<std::function<KeelResult<Value>(const Value&)>> steps;
  steps.reserve(given.size());
  for (const QuandaStep& step : given) steps.emplace_back(makeStep(step));
  printQuandaTable(startRows, out);
  for (std::size_t index = 0; index < steps.size(); ++index) {
    KeelResult<Value> next = steps[index](value);
    if (!next) return next.error();
    value = std::move(next).value();
    out << '\n' << given[index].label() << ":\n";
    printQuandaTable(describe(value), out, "  ");
  }
  return quandaDone;
}
