#include "cli/NewDocument.h"

#include "LumoApi/Base64.h"
#include "cli/Files.h"
#include "documents/Conversion.h"
#include "documents/ResultWriter.h"
#include "documents/Words.h"
#include "model/ContentClasses.h"

#include <concepts>
#include <utility>

namespace lumo::cli {

using namespace documents;

namespace {

/// The smallest picture: whatever asks for bytes takes it.
Data picture() {
  return *base64DecodedData(
      "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR42mNoAAAAggCB2kUIOwAAAABJRU5ErkJggg==");
}

// A value for a field of each type. Most texts are their field's name, which any place in a URL takes.
void fill(std::string_view name, std::optional<std::string>& text) {
  text = name == "title" ? "A title" : name == "text" ? "Hello" : hyphenated(name);
}
void fill(std::string_view, std::optional<Data>& bytes) { bytes = picture(); }
void fill(std::string_view, std::optional<std::vector<Data>>& list) { list = {picture()}; }
void fill(std::string_view, std::optional<std::vector<std::string>>& texts) { texts = {"Hello"}; }
void fill(std::string_view name, std::optional<URL>& url) {
  url = URL::parse("https://example.com/" + hyphenated(name));
}
void fill(std::string_view, std::optional<Value>& map) { map = Value::Dictionary{{"key", "value"}}; }
void fill(std::string_view, std::optional<StringDictionary>& texts) { texts = {{"key", "value"}}; }
template <std::integral Integer>
void fill(std::string_view, Integer&) {}  // a new object's number is right

/// Integers of 0 are left out of results, but a document to begin with shows that they are there.
template <class Field>
void show(Value::Dictionary& members, const char* name, const Field& field) {
  if constexpr (std::integral<Field>) members.set(name, field);
}

template <class Content>
Value exampleOf(std::shared_ptr<Content> object) {
  forEachField(*object, [](const char* name, auto& field) { fill(name, field); });
  Value::Dictionary members = *documentOf(object.get()).asDictionary();
  forEachField(*object, [&](const char* name, const auto& field) { show(members, name, field); });
  const Value message = Value::Dictionary{{"type", 0}, {"object", std::move(members)}};
  const Value store = Value::Dictionary{{"scheme", "myapp"}, {"appName", "My App"}};
  return Value::Dictionary{{"message", message}, {"datastore", store}};
}

/// Whether a converter takes objects of the class.
bool isSent(std::shared_ptr<LumoApiObject> object) {
  const Encoded encoded = encode({LumoApiMessage::messageWithObject(std::move(object), 0), {}});
  return encoded.refusal.code != LumoApiRefusal::Code::UnknownKind;
}

}  // namespace

std::vector<std::string> contentKinds() {
  std::vector<std::string> kinds;
  anyContentClass([&kinds](auto contentClass) {
    using Content = typename decltype(contentClass)::Type;
    if (isSent(std::make_shared<Content>())) kinds.push_back(kindOf(contentClass.name));
    return false;
  });
  return kinds;
}

int newDocument(const Choices& choices) {
  std::string document;
  anyContentClass([&](auto contentClass) {
    if (kindOf(contentClass.name) != choices.operand()) return false;
    const Value example = exampleOf(std::make_shared<typename decltype(contentClass)::Type>());
    appendResult(document, example, {.escapeSolidus = false, .indent = 2});
    return true;
  });
  document += '\n';
  return withFiles([&] {
    writeFile(choices.output.value_or("-"), document, Existing::Kept);
    return kDone;
  });
}

}  // namespace lumo::cli
