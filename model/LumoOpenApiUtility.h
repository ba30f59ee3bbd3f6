#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Export.h"

#include <optional>
#include <string>
#include <string_view>

/// Base64 as it stands in launch URLs: standard alphabet, `=` padding. Without state: any thread may call it.
class LUMOAPI_EXPORT LumoOpenApiUtility {
 public:
  /// The base64 text of the string's UTF-8 bytes; null for null and for a string that is not UTF-8.
  static std::optional<std::string> base64EncodedStringWithUTF8String(std::optional<std::string_view> string);

  /// The base64 text of the bytes; empty for empty bytes.
  static std::string base64EncodedStringWithData(const lumo::Data& data);

  /// The text whose UTF-8 bytes the base64 encodes; null for null, for base64 that is not strict (a character
  /// outside the alphabet, white space, padding missing or misplaced) and for bytes that are not UTF-8.
  static std::optional<std::string> UTF8StringWithBase64String(std::optional<std::string_view> base64);
};

/// The string with its percent escapes replaced by the characters whose UTF-8 bytes they encode; "+" stays
/// "+". Null for a bad escape, or where the bytes are not UTF-8.
LUMOAPI_EXPORT std::optional<std::string> URLDecodedString(std::string_view string);
