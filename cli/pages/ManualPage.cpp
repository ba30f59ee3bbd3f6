#include "cli/CommandTable.h"
#include "cli/Help.h"
#include "cli/pages/Pages.h"
#include "inspect/Printable.h"

#include <algorithm>
#include <string_view>

namespace lumo::cli {

namespace {

/// Text that the formatter takes as it is: signs that it would turn into typographic ones, its own escapes,
/// and the letters that make a line a request.
std::string escaped(std::string_view text) {
  std::string escapes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool beginsLine = at == 0 || text[at - 1] == '\n';
    if (beginsLine && (text[at] == '.' || text[at] == '\'')) escapes += "\\&";
    switch (text[at]) {
      case '\\':
        escapes += "\\e";
        break;
      case '-':
        escapes += "\\-";
        break;
      case '\'':
        escapes += "\\(aq";
        break;
      case '~':
        escapes += "\\(ti";
        break;
      case '^':
        escapes += "\\(ha";
        break;
      case '`':
        escapes += "\\(ga";
        break;
      default:
        escapes += text[at];
    }
  }
  return escapes;
}

std::string capitalised(std::string_view text) {
  std::string sentence(text);
  if (sentence[0] >= 'a' && sentence[0] <= 'z') sentence[0] = static_cast<char>(sentence[0] - 'a' + 'A');
  return sentence;
}

class Manual {
 public:
  void request(const std::string& name, std::string_view argument = "") {
    const bool isEmptyParagraph = name == "PP" && isBelowHeading_;
    if (isEmptyParagraph) return;
    isBelowHeading_ = name.starts_with("S");
    text_ += "." + name;
    if (!argument.empty()) text_ += " " + escaped(argument);
    text_ += '\n';
  }

  /// Text that is filled into lines.
  void add(std::string_view text) {
    for (const std::string& line : inspection::wrapped(text, 76)) addLine(line);
  }

  void addLine(std::string_view text) {
    isBelowHeading_ = false;
    text_ += escaped(text) + "\n";
  }

  void addParagraphs(std::string_view text) {
    for (const std::string_view paragraph : paragraphsOf(text)) {
      request("PP");
      add(paragraph);
    }
  }

  /// A name with its meaning in an indented paragraph.
  void addEntry(std::string_view name, std::string_view meaning) {
    request("TP");
    request("B", name);
    add(meaning);
  }

  void addExamples(std::span<const Example> examples) {
    for (const Example& example : examples) {
      request("PP");
      if (!example.meaning.empty()) add(capitalised(example.meaning) + ":");
      request("RS 4");
      request("nf");
      addLine("$ " + std::string(example.line));
      if (!example.output.empty()) addLine(example.output);
      request("fi");
      request("RE");
    }
  }

  const std::string& text() const noexcept { return text_; }

 private:
  std::string text_;
  bool isBelowHeading_ = false;
};

void addCommand(Manual& manual, const Command& command) {
  manual.request("SS", command.name);
  manual.request("B", usageOf(command));
  manual.addParagraphs(command.purpose);
  for (const Operand& operand : command.operands) manual.addEntry(operand.name, meaningOf(operand));
  for (const Option& option : command.options) manual.addEntry(spelled(option), option.meaning);
  manual.addParagraphs(command.notes);
  manual.addParagraphs("Exit status: " + std::string(command.exitStatus));
}

}  // namespace

std::string manualPage(const std::string& version, const std::string& date) {
  Manual manual;
  manual.request("TH LUMOAPI 1 \"" + date + "\" \"LumoApi " + version + "\" \"User Commands\"");
  manual.request("SH NAME");
  manual.add("lumoapi - messages of a messenger's SDK as launch URLs, and back");
  manual.request("SH SYNOPSIS");
  manual.request("B", "lumoapi");
  manual.request("I", "COMMAND");
  manual.add("[OPTION]... [FILE]...");
  manual.request("SH DESCRIPTION");
  manual.add(kToolPurpose);
  manual.request("SH OPTIONS");
  manual.addEntry(kHelpOption, "show the help; after a command, the command's");
  manual.addEntry("--version", "show the version");
  manual.request("SH COMMANDS");
  for (const Command& command : commands()) addCommand(manual, command);
  manual.request("SH EXIT STATUS");
  manual.add(kToolExitStatus);
  manual.request("SH ENVIRONMENT");
  manual.addEntry("NO_COLOR", "where it is set and not empty, nothing is coloured");
  manual.request("SH EXAMPLES");
  manual.addExamples(toolExamples());
  for (const Command& command : commands()) manual.addExamples(command.examples);
  return manual.text();
}

}  // namespace lumo::cli
