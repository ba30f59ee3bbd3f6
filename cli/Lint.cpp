#include "cli/Lint.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "documents/Words.h"
#include "inspect/JSON.h"
#include "inspect/Lint.h"
#include "inspect/Printable.h"
#include "inspect/Text.h"

#include <algorithm>

namespace lumo::cli {

using namespace documents;

namespace {

using Findings = std::vector<inspection::LintFinding>;

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
    writeFile("-", choices.json ? inspection::jsonOf(documentOf(findings)) : textOf(findings));
    return findings.empty() ? kDone : kRefused;
  });
  return std::max(status, written);
}

}  // namespace lumo::cli
