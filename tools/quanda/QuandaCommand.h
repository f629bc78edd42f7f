// QuandaCommand: one command of the quanda program, and the registry the program finds it in.
//
// The program is a thin shell over the library, there to try it from a terminal. Its command line
// is read by CLI11: each command is a CLI11 subcommand that declares its own arguments and
// options, so that every command gets -h/--help, typed options and the same errors for free. Each
// command lives in its own file, tools/quanda/<Name>Command.cpp, and adds itself to the registry
// from a static initialiser, so a new command needs no edit anywhere else:
//
//   namespace {
//   QuandaRun declareDate(CLI::App& command) {
//     auto text = std::make_shared<std::string>();
//     command.add_option("date", *text, "yyyy-mm-dd, yyyymmdd or a packed number")->required();
//     return [text](std::ostream& out) -> QuandaOutcome {
//       const auto date = QuandaAbstractDate::makeFromIso8601String(*text);
//       if (!date) return KeelError::wrap(date.error(), {{"date", *text}}, path, "date");
//       out << date.value() << '\n';
//       return quandaDone;
//     };
//   }
//   const bool registered = registerQuandaCommand({
//       .name = "date",
//       .summary = "Reads a date and shows what the library knows of it.",
//       .detail = "",
//       .declare = declareDate,
//       .demonstrations = {{.args = {"2024-02-29"}}, {.args = {"2023-02-29"}, .refused = true}},
//   });
//   }  // namespace
//
// The program builds its command line afresh for every run, so declare() is called once per run
// and what it binds options to lives in the returned run (a shared_ptr captured by the lambda).
//
// Exit statuses are the same in every command: 0 for success; 1 when the library refuses a value
// that has the right form (the run returns the library's error); 2 when the program is misused: an
// unknown command or option, a missing or extra argument, text that is not of the expected form.
// CLI11 finds most misuse while it reads the command line; what a command can only judge later
// (a whole number where the value read turned out to need one) it reports by throwing a CLI11
// ParseError, so that both end the same way.
#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelError.h"

inline constexpr int quandaExitFailure = 1;
inline constexpr int quandaExitUsage = 2;

// What a command's run ends with: done, or the library's refusal (exit status 1).
using QuandaOutcome = std::optional<KeelError>;
inline constexpr std::nullopt_t quandaDone = std::nullopt;

// A command's run once its command line is read: writes its results to out.
using QuandaRun = std::function<QuandaOutcome(std::ostream& out)>;

// A command line that shows the command at work, as given after the command's name.
struct QuandaDemonstration {
  std::vector<std::string> args;
  // Shows the library refusing a value on purpose (exit status 1). A demonstration never shows a
  // misuse of the program: the tests run them all and hold each to its exit status.
  bool refused = false;
};

struct QuandaCommand {
  std::string_view name;
  // One line for the program's listing, and the first line of the command's own help.
  std::string_view summary;
  // What the command's help adds after its options: lines of at most 100 columns, or empty.
  std::string_view detail;
  // Declares the command's arguments on its CLI11 subcommand and returns the run that uses them.
  QuandaRun (*declare)(CLI::App& command);
  std::vector<QuandaDemonstration> demonstrations;
};

// Adds a command to the program. Always returns true, so that it can initialise a static
// constant. Two commands of one name are a programming error. The strings a command registers
// are literals, alive for the whole program.
bool registerQuandaCommand(QuandaCommand command);

// Every registered command, sorted by name.
const std::vector<QuandaCommand>& quandaCommands();

// The command of this name, or null.
const QuandaCommand* findQuandaCommand(std::string_view name);
