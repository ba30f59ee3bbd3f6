#include "model/LumoApiQueryDictionary.h"

#include "platform/JSON.h"
#include "platform/PercentEncoding.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <span>

namespace lumo {

namespace {

std::string decimal(auto number) {
  char digits[24];
  return {digits, std::to_chars(digits, std::end(digits), number).ptr};
}

std::span<const std::uint8_t> spanOf(const Data& bytes) noexcept { return {bytes.data(), bytes.size()}; }

}  // namespace

QueryValue QueryValue::number(const Value& number) {
  const auto digits = [](std::string text) { return QueryValue(Kind::Fixed, Data(std::move(text))); };
  if (const auto* small = number.asInteger()) return digits(decimal(*small));
  if (const auto* large = number.asUnsigned()) return digits(decimal(*large));
  if (const auto* boolean = number.asBoolean()) return digits(*boolean ? "1" : "0");
  if (const auto* string = number.asString()) return text(*string);
  return text(writeJSON(number).value_or(std::string()));
}

QueryValue QueryValue::base64(DataChain bytes) {
  QueryValue value(Kind::Chain, Data());
  value.chain_ = std::make_shared<const DataChain>(std::move(bytes));
  return value;
}

std::string QueryValue::asText() const {
  if (kind_ == Kind::Fixed || kind_ == Kind::Text) return std::string(bytes_.view());
  std::string text(*encodedSize(), '\0');
  encode(text.data());
  return text;
}

std::optional<std::size_t> QueryValue::encodedSize() const noexcept {
  switch (kind_) {
    case Kind::Fixed:
      return bytes_.size();
    case Kind::Text:
      return percentEncodedSize(bytes_.view(), CharacterSet::QueryAllowed);
    case Kind::Base64:
      return base64EncodedSize(bytes_.size());
    case Kind::Chain:
      return base64EncodedSize(chain_->size());
  }
  return std::nullopt;
}

char* QueryValue::encode(char* out) const noexcept {
  switch (kind_) {
    case Kind::Fixed:
      return std::copy(bytes_.begin(), bytes_.end(), out);
    case Kind::Text:
      return percentEncode(bytes_.view(), CharacterSet::QueryAllowed, out);
    case Kind::Base64:
      return base64Encode(spanOf(bytes_), out);
    case Kind::Chain:
      return base64Encode(*chain_, out);
  }
  return out;
}

}  // namespace lumo

std::optional<std::string> LumoApiQueryDictionary::text(std::string_view key) const {
  const lumo::QueryValue* value = find(key);
  if (!value) return std::nullopt;
  return value->asText();
}
