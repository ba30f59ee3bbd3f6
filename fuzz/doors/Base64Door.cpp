// Base64 in both directions.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "fuzz/Door.h"
#include "platform/text/Text.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumo::fuzz {

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Decoded digit by digit.
std::optional<std::string> plainlyDecoded(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
  text.remove_suffix(padding);
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char c : text) {
    const std::size_t digit = kAlphabet.find(c);
    if (digit == kAlphabet.npos) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count);
  }
  return bytes;
}

void checkDecoding(std::string_view text) {
  const std::optional<std::string> decoded = base64Decoded(text);
  require(decoded == plainlyDecoded(text), "the plain decoder reads the same");
  const std::optional<Data> data = base64DecodedData(text);
  require(data.has_value() == decoded.has_value() && (!data || data->view() == *decoded), "as Data too");
  const auto utf8 = LumoOpenApiUtility::UTF8StringWithBase64String(text);
  require(utf8 == (decoded && isValidUTF8(*decoded) ? decoded : std::nullopt), "as text, if it is one");
  if (!decoded) return;
  require(base64DecodedSize(text) == decoded->size(), "the size is right");
  const std::string again = base64Encoded(*decoded);
  require(again.size() == text.size(), "the text that is decoded has its own length");
  require(base64Decoded(again) == decoded, "spare bits do not count");
}

/// Bytes in several buffers, cut in places that the bytes tell.
DataChain chained(std::string_view bytes) {
  DataChain chain;
  while (!bytes.empty()) {
    const std::size_t size = 1 + static_cast<unsigned char>(bytes.front()) % 67;
    chain.append(Data::copy(bytes.substr(0, size)));
    bytes.remove_prefix(std::min(size, bytes.size()));
  }
  return chain;
}

void checkEncoding(std::string_view bytes) {
  const std::string encoded = base64Encoded(bytes);
  require(encoded.size() == base64EncodedSize(bytes.size()), "the size is right");
  require(plainlyDecoded(encoded) == bytes, "what is encoded is decoded");
  std::string fromChain(encoded.size(), '\0');
  const char* end = base64Encode(chained(bytes), fromChain.data());
  require(end == fromChain.data() + fromChain.size() && fromChain == encoded, "however the bytes lie");
}

}  // namespace

void door(std::string_view input) {
  checkDecoding(input);
  checkEncoding(input);
}

}  // namespace lumo::fuzz
