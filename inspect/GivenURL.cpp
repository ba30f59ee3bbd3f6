#include "inspect/GivenURL.h"

#include "documents/Conversion.h"
#include "documents/Words.h"
#include "inspect/Text.h"
#include "inspect/URL.h"

namespace lumo::inspection {

using namespace documents;
using Status = Answer::Status;

namespace {

GivenURL fromRequest(const Place& document) {
  const Encoded encoded = encode(readEncodeRequest(document));
  if (encoded.url) return {encoded.url};
  return {{}, {Status::Refused, "refused: " + encoded.refusal.description()}};
}

GivenURL fromDocument(std::string_view text, std::string_view name, const NamedBytes& named) {
  try {
    const Value document = parseDocument(text);
    const Value::Dictionary* members = document.asDictionary();
    const Value* url = members && !members->find("message") ? members->find("url") : nullptr;
    if (!url) return fromRequest(Place(document, named));
    if (const std::string* given = url->asString()) return urlItself(*given);
    return {{}, {Status::Refused, "refused: the document's url is null"}};
  } catch (const DocumentError& error) {
    return {{}, {Status::InError, std::string(name) + ": " + error.what()}};
  }
}

}  // namespace

GivenURL urlItself(std::string_view text) {
  NoURL reason{};
  std::optional<URL> url = launchURLOf(text, reason);
  if (url) return {std::move(url)};
  return {{}, {Status::InError, textOf(text, reason)}};
}

GivenURL urlGivenBy(std::string_view text, std::string_view name, const NamedBytes& named) {
  const std::string_view content = trimmed(text);
  return content.starts_with('{') ? fromDocument(text, name, named) : urlItself(trimmed(firstLine(content)));
}

}  // namespace lumo::inspection
