#include "documents/ResultWriter.h"

#include "LumoApi/Base64.h"
#include "documents/Document.h"
#include "model/ContentClasses.h"

namespace lumo::documents {

namespace {

Value written(const std::string& text) { return Value(text); }
Value written(const URL& url) { return Value(url.absoluteString()); }
Value written(const Data& bytes) { return Value::Dictionary{{"$data", Value(base64Encoded(bytes.view()))}}; }

Value written(const StringDictionary& dictionary) {
  Value::Dictionary entries;
  entries.reserve(dictionary.size());
  for (const auto& [key, text] : dictionary) entries.set(key, Value(text));
  return entries;
}

Value written(const Value::Dictionary& dictionary);

/// A free-form value.
Value written(const Value& value) {
  if (const Data* bytes = value.asData()) return written(*bytes);
  if (const Value::Dictionary* dictionary = value.asDictionary()) return written(*dictionary);
  const Value::Array* array = value.asArray();
  if (!array) return value;
  Value::Array elements;
  elements.reserve(array->size());
  for (const Value& element : *array) elements.push_back(written(element));
  return elements;
}

Value written(const Value::Dictionary& dictionary) {
  Value::Dictionary entries;
  entries.reserve(dictionary.size());
  for (const auto& [key, value] : dictionary) entries.set(key, written(value));
  return entries;
}

template <class T>
Value written(const std::vector<T>& list) {
  Value::Array elements;
  elements.reserve(list.size());
  for (const T& element : list) elements.push_back(written(element));
  return elements;
}

void add(Value::Dictionary& members, const char* name, std::uint64_t number) {
  if (number != 0) members.set(name, Value(number));
}

template <class T>
void add(Value::Dictionary& members, const char* name, const std::optional<T>& field) {
  if (field) members.set(name, written(*field));
}

}  // namespace

Value documentOf(const LumoApiObject* object) {
  if (!object) return {};
  Value::Dictionary members;
  members.reserve(8);
  visitContent(*object, [&members](const char* name, const auto& content) {
    members.set("class", Value(name));
    forEachField(content, [&members](const char* field, const auto& value) { add(members, field, value); });
  });
  return members;
}

Value documentOf(const std::optional<LumoApiMessage>& message) {
  if (!message) return {};
  Value::Dictionary members;
  members.set("type", Value(message->type()));
  members.set("object", documentOf(message->object().get()));
  if (message->isSupportKiva()) members.set("isSupportKiva", Value(true));
  if (const LumoApiKivaObject* card = message->kivaObject().get()) {
    Value::Dictionary cardMembers;
    add(cardMembers, "kivaData", card->kivaData());
    members.set("kivaObject", std::move(cardMembers));
  }
  return members;
}

Value documentOf(const LumoApiLargeDataPtr& record) { return record ? written(*record) : Value(); }

Value documentOf(const std::vector<std::string>& texts) { return written(texts); }

Value documentOf(const Encoded& encoded) {
  Value::Dictionary result;
  result.reserve(4);
  result.set("url", encoded.url ? Value(encoded.url->absoluteString()) : Value());
  result.set("log", documentOf(encoded.log));
  result.set("apiLargeData", documentOf(encoded.apiLargeData));
  result.set("object", documentOf(encoded.object.get()));
  return result;
}

Value documentOf(const Decoded& decoded) {
  Value::Dictionary result;
  result.reserve(2);
  result.set("message", documentOf(decoded.message));
  result.set("log", documentOf(decoded.log));
  return result;
}

void appendResult(std::string& output, const Value& result, JSONStyle style) {
  const std::optional<std::string> text = writeJSON(result, style);
  if (!text) throw DocumentError("the result is nested too deeply or holds a text that is not UTF-8");
  output += *text;
}

}  // namespace lumo::documents
