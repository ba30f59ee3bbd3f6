#include "LumoApi/LumoOpenApiUtility.h"

#include "LumoApi/Base64.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"

// base64EncodedStringWithUTF8String:
std::optional<std::string> LumoOpenApiUtility::base64EncodedStringWithUTF8String(
    std::optional<std::string_view> string) {
  if (!string || !lumo::isValidUTF8(*string)) return std::nullopt;
  return lumo::base64Encoded(*string);
}

// base64EncodedStringWithData:
std::string LumoOpenApiUtility::base64EncodedStringWithData(const lumo::Data& data) {
  return lumo::base64Encoded(data.view());
}

// UTF8StringWithBase64String:
std::optional<std::string> LumoOpenApiUtility::UTF8StringWithBase64String(
    std::optional<std::string_view> base64) {
  if (!base64) return std::nullopt;
  std::optional<std::string> text = lumo::base64Decoded(*base64);
  if (text && !lumo::isValidUTF8(*text)) text.reset();
  return text;
}

// URLDecodedString
std::optional<std::string> URLDecodedString(std::string_view string) { return lumo::percentDecoded(string); }
