#include "cli/CommandLine.h"

#include "cli/Console.h"
#include "cli/Help.h"
#include "documents/NearestName.h"
#include "documents/Words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

namespace lumo::cli {

using namespace documents;

namespace {

void print(std::string_view text, std::FILE* stream) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
}

/// What is wrong with a word that must be one of a few; empty where nothing is.
std::string faultOf(const std::string& word, Words accepted) {
  const std::vector<std::string> words = accepted();
  if (std::find(words.begin(), words.end(), word) != words.end()) return "";
  const std::vector<std::string_view> names(words.begin(), words.end());
  const std::string nearest = suggestion(word, names);
  return word + (nearest.empty() ? " is none of " + joined(words, ", ") : " is not known" + nearest);
}

void add(CLI::App& app, const Option& option, Choices& choices) {
  std::string names(option.name);
  if (!option.letter.empty()) names.append(",").append(option.letter);
  if (const auto* isChosen = std::get_if<bool Choices::*>(&option.choice)) {
    app.add_flag(names, choices.**isChosen);
    return;
  }
  CLI::Option* added = app.add_option(names, choices.*std::get<1>(option.choice));
  added->type_name(std::string(option.value));
  if (option.words) added->check([&option](const std::string& word) { return faultOf(word, option.words); });
}

std::string unknownOption(const Command& command, const std::string& given) {
  std::vector<std::string_view> names{"--help"};
  for (const Option& option : command.options) names.push_back(option.name);
  const std::string name = given.substr(0, given.find('='));
  return "no option " + name + suggestion(name, names);
}

/// What is wrong with the operands; empty where nothing is.
std::string faultOfOperands(const Command& command, const Choices& choices) {
  const std::size_t count = choices.operands.size();
  if (count < command.fewestOperands) return std::string(command.operands[count].name) + " is missing";
  if (count > command.mostOperands) return choices.operands[command.mostOperands] + " is one too many";
  if (count == 0 || !command.operands[0].words) return "";
  const std::string fault = faultOf(choices.operand(), command.operands[0].words);
  return fault.empty() ? "" : std::string(command.operands[0].name) + ": " + fault;
}

}  // namespace

std::optional<int> parse(const Command& command, const std::vector<std::string>& arguments,
                         Choices& choices) {
  CLI::App app;
  app.allow_extras();  // told of below, in better words
  app.add_option("operands", choices.operands);
  for (const Option& option : command.options) add(app, option, choices);
  for (const Option& option : command.options) {
    if (option.excluded.empty()) continue;
    app.get_option(std::string(option.name))->excludes(app.get_option(std::string(option.excluded)));
  }
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // taken from the end
  } catch (const CLI::CallForHelp&) {
    return printed(helpOf(command));
  } catch (const CLI::ParseError& error) {
    return wrongUsage(error.what(), helpOf(command));
  }
  const std::vector<std::string> unknown = app.remaining();
  const std::string fault =
      unknown.empty() ? faultOfOperands(command, choices) : unknownOption(command, unknown.front());
  if (!fault.empty()) return wrongUsage(fault, helpOf(command));
  return std::nullopt;
}

int printed(std::string_view text) {
  print(text, stdout);
  return std::fflush(stdout) == 0 ? kDone : kFileError;
}

int wrongUsage(std::string_view complaint, std::string_view help) {
  if (!complaint.empty()) {
    complain(complaint);
    print("\n", stderr);
    help.remove_prefix(help.find("Usage: "));  // without what would push the complaint out of sight
  }
  print(help, stderr);
  return kWrongUsage;
}

}  // namespace lumo::cli
