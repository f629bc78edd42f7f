// QuandaCommand: one command of the quanda program, and the registry the program finds it in.
//
// The program is a thin shell over the library, there to try it from a terminal. Each command
// lives in its own file, tools/quanda/<Name>Command.cpp, and adds itself to the registry from a
// static initialiser, so a new command needs no edit anywhere else:
//
//   namespace {
//   int runDate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
//     ...
//   }
//   const bool registered = registerQuandaCommand({
//       .name = "date",
//       .usage = "date <yyyy-mm-dd> [--add-days N]",
//       .summary = "Checks a date and shows what the library knows about it.",
//       .run = runDate,
//       .demonstrations = {{"2024-02-29"}, {"2024-02-29", "--add-days", "1"}, {"2023-02-29"}},
//   });
//   }  // namespace
//
// A command receives the arguments that follow its name, writes its results to out and its
// complaints to err, and returns an exit status: 0 for success, quandaExitFailure when the
// library refused the input (after printQuandaError), quandaExitUsage for arguments it cannot
// read. The strings a command registers are literals, alive for the whole program.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelError.h"

inline constexpr int quandaExitFailure = 1;
inline constexpr int quandaExitUsage = 2;

struct QuandaCommand {
  std::string_view name;
  // The command line after "quanda", with placeholders: "date <yyyy-mm-dd> [--add-days N]".
  std::string_view usage;
  // One sentence for the help listing.
  std::string_view summary;
  int (*run)(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
  // Argument lists that show the command at work, each as given to run (after the command's
  // name). A list may also start with the command's name, as typed in a shell. A demonstration
  // may show the library refusing an input (quandaExitFailure, printed with the exit status),
  // but never a misuse of the command itself: the tests run every demonstration and hold them
  // to that.
  std::vector<std::vector<std::string>> demonstrations;
};

// Adds a command to the program. Always returns true, so that it can initialise a static
// constant. Two commands of one name are a programming error.
bool registerQuandaCommand(QuandaCommand command);

// Every registered command, sorted by name.
const std::vector<QuandaCommand>& quandaCommands();

// The command of this name, or null.
const QuandaCommand* findQuandaCommand(std::string_view name);

// Prints an error chain for a person: a headline with the first fault's message, then each link
// of the chain, outermost first and indented one step deeper than the link that wrapped it, with
// its operation, source path and line, its message, its arguments (key: value, aligned) and the
// platform's own error text where there is one.
void printQuandaError(const KeelError& error, std::ostream& err);
