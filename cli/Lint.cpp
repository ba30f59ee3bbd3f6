#include "cli/Lint.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/LintChecks.h"
#include "documents/Words.h"
#include "inspect/Printable.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"

#include <algorithm>

namespace lumo::cli {

using namespace documents;

namespace {

using Findings = std::vector<LintFinding>;

/// A text of its own on each line.
void checkLines(std::string_view text, const Input& input, Findings& findings) {
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = firstLine(text);
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (!trimmed(line).empty()) check(line, {input.name(), number}, input.files(), findings);
  }
}

void checkFile(const std::string& file, bool isOneALine, Findings& findings) {
  Input input(file);
  const std::string text = input.readAll();
  const std::string_view content = trimmed(text);
  const bool isDocument = content.empty() || content.starts_with('{');
  if (isDocument && !isOneALine) {
    check(text, {input.name()}, input.files(), findings);
  } else {
    checkLines(text, input, findings);
  }
}

std::string textOf(const Findings& findings) {
  std::string text;
  for (const LintFinding& finding : findings) {
    const std::string line = finding.place.line == 0 ? "" : ":" + std::to_string(finding.place.line);
    text += inspection::printable(finding.place.file + line + ": " + finding.code + ": " + finding.message) +
            "\n";
  }
  return text;
}

std::string jsonOf(const Findings& findings) {
  const auto valueOf = [](const std::string& text) {
    return Value(isValidUTF8(text) ? text : inspection::printable(text));
  };
  Value::Array list;
  for (const LintFinding& finding : findings) {
    list.emplace_back(
        Value::Dictionary{{"file", valueOf(finding.place.file)},
                          {"line", finding.place.line == 0 ? Value() : Value(finding.place.line)},
                          {"code", finding.code},
                          {"key", finding.key.empty() ? Value() : valueOf(finding.key)},
                          {"message", valueOf(finding.message)}});
  }
  return inspection::printableJSON(*writeJSON(list, {.escapeSolidus = false, .indent = 2})) + "\n";
}

}  // namespace

int lint(const Choices& choices) {
  std::vector<std::string> operands = choices.operands;
  if (operands.empty()) operands.emplace_back("-");
  Findings findings;
  int status = kDone;
  for (const std::string& operand : operands) {
    const int read = withFiles([&] {
      if (isURL(operand)) {
        check(operand, {inspection::cut(inspection::printable(operand), 40)}, FilesBeside(), findings);
      } else {
        checkFile(operand, choices.lines, findings);
      }
      return kDone;
    });
    status = std::max(status, read);
  }
  const int written = withFiles([&] {
    writeFile("-", choices.json ? jsonOf(findings) : textOf(findings));
    return findings.empty() ? kDone : kRefused;
  });
  return std::max(status, written);
}

}  // namespace lumo::cli
