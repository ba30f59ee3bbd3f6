// Documents of the tool: read, converted, written, and read again.

#include "documents/Conversion.h"
#include "documents/ResultWriter.h"
#include "fuzz/Door.h"
#include "platform/values/JSON.h"

#include <algorithm>
#include <string>

namespace lumo::fuzz {

namespace {

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

void encodeDocument(const Place& document) {
  EncodeRequest request = readEncodeRequest(document);
  const std::optional<LumoApiMessage> message = request.message;
  const Encoded encoded = encode(std::move(request));
  textOf(documentOf(encoded));
  if (!encoded.object) return;
  checkReading(documentOf(encoded.object.get()), std::shared_ptr<LumoApiObject>());
  checkReading(documentOf(message), LumoApiMessage());
}

void decodeDocument(const Place& document) {
  const Value written = documentOf(decode(readDecodeRequest(document)).message);
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
    members && members->contains("url") ? decodeDocument(place) : encodeDocument(place);
  } catch (const DocumentError& error) {
    require(*error.what() != '\0', "an error has words");
  }
}

}  // namespace lumo::fuzz
