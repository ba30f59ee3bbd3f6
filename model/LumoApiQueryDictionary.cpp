#include "model/LumoApiQueryDictionary.h"

#include "platform/JSON.h"
#include "platform/PercentEncoding.h"

#include <charconv>
#include <cstring>

namespace lumo {

namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

template <class Integer>
std::string decimal(Integer number) {
  char digits[24];
  return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

/// The text of a free-form value: a number's decimal text, a string itself, JSON for everything else.
std::string textOf(const Value& value) {
  if (const auto* number = value.asInteger()) return decimal(*number);
  if (const auto* number = value.asUnsigned()) return decimal(*number);
  if (const auto* boolean = value.asBoolean()) return *boolean ? "1" : "0";
  if (const auto* text = value.asString()) return *text;
  return writeJSON(value).value_or(std::string());
}

std::string base64Encoded(const DataChain& bytes) {
  std::string text(base64EncodedSize(bytes.size()), '\0');
  base64Encode(bytes, text.data());
  return text;
}

std::span<const std::uint8_t> bytesOf(std::string_view text) noexcept {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

char* encodeText(std::string_view text, char* out) noexcept {
  return percentEncode(text, CharacterSet::QueryAllowed, out);
}

}  // namespace

std::string QueryValue::asText() const {
  return std::visit(Overloaded{[](std::string_view word) { return std::string(word); },
                               [](const std::string& text) { return text; },
                               [](const Value& number) { return textOf(number); },
                               [](const Base64Text& source) { return lumo::base64Encoded(source.text); },
                               [](const Data& bytes) { return lumo::base64Encoded(bytes.view()); },
                               [](const DataChain& bytes) { return base64Encoded(bytes); }},
                    content_);
}

std::optional<std::size_t> QueryValue::encodedSize() const {
  using Size = std::optional<std::size_t>;
  const auto plain = [](std::string_view text) {
    return percentEncodedSize(text, CharacterSet::QueryAllowed);
  };
  return std::visit(
      Overloaded{[&](std::string_view word) { return plain(word); },
                 [&](const std::string& text) { return plain(text); },
                 [&](const Value& number) { return plain(textOf(number)); },
                 [](const Base64Text& source) { return Size(base64EncodedSize(source.text.size())); },
                 [](const Data& bytes) { return Size(base64EncodedSize(bytes.size())); },
                 [](const DataChain& bytes) { return Size(base64EncodedSize(bytes.size())); }},
      content_);
}

char* QueryValue::encode(char* out) const {
  return std::visit(
      Overloaded{[&](std::string_view word) { return encodeText(word, out); },
                 [&](const std::string& text) { return encodeText(text, out); },
                 [&](const Value& number) { return encodeText(textOf(number), out); },
                 [&](const Base64Text& source) { return base64Encode(bytesOf(source.text), out); },
                 [&](const Data& bytes) { return base64Encode(std::span(bytes.data(), bytes.size()), out); },
                 [&](const DataChain& bytes) { return base64Encode(bytes, out); }},
      content_);
}

bool QueryValue::hasAmpersand() const noexcept {
  const auto has = [](std::string_view text) { return text.find('&') != std::string_view::npos; };
  if (const auto* word = std::get_if<std::string_view>(&content_)) return has(*word);
  if (const auto* text = std::get_if<std::string>(&content_)) return has(*text);
  const auto* value = std::get_if<Value>(&content_);
  return value && value->asString() && has(*value->asString());
}

}  // namespace lumo

std::optional<std::string> LumoApiQueryDictionary::text(std::string_view key) const {
  const lumo::QueryValue* value = find(key);
  if (!value) return std::nullopt;
  return value->asText();
}
