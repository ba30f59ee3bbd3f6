#include "LumoApi/Base64.h"

#include "platform/kernels/Plain.h"

#include <array>

namespace lumo {

namespace {

using kernels::kBase64Alphabet;

// Writes the last bytes, up to two of them, with their padding.
char* encodeRest(std::span<const std::uint8_t> bytes, char* out) noexcept {
  if (bytes.empty()) return out;
  const unsigned first = bytes[0], second = bytes.size() == 2 ? bytes[1] : 0;
  out[0] = kBase64Alphabet[first >> 2];
  out[1] = kBase64Alphabet[(first << 4 | second >> 4) & 63];
  out[2] = bytes.size() == 2 ? kBase64Alphabet[second << 2 & 63] : '=';
  out[3] = '=';
  return out + 4;
}

// Reads the last group, which has one or two characters of padding.
bool decodeRest(std::string_view group, std::size_t padding, std::uint8_t* out) noexcept {
  const auto digit = [group](std::size_t at) -> unsigned {
    return kernels::plain::kDigits[kernels::plain::byteAt(group, at)];
  };
  const unsigned first = digit(0), second = digit(1), third = padding == 1 ? digit(2) : 0;
  if ((first | second | third) >= kBase64Alphabet.size()) return false;
  out[0] = static_cast<std::uint8_t>(first << 2 | second >> 4);
  if (padding == 1) out[1] = static_cast<std::uint8_t>(second << 4 | third >> 2);
  return true;
}

// How many of the last two characters are padding.
std::size_t paddingSize(std::string_view text) noexcept {
  return text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
}

}  // namespace

char* base64Encode(std::span<const std::uint8_t> bytes, char* out) noexcept {
  const std::size_t whole = bytes.size() - bytes.size() % 3;
  // A vector unit takes longer to begin than a few groups need.
  constexpr std::size_t kWorthwhile = 12;
  out = whole < kWorthwhile ? kernels::plain::encodeBase64(bytes.first(whole), out)
                            : kernels::best().encodeBase64(bytes.first(whole), out);
  return encodeRest(bytes.subspan(whole), out);
}

char* base64Encode(const DataChain& bytes, char* out) noexcept {
  // The beginning of a group that the next piece completes.
  std::array<std::uint8_t, 3> group{};
  std::size_t held = 0;
  for (const Data& piece : bytes.pieces()) {
    std::span<const std::uint8_t> rest(piece.data(), piece.size());
    for (; held < group.size() && !rest.empty(); rest = rest.subspan(1)) group[held++] = rest[0];
    if (held == group.size()) {
      out = kernels::plain::encodeBase64(group, out);
      held = 0;
    }
    const std::size_t whole = rest.size() - rest.size() % 3;
    out = kernels::best().encodeBase64(rest.first(whole), out);
    for (const std::uint8_t byte : rest.subspan(whole)) group[held++] = byte;
  }
  return encodeRest(std::span(group).first(held), out);
}

std::string base64Encoded(std::string_view bytes) {
  std::string text(base64EncodedSize(bytes.size()), '\0');
  base64Encode(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), text.data());
  return text;
}

std::optional<std::size_t> base64DecodedSize(std::string_view text) noexcept {
  if (text.size() % 4 != 0) return std::nullopt;
  return text.size() / 4 * 3 - paddingSize(text);
}

bool base64Decode(std::string_view text, std::uint8_t* out) noexcept {
  if (text.size() % 4 != 0) return false;
  const std::size_t padding = paddingSize(text);
  if (padding == 0) return kernels::best().decodeBase64(text, out);

  const std::size_t whole = text.size() - 4;
  if (!kernels::best().decodeBase64(text.substr(0, whole), out)) return false;
  return decodeRest(text.substr(whole), padding, out + whole / 4 * 3);
}

std::optional<Data> base64DecodedData(std::string_view text) {
  const auto size = base64DecodedSize(text);
  if (!size) return std::nullopt;
  DataBuffer buffer = Data::uninitialized(*size);
  if (!base64Decode(text, buffer.bytes)) return std::nullopt;
  return std::move(buffer.data);
}

std::optional<std::string> base64Decoded(std::string_view text) {
  const auto size = base64DecodedSize(text);
  if (!size) return std::nullopt;
  std::string bytes(*size, '\0');
  if (!base64Decode(text, reinterpret_cast<std::uint8_t*>(bytes.data()))) return std::nullopt;
  return bytes;
}

}  // namespace lumo
