#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumo {

// Percent-encoding, without state: any thread may call these functions at any time.

/// The characters that percent-encoding leaves as they are.
enum class CharacterSet : std::uint8_t {
  /// What RFC 3986 allows in a query: A-Z a-z 0-9 - . _ ~ ! $ & ' ( ) * + , ; = : @ / ?
  QueryAllowed,
  /// Every Unicode letter, mark and number (general categories L, M and N), the ones beyond ASCII included.
  Alphanumeric,
  /// Every ASCII character: only what lies beyond is escaped.
  ASCII,
};

/// Whether the text stands in a query as it is, for one value: no character of it is escaped there, and none
/// is an "&".
bool isQueryValue(std::string_view text) noexcept;

/// The length of the percent-encoded text; null where the text is not valid UTF-8.
std::optional<std::size_t> percentEncodedSize(std::string_view text, CharacterSet kept) noexcept;

/// Writes the percent-encoded text, percentEncodedSize() characters, to `out` and gives the end of what it
/// wrote: each character outside the set as its UTF-8 bytes, each a `%` and two upper-case hexadecimal
/// digits. The text must be valid UTF-8.
char* percentEncode(std::string_view text, CharacterSet kept, char* out) noexcept;

/// The percent-encoded text; null where the text is not valid UTF-8.
std::optional<std::string> percentEncoded(std::string_view text, CharacterSet kept);

/// The text with its percent escapes (digits of either case) replaced by the bytes that they stand for; "+"
/// is no escape. Null for a `%` without two hexadecimal digits and where the result is not valid UTF-8.
std::optional<std::string> percentDecoded(std::string_view text);

}  // namespace lumo
