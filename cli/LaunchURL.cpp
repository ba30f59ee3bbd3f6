#include "cli/LaunchURL.h"

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/Stage.h"
#include "documents/RequestReader.h"
#include "documents/Words.h"
#include "inspect/Text.h"
#include "inspect/URL.h"

#include <utility>

namespace lumo::cli {

using namespace documents;

namespace {

LaunchURL fromText(std::string_view text) {
  inspection::NoURL reason{};
  LaunchURL launch{.url = inspection::launchURLOf(text, reason)};
  if (!launch.url) launch = {{}, kDocumentError, textOf(text, reason)};
  return launch;
}

LaunchURL fromRequest(const Place& document) {
  EncodeRequest request = readEncodeRequest(document);
  Stage stage;
  stage.set(std::move(request.surroundings));
  LumoApiRefusal refusal;
  LaunchURL launch{.url = LumoApiMessageAndUrlConverter::urlWithMessage(request.message, &refusal)};
  if (!launch.url) launch = {{}, kRefused, "refused: " + refusal.description()};
  return launch;
}

LaunchURL fromDocument(const std::string& text, const Input& input) {
  try {
    const Value document = parseDocument(text);
    const Value::Dictionary* members = document.asDictionary();
    const Value* url = members && !members->find("message") ? members->find("url") : nullptr;
    if (!url) return fromRequest(Place(document, input.files()));
    if (const std::string* given = url->asString()) return fromText(*given);
    return {{}, kRefused, "refused: the document's url is null"};
  } catch (const DocumentError& error) {
    return {{}, kDocumentError, input.name() + ": " + error.what()};
  }
}

}  // namespace

LaunchURL readLaunchURL(const std::string& operand) {
  if (isURL(operand)) return fromText(trimmed(operand));
  Input input(operand);
  const std::string text = input.readAll();
  if (trimmed(text).starts_with('{')) return fromDocument(text, input);
  return fromText(trimmed(firstLine(trimmed(text))));
}

}  // namespace lumo::cli
