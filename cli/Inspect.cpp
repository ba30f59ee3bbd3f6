#include "cli/Inspect.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/InspectJSON.h"
#include "cli/InspectSave.h"
#include "cli/InspectText.h"
#include "cli/InspectURL.h"
#include "cli/Lines.h"
#include "cli/Text.h"
#include "model/LumoApiFilePasteboard.h"

namespace lumo::cli {

namespace {

std::string readText(const std::string& url) {
  if (url != "-") return std::string(trimmed(url));
  Input input(url);
  LineReader lines(input);
  Output none;
  return std::string(trimmed(lines.next(none).value_or("")));
}

inspection::Store readStore(const std::optional<std::string>& file) {
  if (!file) return {};
  LumoApiFilePasteboard pasteboard(*file);
  inspection::Store store{.isKnown = true, .record = pasteboard.read()};
  if (const std::string error = pasteboard.lastError(); !error.empty()) throw FileError(error);
  return store;
}

int explain(const Choices& choices) {
  const std::string text = readText(choices.operand());
  inspection::NoURL reason{};
  const std::optional<URL> url = inspection::launchURLOf(text, reason);
  if (!url) {
    if (choices.json) writeFile("-", jsonOf(text, reason));
    complain(textOf(text, reason));
    return kDocumentError;
  }
  const inspection::Findings findings = findingsOf(*url, readStore(choices.store), choices.full);
  inspection::Saved saved;
  if (choices.folder) saved = save(findings, *choices.folder);
  writeFile("-", choices.json ? jsonOf(findings, saved)
                              : textOf(findings, saved, {isColoured(choices.colour), choices.full}));
  return findings.destination ? kDone : kRefused;
}

}  // namespace

int inspect(const Choices& choices) {
  return withFiles([&] { return explain(choices); });
}

}  // namespace lumo::cli
