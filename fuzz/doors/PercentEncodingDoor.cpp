// Percent-encoding in both directions, and the UTF-8 checks under it.

#include "LumoApi/LumoOpenApiUtility.h"
#include "fuzz/Door.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>

namespace lumo::fuzz {

namespace {

/// The UTF-16 length, counted character by character; null for text that is not UTF-8.
std::optional<std::size_t> plainLength(std::string_view text) {
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = [&](std::size_t i) {
      return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    const std::size_t size = byte(0) < 0x80 ? 1 : byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : 4;
    unsigned character = byte(0) & (size == 1 ? 0x7FU : 0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
      if ((byte(i) & 0xC0U) != 0x80U) return std::nullopt;
      character = character << 6 | (byte(i) & 0x3FU);
    }
    constexpr unsigned kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool isLeading = size == 1 || (byte(0) >= 0xC0 && byte(0) < 0xF8);
    if (!isLeading || character < kLeast[size] || isSurrogate || character > 0x10FFFF) return std::nullopt;
    units += size == 4 ? 2 : 1;
    at += size;
  }
  return units;
}

std::optional<std::string> plainlyDecoded(std::string_view text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      bytes += text[at];
      continue;
    }
    const std::string digits(text.substr(at + 1, 2));
    const bool isEscape = digits.size() == 2 && std::isxdigit(static_cast<unsigned char>(digits[0])) &&
                          std::isxdigit(static_cast<unsigned char>(digits[1]));
    if (!isEscape) return std::nullopt;
    bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
    at += 2;
  }
  return plainLength(bytes) ? std::optional(bytes) : std::nullopt;
}

bool isAllowedInQuery(unsigned char c) {
  return c == '%' || (c < 0x80 && std::isalnum(c)) ||
         std::string_view("-._~!$&'()*+,;=:@/?").find(static_cast<char>(c)) != std::string_view::npos;
}

bool isAlphanumericOrBeyond(unsigned char c) { return c == '%' || c >= 0x80 || std::isalnum(c); }

void checkEncoding(std::string_view text, CharacterSet kept) {
  const std::optional<std::string> encoded = percentEncoded(text, kept);
  require(encoded.has_value() == plainLength(text).has_value(), "text that is UTF-8 is encoded");
  require(percentEncodedSize(text, kept).has_value() == encoded.has_value(), "its size is known too");
  if (!encoded) return;
  require(percentEncodedSize(text, kept) == encoded->size(), "the size is right");
  require(encoded->size() <= 3 * text.size(), "no byte becomes more than three");
  if (kept == CharacterSet::QueryAllowed) {
    require(std::all_of(encoded->begin(), encoded->end(), isAllowedInQuery), "a query may hold it");
  }
  if (kept == CharacterSet::Alphanumeric) {
    require(std::all_of(encoded->begin(), encoded->end(), isAlphanumericOrBeyond), "all else is escaped");
  }
  if (kept != CharacterSet::ASCII) require(percentDecoded(*encoded) == text, "what is encoded is decoded");
}

}  // namespace

void door(std::string_view input) {
  const std::optional<std::size_t> length = plainLength(input);
  require(isValidUTF8(input) == length.has_value(), "the plain check says the same");
  if (length) require(utf16Length(input) == *length, "the plain count is the same");
  require(utf16Length(input) <= input.size(), "no more code units than bytes");
  for (const CharacterSet kept :
       {CharacterSet::QueryAllowed, CharacterSet::Alphanumeric, CharacterSet::ASCII})
    checkEncoding(input, kept);
  require(percentDecoded(input) == plainlyDecoded(input), "the plain decoder reads the same");
  require(URLDecodedString(input) == percentDecoded(input), "so does the string operation");
}

}  // namespace lumo::fuzz
