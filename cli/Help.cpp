#include "cli/Help.h"

#include "documents/Words.h"
#include "inspect/Printable.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lumo::cli {

using namespace documents;

const std::string_view kToolPurpose =
    "Turns messages into URLs that launch the messenger, and URLs that opened the app into messages.";

const std::string_view kToolExitStatus =
    "0 a result came out, 1 refused, no message, or something found, 2 wrong usage, 3 a document in error, "
    "4 a file that cannot be read or written.";

std::span<const Example> toolExamples() {
  static constexpr Example kExamples[] = {
      {"lumoapi new text > share.json", "a document to begin with"},
      {"lumoapi encode share.json", "the launch URL, and all else that the conversion did"},
      {"lumoapi encode --url share.json", "the launch URL alone"},
      {"lumoapi encode --lines < shares.jsonl", "one request a line, one result a line"},
      {"lumoapi decode 'demo://…'", "the message of a URL that opened the app"},
      {"lumoapi inspect 'mlumoapi://…'", "what any launch URL says, and what looks wrong in it"},
      {"lumoapi lint *.json", "what would be refused or looks wrong, for a build"},
      {"lumoapi qr share.json", "the launch URL for a phone's camera"},
  };
  return kExamples;
}

namespace {

constexpr std::size_t kColumns = 100;

/// A name and what it means, in two columns.
using Row = std::pair<std::string, std::string>;

void addRow(std::string& text, const Row& row, std::size_t column) {
  text += "  " + row.first;
  std::size_t used = 2 + inspection::columnsOf(row.first);
  for (const std::string& line : inspection::wrapped(row.second, kColumns - column)) {
    if (used > column - 1) {
      text += '\n';
      used = 0;
    }
    text.append(column - used, ' ').append(line);
    used = kColumns;
  }
  text += '\n';
}

void addRows(std::string& text, const std::vector<Row>& rows, std::size_t gap) {
  std::size_t widest = 0;
  for (const Row& row : rows) widest = std::max(widest, inspection::columnsOf(row.first));
  for (const Row& row : rows) addRow(text, row, 2 + widest + gap);
}

void addParagraphs(std::string& text, std::string_view paragraphs) {
  for (const std::string_view paragraph : paragraphsOf(paragraphs)) {
    for (const std::string& line : inspection::wrapped(paragraph, kColumns)) text += line + "\n";
    text += '\n';
  }
}

void addOutput(std::string& text, std::string_view output) {
  while (!output.empty()) {
    const std::size_t end = std::min(output.find('\n'), output.size());
    text.append("  ").append(output.substr(0, end)).append("\n");
    output.remove_prefix(std::min(end + 1, output.size()));
  }
  text += '\n';
}

void addExamples(std::string& text, std::span<const Example> examples) {
  std::vector<Row> rows;
  for (const Example& example : examples) {
    if (example.output.empty()) {
      rows.emplace_back("$ " + std::string(example.line), example.meaning);
    } else {
      text.append("  $ ").append(example.line).append("\n");
      addOutput(text, example.output);
    }
  }
  addRows(text, rows, 3);
  text += '\n';
}

}  // namespace

std::vector<std::string_view> paragraphsOf(std::string_view text) {
  std::vector<std::string_view> paragraphs;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find("\n\n"), text.size());
    paragraphs.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 2, text.size()));
  }
  return paragraphs;
}

std::string spelled(const Option& option) {
  std::string text;
  if (!option.letter.empty()) text.append(option.letter).append(", ");
  text += option.name;
  if (!option.value.empty()) text.append(" ").append(option.value);
  return text;
}

std::string meaningOf(const Operand& operand) {
  const std::string meaning(operand.meaning);
  return operand.words ? meaning + ": " + joined(operand.words(), ", ") : meaning;
}

std::string usageOf(const Command& command) {
  std::string options;
  for (const Option& option : command.options) {
    const std::string_view name = option.letter.empty() ? option.name : option.letter;
    options.append(" [")
        .append(name)
        .append(option.value.empty() ? "" : " ")
        .append(option.value)
        .append("]");
  }
  if (command.options.size() > 3) options = " [OPTION]...";
  std::string usage = "lumoapi " + std::string(command.name) + options;
  if (!command.operandsInUse.empty()) usage.append(" ").append(command.operandsInUse);
  return usage;
}

std::string helpOf(const Command& command) {
  std::string text;
  addParagraphs(text, command.purpose);
  addExamples(text, command.examples);
  text += "Usage: " + usageOf(command) + "\n\n";
  std::vector<Row> rows;
  for (const Operand& operand : command.operands) rows.emplace_back(operand.name, meaningOf(operand));
  for (const Option& option : command.options) rows.emplace_back(spelled(option), option.meaning);
  rows.emplace_back(kHelpOption, "show this text");
  addRows(text, rows, 2);
  text += '\n';
  addParagraphs(text, command.notes);
  addParagraphs(text, "Exit status: " + std::string(command.exitStatus));
  text.pop_back();
  return text;
}

std::string helpOf(std::span<const Command> commands) {
  std::string text;
  addParagraphs(text, kToolPurpose);
  addExamples(text, toolExamples());
  text += "Usage: lumoapi COMMAND [OPTION]... [FILE]...\n\nCommands:\n";
  std::vector<Row> rows;
  for (const Command& command : commands) rows.emplace_back(command.name, command.summary);
  addRows(text, rows, 6);
  text += "\nOptions:\n";
  addRows(
      text,
      {{"-h, --help", "show this text; after a command, the command's"}, {"--version", "show the version"}},
      3);
  text += '\n';
  addParagraphs(text, "Exit status: " + std::string(kToolExitStatus));
  text.pop_back();
  return text;
}

}  // namespace lumo::cli
