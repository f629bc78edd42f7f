#include "tools/quanda/QuandaProgram.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>
#include <string_view>

#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"

#ifndef QUANDA_PROGRAM_VERSION
#define QUANDA_PROGRAM_VERSION "unknown"
#endif

namespace {

constexpr std::string_view programName = "quanda";
constexpr std::size_t helpColumn = 26;

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

std::string commandLine(const QuandaCommand& command, const QuandaDemonstration& demonstration) {
  std::string line = std::string(programName) + ' ' + std::string(command.name);
  for (const std::string& argument : demonstration.args) line += ' ' + shellQuoted(argument);
  return line;
}

// The number of single-character edits (insertions, deletions, substitutions, swaps of two
// neighbours) that turn one name into the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
  std::vector<std::vector<std::size_t>> d(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) d[i][0] = i;
  for (std::size_t j = 0; j <= to.size(); ++j) d[0][j] = j;
  for (std::size_t i = 1; i <= from.size(); ++i) {
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t cost = from[i - 1] == to[j - 1] ? 0 : 1;
      d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
      if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
        d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
      }
    }
  }
  return d[from.size()][to.size()];
}

// " (did you mean X?)" for the known name nearest to the typed one, when one is near enough to be
// a slip of the fingers; empty otherwise.
std::string nearestName(std::string_view typed, const std::vector<std::string>& known) {
  const std::string* nearest = nullptr;
  std::size_t best = std::max<std::size_t>(2, typed.size() / 3) + 1;
  for (const std::string& name : known) {
    const std::size_t distance = editDistance(typed, name);
    if (distance < best) {
      best = distance;
      nearest = &name;
    }
  }
  return nearest == nullptr ? std::string() : " (did you mean " + *nearest + "?)";
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names{"help"};
  for (const QuandaCommand& command : quandaCommands()) names.emplace_back(command.name);
  return names;
}

std::string unknownCommand(std::string_view typed) {
  return "unknown command '" + std::string(typed) + "'" + nearestName(typed, commandNames());
}

// The detail and the examples, after a command's options.
std::string commandFooter(const QuandaCommand& command) {
  std::string footer(command.detail);
  if (!command.demonstrations.empty()) {
    footer += footer.empty() ? "Examples:\n" : "\nExamples:\n";
    for (const QuandaDemonstration& demonstration : command.demonstrations) {
      footer += "  " + commandLine(command, demonstration);
      footer += demonstration.refused ? "   (refused on purpose)\n" : "\n";
    }
  }
  if (!footer.empty() && footer.back() == '\n') footer.pop_back();
  return footer;
}

// The program's command line for one run: CLI11's app with a subcommand per command, and the run
// each command's declaration returned.
class CommandLine {
 public:
  CommandLine() : app_("quanda tries the Quanda date and time library from the command line.") {
    app_.name(std::string(programName));
    app_.require_subcommand(0, 1);
    // Options a command does not know go to the program, so -v and --version work anywhere.
    app_.fallthrough();
    app_.get_formatter()->column_width(helpColumn);
    app_.set_version_flag("--version", std::string(programName) + ' ' + QUANDA_PROGRAM_VERSION,
                          "Shows the program's version");
    app_.set_help_flag("-h,--help", "Shows this help");
    app_.add_flag("-v,--verbose", verbose_, "Shows a refusal's whole error chain, files and lines");
    app_.footer(
        "With no arguments, quanda shows every command at work.\n"
        "`quanda help <command>` or `quanda <command> --help` shows one command and its examples.");
    for (const QuandaCommand& command : quandaCommands()) {
      CLI::App* sub = app_.add_subcommand(std::string(command.name), std::string(command.summary));
      sub->footer(commandFooter(command));
      runs_.emplace_back(sub, command.declare(*sub));
    }
    help_ = app_.add_subcommand("help", "Lists the commands, or shows one command's help");
    help_->footer("");
    help_->add_option("command", helpTopic_, "The command to show")->type_name("");
  }

