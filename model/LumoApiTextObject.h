#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use such an object, like every LumoApiObject.

/// A plain text, sent inside the launch URL.
class LUMOAPI_EXPORT LumoApiTextObject : public lumo::TaggedObject {
 public:
  /// A new object with that text.
  static std::shared_ptr<LumoApiTextObject> objectWithText(std::optional<std::string> text);

  /// Required: 1 to 1536 UTF-16 code units.
  const std::optional<std::string>& text() const noexcept { return text_; }
  void setText(std::optional<std::string> text) noexcept { text_ = std::move(text); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("text", self.text_)), lumo::TaggedObject::fields(self));
  }

 private:
  std::optional<std::string> text_;
};
