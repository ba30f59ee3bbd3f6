#pragma once

#include "platform/Base64.h"
#include "platform/Data.h"
#include "platform/Dictionary.h"
#include "platform/Export.h"
#include "platform/Value.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace lumo {

/// A key of a launch URL's query: a name that lives as long as the program, as the converter's own keys do,
/// or a text of the caller's.
class LUMOAPI_EXPORT QueryKey {
 public:
  /// For a text that is never changed or freed.
  static constexpr QueryKey fixed(std::string_view text) noexcept {
    QueryKey key;
    key.text_ = text;
    return key;
  }
  constexpr QueryKey() noexcept = default;
  QueryKey(std::string text) noexcept : text_(std::move(text)) {}

  explicit constexpr operator std::string_view() const noexcept {
    const auto* fixed = std::get_if<std::string_view>(&text_);
    return fixed ? *fixed : std::string_view(*std::get_if<std::string>(&text_));
  }

 private:
  std::variant<std::string_view, std::string> text_;
};

/// A value of a launch URL's query: a text, a number, or bytes whose base64 text is written only when the URL
/// is, so that a picture goes straight from its buffer into the URL.
class LUMOAPI_EXPORT QueryValue {
 public:
  /// A word that is never changed or freed.
  static QueryValue fixed(std::string_view word) noexcept { return QueryValue(Content(word)); }
  static QueryValue text(std::string text) noexcept { return QueryValue(Content(std::move(text))); }
  /// A number object, written as its decimal text.
  static QueryValue number(Value number) noexcept { return QueryValue(Content(std::move(number))); }
  /// The base64 of the text's bytes.
  static QueryValue base64(std::string text) noexcept {
    return QueryValue(Content(Base64Text{std::move(text)}));
  }
  static QueryValue base64(Data bytes) noexcept { return QueryValue(Content(std::move(bytes))); }
  static QueryValue base64(DataChain bytes) noexcept { return QueryValue(Content(std::move(bytes))); }

  /// Whether the value is base64, which no URL ever escapes.
  bool isBase64() const noexcept { return content_.index() >= kFirstBase64; }

  /// The value's text.
  std::string asText() const;

  /// The length in bytes of the value in a percent-encoded URL; null where it is text that is not UTF-8.
  std::optional<std::size_t> encodedSize() const;
  /// Writes encodedSize() characters; gives their end.
  char* encode(char* out) const;

  /// Whether the value holds a character that reads as a separator where the URL is split again.
  bool hasAmpersand() const noexcept;

 private:
  struct Base64Text {
    std::string text;
  };
  using Content = std::variant<std::string_view, std::string, Value, Base64Text, Data, DataChain>;
  static constexpr std::size_t kFirstBase64 = 3;

  explicit QueryValue(Content content) noexcept : content_(std::move(content)) {}

  Content content_;
};

}  // namespace lumo

/// The query of a launch URL while it is being filled: keys and values in the order in which they came; a
/// replaced key keeps its place.
///
/// Keys are case-sensitive. Not to be used by several threads at once.
class LUMOAPI_EXPORT LumoApiQueryDictionary {
 public:
  using Entries = lumo::Dictionary<lumo::QueryValue, lumo::QueryKey>;

  LumoApiQueryDictionary() noexcept = default;
  LumoApiQueryDictionary(std::initializer_list<std::pair<std::string_view, std::string_view>> texts) {
    for (const auto& [key, text] : texts) set(std::string(key), lumo::QueryValue::text(std::string(text)));
  }

  void set(lumo::QueryKey key, lumo::QueryValue value) { entries_.set(std::move(key), std::move(value)); }
  void reserve(std::size_t count) { entries_.reserve(count); }

  /// The value's text; null where the key is absent.
  std::optional<std::string> text(std::string_view key) const;
  const lumo::QueryValue* find(std::string_view key) const noexcept { return entries_.find(key); }
  bool contains(std::string_view key) const noexcept { return entries_.contains(key); }

  bool empty() const noexcept { return entries_.empty(); }
  std::size_t size() const noexcept { return entries_.size(); }
  Entries::const_iterator begin() const noexcept { return entries_.begin(); }
  Entries::const_iterator end() const noexcept { return entries_.end(); }

 private:
  Entries entries_;
};
