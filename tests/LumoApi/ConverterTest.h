#pragma once

#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "model/ContentClasses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

using Converter = LumoApiMessageAndUrlConverter;
using lumo::Data;
using lumo::URL;
using lumo::Value;
using Pairs = std::map<std::string, std::string>;
using Log = std::vector<std::string>;

inline Data bytes(std::size_t size, char fill = 'x') { return Data(std::string(size, fill)); }
inline std::string letters(std::size_t count) { return std::string(count, 'a'); }
inline std::string base64(std::string_view text) {
  return LumoOpenApiUtility::base64EncodedStringWithUTF8String(text).value();
}

using Fields = Value::Dictionary;

inline void put(std::uint64_t& field, const Value& value) {
  field = static_cast<std::uint64_t>(*value.asInteger());
}
template <class T>
void put(std::optional<T>& field, const Value& value) {
  field.reset();
  if (value.isNull()) return;
  if constexpr (std::same_as<T, Value>) {
    field = value;
  } else if constexpr (std::same_as<T, URL>) {
    field = URL::parse(*value.asString());
  } else if constexpr (std::same_as<T, lumo::StringDictionary>) {
    field.emplace();
    for (const auto& [key, text] : *value.asDictionary()) field->set(key, *text.asString());
  } else {
    field = *lumo::contentOf<T>(value);
  }
}
template <class T>
void put(std::optional<std::vector<T>>& field, const Value& value) {
  field = lumo::listOf<T>(value);
}

/// Fills the object's fields by their names; a null value makes a field absent.
template <class Object>
void fill(Object& object, const Fields& fields) {
  std::size_t known = 0;
  lumo::forEachField(object, [&](const char* name, auto& field) {
    if (!fields.contains(name)) return;
    put(field, *fields.find(name));
    ++known;
  });
  EXPECT_EQ(known, fields.size()) << "a field that the class does not have";
}
/// A new object with these fields.
template <class Object>
std::shared_ptr<Object> filled(const Fields& fields) {
  auto object = std::make_shared<Object>();
  fill(*object, fields);
  return object;
}

/// The pairs of a query, "a=1&b=2", split by hand, so that the encoder is not judged by the decoder.
inline Pairs pairs(std::string_view query) {
  Pairs split;
  while (!query.empty()) {
    const std::string_view piece = query.substr(0, query.find('&'));
    const std::size_t equals = piece.find('=');
    EXPECT_TRUE(split.emplace(piece.substr(0, equals), piece.substr(equals + 1)).second) << piece;
    query.remove_prefix(std::min(piece.size() + 1, query.size()));
  }
  return split;
}
inline Pairs pairsOf(const std::optional<URL>& url) {
  const std::string_view text = url ? url->absoluteString() : "";
  return pairs(text.substr(std::min(text.find('?'), text.size() - 1) + 1));
}

/// What stands before the "?".
inline std::string targetOf(const std::optional<URL>& url) {
  return url ? std::string(url->absoluteString().substr(0, url->absoluteString().find('?'))) : "(null)";
}

/// A store with scheme "demo" and name "Demo", an old record in it, an empty thread slot, and the log
/// collected.
class ConverterTest : public testing::Test {
 protected:
  ConverterTest() {
    values.scheme = "demo";
    values.appName = "Demo";
    store().setApiLargeData(before);
    LumoApiLog::setHandler([this](const LumoApiLog::Line& line) { log.emplace_back(line.message); });
  }
  ~ConverterTest() override {
    LumoApiLog::removeHandler();
    LumoApiCurrentObject::set(nullptr);
    store().setPasteboard(nullptr);
    store().setValues({});
    store().setApiLargeData(nullptr);
  }

  static LumoApiDatastore& store() { return LumoApiDatastore::instance(); }

  /// Sends the object with the test's values; the log is then this conversion's.
  std::optional<URL> send(std::shared_ptr<LumoApiObject> object, std::int32_t type = 0,
      std::shared_ptr<LumoApiKivaObject> card = nullptr) {
    log.clear();
    store().setValues(values);
    LumoApiMessage message = LumoApiMessage::messageWithObject(std::move(object), type);
    message.setIsSupportKiva(card != nullptr);
    message.setKivaObject(std::move(card));
    const auto url = Converter::urlWithMessage(message, &refusal);
    const auto parts = [](const URL& u) { return std::tuple(u.scheme(), u.host(), u.path(), u.query()); };
    if (url) {
      EXPECT_EQ(parts(*url), parts(URL::parse(url->absoluteString()).value()));
    }
    return url;
  }

  bool storeUntouched() const { return store().getApiLargeData() == before; }

  /// The record as it stands after a conversion.
  static LumoApiLargeData record() { return *store().getApiLargeData(); }

  static std::shared_ptr<LumoApiKivaObject> card(std::optional<std::string> text) {
    auto made = std::make_shared<LumoApiKivaObject>();
    made->setKivaData(std::move(text));
    return made;
  }

  LumoApiDatastore::Values values;
  LumoApiLargeDataPtr before =
      std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", bytes(1)}});
  Log log;
  LumoApiRefusal refusal;
};
