#pragma once

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "model/LumoApiCurrentObject.h"
#include "model/LumoApiDatastore.h"
#include "model/LumoApiLog.h"
#include "model/LumoOpenApiUtility.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
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

/// Splits a URL's text by hand, so that the encoder is not judged by the decoder.
inline Pairs pairsOf(const std::optional<URL>& url) {
  Pairs pairs;
  if (!url) return pairs;
  const std::string text(url->absoluteString());
  std::size_t place = text.find('?');
  while (place != std::string::npos) {
    const std::size_t end = text.find('&', place + 1);
    const std::string piece = text.substr(place + 1, end == std::string::npos ? end : end - place - 1);
    const std::size_t equals = piece.find('=');
    EXPECT_TRUE(pairs.emplace(piece.substr(0, equals), piece.substr(equals + 1)).second) << piece;
    place = end;
  }
  return pairs;
}

/// What stands before the "?".
inline std::string targetOf(const std::optional<URL>& url) {
  if (!url) return "(null)";
  return std::string(url->absoluteString().substr(0, url->absoluteString().find('?')));
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
    return Converter::urlWithMessage(message, &refusal);
  }

  bool storeUntouched() const { return store().getApiLargeData() == before; }

  /// The record as it stands after a conversion.
  static LumoApiLargeData record() {
    const LumoApiLargeDataPtr held = store().getApiLargeData();
    return held ? *held : LumoApiLargeData();
  }

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
