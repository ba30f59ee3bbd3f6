#include "LumoApi/LumoApiQueryDictionary.h"

#include "platform/text/PercentEncoding.h"
#include "platform/values/JSON.h"

#include <charconv>
#include <iterator>

namespace lumo {

namespace {

std::string decimal(auto number) {
  char digits[24];
  return {digits, std::to_chars(digits, std::end(digits), number).ptr};
}

}  // namespace

QueryValue QueryValue::text(Data text) noexcept {
  const Kind kind = isQueryValue(text.view()) ? Kind::Fixed : Kind::Text;
  return {kind, std::move(text)};
}

QueryValue QueryValue::number(const Value& number) {
  const auto digits = [](std::string text) { return QueryValue(Kind::Fixed, Data(std::move(text))); };
  if (const auto* small = number.asInteger()) return digits(decimal(*small));
  if (const auto* large = number.asUnsigned()) return digits(decimal(*large));
  if (const auto* boolean = number.asBoolean()) return digits(*boolean ? "1" : "0");
  if (const auto* string = number.asString()) return text(*string);
  return text(writeJSON(number).value_or(std::string()));
}

QueryValue QueryValue::base64(DataChain bytes) {
  auto chain = std::make_shared<const DataChain>(std::move(bytes));
  const auto* place = reinterpret_cast<const std::uint8_t*>(chain.get());
  return {Kind::Chain, Data(std::move(chain), place, 0)};
}

const DataChain& QueryValue::chain() const noexcept {
  static const DataChain empty;
  return bytes_.data() ? *reinterpret_cast<const DataChain*>(bytes_.data()) : empty;
}

std::string QueryValue::asText() const {
  if (kind_ == Kind::Fixed || kind_ == Kind::Text) return std::string(bytes_.view());
  std::string text(encodedSize(), '\0');
  encode(text.data());
  return text;
}

std::size_t QueryValue::otherEncodedSize() const noexcept {
  if (kind_ == Kind::Chain) return base64EncodedSize(chain().size());
  return percentEncodedSize(bytes_.view(), CharacterSet::QueryAllowed).value_or(kNotUTF8);
}

char* QueryValue::encodeOther(char* out) const noexcept {
  if (kind_ == Kind::Base64) return base64Encode({bytes_.data(), bytes_.size()}, out);
  if (kind_ == Kind::Chain) return base64Encode(chain(), out);
  return percentEncode(bytes_.view(), CharacterSet::QueryAllowed, out);
}

}  // namespace lumo

std::optional<std::string> LumoApiQueryDictionary::text(std::string_view key) const {
  const lumo::QueryValue* value = find(key);
  if (!value) return std::nullopt;
  return value->asText();
}
