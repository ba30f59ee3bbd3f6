// Documents of the tool: read, converted, written, and read again.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Stage.h"
#include "documents/RequestReader.h"
#include "documents/ResultWriter.h"
#include "fuzz/Door.h"
#include "platform/values/JSON.h"

#include <algorithm>
#include <string>

namespace lumo::fuzz {

namespace {

using namespace cli;
using namespace documents;

const NamedBytes kNone;

/// Whether some member names a file, which must not be read from here.
bool namesFile(const Value& value) {
  if (const Value::Array* array = value.asArray())
    return std::any_of(array->begin(), array->end(), namesFile);
  const Value::Dictionary* members = value.asDictionary();
  return members && (members->contains("$file") ||
                     std::any_of(members->begin(), members->end(),
                                 [](const auto& member) { return namesFile(member.value); }));
}

std::string textOf(const Value& document) {
  std::string text;
  appendResult(text, document, {.escapeSolidus = false});
  return text;
}

/// Reads back what was written of an object or a message, and writes it again.
template <class T>
void checkReading(const Value& document, T content) {
  const std::string text = textOf(document);
  const std::optional<Value> parsed = parseJSON(text);
  require(parsed.has_value(), "a result is JSON");
  if (parsed->isNull()) return;
  read(Place(*parsed, kNone), content);
  if constexpr (requires { content.get(); }) {
    require(textOf(documentOf(content.get())) == text, "what was written is read");
  } else {
    require(textOf(documentOf(std::optional(content))) == text, "what was written is read");
  }
}

void encode(const Place& document) {
  EncodeRequest request = readEncodeRequest(document);
  static Stage& stage = *new Stage();
  stage.set(std::move(request.surroundings));
  LumoApiMessageAndUrlConverter::urlWithMessage(request.message);
  textOf(documentOf(stage.log()));
  textOf(documentOf(stage.record()));
  if (!request.message || !request.message->object()) return;
  checkReading(documentOf(request.message->object().get()), std::shared_ptr<LumoApiObject>());
  checkReading(documentOf(request.message), LumoApiMessage());
}

void decode(const Place& document) {
  DecodeRequest request = readDecodeRequest(document);
  static Stage& stage = *new Stage();
  stage.set(std::move(request.surroundings));
  const auto message = LumoApiMessageAndUrlConverter::messageWithUrl(request.url);
  const Value written = documentOf(message);
  const bool hasMarks = textOf(written).find("\"$") != std::string::npos;  // may stand for bytes, or not
  if (!hasMarks) checkReading(written, LumoApiMessage());
}

}  // namespace

void door(std::string_view input) {
  const std::optional<Value> document = parseJSON(input);
  if (!document || namesFile(*document)) return;
  const Value::Dictionary* members = document->asDictionary();
  try {
    const Place place(*document, kNone);
    members && members->contains("url") ? decode(place) : encode(place);
  } catch (const DocumentError& error) {
    require(*error.what() != '\0', "an error has words");
  }
}

}  // namespace lumo::fuzz