  // Reads the arguments, then runs what they ask for.
  int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    try {
      app_.parse(std::vector<std::string>(args.rbegin(), args.rend()));
      return runParsed(out, err);
    } catch (const CLI::CallForHelp&) {
      out << app_.help();
      return 0;
    } catch (const CLI::CallForVersion& version) {
      out << version.what() << '\n';
      return 0;
    } catch (const CLI::ParseError& misuse) {
      err << "error: " << describeMisuse(misuse) << '\n';
      return quandaExitUsage;
    }
  }

 private:
  CLI::App* selected() const {
    const std::vector<CLI::App*> parsed = app_.get_subcommands();
    return parsed.empty() ? nullptr : parsed.front();
  }

  int runParsed(std::ostream& out, std::ostream& err) {
    CLI::App* const command = selected();
    if (command == nullptr) throw CLI::RequiredError("A command");
    if (command == help_) return showHelp(out);
    const auto run = std::find_if(runs_.begin(), runs_.end(),
                                  [&](const auto& each) { return each.first == command; });
    const QuandaOutcome outcome = run->second(out);
    if (!outcome) return 0;
    printQuandaError(*outcome, err, verbose_);
    return quandaExitFailure;
  }

  int showHelp(std::ostream& out) const {
    if (helpTopic_.empty()) {
      out << app_.get_formatter()->make_help(&app_, std::string(programName),
                                             CLI::AppFormatMode::Normal);
      return 0;
    }
    const std::vector<const CLI::App*> named =
        app_.get_subcommands([&](const CLI::App* each) { return each->get_name() == helpTopic_; });
    if (named.empty()) throw CLI::ValidationError(unknownCommand(helpTopic_));
    out << named.front()->help(std::string(programName));
    return 0;
  }

  // One line for a misuse: what CLI11 or the command says, an unknown command or option with the
  // nearest known name, and where to read the usage.
  std::string describeMisuse(const CLI::ParseError& misuse) const {
    const CLI::App* const command = selected();
    const std::vector<std::string> extras = app_.remaining(true);
    std::string problem = misuse.what();
    if (command == nullptr && !extras.empty() && !extras.front().starts_with('-')) {
      problem = unknownCommand(extras.front());
    } else if (const auto option =
                   std::find_if(extras.begin(), extras.end(),
                                [](const std::string& each) { return each.starts_with("--"); });
               option != extras.end()) {
      problem = "unknown option " + *option + nearestName(*option, optionNames(command));
    }
    const std::string help = command == nullptr || command == help_
                                 ? std::string(programName) + " help"
                                 : std::string(programName) + ' ' + command->get_name() + " --help";
    return problem + "; see " + help;
  }

  std::vector<std::string> optionNames(const CLI::App* command) const {
    std::vector<std::string> names;
    for (const CLI::App* app : {static_cast<const CLI::App*>(&app_), command}) {
      if (app == nullptr) continue;
      for (const CLI::Option* option : app->get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
      }
    }
    return names;
  }

  CLI::App app_;
  bool verbose_ = false;
  std::vector<std::pair<const CLI::App*, QuandaRun>> runs_;
  CLI::App* help_ = nullptr;
  std::string helpTopic_;
};

int runDemonstrations(std::ostream& out) {
  out << "quanda tries the Quanda date and time library from the command line.\n"
         "Each command below is shown at work; `quanda help` lists them all.\n";
  for (const QuandaCommand& command : quandaCommands()) {
    for (const QuandaDemonstration& demonstration : command.demonstrations) {
      out << "\n$ " << commandLine(command, demonstration) << '\n';
      std::vector<std::string> args{std::string(command.name)};
      args.insert(args.end(), demonstration.args.begin(), demonstration.args.end());
      // Complaints go to the same stream, so that the transcript reads in order.
      const int status = CommandLine().run(args, out, out);
      if (status != 0) out << "[exit status " << status << "]\n";
    }
  }
  return 0;
}

}  // namespace

int runQuandaProgram(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  if (args.empty()) return runDemonstrations(out);
  return CommandLine().run(args, out, err);
}
