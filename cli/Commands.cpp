#include "cli/Commands.h"

#include "LumoApi/Version.h"
#include "cli/CommandTable.h"
#include "cli/Console.h"
#include "cli/Help.h"
#include "documents/NearestName.h"

#include <string_view>

namespace lumo::cli {

using namespace documents;

namespace {

const Command* commandNamed(std::string_view name) {
  for (const Command& command : commands()) {
    if (command.name == name) return &command;
  }
  return nullptr;
}

int noSuchCommand(const std::string& name) {
  std::vector<std::string_view> names{"help", "--help", "--version"};
  for (const Command& command : commands()) names.push_back(command.name);
  const std::string kind = name.starts_with('-') ? "option " : "command ";
  return wrongUsage("no " + kind + name + suggestion(name, names), helpOf(commands()));
}

/// "lumoapi help encode", as well as "lumoapi encode --help".
int help(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return printed(helpOf(commands()));
  const Command* command = commandNamed(arguments.front());
  return command ? printed(helpOf(*command)) : noSuchCommand(arguments.front());
}

}  // namespace

int runTool(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return wrongUsage("", helpOf(commands()));
  const std::string& name = arguments.front();
  const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
  if (name == "--help" || name == "-h" || name == "help") return help(rest);
  if (name == "--version") return printed("lumoapi " LUMOAPI_VERSION "\n");
  const Command* command = commandNamed(name);
  if (!command) return noSuchCommand(name);
  Choices choices;
  if (const std::optional<int> status = parse(*command, rest, choices)) return *status;
  return command->run(choices);
}

}  // namespace lumo::cli
