#include "documents/FieldReader.h"

#include "LumoApi/Base64.h"
#include "documents/NearestName.h"

#include <algorithm>
#include <span>
#include <stdexcept>

namespace lumo::documents {

namespace {

constexpr std::string_view kData = "$data";
constexpr std::string_view kFile = "$file";

const Value::Dictionary& dictionaryAt(const Place& place) {
  const Value::Dictionary* dictionary = place.value().asDictionary();
  if (!dictionary) place.failExpecting("an object");
  return *dictionary;
}

Data readBase64(const Place& place, const std::string& text) {
  std::optional<Data> bytes = base64DecodedData(text);
  if (!bytes) place.failMember(kData, "not base64 with its padding");
  return *std::move(bytes);
}

Data readFile(const Place& place, const std::string& path) {
  try {
    return place.named().file(path);
  } catch (const std::runtime_error& error) {
    place.failMember(kFile, error.what());
  }
}

/// Whether the object stands for bytes where any value may stand.
bool standsForBytes(const Value::Dictionary& dictionary) {
  return dictionary.size() == 1 && (dictionary.begin()->key == kData || dictionary.begin()->key == kFile);
}

template <class T>
Value contentAt(const Place& place) {
  T content;
  read(place, content);
  return Value(std::move(content));
}

Value readEntries(const Place& place, const Value::Dictionary& dictionary) {
  Value::Dictionary entries;
  entries.reserve(dictionary.size());
  for (const auto& [key, value] : dictionary) entries.set(key, contentAt<Value>(Place(place, key, value)));
  return Value(std::move(entries));
}

}  // namespace

void read(const Place& place, bool& boolean) {
  const bool* value = place.value().asBoolean();
  if (!value) place.failExpecting("true or false");
  boolean = *value;
}

void read(const Place& place, const std::string*& text) {
  text = place.value().asString();
  if (!text) place.failExpecting("a string");
}

void read(const Place& place, std::string& text) {
  const std::string* value = nullptr;
  read(place, value);
  text = *value;
}

void read(const Place& place, Data& bytes) {
  if (!place.value().asDictionary()) {
    place.failExpecting(R"({"$data": base64} or {"$file": path})");
  }
  const std::string* base64 = nullptr;
  const std::string* file = nullptr;
  Members members(place);
  members.take(kData, base64);
  members.take(kFile, file);
  members.finish();
  if ((base64 == nullptr) == (file == nullptr)) place.fail("exactly one of $data and $file is expected");
  bytes = base64 ? readBase64(place, *base64) : readFile(place, *file);
}

void read(const Place& place, std::optional<URL>& url) {
  const std::string* text = nullptr;
  read(place, text);
  url = URL::parse(*text);
  if (!url) place.fail("not a valid URL");
}

void read(const Place& place, Value& freeForm) {
  if (const Value::Dictionary* dictionary = place.value().asDictionary()) {
    freeForm = standsForBytes(*dictionary) ? contentAt<Data>(place) : readEntries(place, *dictionary);
  } else if (place.value().asArray()) {
    freeForm = contentAt<Value::Array>(place);
  } else {
    freeForm = place.value();
  }
}

void read(const Place& place, StringDictionary& dictionary) {
  const Value::Dictionary& entries = dictionaryAt(place);
  dictionary.reserve(entries.size());
  for (const auto& [key, value] : entries) {
    if (value.isNull()) continue;
    std::string text;
    read(Place(place, key, value), text);
    dictionary.set(key, std::move(text));
  }
}

Members::Members(const Place& place) : place_(place), dictionary_(dictionaryAt(place)) {}

void Members::finish() const {
  if (taken_ == dictionary_.size()) return;
  const std::span<const std::string_view> known(known_.data(), knownCount_);
  for (const auto& entry : dictionary_) {
    if (std::find(known.begin(), known.end(), entry.key) == known.end()) {
      place_.failMember(entry.key, "unknown member" + suggestion(entry.key, known));
    }
  }
}

}  // namespace lumo::documents
