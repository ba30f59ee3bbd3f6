#pragma once

#include "LumoApi/Base64.h"
#include "LumoApi/CopyText.h"
#include "LumoApi/Data.h"
#include "LumoApi/Dictionary.h"
#include "LumoApi/Export.h"
#include "LumoApi/Value.h"

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace lumo {

/// A word of the program's own, of characters that no URL escapes. That is checked when the program is
/// compiled, so nothing looks for them again when a URL is written.
class FixedWord {
 public:
  /// A word, checked when the program is compiled.
  consteval FixedWord(const char* word) : text_(word) {
    for (const char c : text_) {
      const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                         c == '_' || c == '-' || c == '.' || c == '/' || c == ':';
      if (!plain) throw "not a word that a URL holds unescaped";
    }
  }
  /// The word as a text.
  constexpr std::string_view text() const noexcept { return text_; }
  /// The same.
  constexpr operator std::string_view() const noexcept { return text_; }

 private:
  std::string_view text_;
};

/// A key of a launch URL's query: a word of the program's own, or a text of the caller's.
class LUMOAPI_EXPORT QueryKey {
 public:
  /// A word of the program's own.
  QueryKey(FixedWord word) noexcept : text_(Data::unowned(word.text())) {}
  /// A text of the caller's, taken over.
  QueryKey(std::string text) : text_(std::move(text)) {}
  /// A text of the caller's, copied.
  QueryKey(std::string_view text) : text_(Data::copy(text)) {}
  /// The same.
  QueryKey(const char* text) : QueryKey(std::string_view(text)) {}

  /// Whether no character of it is ever escaped.
  bool isFixed() const noexcept { return !text_.isOwned(); }
  /// The key as a text.
  explicit operator std::string_view() const noexcept { return text_.view(); }

 private:
  Data text_;  // owned where it is the caller's
};

/// A value of a launch URL's query: a text, a number, or bytes whose base64 text is written only when the URL
/// is, so that a picture goes straight from its buffer into the URL.
class LUMOAPI_EXPORT QueryValue {
 public:
  /// A word of the program's own.
  QueryValue(FixedWord word) noexcept : bytes_(Data::unowned(word.text())), kind_(Kind::Fixed) {}
  /// A text, percent-encoded in the URL.
  static QueryValue text(Data text) noexcept;
  /// The same, taken over.
  static QueryValue text(std::string text) { return QueryValue::text(Data(std::move(text))); }
  /// A number object, written as its decimal text; any other value is written as its own text, or as JSON.
  static QueryValue number(const Value& number);
  /// The base64 of the bytes.
  static QueryValue base64(Data bytes) noexcept { return {Kind::Base64, std::move(bytes)}; }
  /// The base64 of the text.
  static QueryValue base64(std::string text) { return {Kind::Base64, Data(std::move(text))}; }
  /// The base64 of bytes that lie in several buffers.
  static QueryValue base64(DataChain bytes);

  /// The value's text.
  std::string asText() const;

  /// What encodedSize() gives for text that is not UTF-8.
  static constexpr std::size_t kNotUTF8 = static_cast<std::size_t>(-1);

  /// The length in bytes of the value in a percent-encoded URL.
  std::size_t encodedSize() const noexcept {
    if (kind_ == Kind::Fixed) return bytes_.size();
    if (kind_ == Kind::Base64) return base64EncodedSize(bytes_.size());
    return otherEncodedSize();
  }
  /// Writes encodedSize() characters; gives their end.
  char* encode(char* out) const noexcept {
    if (kind_ == Kind::Fixed) return copyText(bytes_.view(), out);
    return encodeOther(out);
  }

  /// Whether its encodedSize() is at hand, and it holds no character that any URL escapes or splits at.
  bool isPlain() const noexcept { return kind_ <= Kind::Base64; }
  /// Whether the value holds a character that reads as a separator where the URL is split again.
  bool hasAmpersand() const noexcept {
    return kind_ == Kind::Text && bytes_.view().find('&') != std::string_view::npos;
  }

 private:
  enum class Kind : unsigned char {
    Fixed,   // stands in the URL as it is, and holds no "&"
    Base64,  // of bytes_
    Text,    // percent-encoded
    Chain,   // base64 of the DataChain that bytes_ owns and points to
  };

  QueryValue(Kind kind, Data bytes) noexcept : bytes_(std::move(bytes)), kind_(kind) {}

  const DataChain& chain() const noexcept;
  std::size_t otherEncodedSize() const noexcept;
  char* encodeOther(char* out) const noexcept;

  Data bytes_;
  Kind kind_;
};

}  // namespace lumo

/// The query of a launch URL while it is being filled: keys and values in the order in which they came; a
/// replaced key keeps its place.
///
/// Keys are case-sensitive. Not to be used by several threads at once.
class LUMOAPI_EXPORT LumoApiQueryDictionary {
 public:
  /// What holds the entries.
  using Entries = lumo::Dictionary<lumo::QueryValue, lumo::QueryKey>;

  LumoApiQueryDictionary() noexcept = default;
  /// The entries of these keys and texts.
  LumoApiQueryDictionary(std::initializer_list<std::pair<std::string_view, std::string_view>> texts) {
    for (const auto& [key, text] : texts) set(std::string(key), lumo::QueryValue::text(std::string(text)));
  }

  /// Adds the entry, or replaces the value of the one with the same key.
  void set(lumo::QueryKey key, lumo::QueryValue value) { entries_.set(std::move(key), std::move(value)); }
  /// The same for a word of the program's own, which is put into its place at once.
  template <std::same_as<lumo::FixedWord> Word>
  void set(Word key, lumo::QueryValue value) {
    entries_.assign(key, std::move(value));
  }
  /// The same for a key and a value that are both words of the program's own.
  template <std::same_as<lumo::FixedWord> Word>
  void set(Word key, lumo::FixedWord word) {
    entries_.assign(key, word);
  }
  void reserve(std::size_t count) { entries_.reserve(count); }

  /// The value's text; null where the key is absent.
  std::optional<std::string> text(std::string_view key) const;
  /// The value; null where the key is absent.
  const lumo::QueryValue* find(std::string_view key) const noexcept { return entries_.find(key); }
  bool contains(std::string_view key) const noexcept { return entries_.contains(key); }

  bool empty() const noexcept { return entries_.empty(); }
  std::size_t size() const noexcept { return entries_.size(); }
  Entries::const_iterator begin() const noexcept { return entries_.begin(); }
  Entries::const_iterator end() const noexcept { return entries_.end(); }

 private:
  Entries entries_;
};
