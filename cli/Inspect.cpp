#include "cli/Inspect.h"

#include "LumoApi/LumoApiFilePasteboard.h"
#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/Lines.h"
#include "cli/SavedBytes.h"
#include "documents/Words.h"
#include "inspect/JSON.h"
#include "inspect/Text.h"
#include "inspect/URL.h"

namespace lumo::cli {

using namespace documents;

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

using Names = std::optional<std::vector<std::string>>;

std::string forPrograms(const inspection::Findings& findings, const Names& saved) {
  Value::Dictionary document = documentOf(findings);
  if (saved) document.set("saved", inspection::textArray(*saved));
  return inspection::jsonOf(document);
}

std::string forPeople(const inspection::Findings& findings, const Names& saved, const Choices& choices) {
  std::vector<inspection::Section> sections;
  if (saved) sections.push_back({"Saved", *saved});
  if (saved && saved->empty()) sections.back().lines = {"nothing, there are no bytes"};
  return textOf(findings, {isColoured(choices.colour), choices.full}, sections);
}

int explain(const Choices& choices) {
  const std::string text = readText(choices.operand());
  inspection::NoURL reason{};
  const std::optional<URL> url = inspection::launchURLOf(text, reason);
  if (!url) {
    if (choices.json) writeFile("-", inspection::jsonOf(documentOf(text, reason)));
    complain(textOf(text, reason));
    return kDocumentError;
  }
  const inspection::Findings findings = findingsOf(*url, readStore(choices.store), choices.full);
  std::optional<std::vector<std::string>> saved;
  if (choices.folder) saved = save(findings, *choices.folder);
  writeFile("-", choices.json ? forPrograms(findings, saved) : forPeople(findings, saved, choices));
  return findings.destination ? kDone : kRefused;
}

}  // namespace

int inspect(const Choices& choices) {
  return withFiles([&] { return explain(choices); });
}

}  // namespace lumo::cli
