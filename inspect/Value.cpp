#include "inspect/Value.h"

#include "LumoApi/Base64.h"
#include "LumoApi/URL.h"
#include "inspect/Warnings.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"

#include <utility>

namespace lumo::inspection {

namespace {

bool isHexadecimal(char c) noexcept {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

/// The character at which something is wrong, in words.
std::string base64Stranger(char c) {
  switch (c) {
    case ' ':
      return "a blank, where “+” may have stood";
    case '-':
    case '_':
      return "“-” and “_” belong to another alphabet";
    case '%':
      return "an escape, which is not undone here";
    case '\n':
    case '\r':
      return "a line break";
    default:
      return "no character of base64";
  }
}

/// Why a text is no base64.
std::string base64Fault(std::string_view text) {
  constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=";
  const std::size_t stranger = text.find_first_not_of(kAlphabet);
  if (stranger != std::string_view::npos) {
    return "no base64: at character " + std::to_string(stranger + 1) + " stands " +
           base64Stranger(text[stranger]);
  }
  if (text.size() % 4 != 0) {
    return "no base64: its length, " + std::to_string(text.size()) +
           ", is no multiple of 4, so its end is missing";
  }
  return "no base64: a “=” stands in the middle";
}

Decoded faulty(std::string_view code, std::string reason, std::optional<std::string> text = std::nullopt) {
  return {.text = std::move(text), .json = {}, .bytes = {}, .fault = code, .reason = std::move(reason)};
}

Decoded sound(std::string text) { return {.text = std::move(text), .json = {}, .bytes = {}}; }

Decoded ofBytes(std::string_view base64) {
  if (auto bytes = base64DecodedData(base64)) return {.text = {}, .json = {}, .bytes = std::move(bytes)};
  return faulty(codes::kBadBase64, base64Fault(base64));
}

Decoded ofJSON(std::string text) {
  JSONError error;
  std::optional<Value> value = parseJSON(text, &error);
  if (!value) {
    return faulty(codes::kBadJSON,
                  "not JSON at byte " + std::to_string(error.offset + 1) + ": " + error.message,
                  std::move(text));
  }
  if (!value->asDictionary() && !value->asArray()) {
    return faulty(codes::kBadJSON, "a lone JSON value, which nobody reads as a map", std::move(text));
  }
  return {.text = std::move(text), .json = std::move(value), .bytes = {}};
}

Decoded ofBase64(std::string_view base64, Encoding encoding) {
  std::optional<std::string> text = base64Decoded(base64);
  if (!text) return faulty(codes::kBadBase64, base64Fault(base64));
  if (!isValidUTF8(*text)) return faulty(codes::kNotUTF8, "base64 of bytes that are no UTF-8 text");
  if (encoding == Encoding::JSON) return ofJSON(*std::move(text));
  if (encoding == Encoding::Link && !URL::parse(*text)) {
    return faulty(codes::kBadLink, "not a valid URL", std::move(text));
  }
  return sound(*std::move(text));
}

Decoded ofNumber(std::string text) {
  // 20 digits hold the largest number of 64 bits.
  if (text.empty() || text.size() > 20 || text.find_first_not_of("0123456789") != std::string::npos) {
    return faulty(codes::kBadNumber, "not a decimal number", std::move(text));
  }
  return sound(std::move(text));
}

}  // namespace

Decoded decoded(std::string_view raw, Encoding encoding, bool isEscaped) {
  std::optional<std::string> text(raw);
  if (isEscaped || encoding == Encoding::Escaped) text = percentDecoded(raw);
  if (!text) return faulty(codes::kNotUTF8, "its escapes are no UTF-8 text");
  switch (encoding) {
    case Encoding::Plain:
    case Encoding::Escaped:
    case Encoding::Word:
    case Encoding::Kind:
      return sound(*std::move(text));
    case Encoding::Number:
      return ofNumber(*std::move(text));
    case Encoding::Text:
    case Encoding::Link:
    case Encoding::JSON:
      return ofBase64(*text, encoding);
    case Encoding::Bytes:
    case Encoding::Record:
      return ofBytes(*text);
  }
  return {};
}

bool isEscapedTwice(std::string_view raw) noexcept {
  for (std::size_t at = raw.find("%25"); at != std::string_view::npos; at = raw.find("%25", at + 3)) {
    if (at + 4 < raw.size() && isHexadecimal(raw[at + 3]) && isHexadecimal(raw[at + 4])) return true;
  }
  return false;
}

}  // namespace lumo::inspection
