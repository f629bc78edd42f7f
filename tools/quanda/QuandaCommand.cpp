#include "tools/quanda/QuandaCommand.h"

#include <algorithm>
#include <ostream>

#include "Keel/KeelPrecondition.h"
#include "tools/quanda/QuandaCommandSupport.h"

namespace {

// Made on first use, so that registrations from static initialisers of other files never meet
// an unconstructed registry. Kept sorted by name as commands arrive.
std::vector<QuandaCommand>& registry() {
  static std::vector<QuandaCommand> commands;
  return commands;
}

auto lowerBound(std::string_view name) {
  return std::lower_bound(
      registry().begin(), registry().end(), name,
      [](const QuandaCommand& command, std::string_view key) { return command.name < key; });
}

void printLink(const KeelError& link, std::ostream& err, const std::string& indent) {
  err << indent << "in " << link.functionName() << " at " << link.fileName() << ':'
      << link.lineNumber() << '\n';
  // Details sit deeper than the next link of the chain, so each link reads as one block.
  const std::string detailIndent = indent + "    ";
  if (!link.message().empty()) err << detailIndent << '"' << link.message() << "\"\n";
  KeelArguments rows = link.args();
  if (link.frameworkError()) rows.emplace_back("platform error", *link.frameworkError());
  printQuandaTable(rows, err, detailIndent);
}

}  // namespace

bool registerQuandaCommand(QuandaCommand command) {
  KEEL_PRECONDITION(!command.name.empty() && command.run != nullptr,
                    "a quanda command needs a name and a run function");
  const auto position = lowerBound(command.name);
  KEEL_PRECONDITION(position == registry().end() || position->name != command.name,
                    "two quanda commands of one name");
  registry().insert(position, std::move(command));
  return true;
}

const std::vector<QuandaCommand>& quandaCommands() { return registry(); }

const QuandaCommand* findQuandaCommand(std::string_view name) {
  const auto position = lowerBound(name);
  return position != registry().end() && position->name == name ? &*position : nullptr;
}

void printQuandaError(const KeelError& error, std::ostream& err) {
  const std::string& headline = error.innermost().message();
  err << "error: " << (headline.empty() ? "the operation failed" : headline) << '\n';
  std::string indent = "  ";
  for (const KeelError* link = &error; link != nullptr; link = link->error()) {
    printLink(*link, err, indent);
    indent += "  ";
  }
}
