#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiObject.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

/// A structured card that accompanies a content object.
class LUMOAPI_EXPORT LumoApiKivaObject {
 public:
  /// The card's text.
  const std::optional<std::string>& kivaData() const noexcept { return kivaData_; }
  void setKivaData(std::optional<std::string> kivaData) noexcept { kivaData_ = std::move(kivaData); }

 private:
  std::optional<std::string> kivaData_;
};

/// The envelope of one request or answer: a content object and what kind of message it is.
///
/// A value; copies share the content object and the card, so that one thread at a time may use them all.
class LUMOAPI_EXPORT LumoApiMessage {
 public:
  LumoApiMessage() = default;
  /// A message of the type with that content.
  // messageWithObject:andType:
  static LumoApiMessage messageWithObject(std::shared_ptr<LumoApiObject> object, std::int32_t type) {
    LumoApiMessage message;
    message.setObject(std::move(object));
    message.setType(type);
    return message;
  }

  /// The content; required when the message is sent, null in a request to pick content.
  const std::shared_ptr<LumoApiObject>& object() const noexcept { return object_; }
  void setObject(std::shared_ptr<LumoApiObject> object) noexcept { object_ = std::move(object); }

  /// The message type. Outgoing, 7 and 5 are shares (sent with a share type of 1 and 0) and 4 is an answer to
  /// a request of the messenger; incoming, 1 is a request to show content, 3 one to pick content and 6 a
  /// response.
  std::int32_t type() const noexcept { return type_; }
  void setType(std::int32_t type) noexcept { type_ = type; }

  /// Whether a card accompanies the content; the card is then required, and not looked at otherwise.
  bool isSupportKiva() const noexcept { return isSupportKiva_; }
  void setIsSupportKiva(bool isSupportKiva) noexcept { isSupportKiva_ = isSupportKiva; }

  /// The card.
  const std::shared_ptr<LumoApiKivaObject>& kivaObject() const noexcept { return kivaObject_; }
  void setKivaObject(std::shared_ptr<LumoApiKivaObject> kivaObject) noexcept {
    kivaObject_ = std::move(kivaObject);
  }

 private:
  std::shared_ptr<LumoApiObject> object_;
  std::int32_t type_ = 0;
  bool isSupportKiva_ = false;
  std::shared_ptr<LumoApiKivaObject> kivaObject_;
};
