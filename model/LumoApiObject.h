#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Export.h"
#include "LumoApi/Field.h"
#include "LumoApi/URL.h"
#include "LumoApi/Value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The base of every content object: what a message carries.
///
/// Content objects are plain values owned by their callers; nothing is checked until a message is converted.
/// Every field may be absent (null), which differs from empty. Texts are UTF-8; their limits are stated in
/// UTF-16 code units (a character outside the Basic Multilingual Plane counts 2), those of byte buffers in
/// bytes. An object may be used by one thread at a time.
class LUMOAPI_EXPORT LumoApiObject {
 public:
  LumoApiObject() = default;
  virtual ~LumoApiObject();

  /// At most 128 UTF-16 code units, for every kind.
  const std::optional<std::string>& title() const noexcept { return title_; }
  void setTitle(std::optional<std::string> title) noexcept { title_ = std::move(title); }

  /// The content's own description text; at most 512 UTF-16 code units, for every kind.
  const std::optional<std::string>& description() const noexcept { return description_; }
  void setDescription(std::optional<std::string> description) noexcept {
    description_ = std::move(description);
  }

  /// The destination code: 1 selects the sibling messenger app where a destination has two schemes, every
  /// other value the main one.
  std::uint64_t shareDestType() const noexcept { return shareDestType_; }
  void setShareDestType(std::uint64_t code) noexcept { shareDestType_ = code; }

  /// Control flags of the messenger. The value 8 lets a link go without a title.
  std::uint64_t cflag() const noexcept { return cflag_; }
  void setCflag(std::uint64_t flags) noexcept { cflag_ = flags; }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple(lumo::field("title", self.title_), lumo::field("description", self.description_),
                      lumo::field("shareDestType", self.shareDestType_), lumo::field("cflag", self.cflag_));
  }

 protected:
  LumoApiObject(const LumoApiObject&) = default;
  LumoApiObject& operator=(const LumoApiObject&) = default;
  LumoApiObject(LumoApiObject&&) = default;
  LumoApiObject& operator=(LumoApiObject&&) = default;

 private:
  std::optional<std::string> title_;
  std::optional<std::string> description_;
  std::uint64_t shareDestType_ = 0;
  std::uint64_t cflag_ = 0;
};

/// Equal when both are of the same class of this library and all their fields are equal.
LUMOAPI_EXPORT bool operator==(const LumoApiObject& a, const LumoApiObject& b);

namespace lumo {

/// The content kinds that may carry a tag name and a message extension.
class LUMOAPI_EXPORT TaggedObject : public LumoApiObject {
 public:
  /// At most 128 UTF-16 code units.
  const std::optional<std::string>& tagName() const noexcept { return tagName_; }
  void setTagName(std::optional<std::string> tagName) noexcept { tagName_ = std::move(tagName); }

  /// At most 256 UTF-16 code units.
  const std::optional<std::string>& messageExt() const noexcept { return messageExt_; }
  void setMessageExt(std::optional<std::string> messageExt) noexcept { messageExt_ = std::move(messageExt); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(field("tagName", self.tagName_), field("messageExt", self.messageExt_)),
                          LumoApiObject::fields(self));
  }

 protected:
  TaggedObject() = default;

 private:
  std::optional<std::string> tagName_;
  std::optional<std::string> messageExt_;
};

}  // namespace lumo
