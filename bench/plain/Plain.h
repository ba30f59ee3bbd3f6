#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiTextObject.h"
#include "LumoApi/LumoApiURLObjects.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// The same work written as most people would write it at first: a std::map for the query, texts put together
/// with +=, one byte at a time. It checks what the library checks and its URLs hold the same pairs; only
/// their order differs.
namespace plain {

using Query = std::map<std::string, std::string>;

bool isValidUTF8(std::string_view text);
std::size_t utf16Length(std::string_view text);
std::string base64(std::string_view bytes);
std::string percentEncoded(std::string_view text);

std::optional<std::string> textShare(const LumoApiTextObject& object, std::int32_t type,
                                     const LumoApiDatastore::Values& store);

/// With the preview picture archived into the URL.
std::optional<std::string> linkShare(const LumoApiURLObject& object, std::int32_t type,
                                     const LumoApiDatastore::Values& store);

/// The keyed archive of a record with one picture in it.
std::string archived(const std::string& key, const lumo::Data& picture);

Query splitQuery(const std::string& url);

/// Decodes the whole JPEG picture to RGB and encodes it again; null for what is no JPEG.
std::optional<std::string> reencoded(const lumo::Data& picture, double quality);

}  // namespace plain
