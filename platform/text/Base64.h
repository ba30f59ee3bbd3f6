#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumo {

// Base64 with the standard alphabet (`+` and `/`) and `=` padding, the form that a launch URL's query carries
// unchanged. Without state: any thread may call these functions at any time.

/// The length of the base64 text of `size` bytes.
constexpr std::size_t base64EncodedSize(std::size_t size) noexcept {
  return (size / 3 + (size % 3 != 0)) * 4;
}

/// Writes the base64 text of the bytes, base64EncodedSize() characters, to `out`; gives the end of what it
/// wrote.
LUMOAPI_EXPORT char* base64Encode(std::span<const std::uint8_t> bytes, char* out) noexcept;
/// The same for bytes that lie in several buffers.
LUMOAPI_EXPORT char* base64Encode(const DataChain& bytes, char* out) noexcept;

/// The base64 text of the bytes.
LUMOAPI_EXPORT std::string base64Encoded(std::string_view bytes);

/// The number of bytes that a base64 text of this form stands for; null where the length is not a multiple
/// of 4. Only the length and the padding are looked at.
LUMOAPI_EXPORT std::optional<std::size_t> base64DecodedSize(std::string_view text) noexcept;

/// Writes the base64DecodedSize() bytes to `out`. Decoding is strict: false (with `out` in any state) for a
/// character outside the alphabet, white space included, and for misplaced padding. Spare bits are not looked
/// at.
LUMOAPI_EXPORT bool base64Decode(std::string_view text, std::uint8_t* out) noexcept;

/// The decoded bytes, as Data or as a string; null where base64Decode() refuses the text.
LUMOAPI_EXPORT std::optional<Data> base64DecodedData(std::string_view text);
/// The same as a string.
LUMOAPI_EXPORT std::optional<std::string> base64Decoded(std::string_view text);

}  // namespace lumo
