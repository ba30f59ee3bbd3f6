#include "cli/CommandTable.h"
#include "cli/pages/Pages.h"
#include "documents/Words.h"

#include <string_view>

namespace lumo::cli {

using namespace documents;

namespace {

/// The text between single quotes, as every shell reads it.
std::string quoted(std::string_view text) {
  std::string quotes("'");
  for (const char c : text) quotes += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quotes + "'";
}

/// The first sentence, which is what fits beside an option.
std::string_view brief(std::string_view meaning) {
  const std::string_view beginning = meaning.substr(0, meaning.find_first_of(";:(.,"));
  return beginning.substr(0, beginning.find_last_not_of(' ') + 1);
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names;
  for (const Command& command : commands()) names.emplace_back(command.name);
  return names;
}

std::vector<std::string> spellings(const Option& option) {
  std::vector<std::string> spellings{std::string(option.name)};
  if (!option.letter.empty()) spellings.emplace_back(option.letter);
  return spellings;
}

/// How an operand of the command is completed: as the last that has something to offer.
const Operand* completedOperand(const Command& command) {
  for (const Operand& operand : command.operands) {
    if (operand.completion != Completion::None) return &operand;
  }
  return nullptr;
}

// --- bash ---

std::string bashReply(Completion completion, Words words) {
  const std::string reply = R"(mapfile -t COMPREPLY < <(compgen )";
  const std::string ending = R"( -- "$current"))";
  switch (completion) {
    case Completion::File:
      return "compopt -o filenames 2>/dev/null; " + reply + "-f" + ending;
    case Completion::Folder:
      return "compopt -o filenames 2>/dev/null; " + reply + "-d" + ending;
    case Completion::Word:
      return reply + "-W " + quoted(joined(words())) + ending;
    case Completion::None:
      break;
  }
  return ":";
}

std::string bashOfCommand(const Command& command) {
  const std::string name(command.name);
  std::string cases, options = "--help";
  for (const Option& option : command.options) {
    options += " " + std::string(option.name);
    if (option.value.empty()) continue;
    cases += "    " + name + ":" + joined(spellings(option), " | " + name + ":") + ") " +
             bashReply(option.completion, option.words) + " ;;\n";
  }
  const Operand* operand = completedOperand(command);
  return cases + "    " + name + ":*)\n      if [[ $current == -* ]]; then\n        " +
         "mapfile -t COMPREPLY < <(compgen -W '" + options + "' -- \"$current\")\n      else\n        " +
         bashReply(operand ? operand->completion : Completion::None, operand ? operand->words : nullptr) +
         "\n      fi ;;\n";
}

// --- zsh ---

std::string zshAction(Completion completion, Words words) {
  switch (completion) {
    case Completion::File:
      return "_files";
    case Completion::Folder:
      return "_files -/";
    case Completion::Word:
      return "(" + joined(words()) + ")";
    case Completion::None:
      break;
  }
  return "";
}

std::string zshOfCommand(const Command& command) {
  std::string text = "    " + std::string(command.name) + ")\n      _arguments '--help[show the help]'";
  for (const Option& option : command.options) {
    for (const std::string& spelling : spellings(option)) {
      std::string argument = spelling + "[" + std::string(brief(option.meaning)) + "]";
      if (!option.value.empty()) {
        argument.append(":").append(option.value).append(":");
        argument += zshAction(option.completion, option.words);
      }
      text += " \\\n        " + quoted(argument);
    }
  }
  if (const Operand* operand = completedOperand(command)) {
    const std::string action = zshAction(operand->completion, operand->words);
    text += " \\\n        " + quoted("*:" + std::string(operand->name) + ":" + action);
  }
  return text + " ;;\n";
}

// --- fish ---

std::string fishOfOption(const Command& command, const Option& option) {
  std::string line = "complete -c lumoapi -n '__fish_seen_subcommand_from " + std::string(command.name) +
                     "' -l " + std::string(option.name.substr(2));
  if (!option.letter.empty()) line += " -s " + std::string(option.letter.substr(1));
  if (!option.value.empty()) line += option.completion == Completion::File ? " -r -F" : " -x";
  if (option.completion == Completion::Folder) line += " -a '(__fish_complete_directories)'";
  if (option.words) line += " -a " + quoted(joined(option.words()));
  return line + " -d " + quoted(brief(option.meaning)) + "\n";
}

std::string fishOfCommand(const Command& command) {
  const std::string name(command.name);
  std::string text =
      "\ncomplete -c lumoapi -n __fish_use_subcommand -a " + name + " -d " + quoted(command.summary) + "\n";
  for (const Option& option : command.options) text += fishOfOption(command, option);
  const Operand* operand = completedOperand(command);
  if (!operand) return text;
  text += "complete -c lumoapi -n '__fish_seen_subcommand_from " + name + "'";
  text += operand->words ? " -a " + quoted(joined(operand->words())) : " -F";
  return text + "\n";
}

}  // namespace

std::string bashCompletion() {
  std::string text = R"(# bash completion for lumoapi

_lumoapi() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  # bash takes the "=" of --option=value for a word of its own.
  if [[ $current == = ]]; then
    current=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W ')";
  text += joined(commandNames()) + R"( help --help --version' -- "$current")
    return
  fi
  case ${COMP_WORDS[1]}:$previous in
)";
  for (const Command& command : commands()) text += bashOfCommand(command);
  text += "    help:*) mapfile -t COMPREPLY < <(compgen -W '" + joined(commandNames()) +
          "' -- \"$current\") ;;\n  esac\n}\n\ncomplete -F _lumoapi lumoapi\n";
  return text;
}

std::string zshCompletion() {
  std::string text = "#compdef lumoapi\n\n_lumoapi() {\n  local -a commands=(\n";
  for (const Command& command : commands()) {
    text += "    " + quoted(std::string(command.name) + ":" + std::string(command.summary)) + "\n";
  }
  text += R"(  )
  if ((CURRENT == 2)); then
    _describe command commands
    _arguments '--help[show the help]' '--version[show the version]'
    return
  fi
  local command=$words[2]
  shift words
  ((CURRENT--))
  case $command in
)";
  for (const Command& command : commands()) text += zshOfCommand(command);
  return text + "    help) _describe command commands ;;\n  esac\n}\n\n_lumoapi \"$@\"\n";
}

std::string fishCompletion() {
  std::string text = R"(# fish completion for lumoapi

complete -c lumoapi -f
complete -c lumoapi -s h -l help -d 'show the help'
complete -c lumoapi -n __fish_use_subcommand -l version -d 'show the version'
complete -c lumoapi -n __fish_use_subcommand -a help -d 'show the help of a command'
complete -c lumoapi -n '__fish_seen_subcommand_from help' -a ')";
  text += joined(commandNames()) + "'\n";
  for (const Command& command : commands()) text += fishOfCommand(command);
  return text;
}

}  // namespace lumo::cli
