#include "platform/PercentEncoding.h"

#include "platform/AlphanumericRanges.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace lumo {

namespace {

constexpr std::uint8_t bit(CharacterSet set) noexcept {
  return static_cast<std::uint8_t>(1U << static_cast<unsigned>(set));
}

// For each byte, the sets that keep it; a byte beyond ASCII is in none.
constexpr auto kSetsOfByte = [] {
  constexpr std::string_view kAlphanumerics =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  std::array<std::uint8_t, 256> sets{};
  const auto add = [&sets](char character, CharacterSet set) {
    sets[static_cast<std::uint8_t>(character)] |= bit(set);
  };
  for (char c = 0;; ++c) {
    add(c, CharacterSet::ASCII);
    if (c == 0x7F) break;
  }
  for (const char c : kAlphanumerics) {
    add(c, CharacterSet::Alphanumeric);
    add(c, CharacterSet::QueryAllowed);
  }
  for (const char c : std::string_view("-._~!$&'()*+,;=:@/?")) add(c, CharacterSet::QueryAllowed);
  return sets;
}();

bool isAlphanumericBeyondASCII(char32_t character) noexcept {
  const auto* range =
      std::lower_bound(std::begin(kAlphanumericRanges), std::end(kAlphanumericRanges), character,
                       [](const AlphanumericRange& r, char32_t c) { return r.last < c; });
  return range != std::end(kAlphanumericRanges) && range->first <= character;
}

// The character beyond ASCII that a valid text begins with, in its UTF-8 bytes.
std::string_view firstCharacter(std::string_view text) noexcept {
  const auto first = static_cast<std::uint8_t>(text.front());
  return text.substr(0, first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4);
}

char32_t decoded(std::string_view character) noexcept {
  char32_t value = static_cast<std::uint8_t>(character.front()) & (0x7FU >> character.size());
  for (const char c : character.substr(1)) value = value << 6 | (static_cast<std::uint8_t>(c) & 0x3FU);
  return value;
}

std::size_t keptRun(std::string_view text, CharacterSet kept) noexcept {
  std::size_t at = 0;
  while (at < text.size() && (kSetsOfByte[static_cast<std::uint8_t>(text[at])] & bit(kept))) ++at;
  return at;
}

// Cuts a valid text, in order, into pieces to keep and pieces to escape.
template <class Keep, class Escape>
void cut(std::string_view text, CharacterSet kept, Keep keep, Escape escape) {
  while (!text.empty()) {
    const std::size_t run = keptRun(text, kept);
    if (run > 0) {
      keep(text.substr(0, run));
      text.remove_prefix(run);
      continue;
    }
    const bool maybeKept =
        kept == CharacterSet::Alphanumeric && static_cast<std::uint8_t>(text.front()) >= 0x80;
    const std::string_view character = maybeKept ? firstCharacter(text) : text.substr(0, 1);
    if (maybeKept && isAlphanumericBeyondASCII(decoded(character))) {
      keep(character);
    } else {
      escape(character);
    }
    text.remove_prefix(character.size());
  }
}

// The value of a hexadecimal digit; 16 or more for any other character.
unsigned hexadecimalValue(char digit) noexcept {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  const char lower = static_cast<char>(digit | 0x20);
  return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a' + 10) : 16;
}

}  // namespace

std::optional<std::size_t> percentEncodedSize(std::string_view text, CharacterSet kept) noexcept {
  if (!isValidUTF8(text)) return std::nullopt;
  std::size_t size = 0;
  cut(
      text, kept, [&size](std::string_view piece) { size += piece.size(); },
      [&size](std::string_view piece) { size += 3 * piece.size(); });
  return size;
}

char* percentEncode(std::string_view text, CharacterSet kept, char* out) noexcept {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  cut(
      text, kept, [&out](std::string_view piece) { out = std::copy(piece.begin(), piece.end(), out); },
      [&out](std::string_view piece) {
        for (const char c : piece) {
          const auto byte = static_cast<std::uint8_t>(c);
          *out++ = '%';
          *out++ = kDigits[byte >> 4];
          *out++ = kDigits[byte & 15];
        }
      });
  return out;
}

std::optional<std::string> percentEncoded(std::string_view text, CharacterSet kept) {
  const auto size = percentEncodedSize(text, kept);
  if (!size) return std::nullopt;
  std::string encoded(*size, '\0');
  percentEncode(text, kept, encoded.data());
  return encoded;
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (true) {
    const std::size_t plain = std::min(text.find('%'), text.size());
    bytes.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    if (text.size() < 3) return std::nullopt;
    const unsigned high = hexadecimalValue(text[1]);
    const unsigned low = hexadecimalValue(text[2]);
    if (high > 15 || low > 15) return std::nullopt;
    bytes.push_back(static_cast<char>(high << 4 | low));
    text.remove_prefix(3);
  }
  if (!isValidUTF8(bytes)) return std::nullopt;
  return bytes;
}

}  // namespace lumo
