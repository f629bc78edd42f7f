#include "tools/quanda/QuandaProgram.h"

#include <algorithm>
#include <ostream>
#include <string_view>

#include "tools/quanda/QuandaCommand.h"

namespace {

// Quotes an argument the way a shell would need it, so that a shown command line can be pasted.
std::string shellQuoted(std::string_view argument) {
  const bool plain = !argument.empty() && std::all_of(argument.begin(), argument.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-_+=.,:/@%").find(c) != std::string_view::npos;
  });
  if (plain) return std::string(argument);
  std::string quoted = "'";
  for (const char c : argument) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

// A demonstration as given to the command: without the command's name, which it may start with.
std::vector<std::string> demonstrationArguments(const QuandaCommand& command,
                                                const std::vector<std::string>& demonstration) {
  const bool named = !demonstration.empty() && demonstration.front() == command.name;
  return {demonstration.begin() + (named ? 1 : 0), demonstration.end()};
}

std::string commandLine(const QuandaCommand& command, const std::vector<std::string>& args) {
  std::string line = "quanda ";
  line += command.name;
  for (const std::string& argument : args) {
    line += ' ';
    line += shellQuoted(argument);
  }
  return line;
}

void printListing(std::ostream& stream) {
  stream << "usage: quanda <command> [arguments...]\n"
            "\n"
            "With no arguments, quanda shows each command at work.\n"
            "\n"
            "Commands:\n";
  for (const QuandaCommand& command : quandaCommands()) {
    stream << "  " << command.usage << "\n      " << command.summary << '\n';
  }
  stream << "  help [command]\n      Lists the commands, or shows one with examples.\n";
}

int printCommandHelp(const QuandaCommand& command, std::ostream& out) {
  out << "usage: quanda " << command.usage << '\n' << command.summary << '\n';
  if (!command.demonstrations.empty()) {
    out << "\nExamples:\n";
    for (const auto& demonstration : command.demonstrations) {
      out << "  " << commandLine(command, demonstrationArguments(command, demonstration)) << '\n';
    }
  }
  return 0;
}

int runDemonstrations(std::ostream& out) {
  if (quandaCommands().empty()) {
    out << "This quanda has no commands yet.\n";
    return 0;
  }
  out << "quanda tries the Quanda date and time library from the command line.\n"
         "Each command below is shown at work; `quanda help` lists them all.\n";
  for (const QuandaCommand& command : quandaCommands()) {
    for (const auto& demonstration : command.demonstrations) {
      const std::vector<std::string> args = demonstrationArguments(command, demonstration);
      out << "\n$ " << commandLine(command, args) << '\n';
      // Complaints go to the same stream, so that the transcript reads in order.
      const int status = command.run(args, out, out);
      if (status != 0) out << "[exit status " << status << "]\n";
    }
  }
  return 0;
}

bool isHelp(std::string_view argument) {
  return argument == "help" || argument == "--help" || argument == "-h";
}

}  // namespace

int runQuandaProgram(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  if (args.empty()) return runDemonstrations(out);
  if (isHelp(args.front())) {
    if (args.size() == 1) {
      printListing(out);
      return 0;
    }
    const QuandaCommand* command = findQuandaCommand(args[1]);
    if (command != nullptr && args.size() == 2) return printCommandHelp(*command, out);
    err << "quanda: help takes one command name, not '" << args[1]
        << (args.size() > 2 ? " ..." : "") << "'\n\n";
    printListing(err);
    return quandaExitUsage;
  }
  const QuandaCommand* command = findQuandaCommand(args.front());
  if (command == nullptr) {
    err << "quanda: unknown command '" << args.front() << "'\n\n";
    printListing(err);
    return quandaExitUsage;
  }
  return command->run({args.begin() + 1, args.end()}, out, err);
}
