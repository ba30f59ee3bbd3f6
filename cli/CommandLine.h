#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumo::cli {

/// What the command line of any command chose.
struct Choices {
  /// What is no option: files, URLs, names.
  std::vector<std::string> operands;
  /// The file that keeps the large-data record; null: memory.
  std::optional<std::string> store;
  /// The folder that bytes are saved in.
  std::optional<std::string> folder;
  /// "auto": where the output is a terminal; "always" or "never".
  std::optional<std::string> colour;
  /// Where a result goes instead of to standard output ("-").
  std::optional<std::string> output, png, svg;
  /// Only the URL's text instead of the whole result.
  bool urlAlone = false;
  /// One request a line.
  bool lines = false;
  /// A result for programs.
  bool json = false;
  /// Nothing is cut.
  bool full = false;

  /// The only operand; standard input where none is given.
  std::string operand() const { return operands.empty() ? "-" : operands.front(); }
};

/// How a shell completes a word.
enum class Completion { None, File, Folder, Word };

/// The words that are accepted, where not every text is.
using Words = std::vector<std::string> (*)();

struct Option {
  std::string_view name;   ///< "--store"
  std::string_view value;  ///< "FILE"; empty for a switch
  std::string_view meaning;
  std::variant<bool Choices::*, std::optional<std::string> Choices::*> choice;
  Completion completion = Completion::None;
  Words words = nullptr;
  std::string_view letter = {};    ///< "-o"
  std::string_view excluded = {};  ///< the name of an option that does not go with it
};

struct Operand {
  std::string_view name;  ///< "FILE"
  std::string_view meaning;
  Completion completion = Completion::None;
  Words words = nullptr;
};

/// A command to copy. `meaning` stands beside it, or `output` below it.
struct Example {
  std::string_view line;
  std::string_view meaning;
  std::string_view output = {};
};

/// A command of the tool: how it runs, and all that its help, the manual and the completions say of it.
struct Command {
  std::string_view name;
  std::string_view summary;  ///< "turn a message into its launch URL"
  std::string_view purpose;
  std::span<const Example> examples;
  std::string_view operandsInUse;  ///< "[URL | FILE]"
  std::span<const Operand> operands;
  std::size_t fewestOperands;
  std::size_t mostOperands;
  std::span<const Option> options;
  std::string_view notes;  ///< paragraphs
  std::string_view exitStatus;
  int (*run)(const Choices& choices);
};

/// Every option has a help of its own.
inline constexpr std::string_view kHelpOption = "-h, --help";

/// Reads the arguments of a command. Gives its exit status where it is not to run: help was asked for, or the
/// arguments are wrong.
std::optional<int> parse(const Command& command, const std::vector<std::string>& arguments, Choices& choices);

/// Says what is wrong with the command line, shows the help on standard error and gives the exit status.
int wrongUsage(std::string_view complaint, std::string_view help);
/// Writes a text on standard output and gives the exit status.
int printed(std::string_view text);

}  // namespace lumo::cli
