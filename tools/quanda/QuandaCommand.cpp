#include "tools/quanda/QuandaCommand.h"

#include <algorithm>

#include "Keel/KeelPrecondition.h"

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

}  // namespace

bool registerQuandaCommand(QuandaCommand command) {
  KEEL_PRECONDITION(!command.name.empty() && command.declare != nullptr,
                    "a quanda command needs a name and a declare function");
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
