#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiQueryDictionary.h"
#include "LumoApi/URL.h"

#include <optional>
#include <string_view>

/// Writes launch URLs: scheme://host/path?key=value&key=value. Without state; any thread may call it at any
/// time.
class LUMOAPI_EXPORT LumoApiURLEncoder {
 public:
  /// The URL of the parts; null for a null scheme, for text that is not UTF-8, where the parts make no valid
  /// URL and where memory is exhausted.
  ///
  /// Keys and values are written as they are, and the whole text is then percent-encoded once: a "%" becomes
  /// "%25", while "&", "=", "+", "/" and "?" inside a value stay. Entries come in the dictionary's order, but
  /// those whose key or plain value holds an "&", or whose key holds a "=", come before all others: what they
  /// inject stands before the entries that hold none, and a reader who lets the last of two equal keys win
  /// keeps those. With a null or
  /// empty dictionary nothing is encoded and no "?" is written.
  static std::optional<lumo::URL> urlWithScheme(std::optional<std::string_view> scheme,
                                                std::optional<std::string_view> host,
                                                std::optional<std::string_view> path,
                                                const LumoApiQueryDictionary* queryItem) noexcept;
};
