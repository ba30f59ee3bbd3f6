#pragma once

#include "platform/kernels/Kernels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

/// The kernels for machines without a known vector unit, and for short texts on all machines.
namespace lumo::kernels::plain {

inline std::uint8_t byteAt(std::string_view text, std::size_t at) noexcept {
  return static_cast<std::uint8_t>(text[at]);
}

inline constexpr std::uint8_t kNoDigit = 0xFF;

inline constexpr auto kDigits = []() {
  std::array<std::uint8_t, 256> digits{};
  digits.fill(kNoDigit);
  for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i) {
    digits[static_cast<std::uint8_t>(kBase64Alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return digits;
}();

inline char* encodeBase64(std::span<const std::uint8_t> bytes, char* out) noexcept {
  for (const std::uint8_t *from = bytes.data(), *end = from + bytes.size(); from != end;
       from += 3, out += 4) {
    const unsigned group = unsigned{from[0]} << 16 | unsigned{from[1]} << 8 | unsigned{from[2]};
    out[0] = kBase64Alphabet[group >> 18];
    out[1] = kBase64Alphabet[group >> 12 & 63];
    out[2] = kBase64Alphabet[group >> 6 & 63];
    out[3] = kBase64Alphabet[group & 63];
  }
  return out;
}

inline bool decodeBase64(std::string_view text, std::uint8_t* out) noexcept {
  const auto digit = [text](std::size_t at) -> unsigned { return kDigits[byteAt(text, at)]; };
  unsigned seen = 0;
  for (std::size_t at = 0; at < text.size(); at += 4, out += 3) {
    const unsigned a = digit(at);
    const unsigned b = digit(at + 1);
    const unsigned c = digit(at + 2);
    const unsigned d = digit(at + 3);
    seen |= a | b | c | d;
    out[0] = static_cast<std::uint8_t>(a << 2 | b >> 4);
    out[1] = static_cast<std::uint8_t>(b << 4 | c >> 2);
    out[2] = static_cast<std::uint8_t>(c << 6 | d);
  }
  return seen < kBase64Alphabet.size();
}

inline bool isContinuation(std::string_view text, std::size_t at) noexcept {
  return at < text.size() && (byteAt(text, at) & 0xC0) == 0x80;
}

/// Whether the second byte lies in the range that its first byte leaves: the values outside would be overlong
/// forms (E0, F0), surrogates (ED) or lie past U+10FFFF (F4).
inline bool isSecondByte(std::string_view text) noexcept {
  if (!isContinuation(text, 1)) return false;
  const std::uint8_t second = byteAt(text, 1);
  switch (byteAt(text, 0)) {
    case 0xE0:
      return second >= 0xA0;
    case 0xED:
      return second < 0xA0;
    case 0xF0:
      return second >= 0x90;
    case 0xF4:
      return second < 0x90;
    default:
      return true;
  }
}

/// The length of the well-formed character that a text which is not empty begins with; 0 where there is none.
inline std::size_t characterLength(std::string_view text) noexcept {
  const std::uint8_t first = byteAt(text, 0);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4 || !isSecondByte(text)) return 0;
  if (first < 0xE0) return 2;
  if (!isContinuation(text, 2)) return 0;
  if (first < 0xF0) return 3;
  return isContinuation(text, 3) ? 4 : 0;
}

inline constexpr std::uint64_t kHighBits = 0x8080808080808080;

/// Texts up to this length are done before a vector unit has begun.
inline constexpr std::size_t kShort = 16;

/// Up to eight bytes, in any order, some of them perhaps twice; zero bits beside them.
inline std::uint64_t wordOf(std::string_view text) noexcept {
  const std::size_t size = text.size();
  if (size >= 4) {
    std::uint32_t head = 0, tail = 0;
    std::memcpy(&head, text.data(), sizeof head);
    std::memcpy(&tail, text.data() + size - sizeof tail, sizeof tail);
    return head | std::uint64_t{tail} << 32;
  }
  if (size == 0) return 0;
  return std::uint64_t{byteAt(text, 0)} | std::uint64_t{byteAt(text, size / 2)} << 8 |
         std::uint64_t{byteAt(text, size - 1)} << 16;
}

/// Whether the text is short and all of it ASCII, as most texts of a message are.
inline bool isShortASCII(std::string_view text) noexcept {
  if (text.size() > kShort) return false;
  if (text.size() <= 8) return (wordOf(text) & kHighBits) == 0;
  std::uint64_t head = 0, tail = 0;
  std::memcpy(&head, text.data(), sizeof head);
  std::memcpy(&tail, text.data() + text.size() - sizeof tail, sizeof tail);
  return ((head | tail) & kHighBits) == 0;
}

inline std::size_t asciiRun(std::string_view text) noexcept {
  std::size_t at = 0;
  for (std::uint64_t word = 0; text.size() - at >= sizeof word; at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    if (word & kHighBits) break;
  }
  while (at < text.size() && byteAt(text, at) < 0x80) ++at;
  return at;
}

inline std::size_t utf16Length(std::string_view text) noexcept {
  std::size_t units = 0;
  for (;;) {
    const std::size_t ascii = asciiRun(text);
    units += ascii;
    text.remove_prefix(ascii);
    if (text.empty()) return units;
    const std::size_t length = characterLength(text);
    if (length == 0) return kNotUTF8;
    units += length == 4 ? 2 : 1;
    text.remove_prefix(length);
  }
}

inline bool startsWithEscape(std::string_view text) noexcept {
  return text.size() >= 3 && text[0] == '%' && kHexadecimal.contains(text[1]) &&
         kHexadecimal.contains(text[2]);
}

inline std::size_t escapedRun(std::string_view text, const ASCIISet& set) noexcept {
  for (std::size_t at = 0;;) {
    while (at < text.size() && set.contains(text[at])) ++at;
    if (!startsWithEscape(text.substr(at))) return at;
    at += 3;
  }
}

inline std::size_t count(std::string_view text, const ASCIISet& set) noexcept {
  std::size_t found = 0;
  for (const char c : text) found += set.contains(c);
  return found;
}

inline bool consistsOf(std::string_view text, const ASCIISet& set) noexcept {
  for (const char c : text) {
    if (!set.contains(c)) return false;
  }
  return true;
}

char* escape(std::string_view text, const ASCIISet& kept, char* out) noexcept;

inline std::size_t places(char character, std::string_view text, std::span<std::size_t> out) noexcept {
  std::size_t found = 0;
  for (std::size_t at = 0; found < out.size(); ++at) {
    at = text.find(character, at);
    if (at == text.npos) break;
    out[found++] = at;
  }
  return found;
}

}  // namespace lumo::kernels::plain
