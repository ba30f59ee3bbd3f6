#pragma once

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "model/LumoApiCurrentObject.h"
#include "model/LumoApiDatastore.h"
#include "model/LumoApiLog.h"
#include "model/LumoOpenApiUtility.h"

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

/// A new object, filled by `fill(object)`.
template <class Object, class Fill>
std::shared_ptr<Object> made(const Fill& fill) {
  auto object = std::make_shared<Object>();
  fill(*object);
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
  static LumoApiLargeData record() {
    const LumoApiLargeDataPtr held = store().getApiLargeData();
    return held ? *held : LumoApiLargeData();
  }

  static std::shared_ptr<LumoApiKivaObject> card(std::optional<std::string> text) {
    return made<LumoApiKivaObject>([&](auto& o) { o.setKivaData(text); });
  }

  LumoApiDatastore::Values values;
  LumoApiLargeDataPtr before =
      std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", bytes(1)}});
  Log log;
  LumoApiRefusal refusal;
};
